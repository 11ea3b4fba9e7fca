// Element-wise arithmetic: sums, differences, products, quotients and absolute values, of two vectors or a vector and a constant.
#include "tevs/arithmetic.h"

#include "core/args.h"
#include "core/complex.h"
#include "core/rounding.h"
#include "core/scale.h"
#include "vector/arithmetic.table.h"
#include "vector/movement.h"

namespace tevs {
namespace {

template <class T> Constant<Scalar<T>> constantOf(T val) {
    if constexpr (kComplex<T>)
        return {val.re, val.im};
    else
        return {val, val};
}
template <class T> bool equals(T val, int n) {
    if constexpr (kComplex<T>)
        return val.re == n && val.im == 0;
    else
        return val == n;
}

// ---- float operations, and those of integers that have no scale -------------------------------------------------------------------------

// Inlined where it is called: jumping here would be a tenth of the time of a short vector.
template <class A, class B, class D, class Kernel>
[[gnu::always_inline]] inline Status binary(const A* pSrc1, const B* pSrc2, D* pDst, int len, Kernel* kernel) {
    if (Status s = Args().ptr(pSrc1).ptr(pSrc2).ptr(pDst).len(len)) return s;
    NearestRounding guard;
    kernel(partsOf(pSrc1), partsOf(pSrc2), partsOf(pDst), partCount<D>(len));
    return StatusOk;
}

template <class T, class Kernel> Status constant(const T* pSrc, T val, T* pDst, int len, Kernel* kernel) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    NearestRounding guard;
    kernel(partsOf(pSrc), constantOf(val), partsOf(pDst), partCount<T>(len));
    return StatusOk;
}

[[gnu::always_inline]] inline Status realByComplex(const float* pSrc1, const Complex32f* pSrc2, Complex32f* pDst, int len, Binary<float>* kernel) {
    if (Status s = Args().ptr(pSrc1).ptr(pSrc2).ptr(pDst).len(len)) return s;
    NearestRounding guard;
    kernel(pSrc1, partsOf(pSrc2), partsOf(pDst), len);
    return StatusOk;
}

Status factorTo16s(const float* pSrc, float val, int16_t* pDst, int len, int scaleFactor) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    NearestRounding guard;
    const ScaleFactors by(scaleFactor);
    arithmetic->mulC32f16s(pSrc, val, pDst, len, by.f, by.g);
    return StatusOk;
}

template <class T> Status absolute(const T* pSrc, T* pDst, int len, Unary<T>* kernel) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    kernel(pSrc, pDst, len);
    return StatusOk;
}

// ---- integer operations with a scale ---------------------------------------------------------------------------------------------------------

template <class A, class B, class D, uint64_t Most, class Kernel>
Status binary(const A* pSrc1, const B* pSrc2, D* pDst, int len, int scaleFactor, UpTo<Most, Kernel> op) {
    if (Status s = Args().ptr(pSrc1).ptr(pSrc2).ptr(pDst).len(len)) return s;
    if (scaleFactor > op.kLast) return zero(pDst, len);
    op.kernel(partsOf(pSrc1), partsOf(pSrc2), partsOf(pDst), partCount<D>(len), scaleFactor);
    return StatusOk;
}

template <class T, uint64_t Most, class Kernel> Status constant(const T* pSrc, T val, T* pDst, int len, int scaleFactor, UpTo<Most, Kernel> op) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    if (scaleFactor > op.kLast) return zero(pDst, len);
    op.kernel(partsOf(pSrc), constantOf(val), partsOf(pDst), partCount<T>(len), scaleFactor);
    return StatusOk;
}
// A term of 0 that leaves the vector as it is; a factor of 0, or of 1 that leaves it.
template <class T, uint64_t Most, class Kernel> Status term(const T* pSrc, T val, T* pDst, int len, int scaleFactor, UpTo<Most, Kernel> op) {
    if (scaleFactor == 0 && equals(val, 0)) return copy(pSrc, pDst, len);
    return constant(pSrc, val, pDst, len, scaleFactor, op);
}
template <class T, uint64_t Most, class Kernel> Status factor(const T* pSrc, T val, T* pDst, int len, int scaleFactor, UpTo<Most, Kernel> op) {
    if (equals(val, 0)) return pSrc ? zero(pDst, len) : StatusNullPtr;
    if (scaleFactor == 0 && equals(val, 1)) return copy(pSrc, pDst, len);
    return constant(pSrc, val, pDst, len, scaleFactor, op);
}

template <uint64_t Most>
Status realByComplex(const int32_t* pSrc1, const Complex32s* pSrc2, Complex32s* pDst, int len, int scaleFactor, UpTo<Most, ScaledBinary<int32_t>> op) {
    if (Status s = Args().ptr(pSrc1).ptr(pSrc2).ptr(pDst).len(len)) return s;
    if (scaleFactor > op.kLast) return zero(pDst, len);
    op.kernel(pSrc1, partsOf(pSrc2), partsOf(pDst), len, scaleFactor);
    return StatusOk;
}

// ---- division ----------------------------------------------------------------------------------------------------------------------------------

Status quotientStatus(bool zeroDivisor) { return zeroDivisor ? WarnDivByZero : StatusOk; }

// The first source is the divisor.
template <class A, class B, class D, class Kernel, class... Scale>
Status divide(const A* pSrc1, const B* pSrc2, D* pDst, int len, Kernel* kernel, Scale... scaleFactor) {
    if (Status s = Args().ptr(pSrc1).ptr(pSrc2).ptr(pDst).len(len)) return s;
    return quotientStatus(toNearest(kernel, partsOf(pSrc2), partsOf(pSrc1), partsOf(pDst), partCount<D>(len), scaleFactor...));
}

// Integers are divided; floats are multiplied by the reciprocal.
template <class T, class Kernel> Status divideC(const T* pSrc, T val, T* pDst, int len, Kernel* kernel, int scaleFactor) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len).require(!equals(val, 0), StatusDivByZeroErr)) return s;
    toNearest(kernel, partsOf(pSrc), constantOf(val), partsOf(pDst), partCount<T>(len), scaleFactor);
    return StatusOk;
}
template <class T> Status divideC(const T* pSrc, T val, T* pDst, int len, WithConstant<T>* multiply) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len).require(val > 0 || val < 0, StatusDivByZeroErr)) return s;   // NaN fails too
    toNearest([](const T* src, T v, T* dst, int count, auto* kernel) { kernel(src, constantOf(1 / v), dst, count); }, pSrc, val, pDst, len, multiply);
    return StatusOk;
}
template <class C, class T>
requires kComplex<C> Status divideC(const C* pSrc, C val, C* pDst, int len, WithConstant<T>* multiply) {
    return toNearest(
        [](const C* src, C v, C* dst, int count, auto* kernel) -> Status {
            const T m = v.re * v.re + v.im * v.im;
            if (Status s = Args().ptr(src).ptr(dst).len(count).require(m > 0, StatusDivByZeroErr)) return s;
            kernel(partsOf(src), {v.re / m, -v.im / m}, partsOf(dst), partCount<C>(count));
            return StatusOk;
        },
        pSrc, val, pDst, len, multiply);
}

