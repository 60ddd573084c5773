# SHA-256 of a file in the page cache against OpenSSL's own figure for blocks of 16 KiB.
hash_rounds=5

measure_hash() {
    local file=$work/256-MiB round ours floor
    [ -f "$file" ] || { head -c 268435456 /dev/urandom >"$file.part" && mv "$file.part" "$file"; }
    cat "$file" >/dev/null
    ours=$(mktemp) floor=$(mktemp)
    for ((round = 0; round < hash_rounds; round++)); do
        openssl_bytes_a_second >>"$floor"
        "$programs/quirevault-bench-hash" "$file" >>"$ours"
    done
    figure "SHA-256 of a file of 256 MiB" "$(in_megabytes "$ours")" "$(in_megabytes "$floor")" MB/s "ratio-least 0.9"
    rm "$ours" "$floor"
}

in_megabytes() { median <"$1" | awk '{ printf "%.0f", $1 / 1e6 }'; }

openssl_bytes_a_second() {
    openssl speed -elapsed -mr -evp sha256 -bytes 16384 -seconds 1 2>/dev/null | awk -F: '/^\+F/ { print $NF }'
}
