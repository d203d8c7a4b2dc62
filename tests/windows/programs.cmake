# Machine programs on the DLLs as they ship: one that asks for functions by name, one of another compiler that asks
# for mangled names, and one that works on the real DLL with the kernel driver's virtual cards.

add_test(NAME exports COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/tests/api/exports.py $<TARGET_FILE:TrevikA>)
add_test(NAME exports_virtual
    COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/tests/api/exports.py $<TARGET_FILE:TrevikAVirtual> --virtual)

set(table ${CMAKE_CURRENT_BINARY_DIR}/function_table.inc)
add_custom_command(OUTPUT ${table}
    COMMAND ${Python3_EXECUTABLE} ${CMAKE_CURRENT_LIST_DIR}/function_table.py > ${table}
    DEPENDS ${CMAKE_CURRENT_LIST_DIR}/function_table.py ${PROJECT_SOURCE_DIR}/scripts/public_api.py ${TREVIK_HEADERS}
    VERBATIM)
add_executable(by_name ${CMAKE_CURRENT_LIST_DIR}/by_name.c ${table})
target_include_directories(by_name PRIVATE ${CMAKE_CURRENT_BINARY_DIR})
target_link_libraries(by_name PRIVATE trevik_options)
add_test(NAME by_name COMMAND ${TREVIK_WINE} $<TARGET_FILE:by_name> $<TARGET_FILE:TrevikA>)
add_test(NAME by_name_virtual COMMAND ${TREVIK_WINE} $<TARGET_FILE:by_name> $<TARGET_FILE:TrevikAVirtual>)

# Compiled and linked by another compiler's tools, with the import library made for it.
find_program(TREVIK_CLANG NAMES clang++ clang++-14)
find_program(TREVIK_LLD NAMES lld-link lld-link-14)
if(TREVIK_CLANG AND TREVIK_LLD AND TREVIK_LLVM_DLLTOOL)
    set(mangled ${CMAKE_BINARY_DIR}/virtual/mangled_names.exe)
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

add_executable(end_to_end ${CMAKE_CURRENT_LIST_DIR}/end_to_end_test.cpp)
target_link_libraries(end_to_end PRIVATE TrevikA trevikv_client trevik_options doctest::doctest)
add_test(NAME end_to_end COMMAND ${with_driver} "0:A,5:AC" $<TARGET_FILE:end_to_end>)
# The tool that cuts parts, in real time.
add_test(NAME part_on_driver
    COMMAND ${with_driver} "0:A" $<TARGET_FILE:trevik-run> ${CMAKE_CURRENT_LIST_DIR}/plate.ngc)
foreach(test by_name by_name_virtual end_to_end part_on_driver)
    set_tests_properties(${test} PROPERTIES SKIP_RETURN_CODE 77 TIMEOUT 120)
endforeach()
