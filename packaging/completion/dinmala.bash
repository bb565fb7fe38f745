# bash completion of dinmala
_dinmala() {
    COMPREPLY=($(compgen -W "--help --version" -- "${COMP_WORDS[COMP_CWORD]}"))
}
complete -F _dinmala dinmala
