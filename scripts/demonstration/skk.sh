# shellcheck shell=bash
# The demonstration of a switched-channel network: a file goes to a subscriber over a call with answerbacks, another
# subscriber is busy, somebody calls the workstation to leave a telegram, and somebody to be written to by hand.
# shellcheck disable=SC2154

received=(ВХ1)
sent=(ИСХ1)
word='ВАМ ЗВОНЯТ'
found=ВХ1

# queue NUMBER SUBSCRIBER TEXT: a file of the queue with its record.
queue()
{
    local name
    name=$data/out/$(date +%Y%m%d)u00$1
    printf 'ЗЦЗЦ %s\r\nНННН  \r\n' "$3" > "$name"
    printf '%s|S|01.01.2020 00:00|u|3|N|' "$2" > "$name.dat"
}

prepare_data()
{
    mkdir -p "$data"/{inp,out,prt} "$expected"
    queue 1 112233 $'МОСКВА ИВАНОВУ=\r\nПОЗДРАВЛЯЮ С ДНЕМ СВЯЗИ='
    queue 2 445566 $'ТВЕРЬ СИДОРОВУ=\r\nЭТОТ АБОНЕНТ ЗАНЯТ='
    cp "$data/out/$(date +%Y%m%d)u001" "$expected/ИСХ1"
    printf 'ЗЦЗЦ 007 КАЗАНЬ ПЕТРОВУ=\r\nВАМ ЗВОНЯТ=\r\nНННН  ' > "$expected/ВХ1"
}

start_far_end()
{
    far_end_starts switch "--window-pause 50" --store "$kept" --point АБ-123456 --terminal-ao '654321 ЗНАМЯ' \
        --telegram '007 КАЗАНЬ ПЕТРОВУ=\r\nВАМ ЗВОНЯТ=\r\n' --subscriber '112233:112233 |ЗАРЯ' \
        --subscriber '445566:445566 |ГРАНИТ:busy' --subscriber '223344:223344 |ВЕГА' \
        --subscriber '334455:334455 |ЛУНА' --subscriber '556677:556677 |МАРС'
    # The answerback is "654321 ЗНАМЯ", the list "СОСЕДИ"; the settings file escapes what is not Latin.
    write_settings 1 <<'SETTINGS'

[DORAL]
AO=654321 \x417\x41d\x410\x41c\x42f

[ABONENTLISTS]
AL_0="\x421\x41e\x421\x415\x414\x418|334455,556677||"
AL_1=end
SETTINGS
}

# The caller rings as soon as the busy subscriber has been called; a second try of that one would come too late.
every_telegram_arrived()
{
    if [ -z "${called:-}" ] && grep -q '^result: 445566 busy' "$result/far-end.log"; then
        echo "call 223344" >&3
        called=yes
    fi
    grep -q '^down: 223344 ' "$result/far-end.log" && grep -q '^down: 112233 ' "$result/far-end.log"
}

# Beside each sent file stands the transcript of its connection.
sent_files_left_the_queue()
{
    [ "$(find "$data/out" -mindepth 2 -type f | wc -l)" = $((2 * ${#sent[@]})) ]
}

# A telegram to a list of subscribers, which the operator takes from the lists; it is not to go through the centre.
operator_writes()
{
    printf 'ЗЦЗЦ П654321\r\n|||\r\n\n\nМОСКВА ИВАНОВУ=\r\nНАПИСАНО В РЕДАКТОРЕ=\r\nПЕТРОВ-\n\n\n\n\n\nНННН  ' \
        | tee "$expected/ИСХ2" > "$expected/ИСХ3"
    sent+=(ИСХ2 ИСХ3)
    open_editor 5
    fill_in '=End' '' '' '' 654321 '' '' '' '' 'МОСКВА ИВАНОВУ' 'НАПИСАНО В РЕДАКТОРЕ' 'ПЕТРОВ'
    press_send 'Отправка телеграммы'
    fill_in '' # from the number to the button of the lists
    xdotool key space
    activate 'Списки'
    xdotool key Home
    sleep 0.3
    xdotool key Return
    activate 'Отправка телеграммы'
    fill_in '' '' # from the number to the box of the centre
    xdotool key space
    sleep 0.3
    import -window root "$result/sending.png"
}

written_arrived()
{
    grep -q '^down: 334455 ' "$result/far-end.log" && grep -q '^down: 556677 ' "$result/far-end.log"
}

# Typing needs a connection: somebody calls once more, and hangs up when he has been written to.
before_typing()
{
    echo "call 667788 hang@text+5" >&3
    until_true 20 grep -q '^up: from 667788' "$result/far-end.log"
}

# queued NUMBER RECORD: the file waits with a record that matches.
queued()
{
    local record
    record=$data/out/$(date +%Y%m%d)u00$1.dat
    if grep -q "$2" "$record"; then
        echo "waiting  the file of the busy subscriber: $(cat "$record")"
    else
        echo "MISSING  the record of the busy subscriber"
        return 1
    fi
}

check_end()
{
    local number text status=0
    whole ИСХ1 "$data"/out/*/*u001.000 || status=1
    whole ИСХ2 "$data"/out/*/*u001.001 || status=1
    whole ИСХ3 "$data"/out/*/*u003.* || status=1
    whole ВХ1 "$data"/inp/*/*_000 || status=1
    queued 2 '|2|N|Абонент занят$' || status=1
    told "the text at its subscriber" \
        'got: 112233 ЗЦЗЦ МОСКВА ИВАНОВУ=\\r\\nПОЗДРАВЛЯЮ С ДНЕМ СВЯЗИ=\\r\\nНННН' || status=1
    text="ЗЦЗЦ П654321\\\\r\\\\n$register_marks\\\\r\\\\n\\\\n\\\\nМОСКВА ИВАНОВУ=\\\\r\\\\nНАПИСАНО В РЕДАКТОРЕ=\\\\r\\\\nПЕТРОВ-"
    for number in 334455 556677; do
        told "the written text at $number" "got: $number $text\\(\\\\n\\)\\{6\\}НННН" || status=1
    done
    # An adapter brings the mark of the Latin register along.
    told "the operator's text at the one who called" 'got: 667788 &\?HELLO' || status=1
    told "five connections" 'figures: connections 5' || status=1
    ! grep '^violation: ' "$result/far-end.log" || status=1
    return "$status"
}
