"""Programs that change an import: the functions with SciPy's names beside SciPy."""
import numpy as np
import pytest
import scipy.fft
import scipy.signal as sp

import tevs

RNG = np.random.default_rng(8)
TOLERANCE = {"f4": 2e-5, "f8": 1e-12, "c8": 2e-5, "c16": 1e-12}


def samples(dtype, *shape):
    x = RNG.standard_normal(shape)
    return (x + 1j * RNG.standard_normal(shape)).astype(dtype) if np.dtype(dtype).kind == "c" else x.astype(dtype)


def close(ours, theirs, dtype):
    assert ours.shape == theirs.shape and ours.dtype == theirs.dtype, (ours.shape, theirs.shape, ours.dtype, theirs.dtype)
    assert np.linalg.norm(ours - theirs) <= TOLERANCE[dtype] * max(np.linalg.norm(theirs), 1e-30)


@pytest.mark.parametrize("dtype", ["f4", "f8", "c8", "c16"])
@pytest.mark.parametrize("shape, axis, n", [((64,), -1, None), ((60,), 0, None), ((97,), -1, None), ((3, 40), 1, None), ((40, 3), 0, None), ((5, 7), -1, 16), ((5, 7), -1, 3), ((1,), -1, None)])
@pytest.mark.parametrize("norm", [None, "ortho", "forward"])
def test_fft(dtype, shape, axis, n, norm):
    x = samples(dtype, *shape)
    close(tevs.fft(x, n, axis, norm), scipy.fft.fft(x, n, axis, norm), dtype)
    close(tevs.ifft(x, n, axis, norm), scipy.fft.ifft(x, n, axis, norm), dtype)
    if np.dtype(dtype).kind == "f":
        spectrum = scipy.fft.rfft(x, n, axis, norm)
        close(tevs.rfft(x, n, axis, norm), spectrum, dtype)
        if shape != (1,):
            close(tevs.irfft(spectrum, n, axis, norm), scipy.fft.irfft(spectrum, n, axis, norm), dtype)
        close(tevs.idct(tevs.dct(x, axis=axis), axis=axis), x, dtype)
        close(tevs.dct(x, axis=axis), scipy.fft.dct(x, norm="ortho", axis=axis), dtype)


def test_lists_and_integers_become_double():
    assert tevs.fft([1, 2, 3]).dtype == np.complex128 and tevs.lfilter([1], [1], np.ones(3, "i2")).dtype == np.float64


@pytest.mark.parametrize("shape, axis", [((50,), -1), ((3, 50), 1), ((51, 2), 0)])
@pytest.mark.parametrize("dtype", ["f4", "f8"])
def test_hilbert(shape, axis, dtype):
    x = samples(dtype, *shape)
    close(tevs.hilbert(x, axis=axis), sp.hilbert(x, axis=axis), dtype)


@pytest.mark.parametrize("window", ["hann", "hamming", "blackman", "bartlett", "boxcar"])
def test_windows(window):
    for n in range(9):
        for periodic in (True, False):
            if n or not periodic:
                np.testing.assert_allclose(tevs.get_window(window, n, periodic), sp.get_window(window, n, periodic) if n else [], atol=1e-14)
    np.testing.assert_allclose(tevs.hann(1001), sp.windows.hann(1001), atol=1e-13)


@pytest.mark.parametrize("n", [1, 2, 3, 50, 51])
def test_kaiser(n):
    for sym in (True, False):
        np.testing.assert_allclose(tevs.kaiser(n, 8.6, sym), sp.windows.kaiser(n, 8.6, sym), atol=3e-5)


FILTERS = [([0.2, 0.3, 0.1], [1]), ([0.5], [1, -0.3, 0.2]), ([2, 1, 0.5, 0.1], [2, -0.5, 0.1]), (np.hanning(201) / 100, [1.0]), ([1], [3])]


