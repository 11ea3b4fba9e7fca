// Angles and magnitudes: the arctangent, the polar form of complex vectors and the way back.
#include "tevs/polar.h"

#include <algorithm>
#include <cmath>

#include "core/args.h"
#include "core/rounding.h"
#include "core/scale.h"
#include "vector/movement.h"
#include "vector/polar.table.h"

namespace tevs {

double roundedPhase(double x, double y, double factor) {
    // The widest result has 31 bits and the arctangent 64, so a phase of this kind that looks like a tie here is one with a chance of 2^-33.
    return inExtended([](double u, double v, double f) { return double(std::rint(std::atan2((long double)v, (long double)u) * f)); }, x, y, factor);
}

namespace {

template <class S, class D> Status unary(const S* pSrc, D* pDst, int len, void (*kernel)(const S*, D*, int)) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    toNearest(kernel, pSrc, pDst, len);
    return StatusOk;
}

// Two vectors on one side and one on the other, or two on both, in the order of the arguments.
template <class A, class B, class C> Status three(A* pA, B* pB, C* pC, int len, void (*kernel)(A*, B*, C*, int)) {
    if (Status s = Args().ptr(pA).ptr(pB).ptr(pC).len(len)) return s;
    toNearest(kernel, pA, pB, pC, len);
    return StatusOk;
}
template <class S, class D> Status four(const S* pSrc1, const S* pSrc2, D* pDst1, D* pDst2, int len, void (*kernel)(const S*, const S*, D*, D*, int)) {
    if (Status s = Args().ptr(pSrc1).ptr(pSrc2).ptr(pDst1).ptr(pDst2).len(len)) return s;
    toNearest(kernel, pSrc1, pSrc2, pDst1, pDst2, len);
    return StatusOk;
}

// 2^-scaleFactor. A non-zero result here has a magnitude of 2^-75 to 2^32 before it is scaled: beyond 2^200 every scale leaves 0 or saturates.
double factorOf(int scaleFactor) { return powerOfTwo<double>(-std::clamp(scaleFactor, -200, 200)); }

template <class S, class D> Status scaled(const S* pSrc, D* pDst, int len, int scaleFactor, void (*kernel)(const S*, D*, int, double)) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    toNearest(kernel, pSrc, pDst, len, factorOf(scaleFactor));
    return StatusOk;
}
template <class A, class B, class C> Status scaledThree(A* pA, B* pB, C* pC, int len, int scaleFactor, void (*kernel)(A*, B*, C*, int, double)) {
    if (Status s = Args().ptr(pA).ptr(pB).ptr(pC).len(len)) return s;
    toNearest(kernel, pA, pB, pC, len, factorOf(scaleFactor));
    return StatusOk;
}

// The squared magnitude is at most 2^31: from 32 on every scale leaves 0, and from -16 down all that is not 0 saturates.
constexpr int kPowerRight = 31, kPowerLeft = 16;

