# Completion of KRVWinPr and KRVWinPrBote for bash; needs nothing besides.

# Those of the candidates $2... that begin like $1, whatever the case.
_krvwinpr_matching() {
    local beginning=${1,,} candidate
    for candidate in "${@:2}"; do
        [[ ${candidate,,} == "$beginning"* ]] && COMPREPLY+=("$candidate")
    done
}

# Files and folders that begin like $1; of the files only those that match the pattern $2, if there is one.
_krvwinpr_files() {
    local file
    while IFS= read -r file; do
        [[ -d $file || -z $2 || ${file,,} == $2 ]] && COMPREPLY+=("$file")
    done < <(compgen -f -- "$1")
}

_krvwinpr_pictures() { _krvwinpr_files "$1" "*.@(bmp|pcx|png|jpg|jpeg|gif|tif|tiff|m[0-9])"; }

# A print service that does not answer keeps nobody waiting.
_krvwinpr_printers() {
    local -a names=("Korvano PDF")
    local name
    while IFS= read -r name; do
        names+=("$name")
    done < <(timeout 1 lpstat -e 2>/dev/null)
    _krvwinpr_matching "$1" "${names[@]}"
}

# What was typed so far, without its quotes.
_krvwinpr_typed() {
    local typed=$1
    case $typed in
        [\"\']*) typed=${typed:1} ;;
    esac
    printf '%s' "${typed//\\/}"
}

_krvwinpr() {
    local typed mode="" word
    local -a switches=(/WAIT /TWOPASS /DEBUG /DEBUG2) given=() modes
    typed=$(_krvwinpr_typed "${COMP_WORDS[COMP_CWORD]}")
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $word in
            /WAIT | /TWOPASS | /DEBUG | /DEBUG2) switches=("${switches[@]/#%"$word"/}") ;;
            *) given+=("$word") ;;
        esac
    done
    modes=(/VORSCHAU /AUFTRAEGE /DRUCKERAUSWAHL /INVERT /PRINTGRAPHIC)
    case ${given[0]^^} in
        /VORSCHAU | /AUFTRAEGE | /DRUCKERAUSWAHL | /INVERT | /PRINTGRAPHIC)
            mode=${given[0]^^}
            given=("${given[@]:1}")
            switches=("${switches[@]/#%\/WAIT/}")
            [[ $mode == /VORSCHAU ]] || switches=("${switches[@]/#%\/TWOPASS/}")
            ;;
    esac

    COMPREPLY=()
    compopt -o filenames 2>/dev/null
    [[ $typed == /* || ${#given[@]} -gt 3 ]] && _krvwinpr_matching "$typed" "${switches[@]}"
    case $mode:${#given[@]} in
        :0)
            [[ $COMP_CWORD -eq 1 && $typed == -* ]] && _krvwinpr_matching "$typed" --help --version
            _krvwinpr_matching "$typed" "${modes[@]}"
            _krvwinpr_files "$typed"
            ;;
        /VORSCHAU:0) _krvwinpr_files "$typed" ;;
        :1 | /VORSCHAU:1)
            _krvwinpr_matching "$typed" KEINEGRAFIK
            _krvwinpr_pictures "$typed"
            ;;
        /INVERT:0) _krvwinpr_pictures "$typed" ;;
        :2 | /VORSCHAU:2 | /AUFTRAEGE:0 | /PRINTGRAPHIC:0) _krvwinpr_printers "$typed" ;;
    esac
    # A switch that is taken already leaves an empty word.
    local i
    for i in "${!COMPREPLY[@]}"; do
        [[ -n ${COMPREPLY[i]} ]] || unset "COMPREPLY[i]"
    done
}

_krvwinprbote() {
    local typed
    typed=$(_krvwinpr_typed "${COMP_WORDS[COMP_CWORD]}")
    COMPREPLY=()
    compopt -o filenames 2>/dev/null
    if [[ $COMP_CWORD -eq 1 ]]; then
        _krvwinpr_matching "$typed" /EIN /AUS /STATUS
        [[ $typed == -* ]] && _krvwinpr_matching "$typed" --help --version
    fi
    if [[ ${COMP_WORDS[1]^^} != /STATUS ]]; then
        local folder
        while IFS= read -r folder; do
            COMPREPLY+=("$folder")
        done < <(compgen -d -- "$typed")
    fi
}

complete -F _krvwinpr KRVWinPr
complete -F _krvwinprbote KRVWinPrBote
