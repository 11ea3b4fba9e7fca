"""Test signals and noise."""

from __future__ import annotations

from collections.abc import Callable
from typing import Any

import numpy as np
from numpy.typing import DTypeLike

from . import raw
from ._core import Array, Closing, call, code, named


def _written(where: str, f: Callable[..., int], n: int, dtype: DTypeLike, *arguments: Any) -> Array:
    """The n samples that a C function writes."""
    if n < 0:
        raise ValueError(f"{where}: n: {n}, needs at least 0")
    out = np.empty(n, dtype)
    if n:
        call(where, f, out, out, n, *arguments)
    return out


def ramp(n: int, offset: float, slope: float, dtype: DTypeLike = np.float64) -> Array:
    """offset + k * slope for k = 0 .. n-1, integers rounded and saturated.

    >>> ramp(4, 1, 0.5, np.float32)
    array([1. , 1.5, 2. , 2.5], dtype=float32)
    """
    where = "tevs.ramp"
    return _written(where, named(f"tevsVectorRamp_{code(dtype, where)}", where), n, dtype, offset, slope)


def sweep(n: int, magnitude: float, dtype: DTypeLike = np.float64) -> Array:
    """magnitude * sin(pi k**2 / 2n): a chirp from frequency 0 to half the sampling rate; of unsigned integers spread over 0 .. magnitude.

    >>> sweep(4, 100, np.int16)
    array([  0,  38, 100, -38], dtype=int16)
    """
    where = "tevs.sweep"
    return _written(where, named(f"tevsVectorJaehne_{code(dtype, where)}", where), n, dtype, magnitude)


def triangle(n: int, magnitude: float, frequency: float, asymmetry: float = 0, phase: float = 0, dtype: DTypeLike = np.float64) -> tuple[Array, float]:
    """A triangle wave of so many periods a sample, and the phase to go on with.

    >>> triangle(4, 1, 0.25)
    (array([ 1.,  0., -1.,  0.]), 0.0)
    """
    where, place = "tevs.triangle", np.array([phase], np.float32)
    out = _written(where, named(f"tevsTriangle_Direct_{code(dtype, where)}", where), n, dtype, magnitude, frequency, asymmetry, place)
    return out, float(place[0])


class _Noise(Closing):
    _KIND = ""

    def __init__(self, first: float, second: float, seed: int, dtype: DTypeLike) -> None:
        where = f"tevs.{type(self).__name__}"
        self.dtype = np.dtype(dtype)
        letters = code(dtype, where)
        a, b = (float(first), float(second)) if self.dtype.kind == "f" else (int(first), int(second))
        self._f: Any = named(f"tevs{self._KIND}_{letters}", where)
        self._record = named(f"tevs{self._KIND}InitAlloc_{letters}", where)(a, b, seed)

    def process(self, n: int) -> Array:
        """The next n samples."""
        return _written(f"tevs.{type(self).__name__}.process", self._f, n, self.dtype, self._record)


class UniformNoise(_Noise):
    """Evenly distributed samples of uint8, int16 or float32, the same from the same seed on every machine, however they are cut into blocks.

    >>> with UniformNoise(-1, 1, seed=7) as noise:
    ...     block = noise.process(1000)
    >>> bool(abs(block).max() <= 1)
    True
    """

    _KIND = "RandUniform"

    def __init__(self, low: float = -1, high: float = 1, seed: int = 0, dtype: DTypeLike = np.float32) -> None:
        super().__init__(low, high, seed, dtype)


class GaussianNoise(_Noise):
    """Normally distributed samples of uint8, int16 or float32."""

    _KIND = "RandGauss"

    def __init__(self, mean: float = 0, std: float = 1, seed: int = 0, dtype: DTypeLike = np.float32) -> None:
        super().__init__(mean, std, seed, dtype)


class Tone(Closing):
    """An oscillator: tones, and complex signals mixed up and down in frequency, whose phase never drifts. frequency in cycles a sample, below 0.5, phase in radians.

    >>> with Tone(0.25) as tone:
    ...     x = tone.process(4)
    ...     tone.tune(0.0)
    >>> x
    array([ 1., -0., -1.,  0.], dtype=float32)
    """

    def __init__(self, frequency: float, phase: float = 0, magnitude: float = 1, dtype: DTypeLike = np.float32) -> None:
        self.dtype, self.magnitude = np.dtype(dtype), magnitude
        self._f = named(f"tevsTone_{code(dtype, 'tevs.Tone')}", "tevs.Tone")
        self._record = raw.tevsToneInitAlloc(frequency, phase)

    def process(self, n: int) -> Array:
        """The next n samples."""
        return _written("tevs.Tone.process", self._f, n, self.dtype, self.magnitude, self._record)

    def _mixed(self, direction: str, x: Array) -> Array:
        where = f"tevs.Tone.{direction.lower()}"
        a = np.asarray(x)
        if a.ndim != 1:
            raise ValueError(f"{where}: x: {a.ndim} dimensions, needs 1")
        real = a.dtype == np.float32
        out = np.empty(a.shape, np.complex64 if real else a.dtype)
        if a.size:
            f = named(f"tevsToneMix{direction[4:]}_{code(a.dtype, where)}" + ("32fc" if real else ""), where)
            call(where, f, out, a, out, a.size, self._record)
        return out

    def mix_up(self, x: Array) -> Array:
        """The next block of a complex64 or complex_int16 signal, shifted up by the tone's frequency."""
        return self._mixed("mix_Up", x)

    def mix_down(self, x: Array) -> Array:
        """The next block of a complex64, complex_int16 or float32 signal, shifted down by the tone's frequency."""
        return self._mixed("mix_Down", x)

    def tune(self, frequency: float, glide: int = 0) -> None:
        """Another frequency, reached after `glide` samples, with a phase that goes on."""
        raw.tevsToneSetFreq(self._record, frequency, glide)

    @property
    def phase(self) -> float:
        """That of the next sample, in radians."""
        phase = np.empty(1)
        raw.tevsToneGetPhase(self._record, phase)
        return float(phase[0])

    @phase.setter
    def phase(self, radians: float) -> None:
        raw.tevsToneSetPhase(self._record, radians)


__all__ = ["Tone", "ramp", "sweep", "triangle", "UniformNoise", "GaussianNoise"]
