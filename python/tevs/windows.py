"""Windows, as scipy.signal.windows has them: symmetric, or with sym=False periodic, in double precision."""

from __future__ import annotations

from collections.abc import Callable
from typing import Any

import numpy as np

from . import raw
from ._core import Array, call


def _window(name: str, f: Callable[..., int], M: int, sym: bool, *parameters: float) -> Array:
    where = "tevs." + name
    if M != int(M) or M < 0:
        raise ValueError(f"{where}: M: {M}, needs an integer of at least 0")
    M = int(M)
    if M <= 1:
        return np.ones(M)
    n = M if sym else M + 1
    w = np.ones(max(n, 3))
    call(where, f, w, w, w.size, *parameters)
    return w[[0, 2]] if n == 2 else w[:M]   # the ends of a window are the same whatever its length


def boxcar(M: int, sym: bool = True) -> Array:
    """Ones."""
    return np.ones(M)


def bartlett(M: int, sym: bool = True) -> Array:
    """The triangle that ends in zeros.

    >>> bartlett(5)
    array([0. , 0.5, 1. , 0.5, 0. ])
    """
    return _window("bartlett", raw.tevsWinBartlett_64f_I, M, sym)


def hann(M: int, sym: bool = True) -> Array:
    """The raised cosine.

    >>> hann(4, sym=False)
    array([0. , 0.5, 1. , 0.5])
    """
    return _window("hann", raw.tevsWinHann_64f_I, M, sym)


def hamming(M: int, sym: bool = True) -> Array:
    """The raised cosine on a step of 0.08."""
    return _window("hamming", raw.tevsWinHamming_64f_I, M, sym)


def blackman(M: int, sym: bool = True) -> Array:
    """0.42 - 0.5 cos + 0.08 cos."""
    return _window("blackman", raw.tevsWinBlackmanStd_64f_I, M, sym)


def kaiser(M: int, beta: float, sym: bool = True) -> Array:
    """The Kaiser window. Its weights come from polynomials and are within 3e-5 of the formula."""
    n = M if sym else M + 1
    if n == 2 and M == 2:
        return kaiser(3, beta)[[0, 2]]
    return _window("kaiser", raw.tevsWinKaiser_64f_I, M, sym, 2 * beta / max(n - 1, 1))


_BY_NAME: dict[str, Callable[..., Array]] = {"boxcar": boxcar, "rectangular": boxcar, "bartlett": bartlett, "hann": hann, "hamming": hamming, "blackman": blackman, "kaiser": kaiser}


def get_window(window: str | float | tuple[Any, ...], Nx: int, fftbins: bool = True) -> Array:
    """A window by its name; ("kaiser", beta), or beta alone, for a Kaiser window. Periodic unless fftbins is False.

    >>> get_window("hann", 4)
    array([0. , 0.5, 1. , 0.5])
    """
    if isinstance(window, (int, float)):
        window = ("kaiser", window)
    name, parameters = (window, ()) if isinstance(window, str) else (window[0], tuple(window[1:]))
    if name not in _BY_NAME or len(parameters) != (name == "kaiser"):
        raise ValueError(f"tevs.get_window: window: {window!r} is none of {', '.join(_BY_NAME)} ('kaiser', beta)")
    return _BY_NAME[name](Nx, *parameters, sym=not fftbins)


__all__ = [n for n, v in list(globals().items()) if not n.startswith("_") and getattr(v, "__module__", None) == __name__]
