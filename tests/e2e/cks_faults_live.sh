# shellcheck shell=bash
# The day of cks_faults.sh, under the false clock, its sleeps too: what is handed in, what goes wrong, and what the
# operator does about it.
# shellcheck disable=SC2154

. "$here/operator.sh"
trap 'kill "$velda" "$centre" 2> /dev/null || true' EXIT # the false clock waits for all that lives under it
velda=''
centre=''
RANDOM=$seed
each=$((minutes * 60 / count)) # seconds between two telegrams
kinds=(lose-receipt distort cut kill wrong-number drop cut-sending refuse twice "distort plural" interrupt kill
    drop "distort bare" cut)
handed=0 # telegrams of each way
fault=0  # of the kinds, the next one
sending= # the progress at the last look
looks=0  # when it was first seen

# now FORMAT: the false time. Only this shell knows it: each new program under the false clock begins at the start.
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

centre()
{
    echo "$1" >&3
}

noted() # how often the centre has noted $1
{
    grep -c "^$1" "$day/centre.log" || true
}

start_velda()
{
    launch "$bin/velda" "-d=$data" 2>> "$day/velda.log" &
    velda=$!
    echo "$velda" >> "$day/processes"
}

start_all()
{
    mkfifo "$day/commands"
    launch "$bin/linesim" centre --listen 0 --store "$day/kept" --pause 10000 --answer 60000 --header turn \
        --crossing $((speed * 3)) < "$day/commands" >> "$day/centre.log" 2>&1 &
    centre=$!
    echo "$centre" >> "$day/processes"
    exec 3> "$day/commands"
    until grep -q '^listening: ' "$day/centre.log"; do sleep 1; done
    write_settings "$(sed -n 's/^listening: //p' "$day/centre.log")"
    start_velda
    until [ -n "$(window)" ]; do sleep 1; done
}

hand_in() # the next telegram of each way
{
    local name
    handed=$((handed + 1))
    name=$(now %Y%m%d)u$(printf %03d "$handed")
    outgoing "$handed" > "$day/new"
    mv "$day/new" "$data/out/$name"
    echo "$name" >> "$day/names"
    incoming "$handed" > "$day/in.$handed"
    case $((handed % 10)) in
        5) centre "r ВХОДЯЩАЯ $(printf %03d "$handed")\\r\\n" ;;
        0) centre "category ВХОДЯЩАЯ $(printf %03d "$handed")\\r\\n" ;;
        *) centre "send-file $day/in.$handed" ;;
    esac
}

# Death at a moment of its own choosing; what was on its way then is remembered.
die()
{
    local name
    kill -9 "$velda"
    wait "$velda" 2> /dev/null || true
    name=$(unfinished)
    [ -z "$name" ] || echo "$name" >> "$day/deaths"
    sleep $((5 + RANDOM % 10))
    start_velda
    until [ -n "$(window)" ]; do sleep 1; done
    sleep 10
}

