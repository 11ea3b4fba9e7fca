// Elementary functions, element by element.
#include "tevs/elementary.h"

#include <math.h>

#include <algorithm>

#include "core/args.h"
#include "core/rounding.h"
#include "tevs/arithmetic.h"
#include "vector/elementary.table.h"

namespace tevs {
namespace {

template <class S, class D> Status elementwise(const S* pSrc, D* pDst, int len, Plain<S, D>* kernel) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    toNearest(kernel, pSrc, pDst, len);
    return StatusOk;
}
template <class S, class D> Status elementwise(const S* pSrc, D* pDst, int len, Checked<S, D>* kernel) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    return toNearest(kernel, pSrc, pDst, len);
}

// ---- integer results ----------------------------------------------------------------------------------------------------------------------

// 2^-scaleFactor. The results scaled here lie between 2^-16 and 2^33 where they are not 0, so that scales beyond +-100 saturate or leave 0 as 100 does.
double factorOf(int scaleFactor) { return ldexp(1.0, -std::clamp(scaleFactor, -100, 100)); }

template <class S, class D> Status scaled(const S* pSrc, D* pDst, int len, int scaleFactor, Scaled<S, D>* kernel) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    return toNearest(kernel, pSrc, pDst, len, factorOf(scaleFactor));
}

// The nearest integer, saturated. Both bounds of 64 bits stand for numbers below 2^63.
template <class D> D nearest(long double r) {
    constexpr long double lo = std::numeric_limits<D>::min(), hi = std::numeric_limits<D>::max();
    const long double whole = rintl(r);
    return whole <= lo ? std::numeric_limits<D>::min() : whole >= hi ? std::numeric_limits<D>::max() : D(whole);
}

// f(x) * factor, rounded once.
template <class F> int32_t exactly(F, double x, double factor) {
    return inExtended([](double y, double by) { return nearest<int32_t>(F{}(y)*by); }, x, factor);
}
int32_t exactExp(double x, double factor) {
    return exactly([](long double y) { return expl(y); }, x, factor);
}
int32_t exactLn(double x, double factor) {
    return exactly([](long double y) { return logl(y); }, x, factor);
}
int32_t exactDecibel(double x, double factor) {
    return exactly([](long double y) { return 10 * log10l(y); }, x, factor);
}
template <class S, class D> Status careful(const S* pSrc, D* pDst, int len, int scaleFactor, Careful<S, D>* kernel, ExactElement* exact) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    return toNearest(kernel, pSrc, pDst, len, factorOf(scaleFactor), exact);
}

// e^x 2^-scaleFactor for any x and scaleFactor, as e^r 2^(k - scaleFactor): x = k ln 2 + r, where the head of ln 2 has 32 bits, and its product with k is exact for all k that
// any scale brings back into range.
template <class D, class S> D scaledExp(S x, int scaleFactor) {
    constexpr long double kLn2 = 0xb17217f7p-32L, kLn2Rest = 0xd1cf79abc9e3b398p-96L;
    const long double k = rintl((long double)x * 1.44269504088896340735992468100189214L), exponent = k - scaleFactor;
    if (exponent > 64) return std::numeric_limits<D>::max();
    if (exponent < -2) return 0;
    return nearest<D>(ldexpl(expl(((long double)x - k * kLn2) - k * kLn2Rest), int(exponent)));
}

template <class T> Status expExtended(const T* pSrc, T* pDst, int len, int scaleFactor) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    inExtended(
        [](const T* src, T* dst, int count, int scale) {
            for (int n = 0; n < count; ++n) dst[n] = scaledExp<T>(src[n], scale);
        },
        pSrc, pDst, len, scaleFactor);
    return StatusOk;
}

template <class T> Status expScaled(const T* pSrc, T* pDst, int len, int scaleFactor, Careful<T>* kernel) {
    // Here e^x may leave the range of double where e^x 2^-scaleFactor does not.
    if (scaleFactor < -60 || scaleFactor > 60) return expExtended(pSrc, pDst, len, scaleFactor);
    return careful(pSrc, pDst, len, scaleFactor, kernel, exactExp);
}

// sqrt(x) 2^-scaleFactor. The root in extended precision may be a tie that the true root only comes near to: its remainder decides, formed without error
// from products of 32 bits by 32.
template <class D> D scaledSqrt(int64_t x, int scaleFactor) {
    if (x <= 0) return 0;
    const long double root = sqrtl(x), r = ldexpl(root, -std::clamp(scaleFactor, -100, 100)), below = floorl(r);
    if (r - below != 0.5L) return nearest<D>(r);
    const int e = ilogbl(root) - 31;
    const long double head = ldexpl(floorl(ldexpl(root, -e)), e), rest = root - head;
    const long double remainder = ((x - head * head) - 2 * head * rest) - rest * rest;
    return nearest<D>(remainder == 0 ? r : remainder > 0 ? below + 1 : below);
}

