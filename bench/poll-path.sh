#!/usr/bin/env bash
# The poll path through BlueZ, side by side. One desk polls at 20 Hz through the project's BlueZ
# stand-in on a private bus; in turn the application (over the sockets the stand-in offers, then
# over WriteValue with none offered), the floor (bench/PollFloorClient.cpp: answers every poll
# over the acquired sockets and does nothing else) and a generic BLE client (bleak) answer its
# polls. For each: the client's CPU and resident memory, dbus-daemon's, the stand-in's and the X
# server's CPU, and poll-to-answer as the stand-in sees it (from the poll leaving the desk to the
# answer arriving). Last, each application run against the floor.
#   bash bench/poll-path.sh
# POLLS (default 1200: one minute) sets how many answered polls each run counts, after a
# warm-up; PERF_DIR, when set, records a perf profile of each client there;
# COMPARE_WITH, an application binary (an older build), adds a run of it first.
# Set BUILD_DIR to build elsewhere (default: build/ in the checkout).
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build_dir=${BUILD_DIR:-$root/build}
polls=${POLLS:-1200}
warmup=40
desk=QWJ-9001
notify_uuid=00002a37-0000-1000-8000-00805f9b34fb
write_uuid=00002a39-0000-1000-8000-00805f9b34fb

if [ -z "${POLL_PATH_INSIDE_XVFB:-}" ]; then
    cmake -S "$root" -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
        -DOSTREL_WERROR=ON -DOSTREL_BUILD_BENCH=ON >/dev/null
    cmake --build "$build_dir" --target ostrel-motion ostrel-bluez-standin poll-floor >/dev/null
    exec env POLL_PATH_INSIDE_XVFB=1 xvfb-run -a -s "-screen 0 1280x900x24" "$0" "$@"
fi

scratch=$(mktemp -d)
started=()
cleanup() {
    for pid in "${started[@]}"; do kill "$pid" 2>/dev/null || true; done
    wait 2>/dev/null || true
    rm -rf "$scratch"
}
trap cleanup EXIT

hz=$(getconf CLK_TCK)
cpu_ticks() { awk '{ print $14 + $15 }' "/proc/$1/stat"; } # utime + stime
rss_mib() { awk '/^VmRSS:/ { printf "%.0f", $2 / 1024 }' "/proc/$1/status"; }
x_server=$(for pid in $(pgrep -x Xvfb); do
    tr '\0' '\n' <"/proc/$pid/cmdline" | grep -qx "$DISPLAY" && echo "$pid" || true
done | head -1)

# Microseconds from each poll to its answer on the current link, one a line.
round_trips() {
    dbus-send --bus="$bus" --print-reply --dest=org.ostrel.BluezStandin /control \
        org.ostrel.BluezStandin.Control.PollRoundTrips "string:$desk" |
        awk '$1 == "int64" { print $2 }'
}

wait_for_line() { # file, pattern: a started process has said it is up
    local deadline=$((SECONDS + 20))
    until grep -q "$2" "$1" 2>/dev/null; do
        if [ $SECONDS -ge $deadline ]; then
            echo "no '$2' in $1 after 20 s" >&2
            return 1
        fi
        sleep 0.1
    done
}

wait_for_answers() { # count, time-out in seconds
    local deadline=$((SECONDS + $2))
    while [ "$(round_trips | wc -l)" -lt "$1" ]; do
        if [ $SECONDS -ge $deadline ]; then
            echo "fewer than $1 polls answered after $2 s" >&2
            return 1
        fi
        sleep 0.5
    done
}

run=0
start_standin() { # extra stand-in options
    run=$((run + 1))
    dbus-daemon --nofork --print-address=1 \
        --config-file="$root/tools/bluez-standin/standin-bus.conf" >"$scratch/bus$run" 2>/dev/null &
    bus_pid=$!
    started+=("$bus_pid")
    wait_for_line "$scratch/bus$run" unix:
    bus=$(head -1 "$scratch/bus$run")
    "$build_dir/tools/bluez-standin/ostrel-bluez-standin" --bus "$bus" --desk "$desk:2" \
        --poll-period 50 "$@" >"$scratch/standin$run" &
    standin_pid=$!
    started+=("$standin_pid")
    wait_for_line "$scratch/standin$run" ready
}

stop_run() {
    kill "$client_pid" "$standin_pid" "$bus_pid" 2>/dev/null || true
    wait "$client_pid" "$standin_pid" "$bus_pid" 2>/dev/null || true
}

start_application() { # binary
    rm -rf "$scratch/home"
    mkdir -p "$scratch/home/runtime" && chmod 700 "$scratch/home/runtime"
    env XDG_DATA_HOME="$scratch/home/data" XDG_CONFIG_HOME="$scratch/home/config" \
        XDG_CACHE_HOME="$scratch/home/cache" XDG_RUNTIME_DIR="$scratch/home/runtime" \
        DBUS_SESSION_BUS_ADDRESS=disabled: DBUS_SYSTEM_BUS_ADDRESS="$bus" \
        BLUETOOTH_FORCE_DBUS_LE_VERSION=5.66 QT_QPA_PLATFORM=xcb \
        "$1" >"$scratch/app.log" 2>&1 &
    client_pid=$!
    started+=("$client_pid")
    # First start: the desk search lists the desk; pick it, then hide the window, as a user
    # who leaves the application in the tray.
    local window
    window=$(xdotool search --sync --onlyvisible --name '^Ostrel Motion$' | head -1)
    sleep 3 # the list fills as the desk advertises
    eval "$(xdotool getwindowgeometry --shell "$window")"
    xdotool mousemove $((X + 180)) $((Y + 81)) click 1
    wait_for_answers 1 30
    xdotool windowunmap "$window"
}

