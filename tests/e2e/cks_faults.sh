#!/bin/bash
# A day with a message switching centre and with faults, passed at speed under one false clock: connections cut at
# random moments, receipts lost, telegrams distorted, refused, repeated, interrupted, under wrong numbers, the
# workstation killed. An operator at its window brings it back wherever the procedure gives up. At the end every
# telegram must be accounted for: exactly once at its place, in order unless it was set aside, and each second sending
# told by the journal.
#   cks_faults.sh BIN PLACES START MINUTES COUNT SPEED SEED
# BIN holds the programs, PLACES tells where the window's buttons are; COUNT telegrams go each way within MINUTES
# from START. The same SEED draws the same faults.
set -euo pipefail

bin=$1 places_program=$2 start=$3 minutes=$4 count=$5 speed=$6 seed=$7
here=$(dirname "$(readlink -f "$0")")
day=$(mktemp -d)
data=$day/data
places=$day/places
export LC_ALL=C.UTF-8 TZ=UTC
# The false clock's library comes before that of the sanitizer.
export ASAN_OPTIONS="verify_asan_link_order=0${ASAN_OPTIONS:+:$ASAN_OPTIONS}"
display_processes=()

finish()
{
    local process
    for process in $(cat "$day/processes" 2> /dev/null) "${display_processes[@]}"; do
        kill "$process" 2> /dev/null || true
    done
    rm -rf "$day"
}
trap finish EXIT

start_display()
{
    Xvfb -displayfd 1 -screen 0 1080x780x24 -nolisten tcp > "$day/display" 2> /dev/null &
    display_processes=($!)
    until [ -s "$day/display" ]; do sleep 0.1; done
    DISPLAY=:$(cat "$day/display")
    # The keyboard library copies strings without a zero byte at their end; the graphics driver leaves memory behind.
    export DISPLAY QT_QPA_PLATFORM=xcb QT_XCB_GL_INTEGRATION=none
    ASAN_OPTIONS="$ASAN_OPTIONS:strict_string_checks=0"
    openbox 2> /dev/null &
    display_processes=($! "${display_processes[@]}")
}

write_settings() # for port $1
{
    mkdir -p "$data"/{inp,out,prt}
    cat > "$data/velda.ini" <<SETTINGS
[CONNECT]
processMode=0
TcpMode=true
%U0410%U0434%U0440%U0435%U0441=127.0.0.1
%U041F%U043E%U0440%U0442=$1
TimeOut=60

[PATH]
scanDirsTimeout=10

[CORVA]
autoConfirmRTimeOut=5

[OPERATOR]
lastOperator=OPERATOR

[START]
startInManualMode=true

[WINDOW]
geometryMainForm=@Rect(40 40 1000 700)

[SOUND]
soundRTlgType=0
soundCTlgType=0
SETTINGS
}

outgoing() # the text of outgoing telegram $1, each third one long
{
    local i
    printf 'П%06d\r\nИСХОДЯЩАЯ %03d\r\n' "$1" "$1"
    for ((i = 0; i < ($1 % 3 == 0 ? 12 : 1); ++i)); do
        printf 'СТРОКА %02d ТЕКСТА, КОТОРЫЙ ДОЛЖЕН ПРИЙТИ ЦЕЛЫМ =\r\n' "$i"
    done
}

incoming() # the text of incoming telegram $1 without its header
{
    printf 'ВХОДЯЩАЯ %03d\r\n' "$1"
}

