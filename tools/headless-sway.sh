#!/usr/bin/env bash
# Runs a command under a private headless sway, a real Wayland compositor needing no hardware:
#   tools/headless-sway.sh COMMAND [ARGS...]
# The command gets the compositor's WAYLAND_DISPLAY, SWAYSOCK and XDG_RUNTIME_DIR, and
# QT_QPA_PLATFORM=wayland. No bar (so no tray), no borders; Ostrel Motion's window opens at the
# top left corner. Sway refuses to run as root, so there it runs as nobody.
set -euo pipefail

scratch=$(mktemp -d)
chmod 755 "$scratch"
runtime=$scratch/runtime
mkdir -m 700 "$runtime"
drop=()
if [ "$(id -u)" -eq 0 ]; then
    chown nobody "$runtime"
    drop=(setpriv --reuid=nobody --regid=nogroup --clear-groups)
fi
printf '%s\n' 'output HEADLESS-1 resolution 1280x900' 'xwayland disable' \
    'default_border none' 'default_floating_border none' \
    'for_window [app_id="com.ostrel.motion"] move position 0 0' >"$scratch/sway.conf"

started=$(date +%s%N)
env -i PATH="$PATH" HOME="$scratch" XDG_RUNTIME_DIR="$runtime" WLR_BACKENDS=headless \
    WLR_LIBINPUT_NO_DEVICES=1 "${drop[@]}" sway -c "$scratch/sway.conf" >"$scratch/sway.log" 2>&1 &
sway_pid=$!
trap 'kill $sway_pid 2>/dev/null; wait $sway_pid 2>/dev/null; rm -rf "$scratch"' EXIT

polls=0
until display=$(cd "$runtime" && ls wayland-? 2>/dev/null) &&
    control=$(ls "$runtime"/sway-ipc.* 2>/dev/null); do
    polls=$((polls + 1))
    if [ $polls -gt 200 ] || ! kill -0 $sway_pid 2>/dev/null; then
        echo "sway did not start:" >&2
        cat "$scratch/sway.log" >&2
        exit 1
    fi
    sleep 0.05
done
echo "headless sway ready after $((($(date +%s%N) - started) / 1000000)) ms" >&2

set +e
env XDG_RUNTIME_DIR="$runtime" WAYLAND_DISPLAY="$display" SWAYSOCK="$control" \
    QT_QPA_PLATFORM=wayland XDG_SESSION_TYPE=wayland "$@"
