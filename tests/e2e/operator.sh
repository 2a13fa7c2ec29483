# shellcheck shell=bash
# The operator of a workstation with a window, for the scripts beside this file. They set data, the data directory,
# and places, the output of operator_places.
# shellcheck disable=SC2154

# The display is no matter of the false clock.
hand()
{
    env -u LD_PRELOAD timeout 5 xdotool "$@" 2> /dev/null
}

window()
{
    hand search --onlyvisible --name ' - ЦКС / V:' | tail -n 1 || true
}

# dialog TITLE: the window of that title, if it is open.
dialog()
{
    hand search --onlyvisible --name "^$1\$" | tail -n 1 || true
}

# press NAME: a click on the button or counter.
press()
{
    local id x y
    id=$(window)
    read -r _ x y < <(grep "^$1 " "$places")
    [ -n "$id" ] || return 0
    hand windowactivate --sync "$id" || true
    hand mousemove --window "$id" "$x" "$y" click 1 || true
}

# Alt+A: the other mode.
press_alt_a()
{
    local id
    id=$(window)
    [ -n "$id" ] || return 0
    hand windowactivate --sync "$id" || true
    hand key alt+a || true
}

# correct_counter LABEL TITLE VALUE: through the dialog that a click on the counter opens.
correct_counter()
{
    local id i
    press "$1"
    for ((i = 0; i < 40; ++i)); do
        id=$(dialog "$2")
        [ -z "$id" ] || break
        sleep 1
    done
    [ -n "$id" ] || return 0
    hand windowactivate --sync "$id" || true
    hand key ctrl+a || true
    hand type "$3" || true
    hand key Return || true
    sleep 2
}

close_dialog()
{
    local id
    id=$(dialog "$1")
    [ -n "$id" ] || return 0
    hand windowactivate --sync "$id" || true
    hand key Escape || true
}

journal()
{
    cat "$data"/prt/*.prt 2> /dev/null | tr -d '\001-\010'
}

in_manual_mode()
{
    journal | grep -aE 'Установлен (РУЧНОЙ|АВТОМАТИЧЕСКИЙ) режим|Запуск ---' | tail -n 1 | grep -qv АВТОМАТИЧЕСКИЙ
}

# figure KEY: a counter as the workstation has stored it.
figure()
{
    sed -n "s/^$1=\([0-9]*\)\r*$/\1/p" "$data/velda_state.ini"
}

# The queue file whose sending has begun and not ended, by the journal.
unfinished()
{
    local name
    name=$(journal | sed -n 's/.*Отправка файла: \([0-9]*u[0-9]*\).*/\1/p' | tail -n 1)
    [ -n "$name" ] || return 0
    [ ! -f "$data/out/$name" ] && ! ls "$data/out/$name".b* > /dev/null 2>&1 || echo "$name"
}
