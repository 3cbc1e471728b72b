#!/usr/bin/env bash
# Builds and runs the benchmarks (release build); extra arguments go to Google Benchmark.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup-deps.sh native
cmake --preset bench >/dev/null
cmake --build --preset bench --target kelcore_bench
build/bench/bin/kelcore_bench "$@"
