# shellcheck shell=bash
# The demonstration of a day with a message switching centre: the channel opens, numbered telegrams go both ways, one is
# announced as one with a category, one must be confirmed by the operator's name, and the channel closes by the
# workstation's stop.
# shellcheck disable=SC2154

operator=ИВАНОВА
operator_in_settings='\x418\x412\x410\x41d\x41e\x412\x410' # the settings file escapes what is not Latin
received=(ВХ1 ВХ2 ВХ3 ВХ4)
sent=(ИСХ1 ИСХ2 ИСХ3)
word='КАНАЛ ОТКРЫТ'
found=ВХ1

# outgoing NUMBER TEXT: a file of the queue, and the telegram as it must come to the centre. A "." behind the last
# line end keeps the shell from dropping it.
outgoing()
{
    printf 'П654321\r\n%s' "${2%.}" > "$data/out/$(date +%Y%m%d)u00$1"
    { printf 'ЗЦЗЦ 00%d ' "$1"; cat "$data/out/$(date +%Y%m%d)u00$1"; printf ' НННН  '; } > "$expected/ИСХ$1"
}

# incoming NUMBER TEXT: the telegram as it must be stored here, its time stamp aside; its text for the centre.
incoming()
{
    printf '%s' "${2%.}" > "$demo/incoming/ВХ$1"
    { printf 'ЗЦЗЦ 00%d ' "$1"; cat "$demo/incoming/ВХ$1"; printf '\r\nНННН  '; } > "$expected/ВХ$1"
}

prepare_data()
{
    mkdir -p "$data"/{inp,out,prt} "$expected" "$demo"/{incoming,stored}
    outgoing 1 $'МОСКВА ИВАНОВУ=\r\nПОЗДРАВЛЯЮ С ДНЕМ СВЯЗИ=\r\n.'
    outgoing 2 "$(long_text 40 'КАНАЛЕ ЦЕНТРА'; printf .)"
    outgoing 3 $'КАЗАНЬ ПЕТРОВУ=\r\nЭТА ТЕЛЕГРАММА ПОСЛЕДНЯЯ=\r\n.'
    incoming 1 $'П01 311200 12\r\nКАНАЛ ОТКРЫТ=\r\n.'
    incoming 2 "П123 200 40"$'\r\n'"$(long_text 40 'КАНАЛЕ ЦЕНТРА'; printf .)"
    incoming 3 $'С01 311201 05\r\nКАТЕГОРИЙНАЯ=\r\n.'
    incoming 4 $'П123=123 31 311202 \r\nПОДТВЕРДИТЕ ПРИЕМ=\r\n.'
}

# line NUMBER: the text of an incoming telegram on one line, as a command takes it.
line()
{
    sed -e 's/\r/\\r/g' "$demo/incoming/ВХ$1" | sed -e ':a;N;$!ba;s/\n/\\n/g' -e 's/$/\\n/'
}

start_far_end()
{
    far_end_starts centre "--window-pause 20" --store "$kept" --pause 3000
    for number in 1 2; do
        echo "send-file $demo/incoming/ВХ$number" >&3
    done
    echo "category $(line 3)" >&3
    echo "r $(line 4)" >&3
    write_settings 0 <<SETTINGS

[CORVA]
autoConfirmRTimeOut=5

[OPERATOR]
lastOperator=$operator_in_settings
SETTINGS
}

# The stored telegrams without their time stamps.
stored()
{
    local file
    for file in "$data"/inp/*/*; do
        [ ! -f "$file" ] || sed '$s/[0-9]\{4\}$//' "$file" > "$demo/stored/$(basename "$file")"
    done
}

every_telegram_arrived()
{
    local wanted
    stored
    for wanted in "$expected"/ИСХ*; do
        arrived "$wanted" "$kept"/[0-9]*.txt || return
    done
    for wanted in "$expected"/ВХ*; do
        arrived "$wanted" "$demo"/stored/* || return
    done
    grep -q '^confirmation: ' "$result/far-end.log"
}

# A telegram in the form that has an address and a signature: category "С", series 02.
operator_writes()
{
    printf 'ЗЦЗЦ 004 С02 654321\r\n%s\r\n\n\nМОСКВА ИВАНОВУ=\r\nНАПИСАНО В РЕДАКТОРЕ=\r\nПЕТРОВ-\n\n\n\n\n\n НННН  ' \
        "$register_marks" > "$expected/ИСХ4"
    sent+=(ИСХ4)
    open_editor 5
    fill_in '=End' '' '=End' '=End' 654321 '' '' '' '' 'МОСКВА ИВАНОВУ' 'НАПИСАНО В РЕДАКТОРЕ' 'ПЕТРОВ'
    press_send 'Отправка телеграммы'
}

written_arrived()
{
    arrived "$expected/ИСХ4" "$kept"/[0-9]*.txt
}

before_typing()
{
    echo talk >&3
}

# Each telegram at its place, byte for byte, and the steps of the day in the centre's notes.
check_end()
{
    local number status=0
    stored
    for number in 1 2 3 4; do
        whole "ИСХ$number" "$kept/00$number.txt" || status=1
    done
    for number in 1 2 3 4; do
        whole "ВХ$number" "$demo"/stored/*.00"$number" || status=1
    done
    told "the channel opened" 'service: СВЯЗЬ ОТКРЫТА' || status=1
    told "a telegram with a category announced" 'service: ПЕРЕДАЕТСЯ КАТЕГОРИЙНАЯ .*' || status=1
    told "the confirmation with the operator's name" "confirmation: 4 $operator" || status=1
    told "the stop" 'stop:' || status=1
    told "the same figures on both sides" 'figures: got 4 sent 4 .*' || status=1
    ! grep '^violation: ' "$result/far-end.log" || status=1
    return "$status"
}
