# shellcheck shell=bash
# The steps of run.sh that all demonstrations share. They use its variables: bin, the programs; demo, a fresh
# directory; result, where the screenshot and the logs stay; firmware, the generation of the line adapter, empty
# for TCP; patience, seconds in which all telegrams must have come. Each demonstration beside this file gives
# prepare_data, start_far_end, every_telegram_arrived, operator_writes, written_arrived and check_end, and names in
# received, sent and found what the operator is to read, in word what he looks for.
# shellcheck disable=SC2154

data=$demo/data
expected=$demo/expected # each telegram from mark to mark, as it must arrive: ИСХ1.. from here, ВХ1.. to here
kept=$demo/far-end      # what the far end stores
workstation=
far_end=
tab=0 # in front; the roll is 0
register_marks='|||' # of the head of a written telegram, as the far end prints them: an adapter turns them into codes
[ -z "$firmware" ] || register_marks=
display_processes=()

# long_text LINES WHERE: that many lines of telegram text, on the channel that WHERE names.
long_text()
{
    local i
    for ((i = 1; i <= $1; ++i)); do
        printf 'СТРОКА %03d ПРОВЕРКА ДЛИННОЙ ТЕЛЕГРАММЫ НА %s СВЯЗИ=\r\n' "$i" "$2"
    done
}

# write_settings PROCEDURE < REST: the settings of a workstation that reaches the far end by that procedure, and
# the REST.
write_settings()
{
    {
        cat <<SETTINGS
[CONNECT]
processMode=$1
$(line_settings "$result/far-end.log" "$firmware" 30)

[PATH]
scanDirsTimeout=2
$(stored_settings "$firmware")

[WINDOW]
geometryMainForm=@Rect(40 40 1000 700)

[START]
startInManualMode=false

[SOUND]
soundRTlgType=0
soundCTlgType=0

[EDITOR]
editorInterfaceMode=1
SETTINGS
        cat
    } > "$data/velda.ini"
}

# far_end_starts KIND TCP_OPTIONS OPTION...: starts the far end, which takes commands by descriptor 3.
far_end_starts()
{
    mkfifo "$demo/commands"
    # shellcheck disable=SC2046
    "$bin/linesim" $(far_end "$1" "$firmware" "$demo" 3000 "$2") "${@:3}" < "$demo/commands" > "$result/far-end.log" &
    far_end=$!
    exec 3> "$demo/commands"
    until_true 10 far_end_is_there "$result/far-end.log"
}

start_workstation()
{
    "$bin/velda" "-d=$data" 2> "$result/velda.log" &
    workstation=$!
}

has_display()
{
    [ -n "${WAYLAND_DISPLAY:-}" ] || { [ -n "${DISPLAY:-}" ] && xdotool getdisplaygeometry > /dev/null 2>&1; }
}

start_virtual_display()
{
    Xvfb -displayfd 1 -screen 0 1080x780x24 -nolisten tcp > "$demo/display" 2> "$result/display.log" &
    display_processes=($!)
    until_true 10 test -s "$demo/display"
    DISPLAY=:$(cat "$demo/display")
    export DISPLAY QT_QPA_PLATFORM=xcb
    unset WAYLAND_DISPLAY
    openbox 2>> "$result/display.log" &
    display_processes=($! "${display_processes[@]}") # the server ends last
    # A window that shows itself while the manager is starting may never appear.
    until_true 10 sh -c 'xprop -root _NET_SUPPORTING_WM_CHECK | grep -q "window id"'
    sleep 1
}

# until_true SECONDS COMMAND...: repeats the command until it succeeds; fails when the time is over.
until_true()
{
    local tries=$(($1 * 5))
    shift
    until "$@"; do
        ((tries-- > 0)) || return 1
        sleep 0.2
    done
}

# arrived WANTED FILE...: one of the files is the wanted one, byte for byte.
arrived()
{
    local wanted=$1 file
    shift
    for file in "$@"; do
        cmp -s "$wanted" "$file" && return
    done
    return 1
}

sent_files_left_the_queue()
{
    [ "$(find "$data/out" -mindepth 2 -type f | wc -l)" = "$(find "$expected" -name 'ИСХ*' | wc -l)" ]
}

wait_for_telegrams()
{
    until_true "$patience" every_telegram_arrived && until_true 10 sent_files_left_the_queue && sleep 2
}

# fill_in FIELD...: fills in the fields from the one that has the keyboard on, as the Tab key goes: a text is pasted, as
# no key of this keyboard has a Russian letter; "=KEY" presses that key, and an empty one leaves the field as it is.
fill_in()
{
    local field
    for field in "$@"; do
        case "$field" in
            '') ;;
            =*) xdotool key "${field#=}" ;;
            *)
                printf '%s' "$field" | xclip -i -selection clipboard
                xdotool key ctrl+a ctrl+v
                ;;
        esac
        sleep 0.3
        xdotool key Tab
        sleep 0.2
    done
}

# activate TITLE: brings the window of that title to the front when it is there.
activate()
{
    until_true 10 xdotool search --onlyvisible --name "$1" > /dev/null
    xdotool windowactivate --sync "$(xdotool search --onlyvisible --name "$1" | tail -n 1)"
}

# open_editor FIELDS: brings the editor to the front, where the keyboard begins in the text, and goes back over so many
# fields to the first one, that of the form.
open_editor()
{
    local i
    activate ' / V:'
    open_tab 5
    for ((i = 0; i < $1; ++i)); do
        xdotool key shift+Tab
        sleep 0.2
    done
}

