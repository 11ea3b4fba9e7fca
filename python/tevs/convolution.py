"""Convolution, correlation, resampling and medians of whole signals, with SciPy's names."""

from __future__ import annotations

from math import gcd
from typing import Any

import numpy as np
from numpy.typing import ArrayLike

from . import raw
from ._core import Array, along, array, axis_of, back, call, code, destination, floating, named
from .design import firwin
from .filters import upfirdn


def _pair(where: str, in1: ArrayLike, in2: ArrayLike) -> tuple[Array, Array]:
    a, b = floating(in1), floating(in2)
    if a.ndim != 1 or b.ndim != 1 or not a.size or not b.size:
        raise ValueError(f"{where}: in1, in2: need vectors of at least one element, not {a.shape} and {b.shape}")
    dtype = np.result_type(a.dtype, b.dtype)
    return a.astype(dtype, copy=False), b.astype(dtype, copy=False)


def _part(where: str, full: Array, n1: int, n2: int, mode: str) -> Array:
    if mode == "full":
        return full
    if mode == "same":
        start = (n2 - 1) // 2
        return full[start:start + n1].copy()
    if mode == "valid":
        return full[min(n1, n2) - 1:max(n1, n2)].copy()
    raise ValueError(f"{where}: mode: {mode!r}, needs 'full', 'same' or 'valid'")


def convolve(in1: ArrayLike, in2: ArrayLike, mode: str = "full") -> Array:
    """The linear convolution of two vectors, direct where they are short and by FFT where they are long, as scipy.signal.convolve.

    >>> convolve([1, 2, 3], [1, 1])
    array([1., 3., 5., 3.])
    """
    where = "tevs.convolve"
    a, b = _pair(where, in1, in2)
    n = a.size + b.size - 1
    out = np.empty(n, a.dtype)
    letters = code(a.dtype, where)
    if a.dtype.kind == "c":   # as a correlation with the second one conjugated and reversed
        reversed = np.empty(b.size, b.dtype)
        call(where, named(f"tevsConjFlip_{letters}", where), reversed, b, reversed, b.size)
        call(where, named(f"tevsCrossCorr_{letters}", where), out, reversed, b.size, a, a.size, out, n, 1 - b.size)
    else:
        call(where, named(f"tevsConv_{letters}", where), out, a, a.size, b, b.size, out)
    return _part(where, out, a.size, b.size, mode)


def fftconvolve(in1: ArrayLike, in2: ArrayLike, mode: str = "full") -> Array:
    """convolve, under the name that scipy.signal has for long vectors."""
    return convolve(in1, in2, mode)


oaconvolve = fftconvolve


def correlate(in1: ArrayLike, in2: ArrayLike, mode: str = "full") -> Array:
    """The cross-correlation, sum of in1[k + lag] conj(in2[k]), for lags from 1 - len(in2) on, as scipy.signal.correlate.

    >>> correlate([1, 2, 3], [0, 1, 0.5])
    array([0.5, 2. , 3.5, 3. , 0. ])
    """
    where = "tevs.correlate"
    a, b = _pair(where, in1, in2)
    n = a.size + b.size - 1
    out = np.empty(n, a.dtype)
    call(where, named(f"tevsCrossCorr_{code(a.dtype, where)}", where), out, b, b.size, a, a.size, out, n, 1 - b.size)
    return _part(where, out, a.size, b.size, mode)


def autocorrelate(x: ArrayLike, lags: int, norm: str | None = None) -> Array:
    """sum of conj(x[k]) x[k + lag] for lag = 0 .. lags-1; norm "biased" divides by len(x), "unbiased" by the number of products.

    >>> autocorrelate([1, 2, 3], 2)
    array([14.,  8.])
    """
    where = "tevs.autocorrelate"
    a = floating(x)
    if a.ndim != 1 or not a.size or lags < 1:
        raise ValueError(f"{where}: needs a vector and at least one lag")
    if norm not in (None, "biased", "unbiased"):
        raise ValueError(f"{where}: norm: {norm!r}, needs None, 'biased' or 'unbiased'")
    out = np.empty(lags, a.dtype)
    form = {None: "", "biased": "_NormA", "unbiased": "_NormB"}[norm]
    call(where, named(f"tevsAutoCorr{form}_{code(a.dtype, where)}", where), out, a, a.size, out, lags)
    return out


