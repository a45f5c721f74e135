#!/usr/bin/env bash
# Protocol benchmarks: bash bench/run.sh. Builds build-bench/ in Release (benchmarks only, no
# tests) and prints the mean, median and spread of ten repetitions.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build_dir=$root/build-bench

cmake -S "$root" -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DOSTREL_BUILD_TESTS=OFF -DOSTREL_BUILD_BENCH=ON
cmake --build "$build_dir" --target protocol_bench -j2
"$build_dir/bench/protocol_bench" --benchmark_repetitions=10 \
    --benchmark_report_aggregates_only=true "$@"
