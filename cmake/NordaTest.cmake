# norda_add_tests(program [LIBS target...] TESTS name...)
#
# One program of all tests that need the same libraries: linking and moc once, and headers read
# once. Each test, tests/<name>.cpp, is one of ctest's and runs in a process of its own, offscreen,
# in the C locale, with the sanitizers' leak check on where the build has one.

# A test runs for moments: building it is what takes time.
function(norda_compile_as_test target)
    target_compile_options(${target} PRIVATE -O0 -g0 -U_FORTIFY_SOURCE)
endfunction()

function(norda_add_tests program)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBS;TESTS")
    list(TRANSFORM arg_TESTS APPEND ".cpp" OUTPUT_VARIABLE sources)
    add_executable(${program} ${sources})
    target_link_libraries(${program} PRIVATE ${arg_LIBS} nordatest)
    norda_compile_as_test(${program})
    target_precompile_headers(${program} REUSE_FROM nordatest)
    set_target_properties(${program} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")
    foreach(test IN LISTS arg_TESTS)
        add_test(NAME ${test} COMMAND ${program} ${test})
        set_tests_properties(${test} PROPERTIES
            TIMEOUT 1800
            ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0;UBSAN_OPTIONS=print_stacktrace=1")
    endforeach()
endfunction()

# norda_write_target_graph(file folder...)
#
# Every library and program of these folders: "folder: target", "target --> what it links" and
# "target -.-> what is built before it because it is loaded at run time".
function(norda_write_target_graph file)
    set(graph "")
    foreach(folder IN LISTS ARGN)
        string(REGEX REPLACE "/.*" "" box "${folder}")
        get_property(targets DIRECTORY "${PROJECT_SOURCE_DIR}/${folder}" PROPERTY BUILDSYSTEM_TARGETS)
        foreach(target IN LISTS targets)
            norda_is_product(${target} is_product)
            if(is_product)
                norda_arrows(${target} arrows)
                list(APPEND graph "${box}: ${target}" ${arrows})
            endif()
        endforeach()
    endforeach()
    list(JOIN graph "\n" text)
    file(CONFIGURE OUTPUT "${file}" CONTENT "${text}\n")
endfunction()

# A library or program of this project
function(norda_is_product target result)
    set(${result} OFF PARENT_SCOPE)
    if(TARGET ${target})
        get_target_property(type ${target} TYPE)
        get_target_property(is_imported ${target} IMPORTED)
        if(NOT is_imported AND NOT type STREQUAL UTILITY)
            set(${result} ON PARENT_SCOPE)
        endif()
    endif()
endfunction()

function(norda_arrows target result)
    set(arrows "")
    foreach(row "LINK_LIBRARIES -->" "INTERFACE_LINK_LIBRARIES -->" "MANUALLY_ADDED_DEPENDENCIES -.->")
        separate_arguments(row)
        list(GET row 0 property)
        list(GET row 1 arrow)
        get_target_property(others ${target} ${property})
        foreach(other IN LISTS others)
            norda_is_product("${other}" is_product)
            if(is_product)
                get_target_property(aliased ${other} ALIASED_TARGET)
                if(aliased)
                    set(other ${aliased})
                endif()
                list(APPEND arrows "${target} ${arrow} ${other}")
            endif()
        endforeach()
    endforeach()
    list(REMOVE_DUPLICATES arrows)
    set(${result} "${arrows}" PARENT_SCOPE)
endfunction()
