"""Filters: records that follow a stream block by block, and functions with SciPy's names over whole signals."""

from __future__ import annotations

import math
from functools import lru_cache
from typing import Any

import numpy as np
from numpy.typing import ArrayLike, DTypeLike

from . import raw
from ._core import Array, Closing, along, axis_of, back, call, code, destination, floating, named, samples, type_name
from .elementwise import multiply


def _taps_for(where: str, taps: Array, dtype: np.dtype[Any]) -> Array:
    """Taps in a type for which the library has filters of such samples: as precise as they come, complex where the samples are."""
    if taps.dtype.kind in "biu":
        taps = taps.astype(np.float64)
    if taps.dtype.char not in "fdFD":
        raise TypeError(f"{where}: taps: no form for {type_name(taps.dtype)}")
    double = taps.dtype.char in "dD" or dtype.char in "dDi" or dtype.kind == "V" and dtype.itemsize == 8
    whole = dtype.kind == "c" or dtype.kind == "V"
    if taps.dtype.kind == "c" and not whole:
        raise TypeError(f"{where}: complex taps need complex samples, not {type_name(dtype)}")
    return np.ascontiguousarray(taps, {(0, 0): np.float32, (0, 1): np.float64, (1, 0): np.complex64, (1, 1): np.complex128}[whole, double])


def _memory(get_size: Any, *arguments: int) -> Array:
    """The bytes that a record needs."""
    size = np.empty(1, np.int32)
    get_size(*arguments, size)
    return np.empty(size[0], np.uint8)


class _Stream(Closing):
    """One record a channel, and the rows of a block filtered by them."""

    _where: str
    _filter: Any
    _set_delay: Any

    def __init__(self, where: str, dtype: np.dtype[Any], channels: int | None, up: int, down: int) -> None:
        if channels is not None and channels < 1:
            raise ValueError(f"{where}: channels: {channels}, needs at least 1")
        self._where, self.dtype, self.channels, self.up, self.down = where, dtype, channels, up, down
        self._records: list[Any] = []
        self._integer = dtype.kind in "iV"

    def process(self, x: ArrayLike, out: Array | None = None, scale: int = 0) -> Array:
        """The next block of the stream, of any length (between rates: a multiple of `down`); with channels a matrix, one channel a row. In place with out=x.
        Integer samples are stored times 2**-scale, rounded and saturated."""
        where = self._where + ".process"
        a = samples(where, x, self.dtype)
        if a.ndim != (1 if self.channels is None else 2) or self.channels is not None and a.shape[0] != self.channels:
            raise ValueError(f"{where}: x: shape {a.shape}, needs {'(n,)' if self.channels is None else f'({self.channels}, n)'}")
        if scale and not self._integer:
            raise TypeError(f"{where}: scale: only integers are scaled, not {type_name(self.dtype)}")
        iterations, rest = divmod(a.shape[-1], self.down)
        if rest:
            raise ValueError(f"{where}: x: {a.shape[-1]} samples, needs a multiple of {self.down}")
        shape = (*a.shape[:-1], iterations * self.up)
        result = destination(where, out, shape, self.dtype)
        if iterations:
            rows = ((a, result),) if self.channels is None else zip(a, result)
            for record, (source, target) in zip(self._records, rows):
                call(where, self._filter, target, source, target, iterations, record, *((scale,) if self._integer else ()))
        return result

    __call__ = process

    def reset(self) -> None:
        """As if nothing had been filtered."""
        for record in self._records:
            self._set_delay(record, None)

    def close(self) -> None:
        for record in self._records:
            record.close()


