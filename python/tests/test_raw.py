"""tevs.raw: every function is there, no wrong array reaches one, records and memory end once."""
import os
import pathlib
import re
import subprocess
import sys
import threading

import numpy as np
import pytest

import tevs
from tevs import raw

LIBRARIES = list((pathlib.Path(tevs.__file__).parent / "_lib").glob("*.so*"))


def test_every_exported_function_is_there():
    names = set()
    for library in LIBRARIES:
        lines = subprocess.run(["nm", "-D", "--defined-only", library], capture_output=True, text=True, check=True).stdout.splitlines()
        names |= {line.split()[2].split("@")[0] for line in lines if " T " in line}
    names = {n for n in names if n.startswith("tev")}
    assert len(names) > 1500
    assert names - set(dir(raw)) == set()


def test_every_function_stays_within_vectors_of_the_demanded_length():
    run = subprocess.run([sys.executable, pathlib.Path(__file__).parent / "every_function.py"], capture_output=True, text=True)
    assert run.returncode == 0, f"died in {run.stdout.splitlines()[-1:]} {run.stderr[-500:]}"
    assert run.stdout.splitlines()[-1].startswith("0 unproven"), run.stdout[-2000:]


F4 = np.ones(8, np.float32)


def readonly(a):
    b = a.copy()
    b.flags.writeable = False
    return b


BAD = [   # arguments of tevsAdd_32f: exception, what it says
    ((F4, F4, np.empty(7, "f4"), 8), ValueError, "tevsAdd_32f: pDst: the array has 7 elements, needs 8"),
    ((F4.astype("f8"), F4, np.empty(8, "f4"), 8), TypeError, "tevsAdd_32f: pSrc1: needs an array of float32, not of float64"),
    ((F4, F4.astype(">f4"), np.empty(8, "f4"), 8), TypeError, "tevsAdd_32f: pSrc2: needs an array of float32"),
    ((F4, np.ones(8, "i4"), np.empty(8, "f4"), 8), TypeError, "not of int32"),
    ((F4, [1.0] * 8, np.empty(8, "f4"), 8), TypeError, "tevsAdd_32f: pSrc2: needs an array of float32, not"),
    ((F4, F4, np.empty(16, "f4")[::2], 8), ValueError, "tevsAdd_32f: pDst: the array is not contiguous"),
    ((F4, F4, readonly(F4), 8), ValueError, "tevsAdd_32f: pDst: the array is read-only"),
    ((F4, F4, F4[1:], 7), ValueError, "tevsAdd_32f: pDst: the array overlaps pSrc1"),
    ((F4, F4, None, 8), raw.Error, "tevsAdd_32f: a required pointer is null"),
    ((F4, F4, np.empty(8, "f4"), 0), raw.Error, "tevsAdd_32f: a length"),
    ((F4, F4, np.empty(8, "f4"), 2**31), ValueError, "tevsAdd_32f: len: 2147483648 does not fit in int32"),
    ((F4, F4, np.empty(8, "f4"), 8.0), TypeError, "tevsAdd_32f: len: needs an integer"),
    ((F4, F4, np.empty(8, "f4")), TypeError, "tevsAdd_32f: takes 4 arguments, not 3"),
]


@pytest.mark.parametrize("arguments, kind, text", BAD)
def test_bad_arrays(arguments, kind, text):
    out = arguments[2] if len(arguments) > 2 else None
    before = None if out is None else out.copy()
    with pytest.raises(kind, match=re.escape(text)):
        raw.tevsAdd_32f(*arguments)
    if before is not None:
        assert before.tobytes() == out.tobytes()


def test_in_place_is_no_overlap():
    x = np.arange(4, dtype=np.float32)
    assert raw.tevsAdd_32f(x, x, x, 4) == 0
    assert x.tolist() == [0, 2, 4, 6]
    assert raw.tevsMove_32f(x, x[1:], 3) == 0   # the one operation whose vectors may overlap
    assert x.tolist() == [0, 0, 2, 4]


