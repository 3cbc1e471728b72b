#!/usr/bin/env bash
# Builds every libFuzzer target with clang (AddressSanitizer + UndefinedBehaviorSanitizer) and
# runs each for a short fixed time on its seed corpus; any finding fails. Set
# KELCORE_FUZZ_SECONDS to change the time per target (20 by default).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup-deps.sh fuzz
cmake --preset fuzz -DKELCORE_FUZZ_SECONDS="${KELCORE_FUZZ_SECONDS:-20}"
cmake --build --preset fuzz
ctest --preset fuzz -j "$(nproc)"
