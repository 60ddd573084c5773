# The PDFs that imports are measured with: every fifth, by name, of those in three packages of TeX manuals.
# Prints the folder that holds them and nothing else.
corpus_packages="texlive-science-doc texlive-publishers-doc texlive-latex-recommended-doc"

corpus() {
    local folder=$work/pdfs
    if [ ! -d "$folder" ]; then
        unpack_packages >&2
        link_every_fifth "$folder.unfinished"
        mv "$folder.unfinished" "$folder"
    fi
    echo "$folder"
}

unpack_packages() {
    local package
    say "downloading $corpus_packages (350 MB, once)"
    mkdir -p "$work/debs" "$work/corpus"
    (cd "$work/debs" && apt-get download -qq $corpus_packages) || {
        say "apt could not download the packages; after 'apt-get update' it may."
        return 1
    }
    for package in "$work"/debs/*.deb; do dpkg-deb -x "$package" "$work/corpus"; done
}

# Links, numbered because manuals of different packages share their names.
link_every_fifth() {
    local number=0 file
    rm -rf "$1" && mkdir -p "$1"
    find "$work/corpus" -type f -iname '*.pdf' | LC_ALL=C sort | awk 'NR % 5 == 1' | while IFS= read -r file; do
        number=$((number + 1))
        ln "$file" "$1/$(printf %04d $number)-$(basename "$file")"
    done
}
