#compdef KRVWinPr KRVWinPrBote
# Completion of KRVWinPr and KRVWinPrBote for zsh.

_krvwinpr_words() { compadd -M 'm:{a-zäöü}={A-ZÄÖÜ}' -- "$@"; }

_krvwinpr_pictures() { _files -g '(#i)*.(bmp|pcx|png|jpg|jpeg|gif|tif|tiff|m[0-9])'; }

# A print service that does not answer keeps nobody waiting.
_krvwinpr_printers() {
    local -a names
    names=("Korvano PDF" ${(f)"$(timeout 1 lpstat -e 2>/dev/null)"})
    compadd -M 'm:{a-zäöüA-ZÄÖÜ}={A-ZÄÖÜa-zäöü}' -- $names
}

_krvwinpr() {
    local mode= word
    local -a switches modes given
    switches=(/WAIT /TWOPASS /DEBUG /DEBUG2)
    modes=(/VORSCHAU /AUFTRAEGE /DRUCKERAUSWAHL /INVERT /PRINTGRAPHIC)
    for word in "${(@)words[2,CURRENT-1]}"; do
        if (( ${switches[(Ie)$word]} )); then
            switches=(${switches:#$word})
        else
            given+=("${(Q)word}")
        fi
    done
    if (( ${modes[(Ie)${(U)given[1]}]} )); then
        mode=${(U)given[1]}
        shift given
        switches=(${switches:#/WAIT})
        [[ $mode == /VORSCHAU ]] || switches=(${switches:#/TWOPASS})
    fi
    [[ $PREFIX == /* || ${#given} -gt 2 ]] && _krvwinpr_words $switches
    case $mode:${#given} in
        (:0)
            (( CURRENT == 2 )) && [[ $PREFIX == -* ]] && _krvwinpr_words --help --version
            _krvwinpr_words $modes
            _files
            ;;
        (/VORSCHAU:0) _files ;;
        (:1|/VORSCHAU:1)
            _krvwinpr_words KEINEGRAFIK
            _krvwinpr_pictures
            ;;
        (/INVERT:0) _krvwinpr_pictures ;;
        (:2|/VORSCHAU:2|/AUFTRAEGE:0|/PRINTGRAPHIC:0) _krvwinpr_printers ;;
    esac
}

_krvwinprbote() {
    if (( CURRENT == 2 )); then
        _krvwinpr_words /EIN /AUS /STATUS
        [[ $PREFIX == -* ]] && _krvwinpr_words --help --version
    fi
    [[ ${(U)words[2]} == /STATUS ]] || _files -/
}

case $service in
    (KRVWinPrBote) _krvwinprbote "$@" ;;
    (*) _krvwinpr "$@" ;;
esac