Status scaledPower(const Complex16s* pSrc, int16_t* pDst, int len, int scaleFactor) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    if (scaleFactor > kPowerRight) return zero(pDst, len);
    polar->power16s.complex(pSrc, pDst, len, std::max(scaleFactor, -kPowerLeft));
    return StatusOk;
}
Status scaledPower(const int16_t* pSrcRe, const int16_t* pSrcIm, int16_t* pDst, int len, int scaleFactor) {
    if (Status s = Args().ptr(pSrcRe).ptr(pSrcIm).ptr(pDst).len(len)) return s;
    if (scaleFactor > kPowerRight) return zero(pDst, len);
    polar->power16s.split(pSrcRe, pSrcIm, pDst, len, std::max(scaleFactor, -kPowerLeft));
    return StatusOk;
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsArctan_32f(const float* pSrc, float* pDst, int len) { return unary(pSrc, pDst, len, polar->arctan32f); }
Status tevsArctan_32f_I(float* pSrcDst, int len) { return unary(pSrcDst, pSrcDst, len, polar->arctan32f); }
Status tevsArctan_64f(const double* pSrc, double* pDst, int len) { return unary(pSrc, pDst, len, polar->arctan64f); }
Status tevsArctan_64f_I(double* pSrcDst, int len) { return unary(pSrcDst, pSrcDst, len, polar->arctan64f); }

Status tevsMagnitude_32fc(const Complex32f* pSrc, float* pDst, int len) { return unary(pSrc, pDst, len, polar->magnitude32f.complex); }
Status tevsMagnitude_64fc(const Complex64f* pSrc, double* pDst, int len) { return unary(pSrc, pDst, len, polar->magnitude64f.complex); }
Status tevsMagnitude_16sc_Sfs(const Complex16s* pSrc, int16_t* pDst, int len, int scaleFactor) {
    return scaled(pSrc, pDst, len, scaleFactor, polar->magnitude16s.complex);
}
Status tevsMagnitude_16sc32f(const Complex16s* pSrc, float* pDst, int len) { return unary(pSrc, pDst, len, polar->magnitude16s32f.complex); }
Status tevsMagnitude_32f(const float* pSrcRe, const float* pSrcIm, float* pDst, int len) { return three(pSrcRe, pSrcIm, pDst, len, polar->magnitude32f.split); }
Status tevsMagnitude_64f(const double* pSrcRe, const double* pSrcIm, double* pDst, int len) {
    return three(pSrcRe, pSrcIm, pDst, len, polar->magnitude64f.split);
}
Status tevsMagnitude_16s_Sfs(const int16_t* pSrcRe, const int16_t* pSrcIm, int16_t* pDst, int len, int scaleFactor) {
    return scaledThree(pSrcRe, pSrcIm, pDst, len, scaleFactor, polar->magnitude16s.split);
}
Status tevsMagnitude_16s32f(const int16_t* pSrcRe, const int16_t* pSrcIm, float* pDst, int len) {
    return three(pSrcRe, pSrcIm, pDst, len, polar->magnitude16s32f.split);
}

Status tevsPhase_32fc(const Complex32f* pSrc, float* pDst, int len) { return unary(pSrc, pDst, len, polar->phase32f.complex); }
Status tevsPhase_64fc(const Complex64f* pSrc, double* pDst, int len) { return unary(pSrc, pDst, len, polar->phase64f.complex); }
Status tevsPhase_16sc_Sfs(const Complex16s* pSrc, int16_t* pDst, int len, int scaleFactor) {
    return scaled(pSrc, pDst, len, scaleFactor, polar->phase16s.complex);
}
Status tevsPhase_32sc_Sfs(const Complex32s* pSrc, int32_t* pDst, int len, int scaleFactor) { return scaled(pSrc, pDst, len, scaleFactor, polar->phase32sc); }
Status tevsPhase_16sc32f(const Complex16s* pSrc, float* pDst, int len) { return unary(pSrc, pDst, len, polar->phase16s32f.complex); }
Status tevsPhase_32f(const float* pSrcRe, const float* pSrcIm, float* pDst, int len) { return three(pSrcRe, pSrcIm, pDst, len, polar->phase32f.split); }
Status tevsPhase_64f(const double* pSrcRe, const double* pSrcIm, double* pDst, int len) { return three(pSrcRe, pSrcIm, pDst, len, polar->phase64f.split); }
Status tevsPhase_16s_Sfs(const int16_t* pSrcRe, const int16_t* pSrcIm, int16_t* pDst, int len, int scaleFactor) {
    return scaledThree(pSrcRe, pSrcIm, pDst, len, scaleFactor, polar->phase16s.split);
}
Status tevsPhase_16s32f(const int16_t* pSrcRe, const int16_t* pSrcIm, float* pDst, int len) {
    return three(pSrcRe, pSrcIm, pDst, len, polar->phase16s32f.split);
}

Status tevsPowerSpectr_32fc(const Complex32f* pSrc, float* pDst, int len) { return unary(pSrc, pDst, len, polar->power32f.complex); }
Status tevsPowerSpectr_64fc(const Complex64f* pSrc, double* pDst, int len) { return unary(pSrc, pDst, len, polar->power64f.complex); }
Status tevsPowerSpectr_16sc_Sfs(const Complex16s* pSrc, int16_t* pDst, int len, int scaleFactor) { return scaledPower(pSrc, pDst, len, scaleFactor); }
Status tevsPowerSpectr_16sc32f(const Complex16s* pSrc, float* pDst, int len) { return unary(pSrc, pDst, len, polar->power16s32f.complex); }
Status tevsPowerSpectr_32f(const float* pSrcRe, const float* pSrcIm, float* pDst, int len) { return three(pSrcRe, pSrcIm, pDst, len, polar->power32f.split); }
Status tevsPowerSpectr_64f(const double* pSrcRe, const double* pSrcIm, double* pDst, int len) {
    return three(pSrcRe, pSrcIm, pDst, len, polar->power64f.split);
}
Status tevsPowerSpectr_16s_Sfs(const int16_t* pSrcRe, const int16_t* pSrcIm, int16_t* pDst, int len, int scaleFactor) {
    return scaledPower(pSrcRe, pSrcIm, pDst, len, scaleFactor);
}
Status tevsPowerSpectr_16s32f(const int16_t* pSrcRe, const int16_t* pSrcIm, float* pDst, int len) {
    return three(pSrcRe, pSrcIm, pDst, len, polar->power16s32f.split);
}

Status tevsCartToPolar_32fc(const Complex32f* pSrc, float* pDstMagn, float* pDstPhase, int len) {
    return three(pSrc, pDstMagn, pDstPhase, len, polar->toPolar32fc);
}
Status tevsCartToPolar_64fc(const Complex64f* pSrc, double* pDstMagn, double* pDstPhase, int len) {
    return three(pSrc, pDstMagn, pDstPhase, len, polar->toPolar64fc);
}
Status tevsCartToPolar_16sc_Sfs(const Complex16s* pSrc, int16_t* pDstMagn, int16_t* pDstPhase, int len, int scaleFactor) {
    return scaledThree(pSrc, pDstMagn, pDstPhase, len, scaleFactor, polar->toPolar16sc);
}
Status tevsCartToPolar_32f(const float* pSrcRe, const float* pSrcIm, float* pDstMagn, float* pDstPhase, int len) {
    return four(pSrcRe, pSrcIm, pDstMagn, pDstPhase, len, polar->toPolar32f);
}
Status tevsCartToPolar_64f(const double* pSrcRe, const double* pSrcIm, double* pDstMagn, double* pDstPhase, int len) {
    return four(pSrcRe, pSrcIm, pDstMagn, pDstPhase, len, polar->toPolar64f);
}

Status tevsPolarToCart_32fc(const float* pSrcMagn, const float* pSrcPhase, Complex32f* pDst, int len) {
    return three(pSrcMagn, pSrcPhase, pDst, len, polar->toCart32fc);
}
Status tevsPolarToCart_64fc(const double* pSrcMagn, const double* pSrcPhase, Complex64f* pDst, int len) {
    return three(pSrcMagn, pSrcPhase, pDst, len, polar->toCart64fc);
}
Status tevsPolarToCart_16sc_Sfs(const int16_t* pSrcMagn, const int16_t* pSrcPhase, Complex16s* pDst, int len, int scaleFactor) {
    return scaledThree(pSrcMagn, pSrcPhase, pDst, len, scaleFactor, polar->toCart16sc);
}
Status tevsPolarToCart_32sc(const int32_t* pSrcMagn, const int32_t* pSrcPhase, Complex32s* pDst, int len) {
    return three(pSrcMagn, pSrcPhase, pDst, len, polar->toCart32sc);
}
Status tevsPolarToCart_32f(const float* pSrcMagn, const float* pSrcPhase, float* pDstRe, float* pDstIm, int len) {
    return four(pSrcMagn, pSrcPhase, pDstRe, pDstIm, len, polar->toCart32f);
}
Status tevsPolarToCart_64f(const double* pSrcMagn, const double* pSrcPhase, double* pDstRe, double* pDstIm, int len) {
    return four(pSrcMagn, pSrcPhase, pDstRe, pDstIm, len, polar->toCart64f);
}
