// Convolution and correlation of vectors that are given whole: directly, or by transforms from fixed sizes on.
//
// Either is the sum y[n] = sum over j of t[j] x[n+j] of taps t over a vector x that is 0 outside its elements. Correlation takes its first source as the taps
// (conjugated), convolution the shorter one in reversed order.
#include "tevs/convolution.h"

#include <limits.h>
#include <omp.h>
#include <string.h>

#include <algorithm>
#include <type_traits>

#include "core/args.h"
#include "core/complex.h"
#include "core/memory.h"
#include "core/parallel.h"
#include "core/rounding.h"
#include "core/scale.h"
#include "filter/convolution.table.h"
#include "filter/fir_kernels.h"
#include "filter/overlap_save.h"
#include "transform/float_fft.h"
#include "vector/arithmetic.table.h"
#include "vector/dotprod.table.h"
#include "vector/movement.table.h"
#include "vector/samples.h"

namespace tevs {
namespace {

// ---- where transforms begin -----------------------------------------------------------------------------------------------------------------
//
// Fixed, since results differ in rounding between the methods.

constexpr int kLongestDirect = 511;      // outputs of a convolution that is direct whatever its inputs
constexpr int kFewestTransformed = 64;   // samples of the shorter input of one by transforms
constexpr int kParallelAbove = 4096;     // samples of the longer one
// Outputs of a cross-correlation, times how much shorter the shorter input is, up to which it is direct.
template <class D> constexpr int kMostDirectLags = std::is_same_v<D, Complex32f> ? 255 : sizeof(Scalar<D>) == 8 ? 511 : 383;
// Lags of an auto-correlation by transforms.
template <class D> constexpr int kFewestLags = std::is_same_v<D, Complex32f> ? 152 : std::is_same_v<D, Complex64f> ? 368 : 856;

// The type that transforms compute a type's sums in.
template <class D> using Computed = std::conditional_t<std::is_same_v<D, int16_t>, float, D>;

// ---- what kernels there are for a type ------------------------------------------------------------------------------------------------------

// n elements in reversed order, from src to dst, which lie apart or are the same.
template <class T> void flip(const T* src, T* dst, ptrdiff_t n) {
    if constexpr (sizeof(T) == 2) movement->flip16(src, dst, n);
    if constexpr (sizeof(T) == 4) movement->flip32(src, dst, n);
    if constexpr (sizeof(T) == 8) movement->flip64(src, dst, n);
}
template <class T> void flipInPlace(T* p, ptrdiff_t n) {
    if constexpr (sizeof(T) > 8)
        std::reverse(p, p + n);
    else
        flip(p, p, n);
}
template <class T> void conjugate(const T* src, T* dst, ptrdiff_t n) {
    if constexpr (std::is_same_v<T, Complex32f>) movement->conj32(src, dst, n);
    if constexpr (std::is_same_v<T, Complex64f>) movement->conj64(src, dst, n);
}
// Of scalars, as the sums, products and quotients go that take complex ones by their parts.
void addTo(const float* x, float* y, ptrdiff_t n) { arithmetic->add32f(x, y, y, n); }
void addTo(const double* x, double* y, ptrdiff_t n) { arithmetic->add64f(x, y, y, n); }
void multiply(float c, float* y, ptrdiff_t n) { arithmetic->mulC32f(y, {c, c}, y, n); }
void multiply(double c, double* y, ptrdiff_t n) { arithmetic->mulC64f(y, {c, c}, y, n); }
void divide(const float* divisor, float* y, ptrdiff_t n) { arithmetic->div32f(y, divisor, y, n); }
void divide(const double* divisor, double* y, ptrdiff_t n) { arithmetic->div64f(y, divisor, y, n); }
// y times the conjugate of h, n scalars in pairs.
void multiplyConjugate(const float* h, float* y, ptrdiff_t n) { arithmetic->mulConj32fc(y, h, y, n); }
void multiplyConjugate(const double* h, double* y, ptrdiff_t n) { arithmetic->mulConj64fc(y, h, y, n); }

template <class T> auto& fewOf(const ConvolutionKernels* c) {
    if constexpr (std::is_same_v<T, float>) return c->few32f;
    if constexpr (std::is_same_v<T, double>) return c->few64f;
    if constexpr (std::is_same_v<T, Complex32f>) return c->few32fc;
    if constexpr (std::is_same_v<T, Complex64f>) return c->few64fc;
}

// out[n] = sum over j = 0 .. tapsLen-1 of taps[j] * in[n+j]
template <class T> void sums(const T* in, const T* taps, int tapsLen, T* out, int len) {
    const auto& few = fewOf<T>(convolution);
    if (len > few.most) return kernelOf<T>(fir).block(in, taps, tapsLen, out, len);
    if (len >= few.least) return few.kernel(in, taps, 1, tapsLen, out, len);
    for (int n = 0; n < len; ++n) out[n] = kernelOf<T>(fir).dot(in + n, taps, tapsLen);
}

// ---- directly -------------------------------------------------------------------------------------------------------------------------------

constexpr int kPiece = kRun<int16_t>;   // taps that are copied at a time
constexpr int kTile = 512;              // outputs that more taps than a piece are summed for at a time, and the most that reach past the ends of x
constexpr int kFewShorts = 15;          // outputs of 16-bit sums that are dot products

// t[j], from t[0] = h[0] on, conjugated, or from h[len-1] on.
template <class T> struct Taps {
    const T* h;
    int len;
    bool reversed;
    // t[j] .. t[j+n-1], where they lie or in room.
    const T* piece(int j, int n, T* room) const {
        if constexpr (kComplex<T>) {
            conjugate(h + j, room, n);
            return room;
        }
        if (!reversed) return h + j;
        flip(h + (len - j - n), room, n);
        return room;
    }
};

// x[at] .. x[at+n-1], where they lie or, where some are outside x, in room.
template <class T> const T* window(const T* x, int xLen, int64_t at, int n, T* room) {
    if (at >= 0 && at + n <= xLen) return x + at;
    const int from = int(std::clamp<int64_t>(-at, 0, n)), to = int(std::clamp<int64_t>(xLen - at, from, n));
    memset(room, 0, size_t(from) * sizeof(T));
    if (from < to) memcpy(room + from, x + (at + from), size_t(to - from) * sizeof(T));
    memset(room + to, 0, size_t(n - to) * sizeof(T));
    return room;
}

// Calls body(i, n, at, from, to) for tiles i .. i+n-1 of `count` outputs, the first of which is y[at], 1 - tapsLen <= at < xLen: taps outside from .. to-1 meet
// nothing of x. tapsLen <= xLen.
//
// Towards the ends of x fewer and fewer taps do. There tiles are small, so that hardly more than these are summed; few taps are not worth it.
template <class Body> void forEachTile(int tapsLen, int xLen, int64_t first, int count, int most, Body body) {
    const int edge = tapsLen <= 64 ? kTile : tapsLen <= 512 ? 64 : 128;
    for (int i = 0, n; i < count; i += n) {
        const int64_t at = first + i, whole = int64_t{xLen} - tapsLen + 1 - at;   // outputs from there on that meet all taps
        n = int(std::min<int64_t>(count - i, at >= 0 && whole > edge ? std::min<int64_t>(whole, most) : edge));
        body(i, n, at, int(std::max<int64_t>(0, 1 - n - at)), int(std::min<int64_t>(tapsLen, xLen - at)));
    }
}

// out[i] = y[first+i] for 0 <= i < count.
template <class T> void correlate(const Taps<T>& taps, const T* x, int xLen, int64_t first, int count, T* out) {
    T room[kPiece], padded[kTile + kPiece], part[kTile];
    const bool atOnce = taps.len <= kPiece, inside = first >= 0 && first <= int64_t{xLen} - taps.len + 1 - count;
    const auto& few = fewOf<T>(convolution);
    if (!kComplex<T> && inside && count >= few.least && count <= few.most)   // which takes taps as they lie
        return few.kernel(x + first, taps.reversed ? taps.h + (taps.len - 1) : taps.h, taps.reversed ? -1 : 1, taps.len, out, count);
    const T* const all = atOnce ? taps.piece(0, taps.len, room) : nullptr;
    if (atOnce && inside) return sums(x + first, all, taps.len, out, count);
    forEachTile(taps.len, xLen, first, count, atOnce ? INT_MAX : kTile, [&](int i, int n, int64_t at, int from, int to) {
        for (int j = from, m; j < to; j += m) {
            m = std::min(to - j, kPiece);
            const T* const t = atOnce ? all + j : taps.piece(j, m, room);
            const T* const in = window(x, xLen, at + j, n + m - 1, padded);
            sums(in, t, m, j == from ? out + i : part, n);
            if (j > from) addTo(partsOf(part), partsOf(out + i), partCount<T>(n));
        }
    });
}

// Taps by digits, a 0 behind them: the kernel takes an even number.
struct ShortTaps {
    int16_t lower[kPiece + 1], upper[kPiece + 1];
    int digits;
    void set(const int16_t* taps, int n) {
        int64_t magnitudes = 0;
        for (int j = 0; j < n; ++j) magnitudes += taps[j] < 0 ? -taps[j] : taps[j];
        digits = magnitudes <= kMostAtOnce ? 1 : 2;
        if (digits == 1)
            memcpy(lower, taps, size_t(n) * sizeof *taps);
        else
            convolution->digits(taps, lower, upper, n);
        lower[n] = upper[n] = 0;
    }
};
static_assert(kPiece % 2 == 0);   // what is added to an odd number of taps fits behind the samples too

// The same, exactly: finish(sums, i, n) takes those of a tile in 64 bits.
template <class Finish> void correlate(const Taps<int16_t>& taps, const int16_t* x, int xLen, int64_t first, int count, Finish finish) {
    int16_t room[kPiece], padded[kTile + kPiece];
    int32_t part[kTile];
    int64_t total[kTile];
    ShortTaps pieces;
    const bool atOnce = taps.len <= kPiece;
    const int16_t* const all = atOnce ? taps.piece(0, taps.len, room) : nullptr;
    if (atOnce && count > kFewShorts) pieces.set(all, taps.len);
    forEachTile(taps.len, xLen, first, count, kTile, [&](int i, int n, int64_t at, int from, int to) {
        memset(total, 0, size_t(n) * sizeof *total);
        for (int j = from, m; j < to; j += m) {
            m = std::min(to - j, kPiece);
            const int16_t* const t = atOnce ? all + j : taps.piece(j, m, room);
            const auto dot = [&](int k) {
                const int64_t begin = std::max<int64_t>(j, -(at + k)), end = std::min<int64_t>(j + m, xLen - at - k);
                if (begin < end) total[k] += dotProd->real16s(x + (at + k + begin), t + (begin - j), int(end - begin));
            };
            if (count <= kFewShorts) {
                for (int k = 0; k < n; ++k) dot(k);
                continue;
            }
            if (!atOnce) pieces.set(t, m);
            const int at0 = atOnce ? j : 0, even = m + m % 2;
            const int16_t* const in = window(x, xLen, at + j, n + even - 1, padded);
            for (int d = 0; d < pieces.digits; ++d) {
                fir->real16s.block(in, (d ? pieces.upper : pieces.lower) + at0, even, part, n);
                fir->addShifted(part, 8 * d, total, n);
            }
        }
        finish(total, i, n);
    });
}

// ---- results --------------------------------------------------------------------------------------------------------------------------------

enum class Norm { None, ByLength, ByOverlap };

// How sums become results of type D: divided by a length, or by the number of their products, and scaled.
template <class D> struct Results {
    D* pDst;
    int scaleFactor = 0;
    Norm norm = Norm::None;
    int srcLen = 0;

    // Of sums number i to i+n-1. Those of floats may be where the results go.
    template <class S> void operator()(const S* y, int i, int n) const {
        if constexpr (std::is_same_v<S, D>) {
            if (y != pDst + i) memcpy(pDst + i, y, size_t(n) * sizeof(D));
            using T = Scalar<D>;
            if (norm == Norm::ByLength) multiply(T(1) / T(srcLen), partsOf(pDst + i), partCount<D>(n));
            if (norm == Norm::ByOverlap)
                inBlocks(i, n, [&](int at, int count, const T* divisors) { divide(divisors, partsOf(pDst + at), partCount<D>(count)); });
        } else if (norm == Norm::None) {
            narrowParts(y, pDst + i, n, scaleFactor);
        } else {
            // Rounded to integers once, from quotients in double precision.
            inBlocks(i, n, [&](int at, int count, const double* divisors) {
                double quotient[kBlock];
                for (int k = 0; k < count; ++k) quotient[k] = toDouble(y[at - i + k]) / divisors[k];
                narrowParts(quotient, pDst + at, count, scaleFactor);
            });
        }
    }

private:
    static constexpr int kBlock = 256;
    // body(at, count, divisors) for blocks of i .. i+n-1, with a divisor for each part.
    template <class Body> void inBlocks(int i, int n, Body body) const {
        using T = std::conditional_t<std::is_same_v<D, int16_t>, double, Scalar<D>>;
        T divisors[kBlock * kParts<D>];
        for (int at = i, count; at < i + n; at += count) {
            count = std::min(i + n - at, kBlock);
            for (int k = 0; k < count * kParts<D>; ++k) divisors[k] = T(norm == Norm::ByLength ? srcLen : srcLen - at - k / kParts<D>);
            body(at, count, divisors);
        }
    }
    static double toDouble(float y) { return y; }
    // By halves, which are exact: the only conversion of 64 bits in 32-bit code is the extended unit's, and rounds as that is set.
    static double toDouble(int64_t y) { return double(int32_t(y >> 32)) * 0x1p32 + double(uint32_t(y)); }
};

// The outputs first .. first+count-1 of a sum over taps, directly.
template <class D> void direct(const Taps<D>& taps, const D* x, int xLen, int64_t first, int count, const Results<D>& results) {
    if constexpr (std::is_same_v<D, int16_t>) {
        correlate(taps, x, xLen, first, count, results);
    } else {
        correlate(taps, x, xLen, first, count, results.pDst);
        results(results.pDst, 0, count);
    }
}

// ---- by transforms --------------------------------------------------------------------------------------------------------------------------

// What a record of that order would answer: there is none beyond the largest, and none in memory whose size an int does not hold.
template <class T> Status possible(int order) {
    if (order > kMaxOrder) return StatusFftOrder;
    return fftSizes<Scalar<T>>(!kComplex<T>, order).fitInt() ? StatusOk : StatusNoMemory;
}

// A transform of the least power of two not below `points`, and vectors of its length, for one call.
template <class T> class Transform {
public:
    // Calls body(*this) where there is memory.
    template <class Body> static Status with(int64_t points, int vectors, Body body) {
        int order = 1;
        while (int64_t{1} << order < points) ++order;
        if (const Status s = possible<T>(order)) return s;
        const Scratch record(allocate<unsigned char>(FloatFft<T>::bytes(order)));
        if (!record) return StatusNoMemory;
        Transform t(FloatFft<T>::build(record.get(), order, ScaleInvByN), size_t{1} << order);
        const uint64_t each = roundUp16(t.n_ * sizeof(T));
        const Scratch memory(allocate<unsigned char>(uint64_t(vectors) * each + t.fft_->workBytes()));
        if (!memory) return StatusNoMemory;
        t.vectors_ = static_cast<T*>(memory.get());
        t.work_ = static_cast<unsigned char*>(memory.get()) + uint64_t(vectors) * each;
        body(t);
        return StatusOk;
    }

    T* vector(int i) const { return vectors_ + size_t(i) * n_; }
    // The spectrum of `at` zeros, the vector, and zeros behind it.
    template <class S> T* spectrum(int i, const S* x, int len, size_t at = 0) const {
        T* const y = vector(i);
        memset(y, 0, at * sizeof(T));
        toStored(x, y + at, len);
        memset(y + at + len, 0, (n_ - at - size_t(len)) * sizeof(T));
        fft_->forward(y, y, work_);
        return y;
    }
    void multiply(const T* h, T* x) const { fft_->multiply(h, x); }
    // x times the conjugate of h, which may be x.
    void multiplyConjugate(const T* h, T* x) const {
        constexpr ptrdiff_t alone = kComplex<T> ? 0 : 2;   // in Perm order two values are real
        const Scalar<T>* const from = partsOf(h);
        Scalar<T>* const to = partsOf(x);
        for (ptrdiff_t k = 0; k < alone; ++k) to[k] *= from[k];
        if (const ptrdiff_t pairs = ptrdiff_t(n_) * kParts<T> - alone; pairs > 0) tevs::multiplyConjugate(from + alone, to + alone, pairs);
    }
    T* inverse(T* x) const {
        fft_->inverse(x, x, work_);
        return x;
    }

private:
    Transform(FloatFft<T>* fft, size_t n) : fft_(fft), n_(n) {}
    FloatFft<T>* fft_;
    size_t n_;
    T* vectors_ = nullptr;
    void* work_ = nullptr;
};

// In blocks of four times the shorter input, or of up to eight times.
template <class D> Status convolveInBlocks(const D* pShort, int shortLen, const D* pLong, int longLen, int scaleFactor, D* pDst) {
    using T = Computed<D>;
    int order = 2;
    while (int64_t{1} << order < 2 * int64_t{shortLen}) ++order;
    if (const Status s = possible<T>(++order)) return s;
    const int team = longLen > kParallelAbove ? teamSize(omp_get_max_threads()) : 1;
    OverlapSave<T>* const o = OverlapSave<T>::create(shortLen, order, team);
    if (!o) return StatusNoMemory;
    o->setTaps(pShort);
    const auto load = [=](T* to, ptrdiff_t n, int m) {
        const int inside = int(std::clamp<ptrdiff_t>(longLen - n, 0, m));
        if (inside > 0) toStored(pLong + n, to, inside);
        memset(to + inside, 0, size_t(m - inside) * sizeof(T));
    };
    const auto store = [=](const T* y, ptrdiff_t n, int m) { fromStored(y, pDst + n, m, scaleFactor); };
    o->filter(nullptr, shortLen - 1 + longLen, team, load, store);
    OverlapSave<T>::destroy(o);
    return StatusOk;
}

template <class D> Status convolveAtOnce(const D* pShort, int shortLen, const D* pLong, int longLen, int scaleFactor, D* pDst) {
    const int dstLen = shortLen - 1 + longLen;
    return Transform<Computed<D>>::with(dstLen, 2, [=](const auto& t) {
        auto* const y = t.spectrum(0, pLong, longLen);
        t.multiply(t.spectrum(1, pShort, shortLen), y);
        fromStored(t.inverse(y), pDst, dstLen, scaleFactor);
    });
}

// ---- frames ---------------------------------------------------------------------------------------------------------------------------------

template <class D> Status convolve(const D* pSrc1, int len1, const D* pSrc2, int len2, D* pDst, int scaleFactor = 0) {
    const bool fits = int64_t{len1} + len2 - 1 <= INT_MAX;
    if (Status s = Args().ptr(pSrc1).ptr(pSrc2).ptr(pDst).len(len1).len(len2).require(fits, StatusBadSize)) return s;
    NearestRounding guard;
    const bool swap = len1 > len2;
    const D *const pShort = swap ? pSrc2 : pSrc1, *const pLong = swap ? pSrc1 : pSrc2;
    const int shortLen = std::min(len1, len2), longLen = std::max(len1, len2), dstLen = len1 - 1 + len2;
    if (dstLen > kLongestDirect && shortLen >= kFewestTransformed) {
        const auto byTransforms = longLen / 3 >= shortLen ? convolveInBlocks<D> : convolveAtOnce<D>;
        return byTransforms(pShort, shortLen, pLong, longLen, scaleFactor, pDst);
    }
    direct<D>({pShort, shortLen, true}, pLong, longLen, 1 - shortLen, dstLen, {pDst, scaleFactor});
    return StatusOk;
}

// What an operation's support makes of the outputs first .. first+count-1: zeros, then `inside` of low .. high from number `lead` on, and zeros again.
struct Support {
    int lead, inside;
    Support(int64_t first, int count, int64_t low, int64_t high)
        : lead(int(std::clamp<int64_t>(low - first, 0, count))), inside(int(std::clamp<int64_t>(high + 1 - first, lead, count)) - lead) {}
    template <class D> void zeroRest(D* pDst, int count) const {
        if (inside == count) return;
        memset(pDst, 0, size_t(lead) * sizeof(D));
        memset(pDst + lead + inside, 0, size_t(count - lead - inside) * sizeof(D));
    }
};

Status convolveBiased(const float* pSrc1, int len1, const float* pSrc2, int len2, float* pDst, int dstLen, int bias) {
    if (Status s = Args().ptr(pSrc1).ptr(pSrc2).ptr(pDst).len(len1).len(len2).len(dstLen)) return s;
    NearestRounding guard;
    const Support support(bias, dstLen, 0, int64_t{len1} + len2 - 2);
    support.zeroRest(pDst, dstLen);
    if (support.inside == 0) return StatusOk;
    const int64_t first = int64_t{bias} + support.lead;
    if (len1 > len2) {
        std::swap(pSrc1, pSrc2);
        std::swap(len1, len2);
    }
    direct<float>({pSrc1, len1, true}, pSrc2, len2, first + 1 - len1, support.inside, {pDst + support.lead});
    return StatusOk;
}

// In the scope of the frame's rounding mode, which the quotient hangs on: the numbers are pinned there.
template <class D> bool byTransform(int lags, int len1, int len2) {
    pin(lags), pin(len1), pin(len2);
    const float m = float(std::min(len1, len2)), ratio = float(lags) * m / float(std::max(len1, len2));
    return ratio >= float(kMostDirectLags<D> + 1);   // that is, cut to an integer, above
}

template <class D> Status crossCorrelate(const D* pSrc1, int len1, const D* pSrc2, int len2, D* pDst, int dstLen, int lowLag, int scaleFactor = 0) {
    if (Status s = Args().ptr(pSrc1).ptr(pSrc2).ptr(pDst).len(len1).len(len2).len(dstLen)) return s;
    NearestRounding guard;
    const Support support(lowLag, dstLen, 1 - int64_t{len1}, int64_t{len2} - 1);
    const int64_t first = int64_t{lowLag} + support.lead;
    const int lags = support.inside;
    const Results<D> results{pDst + support.lead, scaleFactor};
    if (byTransform<D>(lags, len1, len2)) {
        const Status s = Transform<Computed<D>>::with(int64_t{len1} + len2 - 1, 2, [=](const auto& t) {
            auto* const y = t.spectrum(0, pSrc2, len2, size_t(len1) - 1);
            t.multiplyConjugate(t.spectrum(1, pSrc1, len1), y);
            results(t.inverse(y) + (first + len1 - 1), 0, lags);
        });
        if (s != StatusOk) return s;
    } else if (lags > 0 && len1 <= len2) {
        direct<D>({pSrc1, len1, false}, pSrc2, len2, first, lags, results);
    } else if (lags > 0) {   // r(lag) is the conjugate of what the sources give at -lag in exchanged roles
        direct<D>({pSrc2, len2, false}, pSrc1, len1, 1 - first - lags, lags, results);
        flipInPlace(results.pDst, lags);
        conjugate(results.pDst, results.pDst, lags);
    }
    support.zeroRest(pDst, dstLen);
    return StatusOk;
}

template <class D> Status autoCorrelate(const D* pSrc, int srcLen, D* pDst, int dstLen, Norm norm, int scaleFactor = 0) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(srcLen).len(dstLen)) return s;
    NearestRounding guard;
    const int lags = std::min(srcLen, dstLen);
    const Results<D> results{pDst, scaleFactor, norm, srcLen};
    if (lags < kFewestLags<D>) {
        direct<D>({pSrc, srcLen, false}, pSrc, srcLen, 0, lags, results);
    } else {
        const Status s = Transform<Computed<D>>::with(2 * int64_t{srcLen}, 1, [=](const auto& t) {
            auto* const y = t.spectrum(0, pSrc, srcLen);
            t.multiplyConjugate(y, y);
            results(t.inverse(y), 0, lags);
        });
        if (s != StatusOk) return s;
    }
    memset(pDst + lags, 0, size_t(dstLen - lags) * sizeof(D));
    return StatusOk;
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsConv_32f(const float* pSrc1, int len1, const float* pSrc2, int len2, float* pDst) { return convolve(pSrc1, len1, pSrc2, len2, pDst); }
Status tevsConv_64f(const double* pSrc1, int len1, const double* pSrc2, int len2, double* pDst) { return convolve(pSrc1, len1, pSrc2, len2, pDst); }
Status tevsConv_16s_Sfs(const int16_t* pSrc1, int len1, const int16_t* pSrc2, int len2, int16_t* pDst, int scaleFactor) {
    return convolve(pSrc1, len1, pSrc2, len2, pDst, scaleFactor);
}

Status tevsConvBiased_32f(const float* pSrc1, int len1, const float* pSrc2, int len2, float* pDst, int dstLen, int bias) {
    return convolveBiased(pSrc1, len1, pSrc2, len2, pDst, dstLen, bias);
}

Status tevsConvCyclic4x4_32f32fc(const float* pX, const Complex32f* pH, Complex32f* pY) {
    NearestRounding guard;
    convolution->cyclic4(pX, pH, pY);
    return StatusOk;
}
Status tevsConvCyclic8x8_32f(const float* pX, const float* pH, float* pY) {
    NearestRounding guard;
    convolution->cyclic8(pX, pH, pY);
    return StatusOk;
}
Status tevsConvCyclic8x8_16s_Sfs(const int16_t* pX, const int16_t* pH, int16_t* pY, int scaleFactor) {
    int64_t y[8];
    convolution->cyclic8of16s(pX, pH, y);
    for (int n = 0; n < 8; ++n) pY[n] = scaled<int16_t, 34>(y[n], scaleFactor);
    return StatusOk;
}

Status tevsCrossCorr_32f(const float* pSrc1, int len1, const float* pSrc2, int len2, float* pDst, int dstLen, int lowLag) {
    return crossCorrelate(pSrc1, len1, pSrc2, len2, pDst, dstLen, lowLag);
}
Status tevsCrossCorr_64f(const double* pSrc1, int len1, const double* pSrc2, int len2, double* pDst, int dstLen, int lowLag) {
    return crossCorrelate(pSrc1, len1, pSrc2, len2, pDst, dstLen, lowLag);
}
Status tevsCrossCorr_32fc(const Complex32f* pSrc1, int len1, const Complex32f* pSrc2, int len2, Complex32f* pDst, int dstLen, int lowLag) {
    return crossCorrelate(pSrc1, len1, pSrc2, len2, pDst, dstLen, lowLag);
}
Status tevsCrossCorr_64fc(const Complex64f* pSrc1, int len1, const Complex64f* pSrc2, int len2, Complex64f* pDst, int dstLen, int lowLag) {
    return crossCorrelate(pSrc1, len1, pSrc2, len2, pDst, dstLen, lowLag);
}
Status tevsCrossCorr_16s_Sfs(const int16_t* pSrc1, int len1, const int16_t* pSrc2, int len2, int16_t* pDst, int dstLen, int lowLag, int scaleFactor) {
    return crossCorrelate(pSrc1, len1, pSrc2, len2, pDst, dstLen, lowLag, scaleFactor);
}

Status tevsAutoCorr_32f(const float* pSrc, int srcLen, float* pDst, int dstLen) { return autoCorrelate(pSrc, srcLen, pDst, dstLen, Norm::None); }
Status tevsAutoCorr_64f(const double* pSrc, int srcLen, double* pDst, int dstLen) { return autoCorrelate(pSrc, srcLen, pDst, dstLen, Norm::None); }
Status tevsAutoCorr_32fc(const Complex32f* pSrc, int srcLen, Complex32f* pDst, int dstLen) { return autoCorrelate(pSrc, srcLen, pDst, dstLen, Norm::None); }
Status tevsAutoCorr_64fc(const Complex64f* pSrc, int srcLen, Complex64f* pDst, int dstLen) { return autoCorrelate(pSrc, srcLen, pDst, dstLen, Norm::None); }
Status tevsAutoCorr_16s_Sfs(const int16_t* pSrc, int srcLen, int16_t* pDst, int dstLen, int scaleFactor) {
    return autoCorrelate(pSrc, srcLen, pDst, dstLen, Norm::None, scaleFactor);
}

Status tevsAutoCorr_NormA_32f(const float* pSrc, int srcLen, float* pDst, int dstLen) { return autoCorrelate(pSrc, srcLen, pDst, dstLen, Norm::ByLength); }
Status tevsAutoCorr_NormA_64f(const double* pSrc, int srcLen, double* pDst, int dstLen) { return autoCorrelate(pSrc, srcLen, pDst, dstLen, Norm::ByLength); }
Status tevsAutoCorr_NormA_32fc(const Complex32f* pSrc, int srcLen, Complex32f* pDst, int dstLen) {
    return autoCorrelate(pSrc, srcLen, pDst, dstLen, Norm::ByLength);
}
Status tevsAutoCorr_NormA_64fc(const Complex64f* pSrc, int srcLen, Complex64f* pDst, int dstLen) {
    return autoCorrelate(pSrc, srcLen, pDst, dstLen, Norm::ByLength);
}
Status tevsAutoCorr_NormA_16s_Sfs(const int16_t* pSrc, int srcLen, int16_t* pDst, int dstLen, int scaleFactor) {
    return autoCorrelate(pSrc, srcLen, pDst, dstLen, Norm::ByLength, scaleFactor);
}

Status tevsAutoCorr_NormB_32f(const float* pSrc, int srcLen, float* pDst, int dstLen) { return autoCorrelate(pSrc, srcLen, pDst, dstLen, Norm::ByOverlap); }
Status tevsAutoCorr_NormB_64f(const double* pSrc, int srcLen, double* pDst, int dstLen) { return autoCorrelate(pSrc, srcLen, pDst, dstLen, Norm::ByOverlap); }
Status tevsAutoCorr_NormB_32fc(const Complex32f* pSrc, int srcLen, Complex32f* pDst, int dstLen) {
    return autoCorrelate(pSrc, srcLen, pDst, dstLen, Norm::ByOverlap);
}
Status tevsAutoCorr_NormB_64fc(const Complex64f* pSrc, int srcLen, Complex64f* pDst, int dstLen) {
    return autoCorrelate(pSrc, srcLen, pDst, dstLen, Norm::ByOverlap);
}
Status tevsAutoCorr_NormB_16s_Sfs(const int16_t* pSrc, int srcLen, int16_t* pDst, int dstLen, int scaleFactor) {
    return autoCorrelate(pSrc, srcLen, pDst, dstLen, Norm::ByOverlap, scaleFactor);
}
