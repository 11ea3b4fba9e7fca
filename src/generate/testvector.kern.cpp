#include "generate/testvector.table.h"

#include "core/simd/angle.h"
#include "generate/samples.kern.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// What, cut off toward zero, is v rounded half away from zero.
template <class V> TEVS_INLINE V awayFromZero(V v) { return v + withSign(constant<V>(0.5), signOf(v)); }

template <class T> void ramp(T* dst, int len, float offset, float slope) {
    if constexpr (__is_same(T, double)) {
        produce<Nearest>(
            dst, len,
            [=](auto n, Index at) {
                return both(widen(indices<n.n>(at)), [=](auto v) {
                    using V = decltype(v);
                    return constant<V>(offset) + v * constant<V>(slope);
                });
            },
            Index{0});
    } else {
        const auto value = [=](auto n, Index at) {
            using V = Vec<float, n.n>;
            return constant<V>(offset) + __builtin_convertvector(indices<n.n>(at), V) * constant<V>(slope);
        };
        if constexpr (__is_same(T, float)) {
            // Indices that are counted up in a register, and stores that cross no cache line.
            constexpr int n = kLanes<float>;
            if (len < 4 * n) return map<n, 4>(len, dst, value, Index{0});
            store(dst, value(Lanes<n>{}, Index{0}));
            int i = int(-uintptr_t(dst) % kRegisterBytes) / int(sizeof(float));
            const auto line = [=](auto index) {
                using V = Vec<float, n>;
                return constant<V>(offset) + __builtin_convertvector(index, V) * constant<V>(slope);
            };
            for (auto at = indices<n>(Index{i}); i <= len - 2 * n; i += 2 * n, at += 2 * n) store(dst + i, Two{line(at), line(at + n)});
            if (i < len - n) store(dst + i, value(Lanes<n>{}, Index{i}));
            store(dst + (len - n), value(Lanes<n>{}, Index{len - n}));
        } else
            produce<Truncated>(
                dst, len, [=](auto n, Index at) { return both(widen(value(n, at)), [](auto v) { return awayFromZero(v); }); }, Index{0});
    }
}

void sweep(double* y, int first, int count, int len, double magn) {
    using V = Vec<double, kLanes<double>>;
    const double rate = kPi / 2 / len;
    V n = constant<V>(first) + countOf<V>(Iota<kCount<V>>{});
    for (ptrdiff_t i = 0; i < count; i += kCount<V>, n += constant<V>(kCount<V>)) store(y + i, cartesian(constant<V>(magn), constant<V>(rate) * (n * n)).b);
}

template <class T> void stored(const double* y, T* dst, int len) {
    produce<Truncated>(
        dst, len,
        [](auto n, const double* p) {
            return both(loadTwo<double, n.n / 2>(p), [](auto v) {
                if constexpr (__is_same(T, float))
                    return v;
                else
                    return awayFromZero(v);
            });
        },
        y);
}
template <class T> void spread(const double* y, T* dst, int len, double low, double high, double magn) {
    const double factor = magn / (high - low);
    produce<Truncated>(
        dst, len,
        [=](auto n, const double* p) {
            return both(loadTwo<double, n.n / 2>(p), [=](auto v) {
                using V = decltype(v);
                return (v - constant<V>(low)) * constant<V>(factor) + constant<V>(0.5);
            });
        },
        y);
}

}   // namespace

extern const TestVectorKernels testVector = {
    .ramp8u = ramp<uint8_t>,
    .ramp8s = ramp<int8_t>,
    .ramp16u = ramp<uint16_t>,
    .ramp16s = ramp<int16_t>,
    .ramp32u = ramp<uint32_t>,
    .ramp32s = ramp<int32_t>,
    .ramp32f = ramp<float>,
    .ramp64f = ramp<double>,
    .sweep = sweep,
    .stored8s = stored<int8_t>,
    .stored16s = stored<int16_t>,
    .stored32s = stored<int32_t>,
    .stored32f = stored<float>,
    .spread8u = spread<uint8_t>,
    .spread16u = spread<uint16_t>,
    .spread32u = spread<uint32_t>,
};

}   // namespace tevs::TEVS_LEVEL_NS
