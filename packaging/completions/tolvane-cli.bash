# bash completion for tolvane-cli, loaded when it is first needed.

_tolvane_cli() {
    local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    local command="" verb="" word names=0 options=""
    COMPREPLY=()
    # bash may pass the equals sign between an option and its value as a word.
    if [[ $before == = ]]; then
        before=${COMP_WORDS[COMP_CWORD - 2]}
    elif [[ $current == = ]]; then
        current=""
    fi
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        if [[ $word == -- ]]; then
            names=1
        elif [[ $word == -* ]]; then
            :
        elif [[ -z $command ]]; then
            command=$word
        elif [[ $command == bookmark && -z $verb ]]; then
            verb=$word
        fi
    done

    if ((!names)) && [[ $before == --files0-from || $before == --file || $before == --value-file ]]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        return
    fi
    if ((!names)) && [[ $before == --extract ]]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
        return
    fi
    # Names of attributes, hexadecimal digits and numbers cannot be completed.
    if ((!names)) && [[ $before == --jobs || $before == --at || $before == --hex || $before == --explain && $command == attributes ]]; then
        return
    fi
    case "$command $verb" in
    " ") options="report attributes bookmark --help --version" ;;
    "bookmark ") options="make read show resolve find --help" ;;
    "report ") options="--files0-from --json --explain --jobs --help" ;;
    "attributes ") options="--files0-from --json --verify --explain --hex --value-file --jobs --help" ;;
    "bookmark make") options="--alias --help" ;;
    "bookmark read") options="--at --extract --help" ;;
    "bookmark show") options="--file --at --json --salvage --help" ;;
    "bookmark find") options="--recursive --all-volumes --json --jobs --help" ;;
    "bookmark resolve") options="--file --at --all --json --verbose --help" ;;
    *) return ;;
    esac
    if ((!names)) && [[ $current == -* || -z $command || $command == bookmark && -z $verb ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
        return
    fi
    # Bookmarks to show or resolve are given as text, which cannot be completed.
    if [[ $verb != show && $verb != resolve ]]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}
complete -F _tolvane_cli tolvane-cli
