# Searches at three sizes of library: ranked ones against SQLite's own time for the statement behind them;
# a sample of queries; searches inside one paper; the library's own ranking against SQLite's, warm and cold; and
# searching during writes.
measure_search() {
    local rows target home
    for rows in 10000 200000 1000000; do
        target=-
        [ $rows != 200000 ] || target="added-most 5"
        home=$(generated_library $rows)
        cat "$home/Quirevault/library.db" >/dev/null # warms the page cache
        XDG_DATA_HOME=$home "$programs/quirevault-bench-search" $rows "$target"
        XDG_DATA_HOME=$home "$programs/quirevault-bench-query-sample" $rows
        XDG_DATA_HOME=$home "$programs/quirevault-bench-in-paper" $rows
        XDG_DATA_HOME=$home "$programs/quirevault-bench-rank" $rows # last: its cold runs empty the page cache
        [ $rows != 200000 ] || search_while_importing $rows "$home"
    done
    echo "# cold: on a connection just opened, the library dropped from the page cache (posix_fadvise DONTNEED)"
}

# In a copy of the library, because it is written to.
search_while_importing() {
    rm -rf "$work/written-library"
    cp -r "$2" "$work/written-library"
    sync -f "$work/written-library" # or the first transaction waits for the copy to reach the disk
    XDG_DATA_HOME=$work/written-library "$programs/quirevault-bench-search-while-importing" "$1"
    rm -rf "$work/written-library"
}
