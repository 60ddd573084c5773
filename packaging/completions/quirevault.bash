# Completion of quirevault for bash.

# Offers the library's tags that begin with the word; none where there is no library yet, which asking would make.
# Not with compgen -W, which would expand what a tag's name may hold.
_quirevault_tags() {
    local tag
    [[ -e ${XDG_DATA_HOME:-$HOME/.local/share}/Quirevault/library.db ]] || return 0
    compopt -o filenames 2>/dev/null # quotes what has spaces
    while IFS= read -r tag; do
        [[ $tag != "$1"* || $tag == 'No tags.' ]] || COMPREPLY+=("$tag")
    done < <(quirevault tags 2>/dev/null)
}

# The words of the command so far, without options: "tags rename", "import", or nothing.
_quirevault_command() {
    local command=${COMP_WORDS[1]}
    if [[ COMP_CWORD -gt 1 && $command != -* ]]; then
        [[ COMP_CWORD -gt 2 && ${COMP_WORDS[2]} =~ ^(add|remove|create|rename|delete)$ &&
            $command =~ ^(tags|bookmarks)$ ]] && command+=" ${COMP_WORDS[2]}"
        printf '%s' "$command"
    fi
}

_quirevault() {
    local word=${COMP_WORDS[COMP_CWORD]} command commands='' options='--help --json' tags='' files=''
    command=$(_quirevault_command)
    COMPREPLY=()
    case "$command ${COMP_WORDS[COMP_CWORD - 1]}" in
        'list --tag') _quirevault_tags "$word" && return ;;
        *' --page' | *' --text' | *' --label' | *' --title' | *' --authors' | *' --year' | *' --filter') return ;;
    esac
    case $command in
        '') commands='import search find list open show tag untag remove edit tags retag bookmarks'
            options='--help --version' files='*.pdf' ;;
        import) files='*' ;;
        search) options+=' --explain' ;;
        list) options+=' --tag --reading --recent --filter' ;;
        open) options+=' --page --text' ;;
        edit) options+=' --title --authors --year' ;;
        tags) commands='create rename delete' ;;
        'tags rename' | 'tags delete') tags=yes ;;
        tag | untag) ((COMP_CWORD > 2)) && tags=yes ;;
        bookmarks) commands='add remove' options+=' --markdown' ;;
        'bookmarks add') options+=' --page --text --label' ;;
    esac
    [[ $word != -* ]] || commands=$options tags='' files=''
    COMPREPLY=($(compgen -W "$commands" -- "$word"))
    [[ -z $tags ]] || _quirevault_tags "$word"
    if [[ -n $files ]]; then
        local IFS=$'\n'
        compopt -o filenames 2>/dev/null
        [[ $files == '*' ]] || COMPREPLY+=($(compgen -d -- "$word"))
        COMPREPLY+=($(compgen -f -X "!$files" -- "$word"))
    fi
}

complete -F _quirevault quirevault