template <class T, class Kernel> Status divideCRev(const T* pSrc, T val, T* pDst, int len, Kernel* kernel) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    return quotientStatus(toNearest(kernel, pSrc, val, pDst, len));
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsAdd_32f(const float* pSrc1, const float* pSrc2, float* pDst, int len) { return binary(pSrc1, pSrc2, pDst, len, arithmetic->add32f); }
Status tevsAdd_32f_I(const float* pSrc, float* pSrcDst, int len) { return binary(pSrc, pSrcDst, pSrcDst, len, arithmetic->add32f); }
Status tevsAdd_64f(const double* pSrc1, const double* pSrc2, double* pDst, int len) { return binary(pSrc1, pSrc2, pDst, len, arithmetic->add64f); }
Status tevsAdd_64f_I(const double* pSrc, double* pSrcDst, int len) { return binary(pSrc, pSrcDst, pSrcDst, len, arithmetic->add64f); }
Status tevsAdd_32fc(const Complex32f* pSrc1, const Complex32f* pSrc2, Complex32f* pDst, int len) { return binary(pSrc1, pSrc2, pDst, len, arithmetic->add32f); }
Status tevsAdd_32fc_I(const Complex32f* pSrc, Complex32f* pSrcDst, int len) { return binary(pSrc, pSrcDst, pSrcDst, len, arithmetic->add32f); }
Status tevsAdd_64fc(const Complex64f* pSrc1, const Complex64f* pSrc2, Complex64f* pDst, int len) { return binary(pSrc1, pSrc2, pDst, len, arithmetic->add64f); }
Status tevsAdd_64fc_I(const Complex64f* pSrc, Complex64f* pSrcDst, int len) { return binary(pSrc, pSrcDst, pSrcDst, len, arithmetic->add64f); }
Status tevsAdd_8u_Sfs(const uint8_t* pSrc1, const uint8_t* pSrc2, uint8_t* pDst, int len, int scaleFactor) {
    return binary(pSrc1, pSrc2, pDst, len, scaleFactor, arithmetic->scaled8u.add);
}
Status tevsAdd_8u_ISfs(const uint8_t* pSrc, uint8_t* pSrcDst, int len, int scaleFactor) {
    return binary(pSrc, pSrcDst, pSrcDst, len, scaleFactor, arithmetic->scaled8u.add);
}
// Alone, this one looks at its scale before its pointers.
Status tevsAdd_16u_Sfs(const uint16_t* pSrc1, const uint16_t* pSrc2, uint16_t* pDst, int len, int scaleFactor) {
    return scaleFactor > arithmetic->scaled16u.add.kLast ? zero(pDst, len) : binary(pSrc1, pSrc2, pDst, len, scaleFactor, arithmetic->scaled16u.add);
}
Status tevsAdd_16u_ISfs(const uint16_t* pSrc, uint16_t* pSrcDst, int len, int scaleFactor) {
    return binary(pSrc, pSrcDst, pSrcDst, len, scaleFactor, arithmetic->scaled16u.add);
}
Status tevsAdd_16s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int16_t* pDst, int len, int scaleFactor) {
    return binary(pSrc1, pSrc2, pDst, len, scaleFactor, arithmetic->scaled16s.add);
}
Status tevsAdd_16s_ISfs(const int16_t* pSrc, int16_t* pSrcDst, int len, int scaleFactor) {
    return binary(pSrc, pSrcDst, pSrcDst, len, scaleFactor, arithmetic->scaled16s.add);
}
Status tevsAdd_32s_Sfs(const int32_t* pSrc1, const int32_t* pSrc2, int32_t* pDst, int len, int scaleFactor) {
    return binary(pSrc1, pSrc2, pDst, len, scaleFactor, arithmetic->scaled32s.add);
}
Status tevsAdd_32s_ISfs(const int32_t* pSrc, int32_t* pSrcDst, int len, int scaleFactor) {
    return binary(pSrc, pSrcDst, pSrcDst, len, scaleFactor, arithmetic->scaled32s.add);
}
Status tevsAdd_16sc_Sfs(const Complex16s* pSrc1, const Complex16s* pSrc2, Complex16s* pDst, int len, int scaleFactor) {
    return binary(pSrc1, pSrc2, pDst, len, scaleFactor, arithmetic->scaled16s.add);
}
Status tevsAdd_16sc_ISfs(const Complex16s* pSrc, Complex16s* pSrcDst, int len, int scaleFactor) {
    return binary(pSrc, pSrcDst, pSrcDst, len, scaleFactor, arithmetic->scaled16s.add);
}
Status tevsAdd_32sc_Sfs(const Complex32s* pSrc1, const Complex32s* pSrc2, Complex32s* pDst, int len, int scaleFactor) {
    return binary(pSrc1, pSrc2, pDst, len, scaleFactor, arithmetic->scaled32s.add);
}
Status tevsAdd_32sc_ISfs(const Complex32s* pSrc, Complex32s* pSrcDst, int len, int scaleFactor) {
    return binary(pSrc, pSrcDst, pSrcDst, len, scaleFactor, arithmetic->scaled32s.add);
}
Status tevsAdd_16s(const int16_t* pSrc1, const int16_t* pSrc2, int16_t* pDst, int len) { return binary(pSrc1, pSrc2, pDst, len, 0, arithmetic->scaled16s.add); }
Status tevsAdd_16s_I(const int16_t* pSrc, int16_t* pSrcDst, int len) { return binary(pSrc, pSrcDst, pSrcDst, len, 0, arithmetic->scaled16s.add); }
Status tevsAdd_16u(const uint16_t* pSrc1, const uint16_t* pSrc2, uint16_t* pDst, int len) {
    return binary(pSrc1, pSrc2, pDst, len, 0, arithmetic->scaled16u.add);
}
Status tevsAdd_32u(const uint32_t* pSrc1, const uint32_t* pSrc2, uint32_t* pDst, int len) { return binary(pSrc1, pSrc2, pDst, len, arithmetic->add32u); }
Status tevsAdd_8u16u(const uint8_t* pSrc1, const uint8_t* pSrc2, uint16_t* pDst, int len) { return binary(pSrc1, pSrc2, pDst, len, arithmetic->add8u16u); }
Status tevsAdd_16s32f(const int16_t* pSrc1, const int16_t* pSrc2, float* pDst, int len) { return binary(pSrc1, pSrc2, pDst, len, arithmetic->add16s32f); }
Status tevsAdd_16s32s_I(const int16_t* pSrc, int32_t* pSrcDst, int len) { return binary(pSrc, pSrcDst, pSrcDst, len, arithmetic->add16s32s); }

