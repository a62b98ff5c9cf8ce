#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test.
#   bash scripts/run-tests.sh             gcc build in build/
#   bash scripts/run-tests.sh --sanitize  clang build with AddressSanitizer and
#                                         UndefinedBehaviorSanitizer in build-asan/
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh

jobs=$(nproc)
if [ "${1:-}" = "--sanitize" ]; then
    build=build-asan
    export CC=clang CXX=clang++
    options=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DOSTREL_SANITIZE=ON -DOSTREL_BENCH=OFF)
    export ASAN_OPTIONS=detect_leaks=0:abort_on_error=1
    export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
else
    build=build
    options=(-DCMAKE_BUILD_TYPE=RelWithDebInfo)
fi

cmake -S . -B "$build" "${options[@]}"
cmake --build "$build" -j "$jobs"
cd "$build"
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j "$jobs"
