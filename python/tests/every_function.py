"""every_function.py: calls every function of tevs.raw with vectors that end where memory does, each exactly as long as tevs.raw demands. A rule that demands too little is a
crash, in the function whose name came last; one that demands what no vector has, or arguments that no call accepts, are named at the end."""
import ctypes
import mmap
import re
import sys

import numpy as np

import tevs
from tevs import _index, raw

PAGE = mmap.PAGESIZE
ROOM = 64 * PAGE
libc = ctypes.CDLL(None, use_errno=True)


class Guarded:
    """Room for one vector in front of a page that nobody may touch."""

    def __init__(self):
        self.map = mmap.mmap(-1, ROOM + PAGE)
        self.bytes = np.frombuffer(self.map, np.uint8)
        if libc.mprotect(ctypes.c_void_p(self.bytes.ctypes.data + ROOM), PAGE, 0) != 0:
            sys.exit("mprotect failed")

    def vector(self, name, dtype, count):
        v = self.bytes[ROOM - count * dtype.itemsize:ROOM].view(dtype)
        v[...] = np.ones(count, np.int32).astype(dtype) if dtype.kind != "V" else np.array((1, 1), dtype)
        if name == "pNZTapPos":
            v[...] = np.arange(1, count + 1)
        if name == "pRFreq":
            v[...] = 0
        if name in ("pPhase", "pShift", "pNext", "pSymbol") and dtype.kind in "iu":
            v[...] = 0
        return v


POOL = [Guarded() for _ in range(24)]
SPECIAL = {"complex_int8": tevs.complex_int8, "complex_int16": tevs.complex_int16, "complex_int32": tevs.complex_int32, "complex_int64": tevs.complex_int64}
NUMBERS = [
    dict(len=7, len1=5, len2=3, srcLen=6, dstLen=9, numIters=4, tapsLen=6, order=4, numBq=3, length=9, upFactor=3, downFactor=2, nChannels=3, chanLen=5, maskSize=3),
    dict(len=64, len1=1, len2=9, srcLen=33, dstLen=4, numIters=33, tapsLen=10, order=5, numBq=1, length=32, upFactor=2, downFactor=5, nChannels=1, chanLen=33, maskSize=9),
    dict(len=600, len1=700, len2=80, srcLen=600, dstLen=601, numIters=520, tapsLen=10, order=9, numBq=2, length=315, upFactor=1, downFactor=1, nChannels=2, chanLen=100, maskSize=64),
]
COMMON = dict(flag=8, hint=0, upPhase=0, downPhase=0, tapsFactor=0, scaleFactor=0, seed=1, low=0, high=9, mean=5, stdDev=2, srcBitOffset=3, dstBitOffset=5, factor=2, lowLag=-2,
              bias=1, dlyLineIndex=1, dlyIndex=1, rFreq=0.125, rFreq1=0.1, rFreq2=0.2, rFreqPass=0.1, rFreqStop=0.2, ripple=1, decibels=40, rolloff=0.5, rWidth=0.1, alpha=0.01, alphaQ15=100,
              magn=5, asym=0, phase=0, rFreqQ15=4096, asymQ15=0, phaseQ15=0, vDiv=2, nzTapsLen=4, nzTapsLen1=3, nzTapsLen2=2, order1=3, order2=2, constraintLen=4, numPoly=2,
              traceLen=9, numStates=4, numInputs=2, numSymbols=4, numPoints=8, patternLen=3, startState=0, endState=0, bookLen=5, dim=3, tableLen=5, levels=2, ext=0, family=0,
              lift=1, level=1, tapsLenLow=5, offsLow=2, tapsLenHigh=3, offsHigh=-1, taper=3, scale=1.0, glideLen=0, relOp=0, rndMode=1)
FORMS = {name: (types.split(), names.split()) for forms in _index.FUNCTIONS.values() for name, types, names in forms}


RECORD = re.compile(r"(\w+(?:State|Spec)\w*)\*+ ?pp?(?:State|Spec)")
MAKERS = {}
for _name in FORMS:
    if "Init" in _name and RECORD.search(getattr(raw, _name).__doc__):
        MAKERS.setdefault(RECORD.search(getattr(raw, _name).__doc__)[1], []).append(_name)


def makers(name):
    """The functions that make the record which this one takes; [None] where it takes none."""
    types, names = FORMS[name]
    if "record" not in types or "Init" in name:
        return [None]
    kind = RECORD.search(getattr(raw, name).__doc__)[1]
    found = MAKERS[kind] + MAKERS.get(kind.replace("FIRState", "FIRMRState"), []) * ("FIRMR" not in kind)
    for mark, other in (("Analysis", "Synthesis"), ("Synthesis", "Analysis"), ("8s8u", "_Table")):   # one type, but not for both
        if mark in name:
            found = [m for m in found if other not in m]
    return [m for m in found if not ("FIROne" in name and "MR" in m)]


def call(name, numbers, pool, maker):
    """The function's result, with vectors grown to what it demands."""
    types, names = FORMS[name]
    doc = getattr(raw, name).__doc__
    counts = {n: 0 for n in names}
    record = call(maker, numbers, pool[12:], None) if maker else None
    for _ in range(60):
        arguments, last = [], -1
        for k, (t, n) in enumerate(zip(types, names)):
            if t == "record":
                if record is not None:
                    arguments.append(record)
                else:
                    arguments.append(pool[k].vector(n, np.dtype("u1"), counts[n]))
            elif re.search(rf"\* ?const ?\* {n}\b|\*\* {n}\b|\*const\* {n}\b", doc):
                dtype = SPECIAL.get(t) or np.dtype(t)
                arguments.append([POOL[14 + c].vector(n, dtype, counts[n]) for c in range(numbers["nChannels"])])
            elif n.startswith("p") and n[1:2].isupper():
                arguments.append(pool[k].vector(n, SPECIAL.get(t) or np.dtype(t), counts[n]))
            elif t == "complex":
                arguments.append((1, 1) if re.search(rf"Complex\d+s {n}\b", doc) else 1 + 1j)
            elif t == "float":
                arguments.append(float(numbers.get(n, 1)))
            else:
                arguments.append(int(numbers.get(n, 1)))
        try:
            return getattr(raw, name)(*arguments)
        except raw.Error as error:
            return error.status
        except ValueError as error:
            grown = re.search(r": (\w+): (?:the array|array \d+) has (\d+) elements, needs (\d+)", str(error))
            if not grown:
                return f"{error}"
            counts[grown[1]] = int(grown[3])
    return "does not end"


def main():
    unproven = []
    for name in sorted(FORMS):
        print(name, flush=True)
        for maker in makers(name):
            results = []
            for numbers in NUMBERS:
                numbers = {**COMMON, **numbers}
                if re.match(r"tevs(DWT|WtGen)", name):
                    numbers["length"], numbers["tapsLen"] = 64, 6
                if re.match(r"tevsFIRLMSMRGetDlyLine", name):
                    numbers["len"] = 3
                if re.match(r"tevsFIRGen(High|Bandstop)", name):
                    numbers["tapsLen"] = 9
                results.append(call(name, numbers, POOL, maker))
            if not any(isinstance(r, raw.Record) or isinstance(r, int) and r >= 0 for r in results):
                unproven.append(f"{name} {maker or ''}: {results}")
    print(f"{len(unproven)} unproven", *unproven, sep="\n")


main()
