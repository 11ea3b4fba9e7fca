#include "telephony/g711.table.h"

#include "core/simd/lanes.h"
#include "core/simd/map.h"
#include "core/simd/real.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// Both codes are floating-point numbers: a sign, three bits of exponent (the segment) and four of significand. What compresses a magnitude is therefore its
// conversion to single precision: of 2^e (1 + m/16 ...) the bits from 19 up read 16 (127 + e) + m. The first segment of either code begins at e = 7.
//
// Magnitudes here are those of s >= 0 and of NOT s, up to 2^15 - 1.
constexpr int kFirstSegment = 16 * (127 + 7);

struct MuLaw {
    // In steps of 4 the code's magnitudes are those of the sample and 33 more, up to 8191.
    template <class V> static TEVS_INLINE V biased(V magnitude) { return addSat(magnitude, same<V>(4 * 33)); }
    template <class B, class V> static TEVS_INLINE B linear(B code, V, V) { return code; }
    static constexpr uint8_t kPositive = 0xff;   // what the code of a positive sample is inverted with; bit 7 stays in that of a negative one
};
struct ALaw {
    template <class V> static TEVS_INLINE V biased(V magnitude) { return magnitude; }
    // The lowest segment has the steps of the next one, where a float's would be half as wide: 16 steps of 16. Above 255 the other code is larger.
    template <class B, class V> static TEVS_INLINE B linear(B code, V a, V b) {
        const B step = (B)((V)blockPackUnsigned(a, b) >> 4) & 0x0f;
        return code > step ? code : step;
    }
    static constexpr uint8_t kPositive = 0xd5;
};

#if TEVS_REGISTER_BYTES >= 32
TEVS_INLINE Vec<int8_t, 32> blockPackSigns(Vec<int16_t, 16> a, Vec<int16_t, 16> b) { return (Vec<int8_t, 32>)_mm256_packs_epi16((__m256i)a, (__m256i)b); }
TEVS_INLINE Vec<uint8_t, 32> inOrder(Vec<uint8_t, 32> v) { return (Vec<uint8_t, 32>)_mm256_permute4x64_epi64((__m256i)v, 0xd8); }
TEVS_INLINE Vec<uint8_t, 32> quartersInOrder(Vec<uint8_t, 32> v) {   // packed twice within each block they are 0 2 4 6 1 3 5 7
    return (Vec<uint8_t, 32>)_mm256_permutevar8x32_epi32((__m256i)v, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
}
#endif
TEVS_INLINE Vec<int8_t, 16> blockPackSigns(Vec<int16_t, 8> a, Vec<int16_t, 8> b) { return (Vec<int8_t, 16>)_mm_packs_epi16((__m128i)a, (__m128i)b); }
TEVS_INLINE Vec<uint8_t, 16> inOrder(Vec<uint8_t, 16> v) { return v; }
TEVS_INLINE Vec<uint8_t, 16> quartersInOrder(Vec<uint8_t, 16> v) { return v; }

template <class V> TEVS_INLINE V segmentAndSteps(V magnitude) {
    using W = Vec<int32_t, kCount<V> / 2>;
    using F = Vec<float, kCount<V> / 2>;
    const auto bits = [](V part) { return (W) __builtin_convertvector((W)part, F) >> 19; };
    return (V)blockPack(bits(blockLow(magnitude, V{})), bits(blockHigh(magnitude, V{}))) - kFirstSegment;
}

// The codes of samples a and b, block by block; signs of -1 or 0.
template <class Law, class V> TEVS_INLINE auto compressed(V a, V b, V negativeA, V negativeB) {
    using B = Vec<uint8_t, 2 * kCount<V>>;
    const V sizeA = a ^ a >> 15, sizeB = b ^ b >> 15;
    const auto code = (B)blockPackUnsigned(segmentAndSteps(Law::biased(sizeA)), segmentAndSteps(Law::biased(sizeB)));
    return Law::linear(code, sizeA, sizeB) ^ Law::kPositive ^ ((B)blockPackSigns(negativeA, negativeB) & 0x80);
}

template <class Law> void compress16s(const int16_t* src, uint8_t* dst, int len) {
    map<kRegisterBytes, 16>(
        len, dst,
        [](auto w, auto s) {
            const auto v = loadTwo<int16_t, w.n / 2>(s);
            return inOrder(compressed<Law>(v.a, v.b, v.a, v.b));
        },
        src);
}

// To 16 bits, half away from zero, saturated; NaN as the lowest. With the float below 1/2 the sum of half an integer rounds up to the next one, and what is a
// hair less than a half stays below 1. Of mu-law the float's own sign counts, which rounding to 0 would lose.
constexpr double kHalf = 0x1.fffffep-2;
constexpr auto packedInts = [](auto a, auto b) { return (Vec<int16_t, 2 * kCount<decltype(a)>>)blockPack(a, b); };
template <class Law> void compress32f(const float* src, uint8_t* dst, int len) {
    map<kRegisterBytes, 16>(
        len, dst,
        [](auto w, auto s) {
            using F = Vec<float, w.n / 4>;
            const auto x = loadLanes<float, w.n, 4>(s);
            const auto integers = eachPair(each(x,
                                                [](F v) {
                                                    const F y = v * 32768;
                                                    return truncatedInt(atMost(constant<F>(32767), y + withSign(constant<F>(kHalf), signOf(y))));
                                                }),
                                           packedInts);
            if constexpr (__is_same(Law, ALaw)) {
                return quartersInOrder(compressed<Law>(integers.v[0], integers.v[1], integers.v[0], integers.v[1]));
            } else {
                const auto signs = eachPair(each(x, [](F v) { return ~isAtMost(F{}, v); }), packedInts);
                return quartersInOrder(compressed<Law>(integers.v[0], integers.v[1], signs.v[0], signs.v[1]));
            }
        },
        src);
}

// ---- back ------------------------------------------------------------------------------------------------------------------------------------

#if TEVS_LEVEL >= 1

template <class V> TEVS_INLINE V lookUp(Vec<uint8_t, 16> table, V index) {   // 0 where the index has its high bit set
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(V) == 32) return (V)_mm256_shuffle_epi8(_mm256_broadcastsi128_si256((__m128i)table), (__m256i)index);
#endif
    if constexpr (sizeof(V) == 16) return (V)_mm_shuffle_epi8((__m128i)table, (__m128i)index);
}
// a[2i] * m[2i] + a[2i+1] * m[2i+1], of signed m.
TEVS_INLINE Vec<int16_t, 8> multiplyBytes(Vec<uint8_t, 16> a, Vec<uint8_t, 16> m) { return (Vec<int16_t, 8>)_mm_maddubs_epi16((__m128i)a, (__m128i)m); }
#if TEVS_REGISTER_BYTES >= 32
TEVS_INLINE Vec<int16_t, 16> multiplyBytes(Vec<uint8_t, 32> a, Vec<uint8_t, 32> m) { return (Vec<int16_t, 16>)_mm256_maddubs_epi16((__m256i)a, (__m256i)m); }
#endif

