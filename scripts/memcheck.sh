#!/usr/bin/env bash
# Runs the demo host's offscreen screenshot under valgrind's memcheck: the sample project in the
# light list view, in the dark tree view at 2x, and as a document repository. Any invalid read or
# write, use of an uninitialised value or definitely lost block fails the script.
#
#   scripts/memcheck.sh [build directory, default build/release]
#
# Needs valgrind (Debian: valgrind) and a built xref-demo.
set -euo pipefail
cd "$(dirname "$0")/.."

build=${1:-build/release}
demo=$PWD/$build/bin/xref-demo
[ -x "$demo" ] || { echo "no $demo: build the release preset first" >&2; exit 2; }
command -v valgrind >/dev/null || { echo "valgrind not found: apt-get install valgrind" >&2; exit 2; }

# A private home, so that the run neither reads nor changes the user's profile and sample.
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export HOME=$scratch/home XDG_RUNTIME_DIR=$scratch/runtime QT_QPA_PLATFORM=offscreen
mkdir -p "$HOME" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"

"$demo" --make-sample "$scratch/sample" >/dev/null 2>&1
drawing="$scratch/sample/Harbour site.dwg"

status=0
run() {
    local name=$1
    shift
    local log=$build/memcheck-$name.log
    if valgrind --tool=memcheck --leak-check=full --show-leak-kinds=definite \
        --errors-for-leak-kinds=definite --track-origins=yes --num-callers=30 \
        --error-exitcode=99 "$demo" --screenshot "$scratch/$name.png" "$@" >/dev/null 2>"$log"; then
        echo "$name: $(grep -o 'ERROR SUMMARY: [0-9]* errors' "$log"), $(grep -o 'total heap usage: [0-9,]* allocs' "$log")"
    else
        status=1
        echo "$name: FAILED, see $log"
        grep -E 'Invalid|uninitialised|definitely lost|ERROR SUMMARY' "$log" | head -20
    fi
}
run light "$drawing"
run dark-tree --dark --scale 2 --view tree --select Grid "$drawing"
run repository --repository "$scratch/repo"
exit $status
