// Arithmetic on packed spectra of real signals.
#include <string.h>

#include "core/args.h"
#include "core/rounding.h"
#include "tevs/fft.h"
#include "tevs/movement.h"
#include "vector/arithmetic.table.h"

namespace tevs {
namespace {

enum class Packing { Pack, Perm, Ccs };

// The complex pairs of len packed reals, where they begin, and where the second real value stands; an odd length has none.
struct Layout {
    Layout(Packing packing, int len)
        : pairs((len - 1) / 2),
          second(len % 2                    ? 0
                 : packing == Packing::Perm ? 1
                                            : len - 1),
          firstPair(packing == Packing::Perm && len % 2 == 0 ? 2 : 1) {}
    int pairs, second, firstPair;
};

Status multiply(const float* pSrc1, const float* pSrc2, float* pDst, int len, Packing packing) {
    if (Status s = Args().ptr(pSrc1).ptr(pSrc2).ptr(pDst).len(len)) return s;
    NearestRounding guard;
    const Layout at(packing, len);
    const float first = pSrc1[0] * pSrc2[0], second = pSrc1[at.second] * pSrc2[at.second];
    if (at.pairs > 0) arithmetic->mul32fc(pSrc1 + at.firstPair, pSrc2 + at.firstPair, pDst + at.firstPair, 2 * ptrdiff_t{at.pairs});
    pDst[at.second] = second;
    pDst[0] = first;
    return StatusOk;
}

// pSrc may begin where pDst does: what stands alone is saved before the pairs move up to their places.
Status expand(const float* pSrc, Complex32f* pDst, int len, Packing packing) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    const int pairs = (len - 1) / 2;
    if (packing == Packing::Ccs) {
        memmove(pDst, pSrc, size_t(len / 2 + 1) * sizeof *pDst);
    } else {
        const Layout at(packing, len);
        const float first = pSrc[0], second = pSrc[at.second];
        memmove(pDst + 1, pSrc + at.firstPair, size_t(pairs) * sizeof *pDst);
        if (len % 2 == 0) pDst[len / 2] = {second, 0};
        pDst[0] = {first, 0};
    }
    return pairs > 0 ? tevsConjFlip_32fc(pDst + 1, pDst + (len - pairs), pairs) : StatusOk;
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsMulPack_32f(const float* pSrc1, const float* pSrc2, float* pDst, int len) { return multiply(pSrc1, pSrc2, pDst, len, Packing::Pack); }
Status tevsMulPack_32f_I(const float* pSrc, float* pSrcDst, int len) { return multiply(pSrc, pSrcDst, pSrcDst, len, Packing::Pack); }
Status tevsMulPerm_32f(const float* pSrc1, const float* pSrc2, float* pDst, int len) { return multiply(pSrc1, pSrc2, pDst, len, Packing::Perm); }
Status tevsMulPerm_32f_I(const float* pSrc, float* pSrcDst, int len) { return multiply(pSrc, pSrcDst, pSrcDst, len, Packing::Perm); }

Status tevsConjPack_32fc(const float* pSrc, Complex32f* pDst, int len) { return expand(pSrc, pDst, len, Packing::Pack); }
Status tevsConjPack_32fc_I(Complex32f* pSrcDst, int len) { return expand(pSrcDst ? &pSrcDst->re : nullptr, pSrcDst, len, Packing::Pack); }
Status tevsConjPerm_32fc(const float* pSrc, Complex32f* pDst, int len) { return expand(pSrc, pDst, len, Packing::Perm); }
Status tevsConjPerm_32fc_I(Complex32f* pSrcDst, int len) { return expand(pSrcDst ? &pSrcDst->re : nullptr, pSrcDst, len, Packing::Perm); }
Status tevsConjCcs_32fc(const float* pSrc, Complex32f* pDst, int len) { return expand(pSrc, pDst, len, Packing::Ccs); }
Status tevsConjCcs_32fc_I(Complex32f* pSrcDst, int len) { return expand(pSrcDst ? &pSrcDst->re : nullptr, pSrcDst, len, Packing::Ccs); }
