# What ./run and ./test share: the packages they need, and how they build.

norda_packages_base="g++ cmake ninja-build qtbase5-dev qttools5-dev qttools5-dev-tools
    qtmultimedia5-dev librsvg2-bin fonts-liberation"
norda_packages_tests=""
norda_packages_benchmarks="libbenchmark-dev libqwt-qt5-dev"

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
