"""tevs.dask: bits that do not hang on how a signal is cut, and a cluster of two processes, one of which dies."""
import os
import signal
import time
import wave

import numpy as np
import pytest

dask = pytest.importorskip("dask", reason="python3-dask is not installed")

import dask.array as da
import tevs
import tevs.dask as td

pytestmark = pytest.mark.filterwarnings("default")   # Dask's own
RNG = np.random.default_rng(18)
TAPS = tevs.firwin(101, 0.2)
SOS = tevs.butter(4, 0.3, output="sos")
N = 5003
CUTS = [(N,), (1, 1, 3, 4000, 60, N - 4065), (512, 1024, N - 1536), (N - 7, 7)]


def samples(dtype, *shape):
    dtype = np.dtype(dtype)
    if dtype.kind == "i":
        return RNG.integers(-30000, 30000, shape).astype(dtype)
    x = RNG.standard_normal(shape)
    return (x + 1j * RNG.standard_normal(shape)).astype(dtype) if dtype.kind == "c" else x.astype(dtype)


def same(ours, theirs):
    computed = ours.compute(scheduler="threads")
    assert ours.shape == computed.shape == theirs.shape and ours.dtype == computed.dtype == theirs.dtype
    assert np.array_equal(computed, theirs)


@pytest.mark.parametrize("cuts", CUTS, ids=len)
@pytest.mark.parametrize("dtype", ["f4", "f8", "c8", "i2"])
def test_fir(dtype, cuts):
    x = samples(dtype, N)
    with tevs.FIR(TAPS, dtype, method="direct") as filter:
        same(td.fir(TAPS, da.from_array(x, (cuts,))), filter.process(x))
        filter.reset()
        assert np.array_equal(np.concatenate([filter.process(part) for part in np.split(x, np.cumsum(cuts)[:-1])]), td.fir(TAPS, da.from_array(x, (cuts,))).compute())
    if dtype == "i2":
        with tevs.FIR(TAPS, dtype) as filter:
            same(td.fir(TAPS, da.from_array(x, (cuts,)), scale=2), filter.process(x, scale=2))


@pytest.mark.parametrize("cuts", CUTS, ids=len)
@pytest.mark.parametrize("up, down", [(1, 6), (160, 147), (3, 2), (2, 4), (5, 5), (7, 1)])
def test_resample(up, down, cuts):
    for dtype in "f4", "c16":
        x = samples(dtype, N)
        same(td.resample_poly(da.from_array(x, (cuts,)), up, down), tevs.resample_poly(x, up, down))
    given = tevs.firwin(30, 0.1)
    same(td.resample_poly(da.from_array(x, (cuts,)), up, down, window=given), tevs.resample_poly(x, up, down, window=given))


@pytest.mark.parametrize("cuts", CUTS, ids=len)
@pytest.mark.parametrize("nperseg, noverlap, nfft", [(256, None, None), (64, 0, 100), (255, 200, None), (4000, 1, None)])
@pytest.mark.parametrize("boundary, padded", [("zeros", True), (None, False), (None, True)])
def test_spectra(nperseg, noverlap, nfft, boundary, padded, cuts):
    x = samples("f4" if padded else "f8", N)
    arguments = dict(fs=8000, nperseg=nperseg, noverlap=noverlap, nfft=nfft, boundary=boundary, padded=padded)
    f, t, Z = tevs.stft(x, **arguments)
    frequencies, times, spectra = td.stft(da.from_array(x, (cuts,)), **arguments)
    same(spectra, Z)
    same(td.spectrogram(da.from_array(x, (cuts,)), **arguments)[2], tevs.power(Z))
    assert np.array_equal(f, frequencies) and np.array_equal(t, times)


def test_short_signals():
    for n in (1, 2, 3, 7, 8, 20):
        x = samples("f8", n)
        cut = da.from_array(x, 2)
        same(td.resample_poly(cut, 3, 7), tevs.resample_poly(x, 3, 7))
        same(td.fir(TAPS, cut), tevs.FIR(TAPS, method="direct").process(x))
        same(td.stft(cut, nperseg=2, noverlap=1)[2], tevs.stft(x, nperseg=2, noverlap=1)[2])
        if n >= 7:
            same(td.stft(cut, nperseg=8, noverlap=0)[2], tevs.stft(x, nperseg=8, noverlap=0)[2])