def median_filter(x: ArrayLike, size: int, out: Array | None = None) -> Array:
    """The median of a sliding window of an odd number of samples; at the ends the first and the last sample go on. As scipy.ndimage.median_filter with mode="nearest".

    >>> median_filter(np.array([1, 9, 2, 3], np.int16), 3)
    array([1, 2, 3, 3], dtype=int16)
    """
    where = "tevs.median_filter"
    a = array(x)
    if a.ndim != 1:
        raise ValueError(f"{where}: x: {a.ndim} dimensions, needs 1")
    if size < 1 or size % 2 == 0:
        raise ValueError(f"{where}: size: {size}, needs an odd number")
    f = named(f"tevsFilterMedian_{code(a.dtype, where)}", where)
    result = destination(where, out, a.shape, a.dtype)
    if a.size:
        call(where, f, result, a, result, a.size, size)
    return result


def medfilt(volume: ArrayLike, kernel_size: int = 3) -> Array:
    """median_filter with zeros beyond the ends, as scipy.signal.medfilt of a vector.

    >>> medfilt(np.array([1.0, 9, 2, 3]))
    array([1., 2., 3., 2.])
    """
    where = "tevs.medfilt"
    a = array(volume)
    if a.ndim != 1:
        raise ValueError(f"{where}: volume: {a.ndim} dimensions, needs 1")
    if kernel_size < 1 or kernel_size % 2 == 0:
        raise ValueError(f"{where}: kernel_size: {kernel_size}, needs an odd number")
    if a.dtype == np.int64 and a.size and max(int(a.max()), -int(a.min())) < 2**31:
        return medfilt(a.astype(np.int32), kernel_size).astype(np.int64)
    padded = np.zeros(a.size + kernel_size - 1, a.dtype)
    padded[kernel_size // 2:kernel_size // 2 + a.size] = a
    return median_filter(padded, kernel_size)[kernel_size // 2:kernel_size // 2 + a.size].copy()


def _polyphase_taps(where: str, window: Any, up: int, down: int, dtype: np.dtype[Any]) -> Array:
    """The low-pass at `up` times the rate of samples of a type: of a window, or as given."""
    if isinstance(window, (list, np.ndarray)):
        taps = np.asarray(window)
        if taps.ndim != 1 or not taps.size:
            raise ValueError(f"{where}: window: shape {taps.shape}, needs a vector")
        return taps
    return firwin(20 * max(up, down) + 1, 1 / max(up, down), window).astype(np.float32 if dtype in (np.float32, np.complex64) else np.float64)


def resample_poly(x: ArrayLike, up: int, down: int, axis: int = 0, window: Any = ("kaiser", 5.0)) -> Array:
    """x at up / down times its rate, filtered in polyphase form by a window's low-pass or by given taps, as scipy.signal.resample_poly.

    >>> resample_poly(np.ones(100), 2, 1).size
    200
    """
    where = "tevs.resample_poly"
    if up != int(up) or down != int(down) or up < 1 or down < 1:
        raise ValueError(f"{where}: up, down: {up}, {down}, need integers of at least 1")
    divisor = gcd(int(up), int(down))
    up, down = int(up) // divisor, int(down) // divisor
    signal = floating(x)
    axis = axis_of(where, signal, axis)
    if up == down == 1:
        return signal.copy()
    taps = _polyphase_taps(where, window, up, down, signal.dtype)
    half = (taps.size - 1) // 2
    # Zeros in front bring the middle of the filter to a multiple of `down`: a whole number of outputs late.
    front = down - half % down
    taps = np.concatenate([np.zeros(front, taps.dtype), taps * taps.dtype.type(up)])
    late = (half + front) // down
    count = -(-signal.shape[axis] * up // down)
    rows = along(upfirdn(taps, signal, up, down, axis), axis)[:, late:late + count]
    if rows.shape[1] < count:
        rows = np.pad(rows, ((0, 0), (0, count - rows.shape[1])))
    return back(np.ascontiguousarray(rows), signal.shape, axis)


__all__ = ["convolve", "fftconvolve", "oaconvolve", "correlate", "autocorrelate", "median_filter", "medfilt", "resample_poly"]
