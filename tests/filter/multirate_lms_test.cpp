// Multirate LMS filters of every type of samples, with the types erased.
#include <climits>

#include "support/control_words.h"
#include "support/values.h"
#include "tevs.h"

using namespace test;

namespace {

constexpr int kFactor = -28;
struct Shape {
    int taps, up, upPhase, down, downPhase, factor = kFactor;
    auto arguments() const { return std::tuple{up, upPhase, down, downPhase}; }
    int kept() const { return (taps + up - 1) / up + down; }
};

Vector noise(Type type, int n, Real most) {
    Vector v(type, size_t(n));
    for (size_t i = 0; i < v.parts(); ++i) v.setPart(i, most * Real(randomValue<double>()));
    return v;
}
struct Api {
    const char* name;
    Type sample, tap;   // errors are of the type of the taps
    Status (*stateSize)(int taps, int up, int down, Ptr);
    Status (*init)(Ptr state, Ptr h, int taps, Factor, Shape, Ptr past, Ptr buffer);
    Status (*initAlloc)(Ptr state, Ptr h, int taps, Factor, Shape, Ptr past);
    Status (*free)(Ptr);
    Status (*setTaps)(Ptr h, Ptr state);
    Status (*getTaps)(Ptr state, Ptr h);
    Status (*setDlyLine)(Ptr state, Ptr past);
    Status (*getDlyLine)(Ptr state, Ptr past, int len, int from);
    Status (*filter)(Ptr src, Ptr dst, Ptr state);
    Status (*adapt)(Ptr errors, float mu, float norm, Ptr state);
    Status (*block)(Ptr src, Ptr ref, Ptr dst, int, float mu, float norm, Ptr state);