def test_other_overlaps():
    x, taps = np.ones(16, np.float32), np.ones(4, np.float32)
    with pytest.raises(ValueError, match="pDst: the array overlaps pSrc1"):
        raw.tevsConv_32f(x[:4], 4, taps, 4, x[:7])
    with pytest.raises(ValueError, match="pDstRe: the array overlaps pDstIm"):
        raw.tevsCplxToReal_32fc(np.ones(4, "c8"), x, x, 4)
    with pytest.raises(ValueError, match="pDst: the array overlaps pSrc"):   # a wider destination over its source
        raw.tevsConvert_16s32f(x.view(np.int16), x, 4)


def test_complex_integers_and_constants():
    z = np.zeros(2, tevs.complex_int16)
    raw.tevsSet_16sc((3, -4), z, 2)
    assert z.tolist() == [(3, -4), (3, -4)]
    with pytest.raises(ValueError, match="val: 40000 does not fit in int16"):
        raw.tevsSet_16sc((40000, 0), z, 2)
    with pytest.raises(TypeError, match="val: needs two integers"):
        raw.tevsSet_16sc(3 + 2j, z, 2)
    with pytest.raises(TypeError, match="val: needs a number"):
        raw.tevsMulC_32f_I("a", np.ones(2, "f4"), 2)


def test_records():
    taps = np.array([1, 2], np.float32)
    record = raw.tevsFIRInitAlloc_32f(taps, 2, None)
    assert record.kind == "FIRState_32f" and record.parameters == {"tapsLen": 2} and not record.closed
    x, y = np.ones(3, "f4"), np.empty(3, "f4")
    with pytest.raises(TypeError, match="tevsFIR_64f: pState: needs a FIRState_64f, not a FIRState_32f"):
        raw.tevsFIR_64f(np.ones(3), np.ones(3), 3, record)
    with pytest.raises(ValueError, match="tevsFIRGetTaps_32f: pTaps: the array has 1 elements, needs 2"):
        raw.tevsFIRGetTaps_32f(record, np.empty(1, "f4"))
    assert raw.tevsFIR_32f(x, y, 3, record) == 0 and y.tolist() == [1, 3, 3]
    raw.tevsFIRFree_32f(record)
    assert record.closed
    for _ in range(2):
        with pytest.raises(ValueError, match="pState: the record is closed"):
            raw.tevsFIR_32f(x, y, 3, record)
        record.close()


def test_record_in_memory_of_the_caller():
    size = np.empty(1, "i4")
    raw.tevsFIRGetStateSize_32f(2, size)
    memory = bytearray(int(size[0]) + 1)
    with pytest.raises(ValueError, match="pBuffer: the array has"):
        raw.tevsFIRInit_32f(np.ones(2, "f4"), 2, None, memoryview(memory)[2:])
    record = raw.tevsFIRInit_32f(np.ones(2, "f4"), 2, None, memoryview(memory)[1:])
    with pytest.raises(BufferError):
        memory.extend(b"x")   # would move the record
    y = np.empty(2, "f4")
    raw.tevsFIR_32f(np.ones(2, "f4"), y, 2, record)
    assert y.tolist() == [1, 2]
    record.close()
    memory.extend(b"x")


def test_memory():
    memory = raw.tevsMalloc_16s(5)
    a = np.asarray(memory)
    assert a.dtype == np.int16 and a.size == 5 and a.ctypes.data % 32 == 0
    with pytest.raises(ValueError, match="tevsFree: ptr: an array still uses the memory"):
        raw.tevsFree(memory)
    del a
    raw.tevsFree(memory)
    with pytest.raises(ValueError, match="freed"):
        memoryview(memory)
    with pytest.raises(raw.Error):
        raw.tevsMalloc_16s(0)


