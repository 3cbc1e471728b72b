#!/usr/bin/env bash
# Builds the thread, event and logging suites with ThreadSanitizer and runs them; any report fails.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup-deps.sh native
cmake --preset native-tsan
cmake --build --preset native-tsan
ctest --preset native-tsan -j "$(nproc)"