    bool whole() const { return tap.whole(); }
    double tolerance() const { return whole() ? 0 : 2e-5; }
    Vector taps(int n) const { return noise(tap, n, whole() ? 0x1p26L : 0.25L); }
    Vector samples(int n) const { return noise(sample, n, whole() ? 20000 : 0.7L); }
};
// clang-format off
#define API(SAMPLE, TAP, CODE)                                                                                                                            \
    {#CODE, typeOf<SAMPLE>(), typeOf<TAP>(), erased<tevsFIRLMSMRGetStateSize##CODE>, erased<tevsFIRLMSMRInit##CODE>, erased<tevsFIRLMSMRInitAlloc##CODE>, \
     erased<tevsFIRLMSMRFree##CODE>, erased<tevsFIRLMSMRSetTaps##CODE>, erased<tevsFIRLMSMRGetTaps##CODE>, erased<tevsFIRLMSMRSetDlyLine##CODE>,          \
     erased<tevsFIRLMSMRGetDlyLine##CODE>, erased<tevsFIRLMSMRFilter##CODE>, erased<tevsFIRLMSMRAdapt##CODE>, erased<tevsFIRLMSMR##CODE>}
// clang-format on
const Api kApis[] = {API(int16_t, int32_t, 32s_16s), API(Complex16s, Complex32s, 32sc_16sc), API(float, float, _32f), API(Complex32f, Complex32f, _32fc)};
void PrintTo(const Api& api, std::ostream* out) { *out << api.name; }

::testing::AssertionResult agree(const std::vector<Value>& want, const Vector& v, double tolerance) {
    const auto got = numbers(v);
    for (size_t i = 0; i < got.size(); ++i)
        if (!(std::abs(got[i] - want.at(i)) <= tolerance))
            return ::testing::AssertionFailure() << "at " << i << " of " << got.size() << ": want " << want[i] << ", got " << got[i];
    return ::testing::AssertionSuccess();
}

// The rule as it reads, of integers every operation of a step by itself: outputs, taps, and all samples, oldest first. Before the first iteration the taps move twice by
// the references alone.
struct Expected {
    std::vector<Value> y, h, x;
    Expected(const Api& api, const Shape& s, const Vector& taps, const Vector& past, const Vector& in, const Vector& ref, float mu, float norm)
        : h(numbers(taps)), x(numbers(past)) {
        const auto src = numbers(in), wanted = numbers(ref);
        const auto scaled = [&](Real v, int sign) { return std::ldexp(v, sign * std::clamp(s.factor, -4000, 4000)); };
        const auto stored = [&](Real v) { return std::clamp<Real>(std::nearbyint(scaled(v, 1)), -32768, 32767); };
        const auto moved = [&](Real tap, double step) {
            return api.whole() ? std::clamp<Real>(tap + (std::isnan(step) ? 0 : std::nearbyint(Real(step))), INT_MIN, INT_MAX) : tap + step;
        };
        const auto each = [&](int output, auto f) {                               // the taps and samples of an output of the last iteration
            const int since = output * s.down + s.downPhase - s.upPhase + s.up;   // ticks from the input before the iteration's first possible one
            const Value* from = x.data() + x.size() - s.down + since / s.up;
            for (size_t k = size_t(since % s.up); k < h.size(); k += size_t(s.up)) f(h[k], *--from);
        };
        std::reverse(x.begin(), x.end());
        for (int64_t i = -2; i < int64_t(in.size()) / s.down; ++i) {
            std::vector<Value> e(wanted.begin() + std::max<int64_t>(i, 0) * s.up, wanted.begin() + std::max<int64_t>(i + 1, 1) * s.up);
            if (i >= 0) x.insert(x.end(), src.begin() + i * s.down, src.begin() + (i + 1) * s.down);
            for (int m = 0; m < s.up && i >= 0; ++m) {
                Value sum = 0;
                each(m, [&](Value tap, Value sample) { sum += tap * sample; });
                y.push_back(api.whole() ? Value(stored(sum.real()), stored(sum.imag())) : sum);
                e[size_t(m)] -= y.back();
            }
            for (int m = 0; m < s.up && mu != 0; ++m) {
                double power = 0;
                each(m, [&](Value, Value sample) { power += double(std::norm(sample)); });
                const double c = api.whole() ? double(scaled(2 * Real(mu), -1)) : 2 * mu, by = norm > 0 ? double(norm) + power : 1;
                const double gr = c * double(e[size_t(m)].real()) / by, gi = c * double(e[size_t(m)].imag()) / by;
                each(m, [&](Value& tap, Value z) {
                    const auto re = double(z.real()), im = double(z.imag());
                    tap = api.tap.parts == 1 ? Value(moved(tap.real(), gr * re))
                                             : Value(moved(tap.real(), gr * re + gi * im), moved(tap.imag(), gi * re - gr * im));
                });
            }
        }
    }
};

// A record, in a buffer of the reported size at any address, which stays one when it is freed, or in memory of its own.
struct Filter {
    const Api& api;
    const Shape s;
    Guarded<uint8_t> memory;
    void* state = nullptr;
    Filter(const Api& a, const Shape& shape, Ptr h, Ptr past, int offset = -1)
        : api(a), s(shape), memory(reported(a.stateSize, shape.taps, shape.up, shape.down), {std::max(offset, 0), offset % 2 == 0}) {
        const Factor factor{s.factor};
        EXPECT_EQ(offset < 0 ? api.initAlloc(&state, h, s.taps, factor, s, past) : api.init(&state, h, s.taps, factor, s, past, memory.data()), StatusOk);
    }
    ~Filter() {
        EXPECT_EQ(api.free(state), StatusOk);
        EXPECT_TRUE(memory.intact() && (memory.untouched() || api.setTaps(nullptr, state) == StatusOk));
    }
    operator Ptr() const { return state; }
    Vector taps() const {
        Vector v(api.tap, size_t(s.taps));
        EXPECT_EQ(api.getTaps(state, v), StatusOk);
        return v;
    }
    Vector past(int len, int from) const {
        Vector v(api.sample, size_t(len));
        EXPECT_EQ(api.getDlyLine(state, v, len, from), StatusOk);
        return v;
    }
};

// Adapt before any Filter and twice in a row; then iterations in halves, in one block, and in blocks over the reference.
void check(const Api& api, const Shape& s, int numIters, float mu, float norm) {
    SCOPED_TRACE(::testing::Message() << s.taps << " taps, " << s.up << " from " << s.upPhase << ", " << s.down << " from " << s.downPhase << ", factor "
                                      << s.factor << ", step " << mu << ", norm " << norm);
    Vector h = api.taps(s.taps), past = api.samples(s.kept()), x = api.samples(numIters * s.down), ref = api.samples(numIters * s.up), before(api.sample);
    if (s.factor != kFactor)
        for (Vector* v : {&h, &past, &x, &ref}) *v = randomVector(v->type, v->size());
    const auto in = size_t(s.down), out = size_t(s.up), iterations = size_t(numIters);
    const Expected want(api, s, h, past, x, ref, mu, norm);
    for (const size_t most : {size_t(0), iterations, iterations / 3}) {   // 0: in halves
        const Filter f(api, s, h, past, most == iterations ? s.taps % 16 : -1);
        const Guarded<uint8_t> src(x.bytes), reference(ref.bytes);
        Guarded<uint8_t> dst(ref.bytes), errors(out * api.tap.size());
        const auto adapt = [&](const Vector& y, size_t at) {   // by the reference less y
            Vector e(api.tap, out);
            for (size_t i = 0; i < e.parts(); ++i) e.setPart(i, ref.slice(at, out).part(i) - y.part(i));
            errors.assign(e.bytes);
            ASSERT_EQ(api.adapt(errors.data(), mu, norm, f), StatusOk);
        };
        for (int turn = 0; turn < 2; ++turn) adapt(Vector(api.sample, out), 0);
        for (size_t i = 0, n; i < iterations; i += n) {
            n = std::clamp<size_t>(most, 1, iterations - i);
            const Ptr from = src.data() + i * x.type.size() * in, to = dst.data() + i * out * x.type.size();
            ASSERT_EQ(most ? api.block(from, most == iterations ? Ptr(reference.data()) : to, to, int(n), mu, norm, f) : api.filter(from, to, f), StatusOk);
            if (most == 0) adapt(Vector(api.sample, dst.values()).slice(i * out, out), i * out);
        }
        const Vector y(api.sample, dst.values());
        ASSERT_TRUE(agree(want.y, y, api.tolerance()) && dst.intact());
        ASSERT_TRUE(agree(want.h, f.taps(), api.tolerance()) && agree({want.x.rbegin(), want.x.rend()}, f.past(s.kept(), 0), 0));
        ASSERT_TRUE((mu != 0 || same(h, f.taps())) && (most != iterations / 3 || same(before, y)));
        before = y;
    }
}

class MultirateLms : public ::testing::TestWithParam<Api> {
protected:
    const Api& api = GetParam();
};
INSTANTIATE_TEST_SUITE_P(Types, MultirateLms, ::testing::ValuesIn(kApis), [](const auto& info) { return std::string(info.param.name); });

TEST_P(MultirateLms, FollowsTheRule) {
    const auto step = [this](float norm, const Shape& s) { return norm > 0 ? 0.3f : (api.whole() ? 2e-10f : 0.1f) / float(s.kept() - s.down); };
    for (int rates = 0; rates < 256; ++rates) {
        const Shape s{1 + int(generator()() % 40), 1 + rates % 4, rates / 4 % 4, 1 + rates / 16 % 4, rates / 64};
        const float norm = float(generator()() % 2);
        if (s.upPhase < s.up && s.downPhase < s.down) check(api, s, 11, step(norm, s), norm);
    }
    for (const Shape& s :
         {Shape{3, 7, 5, 4, 2}, Shape{1, 1, 0, 1, 0}, Shape{300, 1, 0, 2, 1}, Shape{1200, 1, 0, 1, 0}, Shape{50, 1, 0, 700, 13}, Shape{64, 16, 3, 10, 9}})
        for (float norm : {0.0f, 2.5f, -1.0f}) check(api, s, 60, step(norm, s), norm);
    check(api, {33, 1, 0, 1, 0}, 1500, step(0, {33, 1, 0, 1, 0}), 0);
    for (const Shape& s : {Shape{9, 2, 1, 3, 1}, Shape{9, 1, 0, 1, 0}}) check(api, s, 20, 0, 0);
    // Integers: saturation of taps and outputs, steps that are no numbers or too large for any, scales beyond all bits.
    for (int factor : {-70, -62, -33, 0, 20, 1100, INT_MAX, INT_MIN})
        for (float mu : {1e-30f, 1e-10f, 1.0f, -1e30f, INFINITY, NAN})
            for (float norm : {0.0f, 1e-3f, INFINITY})
                if (api.whole()) check(api, {7, 1, 0, 1, 0, factor}, 20, mu, norm);
}

TEST_P(MultirateLms, IgnoresTheControlWords) {
    const Vector h = api.taps(40), x = api.samples(300), ref = api.samples(200);
    for (const int factor : {kFactor, -1020})   // of which steps overflow
        expectOwnModes([&] {
            Filter f(api, {40, 2, 1, 3, 2, factor}, h, nullptr);
            Vector y(ref);
            EXPECT_EQ(api.block(x, ref, y, 100, factor == kFactor ? 0.2f : 16, 1.0f, f), StatusOk);
            return api.whole() ? f.taps().bytes : y.bytes;
        });
}

TEST_P(MultirateLms, GivesWhatItWasSet) {
    const Filter f(api, {10, 3, 1, 4, 2}, nullptr, nullptr);   // which keeps 8 samples
    Vector h(api.tap, 10), line(api.sample, 8);
    EXPECT_TRUE(same(f.taps(), h) && same(f.past(8, 0), line));
    expectEach(StatusOk, {api.setTaps(randomVector(api.tap, 10), f), api.setDlyLine(f, randomVector(api.sample, 8))});
    expectEach(StatusOk, {api.setTaps(nullptr, f), api.setDlyLine(f, nullptr)});
    EXPECT_TRUE(same(f.taps(), h) && same(f.past(8, 0), line));
    h = randomVector(api.tap, 10), line = randomVector(api.sample, 8);
    expectEach(StatusOk, {api.setTaps(h, f), api.setDlyLine(f, line)});
    EXPECT_TRUE(same(f.taps(), h));
    for (int index : {INT_MIN, -1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, INT_MAX})
        for (int len : {1, 2, 3, 4, 5, 6, 7, 8, 9, INT_MAX})
            if (const bool good = index >= 0 && int64_t{index} + len <= 8; !good) {
                ASSERT_EQ(api.getDlyLine(f, h, len, index), StatusBadArg) << index << ", " << len;
            } else {
                ASSERT_TRUE(same(f.past(len, index), line.slice(size_t(index), size_t(len)))) << index << ", " << len;
            }
}

TEST_P(MultirateLms, RefusesShapes) {
    const Vector h(api.tap, 4), x(api.sample, 4);
    alignas(16) uint8_t block[64] = {};
    void* state = block;
    int size = 7;
    const Factor none{0};
    using Row = std::pair<Shape, Status>;
    for (const auto& [s, want] :
         {Row{{0, 0, 0, 0, 0}, StatusFilterLength}, Row{{INT_MIN, 1, 0, 1, 0}, StatusFilterLength}, Row{{INT_MAX, 1, 0, 1, 0}, StatusFilterLength},
          Row{{4, 0, 9, 1, 9}, StatusRateFactor}, Row{{4, 1, 9, 0, 9}, StatusRateFactor}, Row{{4, 1, 9, INT_MIN, 9}, StatusRateFactor},
          Row{{4, 1, 0, INT_MAX, 0}, StatusRateFactor}, Row{{4, INT_MAX, 0, 1, 0}, StatusRateFactor}, Row{{4, 2, 2, 1, 0}, StatusRatePhase},
          Row{{4, 2, -1, 1, 0}, StatusRatePhase}, Row{{4, 1, 0, 3, 3}, StatusRatePhase}, Row{{4, 1, 0, 3, INT_MIN}, StatusRatePhase},
          Row{{32769, 1, -1, 1, 0}, api.whole() ? StatusFilterLength : StatusRatePhase}, Row{{32769, 2, -1, 1, 0}, StatusRatePhase},
          Row{{int((1 << 30) / api.tap.size()), 1 << 14, -1, 1, 0}, StatusRatePhase}}) {   // taps that with a factor of 1 would be too many
        expectEach(want, {api.init(&state, h, s.taps, none, s, x, block), api.initAlloc(&state, h, s.taps, none, s, x)});
        EXPECT_EQ(api.stateSize(s.taps, s.up, s.down, &size), want == StatusRatePhase ? StatusOk : want);
    }
    EXPECT_TRUE(state == block && std::count(block, block + 64, 0) == 64);
}

}   // namespace