Status tevsSub_32f(const float* pSrc1, const float* pSrc2, float* pDst, int len) { return binary(pSrc2, pSrc1, pDst, len, arithmetic->sub32f); }
Status tevsSub_32f_I(const float* pSrc, float* pSrcDst, int len) { return binary(pSrcDst, pSrc, pSrcDst, len, arithmetic->sub32f); }
Status tevsSub_64f(const double* pSrc1, const double* pSrc2, double* pDst, int len) { return binary(pSrc2, pSrc1, pDst, len, arithmetic->sub64f); }
Status tevsSub_64f_I(const double* pSrc, double* pSrcDst, int len) { return binary(pSrcDst, pSrc, pSrcDst, len, arithmetic->sub64f); }
Status tevsSub_32fc(const Complex32f* pSrc1, const Complex32f* pSrc2, Complex32f* pDst, int len) { return binary(pSrc2, pSrc1, pDst, len, arithmetic->sub32f); }
Status tevsSub_32fc_I(const Complex32f* pSrc, Complex32f* pSrcDst, int len) { return binary(pSrcDst, pSrc, pSrcDst, len, arithmetic->sub32f); }
Status tevsSub_64fc(const Complex64f* pSrc1, const Complex64f* pSrc2, Complex64f* pDst, int len) { return binary(pSrc2, pSrc1, pDst, len, arithmetic->sub64f); }
Status tevsSub_64fc_I(const Complex64f* pSrc, Complex64f* pSrcDst, int len) { return binary(pSrcDst, pSrc, pSrcDst, len, arithmetic->sub64f); }
Status tevsSub_8u_Sfs(const uint8_t* pSrc1, const uint8_t* pSrc2, uint8_t* pDst, int len, int scaleFactor) {
    return binary(pSrc2, pSrc1, pDst, len, scaleFactor, arithmetic->scaled8u.sub);
}
Status tevsSub_8u_ISfs(const uint8_t* pSrc, uint8_t* pSrcDst, int len, int scaleFactor) {
    return binary(pSrcDst, pSrc, pSrcDst, len, scaleFactor, arithmetic->scaled8u.sub);
}
Status tevsSub_16u_Sfs(const uint16_t* pSrc1, const uint16_t* pSrc2, uint16_t* pDst, int len, int scaleFactor) {
    return binary(pSrc2, pSrc1, pDst, len, scaleFactor, arithmetic->scaled16u.sub);
}
Status tevsSub_16u_ISfs(const uint16_t* pSrc, uint16_t* pSrcDst, int len, int scaleFactor) {
    return binary(pSrcDst, pSrc, pSrcDst, len, scaleFactor, arithmetic->scaled16u.sub);
}
Status tevsSub_16s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int16_t* pDst, int len, int scaleFactor) {
    return binary(pSrc2, pSrc1, pDst, len, scaleFactor, arithmetic->scaled16s.sub);
}
Status tevsSub_16s_ISfs(const int16_t* pSrc, int16_t* pSrcDst, int len, int scaleFactor) {
    return binary(pSrcDst, pSrc, pSrcDst, len, scaleFactor, arithmetic->scaled16s.sub);
}
Status tevsSub_32s_Sfs(const int32_t* pSrc1, const int32_t* pSrc2, int32_t* pDst, int len, int scaleFactor) {
    return binary(pSrc2, pSrc1, pDst, len, scaleFactor, arithmetic->scaled32s.sub);
}
Status tevsSub_32s_ISfs(const int32_t* pSrc, int32_t* pSrcDst, int len, int scaleFactor) {
    return binary(pSrcDst, pSrc, pSrcDst, len, scaleFactor, arithmetic->scaled32s.sub);
}
Status tevsSub_16sc_Sfs(const Complex16s* pSrc1, const Complex16s* pSrc2, Complex16s* pDst, int len, int scaleFactor) {
    return binary(pSrc2, pSrc1, pDst, len, scaleFactor, arithmetic->scaled16s.sub);
}
Status tevsSub_16sc_ISfs(const Complex16s* pSrc, Complex16s* pSrcDst, int len, int scaleFactor) {
    return binary(pSrcDst, pSrc, pSrcDst, len, scaleFactor, arithmetic->scaled16s.sub);
}
Status tevsSub_32sc_Sfs(const Complex32s* pSrc1, const Complex32s* pSrc2, Complex32s* pDst, int len, int scaleFactor) {
    return binary(pSrc2, pSrc1, pDst, len, scaleFactor, arithmetic->scaled32s.sub);
}
Status tevsSub_32sc_ISfs(const Complex32s* pSrc, Complex32s* pSrcDst, int len, int scaleFactor) {
    return binary(pSrcDst, pSrc, pSrcDst, len, scaleFactor, arithmetic->scaled32s.sub);
}
Status tevsSub_16s(const int16_t* pSrc1, const int16_t* pSrc2, int16_t* pDst, int len) { return binary(pSrc2, pSrc1, pDst, len, 0, arithmetic->scaled16s.sub); }
Status tevsSub_16s_I(const int16_t* pSrc, int16_t* pSrcDst, int len) { return binary(pSrcDst, pSrc, pSrcDst, len, 0, arithmetic->scaled16s.sub); }
Status tevsSub_16s32f(const int16_t* pSrc1, const int16_t* pSrc2, float* pDst, int len) { return binary(pSrc2, pSrc1, pDst, len, arithmetic->sub16s32f); }

