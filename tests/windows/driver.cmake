# The driver's own tests, under Wine: it is installed in a fresh prefix, tested and uninstalled.
add_executable(driver_test ${CMAKE_CURRENT_LIST_DIR}/driver_test.cpp)
target_include_directories(driver_test PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_BINARY_DIR}/generated)
target_link_libraries(driver_test PRIVATE trevikv_client trevik_options setupapi doctest::doctest)

set(with_driver ${CMAKE_CURRENT_LIST_DIR}/with_driver.sh ${PROJECT_BINARY_DIR}/driver)
add_test(NAME driver COMMAND ${with_driver} "0:A,5:AC" $<TARGET_FILE:driver_test>)
add_test(NAME driver_no_card COMMAND ${with_driver} "" $<TARGET_FILE:driver_test> --no-skip "--test-suite=no card")
set_tests_properties(driver driver_no_card PROPERTIES SKIP_RETURN_CODE 77 TIMEOUT 120)
