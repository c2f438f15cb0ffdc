# SPDX-License-Identifier: MIT
# What `cmake --install` puts where, below any prefix. Components, a Debian package each: Core and Common (the libraries
# as programs need them), Documents (the program that reads them), Development, Viewer.
include(CMakePackageConfigHelpers)

# vantor_install_library(<library> <component> [<line for the package file> ...]): the library, its headers and the package
# that find_package(<library>) finds, which first looks for what the lines name.
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

# vantor_install_pkgconfig(<library> <description> <requires> <flags>): the same for those who ask pkg-config.
function(vantor_install_pkgconfig library description requires flags)
    string(TOLOWER ${library} name)
    file(RELATIVE_PATH to_prefix "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
    string(REGEX REPLACE "/$" "" to_prefix "${to_prefix}")
    configure_file(cmake/library.pc.in "${PROJECT_BINARY_DIR}/${name}.pc" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/${name}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
            COMPONENT Development)
endfunction()

vantor_install_library(Vantor Core)
vantor_install_pkgconfig(Vantor "Images, geometry, filters, PDF pages and OCR" "" "")
vantor_install_library(VantorCommon Common
    "find_dependency(Vantor ${PROJECT_VERSION})"
    "find_dependency(Qt5 5.15 COMPONENTS Core Gui Widgets Sql)")
# Qt is built so that position independent programs alone are not enough for it.
vantor_install_pkgconfig(VantorCommon "${PROJECT_DESCRIPTION}"
    "vantor >= ${PROJECT_VERSION} Qt5Core Qt5Gui Qt5Widgets Qt5Sql" "-fPIC")

if(VANTOR_BUILD_APP)
    install(TARGETS vantor-viewer RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT Viewer)
    install(FILES app/vantor-viewer.desktop DESTINATION "${CMAKE_INSTALL_DATADIR}/applications" COMPONENT Viewer)
    install(FILES app/vantor-viewer.1 DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT Viewer)
    set(icons "${CMAKE_INSTALL_DATADIR}/icons/hicolor")
    install(FILES app/icons/vantor-viewer.svg DESTINATION "${icons}/scalable/apps" COMPONENT Viewer)
    foreach(size IN ITEMS 16 24 32 48 64 128 256)
        install(FILES app/icons/vantor-viewer-${size}.png DESTINATION "${icons}/${size}x${size}/apps"
                RENAME vantor-viewer.png COMPONENT Viewer)
    endforeach()
endif()
