#!/usr/bin/env bash
# scripts/compare_sox.sh [SECONDS]
#
# tevs and SoX on the same recording: processor time of resampling and filtering an hour (or SECONDS) of stereo, and what each leaves in the stop-band and adds as noise.
# Writes bench-out/sox.md. Needs 3 GB below $TMPDIR for the hour.
set -uo pipefail
cd "$(dirname "$0")/.." || exit 1
source scripts/packages.sh

seconds=${1:-3600}
[[ $seconds =~ ^[1-9][0-9]*$ ]] || fail "usage: scripts/compare_sox.sh [SECONDS]"
need "${kBuildPackages[@]}" "${kToolPackages[@]}" pkg-config googletest sox
mkdir -p build bench-out
if ! { cmake --preset x86_64 -DTEVS_TOOL=ON && cmake --build --preset x86_64 --target tevs_tool; } > build/compare_sox.log 2>&1; then
    grep -E -A 5 'error|FAILED' build/compare_sox.log | head -n 40
    fail "tevs does not build: build/compare_sox.log"
fi
work=$(mktemp -d) || exit 1
trap 'rm -rf "$work"' EXIT
python3 - "$PWD/build/x86_64/bin/tevs" "$seconds" "$work" << 'END' | tee bench-out/sox.md || exit 1
import array, math, os, pathlib, resource, subprocess, sys, time

tevs, seconds, work = sys.argv[1], int(sys.argv[2]), pathlib.Path(sys.argv[3])
# 16-bit stereo in, 24-bit out, for the times; 32 bits for the noise, so that it is the program's own.
JOBS = [
    ("resample, 44.1 to 48 kHz", 44100, 48000, "resample {} {} --rate 48000", "{} {} rate 48000", range(20200, 22000, 300)),
    ("resample, 48 to 44.1 kHz", 48000, 44100, "resample {} {} --rate 44100", "{} {} rate 44100", range(22100, 24000, 300)),
    ("low-pass 4 kHz, 400 Hz wide, 120 dB", 44100, 44100, "filter {} {} --low 4000 --width 400", "{} {} sinc -t 400 -4000", [4201, *range(4210, 4600, 60), 7000, 12000, 21000]),
]


def run(command, bits):
    """Of either program, to so many bits: the processor's and the clock's seconds."""
    who, arguments = command
    arguments = arguments.split()
    if who == "tevs":
        full = [tevs, "-q", *arguments, "--type", f"s{bits}"]
    else:
        full = ["sox", "-V1", arguments[0], "-b", str(bits), *arguments[1:]]
    before, begin = resource.getrusage(resource.RUSAGE_CHILDREN), time.monotonic()
    subprocess.run(full, check=True, env={**os.environ, "OMP_NUM_THREADS": "1"})
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime, time.monotonic() - begin


def through(who, job, rate, hertz):
    """A sine of 32 bits, -1 dBFS, a second: what comes out, without its ends."""
    amplitude = 2**31 * 10 ** -0.05
    (work / "sine.raw").write_bytes(array.array("i", [round(amplitude * math.sin(2 * math.pi * hertz * n / rate)) for n in range(rate)]).tobytes())
    subprocess.run([tevs, "-q", "convert", work / "sine.raw", work / "sine.wav", "--raw-in", f"s32,{rate}", "--type", "s32"], check=True)
    run((who, job.format(work / "sine.wav", work / "out.wav")), 32)
    out = subprocess.run([tevs, "-q", "convert", work / "out.wav", "-", "--raw-out", "f64"], check=True, capture_output=True).stdout
    y = array.array("d", out)
    return y[len(y) // 4:-(len(y) // 4)]


def rms(x):
    return math.sqrt(math.fsum(v * v for v in x) / len(x))


def residue(y, rate, hertz):
    """What is no sine of that frequency: least squares, by the two by two normal equations."""
    w = 2 * math.pi * hertz / rate
    c, s = [math.cos(w * n) for n in range(len(y))], [math.sin(w * n) for n in range(len(y))]
    dot = lambda a, b: math.fsum(p * q for p, q in zip(a, b))
    cc, ss, cs, cy, sy = dot(c, c), dot(s, s), dot(c, s), dot(c, y), dot(s, y)
    d = cc * ss - cs * cs
    a, b = (cy * ss - sy * cs) / d, (sy * cc - cy * cs) / d
    return rms([v - a * p - b * q for v, p, q in zip(y, c, s)])


level = lambda x: 20 * math.log10(max(x, 1e-20) / (10 ** -0.05 / math.sqrt(2)))
processor = next((line.split(":")[1].strip() for line in open("/proc/cpuinfo") if line.startswith("model name")), "?")
print(f"{processor}, {os.cpu_count()} processors; {subprocess.run(['sox', '--version'], capture_output=True, text=True).stdout.strip()}; "
      f"{seconds} s of stereo, 16 bits in, 24 out; one thread each; processor seconds, the least of 3\n")
print("| | tevs | SoX | SoX / tevs | stop-band, dB: tevs | SoX | noise, dB: tevs | SoX |\n|---|---|---|---|---|---|---|---|")
good = True
for name, rate, to, ours, theirs, tones in JOBS:
    source = work / f"{rate}.wav"
    if not source.exists():
        subprocess.run(["sox", "-R", "-V1", "-n", "-r", str(rate), "-b", "16", "-c", "2", source, "synth", str(seconds), "pinknoise", "gain", "-6"], check=True)
    jobs = {"tevs": ours, "sox": theirs}
    times = {who: [] for who in jobs}
    for _ in range(3):
        for who, job in jobs.items():
            times[who].append(run((who, job.format(source, work / "out.wav")), 24)[0])
    # Tones beyond the edge are to vanish; going up, where there are none, the images of those below it.
    stop = {who: max(level(rms(through(who, job, rate, f)) if to <= rate else residue(through(who, job, rate, f), to, f)) for f in tones)
            for who, job in jobs.items()}
    noise = {who: level(residue(through(who, job, rate, 997), to, 997)) for who, job in jobs.items()}
    least = {who: min(t) for who, t in times.items()}
    good &= least["sox"] >= 2 * least["tevs"] and stop["tevs"] <= stop["sox"] + 0.05 and noise["tevs"] <= noise["sox"] + 0.05
    print(f"| {name} | {least['tevs']:.2f} | {least['sox']:.2f} | {least['sox'] / least['tevs']:.1f} | {stop['tevs']:.1f} | {stop['sox']:.1f} | {noise['tevs']:.1f} | {noise['sox']:.1f} |", flush=True)
print("\nEach at least twice as fast, at an equal or better stop-band and noise." if good else "\nNOT everywhere twice as fast at an equal or better stop-band and noise.")
sys.exit(not good)
END
