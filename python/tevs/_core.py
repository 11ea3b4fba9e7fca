"""What the NumPy-level functions share: sample types, the choice of the C function by them, arguments read."""

from __future__ import annotations

import warnings
from collections.abc import Callable, Iterator
from types import TracebackType
from typing import Any, NoReturn, Self

import numpy as np
from numpy import ndarray
from numpy.typing import ArrayLike, NDArray

from . import raw
from ._index import FUNCTIONS
from .raw import Error as Error

Array = NDArray[Any]

complex_int8 = np.dtype([("re", "i1"), ("im", "i1")])
complex_int16 = np.dtype([("re", "i2"), ("im", "i2")])
complex_int32 = np.dtype([("re", "i4"), ("im", "i4")])
complex_int64 = np.dtype([("re", "i8"), ("im", "i8")])

_SPECIAL = {"complex_int8": complex_int8, "complex_int16": complex_int16, "complex_int32": complex_int32, "complex_int64": complex_int64}

# The library's codes of sample types.
CODES: dict[Any, str] = {np.dtype(t): code for t, code in [  # type: ignore[call-overload]
    ("i1", "8s"), ("u1", "8u"), ("i2", "16s"), ("u2", "16u"), ("i4", "32s"), ("u4", "32u"), ("i8", "64s"), ("u8", "64u"), ("f2", "16f"), ("f4", "32f"), ("f8", "64f"),
    ("c8", "32fc"), ("c16", "64fc"), (complex_int8, "8sc"), (complex_int16, "16sc"), (complex_int32, "32sc"), (complex_int64, "64sc")]}


class Warning(RuntimeWarning):
    """A call that wrote its whole result, with something in it that the caller may not expect: a division by zero, a root of a negative number."""


def dtype_of(name: str) -> np.dtype[Any]:
    return _SPECIAL[name] if name in _SPECIAL else np.dtype(name)


def code(dtype: Any, where: str) -> str:
    """The library's code of a sample type."""
    try:
        return CODES[np.dtype(dtype)]
    except (KeyError, TypeError):
        raise TypeError(f"{where}: no samples of {dtype}") from None


def named(name: str, where: str) -> Callable[..., Any]:
    """The C function of that name; a form that the library does not have is an error of the caller's types."""
    function: Callable[..., Any] | None = getattr(raw, name, None)
    if function is None:
        raise TypeError(f"{where}: the library has no {name}: another dtype is needed")
    return function


def warn(where: str, status: int, level: int = 3) -> None:
    warnings.warn(f"{where}: {raw.tevsGetStatusString(status)}", Warning, stacklevel=level)


class Forms:
    """The C functions of one operation by the types of their vectors.

    A call has `sources` vectors to read, and one to write; `table` is keyed by the source types, and by them and the destination type, and holds
    (function, function with a scale factor, destination type).
    """

    def __init__(self, name: str, operation: str, sources: int, arguments: str, more: str = "") -> None:
        self.name = "tevs." + name
        self.sources = sources
        self.table: dict[Any, tuple[Any, Any, np.dtype[Any]]] = {}
        plain, scaled = f"{arguments} len{more}", f"{arguments} len{more} scaleFactor"
        for function, types, names in FUNCTIONS.get(operation, []):
            if "24" in function or names not in (plain, scaled):
                continue
            vectors = [dtype_of(t) for t, n in zip(types.split(), names.split()) if n.startswith("p")]
            source, destination = vectors[:sources], vectors[-1]
            f = getattr(raw, function)
            for key in (tuple(source), (*source, destination)):
                old = self.table.get(key)
                if old is not None and old[2] != destination:   # a result of the sources' type is what is meant unless out says otherwise
                    if destination != source[-1]:
                        continue
                    old = None
                entry = (old[0] if old else None, old[1] if old else None)
                self.table[key] = (f, entry[1], destination) if names == plain else (entry[0], f, destination)

    def find(self, types: tuple[np.dtype[Any], ...], out: Array | None) -> tuple[Any, Any, np.dtype[Any]]:
        entry = self.table.get(types if out is None else (*types, out.dtype))
        if entry is None:
            self.refuse(types, out)
        return entry

    def refuse(self, types: tuple[np.dtype[Any], ...], out: Array | None) -> NoReturn:
        known = sorted({", ".join(map(type_name, key)) for key in self.table if len(key) == self.sources})
        given = ", ".join(map(type_name, types)) + (f" to {type_name(out.dtype)}" if out is not None else "")
        raise TypeError(f"{self.name}: no form for {given}; there are {'; '.join(known)}")


def type_name(dtype: np.dtype[Any]) -> str:
    return next((n for n, d in _SPECIAL.items() if d == dtype), dtype.name)


