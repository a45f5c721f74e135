#!/usr/bin/env bash
# Benchmarks: bash bench/run.sh [protocol|transport|activity] [benchmark options]
#   protocol   display frames classified per second, poll-to-answer in the classifier (default)
#   transport  poll-to-answer through the connection facade on a virtual desk (median, p99)
#   activity   the activity page opened over a year of made-up days, 30-day chart drawn
# Builds build-bench/ in Release (benchmarks only, no tests) and prints the mean, median and
# spread of ten repetitions.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build_dir=$root/build-bench
suite=protocol
case "${1:-}" in
protocol | transport | activity)
    suite=$1
    shift
    ;;
esac

cmake -S "$root" -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DOSTREL_BUILD_TESTS=OFF -DOSTREL_BUILD_BENCH=ON
cmake --build "$build_dir" --target "${suite}_bench" -j2
"$build_dir/bench/${suite}_bench" --benchmark_repetitions=10 \
    --benchmark_report_aggregates_only=true "$@"
