"""From a vector to a number: sums, means, norms, extremes, dot products. With `axis` None all elements are one vector, else each vector along the axis gives a number."""

from __future__ import annotations

import math
from collections.abc import Callable
from typing import Any

import numpy as np
from numpy.typing import ArrayLike

from . import raw
from ._core import Array, along, array, axis_of, back, call, complex_int16, complex_int64, type_name

_f4, _f8, _c8, _c16, _i2, _i4 = (np.dtype(t) for t in ("f4", "f8", "c8", "c16", "i2", "i4"))

# By sample type: C function, type of the result, arguments behind it.
_Table = dict[np.dtype[Any], tuple[Callable[..., int], Any, tuple[int, ...]]]
_ACCURATE = (raw.HintAccurate,)
_SUM: _Table = {_f4: (raw.tevsSum_32f, _f4, _ACCURATE), _c8: (raw.tevsSum_32fc, _c8, _ACCURATE), _f8: (raw.tevsSum_64f, _f8, ()), _c16: (raw.tevsSum_64fc, _c16, ()),
                _i2: (raw.tevsSum_16s64f, _f8, ()), _i4: (raw.tevsSum_32s_Sfs, _i4, (0,)), complex_int16: (raw.tevsSum_16sc64fc, _c16, ())}
_MEAN: _Table = {_f4: (raw.tevsMean_32f, _f4, _ACCURATE), _c8: (raw.tevsMean_32fc, _c8, _ACCURATE), _f8: (raw.tevsMean_64f, _f8, ()), _c16: (raw.tevsMean_64fc, _c16, ()),
                 _i2: (raw.tevsMean_16s_Sfs, _i2, (0,)), _i4: (raw.tevsMean_32s_Sfs, _i4, (0,)), complex_int16: (raw.tevsMean_16sc_Sfs, complex_int16, (0,))}
_STD: _Table = {_f4: (raw.tevsStdDev_32f, _f4, _ACCURATE), _f8: (raw.tevsStdDev_64f, _f8, ())}
_NORM: dict[Any, _Table] = {
    np.inf: {_f4: (raw.tevsNorm_Inf_32f, _f4, ()), _f8: (raw.tevsNorm_Inf_64f, _f8, ()), _i2: (raw.tevsNorm_Inf_16s32f, _f4, ()), _c8: (raw.tevsNorm_Inf_32fc32f, _f4, ()),
             _c16: (raw.tevsNorm_Inf_64fc64f, _f8, ())},
    1: {_f4: (raw.tevsNorm_L1_32f, _f4, ()), _f8: (raw.tevsNorm_L1_64f, _f8, ()), _i2: (raw.tevsNorm_L1_16s32f, _f4, ()), _c8: (raw.tevsNorm_L1_32fc64f, _f8, ()),
        _c16: (raw.tevsNorm_L1_64fc64f, _f8, ())},
    2: {_f4: (raw.tevsNorm_L2_32f, _f4, ()), _f8: (raw.tevsNorm_L2_64f, _f8, ()), _i2: (raw.tevsNorm_L2_16s32f, _f4, ()), _c8: (raw.tevsNorm_L2_32fc64f, _f8, ()),
        _c16: (raw.tevsNorm_L2_64fc64f, _f8, ())}}
_MAX: _Table = {t: (getattr(raw, f"tevsMax_{c}"), t, ()) for t, c in ((_i2, "16s"), (_i4, "32s"), (_f4, "32f"), (_f8, "64f"))}
_MIN: _Table = {t: (getattr(raw, f"tevsMin_{c}"), t, ()) for t, c in ((_i2, "16s"), (_i4, "32s"), (_f4, "32f"), (_f8, "64f"))}
_SUM_LOG: _Table = {_f4: (raw.tevsSumLn_32f, _f4, ()), _f8: (raw.tevsSumLn_64f, _f8, ()), _i2: (raw.tevsSumLn_16s32f, _f4, ())}


def _reduce(name: str, table: _Table, x: ArrayLike, axis: int | None) -> Any:
    where = "tevs." + name
    a = array(x)
    if a.dtype not in table:
        raise TypeError(f"{where}: x: no form for {type_name(a.dtype)}; there are {', '.join(map(type_name, table))}")
    f, result, more = table[a.dtype]
    if axis is None or a.ndim == 1 and axis in (0, -1):
        out = np.empty((), result)
        if not a.size:
            raise ValueError(f"{where}: x: the array is empty")
        call(where, f, out, a, a.size, out, *more)
        return out[()]
    axis = axis_of(where, a, axis)
    rows = along(a, axis)
    if not rows.shape[1]:
        raise ValueError(f"{where}: x: the axis is empty")
    out = np.empty(rows.shape[0], result)
    for k, row in enumerate(rows):
        call(where, f, out, row, row.size, out[k:k + 1], *more)
    return out.reshape(a.shape[:axis] + a.shape[axis + 1:])


def sum(x: ArrayLike, axis: int | None = None) -> Any:
    """The sum; of int16 exactly, as a float64, of int32 saturated.

    >>> sum(np.array([[1, 2], [3, 4]], np.float32), axis=0)
    array([4., 6.], dtype=float32)
    """
    return _reduce("sum", _SUM, x, axis)


def mean(x: ArrayLike, axis: int | None = None) -> Any:
    """The arithmetic mean, of integers rounded to their type.

    >>> mean(np.array([1.0, 2, 6]))
    3.0
    """
    return _reduce("mean", _MEAN, x, axis)


