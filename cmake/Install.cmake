# cmake --install: the programs, their manual pages, and the header with which engines load skeleton files, as a CMake
# package (find_package(rigbake), target rigbake::skeleton) and for pkg-config (rigbake).
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

foreach(program rigbake qeli skel QelHashProxy)
  if(TARGET ${program})
    install(TARGETS ${program} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  endif()
endforeach()
install(DIRECTORY docs/man/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 FILES_MATCHING PATTERN "*.1")
install(DIRECTORY Runtime/skeleton DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
install(FILES docs/skeleton-file.md docs/skel-dump.schema.json docs/skel-diff.schema.json
  DESTINATION ${CMAKE_INSTALL_DOCDIR})

set(package ${CMAKE_INSTALL_LIBDIR}/cmake/rigbake)
install(TARGETS rigbake_skeleton EXPORT rigbakeConfig)
install(EXPORT rigbakeConfig NAMESPACE rigbake:: DESTINATION ${package})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/rigbakeConfigVersion.cmake
  COMPATIBILITY SameMajorVersion ARCH_INDEPENDENT)
install(FILES ${PROJECT_BINARY_DIR}/rigbakeConfigVersion.cmake DESTINATION ${package})

# Told from its own place, so that an installed tree can be moved.
file(RELATIVE_PATH RIGBAKE_PREFIX_FROM_PKGCONFIG
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/rigbake.pc.in ${PROJECT_BINARY_DIR}/rigbake.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/rigbake.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
