"""The NumPy-level functions beside NumPy, their types, places and errors."""
import doctest
import importlib
import pathlib
import re
import wave

import numpy as np
import pytest

import tevs

RNG = np.random.default_rng(5)
MODULES = sorted(p.stem for p in pathlib.Path(tevs.__file__).parent.glob("*.py") if not p.stem.startswith("_"))


@pytest.mark.parametrize("module", MODULES)
@pytest.mark.filterwarnings("default")   # of Dask's own
def test_examples(module):
    if module == "dask":
        pytest.importorskip("dask.array", reason="python3-dask is not installed")
    found = doctest.testmod(importlib.import_module(f"tevs.{module}"), extraglobs={"np": np})
    assert found.failed == 0 and found.attempted > 0


def samples(dtype, n=101):
    dtype = np.dtype(dtype)
    if dtype.kind in "iu":
        info = np.iinfo(dtype)
        return RNG.integers(info.min, info.max, n, dtype, endpoint=True)
    x = RNG.standard_normal(n)
    return (x + 1j * RNG.standard_normal(n)).astype(dtype) if dtype.kind == "c" else x.astype(dtype)


def exact(function, x, y, scale, dtype):
    """The integer result of a binary operation, by rational arithmetic of Python."""
    from fractions import Fraction
    info = np.iinfo(dtype)
    results = []
    for a, b in zip(x.tolist(), y.tolist()):
        value = function(Fraction(a), Fraction(b)) / Fraction(2) ** scale
        results.append(min(max(round(value), info.min), info.max))   # round() takes ties to even
    return np.array(results, dtype)


@pytest.mark.parametrize("scale", [0, 1, 9, -2])
@pytest.mark.parametrize("dtype", ["u1", "u2", "i2", "i4"])
@pytest.mark.parametrize("name", ["add", "subtract", "multiply"])
def test_scaled_integers(name, dtype, scale):
    x, y = samples(dtype), samples(dtype)
    function = {"add": lambda a, b: a + b, "subtract": lambda a, b: a - b, "multiply": lambda a, b: a * b}[name]
    assert np.array_equal(getattr(tevs, name)(x, y, scale=scale), exact(function, x, y, scale, np.dtype(dtype)))


@pytest.mark.parametrize("dtype", ["f4", "f8", "c8", "c16"])
@pytest.mark.parametrize("name", ["add", "subtract", "multiply", "divide"])
def test_floats(name, dtype):
    x, y = samples(dtype), samples(dtype)
    ours, theirs = getattr(tevs, name), getattr(np, name)
    np.testing.assert_allclose(ours(x, y), theirs(x, y), rtol=4 * np.finfo(dtype).eps, atol=4 * np.finfo(dtype).eps)
    for left, right in ((x, 3), (x, 0.5), (2, x)):
        result = ours(left, right)
        assert result.dtype == dtype
        np.testing.assert_allclose(result, theirs(left, right).astype(dtype), rtol=8 * np.finfo(dtype).eps, atol=4 * np.finfo(dtype).eps)
    z = x.copy()
    assert ours(z, y, out=z) is z
    assert np.array_equal(z, ours(x, y))
    np.testing.assert_array_equal(ours(x[::2], y[::2]), ours(x, y)[::2])                         # strided sources are copied
    np.testing.assert_array_equal(ours(x[:100].reshape(4, 25).T, y[:100].reshape(4, 25).T), ours(x[:100], y[:100]).reshape(4, 25).T)


@pytest.mark.parametrize("name, numpy, dtypes", [
    ("absolute", np.abs, "f4 f8"), ("square", np.square, "f4 f8 c8 c16"), ("exp", np.exp, "f4 f8"), ("arctan", np.arctan, "f4 f8"), ("conj", np.conj, "c8 c16"),
    ("magnitude", np.abs, "c8 c16"), ("phase", np.angle, "c8 c16"), ("power", lambda x: np.abs(x) ** 2, "c8 c16"), ("real", np.real, "c8 c16"), ("imag", np.imag, "c8 c16"),
    ("sqrt", np.sqrt, "c8 c16"), ("cbrt", np.cbrt, "f4"), ("flip", np.flip, "f4 f8"), ("invert", np.invert, "u1 u2 u4")])
