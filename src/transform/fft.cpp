// FFT records and the transforms that use them: lifecycle and tables, complex and real transforms.
#include "transform/float_fft.h"

#include <emmintrin.h>
#include <string.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <type_traits>
#include <utility>

#include "core/args.h"
#include "core/memory.h"
#include "core/rounding.h"
#include "core/work.h"
#include "transform/fft_deep.table.h"
#include "transform/roots.h"

namespace tevs {
namespace {

template <class T> constexpr int kMostInRegisters = sizeof(T) == 4 ? 2 << 8 : 2 << 7;   // scalars of the longest transform that is one kernel in registers

template <class T> const FftKernels<T>* chosenKernels();
template <> const FftKernels<float>* chosenKernels() { return fft32; }
template <> const FftKernels<double>* chosenKernels() { return fft64; }

// ---- sizes --------------------------------------------------------------------------------------------------------------------------

// What a record of each order takes is fixed: callers keep such blocks in static memory. Its pieces are named after the plain radix-4 layout that
// the numbers come from; how the passes here use the room is their own business (fft.plan.h).
constexpr uint64_t permutationBytes(int order) { return roundUp16(((uint64_t{1} << order) / 4 + 1) * 4); }

constexpr int kLastListedOrder = 21;
template <class T> constexpr int splitOrder(int order) {
    constexpr int kSingle[] = {4, 4, 4, 5, 6, 6}, kDouble[] = {3, 4, 4, 4, 5, 6, 7, 8};
    if (order > kLastListedOrder) return 8;
    return (sizeof(T) == 4 ? kSingle : kDouble)[order - kFirstLargeOrder<T>];
}
template <class T> constexpr int blockOrder(int order) {
    constexpr int kSingle[] = {9, 10, 10, 13, 13, 13}, kDouble[] = {9, 9, 9, 10, 13, 13, 13, 13};
    if (order > kLastListedOrder) return sizeof(T) == 4 ? 14 : 13;
    return (sizeof(T) == 4 ? kSingle : kDouble)[order - kFirstLargeOrder<T>];
}
template <class T> constexpr uint64_t factorBytes(int order) {
    constexpr uint64_t kValue = 2 * sizeof(T);
    const uint64_t n = uint64_t{1} << order;
    if (order < kFirstLargeOrder<T>) return sizeof(T) == 4 ? (kValue * n + 23) & ~uint64_t{15} : kValue * (n + 1);
    return factorBytes<T>(order - splitOrder<T>(order)) + kValue * n;
}
template <class T> constexpr uint64_t scratchBytes(int order) {
    constexpr uint64_t kValue = 2 * sizeof(T);
    if (order < kFirstLargeOrder<T>) return kValue << order;
    return std::max(scratchBytes<T>(order - splitOrder<T>(order)), kValue << blockOrder<T>(order));
}

template <class T> constexpr SpecSizes sizesOf(bool real, int order) {
    const uint64_t record = sizeof(T) == 4 ? 96 : real || order <= 3 ? 100 : 112;
    if (order <= 3) return {record, 0, 0};
    const uint64_t init = roundUp16(((uint64_t{1} << order) / 4 + 1) * sizeof(T)) + kAlignmentRoom;
    const uint64_t recombination = real ? 2 * roundUp16((uint64_t{2 * sizeof(T)} << order) / 4) : 0;
    const int inner = real ? order - 1 : order;
    if (inner <= 3) return {record + recombination, init, 0};
    return {record + factorBytes<T>(inner) + permutationBytes(inner) + recombination, init, roundUp16(scratchBytes<T>(inner)) + kAlignmentRoom};
}
static_assert(sizesOf<float>(false, 16).spec == 622720 && sizesOf<float>(true, 4).spec == 160 && sizesOf<float>(false, 20).work == 131088);
static_assert(sizesOf<double>(false, 20).spec == 17957008 && sizesOf<double>(true, 4).spec == 228 && sizesOf<double>(true, 20).spec == 17432708);

// ---- tables -------------------------------------------------------------------------------------------------------------------------

// Lanes within 128 bits.
template <class T> constexpr int kGroup = 16 / int(sizeof(T));

// exp(-2 pi i num / den) as accurate as T is.
template <class T> __m128d factor(uint64_t num, uint64_t den) {
    if (den <= kMostListed) [[likely]]
        return _mm_loadu_pd(&kListedRoots[uint32_t(den) + (uint32_t(num) & (uint32_t(den) - 1))].re);
    const Root r = sizeof(T) == 4 ? turnedRoot(num, den) : unityRoot(num, den);
    return _mm_setr_pd(r.re, r.im);
}

// A group of them, `apart` from each other in the second half of it, as their real and their imaginary parts.
void putGroup(float* re, float* im, uint64_t num, uint64_t step, uint64_t apart, uint64_t den) {
    const auto pair = [=](uint64_t n) { return _mm_movelh_ps(_mm_cvtpd_ps(factor<float>(n, den)), _mm_cvtpd_ps(factor<float>(n + step, den))); };
    const __m128 a = pair(num), b = pair(num + apart);
    _mm_storeu_ps(re, _mm_shuffle_ps(a, b, 0x88));
    _mm_storeu_ps(im, _mm_shuffle_ps(a, b, 0xdd));
}
void putGroup(double* re, double* im, uint64_t num, uint64_t, uint64_t apart, uint64_t den) {
    const __m128d a = factor<double>(num, den), b = factor<double>(num + apart, den);
    _mm_storeu_pd(re, _mm_unpacklo_pd(a, b));
    _mm_storeu_pd(im, _mm_unpackhi_pd(a, b));
}
void putPair(float* at, __m128d r) { _mm_storel_pi(reinterpret_cast<__m64*>(at), _mm_cvtpd_ps(r)); }
void putPair(double* at, __m128d r) { _mm_storeu_pd(at, r); }

// Writes such factors one after another, in blocks of `lanes` real and `lanes` imaginary parts (1: interleaved).
template <class T> class FactorWriter {
public:
    FactorWriter(T* at, int lanes) : at_(at), lanes_(lanes) {}
    // A block of num = first * step, (first + 1) * step, ... in the block's lane order (laneAt).
    void putBlock(uint64_t first, uint64_t step, uint64_t den) {
        const uint64_t apart = uint64_t(laneAt(lanes_, kGroup<T> / 2, kGroup<T>)) * step;
        for (int l = 0; l < lanes_; l += kGroup<T>)
            putGroup(at_ + l, at_ + lanes_ + l, (first + uint64_t(laneAt(lanes_, l, kGroup<T>))) * step, step, apart, den);
        at_ += 2 * lanes_;
    }
    void put(uint64_t num, uint64_t den) {   // of one lane
        putPair(at_, factor<T>(num, den));
        at_ += 2;
    }
    T* end() const { return at_; }

private:
    T* at_;
    const int lanes_;
};

// The factors of passes over `points` points, but for the last, which has none.
template <class T> T* writePassFactors(T* at, const Radices& r, int first, uint64_t points) {
    FactorWriter w(at, 1);
    for (int i = first; i < r.count - 1; ++i) {
        const uint64_t m = points / uint64_t(r.r[i]);
        for (uint64_t p = 0; p < m; ++p)
            for (uint64_t j = 1; j < uint64_t(r.r[i]); ++j) w.put(p * j, points);
        points = m;
    }
    return w.end();
}

template <class T> void writeStockhamFactors(T* at, int order, int lanes) {
    const Radices r = passesOf<T>(order, lanes);
    const int k = fusedLanes<T>(order, lanes) ? fusedLanes<T>(order, lanes) : lanes;
    const uint64_t n = uint64_t{1} << order, radix = uint64_t(r.r[0]);
    FactorWriter w(at, k);
    for (uint64_t p = 0; p < n / radix; p += uint64_t(k))
        for (uint64_t j = 1; j < radix; ++j) w.putBlock(p, j, n);
    writePassFactors(w.end(), r, 1, n / radix);
}

// The factors between the transforms of the columns, of length 2^p, and of the rows.
template <class T> void writeFactorsBetween(T* outer, int p, int order, int lanes) {
    const uint64_t n = uint64_t{1} << order, rows = uint64_t{1} << p, columns = uint64_t(tileColumns<T>(p));
    FactorWriter within(outer, lanes);
    for (uint64_t k = 0; k < rows; ++k)
        for (uint64_t g = 0; g < columns; g += uint64_t(lanes)) within.putBlock(g, k, n);
    FactorWriter between(within.end(), 1);
    for (uint64_t c = 0; c < n / rows; c += columns)
        for (uint64_t k = 0; k < rows; ++k) between.put(c * k, n);
}

template <class T> void writeRecombination(T* at, int order) {
    FactorWriter w(at, 1);
    for (uint64_t k = 1; k <= uint64_t{1} << (order - 1); ++k) w.put(k, uint64_t{2} << order);
}

template <class T> bool mayLackRoom(int order) { return order >= kFirstLargeOrder<T> && scratchBytes<T>(order) < uint64_t(leastRoom<T>(order)); }

// A record's tables, from their place on. Over no block it only adds up.
template <class T> uint64_t layOut(FftTables<T>& t, int order, bool real, Places places, int lanes, void* block) {
    t = {};
    t.order = order;
    Carve c(block);
    const auto factorsOfLength = [&](int p) {
        T* const at = c.take<T>(uint64_t{2} << p);
        if (block) writePassFactors(at, radicesOf(p), 0, uint64_t{1} << p);
        return at;
    };
    const auto factorsBetween = [&](int p) {
        const auto columns = uint64_t(tileColumns<T>(p));
        T* const at = c.take<T>((2 * columns << p) + (uint64_t{2} << order) / columns);
        if (block) writeFactorsBetween(at, p, order, columnLanes<T>(lanes));
        return at;
    };
    const bool deep = goesDeep<T>(order, lanes) && places != Places::Parts, swept = order >= kFirstLargeOrder<T> && !(deep && places == Places::Pairs);
    if (deep) {
        T* const at = c.take<T>(uint64_t(deepFactors(order)));
        if (block) t.passes = writePassFactors(at, deepRadices(order), 0, uint64_t{1} << order);
    }
    if (swept) {
        const int p = outerOrder<T>(order);
        t.room = int(tileRoom<T>(order));
        t.passes = factorsOfLength(p);
        factorsOfLength(order - p);
        t.outer = factorsBetween(p);
    } else if (order >= 4 && !deep) {
        T* const at = c.take<T>(uint64_t{2} << order);
        if (block) writeStockhamFactors(at, order, lanes);
        t.passes = at;
    }
    if (real && order >= 3) {
        T* const at = c.take<T>(uint64_t{1} << order);
        if (block) writeRecombination(at, order);
        t.recombination = at;
    }
    if (mayLackRoom<T>(order)) {
        const int q = rowOrder<T>(order), p = order - q;
        FftTables<T> columns{}, rows;
        columns.order = order;
        columns.passes = factorsOfLength(p);
        columns.outer = factorsBetween(p);
        void* const rowTables = c.take<unsigned char>(layOut<T>(rows, q, false, Places::Parts, lanes, nullptr));
        auto* const both = c.take<FftTables<T>>(2);
        if (block) {
            layOut(rows, q, false, Places::Parts, lanes, rowTables);
            both[0] = columns;
            both[1] = rows;
            t.little = both;
        }
    }
    return c.size();
}

// Tables start on a cache line, where that is more than three of them: the reported sizes have the room that the permutation table would take.
constexpr uint64_t lineRoom(int order) { return order >= 6 ? 48 : 0; }
template <class T> T* atCacheLine(T* p) { return reinterpret_cast<T*>((reinterpret_cast<uintptr_t>(p) + 63) & ~uintptr_t{63}); }

int complexOrder(bool real, int order) { return real ? std::max(order - 1, 0) : order; }

}   // namespace

template <class T> SpecSizes fftSizes(bool real, int order) { return sizesOf<T>(real, order); }

template <class T> uint64_t fftBytes(bool real, int order, Places places) {
    FftTables<T> t;
    const int inner = complexOrder(real, order);
    return roundUp16(sizeof(FftSpec<T>)) + lineRoom(inner) + layOut<T>(t, inner, real, places, chosenKernels<T>()->lanes, nullptr);
}

template <class T> void buildFft(FftSpec<T>* spec, bool real, int order, int flag, Places places) {
    const int64_t n = int64_t{1} << order;
    const T factor = flag == ScaleBySqrtN ? T(1.0 / std::sqrt(double(n))) : T(1) / T(n);
    const uint64_t work = sizesOf<T>(real, order).work;
    *spec = {};
    spec->order = order;
    spec->workBytes = work ? int(work - kAlignmentRoom) : 0;
    spec->forwardScale = flag == ScaleFwdByN || flag == ScaleBySqrtN ? factor : T(1);
    spec->inverseScale = flag == ScaleInvByN || flag == ScaleBySqrtN ? factor : T(1);
    spec->kernels = chosenKernels<T>();
    const int lanes = spec->kernels->lanes, inner = complexOrder(real, order);
    T* const at = align16<T>(spec + 1);
    layOut(spec->tables, inner, real, places, lanes, lineRoom(inner) ? atCacheLine(at) : at);
    spec->stored = inner > 3 && !fusedLanes<T>(inner, lanes);
}

namespace {

// ---- transforms ---------------------------------------------------------------------------------------------------------------------

// Where a long transform is faster with more than the caller brings, or the caller brings nothing. Beside its data, a block of its own is little; refused one, it
// runs in what there is.
template <class T, class Body> [[gnu::noinline]] Status withBestWork(const FftSpec<T>& spec, uint8_t* pBuffer, const Body& body) {
    const FftTables<T>& t = spec.tables;
    const Status status = withOwnWork(bestWorkBytes(spec), [&](uint8_t* own) { body(t, reinterpret_cast<T*>(own)); });
    if (status == StatusOk || !pBuffer) return status;
    FftTables<T> narrow = t;
    narrow.room = spec.workBytes;
    body(narrow, reinterpret_cast<T*>(workIn(pBuffer)));
    return StatusOk;
}
// Calls body(tables, work) with the work area of one call.
template <class T, class Body> [[gnu::always_inline]] inline Status withFftWork(const FftSpec<T>& spec, uint8_t* pBuffer, const Body& body) {
    NearestRounding guard;
    if (!pBuffer || spec.tables.room > spec.workBytes) return withBestWork(spec, pBuffer, body);
    body(spec.tables, reinterpret_cast<T*>(workIn(pBuffer)));
    return StatusOk;
}

template <Way way, class T> T scaleOf(const FftSpec<T>& spec) { return way == Way::Forward ? spec.forwardScale : spec.inverseScale; }
template <Way way, template <class> class Place, class T> FftTransform<T, Place>* kernelOf(const FftSpec<T>& spec) {
    const FftKernels<T>& all = *spec.kernels;
    if constexpr (std::is_same_v<Place<T>, Pairs<double>>)
        if (goesDeep<T>(spec.tables.order, all.lanes)) return (way == Way::Forward ? fftDeep->forward : fftDeep->inverse)[spec.tables.order - kFirstDeepOrder];
    const auto& places = [&]() -> const auto& {
        if constexpr (std::is_same_v<Place<T>, Pairs<T>>)
            return all.pairs;
        else
            return all.parts;
    }
    ();
    return (way == Way::Forward ? places.forward : places.inverse)[spec.tables.order];
}

// The sweeps of a large transform write the destination before they have read the whole source: they work in place where the two share an array.
template <class T> Pairs<const T> gathered(Pairs<const T> src, Pairs<T>, int64_t) { return src; }
template <class T> Parts<const T> gathered(Parts<const T> src, Parts<T> dst, int64_t n) {
    const size_t bytes = size_t(n) * sizeof(T);
    if (src.re == dst.re && src.im == dst.im) return src;
    if (src.re == dst.im && src.im == dst.re) {
        std::swap_ranges(dst.re, dst.re + n, dst.im);
    } else if (src.re == dst.im) {
        memmove(dst.re, src.re, bytes);
        memmove(dst.im, src.im, bytes);
    } else if (src.im == dst.re || src.re == dst.re || src.im == dst.im) {
        memmove(dst.im, src.im, bytes);
        memmove(dst.re, src.re, bytes);
    } else {
        return src;
    }
    return {dst.re, dst.im};
}

template <Way way, template <class> class Place, class T>
[[gnu::always_inline]] inline Status complexTransform(Place<const T> src, Place<T> dst, const FftSpec<T>& spec, uint8_t* pBuffer) {
    FftTransform<T, Place>* const kernel = kernelOf<way, Place>(spec);
    const T scale = scaleOf<way>(spec);
    if (spec.stored)
        return withFftWork(spec, pBuffer, [=](const FftTables<T>& t, T* work) {
            kernel(t, t.order < kFirstLargeOrder<T> ? src : gathered(src, dst, int64_t{1} << t.order), dst, work, scale);
        });
    NearestRounding guard;
    kernel(spec.tables, src, dst, nullptr, scale);
    return StatusOk;
}

template <Way way, class Spec, class C> Status transform(const C* pSrc, C* pDst, const Spec* pSpec, uint8_t* pBuffer) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrc).ptr(pDst)) return s;
    using T = typename Spec::Real;
    return complexTransform<way>(Pairs<const T>{&pSrc->re}, Pairs<T>{&pDst->re}, *pSpec, pBuffer);
}

