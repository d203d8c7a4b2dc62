# Under Wine, in a fresh prefix where the driver is installed, and uninstalled at the end: the driver's own tests, and
# machine programs on the real DLL.
set(with_driver ${CMAKE_CURRENT_SOURCE_DIR}/with_driver.sh ${CMAKE_BINARY_DIR}/driver)

add_executable(driver_test driver_test.cpp)
target_include_directories(driver_test PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/tests ${PROJECT_BINARY_DIR}/generated)
target_link_libraries(driver_test PRIVATE trevikv_client trevik_options doctest::doctest setupapi)
add_test(NAME driver COMMAND ${with_driver} "0:A,5:AC" $<TARGET_FILE:driver_test>)
add_test(NAME driver_no_card COMMAND ${with_driver} "" $<TARGET_FILE:driver_test> --no-skip "--test-suite=no card")

add_executable(end_to_end end_to_end_test.cpp)
target_include_directories(end_to_end PRIVATE ${PROJECT_SOURCE_DIR}/tests)
target_link_libraries(end_to_end PRIVATE TrevikA trevikv_client trevik_options doctest::doctest)
add_test(NAME end_to_end COMMAND ${with_driver} "0:A,5:AC" $<TARGET_FILE:end_to_end>)
foreach(how free exit)
    add_test(NAME unload_real_${how} COMMAND ${with_driver} "0:A" $<TARGET_FILE:unload> ${how})
endforeach()
# The tool that cuts parts, in real time.
add_test(NAME part_on_driver
    COMMAND ${with_driver} "0:A" $<TARGET_FILE:trevik-run> ${CMAKE_CURRENT_SOURCE_DIR}/plate.ngc)

set(tests driver driver_no_card end_to_end unload_real_free unload_real_exit part_on_driver)
set_tests_properties(${tests} PROPERTIES SKIP_RETURN_CODE 77 TIMEOUT 120 WORKING_DIRECTORY ${CMAKE_BINARY_DIR})

# No instruction of the dispatch code touches the registers that it saves for the cards.
add_test(NAME driver_registers COMMAND sh -c
    "code=$(${CMAKE_OBJDUMP} -d $<JOIN:$<TARGET_OBJECTS:trevikv_dispatch>, >) && ! echo \"$code\" | grep -E '%(xmm|mm|st)'")
