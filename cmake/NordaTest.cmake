# norda_add_test(name [SOURCES file...] [LIBS target...])
#
# One test program from tests/<name>.cpp. It runs offscreen, in the C locale, with the sanitizers'
# leak check on where the build has one.

function(norda_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBS")
    add_executable(${name} ${name}.cpp ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE nordatest ${arg_LIBS})
    # A test runs for moments: building it is what takes time.
    target_compile_options(${name} PRIVATE -O0 -g1 -U_FORTIFY_SOURCE)
    set_target_properties(${name} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES
        TIMEOUT 600
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0;UBSAN_OPTIONS=print_stacktrace=1")
endfunction()
