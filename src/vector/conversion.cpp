// Conversion between sample types: each element in another type, widened exactly, or narrowed with rounding and saturation.
#include "tevs/conversion.h"

#include <algorithm>

#include "core/args.h"
#include "core/rounding.h"
#include "vector/conversion.table.h"

namespace tevs {
namespace {

template <class S, class D> Status convert(const S* pSrc, D* pDst, int len, void (*kernel)(const S*, D*, int)) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    NearestRounding guard;
    kernel(pSrc, pDst, len);
    return StatusOk;
}

constexpr float powerOfTwo(int e) { return __builtin_bit_cast(float, uint32_t(e + 127) << 23); }

template <class D>
Status convertScaled(const float* pSrc, D* pDst, int len, int scaleFactor, void (*plain)(const float*, D*, int),
                     void (*scaled)(const float*, D*, int, float, float)) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    NearestRounding guard;
    if (scaleFactor == 0) {
        plain(pSrc, pDst, len);
        return StatusOk;
    }
    // A non-zero float has a magnitude of 2^-149 to 2^128, so scales beyond +-190 change no 32-bit result. The factor for such scales is out of
    // a float's range: half of the exponent goes into each of two factors. A product that overflows between them saturates in the end, one
    // that loses bits to underflow rounds to 0, and all others are exact.
    const int e = -std::clamp(scaleFactor, -190, 190);
    scaled(pSrc, pDst, len, powerOfTwo(e / 2), powerOfTwo(e - e / 2));
    return StatusOk;
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsConvert_16s32f(const int16_t* pSrc, float* pDst, int len) { return convert(pSrc, pDst, len, conversion->widen16s32f); }
Status tevsConvert_32f64f(const float* pSrc, double* pDst, int len) { return convert(pSrc, pDst, len, conversion->widen32f64f); }
Status tevsConvert_64f32f(const double* pSrc, float* pDst, int len) { return convert(pSrc, pDst, len, conversion->narrow64f32f); }

Status tevsConvert_32f16s_Sfs(const float* pSrc, int16_t* pDst, int len, int rndMode, int scaleFactor) {
    return rndMode == RoundTowardZero ? convertScaled(pSrc, pDst, len, scaleFactor, conversion->truncate32f16s, conversion->truncateScaled32f16s)
                                      : convertScaled(pSrc, pDst, len, scaleFactor, conversion->nearest32f16s, conversion->nearestScaled32f16s);
}