def test_unary(name, numpy, dtypes):
    for dtype in dtypes.split():
        x = samples(dtype)
        result = getattr(tevs, name)(x)
        assert result.dtype == numpy(x).dtype
        np.testing.assert_allclose(result, numpy(x), rtol=0 if np.dtype(dtype).kind == "u" else 8 * np.finfo(dtype).eps)


@pytest.mark.parametrize("source", ["i1", "u1", "i2", "u2", "i4", "u4", "f4", "f8", "f2"])
@pytest.mark.parametrize("target", ["i1", "u1", "i2", "u2", "i4", "f4", "f8", "f2"])
def test_convert(source, target):
    x = samples(source) if np.dtype(source).kind in "iu" else (samples(source) * 1000).astype(source)
    try:
        result = tevs.convert(x, target)
    except TypeError as error:
        assert f"no form from {np.dtype(source).name} to {np.dtype(target).name}" in str(error)
        return
    if np.dtype(target).kind in "iu":
        info = np.iinfo(target)
        wanted = np.clip(np.rint(x.astype("f8")), info.min, info.max).astype(target)
    else:
        with np.errstate(over="ignore"):
            wanted = x.astype(target)
    assert result.dtype == target and np.array_equal(result, wanted)


def test_packed_samples():
    x = RNG.integers(-2**23, 2**23, 50, np.int32)
    packed = tevs.pack_int24(x)
    assert packed.size == 150 and np.array_equal(tevs.unpack_int24(packed, np.int32), x)
    assert np.array_equal(tevs.unpack_int24(packed, np.float32, 23), (x / 2**23).astype("f4"))


@pytest.mark.parametrize("dtype", ["f4", "f8", "c8", "c16"])
def test_reductions(dtype):
    x = samples(dtype, 120).reshape(4, 5, 6)
    tolerance = dict(rtol=50 * np.finfo(dtype).eps, atol=50 * np.finfo(dtype).eps)
    for axis in (None, 0, 1, 2, -1):
        np.testing.assert_allclose(tevs.sum(x, axis), x.sum(axis), **tolerance)
        np.testing.assert_allclose(tevs.mean(x, axis), x.mean(axis), **tolerance)
        np.testing.assert_allclose(tevs.norm(x, 2, axis), np.sqrt((np.abs(x) ** 2).sum(axis)), **tolerance)
        np.testing.assert_allclose(tevs.norm(x, np.inf, axis), np.abs(x).max(axis), **tolerance)
        if np.dtype(dtype).kind == "f":
            np.testing.assert_array_equal(tevs.max(x, axis), x.max(axis))
            np.testing.assert_array_equal(tevs.min(x, axis), x.min(axis))
            for ddof in (0, 1):
                np.testing.assert_allclose(tevs.std(x, axis, ddof), x.std(axis, ddof=ddof), **tolerance)
    y = samples(dtype, 120)
    np.testing.assert_allclose(tevs.dot(x.ravel(), y), np.dot(x.ravel(), y), **tolerance)
    if np.dtype(dtype).kind == "f":
        assert tevs.minmax(y) == (y.min(), y.argmin(), y.max(), y.argmax())


def test_integer_sums_are_exact():
    x = samples("i2", 10000)
    assert tevs.sum(x) == x.astype(int).sum() and tevs.dot(x, x) == (x.astype(int) ** 2).sum()


def test_warnings():
    with pytest.warns(tevs.Warning, match="tevs.divide: "):
        y = np.ones(3, "f4")
        assert np.isinf(tevs.divide(y, np.zeros(3, "f4"), out=y)).all()   # in place: written once
    with pytest.warns(tevs.Warning, match="tevs.sqrt: "):
        tevs.sqrt(np.array([-1.0]))


