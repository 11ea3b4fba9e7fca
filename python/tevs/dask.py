"""Filters, resampling, spectra and levels of signals that do not fit into a machine: over Dask arrays, and over folders of recordings. Needs Dask (dask.array).

Nothing is computed before it is asked for (`.compute()`, `dask.compute`), and then by whatever scheduler Dask has been given: threads, processes, dask.distributed. A chunk
that is lost with its worker is computed again.

Each operation reads, beside a chunk, the samples in front of it (and behind) that its results hang on. So how an array is cut into chunks decides about time and memory; the
results of fir, resample_poly, stft, spectrogram and levels are the same to the bit however it is cut, and the same as those of one call over the whole signal. Those of sosfilt and
lfilter, whose state goes from chunk to chunk, are the same to the bit as of tevs.IIR fed the same chunks, and differ from one call over the whole signal in rounding.
All this holds among workers with one SIMD level: where machines differ, give all of them the same TEVS_LEVEL.

What works element by element needs nothing of this: x.map_blocks(tevs.alaw_encode, dtype=np.uint8).
"""

from __future__ import annotations

import os
import pathlib
import tempfile
import wave
from collections.abc import Callable, Iterable
from math import gcd
from typing import Any, NamedTuple, NoReturn

import dask
import dask.array as da
import numpy as np
from numpy.typing import ArrayLike

import tevs

from ._core import Array, along, axis_of, back, type_name
from .convolution import _polyphase_taps
from .transforms import _frames, rfftfreq


def _signal(where: str, x: Any, axis: int, floating: bool = True) -> tuple[Any, int]:
    """The Dask array and which of its axes is time."""
    if not isinstance(x, da.Array):
        raise TypeError(f"{where}: x: needs a Dask array, not {type(x).__name__}")
    axis = axis_of(where, x, axis)
    if any(np.isnan(n) for n in x.shape):
        raise ValueError(f"{where}: x: chunks of unknown length; x.compute_chunk_sizes() finds them")
    if not x.shape[axis]:
        raise ValueError(f"{where}: x: the axis is empty")
    if floating and x.dtype.char not in "fdFD":
        raise TypeError(f"{where}: x: {type_name(x.dtype)}, needs float32, float64, complex64 or complex128")
    return x, axis


def _part(x: Any, axis: int, begin: int, end: int) -> Any:
    """The samples begin .. end-1 in one chunk."""
    return x[(slice(None),) * axis + (slice(begin, end),)].rechunk({axis: -1})


def _edges(x: Any, axis: int) -> list[tuple[int, int]]:
    ends = np.cumsum(x.chunks[axis]).tolist()
    return list(zip([0, *ends[:-1]], ends))


def _mapped(parts: Iterable[tuple[Any, int, tuple[Any, ...]]], f: Callable[..., Array], axis: int, dtype: Any, /, **more: Any) -> Any:
    """f of each part, which gives so many elements along the axis, put together."""
    results = [part.map_blocks(f, *arguments, **more, dtype=dtype, meta=np.empty((0,) * part.ndim, dtype), chunks=(*part.chunks[:axis], (count,), *part.chunks[axis + 1:]))
               for part, count, arguments in parts if count]
    return da.concatenate(results, axis)


def _fir(x: Array, lead: int, taps: Array, axis: int, scale: int) -> Array:
    rows = along(x, axis)
    out = np.empty_like(rows)
    with tevs.FIR(taps, x.dtype, method="direct") as filter:
        for row, result in zip(rows, out):
            filter.process(row, result, scale)
            filter.reset()
    return back(np.ascontiguousarray(out[:, lead:]), x.shape, axis)


def fir(taps: ArrayLike, x: Any, axis: int = -1, scale: int = 0) -> Any:
    """x filtered along an axis by taps, sample types and scale as of tevs.FIR: the bits of tevs.FIR(taps, x.dtype, method="direct").

    >>> import dask.array as da
    >>> fir([0.5, 0.5], da.from_array(np.arange(6.0), chunks=2)).compute()
    array([0. , 0.5, 1.5, 2.5, 3.5, 4.5])
    """
    x, axis = _signal("tevs.dask.fir", x, axis, floating=False)
    h = np.asarray(taps)
    with tevs.FIR(h, x.dtype, method="direct") as filter:   # refuses here what it would refuse in a worker
        filter.process(np.empty(0, x.dtype), scale=scale)
    parts = []
    for begin, end in _edges(x, axis):
        start = max(0, begin - (h.size - 1))
        parts.append((_part(x, axis, start, end), end - begin, (begin - start, h)))
    return _mapped(parts, _fir, axis, x.dtype, axis=axis, scale=scale)


