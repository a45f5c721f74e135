#!/usr/bin/env bash
# Pictures of every screen in English and Chinese, taken on a virtual X display over the demo
# desks: screenshots/en/*.png and screenshots/zh-Hans/*.png in the checkout (git-ignored), and the
# same at 1.5x text size on an 800-pixel-high screen in screenshots/en-1.5x and zh-Hans-1.5x.
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

# scale, screen height, folder suffix
runs=("1 900 " "1.5 800 -1.5x")
for lang in en zh-Hans; do
    for run in "${runs[@]}"; do
        read -r scale height suffix <<<"$run"
        dir=$out/$lang$suffix
        home=$scratch/$lang$suffix
        rm -rf "$dir"
        mkdir -p "$dir" "$home/runtime"
        chmod 700 "$home/runtime"
        env XDG_DATA_HOME="$home/data" XDG_CONFIG_HOME="$home/config" \
            XDG_CACHE_HOME="$home/cache" XDG_RUNTIME_DIR="$home/runtime" \
            QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR="$scale" \
            xvfb-run -a -s "-screen 0 1280x${height}x24" \
            "$build_dir/tools/screenshot-tour/screenshot-tour" --lang "$lang" --out "$dir"
    done
done
rm -rf "${out:?}/wayland"
for lang in en zh-Hans; do
    wayland_tour "$lang"
done
echo "Screenshots in $out"
