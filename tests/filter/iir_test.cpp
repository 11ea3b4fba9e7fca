// IIR filters of every pair of tap and sample types, with the types erased.
#include <climits>

#include "support/control_words.h"
#include "support/values.h"
#include "tevs.h"

using namespace test;

namespace {

constexpr int kArbitrary = 0, kBiQuad = 1;

struct Api {
    const char* name;
    Type tap, sample, kept;
    Status (*stateSize[2])(int, Ptr);
    Status (*init[2])(Ptr state, Ptr taps, int count, Factor, Ptr delay, Ptr buffer);
    Status (*initAlloc[2])(Ptr state, Ptr taps, int count, Factor, Ptr delay);
    Status (*free)(Ptr);
    Status (*setTaps)(Ptr taps, Ptr state, Factor);
    Status (*setDlyLine)(Ptr state, Ptr delay);
    Status (*getDlyLine)(Ptr state, Ptr delay);
    Status (*block)(Ptr src, Ptr dst, int, Ptr state, Scale);
    Status (*blockInPlace)(Ptr both, int, Ptr state, Scale);
    Status (*one)(Element, Ptr dst, Ptr state, Scale);
};

// BUILD and QBUILD name a record's builders, T its taps, D its samples.
// clang-format off
#define IIR_RECORD(TAP, SAMPLE, KEPT, BUILD, QBUILD, T, D, SFS, ISFS)                                                                          \
    {#BUILD, typeOf<TAP>(), typeOf<SAMPLE>(), typeOf<KEPT>(),                                                                                 \
     {erased<tevsIIRGetStateSize##BUILD>, erased<tevsIIRGetStateSize##QBUILD>}, {erased<tevsIIRInit##BUILD>, erased<tevsIIRInit##QBUILD>},     \
     {erased<tevsIIRInitAlloc##BUILD>, erased<tevsIIRInitAlloc##QBUILD>}, erased<tevsIIRFree##BUILD>, erased<tevsIIRSetTaps##BUILD>,           \
     erased<tevsIIRSetDlyLine##T##_##D>, erased<tevsIIRGetDlyLine##T##_##D>, erased<tevsIIR##T##_##D##SFS>, erased<tevsIIR##T##_##D##ISFS>,    \
     erased<tevsIIROne##T##_##D##SFS>}
#define IIR_PAIR(TAP, SAMPLE, KEPT, T, D, SFS, ISFS) IIR_RECORD(TAP, SAMPLE, KEPT, T##_##D, T##_BiQuad_##D, T, D, SFS, ISFS)
const Api kPairs[] = {
    IIR_PAIR(float, float, float, , 32f, , _I),
    IIR_PAIR(Complex32f, Complex32f, Complex32f, , 32fc, , _I),
    IIR_PAIR(float, int16_t, float, 32f, 16s, _Sfs, _ISfs),
    IIR_PAIR(Complex32f, Complex16s, Complex32f, 32fc, 16sc, _Sfs, _ISfs),
    IIR_PAIR(int32_t, int16_t, float, 32s, 16s, _Sfs, _ISfs),
    IIR_RECORD(float, int16_t, float, 32s_16s32f, 32s_BiQuad_16s32f, 32s, 16s, _Sfs, _ISfs),
    IIR_PAIR(Complex32s, Complex16s, Complex32f, 32sc, 16sc, _Sfs, _ISfs),
    IIR_RECORD(Complex32f, Complex16s, Complex32f, 32sc_16sc32fc, 32sc_BiQuad_16sc32fc, 32sc, 16sc, _Sfs, _ISfs),
    IIR_PAIR(double, double, double, , 64f, , _I),
    IIR_PAIR(Complex64f, Complex64f, Complex64f, , 64fc, , _I),
    IIR_PAIR(double, float, double, 64f, 32f, , _I),
    IIR_PAIR(Complex64f, Complex32f, Complex64f, 64fc, 32fc, , _I),
    IIR_PAIR(double, int32_t, double, 64f, 32s, _Sfs, _ISfs),
    IIR_PAIR(Complex64f, Complex32s, Complex64f, 64fc, 32sc, _Sfs, _ISfs),
    IIR_PAIR(double, int16_t, double, 64f, 16s, _Sfs, _ISfs),
    IIR_PAIR(Complex64f, Complex16s, Complex64f, 64fc, 16sc, _Sfs, _ISfs),
};
// clang-format on
void PrintTo(const Api& api, std::ostream* out) { *out << api.name; }
Real epsOf(const Api& api) { return api.kept.number == Number::f32 ? 0x1p-24L : 0x1p-53L; }

// ---- what comes out -------------------------------------------------------------------------------------------------------------------------

void setNumber(Vector& v, size_t n, Value z) {
    v.setPart(n * size_t(v.type.parts), z.real());
    if (v.type.parts == 2) v.setPart(2 * n + 1, z.imag());
}
Value randomNumber(const Api& api, Real most) {
    const auto part = [] { return Real(randomValue<double>()); };
    return most * (api.tap.parts == 2 ? Value(part(), part()) / std::sqrt(2.0L) : Value(part()));
}

// Taps and what they stand for: polynomials of order N, one pair of them for each section.
struct Design {
    int form, count, factor = 0;
    Vector taps;
    std::vector<std::vector<Value>> b, a;
    int delayLen() const { return form == kBiQuad ? 2 * count : count; }
};
// Taps as they are given: integers to `factor` binary places, a0 first with whatever it divides by.
Design design(const Api& api, int form, std::vector<std::vector<Value>> b, std::vector<std::vector<Value>> a) {
    const int order = int(b[0].size()) - 1, sections = int(b.size());
    Design d{form, form == kBiQuad ? sections : order, api.tap.whole() ? 24 : 0, Vector(api.tap, 2 * size_t(order + 1) * size_t(sections)), b, a};
    size_t at = 0;
    for (int s = 0; s < sections; ++s)
        for (auto* side : {&d.b[size_t(s)], &d.a[size_t(s)]})
            for (Value& h : *side) {
                const auto rounded = [&](Real v) { return api.tap.whole() ? std::nearbyint(std::ldexp(v, 24)) : v; };
                setNumber(d.taps, at, {rounded(h.real()), rounded(h.imag())});
                h = numbers(d.taps.slice(at++, 1))[0] * std::ldexp(1.0L, -d.factor);
            }
    return d;
}
// Poles within 0.7 of the origin, or less where errors of many sections would add up, or the roots of a long polynomial follow the rounding of its coefficients; and an a0 of any phase.
Design randomDesign(const Api& api, int form, int count) {
    const Real radius = form == kBiQuad ? (count > 16 ? 0.35L : 0.7L) : std::min(0.7L, 4.0L / count);
    const int order = form == kBiQuad ? 2 : count, sections = form == kBiQuad ? count : 1;
    std::vector<std::vector<Value>> b, a;
    for (int s = 0; s < sections; ++s) {
        const Value a0 = randomNumber(api, 0.5L) + 1.0L;
        std::vector<Value> num, den{1};
        for (int k = 0; k <= order; ++k) num.push_back(a0 * (k == 0 ? 1.0L : randomNumber(api, 0.5L)));
        const auto times = [&](std::initializer_list<Value> factor) {
            std::vector<Value> product(den.size() + factor.size() - 1);
            for (size_t i = 0; i < den.size(); ++i)
                for (size_t k = 0; k < factor.size(); ++k) product[i + k] += den[i] * factor.begin()[k];
            den = product;
        };
        for (int k = 0; k + 1 < order; k += 2) {
            const Value p = radius * std::polar(std::sqrt(std::fabs(Real(randomValue<double>()))), 3.14L * Real(randomValue<double>()));
            if (api.tap.parts == 2)
                times({1, -p}), times({1, p * p});
            else
                times({1, -2 * p.real(), std::norm(p)});
        }
        if (order % 2) times({1, randomNumber(api, radius)});
        for (Value& h : den) h *= a0;
        b.push_back(num), a.push_back(den);
    }
    return design(api, form, b, a);
}

// The recursion of the direct form II, transposed, in extended precision.
struct Oracle {
    const Design& f;
    std::vector<Value> d;
    Oracle(const Design& g, const Vector& delay) : f(g), d(numbers(delay)) {}
    Value operator()(Value x) {
        size_t at = 0;
        for (size_t s = 0; s < f.b.size(); ++s) {
            const auto &b = f.b[s], &a = f.a[s];
            const size_t order = b.size() - 1;
            const Value y = b[0] / a[0] * x + d[at];
            for (size_t k = 1; k <= order; ++k) d[at + k - 1] = (b[k] * x - a[k] * y) / a[0] + (k < order ? d[at + k] : 0);
            x = y;
            at += order;
        }
        return x;
    }
};
std::vector<Value> response(const Design& f, const Vector& x, const Vector& delay, Oracle* after = nullptr) {
    Oracle o(f, delay);
    std::vector<Value> y;
    for (const Value& v : numbers(x)) y.push_back(o(v));
    if (after) after->d = o.d;
    return y;
}

// Each tap is rounded where it is divided by a0 and every output at each step: with these filters the error stays near eps times the largest output
// for each section or order, and thirty times as much is allowed. Integers are rounded once more.
::testing::AssertionResult fits(const Api& api, const Design& f, const std::vector<Value>& want, const Vector& got, int scale) {
    const auto [lo, hi] = rangeOf(api.sample.number);
    Real most = 0;
    for (const Value& v : want) most = std::max(most, std::abs(v));
    const int s = std::clamp(scale, -2000, 2000);
    Real bound = 30 * Real(f.delayLen() + 2) * epsOf(api) * most;
    if (api.sample.whole())
        bound = std::ldexp(bound, -s) + 0.5L;
    else if (api.sample.number == Number::f32)
        bound += 0x1.01p-24L * most;
    for (size_t i = 0; i < got.parts(); ++i) {
        const Value& v = want[i / size_t(got.type.parts)];
        Real w = got.type.parts == 2 && i % 2 ? v.imag() : v.real();
        if (api.sample.whole()) w = std::clamp(std::ldexp(w, -s), lo, hi);
        if (!(std::fabs(w - got.part(i)) <= bound))
            return ::testing::AssertionFailure() << api.name << (f.form ? ", sections " : ", order ") << f.count << ", part " << i << " of " << got.parts()
                                                 << ": want " << w << ", got " << got.part(i) << ", allowed " << bound << ", scale " << scale;
    }
    return ::testing::AssertionSuccess();
}

// ---- records --------------------------------------------------------------------------------------------------------------------------------

// Of either lifecycle; the caller's memory has exactly the reported size, at any address, between guard pages.
struct Filter {
    const Api& api;
    const Design& f;
    Guarded<uint8_t> memory;
    void* state = nullptr;
    Filter(const Api& a, const Design& d, Ptr delay, bool owned, int offset = 0)
        : api(a), f(d), memory(reported(a.stateSize[d.form], d.count), {offset, offset % 2 == 0}) {
        const Factor factor{f.factor};
        EXPECT_EQ(
            owned ? api.initAlloc[f.form](&state, f.taps, f.count, factor, delay) : api.init[f.form](&state, f.taps, f.count, factor, delay, memory.data()),
            StatusOk);
    }
    ~Filter() {
        EXPECT_EQ(api.free(state), StatusOk);
        EXPECT_TRUE(memory.intact());
    }
    operator Ptr() const { return state; }
    Status block(Ptr src, Ptr dst, size_t n, int scale = 0) { return api.block(src, dst, int(n), state, Scale{scale}); }
    Status one(const void* src, Ptr dst, int scale = 0) { return api.one(Element{src}, dst, state, Scale{scale}); }
    Vector delay() const {
        Guarded<uint8_t> d(size_t(f.delayLen()) * api.kept.size());
        EXPECT_EQ(api.getDlyLine(state, d.data()), StatusOk);
        EXPECT_TRUE(d.intact());
        return {api.kept, d.values()};
    }
};

Vector randomDelay(const Api& api, const Design& f) {
    Vector d = randomVector(api.kept, size_t(f.delayLen()));
    const Real unit = api.sample.number == Number::i16 ? 10000 : api.sample.number == Number::i32 ? 1e9L : 1;
    for (size_t i = 0; i < d.parts(); ++i) d.setPart(i, unit * d.part(i));
    return d;
}

// A block apart and in place, the state it leaves, and a second block from there; `variant` says where everything lies.
void checkBlock(const Api& api, const Design& f, size_t len, int variant) {
    const int scale = api.sample.whole() ? 2 : 0;
    const auto x = randomVector(api.sample, len);
    const auto before = randomDelay(api, f);
    const Place at{variant % 4 * int(api.sample.size()), variant % 3 != 0};
    const Guarded<uint8_t> src(x.bytes, at);
    Guarded<uint8_t> dst(x.bytes.size(), at), both(x.bytes, at);
    Filter apart(api, f, before, variant % 2, variant % 16), inPlace(api, f, nullptr, variant % 2 == 0, variant % 16);
    ASSERT_EQ(api.setDlyLine(inPlace, before), StatusOk);
    ASSERT_TRUE(same(before, apart.delay()) && same(before, inPlace.delay()));
    ASSERT_EQ(apart.block(src.data(), dst.data(), len, scale), StatusOk);
    ASSERT_EQ(api.blockInPlace(both.data(), int(len), inPlace, Scale{scale}), StatusOk);
    Oracle after(f, before);
    const auto want = response(f, x, before, &after);
    ASSERT_TRUE(fits(api, f, want, {api.sample, dst.values()}, scale)) << len << " samples";
    ASSERT_TRUE(same(dst.values(), both.values()));
    ASSERT_TRUE(same(apart.delay(), inPlace.delay()));
    ASSERT_TRUE(dst.intact() && both.intact());
    Real most = 0, worst = 0;
    for (const Value& v : want) most = std::max(most, std::abs(v));
    const auto left = numbers(apart.delay());
    for (size_t k = 0; k < left.size(); ++k) worst = std::max(worst, std::abs(left[k] - after.d[k]));
    ASSERT_LE(worst, 60 * Real(f.delayLen() + 2) * epsOf(api) * most) << api.name << ", " << f.count << ", form " << f.form << ", " << len;
}

class Iir : public ::testing::TestWithParam<Api> {};
INSTANTIATE_TEST_SUITE_P(Pairs, Iir, ::testing::ValuesIn(kPairs), [](const auto& info) {
    std::string name = info.param.name;
    return name.substr(name[0] == '_');
});

TEST_P(Iir, BlocksEqualTheRecursion) {
    const Api& api = GetParam();
    for (int form : {kArbitrary, kBiQuad}) {
        for (int count : {1, 2, 3, 4, 5, 6, 7, 8, 9, 11, 12, 13, 16, 17, 32, 33, 70}) {
            const auto f = randomDesign(api, form, count);
            for (size_t len : {1, 7, 8, 9, 31, 70}) checkBlock(api, f, len, count + int(len));
        }
        for (size_t len = 1; len <= 70; ++len) checkBlock(api, randomDesign(api, form, 3), len, int(len));
        for (size_t len : {511, 513, 1023, 1024, 1025, 3000}) checkBlock(api, randomDesign(api, form, 4), len, int(len));
    }
}

// Samples one by one, then blocks long and short and more samples.
void checkMixture(const Api& api, const Design& f, bool owned, int scale) {
    const auto x = randomVector(api.sample, 2500);
    const auto before = randomDelay(api, f);
    Vector y(api.sample, x.size());
    Filter g(api, f, before, owned);
    for (size_t n = 0, len; n < x.size(); n += len) {
        const size_t lengths[] = {1, 1, 2, 30, 511, 600};
        len = n < 300 ? 1 : std::min(lengths[generator()() % 6], x.size() - n);
        ASSERT_EQ(len == 1 ? g.one(x.at(n), y.at(n), scale) : g.block(x.at(n), y.at(n), len, scale), StatusOk);
    }
    ASSERT_TRUE(fits(api, f, response(f, x, before), y, api.sample.whole() ? scale : 0));
}
TEST_P(Iir, MixesBlocksAndSamples) {
    for (int form : {kArbitrary, kBiQuad})
        for (int count : {1, 2, 3, 8}) checkMixture(GetParam(), randomDesign(GetParam(), form, count), count % 2, 1);
}
TEST_P(Iir, EveryScaleFactor) {
    for (int scale : {INT_MIN, -1200, -200, -64, -31, -7, -1, 0, 1, 8, 17, 33, 126, 200, 1200, INT_MAX})
        if (GetParam().sample.whole()) checkMixture(GetParam(), randomDesign(GetParam(), kBiQuad, 2), true, scale);
}

TEST_P(Iir, RefusesTapsAndKeepsTheOldOnes) {
    const Api& api = GetParam();
    for (int form : {kArbitrary, kBiQuad})
        for (bool owned : {false, true}) {
            const auto f = randomDesign(api, form, 3), other = randomDesign(api, form, 3);
            const auto x = randomVector(api.sample, 100);
            const auto before = randomDelay(api, f);
            Filter g(api, f, before, owned), untouched(api, f, before, owned);
            const size_t a0 = form == kBiQuad ? 15 : 4, b0 = form == kBiQuad ? 12 : 0;   // of the last section
            std::vector<std::pair<size_t, Value>> bad = {{a0, 0}};
            if (!api.tap.whole()) bad.push_back({a0, {NAN, 1}});
            if (!api.tap.whole() && api.tap.parts == 2) bad.push_back({a0, {1, NAN}});
            if (form == kBiQuad)
                bad.push_back({b0, 0});
            else   // which is no reason to refuse
                Filter accepted(api, design(api, form, {{0, 1, 0.5L, 0.25L}}, {{1, 0.5L, 0, 0}}), nullptr, owned);
            for (auto [at, value] : bad) {
                Vector taps = other.taps;
                setNumber(taps, at, value);
                void *const mark = &g, *p = mark;
                std::vector<uint8_t> memory(20000);
                const Factor factor{f.factor};
                expectEach(StatusDivByZeroErr, {api.setTaps(taps, g, factor), api.init[form](&p, taps, 3, factor, nullptr, memory.data()),
                                                api.initAlloc[form](&p, taps, 3, factor, nullptr)});
                EXPECT_EQ(p, mark);
            }
            Vector y(api.sample, x.size()), want(y);
            ASSERT_EQ(g.block(x, y, x.size()), StatusOk);
            ASSERT_EQ(untouched.block(x, want, x.size()), StatusOk);
            EXPECT_TRUE(same(want, y));
            ASSERT_EQ(api.setDlyLine(g, before), StatusOk);
            ASSERT_EQ(api.setTaps(other.taps, g, Factor{f.factor}), StatusOk);
            ASSERT_EQ(g.block(x, y, x.size(), 2), StatusOk);
            EXPECT_TRUE(fits(api, other, response(other, x, before), y, 2));
            ASSERT_EQ(api.setDlyLine(g, nullptr), StatusOk);
            EXPECT_TRUE(same(Vector(api.kept, before.size()), g.delay()));
        }
}

TEST_P(Iir, RefusesOrders) {
    const Api& api = GetParam();
    const Vector taps(api.tap, 12);
    const Factor none{0};
    for (int form : {kArbitrary, kBiQuad})
        for (int count : {0, -1, INT_MIN, INT_MAX, INT_MAX - 1}) {
            int size = 77;
            void* p = &size;
            uint8_t buffer[100] = {3};
            expectEach(StatusFilterOrder, {api.stateSize[form](count, &size), api.init[form](&p, taps, count, none, nullptr, buffer)});
            EXPECT_EQ(api.initAlloc[form](&p, taps, count, none, nullptr), count < 1 ? StatusFilterOrder : StatusNoMemory);
            EXPECT_TRUE(size == 77 && p == &size && buffer[0] == 3 && std::count(buffer, buffer + 100, 0) == 99);
        }
}

// Of white noise through a section, against the recursion in extended precision: at every radius and angle of the poles the error of blocks is at most 1.5 times
// that of single samples (1.6 where complex products are not fused and there is next to no recursion).
TEST_P(Iir, BlocksRoundNoWorseThanSamples) {
    const Api& api = GetParam();
    if (api.sample.number != api.kept.number) return;
    const size_t n = 8192;
    const auto x = randomVector(api.sample, n);
    for (Real radius : {0.0L, 0.3L, 0.7L, 0.9L, 0.99L, 0.999L, 0.9999L})
        for (Real angle : {0.0L, 0.01L, 0.1L, 0.5L, 1.57L, 2.5L, 3.1L, 3.14159265L})
            for (Real zero : {-2.0L, 0.0L, 2.0L}) {
                const Value p = std::polar(radius, angle), q = api.tap.parts == 2 ? Value(0.2L, -0.1L) : std::conj(p);
                const auto f = design(api, kBiQuad, {{1, zero, zero * zero / 4}}, {{1, -p - q, p * q}});
                Filter blocks(api, f, nullptr, true), samples(api, f, nullptr, true);
                Vector y(x), z(x);
                for (size_t i = 0; i < n; i += 480) ASSERT_EQ(blocks.block(x.at(i), y.at(i), std::min<size_t>(480, n - i)), StatusOk);
                for (size_t i = 0; i < n; ++i) ASSERT_EQ(samples.one(x.at(i), z.at(i)), StatusOk);
                const auto want = response(f, x, Vector(api.kept, 2));
                EXPECT_LE(distance(want, numbers(y)), (api.tap.parts == 2 && radius == 0 ? 1.6 : 1.5) * distance(want, numbers(z)))
                    << radius << " at " << angle << ", b1 " << zero;
            }
}

// Where an infinity or NaN comes in, everything before stays as it was, and everything from there on is not finite, or saturated.
TEST_P(Iir, InfinitiesDoNotReachBack) {
    const Api& api = GetParam();
    if (api.sample.whole()) return;
    for (int form : {kArbitrary, kBiQuad})
        for (int count : {1, 2, 5})
            for (size_t at = 0; at < 40; ++at) {
                const auto f = randomDesign(api, form, count);
                auto x = randomVector(api.sample, 50);
                Vector want(x), y(x);
                const auto before = randomDelay(api, f);
                ASSERT_EQ(Filter(api, f, before, false).block(x, want, at ? at : 1), StatusOk);
                x.setPart(at * size_t(api.sample.parts), at % 2 ? INFINITY : NAN);
                Filter g(api, f, before, false);
                ASSERT_EQ(g.block(x, y, 50), StatusOk);
                for (size_t n = 0; n < 50; ++n) {
                    const auto v = numbers(y.slice(n, 1))[0], w = numbers(want.slice(n, 1))[0];
                    const Real allowed = 100 * epsOf(api) * (1 + std::abs(w)) + (api.sample.number == Number::f32 ? 0x1p-22L : 0);
                    ASSERT_TRUE(n < at ? std::abs(v - w) <= allowed : !std::isfinite(std::abs(v))) << n << ", not finite from " << at;
                }
                ASSERT_EQ(api.setDlyLine(g, before), StatusOk);   // which is the way back
                ASSERT_EQ(g.block(want, y, 50), StatusOk);
                ASSERT_TRUE(fits(api, f, response(f, want, before), y, 0));
            }
}

// What an unstable filter grows to is infinite, then NaN, or of one state infinite for good; integers saturate.
TEST_P(Iir, UnstableFiltersLeaveTheRange) {
    const Api& api = GetParam();
    for (int order : {1, 2})
        for (int form = 0; form < order; ++form) {
            const auto f = order == 1 ? design(api, form, {{1, 0}}, {{1, -4}}) : design(api, form, {{1, 0.5L, 0.25L}}, {{1, -4, 0}});
            auto x = randomVector(api.sample, 1500);
            for (size_t n = 0; n < x.size(); ++n)
                if (n == 0 || order == 1) setNumber(x, n, 1);
            Filter blocks(api, f, nullptr, false), samples(api, f, nullptr, true);
            Vector y(x), z(x);
            ASSERT_EQ(blocks.block(x, y, x.size()), StatusOk);
            for (size_t n = 0; n < x.size(); ++n) ASSERT_EQ(samples.one(x.at(n), z.at(n)), StatusOk);
            for (size_t i = 0; i < y.parts(); ++i)
                ASSERT_TRUE(!std::isfinite(z.part(i)) || std::fabs(y.part(i) - z.part(i)) <= 1e-4L * std::fabs(z.part(i)) + 1) << i;
            const size_t last = y.parts() - size_t(api.sample.parts);
            const bool real = order == 1 && api.sample.parts == 1;
            const Real least = api.sample.number == Number::i16 ? INT16_MIN : INT_MIN;
            if (api.sample.whole())
                EXPECT_EQ(y.part(last), real ? -1 - least : least);
            else
                EXPECT_TRUE(real ? y.part(last) == INFINITY && z.part(last) == INFINITY : !std::isfinite(y.part(last)));
        }
}

// Silence turns into zeros, of the outputs and of the state.
TEST_P(Iir, DecaysToZero) {
    const Api& api = GetParam();
    for (int form : {kArbitrary, kBiQuad})
        for (bool block : {false, true}) {
            const auto f = design(api, form, {{1, 0, 0}}, {{1, -1.8L, 0.81L}});
            Filter g(api, f, randomDelay(api, f), true);
            const Vector x(api.sample, 20000);
            Vector y(x);
            if (block)
                ASSERT_EQ(g.block(x, y, x.size()), StatusOk);
            else
                for (size_t n = 0; n < x.size(); ++n) ASSERT_EQ(g.one(x.at(n), y.at(n)), StatusOk);
            EXPECT_TRUE(same(g.delay(), Vector(api.kept, 2)));
        }
}

TEST_P(Iir, IgnoresAndKeepsTheControlWords) {
    const Api& api = GetParam();
    const auto x = randomVector(api.sample, 300);
    for (int form : {kArbitrary, kBiQuad}) {
        const auto f = randomDesign(api, form, 3);
        expectOwnModes([&] {
            Vector y(x);
            Filter g(api, f, nullptr, true);
            EXPECT_EQ(g.block(x, y, 290, 3), StatusOk);
            for (size_t n = 290; n < 300; ++n) EXPECT_EQ(g.one(x.at(n), y.at(n), 3), StatusOk);
            return y;
        });
    }
}

TEST(IirRecords, ReportedSizes) {
    int sizes[4];
    expectEach(StatusOk, {tevsIIRGetStateSize_32f(4, sizes), tevsIIRGetStateSize_BiQuad_32f(1, sizes + 1), tevsIIRGetStateSize32s_BiQuad_16s(1, sizes + 2),
                          tevsIIRGetStateSize_64f(4, sizes + 3)});
    EXPECT_EQ(std::to_array(sizes), (std::array{4472, 4408, 4408, 8 * (8 * 4 + 26 + 1024) + 48 + 80 + 48 + 16}));
}

// A divisor whose square is beyond the range, at either end.
TEST(IirRecords, ComplexDivisorsOfAnyMagnitude) {
    for (double scale : {1e-300, 1e-160, 1.0, 1e160, 1e300}) {
        const Complex64f taps[] = {{2 * scale, 0}, {scale, scale}, {scale, scale}, {0.25 * scale, 0}};   // 2 + (1+i)z^-1 over (1+i) + z^-1 / 4
        const Complex64f x[3] = {{1, 0}, {0, 0}, {0, 0}};
        Complex64f y[3];
        IIRState_64fc* state;
        ASSERT_EQ(tevsIIRInitAlloc_64fc(&state, taps, 1, nullptr), StatusOk);
        ASSERT_EQ(tevsIIR_64fc(x, y, 3, state), StatusOk);
        EXPECT_LE(std::hypot(y[0].re - 1, y[0].im + 1), 1e-15);
        EXPECT_LE(std::hypot(y[1].re - 1, y[1].im - 0.25), 1e-15);   // 1 - (1-i)/8 (1-i) = 1 + i/4
        ASSERT_EQ(tevsIIRFree_64fc(state), StatusOk);
    }
}

// The exponent goes with the other sign than in FIR filters; a0 divides it out.
TEST(IirRecords, TapsFactorCancels) {
    const int32_t taps[] = {1 << 20, 1 << 18, 1 << 20, -(1 << 19)};
    const int16_t x[8] = {1000, -2000, 3000, 20, 5, 0, 0, 32767};
    int16_t want[8], got[8];
    for (int factor : {0, 20, -20, 100, INT_MAX, -100}) {
        IIRState32s_16s* state;
        ASSERT_EQ(tevsIIRInitAlloc32s_16s(&state, taps, 1, factor, nullptr), StatusOk);
        ASSERT_EQ(tevsIIR32s_16s_Sfs(x, factor ? got : want, 8, state, 0), StatusOk);
        ASSERT_EQ(tevsIIRFree32s_16s(state), StatusOk);
        EXPECT_TRUE(factor == 0 || memcmp(want, got, sizeof got) == 0) << factor;
    }
    const float floats[] = {1, 0.25f, 1, -0.5f};   // either builder's records take the other's taps
    IIRState32s_16s32f* state;
    ASSERT_EQ(tevsIIRInitAlloc32s_16s32f(&state, floats, 1, nullptr), StatusOk);
    ASSERT_EQ(tevsIIRSetTaps32s_16s(taps, state, 20), StatusOk);
    ASSERT_EQ(tevsIIR32s_16s_Sfs(x, got, 8, state, 0), StatusOk);
    EXPECT_EQ(0, memcmp(want, got, sizeof got));
    ASSERT_EQ(tevsIIRFree32s_16s(state), StatusOk);
}

// ---- without a record -------------------------------------------------------------------------------------------------------------------------

// The oracle: exact integers, reduced to 32 bits after each formula.
int16_t directStep(const int16_t* h, int order, int16_t x, int32_t* d) {
    const auto wrapped = [](int64_t v) { return int32_t(uint32_t(v)); };
    const int s = h[order + 1] % 32;
    const auto floored = [=](int64_t v) { return int32_t(std::floor(std::ldexp(Real(v), -s))); };
    const int32_t v = wrapped(int64_t{h[0]} * x + (order ? d[0] : 0));
    const int32_t y = floored(wrapped(v + (int64_t{1} << (s + 31) % 32) - (order > 0) + (order ? floored(v) & 1 : 0)));
    for (int k = 1; k <= order; ++k) d[k - 1] = wrapped(int64_t{h[k]} * x - int64_t{h[order + 1 + k]} * y + (k < order ? d[k] : 0));
    return int16_t(std::clamp(y, -32768, 32767));
}
TEST(IirDirect, EqualsExactIntegers) {
    const auto x = randomVector<int16_t>(200);
    const auto check = [&](int order, int sections, int shift, auto call) {
        auto taps = randomVector<int16_t>(size_t(2 * (order + 1) * sections));
        auto d = randomVector<int32_t>(size_t(order * sections) + 1), oracle = d;   // one more, which stays
        auto y = x, want = x;
        for (int s = 0; s < sections; ++s) {
            int16_t* const h = &taps[size_t(2 * (order + 1) * s)];
            h[order + 1] = int16_t(shift - s);
            for (auto& v : want) v = directStep(h, order, v, &oracle[size_t(order * s)]);
        }
        call(y.data(), taps.data(), d.data());
        EXPECT_TRUE(same(want, y) && same(oracle, d)) << order << ", " << sections << ", " << shift;
    };
    for (int order : {0, 1, 2, 3, 7, 20})
        for (int s = 0; s <= 40; ++s) {
            check(order, 1, s, [&](int16_t* y, const int16_t* h, int32_t* d) {
                expectEach(StatusOk, {tevsIIR_Direct_16s(&x[0], y, 150, h, order, d), tevsIIR_Direct_16s(&x[150], y + 150, 50, h, order, d)});
            });
            check(order, 1, s, [&](int16_t* y, const int16_t* h, int32_t* d) {
                for (size_t n = 0; n < 200; ++n)
                    ASSERT_EQ(n % 2 ? tevsIIROne_Direct_16s(x[n], &y[n], h, order, d) : tevsIIROne_Direct_16s_I(&y[n], h, order, d), StatusOk);
            });
        }
    for (int sections : {1, 2, 5})
        check(2, sections, 15,
              [&](int16_t* y, const int16_t* h, int32_t* d) { EXPECT_EQ(tevsIIR_BiQuadDirect_16s(x.data(), y, 200, h, sections, d), StatusOk); });
}

TEST(IirDirect, ChecksInOrder) {
    const int16_t bad[] = {1, 1, 1, -1, 1, 1, 1, 1, 1, -1, 1, 1}, good[] = {1, 1, 1, 1, 1, 1, 1, 1, 1, -1, 1, 1};
    int16_t x[2] = {5, 6}, y[2] = {7, 8};
    int32_t d[4] = {1, 2, 3, 4};
    expectEach(StatusFilterOrder, {tevsIIR_Direct_16s(nullptr, nullptr, 0, nullptr, -1, nullptr), tevsIIROne_Direct_16s(1, nullptr, nullptr, INT_MIN, nullptr),
                                   tevsIIR_BiQuadDirect_16s(nullptr, nullptr, 0, nullptr, 0, nullptr)});
    expectEach(StatusNullPtr,
               {tevsIIR_Direct_16s(x, y, 0, bad, 2, nullptr), tevsIIROne_Direct_16s_I(y, bad, 2, nullptr), tevsIIR_BiQuadDirect_16s_I(y, 0, bad, 2, nullptr)});
    expectEach(StatusTapsFactor,
               {tevsIIR_Direct_16s(x, y, 0, bad, 2, d), tevsIIROne_Direct_16s(1, y, bad, 2, d), tevsIIR_BiQuadDirect_16s(x, y, 0, good, 2, d)});
    EXPECT_TRUE(y[0] == 7 && y[1] == 8 && d[0] == 1 && d[3] == 4);
}

}   // namespace
