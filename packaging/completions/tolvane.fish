# What fish offers after "tolvane": files, and these.

complete -c tolvane -l help -d 'Print a short help'
complete -c tolvane -l version -d 'Print the version'
complete -c tolvane -l resolver -d 'Open the window that resolves bookmarks'
complete -c tolvane -l services -d 'Show the names of files and open nothing'
complete -c tolvane -l await-bus -d 'Show nothing until asked to over the session bus'
