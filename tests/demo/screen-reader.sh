#!/usr/bin/env bash
# Reads the demo's window from outside, as a screen reader does: a virtual X display, a private
# session bus with the accessibility bus on it, the demo with Qt's AT-SPI bridge on, and a
# Python AT-SPI client that lists the accessible tree and looks for the references and their
# status. Usage: screen-reader.sh XREF_DEMO WORK_DIR
set -euo pipefail

demo=$1
work=$2
here=$(cd "$(dirname "$0")" && pwd)
# The system Python: pyatspi comes as a Debian package.
python=/usr/bin/python3
for tool in Xvfb dbus-run-session $python; do
    if ! command -v "$tool" >/dev/null; then
        echo "$tool is missing: run scripts/setup.sh" >&2
        exit 1
    fi
done
if ! $python -c 'import pyatspi' 2>/dev/null; then
    echo "pyatspi is missing: run scripts/setup.sh (python3-pyatspi, at-spi2-core)" >&2
    exit 1
fi

rm -rf "$work"
mkdir -p "$work/config" "$work/data" "$work/runtime"
chmod 700 "$work/runtime"
export XDG_CONFIG_HOME="$work/config" XDG_DATA_HOME="$work/data" XDG_RUNTIME_DIR="$work/runtime"
drawing=$(QT_QPA_PLATFORM=offscreen "$demo" --make-sample "$work/project")

display=""
for n in $(seq 141 190); do
    if [ ! -e "/tmp/.X11-unix/X$n" ] && [ ! -e "/tmp/.X$n-lock" ]; then
        display=":$n"
        break
    fi
done
[ -n "$display" ] || { echo "no free X display number" >&2; exit 1; }

Xvfb "$display" -screen 0 1400x900x24 -nolisten tcp >"$work/xvfb.log" 2>&1 &
xvfb=$!
trap 'kill $xvfb 2>/dev/null || true; wait $xvfb 2>/dev/null || true' EXIT
for _ in $(seq 1 100); do
    [ -e "/tmp/.X11-unix/X${display#:}" ] && break
    sleep 0.1
done
export DISPLAY=$display
unset QT_QPA_PLATFORM WAYLAND_DISPLAY

# Everything on the private session bus: the accessibility bus is started on demand by it.
dbus-run-session -- bash -c '
    set -euo pipefail
    QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 QT_ACCESSIBILITY=1 "$1" "$2" >"$3/demo.log" 2>&1 &
    demo=$!
    trap "kill $demo 2>/dev/null || true; wait $demo 2>/dev/null || true" EXIT
    "$5" "$4/atspi_tree.py" xref-demo "$3/accessible-tree.txt"
' screen-reader "$demo" "$drawing" "$work" "$here" "$python"