class FIR(_Stream):
    """A finite impulse response filter of a stream: y[n] = sum of taps[k] x[n-k]; with up and down also from one rate to another.

    dtype is that of the samples: float32, float64, complex64, complex128, int16, int32, complex_int16, complex_int32; by default that of the taps. Double-precision taps
    keep their precision with all of these. channels=k filters the rows of k x n blocks, each by itself. One thread at a time; another one waits.

    method "auto" takes long filters by FFT where blocks are long, which is quicker; "direct" sums every output in one order, so that a stream gives the same bits
    wherever it is cut into blocks. Between rates all filters are direct.

    >>> fir = FIR([0.5, 0.5], np.float32)
    >>> fir.process(np.array([2, 4, 6], np.float32))
    array([1., 3., 5.], dtype=float32)
    >>> fir.process(np.array([8], np.float32))
    array([7.], dtype=float32)
    """

    def __init__(self, taps: ArrayLike, dtype: DTypeLike = None, up: int = 1, down: int = 1, up_phase: int = 0, down_phase: int = 0, channels: int | None = None,
                 method: str = "auto") -> None:
        h = np.asarray(taps)
        if dtype is None:
            dtype = h.dtype if h.dtype.kind in "fc" else np.float64
        super().__init__("tevs.FIR", np.dtype(dtype), channels, up, down)
        if method not in ("auto", "direct"):
            raise ValueError(f"tevs.FIR: method: {method!r}, needs 'auto' or 'direct'")
        if h.ndim != 1 or not h.size:
            raise ValueError(f"tevs.FIR: taps: shape {h.shape}, needs a vector")
        h = self._taps = _taps_for("tevs.FIR", h, self.dtype)
        t, s = code(h.dtype, "tevs.FIR"), code(self.dtype, "tevs.FIR")
        pair = f"{t}_{s}" if t != s else f"_{s}"
        self._filter = named(f"tevsFIR{pair}" + ("_Sfs" if self._integer else ""), "tevs.FIR")
        self._set_delay, self._get_delay = named(f"tevsFIRSetDlyLine{pair}", "tevs.FIR"), named(f"tevsFIRGetDlyLine{pair}", "tevs.FIR")
        self._set_taps = named(f"tevsFIRSetTaps{pair}", "tevs.FIR")
        multirate = (up, down, up_phase, down_phase) != (1, 1, 0, 0)
        if multirate:
            arguments, init = (h, h.size, up, up_phase, down, down_phase, None), named(f"tevsFIRMRInitAlloc{pair}", "tevs.FIR")
        elif method == "auto":
            arguments, init = (h, h.size, None), named(f"tevsFIRInitAlloc{pair}", "tevs.FIR")
        else:   # a record in memory of the caller's has no transform
            get_size, build = named(f"tevsFIRGetStateSize{pair}", "tevs.FIR"), named(f"tevsFIRInit{pair}", "tevs.FIR")
            arguments, init = (h, h.size, None), lambda *given: build(*given, _memory(get_size, h.size))
        for _ in range(channels or 1):
            self._records.append(init(*arguments))

    @property
    def taps(self) -> Array:
        """The taps; as many others may be assigned, and the stream goes on."""
        return self._taps.copy()

    @taps.setter
    def taps(self, taps: ArrayLike) -> None:
        h = np.asarray(taps)
        if h.shape != self._taps.shape:
            raise ValueError(f"tevs.FIR.taps: shape {h.shape}, needs {self._taps.shape}")
        self._taps = np.ascontiguousarray(h, self._taps.dtype)
        for record in self._records:
            self._set_taps(self._taps, record)

    @property
    def delay_line(self) -> Array:
        """The samples before the next one, newest first; a row a channel."""
        n = math.ceil(self._taps.size / self.up)
        lines: Array = np.empty((len(self._records), n), self.dtype)
        for record, line in zip(self._records, lines):
            self._get_delay(record, line)
        return lines.reshape(n) if self.channels is None else lines

    @delay_line.setter
    def delay_line(self, samples: ArrayLike) -> None:
        n = math.ceil(self._taps.size / self.up)
        lines = np.ascontiguousarray(samples, self.dtype).reshape(-1, n)
        if lines.shape[0] != len(self._records):
            raise ValueError(f"tevs.FIR.delay_line: {lines.size} samples, needs {len(self._records) * n}")
        for record, line in zip(self._records, lines):
            self._set_delay(record, line)


@lru_cache(maxsize=None)
def _iir_functions(t: str, s: str, sections: bool) -> tuple[Any, Any, Any, Any]:
    """What filters, sets and gets the state, and builds the record, of taps and samples with these codes."""
    where, pair, middle = "tevs.IIR", f"{t}_{s}" if t != s else f"_{s}", "_BiQuad" if sections else ""
    return (named(f"tevsIIR{pair}" + ("_Sfs" if "f" not in s else ""), where), named(f"tevsIIRSetDlyLine{pair}", where), named(f"tevsIIRGetDlyLine{pair}", where),
            named(f"tevsIIRInitAlloc{t}{middle}_{s}" if t != s else f"tevsIIRInitAlloc{middle}_{s}", where))