template <class D> Status sqrtExtended(const int64_t* pSrc, D* pDst, int len, int scaleFactor) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    return inExtended(
        [](const int64_t* src, D* dst, int count, int scale) {
            Status status = StatusOk;
            for (int n = 0; n < count; ++n) {
                if (src[n] < 0) status = WarnSqrtNegArg;
                dst[n] = scaledSqrt<D>(src[n], scale);
            }
            return status;
        },
        pSrc, pDst, len, scaleFactor);
}

// ---- normalisation ------------------------------------------------------------------------------------------------------------------------

// NaN passes: it is not below.
template <class Z, class T> Status normalize(const Z* pSrc, Z* pDst, int len, Z vSub, T vDiv, void (*kernel)(const Z*, Z*, int, Z, T)) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len).require(!(fabs(vDiv) < 0x1p-126), StatusDivByZeroErr)) return s;
    toNearest([](auto* apply, const Z* src, Z* dst, int count, Z sub, T divisor) { apply(src, dst, count, sub, 1 / divisor); }, kernel, pSrc, pDst, len, vSub,
              vDiv);
    return StatusOk;
}
template <class Z>
Status normalizeScaled(const Z* pSrc, Z* pDst, int len, Z vSub, int16_t vDiv, int scaleFactor, void (*kernel)(const Z*, Z*, int, Z, double)) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len).require(vDiv != 0, StatusDivByZeroErr)) return s;
    toNearest([](auto* apply, const Z* src, Z* dst, int count, Z sub, int divisor, double factor) { apply(src, dst, count, sub, 1.0 / divisor * factor); },
              kernel, pSrc, pDst, len, vSub, int{vDiv}, factorOf(scaleFactor));
    return StatusOk;
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsExp_32f(const float* pSrc, float* pDst, int len) { return elementwise(pSrc, pDst, len, elementary->exp32f); }
Status tevsExp_32f_I(float* pSrcDst, int len) { return elementwise(pSrcDst, pSrcDst, len, elementary->exp32f); }
Status tevsExp_64f(const double* pSrc, double* pDst, int len) { return elementwise(pSrc, pDst, len, elementary->exp64f); }
Status tevsExp_64f_I(double* pSrcDst, int len) { return elementwise(pSrcDst, pSrcDst, len, elementary->exp64f); }
Status tevsExp_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int len, int scaleFactor) { return expScaled(pSrc, pDst, len, scaleFactor, elementary->exp16s); }
Status tevsExp_16s_ISfs(int16_t* pSrcDst, int len, int scaleFactor) { return expScaled(pSrcDst, pSrcDst, len, scaleFactor, elementary->exp16s); }
Status tevsExp_32s_Sfs(const int32_t* pSrc, int32_t* pDst, int len, int scaleFactor) { return expScaled(pSrc, pDst, len, scaleFactor, elementary->exp32s); }
Status tevsExp_32s_ISfs(int32_t* pSrcDst, int len, int scaleFactor) { return expScaled(pSrcDst, pSrcDst, len, scaleFactor, elementary->exp32s); }
Status tevsExp_64s_Sfs(const int64_t* pSrc, int64_t* pDst, int len, int scaleFactor) { return expExtended(pSrc, pDst, len, scaleFactor); }
Status tevsExp_64s_ISfs(int64_t* pSrcDst, int len, int scaleFactor) { return expExtended(pSrcDst, pSrcDst, len, scaleFactor); }
Status tevsExp_32f64f(const float* pSrc, double* pDst, int len) { return elementwise(pSrc, pDst, len, elementary->exp32f64f); }

Status tevsLn_32f(const float* pSrc, float* pDst, int len) { return elementwise(pSrc, pDst, len, elementary->ln32f); }
Status tevsLn_32f_I(float* pSrcDst, int len) { return elementwise(pSrcDst, pSrcDst, len, elementary->ln32f); }
Status tevsLn_64f(const double* pSrc, double* pDst, int len) { return elementwise(pSrc, pDst, len, elementary->ln64f); }
Status tevsLn_64f_I(double* pSrcDst, int len) { return elementwise(pSrcDst, pSrcDst, len, elementary->ln64f); }
Status tevsLn_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int len, int scaleFactor) {
    return careful(pSrc, pDst, len, scaleFactor, elementary->ln16s, exactLn);
}
Status tevsLn_16s_ISfs(int16_t* pSrcDst, int len, int scaleFactor) { return careful(pSrcDst, pSrcDst, len, scaleFactor, elementary->ln16s, exactLn); }
Status tevsLn_32s_Sfs(const int32_t* pSrc, int32_t* pDst, int len, int scaleFactor) {
    return careful(pSrc, pDst, len, scaleFactor, elementary->ln32s, exactLn);
}
Status tevsLn_32s_ISfs(int32_t* pSrcDst, int len, int scaleFactor) { return careful(pSrcDst, pSrcDst, len, scaleFactor, elementary->ln32s, exactLn); }
Status tevsLn_64f32f(const double* pSrc, float* pDst, int len) { return elementwise(pSrc, pDst, len, elementary->ln64f32f); }
Status tevsLn_32s16s_Sfs(const int32_t* pSrc, int16_t* pDst, int len, int scaleFactor) {
    return careful(pSrc, pDst, len, scaleFactor, elementary->ln32s16s, exactLn);
}

