#include <algorithm>
#include <bit>
#include <climits>
#include <cmath>
#include <memory>

#include "support/elements.h"

using namespace test;

namespace {

// ---- the formats that C has no type for, and what their bits stand for ------------------------------------------------------

template <int Least> struct Packed { uint8_t bytes[3]; };
using I24 = Packed<-8388608>;
using U24 = Packed<0>;
struct F16 {
    uint16_t bits;
};

template <int Least> long double value(Packed<Least> x) {
    const int bits = x.bytes[0] + 256 * x.bytes[1] + 65536 * x.bytes[2];
    return bits > Least + 0xffffff ? bits - 0x1000000 : bits;
}
template <class T> long double value(T x) { return x; }
long double value(F16 x) {
    const int exponent = x.bits >> 10 & 31, fraction = x.bits & 1023;
    const long double sign = x.bits & 0x8000 ? -1 : 1;
    if (exponent == 31) return fraction ? NAN : sign * INFINITY;
    return sign * (exponent ? std::ldexp(1024.0L + fraction, exponent - 25) : std::ldexp((long double)fraction, -24));
}

template <class T> struct Bounds {
    static constexpr long double lo = std::numeric_limits<T>::min(), hi = std::numeric_limits<T>::max();
    static T make(long double v) { return T(v); }
};
template <int Least> struct Bounds<Packed<Least>> {
    static constexpr long double lo = Least, hi = Least + 0xffffff;
    static Packed<Least> make(long double v) { return {{uint8_t(int(v)), uint8_t(int(v) >> 8), uint8_t(int(v) >> 16)}}; }
};

// x * 2^-scale, rounded and saturated. A double-extended number holds every 64-bit integer and, for its wide exponent, every product.
template <class D> D integer(long double x, bool truncates, int scale) {
    if (std::isnan(x)) return Bounds<D>::make(Bounds<D>::lo);
    const long double v = std::ldexp(x, -std::clamp(scale, -3000, 3000));
    return Bounds<D>::make(std::clamp(truncates ? std::trunc(v) : std::nearbyint(v), Bounds<D>::lo, Bounds<D>::hi));
}

// The halves of one sign in order: 1024 steps to each power of two from 2^-14 on, and as many below it.
F16 half(long double x, bool truncates, uint32_t nanBits = 0) {
    const uint16_t sign = std::signbit(x) ? 0x8000 : 0;
    if (std::isnan(x)) return {uint16_t(sign | 0x7e00 | (nanBits >> 13 & 0x3ff))};
    const long double m = std::fabs(x);
    if (std::isinf(m)) return {uint16_t(sign | 0x7c00)};
    const int e = m == 0 ? -14 : std::max(std::ilogb(m), -14);
    if (e > 15) return {uint16_t(sign | (truncates ? 0x7bff : 0x7c00))};
    const long double steps = std::ldexp(m, 10 - e);
    return {uint16_t(sign | (((e + 14) << 10) + int(truncates ? std::trunc(steps) : std::nearbyint(steps))))};
}

// ---- sources ------------------------------------------------------------------------------------------------------------------

// Integers of every magnitude, with runs of zero bits at the end, so that ties are common at every scale; neighbours of powers of two; and the extremes.
// Of floats the whole range.
template <class T> std::vector<T> source(size_t n) {
    if constexpr (std::is_floating_point_v<T>) {
        return wildFloats<T>(n);
    } else if constexpr (std::is_integral_v<T>) {
        std::vector<T> v = randomVector<T>(n);
        for (T& x : v) {
            const uint64_t bits = sizeof(T) * 8, r = generator()(), a = r / 4 % bits;
            if (r % 4 < 2)
                x = T(uint64_t(x >> a) << (r >> 10) % bits);
            else if (r % 4 == 2)
                x = T(((r >> 30 & 1 ? uint64_t{1} : ~uint64_t{0}) << a) + (r >> 32 & 3) - 2);
        }
        return v;
    } else {
        std::vector<T> v(n);
        for (T& x : v) x = Bounds<T>::make(source<int32_t>(1)[0]);
        return v;
    }
}
// Every other one a multiple of a quarter (a tie or its neighbour), within and around the range of D, at the scale.
template <class T, class D> std::vector<T> floats(size_t n, int scale) {
    std::vector<T> v = wildFloats<T>(n);
    const int bits = int(std::log2(Bounds<D>::hi)) + 4;
    for (T& x : v)
        if (generator()() & 1) x = T(std::ldexp((long double)(int64_t(generator()()) >> (64 - bits + int(generator()() % unsigned(bits)))), scale - 2));
    return v;
}

// ---- calls -----------------------------------------------------------------------------------------------------------------------

template <class S, class D, class F> void casts(F f) {
    EXPECT_TRUE(agrees<D>(with(f), of(source<S>(kMany)), [](S x) { return D(value(x)); }));
}
TEST(Convert, WidensAndFloatsAsTheLanguageDoes) {
    each([]<class S, class D>(Status (*f)(const S*, D*, int)) { casts<S, D>(f); }, tevsConvert_8s16s, tevsConvert_16s32s, tevsConvert_32s64f,
         tevsConvert_32f64f, tevsConvert_8s32f, tevsConvert_8u32f, tevsConvert_16s32f, tevsConvert_16u32f, tevsConvert_32s32f, tevsConvert_64f32f);
    casts<I24, int32_t>(tevsConvert_24s32s);
    casts<U24, uint32_t>(tevsConvert_24u32u);
    casts<I24, float>(tevsConvert_24s32f);
    casts<U24, float>(tevsConvert_24u32f);
}

TEST(Convert, FloatsWithScale) {
    const auto check = []<class S, class D>(Status (*f)(const S*, D*, int, int)) {
        for (int scale : {0, 3, -3, 126, 200, INT_MAX, -112, -113, INT_MIN}) {
            const D factor = D(std::ldexp(1.0L, -std::clamp(scale, -112, 126)));
            EXPECT_TRUE(agrees<D>(with(f, scale), of(source<S>(kMany)), [=](S x) { return D(x) * factor; })) << scale;
        }
    };
    each(check, tevsConvert_16s32f_Sfs, tevsConvert_16s64f_Sfs, tevsConvert_32s32f_Sfs, tevsConvert_32s64f_Sfs);
}

// Every scale that differs. At `highest` and above the form goes on as at `highest`.
template <class S, class D, class F> void narrows(F f, int highest) {
    for (int k = -71; k <= 71; ++k) {
        const int scale = k < -70 ? INT_MIN : k > 70 ? INT_MAX : k;
        EXPECT_TRUE(agrees<D>(with(f, scale), of(source<S>(kMany)), [=](S x) { return integer<D>(value(x), false, std::min(scale, highest)); })) << scale;
    }
}
TEST(Convert, NarrowsIntegers) {
    narrows<int32_t, int16_t>(tevsConvert_32s16s_Sfs, INT_MAX);
    narrows<int64_t, int32_t>(tevsConvert_64s32s_Sfs, 63);
    narrows<int32_t, I24>(tevsConvert_32s24s_Sfs, 31);
    narrows<uint32_t, U24>(tevsConvert_32u24u_Sfs, INT_MAX);
    EXPECT_TRUE(agrees<int16_t>(tevsConvert_32s16s, of(source<int32_t>(kMany)), [](int32_t x) { return integer<int16_t>(x, false, 0); }));
}

// Any mode but RoundTowardZero is to nearest.
template <class S, class D, class O, class... A> void rounds(Status (*f)(const S*, O*, int, A...)) {
    for (int mode : {int(RoundTowardZero), int(RoundNearest), 2})
        for (int scale : {0, 1, -5, 126, 127, 128, 129, -127, -163, 1023, -1030, INT_MIN, INT_MAX}) {
            const auto data = floats<S, D>(kMany, std::clamp(scale, -120, 90));
            const auto want = [=](S x) { return integer<D>(x, mode == RoundTowardZero, scale); };
            if constexpr (sizeof...(A) == 2) {
                EXPECT_TRUE(agrees<D>(with(f, mode, scale), of(data), want)) << "mode " << mode << " scale " << scale;
            } else if (mode == RoundNearest) {
                EXPECT_TRUE(agrees<D>(with(f, scale), of(data), want)) << "scale " << scale;
            }
        }
}
TEST(Convert, RoundsFloats) {
    each([]<class S, class D, class... A>(Status (*f)(const S*, D*, int, A...)) { rounds<S, D>(f); }, tevsConvert_32f8s_Sfs, tevsConvert_32f8u_Sfs,
         tevsConvert_32f16s_Sfs, tevsConvert_32f16u_Sfs, tevsConvert_32f32s_Sfs, tevsConvert_64f32s_Sfs);
    rounds<float, I24>(tevsConvert_32f24s_Sfs);
    rounds<float, U24>(tevsConvert_32f24u_Sfs);
}

// ---- half precision: all of them ------------------------------------------------------------------------------------------------

std::vector<F16> everyHalf() {
    std::vector<F16> v(65536);
    for (size_t i = 0; i < v.size(); ++i) v[i].bits = uint16_t(i);
    return v;
}

TEST(Half, ToFloat) {
    const auto bits = [](F16 x) {
        const float v = float(value(x));
        return std::isnan(v) ? uint32_t(x.bits & 0x8000) << 16 | 0x7fc00000 | uint32_t(x.bits & 1023) << 13 : std::bit_cast<uint32_t>(v);
    };
    EXPECT_TRUE(agrees<uint32_t>(with(tevsConvert_16f32f), of(everyHalf()), bits));
}

TEST(Half, ToInteger) {
    const std::vector<F16> src = everyHalf();
    for (int mode : {int(RoundTowardZero), int(RoundNearest), 2})   // any mode but nearest truncates
        for (int scale : {0, 1, -1, 5, 14, 15, 16, 17, 40, 100, -5, -13, -14, -15, -24, -38, -39, -60, INT_MIN, INT_MAX}) {
            const auto want = [=](F16 x) { return integer<int16_t>(value(x), mode != RoundNearest, scale); };
            ASSERT_TRUE(agrees<int16_t>(with(tevsConvert_16f16s_Sfs, mode, scale), of(src), want)) << "mode " << mode << " scale " << scale;
        }
}

// Every float whose last 12 bits are 0 (each half, and each tie between two), and both neighbours of each.
TEST(Half, FromFloat) {
    std::vector<float> src(3 << 20);
    for (uint32_t i = 0; i < 3u << 20; ++i) src[i] = std::bit_cast<float>((i / 3 << 12) + i % 3 - 1);
    for (int mode : {int(RoundTowardZero), int(RoundNearest), 2})
        ASSERT_TRUE(agrees<F16>(with(tevsConvert_32f16f, mode), of(src), [=](float x) { return half(x, mode != RoundNearest, std::bit_cast<uint32_t>(x)); }))
            << mode;
}

TEST(Half, FromInteger) {
    for (int mode : {int(RoundTowardZero), int(RoundNearest), 2})
        EXPECT_TRUE(agrees<F16>(with(tevsConvert_16s16f, mode), of(source<int16_t>(kMany)), [=](int16_t x) { return half(x, mode != RoundNearest); })) << mode;
}

// ---- channels -----------------------------------------------------------------------------------------------------------------------

// The channels of interleaved samples, each against a guard page of its own.
struct Channels {
    std::vector<std::unique_ptr<Guarded<float>>> guarded;
    std::vector<float*> pointers;
    Channels(int n, int len) {
        for (int k = 0; k < n; ++k) {
            guarded.push_back(std::make_unique<Guarded<float>>(size_t(len), Place{k % 4 * 4, k % 2 == 0}));
            pointers.push_back(guarded.back()->data());
        }
    }
    float& sample(size_t i) { return pointers[i % pointers.size()][i / pointers.size()]; }
};

template <class D, class Join> void joins(Join join, int scale, int nChannels, int chanLen) {
    const auto data = floats<float, D>(size_t(nChannels) * size_t(chanLen), scale);
    Channels src(nChannels, chanLen);
    for (size_t i = 0; i < data.size(); ++i) src.sample(i) = data[i];
    Guarded<D> dst(data.size(), Place{1, true});
    ASSERT_EQ(join(src.pointers.data(), nChannels, chanLen, dst.data()), StatusOk);
    std::vector<D> want;
    for (float x : data) want.push_back(integer<D>(x, false, scale));
    ASSERT_TRUE(same(want, dst.values()) && dst.intact()) << nChannels << " channels of " << chanLen;
}
template <class S, class Split> void splits(Split split, float full, int nChannels, int chanLen) {
    const Guarded<S> src(source<S>(size_t(nChannels) * size_t(chanLen)), Place{1, true});
    Channels dst(nChannels, chanLen);
    ASSERT_EQ(split(src.data(), dst.pointers.data(), nChannels, chanLen), StatusOk);
    for (size_t i = 0; i < src.size(); ++i) ASSERT_EQ(dst.sample(i), float(value(src.data()[i])) / full) << nChannels << " channels of " << chanLen;
    for (const auto& g : dst.guarded) ASSERT_TRUE(g->intact());
}

TEST(JoinSplit, EveryChannelCount) {
    const auto all = [](int nChannels, int chanLen) {
        joins<int16_t>(tevsJoin_32f16s_D2L, 0, nChannels, chanLen);
        joins<int16_t>(tevsJoinScaled_32f16s_D2L, -15, nChannels, chanLen);
        joins<I24>(with(tevsJoinScaled_32f24s_D2L), -23, nChannels, chanLen);
        splits<int16_t>(tevsSplitScaled_16s32f_D2L, 32768, nChannels, chanLen);
        splits<I24>(with(tevsSplitScaled_24s32f_D2L), 8388608, nChannels, chanLen);
    };
    for (int nChannels = 1; nChannels <= 9; ++nChannels)
        for (int chanLen : {1, 2, 3, 4, 5, 7, 8, 9, 16, 31, 70, 1003}) all(nChannels, chanLen);
    // Frames that fill a block of the conversion, or more than one.
    for (int nChannels : {200, 257, 512, 1023, 1024, 1025, 2500})
        for (int chanLen : {1, 3, 6}) all(nChannels, chanLen);
}

TEST(JoinSplit, ChecksInOrder) {
    float x = 1;
    float* channels[] = {&x, nullptr};
    int16_t d[2] = {7, 7};
    uint8_t d24[6] = {};
    EXPECT_EQ(tevsJoin_32f16s_D2L(nullptr, 0, 0, nullptr), StatusNullPtr);
    EXPECT_EQ(tevsSplitScaled_16s32f_D2L(nullptr, nullptr, 0, 0), StatusNullPtr);
    struct Case {
        float* const* channels;
        int nChannels, chanLen;
        Status want;
    };
    const Case cases[] = {{nullptr, 0, 1, StatusBadSize},   {nullptr, 1, 0, StatusBadSize}, {channels, INT_MIN, 1, StatusBadSize},
                          {channels, 2, -1, StatusBadSize}, {nullptr, 1, 1, StatusNullPtr}, {channels, 2, 1, StatusNullPtr}};
    for (const Case& c : cases) {
        EXPECT_EQ(tevsJoin_32f16s_D2L(c.channels, c.nChannels, c.chanLen, d), c.want);
        EXPECT_EQ(tevsJoinScaled_32f16s_D2L(c.channels, c.nChannels, c.chanLen, d), c.want);
        EXPECT_EQ(tevsJoinScaled_32f24s_D2L(c.channels, c.nChannels, c.chanLen, d24), c.want);
        EXPECT_EQ(tevsSplitScaled_16s32f_D2L(d, c.channels, c.nChannels, c.chanLen), c.want);
        EXPECT_EQ(tevsSplitScaled_24s32f_D2L(d24, c.channels, c.nChannels, c.chanLen), c.want);
    }
    EXPECT_TRUE(d[0] == 7 && d[1] == 7 && x == 1);
}

}   // namespace
