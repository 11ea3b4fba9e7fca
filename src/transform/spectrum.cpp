// Arithmetic on packed spectra of real signals.
#include "core/args.h"
#include "core/complex.h"
#include "core/rounding.h"
#include "core/scale.h"
#include "tevs/fft.h"
#include "transform/packing.h"
#include "vector/arithmetic.table.h"
#include "vector/movement.h"
#include "vector/movement.table.h"

namespace tevs {
namespace {

// The pairs by kernel, what stands alone by times. Either source may be pDst.
template <class T, class Times, class Kernel, class... Scale>
void multiply(const T* pSrc1, const T* pSrc2, T* pDst, int len, Packing packing, Times times, Kernel* kernel, Scale... scaleFactor) {
    const int pairs = (len - 1) / 2, from = firstPair(packing, len), at = len % 2 ? 0 : secondReal(packing, len);
    const T first = times(pSrc1[0], pSrc2[0]), second = times(pSrc1[at], pSrc2[at]);
    if (pairs > 0) kernel(pSrc1 + from, pSrc2 + from, pDst + from, 2 * ptrdiff_t{pairs}, scaleFactor...);
    pDst[at] = second;
    pDst[0] = first;
}

template <class T> Status product(const T* pSrc1, const T* pSrc2, T* pDst, int len, Packing packing, Binary<T>* kernel) {
    if (Status s = Args().ptr(pSrc1).ptr(pSrc2).ptr(pDst).len(len)) return s;
    NearestRounding guard;
    multiply(
        pSrc1, pSrc2, pDst, len, packing, [](T a, T b) { return a * b; }, kernel);
    return StatusOk;
}

// What stands alone is a real product, and rounds to 0 where complex ones do.
Status product(const int16_t* pSrc1, const int16_t* pSrc2, int16_t* pDst, int len, int scaleFactor, Packing packing) {
    if (Status s = Args().ptr(pSrc1).ptr(pSrc2).ptr(pDst).len(len)) return s;
    if (scaleFactor > arithmetic->mul16sc.kLast) return zero(pDst, len);
    const auto times = [=](int32_t a, int32_t b) { return scaled<int16_t, 30>(a * b, scaleFactor); };
    multiply(pSrc1, pSrc2, pDst, len, packing, times, arithmetic->mul16sc.kernel, scaleFactor);
    return StatusOk;
}

// pSrc may begin where pDst does: what stands alone is saved before the pairs move up to their places.
template <class T, class C> Status expand(const T* pSrc, C* pDst, int len, Packing packing) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    const int pairs = (len - 1) / 2, at = len % 2 ? 0 : secondReal(packing, len);
    const bool ccs = packing == Packing::Ccs;
    const C first = {pSrc[0], ccs ? pSrc[1] : T(0)}, middle = {pSrc[at], ccs ? pSrc[at + 1] : T(0)};
    const auto unfold = sizeof(T) == 2 ? movement->unfold16 : sizeof(T) == 4 ? movement->unfold32 : movement->unfold64;
    if (pairs > 0) unfold(pSrc + firstPair(packing, len), pDst + 1, pDst + (len - pairs), pairs);
    if (len % 2 == 0) pDst[len / 2] = middle;
    pDst[0] = first;
    return StatusOk;
}
// In place, a whole spectrum's memory begins with the packed one.
template <class C> Status expand(C* pSrcDst, int len, Packing packing) { return expand(partsOf(static_cast<const C*>(pSrcDst)), pSrcDst, len, packing); }

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsMulPack_32f(const float* pSrc1, const float* pSrc2, float* pDst, int len) {
    return product(pSrc1, pSrc2, pDst, len, Packing::Pack, arithmetic->mul32fc);
}
Status tevsMulPack_32f_I(const float* pSrc, float* pSrcDst, int len) { return product(pSrc, pSrcDst, pSrcDst, len, Packing::Pack, arithmetic->mul32fc); }
Status tevsMulPack_64f(const double* pSrc1, const double* pSrc2, double* pDst, int len) {
    return product(pSrc1, pSrc2, pDst, len, Packing::Pack, arithmetic->mul64fc);
}
Status tevsMulPack_64f_I(const double* pSrc, double* pSrcDst, int len) { return product(pSrc, pSrcDst, pSrcDst, len, Packing::Pack, arithmetic->mul64fc); }
Status tevsMulPack_16s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int16_t* pDst, int len, int scaleFactor) {
    return product(pSrc1, pSrc2, pDst, len, scaleFactor, Packing::Pack);
}
Status tevsMulPack_16s_ISfs(const int16_t* pSrc, int16_t* pSrcDst, int len, int scaleFactor) {
    return product(pSrc, pSrcDst, pSrcDst, len, scaleFactor, Packing::Pack);
}
Status tevsMulPerm_32f(const float* pSrc1, const float* pSrc2, float* pDst, int len) {
    return product(pSrc1, pSrc2, pDst, len, Packing::Perm, arithmetic->mul32fc);
}
Status tevsMulPerm_32f_I(const float* pSrc, float* pSrcDst, int len) { return product(pSrc, pSrcDst, pSrcDst, len, Packing::Perm, arithmetic->mul32fc); }
Status tevsMulPerm_64f(const double* pSrc1, const double* pSrc2, double* pDst, int len) {
    return product(pSrc1, pSrc2, pDst, len, Packing::Perm, arithmetic->mul64fc);
}
Status tevsMulPerm_64f_I(const double* pSrc, double* pSrcDst, int len) { return product(pSrc, pSrcDst, pSrcDst, len, Packing::Perm, arithmetic->mul64fc); }
Status tevsMulPerm_16s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int16_t* pDst, int len, int scaleFactor) {
    return product(pSrc1, pSrc2, pDst, len, scaleFactor, Packing::Perm);
}
Status tevsMulPerm_16s_ISfs(const int16_t* pSrc, int16_t* pSrcDst, int len, int scaleFactor) {
    return product(pSrc, pSrcDst, pSrcDst, len, scaleFactor, Packing::Perm);
}
Status tevsMulPackConj_32f_I(const float* pSrc, float* pSrcDst, int len) {
    return product(pSrcDst, pSrc, pSrcDst, len, Packing::Pack, arithmetic->mulConj32fc);
}
Status tevsMulPackConj_64f_I(const double* pSrc, double* pSrcDst, int len) {
    return product(pSrcDst, pSrc, pSrcDst, len, Packing::Pack, arithmetic->mulConj64fc);
}

