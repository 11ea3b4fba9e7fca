"""Transforms: records for one length, and functions with SciPy's names that keep the records they need."""

from __future__ import annotations

from functools import lru_cache
from typing import Any

import numpy as np
from numpy.typing import ArrayLike, DTypeLike

from . import raw
from ._core import Array, Closing, along, axis_of, back, call, code, complex_int16, complex_int32, destination, floating, named, samples, type_name
from .elementwise import multiply
from .windows import get_window

_FLAGS = {None: raw.ScaleInvByN, "backward": raw.ScaleInvByN, "forward": raw.ScaleFwdByN, "ortho": raw.ScaleBySqrtN, "none": raw.NoScale}
_SPECTRA: dict[np.dtype[Any], np.dtype[Any]] = {np.dtype("f4"): np.dtype("c8"), np.dtype("f8"): np.dtype("c16"), np.dtype("i2"): complex_int16, np.dtype("i4"): complex_int32}


class FFT(Closing):
    """The Fourier transform of n samples, of any n; powers of two are fastest.

    dtype is that of the samples: complex64, complex128, complex_int16, complex_int32 (powers of two), or float32, float64, int16, int32 (powers of two) with spectra of
    n // 2 + 1 values. norm is SciPy's: "backward" (default), "ortho", "forward", or "none". Integer results are times 2**-scale, rounded and saturated.
    One record serves any number of threads.

    >>> with FFT(4, np.float32) as fft:
    ...     fft.forward(np.array([1, 2, 3, 4], np.float32))
    array([10.+0.j, -2.+2.j, -2.+0.j], dtype=complex64)
    """

    def __init__(self, n: int, dtype: DTypeLike = np.complex64, norm: str | None = None) -> None:
        where = "tevs.FFT"
        self.n, self.dtype = n, np.dtype(dtype)
        self.real = self.dtype in _SPECTRA
        self.spectrum_dtype = _SPECTRA.get(self.dtype, self.dtype)
        if norm not in _FLAGS:
            raise ValueError(f"{where}: norm: {norm!r}, needs 'backward', 'ortho', 'forward' or 'none'")
        if n < 1:
            raise ValueError(f"{where}: n: {n}, needs at least 1")
        letters = code(dtype, where)
        self._integer = letters[-1] in "sc" and "f" not in letters
        suffix = letters + ("_Sfs" if self._integer else "")
        kind, forward, inverse = ("R", "RToCCS", "CCSToR") if self.real else ("C", "CToC", "CToC")
        power = n & (n - 1) == 0
        family = "FFT" if power else "DFT"
        self._record = named(f"tevs{family}InitAlloc_{kind}_{letters}", where)(n.bit_length() - 1 if power else n, _FLAGS[norm], raw.HintNone)
        self._forward, self._inverse = named(f"tevs{family}Fwd_{forward}_{suffix}", where), named(f"tevs{family}Inv_{inverse}_{suffix}", where)

    @property
    def bins(self) -> int:
        """How many values a spectrum has."""
        return self.n // 2 + 1 if self.real else self.n

    def _transform(self, where: str, f: Any, x: ArrayLike, source: tuple[int, Any], target: tuple[int, Any], out: Array | None, scale: int) -> Array:
        a = samples(where, x, source[1])
        if a.shape != (source[0],):
            raise ValueError(f"{where}: x: shape {a.shape}, needs {(source[0],)}")
        if scale and not self._integer:
            raise TypeError(f"{where}: scale: only integers are scaled, not {type_name(self.dtype)}")
        result = destination(where, out, (target[0],), target[1])
        given, made = a, result
        if self.real:   # a spectrum in C is the parts of its values in turn
            given, made = (np.ascontiguousarray(a).view(self.dtype), result) if source[1] != self.dtype else (a, result.view(self.dtype))
        call(where, f, made, given, made, self._record, *((scale,) if self._integer else ()), None)
        return result

    def forward(self, x: ArrayLike, out: Array | None = None, scale: int = 0) -> Array:
        """The spectrum of n samples."""
        return self._transform("tevs.FFT.forward", self._forward, x, (self.n, self.dtype), (self.bins, self.spectrum_dtype), out, scale)

    def inverse(self, x: ArrayLike, out: Array | None = None, scale: int = 0) -> Array:
        """The samples of a spectrum."""
        return self._transform("tevs.FFT.inverse", self._inverse, x, (self.bins, self.spectrum_dtype), (self.n, self.dtype), out, scale)


