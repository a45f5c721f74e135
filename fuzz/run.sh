#!/usr/bin/env bash
# Fuzzes the frame splitter and classifier: bash fuzz/run.sh [seconds] (default 600).
# Builds build-fuzz/ with clang and sanitizers, keeps the corpus in fuzz/corpus-protocol/ and
# any crashing input in fuzz/artifacts/, and prints libFuzzer's final statistics.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
seconds=${1:-600}
build_dir=$root/build-fuzz
corpus=$root/fuzz/corpus-protocol
artifacts=$root/fuzz/artifacts

cmake -S "$root" -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_CXX_COMPILER=clang++ -DOSTREL_PROTOCOL_ONLY=ON -DOSTREL_BUILD_FUZZ=ON \
    -DOSTREL_WERROR=ON \
    -DCMAKE_CXX_FLAGS="-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all"
cmake --build "$build_dir" --target protocol_fuzzer -j2

mkdir -p "$corpus" "$artifacts"
if [ -z "$(ls -A "$corpus")" ]; then
    # Seeds: a held Up key with a poll, a display and a device report in one stream.
    printf '\x01\x0b\x9b\x05\x11\x00\x9d\x9b\x07\x12\x06\xcf\x7d\x00\x00\x9d' >"$corpus/seed-stream"
    printf '\x04\x00\x9b\x05\x03\x82\x50\xe1\x9d\x9b\x06\x02\x00\x00\x6c\xa1\x9d' >"$corpus/seed-valid"
fi

"$build_dir/fuzz/protocol_fuzzer" "$corpus" -max_total_time="$seconds" -max_len=2048 \
    -print_final_stats=1 -artifact_prefix="$artifacts/"