def call(where: str, f: Callable[..., int], out: Array, *arguments: Any) -> int:
    """Calls f, which writes `out`; sources that are not contiguous are copied, and the call, which has read nothing then, is made again."""
    try:
        status = f(*arguments)
    except Error as error:
        raise rephrased(where, error) from None
    except TypeError as error:
        raise TypeError(*refusal(where, error).args) from None
    except ValueError as error:
        strided = [a is not out and type(a) is ndarray and not a.flags.c_contiguous for a in arguments]
        if "not contiguous" not in str(error) or not any(strided):
            raise refusal(where, error) from None
        return call(where, f, out, *(np.ascontiguousarray(a) if s else a for a, s in zip(arguments, strided)))
    if status > 0:
        warn(where, status, 4)
    return status


_PYTHON_NAMES = {"pSrc": "x", "pSrc1": "x", "pSrc2": "y", "pDst": "out", "pSrcDst": "out"}


def refusal(where: str, error: Exception) -> ValueError:
    """What raw says of an argument, in the names of the function that was called."""
    function, argument, reason = str(error).split(": ", 2)
    reason = " ".join(_PYTHON_NAMES.get(word, word) for word in reason.split(" "))
    return ValueError(f"{where}: {_PYTHON_NAMES.get(argument, argument)}: {reason}")


def rephrased(where: str, error: Error) -> Error:
    reason = str(error).split(": ", 1)[1]
    new = Error(f"{where}: {reason} ({error.function})")
    new.status, new.function = error.status, error.function
    return new


class Closing:
    """What owns a record, until it is closed or its with statement ends."""

    _record: Any

    def close(self) -> None:
        """Gives the memory back; calls are refused from now on."""
        self._record.close()

    def __enter__(self) -> Self:
        return self

    def __exit__(self, type: type[BaseException] | None, value: BaseException | None, traceback: TracebackType | None) -> None:
        self.close()


def array(x: ArrayLike) -> Array:
    return x if type(x) is ndarray else np.asarray(x)


_FLOATS = frozenset(np.dtype(t) for t in ("f4", "f8", "c8", "c16"))


def floating(x: ArrayLike) -> Array:
    """As SciPy reads samples: single precision stays, all else becomes double."""
    a = np.asarray(x)
    if a.dtype in _FLOATS:
        return a
    if a.dtype.kind in "fc" and not a.dtype.isnative:
        return floating(a.astype(a.dtype.newbyteorder("=")))
    if a.dtype.kind in "biu" or a.dtype == np.float16:
        return a.astype(np.float32 if a.dtype == np.float16 else np.float64)
    raise TypeError(f"tevs: no samples of {a.dtype}")


def samples(where: str, x: ArrayLike, dtype: np.dtype[Any], name: str = "x") -> Array:
    """x, which has to be of this type."""
    a = array(x)
    if a.dtype != dtype:
        raise TypeError(f"{where}: {name}: {type_name(a.dtype)}, needs {type_name(dtype)}")
    return a


def destination(where: str, out: Array | None, shape: tuple[int, ...], dtype: np.dtype[Any]) -> Array:
    """out, which has to be a contiguous array of this shape and type that may be written; without it a new one."""
    if out is None:
        return np.empty(shape, dtype)
    if not isinstance(out, ndarray):
        raise TypeError(f"{where}: out: needs an array, not {type(out).__name__}")
    if out.shape != shape:
        raise ValueError(f"{where}: out: shape {out.shape}, needs {shape}")
    if out.dtype != dtype:
        raise TypeError(f"{where}: out: {type_name(out.dtype)}, needs {type_name(dtype)}")
    if not out.flags.c_contiguous:
        raise ValueError(f"{where}: out: the array is not contiguous")
    if not out.flags.writeable:
        raise ValueError(f"{where}: out: the array is read-only")
    return out


def axis_of(where: str, x: Array, axis: int) -> int:
    if not -x.ndim <= axis < x.ndim:
        raise ValueError(f"{where}: axis: {axis} is none of {x.ndim}")
    return axis % x.ndim


def along(x: Array, axis: int) -> Array:
    """The vectors along an axis as the rows of a contiguous matrix."""
    if x.ndim == 1:
        return np.ascontiguousarray(x).reshape(1, -1)
    moved = np.moveaxis(x, axis, -1)
    return np.ascontiguousarray(moved).reshape(-1, x.shape[axis])


def back(rows: Array, shape: tuple[int, ...], axis: int) -> Array:
    """Rows into the places that `along` took them from; they may have another length."""
    if len(shape) == 1:
        return rows.reshape(-1)
    outer = shape[:axis] + shape[axis + 1:]
    return np.moveaxis(rows.reshape(*outer, rows.shape[-1]), -1, axis)


def each(rows: Array) -> Iterator[tuple[int, Array]]:
    return enumerate(rows)