template <Way way, class Spec, class T> Status transform(const T* pSrcRe, const T* pSrcIm, T* pDstRe, T* pDstIm, const Spec* pSpec, uint8_t* pBuffer) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrcRe).ptr(pSrcIm).ptr(pDstRe).ptr(pDstIm)) return s;
    return complexTransform<way>(Parts<const T>{pSrcRe, pSrcIm}, Parts<T>{pDstRe, pDstIm}, *pSpec, pBuffer);
}

// Transforms of 1 to 8 reals, times scale, at once: at these lengths the call itself is what costs. x holds the samples, X the spectrum in Perm order.
template <class T> constexpr T kSqrtHalf = T(0.70710678118654752440);

template <int N, class T> void shortForward(const T* x, T* X) {
    if constexpr (N == 1) {
        X[0] = x[0];
    } else if constexpr (N == 2) {
        X[0] = x[0] + x[1];
        X[1] = x[0] - x[1];
    } else if constexpr (N == 4) {
        const T even = x[0] + x[2], odd = x[1] + x[3];
        X[0] = even + odd;
        X[1] = even - odd;
        X[2] = x[0] - x[2];
        X[3] = x[3] - x[1];
    } else {
        const T s0 = x[0] + x[4], s1 = x[1] + x[5], s2 = x[2] + x[6], s3 = x[3] + x[7];
        const T d0 = x[0] - x[4], d1 = x[1] - x[5], d2 = x[2] - x[6], d3 = x[3] - x[7];
        const T even = s0 + s2, odd = s1 + s3, p = (d1 - d3) * kSqrtHalf<T>, q = (d1 + d3) * kSqrtHalf<T>;
        X[0] = even + odd;
        X[1] = even - odd;
        X[2] = d0 + p;
        X[3] = -d2 - q;
        X[4] = s0 - s2;
        X[5] = s3 - s1;
        X[6] = d0 - p;
        X[7] = d2 - q;
    }
}

