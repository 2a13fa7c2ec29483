#!/bin/bash
# Takes the manual's pictures from the running workstation, with linesim behind it, under a display of its own.
#   pictures.sh PROGRAMS PLACE   velda_pictures and linesim stand in PROGRAMS; PLACE is the folder for the pictures
set -euo pipefail
bin=$1
place=$2
cd "$(dirname "$(readlink -f "$0")")/../.."
. scripts/clean-environment.sh
scripts/install-deps.sh xvfb fonts-dejavu-core
. scripts/carrier.sh

work=$(mktemp -d)
processes=()

finish()
{
    local process
    for process in "${processes[@]}"; do
        kill "$process" 2> /dev/null || true
        wait "$process" 2> /dev/null || true
    done
    rm -rf "$work"
}
trap finish EXIT

# until_true SECONDS COMMAND...
until_true()
{
    local seconds=$1 tries=$(($1 * 5))
    shift
    until "$@"; do
        ((tries-- > 0)) || { echo "pictures: ${scene:-display}: not within $seconds s: $*" >&2; return 1; }
        sleep 0.2
    done
}

start_display()
{
    Xvfb -displayfd 1 -screen 0 2400x1900x24 -nolisten tcp > "$work/display" 2> "$work/display.log" &
    processes+=($!)
    until_true 20 test -s "$work/display"
    DISPLAY=:$(cat "$work/display")
    export DISPLAY QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR=2 XDG_CONFIG_HOME=$work/home XDG_CACHE_HOME=$work/cache
}

# start_far_end ARGUMENT...: takes commands by the FIFO of the scene.
start_far_end()
{
    mkfifo "$data/commands"
    "$bin/linesim" "$@" <> "$data/commands" > "$data/far-end.log" &
    processes+=($!)
    until_true 20 far_end_is_there "$data/far-end.log"
}

# write_settings PROCEDURE FIRMWARE OF_CONNECT < REST
write_settings()
{
    {
        printf '[CONNECT]\nprocessMode=%s\n' "$1"
        line_settings "$data/far-end.log" "$2" 30
        printf '%s\n\n[PATH]\nscanDirsTimeout=2\nremoveRegisterInInputFiles=true\n\n' "$3"
        printf '[WINDOW]\ngeometryMainForm=@Rect(20 20 900 640)\n\n[SOUND]\nsoundRTlgType=0\nsoundCTlgType=0\n\n'
        printf '[EDITOR]\neditorInterfaceModes=11111\n\n'
        cat
    } > "$data/velda.ini"
}

# begin SCENE: gives it a data directory.
begin()
{
    scene=$1
    data=$work/$1
    rm -rf "$data"
    mkdir -p "$data"/{inp,out,prt}
}