@lru_cache(maxsize=32)
def _record(n: int, dtype: np.dtype[Any], norm: str | None) -> FFT:
    return FFT(n, dtype, norm)


def _sized(x: Array, n: int, axis: int) -> Array:
    """x cut or filled with zeros to n along the axis."""
    if x.shape[axis] >= n:
        return x[(slice(None),) * axis + (slice(n),)]
    fill = [(0, 0)] * x.ndim
    fill[axis] = (0, n - x.shape[axis])
    return np.pad(x, fill)


def _each(where: str, x: Array, n: int | None, length: int, dtype: np.dtype[Any], axis: int, norm: str | None, direction: str) -> Array:
    """The transforms of the vectors along an axis; n samples each, of which `length` values are taken in."""
    if (n if n is not None else length) < 1:
        raise ValueError(f"{where}: n: {n if n is not None else length}, needs at least 1")
    axis = axis_of(where, x, axis)
    record = _record(n if n is not None else length, dtype, norm)
    forward = direction == "forward"
    transform = record.forward if forward else record.inverse
    if x.shape == (length,):
        return transform(x.astype(record.dtype if forward else record.spectrum_dtype, copy=False))
    x = _sized(x, length, axis)
    rows = along(x, axis).astype(record.dtype if forward else record.spectrum_dtype, copy=False)
    out = np.empty((rows.shape[0], record.bins if forward else record.n), record.spectrum_dtype if forward else record.dtype)
    for row, result in zip(rows, out):
        transform(row, result)
    return back(out, x.shape, axis)


_DOUBLE = frozenset((np.dtype("f8"), np.dtype("c16")))
_COMPLEX: dict[bool, np.dtype[Any]] = {False: np.dtype("c8"), True: np.dtype("c16")}


def fft(x: ArrayLike, n: int | None = None, axis: int = -1, norm: str | None = None) -> Array:
    """The discrete Fourier transform, as scipy.fft.fft; float32 and complex64 stay in single precision.

    >>> fft([1, 0, 0, 0])
    array([1.+0.j, 1.+0.j, 1.+0.j, 1.+0.j])
    """
    a = floating(x)
    return _each("tevs.fft", a, n, n if n is not None else a.shape[axis], _COMPLEX[a.dtype in _DOUBLE], axis, norm, "forward")


def ifft(x: ArrayLike, n: int | None = None, axis: int = -1, norm: str | None = None) -> Array:
    """The inverse of fft."""
    a = floating(x)
    return _each("tevs.ifft", a, n, n if n is not None else a.shape[axis], _COMPLEX[a.dtype in _DOUBLE], axis, norm, "inverse")


def rfft(x: ArrayLike, n: int | None = None, axis: int = -1, norm: str | None = None) -> Array:
    """The spectrum of real samples, n // 2 + 1 values.

    >>> rfft([1, 2, 3, 4])
    array([10.+0.j, -2.+2.j, -2.+0.j])
    """
    a = floating(x)
    if a.dtype.kind == "c":
        raise TypeError("tevs.rfft: x: needs real samples")
    return _each("tevs.rfft", a, n, n if n is not None else a.shape[axis], a.dtype, axis, norm, "forward")


