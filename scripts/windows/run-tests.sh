#!/bin/bash
# Runs the tests that build.sh --tests has built, under Wine, in the Debian that wine-root.sh makes; arguments go to
# ctest. What is mounted and started for it is seen by nobody else and gone with it. Wants root.
set -euo pipefail
tree=$(readlink -f "$(dirname "$0")/../..")
build=$tree/build/windows
reasons=$tree/tests/windows

# The names of a list, as a pattern of ctest.
names()
{
    sed -n 's/^\([a-z_0-9]*\): .*/\1/p' "$1" | paste -sd '|'
}

# The entries of a list with their reasons.
show_list()
{
    echo "$1 ($(grep -c '^[A-Za-z_0-9:]*: ' "$2")):"
    sed -n 's/^\([A-Za-z_0-9:]*: \)/  \1/p' "$2"
}

# What ctest has told at its end, in one line.
totals()
{
    local failed all
    read -r failed all < <(sed -n 's/^[0-9]*% tests passed, \([0-9]*\) tests* failed out of \([0-9]*\)$/\1 \2/p' "$1") ||
        { echo "Under Wine: the tests did not come to their end"; return; }
    echo "Under Wine: $all programs run, $((all - failed)) passed, $failed failed"
}

# set_variable NAME VALUE: for the programs in Wine, which takes no QT_... from the environment.
set_variable()
{
    "${as_user[@]}" wine reg add 'HKCU\Environment' /f /v "$1" /d "$2" > /dev/null 2>&1
}

# Inside the root: a display, one Wine for all, a sound server without a device, ctest.
inside()
{
    local as_user=(setpriv --reuid clerk --regid clerk --clear-groups env HOME=/home/clerk LC_ALL=ru_RU.UTF-8 WINEDEBUG=-all)
    echo "127.0.0.1 localhost" >> /etc/hosts # a new Debian knows no names
    Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3> /tmp/display 2> /dev/null &
    until [ -s /tmp/display ]; do sleep 0.1; done
    DISPLAY=:$(cat /tmp/display)
    export DISPLAY
    "${as_user[@]}" pulseaudio --daemonize --exit-idle-time=-1 -n --load=module-null-sink \
        --load="module-native-protocol-unix socket=/tmp/sound auth-anonymous=1" 2> /dev/null
    "${as_user[@]}" wineserver --persistent
    set_variable QT_PLUGIN_PATH "Z:${build//\//\\}\\bin"
    set_variable QT_QPA_PLATFORM offscreen
    set_variable QT_QPA_FONTDIR 'Z:\usr\share\fonts\truetype\dejavu'
    cd "$build"
    # Programs that take seconds to start wait for the disk, not for a processor.
    export QTEST_FUNCTION_TIMEOUT=1200000 # ctest's own bounds end what hangs
    ctest --output-on-failure --no-tests=error -j"$((2 * $(nproc)))" -LE "bench|day|long" -E "^($(names "$reasons/not_under_wine.txt"))\$" "$@"
}

# Outside: a copy of the root that forgets what is written to it, with the tree at its place.
enter()
{
    local root
    root=$("$tree/scripts/windows/wine-root.sh" | tail -n 1)
    # shellcheck disable=SC2016
    unshare --mount --pid --fork --kill-child bash -euc '
        top=$(mktemp -d)
        mount -t tmpfs tmpfs "$top"
        mkdir "$top/new" "$top/work" "$top/root"
        mount -t overlay overlay -o "lowerdir=$0,upperdir=$top/new,workdir=$top/work" "$top/root"
        mkdir -p "$top/root$1"
        mount --bind "$1" "$top/root$1"
        mount --bind /dev "$top/root/dev"
        mount -t proc proc "$top/root/proc"
        exec chroot "$top/root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin TZ=UTC "$1/scripts/windows/run-tests.sh" \
            --inside "${@:2}"' "$root" "$tree" "$@"
}

if [ "${1:-}" = --inside ]; then
    shift
    inside "$@"
    exit
fi
cache=${VELDA_WINDOWS_CACHE:-$HOME/.cache/velda-windows}
[ "$(id -u)" = 0 ] || exec sudo VELDA_WINDOWS_CACHE="$cache" "$0" "$@"
status=0
log=$(mktemp)
trap 'rm "$log"' EXIT
enter "$@" | tee "$log" || status=$?
show_list "Not for Windows" "$reasons/left_out.txt"
show_list "Not run under Wine" "$reasons/not_under_wine.txt"
totals "$log"
exit "$status"
