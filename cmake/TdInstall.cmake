# What `cmake --install` puts where: the three libraries, their public headers (installed by td_add_folder), the package
# files for find_package(TdCommon), and the desktop (installed by desktop/).

include(CMakePackageConfigHelpers)

set(packageFolder "${CMAKE_INSTALL_LIBDIR}/cmake/TdCommon")
install(TARGETS txengine TdBasic TdCommon EXPORT TdCommonTargets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/TdCommon")
install(EXPORT TdCommonTargets NAMESPACE Td:: DESTINATION "${packageFolder}")
configure_package_config_file("${CMAKE_CURRENT_LIST_DIR}/TdCommonConfig.cmake.in" "${CMAKE_BINARY_DIR}/TdCommonConfig.cmake"
                              INSTALL_DESTINATION "${packageFolder}")
write_basic_package_version_file("${CMAKE_BINARY_DIR}/TdCommonConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(FILES "${CMAKE_BINARY_DIR}/TdCommonConfig.cmake" "${CMAKE_BINARY_DIR}/TdCommonConfigVersion.cmake"
        DESTINATION "${packageFolder}")
