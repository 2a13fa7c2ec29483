#!/bin/sh
# Makes link/firmware/blink/blink.hex, the image FW_BLINK, of blink.c beside it: the program and, up to the
# recorded 1070 bytes, erased flash. Another place for the result is the first argument.
set -eu
folder=$(dirname "$(readlink -f "$0")")/../link/firmware/blink
result=${1:-$folder/blink.hex}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
avr-gcc -mmcu=atmega328p -DF_CPU=16000000UL -Os -Wall -Wextra -o "$work/blink.elf" "$folder/blink.c"
avr-objcopy -j .text -j .data -O binary --gap-fill 0xFF --pad-to 1070 "$work/blink.elf" "$work/blink.bin"
avr-objcopy -I binary -O ihex "$work/blink.bin" "$work/blink.hex"
tr -d '\r' < "$work/blink.hex" > "$result"
