#!/usr/bin/env bash
# Runs a Windows program of a build folder under Wine, with a screen of its own that no other run
# shares, and hands on its exit status.
#
#   cmake/wine.sh PROGRAM.exe [ARGUMENT ...]
#
# The Wine prefix lies in the build folder (BUILD/wine for BUILD/bin/PROGRAM.exe), or where
# ORVANE_WINE_PREFIX says, and is made at the first use. ORVANE_WINE_SECONDS, if given, ends a
# program that runs longer; its exit status is then 124.
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
# The real HLSL compiler lies beside the program; no browser or .NET parts, no desktop entries.
export WINEDLLOVERRIDES='d3dcompiler_47=n,b;mscoree,mshtml=;winemenubuilder.exe=d'

screen_pid=
stop_screen() { [ -z "$screen_pid" ] || kill "$screen_pid" 2>/dev/null; }
trap stop_screen EXIT
trap 'exit 143' TERM INT HUP

# Starts a virtual screen; the server itself chooses a free number and reports it.
start_screen() {
    local fifo number
    fifo=$(mktemp -u "${TMPDIR:-/tmp}/orvane-screen-XXXXXX")
    mkfifo -m 600 "$fifo"
    Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$fifo" >/dev/null 2>&1 &
    screen_pid=$!
    if ! read -r -t 30 number <"$fifo" || [ -z "$number" ]; then
        rm -f "$fifo"
        echo "wine.sh: the virtual screen does not start" >&2
        exit 126
    fi
    rm -f "$fifo"
    export DISPLAY=:$number
}

# Makes the prefix once; others that start at the same moment wait for it.
make_prefix() {
    [ -f "$WINEPREFIX/.ready" ] && return 0
    mkdir -p "$WINEPREFIX"
    (
        flock 9
        [ -f "$WINEPREFIX/.ready" ] && exit 0
        wineboot --init >/dev/null 2>&1 && wineserver -w && touch "$WINEPREFIX/.ready"
    ) 9>"$WINEPREFIX/.lock"
}

start_screen
make_prefix || {
    echo "wine.sh: cannot make the Wine prefix $WINEPREFIX" >&2
    exit 126
}
if [ -n "${ORVANE_WINE_SECONDS:-}" ]; then
    timeout --kill-after=10 "$ORVANE_WINE_SECONDS" wine "$program" "$@"
else
    wine "$program" "$@"
fi
