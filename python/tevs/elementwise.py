"""Element by element: arithmetic, elementary functions, logic, thresholds, polar form, conversion.

Sources are arrays of one shape, or one of them a number. The result is a new array, or `out`, which may be a source. Integers saturate; with `scale` they are stored times
2**-scale, rounded to nearest, ties to even.
"""

from __future__ import annotations

import numbers
from typing import Any

import numpy as np
from numpy import ndarray
from numpy.typing import ArrayLike, DTypeLike

from . import raw
from ._core import Array, Forms, array, call, code, named, type_name, warn

_empty = np.empty


def _constant(value: Any, dtype: np.dtype[Any]) -> Any:
    return complex(value) if dtype.kind == "c" else value


class _Binary:
    """An operation of two vectors, of a vector and a constant, and of a constant and a vector."""

    def __init__(self, name: str, operation: str, constant: str = "", reversed: str = "", swapped: bool = False) -> None:
        self.name = "tevs." + name
        self.vectors = Forms(name, operation, 2, "pSrc1 pSrc2 pDst")
        self.constant = Forms(name, constant, 1, "pSrc val pDst")
        self.reversed = Forms(name, reversed, 1, "pSrc val pDst") if reversed else self.constant
        self.swapped = swapped   # the library has the subtrahend and the divisor first
        # The common case, all of one type, by its character, which is the fastest key that a type has.
        self.same = {key[0].char: entry for key, entry in self.vectors.table.items() if len(key) == 3 and key[0] == key[1] == key[2] and key[0].kind != "V"}

    def __call__(self, x: Any, y: Any, out: Array | None, scale: int) -> Array:
        if type(x) is ndarray and type(y) is ndarray:
            dtype = x.dtype
            if dtype is y.dtype and (out is None or out.dtype is dtype and out.shape == x.shape) and x.shape == y.shape and dtype.char in self.same:
                plain, scaled, _ = self.same[dtype.char]
                result = _empty(x.shape, dtype) if out is None else out
                try:
                    if plain is not None and not scale:
                        status = plain(y, x, result, x.size) if self.swapped else plain(x, y, result, x.size)
                    elif scaled is not None:
                        status = scaled(y, x, result, x.size, scale) if self.swapped else scaled(x, y, result, x.size, scale)
                    else:
                        status = -1
                    if status >= 0:
                        if status:
                            warn(self.name, status)
                        return result
                except (TypeError, ValueError):
                    pass   # strided, empty, overlapping: the general way copies or says what is wrong
        return self._general(x, y, out, scale)

    def _general(self, x: Any, y: Any, out: Array | None, scale: int) -> Array:
        if type(x) is ndarray and type(y) is ndarray and x.shape == y.shape and x.ndim:
            plain, scaled, dtype = self.vectors.table.get((x.dtype, y.dtype) if out is None else (x.dtype, y.dtype, out.dtype)) or self._promoted(x, y, out)
            if x.dtype != y.dtype and (x.dtype, y.dtype) not in self.vectors.table:
                x, y = x.astype(dtype), y.astype(dtype)
            if self.swapped:
                x, y = y, x
            sources = (x, y)
        else:
            return self._slow(x, y, out, scale)
        if out is None:
            out = _empty(x.shape, dtype)
        elif out.shape != x.shape:
            raise ValueError(f"{self.name}: out: shape {out.shape}, needs {x.shape}")
        return _run(self.name, plain, scaled, sources, (), out, scale)

    def _promoted(self, x: Array, y: Array, out: Array | None) -> tuple[Any, Any, np.dtype[Any]]:
        if x.dtype.kind in "fc" and y.dtype.kind in "fc":
            both = np.result_type(x.dtype, y.dtype)
            return self.vectors.find((both, both), out)
        return self.vectors.find((x.dtype, y.dtype), out)

    def _slow(self, x: Any, y: Any, out: Array | None, scale: int) -> Array:
        for value, other, forms in ((y, x, self.constant), (x, y, self.reversed)):
            if np.ndim(value) == 0 and np.ndim(other) and isinstance(value, (numbers.Number, np.generic, ndarray)):
                vector = array(other)
                if (vector.dtype,) not in forms.table and (vector.dtype, vector.dtype) in self.vectors.table:   # by a vector of the constant then
                    constant = np.full(vector.shape, value, vector.dtype)
                    return self(constant, vector, out, scale) if value is x else self(vector, constant, out, scale)
                plain, scaled, dtype = forms.find((vector.dtype,), out)
                return _run(self.name, plain, scaled, (vector,), (_constant(value.item() if isinstance(value, (np.generic, ndarray)) else value, vector.dtype),),
                            _destination(self.name, out, vector.shape, dtype), scale)
        x, y = array(x), array(y)
        if x.shape != y.shape or not x.ndim:
            raise ValueError(f"{self.name}: y: shape {y.shape}, needs {x.shape}" if x.ndim else f"{self.name}: x: needs an array")
        return self(x.view(ndarray), y.view(ndarray), out, scale)


