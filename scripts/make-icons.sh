#!/bin/sh
# Draws icons/*.ico from icons/src/*.svg, each in 16, 24, 32 and 48 pixels, and the program's icon in a desktop's menu,
# icons/menu/SIZE.png. The drawings are the source; the results are kept beside them so that a build needs neither
# program. Needs rsvg-convert, icotool.
set -eu

root=$(cd "$(dirname "$0")/.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for drawing in "$root"/icons/src/*.svg; do
    name=$(basename "$drawing" .svg)
    for size in 16 24 32 48; do
        rsvg-convert --width "$size" --height "$size" --output "$work/$size.png" "$drawing"
    done
    icotool --create --output "$root/icons/$name.ico" "$work/16.png" "$work/24.png" "$work/32.png" "$work/48.png"
done

mkdir -p "$root/icons/menu"
for size in 32 48 64 128 256; do
    rsvg-convert --width "$size" --height "$size" --output "$root/icons/menu/$size.png" "$root/icons/src/tlg1.svg"
done