def _recursive(x: Any, axis: int, step: Callable[..., tuple[Array, Array]], *arguments: Any) -> Any:
    """The chunks along the axis one after the other, each from the state that the one before it has left; those of other channels side by side."""
    blocks = x.to_delayed()
    results = np.empty(blocks.shape, object)
    states: dict[tuple[int, ...], Any] = {}
    for place in sorted(np.ndindex(blocks.shape), key=lambda p: p[axis]):
        channel = (*place[:axis], *place[axis + 1:])
        y, states[channel] = dask.delayed(step, nout=2, pure=True)(*arguments, blocks[place], axis, states.get(channel))
        results[place] = da.from_delayed(y, [x.chunks[d][k] for d, k in enumerate(place)], x.dtype)
    return da.block(results.tolist())


def _sosfilt(sos: Array, x: Array, axis: int, state: Array | None) -> tuple[Array, Array]:
    if state is None:
        state = np.zeros((len(sos), *x.shape[:axis], 2, *x.shape[axis + 1:]), x.dtype)
    y, final = tevs.sosfilt(sos, x, axis, state)
    return y, final


def sosfilt(sos: ArrayLike, x: Any, axis: int = -1) -> Any:
    """x filtered along an axis by second-order sections, in x's type. One chunk waits for the one before it: channels and recordings run side by side, one channel does not.

    >>> import dask.array as da
    >>> sosfilt([[1, 0, 0, 1, -0.5, 0]], da.from_array(np.array([1.0, 0, 0]), chunks=1)).compute()
    array([1.  , 0.5 , 0.25])
    """
    x, axis = _signal("tevs.dask.sosfilt", x, axis)
    sections = np.asarray(sos).astype(x.dtype, casting="same_kind")
    tevs.sosfilt(sections, np.zeros(1, x.dtype))   # refuses here what it would refuse in a worker
    return _recursive(x, axis, _sosfilt, sections)


def _lfilter(b: Array, a: Array, x: Array, axis: int, state: Array | None) -> tuple[Array, Array]:
    if state is None:
        state = np.zeros((*x.shape[:axis], max(b.size, a.size) - 1, *x.shape[axis + 1:]), x.dtype)
    y, final = tevs.lfilter(b, a, x, axis, state)
    return y, final


def lfilter(b: ArrayLike, a: ArrayLike, x: Any, axis: int = -1) -> Any:
    """x filtered along an axis by numerator b and denominator a, in x's type, one chunk after the other as sosfilt does; fir for filters without a denominator."""
    x, axis = _signal("tevs.dask.lfilter", x, axis)
    numerator, denominator = (np.atleast_1d(v).astype(x.dtype, casting="same_kind") for v in (b, a))
    tevs.lfilter(numerator, denominator, np.zeros(1, x.dtype))
    return _recursive(x, axis, _lfilter, numerator, denominator)


def _resample(x: Array, first: int, count: int, up: int, down: int, axis: int, taps: Array) -> Array:
    return tevs.resample_poly(x, up, down, axis, taps)[(slice(None),) * axis + (slice(first, first + count),)]


