# Machine programs on the DLLs as they ship: one that asks for every function by name, and one of another compiler that
# asks for mangled names, linked by that compiler's tools with the import library made for them.
set(table ${CMAKE_CURRENT_BINARY_DIR}/function_table.inc)
add_custom_command(OUTPUT ${table}
    COMMAND ${Python3_EXECUTABLE} ${CMAKE_CURRENT_LIST_DIR}/function_table.py > ${table}
    DEPENDS ${CMAKE_CURRENT_LIST_DIR}/function_table.py ${PROJECT_SOURCE_DIR}/scripts/public_api.py ${TREVIK_HEADERS}
    VERBATIM)
add_executable(by_name ${CMAKE_CURRENT_LIST_DIR}/by_name.c ${table})
target_include_directories(by_name PRIVATE ${CMAKE_CURRENT_BINARY_DIR})
target_link_libraries(by_name PRIVATE trevik_options)
add_test(NAME by_name COMMAND by_name $<TARGET_FILE:TrevikA>)
add_test(NAME by_name_virtual COMMAND by_name $<TARGET_FILE:TrevikAVirtual>)

# Compiled and linked by another compiler's tools, with the import library made for it.
find_program(TREVIK_CLANG NAMES clang++ clang++-14)
find_program(TREVIK_LLD NAMES lld-link lld-link-14)
if(TREVIK_CLANG AND TREVIK_LLD AND TREVIK_LLVM_DLLTOOL)
    set(mangled ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/mangled_names.exe)
    set(object ${CMAKE_CURRENT_BINARY_DIR}/mangled_names.obj)
    set(kernel32 ${CMAKE_CURRENT_BINARY_DIR}/kernel32)
    file(WRITE ${kernel32}.def "LIBRARY KERNEL32.dll\nEXPORTS\nExitProcess@4\n")
    add_custom_command(OUTPUT ${mangled}
        COMMAND ${TREVIK_CLANG} --target=i686-pc-windows-msvc -O2 -ffreestanding -fno-exceptions -Wall -Wextra -Werror
            -c ${CMAKE_CURRENT_LIST_DIR}/mangled_names.cpp -o ${object}
        COMMAND ${TREVIK_LLVM_DLLTOOL} -m i386 -k -d ${kernel32}.def -l ${kernel32}.lib
        COMMAND ${TREVIK_LLD} /nologo /nodefaultlib /subsystem:console /entry:mainCRTStartup /out:${mangled} ${object}
            $<TARGET_FILE_DIR:TrevikA>/TrevikA.lib ${kernel32}.lib
        DEPENDS ${CMAKE_CURRENT_LIST_DIR}/mangled_names.cpp TrevikA VERBATIM)
    add_custom_target(mangled_names ALL DEPENDS ${mangled})
    add_test(NAME mangled_names COMMAND ${TREVIK_WINE} ${mangled})
else()
    message(STATUS "No test of mangled names without clang, lld and llvm: scripts/setup installs them")
endif()
