"""Order and search: sorted copies, the places that sort, the nearest entries of tables and codebooks."""

from __future__ import annotations

import numpy as np
from numpy.typing import ArrayLike

from . import raw
from ._core import Array, along, array, axis_of, back, call, code, named


def sort(x: ArrayLike, axis: int = -1, descending: bool = False) -> Array:
    """A sorted copy along an axis; int16, int32, float32 or float64. -0 is below +0, and NaNs come last in both directions.

    >>> sort(np.array([2, 3, 1], np.int16), descending=True)
    array([3, 2, 1], dtype=int16)
    """
    where, a = "tevs.sort", array(x)
    f = named(f"tevsSort{'Down' if descending else ''}_{code(a.dtype, where)}_I", where)
    axis = axis_of(where, a, axis)
    rows = along(a, axis).copy()
    if rows.shape[1]:
        for row in rows:
            call(where, f, row, row, row.size)
    return back(rows, a.shape, axis)


def argsort(x: ArrayLike, axis: int = -1, descending: bool = False) -> Array:
    """The places, as int32, of the elements in order along an axis; equal ones stay in theirs.

    >>> argsort(np.array([2.0, 1, 2, 1]))
    array([1, 3, 0, 2], dtype=int32)
    """
    where, a = "tevs.argsort", array(x)
    f = named(f"tevsSortIndx{'Down' if descending else ''}_{code(a.dtype, where)}", where)
    axis = axis_of(where, a, axis)
    rows = along(a, axis)
    places = np.empty(rows.shape, np.int32)
    if rows.shape[1]:
        for row, place in zip(rows, places):
            call(where, f, place, row, place, row.size)
    return back(places, a.shape, axis)


def nearest(x: ArrayLike, table: ArrayLike) -> Array:
    """The places, as int32, of the nearest entries of an ascending table; of two equally near ones the lower. Table and samples have one type.

    >>> nearest(np.array([0.1, 0.9, 7]), np.array([0.0, 1, 2]))
    array([0, 1, 2], dtype=int32)
    """
    where, a, entries = "tevs.nearest", array(x), array(table)
    f = named(f"tevsNearest_{code(a.dtype, where)}", where)
    if entries.dtype != a.dtype:
        raise TypeError(f"{where}: table: {entries.dtype}, needs {a.dtype}")
    if entries.ndim != 1 or not entries.size:
        raise ValueError(f"{where}: table: shape {entries.shape}, needs a vector of at least one entry")
    places = np.empty(a.shape, np.int32)
    if a.size:
        call(where, f, places, a, places, a.size, entries, entries.size)
    return places


def vq(obs: ArrayLike, code_book: ArrayLike) -> tuple[Array, Array]:
    """For each row of obs the place of the nearest row of the codebook, and the distance, as scipy.cluster.vq.vq; in single precision.

    >>> vq(np.array([[1, 1], [4, 5]], np.float32), np.array([[0, 0], [4, 4]], np.float32))
    (array([0, 1], dtype=int32), array([1.4142135, 1.       ], dtype=float32))
    """
    where = "tevs.vq"
    vectors, book = np.ascontiguousarray(obs, np.float32), np.ascontiguousarray(code_book, np.float32)
    if vectors.ndim != 2 or book.ndim != 2 or vectors.shape[1] != book.shape[1] or not book.size:
        raise ValueError(f"{where}: obs, code_book: shapes {vectors.shape} and {book.shape}, need rows of one length of at least 1, and one in the codebook")
    places, squares = np.empty(len(vectors), np.int32), np.empty(len(vectors), np.float32)
    if len(vectors):
        call(where, raw.tevsNearestVec_32f, places, vectors.reshape(-1), places, squares, len(vectors), book.reshape(-1), len(book), book.shape[1])
    return places, np.sqrt(squares)


__all__ = ["sort", "argsort", "nearest", "vq"]
