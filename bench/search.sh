# Ranked searches against SQLite's own time for the statement behind them, at three sizes of library.
measure_search() {
    local rows target home
    for rows in 10000 200000 1000000; do
        target=-
        [ $rows != 200000 ] || target="added-most 5"
        home=$(generated_library $rows)
        XDG_DATA_HOME=$home "$programs/quirevault-bench-search" $rows "$target"
    done
}
