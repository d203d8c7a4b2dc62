include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(CPACK_GENERATOR DEB)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}) # the tools' libTrevikA is in the package itself
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS python3)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Flat C functions for 4-axis PCI pulse-train motion cards: moves, lines, arcs,
helices, homing, interrupts. Here the library stands on virtual cards that move
as real ones do. With headers, pkg-config file, CMake package, bindings for
Python and C#, and the tools trevik-run and trevik-scope.")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# The tools find the library beside them wherever the tree is put.
file(RELATIVE_PATH library_from_programs /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
set_target_properties(trevik-run trevik-scope PROPERTIES INSTALL_RPATH $ORIGIN/${library_from_programs})
install(TARGETS TrevikA EXPORT TrevikA INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(TARGETS trevik-run trevik-scope)
install(DIRECTORY include/trevik TYPE INCLUDE)

set(cmake_package ${CMAKE_INSTALL_LIBDIR}/cmake/TrevikA)
install(EXPORT TrevikA NAMESPACE TrevikA:: FILE TrevikAConfig.cmake DESTINATION ${cmake_package})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/TrevikAConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/TrevikAConfigVersion.cmake DESTINATION ${cmake_package})
file(RELATIVE_PATH prefix_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" prefix_from_pc ${prefix_from_pc})
configure_file(cmake/trevika.pc.in trevika.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/trevika.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(FILES ${TREVIK_BINDINGS_DIR}/trevika.py DESTINATION lib/python3/dist-packages)
install(FILES ${TREVIK_BINDINGS_DIR}/TrevikA.cs DESTINATION ${CMAKE_INSTALL_DATADIR}/trevika)
set(pages ${CMAKE_INSTALL_DATADIR}/doc/trevika)
install_pages(${pages})
install(FILES LICENSE DESTINATION ${pages} RENAME copyright)
