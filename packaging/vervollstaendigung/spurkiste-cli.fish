# Completion of spurkiste-cli for fish.
set -l befehle liste sport pruefe doppelte
set -l sportarten cycling running motorcycling driving hiking walking mountain_biking gravel_cycling e_bike \
    trail_running swimming skiing inline_skating rowing kayaking

complete -c spurkiste-cli -f
complete -c spurkiste-cli -n "not __fish_seen_subcommand_from $befehle" -a liste -d 'List the tracks of a folder'
complete -c spurkiste-cli -n "not __fish_seen_subcommand_from $befehle" -a sport -d 'Write a sport into files'
complete -c spurkiste-cli -n "not __fish_seen_subcommand_from $befehle" -a pruefe -d 'Say what could not be read'
complete -c spurkiste-cli -n "not __fish_seen_subcommand_from $befehle" -a doppelte -d 'Find files with the same track'
complete -c spurkiste-cli -n '__fish_seen_subcommand_from liste doppelte' -a '(__fish_complete_directories)'
complete -c spurkiste-cli -n "__fish_seen_subcommand_from sport; and not __fish_seen_subcommand_from $sportarten" \
    -a "$sportarten"
complete -c spurkiste-cli -n "__fish_seen_subcommand_from sport; and __fish_seen_subcommand_from $sportarten" \
    -k -a '(__fish_complete_suffix .gpx)'
complete -c spurkiste-cli -n '__fish_seen_subcommand_from pruefe' -k -a '(__fish_complete_suffix .gpx)'
complete -c spurkiste-cli -n '__fish_seen_subcommand_from liste' -l format -x -a 'tabelle json csv' -d 'What to print'
complete -c spurkiste-cli -n '__fish_seen_subcommand_from liste' -l ohne-cache -d 'Leave the cache file alone'
complete -c spurkiste-cli -n '__fish_seen_subcommand_from pruefe' -l json -d 'Print JSON'
complete -c spurkiste-cli -n '__fish_seen_subcommand_from liste' -l ressourcen -x \
    -a '(__fish_complete_directories)' -d 'Folder of the resources'
complete -c spurkiste-cli -n "__fish_seen_subcommand_from $befehle" -l roh -d 'Print names byte for byte'
complete -c spurkiste-cli -s h -l help -d 'Print a summary'
complete -c spurkiste-cli -l version -d 'Print the version'
