#!/usr/bin/env bash
# An operator's whole round on the simulated instrument, on a virtual X server, driven by
# keystrokes: the splash, the system name, a run recorded, its method read, notes written, the
# run saved, Exit with its questions. Screenshots of the windows go to OUT (default docs/).
# Needs Xvfb, xdotool and ImageMagick's import.
#   bash scripts/operator-round.sh [BUILD_DIR] [OUT]
set -euo pipefail
build=${1:-build}
out=${2:-docs}
source "$(dirname "$0")/virtual-desktop.sh" "$build" --runs 1 --run-minutes 1 --pauses 0 --holds 0 \
    --events 3 --idle-seconds 20

# Polls for a visible window named by the pattern (or, with --pid, of that process); prints its id.
await() {
    local id how=(--name "$1")
    [ "$1" = --pid ] && how=(--pid "$2")
    for _ in $(seq 1500); do
        id=$(xdotool search --onlyvisible "${how[@]}" 2>/dev/null | head -n 1) && { echo "$id"; return; }
        sleep 0.1
    done
    echo "no window '$1'" >&2
    exit 1
}
shot() { import -window "$1" "$out/$2"; echo "  $out/$2"; }
step() { echo "- $*"; }

"$build/ostrel" &
program=$!
step "the splash"
# The splash has no caption: it is the first window the process shows.
splash=$(await --pid "$program")
sleep 0.3
shot "$splash" splash.png
step "the system name asked"
name=$(await '^Enter Velquin System Name$')
xdotool windowfocus --sync "$name" type --delay 40 'Column 4'
shot "$name" system-name.png
xdotool key Return
main=$(await '^Ostrel MS - System: Column 4$')
step "a run recorded: the instrument starts and stops it, then sends its method"
sleep 85
xdotool windowfocus --sync "$main" key ctrl+m
method=$(await '^Method$')
sleep 0.5
shot "$method" method.png
xdotool windowfocus --sync "$method" key Return
step "notes written"
xdotool windowfocus --sync "$main" key ctrl+n
notes=$(await '^Notes$')
xdotool windowfocus --sync "$notes" type --delay 20 'Peak 2 collected in tubes 12 to 15. Baseline steady.'
sleep 0.3
shot "$notes" notes.png
xdotool windowfocus --sync "$notes" key alt+o
# The window blocks the main window until it has gone.
while xdotool search --onlyvisible --name '^Notes$' >/dev/null 2>&1; do sleep 0.1; done
step "the run saved"
# A click on the tool bar's Save, as the operator would.
xdotool mousemove --window "$main" 76 45 click 1
save=$(await 'Save')
xdotool windowfocus --sync "$save" type --delay 20 "$home/first-run"
xdotool key Return
sleep 1
shot "$main" recorded-run.png
step "Exit, saying No to saving the log"
xdotool windowfocus --sync "$main" key alt+f x
question=$(await '^Ostrel MS$')
sleep 0.3
shot "$question" exit-question.png
xdotool windowfocus --sync "$question" key alt+n
for _ in $(seq 100); do kill -0 "$program" 2>/dev/null || break; sleep 0.1; done
if kill -0 "$program" 2>/dev/null; then
    echo "the program did not end" >&2
    exit 1
fi
ls "$home"/first-run* >/dev/null && echo "The round is complete: the run was saved and the program ended."
