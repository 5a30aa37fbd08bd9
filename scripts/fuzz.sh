#!/usr/bin/env bash
# Builds the libFuzzer targets (the fuzz preset, clang) and runs each for a while on its seed
# corpus. Findings land in build/fuzz/findings/<target>/; a run that finds a crash, a leak or a
# hang fails the script. The executions of each target are summed up at the end.
#
#   scripts/fuzz.sh [seconds per target, default 60] [target ...]
#
# FUZZ_RUNS=N stops each target after N executions instead, if that comes before the time limit
# (the campaign that records ten million executions per target sets it).
# Needs clang and its runtime libraries (Debian: clang, libclang-rt-14-dev). FUZZ_JOBS sets the
# build jobs (default: the number of processors).
set -uo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-60}
shift || true
jobs=${FUZZ_JOBS:-$(nproc)}

if ! command -v clang++ >/dev/null; then
    echo "clang++ not found: install clang and libclang-rt-14-dev" >&2
    exit 2
fi

mkdir -p build
cmake --preset fuzz >build/fuzz-configure.log 2>&1 || { cat build/fuzz-configure.log; exit 2; }
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    for source in fuzz/*.cpp; do
        targets+=("$(basename "$source" .cpp)")
    done
fi
cmake --build --preset fuzz -j "$jobs" --target "${targets[@]}" >build/fuzz/build.log 2>&1 ||
    { tail -50 build/fuzz/build.log; exit 2; }

# Leaks are reported by the fuzzer itself; Qt's and fontconfig's own allocations are not ours.
export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1:allocator_may_return_null=1}
export LSAN_OPTIONS=${LSAN_OPTIONS:-suppressions=$PWD/tests/lsan.supp:print_suppressions=0}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}
export QT_QPA_PLATFORM=offscreen

status=0
summary=()
for target in "${targets[@]}"; do
    corpus=fuzz/corpus/$target
    # Seeds stay as committed; what the run learns goes to a scratch corpus beside the build.
    work=build/fuzz/corpus/$target
    findings=build/fuzz/findings/$target
    mkdir -p "$work" "$findings"
    seeds=()
    [ -d "$corpus" ] && seeds+=("$corpus")
    log=build/fuzz/$target.log
    echo "=== $target: ${seconds}s"
    build/fuzz/bin/"$target" "$work" "${seeds[@]}" -max_total_time="$seconds" -runs="${FUZZ_RUNS:--1}" -timeout=10 \
        -rss_limit_mb=2048 -max_len=65536 -print_final_stats=1 \
        -artifact_prefix="$findings/" >"$log" 2>&1
    result=$?
    runs=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$log" | grep -o '[0-9]*$' | tail -1)
    if [ $result -ne 0 ]; then
        status=1
        summary+=("$target: FAILED after ${runs:-?} executions, see $log and $findings/")
        grep -E 'ERROR|SUMMARY|^    #[0-9]' "$log" | head -20
    else
        summary+=("$target: ${runs:-?} executions, no findings")
    fi
done

echo "=== summary"
printf '%s\n' "${summary[@]}"
exit $status
