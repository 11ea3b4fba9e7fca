"""Convolutional codes: encoder and maximum-likelihood decoder."""

from __future__ import annotations

from collections.abc import Sequence

import numpy as np
from numpy.typing import ArrayLike

from . import raw
from ._core import Array, Closing, call


def convolutional_encode(bits: ArrayLike, polynomials: Sequence[int], constraint_length: int, state: int = 0) -> tuple[Array, int]:
    """len(polynomials) bits for each bit, and the state to go on with; polynomials with the newest input's bit on top.

    >>> convolutional_encode([1, 0, 0], (0o7, 0o5), 3)
    (array([1, 1, 1, 0, 1, 1], dtype=uint8), 0)
    """
    source = np.ascontiguousarray(bits, np.uint8)
    code, shift = np.ascontiguousarray(polynomials, np.int32), np.array([state], np.int32)
    if source.ndim != 1 or code.ndim != 1:
        raise ValueError("tevs.convolutional_encode: bits and polynomials: need vectors")
    out = np.empty(source.size * code.size, np.uint8)
    if out.size:
        call("tevs.convolutional_encode", raw.tevsViterbiEncode_8u, out, source, out, source.size, code, code.size, constraint_length, shift)
    return out, int(shift[0])


class ViterbiDecoder(Closing):
    """The maximum-likelihood decoder of a convolutional code, over a stream of soft bits: int8, positive for a 0, negative for a 1, the more so the surer, 0 an erasure.

    Bits come out with a delay of `trace` to 2 * trace - 1 steps; flush() gives the last ones.

    >>> sent = np.array([1, 0, 1, 1, 0, 0], np.uint8)              # two zeros end in state 0
    >>> coded, _ = convolutional_encode(sent, (0o7, 0o5), 3)
    >>> soft = np.where(coded, -1, 1).astype(np.int8)
    >>> soft[3] = -soft[3]                                        # an error
    >>> with ViterbiDecoder((0o7, 0o5), 3) as decoder:
    ...     np.concatenate([decoder.process(soft), decoder.flush()])
    array([1, 0, 1, 1, 0, 0], dtype=uint8)
    """

    def __init__(self, polynomials: Sequence[int], constraint_length: int, trace: int | None = None) -> None:
        code = np.ascontiguousarray(polynomials, np.int32)
        self._outputs, self._trace = code.size, trace if trace is not None else 10 * (constraint_length - 1)
        self._record = raw.tevsViterbiInitAlloc(code, code.size, constraint_length, self._trace)

    def process(self, soft: ArrayLike) -> Array:
        """The bits that the next soft bits decide."""
        a = np.asarray(soft)
        if a.dtype != np.int8 or a.ndim != 1:
            raise TypeError(f"tevs.ViterbiDecoder.process: soft: needs a vector of int8, not {a.dtype} of shape {a.shape}")
        steps, rest = divmod(a.size, self._outputs)
        if rest:
            raise ValueError(f"tevs.ViterbiDecoder.process: soft: {a.size} soft bits, needs a multiple of {self._outputs}")
        out, count = np.empty(steps + self._trace, np.uint8), np.zeros(1, np.int32)
        if steps:
            call("tevs.ViterbiDecoder.process", raw.tevsViterbi_8s8u, out, a, steps, out, count, self._record)
        return out[:count[0]]

    def flush(self, end_state: int | None = 0) -> Array:
        """The bits that are held, with the stream ending in a state, or in any (None); then a new stream begins there."""
        out, count = np.empty(2 * self._trace, np.uint8), np.zeros(1, np.int32)
        call("tevs.ViterbiDecoder.flush", raw.tevsViterbiFlush_8u, out, out, count, raw.StateAny if end_state is None else end_state, self._record)
        return out[:count[0]]


__all__ = ["convolutional_encode", "ViterbiDecoder"]
