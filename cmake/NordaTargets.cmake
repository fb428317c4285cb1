# What every target of this project has in common.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC ON)

# Compiling is what a check takes its time for: what was compiled before comes from the cache, also
# in another clone.
find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CMAKE_COMMAND}" -E env
        "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}" CCACHE_NOHASHDIR=1
        CCACHE_SLOPPINESS=pch_defines,time_macros "${CCACHE}")
endif()

set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

add_compile_options(-Wall -Wextra -Werror)
# No path of the machine that built it stays in what is shipped.
add_compile_options("-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=")
add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack)
if(NOT NORDA_SANITIZE)
    add_compile_options(-fstack-protector-strong)
    add_compile_definitions(_FORTIFY_SOURCE=2)
endif()
# What moc and the keyword `signals` rely on stays; implicit conversions from C strings do not.
add_compile_definitions(QT_NO_CAST_TO_ASCII QT_DEPRECATED_WARNINGS)

if(NORDA_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined
                        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
if(NORDA_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# norda_precompile(target [WIDGETS])
#
# Reading Qt's headers is most of compiling a small file, which is also why the presets compile several
# files as one.
function(norda_precompile target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "WIDGETS" "" "")
    target_precompile_headers(${target} PRIVATE
        <QDir> <QFile> <QHash> <QJsonArray> <QJsonObject> <QMap> <QMetaMethod> <QObject> <QRegularExpression>
        <QSet> <QStringList> <QTimer> <QVariant> <QVector> <algorithm> <cmath> <functional> <memory> <optional>)
    if(arg_WIDGETS)
        target_precompile_headers(${target} PRIVATE <QApplication> <QBoxLayout> <QLabel> <QPainter> <QPushButton>)
    endif()
endfunction()