Status tevsConjPack_16sc(const int16_t* pSrc, Complex16s* pDst, int len) { return expand(pSrc, pDst, len, Packing::Pack); }
Status tevsConjPack_16sc_I(Complex16s* pSrcDst, int len) { return expand(pSrcDst, len, Packing::Pack); }
Status tevsConjPack_32fc(const float* pSrc, Complex32f* pDst, int len) { return expand(pSrc, pDst, len, Packing::Pack); }
Status tevsConjPack_32fc_I(Complex32f* pSrcDst, int len) { return expand(pSrcDst, len, Packing::Pack); }
Status tevsConjPack_64fc(const double* pSrc, Complex64f* pDst, int len) { return expand(pSrc, pDst, len, Packing::Pack); }
Status tevsConjPack_64fc_I(Complex64f* pSrcDst, int len) { return expand(pSrcDst, len, Packing::Pack); }
Status tevsConjPerm_16sc(const int16_t* pSrc, Complex16s* pDst, int len) { return expand(pSrc, pDst, len, Packing::Perm); }
Status tevsConjPerm_16sc_I(Complex16s* pSrcDst, int len) { return expand(pSrcDst, len, Packing::Perm); }
Status tevsConjPerm_32fc(const float* pSrc, Complex32f* pDst, int len) { return expand(pSrc, pDst, len, Packing::Perm); }
Status tevsConjPerm_32fc_I(Complex32f* pSrcDst, int len) { return expand(pSrcDst, len, Packing::Perm); }
Status tevsConjPerm_64fc(const double* pSrc, Complex64f* pDst, int len) { return expand(pSrc, pDst, len, Packing::Perm); }
Status tevsConjPerm_64fc_I(Complex64f* pSrcDst, int len) { return expand(pSrcDst, len, Packing::Perm); }
Status tevsConjCcs_16sc(const int16_t* pSrc, Complex16s* pDst, int len) { return expand(pSrc, pDst, len, Packing::Ccs); }
Status tevsConjCcs_16sc_I(Complex16s* pSrcDst, int len) { return expand(pSrcDst, len, Packing::Ccs); }
Status tevsConjCcs_32fc(const float* pSrc, Complex32f* pDst, int len) { return expand(pSrc, pDst, len, Packing::Ccs); }
Status tevsConjCcs_32fc_I(Complex32f* pSrcDst, int len) { return expand(pSrcDst, len, Packing::Ccs); }
Status tevsConjCcs_64fc(const double* pSrc, Complex64f* pDst, int len) { return expand(pSrc, pDst, len, Packing::Ccs); }
Status tevsConjCcs_64fc_I(Complex64f* pSrcDst, int len) { return expand(pSrcDst, len, Packing::Ccs); }
