#include <climits>
#include <cmath>
#include <complex>

#include "support/control_words.h"
#include "support/erased.h"
#include "tevs.h"

using namespace test;

namespace {

template <class T> struct Api;   // by the type of the samples
#define API(DATA, TAP, ERR, CODE)                                              \
    template <> struct Api<DATA> {                                             \
        using Tap = TAP;                                                       \
        using Err = ERR;                                                       \
        using State = FIRLMSMRState##CODE;                                     \
        static constexpr auto stateSize = tevsFIRLMSMRGetStateSize##CODE;      \
        static constexpr auto init = erased<tevsFIRLMSMRInit##CODE>;           \
        static constexpr auto initAlloc = erased<tevsFIRLMSMRInitAlloc##CODE>; \
        static constexpr auto free = tevsFIRLMSMRFree##CODE;                   \
        static constexpr auto setTaps = tevsFIRLMSMRSetTaps##CODE;             \
        static constexpr auto getTaps = tevsFIRLMSMRGetTaps##CODE;             \
        static constexpr auto setDlyLine = tevsFIRLMSMRSetDlyLine##CODE;       \
        static constexpr auto getDlyLine = tevsFIRLMSMRGetDlyLine##CODE;       \
        static constexpr auto filter = tevsFIRLMSMRFilter##CODE;               \
        static constexpr auto adapt = tevsFIRLMSMRAdapt##CODE;                 \
        static constexpr auto block = tevsFIRLMSMR##CODE;                      \
    }
API(int16_t, int32_t, int32_t, 32s_16s);
API(Complex16s, Complex32s, Complex32s, 32sc_16sc);
API(float, float, float, _32f);
API(Complex32f, Complex32f, Complex32f, _32fc);

template <class T> constexpr bool kComplexType = Complex<T>;
template <class T> constexpr bool kWhole = typeOf<T>().number == Number::i16;

using Z = std::complex<double>;
template <class T> Z number(T x) {
    if constexpr (Complex<T>)
        return {double(x.re), double(x.im)};
    else
        return {double(x), 0};
}
template <class T> T element(Z z) {
    if constexpr (Complex<T>)
        return {decltype(T::re)(z.real()), decltype(T::im)(z.imag())};
    else
        return T(z.real());
}
template <class T> std::vector<T> noise(size_t n, double most) {
    std::vector<T> v(n);
    for (T& x : v) x = element<T>({randomValue<double>() * most, randomValue<double>() * most});
    return v;
}

struct Shape {
    int taps, up, upPhase, down, downPhase, factor = -28;
    int each() const { return (taps + up - 1) / up; }
    int kept() const { return each() + down; }
};
void PrintTo(const Shape& s, std::ostream* o) { *o << s.taps << " taps, " << s.up << " from " << s.upPhase << ", " << s.down << " from " << s.downPhase; }

// The rule as it reads, tick by tick. Integers: the 64-bit sum and every operation of a step by themselves.
template <class T> struct Oracle {
    Shape s;
    std::vector<Z> h, line;                        // line: newest first
    std::vector<std::pair<int, size_t>> outputs;   // of the last iteration: phase, and the samples that came after
    Oracle(const Shape& shape, const std::vector<typename Api<T>::Tap>& taps, const std::vector<T>& past) : s(shape) {
        for (const auto& t : taps) h.push_back(number(t));
        for (const T& x : past) line.push_back(number(x));
        walk([] { return Z(0); }, nullptr);   // as Adapt before any Filter takes it
        line.erase(line.begin(), line.begin() + s.down);
    }
    template <class Next> void walk(Next next, std::vector<Z>* y) {
        outputs.clear();
        int u = (s.up - s.upPhase) % s.up, d = (s.down - s.downPhase) % s.down, entered = 0;
        std::vector<std::pair<int, int>> at;
        for (int tick = 0; tick < s.up * s.down; ++tick) {
            if (u == 0) line.insert(line.begin(), next()), ++entered;
            if (d == 0) {
                at.push_back({u, entered});
                if (y) y->push_back(output(u, 0));
            }
            u = (u + 1) % s.up, d = (d + 1) % s.down;
        }
        for (const auto& [phase, so_far] : at) outputs.push_back({phase, size_t(entered - so_far)});
        line.resize(size_t(s.kept() + s.down));
    }
    Z output(int u, size_t after) const {
        int64_t re = 0, im = 0;
        Z sum = 0;
        for (size_t k = size_t(u), j = after; k < h.size(); k += size_t(s.up), ++j) {
            const auto whole = [](double v) { return static_cast<int64_t>(v); };
            if (kWhole<T>) {
                re += whole(h[k].real()) * whole(line[j].real()) - whole(h[k].imag()) * whole(line[j].imag());
                im += whole(h[k].real()) * whole(line[j].imag()) + whole(h[k].imag()) * whole(line[j].real());
            } else {
                sum += h[k] * line[j];
            }
        }
        if (!kWhole<T>) return sum;
        const auto stored = [&](int64_t v) {
            return double(std::clamp<long double>(std::nearbyint(std::ldexp(static_cast<long double>(v), s.factor)), -32768, 32767));
        };
        return {stored(re), stored(im)};
    }
    void adapt(const std::vector<Z>& e, float mu, float norm) {
        if (mu == 0) return;
        for (size_t m = 0; m < outputs.size(); ++m) {
            const auto [u, after] = outputs[m];
            double power = 0;
            for (size_t k = size_t(u), j = after; k < h.size(); k += size_t(s.up), ++j) power += std::norm(line[j]);
            const double c = kWhole<T> ? std::ldexp(2 * double(mu), -s.factor) : 2 * double(mu), by = double(norm) + power;
            double gr = c * e[m].real(), gi = c * e[m].imag();
            if (norm > 0) gr /= by, gi /= by;
            for (size_t k = size_t(u), j = after; k < h.size(); k += size_t(s.up), ++j) {
                const double xr = line[j].real(), xi = line[j].imag();
                double re = gr * xr, im = 0;
                if (kComplexType<T>) re = gr * xr + gi * xi, im = gi * xr - gr * xi;
                if (kWhole<T>) {
                    const auto moved = [](double tap, double by_) {
                        const long double step = std::isnan(by_) ? 0 : std::nearbyint(static_cast<long double>(by_));
                        return double(std::clamp<long double>(tap + step, INT_MIN, INT_MAX));
                    };
                    h[k] = {moved(h[k].real(), re), moved(h[k].imag(), im)};
                } else {
                    h[k] += Z(re, im);
                }
            }
        }
    }
};

// A record, in a buffer of the reported size at any address or in memory of its own.
template <class T> struct Record {
    using A = Api<T>;
    typename A::State* state = nullptr;
    std::unique_ptr<Guarded<uint8_t>> buffer;
    Shape s;
    Record(const Shape& shape, const std::vector<typename A::Tap>* taps, const std::vector<T>* past, int offset = -1) : s(shape) {
        const Ptr h = taps ? Ptr(taps->data()) : Ptr(nullptr), line = past ? Ptr(past->data()) : Ptr(nullptr);
        if (offset >= 0) {
            int size = 0;
            EXPECT_EQ(A::stateSize(s.taps, s.up, s.down, &size), StatusOk);
            buffer = std::make_unique<Guarded<uint8_t>>(size_t(size), Place{offset, offset % 2 == 0});
            EXPECT_EQ(A::init(Ptr(&state), h, s.taps, Factor{s.factor}, s.up, s.upPhase, s.down, s.downPhase, line, Ptr(buffer->data())), StatusOk);
        } else {
            EXPECT_EQ(A::initAlloc(Ptr(&state), h, s.taps, Factor{s.factor}, s.up, s.upPhase, s.down, s.downPhase, line), StatusOk);
        }
    }
    ~Record() {
        const uint32_t id = *reinterpret_cast<uint32_t*>(state);
        EXPECT_EQ(A::free(state), StatusOk);
        if (buffer) {
            EXPECT_EQ(*reinterpret_cast<uint32_t*>(state), id);
            EXPECT_TRUE(buffer->intact());
        }
    }
    std::vector<typename A::Tap> taps() const {
        Guarded<typename A::Tap> h(size_t(s.taps));
        EXPECT_EQ(A::getTaps(state, h.data()), StatusOk);
        return h.values();
    }
    std::vector<T> past() const {
        Guarded<T> line(size_t(s.kept()));
        EXPECT_EQ(A::getDlyLine(state, line.data(), s.kept(), 0), StatusOk);
        return line.values();
    }
};

template <class T> class MultirateLms : public ::testing::Test {
protected:
    using A = Api<T>;
    using Tap = typename A::Tap;
    using Err = typename A::Err;
    static constexpr double kTop = kWhole<T> ? 20000 : 0.7, kTapTop = kWhole<T> ? 0x1p26 : 0.25;
    static float step(float norm, int each) { return norm > 0 ? 0.3f : kWhole<T> ? 2e-10f / float(each) : 0.1f / float(each); }

    template <class V> static ::testing::AssertionResult agree(const std::vector<Z>& want, const std::vector<V>& got, double tolerance) {
        for (size_t i = 0; i < want.size(); ++i)
            if (!(std::abs(number(got[i]) - want[i]) <= tolerance))
                return ::testing::AssertionFailure() << "at " << i << " of " << want.size() << ": want " << want[i] << ", got " << number(got[i]);
        return ::testing::AssertionSuccess();
    }

    static void check(const Shape& s, int numIters, float norm, float mu) {
        SCOPED_TRACE(::testing::PrintToString(s));
        const auto h = noise<Tap>(size_t(s.taps), kTapTop);
        const auto past = noise<T>(size_t(s.kept()), kTop), x = noise<T>(size_t(numIters) * size_t(s.down), kTop),
                   ref = noise<T>(size_t(numIters) * size_t(s.up), kTop);
        Record<T> halves(s, &h, &past), whole(s, &h, &past, s.taps % 16);
        Oracle<T> oracle(s, h, past);
        const Guarded<T> src(x), reference(ref);
        Guarded<T> out(ref.size()), both(ref);
        std::vector<Z> want;
        for (int i = 0; i < numIters; ++i) {
            std::vector<Z> y, e;
            const T* in = &x[size_t(i) * size_t(s.down)];
            oracle.walk([&] { return number(*in++); }, &y);
            std::vector<Err> errors;
            for (size_t m = 0; m < size_t(s.up); ++m) e.push_back(number(ref[size_t(i) * size_t(s.up) + m]) - y[m]), errors.push_back(element<Err>(e.back()));
            oracle.adapt(e, mu, norm);
            want.insert(want.end(), y.begin(), y.end());
            const Guarded<T> piece(std::vector<T>(in - s.down, in));
            Guarded<T> result(size_t(s.up));
            ASSERT_EQ(A::filter(piece.data(), result.data(), halves.state), StatusOk);
            ASSERT_TRUE(agree(y, result.values(), kWhole<T> ? 0 : 2e-5) && result.intact()) << "iteration " << i;
            ASSERT_EQ(A::adapt(Guarded<Err>(errors).data(), mu, norm, halves.state), StatusOk);
        }
        ASSERT_EQ(A::block(src.data(), reference.data(), out.data(), numIters, mu, norm, whole.state), StatusOk);
        ASSERT_TRUE(agree(want, out.values(), kWhole<T> ? 0 : 2e-5) && out.intact());
        for (const Record<T>* r : {&halves, &whole}) {
            ASSERT_TRUE(agree(oracle.h, r->taps(), kWhole<T> ? 0 : 2e-5));
            ASSERT_TRUE(agree({oracle.line.begin(), oracle.line.begin() + s.kept()}, r->past(), 0));
            ASSERT_TRUE(mu != 0 || same(h, r->taps()));
        }
        // Over the reference, and cut in two.
        Record<T> again(s, &h, &past);
        const int first = numIters / 3;
        if (first) {
            ASSERT_EQ(A::block(src.data(), both.data(), both.data(), first, mu, norm, again.state), StatusOk);
        }
        ASSERT_EQ(A::block(src.data() + first * s.down, both.data() + first * s.up, both.data() + first * s.up, numIters - first, mu, norm, again.state),
                  StatusOk);
        ASSERT_TRUE(same(out.values(), both.values()) && same(whole.taps(), again.taps()));
    }
};
using Types = ::testing::Types<int16_t, Complex16s, float, Complex32f>;
TYPED_TEST_SUITE(MultirateLms, Types);

TYPED_TEST(MultirateLms, FollowsTheRule) {
    for (int up = 1; up <= 4; ++up)
        for (int down = 1; down <= 4; ++down)
            for (int upPhase = 0; upPhase < up; ++upPhase)
                for (int downPhase = 0; downPhase < down; ++downPhase) {
                    const int taps = 1 + int(generator()() % 40);
                    const Shape s{taps, up, upPhase, down, downPhase};
                    const float norm = float(generator()() % 2);
                    this->check(s, 11, norm, this->step(norm, s.each()));
                }
    for (const Shape& s :
         {Shape{3, 7, 5, 4, 2}, Shape{1, 1, 0, 1, 0}, Shape{300, 1, 0, 2, 1}, Shape{1200, 1, 0, 1, 0}, Shape{50, 1, 0, 700, 13}, Shape{64, 16, 3, 10, 9}})
        for (float norm : {0.0f, 2.5f, -1.0f}) this->check(s, 60, norm, this->step(norm, s.each()));
    this->check({33, 1, 0, 1, 0}, 1500, 0, this->step(0, 33));
    for (const Shape& s : {Shape{9, 2, 1, 3, 1}, Shape{9, 1, 0, 1, 0}}) this->check(s, 20, 0, 0);
}

// Errors of silence move nothing; Adapt before any Filter, and twice in a row.
TYPED_TEST(MultirateLms, AdaptsToTheLineAsItIs) {
    using T = TypeParam;
    using A = Api<T>;
    const Shape s{21, 2, 1, 3, 2};
    const auto h = noise<typename A::Tap>(21, this->kTapTop);
    const auto past = noise<T>(size_t(s.kept()), this->kTop);
    const auto e = noise<typename A::Err>(2, this->kTop);
    Record<T> r(s, &h, &past);
    Oracle<T> oracle(s, h, past);
    const std::vector<Z> errors = {number(e[0]), number(e[1])};
    for (int turn = 0; turn < 2; ++turn) {
        ASSERT_EQ(A::adapt(e.data(), 0.4f, 1.0f, r.state), StatusOk);
        oracle.adapt(errors, 0.4f, 1.0f);
    }
    EXPECT_TRUE(this->agree(oracle.h, r.taps(), kWhole<T> ? 0 : 1e-5));
}

TYPED_TEST(MultirateLms, FindsAPath) {
    using T = TypeParam;
    using A = Api<T>;
    const Shape s{32, 1, 0, 1, 0, -30};
    const auto path = noise<typename A::Tap>(32, kWhole<T> ? 0x1p27 : 0.125);
    const auto x = noise<T>(6000, kWhole<T> ? 15000 : 0.5);
    std::vector<T> ref(6000), y(6000);
    Record<T> truth(s, &path, nullptr), r(s, nullptr, nullptr);
    ASSERT_EQ(A::block(x.data(), ref.data(), ref.data(), 6000, 0, 0, truth.state), StatusOk);
    ASSERT_EQ(A::block(x.data(), ref.data(), y.data(), 6000, 0.25f, 1.0f, r.state), StatusOk);
    for (size_t n = 5000; n < 6000; ++n) ASSERT_LE(std::abs(number(ref[n]) - number(y[n])), kWhole<T> ? 1.5 : 1e-5) << n;
}

// Saturation of taps and outputs, steps that are no numbers or too large for any, scales beyond all bits.
TYPED_TEST(MultirateLms, OfIntegersAtTheirLimits) {
    using T = TypeParam;
    if constexpr (kWhole<T>) {
        using A = Api<T>;
        for (int factor : {-70, -62, -33, 0, 20, 1100, INT_MAX, INT_MIN})
            for (float mu : {1e-30f, 1e-10f, 1.0f, -1e30f, INFINITY, NAN})
                for (float norm : {0.0f, 1e-3f, INFINITY}) {
                    const Shape s{7, 1, 0, 1, 0, factor};
                    auto h = randomVector<typename A::Tap>(7);
                    auto x = randomVector<T>(20), ref = randomVector<T>(20);
                    const auto past = randomVector<T>(8);
                    x[3] = T{};
                    Record<T> r(s, &h, &past);
                    Shape clamped = s;
                    clamped.factor = std::clamp(factor, -4000, 4000);
                    Oracle<T> oracle(clamped, h, past);
                    std::vector<T> got(20);
                    std::vector<Z> want;
                    for (size_t n = 0; n < 20; ++n) {
                        std::vector<Z> y;
                        oracle.walk([&] { return number(x[n]); }, &y);
                        oracle.adapt({number(ref[n]) - y[0]}, mu, norm);
                        want.push_back(y[0]);
                    }
                    ASSERT_EQ(A::block(x.data(), ref.data(), got.data(), 20, mu, norm, r.state), StatusOk);
                    ASSERT_TRUE(this->agree(want, got, 0)) << factor << ", " << mu << ", " << norm;
                    ASSERT_TRUE(this->agree(oracle.h, r.taps(), 0)) << factor << ", " << mu << ", " << norm;
                }
    }
}

TYPED_TEST(MultirateLms, IgnoresTheControlWords) {
    using T = TypeParam;
    const Shape s{40, 2, 1, 3, 2};
    const auto h = noise<typename Api<T>::Tap>(40, this->kTapTop);
    const auto x = noise<T>(300, this->kTop), ref = noise<T>(200, this->kTop);
    expectOwnModes([&] {
        Record<T> r(s, &h, nullptr);
        std::vector<T> y(200);
        EXPECT_EQ(Api<T>::block(x.data(), ref.data(), y.data(), 100, 0.2f, 1.0f, r.state), StatusOk);
        std::vector<uint8_t> all(reinterpret_cast<uint8_t*>(y.data()), reinterpret_cast<uint8_t*>(y.data() + 200));
        const auto taps = r.taps();
        all.insert(all.end(), reinterpret_cast<const uint8_t*>(taps.data()), reinterpret_cast<const uint8_t*>(taps.data() + 40));
        return all;
    });
}

TYPED_TEST(MultirateLms, GivesWhatItWasSet) {
    using T = TypeParam;
    using A = Api<T>;
    const Shape s{10, 3, 1, 4, 2};   // D is 7
    Record<T> r(s, nullptr, nullptr);
    EXPECT_TRUE(same(r.taps(), std::vector<typename A::Tap>(10)) && same(r.past(), std::vector<T>(8)));
    const auto h = randomVector<typename A::Tap>(10);
    const auto line = randomVector<T>(8);
    ASSERT_EQ(A::setTaps(h.data(), r.state), StatusOk);
    ASSERT_EQ(A::setDlyLine(r.state, line.data()), StatusOk);
    EXPECT_TRUE(same(r.taps(), h) && same(r.past(), line));
    T got[8] = {};
    for (int index = -1; index <= 9; ++index)
        for (int len = 1; len <= 9; ++len) {
            const bool good = index >= 0 && index + len <= 8;
            ASSERT_EQ(A::getDlyLine(r.state, got, len, index), good ? StatusOk : StatusBadArg) << index << ", " << len;
            if (good) {
                ASSERT_EQ(std::memcmp(got, &line[size_t(index)], size_t(len) * sizeof(T)), 0);
            }
        }
    for (int len : {1, INT_MAX}) EXPECT_EQ(A::getDlyLine(r.state, got, len, INT_MAX), StatusBadArg);
    ASSERT_EQ(A::setTaps(nullptr, r.state), StatusOk);
    ASSERT_EQ(A::setDlyLine(r.state, nullptr), StatusOk);
    EXPECT_TRUE(same(r.taps(), std::vector<typename A::Tap>(10)) && same(r.past(), std::vector<T>(8)));
}

TYPED_TEST(MultirateLms, ChecksInOrder) {
    using T = TypeParam;
    using A = Api<T>;
    typename A::Tap h[4] = {};
    typename A::Err e[4] = {};
    T x[4] = {}, y[4] = {};
    alignas(16) uint8_t block[64] = {};
    auto* const other = reinterpret_cast<typename A::State*>(block);
    auto* state = other;
    int size = 7;
    const auto init = [&](int taps, int up, int upPhase, int down, int downPhase) {
        const Status a = A::init(Ptr(&state), Ptr(h), taps, Factor{0}, up, upPhase, down, downPhase, Ptr(x), Ptr(block));
        EXPECT_EQ(A::initAlloc(Ptr(&state), Ptr(h), taps, Factor{0}, up, upPhase, down, downPhase, Ptr(x)), a);
        return a;
    };
    expectEach(StatusNullPtr, {A::stateSize(0, 0, 0, nullptr),
                               A::init(Ptr(nullptr), Ptr(h), 0, Factor{0}, 0, 0, 0, 0, Ptr(x), Ptr(block)),
                               A::init(Ptr(&state), Ptr(h), 0, Factor{0}, 0, 0, 0, 0, Ptr(x), Ptr(nullptr)),
                               A::initAlloc(Ptr(nullptr), Ptr(h), 0, Factor{0}, 0, 0, 0, 0, Ptr(x)),
                               A::free(nullptr),
                               A::setTaps(h, nullptr),
                               A::getTaps(nullptr, h),
                               A::getTaps(other, nullptr),
                               A::setDlyLine(nullptr, x),
                               A::getDlyLine(nullptr, x, 0, -1),
                               A::getDlyLine(other, nullptr, 0, -1),
                               A::filter(nullptr, y, other),
                               A::filter(x, nullptr, other),
                               A::filter(x, y, nullptr),
                               A::adapt(nullptr, 1, 1, other),
                               A::adapt(e, 1, 1, nullptr),
                               A::block(nullptr, x, y, 0, 1, 1, other),
                               A::block(x, nullptr, y, 0, 1, 1, other),
                               A::block(x, x, nullptr, 0, 1, 1, other),
                               A::block(x, x, y, 0, 1, 1, nullptr)});
    expectEach(StatusBadSize, {A::getDlyLine(other, x, 0, -1), A::block(x, x, y, 0, 1, 1, other), A::block(x, x, y, INT_MIN, 1, 1, other)});
    expectEach(StatusContextMismatch, {A::free(other), A::setTaps(h, other), A::getTaps(other, h), A::setDlyLine(other, x), A::getDlyLine(other, x, 1, -1),
                                       A::filter(x, y, other), A::adapt(e, 1, 1, other), A::block(x, x, y, 1, 1, 1, other)});
    expectEach(StatusFilterLength,
               {A::stateSize(0, 0, 0, &size), A::stateSize(INT_MAX, 1, 1, &size), init(0, 0, 0, 0, 0), init(INT_MIN, 1, 0, 1, 0), init(INT_MAX, 1, 0, 1, 0)});
    expectEach(StatusRateFactor, {A::stateSize(4, 0, 1, &size), A::stateSize(4, 1, 0, &size), A::stateSize(4, 1, INT_MAX, &size), init(4, 0, 9, 1, 9),
                                  init(4, 1, 9, INT_MIN, 9), init(4, 1, 0, INT_MAX, 0), init(4, INT_MAX, 0, 1, 0)});
    expectEach(StatusRatePhase, {init(4, 2, 2, 1, 0), init(4, 2, -1, 1, 0), init(4, 1, 0, 3, 3), init(4, 1, 0, 3, INT_MIN)});
    const Status longest = A::stateSize(32769, 1, 1, &size);
    EXPECT_EQ(longest, kWhole<T> ? StatusFilterLength : StatusOk);
    EXPECT_EQ(A::stateSize(32769, 2, 1, &size), StatusOk);
    EXPECT_TRUE(state == other && std::all_of(block, block + 64, [](uint8_t c) { return c == 0; }) && std::memcmp(x, y, sizeof x) == 0);
    Record<T> freed(Shape{4, 1, 0, 1, 0}, nullptr, nullptr);
}

}   // namespace
