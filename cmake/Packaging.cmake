# Installation, and what `cpack --preset release` (.deb) and `cpack --preset windows` (zip) pack: docs/packages.md.
set(CPACK_PACKAGE_VENDOR "the TrevikA authors")
set(CPACK_PACKAGE_CONTACT "the TrevikA authors")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "function library of the TrevikA motion cards, with virtual cards")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

# The pages link to one another and to the examples as they do in the sources.
function(install_pages folder)
    install(FILES README.md CHANGELOG.md DESTINATION ${folder})
    install(DIRECTORY docs examples DESTINATION ${folder})
endfunction()

if(WIN32)
    include(PackagingWindows)
else()
    include(PackagingDebian)
endif()
include(CPack)

if(TARGET trevik-run AND CMAKE_BUILD_TYPE STREQUAL "Release" AND (WIN32 OR TARGET trevik-tests))
    add_subdirectory(tests/package)
endif()
