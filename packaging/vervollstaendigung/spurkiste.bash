# Completion of spurkiste for bash.
_spurkiste() {
    local cur prev words cword split
    _init_completion -s || return
    if [[ $prev == --ordner ]]; then
        _filedir -d
    elif [[ $cur == -* ]]; then
        COMPREPLY=($(compgen -W '--ordner --help --version' -- "$cur"))
    else
        _filedir gpx
    fi
} &&
    complete -F _spurkiste spurkiste
