#!/bin/bash
# Runs a test program for Windows, with the libraries of build/windows/bin, as the user of the Debian that wine-root.sh
# makes, but for the functions of it that the lists of tests/windows name. It stands in for the system wherever CMake
# runs what it has built; run-tests.sh is where it is called.
set -eu

tree=$(readlink -f "$(dirname "$0")/../..")
programs=$tree/build/windows/bin
programs="Z:${programs//\//\\}"
export HOME=/home/clerk LC_ALL=ru_RU.UTF-8 WINEARCH=win32 WINEDEBUG=${WINEDEBUG:--all} WINEPATH=$programs

# What Wine prints goes to a file: its own services, which the first program starts, keep their output open, and
# whoever waits for the end of that would wait for theirs.
log=$(setpriv --reuid clerk --regid clerk --clear-groups mktemp)
trap 'rm "$log"' EXIT

# in_wine PROGRAM ARGUMENT...: Wine keeps QT_... of the environment from programs; its shell gives them the scale.
in_wine()
{
    local program="Z:${1//\//\\}" shell=()
    shift
    [ -z "${QT_SCALE_FACTOR:-}" ] || shell=(cmd /c set "QT_SCALE_FACTOR=$QT_SCALE_FACTOR&&")
    setpriv --reuid clerk --regid clerk --clear-groups wine "${shell[@]}" "$program" "$@"
}

# The functions of the program that are run, where some are not; nothing where all are.
functions()
{
    local left_out name
    left_out=$(sed -n "s/^$(basename "$1" .exe)::\([A-Za-z0-9_]*\): .*/\1/p" "$tree"/tests/windows/*.txt)
    [ -n "$left_out" ] || return 0
    in_wine "$1" -functions > "$log" 2> /dev/null
    for name in $left_out; do
        grep -q "^$name()" "$log" || echo "wine.sh: $(basename "$1" .exe) has no $name" >&2
    done
    sed -n 's/^\([A-Za-z0-9_]*\)().*/\1/p' "$log" | grep -vxF "$left_out"
}

# shellcheck disable=SC2046
set -- "$@" $(functions "$1")
status=0
in_wine "$@" -o "Z:${log//\//\\},txt" > /dev/null 2>&1 || status=$?
grep -v '^PASS ' "$log" || true
exit "$status"