F4, F8 = np.ones(4, "f4"), np.ones(4)
BAD = [
    (lambda: tevs.add(F4, np.ones(5, "f4")), ValueError, "tevs.add: y: shape (5,), needs (4,)"),
    (lambda: tevs.add(np.ones(4, "i8"), np.ones(4, "i8")), TypeError, "tevs.add: no form for int64, int64; there are"),
    (lambda: tevs.add(F4, F4, scale=1), TypeError, "tevs.add: scale: only integers"),
    (lambda: tevs.add(F4, F4, out=np.empty(3, "f4")), ValueError, "tevs.add: out: shape (3,), needs (4,)"),
    (lambda: tevs.add(F4, F4, out=np.empty(4)), TypeError, "tevs.add: no form for float32, float32 to float64"),
    (lambda: tevs.add(F4, F4, out=np.empty(8, "f4")[::2]), ValueError, "tevs.add: out: the array is not contiguous"),
    (lambda: tevs.add(F4[:3], F4[:3], out=F4[1:]), ValueError, "tevs.add: out: the array overlaps x"),
    (lambda: tevs.add("a", F4), (TypeError, ValueError), "tevs.add: "),
    (lambda: tevs.convert(F4, "i2", rounding="up"), ValueError, "tevs.convert: rounding: 'up'"),
    (lambda: tevs.mean(np.ones(0)), ValueError, "tevs.mean: x: the array is empty"),
    (lambda: tevs.sum(F4, axis=1), ValueError, "tevs.sum: axis: 1 is none of 1"),
    (lambda: tevs.norm(F4, 3), ValueError, "tevs.norm: ord: 3"),
    (lambda: tevs.FIR([], "f4"), ValueError, "tevs.FIR: taps: shape (0,)"),
    (lambda: tevs.FIR([1j], "f4"), TypeError, "tevs.FIR: complex taps"),
    (lambda: tevs.FIR([1.0], "f4").process(F8), TypeError, "tevs.FIR.process: x: float64, needs float32"),
    (lambda: tevs.FIR([1.0], "f4").process(np.ones((2, 2), "f4")), ValueError, "tevs.FIR.process: x: shape (2, 2), needs (n,)"),
    (lambda: tevs.FIR([1.0], "f4", channels=3).process(np.ones((2, 2), "f4")), ValueError, "needs (3, n)"),
    (lambda: tevs.FIR([1.0], "f4", down=3).process(F4), ValueError, "tevs.FIR.process: x: 4 samples, needs a multiple of 3"),
    (lambda: tevs.FIR([1.0], "f4").process(F4, scale=2), TypeError, "tevs.FIR.process: scale"),
    (lambda: tevs.FIR([1.0], "f4").process(F4, out=np.empty(4)), TypeError, "tevs.FIR.process: out: float64, needs float32"),
    (lambda: tevs.FIR([1.0], "u1"), TypeError, "tevs.FIR: the library has no"),
    (lambda: tevs.IIR([1], [0, 1]), tevs.Error, "zero"),
    (lambda: tevs.IIR([1]), ValueError, "tevs.IIR: needs b and a, or sos"),
    (lambda: tevs.FFT(0), ValueError, "tevs.FFT: n: 0"),
    (lambda: tevs.FFT(8, "f4").forward(np.ones(7, "f4")), ValueError, "tevs.FFT.forward: x: shape (7,), needs (8,)"),
    (lambda: tevs.FFT(8, "u1"), TypeError, "tevs.FFT: the library has no"),
    (lambda: tevs.get_window("bohman", 9), ValueError, "tevs.get_window: window: 'bohman'"),
    (lambda: tevs.goertzel(F4, 2.0), tevs.Error, "tevs.goertzel: a relative frequency"),
    (lambda: tevs.goertzel(F4, float("nan")), tevs.Error, "tevs.goertzel: a relative frequency"),
]


@pytest.mark.parametrize("function, kind, text", BAD)
def test_bad_input(function, kind, text):
    with pytest.raises(kind, match=re.escape(text)):
        function()


def test_closed():
    with tevs.FIR([1.0], "f4", channels=2) as fir:
        fir.process(np.ones((2, 3), "f4"))
    with pytest.raises(ValueError, match="tevs.FIR.process: pState: the record is closed"):
        fir.process(np.ones((2, 3), "f4"))


def test_companding_round_trip():
    codes = np.arange(256, dtype=np.uint8)
    assert np.array_equal(tevs.alaw_encode(tevs.alaw_decode(codes)), codes)
    again = tevs.mulaw_encode(tevs.mulaw_decode(codes))
    assert np.array_equal(again[codes != 0x7f], codes[codes != 0x7f])