template <int N, class T> void shortInverse(const T* X, T* x) {
    if constexpr (N == 1) {
        x[0] = X[0];
    } else if constexpr (N == 2) {
        x[0] = X[0] + X[1];
        x[1] = X[0] - X[1];
    } else if constexpr (N == 4) {
        const T even = X[0] + X[1], odd = X[0] - X[1], re = X[2] + X[2], im = X[3] + X[3];
        x[0] = even + re;
        x[1] = odd - im;
        x[2] = even - re;
        x[3] = odd + im;
    } else {
        // Even samples from bins in twos, odd ones with the factors of X[1] and X[3] taken together.
        const T sum = X[0] + X[1], difference = X[0] - X[1], re2 = X[4] + X[4], im2 = X[5] + X[5];
        const T e0 = sum + re2, e1 = difference - im2, e2 = sum - re2, e3 = difference + im2;
        const T re = X[2] - X[6], im = X[3] + X[7], h = T(2) * kSqrtHalf<T>;
        const T o0 = T(2) * (X[2] + X[6]), o1 = (re - im) * h, o2 = T(2) * (X[7] - X[3]), o3 = (re + im) * -h;
        x[0] = e0 + o0;
        x[1] = e1 + o1;
        x[2] = e2 + o2;
        x[3] = e3 + o3;
        x[4] = e0 - o0;
        x[5] = e1 - o1;
        x[6] = e2 - o2;
        x[7] = e3 - o3;
    }
}

