# bash completion for dinmala-cal
_dinmala_cal() {
    local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} word command=
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $word in convert | weekday | events | tithi | upcoming) command=$word ;; esac
    done
    local words
    case $before in
        --from) words="ad bs" ;;
        --lang) words="ne en" ;;
        --digits) words="devanagari western" ;;
        --date) words="" ;;
        *)
            words="--json --from --date --digits --lang --help"
            [ "$command" = upcoming ] && words+=" --important"
            [ -z "$command" ] && words+=" --version convert weekday events tithi upcoming"
            ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}
complete -F _dinmala_cal dinmala-cal
