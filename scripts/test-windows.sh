#!/usr/bin/env bash
# Cross-builds for Windows with MinGW-w64 and runs every test under Wine.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup-deps.sh windows
export WINEDEBUG=-all
export WINEPREFIX="${WINEPREFIX:-$PWD/build/wine-prefix}"
if [ ! -f "$WINEPREFIX/system.reg" ]; then
    echo "Preparing the Wine prefix in $WINEPREFIX"
    /usr/lib/wine/wine64 wineboot -i >/dev/null 2>&1
fi
cmake --preset mingw
cmake --build --preset mingw
ctest --preset mingw -j "$(nproc)"
