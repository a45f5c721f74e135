#!/usr/bin/env bash
# Pictures of every screen in English and Chinese, taken on a virtual X display over the demo
# desks: screenshots/en/*.png and screenshots/zh-Hans/*.png in the checkout (git-ignored).
# Set BUILD_DIR to build elsewhere (default: build/ in the checkout).
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build_dir=${BUILD_DIR:-$root/build}
out=$root/screenshots

cmake -S "$root" -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DOSTREL_WERROR=ON >/dev/null
cmake --build "$build_dir" --target screenshot-tour

# Private home folders, so the tour neither reads nor changes the user's desks and settings.
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# The control screen and the shortcut page under headless sway, a real Wayland compositor,
# taken with grim: screenshots/wayland/<lang>/. Sway refuses to run as root, so there it runs as
# nobody, in a runtime folder of its own.
wayland_tour() {
    local lang=$1 runtime=$scratch/wayland-$lang/runtime config=$scratch/wayland-$lang/sway.conf
    local drop=() sway_pid socket waited=0
    mkdir -p "$runtime" "$out/wayland/$lang"
    chmod 755 "$scratch" "$scratch/wayland-$lang"
    chmod 700 "$runtime"
    if [ "$(id -u)" -eq 0 ]; then
        chown nobody "$runtime"
        drop=(setpriv --reuid=nobody --regid=nogroup --clear-groups)
    fi
    printf '%s\n' 'output HEADLESS-1 resolution 1280x900' 'xwayland disable' \
        'default_border none' 'default_floating_border none' \
        'for_window [app_id="com.ostrel.motion"] move position 0 0' >"$config"
    env -i PATH="$PATH" HOME="$scratch" XDG_RUNTIME_DIR="$runtime" WLR_BACKENDS=headless \
        WLR_LIBINPUT_NO_DEVICES=1 "${drop[@]}" sway -c "$config" >"$scratch/sway-$lang.log" 2>&1 &
    sway_pid=$!
    until socket=$(cd "$runtime" && ls wayland-? 2>/dev/null); do
        waited=$((waited + 1))
        [ $waited -lt 100 ] || { cat "$scratch/sway-$lang.log" >&2; kill $sway_pid; return 1; }
        sleep 0.1
    done
    env XDG_DATA_HOME="$scratch/wayland-$lang/data" XDG_CONFIG_HOME="$scratch/wayland-$lang/config" \
        XDG_CACHE_HOME="$scratch/wayland-$lang/cache" XDG_RUNTIME_DIR="$runtime" \
        WAYLAND_DISPLAY="$socket" QT_QPA_PLATFORM=wayland XDG_SESSION_TYPE=wayland \
        dbus-run-session -- "$build_dir/tools/screenshot-tour/screenshot-tour" \
        --lang "$lang" --out "$out/wayland/$lang" --wayland
    kill $sway_pid
    wait $sway_pid || true
}

for lang in en zh-Hans; do
    rm -rf "${out:?}/$lang"
    mkdir -p "$out/$lang" "$scratch/$lang/runtime"
    chmod 700 "$scratch/$lang/runtime"
    env XDG_DATA_HOME="$scratch/$lang/data" XDG_CONFIG_HOME="$scratch/$lang/config" \
        XDG_CACHE_HOME="$scratch/$lang/cache" XDG_RUNTIME_DIR="$scratch/$lang/runtime" \
        QT_QPA_PLATFORM=xcb \
        xvfb-run -a -s "-screen 0 1280x900x24" \
        "$build_dir/tools/screenshot-tour/screenshot-tour" --lang "$lang" --out "$out/$lang"
done
rm -rf "${out:?}/wayland"
for lang in en zh-Hans; do
    wayland_tour "$lang"
done
echo "Screenshots in $out"
