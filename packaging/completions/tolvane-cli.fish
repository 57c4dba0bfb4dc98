# fish completion for tolvane-cli.

# Succeeds if the command and verb given so far are the arguments.
function __tolvane_cli_is
    set -l words
    for word in (commandline -opc)[2..-1]
        string match -q -- '-*' $word; or set -a words $word
    end
    switch "$words[1]"
        case bookmark
            test "$words[1..2]" = "$argv"
        case '*'
            test "$words[1]" = "$argv"
    end
end

complete -c tolvane-cli -f
complete -c tolvane-cli -s h -l help -d 'Print help'
complete -c tolvane-cli -n '__tolvane_cli_is ""' -l version -d 'Print the version'
complete -c tolvane-cli -n '__tolvane_cli_is ""' -a report -d 'Print the details report of each file'
complete -c tolvane-cli -n '__tolvane_cli_is ""' -a attributes -d 'Print what extended attributes mean'
complete -c tolvane-cli -n '__tolvane_cli_is ""' -a bookmark -d 'Make, read, show, resolve or find bookmarks'

complete -c tolvane-cli -n '__tolvane_cli_is report' -F
complete -c tolvane-cli -n '__tolvane_cli_is report' -l files0-from -r -F -d 'Read NUL-terminated names from a file'
complete -c tolvane-cli -n '__tolvane_cli_is report' -l json -d 'Print one JSON object per line'
complete -c tolvane-cli -n '__tolvane_cli_is report' -l explain -d 'Add what the extended attributes mean'
complete -c tolvane-cli -n '__tolvane_cli_is report' -l jobs -x -d 'Work with this many threads'

complete -c tolvane-cli -n '__tolvane_cli_is attributes' -F
complete -c tolvane-cli -n '__tolvane_cli_is attributes' -l files0-from -r -F -d 'Read NUL-terminated names from a file'
complete -c tolvane-cli -n '__tolvane_cli_is attributes' -l json -d 'Print one JSON object per line'
complete -c tolvane-cli -n '__tolvane_cli_is attributes' -l verify -d 'Read the content and compare it with checksums'
complete -c tolvane-cli -n '__tolvane_cli_is attributes' -l explain -x -d 'Explain a value from elsewhere'
complete -c tolvane-cli -n '__tolvane_cli_is attributes' -l hex -x -d 'The value in hexadecimal digits'
complete -c tolvane-cli -n '__tolvane_cli_is attributes' -l value-file -r -F -d 'Read the value from a file'
complete -c tolvane-cli -n '__tolvane_cli_is attributes' -l jobs -x -d 'Work with this many threads'

complete -c tolvane-cli -n '__tolvane_cli_is bookmark' -a make -d 'Print a new bookmark of a file'
complete -c tolvane-cli -n '__tolvane_cli_is bookmark' -a read -d 'Print the bookmark in an alias file'
complete -c tolvane-cli -n '__tolvane_cli_is bookmark' -a show -d 'Print what a bookmark contains'
complete -c tolvane-cli -n '__tolvane_cli_is bookmark' -a resolve -d 'Print where the file of a bookmark is now'
complete -c tolvane-cli -n '__tolvane_cli_is bookmark' -a find -d 'Print every bookmark in files of any kind'

complete -c tolvane-cli -n '__tolvane_cli_is bookmark make' -F
complete -c tolvane-cli -n '__tolvane_cli_is bookmark make' -l alias -d 'Print the bytes of an alias file'
complete -c tolvane-cli -n '__tolvane_cli_is bookmark read' -F
complete -c tolvane-cli -n '__tolvane_cli_is bookmark read' -l at -x -d 'The number of the bookmark in the file'
complete -c tolvane-cli -n '__tolvane_cli_is bookmark read' -l extract -x -a '(__fish_complete_directories)' -d 'Write every bookmark to a new file'
for verb in show resolve
    complete -c tolvane-cli -n "__tolvane_cli_is bookmark $verb" -l at -x -d 'The number of the bookmark in the file'
    complete -c tolvane-cli -n "__tolvane_cli_is bookmark $verb" -l file -r -F -d 'Read the bookmark from a file'
    complete -c tolvane-cli -n "__tolvane_cli_is bookmark $verb" -l json -d 'Print one JSON object'
end
complete -c tolvane-cli -n '__tolvane_cli_is bookmark show' -l salvage -d 'Print what is left of a broken bookmark'
complete -c tolvane-cli -n '__tolvane_cli_is bookmark resolve' -l all -d 'Resolve every bookmark in the file'
complete -c tolvane-cli -n '__tolvane_cli_is bookmark resolve' -l verbose -d 'Print the output of show first'
complete -c tolvane-cli -n '__tolvane_cli_is bookmark find' -F
complete -c tolvane-cli -n '__tolvane_cli_is bookmark find' -l recursive -d 'Search the files in folders too'
complete -c tolvane-cli -n '__tolvane_cli_is bookmark find' -l all-volumes -d 'Search folders on other volumes too'
complete -c tolvane-cli -n '__tolvane_cli_is bookmark find' -l json -d 'Print one JSON object per line'
complete -c tolvane-cli -n '__tolvane_cli_is bookmark find' -l jobs -x -d 'Work with this many threads'
