#include <algorithm>
#include <array>
#include <climits>
#include <cstring>

#include "support/data.h"
#include "support/guarded.h"

using namespace test;

namespace {

template <class T> std::vector<T> anyBits(size_t n) {
    std::vector<T> v(n);
    for (T& x : v)
        for (size_t i = 0; i < sizeof(T); ++i) reinterpret_cast<uint8_t*>(&x)[i] = uint8_t(generator()() >> 20);
    return v;
}

constexpr int kPast = 5003;   // past the loops' unrolling and the first page

// call(src, dst, len), out of place and then in place, against want(source, n) for each n.
template <class S, class D, class Call, class Want> void mapsTo(Call call, Want want, bool inPlace = std::is_same_v<S, D>) {
    const auto one = [=](int len, Place at) {
        const std::vector<S> in = anyBits<S>(size_t(len));
        const Guarded<S> src(in, at);
        Guarded<D> dst(size_t(len), {at.offset, !at.atEnd});
        std::vector<D> expected;
        for (int n = 0; n < len; ++n) expected.push_back(want(in, n));
        ASSERT_EQ(call(src.data(), dst.data(), len), StatusOk);
        ASSERT_TRUE(same(expected, dst.values())) << len;
        ASSERT_TRUE(dst.intact());
        if constexpr (std::is_same_v<S, D>) {
            if (!inPlace) return;
            Guarded<D> both(in, at);
            ASSERT_EQ(call(both.data(), both.data(), len), StatusOk);
            ASSERT_TRUE(same(expected, both.values())) << "in place, " << len;
            ASSERT_TRUE(both.intact());
        }
    };
    sweep<S>(one);
    one(kPast, {1, true});
}

// A form with pSrcDst, as the out-of-place form that it equals where the pointers do.
template <class T> auto inPlace(Status (*f)(T*, int)) {
    return [f](const T* src, T* dst, int len) {
        if (src != dst) memcpy(dst, src, size_t(len) * sizeof(T));
        return f(dst, len);
    };
}

template <class T> void copies(Status (*copy)(const T*, T*, int), Status (*move)(const T*, T*, int)) {
    const auto same = [](const auto& s, int n) { return s[size_t(n)]; };
    mapsTo<T, T>(copy, same);
    mapsTo<T, T>(move, same);
    for (int len : {1, 5, 64, kPast})
        for (int by : {-7, -1, 1, 7}) {
            std::vector<T> v = anyBits<T>(size_t(len) + 14), want = v;
            for (int n = 0; n < len; ++n) want[size_t(7 + by + n)] = v[size_t(7 + n)];
            ASSERT_EQ(move(&v[7], &v[size_t(7 + by)], len), StatusOk);
            ASSERT_TRUE(test::same(want, v)) << len << " by " << by;
        }
}

template <class T> void fills(Status (*set)(T, T*, int), Status (*zero)(T*, int)) {
    const auto one = [=](int len, Place at) {
        const T val = anyBits<T>(1)[0], none{};
        Guarded<T> dst(size_t(len), at);
        ASSERT_EQ(set(val, dst, len), StatusOk);
        ASSERT_TRUE(same(std::vector<T>(size_t(len), val), dst.values())) << len;
        ASSERT_EQ(zero(dst, len), StatusOk);
        ASSERT_TRUE(same(std::vector<T>(size_t(len), none), dst.values())) << len;
        ASSERT_TRUE(dst.intact());
    };
    sweep<T>(one);
    for (int offset = 0; offset < 32; ++offset) one(kPast, {offset, false});
    T x{};
    EXPECT_EQ(set(x, nullptr, 0), StatusNullPtr);
    EXPECT_EQ(zero(nullptr, 0), StatusNullPtr);
    for (int len : {0, INT_MIN}) {
        EXPECT_EQ(set(x, &x, len), StatusBadSize);
        EXPECT_EQ(zero(&x, len), StatusBadSize);
    }
}

#define EVERY_TYPE(X) X(8u) X(16s) X(32s) X(32f) X(64s) X(64f) X(16sc) X(32sc) X(32fc) X(64sc) X(64fc)

TEST(CopyMove, EveryTypeAndOverlap) {
#define X(type) copies(tevsCopy_##type, tevsMove_##type);
    EVERY_TYPE(X)
#undef X
}

TEST(SetZero, EveryTypeAndPhase) {
#define X(type) fills(tevsSet_##type, tevsZero_##type);
    EVERY_TYPE(X)
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

template <class T> void flips(Status (*out)(const T*, T*, int), Status (*in)(T*, int)) {
    const auto want = [](const auto& s, int n) { return s[s.size() - 1 - size_t(n)]; };
    mapsTo<T, T>(out, want);
    mapsTo<T, T>(inPlace(in), want);
}
TEST(Flip, EveryType) {
    flips(tevsFlip_8u, tevsFlip_8u_I);
    flips(tevsFlip_16u, tevsFlip_16u_I);
    flips(tevsFlip_32f, tevsFlip_32f_I);
    flips(tevsFlip_64f, tevsFlip_64f_I);
}

template <class T> void swaps(Status (*out)(const T*, T*, int), Status (*in)(T*, int)) {
    const auto want = [](const auto& s, int n) {
        T x = s[size_t(n)];
        std::reverse(reinterpret_cast<uint8_t*>(&x), reinterpret_cast<uint8_t*>(&x + 1));
        return x;
    };
    mapsTo<T, T>(out, want);
    mapsTo<T, T>(inPlace(in), want);
}
struct Packed24 {
    uint8_t bytes[3];
};
TEST(SwapBytes, EveryType) {
    swaps(tevsSwapBytes_16u, tevsSwapBytes_16u_I);
    swaps(tevsSwapBytes_32u, tevsSwapBytes_32u_I);
    swaps(tevsSwapBytes_64u, tevsSwapBytes_64u_I);
    swaps<Packed24>([](const Packed24* s, Packed24* d, int len) { return tevsSwapBytes_24u(s->bytes, d->bytes, len); },
                    [](Packed24* d, int len) { return tevsSwapBytes_24u_I(d->bytes, len); });
}

// Two destinations or sources as one vector of complex elements: what is split and joined again is as it was, and each part is where it belongs.
template <class C, class T>
void parts(Status (*real)(const C*, T*, int), Status (*imag)(const C*, T*, int), Status (*split)(const C*, T*, T*, int),
           Status (*join)(const T*, const T*, C*, int)) {
    mapsTo<C, T>(real, [](const auto& s, int n) { return s[size_t(n)].re; });
    mapsTo<C, T>(imag, [](const auto& s, int n) { return s[size_t(n)].im; });
    sweep<C>([=](int len, Place at) {
        const std::vector<C> in = anyBits<C>(size_t(len));
        const Guarded<C> src(in, at);
        Guarded<T> re(size_t(len), at), im(size_t(len), {at.offset, !at.atEnd});
        ASSERT_EQ(split(src.data(), re, im, len), StatusOk);
        const struct { const T *re, *im; } sources[] = {{re, im}, {re, nullptr}, {nullptr, im}};
        for (const auto& from : sources) {
            std::vector<C> want(in.size());
            memset(static_cast<void*>(want.data()), 0, want.size() * sizeof(C));
            for (size_t n = 0; n < in.size(); ++n) {
                if (from.re) memcpy(&want[n].re, &in[n].re, sizeof(T));
                if (from.im) memcpy(&want[n].im, &in[n].im, sizeof(T));
            }
            Guarded<C> dst(size_t(len), at);
            ASSERT_EQ(join(from.re, from.im, dst, len), StatusOk);
            ASSERT_TRUE(same(want, dst.values())) << len;
            ASSERT_TRUE(dst.intact() && re.intact() && im.intact());
        }
    });
    T x{};
    C z{};
    EXPECT_EQ(join(nullptr, nullptr, nullptr, 0), StatusNullPtr);
    EXPECT_EQ(join(nullptr, nullptr, &z, 0), StatusBadSize);   // the length comes before the sources
    EXPECT_EQ(join(nullptr, nullptr, &z, 1), StatusNullPtr);
    EXPECT_EQ(join(&x, nullptr, nullptr, 1), StatusNullPtr);
    EXPECT_EQ(split(nullptr, &x, &x, 0), StatusNullPtr);
    EXPECT_EQ(split(&z, nullptr, &x, 0), StatusNullPtr);
    EXPECT_EQ(split(&z, &x, nullptr, 0), StatusNullPtr);
    EXPECT_EQ(split(&z, &x, &x, 0), StatusBadSize);
}
TEST(ComplexParts, EveryType) {
    parts(tevsReal_16sc, tevsImag_16sc, tevsCplxToReal_16sc, tevsRealToCplx_16s);
    parts(tevsReal_32fc, tevsImag_32fc, tevsCplxToReal_32fc, tevsRealToCplx_32f);
    parts(tevsReal_64fc, tevsImag_64fc, tevsCplxToReal_64fc, tevsRealToCplx_64f);
}

Complex16s conjugate(Complex16s z) { return {z.re, int16_t(z.im == -32768 ? 32767 : -z.im)}; }
template <class C> C conjugate(C z) {
    reinterpret_cast<uint8_t*>(&z)[sizeof z - 1] ^= 0x80;   // the sign bit of im
    return z;
}
template <class C> void conjugates(Status (*out)(const C*, C*, int), Status (*in)(C*, int), Status (*flipped)(const C*, C*, int)) {
    const auto straight = [](const auto& s, int n) { return conjugate(s[size_t(n)]); };
    mapsTo<C, C>(out, straight);
    mapsTo<C, C>(inPlace(in), straight);
    mapsTo<C, C>(flipped, [](const auto& s, int n) { return conjugate(s[s.size() - 1 - size_t(n)]); });
}
TEST(Conj, EveryType) {
    conjugates(tevsConj_16sc, tevsConj_16sc_I, tevsConjFlip_16sc);
    conjugates(tevsConj_32fc, tevsConj_32fc_I, tevsConjFlip_32fc);
    conjugates(tevsConj_64fc, tevsConj_64fc_I, tevsConjFlip_64fc);
    for (int len : {1, 3, 8, 31}) {
        std::vector<Complex16s> z(size_t(len), {-32768, -32768});
        ASSERT_EQ(tevsConj_16sc_I(z.data(), len), StatusOk);
        for (const Complex16s& x : z) EXPECT_TRUE(x.re == -32768 && x.im == 32767);
        z.assign(size_t(len), {-32768, -32768});
        ASSERT_EQ(tevsConjFlip_16sc(z.data(), z.data(), len), StatusOk);
        for (const Complex16s& x : z) EXPECT_TRUE(x.re == -32768 && x.im == 32767);
    }
}

template <class S, class D> void rejects(Status (*f)(const S*, D*, int)) {
    const S s{};
    Guarded<D> d(1);
    EXPECT_EQ(f(nullptr, d, 0), StatusNullPtr);
    EXPECT_EQ(f(&s, nullptr, 0), StatusNullPtr);
    for (int len : {0, -1, INT_MIN}) EXPECT_EQ(f(&s, d, len), StatusBadSize);
    EXPECT_TRUE(d.untouched());
}
template <class D> void rejects(Status (*f)(D*, int)) {
    Guarded<D> d(1);
    EXPECT_EQ(f(nullptr, 0), StatusNullPtr);
    for (int len : {0, -1, INT_MIN}) EXPECT_EQ(f(d, len), StatusBadSize);
    EXPECT_TRUE(d.untouched());
}
template <class... F> void allReject(F... f) { (rejects(f), ...); }

TEST(Movement, RejectsBadArguments) {
#define X(type) allReject(tevsCopy_##type, tevsMove_##type);
    EVERY_TYPE(X)
#undef X
    allReject(tevsFlip_8u, tevsFlip_8u_I, tevsFlip_16u, tevsFlip_16u_I, tevsFlip_32f, tevsFlip_32f_I, tevsFlip_64f, tevsFlip_64f_I);
    allReject(tevsSwapBytes_16u, tevsSwapBytes_16u_I, tevsSwapBytes_24u, tevsSwapBytes_24u_I, tevsSwapBytes_32u, tevsSwapBytes_32u_I, tevsSwapBytes_64u,
              tevsSwapBytes_64u_I);
    allReject(tevsReal_16sc, tevsReal_32fc, tevsReal_64fc, tevsImag_16sc, tevsImag_32fc, tevsImag_64fc, tevsConj_16sc, tevsConj_16sc_I, tevsConj_32fc,
              tevsConj_32fc_I, tevsConj_64fc, tevsConj_64fc_I, tevsConjFlip_16sc, tevsConjFlip_32fc, tevsConjFlip_64fc);
}

// Long fills take another way through the kernel; the pattern must keep its phase wherever the vector begins.
template <class T> void fillsLong(Status (*set)(T, T*, int), T val, size_t bytes) {
    for (int offset : {0, 1, 3, 4}) {
        Guarded<T> dst(bytes / sizeof(T), {offset, true});
        ASSERT_EQ(set(val, dst, int(dst.size())), StatusOk);
        ASSERT_TRUE(same(std::vector<T>(dst.size(), val), dst.values())) << sizeof(T) << " bytes, offset " << offset;
        ASSERT_TRUE(dst.intact());
    }
}
TEST(Set, LongVectorsAtOddAddresses) {
    for (size_t bytes : {size_t{4092}, size_t{4096}, size_t{9000}, size_t{25} << 20}) {
        fillsLong<int16_t>(tevsSet_16s, 0x1234, bytes);
        fillsLong<int32_t>(tevsSet_32s, 0x12345678, bytes);
        fillsLong<int64_t>(tevsSet_64s, 0x123456789abcdef0, bytes);
    }
}

}   // namespace