// A sample is first * factor1 + second * factor2: of four bits of steps (m), and looked up by segment k and sign, the upper four bits of the code.
template <class V> struct Products { V first, second, factor1, factor2; };

// A-law: (8 m + 132) * 2^k, in halves, since 2^7 is no signed byte; of k = 0 (8 m + 4) * 2.
TEVS_INLINE auto products(ALaw, auto code) {
    using V = decltype(code);
    const V plain = code ^ 0x55, m = (V)((Vec<uint16_t, kCount<V> / 2>)plain << 3) & 0x78, k = (V)((Vec<uint16_t, kCount<V> / 2>)plain >> 4) & 0x0f;
    constexpr Vec<uint8_t, 16> kStart = {4, 132, 132, 132, 132, 132, 132, 132, 4, 132, 132, 132, 132, 132, 132, 132};
    constexpr Vec<uint8_t, 16> kFactor = {255, 255, 254, 252, 248, 240, 224, 192, 1, 1, 2, 4, 8, 16, 32, 64};
    const V middle = m + lookUp(kStart, k), factor = lookUp(kFactor, k);
    return Products<V>{middle, middle, factor, factor};
}
// mu-law: (8 m + 132) * 2^k - 132 = (8 m + 132) * (2^k - 1) + 8 m.
TEVS_INLINE auto products(MuLaw, auto code) {
    using V = decltype(code);
    const V plain = ~code, m = (V)((Vec<uint16_t, kCount<V> / 2>)plain << 3) & 0x78, k = (V)((Vec<uint16_t, kCount<V> / 2>)plain >> 4) & 0x0f;
    constexpr Vec<uint8_t, 16> kFactor = {0, 1, 3, 7, 15, 31, 63, 127, 0, 255, 253, 249, 241, 225, 193, 129};
    constexpr Vec<uint8_t, 16> kSign = {1, 1, 1, 1, 1, 1, 1, 1, 255, 255, 255, 255, 255, 255, 255, 255};
    return Products<V>{m + 132, m, lookUp(kFactor, k), lookUp(kSign, k)};
}
template <class Law, class V> TEVS_INLINE auto expanded(V code) {
    const auto p = products(Law{}, code);
    return Two{multiplyBytes(blockLow(p.first, p.second), blockLow(p.factor1, p.factor2)),
               multiplyBytes(blockHigh(p.first, p.second), blockHigh(p.factor1, p.factor2))};
}

