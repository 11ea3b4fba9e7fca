#!/usr/bin/env bash
# scripts/bench.sh [FILTER]
#
# Builds and runs the benchmarks: 64-bit beside the peers that Debian packages, 32-bit beside plain loops and FFTW. FILTER is a regular expression over
# row names <operation>/<who>/<size>. Writes bench-out/<abi>.csv, bench-out/<abi>-ratios.csv and a plot of each operation. The 32-bit tables have, as
# after256, each row's time in a process in which another library has run 256-bit code, over its time in a clean one.
set -uo pipefail
cd "$(dirname "$0")/.." || exit 1
source scripts/packages.sh

filter=${1:-.}
out=bench-out
need "${kBuildPackages[@]}" g++-multilib gnuplot-nox libbenchmark-dev libfftw3-dev libvolk2-dev libliquid-dev libspeexdsp-dev libsleef-dev libspandsp-dev libgsl-dev libosmocore-dev libhwy-dev
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

# measure <abi> <preset>: every program's rows, the median of five repetitions each, under a heading that says where.
measure() {
    local abi=$1 preset=$2 csv=$out/$1.csv program rows
    {
        echo "# machine: $(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1), $(nproc) processors"
        echo "# compiler: $(c++ --version | head -n 1)"
        echo "# flags: $abi; library -O2, kernels -O3 at each SIMD level; plain loops -O3 with finite math $([[ $abi == i386 ]] && echo '-mavx2 -mfma on 128 bits' || echo -march=x86-64-v3)"
        echo "# TEVS_LEVEL: ${TEVS_LEVEL:-not set}; one thread; median of 5"
        echo "operation,who,size,ns_per_element"
    } > "$csv"
    for program in build/"$preset"/bin/*_bench; do
        [[ -x $program ]] || continue
        echo "== $abi $(basename "$program")"
        rows=$(OMP_NUM_THREADS=1 TEVS_BENCH_AFTER256=1 taskset -c "$(($(nproc) - 1))" "$program" --benchmark_filter="$filter" --benchmark_min_time=0.02 --benchmark_repetitions=5 \
            --benchmark_report_aggregates_only=true --benchmark_format=csv 2> build/bench.err < /dev/null) || fail "$program: $(tail -n 1 build/bench.err)"
        # name,iterations,real_time,cpu_time,time_unit,bytes_per_second,items_per_second,...
        awk -F, '/_median"/ {
            gsub(/"/, "", $1); sub(/_median$/, "", $1)
            if (split($1, part, "/") >= 3 && $7 > 0) printf "%s,%s,%s,%.4g\n", part[1], part[2], part[3], 1e9 / $7
        }' <<< "$rows" >> "$csv"
    done
    grep -q '^[^#].*,tevs,' "$csv" || { echo "no row matches $filter"; return 1; }
    ratios "$abi"
    plot "$abi"
}

# ratios <abi>: how much faster than the fastest other one, what part of the load and store limit, and how much slower after 256-bit code.
ratios() {
    grep -v '^#' "$out/$1.csv" | awk -F, '
        NR == 1 { print "operation,size,ns_per_element,best_other,ratio,of_limit,after256"; next }
        { key = $1 "," $3; if (!(key in seen)) { seen[key]; order[++keys] = key } }
        $2 == "tevs" { own[key] = $4; next }
        $2 == "limit" { limit[key] = $4; next }
        $2 == "after256" { after[key] = $4; next }
        !(key in best) || $4 < best[key] { best[key] = $4; who[key] = $2 }
        END { for (i = 1; i <= keys; ++i) { key = order[i]
              if (key in own && key in best)
                  printf "%s,%s,%s,%.2f,%s,%s\n", key, own[key], who[key], best[key] / own[key],
                         key in limit ? sprintf("%.0f%%", 100 * limit[key] / own[key]) : "", key in after ? sprintf("%.2f", after[key] / own[key]) : "" } }' > "$out/$1-ratios.csv"
    awk -F, '{ printf "%-32s %9s %15s  %-12s %6s %9s %9s\n", $1, $2, $3, $4, $5, $6, $7 }' "$out/$1-ratios.csv"
}

# plot <abi>: one picture for each operation, a line for each implementation.
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

build bench
measure x86_64 bench || exit 1
if source_of benchmark; then
    fftw_i386 || echo "no FFTW in the 32-bit rows: build/fftw3-source/log*"
    build bench-i386 -DTEVS_BENCHMARK_SOURCE="$PWD/build/benchmark-source" -DTEVS_PEERS_I386="$PWD/build/fftw-i386"
    measure i386 bench-i386
else
    echo "no 32-bit benchmarks: the source package of Google Benchmark cannot be had (build/benchmark-source/log)"
fi
echo "written: $out/"
