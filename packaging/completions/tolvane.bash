# bash completion for tolvane, loaded when it is first needed.

_tolvane() {
    local current=${COMP_WORDS[COMP_CWORD]} word
    compopt -o filenames 2>/dev/null
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        if [[ $word == -- ]]; then
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
            return
        fi
    done
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W '--help --version --resolver --services --await-bus --' -- "$current")
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}
complete -F _tolvane tolvane