def test_noise_is_one_sequence():
    with tevs.GaussianNoise(seed=3) as whole, tevs.GaussianNoise(seed=3) as cut:
        x = whole.process(1001)
        y = np.concatenate([cut.process(n) for n in (1, 500, 500)])
    assert np.array_equal(x, y) and abs(x.std() - 1) < 0.1


def test_levinson_solves_its_equations():
    x = samples("f8", 400)
    r = np.correlate(x, x, "full")[399:410]
    a, k, e = tevs.levinson(r)
    R = r[np.abs(np.subtract.outer(np.arange(11), np.arange(11)))]
    np.testing.assert_allclose(R @ a, [e] + [0] * 10, atol=1e-9 * r[0])


def test_emphasis_is_undone():
    x = samples("f8")
    pre, de = tevs.Emphasis(0.9), tevs.Emphasis(0.9, inverse=True)
    y = np.concatenate([de.process(pre.process(block)) for block in np.split(x, [3, 50])])
    np.testing.assert_allclose(y, x, atol=1e-14)


def test_tone():
    n = np.arange(500)
    with tevs.Tone(0.01, 1, 2, "f8") as tone:
        x = np.concatenate([tone.process(100), tone.process(400)])
        np.testing.assert_allclose(x, 2 * np.cos(1 + 2 * np.pi * 0.01 * n), atol=1e-13)
        assert abs(tone.phase - (1 + 2 * np.pi * 5) % (2 * np.pi)) < 1e-12
    with tevs.Tone(0.1, dtype="c8") as up, tevs.Tone(0.1, dtype="c8") as down:
        z = samples("c8", 300)
        np.testing.assert_allclose(down.mix_down(up.mix_up(z)), z, atol=1e-5)
    with tevs.Tone(0.1) as down:
        x = samples("f4", 300)
        np.testing.assert_allclose(down.mix_down(x), x * np.exp(-2j * np.pi * 0.1 * np.arange(300)), atol=1e-5)


def test_decoder_corrects_what_the_code_can():
    sent = np.concatenate([RNG.integers(0, 2, 2000), np.zeros(6)]).astype(np.uint8)
    coded, state = tevs.convolutional_encode(sent, (0o171, 0o133), 7)
    assert state == 0
    soft = np.clip(np.rint(40 * (1.0 - 2 * coded) + 25 * RNG.standard_normal(coded.size)), -127, 127).astype(np.int8)
    with tevs.ViterbiDecoder((0o171, 0o133), 7) as decoder:
        received = np.concatenate([*(decoder.process(block) for block in np.split(soft, [2, 1000])), decoder.flush()])
    assert np.array_equal(received, sent) and np.count_nonzero((soft < 0) != coded) > 50


@pytest.mark.parametrize("extension", ["periodic", "mirror"])
@pytest.mark.parametrize("family, taps", [("daubechies", 8), ("symlet", 10), ("cdf", 10)])
def test_wavelet_transform_is_undone(family, taps, extension):
    x = samples("f8", 333)
    with tevs.DWT(333, 4, family, taps, extension) as dwt:
        c = dwt.forward(x)
        np.testing.assert_allclose(dwt.inverse(c), x, atol=1e-12)
        assert [dwt.band(level).stop for level in (0, 4, 3, 2)] == [dwt.band(level).start for level in (4, 3, 2, 1)] and dwt.band(1).stop == c.size


@pytest.mark.parametrize("readme", ["README.md", "../README.md"])
def test_readme(readme, tmp_path, monkeypatch):
    text = (pathlib.Path(__file__).parent.parent / readme).read_text()
    if "tevs.dask" in text:
        pytest.importorskip("dask.array", reason="python3-dask is not installed")
    monkeypatch.chdir(tmp_path)
    for folder in ("recordings", "narrow"):
        (tmp_path / folder).mkdir()
    with wave.open("recordings/one.wav", "wb") as file:
        file.setparams((1, 2, 48000, 0, "NONE", ""))
        file.writeframes(samples("i2").tobytes())
    names = {"x": samples("f8", 4800), "a": samples("i2")}
    for block in re.findall(r"```python\n(.*?)```", text, flags=re.S):
        exec(block, names)
    assert names["y"].shape == names["x"].shape
