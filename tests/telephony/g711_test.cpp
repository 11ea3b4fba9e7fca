#include <algorithm>
#include <bit>
#include <cmath>
#include <numeric>

#include "support/elements.h"

using namespace test;

namespace {

// ---- the Recommendation's decision and quantised values, one at a time -----------------------------------------------------------------

int aLawSample(int code) {
    const int b = code ^ 0x55, t = (b & 15) * 16, segment = (b & 0x70) / 16;
    const int size = segment == 0 ? t + 8 : (t + 0x108) << (segment - 1);
    return b & 0x80 ? size : -size;
}
int muLawSample(int code) {
    const int b = 255 - code, t = ((b & 15) * 8 + 0x84) << (b & 0x70) / 16;
    return b & 0x80 ? 0x84 - t : t - 0x84;
}
int aLawCode(int s) {
    int p = s >> 3, segment = 0;
    const int mask = p < 0 ? 0x55 : 0xd5;
    if (p < 0) p = -p - 1;
    while (p > (256 << segment) / 8 - 1) ++segment;
    return (segment * 16 + (p >> std::max(segment, 1)) % 16) ^ mask;
}
int muLawCode(int s, bool positive) {
    const int a = std::min(((s < 0 ? -s - 1 : s) >> 2) + 33, 8191);
    int segment = 1;
    while (a >> 6 >> (segment - 1)) ++segment;
    return (8 - segment) * 16 + 15 - (a >> segment) % 16 + (positive ? 0x80 : 0);
}
template <class T> int rounded(float x) {   // +- 1/2 in T
    const float y = x * 32768;
    if (y > 32767) return 32767;
    if (!(y >= -32768)) return -32768;
    return int(y >= 0 ? T(y) + T(0.5) : T(y) - T(0.5));
}
int aLawCode32f(float x) { return aLawCode(rounded<double>(x)); }
int muLawCode32f(float x) { return muLawCode(rounded<float>(x), x >= 0); }

// ---- every value that there is -----------------------------------------------------------------------------------------------------------

std::vector<uint8_t> allCodes() {
    std::vector<uint8_t> v(256);
    std::iota(v.begin(), v.end(), uint8_t(0));
    return v;
}
std::vector<int16_t> allSamples() {
    std::vector<int16_t> v(65536);
    for (int s = -32768; s < 32768; ++s) v[size_t(s + 32768)] = int16_t(s);
    return v;
}
// Every half step and its neighbours, the whole range of floats, and what lies near 0.
std::vector<float> floats() {
    std::vector<float> v = wildFloats<float>(20000);
    for (int s = -65540; s <= 65540; ++s)
        for (float to : {-2.0f, 0.0f, 2.0f}) v.push_back(to == 0 ? float(s) / 65536 : std::nextafter(float(s) / 65536, to));
    for (uint32_t b = 0; b < 0xfffff000; b += 65521) v.push_back(std::bit_cast<float>(b));
    for (uint32_t b : {0x37ffffffu, 0x38000000u, 0x7fc00000u, 0xffc00000u, 0x80000001u, 0x80000000u}) v.push_back(std::bit_cast<float>(b));
    return v;
}

TEST(G711, EncodesEverySample) {
    EXPECT_TRUE(agrees<uint8_t>(tevsLinToALaw_16s8u, of(allSamples()), aLawCode));
    EXPECT_TRUE(agrees<uint8_t>(tevsLinToMuLaw_16s8u, of(allSamples()), [](int s) { return muLawCode(s, s >= 0); }));
}
TEST(G711, EncodesFloats) {
    EXPECT_TRUE(agrees<uint8_t>(tevsLinToALaw_32f8u, of(floats()), aLawCode32f));
    EXPECT_TRUE(agrees<uint8_t>(tevsLinToMuLaw_32f8u, of(floats()), muLawCode32f));
}
TEST(G711, DecodesEveryCode) {
    const auto real = [](auto sample) { return [=](int c) { return float(sample(c)) / 32768; }; };
    EXPECT_TRUE(agrees<int16_t>(tevsALawToLin_8u16s, of(allCodes()), aLawSample));
    EXPECT_TRUE(agrees<int16_t>(tevsMuLawToLin_8u16s, of(allCodes()), muLawSample));
    EXPECT_TRUE(agrees<float>(tevsALawToLin_8u32f, of(allCodes()), real(aLawSample)));
    EXPECT_TRUE(agrees<float>(tevsMuLawToLin_8u32f, of(allCodes()), real(muLawSample)));
}

struct Known {
    int sample;
    uint8_t aLaw, muLaw;
};
TEST(G711, KnownCodes) {
    for (const Known k : {Known{0, 0xd5, 0xff}, {-1, 0x55, 0x7f}, {32767, 0xaa, 0x80}, {-32768, 0x2a, 0x00}}) {
        const int16_t s = int16_t(k.sample);
        const float x = float(k.sample) / 32768;
        uint8_t a, u;
        tevsLinToALaw_16s8u(&s, &a, 1), tevsLinToMuLaw_16s8u(&s, &u, 1);
        EXPECT_TRUE(a == k.aLaw && u == k.muLaw) << k.sample;
        tevsLinToALaw_32f8u(&x, &a, 1), tevsLinToMuLaw_32f8u(&x, &u, 1);
        EXPECT_TRUE(a == k.aLaw && u == k.muLaw) << k.sample;
    }
}

// The tables of the Recommendation by their hash, and what is known of them.
template <class F, class Through> void transcodes(F f, uint64_t hash, int differ, Through through) {
    std::vector<uint8_t> table(256);
    ASSERT_EQ(f(allCodes().data(), table.data(), 256), StatusOk);
    EXPECT_EQ(hashOf(table.data(), 256), hash);
    int n = 0;
    for (int c = 0; c < 256; ++c) n += table[size_t(c)] != through(c);
    EXPECT_EQ(n, differ);
}
TEST(G711, Transcodes) {
    transcodes(tevsALawToMuLaw_8u, 0x61ee8248462e0701, 32, [](int c) {
        const int s = aLawSample(c);
        return muLawCode(s, s >= 0);
    });
    transcodes(tevsMuLawToALaw_8u, 0x16c103b7afb52ab5, 44, [](int c) { return aLawCode(muLawSample(c)); });
}

}   // namespace
