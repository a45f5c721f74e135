#!/usr/bin/env bash
# One entry point for developers and CI.
#   tools/dev.sh test    install missing Debian packages, build everything, run every test
#   tools/dev.sh deps    only install missing Debian packages
#   tools/dev.sh start   install missing packages, build the application, run it on demo desks
#   tools/dev.sh package install missing packages, build, make the Debian package in build/
# Set BUILD_DIR to build elsewhere (default: build/ in the checkout).
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build_dir=${BUILD_DIR:-$root/build}

packages=(
    cmake ninja-build g++ pkg-config ccache git python3
    qt6-base-dev qt6-connectivity-dev qt6-svg-dev qt6-tools-dev qt6-tools-dev-tools
    qt6-l10n-tools libplist-dev libplist-utils
    libgtest-dev libgmock-dev libbenchmark-dev
    clang libclang-rt-14-dev
    dbus dbus-daemon xvfb xauth xdotool x11-xserver-utils libxcb1-dev
    qt6-wayland fonts-droid-fallback sway grim xdg-desktop-portal
    dpkg-dev file lintian desktop-file-utils appstream
    libxcb-keysyms1-dev libxcb-screensaver0-dev
    python3-bleak
    qt6-charts-dev libqt6opengl6-dev libqt6sql6-sqlite
    mosquitto mosquitto-clients libmosquitto-dev libsecret-1-dev gnome-keyring openssl
)

install_missing() {
    local missing=() pkg
    for pkg in "${packages[@]}"; do
        dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q 'install ok installed' ||
            missing+=("$pkg")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "Installing missing packages: ${missing[*]}"
    local sudo=()
    [ "$(id -u)" -eq 0 ] || sudo=(sudo)
    "${sudo[@]}" apt-get update -qq
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

configure() {
    cmake -S "$root" -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
        -DOSTREL_WERROR=ON "$@"
}

configure_and_build() {
    configure "$@"
    cmake --build "$build_dir"
}

require_display() {
    [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ] && return 0
    cat >&2 <<'MESSAGE'
No display found: neither DISPLAY nor WAYLAND_DISPLAY is set, so the application's window
cannot be shown. Run this command from a terminal in a desktop session, or give it a virtual
display:
    xvfb-run -a bash tools/dev.sh start
MESSAGE
    exit 1
}

case "${1:-}" in
start)
    require_display
    install_missing
    configure
    cmake --build "$build_dir" --target ostrel-motion
    exec "$build_dir/src/app/ostrel-motion" --demo "${@:2}"
    ;;
deps)
    install_missing
    ;;
package)
    install_missing
    configure_and_build
    (cd "$build_dir" && cpack -G DEB)
    ;;
test)
    install_missing
    configure_and_build -DOSTREL_BUILD_BENCH=ON
    ctest --test-dir "$build_dir" --output-on-failure -j "$(nproc)"
    ;;
*)
    echo "usage: $0 start|test|package|deps" >&2
    exit 2
    ;;
esac
