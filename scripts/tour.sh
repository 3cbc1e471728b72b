#!/usr/bin/env bash
# Builds the library in release mode and runs the example program.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup-deps.sh native
cmake --preset native-release >/dev/null
cmake --build --preset native-release --target tour
build/native-release/bin/tour
