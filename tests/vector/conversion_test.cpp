#include <algorithm>
#include <bit>
#include <climits>
#include <cmath>
#include <memory>

#include "support/elements.h"

using namespace test;

namespace {

// ---- the formats that C has no type for, and what their bits stand for ------------------------------------------------------

struct I24 {
    uint8_t bytes[3];
};
struct U24 {
    uint8_t bytes[3];
};
struct F16 {
    uint16_t bits;
};

long double value(U24 x) { return x.bytes[0] + 256 * x.bytes[1] + 65536 * x.bytes[2]; }
long double value(I24 x) { return x.bytes[0] + 256 * x.bytes[1] + 65536 * int8_t(x.bytes[2]); }
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
template <> struct Bounds<I24> {
    static constexpr long double lo = -8388608, hi = 8388607;
    static I24 make(long double v) { return {{uint8_t(int(v)), uint8_t(int(v) >> 8), uint8_t(int(v) >> 16)}}; }
};
template <> struct Bounds<U24> {
    static constexpr long double lo = 0, hi = 16777215;
    static U24 make(long double v) { return {{uint8_t(int(v)), uint8_t(int(v) >> 8), uint8_t(int(v) >> 16)}}; }
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

// Integers of every magnitude, with runs of zero bits at the end, so that ties are common at every scale; and the extremes.
template <class T> std::vector<T> integers(size_t n) {
    std::vector<T> v = randomVector<T>(n);
    for (T& x : v) {
        const int bits = int(sizeof(T) * 8), a = int(generator()() % unsigned(bits)), b = int(generator()() % unsigned(bits));
        if (generator()() & 1) x = T(uint64_t(x >> a) << b);
    }
    return v;
}
template <class P> std::vector<P> packed(size_t n) {
    std::vector<P> v(n);
    for (P& x : v) {
        const uint32_t r = integers<uint32_t>(1)[0];
        x = {{uint8_t(r), uint8_t(r >> 8), uint8_t(r >> 16)}};
    }
    return v;
}
// Floats over the whole range, and every other one a multiple of a quarter (a tie or its neighbour), within and around the range of D, at the scale.
template <class T, class D> std::vector<T> floats(size_t n, int scale) {
    std::vector<T> v = wildFloats<T>(n);
    const int bits = int(std::log2(Bounds<D>::hi)) + 4;
    for (T& x : v)
        if (generator()() & 1) x = T(std::ldexp((long double)(int64_t(generator()()) >> (64 - bits + int(generator()() % unsigned(bits)))), scale - 2));
    return v;
}

// ---- calls -----------------------------------------------------------------------------------------------------------------------

// f with its last arguments given, over any types of the same layout as its own.
template <class S, class D, class... A> auto with(Status (*f)(const S*, D*, int, A...), std::type_identity_t<A>... a) {
    return [=](const auto* s, auto* d, int len) { return f(reinterpret_cast<const S*>(s), reinterpret_cast<D*>(d), len, a...); };
}

// call(src, dst, len) against want(sample).
template <class S, class D, class Data, class Call, class Want> void converts(Data data, Call call, Want want, const char* what) {
    EXPECT_TRUE(agrees<D>(call, want, data(kMany))) << what;
}

template <class S, class D, class Call> void casts(std::vector<S> (*data)(size_t), Call call, const char* what) {
    converts<S, D>(
        data, call, [](S x) { return D(value(x)); }, what);
}
#define CASTS(S, D, data, f) casts<S, D>(data<S>, with(f), #f)

TEST(Convert, WidensAndFloatsAsTheLanguageDoes) {
    CASTS(int8_t, int16_t, integers, tevsConvert_8s16s);
    CASTS(int16_t, int32_t, integers, tevsConvert_16s32s);
    CASTS(int32_t, double, integers, tevsConvert_32s64f);
    CASTS(float, double, wildFloats, tevsConvert_32f64f);
    CASTS(I24, int32_t, packed, tevsConvert_24s32s);
    CASTS(U24, uint32_t, packed, tevsConvert_24u32u);
    CASTS(int8_t, float, integers, tevsConvert_8s32f);
    CASTS(uint8_t, float, integers, tevsConvert_8u32f);
    CASTS(int16_t, float, integers, tevsConvert_16s32f);
    CASTS(uint16_t, float, integers, tevsConvert_16u32f);
    CASTS(int32_t, float, integers, tevsConvert_32s32f);
    CASTS(I24, float, packed, tevsConvert_24s32f);
    CASTS(U24, float, packed, tevsConvert_24u32f);
    CASTS(double, float, wildFloats, tevsConvert_64f32f);
}

template <class S, class D> void floatsScaled(Status (*f)(const S*, D*, int, int), const char* what) {
    for (int scale : {0, 3, -3, 126, 200, INT_MAX, -112, -113, INT_MIN}) {
        const D factor = D(std::ldexp(1.0L, -std::clamp(scale, -112, 126)));
        converts<S, D>(
            integers<S>, with(f, scale), [=](S x) { return D(x) * factor; }, what);
    }
}
TEST(Convert, FloatsWithScale) {
    floatsScaled(tevsConvert_16s32f_Sfs, "16s32f_Sfs");
    floatsScaled(tevsConvert_16s64f_Sfs, "16s64f_Sfs");
    floatsScaled(tevsConvert_32s32f_Sfs, "32s32f_Sfs");
    floatsScaled(tevsConvert_32s64f_Sfs, "32s64f_Sfs");
}

// Every scale that differs. At `highest` and above the form goes on as at `highest`.
template <class S, class D, class F> void narrows(F f, int highest, const char* what) {
    for (int k = -71; k <= 71; ++k) {
        const int scale = k < -70 ? INT_MIN : k > 70 ? INT_MAX : k;
        converts<S, D>(
            integers<S>, with(f, scale), [=](S x) { return integer<D>(value(x), false, std::min(scale, highest)); }, what);
    }
}
TEST(Convert, NarrowsIntegers) {
    narrows<int32_t, int16_t>(tevsConvert_32s16s_Sfs, INT_MAX, "32s16s_Sfs");
    narrows<int64_t, int32_t>(tevsConvert_64s32s_Sfs, 63, "64s32s_Sfs");
    narrows<int32_t, I24>(tevsConvert_32s24s_Sfs, 31, "32s24s_Sfs");
    narrows<uint32_t, U24>(tevsConvert_32u24u_Sfs, INT_MAX, "32u24u_Sfs");
    converts<int32_t, int16_t>(
        integers<int32_t>, with(tevsConvert_32s16s), [](int32_t x) { return integer<int16_t>(x, false, 0); }, "32s16s");
}

struct Narrow64 {
    int64_t x;
    int scale;
    int32_t want;
};
constexpr Narrow64 kNarrow64[] = {
    {INT64_MIN, 63, -1},
    {INT64_MIN, 64, -1},   // the scale stays at 63
    {(INT64_C(1) << 62) + 1, 64, 1},
    {INT64_C(1) << 62, 63, 0},
    {INT64_MAX, 63, 1},
    {INT64_MAX, 32, INT32_MAX},
    {INT64_C(0x17fffffff), 1, INT32_MAX},
    {INT64_C(0xfffffffe), 1, INT32_MAX},
    {INT64_C(-0x100000001), 1, INT32_MIN},
    {3, 1, 2},
    {-3, 1, -2},
    {-1, 1, 0},
    {1, -31, INT32_MAX},
    {-1, -31, INT32_MIN},
    {-1, INT_MIN, INT32_MIN},
    {0, INT_MIN, 0},
    {INT64_C(1) << 31, 0, INT32_MAX},
};
TEST(Convert, Narrows64BitsAtTheBounds) {
    for (const Narrow64& r : kNarrow64) {
        int32_t got = 77;
        ASSERT_EQ(tevsConvert_64s32s_Sfs(&r.x, &got, 1, r.scale), StatusOk);
        EXPECT_EQ(got, r.want) << r.x << " scale " << r.scale;
    }
}

template <class S, class D, class F> void rounds(F f, const char* what) {
    for (int mode : {int(RoundTowardZero), int(RoundNearest), 2})
        for (int scale : {0, 1, -5, 126, 127, -127, 1023, -1030, INT_MIN, INT_MAX}) {
            const auto data = [=](size_t n) { return floats<S, D>(n, std::clamp(scale, -120, 90)); };
            const auto want = [=](S x) { return integer<D>(x, mode == RoundTowardZero, scale); };
            if constexpr (std::is_invocable_v<F, const S*, D*, int, int, int>)
                converts<S, D>(data, with(f, mode, scale), want, what);
            else if (mode == RoundNearest)
                converts<S, D>(data, with(f, scale), want, what);
        }
}
TEST(Convert, RoundsFloats) {
    rounds<float, int8_t>(tevsConvert_32f8s_Sfs, "32f8s_Sfs");
    rounds<float, uint8_t>(tevsConvert_32f8u_Sfs, "32f8u_Sfs");
    rounds<float, int16_t>(tevsConvert_32f16s_Sfs, "32f16s_Sfs");
    rounds<float, uint16_t>(tevsConvert_32f16u_Sfs, "32f16u_Sfs");
    rounds<float, int32_t>(tevsConvert_32f32s_Sfs, "32f32s_Sfs");
    rounds<double, int32_t>(tevsConvert_64f32s_Sfs, "64f32s_Sfs");
    rounds<float, I24>(tevsConvert_32f24s_Sfs, "32f24s_Sfs");
    rounds<float, U24>(tevsConvert_32f24u_Sfs, "32f24u_Sfs");
}

struct Row {
    float x;
    int mode, scale;
    int16_t want;
};
constexpr Row kTo16s[] = {
    {2.5f, RoundNearest, 0, 2},
    {3.5f, RoundNearest, 0, 4},
    {-2.7f, RoundTowardZero, 0, -2},
    {2.7f, 2, 0, 3},   // any other mode is to nearest
    {40000.0f, RoundNearest, 0, 32767},
    {-40000.0f, RoundNearest, 0, -32768},
    {5.0f, RoundNearest, 1, 2},
    {1e10f, RoundNearest, 0, 32767},
    {INFINITY, RoundTowardZero, 0, 32767},
    {NAN, RoundNearest, 3, -32768},
    {3.4e38f, RoundNearest, 127, 2},
    {3.4e38f, RoundNearest, 128, 1},
    {3.4e38f, RoundNearest, 129, 0},
    {0.0f, RoundNearest, INT_MIN, 0},
    {0x1p-149f, RoundNearest, -163, 16384},
    {-1.0f, RoundNearest, INT_MIN, -32768},
    {3e38f, RoundNearest, INT_MAX, 0},
};
TEST(Convert_32f16s_Sfs, TellingCases) {
    for (const Row& r : kTo16s) {
        int16_t got = 77;
        ASSERT_EQ(tevsConvert_32f16s_Sfs(&r.x, &got, 1, r.mode, r.scale), StatusOk);
        EXPECT_EQ(got, r.want) << r.x << " mode " << r.mode << " scale " << r.scale;
    }
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
    EXPECT_TRUE(agrees<uint32_t>(with(tevsConvert_16f32f), bits, everyHalf()));
}

TEST(Half, ToInteger) {
    const std::vector<F16> src = everyHalf();
    for (int mode : {int(RoundTowardZero), int(RoundNearest), 2})   // any mode but nearest truncates
        for (int scale : {0, 1, -1, 5, 14, 15, 16, 17, 40, 100, -5, -13, -14, -15, -24, -38, -39, -60, INT_MIN, INT_MAX}) {
            const auto want = [=](F16 x) { return integer<int16_t>(value(x), mode != RoundNearest, scale); };
            ASSERT_TRUE(agrees<int16_t>(with(tevsConvert_16f16s_Sfs, mode, scale), want, src)) << "mode " << mode << " scale " << scale;
        }
}

// Every float whose last 12 bits are 0 (each half, and each tie between two), and both neighbours of each.
TEST(Half, FromFloat) {
    std::vector<float> src(3 << 20);
    for (uint32_t i = 0; i < 3u << 20; ++i) src[i] = std::bit_cast<float>((i / 3 << 12) + i % 3 - 1);
    for (int mode : {int(RoundTowardZero), int(RoundNearest), 2})
        ASSERT_TRUE(agrees<F16>(
            with(tevsConvert_32f16f, mode), [=](float x) { return half(x, mode != RoundNearest, std::bit_cast<uint32_t>(x)); }, src))
            << mode;
}

TEST(Half, FromInteger) {
    for (int mode : {int(RoundTowardZero), int(RoundNearest), 2})
        converts<int16_t, F16>(
            integers<int16_t>, with(tevsConvert_16s16f, mode), [=](int16_t x) { return half(x, mode != RoundNearest); }, "16s16f");
}

// ---- channels -----------------------------------------------------------------------------------------------------------------------

// Each channel against a guard page of its own.
struct Channels {
    std::vector<std::unique_ptr<Guarded<float>>> guarded;
    std::vector<float*> pointers;
    Channels(int n, int len) {
        for (int k = 0; k < n; ++k) {
            guarded.push_back(std::make_unique<Guarded<float>>(size_t(len), Place{k % 4 * 4, k % 2 == 0}));
            pointers.push_back(guarded.back()->data());
        }
    }
    bool intact() const {
        return std::all_of(guarded.begin(), guarded.end(), [](const auto& g) { return g->intact(); });
    }
};

template <class D, class Join> void joins(Join join, int scale, int nChannels, int chanLen) {
    const Channels src(nChannels, chanLen);
    for (float* p : src.pointers) {
        const std::vector<float> v = floats<float, D>(size_t(chanLen), scale);
        std::copy(v.begin(), v.end(), p);
    }
    std::vector<D> want;
    for (int f = 0; f < chanLen; ++f)
        for (const float* p : src.pointers) want.push_back(integer<D>(p[f], false, scale));
    Guarded<D> dst(want.size(), Place{1, true});
    ASSERT_EQ(join(src.pointers.data(), nChannels, chanLen, dst), StatusOk);
    ASSERT_TRUE(same(want, dst.values())) << nChannels << " channels of " << chanLen;
    ASSERT_TRUE(dst.intact());
}
template <class S, class Split, class Join> void splits(Split split, Join join, std::vector<S> (*data)(size_t), long double full, int nChannels, int chanLen) {
    const Guarded<S> src(data(size_t(nChannels) * size_t(chanLen)), Place{1, true});
    const Channels dst(nChannels, chanLen);
    ASSERT_EQ(split(src.data(), dst.pointers.data(), nChannels, chanLen), StatusOk);
    ASSERT_TRUE(dst.intact());
    const std::vector<S> in = src.values();
    for (size_t i = 0; i < in.size(); ++i)
        ASSERT_EQ(dst.pointers[i % size_t(nChannels)][i / size_t(nChannels)], float(value(in[i]) / full)) << nChannels << " channels of " << chanLen;
    Guarded<S> back(in.size());
    ASSERT_EQ(join(dst.pointers.data(), nChannels, chanLen, back), StatusOk);
    ASSERT_TRUE(same(in, back.values()));
}
constexpr auto join24 = [](const float* const* s, int n, int len, I24* d) { return tevsJoinScaled_32f24s_D2L(s, n, len, d->bytes); };
constexpr auto split24 = [](const I24* s, float* const* d, int n, int len) { return tevsSplitScaled_24s32f_D2L(s->bytes, d, n, len); };

TEST(JoinSplit, EveryChannelCount) {
    const auto all = [](int nChannels, int chanLen) {
        joins<int16_t>(tevsJoin_32f16s_D2L, 0, nChannels, chanLen);
        joins<int16_t>(tevsJoinScaled_32f16s_D2L, -15, nChannels, chanLen);
        joins<I24>(join24, -23, nChannels, chanLen);
        splits<int16_t>(tevsSplitScaled_16s32f_D2L, tevsJoinScaled_32f16s_D2L, integers<int16_t>, 32768, nChannels, chanLen);
        splits<I24>(split24, join24, packed<I24>, 8388608, nChannels, chanLen);
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
    for (auto [v, plain, scaled] : {std::tuple{2.5f, 2, 32767}, {1.0f, 1, 32767}, {-1.0f, -1, -32768}, {0.5f, 0, 16384}, {40000.0f, 32767, 32767}}) {
        x = v;
        EXPECT_EQ(tevsJoin_32f16s_D2L(channels, 1, 1, d), StatusOk);
        EXPECT_EQ(tevsJoinScaled_32f16s_D2L(channels, 1, 1, d + 1), StatusOk);
        EXPECT_TRUE(d[0] == plain && d[1] == scaled) << v << ": " << d[0] << " and " << d[1];
    }
}

}   // namespace
