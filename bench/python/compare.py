"""compare.py: the same programs with tevs and with NumPy and SciPy, on blocks of 20 ms and on a minute of audio at 48 kHz. Least times, taken by turns, in microseconds."""
import platform
import sys
import time

import numpy as np
import scipy
import scipy.fft
import scipy.signal as sp

import tevs
from tevs import raw

RNG = np.random.default_rng(1)
BLOCK, MINUTE = 960, 60 * 48000
SOS = sp.butter(8, 3400, fs=48000, output="sos")
TAPS = sp.firwin(101, 3400, fs=48000)


def least(functions, seconds=1.0):
    """Of each function the least time of a call, over repetitions by turns."""
    counts = []
    for f in functions:
        begin = time.perf_counter()
        f()
        counts.append(max(1, int(0.002 / max(time.perf_counter() - begin, 1e-7))))
    times = [np.inf] * len(functions)
    end = time.perf_counter() + seconds * len(functions)
    while time.perf_counter() < end:
        for k, f in enumerate(functions):
            begin = time.perf_counter()
            for _ in range(counts[k]):
                f()
            times[k] = min(times[k], (time.perf_counter() - begin) / counts[k])
    return [t * 1e6 for t in times]


def saturating(x, y):
    return np.clip(x.astype(np.int32) + y, -32768, 32767).astype(np.int16)


def q15(x, y):
    product = x.astype(np.int32) * y
    return np.clip((product + 0x3FFF + ((product >> 15) & 1)) >> 15, -32768, 32767).astype(np.int16)


def programs(n):
    """name, tevs, peer, what the peer is"""
    x4, x8 = RNG.standard_normal(n).astype("f4"), RNG.standard_normal(n)
    i, j = (RNG.integers(-30000, 30000, n).astype("i2") for _ in range(2))
    out4, out8, outi = np.empty_like(x4), np.empty_like(x8), np.empty_like(i)
    zi = np.zeros((len(SOS), 2))
    if n == BLOCK:
        z = (RNG.standard_normal(1024) + 1j * RNG.standard_normal(1024)).astype("c8")
        out = np.empty_like(z)
        record, spectrum, real = tevs.FFT(1024), tevs.FFT(960, "f4"), np.empty(481, "c8")
        yield "FFT, 1024 complex64", lambda: record.forward(z, out), lambda: scipy.fft.fft(z), "scipy.fft.fft"
        yield "FFT, 1024 complex64, by tevs.fft", lambda: tevs.fft(z), lambda: scipy.fft.fft(z), "scipy.fft.fft"
        yield "FFT, 960 float32", lambda: spectrum.forward(x4, real), lambda: scipy.fft.rfft(x4), "scipy.fft.rfft"
    else:
        z = (RNG.standard_normal(1 << 20) + 1j * RNG.standard_normal(1 << 20)).astype("c8")
        yield "FFT, 2^20 complex64, by tevs.fft", lambda: tevs.fft(z), lambda: scipy.fft.fft(z), "scipy.fft.fft"
        yield "STFT, 1024 by 512, float32", lambda: tevs.stft(x4, nperseg=1024), lambda: sp.stft(x4, nperseg=1024), "scipy.signal.stft"
    fir, fir_zi = tevs.FIR(TAPS, "f8"), np.zeros(100)
    fir4 = tevs.FIR(TAPS.astype("f4"))
    if n == BLOCK:
        yield "FIR, 101 taps, float64 stream", lambda: fir.process(x8, out8), lambda: sp.lfilter(TAPS, [1.0], x8, zi=fir_zi), "lfilter with zi"
    else:
        yield "FIR, 101 taps, float64", lambda: fir.process(x8, out8), lambda: sp.oaconvolve(x8, TAPS), "oaconvolve"
        yield "FIR, 101 taps, float32", lambda: fir4.process(x4, out4), lambda: sp.oaconvolve(x4, TAPS.astype("f4")), "oaconvolve"
    iir, iir4 = tevs.IIR(sos=SOS), tevs.IIR(sos=SOS, dtype="f4")
    yield "IIR, 4 sections, float64 stream", lambda: iir.process(x8, out8), lambda: sp.sosfilt(SOS, x8, zi=zi), "sosfilt with zi"
    yield "IIR, 4 sections, by tevs.sosfilt", lambda: tevs.sosfilt(SOS, x8), lambda: sp.sosfilt(SOS, x8), "sosfilt"
    yield "resample 48 to 8 kHz, float32", lambda: tevs.resample_poly(x4, 1, 6), lambda: sp.resample_poly(x4, 1, 6), "resample_poly"
    yield "resample 48 to 44.1 kHz, float32", lambda: tevs.resample_poly(x4, 147, 160), lambda: sp.resample_poly(x4, 147, 160), "resample_poly"
    yield "int16 sum, saturated", lambda: tevs.add(i, j, outi), lambda: saturating(i, j), "NumPy, through int32"
    yield "int16 product in Q15", lambda: tevs.multiply(i, j, outi, 15), lambda: q15(i, j), "NumPy, through int32"
    yield "float32 to int16", lambda: tevs.convert(x4, np.int16, -13, out=outi), lambda: np.clip(np.rint(x4 * np.float32(8192)), -32768, 32767).astype(np.int16), "NumPy"
    yield "median of 9, int16", lambda: tevs.medfilt(i, 9), lambda: sp.medfilt(i, 9), "medfilt"


def main():
    model = next((line.split(": ")[1].strip() for line in open("/proc/cpuinfo") if line.startswith("model name")), platform.machine())
    print(f"Machine: {model}; SIMD level {raw.tevsGetLevelName(raw.tevsGetLevel())}; one thread. CPython {platform.python_version()}, NumPy {np.__version__}, SciPy {scipy.__version__}. "
          "Least times in microseconds, taken by turns.\n")
    x, y = (RNG.integers(-9, 9, 64).astype("i2") for _ in range(2))
    out = np.empty_like(x)
    calls = [("`raw.tevsAdd_16s(x, y, out, 64)`", lambda: raw.tevsAdd_16s(x, y, out, 64)), ("`tevs.add(x, y, out)`", lambda: tevs.add(x, y, out)),
             ("`tevs.add(x, y)`", lambda: tevs.add(x, y)), ("`numpy.add(x, y, out)`", lambda: np.add(x, y, out)), ("an empty Python function", lambda: None)]
    print("| a call on 64 elements | ns |\n|---|---|")
    for (name, _), t in zip(calls, least([f for _, f in calls])):
        print(f"| {name} | {1000 * t:.0f} |")
    for title, n in (("a block of 20 ms (960 samples)", BLOCK), ("a minute (2880000 samples)", MINUTE)):
        print(f"\n| {title} | tevs | peer | peer / tevs | the peer |\n|---|---|---|---|---|")
        for name, ours, theirs, peer in programs(n):
            a, b = least([ours, theirs])
            print(f"| {name} | {a:.4g} | {b:.4g} | {b / a:.2f} | {peer} |")
            sys.stdout.flush()


main()
