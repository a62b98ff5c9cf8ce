# Sourced by the scripts that drive the real program as a person would: a home of its own, a
# virtual X server, and the simulated instrument on a pseudo-terminal as COM 1.
#   source scripts/virtual-desktop.sh BUILD_DIR [velquin-sim options...]
# Leaves DISPLAY, the XDG folders, OSTREL_COMPORTS and $home set; tidies up at exit.
home=$(mktemp -d)
sim=
# The server names its display once it accepts clients.
Xvfb -displayfd 3 -screen 0 1280x900x24 3>"$home/display" >/dev/null 2>&1 &
xvfb=$!
trap 'kill $xvfb $sim 2>/dev/null; rm -rf "$home"' EXIT
until [ -s "$home/display" ]; do sleep 0.05; done
export DISPLAY=:$(cat "$home/display") XDG_DATA_HOME=$home/data XDG_CONFIG_HOME=$home/config
export XDG_RUNTIME_DIR=$home/runtime
mkdir -m 700 "$XDG_RUNTIME_DIR"
"$1/tools/velquin-sim/velquin-sim" --pty "${@:2}" >"$home/sim" &
sim=$!
until [ -s "$home/sim" ]; do sleep 0.05; done
export OSTREL_COMPORTS=$(head -n 1 "$home/sim")
