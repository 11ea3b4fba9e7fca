"""Filter design with SciPy's names: windowed FIR filters, Butterworth and Chebyshev filters, responses."""

from __future__ import annotations

from collections.abc import Callable
from typing import Any

import numpy as np
from numpy.typing import ArrayLike

from . import raw
from ._core import Array, call
from .windows import get_window


def _relative(where: str, frequency: ArrayLike, fs: float | None) -> Array:
    """In cycles a sample, of frequencies in units of fs, by default 2: half the sampling rate is 1."""
    relative = np.atleast_1d(np.asarray(frequency, np.float64)) / (2 if fs is None else fs)
    if relative.ndim != 1 or relative.size not in (1, 2):
        raise ValueError(f"{where}: needs one frequency or two, not {np.asarray(frequency).shape}")
    return relative


_FIR: dict[tuple[str, int], Callable[..., int]] = {("lowpass", 1): raw.tevsFIRGenLowpass_64f, ("highpass", 1): raw.tevsFIRGenHighpass_64f, ("bandpass", 2): raw.tevsFIRGenBandpass_64f, ("bandstop", 2): raw.tevsFIRGenBandstop_64f}


def firwin(numtaps: int, cutoff: ArrayLike, window: Any = "hamming", pass_zero: bool | str = True, fs: float | None = None) -> Array:
    """Linear-phase taps by the window method, as scipy.signal.firwin for one or two cut-off frequencies.

    >>> firwin(3, 0.5).round(4)
    array([0.0462, 0.9076, 0.0462])
    """
    where = "tevs.firwin"
    edges = _relative(where, cutoff, fs)
    kind = pass_zero if isinstance(pass_zero, str) else {(True, 1): "lowpass", (False, 1): "highpass", (True, 2): "bandstop", (False, 2): "bandpass"}[bool(pass_zero), edges.size]
    if (kind, edges.size) not in _FIR:
        raise ValueError(f"{where}: pass_zero: {pass_zero!r} does not go with {edges.size} cut-off frequencies")
    if numtaps < 1:
        raise ValueError(f"{where}: numtaps: {numtaps}, needs at least 1")
    if numtaps % 2 == 0 and kind in ("highpass", "bandstop"):
        raise ValueError(f"{where}: numtaps: {numtaps}, needs an odd number: even symmetric taps cannot pass half the sampling rate")
    taps = np.empty(numtaps)
    call(where, _FIR[kind, edges.size], taps, taps, numtaps, *edges.tolist(), raw.TaperNone)
    taps *= get_window(window, numtaps, fftbins=False)
    unity = {"lowpass": 0.0, "bandstop": 0.0, "highpass": 0.5, "bandpass": float(edges.mean())}[kind]
    gain = np.empty(1, np.complex128)
    call(where, raw.tevsFIRResponse_64f, gain, taps, numtaps, np.array([unity]), gain, 1)
    scale: float = (gain[0] * np.exp(1j * np.pi * unity * (numtaps - 1))).real
    return taps / scale


_TYPES = {name: kind for kind, names in {"Lowpass": ("low", "lowpass", "lp", "l"), "Highpass": ("high", "highpass", "hp", "h"), "Bandpass": ("band", "bandpass", "bp", "pass"),
                                         "Bandstop": ("stop", "bandstop", "bs", "bands")}.items() for name in names}


