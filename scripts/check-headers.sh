#!/usr/bin/env bash
# Checks that every header of the given src/ folders compiles on its own. The precompiled headers
# of a normal build hide a missing include; this compiles each header alone, without them.
# Usage: scripts/check-headers.sh BUILD_DIR [FOLDER...]   (default folders: framework host util)
# BUILD_DIR must be configured already: the export headers are generated into BUILD_DIR/include.
set -euo pipefail
cd "$(dirname "$0")/.."

build=${1:?usage: $0 BUILD_DIR [FOLDER...]}
shift
folders=("$@")
if [ ${#folders[@]} -eq 0 ]; then
    folders=(framework host util)
fi

cxx=${CXX:-g++}
read -r -a qt_flags <<<"$(pkg-config --cflags Qt6Widgets Qt6Svg Qt6Xml)"
flags=(-std=c++17 -Wall -Wextra -Werror -fsyntax-only -fPIC -Isrc "-I$build/include"
    "${qt_flags[@]}")

failed=0
for folder in "${folders[@]}"; do
    for header in src/"$folder"/*.h; do
        if ! printf '#include "%s"\n' "${header#src/}" |
            "$cxx" "${flags[@]}" -x c++ - -o /dev/null 2>"$build/header-check.log"; then
            echo "FAIL $header"
            sed 's/^/    /' "$build/header-check.log" | head -20
            failed=$((failed + 1))
        fi
    done
done
rm -f "$build/header-check.log"
if [ "$failed" -ne 0 ]; then
    echo "$failed header(s) do not compile on their own"
    exit 1
fi
echo "every header compiles on its own"
