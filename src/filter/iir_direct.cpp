// IIR filters on 16-bit samples without a record, in 32-bit integers that wrap.
#include <stddef.h>
#include <stdint.h>

#include "core/args.h"
#include "core/scale.h"
#include "tevs/iir.h"

namespace tevs {
namespace {

// Products and sums of the recursion: as unsigned numbers, since those of signed ones must not wrap.
uint32_t product(int16_t tap, int32_t value) { return uint32_t(int32_t{tap}) * uint32_t(value); }

// Taps as given, with the exponent behind b[order].
class ShortIir {
public:
    ShortIir(const int16_t* pTaps, int order) : b_(pTaps), a_(pTaps + order + 1), order_(order), shift_(a_[0] & 31), half_(1u << ((shift_ + 31) & 31)) {}

    int16_t operator()(int16_t x, int32_t* d) const {
        if (order_ == 0) return saturate<int16_t>(int32_t(product(b_[0], x) + half_) >> shift_);
        const uint32_t v = product(b_[0], x) + uint32_t(d[0]), odd = uint32_t(int32_t(v) >> shift_) & 1;
        const int32_t y = int32_t(v + half_ + odd - 1) >> shift_;
        for (int k = 1; k < order_; ++k) d[k - 1] = int32_t(product(b_[k], x) - product(a_[k], y) + uint32_t(d[k]));
        d[order_ - 1] = int32_t(product(b_[order_], x) - product(a_[order_], y));
        return saturate<int16_t>(y);
    }

private:
    const int16_t *const b_, *const a_;
    const int order_;
    const int shift_;
    const uint32_t half_;
};

Status direct(const int16_t* pSrc, int16_t* pDst, int len, const int16_t* pTaps, int order, int32_t* pDlyLine) {
    const auto goodExponent = [=] { return pTaps[order + ptrdiff_t{1}] >= 0; };
    if (Status s = Args().require(order >= 0, StatusFilterOrder).ptr(pSrc).ptr(pDst).ptr(pTaps).ptr(pDlyLine).require(goodExponent, StatusTapsFactor).len(len))
        return s;
    const ShortIir filter(pTaps, order);
    for (int n = 0; n < len; ++n) pDst[n] = filter(pSrc[n], pDlyLine);
    return StatusOk;
}

Status biQuadDirect(const int16_t* pSrc, int16_t* pDst, int len, const int16_t* pTaps, int numBq, int32_t* pDlyLine) {
    const auto goodExponents = [=] {
        for (int s = 0; s < numBq; ++s)
            if (pTaps[ptrdiff_t{6} * s + 3] < 0) return false;
        return true;
    };
    if (Status s = Args().require(numBq >= 1, StatusFilterOrder).ptr(pSrc).ptr(pDst).ptr(pTaps).ptr(pDlyLine).require(goodExponents, StatusTapsFactor).len(len))
        return s;
    for (int s = 0; s < numBq; ++s, pSrc = pDst, pTaps += 6, pDlyLine += 2) {
        const ShortIir section(pTaps, 2);
        int32_t d[2] = {pDlyLine[0], pDlyLine[1]};
        for (int n = 0; n < len; ++n) pDst[n] = section(pSrc[n], d);
        pDlyLine[0] = d[0];
        pDlyLine[1] = d[1];
    }
    return StatusOk;
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsIIROne_Direct_16s(int16_t src, int16_t* pDst, const int16_t* pTaps, int order, int32_t* pDlyLine) {
    return direct(&src, pDst, 1, pTaps, order, pDlyLine);
}
Status tevsIIROne_Direct_16s_I(int16_t* pSrcDst, const int16_t* pTaps, int order, int32_t* pDlyLine) {
    return direct(pSrcDst, pSrcDst, 1, pTaps, order, pDlyLine);
}
Status tevsIIR_Direct_16s(const int16_t* pSrc, int16_t* pDst, int len, const int16_t* pTaps, int order, int32_t* pDlyLine) {
    return direct(pSrc, pDst, len, pTaps, order, pDlyLine);
}
Status tevsIIR_Direct_16s_I(int16_t* pSrcDst, int len, const int16_t* pTaps, int order, int32_t* pDlyLine) {
    return direct(pSrcDst, pSrcDst, len, pTaps, order, pDlyLine);
}
Status tevsIIR_BiQuadDirect_16s(const int16_t* pSrc, int16_t* pDst, int len, const int16_t* pTaps, int numBq, int32_t* pDlyLine) {
    return biQuadDirect(pSrc, pDst, len, pTaps, numBq, pDlyLine);
}
Status tevsIIR_BiQuadDirect_16s_I(int16_t* pSrcDst, int len, const int16_t* pTaps, int numBq, int32_t* pDlyLine) {
    return biQuadDirect(pSrcDst, pSrcDst, len, pTaps, numBq, pDlyLine);
}
