#include "telephony/goertzel.table.h"

#include "core/complex.h"
#include "core/simd/angle.h"
#include "core/simd/lanes.h"
#include "core/simd/map.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// The recurrence s(n) = x(n) + 2 cos(omega) s(n-1) - s(n-2) waits for itself twice a sample, and its rounding errors grow with 1 / sin(omega). The value that
// it ends in, sum of x(n) z^(len-n) with z = e^(j omega), is formed from groups of E elements instead, the lanes of 32 bytes. Of two groups as far from the middle
// of a block the factors are conjugates of each other, so that one product serves both of them:
//
//     a z^d + b z^-d = (a + b) Re z^d + j (a - b) Im z^d,    d = E/2, 3E/2, 5E/2, ...
//
// and only the sums of a block's pairs, lane by lane, are turned by the places of the lanes. Complex elements go as pairs of real ones that share a factor. All is
// added up in one order, and nothing is fused: results are the same at every level. Blocks are put together in double precision, two by two: a power of z,
// rounded, would come into the first of them as often as there are others, each time with the same error, and so each meets one power for every doubling of the length.
constexpr int kBytes = 32, kMostPairs = 64, kRegisters = kBytes / kRegisterBytes;
template <class T> constexpr int kTogether = kBytes / int(sizeof(T));

struct Value {
    double re, im;
};
TEVS_INLINE Value operator+(Value a, Value b) { return {a.re + b.re, a.im + b.im}; }
TEVS_INLINE Value operator*(Value a, Value b) { return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re}; }

struct Four {
    alignas(kBytes) double re[4], im[4];
    TEVS_INLINE Value operator[](int i) const { return {re[i], im[i]}; }
};

// Four exponents first + i * step, i = 0 .. 3, or each of them for two lanes.
struct Exponents {
    double first, step;
    bool twice = false;
    template <int N> TEVS_INLINE Vec<double, N> lanes(int i) const {
        using V = Vec<double, N>;
        V count;
        for (int l = 0; l < N; ++l) count[l] = twice ? (i + l) / 2 : i + l;
        return constant<V>(first) + constant<V>(step) * count;
    }
};

// cos and sin of so many turns, within 2^-33: a rest of at most an eighth of a turn beside the nearest quarter.
template <class V> TEVS_INLINE Two<V> phasor(V turns) {
    const V quarters = turns * constant<V>(4), shifter = constant<V>(0x1.8p52), shifted = quarters + shifter;
    const V r = (quarters - (shifted - shifter)) * constant<V>(kPi / 2), z = r * r, w = z * z;
    const V sine =
        r + r * (z * byPairs(z, w, -0x1.5555555555555p-3, 0x1.111111111110bp-7, -0x1.a01a01a018ae6p-13, 0x1.71de3a5339acfp-19, -0x1.ae64529894892p-26));
    const V cosine = (constant<V>(1) - constant<V>(0.5) * z) +
                     w * byPairs(z, w, 0x1.555555555554cp-5, -0x1.6c16c16c15181p-10, 0x1.a01a019cb219ap-16, -0x1.27e4f80a35a8cp-22, 0x1.1ee9ec19d5103p-29);
    const auto quadrant = quadrantOf((Bits<V>)shifted, V{});
    return {flip(bySign(quadrant.odd, sine, cosine), quadrant.cosine), flip(bySign(quadrant.odd, cosine, sine), quadrant.sine)};
}