def resample_poly(x: Any, up: int, down: int, axis: int = -1, window: Any = ("kaiser", 5.0)) -> Any:
    """x at up / down times its rate, as tevs.resample_poly; along the last axis by default.

    >>> import dask.array as da
    >>> resample_poly(da.ones(100, chunks=30), 2, 1).shape
    (200,)
    """
    where = "tevs.dask.resample_poly"
    x, axis = _signal(where, x, axis)
    if up != int(up) or down != int(down) or up < 1 or down < 1:
        raise ValueError(f"{where}: up, down: {up}, {down}, need integers of at least 1")
    divisor = gcd(int(up), int(down))
    up, down = int(up) // divisor, int(down) // divisor
    if up == down:
        return x
    taps, n = _polyphase_taps(where, window, up, down, x.dtype), x.shape[axis]
    reach = -(-taps.size // up)   # inputs on either side of an output's place that it may hang on
    parts = []
    for begin, end in _edges(x, axis):
        first, last = -(-begin * up // down), -(-end * up // down)
        start = max(0, begin - reach) // down * down   # there an output falls on an input, so the part is filtered in the phases of the whole
        parts.append((_part(x, axis, start, min(n, end + reach + down)), last - first, (first - start // down * up, last - first)))
    return _mapped(parts, _resample, axis, x.dtype, up=up, down=down, axis=axis, taps=taps)


def _stft(x: Array, skip: int, length: int, power: bool, **more: Any) -> Array:
    x = x[..., max(skip, 0):]
    front = max(-skip, 0)
    x = np.pad(x, [(0, 0)] * (x.ndim - 1) + [(front, length - front - x.shape[-1])])
    Z = tevs.stft(x, boundary=None, padded=False, **more)[2]
    return tevs.power(Z) if power else Z


def _spectra(where: str, x: Any, fs: float, window: Any, nperseg: int, noverlap: int | None, nfft: int | None, boundary: str | None, padded: bool, power: bool) -> tuple[Array, Array, Any]:
    x, axis = _signal(where, x, -1)
    if x.dtype.kind == "c":
        raise TypeError(f"{where}: x: needs real samples")
    if boundary not in ("zeros", None):
        raise ValueError(f"{where}: boundary: {boundary!r}, needs 'zeros' or None")
    overlap, points, step, w = _frames(where, nperseg, noverlap, nfft, window)
    n, edge = x.shape[axis], nperseg // 2 if boundary else 0
    total = n + 2 * edge
    if total < nperseg:
        raise ValueError(f"{where}: x: {n} samples, needs {nperseg}")
    if padded:
        total += -(total - nperseg) % step
    count, bins, parts, k = (total - overlap) // step, points // 2 + 1, [], 0
    dtype = (np.result_type(x.dtype) if power else np.result_type(x.dtype, np.complex64))
    for _, end in _edges(x, axis):   # a frame is made where it begins, one that begins beyond the ends in the first or last chunk
        last = count if end == n else min(count, -(-(end + edge) // step))
        if last > k:
            begin, stop = k * step - edge, (last - 1) * step - edge + nperseg
            start = min(max(begin, 0), n - 1)
            part = _part(x, axis, start, min(stop, n))
            parts.append(part.map_blocks(_stft, begin - start, stop - begin, power, window=w, nperseg=nperseg, noverlap=overlap, nfft=points, dtype=dtype,
                                         meta=np.empty((0,) * (x.ndim + 1), dtype), new_axis=[x.ndim], chunks=(*part.chunks[:-1], (bins,), (last - k,))))
            k = last
    times = (np.arange(count) * step + nperseg / 2 - edge) / fs
    return rfftfreq(points, 1 / fs), times, da.concatenate(parts, -1)


def stft(x: Any, fs: float = 1.0, window: Any = "hann", nperseg: int = 256, noverlap: int | None = None, nfft: int | None = None, boundary: str | None = "zeros",
         padded: bool = True) -> tuple[Array, Array, Any]:
    """The short-time Fourier transform along the last axis, as tevs.stft: frequencies, times, and spectra as a Dask array, (.., frequencies, times).

    >>> import dask.array as da
    >>> stft(da.ones(1024, chunks=300), nperseg=256)[2].shape
    (129, 9)
    """
    return _spectra("tevs.dask.stft", x, fs, window, nperseg, noverlap, nfft, boundary, padded, False)


def spectrogram(x: Any, fs: float = 1.0, window: Any = "hann", nperseg: int = 256, noverlap: int | None = None, nfft: int | None = None, boundary: str | None = None,
                padded: bool = False) -> tuple[Array, Array, Any]:
    """The power of the short-time spectra, tevs.power of stft: a sinusoid of amplitude 1 has 1/4 in its bin. By default of frames that lie within the signal."""
    return _spectra("tevs.dask.spectrogram", x, fs, window, nperseg, noverlap, nfft, boundary, padded, True)


def _levels(x: Array, every: int, axis: int) -> Array:
    return np.stack(tevs.levels(x, every, axis))


def levels(x: Any, every: int, axis: int = -1) -> tuple[Any, Any]:
    """Peak and root mean square of each stretch of `every` samples, as tevs.levels: two Dask arrays.

    >>> import dask.array as da
    >>> peak, rms = levels(da.from_array(np.array([3.0, -4, 1, 1]), chunks=3), 2)
    >>> peak.compute()
    array([4., 1.])
    """
    where = "tevs.dask.levels"
    x, axis = _signal(where, x, axis, floating=False)
    n, parts, k = x.shape[axis], [], 0
    sample = tevs.levels(np.zeros(1, x.dtype), every)[1]   # refuses what it would refuse in a worker
    for _, end in _edges(x, axis):   # a stretch belongs to the chunk that it begins in
        last = -(-end // every)
        if last > k:
            part = _part(x, axis, k * every, min(n, last * every))
            chunks = ((2,), *part.chunks[:axis], (last - k,), *part.chunks[axis + 1:])
            parts.append(part.map_blocks(_levels, every, axis, dtype=sample.dtype, meta=np.empty((0,) * (x.ndim + 1), sample.dtype), new_axis=[0], chunks=chunks))
            k = last
    both = da.concatenate(parts, axis + 1)
    return both[0], both[1]


class Recording(NamedTuple):
    """What read finds: samples per second and, as a Dask array of int16, the samples: (n,), or (channels, n) of more than one channel."""

    rate: int
    samples: Any


class _Wav:
    """A 16-bit WAV file as an array that is read by slices, in the process that needs them."""

    def __init__(self, path: str) -> None:
        self.path = path
        try:
            with wave.open(path, "rb") as file:
                width, channels, n, self.rate = file.getsampwidth(), file.getnchannels(), file.getnframes(), file.getframerate()
        except (wave.Error, EOFError) as error:
            self._refuse(f"no WAV file that can be read ({error or 'it ends in its header'})")
        if width != 2:
            self._refuse(f"{8 * width} bits, needs 16")
        if not n:
            self._refuse("no samples")
        self.channels, self.dtype = channels, np.dtype("i2")
        self.shape: tuple[int, ...] = (n,) if channels == 1 else (channels, n)
        self.ndim = len(self.shape)

    def _refuse(self, reason: str) -> NoReturn:
        raise ValueError(f"tevs.dask.read: {self.path}: {reason}")

    def __getitem__(self, key: tuple[slice, ...]) -> Array:
        begin, end, step = key[-1].indices(self.shape[-1])
        with wave.open(self.path, "rb") as file:
            file.setpos(begin)
            data = file.readframes(end - begin)
        if len(data) != 2 * self.channels * (end - begin):
            self._refuse(f"ends before sample {end}")
        samples = np.frombuffer(data, "<i2").astype(np.int16, copy=False)
        return samples[::step] if self.ndim == 1 else np.ascontiguousarray(samples.reshape(-1, self.channels).T[key[0], ::step])


def read(folder: str | os.PathLike[str], chunk: int = 1 << 22, pattern: str = "*.wav") -> dict[str, Recording]:
    """The recordings of a folder by name, 16-bit WAV files, in chunks of so many samples. Only the headers are read here; the workers read the rest, from the same path."""
    paths = sorted(pathlib.Path(folder).resolve(strict=True).glob(pattern))
    if not paths:
        raise ValueError(f"tevs.dask.read: folder: no {pattern} in {folder}")
    if chunk < 1:
        raise ValueError(f"tevs.dask.read: chunk: {chunk}, needs at least 1")
    recordings = {}
    for path in paths:
        file, about = _Wav(str(path)), path.stat()
        # The name holds what tells one state of the file from another: results are found again by it, not those of a file that has changed.
        name = "wav-" + dask.base.tokenize(str(path), about.st_mtime_ns, about.st_size, chunk)
        # Inline: each chunk's task holds the path. As a task of its own it would be lost with its worker, and dask.distributed 2022.12 then waits for it for ever.
        samples = da.from_array(file, (chunk,) if file.ndim == 1 else (file.channels, chunk), name, asarray=False, inline_array=True, meta=np.empty((0,) * file.ndim, "i2"))
        recordings[path.name] = Recording(file.rate, samples)
    return recordings


def _write(samples: Array, path: str, rate: int) -> str:
    descriptor, part = tempfile.mkstemp(".part", os.path.basename(path) + ".", os.path.dirname(path))
    try:
        with os.fdopen(descriptor, "wb") as stream:
            with wave.open(stream, "wb") as file:
                file.setparams((1 if samples.ndim == 1 else len(samples), 2, rate, samples.shape[-1], "NONE", ""))
                file.writeframes(np.ascontiguousarray(samples.T, "<i2").tobytes())
            stream.flush()
            os.fchmod(stream.fileno(), 0o644)
        os.replace(part, path)
    except BaseException:
        os.unlink(part)
        raise
    return path


def write(path: str | os.PathLike[str], x: Any, rate: int) -> Any:
    """What writes int16 samples, (n,) or (channels, n), into a 16-bit WAV file when it is computed: a delayed path.

    One worker gathers the recording. The file appears whole under its name or not at all, and once more, the same, if the worker is lost right after that.
    """
    where = "tevs.dask.write"
    if not isinstance(x, da.Array) or x.ndim not in (1, 2):
        raise TypeError(f"{where}: x: needs a Dask array of one or two dimensions")
    if x.dtype != np.int16:
        raise TypeError(f"{where}: x: {type_name(x.dtype)}, needs int16; x.map_blocks(tevs.convert, np.int16, dtype=np.int16) makes it")
    target = pathlib.Path(path).absolute()
    if not target.parent.is_dir():
        raise ValueError(f"{where}: path: there is no folder {target.parent}")
    return dask.delayed(_write)(x, str(target), rate)


__all__ = ["fir", "sosfilt", "lfilter", "resample_poly", "stft", "spectrogram", "levels", "Recording", "read", "write"]
