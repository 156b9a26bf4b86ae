#!/usr/bin/env bash
# Runs a Windows program of a build folder under Wine with a virtual screen, and hands on its input,
# output and exit status. Any number of programs may run at the same time.
#
#   cmake/wine.sh PROGRAM.exe [ARGUMENT ...]
#
# The Wine prefix lies in the build folder (BUILD/wine for BUILD/bin/PROGRAM.exe), or where
# ORVANE_WINE_PREFIX says, and is made at the first use. ORVANE_WINE_SECONDS, if given, ends a
# program that runs longer; its exit status is then 124.
#
# All programs of a prefix share one Wine session and one screen. They stay for a while after the
# last program, so that the next one starts at once, and then go by themselves.
set -uo pipefail

program=${1:?usage: wine.sh PROGRAM.exe [ARGUMENT ...]}
shift
[ -f "$program" ] || {
    echo "wine.sh: no such program: $program" >&2
    exit 127
}
program=$(realpath "$program")

export WINEPREFIX=${ORVANE_WINE_PREFIX:-$(dirname "$(dirname "$program")")/wine}
export WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all}
# The real HLSL compiler lies beside the program; no browser or .NET parts, no desktop entries, and
# no debugger that would wait for somebody after a crash.
export WINEDLLOVERRIDES='d3dcompiler_47=n,b;mscoree,mshtml=;winemenubuilder.exe,winedbg.exe=d'

idle_seconds=10

give_up() {
    echo "wine.sh: $*" >&2
    exit 126
}

# Starts the screen; the server itself chooses a free number and reports it.
start_screen() {
    local fifo=$WINEPREFIX/.screen-number number
    rm -f "$fifo"
    mkfifo -m 600 "$fifo"
    setsid Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp \
        3>"$fifo" 8>&- 9>&- </dev/null >/dev/null 2>&1 &
    screen_pid=$!
    read -r -t 60 number <"$fifo" && [ -n "$number" ] || give_up "the virtual screen does not start"
    rm -f "$fifo"
    DISPLAY=:$number
}

# Ends the session and its screen once no program has used them for a while. Runs in the
# background; a program that starts meanwhile holds the lock and keeps them.
end_when_idle() {
    local screen_pid=$1
    while sleep "$idle_seconds"; do
        if flock -n -x 8; then
            wineserver -k
            rm -f "$WINEPREFIX/.session"
            kill "$screen_pid"
            return
        fi
    done
}

# Joins the prefix's session, or starts it. Its own processes get no output of ours: they outlive
# this program, and whoever reads the output would wait for them.
join_session() {
    local pid
    if read -r pid DISPLAY 2>/dev/null <"$WINEPREFIX/.session" && kill -0 "$pid" 2>/dev/null; then
        export DISPLAY
        return 0
    fi
    start_screen
    export DISPLAY
    wineboot </dev/null >/dev/null 2>&1 8>&- 9>&- || give_up "cannot start Wine in $WINEPREFIX"
    echo "$screen_pid $DISPLAY" >"$WINEPREFIX/.session"
    export -f end_when_idle
    export idle_seconds
    setsid bash -c 'exec 8<>"$WINEPREFIX/.users"; end_when_idle "$1"' watcher "$screen_pid" \
        8>&- 9>&- </dev/null >/dev/null 2>&1 &
}

# Lock 8 is shared by all programs that run; lock 9 lets one of them at a time start the session.
mkdir -p "$WINEPREFIX" || give_up "cannot make $WINEPREFIX"
exec 8<>"$WINEPREFIX/.users" 9<>"$WINEPREFIX/.start"
flock -s 8
flock -x 9
join_session
exec 9>&-

limit=()
[ -z "${ORVANE_WINE_SECONDS:-}" ] || limit=(timeout --kill-after=10 "$ORVANE_WINE_SECONDS")
"${limit[@]}" wine "$program" "$@" <&0 8>&- &
child=$!
trap 'kill "$child" 2>/dev/null' TERM INT HUP
wait "$child"
status=$?
trap - TERM INT HUP
[ "$status" -lt 128 ] || wait "$child" 2>/dev/null
exit "$status"
