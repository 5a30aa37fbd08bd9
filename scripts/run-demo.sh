#!/usr/bin/env bash
# Sets up a fresh Debian 12 machine, builds the demo host and runs it. Without a display it
# writes a screenshot instead (build/demo.png) and prints one line per reference: name, status
# and where the file was found. Extra arguments go to the demo (--dark, --repository DIR, ...).
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release --target xref-demo -j "$(nproc)"

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    exec build/release/bin/xref-demo "$@"
fi
QT_QPA_PLATFORM=offscreen build/release/bin/xref-demo --screenshot build/demo.png "$@"
echo "No display: wrote build/demo.png"
