# What an installation and a package hold: program, library, codec library, headers, what other builds find them by,
# manual page. On Windows everything that is loaded stands in one folder.
include(CMakePackageConfigHelpers)

if(WIN32)
  set(filter_folder ${CMAKE_INSTALL_BINDIR})
else()
  set(filter_folder ${CMAKE_INSTALL_LIBDIR}/zorvan)
endif()
set(config_folder ${CMAKE_INSTALL_LIBDIR}/cmake/zorvan)

install(TARGETS zorvan_program RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS ZORVAN EXPORT zorvan
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(TARGETS Filter LIBRARY DESTINATION ${filter_folder})
install(DIRECTORY include/zorvan DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES docs/zorvan.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

# What is linked into the files of a package wants its notices to come along.
install(FILES README.md CHANGELOG.md docs/injection.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES /usr/share/doc/libcli11-dev/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR}/notices RENAME libcli11-dev.txt OPTIONAL)
if(WIN32)
  set(notices ${PROJECT_SOURCE_DIR}/build/targets/windows/share/doc/libjpeg-turbo/LICENSE.md
              ${PROJECT_SOURCE_DIR}/build/targets/windows/share/doc/libjpeg-turbo/README.ijg)
  foreach(notice ${notices})
    get_filename_component(name ${notice} NAME)
    install(FILES ${notice} DESTINATION ${CMAKE_INSTALL_DOCDIR}/notices RENAME libjpeg-turbo-${name})
  endforeach()
  foreach(package libz-mingw-w64-dev mingw-w64-common gcc-mingw-w64-base)
    install(FILES /usr/share/doc/${package}/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR}/notices RENAME ${package}.txt)
  endforeach()
endif()

install(EXPORT zorvan NAMESPACE zorvan:: DESTINATION ${config_folder})
configure_package_config_file(cmake/zorvan-config.cmake.in zorvan-config.cmake
  INSTALL_DESTINATION ${config_folder} PATH_VARS filter_folder)
write_basic_package_version_file(zorvan-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zorvan-config.cmake ${PROJECT_BINARY_DIR}/zorvan-config-version.cmake
  DESTINATION ${config_folder})
file(RELATIVE_PATH to_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/zorvan.pc.in zorvan.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zorvan.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# Packages: "cpack" in the build folder.
set(CPACK_PACKAGE_NAME zorvan)
set(CPACK_PACKAGE_CONTACT "The ZORVAN developers <zorvan@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_FILE_NAME zorvan-${PROJECT_VERSION}-windows-x86)
else()
  set(CPACK_GENERATOR DEB)
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_SECTION text)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
endif()
include(CPack)