escaped() # line ends as the centre's log writes them
{
    sed -e 's/\r/\\r/g' | sed -e ':a;N;$!ba;s/\n/\\n/g' -e 's/$/\\n/'
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

# Each sending of a file is the first one, or the one before has ended in a renaming that the journal tells, or in
# the death of the program.
account_for_sendings()
{
    local name sendings aside deaths
    while read -r name; do
        sendings=$(journal | grep -ac "Отправка файла: $name" || true)
        aside=$(journal | grep -ac "ПЕРЕИМЕНОВАНИЕ out/$name В out/$name.b" || true)
        deaths=$(grep -cx "$name" "$day/deaths" || true)
        if [ "$sendings" != $((1 + aside + deaths)) ] && [ "$sendings" != $((aside + deaths)) ]; then
            echo "UNACCOUNTED: $name sent $sendings times, set aside $aside times, $deaths deaths"
            failed=1
        fi
    done < "$day/names"
}

# The numbers of the telegrams that were set aside or under way as the program died: these may come later.
late()
{
    { journal | sed -n 's/.*ПЕРЕИМЕНОВАНИЕ .* В out\/[0-9]*u\([0-9]*\)\.b.*/\1/p'; sed 's/.*u//' "$day/deaths"; } |
        sort -u | sed 's/^/П000/'
}

compare()
{
    local i
    for ((i = 1; i <= count; ++i)); do outgoing "$i" | escaped; done > "$day/out.expected"
    sed -n 's/^telegram: [0-9]* \(П.*\)$/\1/p' "$day/centre.log" > "$day/out.found"
    sort "$day/out.found" > "$day/out.sorted"
    same "telegrams at the centre, each once" "$day/out.expected" "$day/out.sorted"
    late > "$day/late"
    grep -vf "$day/late" "$day/out.expected" > "$day/steady.expected" || true
    grep -vf "$day/late" "$day/out.found" > "$day/steady.found" || true
    same "those that met no fault, in order" "$day/steady.expected" "$day/steady.found"

    (cd "$data/out" && find . -mindepth 2 -type f -printf '%f\n' | sed 's/\.[0-9]*$//' | sort) > "$day/names.found"
    sort "$day/names" > "$day/names.expected"
    same "sent files in the day's directories" "$day/names.expected" "$day/names.found"

    for ((i = 1; i <= count; ++i)); do incoming "$i" | escaped; done > "$day/in.expected"
    find "$data/inp" -type f | sed 's/^\(.*\/\([0-9]*\)\/.*\.\([0-9]*\)\)$/\2 \3 \1/' | sort | while read -r _ _ file; do
        grep -a '^ВХОДЯЩАЯ' "$file" | escaped
    done > "$day/in.found"
    same "stored telegrams, in order" "$day/in.expected" "$day/in.found"

    sed -n 's/^figures: got \([0-9]*\) sent \([0-9]*\) .*$/PK_in=\2 PK_out=\1/p' "$day/centre.log" | tail -n 1 \
        > "$day/figures.expected"
    sed -n 's/^\(PK_[a-z]*=[0-9]*\)\r*$/\1/p' "$data/velda_state.ini" | paste -sd' ' > "$day/figures.found"
    same "day figures of both sides" "$day/figures.expected" "$day/figures.found"
    account_for_sendings
}

report()
{
    local each
    echo "faults: $(sort "$day/faults" | uniq -c | awk '{print $2 (NF > 2 ? "-" $3 : "") " " $1}' | paste -sd, | sed 's/,/, /g')"
    for each in "Установлен РУЧНОЙ режим" "РАСХОЖДЕНИЕ СЧЕТЧИКОВ" "ПЕРЕИМЕНОВАНИЕ out/[^ ]* В out/[^ ]*\.b" \
        "Оператор изменил количество переданых телеграмм"; do
        echo "journal: $each: $(journal | grep -ac "$each" || true)"
    done
    echo "centre: telegrams lost $(grep -c '^lost: telegram' "$day/centre.log" || true)," \
        "broken off $(grep -c '^broken: ' "$day/centre.log" || true)," \
        "sent again $(($(grep -c '^sent: ' "$day/centre.log") - count))," \
        "violations $(grep -c '^violation: ' "$day/centre.log" || true)"
}

. "$here/operator.sh"
start_display
write_settings 1
env QT_LOGGING_RULES="*=false" "$places_program" "$data" > "$places" 2> /dev/null
export bin day data places minutes count speed seed here
export -f outgoing incoming write_settings
: > "$day/deaths"
: > "$day/faults"
status=0
. "$here/false_clock.sh"
forget_dead_clocks
faketime -f "@$start x$speed" bash -euo pipefail "$here/cks_faults_live.sh" || status=1
failed=0
grep '^violation: ' "$day/centre.log" && failed=1
compare
# Of a file that the operator moves by hand the journal does not know, nor of one that was moved just before the
# workstation was killed: the line of it waits for the end of the line's own. The books hold nothing else against the day.
("$bin/velda-books" "$data" || true) | awk '/^[^ ]/ { on = /^Расхождения/ } on && /^ / ' |
    { grep -v '^  out/.*: файл есть, а в протоколе такой отправки нет$' || true; } > "$day/books"
: > "$day/books.expected"
same "the books, but for files that were moved without a line" "$day/books.expected" "$day/books"
report
[ "$status" = 0 ] || failed=1
if [ "$failed" != 0 ]; then
    tail -n 80 "$day/centre.log"
    journal | tail -n 150
fi
exit "$failed"
