# From the start of the process to the first page on the screen, of the reader and of every other viewer that is
# installed; ./dev bench viewers installs some. All start on the same display, each with a session bus of its
# own, and are watched from outside.
viewer_runs=7
other_viewers="okular evince atril qpdfview zathura xpdf"
# Without Qt or GTK, menus or tool bar: what a page costs at the very least.
bare_viewer=mupdf

measure_viewers() {
    local pages
    open_display
    [ "$QT_QPA_PLATFORM" = xcb ] || { say "viewers cannot be compared without Xvfb" && return 1; }
    for pages in 10 1370; do viewer_figures "$pages"; done
    close_display
}

viewer_figures() {
    local file viewer time least=
    file=$(reader_document "$1")
    for viewer in $bare_viewer $other_viewers; do
        command -v "$viewer" >/dev/null || continue
        time=$(viewer_median "$viewer" "$file")
        [ -n "$time" ] || { say "$viewer did not show $file" && continue; }
        figure "$viewer: first page of $1 on the screen" "$time" - ms -
        [ "$viewer" = "$bare_viewer" ] || least=$(printf '%s\n' "$time" $least | sort -g | head -n 1)
    done
    figure "first page of $1 on the screen (floor: next viewer)" \
        "$(viewer_median "$programs/quirevault" "$file")" "${least:--}" ms "${least:+ratio-most 1}"
}

# The first run fills caches and is not counted.
viewer_median() {
    local run
    shown_after "$@" >/dev/null || return 0
    for ((run = 0; run < viewer_runs; run++)); do shown_after "$@"; done | median
}

# Services that a viewer starts on the bus write to the same output.
shown_after() {
    in_home "$work/viewer-home" dbus-run-session -- "$programs/quirevault-bench-screen" "$@" | grep -Ex '[0-9.]+'
}