// Calls body with the length as a constant.
template <class Body> [[gnu::always_inline]] inline Status shortTransform(int n, const Body& body) {
    NearestRounding guard;
    switch (n) {
        case 1:
            body(std::integral_constant<int, 1>{});
            break;
        case 2:
            body(std::integral_constant<int, 2>{});
            break;
        case 4:
            body(std::integral_constant<int, 4>{});
            break;
        default:
            body(std::integral_constant<int, 8>{});
    }
    return StatusOk;
}

// A transform of the kernels in registers, at a multiple of 32 without aligning the frame for it, which the shortest calls would pay for: loads that cross what was
// stored a moment ago wait for it.
template <class T> struct OnStack {
    alignas(16) uint8_t bytes[kMostInRegisters<T> * sizeof(T) + kAlignmentRoom];
    T* at32() { return reinterpret_cast<T*>(workIn(bytes)); }
};

// The spectrum of the pairs' transform in z, to its packing. z may be pDst where the packing leaves the values between the ends in place.
template <class T> void pack(const FftKernels<T>& kernels, const FftTables<T>& t, const T* z, T* pDst, Packing to) {
    const int n = 2 << t.order;
    T first, last;
    kernels.spectrumOfReal(t, z, pDst + firstPair(to, n) - 2, &first, &last);
    pDst[0] = first;
    pDst[secondReal(to, n)] = last;
    if (to == Packing::Ccs) pDst[1] = pDst[n + 1] = 0;
}