Status tevs10Log10_32s_Sfs(const int32_t* pSrc, int32_t* pDst, int len, int scaleFactor) {
    return careful(pSrc, pDst, len, scaleFactor, elementary->decibel32s, exactDecibel);
}
Status tevs10Log10_32s_ISfs(int32_t* pSrcDst, int len, int scaleFactor) {
    return careful(pSrcDst, pSrcDst, len, scaleFactor, elementary->decibel32s, exactDecibel);
}

// A square is the product of a vector with itself.
Status tevsSqr_32f(const float* pSrc, float* pDst, int len) { return tevsMul_32f(pSrc, pSrc, pDst, len); }
Status tevsSqr_32f_I(float* pSrcDst, int len) { return tevsMul_32f(pSrcDst, pSrcDst, pSrcDst, len); }
Status tevsSqr_64f(const double* pSrc, double* pDst, int len) { return tevsMul_64f(pSrc, pSrc, pDst, len); }
Status tevsSqr_64f_I(double* pSrcDst, int len) { return tevsMul_64f(pSrcDst, pSrcDst, pSrcDst, len); }
Status tevsSqr_32fc(const Complex32f* pSrc, Complex32f* pDst, int len) { return tevsMul_32fc(pSrc, pSrc, pDst, len); }
Status tevsSqr_32fc_I(Complex32f* pSrcDst, int len) { return tevsMul_32fc(pSrcDst, pSrcDst, pSrcDst, len); }
Status tevsSqr_64fc(const Complex64f* pSrc, Complex64f* pDst, int len) { return tevsMul_64fc(pSrc, pSrc, pDst, len); }
Status tevsSqr_64fc_I(Complex64f* pSrcDst, int len) { return tevsMul_64fc(pSrcDst, pSrcDst, pSrcDst, len); }
Status tevsSqr_8u_Sfs(const uint8_t* pSrc, uint8_t* pDst, int len, int scaleFactor) { return tevsMul_8u_Sfs(pSrc, pSrc, pDst, len, scaleFactor); }
Status tevsSqr_8u_ISfs(uint8_t* pSrcDst, int len, int scaleFactor) { return tevsMul_8u_Sfs(pSrcDst, pSrcDst, pSrcDst, len, scaleFactor); }
Status tevsSqr_16u_Sfs(const uint16_t* pSrc, uint16_t* pDst, int len, int scaleFactor) { return tevsMul_16u_Sfs(pSrc, pSrc, pDst, len, scaleFactor); }
Status tevsSqr_16u_ISfs(uint16_t* pSrcDst, int len, int scaleFactor) { return tevsMul_16u_Sfs(pSrcDst, pSrcDst, pSrcDst, len, scaleFactor); }
Status tevsSqr_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int len, int scaleFactor) { return tevsMul_16s_Sfs(pSrc, pSrc, pDst, len, scaleFactor); }
Status tevsSqr_16s_ISfs(int16_t* pSrcDst, int len, int scaleFactor) { return tevsMul_16s_Sfs(pSrcDst, pSrcDst, pSrcDst, len, scaleFactor); }
Status tevsSqr_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int len, int scaleFactor) { return tevsMul_16sc_Sfs(pSrc, pSrc, pDst, len, scaleFactor); }
Status tevsSqr_16sc_ISfs(Complex16s* pSrcDst, int len, int scaleFactor) { return tevsMul_16sc_Sfs(pSrcDst, pSrcDst, pSrcDst, len, scaleFactor); }

