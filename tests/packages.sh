#!/usr/bin/env bash
# Installs the packages into a clean root, uses them there and removes them without remains; then
# unpacks those for 32-bit ARM, where they were built, runs the bench under emulation and compares
# its pictures.
#   tests/packages.sh build/release/packages [build/armhf/packages]
set -euo pipefail
cd "$(dirname "$0")/.."
. cmake/setup.sh

say() { echo "packages: $*"; }
die() {
    echo "packages: $*" >&2
    exit 1
}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
root=$work/root

# Everything in the root but what the tools for packages and accounts write for themselves.
contents() {
    (cd "$root" && find . -xdev \
        \( -path ./var/lib/dpkg -o -path ./var/log -o -path ./var/cache -o -path ./proc \
        -o -path ./tmp -o -path ./root -o -path ./run -o -path './etc/*-' \
        -o -path ./etc/ld.so.cache \) -prune -o -print | sort)
}

# Runs a program in the root, with a /proc of its own.
inside() {
    unshare --fork --pid --root="$root" --mount-proc "$@"
}

expect_gallery() {
    [ "$(find "$1" -name '*.png' | wc -l)" -ge 30 ] || die "expected 30 pictures in $1"
}

check_native() {
    local packages=$1
    lintian --fail-on error "$packages"/*.deb || die "lintian found errors"
    say "no errors of lintian in $(find "$packages" -maxdepth 1 -name '*.deb' | wc -l) packages"
    norda_main_archive | mmdebstrap --variant=minbase --include=libqt5widgets5,libqt5multimedia5,libqwt-qt5-6 \
        --include=libqt5serialbus5,libqt5serialbus5-plugins,libqt5serialport5,dbus,adduser \
        --include=fonts-liberation,fonts-dejavu-core,qtbase5-dev,g++,cmake,make "" "$root" - \
        >"$(norda_log root)" 2>&1 || norda_fail root
    contents >"$work/before"
    mkdir "$root/packages"
    cp "$packages"/*.deb "$root/packages"
    inside sh -c 'dpkg -i /packages/*.deb' >"$work/install.log" 2>&1 ||
        die "$(tail -n 3 "$work/install.log")"
    say "installed into a clean root"

    inside env QT_QPA_PLATFORM=offscreen HOME=/tmp norda-bench --headless --speed max \
        --duration 60 --gallery /tmp/gallery >/dev/null 2>"$work/bench.log" ||
        die "$(tail -n 3 "$work/bench.log")"
    expect_gallery "$root/tmp/gallery"
    cp -r "$root/tmp/gallery" "$work/gallery"
    say "the installed bench drives"

    inside norda-ecu --version | grep -q '^norda-ecu ' || die "expected the installed car to start"
    say "the installed car starts"

    # As the service does, by the installed configuration but without a module.
    inside grep -q '^norda:' /etc/passwd || die "expected the user norda"
    inside env HOME=/tmp timeout --preserve-status 5 norda-unit -platform offscreen --module none \
        --page climate 2>"$work/unit.log" || die "$(tail -n 3 "$work/unit.log")"
    grep -q '^UnitLastPage=82$' "$root/var/lib/norda/media/flash/nvm/settings.ini" ||
        die "expected the installed unit to keep its last page"
    say "the installed unit keeps its last page"

    # The installed policy, with the program as root: only the user norda may own the name.
    inside sh -c 'mkdir -p /run/dbus && dbus-daemon --system --fork --print-pid >/tmp/bus.pid
        norda-moduled --system 2>/tmp/refused; test $? -eq 2 || exit 1
        setpriv --reuid=norda --regid=norda --clear-groups timeout 5 norda-moduled --system >/tmp/served
        kill "$(cat /tmp/bus.pid)"; rm -rf /run/dbus; grep -q "serving system" /tmp/served' ||
        die "expected the installed module to serve as its user only: $(cat "$root/tmp/refused")"
    say "the installed module serves on the system bus, as its user only"

    cp -r tests/sdk "$root/tmp/sdk"
    inside sh -c 'cd /tmp/sdk && cmake -B build . && cmake --build build' \
        >"$work/sdk.log" 2>&1 || die "$(tail -n 5 "$work/sdk.log")"
    say "$(inside env QT_QPA_PLATFORM=offscreen /tmp/sdk/build/loadit \
        /tmp/sdk/build/libclockplugin.so 2>/dev/null)"

    rm -rf "$root/packages"
    # shellcheck disable=SC2046
    inside dpkg --purge $(for deb in "$packages"/*.deb; do dpkg-deb -f "$deb" Package; done) \
        >/dev/null 2>&1
    contents >"$work/after"
    diff "$work/before" "$work/after" || die "expected nothing to be left of the packages"
    say "removed without remains"
}

check_arm() {
    local packages=$1 deb unpacked=$work/arm
    local sysroot=${NORDA_SYSROOT:-$PWD/build/sysroot-armhf}
    for deb in "$packages"/*.deb; do
        [ "$(dpkg-deb -f "$deb" Architecture)" = armhf ] || die "$deb: expected the architecture armhf"
        dpkg-deb -x "$deb" "$unpacked"
    done
    QT_QPA_PLATFORM=offscreen qemu-arm -L "$sysroot" "$unpacked/usr/bin/norda-bench" --headless \
        --speed max --duration 60 --gallery "$work/arm-gallery" >/dev/null 2>"$work/arm.log" ||
        die "$(tail -n 3 "$work/arm.log")"
    expect_gallery "$work/arm-gallery"
    say "the bench from the ARM packages drives under emulation"
    build/release/bin/norda-compare-pictures "$work/gallery" "$work/arm-gallery" \
        >"$work/compared" || die "expected the pictures of the other processor"
    say "both processors draw the same: $(cat "$work/compared")"
}

check_native "$1"
[ $# -lt 2 ] || check_arm "$2"