def _iir(where: str, N: int, ripple: float, Wn: ArrayLike, btype: str, output: str, fs: float | None) -> Any:
    edges = _relative(where, Wn, fs)
    kind = _TYPES.get(btype)
    if kind is None or (edges.size == 2) != kind.startswith("Band"):
        raise ValueError(f"{where}: btype: {btype!r} does not go with {edges.size} frequencies")
    if output not in ("ba", "sos"):
        raise ValueError(f"{where}: output: {output!r}, needs 'ba' or 'sos'")
    if output == "ba" and edges.size == 1:
        taps = np.empty(2 * (max(N, 0) + 1))
        call(where, getattr(raw, f"tevsIIRGen{kind}_64f"), taps, taps, N, edges[0], ripple)
        return taps[:N + 1], taps[N + 1:]
    sos = np.empty((max(N if edges.size == 2 else (N + 1) // 2, 1), 6))
    call(where, getattr(raw, f"tevsIIRGen{kind}_BiQuad_64f"), sos, sos, N, *edges.tolist(), ripple)
    if output == "sos":
        return sos
    b, a = np.ones(1), np.ones(1)
    for section in sos:
        b, a = np.polymul(b, section[:3]), np.polymul(a, section[3:])
    return b, a


def butter(N: int, Wn: ArrayLike, btype: str = "low", analog: bool = False, output: str = "ba", fs: float | None = None) -> Any:
    """A Butterworth filter of order N, up to 12, as scipy.signal.butter: (b, a), or with output="sos" second-order sections, which suit all orders and edges.

    >>> b, a = butter(1, 0.5)
    >>> b.round(6), a.round(6)
    (array([0.5, 0.5]), array([1., 0.]))
    """
    if analog:
        raise ValueError("tevs.butter: analog: there are digital filters only")
    return _iir("tevs.butter", N, 0.0, Wn, btype, output, fs)


def cheby1(N: int, rp: float, Wn: ArrayLike, btype: str = "low", analog: bool = False, output: str = "ba", fs: float | None = None) -> Any:
    """A Chebyshev filter of the first kind, of order N up to 12 and with a ripple of rp dB, as scipy.signal.cheby1."""
    if analog:
        raise ValueError("tevs.cheby1: analog: there are digital filters only")
    if not rp > 0:
        raise ValueError(f"tevs.cheby1: rp: {rp}, needs a number above 0")
    return _iir("tevs.cheby1", N, rp, Wn, btype, output, fs)


def _grid(where: str, worN: ArrayLike | None, whole: bool, fs: float) -> Array:
    if worN is None or np.ndim(worN) == 0:
        n = 512 if worN is None else int(np.asarray(worN))
        if n < 1:
            raise ValueError(f"{where}: worN: {n}, needs at least 1")
        return np.arange(n) * (fs / n if whole else fs / 2 / n)
    return np.ascontiguousarray(worN, np.float64).ravel()


def freqz(b: ArrayLike, a: ArrayLike = 1, worN: ArrayLike | None = None, whole: bool = False, fs: float = 2 * np.pi) -> tuple[Array, Array]:
    """The response of a filter of real taps: frequencies, values, as scipy.signal.freqz.

    >>> w, h = freqz([0.5, 0.5], worN=2)
    >>> abs(h).round(4)
    array([1.    , 0.7071])
    """
    where = "tevs.freqz"
    numerator, denominator = (np.ascontiguousarray(np.atleast_1d(v), np.float64) for v in (b, a))
    w = _grid(where, worN, whole, fs)
    h = np.empty(w.size, np.complex128)
    if denominator.size == 1:
        taps = numerator / denominator
        call(where, raw.tevsFIRResponse_64f, h, taps, taps.size, w / fs, h, w.size)
    else:
        order = max(numerator.size, denominator.size) - 1
        taps = np.zeros((2, order + 1))
        taps[0, :numerator.size], taps[1, :denominator.size] = numerator, denominator
        call(where, raw.tevsIIRResponse_64f, h, taps, order, w / fs, h, w.size)
    return w, h


def sosfreqz(sos: ArrayLike, worN: ArrayLike | None = None, whole: bool = False, fs: float = 2 * np.pi) -> tuple[Array, Array]:
    """The response of second-order sections: frequencies, values, as scipy.signal.sosfreqz."""
    sections = np.ascontiguousarray(sos, np.float64)
    if sections.ndim != 2 or sections.shape[1] != 6 or not len(sections):
        raise ValueError(f"tevs.sosfreqz: sos: shape {sections.shape}, needs (n, 6)")
    w = _grid("tevs.sosfreqz", worN, whole, fs)
    h = np.empty(w.size, np.complex128)
    call("tevs.sosfreqz", raw.tevsIIRResponse_BiQuad_64f, h, sections, len(sections), w / fs, h, w.size)
    return w, h


__all__ = ["firwin", "butter", "cheby1", "freqz", "sosfreqz"]
