# SPDX-License-Identifier: MIT
# vantor_image_formats(<variable>): the names of the image formats in lower case, from the rows of their table.
function(vantor_image_formats variable)
    vantor_format_names(names image/file/ImageFormats_p.h "{\"")
    set(${variable} ${names} PARENT_SCOPE)
endfunction()

# The same of the formats of annotations that are read, without blanks: "imagejroi".
function(vantor_annotation_formats variable)
    vantor_format_names(names annotation/AnnotationFormats.cpp "\"[a-z.]+\", Is")
    set(${variable} ${names} PARENT_SCOPE)
endfunction()

# vantor_format_names(<variable> <table> <regex>): the names of the rows of a table that go on as the regex.
function(vantor_format_names variable file behind)
    set(table "${PROJECT_SOURCE_DIR}/src/Vantor/${file}")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${table}")
    file(STRINGS "${table}" rows REGEX "^ *{\"[A-Za-z0-9 ]+\", ${behind}")
    set(names "")
    foreach(row IN LISTS rows)
        string(REGEX REPLACE "^ *{\"([A-Za-z0-9 ]+)\".*" "\\1" name "${row}")
        string(TOLOWER "${name}" name)
        string(REPLACE " " "" name "${name}")
        list(APPEND names ${name})
    endforeach()
    if(NOT names)
        message(FATAL_ERROR "${table} has no rows that begin as expected")
    endif()
    set(${variable} ${names} PARENT_SCOPE)
endfunction()
