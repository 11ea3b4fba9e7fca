#!/usr/bin/env python3
"""scripts/wavelet_taps.py > src/transform/wavelet_taps.h

The taps of the named wavelets in 60 digits, rounded once (Debian's python3-mpmath). Orthogonal filters come from the spectral factorisation of Daubechies' product
(Ten Lectures on Wavelets, 1992, chapter 6), the 9/7 pair from that of the product of order 4 between two symmetric filters (Cohen, Daubechies, Feauveau, 1992).
Every filter is checked before it is written: orthonormal, or biorthogonal, and with its vanishing moments, to 45 digits.
"""
import struct
import sys
from math import comb

from mpmath import mp, mpc, mpf, polyroots, sqrt

mp.dps = 140   # roots of degree 19 and products of 40 factors lose digits on the way to 60
kChecked = mpf(10) ** -45
# The zeros of which roots lie outside the circle, for 2 .. 20 moments: the least asymmetric filter of each length.
kSymletMasks = [0, 0, 2, 1, 5, 1, 10, 6, 21, 6, 21, 28, 44, 28, 89, 142, 333, 116, 357]


def product(a, b):
    r = [mpc(0)] * (len(a) + len(b) - 1)
    for i, x in enumerate(a):
        for j, y in enumerate(b):
            r[i + j] += x * y
    return r


def moment_roots(p):
    """The roots of sum C(p-1+k, k) y^k with an imaginary part >= 0, in rising real part."""
    roots = polyroots([comb(p - 1 + k, k) for k in reversed(range(p))], maxsteps=500, extraprec=800) if p > 1 else []
    roots = [mpc(r.real, 0) if abs(r.imag) < mpf(10) ** -60 else mpc(r) for r in roots]
    return sorted((r for r in roots if r.imag >= 0), key=lambda r: r.real)


def orthogonal(p, mask):
    """(1 + z^-1)^p times a factor for one zero of each pair z, 1/z with y = (2 - z - 1/z) / 4; the sum is sqrt 2."""
    h = [mpc(1)]
    for _ in range(p):
        h = product(h, [mpc(1), mpc(1)])
    for i, y in enumerate(moment_roots(p)):
        half = 1 - 2 * y
        z = half + sqrt(half * half - 1)
        if (abs(z) > 1) != bool(mask >> i & 1):
            z = 1 / z
        h = product(h, [mpc(1), -z])
        if y.imag != 0:
            h = product(h, [mpc(1), -z.conjugate()])
    total = sum(h)
    h = [(x / total * sqrt(mpf(2))).real for x in h]
    for shift in range(0, 2 * p, 2):
        dot = sum(h[k] * h[k + shift] for k in range(2 * p - shift))
        assert abs(dot - (shift == 0)) < kChecked, (p, shift)
    for m in range(p):
        assert abs(sum((-1) ** k * h[k] * mpf(k) ** m for k in range(2 * p))) < kChecked * mpf(2 * p) ** m, (p, m)
    return h


def symmetric(roots, zeros):
    h = [mpc(1)]
    for _ in range(zeros):
        h = product(h, [mpc(1), mpc(1)])
    for y in roots:
        h = product(h, [mpc(1), 4 * y - 2, mpc(1)])   # y = (2 - z - 1/z) / 4
    total = sum(h)
    return [(x / total * sqrt(mpf(2))).real for x in h]


def cdf97():
    roots = [mpc(r) for r in polyroots([comb(3 + k, k) for k in reversed(range(4))], maxsteps=500, extraprec=800)]
    real = [r for r in roots if abs(r.imag) < mpf(10) ** -60]
    pair = [r for r in roots if abs(r.imag) >= mpf(10) ** -60]
    nine, seven = symmetric(pair, 4), symmetric(real, 4)
    for shift in range(-4, 5):
        dot = sum(nine[k] * seven[k - 1 + 2 * shift] for k in range(9) if 0 <= k - 1 + 2 * shift < 7)
        assert abs(dot - (shift == 0)) < kChecked, shift
    return nine, seven


def rounded(x):
    """The nearest double, and proof that rounding it once more gives the nearest float."""
    d = float(mp.nstr(x, 60))
    single = struct.unpack("f", struct.pack("f", d))[0]
    ulp = mpf(2) ** (mp.floor(mp.log(abs(x), 2)) - 23)
    assert abs(mpf(single) - x) <= ulp / 2, x
    return d.hex()


def array(name, comment, rows):
    print(f"// {comment}")
    print(f"inline constexpr double {name}[] = {{")
    for row in rows:
        line = "   "
        for x in row:
            item = f" {rounded(x)},"
            if len(line) + len(item) > 160:
                print(line)
                line = "   "
            line += item
        print(line)
    print("};\n")


def main():
    print("// Made by scripts/wavelet_taps.py: taps of the named wavelets, each the exact value correctly rounded (and so once more to single precision).")
    print("#pragma once\n\n// clang-format off\nnamespace tevs {\n")
    array("kDaubechiesTaps", "The synthesis low-pass filters of 2, 4 .. 40 taps, one after the other.", [orthogonal(p, 0) for p in range(1, 21)])
    array("kSymletTaps", "The same of 4, 6 .. 40 taps.", [orthogonal(p, kSymletMasks[p - 2]) for p in range(2, 21)])
    nine, seven = cdf97()
    array("kCdf97Low", "The 9/7 pair: the analysis, then the synthesis low-pass filter.", [nine, seven])
    r = sqrt(mpf(2))
    array("kCdf53Low", "The 5/3 pair likewise.", [[x * r / 8 for x in (-1, 2, 6, 2, -1)], [x * r / 4 for x in (1, 2, 1)]])
    print("}   // namespace tevs\n// clang-format on")


sys.exit(main())
