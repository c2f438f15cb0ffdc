# SPDX-License-Identifier: MIT
# What every target of the project shares: language level, warnings, sanitizers.

add_library(vantor_options INTERFACE)
target_compile_features(vantor_options INTERFACE cxx_std_17)
target_compile_options(vantor_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
                       -Woverloaded-virtual -Wformat=2)
target_compile_definitions(vantor_options INTERFACE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII
                           QT_DEPRECATED_WARNINGS)
if(VANTOR_WERROR)
    target_compile_options(vantor_options INTERFACE -Werror)
endif()
if(VANTOR_SANITIZE)
    target_compile_options(vantor_options INTERFACE -fsanitize=${VANTOR_SANITIZE} -fno-omit-frame-pointer
                           -fno-sanitize-recover=all)
    target_link_options(vantor_options INTERFACE -fsanitize=${VANTOR_SANITIZE})
else()
    add_link_options(-Wl,-z,defs)
endif()
if(VANTOR_COVERAGE)
    target_compile_options(vantor_options INTERFACE --coverage)
    target_link_options(vantor_options INTERFACE --coverage)
endif()

# vantor_harden(<target>): what Debian expects of whatever reads foreign files.
function(vantor_harden target)
    target_compile_definitions(${target} PRIVATE $<$<CONFIG:Release>:_FORTIFY_SOURCE=2>)
endfunction()

# vantor_add_library(<target>): a shared library of all sources below the current folder, without those of its
# engines. Files ending in _p.h are private, every other header is public and installed under its own folder.
function(vantor_add_library target)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS "*.cpp" "*.qrc")
    list(FILTER sources EXCLUDE REGEX "/engine/")
    file(GLOB_RECURSE private_headers CONFIGURE_DEPENDS "*_p.h")
    file(GLOB_RECURSE public_headers CONFIGURE_DEPENDS "*.h")
    if(private_headers)
        list(REMOVE_ITEM public_headers ${private_headers})
    endif()
    add_library(${target} SHARED ${sources} ${private_headers})
    target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}/src"
                   FILES ${public_headers})
    target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:vantor_options>)
    target_compile_features(${target} PUBLIC cxx_std_17)
    set_target_properties(${target} PROPERTIES
        AUTOMOC ON AUTORCC ON
        CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
        VERIFY_INTERFACE_HEADER_SETS ON
        INSTALL_RPATH "$ORIGIN" # the libraries find each other below any prefix
        LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
    vantor_harden(${target})
    add_library(${target}::${target} ALIAS ${target})
endfunction()

# vantor_add_engine(<target> <source> [libraries ...]): a module that libVantor loads when it needs it, from the
# folder "vantor" beside itself.
function(vantor_add_engine target source)
    add_library(${target} MODULE ${source})
    target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}/src")
    target_link_libraries(${target} PRIVATE vantor_options ${ARGN})
    set_target_properties(${target} PROPERTIES
        PREFIX "" CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
        LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib/vantor")
    vantor_harden(${target})
    install(TARGETS ${target} LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}/vantor" COMPONENT Core)
    add_dependencies(Vantor ${target})
endfunction()
