# Compiler settings that every target of the project shares.
add_library(trevik_options INTERFACE)
target_compile_features(trevik_options INTERFACE cxx_std_20 c_std_11)
target_compile_options(trevik_options INTERFACE
    -Wall -Wextra -Wconversion -Wshadow -Werror
    # Every product computes the same registers: IEEE double, no fused or wider arithmetic.
    -ffp-contract=off -fno-math-errno)
# What only GCC takes; the compile commands for clang's tools are made without it.
option(TREVIK_GCC_OPTIONS "Pass GCC's own options" ON)
if(TREVIK_GCC_OPTIONS)
    target_compile_options(trevik_options INTERFACE
        # GCC 12 sees an overlap in every std::string concatenation with a literal on the left; there is none.
        $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-restrict>
        # Unique symbols would keep the shared library from ever being unloaded.
        $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fno-gnu-unique>)
endif()
if(CMAKE_SYSTEM_PROCESSOR STREQUAL "i686")
    target_compile_options(trevik_options INTERFACE -msse2 -mfpmath=sse)
endif()

set(TREVIK_SANITIZE "" CACHE STRING "Sanitizers to build with, for example address,undefined")
if(TREVIK_SANITIZE)
    target_compile_options(trevik_options INTERFACE
        -fsanitize=${TREVIK_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(trevik_options INTERFACE -fsanitize=${TREVIK_SANITIZE})
endif()

option(TREVIK_FUZZ "Build the programs of tests/fuzz, too; clang only" OFF)
