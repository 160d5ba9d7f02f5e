# What a program that uses the library needs of it, and how CMake and pkg-config find it. Nothing that
# is installed names an absolute path, so the whole may be moved.

install(TARGETS brackwell EXPORT brackwell
    LIBRARY COMPONENT library NAMELINK_COMPONENT development
    ARCHIVE COMPONENT development
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/brackwell ${PROJECT_BINARY_DIR}/include/brackwell
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    COMPONENT development
    FILES_MATCHING PATTERN *.h)

# The library needs no other package, and there are no components for find_package to ask for.
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/brackwell)
install(EXPORT brackwell
    NAMESPACE brackwell::
    FILE brackwellTargets.cmake
    DESTINATION ${package_folder}
    COMPONENT development)
include(CMakePackageConfigHelpers)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/brackwellConfig.cmake.in brackwellConfig.cmake
    INSTALL_DESTINATION ${package_folder})
configure_file(${CMAKE_CURRENT_LIST_DIR}/brackwellConfigVersion.cmake.in brackwellConfigVersion.cmake @ONLY)
install(
    FILES
        ${CMAKE_CURRENT_BINARY_DIR}/brackwellConfig.cmake
        ${CMAKE_CURRENT_BINARY_DIR}/brackwellConfigVersion.cmake
    DESTINATION ${package_folder}
    COMPONENT development)

# The folders are said from that of brackwell.pc on; one that the user set to an absolute path stays so.
set(pkg_config_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
set(prefix_from_pc ${CMAKE_INSTALL_PREFIX})
cmake_path(RELATIVE_PATH prefix_from_pc BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
cmake_path(APPEND libdir_in_pc "\${prefix}" ${CMAKE_INSTALL_LIBDIR})
cmake_path(APPEND includedir_in_pc "\${prefix}" ${CMAKE_INSTALL_INCLUDEDIR})
configure_file(${CMAKE_CURRENT_LIST_DIR}/brackwell.pc.in brackwell.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/brackwell.pc
    DESTINATION ${pkg_config_folder}
    COMPONENT development)
