# A display of the measurement's own, so that windows open as they do on a desktop and nobody's screen is used.
display_process=

# Without Xvfb the offscreen platform of Qt takes its place.
open_display() {
    local number
    if ! command -v Xvfb >/dev/null; then
        say "there is no Xvfb: windows are measured on Qt's offscreen platform"
        export QT_QPA_PLATFORM=offscreen
        return
    fi
    exec {display_numbers}<> <(:)
    Xvfb -displayfd "$display_numbers" -screen 0 1280x1100x24 -nolisten tcp -noreset 2>/dev/null &
    display_process=$!
    read -r -t 20 -u "$display_numbers" number || { say "Xvfb does not start" && return 1; }
    export DISPLAY=:$number QT_QPA_PLATFORM=xcb
}

close_display() {
    [ -z "$display_process" ] || kill "$display_process" 2>/dev/null || true
    display_process=
}

# in_home FOLDER COMMAND...: without a session bus, on which a program that runs already would answer.
in_home() {
    mkdir -p "$1"
    env -u XDG_DATA_HOME -u XDG_CONFIG_HOME HOME="$1" QUIREVAULT_OPENLIBRARY_URL= \
        DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent "${@:2}" 2>/dev/null
}