def test_status():
    with pytest.raises(raw.Error) as caught:
        raw.tevsFFTInitAlloc_C_32fc(3, 77, 0)
    assert caught.value.status == raw.StatusFftFlag and caught.value.function == "tevsFFTInitAlloc_C_32fc"
    y = np.empty(1, "f4")
    assert raw.tevsDiv_32f(np.zeros(1, "f4"), np.ones(1, "f4"), y, 1) == raw.WarnDivByZero
    with pytest.raises(MemoryError):
        raw.tevsFIRMRInitAlloc_64fc(np.ones(2**16, "c16"), 2**16, 1, 0, 2**31 - 1, 0, None)


def test_channels():
    left, right, both = np.ones(2, "f4"), np.full(2, 2, "f4"), np.empty(4, "i2")
    raw.tevsJoin_32f16s_D2L([left, right], 2, 2, both)
    assert both.tolist() == [1, 2, 1, 2]
    with pytest.raises(ValueError, match="pSrc: 1 arrays, needs 2"):
        raw.tevsJoin_32f16s_D2L([left], 2, 2, both)
    with pytest.raises(ValueError, match="pSrc: array 1 has 1 elements, needs 2"):
        raw.tevsJoin_32f16s_D2L([left, right[1:]], 2, 2, both)
    with pytest.raises(TypeError, match="pSrc: needs an array of float32"):
        raw.tevsJoin_32f16s_D2L([left, right.astype("f8")], 2, 2, both)


def test_lock_is_released():
    n = 1 << 20
    x, y, spec = np.ones(n, "c8"), np.empty(n, "c8"), raw.tevsFFTInitAlloc_C_32fc(20, raw.NoScale, 0)
    turns, seen, stop = [0], [], threading.Event()

    def work():
        while not stop.is_set():
            before = turns[0]
            raw.tevsFFTFwd_CToC_32fc(x, y, spec, None)
            seen.append(turns[0] - before)

    thread = threading.Thread(target=work)
    thread.start()
    while not any(s > 100 for s in seen):   # with the lock held, no turn could pass within a call
        turns[0] += 1
    stop.set()
    thread.join()


def test_threads_take_turns_at_a_filter():
    h = np.ones(3, np.float32)
    x = np.ones(1000, np.float32)
    record = raw.tevsFIRInitAlloc_32f(h, 3, None)
    raw.tevsFIR_32f(x, np.empty_like(x), 1000, record)
    wrong = []

    def work():
        y = np.empty_like(x)
        for _ in range(300):
            raw.tevsFIR_32f(x, y, 1000, record)
            if not (y == 3).all():
                wrong.append(y)

    threads = [threading.Thread(target=work) for _ in range(4)]
    for t in threads:
        t.start()
    for t in threads:
        t.join()
    assert not wrong


FREED_BESIDE_A_READER = """
import threading
from tevs import raw

for _ in range(20):
    memory = raw.tevsMalloc_8u(1 << 27)
    raw.tevsSet_8u(1, memory, 1 << 27)   # pages whose end takes a while

    def read():
        while True:
            try:
                with memoryview(memory) as view:
                    view[5 << 24]
            except ValueError:   # it is freed
                return

    reader = threading.Thread(target=read)
    reader.start()
    while True:
        try:
            raw.tevsFree(memory)
            break
        except ValueError:   # a view is there
            pass
    reader.join()
"""


def test_nobody_gets_what_is_being_freed():
    assert subprocess.run([sys.executable, "-c", FREED_BESIDE_A_READER]).returncode == 0


def test_fork():
    fir = tevs.FIR([0.5, 0.5], np.float32)
    fir.process(np.array([2], "f4"))
    child = os.fork()
    if not child:
        good = fir.process(np.array([4], "f4")).tolist() == [3] and tevs.fft(np.ones(1 << 10)).size == 1 << 10
        os._exit(0 if good else 1)
    assert os.waitstatus_to_exitcode(os.waitpid(child, 0)[1]) == 0
    assert fir.process(np.array([6], "f4")).tolist() == [4]
