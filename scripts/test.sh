#!/usr/bin/env bash
# scripts/test.sh [asan|tsan|all]
#
# Builds both ABIs and runs every test of each, the installed package's included. asan: the same with the address and undefined behaviour
# sanitizers; tsan: the thread sanitizer (64-bit); all: all of these. Installs what it needs; ends with "N passed, N failed".
set -uo pipefail
cd "$(dirname "$0")/.." || exit 1
source scripts/packages.sh

case "${1:-}" in
    '') presets=(x86_64 i386) ;;
    asan) presets=(x86_64-asan i386-asan) ;;
    tsan) presets=(x86_64-tsan) ;;
    all) presets=(x86_64 i386 x86_64-asan i386-asan x86_64-tsan) ;;
    *) fail "usage: scripts/test.sh [asan|tsan|all]" ;;
esac
need "${kBuildPackages[@]}" g++-multilib googletest "${kToolPackages[@]}"

passed=0 failed=0 summary=()

# record <preset> <passed> <failed> <remark>
record() {
    ((passed += $2, failed += $3))
    summary+=("$(printf '%-12s %5d passed %5d failed  %s' "$@")")
}

for preset in "${presets[@]}"; do
    echo "== $preset"
    begin=$SECONDS
    log=build/$preset.log
    mkdir -p build
    if ! { cmake --preset "$preset" && cmake --build --preset "$preset" -- -j "$(nproc)"; } > "$log" 2>&1; then
        grep -E -A 5 'error|Error|FAILED' "$log" | head -n 60
        record "$preset" 0 1 "does not build: $log"
        continue
    fi
    built=$((SECONDS - begin))
    warnings=$(grep -c 'warning:' "$log")
    log=build/$preset-tests.log
    ctest --preset "$preset" < /dev/null 2>&1 | tee "$log"
    # "98% tests passed, 1 tests failed out of 50"
    read -r bad all < <(sed -nE 's/^[0-9]+% tests passed, ([0-9]+) tests? failed out of ([0-9]+)$/\1 \2/p' "$log")
    if [[ -z ${all:-} ]]; then
        record "$preset" 0 1 "ran no test"
    else
        record "$preset" $((all - bad)) "$bad" "built in $built s, $warnings warnings, tested in $((SECONDS - begin - built)) s"
    fi
done

echo
printf '%s\n' "${summary[@]}"
echo "$passed passed, $failed failed"
((failed == 0 && passed > 0))
