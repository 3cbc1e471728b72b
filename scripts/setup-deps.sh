#!/usr/bin/env bash
# Installs what the build needs from Debian's archive, and only what is missing.
#   setup-deps.sh native    compilers, CMake, GoogleTest, Google Benchmark, TinyXML
#   setup-deps.sh windows   the above plus MinGW-w64, Wine and TinyXML's source package
#   setup-deps.sh fuzz      the native set plus clang and its sanitizer and libFuzzer runtime
set -euo pipefail

mode=${1:-native}
root=$(cd "$(dirname "$0")/.." && pwd)

native_pkgs=(g++ cmake ninja-build pkg-config libgtest-dev googletest libbenchmark-dev libtinyxml-dev clang-format)
windows_pkgs=(g++-mingw-w64-x86-64 wine64 dpkg-dev)
fuzz_pkgs=(clang libclang-rt-14-dev)

sudo_cmd=()
if [ "$(id -u)" -ne 0 ]; then sudo_cmd=(sudo); fi

missing=()
want=("${native_pkgs[@]}")
[ "$mode" = windows ] && want+=("${windows_pkgs[@]}")
[ "$mode" = fuzz ] && want+=("${fuzz_pkgs[@]}")
for p in "${want[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done

updated=no
apt_update() {
    if [ "$updated" = no ]; then
        "${sudo_cmd[@]}" apt-get update -q
        updated=yes
    fi
}

if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    apt_update
    DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
fi

if [ "$mode" = windows ]; then
    # The Windows build compiles TinyXML itself, from Debian's source package.
    src_dir="$root/build/deps/tinyxml"
    if ! ls "$src_dir"/tinyxml-*/tinyxml.cpp >/dev/null 2>&1; then
        if ! grep -rqs '^Types:.*deb-src' /etc/apt/sources.list.d/ && ! grep -qs '^deb-src' /etc/apt/sources.list; then
            src_list=/etc/apt/sources.list.d/kelcore-deb-src.sources
            if [ -f /etc/apt/sources.list.d/debian.sources ]; then
                sed 's/^Types: deb$/Types: deb-src/' /etc/apt/sources.list.d/debian.sources |
                    "${sudo_cmd[@]}" tee "$src_list" >/dev/null
            else
                sed -n 's/^deb /deb-src /p' /etc/apt/sources.list | "${sudo_cmd[@]}" tee "$src_list" >/dev/null
            fi
            updated=no
        fi
        apt_update
        mkdir -p "$src_dir"
        (cd "$src_dir" && apt-get source -q tinyxml)
    fi
fi
