#!/usr/bin/env bash
# Installs what is missing, builds, and starts the recorder on a simulated instrument: the
# simulator plays a realistic run on a pseudo-terminal and the recorder reads it as COM 1.
# Extra arguments go to the simulator (see: build/tools/velquin-sim/velquin-sim --help).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh --program

cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j "$(nproc)" --target ostrel velquin-sim

sim=build/tools/velquin-sim/velquin-sim
# Without options the first run starts a few seconds after the recorder is up.
[ $# -eq 0 ] && set -- --idle-seconds 5
out=$(mktemp)
"$sim" --pty "$@" >"$out" &
sim_pid=$!
trap 'kill "$sim_pid" 2>/dev/null; rm -f "$out"' EXIT
trap 'exit 130' INT TERM
# The simulator prints its pseudo-terminal's path on its first line.
pty=
for _ in $(seq 100); do
    pty=$(head -n 1 "$out")
    [ -n "$pty" ] && break
    sleep 0.1
done
[ -n "$pty" ] || { echo "The simulator did not start." >&2; exit 1; }
echo "Simulated instrument on $pty (COM 1)"

OSTREL_COMPORTS="$pty" build/ostrel
