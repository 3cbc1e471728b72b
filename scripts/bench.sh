#!/usr/bin/env bash
# Builds and runs the benchmarks (release build); extra arguments go to Google Benchmark.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup-deps.sh native
cmake --preset bench >/dev/null
cmake --build --preset bench --target kelcore_bench
# Fixed allocator thresholds: glibc otherwise moves blocks between the heap and mmap depending on
# what was freed before, which flips size-dependent results from run to run. Set
# GLIBC_TUNABLES yourself to measure with other settings.
export GLIBC_TUNABLES="${GLIBC_TUNABLES-glibc.malloc.trim_threshold=268435456:glibc.malloc.mmap_threshold=268435456}"
build/bench/bin/kelcore_bench "$@"