template <class Law> void expand16s(const uint8_t* src, int16_t* dst, int len) {
    map<kRegisterBytes, 16>(
        len, dst, [](auto w, auto s) { return expanded<Law>(inOrder(load<uint8_t, w.n>(s))); }, src);
}

// Quarters 0 2 4 6 and 1 3 5 7 of a register, so that unpacking its blocks twice gives consecutive samples.
TEVS_INLINE Vec<uint8_t, 16> quartersApart(Vec<uint8_t, 16> v) { return v; }
#if TEVS_REGISTER_BYTES >= 32
TEVS_INLINE Vec<uint8_t, 32> quartersApart(Vec<uint8_t, 32> v) {
    return (Vec<uint8_t, 32>)_mm256_permutevar8x32_epi32((__m256i)v, _mm256_setr_epi32(0, 2, 4, 6, 1, 3, 5, 7));
}
#endif
template <class Law> void expand32f(const uint8_t* src, float* dst, int len) {
    map<kRegisterBytes, 16>(
        len, dst,
        [](auto w, auto s) {
            using I = Vec<int32_t, w.n / 4>;
            using F = Vec<float, w.n / 4>;
            const auto v = expanded<Law>(quartersApart(load<uint8_t, w.n>(s)));
            const auto zero = v.a ^ v.a;
            const auto real = [](auto upper) { return __builtin_convertvector((I)upper, F) * 0x1p-31f; };   // a sample in the upper half of its lane
            return Some<F, 4>{real(blockLow(zero, v.a)), real(blockHigh(zero, v.a)), real(blockLow(zero, v.b)), real(blockHigh(zero, v.b))};
        },
        src);
}

// Of the table's rows of 16 entries the exclusive or of neighbours: from its own row down, those that an index has reached add up to its entry.
void transcode(const uint8_t* src, uint8_t* dst, int len, const uint8_t* table) {
    Vec<uint8_t, 16> rows[8];
    for (int k = 0; k < 8; ++k) rows[k] = load<uint8_t, 16>(table + 16 * k) ^ (k ? load<uint8_t, 16>(table + 16 * (k - 1)) : Vec<uint8_t, 16>{});
    map<kRegisterBytes, 16>(
        len, dst,
        [&](auto w, auto s) {
            const auto code = load<uint8_t, w.n>(s);
            auto index = code & 0x7f, r = lookUp(rows[0], index & 0x0f) ^ (code & 0x80);
            for (int k = 1; k < 8; ++k) {
                index -= 16;
                r ^= lookUp(rows[k], index);
            }
            return r;
        },
        src);
}

#else

// Without a byte shuffle one at a time, from tables.
struct Table {
    int16_t sample[256];
};
constexpr Table aLawTable = [] {
    Table t{};
    for (int a = 0; a < 256; ++a) {
        const int b = a ^ 0x55, segment = b >> 4 & 7, m = 16 * (b & 15), size = segment ? (m + 0x108) << (segment - 1) : m + 8;
        t.sample[a] = int16_t(b & 0x80 ? size : -size);
    }
    return t;
}();
constexpr Table muLawTable = [] {
    Table t{};
    for (int u = 0; u < 256; ++u) {
        const int b = ~u & 0xff, size = (((8 * (b & 15)) + 0x84) << (b >> 4 & 7)) - 0x84;
        t.sample[u] = int16_t(b & 0x80 ? -size : size);
    }
    return t;
}();
template <class Law> constexpr const Table& kTable = __is_same(Law, ALaw) ? aLawTable : muLawTable;

template <class Law> void expand16s(const uint8_t* src, int16_t* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = kTable<Law>.sample[src[n]];
}
template <class Law> void expand32f(const uint8_t* src, float* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = kTable<Law>.sample[src[n]] * 0x1p-15f;
}
void transcode(const uint8_t* src, uint8_t* dst, int len, const uint8_t* table) {
    for (int n = 0; n < len; ++n) dst[n] = uint8_t(table[src[n] & 0x7f] | (src[n] & 0x80));
}

#endif

template <class Law> constexpr Companding companding = {compress16s<Law>, compress32f<Law>, expand16s<Law>, expand32f<Law>};

}   // namespace

extern const G711Kernels g711 = {
    .aLaw = companding<ALaw>,
    .muLaw = companding<MuLaw>,
    .transcode = transcode,
};

}   // namespace tevs::TEVS_LEVEL_NS
