# Completion of quirevault for fish.

# The library's tags, one a line; nothing where there is no library yet, which asking would make.
function __quirevault_tags
    set -q XDG_DATA_HOME; and set -l data $XDG_DATA_HOME; or set -l data ~/.local/share
    test -e $data/Quirevault/library.db; or return 0
    quirevault tags 2>/dev/null | string match -v 'No tags.'
end

# Whether the command line so far begins with these words, and for a command that has subcommands, with none of them.
function __quirevault_is
    set -l words (commandline -opc)[2..]
    set -l wanted (string split ' ' -- $argv[1])
    test "$words[1..$(count $wanted)]" = "$wanted"; or return 1
    test (count $wanted) -eq 1; or return 0
    contains -- $words[1] tags bookmarks; or return 0
    not contains -- "$words[2]" add remove create rename delete
end

complete -c quirevault -f
complete -c quirevault -n __fish_use_subcommand -a '(__fish_complete_suffix .pdf)'
complete -c quirevault -n __fish_use_subcommand -l version -d 'Print the version'
complete -c quirevault -s h -l help -d 'Print how it is used'
complete -c quirevault -n 'not __fish_use_subcommand' -l json -d 'Print one JSON document'

complete -c quirevault -n __fish_use_subcommand -a import -d 'Add PDF files, and those inside folders'
complete -c quirevault -n __fish_use_subcommand -a search -d 'Find papers by words in them'
complete -c quirevault -n __fish_use_subcommand -a find -d 'Find passages inside one paper'
complete -c quirevault -n __fish_use_subcommand -a list -d 'List papers'
complete -c quirevault -n __fish_use_subcommand -a open -d 'Open a paper in a reader window'
complete -c quirevault -n __fish_use_subcommand -a show -d 'Show everything about a paper'
complete -c quirevault -n __fish_use_subcommand -a tag -d 'Give a paper a tag'
complete -c quirevault -n __fish_use_subcommand -a untag -d 'Take a tag from a paper'
complete -c quirevault -n __fish_use_subcommand -a remove -d 'Remove papers from the library; their files stay'
complete -c quirevault -n __fish_use_subcommand -a edit -d 'Change title, authors or year'
complete -c quirevault -n __fish_use_subcommand -a tags -d 'List, create, rename and delete tags'
complete -c quirevault -n __fish_use_subcommand -a retag -d 'Recompute the topic tags of every paper'
complete -c quirevault -n __fish_use_subcommand -a bookmarks -d 'List, add and remove bookmarks'

complete -c quirevault -n '__quirevault_is import' -F
complete -c quirevault -n '__quirevault_is search' -l explain -d 'Show how the query is understood'
complete -c quirevault -n '__quirevault_is list' -l tag -x -a '(__quirevault_tags)' -d 'Those that carry this tag'
complete -c quirevault -n '__quirevault_is list' -l reading -d 'Those on the reading list'
complete -c quirevault -n '__quirevault_is list' -l recent -d 'Those of the last import'
complete -c quirevault -n '__quirevault_is list' -l filter -x -d 'Those that pass these field filters'
complete -c quirevault -n '__quirevault_is open' -l page -x -d 'The page to show'
complete -c quirevault -n '__quirevault_is open' -l text -x -d 'What to search the paper for'
complete -c quirevault -n '__quirevault_is tag' -a '(__quirevault_tags)'
complete -c quirevault -n '__quirevault_is untag' -a '(__quirevault_tags)'
complete -c quirevault -n '__quirevault_is edit' -l title -x -d 'The new title'
complete -c quirevault -n '__quirevault_is edit' -l authors -x -d 'The new authors'
complete -c quirevault -n '__quirevault_is edit' -l year -x -d 'The new year'
complete -c quirevault -n '__quirevault_is tags' -a create -d 'Create a tag'
complete -c quirevault -n '__quirevault_is tags' -a rename -d 'Rename a tag everywhere'
complete -c quirevault -n '__quirevault_is tags' -a delete -d 'Delete a tag; its papers stay'
complete -c quirevault -n '__quirevault_is "tags rename"' -a '(__quirevault_tags)'
complete -c quirevault -n '__quirevault_is "tags delete"' -a '(__quirevault_tags)'
complete -c quirevault -n '__quirevault_is bookmarks' -l markdown -d 'As quotes with their pages'
complete -c quirevault -n '__quirevault_is bookmarks' -a add -d 'Bookmark a passage'
complete -c quirevault -n '__quirevault_is bookmarks' -a remove -d 'Remove a bookmark'
complete -c quirevault -n '__quirevault_is "bookmarks add"' -l page -x -d 'The page of the passage'
complete -c quirevault -n '__quirevault_is "bookmarks add"' -l text -x -d 'The passage'
complete -c quirevault -n '__quirevault_is "bookmarks add"' -l label -x -d 'What to call it'