class IIR(_Stream):
    """A recursive filter of a stream, from numerator and denominator, or from second-order sections by sos=.

    dtype and channels: as of FIR. The state is that of the transposed direct form II, as SciPy's zi.

    >>> iir = IIR([1], [1, -0.5])
    >>> iir.process(np.array([1.0, 0, 0]))
    array([1.  , 0.5 , 0.25])
    """

    def __init__(self, b: ArrayLike | None = None, a: ArrayLike | None = None, dtype: DTypeLike = None, *, sos: ArrayLike | None = None, channels: int | None = None) -> None:
        where = "tevs.IIR"
        if (sos is None) == (b is None or a is None):
            raise ValueError(f"{where}: needs b and a, or sos")
        if sos is not None:
            sections = np.asarray(sos)
            if sections.ndim != 2 or sections.shape[1] != 6 or not len(sections):
                raise ValueError(f"{where}: sos: shape {sections.shape}, needs (n, 6)")
            taps, self._size = sections.ravel(), len(sections)
        else:
            numerator, denominator = np.atleast_1d(b), np.atleast_1d(a)   # type: ignore[arg-type]
            if numerator.ndim != 1 or denominator.ndim != 1 or not numerator.size or not denominator.size:
                raise ValueError(f"{where}: b and a: need vectors")
            self._size = max(numerator.size, denominator.size, 2) - 1
            taps = np.zeros(2 * (self._size + 1), np.result_type(numerator, denominator, np.float32))
            taps[:numerator.size], taps[self._size + 1:self._size + 1 + denominator.size] = numerator, denominator
        if dtype is None:
            dtype = taps.dtype if taps.dtype.kind in "fc" else np.float64
        super().__init__(where, np.dtype(dtype), channels, 1, 1)
        taps = _taps_for(where, taps, self.dtype)
        self._filter, self._set_delay, self._get_delay, init = _iir_functions(code(taps.dtype, where), code(self.dtype, where), sos is not None)
        self._state_shape = (self._size, 2) if sos is not None else (self._size,)
        self._state_dtype = taps.dtype
        for _ in range(channels or 1):
            self._records.append(init(taps, self._size, None))

    @property
    def state(self) -> Array:
        """What the filter remembers: (order,), or (sections, 2); channels in front."""
        states = np.empty((len(self._records), *self._state_shape), self._state_dtype)
        for record, state in zip(self._records, states):
            self._get_delay(record, state)
        return states.reshape(self._state_shape) if self.channels is None else states

    @state.setter
    def state(self, value: ArrayLike) -> None:
        states = np.ascontiguousarray(value, self._state_dtype)
        shape = self._state_shape if self.channels is None else (len(self._records), *self._state_shape)
        if states.shape != shape:
            raise ValueError(f"tevs.IIR.state: shape {states.shape}, needs {shape}")
        for record, state in zip(self._records, states.reshape(len(self._records), *self._state_shape)):
            self._set_delay(record, state)


class _Adaptive(Closing):
    """An adaptive filter that takes `down` samples and gives `up` in an iteration, and its taps, given or so many zeros."""

    def __init__(self, where: str, forms: str, taps: int | ArrayLike, dtype: DTypeLike, taps_dtype: DTypeLike, *more: Any, up: int = 1, down: int = 1) -> None:
        self._where, self.dtype, self.up, self.down = where, np.dtype(dtype), up, down
        start = None if isinstance(taps, (int, np.integer)) else np.ascontiguousarray(taps, taps_dtype)
        self._length, self._taps_dtype = int(taps) if start is None else start.size, taps_dtype   # type: ignore[arg-type]
        self._filter, self._get_taps, init = (named(forms.format(f), where) for f in ("", "GetTaps", "InitAlloc"))
        self._record = init(start, self._length, *more)

    def _follow(self, x: ArrayLike, reference: ArrayLike, out: Array | None, *steps: float) -> Array:
        where = self._where + ".process"
        a, r = samples(where, x, self.dtype), samples(where, reference, self.dtype, "reference")
        if a.ndim != 1 or a.size % self.down:
            raise ValueError(f"{where}: x: shape {a.shape}, needs a vector of a multiple of {self.down}")
        iterations = a.size // self.down
        if r.shape != (iterations * self.up,):
            raise ValueError(f"{where}: reference: shape {r.shape}, needs {(iterations * self.up,)}")
        result = destination(where, out, r.shape, self.dtype)
        if iterations:
            call(where, self._filter, result, a, r, result, iterations, *steps, self._record)
        return result

    @property
    def taps(self) -> Array:
        """The taps as they are now."""
        taps = np.empty(self._length, self._taps_dtype)
        self._get_taps(self._record, taps)
        return taps


