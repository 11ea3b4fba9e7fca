// Dot products.
#include "tevs/dotprod.h"

#include <algorithm>

#include "core/args.h"
#include "core/rounding.h"
#include "core/scale.h"
#include "vector/dotprod.table.h"

namespace tevs {
namespace {

// From the sum that a kernel gives to the result.
float single(double s) { return float(s); }
float single(int64_t s) { return toFloat<float>(s); }
constexpr auto asIs = [](auto sum) { return sum; };
constexpr auto to32f = [](auto sum) { return single(sum); };
constexpr auto to32fc = [](auto sum) { return Complex32f{single(sum.re), single(sum.im)}; };

// Results of 16 bits act on scale factors beyond 31 as on 31, so 2^31 always leaves a 1, and below -15 as on -15.
struct Scaled16s {
    int scaleFactor;
    int16_t operator()(int64_t s) const { return scaled<int16_t, 62>(s, std::clamp(scaleFactor, -15, 31)); }
    Complex16s operator()(Complex64s s) const { return {(*this)(s.re), (*this)(s.im)}; }
};

struct Scaled32s {
    int scaleFactor;
    int32_t operator()(int64_t s) const { return scaled<int32_t, 62>(s, scaleFactor); }
    Complex32s operator()(Complex64s s) const { return {(*this)(s.re), (*this)(s.im)}; }
    // The sum, below 2^94, is first shifted right by k, as far as leaves the scaling two bits to round by; what goes out is kept as a 1 in the lowest bit.
    // A sum that does not fit 62 bits then saturates.
    int32_t operator()(WideSum s) const {
        const int k = std::clamp(scaleFactor, 2, 34) - 2;
        const int64_t limit = int64_t{1} << (14 + k);
        if (s.high >= limit) return INT32_MAX;
        if (s.high < -limit) return INT32_MIN;
        const bool out = (s.low & ((int64_t{1} << k) - 1)) != 0;
        return scaled<int32_t, 62>(((s.high << (48 - k)) + (s.low >> k)) | int64_t{out}, std::max(scaleFactor, -64) - k);
    }
    Complex32s operator()(ComplexWideSum s) const { return {(*this)(s.re), (*this)(s.im)}; }
};

template <class A, class B, class R, class D, class Finish>
Status dot(const A* pSrc1, const B* pSrc2, int len, D* pDp, R (*kernel)(const A*, const B*, int), Finish finish) {
    if (Status s = Args().ptr(pSrc1).ptr(pSrc2).ptr(pDp).len(len)) return s;
    NearestRounding guard;
    *pDp = finish(kernel(pSrc1, pSrc2, len));
    return StatusOk;
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsDotProd_32f(const float* pSrc1, const float* pSrc2, int len, float* pDp) { return dot(pSrc1, pSrc2, len, pDp, dotProd->single32f, to32f); }
Status tevsDotProd_64f(const double* pSrc1, const double* pSrc2, int len, double* pDp) { return dot(pSrc1, pSrc2, len, pDp, dotProd->real64f, asIs); }
Status tevsDotProd_32fc(const Complex32f* pSrc1, const Complex32f* pSrc2, int len, Complex32f* pDp) {
    return dot(pSrc1, pSrc2, len, pDp, dotProd->singleComplex32f, to32fc);
}
Status tevsDotProd_64fc(const Complex64f* pSrc1, const Complex64f* pSrc2, int len, Complex64f* pDp) {
    return dot(pSrc1, pSrc2, len, pDp, dotProd->complex64f, asIs);
}
Status tevsDotProd_32f64f(const float* pSrc1, const float* pSrc2, int len, double* pDp) { return dot(pSrc1, pSrc2, len, pDp, dotProd->real32f, asIs); }
Status tevsDotProd_32fc64fc(const Complex32f* pSrc1, const Complex32f* pSrc2, int len, Complex64f* pDp) {
    return dot(pSrc1, pSrc2, len, pDp, dotProd->complex32f, asIs);
}
Status tevsDotProd_32f32fc(const float* pSrc1, const Complex32f* pSrc2, int len, Complex32f* pDp) {
    return dot(pSrc1, pSrc2, len, pDp, dotProd->singleMixed32f, to32fc);
}
Status tevsDotProd_32f32fc64fc(const float* pSrc1, const Complex32f* pSrc2, int len, Complex64f* pDp) {
    return dot(pSrc1, pSrc2, len, pDp, dotProd->mixed32f, asIs);
}
Status tevsDotProd_64f64fc(const double* pSrc1, const Complex64f* pSrc2, int len, Complex64f* pDp) {
    return dot(pSrc1, pSrc2, len, pDp, dotProd->mixed64f, asIs);
}
Status tevsDotProd_16s64s(const int16_t* pSrc1, const int16_t* pSrc2, int len, int64_t* pDp) { return dot(pSrc1, pSrc2, len, pDp, dotProd->real16s, asIs); }
Status tevsDotProd_16s32f(const int16_t* pSrc1, const int16_t* pSrc2, int len, float* pDp) { return dot(pSrc1, pSrc2, len, pDp, dotProd->real16s, to32f); }
Status tevsDotProd_16sc64sc(const Complex16s* pSrc1, const Complex16s* pSrc2, int len, Complex64s* pDp) {
    return dot(pSrc1, pSrc2, len, pDp, dotProd->complex16s, asIs);
}
Status tevsDotProd_16sc32fc(const Complex16s* pSrc1, const Complex16s* pSrc2, int len, Complex32f* pDp) {
    return dot(pSrc1, pSrc2, len, pDp, dotProd->complex16s, to32fc);
}
Status tevsDotProd_16s16sc64sc(const int16_t* pSrc1, const Complex16s* pSrc2, int len, Complex64s* pDp) {
    return dot(pSrc1, pSrc2, len, pDp, dotProd->mixed16s, asIs);
}
Status tevsDotProd_16s16sc32fc(const int16_t* pSrc1, const Complex16s* pSrc2, int len, Complex32f* pDp) {
    return dot(pSrc1, pSrc2, len, pDp, dotProd->mixed16s, to32fc);
}
Status tevsDotProd_16s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int len, int16_t* pDp, int scaleFactor) {
    return dot(pSrc1, pSrc2, len, pDp, dotProd->real16s, Scaled16s{scaleFactor});
}
Status tevsDotProd_16sc_Sfs(const Complex16s* pSrc1, const Complex16s* pSrc2, int len, Complex16s* pDp, int scaleFactor) {
    return dot(pSrc1, pSrc2, len, pDp, dotProd->complex16s, Scaled16s{scaleFactor});
}
Status tevsDotProd_32s_Sfs(const int32_t* pSrc1, const int32_t* pSrc2, int len, int32_t* pDp, int scaleFactor) {
    return dot(pSrc1, pSrc2, len, pDp, dotProd->real32s, Scaled32s{scaleFactor});
}
Status tevsDotProd_32sc_Sfs(const Complex32s* pSrc1, const Complex32s* pSrc2, int len, Complex32s* pDp, int scaleFactor) {
    return dot(pSrc1, pSrc2, len, pDp, dotProd->complex32s, Scaled32s{scaleFactor});
}
Status tevsDotProd_16s32s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int len, int32_t* pDp, int scaleFactor) {
    return dot(pSrc1, pSrc2, len, pDp, dotProd->real16s, Scaled32s{scaleFactor});
}
Status tevsDotProd_16sc32sc_Sfs(const Complex16s* pSrc1, const Complex16s* pSrc2, int len, Complex32s* pDp, int scaleFactor) {
    return dot(pSrc1, pSrc2, len, pDp, dotProd->complex16s, Scaled32s{scaleFactor});
}
Status tevsDotProd_16s16sc_Sfs(const int16_t* pSrc1, const Complex16s* pSrc2, int len, Complex16s* pDp, int scaleFactor) {
    return dot(pSrc1, pSrc2, len, pDp, dotProd->mixed16s, Scaled16s{scaleFactor});
}
Status tevsDotProd_16s16sc32sc_Sfs(const int16_t* pSrc1, const Complex16s* pSrc2, int len, Complex32s* pDp, int scaleFactor) {
    return dot(pSrc1, pSrc2, len, pDp, dotProd->mixed16s, Scaled32s{scaleFactor});
}
Status tevsDotProd_16s32s32s_Sfs(const int16_t* pSrc1, const int32_t* pSrc2, int len, int32_t* pDp, int scaleFactor) {
    return dot(pSrc1, pSrc2, len, pDp, dotProd->real16s32s, Scaled32s{scaleFactor});
}
Status tevsDotProd_32s32sc_Sfs(const int32_t* pSrc1, const Complex32s* pSrc2, int len, Complex32s* pDp, int scaleFactor) {
    return dot(pSrc1, pSrc2, len, pDp, dotProd->mixed32s, Scaled32s{scaleFactor});
}
