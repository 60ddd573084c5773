# What the desktop's search costs: publishing 100,000 papers, again when nothing changed, and the provider that
# answers from what was published. In a folder of its own, on a bus of its own.
measure_system-search() {
    "$programs/quirevault-bench-system-search"
}