def std(x: ArrayLike, axis: int | None = None, ddof: int = 0) -> Any:
    """The standard deviation; ddof 0 divides by the number of elements, 1 by one less.

    >>> std(np.array([1.0, 3, 5]), ddof=1)
    2.0
    """
    if ddof not in (0, 1):
        raise ValueError(f"tevs.std: ddof: {ddof}, needs 0 or 1")
    a = array(x)
    n = a.size if axis is None else a.shape[axis_of("tevs.std", a, axis)]
    result = _reduce("std", _STD, a, axis)
    return result if ddof else result * result.dtype.type(math.sqrt((n - 1) / n))


def norm(x: ArrayLike, ord: float = 2, axis: int | None = None) -> Any:
    """The norm of order 1, 2 or infinity.

    >>> norm(np.array([3.0, -4]))
    5.0
    """
    if ord not in _NORM:
        raise ValueError(f"tevs.norm: ord: {ord!r}, needs 1, 2 or inf")
    return _reduce("norm", _NORM[ord], x, axis)


def levels(x: ArrayLike, every: int, axis: int = -1) -> tuple[Array, Array]:
    """Peak and root mean square of each stretch of `every` samples along an axis; the last one may be shorter.

    >>> levels(np.array([3.0, -4, 1, 1]), 2)
    (array([4., 1.]), array([3.53553391, 1.        ]))
    """
    where = "tevs.levels"
    a = array(x)
    if every < 1:
        raise ValueError(f"{where}: every: {every}, needs at least 1")
    axis = axis_of(where, a, axis)
    if not a.shape[axis]:
        raise ValueError(f"{where}: x: the axis is empty")
    rows = along(a, axis)
    places = range(0, rows.shape[1], every)
    peaks, means = ([[_reduce("levels", _NORM[order], row[n:n + every], None) for n in places] for row in rows] for order in (np.inf, 2))
    peak, mean = np.array(peaks), np.array(means)
    lengths = np.minimum(every, rows.shape[1] - np.array(places))
    return back(peak, a.shape, axis), back((mean / np.sqrt(lengths)).astype(peak.dtype), a.shape, axis)


def max(x: ArrayLike, axis: int | None = None) -> Any:
    """The largest element."""
    return _reduce("max", _MAX, x, axis)


def min(x: ArrayLike, axis: int | None = None) -> Any:
    """The smallest element."""
    return _reduce("min", _MIN, x, axis)


def sum_log(x: ArrayLike, axis: int | None = None) -> Any:
    """The sum of the natural logarithms. A zero or negative element is a tevs.Warning."""
    return _reduce("sum_log", _SUM_LOG, x, axis)


_EXTREMES = {np.dtype(t): getattr(raw, f"tevsMinMaxIndx_{c}") for t, c in (("u1", "8u"), ("u2", "16u"), ("i2", "16s"), ("u4", "32u"), ("i4", "32s"), ("f4", "32f"), ("f8", "64f"))}


def minmax(x: ArrayLike) -> tuple[Any, int, Any, int]:
    """The smallest element, its first place, the largest element, its first place.

    >>> minmax(np.array([3, 1, 2], np.int16))
    (1, 1, 3, 0)
    """
    a = array(x)
    if a.dtype not in _EXTREMES:
        raise TypeError(f"tevs.minmax: x: no form for {type_name(a.dtype)}")
    if not a.size:
        raise ValueError("tevs.minmax: x: the array is empty")
    low, high = np.empty((), a.dtype), np.empty((), a.dtype)
    places = np.empty(2, np.int32)
    call("tevs.minmax", _EXTREMES[a.dtype], low, a, a.size, low, places[:1], high, places[1:])
    return low[()], int(places[0]), high[()], int(places[1])


_DOT: dict[tuple[np.dtype[Any], np.dtype[Any]], tuple[Callable[..., int], Any]] = {
    (_f4, _f4): (raw.tevsDotProd_32f, _f4), (_f8, _f8): (raw.tevsDotProd_64f, _f8), (_c8, _c8): (raw.tevsDotProd_32fc, _c8), (_c16, _c16): (raw.tevsDotProd_64fc, _c16),
    (_f4, _c8): (raw.tevsDotProd_32f32fc, _c8), (_f8, _c16): (raw.tevsDotProd_64f64fc, _c16), (_i2, _i2): (raw.tevsDotProd_16s64s, np.dtype("i8")),
    (complex_int16, complex_int16): (raw.tevsDotProd_16sc64sc, complex_int64)}


def dot(x: ArrayLike, y: ArrayLike) -> Any:
    """The sum of x * y, without conjugation; of int16 exactly, in 64 bits.

    >>> dot(np.array([30000, 30000], np.int16), np.array([30000, 30000], np.int16))
    1800000000
    """
    a, b = array(x), array(y)
    if (a.dtype, b.dtype) not in _DOT and (b.dtype, a.dtype) in _DOT:
        a, b = b, a
    if (a.dtype, b.dtype) not in _DOT:
        raise TypeError(f"tevs.dot: no form for {type_name(a.dtype)} and {type_name(b.dtype)}")
    if a.shape != b.shape:
        raise ValueError(f"tevs.dot: y: shape {b.shape}, needs {a.shape}")
    f, result = _DOT[a.dtype, b.dtype]
    out = np.zeros((), result)
    if a.size:
        call("tevs.dot", f, out, a, b, a.size, out)
    return out[()]


__all__ = [n for n, v in list(globals().items()) if not n.startswith("_") and getattr(v, "__module__", None) == __name__]
