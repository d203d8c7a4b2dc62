# What a Windows DLL of the library needs beside its objects: an exact export table, and import libraries.
find_package(Python3 3.9 REQUIRED COMPONENTS Interpreter)
find_program(TREVIK_LLVM_DLLTOOL NAMES llvm-dlltool llvm-dlltool-14)

# Writes the module definition of the given kind (see scripts/export_definitions.py).
function(trevik_export_definitions file kind)
    set(script ${PROJECT_SOURCE_DIR}/scripts/export_definitions.py)
    file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/trevik/*.h)
    add_custom_command(OUTPUT ${file}
        COMMAND ${CMAKE_COMMAND} -E env PYTHONDONTWRITEBYTECODE=1 ${Python3_EXECUTABLE} ${script} ${kind} > ${file}
        DEPENDS ${script} ${PROJECT_SOURCE_DIR}/scripts/public_api.py ${headers} VERBATIM)
endfunction()

# A TrevikA.dll that exports what scripts/export_definitions.py says for `kind` and nothing else, and needs no DLL but
# the system's own.
function(trevik_windows_library target kind)
    set(definition ${CMAKE_CURRENT_BINARY_DIR}/${target}.def)
    trevik_export_definitions(${definition} ${kind})
    target_sources(${target} PRIVATE ${definition})
    target_link_options(${target} PRIVATE -static -Wl,--no-insert-timestamp)
    set_target_properties(${target} PROPERTIES PREFIX "" OUTPUT_NAME TrevikA)
endfunction()

# TrevikA.def and the import libraries for MinGW (libTrevikA.dll.a) and MSVC (TrevikA.lib) beside the DLL. Programs
# find every function under the name that the headers give it, whatever it is called in the DLL; the linker's own
# import library, which does not know the headers' names, gives way.
function(trevik_import_libraries target kind)
    set(imports ${CMAKE_CURRENT_BINARY_DIR}/${target}.import.def)
    trevik_export_definitions(${imports} ${kind})
    add_custom_target(${target}_imports DEPENDS ${imports})
    add_dependencies(${target} ${target}_imports)
    set(msvc "")
    if(TREVIK_LLVM_DLLTOOL)
        set(msvc COMMAND ${TREVIK_LLVM_DLLTOOL} -m i386 -k -d ${imports} -l $<TARGET_FILE_DIR:${target}>/TrevikA.lib)
    else()
        message(STATUS "No import library for MSVC without llvm: scripts/setup installs it")
    endif()
    add_custom_command(TARGET ${target} POST_BUILD
        COMMAND ${CMAKE_DLLTOOL} -k -d ${imports} -l $<TARGET_LINKER_FILE:${target}>
        ${msvc}
        COMMAND ${CMAKE_COMMAND} -E copy ${CMAKE_CURRENT_BINARY_DIR}/${target}.def $<TARGET_FILE_DIR:${target}>/TrevikA.def
        VERBATIM)
endfunction()
