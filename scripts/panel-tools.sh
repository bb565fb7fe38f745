# Sourced by scripts/panels and scripts/desktops: a screen, checks, and questions to the session bus.

# A screen that nobody sees, of SIZE: sets xvfb, its process, and DISPLAY, the first number that is free. Numbers are free
# by the whole machine, a changed root included, which a number of ours would not be.
start_screen() { # size, folder for its notes
    Xvfb -displayfd 3 -screen 0 "$1x24" 3>"$2/display" 2>"$2/xvfb.log" &
    xvfb=$!
    for _ in $(seq 100); do
        [ -s "$2/display" ] && { DISPLAY=:$(cat "$2/display"); return; }
        kill -0 $xvfb 2>/dev/null || break
        sleep 0.1
    done
    echo "FAILED  Xvfb gives no screen: $(tail -n 1 "$2/xvfb.log")"
    exit 1
}
check() { # what, command...
    local what=$1
    shift
    if "$@"; then echo "ok      $what"; else echo "FAILED  $what"; failed=1; fi
}
ask_bus() { dbus-send --session --print-reply=literal --dest=org.freedesktop.DBus /org/freedesktop/DBus "$@" 2>/dev/null; }
watcher() { ask_bus org.freedesktop.DBus.GetNameOwner string:org.kde.StatusNotifierWatcher | tr -d ' '; }
has_watcher() { [ -n "$(watcher)" ]; }
no_watcher() { [ -z "$(watcher)" ]; }
pid_of() { ask_bus org.freedesktop.DBus.GetConnectionUnixProcessID "string:$1" | awk '{print $2}'; }
until_true() { for _ in $(seq 100); do "$@" >/dev/null && return; sleep 0.1; done; return 1; }
registered() { # a watcher lists the item
    dbus-send --session --print-reply=literal --dest=org.kde.StatusNotifierWatcher /StatusNotifierWatcher \
        org.freedesktop.DBus.Properties.Get string:org.kde.StatusNotifierWatcher \
        string:RegisteredStatusNotifierItems 2>/dev/null | tr -d ' \n' | grep -q 'array\[[^]]'
}
# The middle of what differs between two pictures: X Y WIDTH HEIGHT.
difference() {
    convert "$1" "$2" -compose difference -composite -threshold 6% -format '%@' info: 2>/dev/null |
        sed -E 's/([0-9]+)x([0-9]+)\+([0-9]+)\+([0-9]+)/\1 \2 \3 \4/' |
        awk 'NF == 4 {print int($3 + $1 / 2), int($4 + $2 / 2), $1, $2; next} {print 0, 0, 0, 0}'
}
is_on() { grep -qE "^$1=true" "$preferences"; }
is_off() { ! is_on "$1"; }
