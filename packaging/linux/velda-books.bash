# bash completion for velda-books -*- shell-script -*-

_velda_books()
{
    local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} directory='' word
    COMPREPLY=()
    if [ "$before" = --html ]; then
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        return
    fi
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "--csv --html --help --version" -- "$current")
        return
    fi
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        if [ -z "$directory" ] && [ -d "$word" ]; then
            directory=$word
        fi
    done
    if [ -z "$directory" ]; then
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
    else # the days that it has a journal of
        mapfile -t COMPREPLY < <(compgen -W "$(find "$directory/prt" -name '????????.prt' -printf '%f\n' 2> /dev/null | sed 's/\.prt$//' | sort)" -- "$current")
    fi
}
complete -o filenames -F _velda_books velda-books
