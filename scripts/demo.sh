#!/usr/bin/env bash
# scripts/demo.sh [FILE]
#
# Takes a recording (any file that libsndfile reads; by default a spoken "front, center" from Debian's alsa-utils) through a telephone line in both
# ABIs, and draws what the line left of it; compands and expands it, and cores noise; sends an echo back and cancels it; measures a room and plays the recording
# there; puts clicks on the recording and takes them off; takes noise off by wavelets; designs the line's filters and measures them; dials a number and detects
# it; sends text through noise, uncoded and coded, and a modem's symbols over a line with echoes; finds the formants of a vowel, and speaks the recording again by
# coarse prediction; compares windows by what they make of a spectral line; and from Python filters the recording, detects its sounds and draws them. Writes the
# recordings, spectra and pictures to demo-out/, and a page of it all, demo-out/index.html.
set -uo pipefail
input=/usr/share/sounds/alsa/Front_Center.wav
(($#)) && input=$(realpath -m -- "$1")
cd "$(dirname "$0")/.." || exit 1
source scripts/packages.sh

packages=("${kBuildPackages[@]}" "${kWheelPackages[@]}" python3-matplotlib g++-multilib googletest gnuplot-nox sndfile-programs)
(($#)) || packages+=(alsa-utils)
need "${packages[@]}"
[[ -r $input ]] || fail "cannot read $input"
out=demo-out
mkdir -p build "$out"

# The examples read 16-bit WAV only: there is no 32-bit libsndfile to read the rest.
sndfile-convert -pcm16 "$input" "$out/input.wav" > build/demo.log 2>&1 || fail "libsndfile cannot read $input: $(tail -n 1 build/demo.log)"

programs=(telephone_line telephone_codes telephone_echo clicks denoise line_filters dial coded_text windows formants envelope room)
for abi in "${kAbis[@]}"; do
    if ! { cmake --preset "$abi" && cmake --build --preset "$abi" --target "${programs[@]}"; } > build/demo.log 2>&1; then
        grep -E -A 5 'error|FAILED' build/demo.log | head -n 40
        fail "$abi does not build: build/demo.log"
    fi
done
for abi in "${kAbis[@]}"; do
    to=$out/$abi
    mkdir -p "$to"
    rm -f "$to"/*.log
    echo "== $abi"
    run() {
        "build/$abi/bin/$1" "${@:2}" | tee -a "$to/$1.log"
        ((PIPESTATUS[0] == 0)) || fail "$1 failed"
        echo
    }
    run telephone_line "$out/input.wav" "$to"
    run telephone_codes "$to/line-8k.wav" "$to"
    run telephone_echo "$to/line-8k.wav" "$to"
    run clicks "$out/input.wav" "$to"
    run denoise "$to/line-8k.wav" "$to"
    run line_filters "$to/line-filters.txt"
    run dial "$to"
    run coded_text "$to/coded-text.txt"
    run windows "$to/windows.txt"
    run formants "$to/line-8k.wav" "$to/formants.txt" "$to/coarse.wav"
    run envelope "$to/line-8k.wav" "$to/envelope.txt"
    run envelope "$out/input.wav" "$to/envelope-input.txt"
    run room "$out/input.wav" "$to"
done

# compare <a> <b>: the filtered recordings (16-bit samples behind a header of 44 bytes) and the spectra (columns of numbers) of two runs.
compare() {
    if cmp -s "$out/$1/line.wav" "$out/$2/line.wav"; then
        echo "$1 and $2: the filtered recordings are the same to the bit"
    else
        paste <(od -An -v -t d2 -w2 -j 44 "$out/$1/line.wav") <(od -An -v -t d2 -w2 -j 44 "$out/$2/line.wav") | awk -v what="$1 and $2" '
            { d = $1 - $2; if (d < 0) d = -d; if (d) ++count; if (d > most) most = d }
            END { printf "%s: %d of %d samples differ, by at most %d of 65536 steps\n", what, count, NR, most }'
    fi
    if cmp -s "$out/$1/spectrum.txt" "$out/$2/spectrum.txt"; then
        echo "$1 and $2: the mean spectra are the same to 0.01 dB"
    else
        paste <(grep -v '#' "$out/$1/spectrum.txt") <(grep -v '#' "$out/$2/spectrum.txt") | awk -v what="$1 and $2" '
            { for (c = 2; c <= 3; ++c) { d = $c - $(c + 3); if (d < 0) d = -d; if (d > most) { most = d; at = $c } } }
            END { printf "%s: the mean spectra differ by at most %.2f dB, where they lie at %.0f dB\n", what, most, at }'
    fi
}
compare x86_64 i386
cmp -s "$out/x86_64/line.wav" "$out/i386/line.wav" && cmp -s "$out/x86_64/spectrum.txt" "$out/i386/spectrum.txt" ||
    echo "Filters and transforms add up in an order of their own at each SIMD level, and in i386 for its eight registers."

# draw <picture> <source> [title]
pictures=()
draw() {
    gnuplot -c "scripts/$1.gnuplot" "$2" "$out/$1.png" "${@:3}" 2> build/demo.log || fail "gnuplot: $(head -n 1 build/demo.log)"
    pictures+=("$1.png")
}
from=$out/x86_64
draw telephone_line "$from" "$(basename "$input")"
draw telephone_echo "$from"
draw denoise "$from"
draw line_filters "$from/line-filters.txt"
draw coded_text "$from/coded-text.txt"
draw windows "$from/windows.txt"
draw formants "$from/formants.txt"
draw room "$from"

echo "== Python"
python_wheel build/python build/demo.log build/x86_64/lib || fail "the Python package does not build: build/demo.log"
PYTHONPATH=build/python/site "$kPython" examples/python/recording.py "$out/input.wav" "$out/recording.png" | tee "$from/recording.log"
((PIPESTATUS[0] == 0)) || fail "recording.py failed"
pictures+=(recording.png)
echo
"$kPython" scripts/demo_page.py "$out" recording "${programs[@]}" || fail "no page"
echo "written to $out: index.html, which shows all, ${pictures[*]}, and in $(printf '%s ' "${kAbis[@]}")the recordings $(cd "$from" && echo *.wav)"
