# What ./run and ./test share: the packages they need, and how they build.

norda_packages_base="g++ cmake ninja-build ccache qtbase5-dev qttools5-dev qttools5-dev-tools
    qtmultimedia5-dev libqt5serialbus5-dev libqt5serialbus5-plugins libqt5serialport5-dev
    libqwt-qt5-dev librsvg2-bin optipng fonts-liberation fonts-dejavu-core"
# Clocks that jump, other ways to write a number, buses of their own, a module in another language
norda_packages_tests="faketime locales dbus-daemon python3-dbus python3-gi"
norda_packages_dbc="python3-canmatrix"
norda_packages_benchmarks="libbenchmark-dev qtdeclarative5-dev qml-module-qtquick2"
norda_packages_costs="valgrind"
norda_packages_fuzz="clang"
norda_packages_format="clang-format"
norda_packages_lint="clang-tidy"
norda_packages_packages="lintian mmdebstrap doxygen"
norda_packages_desktop="xvfb openbox xdotool x11-utils imagemagick"
norda_packages_browser="chromium python3"
norda_packages_armhf="crossbuild-essential-armhf qemu-user mmdebstrap"
norda_packages_boarddisplay="qemu-system-gui"
norda_packages_board="qemu-system-arm qemu-user-static binfmt-support arch-test e2fsprogs kmod cpio imagemagick python3"

# What the board has, as far as building and testing need it.
norda_sysroot_packages=qtbase5-dev,qttools5-dev,qtmultimedia5-dev,libqwt-qt5-dev,libqt5multimedia5-plugins,libqt5serialbus5-dev,libqt5serialbus5-plugins,libqt5serialport5-dev,fonts-liberation,fonts-dejavu-core

norda_is_installed() {
    [ "$(dpkg-query -W -f='${Status}' "$1" 2>/dev/null)" = "install ok installed" ]
}

# norda_install GROUP...: installs what is missing of these groups, saying first what.
norda_install() {
    local missing="" group package packages
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        echo "apt is missing here: install by hand what cmake/setup.sh lists, then build with cmake --preset release." >&2
        return 1
    fi
    for group in "$@"; do
        packages=norda_packages_$group
        for package in ${!packages}; do
            norda_is_installed "$package" || missing="$missing $package"
        done
    done
    [ -z "$missing" ] && return 0

    local as_root=""
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "Missing packages:$missing. Install them as root, then call this again." >&2
            return 1
        fi
        as_root=sudo
    fi
    echo "Installing:$missing"
    $as_root apt-get update -qq
    # shellcheck disable=SC2086
    $as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends $missing >/dev/null
}

# The main archive that this machine's apt uses, as a line of its sources: it has all processors.
norda_main_archive() {
    local release
    release=$(. /etc/os-release && echo "$VERSION_CODENAME")
    apt-get indextargets --format 'deb $(REPO_URI) $(CODENAME) $(COMPONENT)' \
        "Created-By: Packages" "Codename: $release" "Component: main" | head -n 1
}

