#!/bin/bash
# A day with a message switching centre, passed at speed: the finished workstation and the simulated centre
# under one false clock, telegrams in both directions, category and Р telegrams, midnight with its
# renumbering. At the end every telegram must have come through exactly once, in order, under its name, and
# the figures of both sides must agree.
#   cks_day.sh BIN START MINUTES COUNT SPEED [FIRMWARE]
# BIN holds the programs; COUNT telegrams go each way within MINUTES from START ("2026-07-31 23:20:00"), by TCP
# or, with FIRMWARE (old, new), through a line adapter of that generation at 200 baud.
set -euo pipefail

bin=$1 start=$2 minutes=$3 count=$4 speed=$5 firmware=${6:-}
day=$(mktemp -d)
data=$day/data
trap 'kill $(jobs -p) 2> /dev/null || true; rm -rf "$day"' EXIT
. "$(dirname "$(readlink -f "$0")")/../../scripts/carrier.sh"
export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 TZ=UTC
# The false clock's library comes before that of the sanitizer.
export ASAN_OPTIONS="verify_asan_link_order=0${ASAN_OPTIONS:+:$ASAN_OPTIONS}"

outgoing() # the text of outgoing telegram $1
{
    printf 'П%06d\r\nИСХОДЯЩАЯ %03d = КОНЕЦ\r\n' "$1" "$1"
}

incoming() # the text of incoming telegram $1, in one of the three forms of a header
{
    case $(($1 % 3)) in
        0) printf 'П01 %06d 12\r\nВХОДЯЩАЯ %03d\r\n' "$1" "$1" ;;
        1) printf 'П123 %03d 12\r\nВХОДЯЩАЯ %03d\r\n' "$1" "$1" ;;
        2) printf 'П123=123 31 %06d \r\nВХОДЯЩАЯ %03d\r\n' "$1" "$1" ;;
    esac
}

escaped() # line ends as the centre's log writes them
{
    sed -e 's/\r/\\r/g' | sed -e ':a;N;$!ba;s/\n/\\n/g' -e 's/$/\\n/'
}

manner() # the command that turns the centre to another manner, or has it say something, in front of telegram $1
{
    case $(($1 % 10)) in
        1) echo "note long" ;;
        2) echo "note short-marked" ;;
        3) echo "note dashed" ;;
        4) echo "stamps off" ;;
        5) echo "taken" ;;
        6) echo "clock 2" ;;
        7) echo "clock -1" ;;
        8) echo "ask" ;;
        9) echo "stamps on" ;;
        0) echo "note" ;;
    esac
}

prepare()
{
    local i each=$((minutes * 60 / count))
    mkdir -p "$data"/{inp,out,prt} "$day/made"
    for ((i = 1; i <= count; ++i)); do
        echo "+$((i * each - each / 2)) $(manner "$i")"
        # Each tenth is one with a category, the one before it must be confirmed.
        case $((i % 10)) in
            9) echo "+$((i * each)) r $(incoming "$i" | escaped)" ;;
            0) echo "+$((i * each)) category $(incoming "$i" | escaped)" ;;
            *)
                incoming "$i" > "$day/made/$i"
                echo "+$((i * each)) send-file $day/made/$i"
                ;;
        esac
    done > "$day/scenario"
    # A telegram that waits at the end of the quiet time would go out behind the request for a receipt. Were the
    # renumbering the answer to that, it would meet the telegram on its way wherever a tick is shorter than the
    # centre's answer, as on a busy machine at this speed.
    echo "00:00:35 renumber" >> "$day/scenario"
}

write_settings()
{
    cat > "$data/velda.ini" <<SETTINGS
[CONNECT]
processMode=0
$(line_settings "$day/centre.log" "$firmware" 600)

[PATH]
scanDirsTimeout=10
$(stored_settings "$firmware")

[CORVA]
autoConfirmRTimeOut=5

[OPERATOR]
lastOperator=OPERATOR

[SOUND]
soundRTlgType=0
soundCTlgType=0
SETTINGS
}

# now FORMAT: the false time. Only the shell knows it: each new program under the false clock begins at the start.
now()
{
    printf "%($1)T" -1
}

# A program under the false clock, beginning at the present; to be run in the background, whose process it becomes.
# It shares no start with the others, by which it would count the time until now twice.
launch()
{
    FAKETIME="@$(now '%F %T') x$speed"
    unset FAKETIME_SHARED
    exec "$@"
}

