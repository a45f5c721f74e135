#!/usr/bin/env bash
# Starts a private bus with the BlueZ stand-in on it and prints how to point the application
# (or any QtBluetooth program) at it. Ctrl-C stops both.
#   tools/bluez-standin.sh                      one type-2 desk, QWJ-0001
#   tools/bluez-standin.sh --desk QWJ-7 --desk Ostrel-CN-1:1 --poll-period 100
# Set BUILD_DIR if the stand-in was built elsewhere (default: build/ in the checkout).
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build_dir=${BUILD_DIR:-$root/build}
standin=$build_dir/tools/bluez-standin/ostrel-bluez-standin
if [ ! -x "$standin" ]; then
    echo "Build the stand-in first: cmake --build $build_dir --target ostrel-bluez-standin" >&2
    exit 1
fi
[ $# -gt 0 ] || set -- --desk QWJ-0001

workdir=$(mktemp -d)
bus_pid=
standin_pid=
cleanup() {
    [ -z "$standin_pid" ] || kill "$standin_pid" 2>/dev/null || true
    [ -z "$bus_pid" ] || kill "$bus_pid" 2>/dev/null || true
    rm -rf "$workdir"
}
trap cleanup EXIT
trap 'exit 130' INT TERM

# The forked bus prints its address and pid once it accepts connections.
{ read -r address; read -r bus_pid; } < <(dbus-daemon --fork --print-address=1 --print-pid=1 \
    --config-file="$root/tools/bluez-standin/standin-bus.conf")

mkfifo "$workdir/ready"
"$standin" --bus "$address" "$@" >"$workdir/ready" &
standin_pid=$!
exec 3<"$workdir/ready"
if ! read -r -t 10 -u 3 line || [ "$line" != ready ]; then
    echo "The stand-in did not start." >&2
    exit 1
fi

control="busctl --address='$address' call org.ostrel.BluezStandin /control org.ostrel.BluezStandin.Control"
cat <<EOT
BlueZ stand-in running on a private bus.

Point the application at it (both before it starts):
  export DBUS_SYSTEM_BUS_ADDRESS='$address'
  export BLUETOOTH_FORCE_DBUS_LE_VERSION=5.66

Look and steer:
  busctl --address='$address' tree org.bluez
  $control DeskHeight s QWJ-0001
  $control SetInRange sb QWJ-0001 false
  $control InjectFault ssi QWJ-0001 error 5
  $control SetPowered b false

Ctrl-C stops the stand-in and the bus.
EOT
wait "$standin_pid"
