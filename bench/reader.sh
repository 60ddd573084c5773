# The reader: from the start of the process to the first page painted, against a bare window that draws that
# page with MuPDF in its own process; scrolling; memory of a long document.
reader_runs=20

measure_reader() {
    local pages
    export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
    for pages in 10 1370 500 5000; do
        [ -s "$work/reader-$pages.pdf" ] ||
            "$programs/quirevault-bench-reader" generate "$work/reader-$pages.pdf" "$pages"
    done
    for pages in 10 1370; do first_page_figure "$pages"; done
    "$programs/quirevault-bench-reader" scroll "$work/reader-500.pdf" 60 >"$work/reader-scroll"
    reader_figure reader-scroll "longest frame ms" "scrolling a page a second: longest frame" ms "most 16"
    reader_figure reader-scroll "longest until sharp ms" "come to rest: longest until sharp" ms "most 100"
    "$programs/quirevault-bench-reader" read "$work/reader-5000.pdf" >"$work/reader-read"
    reader_figure reader-read "app MB" "5,000 pages read: the program's peak" MB "most 250"
    reader_figure reader-read "engine MB" "5,000 pages read: its engine's peak" MB "most 300"
}

# reader_figure FILE KEY TITLE UNIT TARGET
reader_figure() {
    figure "$3" "$(awk -F '\t' -v key="$2" '$1 == key { print $2 }' "$work/$1")" - "$4" "$5"
}

first_page_figure() {
    local run file=$work/reader-$1.pdf
    rm -f "$work"/reader-{ours,floor}.times
    for ((run = 0; run < reader_runs; run++)); do
        milliseconds_to_paint quirevault-bench-reader-floor "$file" >>"$work/reader-floor.times"
        milliseconds_to_paint quirevault-bench-reader show "$file" >>"$work/reader-ours.times"
    done
    figure "first page of $1 painted" "$(median <"$work/reader-ours.times")" \
        "$(median <"$work/reader-floor.times")" ms "ratio-most 1.4"
}

# milliseconds_to_paint PROGRAM ARGUMENTS...: the program prints when it has painted.
milliseconds_to_paint() {
    local start=${EPOCHREALTIME/./} painted
    painted=$("$programs/$1" "${@:2}")
    awk -v microseconds=$((painted - start)) 'BEGIN { printf "%.2f\n", microseconds / 1000 }'
}
