#!/usr/bin/env bash
# Installs what Ostrel MS needs on Debian 12, and nothing that is there already. Safe to run
# again.
#   bash scripts/setup.sh            the program, the simulator, the tests and the benchmarks
#   bash scripts/setup.sh --program  the program and the simulator only (the converter then
#                                    builds without its AIA export, which needs netCDF)
set -euo pipefail

packages=(
    build-essential cmake pkg-config
    qt6-base-dev qt6-serialport-dev libqt6serialport6 libgl-dev
    zlib1g-dev fonts-dejavu-core
)
if [ "${1:-}" != "--program" ]; then
    packages+=(
        libgtest-dev libgmock-dev googletest libbenchmark-dev
        clang libclang-rt-14-dev
        poppler-utils libreoffice-calc-nogui
        libnetcdf-dev netcdf-bin python3-netcdf4
        desktop-file-utils shared-mime-info xdg-utils libglib2.0-bin dpkg-dev lintian
    )
fi

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
