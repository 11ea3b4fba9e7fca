// FIR filters of every pair of tap and sample types, with the types erased: what runs over all of them is compiled once.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <memory>
#include <string>

#include "support/control_words.h"
#include "support/values.h"
#include "tevcore.h"
#include "tevs.h"

namespace test {

// ---- functions ----------------------------------------------------------------------------------------------------------------------------

struct Factors {
    int up = 1, upPhase = 0, down = 1, downPhase = 0;
    auto arguments() const { return std::tuple{up, upPhase, down, downPhase}; }
};

// `direct` and what follows is null where the stateless forms are another pair's.
struct Api {
    const char* name;
    Type tap, sample;
    Number kept;
    int parallelAbove;
    Status (*stateSize)(int, Ptr);
    Status (*init)(Ptr state, Ptr h, int taps, Factor, Ptr past, Ptr buffer);
    Status (*initAlloc)(Ptr state, Ptr h, int taps, Factor, Ptr past);
    Status (*rateStateSize)(int, int up, int down, Ptr);
    Status (*rateInit)(Ptr state, Ptr h, int taps, Factor, Factors, Ptr past, Ptr buffer);
    Status (*rateInitAlloc)(Ptr state, Ptr h, int taps, Factor, Factors, Ptr past);
    Status (*free)(Ptr);
    Status (*setTaps)(Ptr h, Ptr state, Factor);
    Status (*getTaps)(Ptr state, Ptr h);
    Status (*setDlyLine)(Ptr state, Ptr past);
    Status (*getDlyLine)(Ptr state, Ptr past);
    Status (*block)(Ptr src, Ptr dst, int, Ptr state, Scale);
    Status (*blockInPlace)(Ptr both, int, Ptr state, Scale);
    Status (*one)(Element, Ptr dst, Ptr state, Scale);
    Status (*direct)(Ptr src, Ptr dst, int, Ptr h, int taps, Factor, Ptr line, Ptr index, Scale) = nullptr;
    Status (*directInPlace)(Ptr both, int, Ptr h, int taps, Factor, Ptr line, Ptr index, Scale) = nullptr;
    Status (*directOne)(Element, Ptr dst, Ptr h, int taps, Factor, Ptr line, Ptr index, Scale) = nullptr;
    Status (*directOneInPlace)(Ptr both, Ptr h, int taps, Factor, Ptr line, Ptr index, Scale) = nullptr;
    Status (*rateDirect)(Ptr src, Ptr dst, int, Ptr h, int taps, Factor, Factors, Ptr past, Scale) = nullptr;
    Status (*rateDirectInPlace)(Ptr both, int, Ptr h, int taps, Factor, Factors, Ptr past, Scale) = nullptr;