play()
{
    VELDA_SCENE=$scene VELDA_PICTURES=$place VELDA_FAR_END=$data/commands \
        timeout 300 "$bin/velda_pictures" "-d=$data" 2> "$data/log" || { tail -n 60 "$data"/*log >&2; return 1; }
}

# outgoing FOLDER NUMBER TEXT
outgoing()
{
    printf 'П654321\r\n%s' "${3%.}" > "$data/$1/$(date +%Y%m%d)u00$2"
}

# telegram NAME TEXT: the centre sends it.
telegram()
{
    printf '%s' "${2%.}" > "$data/$1"
    echo "send-file $data/$1" > "$data/commands"
}

centre()
{
    begin centre
    outgoing out 1 $'МОСКВА ИВАНОВУ=\r\nПОЗДРАВЛЯЮ С ДНЕМ СВЯЗИ ЖЕЛАЮ ЗДОРОВЬЯ УСПЕХОВ=\r\nПЕТРОВ-\r\n.'
    outgoing out 2 $'САМАРА ВОКЗАЛ НАЧАЛЬНИКУ=\r\nПОЕЗД 24 ПРИБЫВАЕТ 17 ЧАСОВ 40 МИНУТ=\r\nСИДОРОВ-\r\n.'
    outgoing out 3 $'КАЗАНЬ УЛ БАУМАНА 14 ПЕТРОВУ=\r\nВСТРЕЧАЙТЕ ПЯТНИЦУ=\r\nИВАНОВА-\r\n.'
    mkdir "$data/later"
    outgoing later 4 $'ТВЕРЬ УЗЕЛ СВЯЗИ=\r\nСВОДКУ ПЕРЕДАЙТЕ К ДЕВЯТИ ЧАСАМ=\r\nИВАНОВА-\r\n.'
    outgoing later 6 $'МОСКВА ИВАНОВОЙ=\r\nВЫЕЗЖАЮ СУББОТУ=\r\nОРЛОВА-\r\n.'
    outgoing later 5.b005 $'КАЗАНЬ ВОКЗАЛ=\r\nГРУППА ПРИБЫЛА=\r\nЛЕБЕДЕВ-\r\n.'
    cp -r sound "$data" # a file that is not there is shown as a fault
    start_far_end centre --listen 0 --window-pause 20 --pause 500 --store "$data/kept"
    telegram first $'П01 221200 12\r\nМОСКВА ИВАНОВОЙ=\r\nДОКУМЕНТЫ ПОЛУЧЕНЫ ПОЛНОСТЬЮ=\r\nОРЛОВ-\r\n.'
    telegram second $'П02 221205 18\r\nТВЕРЬ УЗЕЛ СВЯЗИ=\r\nКАЗАНЬ СООБЩАЕТ ЛИНИЯ ВОССТАНОВЛЕНА=\r\nДЕЖУРНЫЙ-\r\n.'
    telegram third $'П03 221210 09\r\nКАЗАНЬ ВОКЗАЛ=\r\nПОДТВЕРДИТЕ ПРИБЫТИЕ ГРУППЫ=\r\nЛЕБЕДЕВ-\r\n.'
    write_settings 0 '' '' <<< $'[OPERATOR]\nlastOperator=\\x418\\x412\\x410\\x41d\\x41e\\x412\\x410'
    play
}

switched()
{
    begin switched
    start_far_end switch --listen 0 --window-pause 20 --point АБ-123456 --terminal-ao '654321 ЗНАМЯ ТВЕРЬ' \
        --subscriber '223344:223344 |ВЕГА' --store "$data/kept"
    write_settings 1 '' '' <<< $'[DORAL]\nAO=654321 \\x417\\x41d\\x410\\x41c\\x42f \\x422\\x412\\x415\\x420\\x42c'
    play
}

direct()
{
    begin direct
    start_far_end peer --listen 0 --window-pause 20 --store "$data/kept" --confirm
    printf 'ЗЦЗЦ\r\nКАЗАНЬ УЛ БАУМАНА 14 ПЕТРОВУ=\r\nВСТРЕЧАЙТЕ ПЯТНИЦУ=\r\nИВАНОВА-\r\nНННН\r\n' > "$data/tape.txt"
    "$bin/linesim" perforator --port "$data/perforator" --speed 10 --tape "$data/tape.txt" > "$data/perforator.log" &
    processes+=($!)
    until_true 20 test -e "$data/perforator"
    write_settings 2 '' $'usePrf=true\nSOREL_SN=20000001' <<< ''
    VELDA_PORTS=20000001=$data/perforator play
}

nerva()
{
    begin nerva
    device=nerva
    # shellcheck disable=SC2046
    start_far_end $(far_end peer new "$data" 3000)
    write_settings 2 new '' <<< ''
    play
}

adapter()
{
    begin adapter
    device=adapter
    # shellcheck disable=SC2046
    start_far_end $(far_end peer new "$data" 3000)
    write_settings 2 new '' <<< ''
    play
}

# Every picture of the list.
check_pictures()
{
    local name
    while IFS='|' read -r name _; do
        [ -s "$place/$name.png" ] || { echo "pictures: $name is missing" >&2; exit 1; }
    done < <(grep -v '^#' docs/manual/pictures.txt)
}

mkdir -p "$place"
start_display
# On a machine that is busy with others a far end may be late and taken for gone, as on a bad line.
for each in ${3:-centre switched direct nerva adapter}; do
    "$each" || { echo "pictures: once more: $each" >&2; "$each"; }
done
[ $# = 3 ] || check_pictures
