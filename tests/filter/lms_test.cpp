#include <climits>
#include <cmath>

#include "support/control_words.h"
#include "support/erased.h"
#include "tevs.h"

using namespace test;

namespace {

constexpr float kMu = 0.003f;

template <class T> struct Api;
#define LMS_API(SAMPLE, T, D, MU)                                         \
    template <> struct Api<SAMPLE> {                                      \
        using State = FIRLMSState##T##_##D;                               \
        static constexpr auto initAlloc = tevsFIRLMSInitAlloc##T##_##D;   \
        static constexpr auto free = tevsFIRLMSFree##T##_##D;             \
        static constexpr auto getTaps = tevsFIRLMSGetTaps##T##_##D;       \
        static constexpr auto getDlyLine = tevsFIRLMSGetDlyLine##T##_##D; \
        static constexpr auto setDlyLine = tevsFIRLMSSetDlyLine##T##_##D; \
        static constexpr auto filter = tevsFIRLMS##T##_##D;               \
        static constexpr auto one = tevsFIRLMSOne_Direct##T##_##D;        \
        static constexpr float mu = MU;                                   \
    }
LMS_API(float, , 32f, kMu);
LMS_API(int16_t, 32f, 16s, kMu / (1 << 30));

template <class T> std::vector<T> noise(size_t n, double most = 0.9) {
    std::vector<T> v(n);
    for (T& x : v) x = T(randomValue<double>() * most * (std::is_integral_v<T> ? 32767 : 1));
    return v;
}

// The rule as it reads, in double precision, over all samples since the first.
struct Oracle {
    std::vector<double> h, x;   // taps in the order of the formula; samples, oldest first
    template <class T>
    Oracle(const std::vector<float>& taps, const std::vector<T>& past, size_t oldest) : h(taps.begin(), taps.end()), x(past.begin(), past.end()) {
        std::rotate(x.begin(), x.begin() + long(oldest), x.end());
    }
    double operator()(double sample, double ref, double mu) {
        x.push_back(sample);
        double y = 0;
        for (size_t k = 0; k < h.size(); ++k) y += h[k] * x[x.size() - 1 - k];
        for (size_t k = 0; k < h.size(); ++k) h[k] += 2 * mu * (ref - y) * x[x.size() - 1 - k];
        return y;
    }
};

// A record over taps and past, which are given from guarded memory.
template <class T> struct Record {
    typename Api<T>::State* state = nullptr;
    Record(const std::vector<float>& taps, const std::vector<T>& past, int index) {
        const Guarded<float> h(taps);
        const Guarded<T> line(past);
        EXPECT_EQ(Api<T>::initAlloc(&state, h.data(), int(taps.size()), line.data(), index), StatusOk);
    }
    explicit Record(size_t taps) { EXPECT_EQ(Api<T>::initAlloc(&state, nullptr, int(taps), nullptr, 0), StatusOk); }
    ~Record() { EXPECT_EQ(Api<T>::free(state), StatusOk); }
    std::vector<float> taps(size_t n) const {
        Guarded<float> h(n);
        EXPECT_EQ(Api<T>::getTaps(state, h.data()), StatusOk);
        EXPECT_TRUE(h.intact());
        return h.values();
    }
    std::vector<T> past(size_t n, int* index) const {
        Guarded<T> line(n);
        EXPECT_EQ(Api<T>::getDlyLine(state, line.data(), index), StatusOk);
        EXPECT_TRUE(line.intact());
        return line.values();
    }
};

template <class T> class Lms : public ::testing::Test {};
using Types = ::testing::Types<float, int16_t>;
TYPED_TEST_SUITE(Lms, Types);

constexpr size_t kTaps[] = {1, 2, 3, 4, 5, 7, 8, 9, 15, 16, 17, 31, 32, 33, 47, 63, 64, 79, 80, 81, 130, 1023, 1500};

// Outputs, taps and delay line after a block.
template <class T> void checkRule(const std::vector<float>& h, size_t len, float mu) {
    const size_t taps = h.size();
    SCOPED_TRACE(::testing::Message() << taps << " taps, " << len << " samples, step " << mu);
    const auto past = noise<T>(taps), x = noise<T>(len), ref = noise<T>(len);
    const int index = int(len % taps);
    Record<T> record(h, past, index);
    Oracle oracle(h, past, size_t(index));
    const Place at{int(taps % 4) * int(sizeof(T)), len % 2 == 0};
    const Guarded<T> src(x, at), reference(ref, at);
    Guarded<T> dst(len, at);
    ASSERT_EQ(Api<T>::filter(src.data(), reference.data(), dst.data(), int(len), mu, record.state), StatusOk);
    ASSERT_TRUE(dst.intact());
    for (size_t n = 0; n < len; ++n) {
        double want = oracle(x[n], ref[n], double(mu));
        if (std::is_integral_v<T>) want = std::clamp(want, -32768.0, 32767.0);
        ASSERT_NEAR(double(dst.data()[n]), want, std::is_integral_v<T> ? 0.5 + 32768e-5 : 1e-5) << n;
    }
    const auto now = record.taps(taps);
    for (size_t k = 0; k < taps; ++k) ASSERT_NEAR(now[k], oracle.h[k], 1e-5) << k;
    ASSERT_TRUE(mu != 0 || same(h, now));
    int left = 77;
    const auto line = record.past(taps, &left);
    ASSERT_TRUE(std::equal(line.begin(), line.end(), oracle.x.end() - long(taps)));
    ASSERT_EQ(left, taps < 80 ? 0 : int((size_t(index) + len) % taps));
}
TYPED_TEST(Lms, FollowsTheRule) {
    using T = TypeParam;
    for (size_t taps : kTaps)
        for (size_t len : {size_t{1}, taps, taps + 1, size_t{70}, size_t{2500}})
            checkRule<T>(noise<float>(taps, 1 / std::sqrt(double(taps))), len, Api<T>::mu / float(taps));
    for (size_t taps : {3u, 100u}) {   // a step of zero: a FIR filter
        auto h = noise<float>(taps, 0.1);
        h[0] = -0.0f, h[1] = 1e-44f;
        checkRule<T>(h, 200, 0);
    }
}

// One block, blocks of any lengths, single samples with a record and without: the same outputs and taps; in place of either vector too.
TYPED_TEST(Lms, AnySplitGivesTheSameBits) {
    using T = TypeParam;
    for (size_t taps : kTaps) {
        const size_t len = 3000;
        const auto h = noise<float>(taps), zeros = std::vector<float>(taps);
        const auto past = noise<T>(taps), x = noise<T>(len), ref = noise<T>(len);
        const float mu = Api<T>::mu / float(taps);
        Record<T> whole(h, past, 0);
        std::vector<T> want(len);
        ASSERT_EQ(Api<T>::filter(x.data(), ref.data(), want.data(), int(len), mu, whole.state), StatusOk);
        for (size_t most : {1, 2, 40, 700}) {
            Record<T> pieces(h, past, 0);
            std::vector<T> y = most == 2 ? x : ref;
            for (size_t n = 0, m; n < len; n += m) {
                m = std::min(len - n, size_t(1 + generator()() % most));
                ASSERT_EQ(Api<T>::filter(most == 2 ? &y[n] : &x[n], most == 2 ? &ref[n] : &y[n], &y[n], int(m), mu, pieces.state), StatusOk);
            }
            ASSERT_TRUE(same(want, y)) << taps << ", " << most;
            ASSERT_TRUE(same(whole.taps(taps), pieces.taps(taps)));
        }
        std::vector<float> t(h.rbegin(), h.rend());
        std::vector<T> line = past, one(len);
        line.insert(line.end(), past.begin(), past.end());
        const Guarded<T> doubled(line);
        Guarded<float> reversed(t);
        int index = 0;
        for (size_t n = 0; n < len; ++n)
            ASSERT_EQ(Api<T>::one(x[n], ref[n], &one[n], reversed.data(), int(taps), mu, const_cast<T*>(doubled.data()), &index), StatusOk);
        ASSERT_EQ(index, int(len % taps));
        auto now = reversed.values();
        std::reverse(now.begin(), now.end());
        if (taps <= 1024) {
            ASSERT_TRUE(same(want, one)) << taps;
            ASSERT_TRUE(same(whole.taps(taps), now)) << taps;
        }
    }
}

TYPED_TEST(Lms, IndexIsKeptAsGiven) {
    using T = TypeParam;
    for (size_t taps : {5u, 90u})
        for (int index : {0, 3, -1, int(taps), INT_MIN, INT_MAX}) {
            const auto past = noise<T>(taps);
            const bool good = index >= 0 && index < int(taps);
            Record<T> record(std::vector<float>(taps, 0.0f), std::vector<T>(taps, T(0)), 2);
            ASSERT_EQ(Api<T>::setDlyLine(record.state, past.data(), index), StatusOk);
            auto want = past;
            std::rotate(want.begin(), want.begin() + (good ? index : 0), want.end());
            int got;
            EXPECT_TRUE(same(want, record.past(taps, &got)));
            EXPECT_EQ(got, index);
            T y[3];
            ASSERT_EQ(Api<T>::filter(past.data(), past.data(), y, 3, 0, record.state), StatusOk);
            record.past(taps, &got);
            EXPECT_EQ(got, taps < 80 ? 0 : (good ? index : 0) + 3);
            ASSERT_EQ(Api<T>::setDlyLine(record.state, nullptr, 4), StatusOk);
            EXPECT_TRUE(same(std::vector<T>(taps), record.past(taps, &got)));
            EXPECT_EQ(got, 4);
            Record<T> zeros(taps);
            EXPECT_TRUE(same(std::vector<T>(taps), zeros.past(taps, &got)) && same(std::vector<float>(taps), zeros.taps(taps)));
        }
}

TYPED_TEST(Lms, RefusesLengthsAndIndices) {
    using T = TypeParam;
    using A = Api<T>;
    typename A::State* const mark = reinterpret_cast<typename A::State*>(0x40);
    auto* state = mark;
    T x[4] = {1, 2, 3, 4}, y = 7;
    float h[2] = {1, 2};
    int index = 2;
    expectEach(StatusBadSize, {A::initAlloc(&state, h, 0, x, 0), A::initAlloc(&state, h, INT_MIN, x, 0), A::one(1, 1, &y, h, 0, 1, x, &index)});
    EXPECT_EQ(A::initAlloc(&state, nullptr, INT_MAX, nullptr, 0), StatusNoMemory);
    for (int at : {2, -1, INT_MIN, INT_MAX}) EXPECT_EQ(A::one(1, 1, &y, h, 2, 1, x, &(index = at)), StatusDelayIndex);
    EXPECT_TRUE(state == mark && y == 7 && x[0] == 1 && h[0] == 1 && index == INT_MAX);
}

TYPED_TEST(Lms, IgnoresAndKeepsTheControlWords) {
    using T = TypeParam;
    const auto h = noise<float>(90);
    const auto past = noise<T>(90), x = noise<T>(300), ref = noise<T>(300);
    expectOwnModes([&] {
        Record<T> record(h, past, 0);
        std::vector<T> y(300);
        EXPECT_EQ(Api<T>::filter(x.data(), ref.data(), y.data(), 300, Api<T>::mu, record.state), StatusOk);
        return y;
    });
}

// Exact integers, rounded by the oracle's own means.
TEST(LmsQ15, FollowsTheRuleInExactIntegers) {
    const auto rounded = [](int64_t v, int s) { return int64_t(std::nearbyint(std::ldexp((long double)v, -s))); };
    const auto saturated = [](int64_t v) { return int16_t(std::clamp<int64_t>(v, -32768, 32767)); };
    for (int taps : {1, 2, 7, 33, 300})
        for (int mu : {0, 1, 5000, -3000, 32767, -32768}) {
            auto t = randomVector<int16_t>(size_t(taps)), line = randomVector<int16_t>(size_t(taps));
            line.insert(line.end(), line.begin(), line.begin() + taps);
            auto wantTaps = t, past = std::vector<int16_t>(line.begin(), line.begin() + taps);
            Guarded<int16_t> h(t), dly(line);
            int index = 0;
            for (int n = 0; n < 100; ++n) {
                const int16_t x = randomValue<int16_t>(), ref = randomValue<int16_t>();
                past.erase(past.begin());
                past.push_back(x);
                int64_t sum = 0;
                for (int j = 0; j < taps; ++j) sum += int64_t{wantTaps[size_t(j)]} * past[size_t(j)];
                const int16_t want = saturated(rounded(sum, 15));
                for (int j = 0; j < taps; ++j) wantTaps[size_t(j)] = saturated(wantTaps[size_t(j)] + rounded(int64_t{mu} * (ref - want) * past[size_t(j)], 29));
                int16_t y = 0;
                ASSERT_EQ(tevsFIRLMSOne_DirectQ15_16s(x, ref, &y, h.data(), taps, int16_t(mu), dly.data(), &index), StatusOk);
                ASSERT_EQ(y, want);
                ASSERT_TRUE(same(wantTaps, h.values())) << taps << ", " << mu;
                ASSERT_EQ(index, (n + 1) % taps);
            }
            EXPECT_TRUE(h.intact() && dly.intact());
        }
    int16_t y = 5, h[2] = {}, d[4] = {};
    int index = 2;
    EXPECT_EQ(tevsFIRLMSOne_DirectQ15_16s(1, 1, &y, h, 0, 1, d, &index), StatusBadSize);
    EXPECT_EQ(tevsFIRLMSOne_DirectQ15_16s(1, 1, &y, h, 2, 1, d, &index), StatusDelayIndex);
    EXPECT_EQ(y, 5);
}

// Far too large a step: outputs and taps become infinite, with no NaN from lanes behind the last tap.
TEST(Lms16, OverflowsAlikeInBlocksAndSamples) {
    for (int taps = 1; taps < 20; ++taps) {
        const std::vector<int16_t> x(60, 3000), ref(60), past(size_t(taps), 0);
        Record<int16_t> blocks(std::vector<float>(size_t(taps), 1.0f), past, 0), samples(std::vector<float>(size_t(taps), 1.0f), past, 0);
        std::vector<int16_t> want(60), y(60);
        for (size_t n = 0; n < 60; ++n) ASSERT_EQ(tevsFIRLMS32f_16s(&x[n], &ref[n], &want[n], 1, 1e20f, samples.state), StatusOk);
        ASSERT_EQ(tevsFIRLMS32f_16s(x.data(), ref.data(), y.data(), 60, 1e20f, blocks.state), StatusOk);
        ASSERT_TRUE(same(want, y)) << taps;
    }
}

}   // namespace
