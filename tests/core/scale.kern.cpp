#include "core/scale.table.h"
#include "core/simd/map.h"
#include "core/simd/scale.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

template <class Scaling> void apply(const int32_t* r, int16_t* dst, int len, Scaling scaling) {
    constexpr int n = kLanes<int16_t>;
    map<n, n>(
        len, dst, [=](auto w, auto p) { return scaling(loadTwo<int32_t, w.n / 2>(p)); }, r);
}

void exact(const int32_t* r, int16_t* dst, int len) {
    apply(r, dst, len, [](auto v) { return exact16(v); });
}
void right(const int32_t* r, int16_t* dst, int len, int s) {
    apply(r, dst, len, [=](auto v) { return right16(v, s); });
}
void left(const int32_t* r, int16_t* dst, int len, int s) {
    apply(r, dst, len, [=](auto v) { return left16(v, s); });
}

}   // namespace

extern const ScaleKernels scaleTwins = {.exact = exact, .right = right, .left = left};

}   // namespace tevs::TEVS_LEVEL_NS
