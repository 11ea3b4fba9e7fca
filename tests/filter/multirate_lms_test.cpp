// Multirate LMS filters of every type of samples, with the types erased.
#include <climits>

#include "support/control_words.h"
#include "support/erased.h"
#include "tevs.h"

using namespace test;

namespace {

using Z = std::complex<double>;

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

std::vector<Z> numbers(const Vector& v) {
    std::vector<Z> all;
    for (size_t i = 0; i < v.parts(); i += size_t(v.type.parts)) all.push_back({double(v.part(i)), v.type.parts == 2 ? double(v.part(i + 1)) : 0});
    return all;
}
::testing::AssertionResult agree(const std::vector<Z>& want, const Vector& v, double tolerance) {
    const auto got = numbers(v);
    for (size_t i = 0; i < got.size(); ++i)
        if (!(std::abs(got[i] - want.at(i)) <= tolerance))
            return ::testing::AssertionFailure() << "at " << i << " of " << got.size() << ": want " << want[i] << ", got " << got[i];
    return ::testing::AssertionSuccess();
}

// The rule as it reads. Integers: the 64-bit sum and every operation of a step by themselves.
struct Oracle {
    const Api& api;
    Shape s;
    std::vector<Z> h, x;   // all samples so far, oldest first
    Oracle(const Api& a, const Shape& shape, const Vector& taps, const Vector& past) : api(a), s(shape), h(numbers(taps)), x(numbers(past)) {
        std::reverse(x.begin(), x.end());
    }
    // The taps and samples of an output of the last iteration.
    template <class F> void each(int output, F f) {
        const int since = output * s.down + s.downPhase - s.upPhase + s.up;   // ticks from the input before the iteration's first possible one
        const Z* from = x.data() + x.size() - s.down + since / s.up;
        for (size_t k = size_t(since % s.up); k < h.size(); k += size_t(s.up)) f(h[k], *--from);
    }
    std::vector<Z> filter(const std::vector<Z>& samples) {
        x.insert(x.end(), samples.begin(), samples.end());
        std::vector<Z> y;
        for (int m = 0; m < s.up; ++m) {
            int64_t re = 0, im = 0;
            Z sum = 0;
            each(m, [&](Z tap, Z sample) {
                const int64_t hr(tap.real()), hi(tap.imag()), xr(sample.real()), xi(sample.imag());
                re += hr * xr - hi * xi;
                im += hr * xi + hi * xr;
                sum += tap * sample;
            });
            const auto stored = [&](int64_t v) {
                return double(std::clamp<Real>(std::nearbyint(std::ldexp(Real(v), std::clamp(s.factor, -4000, 4000))), -32768, 32767));
            };
            y.push_back(api.whole() ? Z(stored(re), stored(im)) : sum);
        }
        return y;
    }
    void adapt(const std::vector<Z>& e, float mu, float norm) {
        for (int m = 0; m < (mu == 0 ? 0 : s.up); ++m) {
            double power = 0;
            each(m, [&](Z, Z sample) { power += std::norm(sample); });
            const double c = std::ldexp(2 * double(mu), api.whole() ? -std::clamp(s.factor, -4000, 4000) : 0), by = norm > 0 ? double(norm) + power : 1;
            const double gr = c * e[size_t(m)].real() / by, gi = c * e[size_t(m)].imag() / by;
            const auto moved = [&](double tap, double step) {
                if (!api.whole()) return tap + step;
                return double(std::clamp<Real>(tap + (std::isnan(step) ? 0 : std::nearbyint(Real(step))), INT_MIN, INT_MAX));
            };
            each(m, [&](Z& tap, Z x) {
                if (api.tap.parts == 2)
                    tap = {moved(tap.real(), gr * x.real() + gi * x.imag()), moved(tap.imag(), gi * x.real() - gr * x.imag())};
                else
                    tap = moved(tap.real(), gr * x.real());
            });
        }
    }
};

// What call(address) writes there.
template <class Call> Vector written(Type type, size_t n, Call call) {
    Guarded<uint8_t> to(n * type.size());
    EXPECT_EQ(call(Ptr(to.data())), StatusOk);
    EXPECT_TRUE(to.intact());
    return {type, to.values()};
}

// A record, in a buffer of the reported size at any address, which stays one when it is freed, or in memory of its own.
struct Filter {
    const Api& api;
    const Shape s;
    const bool owned;
    Guarded<uint8_t> memory;
    void* state = nullptr;
    Filter(const Api& a, const Shape& shape, Ptr h, Ptr past, int offset = -1)
        : api(a), s(shape), owned(offset < 0), memory(size(), {std::max(offset, 0), offset % 2 == 0}) {
        const Factor factor{s.factor};
        EXPECT_EQ(owned ? api.initAlloc(&state, h, s.taps, factor, s, past) : api.init(&state, h, s.taps, factor, s, past, memory.data()), StatusOk);
    }
    ~Filter() {
        EXPECT_EQ(api.free(state), StatusOk);
        EXPECT_TRUE(owned || (api.setTaps(nullptr, state) == StatusOk && memory.intact()));
    }
    size_t size() const {
        int size = 0;
        EXPECT_EQ(api.stateSize(s.taps, s.up, s.down, &size), StatusOk);
        return size_t(size);
    }
    operator Ptr() const { return state; }
    Vector taps() const {
        return written(api.tap, size_t(s.taps), [this](Ptr to) { return api.getTaps(state, to); });
    }
    Vector past() const {
        return written(api.sample, size_t(s.kept()), [this](Ptr to) { return api.getDlyLine(state, to, s.kept(), 0); });
    }
};

// Adapt before any Filter and twice in a row; then iterations in halves, in one block, and in two blocks over the reference.
void check(const Api& api, const Shape& s, int numIters, float mu, float norm) {
    SCOPED_TRACE(::testing::Message() << s.taps << " taps, " << s.up << " from " << s.upPhase << ", " << s.down << " from " << s.downPhase << ", factor "
                                      << s.factor << ", step " << mu << ", norm " << norm);
    Vector h = api.taps(s.taps), past = api.samples(s.kept()), x = api.samples(numIters * s.down), ref = api.samples(numIters * s.up);
    if (s.factor != kFactor)
        for (Vector* v : {&h, &past, &x, &ref}) *v = randomVector(v->type, v->size());
    Filter halves(api, s, h, past), whole(api, s, h, past, s.taps % 16), cut(api, s, h, past);
    Oracle oracle(api, s, h, past);
    const auto adapt = [&](const std::vector<Z>& e, std::initializer_list<Ptr> filters) {
        Vector errors(api.tap, e.size());
        for (size_t i = 0; i < errors.parts(); ++i) errors.setPart(i, api.tap.parts == 1 ? e[i].real() : i % 2 ? e[i / 2].imag() : e[i / 2].real());
        oracle.adapt(numbers(errors), mu, norm);
        for (const Ptr filter : filters) ASSERT_EQ(api.adapt(Guarded<uint8_t>(errors.bytes).data(), mu, norm, filter), StatusOk);
    };
    const size_t in = size_t(s.down), out = size_t(s.up);
    for (int turn = 0; turn < 2; ++turn) adapt(numbers(ref.slice(0, out)), {halves, whole, cut});
    std::vector<Z> want;
    for (size_t i = 0; i < size_t(numIters); ++i) {
        const Guarded<uint8_t> src(x.slice(i * in, in).bytes);
        const auto y = oracle.filter(numbers(x.slice(i * in, in)));
        ASSERT_TRUE(agree(y, written(api.sample, out, [&](Ptr dst) { return api.filter(src.data(), dst, halves); }), api.tolerance())) << "iteration " << i;
        auto e = numbers(ref.slice(i * out, out));
        for (size_t m = 0; m < out; ++m) e[m] -= y[m];
        adapt(e, {halves});
        want.insert(want.end(), y.begin(), y.end());
    }
    const Guarded<uint8_t> src(x.bytes), reference(ref.bytes);
    const Vector y = written(api.sample, ref.size(), [&](Ptr dst) { return api.block(src.data(), reference.data(), dst, numIters, mu, norm, whole); });
    ASSERT_TRUE(agree(want, y, api.tolerance()));
    for (const Filter* f : {&halves, &whole})
        ASSERT_TRUE(agree(oracle.h, f->taps(), api.tolerance()) && agree({oracle.x.rbegin(), oracle.x.rend()}, f->past(), 0) &&
                    (mu != 0 || same(h, f->taps())));
    const int first = numIters / 3;
    uint8_t* const second = ref.at(size_t(first) * out);
    ASSERT_EQ(api.block(x, ref, ref, first, mu, norm, cut), StatusOk);
    ASSERT_EQ(api.block(x.at(size_t(first) * in), second, second, numIters - first, mu, norm, cut), StatusOk);
    ASSERT_TRUE(same(y, ref) && same(whole.taps(), cut.taps()));
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
    expectOwnModes([&] {
        Filter f(api, {40, 2, 1, 3, 2}, h, nullptr);
        Vector y(ref);
        EXPECT_EQ(api.block(x, ref, y, 100, 0.2f, 1.0f, f), StatusOk);
        return y.bytes;
    });
}

TEST_P(MultirateLms, GivesWhatItWasSet) {
    const Filter f(api, {10, 3, 1, 4, 2}, nullptr, nullptr);   // which keeps 8 samples
    const Vector h = randomVector(api.tap, 10), line = randomVector(api.sample, 8), noTaps(api.tap, 10), silence(api.sample, 8);
    EXPECT_TRUE(same(f.taps(), noTaps) && same(f.past(), silence));
    expectEach(StatusOk, {api.setTaps(h, f), api.setDlyLine(f, line)});
    EXPECT_TRUE(same(f.taps(), h) && same(f.past(), line));
    for (int index : {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, INT_MAX})
        for (int len : {1, 2, 3, 4, 5, 6, 7, 8, 9, INT_MAX}) {
            const bool good = index >= 0 && int64_t{index} + len <= 8;
            Vector got(api.sample, 8);
            ASSERT_EQ(api.getDlyLine(f, got, len, index), good ? StatusOk : StatusBadArg) << index << ", " << len;
            ASSERT_TRUE(same(got.slice(0, good ? size_t(len) : 0), line.slice(good ? size_t(index) : 0, good ? size_t(len) : 0)));
        }
    expectEach(StatusOk, {api.setTaps(nullptr, f), api.setDlyLine(f, nullptr)});
    EXPECT_TRUE(same(f.taps(), noTaps) && same(f.past(), silence));
}

TEST_P(MultirateLms, ChecksInOrder) {
    Vector h(api.tap, 4), x(api.sample, 4), y(x);
    alignas(16) uint8_t block[64] = {};
    const Ptr other = block;
    void* state = block;
    int size = 7;
    const Factor none{0};
    expectEach(StatusNullPtr, {api.stateSize(0, 0, 0, nullptr), api.init(nullptr, h, 0, none, {}, x, block), api.init(&state, h, 0, none, {}, x, nullptr),
                               api.initAlloc(nullptr, h, 0, none, {}, x), api.getDlyLine(nullptr, x, 0, -1), api.getDlyLine(other, nullptr, 0, -1)});
    expectEach(StatusNullPtr, {api.free(nullptr), api.setTaps(h, nullptr), api.getTaps(nullptr, h), api.getTaps(other, nullptr), api.setDlyLine(nullptr, x)});
    expectEach(StatusNullPtr, {api.filter(nullptr, y, other), api.filter(x, nullptr, other), api.filter(x, y, nullptr), api.adapt(nullptr, 1, 1, other),
                               api.adapt(h, 1, 1, nullptr), api.block(nullptr, x, y, 0, 1, 1, other), api.block(x, nullptr, y, 0, 1, 1, other),
                               api.block(x, x, nullptr, 0, 1, 1, other), api.block(x, x, y, 0, 1, 1, nullptr)});
    expectEach(StatusBadSize, {api.getDlyLine(other, x, 0, -1), api.block(x, x, y, 0, 1, 1, other), api.block(x, x, y, INT_MIN, 1, 1, other)});
    expectEach(StatusContextMismatch, {api.free(other), api.setTaps(h, other), api.getTaps(other, h), api.setDlyLine(other, x), api.getDlyLine(other, x, 1, -1),
                                       api.filter(x, y, other), api.adapt(h, 1, 1, other), api.block(x, x, y, 1, 1, 1, other)});
    using Row = std::pair<Shape, Status>;
    for (const auto& [s, want] :
         {Row{{0, 0, 0, 0, 0}, StatusFilterLength}, Row{{INT_MIN, 1, 0, 1, 0}, StatusFilterLength}, Row{{INT_MAX, 1, 0, 1, 0}, StatusFilterLength},
          Row{{4, 0, 9, 1, 9}, StatusRateFactor}, Row{{4, 1, 9, 0, 9}, StatusRateFactor}, Row{{4, 1, 9, INT_MIN, 9}, StatusRateFactor},
          Row{{4, 1, 0, INT_MAX, 0}, StatusRateFactor}, Row{{4, INT_MAX, 0, 1, 0}, StatusRateFactor}, Row{{4, 2, 2, 1, 0}, StatusRatePhase},
          Row{{4, 2, -1, 1, 0}, StatusRatePhase}, Row{{4, 1, 0, 3, 3}, StatusRatePhase}, Row{{4, 1, 0, 3, INT_MIN}, StatusRatePhase}}) {
        expectEach(want, {api.init(&state, h, s.taps, none, s, x, block), api.initAlloc(&state, h, s.taps, none, s, x)});
        EXPECT_EQ(api.stateSize(s.taps, s.up, s.down, &size), want == StatusRatePhase ? StatusOk : want);
    }
    EXPECT_EQ(api.stateSize(32769, 1, 1, &size), api.whole() ? StatusFilterLength : StatusOk);
    EXPECT_EQ(api.stateSize(32769, 2, 1, &size), StatusOk);
    EXPECT_TRUE(state == block && std::count(block, block + 64, 0) == 64 && same(x, y));
}

}   // namespace
