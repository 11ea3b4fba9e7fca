#!/usr/bin/env bash
# scripts/bench_python.sh
#
# The Python package beside NumPy and SciPy, the same programs: prints a table, and writes it to bench-out/python.md. Installs what it needs.
set -uo pipefail
cd "$(dirname "$0")/.." || exit 1
source scripts/packages.sh

need "${kBuildPackages[@]}" "${kPythonPackages[@]}"
mkdir -p build bench-out
log=build/bench-python.log
{ cmake --preset x86_64 -DTEVS_TESTS=OFF -B build/bench-python-library && cmake --build build/bench-python-library -- -j "$(nproc)"; } > "$log" 2>&1 || fail "the library does not build: $log"
python_wheel build/bench-python "$log" build/bench-python-library/lib || fail "the Python package does not build: $log"
PYTHONPATH=$PWD/build/bench-python/site OMP_NUM_THREADS=1 "$kPython" bench/python/compare.py | tee bench-out/python.md