# press_send TITLE: sends what the editor holds; its dialog, of that title, is then in front.
press_send()
{
    import -window root "$result/written.png"
    xdotool key ctrl+Return
    activate "$1"
    import -window root "$result/sending.png"
}

# The operator writes a telegram and sends it; it must come to the far end like those that were prepared.
operator_sends()
{
    operator_writes
    xdotool key Return
    until_true "$patience" written_arrived && until_true 10 sent_files_left_the_queue && open_tab 0 &&
        echo "the written telegram has arrived"
}

# What the far end must know before it hears free text; a demonstration may have something to tell it.
before_typing()
{
    :
}

# The operator takes the line in manual mode and types; the far end must hear it.
operator_types()
{
    local window
    before_typing
    window=$(xdotool search --onlyvisible --name ' / V:' | head -n 1)
    xdotool windowactivate --sync "$window"
    xdotool key alt+a
    sleep 1
    xdotool type --delay 150 hello
    until_true 20 grep -q HELLO "$kept/stream.txt" && echo "typed text has arrived: HELLO"
}

# open_tab NUMBER: brings that tab to the front, counted from 0; at first the roll is there.
open_tab()
{
    local i
    for ((i = (6 + $1 - tab) % 6; i > 0; --i)); do
        xdotool key ctrl+Tab
        sleep 0.3
    done
    tab=$1
}

# text_on_view: the text of the selected row, which has the keyboard, copied as an operator copies it.
text_on_view()
{
    : | xclip -i -selection clipboard
    xdotool key Return
    sleep 0.3
    xdotool key ctrl+a ctrl+c
    sleep 0.3
    timeout 5 xclip -o -selection clipboard || true
    xdotool key shift+Tab
    sleep 0.3
}

# read_rows COUNT FILE: the texts of the first so many rows of the list, one behind the other.
read_rows()
{
    local i
    xdotool key Home
    : > "$2"
    for ((i = 0; i < $1; ++i)); do
        sleep 0.5
        text_on_view >> "$2"
        echo >> "$2"
        xdotool key Down
    done
}

# seen WHERE NAME: the lines of the expected telegram of that name stand in what was read there, but for those of the
# marks, which a procedure may add on the line.
seen()
{
    if tr -d '\r|' < "$expected/$2" | grep -v '^ *$\|ЗЦЗЦ\|НННН' | grep -vxFf <(tr -d '\r' < "$demo/$1") > "$demo/unseen"; then
        echo "MISSING  $2 on the tab $1: $(head -n 1 "$demo/unseen")"
        return 1
    fi
    echo "on view  $2 on the tab $1"
}

# The operator reads what has come and gone, and looks for a word of it. Each demonstration says which telegrams are
# to be there: received, sent, and the word that stands in found alone.
operator_reads()
{
    local window name status=0
    window=$(xdotool search --onlyvisible --name ' / V:' | head -n 1)
    xdotool windowactivate --sync "$window"
    tab=0
    open_tab 2
    read_rows "$(find "$data/inp" -mindepth 2 -type f | wc -l)" "$demo/Входящие"
    import -window root "$result/received.png"
    open_tab 3
    read_rows "$(find "$data/out" -mindepth 2 -type f | wc -l)" "$demo/Исходящие"
    import -window root "$result/sent.png"
    open_tab 4
    printf '%s' "$word" | xclip -i -selection clipboard
    xdotool key ctrl+v Return
    sleep 2
    # From the line over the button and the switch to the list
    xdotool key Tab Tab Tab
    read_rows 1 "$demo/Поиск"
    import -window root "$result/found.png"
    for name in "${received[@]}"; do
        seen Входящие "$name" || status=1
    done
    for name in "${sent[@]}"; do
        seen Исходящие "$name" || status=1
    done
    seen Поиск "$found" || status=1
    open_tab 0
    return "$status"
}

# A picture of the screen; a screen of one colour is none.
take_screenshot()
{
    import -window root "$result/screenshot.png" && [ "$(identify -format %k "$result/screenshot.png")" -gt 8 ]
}

# The workstation leaves in order when it is asked to end.
end_workstation()
{
    kill -TERM "$workstation"
    wait "$workstation"
}

# Its status tells whether the workstation broke the rules of the link.
end_far_end()
{
    echo quit >&3
    wait "$far_end"
}

# whole NAME FILE...: tells whether the expected telegram of that name is among the files.
whole()
{
    if arrived "$expected/$1" "${@:2}"; then
        printf 'whole    %s, %d characters\n' "$1" "$(wc -m < "$expected/$1")"
    else
        printf 'MISSING  %s\n' "$1"
        return 1
    fi
}

# told WHAT LINE: the far end has noted that line.
told()
{
    if grep -qx "$2" "$result/far-end.log"; then
        echo "seen     $1"
    else
        echo "MISSING  $1"
        return 1
    fi
}

show_result()
{
    echo "--- inp"
    (cd "$data/inp" && find . -type f -printf '%P %s bytes\n' | sort)
    echo "--- out"
    (cd "$data/out" && find . -type f -printf '%P %s bytes\n' | sort)
    echo "--- journal"
    cat "$data"/prt/*.prt | tr -d '\001-\010'
    echo
    echo "---"
}

finish()
{
    local process
    for process in $workstation $far_end "${display_processes[@]}"; do
        kill "$process" 2> /dev/null || continue
        wait "$process" 2> /dev/null || true
    done
    rm -rf "$demo"
}
