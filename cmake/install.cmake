# What lets other projects find an installed library: the CMake package and the pkg-config file.
include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/kobase)
install(EXPORT kobase NAMESPACE kobase:: FILE kobase-targets.cmake
        DESTINATION ${package_folder} COMPONENT development)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/kobase-config-version.cmake
                                 COMPATIBILITY SameMajorVersion)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/kobase-config.cmake.in
                              ${PROJECT_BINARY_DIR}/kobase-config.cmake
                              INSTALL_DESTINATION ${package_folder}
                              PATH_VARS CMAKE_INSTALL_BINDIR)
install(FILES ${PROJECT_BINARY_DIR}/kobase-config.cmake
              ${PROJECT_SOURCE_DIR}/cmake/kobase-preprocess.cmake
              ${PROJECT_BINARY_DIR}/kobase-config-version.cmake
        DESTINATION ${package_folder} COMPONENT development)

# The prefix is written relative to the file's own place, so that an installed tree can be moved.
file(RELATIVE_PATH prefix_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" prefix_from_pc "${prefix_from_pc}")
configure_file(${PROJECT_SOURCE_DIR}/cmake/kobase.pc.in ${PROJECT_BINARY_DIR}/kobase.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/kobase.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