class _Unary:
    def __init__(self, name: str, operation: str, more: str = "") -> None:
        self.name = "tevs." + name
        self.forms = Forms(name, operation, 1, "pSrc pDst", more)

    def __call__(self, x: ArrayLike, out: Array | None, scale: int, *parameters: Any) -> Array:
        a = array(x)
        plain, scaled, dtype = self.forms.table.get((a.dtype,) if out is None else (a.dtype, out.dtype)) or self.forms.find((a.dtype,), out)
        return _run(self.name, plain, scaled, (a,), parameters, _destination(self.name, out, a.shape, dtype), scale, behind=True)


def _destination(where: str, out: Array | None, shape: tuple[int, ...], dtype: np.dtype[Any]) -> Array:
    if out is None:
        return _empty(shape, dtype)
    if out.shape != shape:
        raise ValueError(f"{where}: out: shape {out.shape}, needs {shape}")
    return out


def _run(where: str, plain: Any, scaled: Any, sources: tuple[Array, ...], parameters: tuple[Any, ...], out: Array, scale: int, behind: bool = False) -> Array:
    n = out.size
    if n == 0:
        return out
    f = plain if plain is not None and not scale else scaled
    if f is None:
        raise TypeError(f"{where}: scale: only integers are scaled, not {type_name(out.dtype)}")
    before, after = ((), parameters) if behind else (parameters, ())
    if f is scaled:
        call(where, f, out, *sources, *before, out, n, *after, scale)
    else:
        call(where, f, out, *sources, *before, out, n, *after)
    return out


_ADD = _Binary("add", "Add", "AddC")
_SUBTRACT = _Binary("subtract", "Sub", "SubC", "SubCRev", swapped=True)
_MULTIPLY = _Binary("multiply", "Mul", "MulC")
_DIVIDE = _Binary("divide", "Div", "DivC", "DivCRev", swapped=True)
_AND, _OR, _XOR = _Binary("bitwise_and", "And", "AndC"), _Binary("bitwise_or", "Or", "OrC"), _Binary("bitwise_xor", "Xor", "XorC")


def add(x: ArrayLike, y: ArrayLike, out: Array | None = None, scale: int = 0) -> Array:
    """x + y.

    >>> add(np.array([30000, 1], np.int16), np.array([10000, 2], np.int16))
    array([32767,     3], dtype=int16)
    >>> add(np.array([30000, 1], np.int16), np.array([10000, 2], np.int16), scale=1)
    array([20000,     2], dtype=int16)
    """
    return _ADD(x, y, out, scale)


def subtract(x: ArrayLike, y: ArrayLike, out: Array | None = None, scale: int = 0) -> Array:
    """x - y.

    >>> subtract(1.0, np.array([0.25, 1], np.float32))
    array([0.75, 0.  ], dtype=float32)
    """
    return _SUBTRACT(x, y, out, scale)


def multiply(x: ArrayLike, y: ArrayLike, out: Array | None = None, scale: int = 0) -> Array:
    """x * y.

    >>> multiply(np.array([16384, -32768], np.int16), np.array([16384, -32768], np.int16), scale=15)
    array([ 8192, 32767], dtype=int16)
    """
    return _MULTIPLY(x, y, out, scale)


