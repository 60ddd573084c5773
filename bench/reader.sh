# The reader: from the start of the process to the first page painted, against a bare window that draws that
# page with MuPDF in its own process; from Return in the results to the lit passage; scrolling; memory of a
# long document.
source bench/display.sh
source bench/corpus.sh

reader_runs=20
# Ten results of each.
reader_queries=(matrix 'package option' equation 'table figure' reference)

measure_reader() {
    local pages
    open_display
    for pages in 10 1370 500 5000; do reader_document "$pages" >/dev/null; done
    for pages in 10 1370; do first_page_figure "$pages" "without a desktop" XDG_CURRENT_DESKTOP=; done
    if [ "$QT_QPA_PLATFORM" = xcb ] && compgen -G "/usr/lib/*/qt6/plugins/platformthemes/libqgtk3.so" >/dev/null; then
        for pages in 10 1370; do first_page_figure "$pages" "as GNOME starts it" XDG_CURRENT_DESKTOP=GNOME; done
    else
        say "no Xvfb, or no GTK theme for Qt (qt6-gtk-platformtheme): not measured as GNOME starts it"
    fi
    arrival_figures
    "$programs/quirevault-bench-reader" scroll "$(reader_document 500)" 60 >"$work/reader-scroll"
    reader_figure reader-scroll "longest frame ms" "scrolling a page a second: longest frame" ms "most 16"
    reader_figure reader-scroll "longest until sharp ms" "come to rest: longest until sharp" ms "most 100"
    "$programs/quirevault-bench-reader" read "$(reader_document 5000)" >"$work/reader-read"
    reader_figure reader-read "app MB" "5,000 pages read: the program's peak" MB "most 250"
    reader_figure reader-read "engine MB" "5,000 pages read: its engine's peak" MB "most 300"
    close_display
}

# The generated document of that many pages.
reader_document() {
    local file=$work/reader-marked-$1.pdf
    [ -s "$file" ] || QT_QPA_PLATFORM=offscreen "$programs/quirevault-bench-reader" generate "$file" "$1"
    echo "$file"
}

# reader_figure FILE KEY TITLE UNIT TARGET
reader_figure() {
    figure "$3" "$(awk -F '\t' -v key="$2" '$1 == key { print $2 }' "$work/$1")" - "$4" "$5"
}

# first_page_figure PAGES TITLE VARIABLE=VALUE: a program in GNOME loads and asks GTK before its first window.
first_page_figure() {
    local run file environment=$3
    file=$(reader_document "$1")
    rm -f "$work"/reader-{ours,floor}.times
    window_of_the_floors_size
    for ((run = 0; run < reader_runs; run++)); do
        milliseconds_to_paint quirevault-bench-reader-floor "$file" >>"$work/reader-floor.times"
        milliseconds_to_paint quirevault-bench-reader-window show "$file" >>"$work/reader-ours.times"
    done
    figure "first page of $1 painted, $2" "$(median <"$work/reader-ours.times")" \
        "$(median <"$work/reader-floor.times")" ms "ratio-most 1.4"
}

# Of kBenchWindow.
window_of_the_floors_size() {
    mkdir -p "$work/reader-home/.config/Quirevault"
    printf '[General]\nreaderWindowSize=900x1000\n' >"$work/reader-home/.config/Quirevault/Quirevault.ini"
}

# milliseconds_to_paint PROGRAM ARGUMENTS...: in $environment; the program prints when it has painted.
milliseconds_to_paint() {
    local start=${EPOCHREALTIME/./} painted
    painted=$(in_home "$work/reader-home" env "$environment" "$programs/$1" "${@:2}" | tail -n 1)
    awk -v microseconds=$((painted - start)) 'BEGIN { printf "%.2f\n", microseconds / 1000 }'
}

arrival_figures() {
    local home=$work/reader-library
    # What is there already is skipped.
    in_home "$home" "$programs/quirevault" import "$(corpus)" >/dev/null || [ $? = 1 ]
    in_home "$home" "$programs/quirevault-bench-reader-window" arrive "${reader_queries[@]}" >"$work/reader-arrivals"
    reader_figure reader-arrivals "median ms" "Return in the results to the lit passage: median" ms "most 250"
    reader_figure reader-arrivals "longest ms" "Return in the results to the lit passage: longest" ms -
    awk -F '\t' '{ value[$1] = $2 }
        END { print "# arrivals: " value["lit"] " results lit their passage, of " value["unlit"] " only the page was found" }' \
        "$work/reader-arrivals"
}
