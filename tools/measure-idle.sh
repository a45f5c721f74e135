#!/usr/bin/env bash
# Launch time, then CPU and memory of a quiet session: the application on the demo desks, one desk
# connected, the window hidden, measured from /proc after 60 s. Runs on its own virtual display
# with private home folders.
#   tools/measure-idle.sh            (IDLE_SECONDS and SAMPLE_SECONDS change the durations)
# Set BUILD_DIR to build elsewhere (default: build/ in the checkout).
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build_dir=${BUILD_DIR:-$root/build}
idle=${IDLE_SECONDS:-60}
sample=${SAMPLE_SECONDS:-10}

if [ -z "${MEASURE_INSIDE_XVFB:-}" ]; then
    cmake -S "$root" -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
        -DOSTREL_WERROR=ON >/dev/null
    cmake --build "$build_dir" --target ostrel-motion >/dev/null
    exec env MEASURE_INSIDE_XVFB=1 xvfb-run -a -s "-screen 0 1280x900x24" "$0" "$@"
fi

scratch=$(mktemp -d)
mkdir -m 700 "$scratch/runtime"
trap 'kill "$pid" 2>/dev/null || true; rm -rf "$scratch"' EXIT

ticks=$(getconf CLK_TCK)
cpu_ticks() { awk '{ print $14 + $15 }' "/proc/$1/stat"; } # utime + stime
rss_kib() { awk '/^VmRSS:/ { print $2 }' "/proc/$1/status"; }

start_ns=$(date +%s%N)
env XDG_DATA_HOME="$scratch/data" XDG_CONFIG_HOME="$scratch/config" \
    XDG_CACHE_HOME="$scratch/cache" XDG_RUNTIME_DIR="$scratch/runtime" \
    DBUS_SESSION_BUS_ADDRESS=disabled: QT_QPA_PLATFORM=xcb \
    "$build_dir/src/app/ostrel-motion" --demo --measure-startup >"$scratch/log" 2>&1 &
pid=$!

window=$(xdotool search --sync --onlyvisible --name '^Ostrel Motion$' | head -1)
mapped_ns=$(date +%s%N)
echo "launch: window mapped $(((mapped_ns - start_ns) / 1000000)) ms after exec (measured outside)"
sleep 0.5
grep '^startup:' "$scratch/log" || true

# Connect the first desk of the search list, then hide the window.
sleep 3 # the list fills as the desks advertise
eval "$(xdotool getwindowgeometry --shell "$window")"
xdotool mousemove $((X + 180)) $((Y + 81)) click 1
sleep 5
import -window root "$scratch/connected.png" 2>/dev/null && cp "$scratch/connected.png" /tmp/ostrel-measure-connected.png
# Hide it with the window's own shortcut for "Hide", as a user would. Without a tray that
# minimises it, and with no window manager on this display nothing carries a minimise out: the
# window is unmapped as one would.
xdotool windowfocus --sync "$window" key ctrl+h
sleep 1
xdotool windowunmap "$window"
sleep 1
if xdotool search --onlyvisible --name '^Ostrel Motion$' >/dev/null; then
    echo "the window did not hide; measuring anyway" >&2
else
    echo "window hidden"
fi

sleep "$idle"
before=$(cpu_ticks "$pid")
sleep "$sample"
after=$(cpu_ticks "$pid")
awk -v d=$((after - before)) -v hz="$ticks" -v s="$sample" -v idle="$idle" \
    'BEGIN { printf "idle: CPU %.1f%% over %d s, after %d s hidden\n", 100 * d / hz / s, s, idle }'
echo "idle: resident memory $(( $(rss_kib "$pid") / 1024 )) MiB (VmRSS $(rss_kib "$pid") kB)"
echo "connected-state picture: /tmp/ostrel-measure-connected.png"
