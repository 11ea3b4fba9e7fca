#!/usr/bin/env bash
# scripts/test.sh [asan|tsan|all]
#
# Builds both ABIs and runs every test of each, the installed package's included, and those of the Python package (64-bit). asan: the same with the address and undefined behaviour
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
need "${kBuildPackages[@]}" "${kToolPackages[@]}" "${kPythonPackages[@]}" g++-multilib googletest pkg-config abigail-tools

passed=0 failed=0 summary=()

# record <preset> <passed> <failed> <remark>
record() {
    ((passed += $2, failed += $3))
    summary+=("$(printf '%-12s %5d passed %5d failed  %s' "$@")")
}

# The Python package beside the build of x86_64: the tests of what its wheel holds.
python_package() {
    local out=build/python log=build/python.log begin=$SECONDS
    echo "== python"
    if ! python_wheel "$out" "$log" build/x86_64/lib; then
        grep -E -A 5 'rror|no rule' "$log" | head -n 40
        record python 0 1 "does not build: $log"
        return
    fi
    log=build/python-tests.log
    PYTHONPATH=$PWD/$out/site "$kPython" -m pytest -q -p no:cacheprovider python/tests < /dev/null 2>&1 | tee "$log" | tail -n 40
    # "1 failed, 525 passed in 12.97s"
    local bad good
    good=$(sed -nE 's/^.*\b([0-9]+) passed.*$/\1/p' "$log" | tail -n 1)
    bad=$(sed -nE 's/^.*\b([0-9]+) (failed|errors?).*$/\1/p' "$log" | tail -n 1)
    [[ -n $good ]] || bad=${bad:-1}
    record python "${good:-0}" "${bad:-0}" "$(ls "$out"/*.whl), built and tested in $((SECONDS - begin)) s"
}

for preset in "${presets[@]}"; do
    echo "== $preset"
    begin=$SECONDS
    log=build/$preset.log
    mkdir -p build
    static=ON
    [[ $preset != *san ]] || static=OFF   # no sanitizer is linked statically
    if ! { cmake --preset "$preset" -DTEVS_STATIC=$static && cmake --build --preset "$preset" -- -j "$(nproc)"; } > "$log" 2>&1; then
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
    [[ $preset != x86_64 ]] || python_package
done

echo
printf '%s\n' "${summary[@]}"
echo "$passed passed, $failed failed"
((failed == 0 && passed > 0))
