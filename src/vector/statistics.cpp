// Sums, means, deviations, norms, counts and sums of logarithms.
#include "tevs/statistics.h"

#include <stddef.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/args.h"
#include "core/complex.h"
#include "core/rounding.h"
#include "core/scale.h"
#include "tevcore.h"
#include "vector/extremes.table.h"
#include "vector/statistics.table.h"

namespace tevs {
namespace {

// *pResult = finish(kernel(pSrc, len)).
template <class T, class R, class S, class Finish> Status reduceTo(const T* pSrc, int len, R* pResult, S (*kernel)(const T*, int), Finish finish) {
    if (Status s = Args().ptr(pSrc).ptr(pResult).len(len)) return s;
    NearestRounding guard;
    *pResult = finish(kernel(pSrc, len));
    return StatusOk;
}
template <class T, class R, class S, class Finish>
Status reduceTo(const T* pSrc1, const T* pSrc2, int len, R* pResult, S (*kernel)(const T*, const T*, int), Finish finish) {
    if (Status s = Args().ptr(pSrc1).ptr(pSrc2).ptr(pResult).len(len)) return s;
    NearestRounding guard;
    *pResult = finish(kernel(pSrc1, pSrc2, len));
    return StatusOk;
}

// ---- from the exact or double sum to the result --------------------------------------------------------------------------------------------

constexpr auto asIs = [](auto r) { return r; };
constexpr auto to32f = [](double r) { return float(r); };
constexpr auto rootTo32f = [](double r) { return float(std::sqrt(r)); };
constexpr auto rootTo64f = [](double r) { return std::sqrt(r); };
constexpr auto intTo32f = [](int64_t r) { return toFloat<float>(r); };
constexpr auto intTo64f = [](int64_t r) { return toFloat<double>(r); };
constexpr auto intsTo64fc = [](Complex64s r) { return Complex64f{toFloat<double>(r.re), toFloat<double>(r.im)}; };
constexpr auto intRootTo32f = [](int64_t r) { return float(std::sqrt(toFloat<double>(r))); };

// Every exact sum here is below 2^63.
template <class D> auto scaledTo(int scaleFactor) {
    return [=](int64_t r) { return scaled<D, 63>(r, scaleFactor); };
}
template <class C> auto scaledPartsTo(int scaleFactor) {
    return [=](Complex64s r) {
        const auto part = scaledTo<Scalar<C>>(scaleFactor);
        return C{part(r.re), part(r.im)};
    };
}
// The root in double precision is what is scaled.
auto scaledRoot(int scaleFactor) {
    return [=](int64_t r) {
        const double v = std::ldexp(std::sqrt(toFloat<double>(r)), -std::clamp(scaleFactor, -2000, 2000));
        return v > INT32_MAX ? INT32_MAX : int32_t(std::lrint(v));
    };
}

// ---- sums of floats -------------------------------------------------------------------------------------------------------------------------

// Every Stride-th of the elements f(p[0]), f(p[Stride]), ... in `Sums` partial sums that take turns, in extended precision. What is left of a turn goes to
// the first of them.
template <int Sums, int Stride, class T, class F> long double extendedSum(const T* p, int len, F f) {
    long double sum[Sums] = {};
    int n = 0;
    for (; n <= len - Sums; n += Sums)
#pragma GCC unroll 8
        for (int k = 0; k < Sums; ++k) sum[k] += f(p[ptrdiff_t{Stride} * (n + k)]);
    for (; n < len; ++n) sum[0] += f(p[ptrdiff_t{Stride} * n]);
    for (int k = 1; k < Sums; ++k) sum[0] += sum[k];
    return sum[0];
}
constexpr auto element = [](long double x) { return x; };

// The accurate sum over `divisor`, rounded once.
Status accurate(const float* pSrc, int len, float* pSum, int divisor) {
    if (Status s = Args().ptr(pSrc).ptr(pSum).len(len)) return s;
    *pSum = inExtended([](const float* p, int n, int by) { return float(extendedSum<8, 1>(p, n, element) / by); }, pSrc, len, divisor);
    return StatusOk;
}
Status accurate(const Complex32f* pSrc, int len, Complex32f* pSum, int divisor) {
    if (Status s = Args().ptr(pSrc).ptr(pSum).len(len)) return s;
    const auto part = [](const float* p, int n, int by) { return float(extendedSum<8, 2>(p, n, element) / by); };
    const float re = inExtended(part, &pSrc->re, len, divisor);
    *pSum = {re, inExtended(part, &pSrc->im, len, divisor)};
    return StatusOk;
}

template <class T> auto over(T divisor) {
    return [=](T sum) { return sum / divisor; };
}
template <class C, class T> auto partsOver(T divisor) {
    return [=](C sum) { return C{sum.re / divisor, sum.im / divisor}; };
}

// ---- means and deviations of integers -----------------------------------------------------------------------------------------------------------

// sum / len * 2^-scaleFactor to nearest, ties to even, saturated, where |sum| <= len * 2^31.
template <class D> D scaledMean(int64_t sum, int len, int scaleFactor) {
    constexpr int64_t lo = std::numeric_limits<D>::min(), hi = std::numeric_limits<D>::max();
    if (scaleFactor > 31) return 0;   // at most a half
    const int64_t divisor = scaleFactor > 0 ? int64_t{len} << scaleFactor : len;
    int64_t mean = sum / divisor, rest = sum % divisor;
    // Long division, 31 bits a turn. From 2^-31 on, where the smallest sum that is not 0 begins, 62 bits reach any bound.
    for (int left = -std::clamp(scaleFactor, -63, 0); left > 0; left -= 31) {
        if (mean > hi || mean < lo) break;
        const int bits = std::min(left, 31);
        const int64_t shifted = rest << bits;
        mean = (mean << bits) + shifted / divisor;
        rest = shifted % divisor;
    }
    const int64_t twice = 2 * std::abs(rest);
    if (twice > divisor || (twice == divisor && (mean & 1))) mean += rest < 0 ? -1 : 1;
    return saturate<D>(mean);
}
template <class D> auto mean(int len, int scaleFactor) {
    return [=](int64_t sum) { return scaledMean<D>(sum, len, scaleFactor); };
}
auto meanOfParts(int len, int scaleFactor) {
    return [=](Complex64s sum) { return Complex16s{scaledMean<int16_t>(sum.re, len, scaleFactor), scaledMean<int16_t>(sum.im, len, scaleFactor)}; };
}

// v = (len * Q - S^2) / (len * (len - 1)) of sums S = sum of x and Q = sum of x^2; a negative v is a rounding artefact.
template <class F> F deviation(F s, F q, F len) {
    const F v = (len * q - s * s) / (len * (len - 1));
    return v < 0 ? 0 : std::sqrt(v);
}

Args deviationArgs(const void* pSrc, const void* pStdDev, int len) { return Args().ptr(pSrc).ptr(pStdDev).require(len >= 2, StatusBadSize); }

// The exact sums need 96 bits for the difference. With S = m * len + r it is D = len * (Q - m * S - r * m) - r^2, where the bracket is near Q / 2 at most and the
// products fit 64 bits; taking r^2 / len in whole units from the bracket leaves D = len * b - w with w < len, exact in extended precision where it is small.
template <class D> Status deviation16s(const int16_t* pSrc, int len, D* pStdDev, int scaleFactor) {
    if (Status st = deviationArgs(pSrc, pStdDev, len)) return st;
    const int64_t s = statistics->sum16s(pSrc, len), q = statistics->squares16s.one(pSrc, len);
    const int64_t m = s / len, r = s % len;
    const int64_t b = q - m * s - r * m - r * r / len, w = r * r % len;
    *pStdDev = inExtended(
        [](int64_t bracket, int64_t rest, int n, int scale) {
            const long double difference = (long double)bracket * n - rest;
            const long double v = std::ldexp(std::sqrt(difference / ((long double)n * (n - 1))), -std::clamp(scale, -2000, 2000));
            constexpr D hi = std::numeric_limits<D>::max();
            return v > hi ? hi : D(std::llrint(v));
        },
        b, w, len, scaleFactor);
    return StatusOk;
}

Status deviationAccurate(const float* pSrc, int len, float* pStdDev) {
    if (Status st = deviationArgs(pSrc, pStdDev, len)) return st;
    *pStdDev = inExtended(
        [](const float* p, int n) {
            const long double s = extendedSum<4, 1>(p, n, element), q = extendedSum<4, 1>(p, n, [](long double x) { return x * x; });
            return float(deviation<long double>(s, q, n));
        },
        pSrc, len);
    return StatusOk;
}
Status deviationFast(const float* pSrc, int len, float* pStdDev) {
    if (Status st = deviationArgs(pSrc, pStdDev, len)) return st;
    NearestRounding guard;
    *pStdDev = float(deviation<double>(statistics->sum32f(pSrc, len), statistics->singleSquares32f(pSrc, len), len));
    return StatusOk;
}
// About the mean, which the first pass finds: the other formula would lose what the mean is larger than the deviation.
Status deviation64f(const double* pSrc, int len, double* pStdDev) {
    if (Status st = deviationArgs(pSrc, pStdDev, len)) return st;
    NearestRounding guard;
    *pStdDev = std::sqrt(statistics->squaresAbout64f(pSrc, len, statistics->sum64f(pSrc, len) / len) / (len - 1));
    return StatusOk;
}

// ---- norms of doubles ------------------------------------------------------------------------------------------------------------------------

// How a norm is made of the squared magnitudes of the elements: add() in extended precision, finish() from what add() or the kernel has made.
struct NormInf {
    static long double add(long double sum, long double square) { return square > sum ? square : sum; }
    template <class F> static F finish(F sum) { return std::sqrt(sum); }
};
struct NormL1 {
    static long double add(long double sum, long double square) { return sum + std::sqrt(square); }
    template <class F> static F finish(F sum) { return sum; }
};
struct NormL2 : NormInf {
    static long double add(long double sum, long double square) { return sum + square; }
};

// Where squares of doubles may have left the range, the extended one holds them. pSrc2 may be null: a difference to nothing.
template <class N, class T> void norm64(const T* pSrc1, const T* pSrc2, int len, double* pNorm, const Measure<T, double>& kernel) {
    const double sum = pSrc2 ? kernel.difference(pSrc1, pSrc2, len) : kernel.one(pSrc1, len);
    if (!(sum < 0x1p-450 || sum > std::numeric_limits<double>::max())) [[likely]] {
        *pNorm = N::finish(sum);
        return;
    }
    const double *a = partsOf(pSrc1), *b = partsOf(pSrc2);
    bool zero = sum == 0;
    for (ptrdiff_t i = 0; zero && i < kParts<T>; ++i) {   // len parts at a time
        const ptrdiff_t at = i * len;
        zero = (b ? statistics->largest64f.difference(a + at, b + at, len) : statistics->largest64f.one(a + at, len)) == 0;
    }
    if (zero) {
        *pNorm = 0;
        return;
    }
    *pNorm = inExtended(
        [](const double* x, const double* y, int count) {
            long double extended = 0;
            for (ptrdiff_t n = 0; n < count; ++n) {
                long double square = 0;
                for (ptrdiff_t i = kParts<T> * n; i < kParts<T> * (n + 1); ++i) {
                    const long double part = y ? (long double)x[i] - y[i] : (long double)x[i];
                    square += part * part;
                }
                extended = N::add(extended, square);
            }
            return double(N::finish(extended));
        },
        a, b, len);
}
template <class N, class T> Status norm(const T* pSrc, int len, double* pNorm, const Measure<T, double>& kernel) {
    if (Status s = Args().ptr(pSrc).ptr(pNorm).len(len)) return s;
    NearestRounding guard;
    norm64<N, T>(pSrc, nullptr, len, pNorm, kernel);
    return StatusOk;
}
template <class N, class T> Status norm(const T* pSrc1, const T* pSrc2, int len, double* pNorm, const Measure<T, double>& kernel) {
    if (Status s = Args().ptr(pSrc1).ptr(pSrc2).ptr(pNorm).len(len)) return s;
    NearestRounding guard;
    norm64<N, T>(pSrc1, pSrc2, len, pNorm, kernel);
    return StatusOk;
}

// ---- counts and logarithms ---------------------------------------------------------------------------------------------------------------------

Status countInRange(const int32_t* pSrc, int len, int* pCounts, int32_t lowerBound, int32_t upperBound) {
    if (Status s = Args().ptr(pSrc).ptr(pCounts).len(len)) return s;
    *pCounts = statistics->countInRange(pSrc, len, lowerBound, upperBound);
    return StatusOk;
}

// The logarithm of the product of n <= 512 positive elements, which is off by at most n 2^-64. Extended precision has room for 15 doubles from
// 2^-1000 .. 2^1000 on, and for a hundred narrower elements; what leaves that in a turn goes on as a fraction and an exponent. The
// product of all eight fits it then.
template <class T> long double lnOfProduct(const T* p, int n) {
    constexpr int kProducts = 8, kTurn = sizeof(T) == 8 ? 8 * kProducts : 512;
    constexpr long double kLn2 = 0.693147180559945309417232121458176568L;
    long double product[kProducts] = {1, 1, 1, 1, 1, 1, 1, 1};
    int64_t exponents = 0;
    for (int i = 0; i < n;) {
        const int end = std::min(i + kTurn, n);
        for (; i <= end - kProducts; i += kProducts)
#pragma GCC unroll 8
            for (int k = 0; k < kProducts; ++k) product[k] *= p[i + k];
        for (; i < end; ++i) product[0] *= p[i];
        for (long double& x : product)
            if (!(x > 0x1p-1000L && x < 0x1p1000L)) {
                int e;
                x = std::frexp(x, &e);
                exponents += e;
            }
    }
    for (int k = 1; k < kProducts; ++k) product[0] *= product[k];
    return std::log(product[0]) + exponents * kLn2;
}

// A logarithm costs as much as a hundred products: one is taken for each block. Where it is too small to bear the product's error, the logarithms of
// the elements are taken one by one, as they are where one of them decides the status.
template <class T, class D> Status sumOfLn(const T* pSrc, int len, D* pSum, const OneExtreme<T>& smallest, const D& infinity, const D& nan) {
    constexpr int kBlock = 512;
    long double sum = 0;
    for (ptrdiff_t i = 0; i < len; i += kBlock) {
        const T* p = pSrc + i;
        const int n = int(std::min<ptrdiff_t>(len - i, kBlock));
        T least;
        smallest.value(p, n, &least);
        if (least > 0) {   // a NaN that this passes over comes out of the product
            const long double ln = lnOfProduct(p, n);
            if (std::abs(ln) >= n * 0x1p-14L) {
                sum += ln;
                continue;
            }
        }
        for (int k = 0; k < n; ++k) {
            if (p[k] == 0 || p[k] < 0) {
                *pSum = p[k] == 0 ? infinity : nan;
                return p[k] == 0 ? WarnLnZeroArg : WarnLnNegArg;
            }
            sum += std::log((long double)p[k]);
        }
    }
    *pSum = D(sum);
    return StatusOk;
}
template <class T, class D> Status sumLn(const T* pSrc, int len, D* pSum, const OneExtreme<T>& smallest, const D& infinity, const D& nan) {
    if (Status s = Args().ptr(pSrc).ptr(pSum).len(len)) return s;
    return inExtended([](auto* src, int n, auto* result, auto*... constants) { return sumOfLn(src, n, result, *constants...); }, pSrc, len, pSum, &smallest,
                      &infinity, &nan);
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsSum_16s_Sfs(const int16_t* pSrc, int len, int16_t* pSum, int scaleFactor) {
    return reduceTo(pSrc, len, pSum, statistics->sum16s, scaledTo<int16_t>(scaleFactor));
}
Status tevsSum_16s32s_Sfs(const int16_t* pSrc, int len, int32_t* pSum, int scaleFactor) {
    return reduceTo(pSrc, len, pSum, statistics->sum16s, scaledTo<int32_t>(scaleFactor));
}
Status tevsSum_16sc_Sfs(const Complex16s* pSrc, int len, Complex16s* pSum, int scaleFactor) {
    return reduceTo(pSrc, len, pSum, statistics->sum16sc, scaledPartsTo<Complex16s>(scaleFactor));
}
Status tevsSum_16sc32sc_Sfs(const Complex16s* pSrc, int len, Complex32s* pSum, int scaleFactor) {
    return reduceTo(pSrc, len, pSum, statistics->sum16sc, scaledPartsTo<Complex32s>(scaleFactor));
}
Status tevsSum_32s_Sfs(const int32_t* pSrc, int len, int32_t* pSum, int scaleFactor) {
    return reduceTo(pSrc, len, pSum, statistics->sum32s, scaledTo<int32_t>(scaleFactor));
}
Status tevsSum_16s64f(const int16_t* pSrc, int len, double* pSum) { return reduceTo(pSrc, len, pSum, statistics->sum16s, intTo64f); }
Status tevsSum_16sc64fc(const Complex16s* pSrc, int len, Complex64f* pSum) { return reduceTo(pSrc, len, pSum, statistics->sum16sc, intsTo64fc); }
Status tevsSum_32f(const float* pSrc, int len, float* pSum, int hint) {
    return hint == HintFast ? tevsSum_32f_Fast(pSrc, len, pSum) : accurate(pSrc, len, pSum, 1);
}
Status tevsSum_32fc(const Complex32f* pSrc, int len, Complex32f* pSum, int hint) {
    return hint == HintFast ? tevsSum_32fc_Fast(pSrc, len, pSum) : accurate(pSrc, len, pSum, 1);
}
Status tevsSum_64f(const double* pSrc, int len, double* pSum) { return reduceTo(pSrc, len, pSum, statistics->sum64f, asIs); }
Status tevsSum_64fc(const Complex64f* pSrc, int len, Complex64f* pSum) { return reduceTo(pSrc, len, pSum, statistics->sum64fc, asIs); }
Status tevsSum_32f_Fast(const float* pSrc, int len, float* pSum) { return reduceTo(pSrc, len, pSum, statistics->sum32f, asIs); }
Status tevsSum_32f_Accur(const float* pSrc, int len, float* pSum) { return accurate(pSrc, len, pSum, 1); }
Status tevsSum_32fc_Fast(const Complex32f* pSrc, int len, Complex32f* pSum) { return reduceTo(pSrc, len, pSum, statistics->sum32fc, asIs); }
Status tevsSum_32fc_Accur(const Complex32f* pSrc, int len, Complex32f* pSum) { return accurate(pSrc, len, pSum, 1); }

Status tevsMean_16s_Sfs(const int16_t* pSrc, int len, int16_t* pMean, int scaleFactor) {
    return reduceTo(pSrc, len, pMean, statistics->sum16s, mean<int16_t>(len, scaleFactor));
}
Status tevsMean_16sc_Sfs(const Complex16s* pSrc, int len, Complex16s* pMean, int scaleFactor) {
    return reduceTo(pSrc, len, pMean, statistics->sum16sc, meanOfParts(len, scaleFactor));
}
Status tevsMean_32s_Sfs(const int32_t* pSrc, int len, int32_t* pMean, int scaleFactor) {
    return reduceTo(pSrc, len, pMean, statistics->sum32s, mean<int32_t>(len, scaleFactor));
}
Status tevsMean_32f(const float* pSrc, int len, float* pMean, int hint) {
    return hint == HintFast ? reduceTo(pSrc, len, pMean, statistics->sum32f, over(float(len))) : accurate(pSrc, len, pMean, len);
}
Status tevsMean_32fc(const Complex32f* pSrc, int len, Complex32f* pMean, int hint) {
    return hint == HintFast ? reduceTo(pSrc, len, pMean, statistics->sum32fc, partsOver<Complex32f>(float(len))) : accurate(pSrc, len, pMean, len);
}
Status tevsMean_64f(const double* pSrc, int len, double* pMean) { return reduceTo(pSrc, len, pMean, statistics->sum64f, over(double(len))); }
Status tevsMean_64fc(const Complex64f* pSrc, int len, Complex64f* pMean) {
    return reduceTo(pSrc, len, pMean, statistics->sum64fc, partsOver<Complex64f>(double(len)));
}

Status tevsStdDev_16s_Sfs(const int16_t* pSrc, int len, int16_t* pStdDev, int scaleFactor) { return deviation16s(pSrc, len, pStdDev, scaleFactor); }
Status tevsStdDev_16s32s_Sfs(const int16_t* pSrc, int len, int32_t* pStdDev, int scaleFactor) { return deviation16s(pSrc, len, pStdDev, scaleFactor); }
Status tevsStdDev_32f(const float* pSrc, int len, float* pStdDev, int hint) {
    return hint == HintFast ? deviationFast(pSrc, len, pStdDev) : deviationAccurate(pSrc, len, pStdDev);
}
Status tevsStdDev_32f_Fast(const float* pSrc, int len, float* pStdDev) { return deviationFast(pSrc, len, pStdDev); }
Status tevsStdDev_32f_Accur(const float* pSrc, int len, float* pStdDev) { return deviationAccurate(pSrc, len, pStdDev); }
Status tevsStdDev_64f(const double* pSrc, int len, double* pStdDev) { return deviation64f(pSrc, len, pStdDev); }

Status tevsNorm_Inf_32f(const float* pSrc, int len, float* pNorm) { return reduceTo(pSrc, len, pNorm, statistics->largest32f.one, asIs); }
Status tevsNorm_Inf_64f(const double* pSrc, int len, double* pNorm) { return reduceTo(pSrc, len, pNorm, statistics->largest64f.one, asIs); }
Status tevsNorm_Inf_16s32f(const int16_t* pSrc, int len, float* pNorm) { return reduceTo(pSrc, len, pNorm, statistics->largest16s.one, intTo32f); }
Status tevsNorm_Inf_16s32s_Sfs(const int16_t* pSrc, int len, int32_t* pNorm, int scaleFactor) {
    return reduceTo(pSrc, len, pNorm, statistics->largest16s.one, scaledTo<int32_t>(scaleFactor));
}
Status tevsNorm_Inf_32fc32f(const Complex32f* pSrc, int len, float* pNorm) { return reduceTo(pSrc, len, pNorm, statistics->largest32fc.one, rootTo32f); }
Status tevsNorm_Inf_64fc64f(const Complex64f* pSrc, int len, double* pNorm) { return norm<NormInf>(pSrc, len, pNorm, statistics->largest64fc); }

Status tevsNorm_L1_32f(const float* pSrc, int len, float* pNorm) { return reduceTo(pSrc, len, pNorm, statistics->sum32fAbs.one, to32f); }
Status tevsNorm_L1_64f(const double* pSrc, int len, double* pNorm) { return reduceTo(pSrc, len, pNorm, statistics->sum64fAbs.one, asIs); }
Status tevsNorm_L1_16s32f(const int16_t* pSrc, int len, float* pNorm) { return reduceTo(pSrc, len, pNorm, statistics->sum16sAbs.one, intTo32f); }
Status tevsNorm_L1_16s32s_Sfs(const int16_t* pSrc, int len, int32_t* pNorm, int scaleFactor) {
    return reduceTo(pSrc, len, pNorm, statistics->sum16sAbs.one, scaledTo<int32_t>(scaleFactor));
}
Status tevsNorm_L1_16s64s_Sfs(const int16_t* pSrc, int len, int64_t* pNorm, int scaleFactor) {
    return reduceTo(pSrc, len, pNorm, statistics->sum16sAbs.one, scaledTo<int64_t>(scaleFactor));
}
Status tevsNorm_L1_32fc64f(const Complex32f* pSrc, int len, double* pNorm) { return reduceTo(pSrc, len, pNorm, statistics->sum32fcAbs.one, asIs); }
Status tevsNorm_L1_64fc64f(const Complex64f* pSrc, int len, double* pNorm) { return norm<NormL1>(pSrc, len, pNorm, statistics->sum64fcAbs); }

Status tevsNorm_L2_32f(const float* pSrc, int len, float* pNorm) { return reduceTo(pSrc, len, pNorm, statistics->squares32f.one, rootTo32f); }
Status tevsNorm_L2_64f(const double* pSrc, int len, double* pNorm) { return norm<NormL2>(pSrc, len, pNorm, statistics->squares64f); }
Status tevsNorm_L2_16s32f(const int16_t* pSrc, int len, float* pNorm) { return reduceTo(pSrc, len, pNorm, statistics->squares16s.one, intRootTo32f); }
Status tevsNorm_L2_16s32s_Sfs(const int16_t* pSrc, int len, int32_t* pNorm, int scaleFactor) {
    return reduceTo(pSrc, len, pNorm, statistics->squares16s.one, scaledRoot(scaleFactor));
}
Status tevsNorm_L2_32fc64f(const Complex32f* pSrc, int len, double* pNorm) { return reduceTo(pSrc, len, pNorm, statistics->squares32fc.one, rootTo64f); }
Status tevsNorm_L2_64fc64f(const Complex64f* pSrc, int len, double* pNorm) { return norm<NormL2>(pSrc, len, pNorm, statistics->squares64fc); }

Status tevsNorm_L2Sqr_16s64s_Sfs(const int16_t* pSrc, int len, int64_t* pNorm, int scaleFactor) {
    return reduceTo(pSrc, len, pNorm, statistics->squares16s.one, scaledTo<int64_t>(scaleFactor));
}

Status tevsNormDiff_Inf_32f(const float* pSrc1, const float* pSrc2, int len, float* pNorm) {
    return reduceTo(pSrc1, pSrc2, len, pNorm, statistics->largest32f.difference, asIs);
}
Status tevsNormDiff_Inf_64f(const double* pSrc1, const double* pSrc2, int len, double* pNorm) {
    return reduceTo(pSrc1, pSrc2, len, pNorm, statistics->largest64f.difference, asIs);
}
Status tevsNormDiff_Inf_16s32f(const int16_t* pSrc1, const int16_t* pSrc2, int len, float* pNorm) {
    return reduceTo(pSrc1, pSrc2, len, pNorm, statistics->largest16s.difference, intTo32f);
}
Status tevsNormDiff_Inf_16s32s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int len, int32_t* pNorm, int scaleFactor) {
    return reduceTo(pSrc1, pSrc2, len, pNorm, statistics->largest16s.difference, scaledTo<int32_t>(scaleFactor));
}
Status tevsNormDiff_Inf_32fc32f(const Complex32f* pSrc1, const Complex32f* pSrc2, int len, float* pNorm) {
    return reduceTo(pSrc1, pSrc2, len, pNorm, statistics->largest32fc.difference, rootTo32f);
}
Status tevsNormDiff_Inf_64fc64f(const Complex64f* pSrc1, const Complex64f* pSrc2, int len, double* pNorm) {
    return norm<NormInf>(pSrc1, pSrc2, len, pNorm, statistics->largest64fc);
}

Status tevsNormDiff_L1_32f(const float* pSrc1, const float* pSrc2, int len, float* pNorm) {
    return reduceTo(pSrc1, pSrc2, len, pNorm, statistics->sum32fAbs.difference, to32f);
}
Status tevsNormDiff_L1_64f(const double* pSrc1, const double* pSrc2, int len, double* pNorm) {
    return reduceTo(pSrc1, pSrc2, len, pNorm, statistics->sum64fAbs.difference, asIs);
}
Status tevsNormDiff_L1_16s32f(const int16_t* pSrc1, const int16_t* pSrc2, int len, float* pNorm) {
    return reduceTo(pSrc1, pSrc2, len, pNorm, statistics->sum16sAbs.difference, intTo32f);
}
Status tevsNormDiff_L1_16s32s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int len, int32_t* pNorm, int scaleFactor) {
    return reduceTo(pSrc1, pSrc2, len, pNorm, statistics->sum16sAbs.difference, scaledTo<int32_t>(scaleFactor));
}
Status tevsNormDiff_L1_16s64s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int len, int64_t* pNorm, int scaleFactor) {
    return reduceTo(pSrc1, pSrc2, len, pNorm, statistics->sum16sAbs.difference, scaledTo<int64_t>(scaleFactor));
}
Status tevsNormDiff_L1_32fc64f(const Complex32f* pSrc1, const Complex32f* pSrc2, int len, double* pNorm) {
    return reduceTo(pSrc1, pSrc2, len, pNorm, statistics->sum32fcAbs.difference, asIs);
}
Status tevsNormDiff_L1_64fc64f(const Complex64f* pSrc1, const Complex64f* pSrc2, int len, double* pNorm) {
    return norm<NormL1>(pSrc1, pSrc2, len, pNorm, statistics->sum64fcAbs);
}