start_client() { # command...: a client that finds the desk by name itself
    DBUS_SYSTEM_BUS_ADDRESS="$bus" "$@" "$desk" "$notify_uuid" "$write_uuid" \
        >"$scratch/client.log" 2>&1 &
    client_pid=$!
    started+=("$client_pid")
}

# Counts `polls` answered polls after the warm-up and prints one row.
measure() { # label, perf profile name or empty
    wait_for_answers "$warmup" 60
    local first before_client before_bus before_standin before_x start_ns perf_pid=""
    first=$(round_trips | wc -l)
    if [ -n "${PERF_DIR:-}" ] && [ -n "$2" ]; then
        mkdir -p "$PERF_DIR"
        perf record -q --call-graph dwarf,16384 -p "$client_pid" -o "$PERF_DIR/$2.data" 2>/dev/null &
        perf_pid=$!
    fi
    before_client=$(cpu_ticks "$client_pid")
    before_bus=$(cpu_ticks "$bus_pid")
    before_standin=$(cpu_ticks "$standin_pid")
    before_x=$(cpu_ticks "$x_server")
    start_ns=$(date +%s%N)
    sleep $((polls / 20))
    wait_for_answers $((first + polls)) 120
    local seconds_ms=$((($(date +%s%N) - start_ns) / 1000000))
    local client=$(($(cpu_ticks "$client_pid") - before_client))
    local bus_cpu=$(($(cpu_ticks "$bus_pid") - before_bus))
    local standin=$(($(cpu_ticks "$standin_pid") - before_standin))
    local x_cpu=$(($(cpu_ticks "$x_server") - before_x))
    local rss
    rss=$(rss_mib "$client_pid")
    if [ -n "$perf_pid" ]; then
        kill -INT "$perf_pid"
        wait "$perf_pid" || true
    fi
    round_trips | tail -n +$((first + 1)) | head -n "$polls" | sort -n >"$scratch/sorted"
    local p50 p99
    p50=$(awk -v n="$polls" 'NR == int((n - 1) * 0.50) + 1 { print $1 }' "$scratch/sorted")
    p99=$(awk -v n="$polls" 'NR == int((n - 1) * 0.99) + 1 { print $1 }' "$scratch/sorted")
    echo "$2 $p50 $p99 $client $seconds_ms" >>"$scratch/results"
    awk -v label="$1" -v p50="$p50" -v p99="$p99" -v ms="$seconds_ms" -v hz="$hz" \
        -v c="$client" -v b="$bus_cpu" -v s="$standin" -v x="$x_cpu" -v rss="$rss" 'BEGIN {
        pct = 100 / hz / (ms / 1000)
        printf "%-28s %7.2f ms %7.2f ms %7.2f%% %6s MiB %8.2f%% %8.2f%% %6.2f%% %7.2f%%\n",
            label, p50 / 1000, p99 / 1000, c * pct, rss, b * pct, s * pct, x * pct,
            (c + b + s + x) * pct }'
}

printf "%d answered polls per run at 20 Hz, poll-to-answer measured by the stand-in\n" "$polls"
printf "%-28s %10s %10s %8s %10s %9s %9s %7s %8s\n" client "p50" "p99" CPU RSS \
    dbus-daemon stand-in X total

if [ -n "${COMPARE_WITH:-}" ]; then
    start_standin
    start_application "$COMPARE_WITH"
    measure "application, older build" app-older
    stop_run
fi

start_standin
start_application "$build_dir/src/app/ostrel-motion"
measure "application, sockets" app-sockets
stop_run

start_standin --no-acquire
start_application "$build_dir/src/app/ostrel-motion"
measure "application, WriteValue" app-writevalue
stop_run

start_standin
start_client "$build_dir/bench/poll-floor"
measure "floor (C++, sockets)" floor
stop_run

start_standin
start_client /usr/bin/python3 "$root/bench/poll_answerer.py"
measure "bleak client" bleak
stop_run

# The targets over sockets: p50 at most 1.25 times the floor's, p99 1.5 times, CPU under 0.3%.
awk -v hz="$hz" '{ key[NR] = $1; p50[$1] = $2; p99[$1] = $3; cpu[$1] = 100 * $4 / hz / ($5 / 1000) }
    END { for (i = 1; i <= NR; i++) if (key[i] ~ /^app/)
        printf "%-16s / floor: p50 %.2fx, p99 %.2fx; CPU %.2f%% of a core\n", key[i],
            p50[key[i]] / p50["floor"], p99[key[i]] / p99["floor"], cpu[key[i]] }' \
    "$scratch/results"