Status tevsMul_32f(const float* pSrc1, const float* pSrc2, float* pDst, int len) { return binary(pSrc1, pSrc2, pDst, len, arithmetic->mul32f); }
Status tevsMul_32f_I(const float* pSrc, float* pSrcDst, int len) { return binary(pSrc, pSrcDst, pSrcDst, len, arithmetic->mul32f); }
Status tevsMul_64f(const double* pSrc1, const double* pSrc2, double* pDst, int len) { return binary(pSrc1, pSrc2, pDst, len, arithmetic->mul64f); }
Status tevsMul_64f_I(const double* pSrc, double* pSrcDst, int len) { return binary(pSrc, pSrcDst, pSrcDst, len, arithmetic->mul64f); }
Status tevsMul_32fc(const Complex32f* pSrc1, const Complex32f* pSrc2, Complex32f* pDst, int len) {
    return binary(pSrc1, pSrc2, pDst, len, arithmetic->mul32fc);
}
Status tevsMul_32fc_I(const Complex32f* pSrc, Complex32f* pSrcDst, int len) { return binary(pSrc, pSrcDst, pSrcDst, len, arithmetic->mul32fc); }
Status tevsMul_64fc(const Complex64f* pSrc1, const Complex64f* pSrc2, Complex64f* pDst, int len) {
    return binary(pSrc1, pSrc2, pDst, len, arithmetic->mul64fc);
}
Status tevsMul_64fc_I(const Complex64f* pSrc, Complex64f* pSrcDst, int len) { return binary(pSrc, pSrcDst, pSrcDst, len, arithmetic->mul64fc); }
Status tevsMul_8u_Sfs(const uint8_t* pSrc1, const uint8_t* pSrc2, uint8_t* pDst, int len, int scaleFactor) {
    return binary(pSrc1, pSrc2, pDst, len, scaleFactor, arithmetic->scaled8u.mul);
}
Status tevsMul_8u_ISfs(const uint8_t* pSrc, uint8_t* pSrcDst, int len, int scaleFactor) {
    return binary(pSrc, pSrcDst, pSrcDst, len, scaleFactor, arithmetic->scaled8u.mul);
}
Status tevsMul_16u_Sfs(const uint16_t* pSrc1, const uint16_t* pSrc2, uint16_t* pDst, int len, int scaleFactor) {
    return binary(pSrc1, pSrc2, pDst, len, scaleFactor, arithmetic->scaled16u.mul);
}
Status tevsMul_16u_ISfs(const uint16_t* pSrc, uint16_t* pSrcDst, int len, int scaleFactor) {
    return binary(pSrc, pSrcDst, pSrcDst, len, scaleFactor, arithmetic->scaled16u.mul);
}
Status tevsMul_16s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int16_t* pDst, int len, int scaleFactor) {
    return binary(pSrc1, pSrc2, pDst, len, scaleFactor, arithmetic->scaled16s.mul);
}
Status tevsMul_16s_ISfs(const int16_t* pSrc, int16_t* pSrcDst, int len, int scaleFactor) {
    return binary(pSrc, pSrcDst, pSrcDst, len, scaleFactor, arithmetic->scaled16s.mul);
}
Status tevsMul_32s_Sfs(const int32_t* pSrc1, const int32_t* pSrc2, int32_t* pDst, int len, int scaleFactor) {
    return binary(pSrc1, pSrc2, pDst, len, scaleFactor, arithmetic->scaled32s.mul);
}
Status tevsMul_32s_ISfs(const int32_t* pSrc, int32_t* pSrcDst, int len, int scaleFactor) {
    return binary(pSrc, pSrcDst, pSrcDst, len, scaleFactor, arithmetic->scaled32s.mul);
}
Status tevsMul_16sc_Sfs(const Complex16s* pSrc1, const Complex16s* pSrc2, Complex16s* pDst, int len, int scaleFactor) {
    return binary(pSrc1, pSrc2, pDst, len, scaleFactor, arithmetic->mul16sc);
}
Status tevsMul_16sc_ISfs(const Complex16s* pSrc, Complex16s* pSrcDst, int len, int scaleFactor) {
    return binary(pSrc, pSrcDst, pSrcDst, len, scaleFactor, arithmetic->mul16sc);
}
Status tevsMul_32sc_Sfs(const Complex32s* pSrc1, const Complex32s* pSrc2, Complex32s* pDst, int len, int scaleFactor) {
    return binary(pSrc1, pSrc2, pDst, len, scaleFactor, arithmetic->mul32sc);
}
Status tevsMul_32sc_ISfs(const Complex32s* pSrc, Complex32s* pSrcDst, int len, int scaleFactor) {
    return binary(pSrc, pSrcDst, pSrcDst, len, scaleFactor, arithmetic->mul32sc);
}
Status tevsMul_32f32fc(const float* pSrc1, const Complex32f* pSrc2, Complex32f* pDst, int len) {
    return realByComplex(pSrc1, pSrc2, pDst, len, arithmetic->mul32f32fc);
}
Status tevsMul_32f32fc_I(const float* pSrc, Complex32f* pSrcDst, int len) { return realByComplex(pSrc, pSrcDst, pSrcDst, len, arithmetic->mul32f32fc); }
Status tevsMul_16u16s_Sfs(const uint16_t* pSrc1, const int16_t* pSrc2, int16_t* pDst, int len, int scaleFactor) {
    return binary(pSrc1, pSrc2, pDst, len, scaleFactor, arithmetic->mul16u16s);
}
Status tevsMul_16s32s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int32_t* pDst, int len, int scaleFactor) {
    return binary(pSrc1, pSrc2, pDst, len, scaleFactor, arithmetic->mul16s32s);
}
Status tevsMul_32s32sc_Sfs(const int32_t* pSrc1, const Complex32s* pSrc2, Complex32s* pDst, int len, int scaleFactor) {
    return realByComplex(pSrc1, pSrc2, pDst, len, scaleFactor, arithmetic->mul32s32sc);
}
Status tevsMul_32s32sc_ISfs(const int32_t* pSrc, Complex32s* pSrcDst, int len, int scaleFactor) {
    return realByComplex(pSrc, pSrcDst, pSrcDst, len, scaleFactor, arithmetic->mul32s32sc);
}
Status tevsMul_Low_32s_Sfs(const int32_t* pSrc1, const int32_t* pSrc2, int32_t* pDst, int len, int scaleFactor) {
    return binary(pSrc1, pSrc2, pDst, len, scaleFactor, arithmetic->scaled32s.mul);
}
Status tevsMul_16s(const int16_t* pSrc1, const int16_t* pSrc2, int16_t* pDst, int len) { return binary(pSrc1, pSrc2, pDst, len, 0, arithmetic->scaled16s.mul); }
Status tevsMul_16s_I(const int16_t* pSrc, int16_t* pSrcDst, int len) { return binary(pSrc, pSrcDst, pSrcDst, len, 0, arithmetic->scaled16s.mul); }
Status tevsMul_8u16u(const uint8_t* pSrc1, const uint8_t* pSrc2, uint16_t* pDst, int len) { return binary(pSrc1, pSrc2, pDst, len, arithmetic->mul8u16u); }
Status tevsMul_16s32f(const int16_t* pSrc1, const int16_t* pSrc2, float* pDst, int len) { return binary(pSrc1, pSrc2, pDst, len, arithmetic->mul16s32f); }

