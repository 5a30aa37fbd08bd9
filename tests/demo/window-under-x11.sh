#!/usr/bin/env bash
# Drives the demo's real window on a virtual X display with real input events: clicks a row,
# opens its context menu with a right click, renames it with F2, typing and Enter, and checks
# the saved drawing. Usage: window-under-x11.sh XREF_DEMO WORK_DIR
set -euo pipefail

demo=$1
work=$2
for tool in Xvfb xdotool import; do
    if ! command -v "$tool" >/dev/null; then
        echo "$tool is missing: run scripts/setup.sh (it installs xvfb, xdotool and imagemagick)" >&2
        exit 1
    fi
done

rm -rf "$work"
mkdir -p "$work/config" "$work/data"
export XDG_CONFIG_HOME="$work/config" XDG_DATA_HOME="$work/data"
drawing=$("$demo" --make-sample "$work/project")

# A display number nobody uses.
display=""
for n in $(seq 90 140); do
    if [ ! -e "/tmp/.X11-unix/X$n" ] && [ ! -e "/tmp/.X$n-lock" ]; then
        display=":$n"
        break
    fi
done
[ -n "$display" ] || { echo "no free X display number" >&2; exit 1; }

pids=()
# The demo goes before the display it draws on.
cleanup() {
    for ((i = ${#pids[@]} - 1; i >= 0; i--)); do
        kill "${pids[i]}" 2>/dev/null || true
        wait "${pids[i]}" 2>/dev/null || true
    done
}
trap cleanup EXIT

Xvfb "$display" -screen 0 1400x900x24 -nolisten tcp >"$work/xvfb.log" 2>&1 &
pids+=($!)
for _ in $(seq 1 100); do
    [ -e "/tmp/.X11-unix/X${display#:}" ] && break
    sleep 0.1
done
export DISPLAY=$display
unset QT_QPA_PLATFORM WAYLAND_DISPLAY

"$demo" --trace "$drawing" >"$work/trace.txt" 2>"$work/demo.log" &
pids+=($!)

# Waits up to $2 tenths of a second for a line of the trace matching $1; prints it.
await() {
    for _ in $(seq 1 "$2"); do
        if line=$(grep -m1 -P "$1" "$work/trace.txt"); then
            echo "$line"
            return 0
        fi
        sleep 0.1
    done
    return 1
}

row=$(await '^row\tSurvey\t' 200) || { echo "the window never listed its rows" >&2; cat "$work/demo.log" >&2; exit 1; }
read -r _ _ x y <<<"$(echo "$row" | tr '\t' ' ')"
xdotool search --sync --onlyvisible --name "External References" >/dev/null
sleep 0.5

xdotool mousemove "$x" "$y" click 1
await '^selected\tSurvey$' 30 >/dev/null || { echo "the click selected nothing" >&2; exit 1; }

xdotool click 3
await '^menu\t1$' 30 >/dev/null || { echo "no context menu for the clicked row" >&2; exit 1; }
sleep 0.5
import -window root "$work/context-menu.png"
xdotool key Escape
sleep 0.3

xdotool key F2
sleep 0.3
xdotool key ctrl+a
xdotool type --delay 20 "Survey 2024"
xdotool key Return

for _ in $(seq 1 50); do
    if "$demo" --list "$drawing" | grep -qP '^  Survey 2024\tLoaded\t'; then
        import -window root "$work/renamed.png"
        echo "renamed through real X input; pictures in $work"
        exit 0
    fi
    sleep 0.1
done
echo "the saved drawing has no reference \"Survey 2024\":" >&2
"$demo" --list "$drawing" >&2
exit 1