// Powers of z. Multiples of a frequency in single precision are exact.
TEVS_INLINE Four powers(const double& frequency, const Exponents& n) {
    constexpr int kStep = kLanes<double>;
    Four z;
    for (int i = 0; i < 4; i += kStep) {
        const auto p = phasor(n.lanes<kStep>(i) * frequency);
        store(z.re + i, p.a);
        store(z.im + i, p.b);
    }
    return z;
}
// In double precision from the powers whose exponents are powers of two; so are the steps, or -1.
TEVS_INLINE Four powers(const PhasePowers& z, const Exponents& n) {
    const auto power = [&](int k) { return Value{z.re[k], z.im[k]}; };
    const int first = int(n.first), step = int(n.step);
    Value v = {1, 0};
    for (unsigned bits = unsigned(first < 0 ? -first : first); bits; bits &= bits - 1) v = v * power(__builtin_ctz(bits));
    if (first < 0) v.im = -v.im;
    Value next = v, far = v, last = v;
    if (step < 0) {
        last = far = v * Value{z.re[0], -z.im[0]};
    } else if (step > 0) {
        const int k = __builtin_ctz(unsigned(step));
        next = v * power(k);
        far = v * power(k + 1);
        last = next * power(k + 1);
    }
    // As vectors, which is how they are read: those wait long for what was stored number by number.
    const auto put = [](double* dst, double a, double b, double c, double d) {
        if constexpr (kRegisters == 1)
            store(dst, Vec<double, 4>{a, b, c, d});
        else
            store(dst, Two{Vec<double, 2>{a, b}, Vec<double, 2>{c, d}});
    };
    Four p;
    put(p.re, v.re, next.re, far.re, last.re);
    put(p.im, v.im, next.im, far.im, last.im);
    return p;
}

// The four numbers at p as T.
template <class T> TEVS_INLINE auto fourAs(const double* p) {
    if constexpr (sizeof(T) == 8)
        return loadLanes<double, kRegisterBytes, kRegisters>(p);
    else if constexpr (kRegisters == 1)
        return Some<Vec<float, 4>, 1>{{__builtin_convertvector((load<double, 4>(p)), Vec<float, 4>)}};
    else
        return Some<Vec<float, 4>, 1>{{narrow(loadTwo<double, 2>(p))}};
}

// The factors of pairs, from the middle outwards.
template <class T> struct Factors {
    alignas(kBytes) T re[kMostPairs], im[kMostPairs];

    // Of pairs, up to four more. That of pair k is that of k - 2^i times z^(E 2^i), with the highest power of two in k.
    template <int E, class Frequency> TEVS_INLINE void prepare(const Frequency& frequency, int pairs) {
        alignas(kBytes) double exactRe[kMostPairs], exactIm[kMostPairs];
        const auto put = [&](int k, auto re, auto im) {
            for (size_t r = 0; r < sizeof re.v / sizeof re.v[0]; ++r) {
                store(exactRe + k + int(r) * kLanes<double>, re.v[r]);
                store(exactIm + k + int(r) * kLanes<double>, im.v[r]);
            }
            store(this->re + k, fourAs<T>(exactRe + k));
            store(this->im + k, fourAs<T>(exactIm + k));
        };
        const auto at = [](const double* p) { return loadLanes<double, kRegisterBytes, kRegisters>(p); };
        const Four z = powers(frequency, {0.5 * E, 1.0 * E});
        put(0, at(z.re), at(z.im));
        if (pairs <= 4) return;
        double c = 0, s = 0;
        for (int k = 4, from = 0; k < pairs; k += 4, from += 4) {
            if ((k & (k - 1)) == 0) {
                from = 0;
                if (k == 4) {
                    const Value step = powers(frequency, {4.0 * E, 0})[0];
                    c = step.re;
                    s = step.im;
                } else {
                    const double c2 = c * c - s * s;
                    s = 2 * c * s;
                    c = c2;
                }
            }
            const auto a = at(exactRe + from), b = at(exactIm + from);
            auto re = a, im = b;
            for (int r = 0; r < kRegisters; ++r) {
                re.v[r] = a.v[r] * c - b.v[r] * s;
                im.v[r] = a.v[r] * s + b.v[r] * c;
            }
            put(k, re, im);
        }
    }
};

template <class T> struct Sums { Vec<T, kLanes<T>> re[kRegisters], im[kRegisters]; };

