#!/usr/bin/env bash
# Starts the bench on X displays with a window manager, twice each, as somebody would: the window must
# fit the display on both starts, and its keys must work. Pictures of all that are in build/desktop.
set -euo pipefail
cd "$(dirname "$0")/.."

bench=$PWD/build/release/bin/norda-bench
pictures=$PWD/build/desktop
home=$(mktemp -d)
children=()
trap 'kill "${children[@]}" 2>/dev/null || true; rm -rf "$home"' EXIT
mkdir -p "$pictures"
rm -f "$pictures"/*.png

fail() {
    echo "desktop: $*" >&2
    exit 1
}

# within SECONDS COMMAND...: repeats it until it succeeds.
within() {
    local end=$((SECONDS + $1))
    shift
    until "$@" 2>/dev/null; do
        ((SECONDS < end)) || return 1
        sleep 0.1
    done
}

# managed: the display has a window manager.
managed() {
    xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 'window id'
}

# found NAME: $window is the visible window of this name. A window that goes away while xdotool walks
# through them all is an error to xdotool, so callers ask again.
found() {
    local windows
    windows=$(xdotool search --onlyvisible --name "$1")
    window=${windows%%$'\n'*}
    [ -n "$window" ]
}

# display SIZE: an X display of this size with a window manager, as $DISPLAY.
display() {
    local number
    exec {number_pipe}<> <(:)
    Xvfb -displayfd "$number_pipe" -screen 0 "${1}x24" -nolisten tcp >/dev/null 2>&1 &
    children+=($!)
    read -r -t 20 number <&"$number_pipe" || fail "no X display of $1"
    exec {number_pipe}<&-
    export DISPLAY=:$number
    openbox >/dev/null 2>&1 &
    children+=($!)
    within 20 managed || fail "no window manager on the display of $1"
}

# start NAME: the bench on the display, until its window is there.
start() {
    "$bench" >"$home/$1.log" 2>&1 &
    bench_pid=$!
    children+=("$bench_pid")
    within 30 found 'Head unit bench' || fail "$1: no window: $(tail -n 1 "$home/$1.log")"
    xdotool windowactivate --sync "$window"
    sleep 1
}

# fits NAME SIZE: the window with its frame lies within the display.
fits() {
    local left top width height
    read -r left top width height < <(xwininfo -frame -id "$window" | awk '
        /Absolute upper-left X/ { x = $NF } /Absolute upper-left Y/ { y = $NF }
        /Width:/ { w = $NF } /Height:/ { h = $NF } END { print x, y, w, h }')
    if ((left < 0 || top < 0 || left + width > ${2%x*} || top + height > ${2#*x})); then
        fail "$1: the window is $width x $height at ($left, $top)"
    fi
}

picture() {
    import -window root "$pictures/$1.png"
}

stop() {
    kill -TERM "$bench_pid"
    wait "$bench_pid" || fail "$1 ended with $?: $(tail -n 1 "$home/$1.log")"
}

# key KEY...: to the bench, which needs a moment for each.
key() {
    xdotool key --delay 200 "$@"
    sleep 0.5
}

# tour NAME SIZE [FACTOR]: first start, every panel, full screen, then the second start.
tour() {
    local name=$1 size=$2
    export HOME=$home/$name XDG_CONFIG_HOME=$home/$name/config NORDA_HOST_ROOT=$home/$name/root
    export QT_SCALE_FACTOR=${3:-1}
    unset QT_QPA_PLATFORM
    mkdir -p "$HOME" "$XDG_CONFIG_HOME"
    display "$size"
    start "$name"
    fits "$name, first start" "$size"
    picture "$name-first"
    for panel in F5 F6 F7 F8 F9 p w a; do
        key "$panel"
        picture "$name-$panel"
        fits "$name with $panel" "$size"
    done
    key F11
    picture "$name-full"
    key F11
    stop "$name"
    start "$name-again"
    fits "$name, second start" "$size"
    picture "$name-second"
    stop "$name-again"
    echo "desktop: $name fits on both starts, with every panel"
}

# opens NAME PAGE: the unit has opened a page, which it keeps.
opens() {
    local kept=$NORDA_HOST_ROOT/media/flash/nvm/settings.ini
    within 20 grep -q "^UnitLastPage=$2" "$kept" ||
        fail "$1: expected page $2, the unit keeps '$(cat "$kept")'"
}

# unit NAME SIZE: the head unit alone covers the display, and answers a finger and a key.
unit() {
    local name=$1 size=$2 width=${2%x*} height=${2#*x}
    export HOME=$home/$name NORDA_HOST_ROOT=$home/$name/root
    unset QT_SCALE_FACTOR
    mkdir -p "$HOME"
    display "$size"
    build/release/bin/norda-unit --module none >"$home/$name.log" 2>&1 &
    bench_pid=$!
    children+=("$bench_pid")
    within 30 found '^Head unit$' || fail "$name: no window: $(tail -n 1 "$home/$name.log")"
    opens "$name" 80
    [ "$(xdotool getwindowgeometry --shell "$window" | grep -E '^(X|Y|WIDTH|HEIGHT)=' | xargs)" = \
        "X=0 Y=0 WIDTH=$width HEIGHT=$height" ] || fail "$name: the display is not covered"
    xdotool mousemove $(((width - 1280) / 2 + 608)) $(((height - 720) / 2 + 660)) click 1
    opens "$name" 82
    sleep 0.5
    picture "$name"
    key Escape
    opens "$name" 80
    stop "$name"
    echo "desktop: $name covers the display; a finger opens a page, Esc goes back"
}

tour 1024 1024x768
tour 1366 1366x768
tour 1920 1920x1080
tour 2560 2560x1440
tour high-dpi 2560x1440 2
unit unit-1280 1280x720
unit unit-1920 1920x1080