Status tevsDiv_32f(const float* pSrc1, const float* pSrc2, float* pDst, int len) { return divide(pSrc1, pSrc2, pDst, len, arithmetic->div32f); }
Status tevsDiv_32f_I(const float* pSrc, float* pSrcDst, int len) { return divide(pSrc, pSrcDst, pSrcDst, len, arithmetic->div32f); }
Status tevsDiv_64f(const double* pSrc1, const double* pSrc2, double* pDst, int len) { return divide(pSrc1, pSrc2, pDst, len, arithmetic->div64f); }
Status tevsDiv_64f_I(const double* pSrc, double* pSrcDst, int len) { return divide(pSrc, pSrcDst, pSrcDst, len, arithmetic->div64f); }
Status tevsDiv_32fc(const Complex32f* pSrc1, const Complex32f* pSrc2, Complex32f* pDst, int len) {
    return divide(pSrc1, pSrc2, pDst, len, arithmetic->div32fc);
}
Status tevsDiv_32fc_I(const Complex32f* pSrc, Complex32f* pSrcDst, int len) { return divide(pSrc, pSrcDst, pSrcDst, len, arithmetic->div32fc); }
Status tevsDiv_64fc(const Complex64f* pSrc1, const Complex64f* pSrc2, Complex64f* pDst, int len) {
    return divide(pSrc1, pSrc2, pDst, len, arithmetic->div64fc);
}
Status tevsDiv_64fc_I(const Complex64f* pSrc, Complex64f* pSrcDst, int len) { return divide(pSrc, pSrcDst, pSrcDst, len, arithmetic->div64fc); }
Status tevsDiv_8u_Sfs(const uint8_t* pSrc1, const uint8_t* pSrc2, uint8_t* pDst, int len, int scaleFactor) {
    return divide(pSrc1, pSrc2, pDst, len, arithmetic->div8u, scaleFactor);
}
Status tevsDiv_8u_ISfs(const uint8_t* pSrc, uint8_t* pSrcDst, int len, int scaleFactor) {
    return divide(pSrc, pSrcDst, pSrcDst, len, arithmetic->div8u, scaleFactor);
}
Status tevsDiv_16u_Sfs(const uint16_t* pSrc1, const uint16_t* pSrc2, uint16_t* pDst, int len, int scaleFactor) {
    return divide(pSrc1, pSrc2, pDst, len, arithmetic->div16u, scaleFactor);
}
Status tevsDiv_16u_ISfs(const uint16_t* pSrc, uint16_t* pSrcDst, int len, int scaleFactor) {
    return divide(pSrc, pSrcDst, pSrcDst, len, arithmetic->div16u, scaleFactor);
}
Status tevsDiv_16s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int16_t* pDst, int len, int scaleFactor) {
    return divide(pSrc1, pSrc2, pDst, len, arithmetic->div16s, scaleFactor);
}
Status tevsDiv_16s_ISfs(const int16_t* pSrc, int16_t* pSrcDst, int len, int scaleFactor) {
    return divide(pSrc, pSrcDst, pSrcDst, len, arithmetic->div16s, scaleFactor);
}
Status tevsDiv_32s_Sfs(const int32_t* pSrc1, const int32_t* pSrc2, int32_t* pDst, int len, int scaleFactor) {
    return divide(pSrc1, pSrc2, pDst, len, arithmetic->div32s, scaleFactor);
}
Status tevsDiv_32s_ISfs(const int32_t* pSrc, int32_t* pSrcDst, int len, int scaleFactor) {
    return divide(pSrc, pSrcDst, pSrcDst, len, arithmetic->div32s, scaleFactor);
}
Status tevsDiv_16sc_Sfs(const Complex16s* pSrc1, const Complex16s* pSrc2, Complex16s* pDst, int len, int scaleFactor) {
    return divide(pSrc1, pSrc2, pDst, len, arithmetic->div16sc, scaleFactor);
}
Status tevsDiv_16sc_ISfs(const Complex16s* pSrc, Complex16s* pSrcDst, int len, int scaleFactor) {
    return divide(pSrc, pSrcDst, pSrcDst, len, arithmetic->div16sc, scaleFactor);
}
Status tevsDiv_32s16s_Sfs(const int16_t* pSrc1, const int32_t* pSrc2, int16_t* pDst, int len, int scaleFactor) {
    return divide(pSrc1, pSrc2, pDst, len, arithmetic->div32s16s, scaleFactor);
}
Status tevsDiv_16s(const int16_t* pSrc1, const int16_t* pSrc2, int16_t* pDst, int len) { return divide(pSrc1, pSrc2, pDst, len, arithmetic->div16s, 0); }
Status tevsDiv_16sc(const Complex16s* pSrc1, const Complex16s* pSrc2, Complex16s* pDst, int len) {
    return divide(pSrc1, pSrc2, pDst, len, arithmetic->div16sc, 0);
}
Status tevsDiv_32s(const int32_t* pSrc1, const int32_t* pSrc2, int32_t* pDst, int len) { return divide(pSrc1, pSrc2, pDst, len, arithmetic->div32s, 0); }
Status tevsDiv_32s16s(const int16_t* pSrc1, const int32_t* pSrc2, int16_t* pDst, int len) { return divide(pSrc1, pSrc2, pDst, len, arithmetic->div32s16s, 0); }
Status tevsDiv_8u(const uint8_t* pSrc1, const uint8_t* pSrc2, uint8_t* pDst, int len) { return divide(pSrc1, pSrc2, pDst, len, arithmetic->div8u, 0); }

Status tevsAddC_32f(const float* pSrc, float val, float* pDst, int len) { return constant(pSrc, val, pDst, len, arithmetic->addC32f); }
Status tevsAddC_32f_I(float val, float* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, arithmetic->addC32f); }
Status tevsAddC_64f(const double* pSrc, double val, double* pDst, int len) { return constant(pSrc, val, pDst, len, arithmetic->addC64f); }
Status tevsAddC_64f_I(double val, double* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, arithmetic->addC64f); }
Status tevsAddC_32fc(const Complex32f* pSrc, Complex32f val, Complex32f* pDst, int len) { return constant(pSrc, val, pDst, len, arithmetic->addC32f); }
Status tevsAddC_32fc_I(Complex32f val, Complex32f* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, arithmetic->addC32f); }
Status tevsAddC_64fc(const Complex64f* pSrc, Complex64f val, Complex64f* pDst, int len) { return constant(pSrc, val, pDst, len, arithmetic->addC64f); }
Status tevsAddC_64fc_I(Complex64f val, Complex64f* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, arithmetic->addC64f); }
Status tevsAddC_8u_Sfs(const uint8_t* pSrc, uint8_t val, uint8_t* pDst, int len, int scaleFactor) {
    return term(pSrc, val, pDst, len, scaleFactor, arithmetic->scaled8u.addC);
}
Status tevsAddC_8u_ISfs(uint8_t val, uint8_t* pSrcDst, int len, int scaleFactor) {
    return term(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->scaled8u.addC);
}
Status tevsAddC_16u_Sfs(const uint16_t* pSrc, uint16_t val, uint16_t* pDst, int len, int scaleFactor) {
    return term(pSrc, val, pDst, len, scaleFactor, arithmetic->scaled16u.addC);
}
Status tevsAddC_16u_ISfs(uint16_t val, uint16_t* pSrcDst, int len, int scaleFactor) {
    return term(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->scaled16u.addC);
}
Status tevsAddC_16s_Sfs(const int16_t* pSrc, int16_t val, int16_t* pDst, int len, int scaleFactor) {
    return term(pSrc, val, pDst, len, scaleFactor, arithmetic->scaled16s.addC);
}
Status tevsAddC_16s_ISfs(int16_t val, int16_t* pSrcDst, int len, int scaleFactor) {
    return term(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->scaled16s.addC);
}
Status tevsAddC_32s_Sfs(const int32_t* pSrc, int32_t val, int32_t* pDst, int len, int scaleFactor) {
    return term(pSrc, val, pDst, len, scaleFactor, arithmetic->scaled32s.addC);
}
Status tevsAddC_32s_ISfs(int32_t val, int32_t* pSrcDst, int len, int scaleFactor) {
    return term(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->scaled32s.addC);
}
Status tevsAddC_16sc_Sfs(const Complex16s* pSrc, Complex16s val, Complex16s* pDst, int len, int scaleFactor) {
    return term(pSrc, val, pDst, len, scaleFactor, arithmetic->scaled16s.addC);
}
Status tevsAddC_16sc_ISfs(Complex16s val, Complex16s* pSrcDst, int len, int scaleFactor) {
    return term(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->scaled16s.addC);
}
Status tevsAddC_32sc_Sfs(const Complex32s* pSrc, Complex32s val, Complex32s* pDst, int len, int scaleFactor) {
    return term(pSrc, val, pDst, len, scaleFactor, arithmetic->scaled32s.addC);
}
Status tevsAddC_32sc_ISfs(Complex32s val, Complex32s* pSrcDst, int len, int scaleFactor) {
    return term(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->scaled32s.addC);
}
Status tevsAddC_16s_I(int16_t val, int16_t* pSrcDst, int len) { return term(pSrcDst, val, pSrcDst, len, 0, arithmetic->scaled16s.addC); }

