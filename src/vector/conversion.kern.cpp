#include "core/simd/map.h"
#include "core/simd/scale.h"
#include "vector/conversion.table.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

constexpr int kFloats = kRegisterBytes / 4;

void widen16s32f(const int16_t* src, float* dst, int len) {
    map<kFloats, 4>(
        len, dst, [](auto w, auto s) { return __builtin_convertvector(loadWide<w.n>(s), Vec<float, w.n>); }, src);
}

void widen32f64f(const float* src, double* dst, int len) {
    map<kFloats / 2, 2>(
        len, dst, [](auto w, auto s) { return loadWide<w.n>(s); }, src);
}

void narrow64f32f(const double* src, float* dst, int len) {
    map<kFloats, 4>(
        len, dst, [](auto w, auto s) { return narrow(loadTwo<double, w.n / 2>(s)); }, src);
}

// What is below the range converts to INT32_MIN and packs to -32768, as NaN does; what is above would too, so it is cut off first.
template <class ToInt> TEVS_INLINE void narrow32f16s(const float* src, int16_t* dst, int len, ToInt toInt) {
    map<2 * kFloats, 8>(
        len, dst,
        [=](auto w, auto s) {
            const auto v = loadTwo<float, w.n / 2>(s);
            return pack16(toInt(v.a), toInt(v.b));
        },
        src);
}

template <class V> TEVS_INLINE V cutOff(V v) { return atMost(V{} + 32767.0f, v); }
template <class V> TEVS_INLINE V times(V v, float factor) { return v * (V{} + factor); }

constexpr auto nearest = [](auto v) { return nearestInt(cutOff(v)); };
constexpr auto truncated = [](auto v) { return truncatedInt(cutOff(v)); };

void nearest32f16s(const float* src, int16_t* dst, int len) { narrow32f16s(src, dst, len, nearest); }
void truncate32f16s(const float* src, int16_t* dst, int len) { narrow32f16s(src, dst, len, truncated); }
void nearestScaled32f16s(const float* src, int16_t* dst, int len, float f, float g) {
    narrow32f16s(src, dst, len, [=](auto v) { return nearest(times(times(v, f), g)); });
}
void truncateScaled32f16s(const float* src, int16_t* dst, int len, float f, float g) {
    narrow32f16s(src, dst, len, [=](auto v) { return truncated(times(times(v, f), g)); });
}

}   // namespace

extern const ConversionKernels conversion = {
    .widen16s32f = widen16s32f,
    .widen32f64f = widen32f64f,
    .narrow64f32f = narrow64f32f,
    .nearest32f16s = nearest32f16s,
    .truncate32f16s = truncate32f16s,
    .nearestScaled32f16s = nearestScaled32f16s,
    .truncateScaled32f16s = truncateScaled32f16s,
};

}   // namespace tevs::TEVS_LEVEL_NS
