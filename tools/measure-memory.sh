#!/usr/bin/env bash
# What a long day of use leaves on the heap: the application on the BlueZ stand-in, under
# heaptrack, goes ROUNDS times through a desk fault, a move to a height, a lost link (every
# fourth round the adapter off and on instead) and a reconnection from the search screen, all
# with real clicks and keys on a virtual X display. The application is killed at the end, so
# heaptrack's "leaked" is what was still live then; compare two runs of different lengths:
#   ROUNDS=10 tools/measure-memory.sh /tmp/short   ROUNDS=60 tools/measure-memory.sh /tmp/long
#   heaptrack_print -f /tmp/long.zst -d /tmp/short.zst -l
# PROFILER= runs without heaptrack and prints the resident memory each round instead.
# Set BUILD_DIR if the application was built elsewhere (default: build/ in the checkout).
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build_dir=${BUILD_DIR:-$root/build}
rounds=${ROUNDS:-40}
profiler=${PROFILER-heaptrack}
output=${1:-/tmp/ostrel-memory}
desk=QWJ-0001

if [ -z "${MEASURE_INSIDE_XVFB:-}" ]; then
    exec env MEASURE_INSIDE_XVFB=1 xvfb-run -a -s "-screen 0 1280x900x24" \
        dbus-run-session -- "$0" "$@"
fi

scratch=$(mktemp -d)
mkdir -m 700 "$scratch/runtime"
app_pid=
standin_pid=
bus_pid=
cleanup() {
    for pid in "$app_pid" "$standin_pid" "$bus_pid"; do
        [ -z "$pid" ] || kill -9 "$pid" 2>/dev/null || true
    done
    rm -rf "$scratch"
}
trap cleanup EXIT

{ read -r address; read -r bus_pid; } < <(dbus-daemon --fork --print-address=1 --print-pid=1 \
    --config-file="$root/tools/bluez-standin/standin-bus.conf")
mkfifo "$scratch/ready"
"$build_dir/tools/bluez-standin/ostrel-bluez-standin" --bus "$address" --desk "$desk" \
    >"$scratch/ready" &
standin_pid=$!
disown "$standin_pid" # killed at the end without a word
read -r -t 10 line <"$scratch/ready"
[ "$line" = ready ]
control() {
    busctl --address="$address" call org.ostrel.BluezStandin /control \
        org.ostrel.BluezStandin.Control "$@" >/dev/null
}

app=("$build_dir/src/app/ostrel-motion")
if [ -n "$profiler" ]; then
    app=(heaptrack -o "$output" "${app[@]}")
fi
env XDG_DATA_HOME="$scratch/data" XDG_CONFIG_HOME="$scratch/config" \
    XDG_CACHE_HOME="$scratch/cache" XDG_RUNTIME_DIR="$scratch/runtime" \
    DBUS_SYSTEM_BUS_ADDRESS="$address" BLUETOOTH_FORCE_DBUS_LE_VERSION=5.66 \
    QT_QPA_PLATFORM=xcb "${app[@]}" >"$scratch/log" 2>&1 &
app_pid=$!
window=$(xdotool search --sync --onlyvisible --name '^Ostrel Motion$' | head -1)
# The process that holds the heap: heaptrack runs the application as a child.
target=$app_pid
for _ in $(seq 50); do
    child=$(pgrep -n -f "^$build_dir/src/app/ostrel-motion" || true)
    [ -n "$child" ] && target=$child && break
    sleep 0.2
done

# Clicks the first desk of the search list once it is listed, and waits for the control screen.
connect_desk() {
    sleep 4
    eval "$(xdotool getwindowgeometry --shell "$window")"
    xdotool windowfocus "$window" mousemove $((X + 180)) $((Y + 81)) click 1
    sleep 4
}
# Confirms the "disconnected" prompt, which goes back to the search screen.
confirm_prompt() {
    sleep 2
    for prompt in $(xdotool search --onlyvisible --name '.' 2>/dev/null); do
        [ "$prompt" = "$window" ] || xdotool windowfocus "$prompt" key Return 2>/dev/null || true
    done
}
rss_kib() { awk '/^VmRSS:/ { print $2 }' "/proc/$target/status"; }
connected() {
    busctl --user get-property com.ostrel.motion /com/ostrel/Motion com.ostrel.Motion.Desk1 \
        Connected 2>/dev/null | awk '{ print $2 }'
}

connect_desk
for round in $(seq "$rounds"); do
    control InjectFault ssi "$desk" error $((12 + round % 3))
    sleep 1
    control InjectFault ssi "$desk" error 0
    sleep 1
    "$build_dir/src/app/ostrel-motion" --move-to $((70 + round % 2 * 30)) >/dev/null 2>&1 || true
    if ((round % 4 == 0)); then
        control SetPowered b false
        sleep 1
        control SetPowered b true
    else
        control DropLink s "$desk"
    fi
    confirm_prompt
    connect_desk
    echo "round $round: resident $(rss_kib) kB, connected $(connected)"
done
kill -9 "$target"
wait "$app_pid" 2>/dev/null || true
app_pid=
[ -z "$profiler" ] || echo "heaptrack data: $output.zst"
