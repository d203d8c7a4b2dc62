include(CMakePackageConfigHelpers)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME TrevikA-${PROJECT_VERSION}-win32)

# Programs stand beside the DLL that they run with, as they do in the build folder.
install(TARGETS TrevikA RUNTIME DESTINATION . ARCHIVE DESTINATION lib)
install(FILES ${CMAKE_BINARY_DIR}/TrevikA.lib ${CMAKE_BINARY_DIR}/TrevikA.def DESTINATION lib)
if(TARGET TrevikAVirtual)
    install(TARGETS TrevikAVirtual RUNTIME DESTINATION virtual ARCHIVE DESTINATION virtual/lib)
    install(FILES ${CMAKE_BINARY_DIR}/virtual/TrevikA.lib ${CMAKE_BINARY_DIR}/virtual/TrevikA.def
        DESTINATION virtual/lib)
endif()
if(TARGET trevik-run)
    install(TARGETS trevik-run RUNTIME DESTINATION .)
    install(TARGETS trevik-run trevik-scope RUNTIME DESTINATION virtual)
endif()
install(DIRECTORY ${CMAKE_BINARY_DIR}/driver DESTINATION . OPTIONAL)

install(DIRECTORY include/trevik DESTINATION include)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/TrevikAConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES cmake/windows/TrevikAConfig.cmake ${CMAKE_BINARY_DIR}/TrevikAConfigVersion.cmake
    DESTINATION lib/cmake/TrevikA)
install(FILES ${TREVIK_BINDINGS} DESTINATION bindings)
install_pages(.)
install(FILES LICENSE DESTINATION .)