template <class T> [[gnu::always_inline]] inline Status realForward(const T* pSrc, T* pDst, const FftSpec<T>& spec, uint8_t* pBuffer, Packing to) {
    if (spec.order <= 3) {
        const T f = spec.forwardScale;
        return shortTransform(1 << spec.order, [=](auto length) {
            constexpr int N = length;
            T X[N];
            shortForward<N>(pSrc, X);
#pragma GCC unroll 8
            for (int i = 2; i < N; ++i) pDst[i + firstPair(to, N) - 2] = X[i] * f;
            if constexpr (N > 1) pDst[secondReal(to, N)] = X[1] * f;
            if (to == Packing::Ccs) pDst[1] = 0;
            if (to == Packing::Ccs && N > 1) pDst[N + 1] = 0;
            pDst[0] = X[0] * f;
        });
    }
    const FftKernels<T>& kernels = *spec.kernels;
    const T scale = T(0.5) * spec.forwardScale;   // the recombination takes half the transform
    const auto kernel = kernelOf<Way::Forward, Pairs>(spec);
    const Pairs<const T> src{pSrc};
    if (!spec.stored) {
        NearestRounding guard;
        OnStack<T> area;
        T* const z = area.at32();
        kernel(spec.tables, src, {z}, nullptr, scale);
        pack(kernels, spec.tables, z, pDst, to);
        return StatusOk;
    }
    return withFftWork(spec, pBuffer, [=, &kernels](const FftTables<T>& t, T* work) {
        if (t.order < kFirstLargeOrder<T>) {
            kernel(t, src, {work}, pDst, scale);
            pack(kernels, t, work, pDst, to);
            return;
        }
        kernel(t, src, {pDst}, work, scale);
        pack(kernels, t, pDst, pDst, to == Packing::Pack ? Packing::Perm : to);
        if (to != Packing::Pack) return;
        const int n = 2 << t.order;
        const T last = pDst[1];
        memmove(pDst + 1, pDst + 2, size_t(n - 2) * sizeof(T));
        pDst[n - 1] = last;
    });
}

template <class T> [[gnu::always_inline]] inline Status realInverse(const T* pSrc, T* pDst, const FftSpec<T>& spec, uint8_t* pBuffer, Packing from) {
    const T scale = spec.inverseScale;
    if (spec.order <= 3)
        return shortTransform(1 << spec.order, [=](auto length) {
            constexpr int N = length;
            T X[N], x[N];
            X[0] = pSrc[0];
            if constexpr (N > 1) X[1] = pSrc[secondReal(from, N)];
#pragma GCC unroll 8
            for (int i = 2; i < N; ++i) X[i] = pSrc[i + firstPair(from, N) - 2];
            shortInverse<N>(X, x);
#pragma GCC unroll 8
            for (int i = 0; i < N; ++i) pDst[i] = x[i] * scale;
        });
    const auto kernel = kernelOf<Way::Inverse, Pairs>(spec);
    const auto pairsOfSpectrum = spec.kernels->pairsOfSpectrum;
    const int n = 2 << spec.tables.order;
    const T first = pSrc[0], last = pSrc[secondReal(from, n)];
    const T* const bins = pSrc + firstPair(from, n) - 2;
    if (!spec.stored) {
        NearestRounding guard;
        OnStack<T> area;
        T* const z = area.at32();
        pairsOfSpectrum(spec.tables, bins, first, last, z);
        kernel(spec.tables, {z}, {pDst}, nullptr, scale);
        return StatusOk;
    }
    return withFftWork(spec, pBuffer, [=](const FftTables<T>& t, T* work) {
        if (t.order < kFirstLargeOrder<T>) {
            pairsOfSpectrum(t, bins, first, last, work);
            kernel(t, {work}, {pDst}, work, scale);
            return;
        }
        const bool shifted = from == Packing::Pack;
        if (shifted) memmove(pDst + 2, pSrc + 1, size_t(n - 2) * sizeof(T));
        pairsOfSpectrum(t, shifted ? pDst : pSrc, first, last, pDst);
        kernel(t, {pDst}, {pDst}, work, scale);
    });
}