// To the sums of even and of odd pairs, pairs from .. to - 1, or every second one alone. Pair k's groups are k - place groups
// outwards of those at low and high.
template <int Count, int Kinds, int First, int Registers, class T, class P>
TEVS_INLINE void addPairs(Sums<T> (&sums)[2][Count], const Factors<T>* w, const P* low, const P* high, int place, int from, int to) {
    using V = Vec<T, kLanes<T>>;
    constexpr int n = kLanes<T>;
    V re[Kinds][Count][Registers], im[Kinds][Count][Registers];
    for (int q = 0; q < Kinds; ++q)
        for (int f = 0; f < Count; ++f)
            for (int r = 0; r < Registers; ++r) {
                re[q][f][r] = sums[(from + q) % 2][f].re[First + r];
                im[q][f][r] = sums[(from + q) % 2][f].im[First + r];
            }
    const auto add = [&](int k, int q) TEVS_HERE {
        for (int r = 0; r < Registers; ++r) {
            const ptrdiff_t at = ptrdiff_t{k - place} * kTogether<T>;
            const V a = inRegister(loadLanes<T, kRegisterBytes, 1>(low - at + (First + r) * n).v[0]);
            const V b = inRegister(loadLanes<T, kRegisterBytes, 1>(high + at + (First + r) * n).v[0]);
            const V sum = a + b, difference = a - b;
            for (int f = 0; f < Count; ++f) {
                re[q][f][r] += sum * same<V>(w[f].re[k]);
                im[q][f][r] += difference * same<V>(w[f].im[k]);
            }
        }
    };
    int k = from;
    for (; k <= to - Kinds; k += 2)
        for (int q = 0; q < Kinds; ++q) add(k + q, q);
    if (Kinds == 2 && k < to) add(k, 0);
    for (int q = 0; q < Kinds; ++q)
        for (int f = 0; f < Count; ++f)
            for (int r = 0; r < Registers; ++r) {
                sums[(from + q) % 2][f].re[First + r] = re[q][f][r];
                sums[(from + q) % 2][f].im[First + r] = im[q][f][r];
            }
}

// The sums of lanes, each turned by its place; every second one is of imaginary parts, whose sum counts times j.
template <int Parts, class T> TEVS_INLINE Value total(const Sums<T>& even, const Sums<T>& odd, const Four* turns) {
    constexpr int n = kLanes<double>;
    alignas(kBytes) T re[kTogether<T>], im[kTogether<T>];
    for (int r = 0; r < kRegisters; ++r) {
        store(re + r * kLanes<T>, even.re[r] + odd.re[r]);
        store(im + r * kLanes<T>, even.im[r] + odd.im[r]);
    }
    alignas(kBytes) double a[4], b[4];
    for (int l = 0; l < 4; l += n) {
        Vec<double, n> x{}, y{};
        for (int i = 0; i < kTogether<T> / 4; ++i) {
            const auto u = loadLanes<double, n * 8, 1>(re + 4 * i + l).v[0], v = loadLanes<double, n * 8, 1>(im + 4 * i + l).v[0];
            const auto c = load<double, n>(turns[i].re + l), s = load<double, n>(turns[i].im + l);
            x += u * c - v * s;
            y += u * s + v * c;
        }
        store(a + l, x);
        store(b + l, y);
    }
    const Value first = {a[0] + a[2], b[0] + b[2]}, second = {a[1] + a[3], b[1] + b[3]};
    if constexpr (Parts == 2) return {first.re - second.im, first.im + second.re};
    return first + second;
}

// For Count frequencies in one run over the signal.
template <class T, int Count, class S> void valueAt(const S* src, int len, const FrequencyOf<S>* frequency, Complex64f* y) {
    using P = Scalar<S>;
    constexpr int parts = kParts<S>, elements = kTogether<T> / parts, block = 2 * kMostPairs * elements, quarters = kTogether<T> / 4;
    const int blocks = (len - 1) / block, left = len - blocks * block;   // and a last one of 1 .. block elements
    const int groups = (left + elements - 1) / elements, pairs = (groups + 1) / 2;

    Factors<T> w[Count];
    for (int f = 0; f < Count; ++f) w[f].template prepare<elements>(frequency[f], blocks > 0 ? kMostPairs : pairs);

    // Powers for the lanes of a block of n elements, with so many groups before its middle.
    const auto turnsOf = [&](int f, int n, int middle, Four* turns) {
        for (int i = 0; i < quarters; ++i) turns[i] = powers(frequency[f], {double(n - middle * elements + elements / 2 - 4 * i / parts), -1, parts == 2});
    };
    const auto add = [&](Sums<T>(&sums)[2][Count], const P* middle, int to) TEVS_HERE {
        const P* const low = middle - kTogether<T>;
        if constexpr (!kFewRegisters) {
            addPairs<Count, 2, 0, kRegisters>(sums, w, low, middle, 0, 0, to);
        } else {
            for (int from = 0; from < 2; ++from)
                if constexpr (Count == 1) {
                    addPairs<Count, 1, 0, kRegisters>(sums, w, low, middle, 0, from, to);
                } else {
                    addPairs<Count, 1, 0, 1>(sums, w, low, middle, 0, from, to);
                    addPairs<Count, 1, 1, 1>(sums, w, low, middle, 0, from, to);
                }
        }
    };

    Value sum[Count] = {};
    const P* p = partsOf(src);
    if (blocks > 0) {
        // waiting[i] is the sum over 2^i blocks whose other half has yet to come.
        constexpr int kDoublings = 31;
        Value waiting[Count][kDoublings], toNext[Count][kDoublings];
        Four turns[Count][quarters];
        const int doublings = 32 - __builtin_clz(unsigned(blocks));
        for (int f = 0; f < Count; ++f) {
            turnsOf(f, block, kMostPairs, turns[f]);
            for (int i = 0; i < doublings; ++i) toNext[f][i] = powers(frequency[f], {double(block) * (1 << i), 0})[0];
        }
        for (int b = 0; b < blocks; ++b, p += block * parts) {
            Sums<T> sums[2][Count] = {};
            add(sums, p + block * parts / 2, kMostPairs);
            int i = 0;
            for (int f = 0; f < Count; ++f) {
                Value v = total<parts>(sums[0][f], sums[1][f], turns[f]);
                for (i = 0; b >> i & 1; ++i) v = waiting[f][i] * toNext[f][i] + v;
                waiting[f][i] = v;
            }
        }
        // The larger ones come first in the signal.
        for (int f = 0; f < Count; ++f) {
            for (int i = doublings - 1; i >= 0; --i)
                if (blocks >> i & 1) sum[f] = sum[f] * toNext[f][i] + waiting[f][i];
            sum[f] = sum[f] * powers(frequency[f], {double(left), 0})[0];
        }
    }

    // The outermost pair has the last group, which may be short, and where the number of groups is odd nothing before the first.
    Sums<T> sums[2][Count] = {};
    const int before = groups - pairs, within = left == 2 * pairs * elements ? pairs : pairs - 1;
    add(sums, p + before * kTogether<T>, within);
    if (within < pairs) {
        P held[2 * kTogether<T>] = {};
        const int last = left - (groups - 1) * elements;
        if (before == pairs) moveBytes(p, held, kTogether<T> * int(sizeof(P)));
        moveBytes(p + (groups - 1) * kTogether<T>, held + kTogether<T>, last * parts * int(sizeof(P)));
        addPairs<Count, 1, 0, kRegisters>(sums, w, held, held + kTogether<T>, within, within, within + 1);
    }
    for (int f = 0; f < Count; ++f) {
        Four turns[quarters];
        turnsOf(f, left, before, turns);
        sum[f] = sum[f] + total<parts>(sums[0][f], sums[1][f], turns);
        y[f] = {sum[f].re, sum[f].im};
    }
}

}   // namespace

extern const GoertzelKernels goertzel = {
    .one32f = valueAt<float, 1, float>,
    .one16s = valueAt<float, 1, int16_t>,
    .one32fc = valueAt<float, 1, Complex32f>,
    .two32fc = valueAt<float, 2, Complex32f>,
    .one64fc = valueAt<double, 1, Complex64f>,
    .two64fc = valueAt<double, 2, Complex64f>,
    .one16sc = valueAt<float, 1, Complex16s>,
    .two16sc = valueAt<float, 2, Complex16s>,
};

}   // namespace tevs::TEVS_LEVEL_NS
