#!/usr/bin/env bash
# Sets up a fresh Debian 12 machine, builds the given presets (default: release and asan) and
# runs every test of each; for the release preset also installs the library and builds and runs
# a small host project against the installed package.
set -euo pipefail
cd "$(dirname "$0")/.."

presets=("$@")
if [ ${#presets[@]} -eq 0 ]; then
    presets=(release asan)
fi
jobs=$(nproc)

bash scripts/setup.sh

for preset in "${presets[@]}"; do
    echo "=== $preset: configure and build"
    # KVX_BUILD_BENCH=OFF leaves the benchmark programs out (CI does, to stay within its time).
    cmake --preset "$preset" ${KVX_BUILD_BENCH:+-DKVX_BUILD_BENCH=$KVX_BUILD_BENCH} >/dev/null
    cmake --build --preset "$preset" -j "$jobs"
    echo "=== $preset: tests"
    ctest --preset "$preset" -j "$jobs"
    if [ "$preset" = release ]; then
        echo "=== release: install and build a host against the package"
        rm -rf build/install build/consumer
        cmake --install build/release --prefix "$PWD/build/install" >/dev/null
        cmake -S examples/consumer -B build/consumer -DCMAKE_PREFIX_PATH="$PWD/build/install" >/dev/null
        cmake --build build/consumer -j "$jobs"
        QT_QPA_PLATFORM=offscreen build/consumer/consumer
    fi
done
echo "=== all tests passed: ${presets[*]}"
