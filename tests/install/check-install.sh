#!/usr/bin/env bash
# Installs the build into a scratch prefix and checks it as a desktop sees it: the entry is
# valid, the file types compile, and a run, a log and a run without its extension are known.
#   check-install.sh BUILD_DIR MAKE_RUNS
set -euo pipefail
build=$1 make_runs=$2
for tool in desktop-file-validate update-mime-database xdg-mime gio; do
    command -v "$tool" >/dev/null || { echo "$tool is not installed"; exit 77; }
done
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cmake --install "$build" --prefix "$scratch/prefix" >/dev/null
share=$scratch/prefix/share

# The system's types stay visible, so a clash with another *.chd type is settled as on a desktop.
export XDG_DATA_DIRS=$share:/usr/share XDG_DATA_HOME=$scratch/home XDG_CURRENT_DESKTOP=GNOME
desktop-file-validate "$share/applications/ostrel.desktop"
update-mime-database "$share/mime"

mkdir "$scratch/runs" "$scratch/home"
"$make_runs" "$scratch/runs"
cp "$scratch/runs/run.chd" "$scratch/runs/run-without-extension"
status=0
for expected in run.chd:application/x-ostrel-run run.chl:application/x-ostrel-log \
    run-without-extension:application/x-ostrel-run; do
    type=$(xdg-mime query filetype "$scratch/runs/${expected%%:*}")
    echo "${expected%%:*}: $type"
    [ "$type" = "${expected#*:}" ] || status=1
done
exit $status
