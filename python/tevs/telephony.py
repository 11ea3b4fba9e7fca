"""Companding, tone detection, speech."""

from __future__ import annotations

from typing import Any

import numpy as np
from numpy.typing import ArrayLike, DTypeLike

from . import raw
from ._core import Array, array, call, code, named


def _companded(name: str, function: str, x: ArrayLike, dtype: DTypeLike) -> Array:
    a, where = array(x), "tevs." + name
    out = np.empty(a.shape, dtype)
    if a.size:
        call(where, named(function, where), out, a, out, a.size)
    return out


def alaw_encode(x: ArrayLike) -> Array:
    """G.711 A-law codes of int16 or float32 samples.

    >>> alaw_encode(np.array([0, 1000, -1000], np.int16))
    array([213, 250, 122], dtype=uint8)
    """
    return _companded("alaw_encode", f"tevsLinToALaw_{code(array(x).dtype, 'tevs.alaw_encode')}8u", x, np.uint8)


def mulaw_encode(x: ArrayLike) -> Array:
    """G.711 mu-law codes of int16 or float32 samples."""
    return _companded("mulaw_encode", f"tevsLinToMuLaw_{code(array(x).dtype, 'tevs.mulaw_encode')}8u", x, np.uint8)


def alaw_decode(codes: ArrayLike, dtype: DTypeLike = np.int16) -> Array:
    """Samples of G.711 A-law codes."""
    return _companded("alaw_decode", f"tevsALawToLin_8u{code(dtype, 'tevs.alaw_decode')}", codes, dtype)


def mulaw_decode(codes: ArrayLike, dtype: DTypeLike = np.int16) -> Array:
    """Samples of G.711 mu-law codes.

    >>> mulaw_decode(np.array([255, 0], np.uint8))
    array([     0, -32124], dtype=int16)
    """
    return _companded("mulaw_decode", f"tevsMuLawToLin_8u{code(dtype, 'tevs.mulaw_decode')}", codes, dtype)


def goertzel(x: ArrayLike, frequency: float, scale: int = 0) -> Any:
    """The spectrum of the block at one frequency, in cycles a sample: for k / len(x) bin k of the DFT.

    >>> abs(goertzel(np.cos(2 * np.pi * np.arange(8) / 8).astype(np.float32), 1 / 8)).round(3)
    4.0
    """
    a = array(x)
    if a.dtype == np.float64:
        a = a.astype(np.complex128)
    letters = code(a.dtype, "tevs.goertzel")
    integer = letters.startswith("16")
    f = named(f"tevsGoertz_{letters}" + ("_Sfs" if integer else ""), "tevs.goertzel")
    result = np.empty((), {"32f": np.complex64, "32fc": np.complex64, "64fc": np.complex128}.get(letters, [("re", "i2"), ("im", "i2")]))
    call("tevs.goertzel", f, result, a, a.size, result, frequency, *((scale,) if integer else ()))
    return result[()]


def levinson(r: ArrayLike) -> tuple[Array, Array, float]:
    """The prediction-error filter of a signal with the auto-correlations r[0] .. r[order]: its taps a[0] .. a[order], the reflection coefficients, the energy left.

    >>> levinson(np.array([1.0, 0.5]))
    (array([ 1. , -0.5]), array([-0.5]), 0.75)
    """
    a = array(r)
    f = named(f"tevsLevinson_{code(a.dtype, 'tevs.levinson')}", "tevs.levinson")
    if a.ndim != 1 or a.size < 2:
        raise ValueError("tevs.levinson: r: needs a vector of at least 2")
    taps, reflection, energy = np.empty_like(a, order="C"), np.empty(a.size - 1, a.dtype), np.empty((), a.dtype)
    call("tevs.levinson", f, taps, a, taps, a.size - 1, reflection, energy)
    return taps, reflection, float(energy)


class Emphasis:
    """Pre-emphasis of a stream, x[n] - alpha x[n-1], or with inverse=True its undoing; int16, float32 or float64.

    >>> Emphasis(0.5).process(np.array([1.0, 1.0, 1.0]))
    array([1. , 0.5, 0.5])
    """

    def __init__(self, alpha: float = 0.97, inverse: bool = False) -> None:
        self.alpha, self._operation, self._memory = alpha, "De" if inverse else "Pre", np.zeros(1)

    def process(self, x: ArrayLike, scale: int = 0) -> Array:
        """The next block."""
        a, where = array(x), "tevs.Emphasis.process"
        letters = code(a.dtype, where)
        integer = letters == "16s"
        out = np.empty_like(a, order="C")
        if a.size:
            f = named(f"tevs{self._operation}Emphasis_{letters}" + ("_Sfs" if integer else ""), where)
            call(where, f, out, a, out, a.size, self.alpha, self._memory, *((scale,) if integer else ()))
        return out


__all__ = ["alaw_encode", "mulaw_encode", "alaw_decode", "mulaw_decode", "goertzel", "levinson", "Emphasis"]
