#!/usr/bin/env bash
# Builds the Debian package and checks what it holds and what it depends on.
#   check-package.sh BUILD_DIR
set -euo pipefail
build=$1
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
(cd "$build" && cpack -G DEB -B "$scratch" >/dev/null)
deb=$(ls "$scratch"/ostrel_*.deb)
dpkg-deb -c "$deb" | awk '{print $6}' >"$scratch/files"
for file in bin/ostrel bin/ostrel-export bin/velquin-sim applications/ostrel.desktop \
    mime/packages/ostrel.xml icons/hicolor/scalable/apps/ostrel.svg \
    icons/hicolor/256x256/apps/ostrel.png man/man1/ostrel-export.1.gz man/man1/velquin-sim.1.gz; do
    grep -q "^\./usr/.*$file\$" "$scratch/files" || { echo "not in the package: $file"; exit 1; }
done
dpkg-deb -f "$deb" Section Depends
[ "$(dpkg-deb -f "$deb" Section)" = science ]
dpkg-deb -f "$deb" Depends | grep -q libqt6widgets6
