# shellcheck shell=bash
# What carries a demonstration or a test day between the workstation and its far end: TCP on loopback, or a line adapter on a
# pseudo-terminal. An empty FIRMWARE is TCP, "old" and "new" are the generations of the adapter.

# far_end KIND FIRMWARE DIRECTORY ANSWER_MS [TCP_OPTIONS]: the arguments of linesim for a far end of that kind, to
# which the workstation must answer in that time. In device stands the kind of adapter, if it is not the line adapter.
far_end()
{
    if [ -z "$2" ]; then
        echo "$1 --listen 0 --answer $4 ${5:-}"
    else
        echo "${device:-adapter} --port $3/adapter --firmware $2 --baud 200 --answer $4 $1"
    fi
}

# far_end_is_there LOG: whether it has started; then the workstation is told of its port.
far_end_is_there()
{
    grep -q '^\(listening\|port\): ' "$1" || return
    VELDA_PORTS=$(sed -n 's/^port: //p' "$1")
    export VELDA_PORTS
}

# line_settings LOG FIRMWARE TIMEOUT: what velda.ini says of the line. The address and the port stand under
# Cyrillic keys, which the settings file escapes.
line_settings()
{
    if [ -z "$2" ]; then
        echo "TcpMode=true"
        echo "%U0410%U0434%U0440%U0435%U0441=127.0.0.1"
        echo "%U041F%U043E%U0440%U0442=$(sed -n 's/^listening: //p' "$1")"
        echo "TimeOut=$3"
    else
        echo "TcpMode=false"
        echo "TRELO_SN=$(sed -n 's/^port: \([0-9]*\)=.*/\1/p' "$1")"
        echo "tlgBaud=200"
    fi
}

# stored_settings FIRMWARE: what the section PATH says of stored texts: without the marks of registers, which TCP
# does not carry.
stored_settings()
{
    [ -z "$1" ] || echo "removeRegisterInInputFiles=true"
}
