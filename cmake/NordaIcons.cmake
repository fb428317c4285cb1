# norda_add_icon_library(TARGET name MANIFEST file OUTPUT file.rcc)
#
# Renders the drawings that a manifest lists to PNG images and packs them into one binary resource
# file. A manifest row reads "resource path | drawing | stylesheet"; the stylesheet may be missing.
# One drawing serves several images that way: normal and pressed, level 0 to 4. Drawings and
# stylesheets are named from the manifest's folder; a row that starts with # is a comment.

find_program(RSVG_CONVERT rsvg-convert)
find_program(OPTIPNG optipng)

# Splits one row into ${path}, ${drawing} and ${style} of the caller, the last two as full paths.
function(norda_read_icon_row place folder row)
    if(NOT row MATCHES "^(/[^|]*[^| ]\\.png) *\\| *([^| ]+\\.svg) *(\\| *([^| ]+\\.css)? *)?$")
        message(FATAL_ERROR
                "${place}: expected '/resource/path.png | drawing.svg | style.css', got '${row}'")
    endif()
    set(path "${CMAKE_MATCH_1}")
    set(drawing "${folder}/${CMAKE_MATCH_2}")
    set(style "")
    if(CMAKE_MATCH_4)
        set(style "${folder}/${CMAKE_MATCH_4}")
    endif()
    foreach(input IN LISTS drawing style)
        if(NOT EXISTS "${input}")
            message(FATAL_ERROR "${place}: ${path} is drawn from ${input}, which does not exist")
        endif()
    endforeach()
    set(path "${path}" PARENT_SCOPE)
    set(drawing "${drawing}" PARENT_SCOPE)
    set(style "${style}" PARENT_SCOPE)
endfunction()

# Renders one image whenever its drawing, its stylesheet or its row has changed. Rows without a filter
# are no larger with these drawings, and there is none to undo when they are decoded.
function(norda_render_icon png drawing style manifest)
    set(options "")
    if(style)
        set(options --stylesheet "${style}")
    endif()
    get_filename_component(folder "${png}" DIRECTORY)
    file(MAKE_DIRECTORY "${folder}")
    add_custom_command(OUTPUT "${png}"
        COMMAND "${RSVG_CONVERT}" ${options} --output "${png}" "${drawing}"
        COMMAND "${OPTIPNG}" -quiet -nx -f0 -zc9 -zm8 -zs0 "${png}"
        DEPENDS "${drawing}" ${style} "${manifest}" COMMENT "" VERBATIM)
endfunction()

function(norda_add_icon_library)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "TARGET;MANIFEST;OUTPUT" "")
    foreach(name IN ITEMS TARGET MANIFEST OUTPUT)
        if(NOT arg_${name})
            message(FATAL_ERROR "norda_add_icon_library: ${name} is missing")
        endif()
    endforeach()
    if(NOT RSVG_CONVERT)
        message(FATAL_ERROR "rsvg-convert is missing: install the package librsvg2-bin")
    endif()
    if(NOT OPTIPNG)
        message(FATAL_ERROR "optipng is missing: install the package of this name")
    endif()
    get_filename_component(manifest "${arg_MANIFEST}" ABSOLUTE)
    get_filename_component(folder "${manifest}" DIRECTORY)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${manifest}")
    set(images "${CMAKE_CURRENT_BINARY_DIR}/${arg_TARGET}")

    file(STRINGS "${manifest}" rows)
    set(qrc "<RCC><qresource prefix=\"/\">\n")
    set(pngs "")
    set(number 0)
    foreach(row IN LISTS rows)
        math(EXPR number "${number} + 1")
        string(REPLACE "\t" " " row "${row}")
        if(row MATCHES "^ *(#|$)")
            continue()
        endif()
        norda_read_icon_row("${manifest}:${number}" "${folder}" "${row}")
        set(png "${images}${path}")
        if(png IN_LIST pngs)
            message(FATAL_ERROR "${manifest}:${number}: ${path} stands twice")
        endif()
        norda_render_icon("${png}" "${drawing}" "${style}" "${manifest}")
        list(APPEND pngs "${png}")
        string(APPEND qrc "<file alias=\"${path}\">${png}</file>\n")
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
