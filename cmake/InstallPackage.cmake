# What a consumer finds the installed library by: a CMake package and a pkg-config file.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/zonstoryparser)
install(EXPORT zonstoryparserTargets NAMESPACE zonstoryparser:: DESTINATION ${package_dir} COMPONENT development)
configure_package_config_file(cmake/zonstoryparserConfig.cmake.in
    ${PROJECT_BINARY_DIR}/zonstoryparserConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zonstoryparserConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
# Relative, so that the installed tree may be moved.
file(RELATIVE_PATH ZON_PREFIX_FROM_PKGCONFIG /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
foreach(library IN ITEMS zonstoryparser zonscreenplay)
    configure_file(cmake/${library}.pc.in ${PROJECT_BINARY_DIR}/${library}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${library}.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endforeach()
install(FILES
    ${PROJECT_BINARY_DIR}/zonstoryparserConfig.cmake
    ${PROJECT_BINARY_DIR}/zonstoryparserConfigVersion.cmake
    DESTINATION ${package_dir} COMPONENT development)
