#!/bin/bash
# A day on a switched-channel network, passed at speed: the finished workstation and the simulated network
# under one false clock, a queue of files to subscribers and to the exit to a centre, with the results and the
# faults that a table tells. At the end each file is sent under its number, or in the queue with the tries, the
# time and the text of its outcome; every connection has its transcript.
#   skk_day.sh BIN TABLE SPEED [FIRMWARE SIGNALLING]
# BIN holds the programs; TABLE is one of skk_days/. The calls go by TCP or, with FIRMWARE (old, new), through a
# line adapter of that generation at 200 baud by the SIGNALLING 0 to 2.
set -euo pipefail

bin=$1 table=$2 speed=$3 firmware=${4:-} signalling=${5:-}
day=$(mktemp -d)
data=$day/data
stamp=20260731
trap 'kill $(jobs -p) 2> /dev/null || true; rm -rf "$day"' EXIT
. "$(dirname "$(readlink -f "$0")")/../../scripts/carrier.sh"
export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 TZ=UTC
# The false clock's library comes before that of the sanitizer.
export ASAN_OPTIONS="verify_asan_link_order=0${ASAN_OPTIONS:+:$ASAN_OPTIONS}"

names=(112233 ЗАРЯ 223344 ВЕГА 334455 МАЯК 445566 ГРАНИТ 556677 КАМА 667788 ЛАДОГА 778899 НЕВА 889900 ОНЕГА
    990011 ПИХТА 101112 РОСА)

