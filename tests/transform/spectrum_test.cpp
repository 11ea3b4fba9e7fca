#include <climits>

#include "support/data.h"
#include "support/guarded.h"
#include "tevcore.h"

using namespace test;

namespace {

// A packed spectrum of len reals: where its real values stand (-1: there is no second one), and where its pairs begin.
enum Packing { Pack, Perm };
int second(Packing packing, int len) { return len % 2 ? -1 : packing == Pack ? len - 1 : 1; }
int firstPair(Packing packing, int len) { return len % 2 == 0 && packing == Perm ? 2 : 1; }

// In double, where the product of two floats is exact: each product rounds once, and the sum once.
std::vector<float> product(const std::vector<float>& a, const std::vector<float>& b, Packing packing) {
    const int len = int(a.size());
    std::vector<float> y(a.size());
    const auto times = [](float x, float z) { return float(double(x) * double(z)); };
    y[0] = times(a[0], b[0]);
    if (const int at = second(packing, len); at >= 0) y[size_t(at)] = times(a[size_t(at)], b[size_t(at)]);
    for (int i = 0; i < (len - 1) / 2; ++i) {
        const size_t re = size_t(firstPair(packing, len) + 2 * i), im = re + 1;
        y[re] = float(double(times(a[re], b[re])) - double(times(a[im], b[im])));
        y[im] = float(double(times(a[re], b[im])) + double(times(a[im], b[re])));
    }
    return y;
}

struct Product {
    Packing packing;
    Status (*call)(const float*, const float*, float*, int);
    Status (*inPlace)(const float*, float*, int);
};
constexpr Product kProducts[] = {{Pack, tevsMulPack_32f, tevsMulPack_32f_I}, {Perm, tevsMulPerm_32f, tevsMulPerm_32f_I}};

TEST(MulPacked, EqualsOracle) {
    sweep<float>([](int len, Place at) {
        for (const Product& p : kProducts) {
            const Guarded<float> a(randomVector<float>(size_t(len)), at), b(randomVector<float>(size_t(len)), at);
            const auto want = product(a.values(), b.values(), p.packing);
            Guarded<float> dst(size_t(len), at), left(a.values(), at), right(b.values(), at), both(b.values(), at);
            ASSERT_EQ(p.call(a.data(), b.data(), dst, len), StatusOk);
            ASSERT_EQ(p.call(left.data(), b.data(), left, len), StatusOk);
            ASSERT_EQ(p.call(a.data(), right.data(), right, len), StatusOk);
            ASSERT_EQ(p.inPlace(a.data(), both, len), StatusOk);
            for (const auto* y : {&dst, &left, &right, &both}) {
                ASSERT_TRUE(same(want, y->values())) << len << (p.packing == Pack ? " Pack" : " Perm");
                ASSERT_TRUE(y->intact());
            }
        }
    });
}

struct Expansion {
    const char* name;
    size_t (*reals)(int len);
    Status (*call)(const float*, Complex32f*, int);
    Status (*inPlace)(Complex32f*, int);
    std::vector<Complex32f> (*lower)(const std::vector<float>& src, int len);   // values 0 .. len/2
};
size_t packed(int len) { return size_t(len); }
size_t ccs(int len) { return size_t(2 * (len / 2 + 1)); }
template <Packing packing> std::vector<Complex32f> lower(const std::vector<float>& src, int len) {
    std::vector<Complex32f> x{{src[0], 0}};
    for (int i = 0; i < (len - 1) / 2; ++i) x.push_back({src[size_t(firstPair(packing, len) + 2 * i)], src[size_t(firstPair(packing, len) + 2 * i + 1)]});
    if (len % 2 == 0) x.push_back({src[size_t(second(packing, len))], 0});
    return x;
}
std::vector<Complex32f> lowerCcs(const std::vector<float>& src, int) {
    std::vector<Complex32f> x;
    for (size_t i = 0; i < src.size(); i += 2) x.push_back({src[i], src[i + 1]});
    return x;
}
constexpr Expansion kExpansions[] = {
    {"Pack", packed, tevsConjPack_32fc, tevsConjPack_32fc_I, lower<Pack>},
    {"Perm", packed, tevsConjPerm_32fc, tevsConjPerm_32fc_I, lower<Perm>},
    {"Ccs", ccs, tevsConjCcs_32fc, tevsConjCcs_32fc_I, lowerCcs},
};

TEST(ConjPacked, EqualsOracle) {
    sweep<float>([](int len, Place at) {
        for (const Expansion& e : kExpansions) {
            const auto src = wildFloats<float>(e.reals(len));
            auto want = e.lower(src, len);
            for (int k = len / 2 + 1; k < len; ++k) want.push_back({want[size_t(len - k)].re, -want[size_t(len - k)].im});
            const Guarded<float> in(src, at);
            Guarded<Complex32f> dst(size_t(len), at), both(size_t(len), at);
            ASSERT_EQ(e.call(in.data(), dst, len), StatusOk);
            std::memcpy(both.data(), src.data(), src.size() * sizeof(float));
            ASSERT_EQ(e.inPlace(both, len), StatusOk);
            for (const auto* y : {&dst, &both}) {
                ASSERT_TRUE(same(want, y->values())) << e.name << " " << len;
                ASSERT_TRUE(y->intact());
            }
        }
    });
}

TEST(MulPacked, IgnoresAndKeepsTheCallersRounding) {
    const auto a = randomVector<float>(100), b = randomVector<float>(100);
    const auto want = product(a, b, Pack);
    std::vector<float> got(100);
    const uint32_t before = tev_set_rc_ssx(2);
    tevsMulPack_32f(a.data(), b.data(), got.data(), 100);
    const uint32_t after = tev_set_cw_ssx(before);
    EXPECT_TRUE(same(want, got));
    EXPECT_EQ((after >> 13) & 3, 2u);
}

TEST(Packed, RejectsBadArguments) {
    const std::vector<float> src(4);
    Guarded<float> dst(4);
    Guarded<Complex32f> wide(4);
    for (const Product& p : kProducts) {
        EXPECT_EQ(p.call(nullptr, src.data(), dst, 0), StatusNullPtr);
        EXPECT_EQ(p.call(src.data(), nullptr, dst, 0), StatusNullPtr);
        EXPECT_EQ(p.call(src.data(), src.data(), nullptr, 0), StatusNullPtr);
        EXPECT_EQ(p.inPlace(nullptr, dst, 0), StatusNullPtr);
        EXPECT_EQ(p.inPlace(src.data(), nullptr, 0), StatusNullPtr);
        for (int len : {0, -1, INT_MIN}) {
            EXPECT_EQ(p.call(src.data(), src.data(), dst, len), StatusBadSize);
            EXPECT_EQ(p.inPlace(src.data(), dst, len), StatusBadSize);
        }
    }
    for (const Expansion& e : kExpansions) {
        EXPECT_EQ(e.call(nullptr, wide, 0), StatusNullPtr);
        EXPECT_EQ(e.call(src.data(), nullptr, 0), StatusNullPtr);
        EXPECT_EQ(e.inPlace(nullptr, 0), StatusNullPtr);
        for (int len : {0, -1, INT_MIN}) {
            EXPECT_EQ(e.call(src.data(), wide, len), StatusBadSize);
            EXPECT_EQ(e.inPlace(wide, len), StatusBadSize);
        }
    }
    EXPECT_TRUE(dst.untouched() && wide.untouched());
}

}   // namespace
