#include "transform/spectrum.table.h"

#include "core/simd/map.h"
#include "transform/complex.kern.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

struct Pair {
    float re, im;
};

void mulPairs(const float* a, const float* b, float* dst, int len) {
    map<kLanes<float>, 4>(
        len, reinterpret_cast<Pair*>(dst),
        [](auto w, const Pair* x, const Pair* y) { return interleaved(mul(loadPairs<w.n>(&x->re), loadPairs<w.n>(&y->re))); }, reinterpret_cast<const Pair*>(a),
        reinterpret_cast<const Pair*>(b));
}

}   // namespace

extern const SpectrumKernels spectrum = {
    .mulPairs = mulPairs,
};

}   // namespace tevs::TEVS_LEVEL_NS