Status tevsSubC_32f(const float* pSrc, float val, float* pDst, int len) { return constant(pSrc, val, pDst, len, arithmetic->subC32f); }
Status tevsSubC_32f_I(float val, float* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, arithmetic->subC32f); }
Status tevsSubC_64f(const double* pSrc, double val, double* pDst, int len) { return constant(pSrc, val, pDst, len, arithmetic->subC64f); }
Status tevsSubC_64f_I(double val, double* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, arithmetic->subC64f); }
Status tevsSubC_32fc(const Complex32f* pSrc, Complex32f val, Complex32f* pDst, int len) { return constant(pSrc, val, pDst, len, arithmetic->subC32f); }
Status tevsSubC_32fc_I(Complex32f val, Complex32f* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, arithmetic->subC32f); }
Status tevsSubC_64fc(const Complex64f* pSrc, Complex64f val, Complex64f* pDst, int len) { return constant(pSrc, val, pDst, len, arithmetic->subC64f); }
Status tevsSubC_64fc_I(Complex64f val, Complex64f* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, arithmetic->subC64f); }
Status tevsSubC_8u_Sfs(const uint8_t* pSrc, uint8_t val, uint8_t* pDst, int len, int scaleFactor) {
    return term(pSrc, val, pDst, len, scaleFactor, arithmetic->scaled8u.subC);
}
Status tevsSubC_8u_ISfs(uint8_t val, uint8_t* pSrcDst, int len, int scaleFactor) {
    return term(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->scaled8u.subC);
}
Status tevsSubC_16u_Sfs(const uint16_t* pSrc, uint16_t val, uint16_t* pDst, int len, int scaleFactor) {
    return term(pSrc, val, pDst, len, scaleFactor, arithmetic->scaled16u.subC);
}
Status tevsSubC_16u_ISfs(uint16_t val, uint16_t* pSrcDst, int len, int scaleFactor) {
    return term(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->scaled16u.subC);
}
Status tevsSubC_16s_Sfs(const int16_t* pSrc, int16_t val, int16_t* pDst, int len, int scaleFactor) {
    return term(pSrc, val, pDst, len, scaleFactor, arithmetic->scaled16s.subC);
}
Status tevsSubC_16s_ISfs(int16_t val, int16_t* pSrcDst, int len, int scaleFactor) {
    return term(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->scaled16s.subC);
}
Status tevsSubC_32s_Sfs(const int32_t* pSrc, int32_t val, int32_t* pDst, int len, int scaleFactor) {
    return term(pSrc, val, pDst, len, scaleFactor, arithmetic->scaled32s.subC);
}
Status tevsSubC_32s_ISfs(int32_t val, int32_t* pSrcDst, int len, int scaleFactor) {
    return term(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->scaled32s.subC);
}
Status tevsSubC_16sc_Sfs(const Complex16s* pSrc, Complex16s val, Complex16s* pDst, int len, int scaleFactor) {
    return term(pSrc, val, pDst, len, scaleFactor, arithmetic->scaled16s.subC);
}
Status tevsSubC_16sc_ISfs(Complex16s val, Complex16s* pSrcDst, int len, int scaleFactor) {
    return term(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->scaled16s.subC);
}
Status tevsSubC_32sc_Sfs(const Complex32s* pSrc, Complex32s val, Complex32s* pDst, int len, int scaleFactor) {
    return term(pSrc, val, pDst, len, scaleFactor, arithmetic->scaled32s.subC);
}
Status tevsSubC_32sc_ISfs(Complex32s val, Complex32s* pSrcDst, int len, int scaleFactor) {
    return term(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->scaled32s.subC);
}
Status tevsSubC_16s_I(int16_t val, int16_t* pSrcDst, int len) { return term(pSrcDst, val, pSrcDst, len, 0, arithmetic->scaled16s.subC); }

Status tevsSubCRev_32f(const float* pSrc, float val, float* pDst, int len) { return constant(pSrc, val, pDst, len, arithmetic->subCRev32f); }
Status tevsSubCRev_32f_I(float val, float* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, arithmetic->subCRev32f); }
Status tevsSubCRev_64f(const double* pSrc, double val, double* pDst, int len) { return constant(pSrc, val, pDst, len, arithmetic->subCRev64f); }
Status tevsSubCRev_64f_I(double val, double* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, arithmetic->subCRev64f); }
Status tevsSubCRev_32fc(const Complex32f* pSrc, Complex32f val, Complex32f* pDst, int len) { return constant(pSrc, val, pDst, len, arithmetic->subCRev32f); }
Status tevsSubCRev_32fc_I(Complex32f val, Complex32f* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, arithmetic->subCRev32f); }
Status tevsSubCRev_64fc(const Complex64f* pSrc, Complex64f val, Complex64f* pDst, int len) { return constant(pSrc, val, pDst, len, arithmetic->subCRev64f); }
Status tevsSubCRev_64fc_I(Complex64f val, Complex64f* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, arithmetic->subCRev64f); }
Status tevsSubCRev_8u_Sfs(const uint8_t* pSrc, uint8_t val, uint8_t* pDst, int len, int scaleFactor) {
    return constant(pSrc, val, pDst, len, scaleFactor, arithmetic->scaled8u.subCRev);
}
Status tevsSubCRev_8u_ISfs(uint8_t val, uint8_t* pSrcDst, int len, int scaleFactor) {
    return constant(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->scaled8u.subCRev);
}
Status tevsSubCRev_16u_Sfs(const uint16_t* pSrc, uint16_t val, uint16_t* pDst, int len, int scaleFactor) {
    return constant(pSrc, val, pDst, len, scaleFactor, arithmetic->scaled16u.subCRev);
}
Status tevsSubCRev_16u_ISfs(uint16_t val, uint16_t* pSrcDst, int len, int scaleFactor) {
    return constant(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->scaled16u.subCRev);
}
Status tevsSubCRev_16s_Sfs(const int16_t* pSrc, int16_t val, int16_t* pDst, int len, int scaleFactor) {
    return constant(pSrc, val, pDst, len, scaleFactor, arithmetic->scaled16s.subCRev);
}
Status tevsSubCRev_16s_ISfs(int16_t val, int16_t* pSrcDst, int len, int scaleFactor) {
    return constant(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->scaled16s.subCRev);
}
Status tevsSubCRev_32s_Sfs(const int32_t* pSrc, int32_t val, int32_t* pDst, int len, int scaleFactor) {
    return constant(pSrc, val, pDst, len, scaleFactor, arithmetic->scaled32s.subCRev);
}
Status tevsSubCRev_32s_ISfs(int32_t val, int32_t* pSrcDst, int len, int scaleFactor) {
    return constant(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->scaled32s.subCRev);
}
Status tevsSubCRev_16sc_Sfs(const Complex16s* pSrc, Complex16s val, Complex16s* pDst, int len, int scaleFactor) {
    return constant(pSrc, val, pDst, len, scaleFactor, arithmetic->scaled16s.subCRev);
}
Status tevsSubCRev_16sc_ISfs(Complex16s val, Complex16s* pSrcDst, int len, int scaleFactor) {
    return constant(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->scaled16s.subCRev);
}
Status tevsSubCRev_32sc_Sfs(const Complex32s* pSrc, Complex32s val, Complex32s* pDst, int len, int scaleFactor) {
    return constant(pSrc, val, pDst, len, scaleFactor, arithmetic->scaled32s.subCRev);
}
Status tevsSubCRev_32sc_ISfs(Complex32s val, Complex32s* pSrcDst, int len, int scaleFactor) {
    return constant(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->scaled32s.subCRev);
}

