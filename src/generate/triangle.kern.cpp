#include "generate/triangle.table.h"

#include "core/complex.h"
#include "generate/samples.kern.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// x less its integer part, for 0 <= x < 2^51.
template <class V> TEVS_INLINE V fraction(V x) {
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(V) == 32) return x - (V)_mm256_floor_pd((__m256d)x);
#endif
#if TEVS_LEVEL >= 1
    if constexpr (sizeof(V) == 16) return x - (V)_mm_floor_pd((__m128d)x);
#endif
    const V shifter = constant<V>(0x1.8p52), r = x - ((x + shifter) - shifter);
    return r + (V)(isLess(r, V{}) & (Bits<V>)constant<V>(1));
}

// Each sample from its own phase: no rounding error runs on from sample to sample, and the lanes are independent. A block's phases are k * step from its first, which
// is exact but for the last sum; from block to block the phase is taken down to less than a cycle again.
template <class T> void generated(const Wave& wave, T* dst, int len) {
    constexpr int kBlock = 256;
    const double step = wave.step, fall = wave.fall, down = wave.down, up = wave.up, magn = wave.magn;
    double phase = wave.phase;
    for (; len > 0; len -= kBlock, dst += kBlock) {
        const int count = len < kBlock ? len : kBlock;
        produce<Nearest>(
            reinterpret_cast<Scalar<T>*>(dst), count * kParts<T>,
            [=](auto n, Index at) {
                const auto place = indices<n.n>(at);
                const auto sample = widen(kComplex<T> ? place >> 1 : place), quarters = widen(kComplex<T> ? (place & 1) * 3 : decltype(place){});
                const auto value = [=](auto k, auto q) {
                    using V = decltype(k);
                    const V x = fraction((k * constant<V>(step) + constant<V>(phase)) + q * constant<V>(0.25));
                    // Each line is the higher one where it counts, but for the last bit at the bottom. That of no falling slope at all is NaN at x = 0, which gives the other.
                    const V falling = constant<V>(1) - x * constant<V>(down), rising = (x - constant<V>(fall)) * constant<V>(up) - constant<V>(1);
                    return constant<V>(magn) * atLeast(constant<V>(-1), atMost(constant<V>(1), atLeast(falling, rising)));
                };
                return Two{value(sample.a, quarters.a), value(sample.b, quarters.b)};
            },
            Index{0});
        phase += kBlock * step;
        phase -= double(int(phase));
    }
}

}   // namespace

extern const TriangleKernels triangle = {
    .by16s = generated<int16_t>,
    .by16sc = generated<Complex16s>,
    .by32f = generated<float>,
    .by32fc = generated<Complex32f>,
    .by64f = generated<double>,
    .by64fc = generated<Complex64f>,
};

}   // namespace tevs::TEVS_LEVEL_NS