@pytest.mark.parametrize("b, a", FILTERS)
@pytest.mark.parametrize("dtype", ["f4", "f8", "c8", "c16"])
@pytest.mark.parametrize("shape, axis", [((1000,), -1), ((4, 90), 1), ((90, 4), 0), ((2, 60, 3), 1)])
def test_lfilter(b, a, dtype, shape, axis):
    x = samples(dtype, *shape)
    b, a = np.asarray(b, np.float32 if dtype in ("f4", "c8") else np.float64), np.asarray(a, np.float32 if dtype in ("f4", "c8") else np.float64)
    close(tevs.lfilter(b, a, x, axis), sp.lfilter(b, a, x, axis), dtype)
    order = max(len(a), len(b)) - 1
    if order:
        state = list(shape)
        state[axis] = order
        zi = samples(dtype, *state)
        for ours, theirs in zip(tevs.lfilter(b, a, x, axis, zi), sp.lfilter(b, a, x, axis, zi)):
            close(ours, theirs, dtype)


@pytest.mark.parametrize("sos", [sp.butter(4, 0.2, output="sos"), sp.cheby1(5, 1, [0.2, 0.5], "bandpass", output="sos"), np.array([[0, 1, 0.5, 1, -0.2, 0.1], [1, 0, 0, 1, 0.3, 0]])])
@pytest.mark.parametrize("shape, axis", [((1000,), -1), ((4, 90), 1), ((90, 4), 0), ((2, 60, 3), 1)])
def test_sosfilt(sos, shape, axis):
    x = samples("f8", *shape)
    close(tevs.sosfilt(sos, x, axis), sp.sosfilt(sos, x, axis), "f8")
    state = [len(sos), *shape]
    state[(axis % len(shape)) + 1] = 2
    zi = samples("f8", *state)
    for ours, theirs in zip(tevs.sosfilt(sos, x, axis, zi), sp.sosfilt(sos, x, axis, zi)):
        close(ours, theirs, "f8")


@pytest.mark.parametrize("dtype", ["f4", "f8", "c16"])
@pytest.mark.parametrize("up, down", [(1, 1), (2, 1), (1, 3), (3, 2), (5, 7)])
@pytest.mark.parametrize("shape, axis", [((100,), -1), ((3, 41), 1), ((41, 3), 0), ((1,), 0)])
def test_upfirdn(dtype, up, down, shape, axis):
    for taps in (1, 5, 30):
        h, x = samples("f4" if dtype == "f4" else "f8", taps), samples(dtype, *shape)
        close(tevs.upfirdn(h, x, up, down, axis), sp.upfirdn(h, x, up, down, axis), dtype)


@pytest.mark.parametrize("options", [{}, {"nperseg": 100, "noverlap": 75}, {"nperseg": 64, "nfft": 128, "window": "hamming"}, {"boundary": None}, {"boundary": None, "padded": False}])
@pytest.mark.parametrize("shape, axis", [((1000,), -1), ((2, 700), 1), ((700, 2), 0)])
def test_stft(options, shape, axis):
    x = samples("f8", *shape)
    ours, theirs = tevs.stft(x, 8000, axis=axis, **options), sp.stft(x, 8000, axis=axis, **options)
    for a, b in zip(ours, theirs):
        assert a.shape == b.shape
        np.testing.assert_allclose(a, b, atol=1e-12)


def test_istft():
    x = samples("f8", 1000)
    for options in ({}, {"nperseg": 100, "noverlap": 75}):
        Z = sp.stft(x, **options)[2]
        np.testing.assert_allclose(tevs.istft(Z, **options)[1], sp.istft(Z, **options)[1], atol=1e-12)


