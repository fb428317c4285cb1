# Where things are installed, and the Debian packages that CPack makes of them.

set(NORDA_LIB_DIR "lib")
if(CMAKE_LIBRARY_ARCHITECTURE)
    set(NORDA_LIB_DIR "lib/${CMAKE_LIBRARY_ARCHITECTURE}")
endif()
set(NORDA_HOST_DIR "${NORDA_LIB_DIR}/norda")
set(NORDA_PLUGIN_DIR "${NORDA_HOST_DIR}/plugins")
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# norda_package(component package DEPENDS text SECTION text SUMMARY text TEXT text [CONTROL file...])
#
# CONTROL: scripts that run when the package is installed and removed
function(norda_package component package)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "DEPENDS;SECTION;SUMMARY;TEXT" "CONTROL")
    string(TOUPPER "${component}" COMPONENT)
    foreach(pair IN ITEMS
            "PACKAGE_NAME=${package}" "FILE_NAME=DEB-DEFAULT" "PACKAGE_DEPENDS=${arg_DEPENDS}"
            "PACKAGE_SECTION=${arg_SECTION}")
        string(REGEX MATCH "^([^=]+)=(.*)$" _ "${pair}")
        set(CPACK_DEBIAN_${COMPONENT}_${CMAKE_MATCH_1} "${CMAKE_MATCH_2}" PARENT_SCOPE)
    endforeach()
    set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_CONTROL_EXTRA "${arg_CONTROL}" PARENT_SCOPE)
    set(CPACK_COMPONENT_${COMPONENT}_DESCRIPTION "${arg_SUMMARY}\n${arg_TEXT}" PARENT_SCOPE)
    set(CPACK_DEBIAN_${COMPONENT}_DESCRIPTION "${arg_SUMMARY}\n${arg_TEXT}" PARENT_SCOPE)

    set(doc "share/doc/${package}")
    set(changelog "${PROJECT_BINARY_DIR}/packaging/${package}.changelog.gz")
    norda_compress("${PROJECT_SOURCE_DIR}/packaging/changelog" "${changelog}")
    install(FILES "${PROJECT_SOURCE_DIR}/packaging/copyright" DESTINATION "${doc}"
        COMPONENT ${component})
    install(FILES "${changelog}" DESTINATION "${doc}" RENAME changelog.gz COMPONENT ${component})
    list(APPEND CPACK_COMPONENTS_ALL ${component})
    set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} PARENT_SCOPE)
endfunction()

function(norda_compress input output)
    get_filename_component(folder "${output}" DIRECTORY)
    file(MAKE_DIRECTORY "${folder}")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${input}")
    execute_process(COMMAND gzip -9nc "${input}" OUTPUT_FILE "${output}"
        COMMAND_ERROR_IS_FATAL ANY)
endfunction()