class LMS(_Adaptive):
    """An adaptive FIR filter that follows a reference by least mean squares; float32 or int16 samples.

    >>> x = np.sign(np.sin(np.arange(2000) ** 2)).astype(np.float32)
    >>> lms = LMS(2, 0.02)
    >>> y = lms.process(x, 0.5 * x)
    >>> lms.taps.round(3)
    array([0.5, 0. ], dtype=float32)
    """

    def __init__(self, taps: int | ArrayLike, mu: float, dtype: DTypeLike = np.float32) -> None:
        letters = code(dtype, "tevs.LMS")
        super().__init__("tevs.LMS", "tevsFIRLMS{}" + ("_32f" if letters == "32f" else f"32f_{letters}"), taps, dtype, np.float32, None, 0)
        self.mu = mu

    def process(self, x: ArrayLike, reference: ArrayLike, out: Array | None = None) -> Array:
        """The next block, and the taps moved on after every sample."""
        return self._follow(x, reference, out, self.mu)


class _Sparse(Closing):
    """A record in memory of Python's, and the blocks of a stream of float32 samples through it."""

    def __init__(self, where: str, filter: Any, record: Any) -> None:
        self._where, self._filter, self._record = where, filter, record

    def process(self, x: ArrayLike, out: Array | None = None) -> Array:
        """The next block of the stream, of any length."""
        where = self._where + ".process"
        a = samples(where, x, np.dtype(np.float32))
        if a.ndim != 1:
            raise ValueError(f"{where}: x: shape {a.shape}, needs (n,)")
        result = destination(where, out, a.shape, a.dtype)
        if a.size:
            call(where, self._filter, result, a, result, a.size, self._record)
        return result


def _sparse_taps(where: str, taps: ArrayLike, delays: ArrayLike) -> tuple[Array, Array]:
    h, d = np.ascontiguousarray(taps, np.float32), np.asarray(delays)
    if h.ndim != 1 or h.shape != d.shape:
        raise ValueError(f"{where}: taps, delays: shapes {h.shape} and {d.shape}, need vectors of one length")
    if d.size and d.dtype.kind not in "iu":
        raise TypeError(f"{where}: delays: {d.dtype}, needs integers")
    if d.size and (d.min() < 0 or d.max() >= 2**31):
        raise ValueError(f"{where}: delays: need to be 0 .. 2**31-1")
    return h, d.astype(np.int32)


class SparseFIR(_Sparse):
    """An FIR filter given by its taps that are not zero and their delays, which rise: y[n] = sum of taps[k] x[n - delays[k]]; float32. Its cost follows the taps given.

    >>> SparseFIR([1, 0.5], [0, 2]).process(np.array([1, 0, 0, 0], np.float32))
    array([1. , 0. , 0.5, 0. ], dtype=float32)
    """

    def __init__(self, taps: ArrayLike, delays: ArrayLike) -> None:
        where = "tevs.SparseFIR"
        h, d = _sparse_taps(where, taps, delays)
        if not h.size:
            raise ValueError(f"{where}: taps: needs at least one")
        memory = _memory(raw.tevsFIRSparseGetStateSize_32f, h.size, int(d[-1]))
        super().__init__(where, raw.tevsFIRSparse_32f, raw.tevsFIRSparseInit_32f(h, d, h.size, None, memory))


class SparseIIR(_Sparse):
    """A recursive filter given by its taps that are not zero: y[n] = sum of b[k] x[n - p[k]] - sum of a[k] y[n - q[k]], with p from 0 and q from 1 on, rising; float32.

    >>> SparseIIR([1], [0], [-0.5], [2]).process(np.array([1, 0, 0, 0, 0], np.float32))
    array([1.  , 0.  , 0.5 , 0.  , 0.25], dtype=float32)
    """

    def __init__(self, b: ArrayLike, p: ArrayLike, a: ArrayLike, q: ArrayLike) -> None:
        where = "tevs.SparseIIR"
        (forward, delays), (feedback, feedback_delays) = _sparse_taps(where, b, p), _sparse_taps(where, a, q)
        if not forward.size:
            raise ValueError(f"{where}: b: needs at least one")
        memory = _memory(raw.tevsIIRSparseGetStateSize_32f, forward.size, feedback.size, int(delays[-1]), int(feedback_delays[-1]) if feedback.size else 0)
        super().__init__(where, raw.tevsIIRSparse_32f, raw.tevsIIRSparseInit_32f(
            np.concatenate([forward, feedback]), np.concatenate([delays, feedback_delays]), forward.size, feedback.size, None, memory))


