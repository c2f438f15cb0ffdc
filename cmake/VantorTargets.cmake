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

# vantor_add_library(<target>): a shared library, to which the folders below the current one add their sources.
function(vantor_add_library target)
    add_library(${target} SHARED)
    target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}/src")
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

# vantor_sources(<target> <file> ...): the files of the current folder that make the library. Files ending in _p.h are
# private, every other header is public and installed under its own folder.
function(vantor_sources target)
    foreach(file IN LISTS ARGN)
        set(path "${CMAKE_CURRENT_SOURCE_DIR}/${file}")
        if(file MATCHES "[.]h$" AND NOT file MATCHES "_p[.]h$")
            target_sources(${target} PUBLIC FILE_SET HEADERS FILES "${path}")
        else()
            target_sources(${target} PRIVATE "${path}")
        endif()
    endforeach()
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

# vantor_check_lists(<folder> ...): every source below the folders is named by the CMakeLists.txt that is nearest above it.
function(vantor_check_lists)
    list(TRANSFORM ARGN PREPEND "${PROJECT_SOURCE_DIR}/" OUTPUT_VARIABLE folders)
    foreach(suffix IN ITEMS cpp h qrc)
        list(TRANSFORM folders APPEND "/[A-Za-z]*.${suffix}" OUTPUT_VARIABLE patterns)
        file(GLOB_RECURSE found CONFIGURE_DEPENDS ${patterns})
        foreach(path IN LISTS found)
            cmake_path(GET path FILENAME name)
            cmake_path(GET path PARENT_PATH folder)
            while(NOT EXISTS "${folder}/CMakeLists.txt")
                cmake_path(GET folder PARENT_PATH folder)
            endwhile()
            file(STRINGS "${folder}/CMakeLists.txt" text REGEX "^[^#]")
            string(REPLACE "." "[.]" pattern "${name}")
            if(NOT text MATCHES "[ ;(/]${pattern}[ ;)]")
                message(SEND_ERROR "${path} is in no list: ${folder}/CMakeLists.txt has to name it")
            endif()
        endforeach()
    endforeach()
endfunction()