Status tevsMulC_32f(const float* pSrc, float val, float* pDst, int len) { return constant(pSrc, val, pDst, len, arithmetic->mulC32f); }
Status tevsMulC_32f_I(float val, float* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, arithmetic->mulC32f); }
Status tevsMulC_64f(const double* pSrc, double val, double* pDst, int len) { return constant(pSrc, val, pDst, len, arithmetic->mulC64f); }
Status tevsMulC_64f_I(double val, double* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, arithmetic->mulC64f); }
Status tevsMulC_32fc(const Complex32f* pSrc, Complex32f val, Complex32f* pDst, int len) { return constant(pSrc, val, pDst, len, arithmetic->mulC32fc); }
Status tevsMulC_32fc_I(Complex32f val, Complex32f* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, arithmetic->mulC32fc); }
Status tevsMulC_64fc(const Complex64f* pSrc, Complex64f val, Complex64f* pDst, int len) { return constant(pSrc, val, pDst, len, arithmetic->mulC64fc); }
Status tevsMulC_64fc_I(Complex64f val, Complex64f* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, arithmetic->mulC64fc); }
Status tevsMulC_8u_Sfs(const uint8_t* pSrc, uint8_t val, uint8_t* pDst, int len, int scaleFactor) {
    return factor(pSrc, val, pDst, len, scaleFactor, arithmetic->scaled8u.mulC);
}
Status tevsMulC_8u_ISfs(uint8_t val, uint8_t* pSrcDst, int len, int scaleFactor) {
    return factor(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->scaled8u.mulC);
}
Status tevsMulC_16u_Sfs(const uint16_t* pSrc, uint16_t val, uint16_t* pDst, int len, int scaleFactor) {
    return factor(pSrc, val, pDst, len, scaleFactor, arithmetic->scaled16u.mulC);
}
Status tevsMulC_16u_ISfs(uint16_t val, uint16_t* pSrcDst, int len, int scaleFactor) {
    return factor(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->scaled16u.mulC);
}
Status tevsMulC_16s_Sfs(const int16_t* pSrc, int16_t val, int16_t* pDst, int len, int scaleFactor) {
    return factor(pSrc, val, pDst, len, scaleFactor, arithmetic->scaled16s.mulC);
}
Status tevsMulC_16s_ISfs(int16_t val, int16_t* pSrcDst, int len, int scaleFactor) {
    return factor(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->scaled16s.mulC);
}
Status tevsMulC_32s_Sfs(const int32_t* pSrc, int32_t val, int32_t* pDst, int len, int scaleFactor) {
    return factor(pSrc, val, pDst, len, scaleFactor, arithmetic->scaled32s.mulC);
}
Status tevsMulC_32s_ISfs(int32_t val, int32_t* pSrcDst, int len, int scaleFactor) {
    return factor(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->scaled32s.mulC);
}
Status tevsMulC_16sc_Sfs(const Complex16s* pSrc, Complex16s val, Complex16s* pDst, int len, int scaleFactor) {
    return factor(pSrc, val, pDst, len, scaleFactor, arithmetic->mulC16sc);
}
Status tevsMulC_16sc_ISfs(Complex16s val, Complex16s* pSrcDst, int len, int scaleFactor) {
    return factor(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->mulC16sc);
}
Status tevsMulC_32sc_Sfs(const Complex32s* pSrc, Complex32s val, Complex32s* pDst, int len, int scaleFactor) {
    return factor(pSrc, val, pDst, len, scaleFactor, arithmetic->mulC32sc);
}
Status tevsMulC_32sc_ISfs(Complex32s val, Complex32s* pSrcDst, int len, int scaleFactor) {
    return factor(pSrcDst, val, pSrcDst, len, scaleFactor, arithmetic->mulC32sc);
}
Status tevsMulC_32f16s_Sfs(const float* pSrc, float val, int16_t* pDst, int len, int scaleFactor) { return factorTo16s(pSrc, val, pDst, len, scaleFactor); }
Status tevsMulC_16s_I(int16_t val, int16_t* pSrcDst, int len) { return factor(pSrcDst, val, pSrcDst, len, 0, arithmetic->scaled16s.mulC); }
Status tevsMulC_Low_32f16s(const float* pSrc, float val, int16_t* pDst, int len) { return factorTo16s(pSrc, val, pDst, len, 0); }

