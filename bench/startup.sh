# One search on the command line, from the start of the process to the end of its output, against the same
# program when it has nothing to do.
startup_runs=20

measure_startup() {
    local home query
    home=$(generated_library 10000)
    for query in saddlepoint matrix the '"singular value decomposition"' 'trans*'; do
        startup_figure "$home" "$query"
    done
}

startup_figure() {
    local run
    rm -f "$work"/startup-{ours,floor}.times
    for ((run = 0; run < startup_runs; run++)); do
        milliseconds_of "$1" --version >>"$work/startup-floor.times"
        milliseconds_of "$1" search "$2" >>"$work/startup-ours.times"
    done
    figure "quirevault search $2 (10,000 pages)" "$(median <"$work/startup-ours.times")" \
        "$(median <"$work/startup-floor.times")" ms "most 40"
}

# milliseconds_of DATA_HOME ARGUMENTS...: reads the output to its end, as a person's pipe would.
milliseconds_of() {
    local start output end
    start=$EPOCHREALTIME
    output=$(XDG_DATA_HOME=$1 "$programs/quirevault" "${@:2}")
    end=$EPOCHREALTIME
    [ -n "$output" ] || { say "no output: quirevault ${*:2}" && return 1; }
    awk -v microseconds=$((${end/./} - ${start/./})) 'BEGIN { printf "%.2f\n", microseconds / 1000 }'
}
