# shellcheck shell=bash
# The steps of run.sh. They use its variables: bin, the programs; demo, a fresh directory; result, where the
# screenshot and the logs stay.
# shellcheck disable=SC2154

data=$demo/data
expected=$demo/expected # each telegram from mark to mark, as it must arrive: out1.. from here, in1.. to here
kept=$demo/far-end      # what the far end stores
workstation=
far_end=
display_processes=()

# A number of lines of telegram text, each of 65 characters with its line end.
long_text()
{
    local i
    for ((i = 1; i <= $1; ++i)); do
        printf 'СТРОКА %03d ПРОВЕРКА ДЛИННОЙ ТЕЛЕГРАММЫ НА ПРЯМОМ КАНАЛЕ СВЯЗИ=\r\n' "$i"
    done
}

# telegram NAME TEXT: the telegram from its start mark to its end mark, under NAME in expected. A "." behind the
# last line end keeps the shell from dropping it.
telegram()
{
    printf 'ЗЦЗЦ %s\r\n%sНННН  ' "$1" "${2%.}" > "$expected/$1"
}

# queue NUMBER DELAY: puts the telegram out-NUMBER into the queue, to go in DELAY seconds.
queue()
{
    local stamp
    stamp=$(date -d "$2 seconds" +%y%m%d_%H%M%S)
    { printf '\r\n'; cat "$expected/ИСХ$1"; printf '\r\n'; } > "$data/out/$(date +%Y%m%d)u00$1.$stamp"
}

prepare_data()
{
    mkdir -p "$data"/{inp,out,prt} "$expected" "$demo/incoming"
    telegram ИСХ1 $'МОСКВА ИВАНОВУ=\r\nПОЗДРАВЛЯЮ С НАЧАЛОМ РАБОТЫ=\r\n'
    telegram ИСХ2 "$(long_text 40; printf .)"
    telegram ИСХ3 $'КАЗАНЬ ПЕТРОВУ=\r\nЭТА ТЕЛЕГРАММА ЖДАЛА СВОЕГО ВРЕМЕНИ=\r\n'
    telegram ВХ1 $'РАБОТАЕТ ЛИ КАНАЛ=\r\nОТВЕТЬТЕ=\r\n'
    telegram ВХ2 "$(long_text 36; printf .)"
    telegram ВХ3 $'ZCZC НЕ НАЧАЛО, А ТЕКСТ\r\nКОНЕЦ=\r\n'
    queue 1 -60
    queue 2 -30
    queue 3 15
    cp "$expected"/ВХ* "$demo/incoming"
}

# The address and the port stand under Cyrillic keys, which the settings file escapes.
write_settings()
{
    cat > "$data/velda.ini" <<SETTINGS
[CONNECT]
processMode=2
TcpMode=true
%U0410%U0434%U0440%U0435%U0441=127.0.0.1
%U041F%U043E%U0440%U0442=$1
AsTspSrv=false
TimeOut=30

[PATH]
scanDirsTimeout=2

[Direct]
SendConfirmation=true

[WINDOW]
geometryMainForm=@Rect(40 40 1000 700)

[START]
startInManualMode=false

[SOUND]
soundRTlgType=0
soundCTlgType=0
SETTINGS
}

start_far_end()
{
    mkfifo "$demo/commands"
    "$bin/linesim" peer --listen 0 --send "$demo/incoming" --store "$kept" --confirm --window-pause 50 \
        --speed 800 < "$demo/commands" > "$result/far-end.log" &
    far_end=$!
    exec 3> "$demo/commands"
    until_true 10 grep -q '^listening: ' "$result/far-end.log"
    write_settings "$(sed -n 's/^listening: //p' "$result/far-end.log")"
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

every_telegram_arrived()
{
    local wanted
    for wanted in "$expected"/ИСХ*; do
        arrived "$wanted" "$kept"/[0-9]*.txt || return
    done
    for wanted in "$expected"/ВХ*; do
        arrived "$wanted" "$data"/inp/*/* || return
    done
}

sent_files_left_the_queue()
{
    [ "$(find "$data/out" -mindepth 2 -type f | wc -l)" = 3 ]
}

wait_for_telegrams()
{
    until_true 90 every_telegram_arrived && until_true 10 sent_files_left_the_queue && sleep 2
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

compare_telegrams()
{
    local wanted status=0
    for wanted in "$expected"/*; do
        if arrived "$wanted" "$kept"/[0-9]*.txt "$data"/inp/*/*; then
            printf 'whole    %s, %d characters\n' "$(basename "$wanted")" "$(wc -m < "$wanted")"
        else
            printf 'MISSING  %s\n' "$(basename "$wanted")"
            status=1
        fi
    done
    return "$status"
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