@pytest.mark.parametrize("every", [1, 37, 1000, N, N + 1])
@pytest.mark.parametrize("dtype", ["f4", "f8", "i2", "c8"])
def test_levels(dtype, every):
    x = samples(dtype, 2, N)
    for cuts in CUTS:
        for ours, theirs in zip(td.levels(da.from_array(x, (1, cuts)), every), tevs.levels(x, every)):
            same(ours, theirs)
    peak, rms = tevs.levels(x, every)
    places = range(0, N, every)
    np.testing.assert_allclose(peak, np.stack([np.abs(x[:, n:n + every].astype("c16" if dtype == "c8" else "f8")).max(1) for n in places], 1), rtol=1e-6)
    np.testing.assert_allclose(rms, np.stack([np.sqrt((np.abs(x[:, n:n + every].astype("c16")) ** 2).mean(1)) for n in places], 1), rtol=1e-6)


@pytest.mark.parametrize("cuts", CUTS, ids=len)
def test_recursion(cuts):
    x, b, a = samples("f8", N), *tevs.butter(3, 0.2)
    with tevs.IIR(sos=SOS) as sections, tevs.IIR(b, a) as direct:
        for filter, ours, whole in ((sections, td.sosfilt(SOS, da.from_array(x, (cuts,))), tevs.sosfilt(SOS, x)), (direct, td.lfilter(b, a, da.from_array(x, (cuts,))), tevs.lfilter(b, a, x))):
            same(ours, np.concatenate([filter.process(part) for part in np.split(x, np.cumsum(cuts)[:-1])]))
            np.testing.assert_allclose(ours.compute(), whole, rtol=1e-9, atol=1e-12)


@pytest.mark.parametrize("axis", [0, 1, -1])
def test_axes(axis):
    x = samples("f4", 300, 301)
    cut = da.from_array(x, (77, 103))
    same(td.resample_poly(cut, 2, 3, axis), tevs.resample_poly(x, 2, 3, axis))
    same(td.fir([0.5, 0.25], cut, axis), np.apply_along_axis(lambda v: tevs.FIR([0.5, 0.25], "f4").process(np.ascontiguousarray(v)), axis, x))
    np.testing.assert_allclose(td.sosfilt(SOS, cut, axis).compute(), tevs.sosfilt(SOS, x, axis), rtol=1e-3, atol=1e-5)
    if axis != 0:
        same(td.stft(cut, nperseg=64)[2], tevs.stft(x, nperseg=64)[2])


def test_refusals(tmp_path):
    x = da.ones(100, chunks=30)
    for error, reason, call in [
            (TypeError, "fir: x: needs a Dask array", lambda: td.fir([1], np.ones(3))),
            (TypeError, "scale", lambda: td.fir([1], x, scale=1)),
            (ValueError, "axis: 1", lambda: td.fir([1], x, 1)),
            (ValueError, "axis is empty", lambda: td.fir([1], x[:0])),
            (ValueError, "unknown length", lambda: td.fir([1], x[x > 0])),
            (TypeError, "complex taps", lambda: td.fir([1j], x)),
            (TypeError, "int16, needs float32", lambda: td.resample_poly(x.astype("i2"), 1, 2)),
            (ValueError, "up, down", lambda: td.resample_poly(x, 0, 2)),
            (ValueError, "every", lambda: td.levels(x, 0)),
            (ValueError, "100 samples, needs 256", lambda: td.stft(x, boundary=None)),
            (ValueError, "sos", lambda: td.sosfilt([[1, 2]], x)),
            (TypeError, "needs int16", lambda: td.write(tmp_path / "a.wav", x, 8000)),
            (ValueError, "no folder", lambda: td.write(tmp_path / "b" / "a.wav", x.astype("i2"), 8000)),
            (ValueError, "no .*wav", lambda: td.read(tmp_path)),
            (FileNotFoundError, "missing", lambda: td.read(tmp_path / "missing"))]:
        with pytest.raises(error, match=reason):
            call()
    (tmp_path / "text.wav").write_bytes(b"not a recording")
    with pytest.raises(ValueError, match="text.wav: no WAV"):
        td.read(tmp_path)