    bool exact() const { return kept == Number::i16; }
};

// BUILD names a record's builders, T its taps, D its samples.
#define FIR_RECORD(T, BUILD, D, SFS, ISFS)                                                                                                    \
    erased<tevsFIRGetStateSize##BUILD>, erased<tevsFIRInit##BUILD>, erased<tevsFIRInitAlloc##BUILD>, erased<tevsFIRMRGetStateSize##BUILD>,    \
        erased<tevsFIRMRInit##BUILD>, erased<tevsFIRMRInitAlloc##BUILD>, erased<tevsFIRFree##BUILD>, erased<tevsFIRSetTaps##BUILD>,           \
        erased<tevsFIRGetTaps##BUILD>, erased<tevsFIRSetDlyLine##T##_##D>, erased<tevsFIRGetDlyLine##T##_##D>, erased<tevsFIR##T##_##D##SFS>, \
        erased<tevsFIR##T##_##D##ISFS>, erased<tevsFIROne##T##_##D##SFS>
#define FIR_DIRECT(T, D, SFS, ISFS)                                                                                       \
    erased<tevsFIR##T##_Direct_##D##SFS>, erased<tevsFIR##T##_Direct_##D##ISFS>, erased<tevsFIROne##T##_Direct_##D##SFS>, \
        erased<tevsFIROne##T##_Direct_##D##ISFS>, erased<tevsFIRMR##T##_Direct_##D##SFS>, erased<tevsFIRMR##T##_Direct_##D##ISFS>
// clang-format off
#define FIR_PAIR(TAP, SAMPLE, KEPT, ABOVE, T, D, SFS, ISFS) \
    {#T "_" #D, typeOf<TAP>(), typeOf<SAMPLE>(), Number::KEPT, ABOVE, FIR_RECORD(T, T##_##D, D, SFS, ISFS), FIR_DIRECT(T, D, SFS, ISFS)}
#define FIR_BUILDER(TAP, SAMPLE, T, D, BUILD) {#BUILD, typeOf<TAP>(), typeOf<SAMPLE>(), Number::i16, 1600, FIR_RECORD(T, BUILD, D, _Sfs, _ISfs)}
// clang-format on

inline const Api kPairs[] = {
    FIR_PAIR(float, float, f32, 160000, , 32f, , _I),
    FIR_PAIR(Complex32f, Complex32f, f32, 80000, , 32fc, , _I),
    FIR_PAIR(float, int16_t, f32, 1600, 32f, 16s, _Sfs, _ISfs),
    FIR_PAIR(Complex32f, Complex16s, f32, 800, 32fc, 16sc, _Sfs, _ISfs),
    FIR_PAIR(int32_t, int16_t, i16, 1600, 32s, 16s, _Sfs, _ISfs),
    FIR_BUILDER(float, int16_t, 32s, 16s, 32s_16s32f),
    FIR_PAIR(Complex32s, Complex16s, i16, 1600, 32sc, 16sc, _Sfs, _ISfs),
    FIR_BUILDER(Complex32f, Complex16s, 32sc, 16sc, 32sc_16sc32fc),
    FIR_PAIR(double, double, f64, 1600, , 64f, , _I),
    FIR_PAIR(Complex64f, Complex64f, f64, 800, , 64fc, , _I),
    FIR_PAIR(double, float, f64, 1600, 64f, 32f, , _I),
    FIR_PAIR(Complex64f, Complex32f, f64, 800, 64fc, 32fc, , _I),
    FIR_PAIR(double, int32_t, f64, 1600, 64f, 32s, _Sfs, _ISfs),
    FIR_PAIR(double, int32_t, f64, 1600, , 32s, _Sfs, _ISfs),
    FIR_PAIR(Complex64f, Complex32s, f64, 800, 64fc, 32sc, _Sfs, _ISfs),
    FIR_PAIR(double, int16_t, f64, 1600, 64f, 16s, _Sfs, _ISfs),
    FIR_PAIR(Complex64f, Complex16s, f64, 1600, 64fc, 16sc, _Sfs, _ISfs),
};
inline std::string pairName(const ::testing::TestParamInfo<Api>& info) { return info.param.name; }
inline void PrintTo(const Api& api, std::ostream* out) { *out << api.name; }
inline const Api& pairNamed(std::string_view name) {
    return *std::find_if(std::begin(kPairs), std::end(kPairs), [=](const Api& a) { return a.name == name; });
}

// ---- what comes out -------------------------------------------------------------------------------------------------------------------------

// What the taps stand for: themselves or, kept in 16 bits, integers times 2^exponent. Integers are halved until below 32767; floats are scaled by the power of two
// that leaves the largest just below.
struct Taps {
    Vector h;
    int factor = 0, exponent = 0;
    std::vector<Real> kept;
    Taps(const Api& api, Vector given, int f = 0) : h(std::move(given)), factor(f) {
        Real most = 0;
        for (size_t i = 0; i < h.parts(); ++i) most = std::max(most, std::fabs(h.part(i)));
        int shift = 0;
        if (api.exact() && h.type.whole())
            for (auto m = int64_t(most); m > 32766; m /= 2) ++shift;
        else if (api.exact() && most > 0) {
            while (std::ldexp(most, -shift) > 32767) ++shift;
            while (std::ldexp(most, 1 - shift) < 32767) --shift;
        }
        exponent = factor + shift;
        for (size_t i = 0; i < h.parts(); ++i) {
            const Real v = std::ldexp(h.part(i), -shift);
            kept.push_back(!api.exact() ? v : h.type.whole() ? std::floor(v) : std::round(v) + 0.0L);   // no -0
        }
    }
    int size() const { return int(h.size()); }
};

// Magnitudes below 1, of integers with the factor. Of those that are kept in 16 bits some come with little in them, and some add up to less than 2^16.
inline Taps randomTaps(const Api& api, size_t n) {
    Vector h = randomVector(api.tap, n);
    const int shift = int(generator()() % 4) * 8, few = int(generator()() % 2);
    for (size_t i = 0; i < h.parts(); ++i)
        if (h.type.whole())
            h.setPart(i, std::floor(std::ldexp(h.part(i), -shift)));
        else if (api.exact() && few && i >= size_t(h.type.parts))
            h.setPart(i, h.part(i) * 0.001L);
    return {api, std::move(h), api.tap.whole() ? shift - 31 : 0};
}
inline int pastLen(int taps, Factors f) { return (taps + f.up - 1) / f.up; }
// So that some results saturate and some do not.
inline int usualScale(const Api& api, int taps, Factors f = {}) {
    int scale = 0;
    while (1 << 2 * (scale + 1) <= pastLen(taps, f)) ++scale;
    return api.sample.whole() ? scale : 0;
}

// Zeros in between the inputs, a filter over all of it, and every so many of the results.
inline std::vector<Real> convolution(const Taps& t, const Vector& x, const Vector& past, Factors f) {
    const size_t c = size_t(x.type.parts);
    std::vector<Real> all, y;
    for (size_t k = past.size(); k-- > 0;)
        for (size_t i = 0; i < c; ++i) all.push_back(past.part(k * c + i));
    for (size_t i = 0; i < x.parts(); ++i) all.push_back(x.part(i));
    for (int64_t at = f.downPhase, end = int64_t(x.size()) * f.up; at < end; at += f.down) {
        const int64_t since = at - f.upPhase + f.up;   // from the input before the newest possible one
        const Real* s = &all[size_t(int64_t(past.size()) + since / f.up - 1) * c];
        Real re = 0, im = 0;
        for (int64_t k = since % f.up; k < t.size(); k += f.up, s -= c) {
            const Real* const h = &t.kept[size_t(k) * c];
            re += h[0] * s[0];
            if (c == 2) {
                re -= h[1] * s[1];
                im += h[0] * s[1] + h[1] * s[0];
            }
        }
        y.push_back(re);
        if (c == 2) y.push_back(im);
    }
    return y;
}

// A running sum of n products of random signs grows like n^(1/2) and is rounded n times: its error has a deviation of about n eps / 4 here, and
// six of these are allowed. A transform's error is below that. Sums of 16-bit products are exact.
inline ::testing::AssertionResult fits(const Api& api, const Taps& t, const Vector& x, const Vector& past, const Vector& got, int scale, Factors f = {},
                                       bool roundedOnce = false) {
    const auto want = convolution(t, x, past, f);
    if (want.size() != got.parts()) return ::testing::AssertionFailure() << want.size() << " parts, not " << got.parts();
    const auto [lo, hi] = rangeOf(api.sample.number);
    const Real eps = api.kept == Number::f32 && !roundedOnce ? 0x1p-24L : 0x1p-53L;
    const Real bound = (api.sample.whole() ? -lo : 1) * eps * api.sample.parts * (1.5L * pastLen(t.size(), f) + 6);
    const int s = int(std::clamp(int64_t{scale} - (api.exact() ? t.exponent : 0), int64_t{-2000}, int64_t{2000}));
    for (size_t i = 0; i < want.size(); ++i) {
        Real w = want[i], allowed = bound;
        if (api.sample.whole()) {
            w = std::clamp(std::ldexp(w, -s), lo, hi);
            allowed = api.exact() ? 0 : std::ldexp(bound, -s) + 0.5L;
            if (api.exact()) w = std::nearbyint(w);
        } else if (api.sample.number == Number::f32)
            allowed += std::fabs(w) * 0x1.01p-24L;
        if (!(std::fabs(w - got.part(i)) <= allowed))
            return ::testing::AssertionFailure() << "part " << i << " of " << want.size() << ": want " << w << ", got " << got.part(i) << ", scale " << scale;
    }
    return ::testing::AssertionSuccess();
}

// The delay line after x.
inline Vector pastAfter(const Vector& x, const Vector& before) {
    Vector d(x.type);
    for (size_t k = 0; k < before.size(); ++k) {
        const uint8_t* const from = k < x.size() ? x.at(x.size() - 1 - k) : before.at(k - x.size());
        d.bytes.insert(d.bytes.end(), from, from + x.type.size());
    }
    return d;
}

// ---- records --------------------------------------------------------------------------------------------------------------------------------

// Of either lifecycle, for one rate or between two; the caller's memory has exactly the reported size, at any address, between guard pages.
class Filter {
public:
    Filter(const Api& api, const Taps& t, Ptr past, bool owned, const Factors* f = nullptr, int offset = 0) : Filter(api, t.h, t, past, owned, f, offset) {}
    Filter(const Api& a, Ptr h, const Taps& t, Ptr past, bool owned, const Factors* f, int offset) : api(a), len(f ? pastLen(t.size(), *f) : t.size()) {
        const Factor factor{t.factor};
        const int n = t.size();
        if (owned) {
            EXPECT_EQ(f ? api.rateInitAlloc(&state, h, n, factor, *f, past) : api.initAlloc(&state, h, n, factor, past), StatusOk);
            return;
        }
        const size_t size = f ? reported(api.rateStateSize, n, f->up, f->down) : reported(api.stateSize, n);
        memory = std::make_unique<Guarded<uint8_t>>(size, Place{offset, offset % 2 == 0});
        uint8_t* const m = memory->data();
        EXPECT_EQ(f ? api.rateInit(&state, h, n, factor, *f, past, m) : api.init(&state, h, n, factor, past, m), StatusOk);
    }
    Filter(const Filter&) = delete;
    ~Filter() {
        EXPECT_EQ(api.free(state), StatusOk);
        EXPECT_TRUE(!memory || memory->intact());
    }
    operator Ptr() const { return state; }
    Status block(Ptr src, Ptr dst, size_t n, int scale) { return api.block(src, dst, int(n), state, Scale{scale}); }
    Status inPlace(Ptr both, size_t n, int scale) { return api.blockInPlace(both, int(n), state, Scale{scale}); }
    Status one(const void* src, Ptr dst, int scale) { return api.one(Element{src}, dst, state, Scale{scale}); }
    Vector past() const {
        Guarded<uint8_t> d(size_t(len) * api.sample.size());
        EXPECT_EQ(api.getDlyLine(state, d.data()), StatusOk);
        EXPECT_TRUE(d.intact());
        return {api.sample, d.values()};
    }

private:
    const Api& api;
    const int len;
    void* state = nullptr;
    std::unique_ptr<Guarded<uint8_t>> memory;
};

struct Threads {   // the count while a scope lasts
    explicit Threads(int n) : before(tevGetNumThreads()) { tevSetNumThreads(n); }
    ~Threads() { tevSetNumThreads(before); }
    const int before;
};

// ---- what holds at one rate and between two; null factors stand for the calls without any ---------------------------------------------

inline Factors factorsOf(const Factors* f) { return f ? *f : Factors{}; }

// A block apart and in place, of records of either lifecycle and between two rates without one, `variant` saying where everything lies.
inline void checkBlock(const Api& api, size_t taps, const Factors* rates, size_t numIters, bool owned, int scale, int variant) {
    const Factors f = factorsOf(rates);
    SCOPED_TRACE(::testing::Message() << api.name << ", " << taps << " taps, " << f.up << "(" << f.upPhase << ")/" << f.down << "(" << f.downPhase << "), "
                                      << numIters << " iterations, owned " << owned << ", scale " << scale);
    const auto t = randomTaps(api, taps);
    const auto x = randomVector(api.sample, numIters * size_t(f.down)), before = randomVector(api.sample, size_t(pastLen(int(taps), f)));
    const size_t outputs = numIters * size_t(f.up), bytes = outputs * api.sample.size();
    const Place at{variant % 4 * int(api.sample.size()), variant % 3 != 0};
    const Guarded<uint8_t> h(t.h.bytes, at), past(before.bytes, at), src(x.bytes, at);
    Filter apart(api, h.data(), t, past.data(), owned, rates, variant % 16), inPlace(api, t, before, rates ? !owned : owned, rates, variant % 16);
    Guarded<uint8_t> dst(bytes, at), both(std::max(bytes, x.bytes.size()), at);
    both.assign(x.bytes);
    ASSERT_EQ(apart.block(src.data(), dst.data(), numIters, scale), StatusOk);
    ASSERT_EQ(inPlace.inPlace(both.data(), numIters, scale), StatusOk);
    const Vector after = pastAfter(x, before);
    const auto expectResults = [&](bool roundedOnce) {
        const Vector y{api.sample, dst.values()};
        ASSERT_TRUE(fits(api, t, x, before, y, scale, f, roundedOnce));
        ASSERT_TRUE(same(y, Vector(api.sample, both.values()).slice(0, outputs)));
        ASSERT_TRUE(dst.intact() && both.intact());
    };
    expectResults(false);
    ASSERT_TRUE(same(after, apart.past()) && same(after, inPlace.past()));
    if (!rates || !api.rateDirect || ::testing::Test::HasFatalFailure()) return;
    SCOPED_TRACE("stateless");
    const int n = int(taps), iterations = int(numIters);
    Guarded<uint8_t> line(before.bytes, at), lineInPlace(before.bytes, at);
    dst.assign(std::vector<uint8_t>(bytes));
    both.assign(x.bytes);
    ASSERT_EQ(api.rateDirect(src.data(), dst.data(), iterations, h.data(), n, Factor{t.factor}, f, line.data(), Scale{scale}), StatusOk);
    ASSERT_EQ(api.rateDirectInPlace(both.data(), iterations, h.data(), n, Factor{t.factor}, f, lineInPlace.data(), Scale{scale}), StatusOk);
    expectResults(true);
    ASSERT_TRUE(same(after.bytes, line.values()) && same(after.bytes, lineInPlace.values()) && line.intact());
}

// A stream cut into blocks gives the bits of the whole. run(src, dst, n) goes on with a stream; start() begins another.
template <class Start> void checkSplits(const Api& api, Factors f, size_t all, std::initializer_list<unsigned> longest, Start start) {
    const auto x = randomVector(api.sample, all * size_t(f.down));
    Vector whole(api.sample, all * size_t(f.up));
    ASSERT_EQ(start()(x.at(0), whole.at(0), all), StatusOk);
    for (unsigned most : longest) {
        Vector cut(api.sample, whole.size());
        auto run = start();
        for (size_t n = 0, len; n < all; n += len) {
            len = std::min<size_t>(1 + generator()() % most, all - n);
            ASSERT_EQ(run(x.at(n * size_t(f.down)), cut.at(n * size_t(f.up)), len), StatusOk);
        }
        ASSERT_TRUE(same(whole, cut)) << api.name << ", " << f.up << "/" << f.down << ", parts up to " << most;
    }
}
inline void checkRecordSplits(const Api& api, size_t taps, const Factors* f, size_t all, std::initializer_list<unsigned> longest) {
    const auto t = randomTaps(api, taps);
    const int scale = usualScale(api, int(taps), factorsOf(f));
    checkSplits(api, factorsOf(f), all, longest, [&] {
        return [scale, filter = std::make_shared<Filter>(api, t, nullptr, false, f)](Ptr src, Ptr dst, size_t n) { return filter->block(src, dst, n, scale); };
    });
}

// Other taps and another past, in a record that has run.
inline void checkExchange(const Api& api, const Factors* rates, bool owned) {
    const Factors f = factorsOf(rates);
    const auto first = randomTaps(api, 80), t = randomTaps(api, 80);
    const auto x = randomVector(api.sample, size_t(600 * f.down)), before = randomVector(api.sample, size_t(pastLen(80, f)));
    const int scale = usualScale(api, 80, f);
    Filter filter(api, first, nullptr, owned, rates);
    Vector y(api.sample, size_t(600 * f.up));
    if (f.up * f.down == 1)
        ASSERT_EQ(filter.one(x.at(0), y, 0), StatusOk);   // leaves the past in the middle of its buffer
    else
        ASSERT_EQ(filter.block(x, y, 7, 0), StatusOk);
    const Guarded<uint8_t> h(t.h.bytes), d(before.bytes);
    ASSERT_EQ(api.setTaps(h.data(), filter, Factor{t.factor}), StatusOk);
    ASSERT_EQ(api.setDlyLine(filter, d.data()), StatusOk);
    Guarded<uint8_t> read(t.h.bytes.size());
    ASSERT_EQ(api.getTaps(filter, read.data()), StatusOk);
    Vector held = t.h;   // what is read back: of 16-bit taps the bits, as floats with the exponent
    for (size_t i = 0; i < held.parts(); ++i) held.setPart(i, held.type.whole() || !api.exact() ? t.kept[i] : std::ldexp(t.kept[i], t.exponent));
    EXPECT_TRUE(same(held.bytes, read.values()));
    EXPECT_TRUE(same(before, filter.past()));
    ASSERT_EQ(filter.block(x, y, 600, scale), StatusOk);
    EXPECT_TRUE(fits(api, t, x, before, y, scale, f));
    ASSERT_EQ(api.setDlyLine(filter, nullptr), StatusOk);
    EXPECT_TRUE(same(Vector(api.sample, before.size()), filter.past()));
}

// Built for so many threads, run with as many: also raised and lowered after the record was built.
inline void checkThreads(const Api& api, size_t taps, const Factors* rates, size_t numIters, bool owned,
                         std::initializer_list<std::pair<int, int>> counts = {{2, 2}, {3, 3}, {1, 8}, {3, 1}, {2, -5}}) {
    const Factors f = factorsOf(rates);
    const auto t = randomTaps(api, taps);
    const auto x = randomVector(api.sample, numIters * size_t(f.down)), past = randomVector(api.sample, size_t(pastLen(int(taps), f)));
    Vector want(api.sample, numIters * size_t(f.up)), got(want);
    Threads one(1);
    ASSERT_EQ(Filter(api, t, past, owned, rates).block(x, want, numIters, 2), StatusOk);
    for (auto [built, run] : counts) {
        tevSetNumThreads(built);
        Filter apart(api, t, past, owned, rates), inPlace(api, t, past, owned, rates);
        tevSetNumThreads(run);
        Vector both = x;
        both.bytes.resize(std::max(x.bytes.size(), want.bytes.size()));
        ASSERT_EQ(apart.block(x, got, numIters, 2), StatusOk);
        ASSERT_EQ(inPlace.inPlace(both, numIters, 2), StatusOk);
        const auto where = ::testing::Message() << api.name << ", " << taps << " taps, " << numIters << ", owned " << owned << ", " << built << " then " << run;
        ASSERT_TRUE(same(want, got)) << where;
        ASSERT_TRUE(same(want, both.slice(0, want.size()))) << where;
        ASSERT_TRUE(same(pastAfter(x, past), apart.past()) && same(pastAfter(x, past), inPlace.past())) << where;
    }
}

}   // namespace test
