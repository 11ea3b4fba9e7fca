"""Wavelets: filters by name, and the transform of a whole signal."""

from __future__ import annotations


import numpy as np
from numpy.typing import ArrayLike, DTypeLike

from . import raw
from ._core import Array, Closing, call, code, destination, named, samples

_FAMILIES = {"daubechies": raw.WaveletDaubechies, "symlet": raw.WaveletSymlet, "cdf": raw.WaveletCdf}
_EXTENSIONS = {"periodic": raw.ExtPeriodic, "mirror": raw.ExtMirror}


def wavelet(family: str, taps: int, dtype: DTypeLike = np.float64) -> tuple[Array, Array, Array, Array]:
    """The four filters of a wavelet: low and high of the analysis, low and high of the synthesis. "daubechies" has 2, 4 .. 40 taps, "symlet" 4 .. 40, "cdf" 6 or 10.

    >>> wavelet("daubechies", 2)[0].round(4)
    array([0.7071, 0.7071])
    """
    if family not in _FAMILIES:
        raise ValueError(f"tevs.wavelet: family: {family!r} is none of {', '.join(_FAMILIES)}")
    filters = tuple(np.empty(max(taps, 0), dtype) for _ in range(4))
    call("tevs.wavelet", named(f"tevsWtGenTaps_{code(dtype, 'tevs.wavelet')}", "tevs.wavelet"), filters[0], *filters, taps, _FAMILIES[family])
    return filters[0], filters[1], filters[2], filters[3]


class DWT(Closing):
    """The discrete wavelet transform of n samples over some levels; float32 or float64. One record serves any number of threads.

    >>> x = np.arange(8.0)
    >>> with DWT(8, 2) as dwt:
    ...     c = dwt.forward(x)
    ...     bool(np.allclose(dwt.inverse(c), x))
    True
    """

    def __init__(self, n: int, levels: int, family: str = "daubechies", taps: int = 4, extension: str = "periodic", dtype: DTypeLike = np.float64) -> None:
        where = "tevs.DWT"
        if extension not in _EXTENSIONS:
            raise ValueError(f"{where}: extension: {extension!r}, needs 'periodic' or 'mirror'")
        self.n, self.levels, self.dtype = n, levels, np.dtype(dtype)
        letters = code(dtype, where)
        filters = wavelet(family, taps, dtype)
        self._record = named(f"tevsDWTInitAlloc_{letters}", where)(n, levels, *filters, taps, _EXTENSIONS[extension])
        sizes = np.empty((3, 1), np.int32)
        named(f"tevsDWTGetSize_{letters}", where)(n, levels, taps, _EXTENSIONS[extension], *sizes)
        self.coefficients = int(sizes[2, 0])
        self._forward, self._inverse, self._band = (named(f"tevsDWT{f}_{letters}", where) for f in ("Fwd", "Inv", "GetBand"))

    def _run(self, where: str, f: object, x: ArrayLike, n: int, made: int, out: Array | None) -> Array:
        a = samples(where, x, self.dtype)
        if a.shape != (n,):
            raise ValueError(f"{where}: x: shape {a.shape}, needs {(n,)}")
        result = destination(where, out, (made,), self.dtype)
        call(where, f, result, a, result, self._record, None)   # type: ignore[arg-type]
        return result

    def forward(self, x: ArrayLike, out: Array | None = None) -> Array:
        """The coefficients: approximation, details from the coarsest level to the finest."""
        return self._run("tevs.DWT.forward", self._forward, x, self.n, self.coefficients, out)

    def inverse(self, c: ArrayLike, out: Array | None = None) -> Array:
        """The samples of coefficients."""
        return self._run("tevs.DWT.inverse", self._inverse, c, self.coefficients, self.n, out)

    def band(self, level: int) -> slice:
        """Where a level lies among the coefficients: 0 the approximation, 1 the finest details."""
        place = np.empty((2, 1), np.int32)
        self._band(self._record, level, *place)
        return slice(int(place[0, 0]), int(place[0, 0] + place[1, 0]))


__all__ = ["wavelet", "DWT"]