def recordings(folder, count, n):
    folder.mkdir()
    signals = {}
    for k in range(count):
        signals[f"{k}.wav"] = x = samples("i2", n + k) if k % 2 else samples("i2", 2, n + k)
        with wave.open(str(folder / f"{k}.wav"), "wb") as file:
            file.setparams((x.ndim, 2, 48000, x.shape[-1], "NONE", ""))
            file.writeframes(np.ascontiguousarray(x.T).tobytes())
    return signals


def line(x):
    """16-bit samples at 48 kHz as a telephone line leaves them."""
    narrow = td.resample_poly(td.fir(TAPS, x.astype("f4")), 1, 6)
    return narrow.map_blocks(through, dtype=np.int16)


def through(x):
    return tevs.alaw_decode(tevs.alaw_encode(tevs.convert(np.ascontiguousarray(x), np.int16)))


def line_at_once(x):
    rows = np.atleast_2d(x).astype("f4")
    narrow = np.stack([tevs.resample_poly(tevs.FIR(TAPS, "f4", method="direct").process(row), 1, 6) for row in rows])
    return through(narrow).reshape(*x.shape[:-1], -1)


def test_folder(tmp_path):
    signals = recordings(tmp_path / "in", 3, 40000)
    found = td.read(tmp_path / "in", chunk=7001)
    assert list(found) == sorted(signals)
    for name, (rate, x) in found.items():
        assert rate == 48000
        same(x, signals[name])
        same(x[..., 5000:9000:3], signals[name][..., 5000:9000:3])
    written = dask.compute(*(td.write(tmp_path / name, line(x), rate // 6) for name, (rate, x) in found.items()), scheduler="threads")
    assert sorted(p.name for p in tmp_path.iterdir() if p.is_file()) == sorted(signals) and list(written) == [str(tmp_path / name) for name in found]
    for name, (rate, x) in td.read(tmp_path).items():
        assert rate == 8000
        same(x, line_at_once(signals[name]))
    x = found["1.wav"].samples
    (tmp_path / "in" / "1.wav").write_bytes((tmp_path / "in" / "1.wav").read_bytes()[:1000])
    with pytest.raises(ValueError, match="1.wav: ends before"):
        x.compute(scheduler="threads")


@pytest.fixture
def cluster():
    """The scheduler and two workers of a process each, as a user's commands would start them."""
    distributed = pytest.importorskip("distributed", reason="python3-distributed is not installed")
    # Limits that a machine busy with other work keeps too.
    limits = {"distributed.scheduler.allowed-failures": 10, "distributed.comm.timeouts.connect": "120s", "distributed.comm.timeouts.tcp": "120s"}
    with dask.config.set(limits):
        with distributed.LocalCluster(n_workers=2, threads_per_worker=1, processes=True, dashboard_address=":0") as local, distributed.Client(local, timeout=120) as client:
            yield client


def test_cluster_and_a_worker_killed(cluster, tmp_path):
    from distributed import wait
    signals = recordings(tmp_path / "in", 3, 300000)
    found = td.read(tmp_path / "in", chunk=20000)
    arrays = {name: line(x.map_blocks(slowly, dtype=np.int16)) for name, (_, x) in found.items()}
    futures = cluster.compute([td.write(tmp_path / name, x, 8000) for name, x in arrays.items()])
    pids = cluster.run(os.getpid)
    assert len(set(pids.values())) == 2 and os.getpid() not in pids.values()
    deadline = time.monotonic() + 120
    while min(len(keys) for keys in cluster.has_what().values()) < 2:   # in the middle: either worker holds results
        assert time.monotonic() < deadline
        time.sleep(0.02)
    victim = max(cluster.has_what().items(), key=lambda item: len(item[1]))[0]
    os.kill(pids[victim], signal.SIGKILL)
    assert not all(future.done() for future in futures)
    wait(futures, timeout=240)
    cluster.gather(futures)
    assert pids[victim] not in cluster.run(os.getpid).values()
    assert sorted(p.name for p in tmp_path.iterdir() if p.is_file()) == sorted(signals)
    for name, (_, x) in td.read(tmp_path).items():
        same(x, line_at_once(signals[name]))


def slowly(x):
    time.sleep(0.02)
    return x


def test_progress_bar(capsys):
    from dask.diagnostics import ProgressBar
    with ProgressBar():
        td.fir(TAPS, da.ones(1000, chunks=100)).compute(scheduler="threads")
    assert "100% Completed" in capsys.readouterr().out
