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
# taken with grim: screenshots/wayland/<lang>/.
wayland_tour() {
    local lang=$1
    mkdir -p "$out/wayland/$lang"
    env XDG_DATA_HOME="$scratch/wayland-$lang/data" XDG_CONFIG_HOME="$scratch/wayland-$lang/config" \
        XDG_CACHE_HOME="$scratch/wayland-$lang/cache" \
        bash "$root/tools/headless-sway.sh" dbus-run-session \
        --config-file="$root/tools/bluez-standin/standin-bus.conf" -- \
        "$build_dir/tools/screenshot-tour/screenshot-tour" --lang "$lang" \
        --out "$out/wayland/$lang" --wayland
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
