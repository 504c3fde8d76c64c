# Completion of spurkiste-cli for bash.
_spurkiste_cli() {
    local cur prev words cword split
    _init_completion -s || return
    case $prev in
        --format)
            COMPREPLY=($(compgen -W 'tabelle json csv' -- "$cur"))
            return
            ;;
        --ressourcen)
            _filedir -d
            return
            ;;
    esac

    local i worte=() # what stands before the cursor and is no option
    for ((i = 1; i < cword; i++)); do
        case ${words[i]} in
            --format | --ressourcen) ((i++)) ;;
            -*) ;;
            *) worte+=("${words[i]}") ;;
        esac
    done

    local optionen='--help --version'
    case ${worte[0]-} in
        liste) optionen='--format --ohne-cache --ressourcen --roh' ;;
        pruefe) optionen='--json --roh' ;;
        sport | doppelte) optionen='--roh' ;;
    esac
    if [[ $cur == -* ]]; then
        COMPREPLY=($(compgen -W "$optionen" -- "$cur"))
        return
    fi
    case ${#worte[@]}:${worte[0]-} in
        0:) COMPREPLY=($(compgen -W 'liste sport pruefe doppelte' -- "$cur")) ;;
        1:liste | 1:doppelte) _filedir -d ;;
        1:sport)
            COMPREPLY=($(compgen -W 'cycling running motorcycling driving hiking walking mountain_biking gravel_cycling
                e_bike trail_running swimming skiing inline_skating rowing kayaking' -- "$cur"))
            ;;
        *:sport | *:pruefe) _filedir gpx ;;
    esac
} &&
    complete -F _spurkiste_cli spurkiste-cli