Status tevsSqrt_32f(const float* pSrc, float* pDst, int len) { return elementwise(pSrc, pDst, len, elementary->sqrt32f); }
Status tevsSqrt_32f_I(float* pSrcDst, int len) { return elementwise(pSrcDst, pSrcDst, len, elementary->sqrt32f); }
Status tevsSqrt_64f(const double* pSrc, double* pDst, int len) { return elementwise(pSrc, pDst, len, elementary->sqrt64f); }
Status tevsSqrt_64f_I(double* pSrcDst, int len) { return elementwise(pSrcDst, pSrcDst, len, elementary->sqrt64f); }
Status tevsSqrt_32fc(const Complex32f* pSrc, Complex32f* pDst, int len) { return elementwise(pSrc, pDst, len, elementary->sqrt32fc); }
Status tevsSqrt_32fc_I(Complex32f* pSrcDst, int len) { return elementwise(pSrcDst, pSrcDst, len, elementary->sqrt32fc); }
Status tevsSqrt_64fc(const Complex64f* pSrc, Complex64f* pDst, int len) { return elementwise(pSrc, pDst, len, elementary->sqrt64fc); }
Status tevsSqrt_64fc_I(Complex64f* pSrcDst, int len) { return elementwise(pSrcDst, pSrcDst, len, elementary->sqrt64fc); }
Status tevsSqrt_8u_Sfs(const uint8_t* pSrc, uint8_t* pDst, int len, int scaleFactor) { return scaled(pSrc, pDst, len, scaleFactor, elementary->sqrt8u); }
Status tevsSqrt_8u_ISfs(uint8_t* pSrcDst, int len, int scaleFactor) { return scaled(pSrcDst, pSrcDst, len, scaleFactor, elementary->sqrt8u); }
Status tevsSqrt_16u_Sfs(const uint16_t* pSrc, uint16_t* pDst, int len, int scaleFactor) { return scaled(pSrc, pDst, len, scaleFactor, elementary->sqrt16u); }
Status tevsSqrt_16u_ISfs(uint16_t* pSrcDst, int len, int scaleFactor) { return scaled(pSrcDst, pSrcDst, len, scaleFactor, elementary->sqrt16u); }
Status tevsSqrt_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int len, int scaleFactor) { return scaled(pSrc, pDst, len, scaleFactor, elementary->sqrt16s); }
Status tevsSqrt_16s_ISfs(int16_t* pSrcDst, int len, int scaleFactor) { return scaled(pSrcDst, pSrcDst, len, scaleFactor, elementary->sqrt16s); }
Status tevsSqrt_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int len, int scaleFactor) {
    return scaled(pSrc, pDst, len, scaleFactor, elementary->sqrt16sc);
}
Status tevsSqrt_16sc_ISfs(Complex16s* pSrcDst, int len, int scaleFactor) { return scaled(pSrcDst, pSrcDst, len, scaleFactor, elementary->sqrt16sc); }
Status tevsSqrt_64s_Sfs(const int64_t* pSrc, int64_t* pDst, int len, int scaleFactor) { return sqrtExtended(pSrc, pDst, len, scaleFactor); }
Status tevsSqrt_64s_ISfs(int64_t* pSrcDst, int len, int scaleFactor) { return sqrtExtended(pSrcDst, pSrcDst, len, scaleFactor); }
Status tevsSqrt_32s16s_Sfs(const int32_t* pSrc, int16_t* pDst, int len, int scaleFactor) {
    return scaled(pSrc, pDst, len, scaleFactor, elementary->sqrt32s16s);
}
Status tevsSqrt_64s16s_Sfs(const int64_t* pSrc, int16_t* pDst, int len, int scaleFactor) { return sqrtExtended(pSrc, pDst, len, scaleFactor); }

Status tevsCubrt_32f(const float* pSrc, float* pDst, int len) { return elementwise(pSrc, pDst, len, elementary->cubrt32f); }
Status tevsCubrt_32s16s_Sfs(const int32_t* pSrc, int16_t* pDst, int len, int scaleFactor) {
    return scaled(pSrc, pDst, len, scaleFactor, elementary->cubrt32s16s);
}

Status tevsNormalize_32f(const float* pSrc, float* pDst, int len, float vSub, float vDiv) {
    return normalize(pSrc, pDst, len, vSub, vDiv, elementary->normalize32f);
}
Status tevsNormalize_64f(const double* pSrc, double* pDst, int len, double vSub, double vDiv) {
    return normalize(pSrc, pDst, len, vSub, vDiv, elementary->normalize64f);
}
Status tevsNormalize_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, Complex32f vSub, float vDiv) {
    return normalize(pSrc, pDst, len, vSub, vDiv, elementary->normalize32fc);
}
Status tevsNormalize_64fc(const Complex64f* pSrc, Complex64f* pDst, int len, Complex64f vSub, double vDiv) {
    return normalize(pSrc, pDst, len, vSub, vDiv, elementary->normalize64fc);
}
Status tevsNormalize_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int len, int16_t vSub, int16_t vDiv, int scaleFactor) {
    return normalizeScaled(pSrc, pDst, len, vSub, vDiv, scaleFactor, elementary->normalize16s);
}
Status tevsNormalize_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int len, Complex16s vSub, int16_t vDiv, int scaleFactor) {
    return normalizeScaled(pSrc, pDst, len, vSub, vDiv, scaleFactor, elementary->normalize16sc);
}
