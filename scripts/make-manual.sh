#!/bin/bash
# Makes the manual, "docs/Velda. Руководство пользователя.pdf", of the chapters in docs/manual, the table of the
# journal's lines and pictures that it takes from the running programs.
#   scripts/make-manual.sh                all of it; builds the programs, or takes those in the folder $VELDA_PROGRAMS
#   scripts/make-manual.sh --no-pictures  with grey boxes for pictures and open references allowed, while it is written
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
programs=${VELDA_PROGRAMS:-}
. scripts/clean-environment.sh

case "${1:-}" in
    --no-pictures) pictures='' ;;
    "") pictures=yes ;;
    *) echo "make-manual: not understood: $*" >&2; exit 2 ;;
esac

manual='docs/Velda. Руководство пользователя.pdf'
place=$PWD/build/manual
log=$place/asciidoctor.log

names()
{
    grep -v '^#' docs/manual/pictures.txt | cut -d'|' -f1
}

take_pictures()
{
    if [ -z "$programs" ]; then
        scripts/install-deps.sh
        . scripts/build-environment.sh
        build release velda_pictures linesim
        programs=$PWD/build/release/bin
    fi
    scripts/manual/pictures.sh "$(realpath "$programs")" "$place/pictures"
}

# A window has few colours: by a table of them its picture takes less than half the room.
shrink_pictures()
{
    mogrify -strip +dither -colors 256 -define png:format=png8 "$place"/pictures/*.png
}

boxes_for_pictures()
{
    convert -size 1400x800 xc:gray80 "$place/box.png"
    for name in $(names); do
        cp "$place/box.png" "$place/pictures/$name.png"
    done
}

# The day and the version, from the newest heading of the changes.
months=(x января февраля марта апреля мая июня июля августа сентября октября ноября декабря)
release=$(sed -n 's/^## \([0-9.]*\)$/\1/p' CHANGELOG.md | head -n 1)
IFS=. read -r year month day <<< "$release"
release_date="$((10#$day)) ${months[$((10#$month))]} $year г."

typeset_manual()
{
    asciidoctor-pdf -v --failure-level=WARN -r ./scripts/manual/extension.rb -a root="$PWD" -a release="$release" \
        -a release-date="$release_date" -a generated="$place/generated" -a imagesdir="$place/pictures" \
        -a pdf-theme=docs/manual/theme.yml -a pdf-fontsdir="/usr/share/fonts/truetype/dejavu;GEM_FONTS_DIR" \
        -a reproducible -a compress -o "$1" docs/manual/manual.adoc 2> "$log" || { cat "$log" >&2; return 1; }
    [ -z "$pictures" ] || ! grep 'invalid reference' "$log" >&2
}

scripts/install-deps.sh asciidoctor ruby-asciidoctor-pdf fonts-dejavu-core imagemagick poppler-utils python3
rm -rf "$place"
mkdir -p "$place/pictures" "$place/generated"
python3 scripts/manual/journal-lines.py --table "$place/generated/journal-lines.adoc"
if [ -n "$pictures" ]; then
    take_pictures
    shrink_pictures
else
    boxes_for_pictures
fi
echo "manual: typesetting"
typeset_manual "$place/manual.pdf"
python3 scripts/manual/check-pdf.py "$place/manual.pdf" "$(names | wc -w)" "$release"
mv "$place/manual.pdf" "$manual"
echo "$manual"