def divide(x: ArrayLike, y: ArrayLike, out: Array | None = None, scale: int = 0) -> Array:
    """x / y. An element of y that is 0 is a tevs.Warning.

    >>> divide(np.array([7, -7], np.int16), np.array([2, 2], np.int16))
    array([ 4, -4], dtype=int16)
    """
    return _DIVIDE(x, y, out, scale)


def bitwise_and(x: ArrayLike, y: ArrayLike, out: Array | None = None) -> Array:
    """x & y, of unsigned integers."""
    return _AND(x, y, out, 0)


def bitwise_or(x: ArrayLike, y: ArrayLike, out: Array | None = None) -> Array:
    """x | y, of unsigned integers."""
    return _OR(x, y, out, 0)


def bitwise_xor(x: ArrayLike, y: ArrayLike, out: Array | None = None) -> Array:
    """x ^ y, of unsigned integers.

    >>> bitwise_xor(np.array([1, 2, 3], np.uint8), 1)
    array([0, 3, 2], dtype=uint8)
    """
    return _XOR(x, y, out, 0)


_UNARY = {name: _Unary(name, operation) for name, operation in [
    ("absolute", "Abs"), ("square", "Sqr"), ("sqrt", "Sqrt"), ("cbrt", "Cubrt"), ("exp", "Exp"), ("log", "Ln"), ("decibels", "10Log10"), ("arctan", "Arctan"),
    ("conj", "Conj"), ("flip", "Flip"), ("invert", "Not"), ("byteswap", "SwapBytes"), ("magnitude", "Magnitude"), ("phase", "Phase"), ("power", "PowerSpectr"),
    ("real", "Real"), ("imag", "Imag")]}


def absolute(x: ArrayLike, out: Array | None = None) -> Array:
    """|x| of real samples; of complex ones see magnitude.

    >>> absolute(np.array([-3, 2, -32768], np.int16))
    array([    3,     2, 32767], dtype=int16)
    """
    return _UNARY["absolute"](x, out, 0)


def square(x: ArrayLike, out: Array | None = None, scale: int = 0) -> Array:
    """x**2."""
    return _UNARY["square"](x, out, scale)


def sqrt(x: ArrayLike, out: Array | None = None, scale: int = 0) -> Array:
    """The square root. A negative element is a tevs.Warning, and NaN."""
    return _UNARY["sqrt"](x, out, scale)


def cbrt(x: ArrayLike, out: Array | None = None, scale: int = 0) -> Array:
    """The cube root."""
    return _UNARY["cbrt"](x, out, scale)


def exp(x: ArrayLike, out: Array | None = None, scale: int = 0) -> Array:
    """e**x."""
    return _UNARY["exp"](x, out, scale)


def log(x: ArrayLike, out: Array | None = None, scale: int = 0) -> Array:
    """The natural logarithm. A zero or negative element is a tevs.Warning."""
    return _UNARY["log"](x, out, scale)


def decibels(x: ArrayLike, out: Array | None = None, scale: int = 0) -> Array:
    """10 log10 x, of int32."""
    return _UNARY["decibels"](x, out, scale)


def arctan(x: ArrayLike, out: Array | None = None) -> Array:
    """The arctangent."""
    return _UNARY["arctan"](x, out, 0)


def conj(x: ArrayLike, out: Array | None = None) -> Array:
    """The complex conjugate."""
    return _UNARY["conj"](x, out, 0)


def flip(x: ArrayLike, out: Array | None = None) -> Array:
    """The vector in reversed order."""
    a = array(x)
    if a.ndim != 1:
        raise ValueError(f"tevs.flip: x: {a.ndim} dimensions, needs 1")
    return _UNARY["flip"](a, out, 0)


def invert(x: ArrayLike, out: Array | None = None) -> Array:
    """~x, of unsigned integers."""
    return _UNARY["invert"](x, out, 0)


def byteswap(x: ArrayLike, out: Array | None = None) -> Array:
    """The bytes of every element in reversed order.

    >>> byteswap(np.array([1], np.uint16))
    array([256], dtype=uint16)
    """
    return _UNARY["byteswap"](x, out, 0)


