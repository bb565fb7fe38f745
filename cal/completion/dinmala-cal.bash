# bash completion for dinmala-cal
_dinmala_cal() {
    local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} word command=
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $word in convert | weekday | events | tithi | upcoming | explain | almanac | check-year | ics) command=$word ;; esac
    done
    local words
    case $before in
        --from) words="ad bs" ;;
        --lang) words="ne en" ;;
        --digits) words="devanagari western" ;;
        --edition) words="current first" ;;
        --date) words="" ;;
        check-year | --output | --follow)
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
            return
            ;;
        *)
            words="--json --from --date --edition --digits --lang --help"
            [ "$command" = upcoming ] && words+=" --important"
            [ "$command" = ics ] && words+=" --months --days --output --follow --force"
            [ -z "$command" ] && words+=" --version convert weekday events tithi upcoming explain almanac check-year ics"
            ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}
complete -F _dinmala_cal dinmala-cal