template <class Spec, class T = typename Spec::Real> Status forward(const T* pSrc, T* pDst, const Spec* pSpec, uint8_t* pBuffer, Packing to) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrc).ptr(pDst)) return s;
    return realForward<T>(pSrc, pDst, *pSpec, pBuffer, to);
}
template <class Spec, class T = typename Spec::Real> Status inverse(const T* pSrc, T* pDst, const Spec* pSpec, uint8_t* pBuffer, Packing from) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrc).ptr(pDst)) return s;
    return realInverse<T>(pSrc, pDst, *pSpec, pBuffer, from);
}

}   // namespace

// With a work area there is nothing to fail.
template <Way way, class T> void transformBy(const FftSpec<T>& spec, Pairs<const T> src, Pairs<T> dst, uint8_t* work) {
    complexTransform<way>(src, dst, spec, work);
}
template <Way way, class T> void transformBy(const FftSpec<T>& spec, Parts<const T> src, Parts<T> dst, uint8_t* work) {
    complexTransform<way>(src, dst, spec, work);
}
template <class T> void forwardBy(const FftSpec<T>& spec, const T* src, T* dst, Packing to, uint8_t* work) { realForward(src, dst, spec, work, to); }
template <class T> void inverseBy(const FftSpec<T>& spec, const T* src, T* dst, Packing from, uint8_t* work) { realInverse(src, dst, spec, work, from); }

#define TEVS_FLOAT_FFT(T)                                                                           \
    template SpecSizes fftSizes<T>(bool real, int order);                                           \
    template uint64_t fftBytes<T>(bool real, int order, Places);                                    \
    template void buildFft(FftSpec<T>* spec, bool real, int order, int flag, Places);               \
    template void transformBy<Way::Forward>(const FftSpec<T>&, Pairs<const T>, Pairs<T>, uint8_t*); \
    template void transformBy<Way::Inverse>(const FftSpec<T>&, Pairs<const T>, Pairs<T>, uint8_t*); \
    template void transformBy<Way::Forward>(const FftSpec<T>&, Parts<const T>, Parts<T>, uint8_t*); \
    template void transformBy<Way::Inverse>(const FftSpec<T>&, Parts<const T>, Parts<T>, uint8_t*); \
    template void forwardBy(const FftSpec<T>&, const T*, T*, Packing, uint8_t*);                    \
    template void inverseBy(const FftSpec<T>&, const T*, T*, Packing, uint8_t*);
TEVS_FLOAT_FFT(float)
TEVS_FLOAT_FFT(double)
#undef TEVS_FLOAT_FFT

}   // namespace tevs

using namespace tevs;

