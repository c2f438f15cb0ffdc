# SPDX-License-Identifier: MIT
# What `cmake --install` puts where. Components: Core and Common (the libraries as programs need them), Development, Viewer.
include(CMakePackageConfigHelpers)

# vantor_install_library(<library> <component> [<line for the package file> ...]): the library, its headers and the package that
# find_package(<library>) finds, which first looks for what the lines name.
function(vantor_install_library library component)
    list(JOIN ARGN "\n" dependencies)
    set(folder "${CMAKE_INSTALL_LIBDIR}/cmake/${library}")
    install(TARGETS ${library} EXPORT ${library}Targets
            LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT ${component} NAMELINK_COMPONENT Development
            FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT Development)
    install(EXPORT ${library}Targets NAMESPACE ${library}:: DESTINATION "${folder}" COMPONENT Development)
    configure_package_config_file(cmake/PackageConfig.cmake.in "${PROJECT_BINARY_DIR}/${library}Config.cmake"
        INSTALL_DESTINATION "${folder}")
    write_basic_package_version_file("${PROJECT_BINARY_DIR}/${library}ConfigVersion.cmake"
        COMPATIBILITY SameMajorVersion)
    install(FILES "${PROJECT_BINARY_DIR}/${library}Config.cmake" "${PROJECT_BINARY_DIR}/${library}ConfigVersion.cmake"
            DESTINATION "${folder}" COMPONENT Development)
endfunction()
vantor_install_library(Vantor Core)
vantor_install_library(VantorCommon Common
    "find_dependency(Vantor ${PROJECT_VERSION})"
    "find_dependency(Qt5 5.15 COMPONENTS Core Gui Widgets Sql)")

if(VANTOR_BUILD_APP)
    install(TARGETS vantor-viewer RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT Viewer)
endif()
