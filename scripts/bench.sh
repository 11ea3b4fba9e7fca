#!/usr/bin/env bash
# scripts/bench.sh [FILTER]
#
# Builds and runs the benchmarks: 64-bit beside the peers that Debian packages, 32-bit beside plain loops and FFTW. FILTER is a regular expression over
# row names <operation>/<who>/<size>. Five repetitions of each row, in random order within a program, give its least time and how far from it the others
# lie. Writes bench-out/<abi>.csv, <abi>-ratios.csv and a plot of each operation; with TEVS_LEVEL set, <abi>-level<N>. The 32-bit tables have, as after256,
# each row's time in a process in which another library has run 256-bit code, over its time in a clean one. Afterwards
#
#     scripts/bench_tables.py --document docs/performance.md
#
# renews the tables of the documentation.
set -uo pipefail
cd "$(dirname "$0")/.." || exit 1
source scripts/packages.sh

filter=${1:-.}
out=bench-out
need "${kBuildPackages[@]}" python3 g++-multilib gnuplot-nox libbenchmark-dev libfftw3-dev libvolk2-dev libliquid-dev libspeexdsp-dev libsleef-dev libspandsp-dev libgsl-dev libosmocore-dev libhwy-dev
mkdir -p build "$out"

# The 32-bit libraries of Google Benchmark and FFTW have no package here: they are built from Debian's source packages, fetched with an index of its own.
# source_of <package>: unpacked in build/<package>-source.
source_of() {
    local dir=$PWD/build/$1-source uri suite component
    [[ -f $dir/unpacked ]] && return
    rm -rf "$dir" && mkdir -p "$dir/lists/partial" || return
    read -r uri suite component < <(apt-get indextargets --format '$(REPO_URI) $(CODENAME) $(COMPONENT)' 'Created-By: Packages' 'Label: Debian' \
                                                         'Component: main' 2> /dev/null)
    echo "deb-src ${uri:-http://deb.debian.org/debian} ${suite:-bookworm} ${component:-main}" > "$dir/source.list"
    (
        cd "$dir" || exit
        apt=(apt-get -q -o "Dir::Etc::sourcelist=$dir/source.list" -o Dir::Etc::sourceparts=- -o "Dir::State::lists=$dir/lists"
             -o "Dir::Cache=$dir" -o APT::Sandbox::User=root)
        "${apt[@]}" update && "${apt[@]}" source --download-only "$1" && tar --strip-components=1 -xf "$1"_*.orig.tar.* && touch unpacked
    ) > "$dir/log" 2>&1 < /dev/null
}

# FFTW for 32-bit with SSE2, the widest vectors that the library itself uses there; in build/fftw-i386.
fftw_i386() {
    local prefix=$PWD/build/fftw-i386 precision
    [[ -f $prefix/lib/libfftw3.a ]] && return
    source_of fftw3 || return
    for precision in --enable-single ''; do
        mkdir -p "build/fftw3-source/build$precision" || return
        (
            cd "build/fftw3-source/build$precision" && ../configure --quiet ${precision:+"$precision"} --enable-sse2 --disable-fortran --disable-doc \
                --host=i686-linux-gnu --prefix="$prefix" CC='gcc -m32' && make -s -j "$(nproc)" install
        ) > "build/fftw3-source/log$precision" 2>&1 < /dev/null || return
    done
}

# build <preset> [<cmake option>...]
build() {
    local log=build/$1.log
    if ! { cmake --preset "$@" && cmake --build --preset "$1" -- -j "$(nproc)"; } > "$log" 2>&1; then
        grep -E -A 5 'error|FAILED' "$log" | head -n 40
        fail "$1 does not build: $log"
    fi
}

