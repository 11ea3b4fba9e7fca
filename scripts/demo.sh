#!/usr/bin/env bash
# scripts/demo.sh [FILE]
#
# Takes a recording (any file that libsndfile reads; by default a spoken "front, center" from Debian's alsa-utils) through a telephone line in both
# ABIs, and draws what the line left of it; compands and expands it, dials a number and detects it, and cores noise; compares windows by what they make of a
# spectral line; sends an echo back and cancels it; sends text through noise, uncoded and coded. Writes the recordings, spectra and pictures to demo-out/.
set -uo pipefail
input=/usr/share/sounds/alsa/Front_Center.wav
(($#)) && input=$(realpath -m -- "$1")
cd "$(dirname "$0")/.." || exit 1
source scripts/packages.sh

packages=("${kBuildPackages[@]}" g++-multilib googletest gnuplot-nox sndfile-programs)
(($#)) || packages+=(alsa-utils)
need "${packages[@]}"
[[ -r $input ]] || fail "cannot read $input"
out=demo-out
mkdir -p build "$out"

# The examples read 16-bit WAV only: there is no 32-bit libsndfile to read the rest.
sndfile-convert -pcm16 "$input" "$out/input.wav" > build/demo.log 2>&1 || fail "libsndfile cannot read $input: $(tail -n 1 build/demo.log)"

for abi in "${kAbis[@]}"; do
    if ! { cmake --preset "$abi" && cmake --build --preset "$abi" --target telephone_line telephone_codes telephone_echo windows envelope dial coded_text; } > build/demo.log 2>&1; then
        grep -E -A 5 'error|FAILED' build/demo.log | head -n 40
        fail "$abi does not build: build/demo.log"
    fi
done
for abi in "${kAbis[@]}"; do
    mkdir -p "$out/$abi"
    echo "== $abi"
    "build/$abi/bin/telephone_line" "$out/input.wav" "$out/$abi" || fail "telephone_line failed"
    echo
    "build/$abi/bin/telephone_codes" "$out/$abi/line-8k.wav" "$out/$abi" || fail "telephone_codes failed"
    echo
    "build/$abi/bin/dial" "$out/$abi" || fail "dial failed"
    echo
    "build/$abi/bin/coded_text" "$out/$abi/coded-text.txt" || fail "coded_text failed"
    echo
    "build/$abi/bin/telephone_echo" "$out/$abi/line-8k.wav" "$out/$abi" || fail "telephone_echo failed"
    echo
    "build/$abi/bin/windows" "$out/$abi/windows.txt" || fail "windows failed"
    echo
    "build/$abi/bin/envelope" "$out/$abi/line-8k.wav" "$out/$abi/envelope.txt" || fail "envelope failed"
    "build/$abi/bin/envelope" "$out/input.wav" "$out/$abi/envelope-input.txt" || fail "envelope failed"
    echo
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

gnuplot -c scripts/demo.gnuplot "$out/x86_64" "$out/telephone_line.png" "$(basename "$input")" 2> build/demo.log || fail "gnuplot: $(head -n 1 build/demo.log)"
gnuplot -c scripts/windows.gnuplot "$out/x86_64/windows.txt" "$out/windows.png" 2> build/demo.log || fail "gnuplot: $(head -n 1 build/demo.log)"
gnuplot -c scripts/coded.gnuplot "$out/x86_64/coded-text.txt" "$out/coded_text.png" 2> build/demo.log || fail "gnuplot: $(head -n 1 build/demo.log)"
gnuplot -c scripts/echo.gnuplot "$out/x86_64" "$out/telephone_echo.png" 2> build/demo.log || fail "gnuplot: $(head -n 1 build/demo.log)"
echo "written: $out/{telephone_line,telephone_echo,windows,coded_text}.png, $out/{x86_64,i386}/{line,companded,dialled,noisy,cored,channel,echo,cancelled}.wav"
