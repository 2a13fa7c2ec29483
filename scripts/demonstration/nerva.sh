# shellcheck shell=bash
# The demonstration of an Ethernet adapter: its settings are read, changed, written and read again in the dialog that the
# options open; then a direct link goes over its line, as in the demonstration of that.
# shellcheck disable=SC2154

# shellcheck disable=SC2034
device=nerva
firmware=new
patience=420 # the pace of the line
# shellcheck source=scripts/demonstration/direct.sh
. "$steps/direct.sh"

gateway=192.168.0.2
factory_gateway=192.168.0.1

# Without an operator at the screen the telegrams wait until the adapter is set.
start_far_end()
{
    far_end_starts peer "" --store "$kept" --confirm
    write_settings 2 <<SETTINGS

[Direct]
SendConfirmation=true
SETTINGS
    if has_display; then
        send_incoming
    else
        mv "$data/out" "$demo/out"
        mkdir "$data/out"
    fi
}

send_incoming()
{
    local name
    for name in ВХ1 ВХ2 ВХ3; do
        echo "send $demo/incoming/$name" >&3
    done
}

wait_for_telegrams()
{
    set_adapter || return
    mv "$demo"/out/* "$data/out"
    send_incoming
    until_true "$patience" every_telegram_arrived && until_true 10 sent_files_left_the_queue && sleep 2
}

# window_of TITLE: brings the window of that title to the front.
window_of()
{
    xdotool windowactivate --sync "$(xdotool search --onlyvisible --name "$1" | tail -n 1)" && sleep 1
}

is_open()
{
    xdotool search --onlyvisible --name "$1" > /dev/null
}

# noted COUNT EVENT: the adapter has noted the event so often.
noted()
{
    [ "$(grep -c "^$2" "$result/far-end.log")" -ge "$1" ]
}

# times COUNT KEY: presses the key so often.
times()
{
    local i
    for ((i = 0; i < $1; ++i)); do
        xdotool key "$2"
        sleep 0.1
    done
}

# read_settings COUNT: presses the button that has the keyboard and waits until the adapter has told its settings so often.
read_settings()
{
    xdotool key space
    until_true 20 noted "$1" asked: && sleep 2
}

# shown_settings NAME: what has been read stands in the dialog's log, two controls before the button for reading, which
# has the keyboard.
shown_settings()
{
    times 2 shift+Tab
    xdotool key ctrl+a ctrl+c
    sleep 0.3
    timeout 5 xclip -o -selection clipboard | grep -o '{v:.*' | tail -n 1 > "$demo/$1"
    times 2 Tab
}

# The whole of it by keys, as the operator has no mouse here but for the menu.
set_adapter()
{
    until_true 60 noted 1 ready: || return
    window_of ' / V:' || return
    xdotool key alt+a # the options are for the manual mode
    sleep 1
    open_options || return
    xdotool key ctrl+shift+c
    until_true 10 is_open '^Nerva ' || return
    window_of '^Nerva ' || return
    until_true 20 noted 1 closed: || return
    sleep 1

    times 3 shift+Tab # from the first control back to the button for reading
    read_settings 1 || return
    shown_settings before
    times 9 shift+Tab # the gateway
    xdotool key ctrl+a
    xdotool type --delay 50 "$gateway"
    times 8 Tab # the switch for storing
    xdotool key space
    times 2 Tab # the button for writing
    xdotool key space
    until_true 20 noted 1 stored: || return
    times 1 shift+Tab
    read_settings 2 || return
    shown_settings after
    import -window root "$result/nerva.png"
    xdotool key Escape
    until_true 10 noted 2 closed: || return
    window_of '^Параметры$' || return
    xdotool key Escape
    until_true 60 noted 2 ready: || return
    window_of ' / V:' && xdotool key alt+a
}

# From the menu, whose first entry they are.
open_options()
{
    xdotool mousemove --window "$(xdotool search --onlyvisible --name ' / V:' | head -n 1)" 30 10 click 1
    sleep 1
    times 1 Down
    xdotool key Return
    until_true 10 is_open '^Параметры$' && window_of '^Параметры$'
}

eval "$(declare -f check_end | sed '1s/check_end/check_telegrams/')"

check_end()
{
    local status=0
    check_telegrams || status=1
    grep -q "gw:\"$factory_gateway\"" "$demo/before" && grep -q "gw:\"$gateway\"" "$demo/after" || status=1
    sed 's/^/read     /' "$demo/before" "$demo/after"
    told "the change alone was written" "written: {gw:\"$gateway\"}" || status=1
    told "it was stored" 'stored:' || status=1
    told "the end of configuring" 'left:' || status=1
    ! grep '^violation: ' "$result/far-end.log" || status=1
    return "$status"
}