def magnitude(x: ArrayLike, out: Array | None = None, scale: int = 0) -> Array:
    """|x| of complex samples.

    >>> magnitude(np.array([3 + 4j]))
    array([5.])
    """
    return _UNARY["magnitude"](x, out, scale)


def phase(x: ArrayLike, out: Array | None = None, scale: int = 0) -> Array:
    """The angle of complex samples, in radians, -pi to pi."""
    return _UNARY["phase"](x, out, scale)


def power(x: ArrayLike, out: Array | None = None, scale: int = 0) -> Array:
    """|x|**2 of complex samples."""
    return _UNARY["power"](x, out, scale)


def real(x: ArrayLike, out: Array | None = None) -> Array:
    """The real parts of complex samples, in a vector of their own."""
    return _UNARY["real"](x, out, 0)


def imag(x: ArrayLike, out: Array | None = None) -> Array:
    """The imaginary parts of complex samples, in a vector of their own."""
    return _UNARY["imag"](x, out, 0)


_TO_POLAR = {np.dtype("c8"): raw.tevsCartToPolar_32fc, np.dtype("c16"): raw.tevsCartToPolar_64fc}
_FROM_POLAR = {np.dtype("f4"): raw.tevsPolarToCart_32fc, np.dtype("f8"): raw.tevsPolarToCart_64fc}


def to_polar(x: ArrayLike) -> tuple[Array, Array]:
    """Magnitudes and phases of complex floats."""
    a = array(x)
    if a.dtype not in _TO_POLAR:
        raise TypeError(f"tevs.to_polar: x: needs complex64 or complex128, not {a.dtype}")
    magnitudes, phases = (_empty(a.shape, a.real.dtype) for _ in range(2))
    if a.size:
        call("tevs.to_polar", _TO_POLAR[a.dtype], magnitudes, a, magnitudes, phases, a.size)
    return magnitudes, phases


def from_polar(magnitude: ArrayLike, phase: ArrayLike) -> Array:
    """magnitude * exp(i phase).

    >>> from_polar(np.array([2.0]), np.array([0.0]))
    array([2.+0.j])
    """
    m, p = array(magnitude), array(phase)
    if m.dtype not in _FROM_POLAR or m.dtype != p.dtype:
        raise TypeError(f"tevs.from_polar: needs two arrays of float32 or float64, not {m.dtype} and {p.dtype}")
    if m.shape != p.shape:
        raise ValueError(f"tevs.from_polar: phase: shape {p.shape}, needs {m.shape}")
    out = _empty(m.shape, np.result_type(m.dtype, np.complex64))
    if m.size:
        call("tevs.from_polar", _FROM_POLAR[m.dtype], out, m, p, out, m.size)
    return out


_SHIFTS = {name: _Binary(name, "", operation) for name, operation in (("left_shift", "LShiftC"), ("right_shift", "RShiftC"))}


def left_shift(x: ArrayLike, bits: int, out: Array | None = None) -> Array:
    """x << bits."""
    return _SHIFTS["left_shift"](x, bits, out, 0)


def right_shift(x: ArrayLike, bits: int, out: Array | None = None) -> Array:
    """x >> bits.

    >>> right_shift(np.array([-5, 5], np.int16), 1)
    array([-3,  2], dtype=int16)
    """
    return _SHIFTS["right_shift"](x, bits, out, 0)


_CLIP = {name: _Unary("threshold", "Threshold_" + name, more) for name, more in (("LT", " level"), ("GT", " level"), ("LTAbs", " level"), ("GTAbs", " level"))}


def threshold(x: ArrayLike, below: float | None = None, above: float | None = None, magnitude: bool = False, out: Array | None = None) -> Array:
    """Elements below or above a level replaced by it; with `magnitude`, by their magnitudes, with the sign kept. Complex elements always go by magnitudes.

    >>> threshold(np.array([-2.0, 0.5, 3.0]), below=0, above=1)
    array([0. , 0.5, 1. ])
    """
    result: Array = array(x)
    for level, name in ((below, "LT"), (above, "GT")):
        if level is not None:
            result = _CLIP[name + ("Abs" if magnitude else "")](result, out, 0, level)
            out = result
    if out is None:
        result = result.copy()
    return result