answerback() # of the number $1, by its first six digits or the six behind an area of two
{
    local i
    for ((i = 0; i < ${#names[@]}; i += 2)); do
        if [[ $1 = ${names[i]}* || $1 = ??${names[i]}* ]]; then
            echo "${names[i]} |${names[i + 1]}"
            return
        fi
    done
    echo ЦКС
}

text() # of the file $1
{
    printf 'ЗЦЗЦ П%s\r\nФАЙЛ ОТ 31 ИЮЛЯ НОМЕР %s=\r\nНННН  \r\n' "${1: -3}" "${1: -3}"
}

rows() # NAME|NUMBER|KIND|TRIES|HABITS|OUTCOME of each file, without the blanks round the bars
{
    sed -n -e 's/^file //p' "$table" | sed -e 's/ *| */|/g' -e 's/ *$//'
}

prepare()
{
    local name number kind tries habits
    mkdir -p "$data"/{inp,out,prt} "$day/made"
    while IFS='|' read -r name number kind tries habits _; do
        text "$name" | tee "$day/made/$name" > "$data/out/$name"
        printf '%s|%s|01.01.2020 00:00|u|%s|N|' "$number" "$kind" "$tries" > "$data/out/$name.dat"
        echo "$number:$(answerback "$number"):$habits" >> "$day/subscribers"
    done < <(rows)
    sed -n 's/^calls //p' "$table" > "$day/scenario"
}

write_settings()
{
    # The answerback is "654321 ЗНАМЯ"; the settings file escapes what is not Latin.
    cat > "$data/velda.ini" <<SETTINGS
[CONNECT]
processMode=1
$(line_settings "$day/switch.log" "$firmware" 60)
$(sed -n 's/^connect //p' "$table")
${signalling:+tlgSig=$signalling}

[PATH]
scanDirsTimeout=10
$(stored_settings "$firmware")

[DORAL]
AO=654321 \\x417\\x41d\\x410\\x41c\\x42f
$(sed -n 's/^setting //p' "$table")
SETTINGS
}

# Everything below runs under the false clock, its sleeps too.
live()
{
    local i options=()
    read -r -a options < <(sed -n 's/^switch //p' "$table") || true
    mkfifo "$day/commands"
    # shellcheck disable=SC2046
    "$bin/linesim" $(far_end switch "$firmware" "$day" $((speed * 2000))) --subscribers "$day/subscribers" --terminal-ao "654321 ЗНАМЯ" \
        --scenario "$day/scenario" --subscriber "112233:112233 |ЗАРЯ" --patience 60 \
        "${options[@]//_/ }" < "$day/commands" > "$day/switch.log" 2>&1 &
    network=$!
    exec 3> "$day/commands"
    until far_end_is_there "$day/switch.log"; do kill -0 "$network" && sleep 1; done
    write_settings
    "$bin/velda" "-d=$data" 2> "$day/velda.log" &
    velda=$!
    for ((i = 0; i < 240; ++i)); do
        sleep 30
        all_settled && break
    done
    sleep 100 # for the last try to come to its end
    kill -TERM "$velda"
    wait "$velda" || { echo "the workstation ended with $?"; exit 1; }
    echo quit >&3
    wait "$network" || { echo "the network ended with $?"; grep -v '^\(sent\|received\)' "$day/switch.log" | tail -n 60; exit 1; }
}

all_settled() # each file is sent or has as many tries left as it must, each call from outside is over
{
    local name tries outcome
    while IFS='|' read -r name _ _ _ _ outcome; do
        if [ "$outcome" = sent ]; then
            [ ! -e "$data/out/$name" ] || return 1
        else
            tries=$(cut -d '|' -f 5 "$data/out/$name.dat")
            [ "$tries" = "${outcome%% *}" ] || return 1
        fi
    done < <(rows)
    [ "$(grep -c '^calls: ' "$day/switch.log")" -ge "$(wc -l < "$day/scenario")" ]
}

same() # what $1, file $2 as expected, file $3 as found
{
    if cmp -s "$2" "$3"; then
        echo "same: $1 ($(wc -l < "$2"))"
    else
        echo "DIFFERENT: $1"
        diff "$2" "$3" | head -40 || true
        failed=1
    fi
}

journal()
{
    tr -d '\001-\010' < "$data/prt/$stamp.prt"
}

# record NAME SECONDS: the queue record of the file in words. Its time is told as SECONDS if it is as many behind
# the end of the last try, which is some seconds behind its beginning.
record()
{
    local number kind time tries bad rest began at
    IFS='|' read -r number kind time _ tries bad rest < "$data/out/$1.dat" || true
    if [ "$time" = "01.01.2020 00:00" ]; then
        time=-
    elif [ "$2" != - ]; then
        began=$(journal | sed -n "s/^\([0-9:]*\) Установка соединения для отправки файла $1\$/\1/p" | tail -n 1)
        for at in $(seq "$2" 5 $(($2 + 40))); do
            if [ "$(date -d "2026-07-31 $began $at seconds" '+%d.%m.%Y %H:%M')" = "$time" ]; then
                time=$2
                break
            fi
        done
    fi
    echo "$1 queued $number $kind $tries $time $rest $bad" | tr -s ' '
}

outcomes()
{
    local name number kind tries habits outcome after file
    while IFS='|' read -r name number kind tries habits outcome; do
        if [ "$outcome" = sent ]; then
            echo "$name sent" >> "$day/outcomes.expected"
        else
            IFS=' ' read -r tries after habits <<< "$outcome"
            echo "$name queued $number $kind $tries $after $habits N" | tr -s ' ' >> "$day/outcomes.expected"
        fi
        file=$(find "$data/out/$stamp" -name "$name.[0-9][0-9][0-9]")
        if [ -e "$data/out/$name" ] && cmp -s "$day/made/$name" "$data/out/$name" && [ -z "$file" ]; then
            record "$name" "${after:--}" >> "$day/outcomes.found"
        elif [ -n "$file" ] && cmp -s "$day/made/$name" "$file" && [ ! -e "$data/out/$name.dat" ]; then
            echo "$name sent" >> "$day/outcomes.found"
        else
            echo "$name LOST" >> "$day/outcomes.found"
        fi
    done < <(rows)
    same "files sent or waiting, as they must" "$day/outcomes.expected" "$day/outcomes.found"
}

compare()
{
    local name number outcome
    outcomes

    # A file is booked under the number of those before it.
    journal | sed -n 's/^[0-9:]* Файл \(.*\) отправлен$/\1/p' \
        | awk '{ printf "%s.%03d\n", $1, NR - 1 }' | sort > "$day/numbers.expected"
    (cd "$data/out/$stamp" && find . -name '*u*' -printf '%f\n' | sort) > "$day/numbers.found"
    same "sent files under their numbers" "$day/numbers.expected" "$day/numbers.found"

    # Behind the sends stands the record of no file; nothing else is left in the queue.
    { rows | awk -F '|' '$6 != "sent" { print $1; print $1 ".dat" }'; echo .dat; } | sort > "$day/queue.expected"
    (cd "$data/out" && find . -maxdepth 1 -type f -printf '%f\n' | sort) > "$day/queue.found"
    same "the queue" "$day/queue.expected" "$day/queue.found"

    while IFS='|' read -r name number _ _ _ outcome; do
        [ "$outcome" != sent ] || text "$name" | sed -e 's/\r$/\\r/' | paste -sd'~' | sed -e 's/~/\\n/g' \
            -e "s/^/got: $number /" -e 's/НННН .*$/НННН/'
    done < <(rows) | sort > "$day/got.expected"
    sort -u "$day/switch.log" | grep -F -x -f "$day/got.expected" > "$day/got.found" || true
    same "texts that their subscribers got whole" "$day/got.expected" "$day/got.found"

    compare_transcripts

    # What a centre sends in place of its answerback is passed over.
    grep '^telegram: ' "$day/switch.log" | grep -vc ': 7001' > "$day/telegrams.expected" || true
    (cd "$data/inp/$stamp" && find . -name "${stamp}_[0-9][0-9][0-9]" | wc -l) > "$day/telegrams.found"
    same "telegrams within connections" "$day/telegrams.expected" "$day/telegrams.found"
}

# Each connection of the network, in order, has its transcript: where it belongs by its direction, with the
# number that was dialled.
compare_transcripts()
{
    local direction number file
    sed -n 's/^up: //p' "$day/switch.log" > "$day/connections"
    (cd "$data" && find "inp/$stamp" "out/$stamp" -name 's[0-9]*' -printf '%f %p\n' | sort | cut -d ' ' -f 2) \
        > "$day/transcripts"
    while read -r direction number; do
        if [ "$direction" = to ]; then echo "out (@N$number@|[# ]$number)"; else echo "inp @E"; fi
    done < "$day/connections" > "$day/transcripts.expected"
    paste -d ' ' "$day/connections" "$day/transcripts" | while read -r direction number file; do
        [ "$direction" = to ] && number="(@N$number@|[# ]$number)" || number=@E
        if grep -qE "$number" "$data/$file"; then echo "${file%%/*} $number"; else echo "$file lacks $number"; fi
    done > "$day/transcripts.found"
    same "connections with their transcripts" "$day/transcripts.expected" "$day/transcripts.found"
}

prepare
export -f far_end far_end_is_there line_settings stored_settings live write_settings rows all_settled
export bin day data table speed firmware signalling
. "$(dirname "$(readlink -f "$0")")/false_clock.sh"
. "$(dirname "$(readlink -f "$0")")/books.sh"
forget_dead_clocks
faketime -f "@2026-07-31 12:00:00 x$speed" bash -euo pipefail -c live
failed=0
grep '^violation: ' "$day/switch.log" && failed=1
compare
books_agree
if [ "$failed" != 0 ]; then
    grep -v '^raw: \|^granted: \|^window: \|^keep-alive: ' "$day/switch.log" | tail -n "${LINES_SHOWN:-80}"
    journal | tail -n "${LINES_SHOWN:-120}"
fi
exit "$failed"
