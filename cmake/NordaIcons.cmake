# norda_add_icon_library(TARGET name MANIFEST file OUTPUT file.rcc)
#
# Renders the drawings that a manifest lists to PNG images and packs them into one binary resource
# file. A manifest row reads "resource path | drawing | stylesheet"; the stylesheet may be empty. One
# drawing serves several images that way: normal and pressed, level 0 to 4.

find_program(RSVG_CONVERT rsvg-convert)

function(norda_add_icon_library)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "TARGET;MANIFEST;OUTPUT" "")
    if(NOT RSVG_CONVERT)
        message(FATAL_ERROR "rsvg-convert is missing: install the package librsvg2-bin")
    endif()
    get_filename_component(folder "${arg_MANIFEST}" ABSOLUTE)
    get_filename_component(folder "${folder}" DIRECTORY)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${arg_MANIFEST}")
    set(images "${CMAKE_CURRENT_BINARY_DIR}/${arg_TARGET}")

    file(STRINGS "${arg_MANIFEST}" rows)
    set(qrc "<RCC><qresource prefix=\"/\">")
    set(pngs "")
    set(number 0)
    foreach(row IN LISTS rows)
        math(EXPR number "${number} + 1")
        if(row MATCHES "^ *(#|$)")
            continue()
        endif()
        if(NOT row MATCHES "^(/[^|]+\\.png) *\\| *([^| ]+\\.svg) *\\| *([^| ]*) *$")
            message(FATAL_ERROR "${arg_MANIFEST}:${number}: expected "
                                "'/resource/path.png | drawing.svg | style.css', got '${row}'")
        endif()
        string(STRIP "${CMAKE_MATCH_1}" path)
        set(drawing "${folder}/${CMAKE_MATCH_2}")
        set(style "${CMAKE_MATCH_3}")
        if(NOT EXISTS "${drawing}")
            message(FATAL_ERROR "${arg_MANIFEST}:${number}: no drawing ${drawing}")
        endif()
        set(png "${images}${path}")
        if(png IN_LIST pngs)
            message(FATAL_ERROR "${arg_MANIFEST}:${number}: ${path} stands twice")
        endif()
        set(options "")
        set(inputs "${drawing}")
        if(style)
            if(NOT EXISTS "${folder}/${style}")
                message(FATAL_ERROR "${arg_MANIFEST}:${number}: no stylesheet ${folder}/${style}")
            endif()
            set(options --stylesheet "${folder}/${style}")
            list(APPEND inputs "${folder}/${style}")
        endif()
        get_filename_component(png_folder "${png}" DIRECTORY)
        file(MAKE_DIRECTORY "${png_folder}")
        add_custom_command(OUTPUT "${png}"
            COMMAND "${RSVG_CONVERT}" ${options} -o "${png}" "${drawing}"
            DEPENDS ${inputs} COMMENT "" VERBATIM)
        list(APPEND pngs "${png}")
        string(APPEND qrc "<file alias=\"${path}\">${png}</file>")
    endforeach()

    set(qrc_file "${images}/images.qrc")
    file(CONFIGURE OUTPUT "${qrc_file}" CONTENT "${qrc}</qresource></RCC>\n" @ONLY)
    get_filename_component(output_folder "${arg_OUTPUT}" DIRECTORY)
    file(MAKE_DIRECTORY "${output_folder}")
    # PNG data does not shrink any further, and images that are not packed load without a copy.
    add_custom_command(OUTPUT "${arg_OUTPUT}"
        COMMAND Qt5::rcc --binary --no-compress --output "${arg_OUTPUT}" "${qrc_file}"
        DEPENDS ${pngs} "${qrc_file}" COMMENT "Packing ${arg_OUTPUT}" VERBATIM)
    add_custom_target(${arg_TARGET} ALL DEPENDS "${arg_OUTPUT}")
endfunction()