go_wrong()
{
    local kind=${kinds[fault++ % ${#kinds[@]}]}
    echo "$kind" >> "$day/faults"
    echo "fault: $(now %T) $kind" >> "$day/centre.log"
    case $kind in
        kill) die ;;
        *) centre "$kind" ;;
    esac
}

# A call to the centre by telephone: how many of ours it holds, how many it has sent.
telephone()
{
    local before i
    before=$(noted "figures: ")
    centre figures
    for ((i = 0; i < 60 && $(noted "figures: ") == before; ++i)); do sleep 1; done
    read -r got sent < <(sed -n 's/^figures: got \([0-9]*\) sent \([0-9]*\) .*/\1 \2/p' "$day/centre.log" | tail -n 1)
}

press_and_wait() # button $1, for another note $2 of the centre
{
    local before i
    before=$(noted "$2")
    press "$1"
    for ((i = 0; i < 30 && $(noted "$2") == before; ++i)); do sleep 1; done
    sleep 8 # the answer
}

# The file that was on its way, when the figures are known: what the centre holds goes to the sent ones, the rest
# back into the queue, under the number that the centre waits for.
settle_file()
{
    local name=$1 file
    [ -z "$name" ] && [ "$(figure PK_out)" = "$got" ] && return
    for file in "$data/out/$name" "$data/out/$name".b*; do
        [ -n "$name" ] && [ -f "$file" ] || continue
        if [ "$(figure PK_out)" = "$got" ]; then
            mv "$file" "$data/out/$(now %Y%m%d)/$name.$(printf %03d "$got")"
        elif [ "$file" != "$data/out/$name" ]; then
            mv "$file" "$data/out/$name"
        fi
    done
    [ "$(figure PK_out)" = "$got" ] || correct_counter labelPKout "Передано телеграмм" "$got"
}

# What an operator does about a workstation that has given up or stands still.
bring_back()
{
    local i
    close_dialog "Подтверждение приема категорийной телеграммы"
    in_manual_mode || press_alt_a
    for ((i = 0; i < 20; ++i)); do in_manual_mode && break || sleep 1; done
    sleep 10 # what is on the line comes to its end
    press_and_wait buttonKG0 "request:"
    telephone
    settle_file "$(unfinished)"
    for ((i = 0; i < 3; ++i)); do
        telephone
        [ "$(figure PK_in)" != "$sent" ] || break
        press_and_wait buttonKG0 "request:" # a stop has gone out: the channel must be asked for anew
        press_and_wait buttonKG1 "receipt:"
        sleep 20
    done
    in_manual_mode && press_alt_a
    sleep 15
}

stored()
{
    find "$data/inp" -type f -name '*.[0-9][0-9][0-9]' | wc -l
}

all_through()
{
    [ "$handed" = "$count" ] && [ "$(noted 'telegram: [0-9]* П')" = "$count" ] && [ "$(stored)" = "$count" ] &&
        [ -z "$(find "$data/out" -maxdepth 1 -type f)" ]
}

# No progress for a minute although something waits.
stands_still()
{
    local through
    through="$(noted 'telegram: [0-9]* П') $(stored) $handed"
    if [ "$through" != "$sending" ] || [ "$through" = "$handed $handed $handed" ]; then
        sending=$through
        looks=$SECONDS_NOW
        return 1
    fi
    [ $((SECONDS_NOW - looks)) -ge 60 ]
}

# The turn of the day is kept free of faults: what it changes in the figures is another matter.
is_turn_of_day()
{
    local hhmm
    hhmm=$((10#$(now %H%M)))
    [ "$hhmm" -gt 2345 ] || [ "$hhmm" -lt 15 ]
}

start_all
begin=$(now %s)
next_fault=$((begin + each))
press_alt_a
while SECONDS_NOW=$(now %s) && ! all_through; do
    [ "$SECONDS_NOW" -lt $((begin + minutes * 60 + 7200)) ] || { echo "not all came through"; break; }
    if [ "$handed" -lt "$count" ] && [ "$SECONDS_NOW" -ge $((begin + handed * each)) ]; then
        hand_in
        next_fault=$((SECONDS_NOW + RANDOM % 40)) # while the line is busy, or soon after
    fi
    close_dialog "Подтверждение приема категорийной телеграммы"
    if in_manual_mode || stands_still; then
        bring_back
        looks=$(now %s)
    elif [ "$SECONDS_NOW" -ge "$next_fault" ] && [ "$handed" -lt "$count" ] && ! is_turn_of_day; then
        go_wrong
        next_fault=$((SECONDS_NOW + each)) # the next hand-in brings it forward
    fi
    sleep 5
done
sleep 30
kill -TERM "$velda"
wait "$velda" || { echo "the workstation ended with $?"; exit 1; }
echo quit >&3
wait "$centre" || { echo "the centre ended with $?"; exit 1; }
