#!/usr/bin/env bash
# Builds with AddressSanitizer and UndefinedBehaviorSanitizer and runs every native test.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup-deps.sh native
cmake --preset native-debug
cmake --build --preset native-debug
ctest --preset native-debug -j "$(nproc)"
