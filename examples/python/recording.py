#!/usr/bin/env python3
"""A recording looked at as in a notebook: loaded, filtered by a filter designed here, its speech detected, and all of it drawn.

    recording.py IN.wav OUT.png          # a 16-bit WAV file
"""
# %% Load
import sys
import wave

import matplotlib
import numpy as np

import tevs

matplotlib.use("Agg")
import matplotlib.pyplot as plt

if len(sys.argv) != 3:
    sys.exit("usage: recording.py IN.wav OUT.png")
with wave.open(sys.argv[1], "rb") as file:
    if file.getsampwidth() != 2 or not file.getnframes():
        sys.exit(f"{sys.argv[1]}: needs samples of 16 bits")
    rate, channels = file.getframerate(), file.getnchannels()
    samples = np.frombuffer(file.readframes(file.getnframes()), "<i2").reshape(-1, channels)[:, 0]
x = tevs.convert(np.ascontiguousarray(samples), np.float32, scale=15)   # -1 .. 1
print(f"{x.size / rate:.2f} s at {rate} Hz, peak {tevs.norm(x, np.inf):.3f}")

# %% Design: what the telephone passes
band = tevs.butter(4, [300, 3400], btype="band", fs=rate, output="sos")
frequencies, response = tevs.sosfreqz(band, 1024, fs=rate)

# %% Filter
y = tevs.sosfilt(band, x)

# %% Detect: the stretches of 20 ms above the noise by 10 dB; the noise is what a tenth of them stays below
every = rate // 50
peak, rms = tevs.levels(y, every)
decibels = 20 * np.log10(np.maximum(rms, 1e-6))
noise = tevs.sort(decibels)[decibels.size // 10]
speech = decibels > max(noise + 10, -60)
edges = np.flatnonzero(np.diff(np.concatenate([[False], speech, [False]]).astype(np.int8))).reshape(-1, 2) * every / rate
print(f"noise at {noise:.0f} dB; sound in {len(edges)} stretches, {np.sum(edges[:, 1] - edges[:, 0]):.2f} s: " + ", ".join(f"{a:.2f}-{b:.2f}" for a, b in edges))

# %% Draw
nperseg = max(64, rate // 50)
f, t, Z = tevs.stft(y, fs=rate, nperseg=nperseg, noverlap=nperseg * 3 // 4)
figure, (above, middle, below) = plt.subplots(3, 1, figsize=(9, 9), constrained_layout=True)
above.plot(np.arange(x.size) / rate, x, color="0.7", linewidth=0.5, label="as recorded")
above.plot(np.arange(y.size) / rate, y, linewidth=0.5, label="in the telephone's band")
for k, (a, b) in enumerate(edges):
    above.axvspan(a, b, color="tab:orange", alpha=0.2, label="" if k else "detected")
above.set(xlabel="seconds", ylabel="amplitude", title="A recording and what was detected in it")
above.legend(loc="upper right")
middle.pcolormesh(t, f, 10 * np.log10(tevs.power(Z) + 1e-12), vmin=-100, vmax=-30, shading="auto", rasterized=True)
middle.set(xlabel="seconds", ylabel="Hz", ylim=(0, min(rate / 2, 5000)), title="Its spectrogram behind the filter")
below.plot(frequencies, 20 * np.log10(np.maximum(np.abs(response), 1e-6)))
below.set(xlabel="Hz", ylabel="dB", xlim=(0, min(rate / 2, 8000)), ylim=(-80, 3), title="The filter")
figure.savefig(sys.argv[2], dpi=80)
