#include "generate/random.table.h"

#include "core/simd/explog.h"
#include "generate/samples.kern.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

using Doubles = Vec<double, kLanes<double>>;

template <class Mode, class T> void uniform(const int32_t* raw, T* dst, int len, double scale, double mean) {
    produce<Mode>(
        dst, len,
        [=](auto n, const int32_t* r) {
            return both(widen(load<int32_t, n.n>(r)), [=](auto v) {
                using V = decltype(v);
                return v * constant<V>(scale) + constant<V>(mean);
            });
        },
        raw);
}

void normal(PolarPairs& pairs, int count, double stdDev, double* dst) {
    using V = Doubles;
    constexpr int n = kCount<V>;
    for (int i = 0; i < count; i += n) {
        const V s = load<double, n>(pairs.s + i), f = squareRoot(constant<V>(-2) * logarithm(s, [] {}) / s), scaled = f * constant<V>(stdDev);
        store(pairs.s + i, f);
        store(dst + 2 * i, interleave(scaled * load<double, n>(pairs.u2 + i), scaled * load<double, n>(pairs.u1 + i)));
    }
}

template <class T> void shifted(const double* product, T* dst, int len, double mean) {
    if constexpr (__is_same(T, float)) {
        map<kLanes<float>, 4>(
            len, dst, [=](auto n, const double* p) { return narrow(loadTwo<double, n.n / 2>(p)) + float(mean); }, product);
    } else {
        produce<Truncated>(
            dst, len, [=](auto n, const double* p) { return both(loadTwo<double, n.n / 2>(p), [=](auto v) { return v + constant<decltype(v)>(mean); }); },
            product);
    }
}

}   // namespace

extern const RandomKernels randomNumbers = {
    .truncated8u = uniform<Truncated, uint8_t>,
    .truncated16s = uniform<Truncated, int16_t>,
    .nearest16s = uniform<Nearest, int16_t>,
    .uniform32f = uniform<Nearest, float>,
    .uniform64f = uniform<Nearest, double>,
    .normal = normal,
    .shifted8u = shifted<uint8_t>,
    .shifted16s = shifted<int16_t>,
    .shifted32f = shifted<float>,
    .shifted64f = shifted<double>,
};

}   // namespace tevs::TEVS_LEVEL_NS