# Everything below runs under the false clock, its sleeps too.
live()
{
    local i each=$((minutes * 60 / count)) name
    mkfifo "$day/commands"
    # shellcheck disable=SC2046
    launch "$bin/linesim" $(far_end centre "$firmware" "$day" $((speed * 3000)) "--keep-alive 60000") \
        --store "$day/kept" --scenario "$day/scenario" --pause 10000 \
        --crossing $((speed * 3)) < "$day/commands" >> "$day/centre.log" 2>&1 &
    centre=$!
    exec 3> "$day/commands"
    until far_end_is_there "$day/centre.log"; do kill -0 "$centre" && sleep 1; done
    write_settings
    launch "$bin/velda" "-d=$data" 2> "$day/velda.log" &
    velda=$!
    for ((i = 1; i <= count; ++i)); do
        sleep "$each"
        name=$(now %Y%m%d)u$(printf %03d "$i")
        outgoing "$i" > "$day/new"
        mv "$day/new" "$data/out/$name"
        echo "$name" >> "$day/names"
    done
    for ((i = 0; i < 120; ++i)); do
        sleep 30
        all_through && break
    done
    kill -TERM "$velda"
    wait "$velda" || { echo "the workstation ended with $?"; exit 1; }
    echo quit >&3
    wait "$centre" || echo "the centre ended with $?"
}

all_through()
{
    [ "$(grep -c '^telegram: [0-9]* П' "$day/centre.log")" = "$count" ] &&
        [ "$(find "$data/inp" -type f | wc -l)" = "$count" ] &&
        [ -z "$(find "$data/out" -maxdepth 1 -type f)" ]
}

same() # what $1, file $2 as expected, file $3 as found
{
    if cmp -s "$2" "$3"; then
        echo "same: $1 ($(wc -l < "$2"))"
    else
        echo "DIFFERENT: $1"
        diff "$2" "$3" | head -20 || true
        failed=1
    fi
}

compare()
{
    local i file
    for ((i = 1; i <= count; ++i)); do outgoing "$i" | escaped; done > "$day/out.expected"
    sed -n 's/^telegram: [0-9]* \(П.*\)$/\1/p' "$day/centre.log" > "$day/out.found"
    same "telegrams at the centre, in order" "$day/out.expected" "$day/out.found"

    # Behind the name stands the number that the centre has counted.
    paste -d. "$day/names" <(sed -n 's/^telegram: \([0-9]*\) П.*$/\1/p' "$day/centre.log" | xargs printf '%03d\n') \
        > "$day/names.expected"
    (cd "$data/out" && find . -mindepth 2 -type f -printf '%f\n' | sort) > "$day/names.found"
    same "sent files under their numbers" "$day/names.expected" "$day/names.found"

    for ((i = 1; i <= count; ++i)); do incoming "$i" | escaped; done > "$day/in.expected"
    find "$data/inp" -type f | sed 's/^\(.*\/\([0-9]*\)\/.*\.\([0-9]*\)\)$/\2 \3 \1/' | sort | while read -r _ _ file; do
        sed -e '1s/^ЗЦЗЦ [0-9]* //' -e '/^НННН/d' -e '/^\r$/d' "$file" | escaped
    done > "$day/in.found"
    same "stored telegrams, in order" "$day/in.expected" "$day/in.found"

    sed -n 's/^figures: got \([0-9]*\) sent \([0-9]*\) .*$/PK_in=\2 PK_out=\1/p' "$day/centre.log" > "$day/figures.expected"
    sed -n 's/^\(PK_[a-z]*=[0-9]*\)\r*$/\1/p' "$data/velda_state.ini" | paste -sd' ' > "$day/figures.found"
    same "day figures of both sides" "$day/figures.expected" "$day/figures.found"
}

prepare
export -f far_end far_end_is_there line_settings stored_settings live now launch write_settings outgoing all_through
export bin day data minutes count speed firmware
. "$(dirname "$(readlink -f "$0")")/false_clock.sh"
. "$(dirname "$(readlink -f "$0")")/books.sh"
forget_dead_clocks
faketime -f "@$start x$speed" bash -euo pipefail -c live
failed=0
grep '^violation: ' "$day/centre.log" && failed=1
compare
books_agree
if [ "$failed" != 0 ]; then
    tail -n 60 "$day/centre.log"
    cat "$data"/prt/*.prt | tr -d '\001-\010' | tail -n 120
fi
exit "$failed"
