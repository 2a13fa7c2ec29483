# shellcheck shell=bash
# The demonstration of a direct link: three telegrams each way between their marks, confirmations on request.
# shellcheck disable=SC2154

received=(ВХ1 ВХ2 ВХ3)
sent=(ИСХ1 ИСХ2 ИСХ3)
word='РАБОТАЕТ ЛИ КАНАЛ'
found=ВХ1

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
    telegram ИСХ1 $'МОСКВА ИВАНОВУ=\r\nПОЗДРАВЛЯЮ С ДНЕМ СВЯЗИ=\r\n'
    telegram ИСХ2 "$(long_text 40 'ПРЯМОМ КАНАЛЕ'; printf .)"
    telegram ИСХ3 $'КАЗАНЬ ПЕТРОВУ=\r\nЭТА ТЕЛЕГРАММА ЖДАЛА СВОЕГО ВРЕМЕНИ=\r\n'
    telegram ВХ1 $'РАБОТАЕТ ЛИ КАНАЛ=\r\nОТВЕТЬТЕ=\r\n'
    telegram ВХ2 "$(long_text 36 'ПРЯМОМ КАНАЛЕ'; printf .)"
    telegram ВХ3 $'ZCZC НЕ ЗНАК, А ТЕКСТ\r\nКОНЕЦ=\r\n'
    queue 1 -60
    queue 2 -30
    queue 3 15
    cp "$expected"/ВХ* "$demo/incoming"
}

start_far_end()
{
    far_end_starts peer "--window-pause 50 --speed 800" --send "$demo/incoming" --store "$kept" --confirm
    write_settings 2 <<SETTINGS

[Direct]
SendConfirmation=true
SETTINGS
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

# A message is a text alone; it is to go at once through the queue.
operator_writes()
{
    printf 'ЗЦЗЦ \r\nМОСКВА ИВАНОВУ=\r\nНАПИСАНО В РЕДАКТОРЕ=\r\nПЕТРОВ\r\nНННН  ' > "$expected/ИСХ4"
    sent+=(ИСХ4)
    open_editor 2
    fill_in '=Home' '' $'МОСКВА ИВАНОВУ=\nНАПИСАНО В РЕДАКТОРЕ=\nПЕТРОВ'
    press_send 'Отправка сообщения'
}

written_arrived()
{
    arrived "$expected/ИСХ4" "$kept"/[0-9]*.txt
}

# Each telegram at its place, byte for byte.
check_end()
{
    local file status=0
    for file in "$expected"/*; do
        whole "$(basename "$file")" "$kept"/[0-9]*.txt "$data"/inp/*/* || status=1
    done
    return "$status"
}
