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
# One persistent server for the whole run: test processes started side by side would otherwise
# race to launch it. Its background services start here, detached from our output, because a
# service started by the first test would hold that test's output pipe open and stall CTest.
/usr/lib/wine/wineserver -k 2>/dev/null || true
/usr/lib/wine/wineserver -w
/usr/lib/wine/wineserver -p
trap '/usr/lib/wine/wineserver -k 2>/dev/null || true' EXIT
/usr/lib/wine/wine64 wineboot </dev/null >/dev/null 2>&1
ctest --preset mingw -j "$(nproc)"
