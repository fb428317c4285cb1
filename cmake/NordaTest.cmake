# norda_add_tests(program [LIBS target...] TESTS name...)
#
# One program of all tests that need the same libraries: linking and moc once, and headers read
# once. Each test, tests/<name>.cpp, is one of ctest's and runs in a process of its own, offscreen,
# in the C locale, with the sanitizers' leak check on where the build has one.

# A test runs for moments: building it is what takes time.
function(norda_compile_as_test target)
    target_compile_options(${target} PRIVATE -O0 -g1 -U_FORTIFY_SOURCE)
endfunction()

function(norda_add_tests program)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBS;TESTS")
    list(TRANSFORM arg_TESTS APPEND ".cpp" OUTPUT_VARIABLE sources)
    add_executable(${program} ${sources})
    target_link_libraries(${program} PRIVATE nordatest ${arg_LIBS})
    norda_compile_as_test(${program})
    target_precompile_headers(${program} REUSE_FROM nordatest)
    set_target_properties(${program} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")
    foreach(test IN LISTS arg_TESTS)
        add_test(NAME ${test} COMMAND ${program} ${test})
        set_tests_properties(${test} PROPERTIES
            TIMEOUT 600
            ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0;UBSAN_OPTIONS=print_stacktrace=1")
    endforeach()
endfunction()