Status tevsDivC_32f(const float* pSrc, float val, float* pDst, int len) { return divideC(pSrc, val, pDst, len, arithmetic->mulC32f); }
Status tevsDivC_32f_I(float val, float* pSrcDst, int len) { return divideC(pSrcDst, val, pSrcDst, len, arithmetic->mulC32f); }
Status tevsDivC_64f(const double* pSrc, double val, double* pDst, int len) { return divideC(pSrc, val, pDst, len, arithmetic->mulC64f); }
Status tevsDivC_64f_I(double val, double* pSrcDst, int len) { return divideC(pSrcDst, val, pSrcDst, len, arithmetic->mulC64f); }
Status tevsDivC_32fc(const Complex32f* pSrc, Complex32f val, Complex32f* pDst, int len) { return divideC(pSrc, val, pDst, len, arithmetic->mulC32fc); }
Status tevsDivC_32fc_I(Complex32f val, Complex32f* pSrcDst, int len) { return divideC(pSrcDst, val, pSrcDst, len, arithmetic->mulC32fc); }
Status tevsDivC_64fc(const Complex64f* pSrc, Complex64f val, Complex64f* pDst, int len) { return divideC(pSrc, val, pDst, len, arithmetic->mulC64fc); }
Status tevsDivC_64fc_I(Complex64f val, Complex64f* pSrcDst, int len) { return divideC(pSrcDst, val, pSrcDst, len, arithmetic->mulC64fc); }
Status tevsDivC_8u_Sfs(const uint8_t* pSrc, uint8_t val, uint8_t* pDst, int len, int scaleFactor) {
    return divideC(pSrc, val, pDst, len, arithmetic->divC8u, scaleFactor);
}
Status tevsDivC_8u_ISfs(uint8_t val, uint8_t* pSrcDst, int len, int scaleFactor) {
    return divideC(pSrcDst, val, pSrcDst, len, arithmetic->divC8u, scaleFactor);
}
Status tevsDivC_16u_Sfs(const uint16_t* pSrc, uint16_t val, uint16_t* pDst, int len, int scaleFactor) {
    return divideC(pSrc, val, pDst, len, arithmetic->divC16u, scaleFactor);
}
Status tevsDivC_16u_ISfs(uint16_t val, uint16_t* pSrcDst, int len, int scaleFactor) {
    return divideC(pSrcDst, val, pSrcDst, len, arithmetic->divC16u, scaleFactor);
}
Status tevsDivC_16s_Sfs(const int16_t* pSrc, int16_t val, int16_t* pDst, int len, int scaleFactor) {
    return divideC(pSrc, val, pDst, len, arithmetic->divC16s, scaleFactor);
}
Status tevsDivC_16s_ISfs(int16_t val, int16_t* pSrcDst, int len, int scaleFactor) {
    return divideC(pSrcDst, val, pSrcDst, len, arithmetic->divC16s, scaleFactor);
}
Status tevsDivC_16sc_Sfs(const Complex16s* pSrc, Complex16s val, Complex16s* pDst, int len, int scaleFactor) {
    return divideC(pSrc, val, pDst, len, arithmetic->divC16sc, scaleFactor);
}
Status tevsDivC_16sc_ISfs(Complex16s val, Complex16s* pSrcDst, int len, int scaleFactor) {
    return divideC(pSrcDst, val, pSrcDst, len, arithmetic->divC16sc, scaleFactor);
}
Status tevsDivC_8u(const uint8_t* pSrc, uint8_t val, uint8_t* pDst, int len) { return divideC(pSrc, val, pDst, len, arithmetic->divC8u, 0); }
Status tevsDivC_16s(const int16_t* pSrc, int16_t val, int16_t* pDst, int len) { return divideC(pSrc, val, pDst, len, arithmetic->divC16s, 0); }
Status tevsDivC_16sc(const Complex16s* pSrc, Complex16s val, Complex16s* pDst, int len) { return divideC(pSrc, val, pDst, len, arithmetic->divC16sc, 0); }

Status tevsDivCRev_32f(const float* pSrc, float val, float* pDst, int len) { return divideCRev(pSrc, val, pDst, len, arithmetic->divCRev32f); }
Status tevsDivCRev_32f_I(float val, float* pSrcDst, int len) { return divideCRev(pSrcDst, val, pSrcDst, len, arithmetic->divCRev32f); }
Status tevsDivCRev_16u(const uint16_t* pSrc, uint16_t val, uint16_t* pDst, int len) { return divideCRev(pSrc, val, pDst, len, arithmetic->divCRev16u); }
Status tevsDivCRev_16u_I(uint16_t val, uint16_t* pSrcDst, int len) { return divideCRev(pSrcDst, val, pSrcDst, len, arithmetic->divCRev16u); }

Status tevsAddProduct_32f(const float* pSrc1, const float* pSrc2, float* pSrcDst, int len) {
    return binary(pSrc1, pSrc2, pSrcDst, len, arithmetic->addProduct32f);
}
Status tevsAddProduct_64f(const double* pSrc1, const double* pSrc2, double* pSrcDst, int len) {
    return binary(pSrc1, pSrc2, pSrcDst, len, arithmetic->addProduct64f);
}
Status tevsAddProduct_32fc(const Complex32f* pSrc1, const Complex32f* pSrc2, Complex32f* pSrcDst, int len) {
    return binary(pSrc1, pSrc2, pSrcDst, len, arithmetic->addProduct32fc);
}
Status tevsAddProduct_64fc(const Complex64f* pSrc1, const Complex64f* pSrc2, Complex64f* pSrcDst, int len) {
    return binary(pSrc1, pSrc2, pSrcDst, len, arithmetic->addProduct64fc);
}
Status tevsAddProduct_16s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int16_t* pSrcDst, int len, int scaleFactor) {
    return binary(pSrc1, pSrc2, pSrcDst, len, scaleFactor, arithmetic->addProduct16s);
}
Status tevsAddProduct_32s_Sfs(const int32_t* pSrc1, const int32_t* pSrc2, int32_t* pSrcDst, int len, int scaleFactor) {
    return binary(pSrc1, pSrc2, pSrcDst, len, scaleFactor, arithmetic->addProduct32s);
}
Status tevsAddProduct_16s32s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int32_t* pSrcDst, int len, int scaleFactor) {
    return binary(pSrc1, pSrc2, pSrcDst, len, scaleFactor, arithmetic->addProduct16s32s);
}

Status tevsAddProductC_32f(const float* pSrc, float val, float* pSrcDst, int len) { return constant(pSrc, val, pSrcDst, len, arithmetic->addProductC32f); }

Status tevsAbs_32f(const float* pSrc, float* pDst, int len) { return absolute(pSrc, pDst, len, arithmetic->abs32f); }
Status tevsAbs_32f_I(float* pSrcDst, int len) { return absolute(pSrcDst, pSrcDst, len, arithmetic->abs32f); }
Status tevsAbs_64f(const double* pSrc, double* pDst, int len) { return absolute(pSrc, pDst, len, arithmetic->abs64f); }
Status tevsAbs_64f_I(double* pSrcDst, int len) { return absolute(pSrcDst, pSrcDst, len, arithmetic->abs64f); }
Status tevsAbs_16s(const int16_t* pSrc, int16_t* pDst, int len) { return absolute(pSrc, pDst, len, arithmetic->abs16s); }
Status tevsAbs_16s_I(int16_t* pSrcDst, int len) { return absolute(pSrcDst, pSrcDst, len, arithmetic->abs16s); }
Status tevsAbs_32s(const int32_t* pSrc, int32_t* pDst, int len) { return absolute(pSrc, pDst, len, arithmetic->abs32s); }
Status tevsAbs_32s_I(int32_t* pSrcDst, int len) { return absolute(pSrcDst, pSrcDst, len, arithmetic->abs32s); }
