# SPDX-License-Identifier: MIT
include(CMakePackageConfigHelpers)

install(TARGETS Vantor VantorCommon EXPORT VantorTargets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(EXPORT VantorTargets NAMESPACE Vantor:: DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/Vantor")
configure_package_config_file(cmake/VantorConfig.cmake.in "${PROJECT_BINARY_DIR}/VantorConfig.cmake"
    INSTALL_DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/Vantor")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/VantorConfigVersion.cmake"
    COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/VantorConfig.cmake" "${PROJECT_BINARY_DIR}/VantorConfigVersion.cmake"
        DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/Vantor")
if(VANTOR_BUILD_APP)
    install(TARGETS vantor-viewer RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
endif()
