#!/usr/bin/env bash
# documented.sh PROGRAM PACKAGING_FOLDER: every command and option that the program's own help names is completed by
# each shell's file and stands in the manual page, and bash offers nothing else.
# Not pipefail: a grep that has found what it looks for closes the pipe on the one that writes.
set -u
program=$1 packaging=$2 bad=0
source "$packaging/completions/quirevault.bash"
# Without a library there are no tags to complete.
export XDG_DATA_HOME=/nonexistent

complain() { printf '%s\n' "$*" && bad=1; }

subcommands_of() { "$program" "$@" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]\+\) .*/\1/p'; }
options_of() { "$program" "$@" --help | sed -n 's/^ *\(-h,\)\?\(--[a-z-]\+\).*/\2/p'; }

# What bash offers behind the words.
offered_by_bash() {
    local COMP_WORDS=(quirevault "$@") COMP_CWORD=$# COMPREPLY=()
    _quirevault
    printf '%s\n' "${COMPREPLY[@]}"
}

# What the zsh function says of a command: its branch of the `case`, or the last one, and what is common to all.
zsh_part() {
    awk -v command="$1" '
        /local -a common=/ { print }
        /^    [^ ].*\)( |$)/ { label = $0; sub(/\).*/, "", label); gsub(/[\x27 ]/, "", label); wanted = command
            gsub(/ /, "", wanted); inside = ("|" label "|") ~ ("[|]" wanted "[|]") }
        inside { gsub(/\$page/, "--page="); print }' "$packaging/completions/_quirevault"
}
fish_part() {
    grep -e "__quirevault_is '\\?\"\\?$1\"\\?'" -e "__quirevault_is $1'" -e "^complete -c quirevault -s h" \
        -e "'not __fish_use_subcommand'" "$packaging/completions/quirevault.fish"
}
# The manual's line of a command in its synopsis, and what it says of all.
manual_part() {
    sed 's/\\f.//g; s/\\-/-/g; s/"//g; s/  */ /g' "$packaging/quirevault.1.in" |
        awk -v command="$1" 'index($0, "quirevault " command " ") || $0 ~ "quirevault " command "$" || /^.SH OPTIONS/,/^.SH QUERIES/'
}

check() {
    local path="$*" sub option difference
    difference=$(diff <(offered_by_bash "$@" -- | sort) <(options_of "$@" | sort)) || complain "bash, $path: $difference"
    for sub in $(subcommands_of "$@"); do
        offered_by_bash "$@" '' | grep -qx "$sub" || complain "bash lacks $path $sub"
        grep -q "'\\?\"\\?$sub:" "$packaging/completions/_quirevault" || complain "zsh lacks $path $sub"
        grep -q -e "-a $sub " "$packaging/completions/quirevault.fish" || complain "fish lacks $path $sub"
        [ -n "$(manual_part "${path:+$path }$sub" | grep quirevault)" ] || complain "the manual lacks $path $sub"
        check "$@" "$sub"
    done
    [ -n "$path" ] || return 0
    for option in $(options_of "$@"); do
        zsh_part "$path" | grep -q -e "$option[,}=[]" || complain "zsh lacks $path $option"
        fish_part "$path" | grep -q -e "-l ${option#--} " || complain "fish lacks $path $option"
        manual_part "$path" | grep -q -e "$option" || complain "the manual lacks $path $option"
    done
}

[ "$(subcommands_of | wc -l)" -gt 5 ] || complain "the help of $program is not understood"
check
exit "$bad"
