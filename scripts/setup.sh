#!/usr/bin/env bash
# Installs what Ostrel MS needs to build, run and test on Debian 12, and nothing that is there
# already. Safe to run again.
set -euo pipefail

packages=(
    build-essential cmake pkg-config
    qt6-base-dev qt6-serialport-dev libqt6serialport6 libgl-dev
    zlib1g-dev
    libgtest-dev libgmock-dev googletest libbenchmark-dev
    clang libclang-rt-14-dev
    fonts-dejavu-core poppler-utils
)

missing=()
for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$package")
    fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
sudo=()
[ "$(id -u)" -ne 0 ] && sudo=(sudo)
"${sudo[@]}" apt-get update -q
DEBIAN_FRONTEND=noninteractive "${sudo[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
