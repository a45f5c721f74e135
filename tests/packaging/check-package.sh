#!/usr/bin/env bash
# Builds the Debian package from a built tree and checks it as a distribution would: lintian
# finds no errors, the launcher entry and the AppStream metainfo validate, the expected files
# are in it, and the binary taken out of it runs.
#   tests/packaging/check-package.sh BUILD_DIR
set -euo pipefail

build_dir=$(cd "$1" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

(cd "$build_dir" && cpack -G DEB -B "$scratch/out" >/dev/null)
deb=$(ls "$scratch"/out/ostrel-motion_*_amd64.deb)
echo "package: $(basename "$deb"), $(stat -c %s "$deb") bytes"

lintian_out=$(lintian --allow-root "$deb" 2>&1 || true)
echo "lintian: $(grep -c '^E:' <<<"$lintian_out" || true) errors, $(grep -c '^W:' <<<"$lintian_out" || true) warnings"
if grep -q '^E:' <<<"$lintian_out"; then
    echo "$lintian_out"
    exit 1
fi

root="$scratch/root"
dpkg-deb -x "$deb" "$root"
share="$root/usr/share"
expected=(
    usr/bin/ostrel-motion
    usr/share/applications/com.ostrel.motion.desktop
    usr/share/metainfo/com.ostrel.motion.metainfo.xml
    usr/share/dbus-1/services/com.ostrel.motion.service
    usr/share/icons/hicolor/scalable/apps/com.ostrel.motion.svg
    usr/share/icons/hicolor/48x48/apps/com.ostrel.motion.png
    usr/share/icons/hicolor/256x256/apps/com.ostrel.motion.png
    usr/share/man/man1/ostrel-motion.1.gz
    usr/share/doc/ostrel-motion/copyright
)
for file in "${expected[@]}"; do
    [ -s "$root/$file" ] || { echo "missing from the package: $file"; exit 1; }
done
# A PNG of the size its folder names.
[ "$(od -An -tu1 -j16 -N8 "$share/icons/hicolor/48x48/apps/com.ostrel.motion.png" | tr -s ' ')" \
    = " 0 0 0 48 0 0 0 48" ] || { echo "the 48x48 icon is not 48x48"; exit 1; }
grep -qx 'Exec=/usr/bin/ostrel-motion --hidden' "$share/dbus-1/services/com.ostrel.motion.service"
grep -qx 'Name=com.ostrel.motion' "$share/dbus-1/services/com.ostrel.motion.service"

desktop-file-validate "$share/applications/com.ostrel.motion.desktop"
appstreamcli validate --no-net --pedantic "$share/metainfo/com.ostrel.motion.metainfo.xml" >/dev/null ||
    appstreamcli validate --no-net "$share/metainfo/com.ostrel.motion.metainfo.xml"

version=$(QT_QPA_PLATFORM=offscreen "$root/usr/bin/ostrel-motion" --version)
echo "extracted binary: $version"
grep -q "^ostrel-motion [0-9]" <<<"$version"
echo "package checked"
