// FFT of 2^14 to 2^16 complex doubles, depth first, a value to a register: decimation in time. The transforms of every R-th value stand one after another in the destination, each
// gone through while the caches hold it, before a pass of radix R with factors joins them where they are; 64 values are one piece of code.
#include "transform/fft_deep.table.h"

#include "transform/fft.kern.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// Pairs at a multiple of 16 bytes: below level 2 an operand in memory has to be.
template <class T> struct AlignedPairs { T* p; };
typedef double AlignedPair __attribute__((vector_size(16), may_alias));
TEVS_INLINE Pair readPair(AlignedPairs<const double> a, int i) { return *reinterpret_cast<const AlignedPair*>(a.p + 2 * i); }
TEVS_INLINE void writePair(AlignedPairs<double> a, int i, Pair x) { *reinterpret_cast<AlignedPair*>(a.p + 2 * i) = x; }
template <class T> TEVS_INLINE AlignedPairs<T> operator+(AlignedPairs<T> a, int64_t i) { return {a.p + 2 * i}; }
template <class T> const void* start(AlignedPairs<T> a) { return a.p; }

TEVS_INLINE Pairs<const double> toRead(Pairs<double> a) { return {a.p}; }
TEVS_INLINE AlignedPairs<const double> toRead(AlignedPairs<double> a) { return {a.p}; }

// Every stride-th value, with its parts exchanged or not. And 64 values by rows of eight that are read by columns.
template <class In, bool Exchanged> struct Every {
    In at;
    int stride;
};
template <class In, bool Exchanged> struct ByColumns { In at; };
template <bool Exchanged> TEVS_INLINE Pair exchangedIf(Pair x) { return Exchanged ? exchanged(x) : x; }
template <class In, bool Exchanged> TEVS_INLINE Pair readPair(Every<In, Exchanged> a, int i) { return exchangedIf<Exchanged>(readPair(a.at, a.stride * i)); }
template <class In, bool Exchanged> TEVS_INLINE Pair readPair(ByColumns<In, Exchanged> a, int i) {
    return exchangedIf<Exchanged>(readPair(a.at, i % 8 * 8 + i / 8));
}

template <class In, class Out> TEVS_PASS void sixtyFour(In src, Out dst) { columnsAndRows<8, 8, false, false>(src, dst, 1.0); }

// x times the factor at w.
TEVS_INLINE Pair times(Pair x, const double* w) { return productAnd<true>(x, same<Pair>(w[0]), exchanged(x) * same<Pair>(w[1])); }

// Radix 8, from the sums and the differences of inputs four apart.
template <class Emit> TEVS_INLINE void dft8OfPairs(const Pair (&s)[4], const Pair (&d)[4], Emit emit) {
    dftOfPairs<false>(
        At<4>{}, [&](int j) TEVS_HERE { return s[j]; }, [&]<int J>(At<J>, Pair y) TEVS_HERE { emit(At<2 * J>{}, y); });
    endOfStep();
    const Pair h = same<Pair>(kSqrtHalf);
    const Pair sum = d[1] + d[3], difference = d[1] - d[3];
    const Pair u = difference + quarter<false>(sum), v = quarter<false>(sum + quarter<false>(difference));
    const Pair d2 = quarter<false>(d[2]), p = d[0] + d2, q = d[0] - d2;
    emit(At<1>{}, fma(h, u, p));
    emit(At<5>{}, fnma(h, u, p));
    emit(At<3>{}, fma(h, v, q));
    emit(At<7>{}, fnma(h, v, q));
}

// Joins R transforms of length M that stand one after another.
template <int R, int M, bool Exchanged, bool Scaled, class Place> TEVS_PASS void joiningPass(Place at, const double* __restrict w, double scale) {
    const auto from = toRead(at);
    for (int k = 0; k < M; ++k) {
        const auto value = [&](int j) TEVS_HERE {
            const Pair x = readPair(from, k + M * j);
            return j > 0 ? times(x, w + 2 * (j - 1)) : x;
        };
        const auto emit = [&]<int J>(At<J>, Pair x) TEVS_HERE {
            const Pair y = exchangedIf<Exchanged>(x);
            writePair(at, k + M * J, Scaled ? y * same<Pair>(scale) : y);
        };
        if constexpr (R == 4) {
            dftOfPairs<false>(At<4>{}, value, emit);
        } else {
            Pair sum[4], difference[4];
            for (int j = 0; j < 4; ++j) {
                const Pair a = value(j), b = value(j + 4);
                sum[j] = a + b;
                difference[j] = a - b;
            }
            dft8OfPairs(sum, difference, emit);
        }
        w += 2 * (R - 1);
    }
}

