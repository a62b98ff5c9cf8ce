#!/usr/bin/env bash
# Start-up and exit of the real program on an X server, as an operator meets them: the time
# from the process start to the main window shown, and from Exit (nothing to ask) to the
# process gone. Needs Xvfb and xdotool.
#   bash bench/shell/startup-time.sh [BUILD_DIR] [ROUNDS]
set -euo pipefail
build=${1:-build}
rounds=${2:-10}
source "$(dirname "$0")/../../scripts/virtual-desktop.sh" "$build" --runs 0 --idle-seconds 600

now() { date +%s%N; }
# Polls for a visible window named by the pattern; prints its id.
await() {
    local id
    until id=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | head -n 1); do sleep 0.01; done
    echo "$id"
}
ms() { echo $((($2 - $1) / 1000000)); }

shown=()
ended=()
for _ in $(seq "$rounds"); do
    start=$(now)
    "$build/ostrel" &
    pid=$!
    await '^Ostrel MS - Velquin System' >/dev/null
    shown+=("$(ms "$start" "$(now)")")
    name=$(await '^Enter Velquin System Name$')
    xdotool windowfocus --sync "$name" key Return
    main=$(await '^Ostrel MS - System: Default$')
    xdotool windowfocus --sync "$main"
    sleep 0.3
    exit_at=$(now)
    xdotool key alt+f x
    while kill -0 "$pid" 2>/dev/null; do sleep 0.005; done
    ended+=("$(ms "$exit_at" "$(now)")")
done
median() { printf '%s\n' "$@" | sort -n | awk '{a[NR]=$1} END {print a[int((NR+1)/2)]}'; }
echo "start to main window shown: median $(median "${shown[@]}") ms (${shown[*]})"
echo "Exit to process gone:       median $(median "${ended[@]}") ms (${ended[*]})"
