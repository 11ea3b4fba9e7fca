#include <array>
#include <climits>

#include "support/dft.h"
#include "support/elements.h"
#include "support/exact.h"

using namespace test;

namespace {

// The first half of a spectrum of n values: their parts, 0 where the layout has no place for one.
template <class T> std::vector<std::array<T, 2>> half(Layout layout, const std::vector<T>& v, size_t n) {
    std::vector<std::array<T, 2>> z(n / 2 + 1);
    for (size_t i = 0; i < v.size(); ++i) {
        const Where at = whereIs(layout, i, n);
        z[at.k][at.imaginary] = v[i];
    }
    return z;
}

// a b + sign c d as it is stored: of floats each product rounds once, and the sum once; integers are exact and round once.
template <class T> T stored(T a, T b, int sign, T c, T d, int scale) {
    if constexpr (std::is_integral_v<T>) {
        ExactSum r;
        r.addProduct(a, b);
        r.addProduct(sign * c, d);
        return r.scaled<T>(scale);
    } else {
        return a * b + T(sign) * (c * d);
    }
}

// sign: 1 for a b, -1 for conj(a) b.
template <class T> std::vector<T> product(Layout layout, const std::vector<T>& a, const std::vector<T>& b, int sign, int scale) {
    const auto u = half(layout, a, a.size()), v = half(layout, b, b.size());
    std::vector<T> y(a.size());
    for (size_t i = 0; i < y.size(); ++i) {
        const auto [k, imaginary] = whereIs(layout, i, y.size());
        const auto &f = u[k], &g = v[k];
        y[i] = imaginary ? stored(f[0], g[1], sign, f[1], g[0], scale) : stored(f[0], g[0], -sign, f[1], g[1], scale);
    }
    return y;
}

template <class T, class... Scale> void multiplies(Layout layout, int sign, Status (*f)(const T*, T*, int, Scale...)) {
    // Both sides of every bound at which something changes, and the ends.
    std::vector<int> scales = {0, 1, 2, 14, 15, 16, 29, 30, 31, 32, -1, -2, -14, -15, -16, -17, INT_MIN, INT_MAX};
    if (sizeof...(Scale) == 0) scales.resize(1);
    eachLength([&](int len) {
        const std::vector<T> lowest(size_t(len), std::numeric_limits<T>::lowest());   // a real product is 2^30 then, a pair's parts are 0 and 2^31
        for (const auto& [a, b] : {std::pair(randomVector<T>(size_t(len)), randomVector<T>(size_t(len))), {lowest, lowest}})
            for (int scale : scales) {
                auto both = b;
                ASSERT_EQ(f(a.data(), both.data(), len, Scale(scale)...), StatusOk);
                ASSERT_TRUE(sameNumbers(product(layout, a, b, sign, scale), both)) << len << ", layout " << layout << " scale " << scale;
            }
    });
}
TEST(MulPacked, EqualsOracle) {   // in place, as the environment test holds the other forms to
#define X(type) multiplies(Pack, 1, tevsMulPack_##type), multiplies(Perm, 1, tevsMulPerm_##type);
    X(32f_I)
    X(64f_I)
    X(16s_ISfs)
#undef X
    multiplies(Pack, -1, tevsMulPackConj_32f_I), multiplies(Pack, -1, tevsMulPackConj_64f_I);
}

template <class C> void expands(Layout layout, Status (*call)(const decltype(C::re)*, C*, int), Status (*inPlace)(C*, int)) {
    using T = decltype(C::re);
    eachLength([&](int len) {
        const size_t n = size_t(len), reals = layout == Ccs ? n / 2 * 2 + 2 : n;
        std::vector<T> src = randomVector<T>(reals);
        if constexpr (std::is_floating_point_v<T>) src = wildFloats<T>(reals);
        std::vector<C> want;
        for (const auto& [re, im] : half(layout, src, n)) want.push_back({re, im});
        for (size_t k = n / 2 + 1; k < n; ++k) {
            const T im = want[n - k].im;
            want.push_back({want[n - k].re, std::is_integral_v<T> && im == std::numeric_limits<T>::min() ? std::numeric_limits<T>::max() : T(-im)});
        }
        const Guarded<T> in(src);
        Guarded<C> dst(n), both(n);
        std::memcpy(both.data(), src.data(), reals * sizeof(T));
        ASSERT_EQ(call(in.data(), dst, len), StatusOk);
        ASSERT_EQ(inPlace(both, len), StatusOk);
        ASSERT_TRUE(same(want, dst.values()) && same(want, both.values()) && dst.intact() && both.intact()) << len << " layout " << layout;
    });
}
TEST(ConjPacked, EqualsOracle) {
#define X(layout, type) expands(layout, tevsConj##layout##_##type, tevsConj##layout##_##type##_I);
    X(Pack, 16sc) X(Perm, 16sc) X(Ccs, 16sc) X(Pack, 32fc) X(Perm, 32fc) X(Ccs, 32fc) X(Pack, 64fc) X(Perm, 64fc) X(Ccs, 64fc)
#undef X
}

}   // namespace
