# What fish offers after "tolvane-cli".

# The command and its verb as far as they are given; succeeds when they are the words named.
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
complete -c tolvane-cli -n '__tolvane_cli_is ""' -a bookmark -d 'Make, read, show or resolve a bookmark'

complete -c tolvane-cli -n '__tolvane_cli_is report' -F
complete -c tolvane-cli -n '__tolvane_cli_is report' -l files0-from -r -F -d 'Take the names from a file'
complete -c tolvane-cli -n '__tolvane_cli_is report' -l json -d 'Print one JSON object a line'

complete -c tolvane-cli -n '__tolvane_cli_is bookmark' -a make -d 'Print a new bookmark of a file'
complete -c tolvane-cli -n '__tolvane_cli_is bookmark' -a read -d 'Print the bookmark of an alias file'
complete -c tolvane-cli -n '__tolvane_cli_is bookmark' -a show -d 'Print what a bookmark stores'
complete -c tolvane-cli -n '__tolvane_cli_is bookmark' -a resolve -d 'Print where the item is today'

complete -c tolvane-cli -n '__tolvane_cli_is bookmark make' -F
complete -c tolvane-cli -n '__tolvane_cli_is bookmark make' -l alias -d 'Print the bytes of an alias file'
complete -c tolvane-cli -n '__tolvane_cli_is bookmark read' -F
for verb in show resolve
    complete -c tolvane-cli -n "__tolvane_cli_is bookmark $verb" -l file -r -F -d 'Take the bookmark from a file'
    complete -c tolvane-cli -n "__tolvane_cli_is bookmark $verb" -l json -d 'Print one JSON object'
end
complete -c tolvane-cli -n '__tolvane_cli_is bookmark resolve' -l verbose -d 'Print first what show prints'