class MultirateLMS(_Adaptive):
    """An adaptive FIR filter from one rate to another that follows a reference at the new one: equalisers, echo cancellers; float32 or complex64.

    norm > 0 divides the step mu by norm plus the power of the samples. An iteration takes `down` samples and gives `up`.

    >>> x = np.sign(np.sin(np.arange(4000) ** 2)).astype(np.float32)
    >>> lms = MultirateLMS(2, 0.02, down=2)
    >>> y = lms.process(x, 0.5 * x[::2])
    >>> bool(np.allclose(lms.taps, [0.5, 0], atol=1e-3))
    True
    """

    def __init__(self, taps: int | ArrayLike, mu: float, dtype: DTypeLike = np.float32, up: int = 1, down: int = 1, norm: float = 0, up_phase: int = 0, down_phase: int = 0) -> None:
        where, letters = "tevs.MultirateLMS", code(dtype, "tevs.MultirateLMS")
        if letters not in ("32f", "32fc"):
            raise TypeError(f"{where}: dtype: {type_name(np.dtype(dtype))}, needs float32 or complex64")
        super().__init__(where, f"tevsFIRLMSMR{{}}_{letters}", taps, dtype, dtype, up, up_phase, down, down_phase, None, up=up, down=down)
        self.mu, self.norm = mu, norm

    def process(self, x: ArrayLike, reference: ArrayLike, out: Array | None = None) -> Array:
        """The next block, and the taps moved on after every iteration: a multiple of `down` samples, and as many times `up` of the reference and of the result."""
        return self._follow(x, reference, out, self.mu, self.norm)


def _common(*arrays: ArrayLike) -> np.dtype[Any]:
    """The type in which SciPy would filter."""
    return np.result_type(*(floating(a).dtype for a in arrays))


def lfilter(b: ArrayLike, a: ArrayLike, x: ArrayLike, axis: int = -1, zi: ArrayLike | None = None) -> Any:
    """x filtered along an axis by numerator b and denominator a, as scipy.signal.lfilter; with zi also the final state.

    >>> lfilter([1], [1, -0.5], [1.0, 0, 0])
    array([1.  , 0.5 , 0.25])
    """
    where = "tevs.lfilter"
    dtype = _common(b, a, x) if zi is None else _common(b, a, x, zi)
    numerator, denominator = np.atleast_1d(b).astype(dtype), np.atleast_1d(a).astype(dtype)
    if numerator.ndim != 1 or denominator.ndim != 1:
        raise ValueError(f"{where}: b and a: need vectors")
    signal = floating(x).astype(dtype, copy=False)
    axis = axis_of(where, signal, axis)
    if not denominator.size or denominator[0] == 0:
        raise ValueError(f"{where}: a: the first is 0")
    order = max(numerator.size, denominator.size) - 1
    if zi is None and not np.any(denominator[1:]):   # no recursion: long filters go by FFT
        rows = along(signal, axis)
        out = np.empty_like(rows)
        with FIR(numerator / denominator[0], dtype) as fir:
            for row, result in zip(rows, out):
                fir.process(row, result)
                fir.reset()
        return back(out, signal.shape, axis)
    if order == 0:
        return np.asarray(multiply(signal, (numerator[0] / denominator[0]).item())), np.asarray(zi)
    state = None
    if zi is not None:
        state = np.asarray(zi, dtype)
        shape = (*signal.shape[:axis], order, *signal.shape[axis + 1:])
        if state.shape != shape:
            raise ValueError(f"{where}: zi: shape {state.shape}, needs {shape}")
    with IIR(numerator, denominator, dtype) as iir:
        filtered, final = _recursive(iir, signal, axis, None if state is None else along(state, axis))
        return filtered if state is None or final is None else (filtered, back(final, state.shape, axis))


