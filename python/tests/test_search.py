"""Order, search, sparse and multirate adaptive filters beside NumPy and their formulas."""
import numpy as np
import pytest

import tevs

RNG = np.random.default_rng(19)


def samples(dtype, *shape):
    return (RNG.standard_normal(shape) * 50).astype(dtype)


@pytest.mark.parametrize("dtype", ["i2", "i4", "f4", "f8"])
@pytest.mark.parametrize("shape, axis", [((1,), 0), ((1000,), -1), ((30, 41), 0), ((30, 41), 1), ((0,), 0)])
def test_order(dtype, shape, axis):
    x = samples(dtype, *shape)
    before = x.copy()
    assert np.array_equal(tevs.sort(x, axis), np.sort(x, axis))
    assert np.array_equal(tevs.sort(x, axis, descending=True), np.flip(np.sort(x, axis), axis))
    assert np.array_equal(tevs.argsort(x, axis), np.argsort(x, axis, kind="stable"))
    assert np.array_equal(tevs.argsort(x, axis, descending=True), np.argsort(-x, axis, kind="stable"))
    assert np.array_equal(x, before)
    table = np.unique(samples(dtype, 20))
    differences = np.abs(x[..., None].astype("f8") - table)
    assert np.array_equal(tevs.nearest(x, table), differences.argmin(-1))


def test_codebook():
    x, book = samples("f4", 50, 7), samples("f4", 9, 7)
    places, distances = tevs.vq(x, book)
    squares = ((x[:, None].astype("f8") - book) ** 2).sum(-1)
    assert np.array_equal(places, squares.argmin(1))
    np.testing.assert_allclose(distances, np.sqrt(squares.min(1)), rtol=1e-5)


@pytest.mark.parametrize("cuts", [[], [1, 2, 300], [500]])
def test_sparse(cuts):
    x = samples("f4", 1000)
    taps, delays = [1, -0.5, 0.25], [0, 3, 90]
    feedback, behind = [0.4, -0.3], [8, 77]
    dense = np.zeros(91)
    dense[delays] = taps
    denominator = np.zeros(78)
    denominator[[0, *behind]] = [1, *feedback]
    for make, want in ((lambda: tevs.SparseFIR(taps, delays), tevs.lfilter(dense, [1], x.astype("f8"))),
                       (lambda: tevs.SparseIIR(taps, delays, feedback, behind), tevs.lfilter(dense, denominator, x.astype("f8")))):
        with make() as filter:
            result = np.concatenate([filter.process(part) for part in np.split(x, cuts)])
        np.testing.assert_allclose(result, want, atol=1e-4)
        with pytest.raises(ValueError, match="closed"):
            filter.process(x)


@pytest.mark.parametrize("dtype", ["f4", "f8", "i2"])
def test_direct_filters_give_one_answer(dtype):
    x, taps = samples(dtype, 9000), tevs.firwin(333, 0.2).astype("f4" if dtype == "f4" else "f8")
    with tevs.FIR(taps, dtype, method="direct") as filter:
        whole = filter.process(x)
        filter.reset()
        assert np.array_equal(whole, np.concatenate([filter.process(part) for part in np.split(x, [1, 512, 1025, 8000])]))
    assert np.abs(whole - tevs.lfilter(taps.astype("f8"), [1], x)).max() <= (0.501 if dtype == "i2" else 1e-3)
    with pytest.raises(ValueError, match="FIR: method"):
        tevs.FIR([1], method="fft")


@pytest.mark.parametrize("up, down", [(1, 2), (2, 1), (1, 1), (3, 2)])
@pytest.mark.parametrize("dtype", ["f4", "c8"])
def test_multirate_lms(dtype, up, down):
    x = samples(dtype, 6000) / 50
    if dtype == "c8":
        x = x + 1j * samples("f4", 6000) / 50
    x, plant = x.astype(dtype), np.array([0.5, -0.3, 0.2, 0.1, 0.05, -0.02], dtype)
    reference = tevs.FIR(plant, dtype, up, down).process(x)
    lms = tevs.MultirateLMS(6, 0.3, dtype, up, down, norm=1e-3)
    y = np.concatenate([lms.process(a, r) for a, r in zip(np.split(x, 10), np.split(reference, 10))])
    np.testing.assert_allclose(lms.taps, plant, atol=1e-3)
    assert np.abs(y - reference)[-100:].max() < 1e-2 < np.abs(y - reference)[:20].max()


@pytest.mark.parametrize("filter", [tevs.LMS, tevs.MultirateLMS])
def test_number_of_adaptive_taps(filter):
    for number in (3, np.int64(3), [0, 0, 0]):   # what size and shape give is a number too, and no tap
        np.testing.assert_array_equal(filter(number, 0.1).taps, np.zeros(3, "f4"))


@pytest.mark.parametrize("error, reason, call", [
    (ValueError, "rise|position", lambda: tevs.SparseFIR([1, 2], [3, 1])),
    (ValueError, "SparseFIR: taps: needs at least one", lambda: tevs.SparseFIR([], [])),
    (ValueError, "one length", lambda: tevs.SparseFIR([1], [1, 2])),
    (TypeError, "needs integers", lambda: tevs.SparseFIR([1], [0.5])),
    (ValueError, "0 .. 2", lambda: tevs.SparseFIR([1], [-1])),
    (TypeError, "x: float64, needs float32", lambda: tevs.SparseFIR([1], [0]).process(np.ones(3))),
    (TypeError, "needs float32 or complex64", lambda: tevs.MultirateLMS(2, 0.1, "f8")),
    (ValueError, "multiple of 2", lambda: tevs.MultirateLMS(2, 0.1, down=2).process(np.ones(3, "f4"), np.ones(1, "f4"))),
    (ValueError, "reference: shape", lambda: tevs.MultirateLMS(2, 0.1, down=2).process(np.ones(4, "f4"), np.ones(1, "f4"))),
    (TypeError, "table: float64, needs float32", lambda: tevs.nearest(np.ones(1, "f4"), np.ones(1))),
    (ValueError, "table: shape", lambda: tevs.nearest(np.ones(1), np.ones(0))),
    (ValueError, "rows of one length", lambda: tevs.vq(np.ones((2, 2)), np.ones((2, 3)))),
    (TypeError, "tevsSort_8u_I", lambda: tevs.sort(np.ones(3, "u1")))])
def test_refusals(error, reason, call):
    with pytest.raises(error, match=reason):
        call()