@pytest.mark.parametrize("dtype, taps_dtype", [("f4", "f4"), ("f4", "f8"), ("f8", "f8"), ("c8", "f4"), ("c16", "c16"), ("i2", "f4"), ("i2", "f8"), ("i4", "f8")])
@pytest.mark.parametrize("up, down", [(1, 1), (3, 2)])
def test_fir_stream(dtype, taps_dtype, up, down):
    h = samples(taps_dtype, 7) / 8
    x = RNG.integers(-30000, 30000, 600).astype(dtype) if dtype[0] == "i" else samples(dtype, 600)
    wanted = sp.upfirdn(h.astype("c16" if dtype[0] == "c" else "f8"), x, up, down)[:600 * up // down]
    if dtype[0] == "i":
        wanted = np.rint(wanted)
    with tevs.FIR(h, dtype, up, down) as fir:
        whole = fir.process(x)
        fir.reset()
        cut = np.concatenate([fir.process(block) for block in np.split(x, [2, 100, 450])])
    assert whole.dtype == dtype and np.array_equal(whole, cut)
    np.testing.assert_allclose(whole, wanted, rtol=0, atol=1 if dtype[0] == "i" else 1e-5 if dtype in ("f4", "c8") else 1e-13)
    with tevs.FIR(h, dtype, up, down, channels=2) as both:
        assert np.array_equal(both.process(np.stack([x, x[::-1]]))[0], whole)


def test_fir_parts():
    with tevs.FIR([1.0, 2.0, 3.0], "f4") as fir:
        fir.process(np.array([4, 5, 6, 7], "f4"))
        assert fir.delay_line.tolist() == [7, 6, 5]
        fir.delay_line = [1, 0, 0]
        fir.taps = [1, 1, 1]
        x = np.zeros(2, "f4")
        assert fir.process(x, out=x) is x and x.tolist() == [1, 1]


@pytest.mark.parametrize("dtype", ["f4", "f8", "i2"])
def test_iir_stream(dtype):
    b, a = sp.butter(3, 0.1)
    sos = sp.butter(3, 0.1, output="sos")
    x = RNG.integers(-30000, 30000, 500).astype(dtype) if dtype == "i2" else samples(dtype, 500)
    wanted = sp.lfilter(b, a, x.astype("f8"))
    for iir in (tevs.IIR(b, a, dtype), tevs.IIR(sos=sos, dtype=dtype)):
        with iir:
            y = np.concatenate([iir.process(block) for block in np.split(x, [1, 2, 250])])
            np.testing.assert_allclose(y, np.rint(wanted) if dtype == "i2" else wanted, rtol=0, atol=1 if dtype == "i2" else 1e-6 if dtype == "f4" else 1e-12)


def test_fft_record_of_integers():
    x = RNG.integers(-1000, 1000, 64).astype("i2")
    with tevs.FFT(64, "i2", norm="none") as fft:
        spectrum = fft.forward(x, scale=6)
        wanted = np.fft.rfft(x) / 64
        assert np.abs(spectrum["re"] - wanted.real).max() <= 0.51 and np.abs(spectrum["im"] - wanted.imag).max() <= 0.51


@pytest.mark.parametrize("dtype", ["f4", "f8", "c8", "c16"])
@pytest.mark.parametrize("n1, n2", [(1, 1), (7, 3), (3, 7), (8, 8), (2000, 300), (100, 1500)])
@pytest.mark.parametrize("mode", ["full", "same", "valid"])
def test_convolution(dtype, n1, n2, mode):
    x, y = samples(dtype, n1), samples(dtype, n2)
    close(tevs.fftconvolve(x, y, mode), sp.convolve(x, y, mode, "direct"), dtype)
    close(tevs.correlate(x, y, mode), sp.correlate(x, y, mode, "direct"), dtype)


def test_autocorrelation():
    x = samples("c16", 200)
    full = sp.correlate(x, x)[199:]
    close(tevs.autocorrelate(x, 20), full[:20], "c16")
    close(tevs.autocorrelate(x, 20, "biased"), full[:20] / 200, "c16")
    close(tevs.autocorrelate(x, 20, "unbiased"), full[:20] / (200 - np.arange(20)), "c16")


@pytest.mark.parametrize("dtype", ["f4", "f8", "u1", "i2", "i4", "i8"])
@pytest.mark.parametrize("size", [1, 3, 9, 31])
def test_median(dtype, size):
    import scipy.ndimage
    x = RNG.integers(0, 200, 90).astype(dtype)
    assert np.array_equal(tevs.medfilt(x, size), sp.medfilt(x.astype("f8"), size)) and tevs.medfilt(x, size).dtype == x.dtype
    if dtype != "i8":
        assert np.array_equal(tevs.median_filter(x, size), scipy.ndimage.median_filter(x, size, mode="nearest"))


@pytest.mark.parametrize("up, down", [(2, 1), (1, 6), (3, 2), (147, 160), (4, 4)])
@pytest.mark.parametrize("shape, axis", [((1000,), 0), ((3, 301), 1), ((301, 2), 0), ((5,), 0)])
@pytest.mark.parametrize("dtype", ["f4", "f8"])
def test_resample_poly(up, down, shape, axis, dtype):
    x = samples(dtype, *shape)
    taps = sp.firwin(61, 1 / max(up, down)).astype(dtype)
    close(tevs.resample_poly(x, up, down, axis, taps), sp.resample_poly(x, up, down, axis, taps), dtype)
    ours, theirs = tevs.resample_poly(x, up, down, axis), sp.resample_poly(x, up, down, axis)
    assert ours.shape == theirs.shape and ours.dtype == theirs.dtype
    assert np.linalg.norm(ours - theirs) < 1e-4 * np.linalg.norm(theirs)   # the Kaiser window is within 3e-5 of the formula


@pytest.mark.parametrize("arguments", [(5, 0.3), (64, 0.3), (51, 0.3, "highpass"), (51, 0.3, False), (50, [0.2, 0.5], False), (51, [0.2, 0.5], True), (51, [0.2, 0.5], "bandpass"), (1, 0.5)])
@pytest.mark.parametrize("window", ["hamming", "hann", "blackman", "boxcar"])
def test_firwin(arguments, window):
    numtaps, cutoff, pass_zero = (*arguments, True)[:3]
    if numtaps == 1 and window == "boxcar" or numtaps > 1:
        np.testing.assert_allclose(tevs.firwin(numtaps, cutoff, window, pass_zero), sp.firwin(numtaps, cutoff, window=window, pass_zero=pass_zero), atol=1e-13)
        np.testing.assert_allclose(tevs.firwin(numtaps, np.multiply(cutoff, 4000), window, pass_zero, fs=8000),
                                   sp.firwin(numtaps, np.multiply(cutoff, 4000), window=window, pass_zero=pass_zero, fs=8000), atol=1e-13)


@pytest.mark.parametrize("order", [1, 2, 3, 6])
@pytest.mark.parametrize("btype, edges", [("low", 0.3), ("highpass", 0.3), ("bandpass", [0.2, 0.5]), ("bandstop", [0.2, 0.5])])
def test_recursive_designs(order, btype, edges):
    for ours, theirs in ((tevs.butter(order, edges, btype), sp.butter(order, edges, btype)), (tevs.cheby1(order, 1, edges, btype), sp.cheby1(order, 1, edges, btype))):
        for a, b in zip(ours, theirs):
            np.testing.assert_allclose(a, b, rtol=1e-9, atol=1e-10)
    sos, wanted = tevs.butter(order, np.multiply(edges, 500), btype, output="sos", fs=1000), sp.butter(order, edges, btype, output="sos")
    np.testing.assert_allclose(sp.sosfreqz(sos)[1], sp.sosfreqz(wanted)[1], atol=1e-10)
    np.testing.assert_allclose(tevs.sosfreqz(sos, 100)[1], sp.sosfreqz(wanted, 100)[1], atol=1e-10)
    b, a = tevs.butter(order, edges, btype)
    for options in ({}, {"worN": 50, "whole": True}, {"worN": [0.1, 1.0]}, {"fs": 8000}):
        for ours, theirs in zip(tevs.freqz(b, a, **options), sp.freqz(b, a, **options)):
            np.testing.assert_allclose(ours, theirs, atol=1e-9)
    for ours, theirs in zip(tevs.freqz([1, 2, 3], worN=9), sp.freqz([1, 2, 3], worN=9)):
        np.testing.assert_allclose(ours, theirs, atol=1e-12)


def test_a_program_with_its_import_changed():
    def program(signal):
        fs = 48000
        t = np.arange(fs // 2) / fs
        x = np.sin(2 * np.pi * 440 * t) + 0.3 * np.sin(2 * np.pi * 9000 * t)
        y = signal.sosfilt(signal.butter(6, 3400, fs=fs, output="sos"), x)
        b = signal.firwin(101, [300, 3400], pass_zero=False, fs=fs)
        z = signal.lfilter(b, [1.0], y)
        r = signal.resample_poly(z, 1, 6, window=signal.firwin(121, 1 / 6))
        f, times, Z = signal.stft(r, 8000, nperseg=256)
        return np.concatenate([y[::100], z[::100], r[::10], np.abs(Z).ravel(), signal.medfilt(r, 5)[::10], signal.correlate(r, r[:100])[::10]])

    np.testing.assert_allclose(program(tevs), program(sp), atol=1e-9)