def _recursive(iir: IIR, signal: Array, axis: int, states: Array | None) -> tuple[Array, Array | None]:
    """The vectors along an axis filtered from the rows of `states`, and those at the end."""
    rows = along(signal, axis)
    out = np.empty_like(rows)
    final = None if states is None else np.empty_like(states)
    for k, row in enumerate(rows):
        if states is None:
            if k:
                iir.reset()
        else:
            iir.state = states[k].reshape(iir._state_shape)
        iir.process(row, out[k])
        if final is not None:
            final[k] = iir.state.reshape(final[k].shape)
    return back(out, signal.shape, axis), final


def sosfilt(sos: ArrayLike, x: ArrayLike, axis: int = -1, zi: ArrayLike | None = None) -> Any:
    """x filtered along an axis by second-order sections, as scipy.signal.sosfilt; with zi, (sections, .., 2, ..), also the final state.

    >>> sosfilt([[1, 0, 0, 1, -0.5, 0]], [1.0, 0, 0])
    array([1.  , 0.5 , 0.25])
    """
    where = "tevs.sosfilt"
    dtype = _common(sos, x) if zi is None else _common(sos, x, zi)
    sections = np.asarray(sos, dtype)
    if sections.ndim != 2 or sections.shape[1] != 6 or not len(sections):
        raise ValueError(f"{where}: sos: shape {sections.shape}, needs (n, 6)")
    if not np.all(sections[:, 3] == 1):
        raise ValueError(f"{where}: sos: a0 has to be 1 in every section")
    signal = floating(x).astype(dtype, copy=False)
    axis = axis_of(where, signal, axis)
    state = None
    if zi is not None:
        state = np.asarray(zi, dtype)
        shape = (len(sections), *signal.shape[:axis], 2, *signal.shape[axis + 1:])
        if state.shape != shape:
            raise ValueError(f"{where}: zi: shape {state.shape}, needs {shape}")
    if np.any(sections[:, 0] == 0):   # a section without b0 the library has only as a filter of its own
        final = None if state is None else np.empty_like(state)
        for k, section in enumerate(sections):
            done = lfilter(section[:3], section[3:], signal, axis, None if state is None else state[k])
            if final is None:
                signal = done
            else:
                signal, final[k] = done
        return signal if final is None else (signal, final)
    with IIR(dtype=dtype, sos=sections) as iir:
        if state is None:
            return _recursive(iir, signal, axis, None)[0]
        moved = np.moveaxis(state, axis + 1, -1)                     # sections, vectors .., 2
        states = np.moveaxis(moved, 0, -2).reshape(-1, len(sections) * 2)
        filtered, final = _recursive(iir, signal, axis, states)
        assert final is not None
        shaped = final.reshape(*moved.shape[1:-1], len(sections), 2)
        return filtered, np.moveaxis(np.moveaxis(shaped, -2, 0), -1, axis + 1)


def upfirdn(h: ArrayLike, x: ArrayLike, up: int = 1, down: int = 1, axis: int = -1) -> Array:
    """x with up - 1 zeros behind every sample, filtered by h, and every down-th value of that, as scipy.signal.upfirdn.

    >>> upfirdn([1, 1, 1], [1.0, 2, 3], up=3)
    array([1., 1., 1., 2., 2., 2., 3., 3., 3.])
    """
    where = "tevs.upfirdn"
    if up < 1 or down < 1:
        raise ValueError(f"{where}: up, down: {up}, {down}, need at least 1")
    dtype = _common(h, x)
    taps, signal = np.asarray(h, dtype), floating(x).astype(dtype, copy=False)
    axis = axis_of(where, signal, axis)
    if taps.ndim != 1 or not taps.size or not signal.shape[axis]:
        raise ValueError(f"{where}: h and x: need at least one element")
    rows = along(signal, axis)
    count = ((rows.shape[1] - 1) * up + taps.size - 1) // down + 1
    iterations = -(-count // up)
    source = np.zeros(iterations * down, dtype)
    out = np.empty((rows.shape[0], iterations * up), dtype)
    n = min(rows.shape[1], source.size)
    with FIR(taps, dtype, up, down) as fir:
        for row, result in zip(rows, out):
            source[:n] = row[:n]
            fir.process(source, result)
            fir.reset()
    return back(np.ascontiguousarray(out[:, :count]), signal.shape, axis)


__all__ = ["FIR", "IIR", "LMS", "MultirateLMS", "SparseFIR", "SparseIIR", "lfilter", "sosfilt", "upfirdn"]
