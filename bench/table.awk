# Turns the figures (see measuring.sh) into the table that people read.
BEGIN {
    FS = "\t"
    printf "%-58s %13s %16s %7s   %s\n", "figure", "ours", "floor", "ratio", "target"
}

function with_unit(value, unit) {
    return sprintf(unit == "s" || (unit == "ms" && value < 100) ? "%.2f %s" : "%.0f %s", value, unit)
}

/^#/ { remarks = remarks substr($0, 3) "\n"; next }

{
    ours = $2; floor = $3; unit = $4
    split($5, target, " ")
    limit = target[2]
    wanted = ""
    if (target[1] == "most")        { wanted = "<= " with_unit(limit, unit); holds = ours <= limit }
    if (target[1] == "ratio-most")  { wanted = "ratio <= " limit; holds = ours <= limit * floor }
    if (target[1] == "ratio-least") { wanted = "ratio >= " limit; holds = ours >= limit * floor }
    if (target[1] == "added-most")  { wanted = sprintf("floor + %s, adds %.2f", with_unit(limit, unit), ours - floor)
                                      holds = ours - floor <= limit }
    printf "%-58s %13s %16s %7s   %s\n", $1, with_unit(ours, unit), floor == "-" ? "" : with_unit(floor, unit), \
        floor == "-" ? "" : sprintf("%.2f", ours / floor), wanted == "" ? "" : wanted (holds ? "   ok" : "   MISSED")
}

END { if (remarks != "") printf "\n%s", remarks }