Status tevsNormDiff_L2_32f(const float* pSrc1, const float* pSrc2, int len, float* pNorm) {
    return reduceTo(pSrc1, pSrc2, len, pNorm, statistics->squares32f.difference, rootTo32f);
}
Status tevsNormDiff_L2_64f(const double* pSrc1, const double* pSrc2, int len, double* pNorm) {
    return norm<NormL2>(pSrc1, pSrc2, len, pNorm, statistics->squares64f);
}
Status tevsNormDiff_L2_16s32f(const int16_t* pSrc1, const int16_t* pSrc2, int len, float* pNorm) {
    return reduceTo(pSrc1, pSrc2, len, pNorm, statistics->squares16s.difference, intRootTo32f);
}
Status tevsNormDiff_L2_16s32s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int len, int32_t* pNorm, int scaleFactor) {
    return reduceTo(pSrc1, pSrc2, len, pNorm, statistics->squares16s.difference, scaledRoot(scaleFactor));
}
Status tevsNormDiff_L2_32fc64f(const Complex32f* pSrc1, const Complex32f* pSrc2, int len, double* pNorm) {
    return reduceTo(pSrc1, pSrc2, len, pNorm, statistics->squares32fc.difference, rootTo64f);
}
Status tevsNormDiff_L2_64fc64f(const Complex64f* pSrc1, const Complex64f* pSrc2, int len, double* pNorm) {
    return norm<NormL2>(pSrc1, pSrc2, len, pNorm, statistics->squares64fc);
}

