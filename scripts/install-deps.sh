#!/bin/sh
# Installs what building, testing and demonstrating the workstation needs on Debian, or instead the packages that are
# named as arguments. Asks the package manager only for what is missing, so it is quick, silent and needs no network
# once all is there.
set -eu

packages="
    g++ cmake ninja-build ccache mold pkg-config git ca-certificates
    qtbase5-dev libqt5serialport5-dev qtmultimedia5-dev libqt5multimedia5-plugins qttranslations5-l10n
    libbenchmark-dev faketime libfaketime
    xvfb openbox xdotool xclip imagemagick xauth x11-utils
    pulseaudio pulseaudio-utils libasound2-plugins
    cups-client cups-daemon cups-ipp-utils dbus-daemon
    librsvg2-bin icoutils sox
    fonts-dejavu
    clang-format clang-tidy
    python3 poppler-utils procps iproute2
    appstream desktop-file-utils groff-base
    arduino-core-avr avr-libc avrdude gcc-avr libsimavr-dev
"
[ $# = 0 ] || packages=$*

is_installed()
{
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# A package of many in one call to dpkg, one by one only if something is missing.
missing_packages()
{
    # shellcheck disable=SC2086
    found=$(dpkg-query -W -f '${db:Status-Status}\n' $packages 2>/dev/null | grep -cx installed || true)
    # shellcheck disable=SC2086
    [ "$found" -ge "$(echo $packages | wc -w)" ] && return
    for package in $packages; do
        is_installed "$package" || echo "$package"
    done
}

as_root()
{
    if [ "$(id -u)" = 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        echo "install-deps: neither root nor sudo; install these packages: $missing" >&2
        exit 1
    fi
}

missing=$(missing_packages | tr '\n' ' ')
[ -n "$missing" ] || exit 0

echo "install-deps: installing $missing"
as_root apt-get update -qq || echo "install-deps: the package lists could not be renewed" >&2
# shellcheck disable=SC2086
as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing
