// FFT of 2 to 16 real integers in registers, where the spectrum is kept in Perm order, X[0], X[N/2], Re X[1], Im X[1], ...
#include "transform/fft_integer.table.h"
#include "transform/integer.kern.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// ---- integers of any packing ----------------------------------------------------------------------------------------------------------

// As many registers as hold N of S, or the lower part of one.
template <class S, int N> struct Integers {
    static constexpr int kPerRegister = 16 / int(sizeof(S)), kBytes = N * int(sizeof(S));
    static constexpr int kRegisters = kBytes < 16 ? 1 : kBytes / 16, kRegisterBytes = kBytes < 16 ? kBytes : 16;
    Vec<S, kPerRegister> v[kRegisters];

    TEVS_INLINE void loadFrom(const S* p, int r) { v[r] = (Vec<S, kPerRegister>)loadLow<kRegisterBytes>(p); }
    TEVS_INLINE void storeTo(S* p, int r) const {
        if constexpr (kRegisterBytes == 16)
            store(p, v[r]);
        else
            store(p, LowBytes<kRegisterBytes>{(__m128i)v[r]});
    }
};
// The lanes of v one up, one down.
template <class V> TEVS_INLINE V lanesUp(V v) { return (V)_mm_slli_si128((__m128i)v, sizeof v[0]); }
template <class V> TEVS_INLINE V lanesDown(V v) { return (V)_mm_srli_si128((__m128i)v, sizeof v[0]); }

// v with x in lane 1. An element of an array of vectors is set by way of memory, which a load of the vector then waits for.
TEVS_INLINE Vec<int16_t, 8> withSecond(Vec<int16_t, 8> v, int16_t x) { return (Vec<int16_t, 8>)_mm_insert_epi16((__m128i)v, x, 1); }
TEVS_INLINE Vec<int32_t, 4> withSecond(Vec<int32_t, 4> v, int32_t x) {
    const auto low = (Vec<int32_t, 4>)_mm_unpacklo_epi32((__m128i)v, _mm_cvtsi32_si128(x));
    return __builtin_shufflevector(low, v, 0, 1, 6, 7);
}

template <int N, class S> TEVS_INLINE Integers<S, N> readSamples(const S* src) {
    Integers<S, N> x;
    for (int r = 0; r < x.kRegisters; ++r) x.loadFrom(src + x.kPerRegister * r, r);
    return x;
}
template <int N, class S> TEVS_INLINE Integers<S, N> readSpectrum(const S* src, Packing packing) {
    auto x = readSamples<N>(src);
    if (packing == Packing::Ccs) {
        x.v[0] = withSecond(x.v[0], src[N]);
    } else if (packing == Packing::Pack) {
        const auto v = x.v[0];
        x.v[0] = withSecond(lanesUp(v), src[N - 1]) | (v & Vec<S, x.kPerRegister>{-1});
        for (int r = 1; r < x.kRegisters; ++r) x.loadFrom(src + x.kPerRegister * r - 1, r);
    }
    return x;
}
template <int N, class S> TEVS_INLINE void writeSamples(const Integers<S, N>& x, S* dst) {
    for (int r = 0; r < x.kRegisters; ++r) x.storeTo(dst + x.kPerRegister * r, r);
}
template <int N, class S> TEVS_INLINE void writeSpectrum(Integers<S, N> x, S* dst, Packing packing) {
    const S first = x.v[0][0], second = x.v[0][1];
    if (packing == Packing::Pack) {
        x.v[0] = lanesDown(x.v[0]);
        x.storeTo(dst, 0);
        for (int r = 1; r < x.kRegisters; ++r) x.storeTo(dst + x.kPerRegister * r - 1, r);
        dst[0] = first;
        dst[N - 1] = second;
        return;
    }
    if (packing == Packing::Ccs) {
        x.v[0] = withSecond(x.v[0], S{0});
        dst[N] = second;
        dst[N + 1] = 0;
    }
    writeSamples(x, dst);
}

// ---- their lanes as T ------------------------------------------------------------------------------------------------------------------

template <class T, int N> struct Reals {
    static constexpr int kLanes = 16 / int(sizeof(T)), kRegisters = N < kLanes ? 1 : N / kLanes;
    Vec<T, kLanes> v[kRegisters];
};
template <class T, int N, class S> TEVS_INLINE Reals<T, N> toReals(const Integers<S, N>& x) {
    Reals<T, N> r;
    for (int i = 0; i < r.kRegisters; ++i) {
        const int at = i * r.kLanes;
        auto ints = (__m128i)x.v[at / x.kPerRegister];
        if (at % x.kPerRegister) ints = _mm_unpackhi_epi64(ints, ints);
        ints = widenLow<S, int32_t>(ints);
        if constexpr (sizeof(T) == 4)
            r.v[i] = (Vec<T, 4>)_mm_cvtepi32_ps(ints);
        else
            r.v[i] = (Vec<T, 2>)_mm_cvtepi32_pd(ints);
    }
    return r;
}
// Times scale, to nearest, saturated.
template <class D, class T, int N> TEVS_INLINE Integers<D, N> toIntegers(const Reals<T, N>& x, T scale) {
    using V = Vec<T, 16 / int(sizeof(T))>;
    const V f = same<V>(scale);
    Integers<D, N> y;
    for (int r = 0; r < y.kRegisters; ++r) {
        if constexpr (sizeof(D) == sizeof(T)) {
            // What is above the range would convert to the minimum, as what is below does.
            const V v = x.v[r] * f;
            y.v[r] = nearestInt(v) ^ (v >= 0x1p31f);
        } else if constexpr (Reals<T, N>::kRegisters == 1) {
            const V v = x.v[0] * f;
            y.v[r] = rounded(Two<V>{v, v});
        } else {
            y.v[r] = rounded(Two<V>{x.v[2 * r] * f, x.v[2 * r + 1] * f});
        }
    }
    return y;
}

// ---- the transform -----------------------------------------------------------------------------------------------------------------------

// Of N values, the sums of those N/2 apart make the even values of the spectrum, in the same way. Their differences d make the odd ones: with
// z[n] = (d[n] - i d[n + N/4]) w^n for n < N/4, w = exp(-2 pi i / N),
//
//     X[4k+1] = sum over n of z[n] w^(4 n k)
//
// and X[N-k] is the conjugate of X[k]. The inverse takes the same steps back: y[n] = sum over k of X[4k+1] w^(-4 n k), and d[n] - i d[n + N/4] is twice the conjugate of y[n]
// times w^n.

using Double2 = Vec<double, 2>;
using Float4 = Vec<float, 4>;

template <int... I> TEVS_INLINE Float4 picked(Float4 a, Float4 b) { return __builtin_shufflevector(a, b, I...); }
template <int I> TEVS_INLINE Float4 lane(Float4 a) { return __builtin_shufflevector(a, a, I, I, I, I); }

// (a - i b) (re + i im).
template <class V> TEVS_INLINE Cx<V> turned(V a, V b, V re, V im) { return {fma(a, re, b * im), fnma(b, re, a * im)}; }

// The odd values of the spectrum of N from N/2 differences.
TEVS_INLINE Reals<double, 2> oddValues(const Reals<double, 2>& d) { return {{conjugate(d.v[0])}}; }
TEVS_INLINE Reals<double, 4> oddValues(const Reals<double, 4>& d) {
    const auto z = turned(d.v[0], d.v[1], Double2{1, kSqrtHalf}, Double2{0, -kSqrtHalf});
    const Double2 z0 = interleaveLow(z.re, z.im), z1 = interleaveHigh(z.re, z.im);
    return {{z0 + z1, conjugate(z0 - z1)}};
}
TEVS_INLINE Reals<double, 8> oddValues(const Reals<double, 8>& d) {
    const auto y = turned(d.v[0], d.v[2], Double2{1, kCos16}, Double2{0, -kSin16});
    const auto z = turned(d.v[1], d.v[3], Double2{kSqrtHalf, kSin16}, Double2{-kSqrtHalf, -kCos16});
    const Double2 z0 = interleaveLow(y.re, y.im), z1 = interleaveHigh(y.re, y.im), z2 = interleaveLow(z.re, z.im), z3 = interleaveHigh(z.re, z.im);
    const Double2 a = z0 + z2, b = z0 - z2, c = z1 + z3, e = conjugate(swapPairs(z1 - z3));
    return {{a + c, conjugate(b - e), b + e, conjugate(a - c)}};
}
TEVS_INLINE Reals<float, 4> oddValues(const Reals<float, 4>& d) {
    constexpr float h = float(kSqrtHalf);
    const Float4 x = d.v[0];
    return {
        {fma(lane<1>(x), Float4{h, -h, -h, -h}, lane<0>(x) * Float4{1, 0, 1, 0}) + fma(lane<3>(x), Float4{-h, -h, h, -h}, lane<2>(x) * Float4{0, -1, 0, 1})}};
}
TEVS_INLINE Reals<float, 8> oddValues(const Reals<float, 8>& d) {
    constexpr float h = float(kSqrtHalf), c = float(kCos16), s = float(kSin16);
    const auto z = turned(d.v[0], d.v[1], Float4{1, c, h, s}, Float4{0, -s, -h, -c});
    const Float4 low = interleaveLow(z.re, z.im), high = interleaveHigh(z.re, z.im), sum = low + high, difference = low - high;
    const Float4 p = picked<0, 1, 4, 5>(sum, difference), q = picked<2, 3, 7, 6>(sum, difference) * Float4{1, 1, 1, -1};
    const Float4 of15 = p + q, of73 = conjugate(p - q);
    return {{picked<0, 1, 6, 7>(of15, of73), picked<2, 3, 4, 5>(of15, of73)}};
}

// And back.
TEVS_INLINE Reals<double, 2> differencesOf(const Reals<double, 2>& x) { return {{x.v[0] * Double2{2, -2}}}; }
TEVS_INLINE Reals<double, 4> differencesOf(const Reals<double, 4>& x) {
    constexpr double h = 2 * kSqrtHalf;
    const Double2 b = conjugate(x.v[1]), y0 = x.v[0] + b, y1 = x.v[0] - b;
    const auto d = turned(interleaveLow(y0, y1), interleaveHigh(y0, y1), Double2{2, h}, Double2{0, -h});
    return {{d.re, d.im}};
}
TEVS_INLINE Reals<double, 8> differencesOf(const Reals<double, 8>& x) {
    constexpr double h = 2 * kSqrtHalf, c = 2 * kCos16, s = 2 * kSin16;
    const Double2 x9 = conjugate(x.v[3]), x13 = conjugate(x.v[1]);
    const Double2 a = x.v[0] + x9, b = x.v[0] - x9, e = x.v[2] + x13, f = swapPairs(conjugate(x.v[2] - x13));
    const Double2 y0 = a + e, y1 = b + f, y2 = a - e, y3 = b - f;
    const auto d = turned(interleaveLow(y0, y1), interleaveHigh(y0, y1), Double2{2, c}, Double2{0, -s});
    const auto g = turned(interleaveLow(y2, y3), interleaveHigh(y2, y3), Double2{h, s}, Double2{-h, -c});
    return {{d.re, g.re, d.im, g.im}};
}
TEVS_INLINE Reals<float, 4> differencesOf(const Reals<float, 4>& x) {
    constexpr float h = float(2 * kSqrtHalf);
    const Float4 y = x.v[0];
    return {
        {fma(lane<1>(y), Float4{0, -h, -2, -h}, lane<0>(y) * Float4{2, h, 0, -h}) + fma(lane<3>(y), Float4{0, -h, 2, -h}, lane<2>(y) * Float4{2, -h, 0, h})}};
}
TEVS_INLINE Reals<float, 8> differencesOf(const Reals<float, 8>& x) {
    constexpr float h = float(2 * kSqrtHalf), c = float(2 * kCos16), s = float(2 * kSin16);
    const Float4 of15 = picked<0, 1, 4, 5>(x.v[0], x.v[1]), of913 = conjugate(picked<2, 3, 6, 7>(x.v[1], x.v[0])), sum = of15 + of913,
                 difference = of15 - of913;
    const Float4 p = picked<0, 1, 4, 5>(sum, difference), q = picked<2, 3, 7, 6>(sum, difference) * Float4{1, 1, -1, 1};
    const Float4 y01 = p + q, y23 = p - q;
    const auto d = turned(evens(y01, y23), odds(y01, y23), Float4{2, c, h, s}, Float4{0, -s, -h, -c});
    return {{d.re, d.im}};
}

// Complex value k of a, then of b, and so on; and apart again.
template <int N> TEVS_INLINE Reals<double, 2 * N> byTurns(const Reals<double, N>& a, const Reals<double, N>& b) {
    Reals<double, 2 * N> x;
    for (int r = 0; r < a.kRegisters; ++r) x.v[2 * r] = a.v[r], x.v[2 * r + 1] = b.v[r];
    return x;
}
template <int N> TEVS_INLINE Reals<float, 2 * N> byTurns(const Reals<float, N>& a, const Reals<float, N>& b) {
    Reals<float, 2 * N> x;
    for (int r = 0; r < a.kRegisters; ++r) x.v[2 * r] = picked<0, 1, 4, 5>(a.v[r], b.v[r]), x.v[2 * r + 1] = picked<2, 3, 6, 7>(a.v[r], b.v[r]);
    return x;
}
template <int Odd, int N> TEVS_INLINE Reals<double, N / 2> everySecond(const Reals<double, N>& x) {
    Reals<double, N / 2> half;
    for (int r = 0; r < half.kRegisters; ++r) half.v[r] = x.v[2 * r + Odd];
    return half;
}
template <int Odd, int N> TEVS_INLINE Reals<float, N / 2> everySecond(const Reals<float, N>& x) {
    Reals<float, N / 2> half;
    for (int r = 0; r < half.kRegisters; ++r) half.v[r] = picked<2 * Odd, 2 * Odd + 1, 2 * Odd + 4, 2 * Odd + 5>(x.v[2 * r], x.v[2 * r + 1]);
    return half;
}

// Two values, either way, and four in one register.
TEVS_INLINE Reals<double, 2> sumAndDifference(const Reals<double, 2>& x) {
    return {{fma(interleaveHigh(x.v[0], x.v[0]), Double2{1, -1}, interleaveLow(x.v[0], x.v[0]))}};
}
TEVS_INLINE Reals<float, 2> sumAndDifference(const Reals<float, 2>& x) { return {{fma(lane<1>(x.v[0]), Float4{1, -1}, lane<0>(x.v[0]))}}; }
TEVS_INLINE Reals<float, 4> spectrumOfFour(const Reals<float, 4>& x) {
    const Float4 y = fma(picked<2, 3, 2, 3>(x.v[0], x.v[0]), Float4{1, 1, -1, -1}, picked<0, 1, 0, 1>(x.v[0], x.v[0]));   // the sums, the differences
    return {{fma(picked<1, 1, 2, 2>(y, y), Float4{1, -1}, picked<0, 0, 2, 3>(y, y) * Float4{1, 1, 1, -1})}};
}
TEVS_INLINE Reals<float, 4> fourOfSpectrum(const Reals<float, 4>& x) {
    const Float4 y = fma(lane<1>(x.v[0]), Float4{1, -1, 1, -1}, lane<0>(x.v[0]));
    return {{fma(picked<2, 3, 2, 3>(x.v[0], x.v[0]), Float4{2, -2, -2, 2}, y)}};
}

template <class T, int N> TEVS_INLINE Reals<T, N> spectrumOf(const Reals<T, N>& x) {
    if constexpr (N == 2) {
        return sumAndDifference(x);
    } else if constexpr (N == Reals<T, N>::kLanes) {
        return spectrumOfFour(x);
    } else {
        Reals<T, N / 2> sum, difference;
        for (int r = 0; r < sum.kRegisters; ++r) {
            sum.v[r] = x.v[r] + x.v[r + sum.kRegisters];
            difference.v[r] = x.v[r] - x.v[r + sum.kRegisters];
        }
        return byTurns(spectrumOf(sum), oddValues(difference));
    }
}
template <class T, int N> TEVS_INLINE Reals<T, N> samplesOf(const Reals<T, N>& x) {
    if constexpr (N == 2) {
        return sumAndDifference(x);
    } else if constexpr (N == Reals<T, N>::kLanes) {
        return fourOfSpectrum(x);
    } else {
        const Reals<T, N / 2> sum = samplesOf(everySecond<0>(x)), difference = differencesOf(everySecond<1>(x));
        Reals<T, N> y;
        for (int r = 0; r < sum.kRegisters; ++r) {
            y.v[r] = sum.v[r] + difference.v[r];
            y.v[r + sum.kRegisters] = sum.v[r] - difference.v[r];
        }
        return y;
    }
}

// ---- one routine for each order ---------------------------------------------------------------------------------------------------------

template <int N, class T, class S, class D> void spectrumOfIntegers(const S* src, D* dst, Packing to, T scale) {
    writeSpectrum(toIntegers<D>(spectrumOf(toReals<T>(readSamples<N>(src))), scale), dst, to);
}
template <int N, class T, class S, class D> void integersOfSpectrum(const S* src, D* dst, Packing from, T scale) {
    writeSamples(toIntegers<D>(samplesOf(toReals<T>(readSpectrum<N>(src, from))), scale), dst);
}
template <class T, class Samples, class Values>
constexpr RealIntegers<T, Samples, Values> kRealIntegers = {{spectrumOfIntegers<2, T, Samples, Values>, spectrumOfIntegers<4, T, Samples, Values>,
                                                             spectrumOfIntegers<8, T, Samples, Values>, spectrumOfIntegers<16, T, Samples, Values>},
                                                            {integersOfSpectrum<2, T, Values, Samples>, integersOfSpectrum<4, T, Values, Samples>,
                                                             integersOfSpectrum<8, T, Values, Samples>, integersOfSpectrum<16, T, Values, Samples>}};

}   // namespace

extern const FftIntegerKernels fftInteger = {
    .of16s = kRealIntegers<float, int16_t, int16_t>,
    .of16s32s = kRealIntegers<float, int16_t, int32_t>,
    .of32s = kRealIntegers<double, int32_t, int32_t>,
};

}   // namespace tevs::TEVS_LEVEL_NS