def irfft(x: ArrayLike, n: int | None = None, axis: int = -1, norm: str | None = None) -> Array:
    """The inverse of rfft, of n samples; 2 (bins - 1) by default."""
    a = floating(x)
    count = n if n is not None else 2 * (a.shape[axis] - 1)
    return _each("tevs.irfft", a, count, count // 2 + 1, np.dtype("f8" if a.dtype in _DOUBLE else "f4"), axis, norm, "inverse")


def fftfreq(n: int, d: float = 1.0) -> Array:
    """The frequencies of fft's bins."""
    return np.fft.fftfreq(n, d)


def rfftfreq(n: int, d: float = 1.0) -> Array:
    """The frequencies of rfft's bins."""
    return np.fft.rfftfreq(n, d)


@lru_cache(maxsize=32)
def _dct_record(letters: str, n: int, direction: str) -> Any:
    return named(f"tevsDCT{direction}InitAlloc_{letters}", "tevs.dct")(n, raw.HintNone)


def _dct(where: str, x: ArrayLike, norm: str | None, axis: int, direction: str) -> Array:
    if norm != "ortho":
        raise ValueError(f"{where}: norm: {norm!r}, needs 'ortho'")
    a = floating(x)
    if a.dtype.kind == "c":
        raise TypeError(f"{where}: x: needs real samples")
    axis = axis_of(where, a, axis)
    rows = along(a, axis)
    letters = code(a.dtype, where)
    out = np.empty_like(rows)
    if rows.shape[1] < 1:
        raise ValueError(f"{where}: x: the axis is empty")
    record, f = _dct_record(letters, rows.shape[1], direction), named(f"tevsDCT{direction}_{letters}", where)
    for row, result in zip(rows, out):
        call(where, f, result, row, result, record, None)
    return back(out, a.shape, axis)


def dct(x: ArrayLike, norm: str | None = "ortho", axis: int = -1) -> Array:
    """The cosine transform of type II, orthonormal: scipy.fft.dct(x, norm="ortho").

    >>> dct([1.0, 1, 1, 1])
    array([2., 0., 0., 0.])
    """
    return _dct("tevs.dct", x, norm, axis, "Fwd")


def idct(x: ArrayLike, norm: str | None = "ortho", axis: int = -1) -> Array:
    """The inverse of dct."""
    return _dct("tevs.idct", x, norm, axis, "Inv")


@lru_cache(maxsize=32)
def _hilbert_record(n: int) -> Any:
    return raw.tevsHilbertInitAlloc_32f32fc(n, raw.HintNone)


def hilbert(x: ArrayLike, axis: int = -1) -> Array:
    """The analytic signal of real samples, in single precision; of others than float32 through the double-precision transform.

    >>> hilbert(np.array([1, 0, -1, 0], np.float32)).imag
    array([ 0.,  1.,  0., -1.], dtype=float32)
    """
    a = floating(x)
    if a.dtype.kind == "c":
        raise TypeError("tevs.hilbert: x: needs real samples")
    axis = axis_of("tevs.hilbert", a, axis)
    if a.dtype == np.float64:
        n = a.shape[axis]
        spectrum = np.zeros((*a.shape[:axis], n, *a.shape[axis + 1:]), np.complex128)
        half = rfft(a, axis=axis)
        doubled = (slice(None),) * axis + (slice(1, (n + 1) // 2),)
        spectrum[(slice(None),) * axis + (slice(half.shape[axis]),)] = half
        spectrum[doubled] *= 2
        return ifft(spectrum, axis=axis)
    rows = along(a, axis)
    out = np.empty(rows.shape, np.complex64)
    if rows.shape[1] < 1:
        raise ValueError("tevs.hilbert: x: the axis is empty")
    record = _hilbert_record(rows.shape[1])
    for row, result in zip(rows, out):
        call("tevs.hilbert", raw.tevsHilbert_32f32fc, result, row, result, record)
    return back(out, a.shape, axis)


def _frames(where: str, nperseg: int, noverlap: int | None, nfft: int | None, window: Any) -> tuple[int, int, int, Array]:
    overlap = nperseg // 2 if noverlap is None else noverlap
    points = nperseg if nfft is None else nfft
    if nperseg < 1 or not 0 <= overlap < nperseg or points < nperseg:
        raise ValueError(f"{where}: needs 0 <= noverlap < nperseg <= nfft, not {overlap}, {nperseg}, {points}")
    w = get_window(window, nperseg) if isinstance(window, (str, tuple)) else np.asarray(window)
    if w.shape != (nperseg,):
        raise ValueError(f"{where}: window: shape {w.shape}, needs {(nperseg,)}")
    return overlap, points, nperseg - overlap, w


def stft(x: ArrayLike, fs: float = 1.0, window: Any = "hann", nperseg: int = 256, noverlap: int | None = None, nfft: int | None = None,
         boundary: str | None = "zeros", padded: bool = True, axis: int = -1) -> tuple[Array, Array, Array]:
    """The short-time Fourier transform of real samples: frequencies, times, and spectra, as scipy.signal.stft with detrend=False and scaling="spectrum".

    >>> f, t, Z = stft(np.ones(1024), nperseg=256)
    >>> Z.shape, round(float(abs(Z[0, 4])), 6)
    ((129, 9), 1.0)
    """
    a = floating(x)
    if a.dtype.kind == "c":
        raise TypeError("tevs.stft: x: needs real samples")
    if boundary not in ("zeros", None):
        raise ValueError(f"tevs.stft: boundary: {boundary!r}, needs 'zeros' or None")
    axis = axis_of("tevs.stft", a, axis)
    overlap, points, step, w = _frames("tevs.stft", nperseg, noverlap, nfft, window)
    rows = along(a, axis)
    edge = nperseg // 2 if boundary else 0
    if edge:
        rows = np.pad(rows, ((0, 0), (edge, edge)))
    if padded and rows.shape[1] >= nperseg:
        rows = np.pad(rows, ((0, 0), (0, -(rows.shape[1] - nperseg) % step)))
    if rows.shape[1] < nperseg:
        raise ValueError(f"tevs.stft: x: {a.shape[axis]} samples, needs {nperseg}")
    count = (rows.shape[1] - overlap) // step
    w = (w / w.sum()).astype(a.dtype)
    record = _record(points, a.dtype, "backward")
    spectra = np.empty((rows.shape[0], count, record.bins), record.spectrum_dtype)
    frame = np.zeros(points, a.dtype)
    head = frame[:nperseg]
    for row, result in zip(rows, spectra):
        for k in range(count):
            multiply(row[k * step:k * step + nperseg], w, out=head)
            record.forward(frame, result[k])
    shaped = np.moveaxis(spectra, 1, 2).reshape(*a.shape[:axis], *a.shape[axis + 1:], record.bins, count)
    times = (np.arange(count) * step + nperseg / 2 - edge) / fs
    return rfftfreq(points, 1 / fs), times, np.moveaxis(shaped, -2, axis if a.ndim > 1 else -2)


def istft(Zxx: ArrayLike, fs: float = 1.0, window: Any = "hann", nperseg: int | None = None, noverlap: int | None = None, boundary: bool = True) -> tuple[Array, Array]:
    """The samples of spectra that stft has made of one signal: times and samples.

    >>> x = np.random.default_rng(1).standard_normal(1000)
    >>> t, y = istft(stft(x)[2])
    >>> bool(np.allclose(x, y[:1000]))
    True
    """
    Z = floating(Zxx)
    if Z.ndim != 2 or Z.dtype.kind != "c":
        raise ValueError("tevs.istft: Zxx: needs a complex matrix, frequencies by times")
    points = 2 * (Z.shape[0] - 1)
    length = points if nperseg is None else nperseg
    _, _, step, w = _frames("tevs.istft", length, noverlap, points, window)
    frames = irfft(Z, points, axis=0)[:length].T
    w = w.astype(frames.dtype)
    x = np.zeros((Z.shape[1] - 1) * step + length, frames.dtype)
    weight = np.zeros_like(x)
    for k, frame in enumerate(frames):
        place = slice(k * step, k * step + length)
        x[place] += frame * (w * w.sum())
        weight[place] += w * w
    if boundary:
        edge = length // 2
        x, weight = x[edge:len(x) - edge], weight[edge:len(weight) - edge]
    if weight.size and weight.min() <= 1e-10:
        raise ValueError("tevs.istft: the windows leave gaps: no signal has these frames")
    return np.arange(x.size) / fs, x / weight


__all__ = ["FFT", "fft", "ifft", "rfft", "irfft", "fftfreq", "rfftfreq", "dct", "idct", "hilbert", "stft", "istft"]
