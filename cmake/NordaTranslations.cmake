# norda_translations(SOURCES NAME PREFIX): compiles translations/NAME_*.ts into the resources of PREFIX, in a
# source file whose name goes to SOURCES.
function(norda_translations sources name prefix)
    set(ts_files "")
    foreach(language IN ITEMS en de fr es)
        list(APPEND ts_files "translations/${name}_${language}.ts")
    endforeach()
    qt5_add_translation(qm_files ${ts_files})
    set(content "<RCC><qresource prefix=\"${prefix}\">")
    foreach(qm IN LISTS qm_files)
        get_filename_component(alias "${qm}" NAME)
        string(APPEND content "<file alias=\"${alias}\">${qm}</file>")
    endforeach()
    set(qrc "${CMAKE_CURRENT_BINARY_DIR}/${name}_translations.qrc")
    set(cpp "${CMAKE_CURRENT_BINARY_DIR}/qrc_${name}_translations.cpp")
    file(GENERATE OUTPUT "${qrc}" CONTENT "${content}</qresource></RCC>")
    add_custom_command(OUTPUT "${cpp}"
        COMMAND Qt5::rcc --name ${name}_translations --output "${cpp}" "${qrc}"
        DEPENDS ${qm_files} "${qrc}" VERBATIM)
    set_source_files_properties("${cpp}" PROPERTIES SKIP_AUTOMOC ON)
    set(${sources} "${cpp}" PARENT_SCOPE)
endfunction()
