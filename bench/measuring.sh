# What the measurements share. Each prints its figures as lines of tab-separated fields:
#     figure   ours   floor (or -)   unit   target
# where the target is -, or "most N", "ratio-most N", "ratio-least N" or "added-most N". A line that begins
# with # is a remark.

say() { printf '%s\n' "$*" >&2; }

figure() {
    local IFS=$'\t'
    printf '%s\n' "$*"
}

# The middle one of the numbers on standard input, one a line.
median() { sort -g | awk '{ values[NR] = $1 } END { print values[int((NR + 1) / 2)] }'; }

# Runs a command, its output dropped, and prints how long it took: wall and processor seconds, those of its
# own children included.
times_of() {
    local TIMEFORMAT='%3R %3U %3S' times
    times=$({ time "$@" >/dev/null 2>/dev/null; } 2>&1)
    awk '{ print $1, $2 + $3 }' <<<"$times"
}

# The library of that many generated pages, as a value for XDG_DATA_HOME.
generated_library() {
    say "library of $1 pages (generated if it is not there yet)"
    "$programs/quirevault-bench-library" "$work/libraries" "$1"
}

describe_machine() {
    printf '\nQuirevault %s, %s\n' "$(git describe --always --dirty 2>/dev/null || echo '(no revision)')" \
        "$(date -u +%Y-%m-%d)"
    printf '%s, %s cores, %s GiB, Linux %s\n\n' \
        "$(sed -n 's/^model name\s*: //p' /proc/cpuinfo | head -1)" "$(nproc)" \
        "$(awk '/^MemTotal/ { printf "%.0f", $2 / 1048576 }' /proc/meminfo)" "$(uname -r)"
}
