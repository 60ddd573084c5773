# Import of a folder, everything included, against the extraction of its text alone.
source bench/corpus.sh

import_rounds=3

measure_import() {
    local pdfs files round
    pdfs=$(corpus)
    files=$(find "$pdfs" -type f | wc -l)
    text_of_all "$pdfs" >/dev/null 2>&1 # warms the page cache
    rm -f "$work"/import-{ours,floor}.times
    for ((round = 0; round < import_rounds; round++)); do
        times_of text_of_all "$pdfs" >>"$work/import-floor.times"
        rm -rf "$work/import-home"
        times_of import_all "$pdfs" >>"$work/import-ours.times"
    done
    figure "import of $files files: wall time" "$(import_median ours 1)" "$(import_median floor 1)" s "ratio-most 1.25"
    figure "import of $files files: processor time" "$(import_median ours 2)" "$(import_median floor 2)" s -
    import_memory "$pdfs"
    echo "# import: $(imported_pages) pages; $(tail -n 1 "$work/import.out"); floor: mutool draw, two files at a time"
}

# import_median ours|floor COLUMN
import_median() { awk -v column="$2" '{ print $column }' "$work/import-$1.times" | median; }

# Both sides get the same two cores.
two_cores=()
[ "$(nproc)" -le 2 ] || two_cores=(taskset -c 0,1)

# 123 is how xargs says that mutool failed for some file.
text_of_all() {
    find "$1" -type f -print0 | LC_ALL=C sort -z |
        "${two_cores[@]}" xargs -0 -P 2 -n 1 mutool draw -q -F txt -o /dev/null || [ $? = 123 ]
}

# 1 is how the program says that some file failed; the line below the table says how many.
import_all() {
    with_import_home "${two_cores[@]}" "$programs/quirevault" import "$1" >"$work/import.out" || [ $? = 1 ]
}

with_import_home() {
    XDG_DATA_HOME="$work/import-home" XDG_CONFIG_HOME="$work/import-home/config" QUIREVAULT_OPENLIBRARY_URL= "$@"
}

imported_pages() {
    with_import_home "$programs/quirevault" list --json |
        awk -F: '/"page_count"/ { pages += $2 } END { print pages + 0 }'
}

# Peaks of resident memory, in runs of their own since watching costs time. The largest process of the tree is
# an engine whenever it is larger than the app.
import_memory() {
    local app_kb=0 now_kb
    rm -rf "$work/import-home"
    (with_import_home exec "$programs/quirevault" import "$1" >/dev/null 2>&1) &
    while now_kb=$(sed -n 's/^VmHWM:[^0-9]*\([0-9]*\).*/\1/p' "/proc/$!/status" 2>/dev/null) && [ -n "$now_kb" ]; do
        app_kb=$now_kb
        sleep 0.02
    done
    wait $! || [ $? = 1 ]
    rm -rf "$work/import-home"
    with_import_home /usr/bin/time -qf %M -o "$work/import-tree.kb" \
        "$programs/quirevault" import "$1" >/dev/null 2>&1 || [ $? = 1 ]
    figure "import: peak memory of the app" $((app_kb / 1024)) - MB "most 150"
    figure "import: peak memory of its largest process, engines included" \
        $(($(cat "$work/import-tree.kb") / 1024)) - MB -
}
