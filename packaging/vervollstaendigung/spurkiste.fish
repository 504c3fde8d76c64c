# Completion of spurkiste for fish.
complete -c spurkiste -f -k -a '(__fish_complete_suffix .gpx)'
complete -c spurkiste -l ordner -x -a '(__fish_complete_directories)' -d 'Open a folder for this run'
complete -c spurkiste -s h -l help -d 'Print a summary'
complete -c spurkiste -l version -d 'Print the version'