# measure <abi> <preset>: every program's rows, under a heading that says where.
measure() {
    local abi=$1 preset=$2 name=$1${TEVS_LEVEL:+-level$TEVS_LEVEL} program
    local runs=$out/$name-runs.csv
    {
        echo "# machine: $(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1), $(nproc) processors"
        echo "# compiler: $(c++ --version | head -n 1)"
        echo "# ABI: $([[ $abi == i386 ]] && echo 32-bit || echo 64-bit)"
        echo "# flags: library -O2, kernels -O3 at each SIMD level; plain loops -O3 with finite math for level $plain"
        echo "# threads: 1"
    } > "$runs"
    for program in build/"$preset"/bin/*_bench; do
        [[ -x $program ]] || continue
        echo "== $abi $(basename "$program")"
        OMP_NUM_THREADS=1 TEVS_BENCH_AFTER256=1 taskset -c "${TEVS_BENCH_CPU:-$(($(nproc) - 1))}" "$program" --benchmark_filter="$filter" --benchmark_min_time=0.02 \
            --benchmark_repetitions=5 --benchmark_enable_random_interleaving=true --benchmark_report_aggregates_only=false --benchmark_format=csv \
            > "$out/$name-program.csv" 2> "$out/$name-program.err" < /dev/null || fail "$program: $(tail -n 1 "$out/$name-program.err")"
        grep -q '^# level: ' "$runs" || sed -n 's/^tevs_level: /# level: /p' "$out/$name-program.err" >> "$runs"
        # name,iterations,real_time,cpu_time,time_unit,bytes_per_second,items_per_second,...
        awk -F, '{
            gsub(/"/, "", $1)
            if (split($1, part, "/") >= 3 && $1 !~ /_(mean|median|stddev|cv)$/ && $7 > 0) printf "%s,%s,%s,%.5g\n", part[1], part[2], part[3], 1e9 / $7
        }' "$out/$name-program.csv" >> "$runs"
    done
    rm -f "$out/$name-program".*
    python3 scripts/bench_tables.py "$runs" "$name" && plot "$name"
}

# plot <name>: one picture for each operation, a line for each implementation.
plot() {
    local operation who lines style
    while read -r operation; do
        lines=()
        while read -r who; do
            style="lw 1.5"
            [[ $who == tevs ]] && style='lw 3 lc rgb "#c2410c"'
            lines+=("'< awk -F, \"\\\$1 == \\\"$operation\\\" && \\\$2 == \\\"$who\\\"\" $out/$1.csv' using 3:4 title '$who' $style")
        done < <(awk -F, -v op="$operation" '$1 == op { print $2 }' "$out/$1.csv" | sort -u)
        gnuplot <<- END 2> build/gnuplot.err || fail "gnuplot: $(head -n 1 build/gnuplot.err)"
			set terminal pngcairo size 900,560 font "sans,11" background rgb "white"
			set output "$out/$1-$operation.png"
			set datafile separator ","
			set title "$operation, $1" noenhanced
			set logscale xy
			set autoscale fix
			set offsets graph 0.03, graph 0.03, graph 0.05, graph 0.05
			set border 3 lc rgb "#555555"
			set tics nomirror out
			set grid lc rgb "#e5e7eb"
			set linetype 1 lc rgb "#6b7280" pt 7 ps 0.8
			set linetype 2 lc rgb "#2563eb" pt 7 ps 0.8
			set linetype 3 lc rgb "#059669" pt 7 ps 0.8
			set linetype 4 lc rgb "#7c3aed" pt 7 ps 0.8
			set linetype 5 lc rgb "#b45309" pt 7 ps 0.8
			set key noenhanced outside
			set format x "%.0s%c"
			set format y "%g"
			set ytics 0.001, 2
			set xlabel "elements"
			set ylabel "ns per element (lower is better)"
			set style data linespoints
			plot $(IFS=,; echo "${lines[*]}")
		END
    done < <(grep -v '^#' "$out/$1.csv" | awk -F, 'NR > 1 { print $1 }' | sort -u)
}

plain=2
[[ ${TEVS_LEVEL:-} != 1 ]] || plain=1
build bench -DTEVS_PLAIN_LEVEL="$plain"
measure x86_64 bench || exit 1
if source_of benchmark; then
    fftw_i386 || echo "no FFTW in the 32-bit rows: build/fftw3-source/log*"
    build bench-i386 -DTEVS_PLAIN_LEVEL="$plain" -DTEVS_BENCHMARK_SOURCE="$PWD/build/benchmark-source" -DTEVS_PEERS_I386="$PWD/build/fftw-i386"
    measure i386 bench-i386
else
    echo "no 32-bit benchmarks: the source package of Google Benchmark cannot be had (build/benchmark-source/log)"
fi
echo "written: $out/"