// The transform of 2^Order values by the radices from I on: every stride-th of src or, in place, what stands in dst by rows.
template <Radices Digits, int I, int Order, bool InPlace, bool Exchanged, bool Scaled, class In, class Place>
void joined(In src, int stride, Place dst, const double* w, double scale) {
    if constexpr (I == Digits.count - 1) {
        if constexpr (InPlace)
            sixtyFour(ByColumns<decltype(toRead(dst)), Exchanged>{toRead(dst)}, dst);
        else
            sixtyFour(Every<In, Exchanged>{src, stride}, dst);
    } else {
        constexpr int R = Digits.r[I], kBits = R == 8 ? 3 : 2, M = 1 << (Order - kBits);
        for (int r = 0; r < R; ++r)
            joined<Digits, I + 1, Order - kBits, InPlace, Exchanged, false>(src + int64_t{stride} * r, stride * R, dst + M * r, w + 2 * (R - 1) * M, scale);
        joiningPass<R, M, I == 0 && Exchanged, I == 0 && Scaled>(dst, w, scale);
    }
}

// Value n goes to the place whose number has the digits of n backwards, 3 bits at either end and those of the radices within.
template <int Order, class Place> TEVS_PASS void turnDigits(Place a) {
    constexpr int kMiddle = Order - 6, kRow = 1 << (Order - 3);
    const auto from = toRead(a);
    for (int m = 0; m < 1 << kMiddle; ++m) {
        constexpr int kInner = kMiddle - 6;
        const int inner = m >> 3 & ((1 << kInner) - 1);
        const int turned = (m & 7) << (kMiddle - 3) | (kInner == 4 ? (inner & 3) << 2 | inner >> 2 : inner) << 3 | m >> (kMiddle - 3);
        if (turned < m) continue;
        const auto at = a + 8 * m, other = a + 8 * turned;
        const auto fromAt = from + 8 * m, fromOther = from + 8 * turned;
        for (int i = 0; i < 8; ++i)
            for (int j = turned == m ? i + 1 : 0; j < 8; ++j) {
                const Pair x = readPair(fromAt, kRow * i + j), y = readPair(fromOther, kRow * j + i);
                writePair(at, kRow * i + j, y);
                writePair(other, kRow * j + i, x);
            }
    }
}

template <int Order, bool Exchanged, bool Scaled, class In, class Place> void depthFirstOrder(const double* w, In src, Place dst, double scale) {
    constexpr Radices kDigits = deepRadices(Order);
    if (start(src) == start(dst)) {
        turnDigits<Order>(dst);
        joined<kDigits, 0, Order, true, Exchanged, Scaled>(toRead(dst), 1, dst, w, scale);
    } else {
        joined<kDigits, 0, Order, false, Exchanged, Scaled>(src, 1, dst, w, scale);
    }
}
// The inverse is the forward transform with parts exchanged on the way in and out.
template <int Order, bool Inverse, bool Scaled> void depthFirstOrder(const double* w, Pairs<const double> src, Pairs<double> dst, double scale) {
    if (TEVS_LEVEL < 2 && reinterpret_cast<uintptr_t>(dst.p) % 16 == 0)
        depthFirstOrder<Order, Inverse, Scaled>(w, src, AlignedPairs<double>{dst.p}, scale);
    else
        depthFirstOrder<Order, Inverse, Scaled, Pairs<const double>, Pairs<double>>(w, src, dst, scale);
}

template <int Order, bool Inverse> void deep(const FftTables<double>& t, Pairs<const double> src, Pairs<double> dst, double*, double scale) {
    const double* const w = t.passes - deepFactors(Order);
    if (scale == 1)
        depthFirstOrder<Order, Inverse, false>(w, src, dst, scale);
    else
        depthFirstOrder<Order, Inverse, true>(w, src, dst, scale);
}

}   // namespace

extern const DeepFftKernels fftDeep = {
    .forward = {deep<14, false>, deep<15, false>, deep<16, false>},
    .inverse = {deep<14, true>, deep<15, true>, deep<16, true>},
};

}   // namespace tevs::TEVS_LEVEL_NS
