# bash completion for linesim -*- shell-script -*-
# The program tells its parts and their options itself, so that nothing here can fall behind it.

# The options of a part, each with the name of its value.
__linesim_options()
{
    "$1" "$2" --help 2>/dev/null | awk '/^  -/ {
        for (i = 1; i <= NF; ++i)
            if ($i ~ /^--/) {
                sub(/,$/, "", $i)
                print $i, ($(i + 1) ~ /^</ ? $(i + 1) : "")
                break
            }
    }'
}

_linesim()
{
    local program=${COMP_WORDS[0]} current=${COMP_WORDS[COMP_CWORD]}
    local parts ends="peer centre switch" part='' options='' value='' i word
    COMPREPLY=()
    parts=$("$program" 2>&1 | awk '/^  [a-z]/ { print $1 }')

    # The last part named, and the value that the word before the current one waits for.
    for ((i = 1; i < COMP_CWORD; ++i)); do
        word=${COMP_WORDS[i]}
        if [ -n "$value" ]; then
            value=''
        elif [[ $word == --* ]]; then
            value=$(awk -v option="$word" '$1 == option { print $2 }' <<< "$options")
        elif [[ " ${parts//$'\n'/ } " == *" $word "* ]]; then
            part=$word
            options=$(__linesim_options "$program" "$part")
        fi
    done

    case $value in
        "<DIR>") compopt -o filenames 2>/dev/null; mapfile -t COMPREPLY < <(compgen -d -- "$current") ;;
        "<FILE>" | "<PATH>") compopt -o filenames 2>/dev/null; mapfile -t COMPREPLY < <(compgen -f -- "$current") ;;
        "<"*) ;;
        *)
            word=$(cut -d ' ' -f 1 <<< "$options")
            [ -n "$part" ] || word=$parts
            [[ $part != @(adapter|nerva) ]] || word+=" $ends"
            mapfile -t COMPREPLY < <(compgen -W "$word" -- "$current")
            ;;
    esac
}

complete -F _linesim linesim
