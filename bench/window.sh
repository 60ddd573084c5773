# The library window on the offscreen platform: from the start of the process to the first painted cards, against
# a bare Qt window; the memory that takes; and how long the window keeps a person waiting while it is used.
window_runs=7

measure_window() {
    local papers
    window_run empty empty
    for papers in 10000 100000; do
        window_run start "$papers"
    done
    window_start_figures 10000 200 120
    window_start_figures 100000 1000 300
    window_use_figures 100000
    "$programs/quirevault-bench-grid"
}

# window_run WHAT PAPERS: the figures of several runs, a file for each size.
window_run() {
    local home=$work run
    rm -f "$work/window-$2.out"
    [ "$1" = empty ] || home=$(window_library "$2")
    for ((run = 0; run < window_runs; run++)); do
        in_window_home "$home" "$EPOCHREALTIME" "$1" >>"$work/window-$2.out"
    done
}

window_library() { "$programs/quirevault-bench-library" "$work/libraries" "$1" --with-covers; }

# Without the session's bus, on which a library that is open would answer instead.
in_window_home() {
    QT_QPA_PLATFORM=offscreen DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent XDG_DATA_HOME=$1 \
        XDG_CONFIG_HOME="$work/window-home" "$programs/quirevault-bench-window" "${@:2}" 2>/dev/null
}

# window_median PAPERS FIGURE
window_median() { awk -v name="$2" '$1 == name { print $2 }' "$work/window-$1.out" | median; }

window_start_figures() {
    figure "window: start to first cards, $1 papers" "$(window_median "$1" first-paint-ms)" \
        "$(window_median empty first-paint-ms)" ms "most $2"
    figure "window: resident at the first cards, $1 papers" "$(window_median "$1" resident-mb)" \
        "$(window_median empty resident-mb)" MB "most $3"
    figure "window: peak in the first second, $1 papers" "$(window_median "$1" peak-mb)" - MB -
}

window_use_figures() {
    local doing
    in_window_home "$(window_library "$1")" "$EPOCHREALTIME" use >"$work/window-use.out"
    for doing in after-first-paint loading-again filtering clearing scrolling; do
        figure "window: longest wait, $1 papers, ${doing//-/ }" \
            "$(awk -v name="$doing-longest-wait-ms" '$1 == name { print $2 }' "$work/window-use.out")" - ms "most 50"
    done
}
