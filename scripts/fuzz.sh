#!/usr/bin/env bash
# scripts/fuzz.sh [SECONDS]
#
# Builds the library with clang's address and undefined behaviour sanitizers, and lets libFuzzer choose functions, arguments and streams (fuzz/calls.c) for SECONDS, ten minutes
# by default, on all processors. What it has learnt stays in build/fuzz/corpus, for the next time; an input that shows a fault in fuzz-out/, and the script fails.
# Without sanitizers the same calls are a test of scripts/test.sh.
set -uo pipefail
cd "$(dirname "$0")/.." || exit 1
source scripts/packages.sh

seconds=${1:-600}
[[ $seconds =~ ^[1-9][0-9]*$ ]] || fail "usage: scripts/fuzz.sh [SECONDS]"
need cmake ninja-build python3 clang libclang-rt-14-dev libomp-dev llvm
corpus=build/fuzz/corpus out=fuzz-out
mkdir -p "$corpus" "$out"
if ! { cmake --preset fuzz && cmake --build --preset fuzz --target fuzz_calls; } > build/fuzz.log 2>&1; then
    grep -E -A 5 'error|FAILED' build/fuzz.log | head -n 40
    fail "the fuzz target does not build: build/fuzz.log"
fi
# A direct filter of 32768 taps over as many samples takes ten seconds, and more on a busy machine. More memory than 64 MB for a record is refused, as where there is none.
# Processes of its own, for one that ends does not end the others.
ASAN_OPTIONS=allocator_may_return_null=1:max_allocation_size_mb=64 OMP_NUM_THREADS=1 build/fuzz/bin/fuzz_calls "$corpus" \
    -fork="$(nproc)" -max_total_time="$seconds" -max_len=512 -malloc_limit_mb=0 -timeout=600 -report_slow_units=600 -artifact_prefix="$out/" 2>&1 | tee build/fuzz-run.log |
    grep --line-buffered -E '^#[0-9]+: cov|^==|ERROR|is refused|writes|fault|answers|takes what|changes'
(exit "${PIPESTATUS[0]}") || fail "a fault: the input in $out/, the report in build/fuzz-run.log. Again: build/fuzz/bin/fuzz_calls $out/FILE"
echo "no fault in $seconds s"
