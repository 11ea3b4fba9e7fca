#include <climits>

#include "support/data.h"
#include "support/exact.h"
#include "support/guarded.h"
#include "support/rejects.h"
#include "tevcore.h"

using namespace test;

namespace {

// A packed spectrum of len reals: where its real values stand (-1: there is no second one), and where its pairs begin.
enum Packing { Pack, Perm };
int second(Packing packing, int len) { return len % 2 ? -1 : packing == Pack ? len - 1 : 1; }
int firstPair(Packing packing, int len) { return len % 2 == 0 && packing == Perm ? 2 : 1; }

// a b and a b + sign c d as they are stored: of floats each product rounds once, and the sum once; integers are exact and round once.
template <class T> T stored(T a, T b, int scale) {
    if constexpr (std::is_integral_v<T>) {
        ExactSum r;
        r.addProduct(a, b);
        return r.scaled<T>(scale);
    } else {
        return a * b;
    }
}
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
template <class T> std::vector<T> product(const std::vector<T>& a, const std::vector<T>& b, Packing packing, int sign, int scale) {
    const int len = int(a.size());
    std::vector<T> y(a.size());
    y[0] = stored(a[0], b[0], scale);
    if (const int at = second(packing, len); at >= 0) y[size_t(at)] = stored(a[size_t(at)], b[size_t(at)], scale);
    for (int i = 0; i < (len - 1) / 2; ++i) {
        const size_t re = size_t(firstPair(packing, len) + 2 * i), im = re + 1;
        y[re] = stored(a[re], b[re], -sign, a[im], b[im], scale);
        y[im] = stored(a[re], b[im], sign, a[im], b[re], scale);
    }
    return y;
}

// Both forms with a scale, which the float ones do without. There is no out-of-place MulPackConj.
template <class T> struct Product {
    Packing packing;
    int sign;
    Status (*call)(const T*, const T*, T*, int, int);
    Status (*inPlace)(const T*, T*, int, int);
};
template <auto F> struct Unscaled;
template <class... P, Status (*F)(P...)> struct Unscaled<F> {
    static Status call(P... arguments, int) { return F(arguments...); }
};
constexpr Product<float> kProducts32f[] = {
    {Pack, 1, Unscaled<tevsMulPack_32f>::call, Unscaled<tevsMulPack_32f_I>::call},
    {Perm, 1, Unscaled<tevsMulPerm_32f>::call, Unscaled<tevsMulPerm_32f_I>::call},
    {Pack, -1, nullptr, Unscaled<tevsMulPackConj_32f_I>::call},
};
constexpr Product<double> kProducts64f[] = {
    {Pack, 1, Unscaled<tevsMulPack_64f>::call, Unscaled<tevsMulPack_64f_I>::call},
    {Perm, 1, Unscaled<tevsMulPerm_64f>::call, Unscaled<tevsMulPerm_64f_I>::call},
    {Pack, -1, nullptr, Unscaled<tevsMulPackConj_64f_I>::call},
};
constexpr Product<int16_t> kProducts16s[] = {
    {Pack, 1, tevsMulPack_16s_Sfs, tevsMulPack_16s_ISfs},
    {Perm, 1, tevsMulPerm_16s_Sfs, tevsMulPerm_16s_ISfs},
};

template <class T, size_t N> void equalOracle(const Product<T> (&products)[N], std::vector<int> scales) {
    sweep<T>([&](int len, Place at) {
        for (const Product<T>& p : products) {
            const Guarded<T> a(randomVector<T>(size_t(len)), at), b(randomVector<T>(size_t(len)), at);
            for (int scale : scales) {
                const auto want = product(a.values(), b.values(), p.packing, p.sign, scale);
                Guarded<T> dst(size_t(len), at), left(a.values(), at), right(b.values(), at), both(b.values(), at);
                std::vector<Guarded<T>*> results = {&both};
                ASSERT_EQ(p.inPlace(a.data(), both, len, scale), StatusOk);
                if (p.call) {
                    ASSERT_EQ(p.call(a.data(), b.data(), dst, len, scale), StatusOk);
                    ASSERT_EQ(p.call(left.data(), b.data(), left, len, scale), StatusOk);
                    ASSERT_EQ(p.call(a.data(), right.data(), right, len, scale), StatusOk);
                    results.insert(results.end(), {&dst, &left, &right});
                }
                for (const auto* y : results) {
                    ASSERT_TRUE(same(want, y->values())) << len << (p.packing == Pack ? " Pack" : " Perm") << " scale " << scale;
                    ASSERT_TRUE(y->intact());
                }
            }
        }
    });
}

TEST(MulPacked, EqualsOracle) {
    equalOracle(kProducts32f, {0});
    equalOracle(kProducts64f, {0});
    // Both sides of every bound at which something changes, and the ends.
    equalOracle(kProducts16s, {0, 1, 2, 14, 15, 16, 29, 30, 31, 32, -1, -2, -14, -15, -16, -17, INT_MIN, INT_MAX});
}

// A real product is 2^30 then, a pair's parts are 0 and 2^31.
TEST(MulPacked, LargestProducts) {
    struct Row {
        int scale;
        int16_t real, im;
    };
    for (Row row : {Row{0, 32767, 32767}, {15, 32767, 32767}, {16, 16384, 32767}, {17, 8192, 16384}, {30, 1, 2}, {31, 0, 1}, {32, 0, 0}, {-1, 32767, 32767}})
        for (const auto& p : kProducts16s) {
            const std::vector<int16_t> a(20, -32768);
            std::vector<int16_t> want(20), got(20);
            for (int i = 0; i < 9; ++i) want[size_t(firstPair(p.packing, 20) + 2 * i + 1)] = row.im;
            want[0] = want[size_t(second(p.packing, 20))] = row.real;
            ASSERT_EQ(p.call(a.data(), a.data(), got.data(), 20, row.scale), StatusOk);
            EXPECT_TRUE(same(want, got)) << row.scale;
        }
}

template <class C> struct Expansion {
    using Real = decltype(C::re);
    const char* name;
    size_t (*reals)(int len);
    Status (*call)(const Real*, C*, int);
    Status (*inPlace)(C*, int);
    std::vector<C> (*lower)(const std::vector<Real>& src, int len);   // values 0 .. len/2
};
size_t packed(int len) { return size_t(len); }
size_t ccs(int len) { return size_t(2 * (len / 2 + 1)); }
template <class C, Packing packing> std::vector<C> lower(const std::vector<decltype(C::re)>& src, int len) {
    std::vector<C> x{{src[0], 0}};
    for (int i = 0; i < (len - 1) / 2; ++i) x.push_back({src[size_t(firstPair(packing, len) + 2 * i)], src[size_t(firstPair(packing, len) + 2 * i + 1)]});
    if (len % 2 == 0) x.push_back({src[size_t(second(packing, len))], 0});
    return x;
}
template <class C> std::vector<C> lowerCcs(const std::vector<decltype(C::re)>& src, int) {
    std::vector<C> x;
    for (size_t i = 0; i < src.size(); i += 2) x.push_back({src[i], src[i + 1]});
    return x;
}
constexpr Expansion<Complex16s> kExpansions16sc[] = {
    {"Pack", packed, tevsConjPack_16sc, tevsConjPack_16sc_I, lower<Complex16s, Pack>},
    {"Perm", packed, tevsConjPerm_16sc, tevsConjPerm_16sc_I, lower<Complex16s, Perm>},
    {"Ccs", ccs, tevsConjCcs_16sc, tevsConjCcs_16sc_I, lowerCcs<Complex16s>},
};
constexpr Expansion<Complex32f> kExpansions32fc[] = {
    {"Pack", packed, tevsConjPack_32fc, tevsConjPack_32fc_I, lower<Complex32f, Pack>},
    {"Perm", packed, tevsConjPerm_32fc, tevsConjPerm_32fc_I, lower<Complex32f, Perm>},
    {"Ccs", ccs, tevsConjCcs_32fc, tevsConjCcs_32fc_I, lowerCcs<Complex32f>},
};
constexpr Expansion<Complex64f> kExpansions64fc[] = {
    {"Pack", packed, tevsConjPack_64fc, tevsConjPack_64fc_I, lower<Complex64f, Pack>},
    {"Perm", packed, tevsConjPerm_64fc, tevsConjPerm_64fc_I, lower<Complex64f, Perm>},
    {"Ccs", ccs, tevsConjCcs_64fc, tevsConjCcs_64fc_I, lowerCcs<Complex64f>},
};

int16_t negated(int16_t x) { return x == -32768 ? 32767 : int16_t(-x); }
template <class T> T negated(T x) { return -x; }
std::vector<int16_t> samples(int16_t, size_t n) { return randomVector<int16_t>(n); }
template <class T> std::vector<T> samples(T, size_t n) { return wildFloats<T>(n); }

template <class C, size_t N> void equalOracle(const Expansion<C> (&expansions)[N]) {
    using T = decltype(C::re);
    sweep<T>([&](int len, Place at) {
        for (const Expansion<C>& e : expansions) {
            const std::vector<T> src = samples(T{}, e.reals(len));
            auto want = e.lower(src, len);
            for (int k = len / 2 + 1; k < len; ++k) want.push_back({want[size_t(len - k)].re, negated(want[size_t(len - k)].im)});
            const Guarded<T> in(src, at);
            Guarded<C> dst(size_t(len), at), both(size_t(len), at);
            ASSERT_EQ(e.call(in.data(), dst, len), StatusOk);
            std::memcpy(both.data(), src.data(), src.size() * sizeof(T));
            ASSERT_EQ(e.inPlace(both, len), StatusOk);
            for (const auto* y : {&dst, &both}) {
                ASSERT_TRUE(same(want, y->values())) << e.name << " " << len;
                ASSERT_TRUE(y->intact());
            }
        }
    });
}

TEST(ConjPacked, EqualsOracle) {
    equalOracle(kExpansions16sc);
    equalOracle(kExpansions32fc);
    equalOracle(kExpansions64fc);
}

template <class T, size_t N> void expectOwnRounding(const Product<T> (&products)[N]) {
    const auto a = randomVector<T>(100), b = randomVector<T>(100);
    for (const auto& p : products) {
        const auto want = product(a, b, p.packing, p.sign, 0);
        auto got = b;
        const uint32_t before = tev_set_rc_ssx(2);
        p.inPlace(a.data(), got.data(), 100, 0);
        const uint32_t after = tev_set_cw_ssx(before);
        EXPECT_TRUE(same(want, got));
        EXPECT_EQ((after >> 13) & 3, 2u);
    }
}
TEST(MulPacked, IgnoresAndKeepsTheCallersRounding) {
    expectOwnRounding(kProducts32f);
    expectOwnRounding(kProducts64f);
}

TEST(Packed, RejectsBadArguments) {
    const auto all = [](auto... f) { (rejects(f), ...); };
    all(tevsMulPack_32f, tevsMulPack_64f, tevsMulPack_16s_Sfs, tevsMulPack_32f_I, tevsMulPack_64f_I, tevsMulPack_16s_ISfs);
    all(tevsMulPerm_32f, tevsMulPerm_64f, tevsMulPerm_16s_Sfs, tevsMulPerm_32f_I, tevsMulPerm_64f_I, tevsMulPerm_16s_ISfs);
    all(tevsMulPackConj_32f_I, tevsMulPackConj_64f_I);
    all(tevsConjPack_16sc, tevsConjPack_32fc, tevsConjPack_64fc, tevsConjPack_16sc_I, tevsConjPack_32fc_I, tevsConjPack_64fc_I);
    all(tevsConjPerm_16sc, tevsConjPerm_32fc, tevsConjPerm_64fc, tevsConjPerm_16sc_I, tevsConjPerm_32fc_I, tevsConjPerm_64fc_I);
    all(tevsConjCcs_16sc, tevsConjCcs_32fc, tevsConjCcs_64fc, tevsConjCcs_16sc_I, tevsConjCcs_32fc_I, tevsConjCcs_64fc_I);
}

}   // namespace
