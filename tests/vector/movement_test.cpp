#include <algorithm>
#include <array>
#include <climits>
#include <cstring>
#include <functional>

#include "support/elements.h"

using namespace test;

namespace {

template <class T> std::vector<T> anyBits(size_t n) {
    std::vector<T> v(n);
    for (T& x : v)
        for (size_t i = 0; i < sizeof(T); ++i) reinterpret_cast<uint8_t*>(&x)[i] = uint8_t(generator()() >> 20);
    return v;
}

constexpr size_t kPast = 5003;   // past the loops' unrolling and the first page

// f(src, dst, len) against want(element), to the bit of a NaN.
template <class S, class D, class F, class Want> void maps(F f, Want want) {
    const std::vector<S> in = anyBits<S>(kPast);
    std::vector<D> expected, got(kPast);
    std::transform(in.begin(), in.end(), std::back_inserter(expected), want);
    ASSERT_EQ(f(in.data(), got.data(), int(kPast)), StatusOk);
    ASSERT_TRUE(same(expected, got));
}

constexpr auto copying = []<class T>(Status (*copy)(const T*, T*, int)) { maps<T, T>(copy, std::identity()); };
constexpr auto moving = []<class T>(Status (*move)(const T*, T*, int)) {
    for (const size_t len : {size_t{1}, size_t{5}, size_t{64}, kPast})
        for (const int by : {-7, -1, 0, 1, 7}) {
            std::vector<T> v = anyBits<T>(len + 14), want = v;
            for (size_t n = 0; n < len; ++n) want[size_t(7 + by) + n] = v[7 + n];
            ASSERT_EQ(move(&v[7], &v[size_t(7 + by)], int(len)), StatusOk);
            ASSERT_TRUE(same(want, v)) << len << " by " << by;
        }
};

// Long fills take another way through the kernel; the pattern must keep its phase wherever the vector begins.
template <class T> void fills(Status (*set)(T, T*, int), Status (*zero)(T*, int)) {
    const T val = anyBits<T>(1)[0], none{};
    for (const size_t bytes : {size_t{16}, size_t{4092}, size_t{4096}, size_t{9000}, size_t{25} << 20})
        for (int offset = bytes > 9000 ? 31 : 0; offset < 32; ++offset) {
            Guarded<T> dst(bytes / sizeof(T), {offset, true});
            ASSERT_EQ(set(val, dst, int(dst.size())), StatusOk);
            ASSERT_TRUE(same(std::vector<T>(dst.size(), val), dst.values())) << sizeof(T) << " bytes, offset " << offset;
            ASSERT_EQ(zero(dst, int(dst.size())), StatusOk);
            ASSERT_TRUE(same(std::vector<T>(dst.size(), none), dst.values())) << sizeof(T) << " bytes, offset " << offset;
            ASSERT_TRUE(dst.intact());
        }
}

TEST(Movement, EveryType) {
#define X(type)                                      \
    each(copying, tevsCopy_##type, tevsMove_##type); \
    each(moving, tevsMove_##type);                   \
    fills(tevsSet_##type, tevsZero_##type);
    X(8u) X(16s) X(32s) X(32f) X(64s) X(64f) X(16sc) X(32sc) X(32fc) X(64sc) X(64fc)
#undef X
}

TEST(Copy_1u, EqualsBitByBit) {
    const auto bit = [](const std::vector<uint8_t>& v, int k) { return v[size_t(k / 8)] >> (7 - k % 8) & 1; };
    for (int len : {1, 2, 7, 8, 9, 15, 16, 17, 63, 100, 127, 128, 129, 130, 136, 260, 2001})
        for (int from : {0, 1, 5, 7, 8, 20})
            for (int to : {0, 1, 3, 7, 9}) {
                const Guarded<uint8_t> src(anyBits<uint8_t>(size_t(from + len + 7) / 8));
                const Guarded<uint8_t> past(src.values(), {0, false});
                const std::vector<uint8_t> s = src.values(), before = anyBits<uint8_t>(size_t(to + len + 7) / 8);
                std::vector<uint8_t> want = before;
                for (int n = 0; n < len; ++n) {
                    uint8_t& w = want[size_t((to + n) / 8)];
                    const int mask = 0x80 >> ((to + n) % 8);
                    w = uint8_t(bit(s, from + n) ? w | mask : w & ~mask);
                }
                for (const uint8_t* p : {src.data(), past.data()}) {
                    Guarded<uint8_t> dst(before);
                    ASSERT_EQ(tevsCopy_1u(p, dst, len, from, to), StatusOk);
                    ASSERT_TRUE(same(want, dst.values())) << len << " from " << from << " to " << to;
                    ASSERT_TRUE(dst.intact());
                }
            }
    const uint8_t s = 0x35;   // 0011 0101
    uint8_t d = 0xff;
    EXPECT_EQ(tevsCopy_1u(&s, &d, 3, 4, 1), StatusOk);
    EXPECT_EQ(d, 0xaf);   // 1 010 1111
    EXPECT_EQ(tevsCopy_1u(nullptr, &d, 0, -1, 0), StatusNullPtr);
    EXPECT_EQ(tevsCopy_1u(&s, nullptr, 0, -1, 0), StatusNullPtr);
    for (auto [len, from, to] : {std::array{0, 0, 0}, {1, -1, 0}, {1, 0, -1}, {8, INT_MIN, 0}}) EXPECT_EQ(tevsCopy_1u(&s, &d, len, from, to), StatusBadSize);
    EXPECT_EQ(d, 0xaf);
}

// At every length: an element is moved from a place that depends on it.
constexpr auto flip = [](auto change) {
    return [=]<class T>(Status (*f)(const T*, T*, int)) {
        eachLength([=](int len) {
            const std::vector<T> src = anyBits<T>(size_t(len));
            std::vector<T> want, got(src.size());
            ASSERT_EQ(f(src.data(), got.data(), len), StatusOk);
            std::transform(src.rbegin(), src.rend(), std::back_inserter(want), change);
            ASSERT_TRUE(same(want, got)) << len;
        });
    };
};
TEST(Flip, EveryType) { each(flip(std::identity()), tevsFlip_8u, tevsFlip_16u, tevsFlip_32f, tevsFlip_64f); }

constexpr auto swapped = [](auto x) {
    std::reverse(reinterpret_cast<uint8_t*>(&x), reinterpret_cast<uint8_t*>(&x + 1));
    return x;
};
using Packed24 = std::array<uint8_t, 3>;
TEST(SwapBytes, EveryType) {
    each([]<class T>(Status (*f)(const T*, T*, int)) { maps<T, T>(f, swapped); }, tevsSwapBytes_16u, tevsSwapBytes_32u, tevsSwapBytes_64u);
    maps<Packed24, Packed24>(with(tevsSwapBytes_24u), swapped);
}

// Two destinations or sources as one vector of complex elements: what is split and joined again is as it was, and each part is where it belongs.
template <class C, class T>
void parts(Status (*real)(const C*, T*, int), Status (*imag)(const C*, T*, int), Status (*split)(const C*, T*, T*, int),
           Status (*join)(const T*, const T*, C*, int)) {
    maps<C, T>(real, [](C z) { return z.re; });
    maps<C, T>(imag, [](C z) { return z.im; });
    const std::vector<C> in = anyBits<C>(kPast);
    std::vector<T> re(kPast), im(kPast);
    ASSERT_EQ(split(in.data(), re.data(), im.data(), int(kPast)), StatusOk);
    const struct { const T *re, *im; } sources[] = {{re.data(), im.data()}, {re.data(), nullptr}, {nullptr, im.data()}};
    for (const auto& from : sources) {
        std::vector<C> want(kPast), got(kPast);
        for (size_t n = 0; n < kPast; ++n) {
            if (from.re) memcpy(&want[n].re, &in[n].re, sizeof(T));
            if (from.im) memcpy(&want[n].im, &in[n].im, sizeof(T));
        }
        ASSERT_EQ(join(from.re, from.im, got.data(), int(kPast)), StatusOk);
        ASSERT_TRUE(same(want, got));
    }
    T x{};
    C z{};
    EXPECT_EQ(join(nullptr, nullptr, nullptr, 0), StatusNullPtr);
    EXPECT_EQ(join(nullptr, nullptr, &z, 0), StatusBadSize);   // the length comes before the sources
    EXPECT_EQ(join(nullptr, nullptr, &z, 1), StatusNullPtr);
    EXPECT_EQ(join(&x, nullptr, nullptr, 1), StatusNullPtr);
}
TEST(ComplexParts, EveryType) {
    parts(tevsReal_16sc, tevsImag_16sc, tevsCplxToReal_16sc, tevsRealToCplx_16s);
    parts(tevsReal_32fc, tevsImag_32fc, tevsCplxToReal_32fc, tevsRealToCplx_32f);
    parts(tevsReal_64fc, tevsImag_64fc, tevsCplxToReal_64fc, tevsRealToCplx_64f);
}

constexpr auto conjugate = []<class C>(C z) {
    if constexpr (std::is_same_v<C, Complex16s>)
        z.im = int16_t(z.im == -32768 ? 32767 : -z.im);
    else
        reinterpret_cast<uint8_t*>(&z)[sizeof z - 1] ^= 0x80;   // the sign bit of im
    return z;
};
TEST(Conj, EveryType) {
    each([]<class C>(Status (*f)(const C*, C*, int)) { maps<C, C>(f, conjugate); }, tevsConj_16sc, tevsConj_32fc, tevsConj_64fc);
    each(flip(conjugate), tevsConjFlip_16sc, tevsConjFlip_32fc, tevsConjFlip_64fc);
    for (auto f : {tevsConj_16sc, tevsConjFlip_16sc}) {
        std::vector<Complex16s> z(31, {-32768, -32768});
        ASSERT_EQ(f(z.data(), z.data(), 31), StatusOk);
        EXPECT_TRUE(same(std::vector<Complex16s>(31, {-32768, 32767}), z));
    }
}

}   // namespace