Status tevsNormDiff_L2Sqr_16s64s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int len, int64_t* pNorm, int scaleFactor) {
    return reduceTo(pSrc1, pSrc2, len, pNorm, statistics->squares16s.difference, scaledTo<int64_t>(scaleFactor));
}

Status tevsCountInRange_32s(const int32_t* pSrc, int len, int* pCounts, int32_t lowerBound, int32_t upperBound) {
    return countInRange(pSrc, len, pCounts, lowerBound, upperBound);
}

Status tevsSumLn_32f(const float* pSrc, int len, float* pSum) { return sumLn(pSrc, len, pSum, extremes->min32f, tevConstantOfINF_32f, tevConstantOfNAN_32f); }
Status tevsSumLn_64f(const double* pSrc, int len, double* pSum) { return sumLn(pSrc, len, pSum, extremes->min64f, tevConstantOfINF_64f, tevConstantOfNAN_64f); }
Status tevsSumLn_32f64f(const float* pSrc, int len, double* pSum) {
    return sumLn(pSrc, len, pSum, extremes->min32f, tevConstantOfINF_64f, tevConstantOfNAN_64f);
}
Status tevsSumLn_16s32f(const int16_t* pSrc, int len, float* pSum) {
    return sumLn(pSrc, len, pSum, extremes->min16s, tevConstantOfINF_32f, tevConstantOfNAN_32f);
}
