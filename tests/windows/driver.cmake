# The driver's own tests, under Wine: it is installed in a fresh prefix, tested and uninstalled.
find_path(TREVIK_DOCTEST_DIRECTORY doctest/doctest.h NO_CMAKE_FIND_ROOT_PATH)
if(NOT TREVIK_DOCTEST_DIRECTORY)
    message(STATUS "No tests of the driver without doctest: scripts/setup installs it")
    return()
endif()
# That folder alone: the headers beside it are another system's.
file(COPY ${TREVIK_DOCTEST_DIRECTORY}/doctest DESTINATION ${PROJECT_BINARY_DIR}/doctest-headers)

add_executable(driver_test ${CMAKE_CURRENT_LIST_DIR}/driver_test.cpp)
target_include_directories(driver_test SYSTEM PRIVATE ${PROJECT_BINARY_DIR}/doctest-headers)
target_include_directories(driver_test PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_BINARY_DIR}/generated)
target_link_libraries(driver_test PRIVATE trevikv_client trevik_options setupapi)
target_link_options(driver_test PRIVATE -static)

set(with_driver ${CMAKE_CURRENT_LIST_DIR}/with_driver.sh ${PROJECT_BINARY_DIR}/driver)
add_test(NAME driver COMMAND ${with_driver} "0:A,5:AC" $<TARGET_FILE:driver_test>)
add_test(NAME driver_no_card COMMAND ${with_driver} "" $<TARGET_FILE:driver_test> --no-skip "--test-suite=no card")
set_tests_properties(driver driver_no_card PROPERTIES SKIP_RETURN_CODE 77 TIMEOUT 120)
