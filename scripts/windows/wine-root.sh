#!/bin/bash
# Makes the Debian of 32 bit in which programs for Windows are run under Wine, and prints its folder on the last line.
# It stands in the cache under the sum of this script; VELDA_WINDOWS_CACHE is the cache instead of
# ~/.cache/velda-windows. Wants root.
set -euo pipefail

release=bookworm
# What runs the programs: Wine, a display, the runner of the tests, a sound server; locales for the letters of names.
# The programs are run by a user: whatever he is forbidden, Wine forbids them.
packages="wine wine32 xvfb cmake pulseaudio pulseaudio-utils locales fonts-dejavu-core"
locale=ru_RU.UTF-8
user=clerk

cache=${VELDA_WINDOWS_CACHE:-$HOME/.cache/velda-windows}
root=$cache/wine-$release-$(sha256sum "$(readlink -f "$0")" | cut -c1-12)

# Runs a command in the root. What is mounted for it is mounted for nobody else, and gone with it.
in_root()
{
    # shellcheck disable=SC2016
    unshare --mount --pid --fork --kill-child bash -euc '
        mount --bind /dev "$0/dev"
        mount -t proc proc "$0/proc"
        exec chroot "$0" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
            DEBIAN_FRONTEND=noninteractive "$@"' "$root.part" "$@"
}

make_root()
{
    rm -rf "$root.part"
    mkdir -p "$root.part"
    debootstrap --arch=i386 --variant=minbase "$release" "$root.part"
    in_root apt-get update -qq
    # shellcheck disable=SC2086
    in_root apt-get install -y -qq --no-install-recommends $packages
    in_root apt-get clean
    echo "$locale UTF-8" > "$root.part/etc/locale.gen"
    in_root locale-gen
    in_root useradd --create-home "$user"
    in_root setpriv --reuid "$user" --regid "$user" --clear-groups env HOME="/home/$user" LC_ALL=$locale \
        WINEDEBUG=-all WINEARCH=win32 WINEDLLOVERRIDES="mscoree,mshtml=" \
        sh -c 'wineboot --init && wineserver --wait'
    mv "$root.part" "$root"
}

if [ ! -d "$root" ]; then
    "$(dirname "$(readlink -f "$0")")/../install-deps.sh" debootstrap >&2
    echo "wine-root: making $root" >&2
    trap 'tail -n 30 "$root.log" >&2; echo "wine-root: failed, see $root.log" >&2' EXIT
    make_root > "$root.log" 2>&1
    trap - EXIT
fi
echo "$root"
