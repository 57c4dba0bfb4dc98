# fish completion for tolvane; files are completed as usual.

complete -c tolvane -l help -d 'Print a short help'
complete -c tolvane -l version -d 'Print the version'
complete -c tolvane -l resolver -d 'Open the window that resolves bookmarks'
complete -c tolvane -l services -d 'Show the names of files and open nothing'
complete -c tolvane -l await-bus -d 'Wait for a request over the session bus'