# norda_sysroot: unpacks the board's packages into build/sysroot-armhf, once.
norda_sysroot() {
    local sysroot=$PWD/build/sysroot-armhf tool
    [ -n "${NORDA_SYSROOT:-}" ] && return 0
    [ -f "$sysroot.packages" ] && [ "$(cat "$sysroot.packages")" = "$norda_sysroot_packages" ] &&
        return 0
    echo "Unpacking the packages of a 32-bit ARM Debian into build/sysroot-armhf"
    rm -rf "$sysroot"
    mkdir -p build
    norda_main_archive | mmdebstrap --architectures=armhf --variant=extract \
        --include="$norda_sysroot_packages" "" "$sysroot" - >"$(norda_log sysroot)" 2>&1 ||
        norda_fail sysroot
    # Unpacked packages are not set up; with this machine's choice both draw the same letters.
    cp -L --remove-destination /etc/fonts/conf.d/*.conf "$sysroot/etc/fonts/conf.d/"
    # Its own cache of fonts: under emulation that of an earlier sysroot would seem to fit.
    mkdir -p "$sysroot/var/cache/fontconfig"
    sed -i "s|<cachedir>/var/cache/fontconfig|<cachedir>$sysroot/var/cache/fontconfig|" \
        "$sysroot/etc/fonts/fonts.conf"
    # Devices are this machine's own: a pseudo terminal needs a mounted file system.
    rm -rf "$sysroot/dev"
    # So are tools that run while building.
    for tool in moc rcc uic lrelease lupdate lconvert; do
        ln -sf "/usr/lib/qt5/bin/$tool" "$sysroot/usr/lib/qt5/bin/$tool"
    done
    echo "$norda_sysroot_packages" >"$sysroot.packages"
}

# norda_build PRESET TARGET: configures where needed and builds; quiet when nothing changed.
norda_build() {
    local preset=$1 target=$2 folder=build/$1
    # A group that was installed since the last configuration adds targets.
    if [ ! -f "$folder/build.ninja" ] || ! grep -q "^build $target:" "$folder/build.ninja"; then
        cmake --preset "$preset" >"$(norda_log configure)" 2>&1 || norda_fail configure
    fi
    if [ -t 1 ]; then
        cmake --build --preset "$preset" --target "$target"
    else
        echo "Building $target ($preset)"
        cmake --build --preset "$preset" --target "$target" >"$(norda_log build)" 2>&1 ||
            norda_fail build
    fi
}

norda_log() {
    mkdir -p build
    echo "build/$1.log"
}

norda_fail() {
    tail -n 40 "build/$1.log" >&2
    echo "The $1 step failed; all of it is in build/$1.log." >&2
    return 1
}

# norda_fuzz SECONDS: runs every fuzz target for so long, one on each processor, and tells what it did.
norda_fuzz() {
    local target running=0 result=0
    echo "Fuzzing for $1 s each"
    for target in build/fuzz/bin/fuzz_*; do
        if [ "$running" -ge "$(nproc)" ]; then
            wait -n || result=1
            running=$((running - 1))
        fi
        norda_fuzz_one "$target" "$1" &
        running=$((running + 1))
    done
    for ((; running > 0; running--)); do
        wait -n || result=1
    done
    return $result
}

norda_fuzz_one() {
    local target=$1 seconds=$2 name=${1##*/fuzz_}
    local found=build/fuzz/found/$name log=build/fuzz/$name.log
    mkdir -p "$found"
    set -- "$found" "fuzz/corpus/$name" -max_total_time="$seconds" -timeout=20 -print_final_stats=1
    set -- "$@" -artifact_prefix="build/fuzz/fault-$name-" -rss_limit_mb=4096 -max_len=4096 -len_control=0
    [ -f "fuzz/$name.dict" ] && set -- "$@" -dict="fuzz/$name.dict"
    if ASAN_OPTIONS=detect_leaks=0 UBSAN_OPTIONS=print_stacktrace=1 "$target" "$@" >"$log" 2>&1; then
        awk -v name="$name" '
            /^stat::number_of_executed_units/ { executions = $2 }
            /^stat::average_exec_per_sec/ { rate = $2 }
            /^signal deliveries/ { more = ", " $0 }
            END { printf "%s: %d executions, %d a second%s\n", name, executions, rate, more }' "$log"
        return
    fi
    grep -m 1 -A 12 -E "ERROR|runtime error|ALARM" "$log" >&2 || true
    echo "A fault of $name: see $log and build/fuzz/fault-$name-*" >&2
    return 1
}

# norda_check_format: every source as clang-format writes it.
norda_check_format() {
    find host plugin output process bus module unit bench ecu moduled tests benchmarks fuzz \( -name '*.cpp' -o -name '*.h' \) -print0 |
        xargs -0 clang-format --dry-run --Werror
}

# norda_lint: clang-tidy over what ships, with the checks of .clang-tidy, after a sanitizer build. Most of
# its time goes to Qt's headers, so it reads several files as one, as that build compiles them, and without
# the precompiled headers, which are another compiler's.
norda_lint() {
    local log dirs='(host/src|plugin|output|process|bus|module|unit|bench|ecu|moduled)'
    log=$(norda_log lint)
    mkdir -p build/lint
    sed 's| -Winvalid-pch -include [^ ]*cmake_pch.hxx||' build/asan/compile_commands.json \
        >build/lint/compile_commands.json
    run-clang-tidy -quiet -p build/lint -checks=-bugprone-suspicious-include \
        "$PWD/(build/asan/$dirs/.*/Unity|$dirs)/.*\.c(pp|xx)\$" >"$log" 2>&1 && return 0
    grep -E "(error|warning):" "$log" | sort -u >&2
    echo "clang-tidy has more in $log." >&2
    return 1
}
