#!/bin/sh
# make-linesim-man.sh LINESIM SOURCES PAGE.in PAGE: puts in the options as the program tells them, and the names of the
# commands as its sources have them, so that the page cannot fall behind.
set -eu
linesim=$1
sources=$2
parts=$({ "$linesim" 2>&1 || true; } | awk '/^  [a-z]/ { print $1 }')

# The help of a part as tagged paragraphs: "  --name <VALUE>   text", the text going on further in.
options()
{
    help=$("$linesim" "$1" --help)
    printf '%s\n' "$help" | awk -v part="$1" '
        function shown(text)
        {
            gsub(/\\/, "\\e", text)
            gsub(/-/, "\\-", text)
            return text
        }
        function flush_text()
        {
            if (name != "" && name !~ /help/)
                printf ".TP\n%s\n\\&%s\n", name, shown(text)
            name = text = ""
        }
        NR == 2 { printf ".SS linesim %s\n%s\n", part, shown($0) }
        NR <= 2 { next }
        /^Arguments:/ { flush_text(); exit }
        /^  -/ {
            flush_text()
            line = substr($0, 3)
            at = match(line, /  +/)
            name = at ? substr(line, 1, at - 1) : line
            text = at ? substr(line, at + RLENGTH) : ""
            value = match(name, /</) ? substr(name, RSTART + 1, length(name) - RSTART - 1) : ""
            sub(/ ?<.*/, "", name)
            name = "\\fB" shown(name) "\\fP" (value == "" ? "" : " \\fI" shown(value) "\\fP")
            next
        }
        /^ +[^ ]/ { sub(/^ +/, ""); text = text " " $0 }
        END { flush_text() }'
}

# The names in the command tables of the given sources.
commands()
{
    for source in "$@"; do
        sed -n '/Command<.*{$/,/};/s/^ *{"\([a-z-]*\)",.*/\1/p' "$sources/$source"
    done | sed 's/-/\\-/g' | paste -s -d , | sed 's/,/, /g'
}

while IFS= read -r line; do
    case $line in
        @OPTIONS@) for part in $parts; do options "$part"; done ;;
        "@COMMANDS "*)
            names=${line#@COMMANDS }
            # shellcheck disable=SC2086
            commands ${names%@}
            ;;
        *) printf '%s\n' "$line" ;;
    esac
done < "$3" > "$4"