_NORMALIZE = _Unary("normalize", "Normalize", " vSub vDiv")


def normalize(x: ArrayLike, subtract: complex, divide: complex, out: Array | None = None, scale: int = 0) -> Array:
    """(x - subtract) / divide.

    >>> normalize(np.array([1.0, 2, 3]), 2, 0.5)
    array([-2.,  0.,  2.])
    """
    return _NORMALIZE(x, out, scale, subtract, divide)


_ROUNDING = {"nearest": raw.RoundNearest, "zero": raw.RoundTowardZero}
_CONVERT = [Forms("convert", "Convert", 1, "pSrc pDst", more) for more in ("", " rndMode")]


def convert(x: ArrayLike, dtype: DTypeLike, scale: int = 0, rounding: str = "nearest", out: Array | None = None) -> Array:
    """x in another sample type, times 2**-scale; integers saturate. rounding, of floats to integers: "nearest" (ties to even) or "zero".

    >>> convert(np.array([0.5, 1.5, 1e9], np.float32), np.int16)
    array([    0,     2, 32767], dtype=int16)
    >>> convert(np.array([16384, -32768], np.int16), np.float32, scale=15)
    array([ 0.5, -1. ], dtype=float32)
    """
    a, target = array(x), np.dtype(dtype)
    if rounding not in _ROUNDING:
        raise ValueError(f"tevs.convert: rounding: {rounding!r}, needs 'nearest' or 'zero'")
    if out is not None and out.dtype != target:
        raise TypeError(f"tevs.convert: out: {type_name(out.dtype)}, needs {type_name(target)}")
    if a.dtype == target and not scale:
        if out is None:
            return a.copy()
        _destination("tevs.convert", out, a.shape, target)[...] = a
        return out
    for forms, parameters in zip(_CONVERT, ((), (_ROUNDING[rounding],))):
        entry = forms.table.get((a.dtype, target))
        if entry is not None and (scale == 0 or entry[1] is not None):
            return _run("tevs.convert", entry[0], entry[1], (a,), parameters, _destination("tevs.convert", out, a.shape, target), scale, behind=True)
    if a.dtype == np.float64 and target == np.int16:   # by int32, which rounds once; what then is left to do is to saturate
        return convert(convert(a, np.int32, scale, rounding), target, out=out)
    raise TypeError(f"tevs.convert: no form from {type_name(a.dtype)} to {type_name(target)}{' with a scale' if scale else ''}")


def unpack_int24(data: ArrayLike, dtype: DTypeLike = np.float32, scale: int = 0) -> Array:
    """Packed little-endian 24-bit samples, three bytes each, as int32 or float32, the latter times 2**-scale.

    >>> unpack_int24(np.array([0, 0, 0xC0], np.uint8), np.float32, scale=23)
    array([-0.5], dtype=float32)
    """
    a = array(data)
    if a.dtype != np.uint8 or a.ndim != 1 or a.size % 3:
        raise ValueError("tevs.unpack_int24: data: needs a vector of bytes, three to a sample")
    target = np.dtype(dtype)
    out = _empty(a.size // 3, target)
    if out.size:
        call("tevs.unpack_int24", named(f"tevsConvert_24s{code(target, 'tevs.unpack_int24')}", "tevs.unpack_int24"), out, a, out, out.size)
        if scale and target == np.float32:
            multiply(out, 2.0 ** -scale, out=out)
    return out


def pack_int24(x: ArrayLike, scale: int = 0) -> Array:
    """int32 or float32 samples as packed 24-bit integers, times 2**-scale, rounded and saturated.

    >>> pack_int24(np.array([-0.5], np.float32), scale=-23)
    array([  0,   0, 192], dtype=uint8)
    """
    a = array(x)
    out = _empty(3 * a.size, np.uint8)
    if a.size:
        call("tevs.pack_int24", named(f"tevsConvert_{code(a.dtype, 'tevs.pack_int24')}24s_Sfs", "tevs.pack_int24"), out, a, out, a.size, scale)
    return out


__all__ = [n for n, v in list(globals().items()) if not n.startswith("_") and getattr(v, "__module__", None) == __name__]