Status tevsFFTGetSize_C_32fc(int order, int, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    return getSize<FFTSpec_C_32fc>(order, hint, pSpecSize, pSpecBufferSize, pBufferSize);
}
Status tevsFFTGetSize_C_32f(int order, int, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    return getSize<FFTSpec_C_32f>(order, hint, pSpecSize, pSpecBufferSize, pBufferSize);
}
Status tevsFFTGetSize_R_32f(int order, int, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    return getSize<FFTSpec_R_32f>(order, hint, pSpecSize, pSpecBufferSize, pBufferSize);
}
Status tevsFFTGetSize_C_64fc(int order, int, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    return getSize<FFTSpec_C_64fc>(order, hint, pSpecSize, pSpecBufferSize, pBufferSize);
}
Status tevsFFTGetSize_C_64f(int order, int, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    return getSize<FFTSpec_C_64f>(order, hint, pSpecSize, pSpecBufferSize, pBufferSize);
}
Status tevsFFTGetSize_R_64f(int order, int, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    return getSize<FFTSpec_R_64f>(order, hint, pSpecSize, pSpecBufferSize, pBufferSize);
}
Status tevsFFTInit_C_32fc(FFTSpec_C_32fc** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    return init(ppSpec, order, flag, hint, pMemSpec, pMemInit);
}
Status tevsFFTInit_C_32f(FFTSpec_C_32f** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    return init(ppSpec, order, flag, hint, pMemSpec, pMemInit);
}
Status tevsFFTInit_R_32f(FFTSpec_R_32f** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    return init(ppSpec, order, flag, hint, pMemSpec, pMemInit);
}
Status tevsFFTInit_C_64fc(FFTSpec_C_64fc** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    return init(ppSpec, order, flag, hint, pMemSpec, pMemInit);
}
Status tevsFFTInit_C_64f(FFTSpec_C_64f** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    return init(ppSpec, order, flag, hint, pMemSpec, pMemInit);
}
Status tevsFFTInit_R_64f(FFTSpec_R_64f** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    return init(ppSpec, order, flag, hint, pMemSpec, pMemInit);
}
Status tevsFFTInitAlloc_C_32fc(FFTSpec_C_32fc** ppSpec, int order, int flag, int hint) { return initAlloc(ppSpec, order, flag, hint); }
Status tevsFFTInitAlloc_C_32f(FFTSpec_C_32f** ppSpec, int order, int flag, int hint) { return initAlloc(ppSpec, order, flag, hint); }
Status tevsFFTInitAlloc_R_32f(FFTSpec_R_32f** ppSpec, int order, int flag, int hint) { return initAlloc(ppSpec, order, flag, hint); }
Status tevsFFTInitAlloc_C_64fc(FFTSpec_C_64fc** ppSpec, int order, int flag, int hint) { return initAlloc(ppSpec, order, flag, hint); }
Status tevsFFTInitAlloc_C_64f(FFTSpec_C_64f** ppSpec, int order, int flag, int hint) { return initAlloc(ppSpec, order, flag, hint); }
Status tevsFFTInitAlloc_R_64f(FFTSpec_R_64f** ppSpec, int order, int flag, int hint) { return initAlloc(ppSpec, order, flag, hint); }
Status tevsFFTFree_C_32fc(FFTSpec_C_32fc* pSpec) { return freeSpec(pSpec); }
Status tevsFFTFree_C_32f(FFTSpec_C_32f* pSpec) { return freeSpec(pSpec); }
Status tevsFFTFree_R_32f(FFTSpec_R_32f* pSpec) { return freeSpec(pSpec); }
Status tevsFFTFree_C_64fc(FFTSpec_C_64fc* pSpec) { return freeSpec(pSpec); }
Status tevsFFTFree_C_64f(FFTSpec_C_64f* pSpec) { return freeSpec(pSpec); }
Status tevsFFTFree_R_64f(FFTSpec_R_64f* pSpec) { return freeSpec(pSpec); }
Status tevsFFTGetBufSize_C_32fc(const FFTSpec_C_32fc* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsFFTGetBufSize_C_32f(const FFTSpec_C_32f* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsFFTGetBufSize_R_32f(const FFTSpec_R_32f* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsFFTGetBufSize_C_64fc(const FFTSpec_C_64fc* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsFFTGetBufSize_C_64f(const FFTSpec_C_64f* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsFFTGetBufSize_R_64f(const FFTSpec_R_64f* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }

Status tevsFFTFwd_CToC_32fc(const Complex32f* pSrc, Complex32f* pDst, const FFTSpec_C_32fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Forward>(pSrc, pDst, pSpec, pBuffer);
}
Status tevsFFTFwd_CToC_32fc_I(Complex32f* pSrcDst, const FFTSpec_C_32fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Forward>(pSrcDst, pSrcDst, pSpec, pBuffer);
}
Status tevsFFTInv_CToC_32fc(const Complex32f* pSrc, Complex32f* pDst, const FFTSpec_C_32fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Inverse>(pSrc, pDst, pSpec, pBuffer);
}
Status tevsFFTInv_CToC_32fc_I(Complex32f* pSrcDst, const FFTSpec_C_32fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Inverse>(pSrcDst, pSrcDst, pSpec, pBuffer);
}
Status tevsFFTFwd_CToC_32f(const float* pSrcRe, const float* pSrcIm, float* pDstRe, float* pDstIm, const FFTSpec_C_32f* pSpec, uint8_t* pBuffer) {
    return transform<Way::Forward>(pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, pBuffer);
}
Status tevsFFTFwd_CToC_32f_I(float* pSrcDstRe, float* pSrcDstIm, const FFTSpec_C_32f* pSpec, uint8_t* pBuffer) {
    return transform<Way::Forward>(pSrcDstRe, pSrcDstIm, pSrcDstRe, pSrcDstIm, pSpec, pBuffer);
}
Status tevsFFTInv_CToC_32f(const float* pSrcRe, const float* pSrcIm, float* pDstRe, float* pDstIm, const FFTSpec_C_32f* pSpec, uint8_t* pBuffer) {
    return transform<Way::Inverse>(pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, pBuffer);
}
Status tevsFFTInv_CToC_32f_I(float* pSrcDstRe, float* pSrcDstIm, const FFTSpec_C_32f* pSpec, uint8_t* pBuffer) {
    return transform<Way::Inverse>(pSrcDstRe, pSrcDstIm, pSrcDstRe, pSrcDstIm, pSpec, pBuffer);
}
Status tevsFFTFwd_CToC_64fc(const Complex64f* pSrc, Complex64f* pDst, const FFTSpec_C_64fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Forward>(pSrc, pDst, pSpec, pBuffer);
}
Status tevsFFTFwd_CToC_64fc_I(Complex64f* pSrcDst, const FFTSpec_C_64fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Forward>(pSrcDst, pSrcDst, pSpec, pBuffer);
}
Status tevsFFTInv_CToC_64fc(const Complex64f* pSrc, Complex64f* pDst, const FFTSpec_C_64fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Inverse>(pSrc, pDst, pSpec, pBuffer);
}
Status tevsFFTInv_CToC_64fc_I(Complex64f* pSrcDst, const FFTSpec_C_64fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Inverse>(pSrcDst, pSrcDst, pSpec, pBuffer);
}
Status tevsFFTFwd_CToC_64f(const double* pSrcRe, const double* pSrcIm, double* pDstRe, double* pDstIm, const FFTSpec_C_64f* pSpec, uint8_t* pBuffer) {
    return transform<Way::Forward>(pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, pBuffer);
}
Status tevsFFTFwd_CToC_64f_I(double* pSrcDstRe, double* pSrcDstIm, const FFTSpec_C_64f* pSpec, uint8_t* pBuffer) {
    return transform<Way::Forward>(pSrcDstRe, pSrcDstIm, pSrcDstRe, pSrcDstIm, pSpec, pBuffer);
}
Status tevsFFTInv_CToC_64f(const double* pSrcRe, const double* pSrcIm, double* pDstRe, double* pDstIm, const FFTSpec_C_64f* pSpec, uint8_t* pBuffer) {
    return transform<Way::Inverse>(pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, pBuffer);
}
Status tevsFFTInv_CToC_64f_I(double* pSrcDstRe, double* pSrcDstIm, const FFTSpec_C_64f* pSpec, uint8_t* pBuffer) {
    return transform<Way::Inverse>(pSrcDstRe, pSrcDstIm, pSrcDstRe, pSrcDstIm, pSpec, pBuffer);
}

Status tevsFFTFwd_RToCCS_32f(const float* pSrc, float* pDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return forward(pSrc, pDst, pSpec, pBuffer, Packing::Ccs);
}
Status tevsFFTFwd_RToCCS_32f_I(float* pSrcDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) { return forward(pSrcDst, pSrcDst, pSpec, pBuffer, Packing::Ccs); }
Status tevsFFTFwd_RToPack_32f(const float* pSrc, float* pDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return forward(pSrc, pDst, pSpec, pBuffer, Packing::Pack);
}
Status tevsFFTFwd_RToPack_32f_I(float* pSrcDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return forward(pSrcDst, pSrcDst, pSpec, pBuffer, Packing::Pack);
}
Status tevsFFTFwd_RToPerm_32f(const float* pSrc, float* pDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return forward(pSrc, pDst, pSpec, pBuffer, Packing::Perm);
}
Status tevsFFTFwd_RToPerm_32f_I(float* pSrcDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return forward(pSrcDst, pSrcDst, pSpec, pBuffer, Packing::Perm);
}
Status tevsFFTInv_CCSToR_32f(const float* pSrc, float* pDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return inverse(pSrc, pDst, pSpec, pBuffer, Packing::Ccs);
}
Status tevsFFTInv_CCSToR_32f_I(float* pSrcDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) { return inverse(pSrcDst, pSrcDst, pSpec, pBuffer, Packing::Ccs); }
Status tevsFFTInv_PackToR_32f(const float* pSrc, float* pDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return inverse(pSrc, pDst, pSpec, pBuffer, Packing::Pack);
}
Status tevsFFTInv_PackToR_32f_I(float* pSrcDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return inverse(pSrcDst, pSrcDst, pSpec, pBuffer, Packing::Pack);
}
Status tevsFFTInv_PermToR_32f(const float* pSrc, float* pDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return inverse(pSrc, pDst, pSpec, pBuffer, Packing::Perm);
}
Status tevsFFTInv_PermToR_32f_I(float* pSrcDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return inverse(pSrcDst, pSrcDst, pSpec, pBuffer, Packing::Perm);
}
Status tevsFFTFwd_RToCCS_64f(const double* pSrc, double* pDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return forward(pSrc, pDst, pSpec, pBuffer, Packing::Ccs);
}
Status tevsFFTFwd_RToCCS_64f_I(double* pSrcDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return forward(pSrcDst, pSrcDst, pSpec, pBuffer, Packing::Ccs);
}
Status tevsFFTFwd_RToPack_64f(const double* pSrc, double* pDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return forward(pSrc, pDst, pSpec, pBuffer, Packing::Pack);
}
Status tevsFFTFwd_RToPack_64f_I(double* pSrcDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return forward(pSrcDst, pSrcDst, pSpec, pBuffer, Packing::Pack);
}
Status tevsFFTFwd_RToPerm_64f(const double* pSrc, double* pDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return forward(pSrc, pDst, pSpec, pBuffer, Packing::Perm);
}
Status tevsFFTFwd_RToPerm_64f_I(double* pSrcDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return forward(pSrcDst, pSrcDst, pSpec, pBuffer, Packing::Perm);
}
Status tevsFFTInv_CCSToR_64f(const double* pSrc, double* pDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return inverse(pSrc, pDst, pSpec, pBuffer, Packing::Ccs);
}
Status tevsFFTInv_CCSToR_64f_I(double* pSrcDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return inverse(pSrcDst, pSrcDst, pSpec, pBuffer, Packing::Ccs);
}
Status tevsFFTInv_PackToR_64f(const double* pSrc, double* pDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return inverse(pSrc, pDst, pSpec, pBuffer, Packing::Pack);
}
Status tevsFFTInv_PackToR_64f_I(double* pSrcDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return inverse(pSrcDst, pSrcDst, pSpec, pBuffer, Packing::Pack);
}
Status tevsFFTInv_PermToR_64f(const double* pSrc, double* pDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return inverse(pSrc, pDst, pSpec, pBuffer, Packing::Perm);
}
Status tevsFFTInv_PermToR_64f_I(double* pSrcDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return inverse(pSrcDst, pSrcDst, pSpec, pBuffer, Packing::Perm);
}
