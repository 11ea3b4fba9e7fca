#include <climits>
#include <cmath>

#include "support/control_words.h"
#include "support/values.h"
#include "tevs.h"

using namespace test;

namespace {

struct Terms {
    std::vector<float> taps;
    std::vector<int32_t> delays;
    size_t order() const { return delays.empty() ? 0 : size_t(delays.back()); }
};
Terms terms(std::vector<int32_t> delays, float most) {
    Terms t{randomVector<float>(delays.size()), std::move(delays)};
    for (float& h : t.taps) h *= most / float(t.taps.size());
    return t;
}
Terms joined(Terms a, const Terms& b) {
    a.taps.insert(a.taps.end(), b.taps.begin(), b.taps.end());
    a.delays.insert(a.delays.end(), b.delays.begin(), b.delays.end());
    return a;
}

// The formula in double precision. The past is newest first: inputs, then outputs.
std::vector<double> oracle(const Terms& b, const Terms& a, const std::vector<float>& past, const std::vector<float>& x) {
    std::vector<double> in(past.begin(), past.begin() + long(b.order())), y(past.begin() + long(b.order()), past.end());
    std::reverse(in.begin(), in.end());
    std::reverse(y.begin(), y.end());
    in.insert(in.end(), x.begin(), x.end());
    for (size_t n = 0; n < x.size(); ++n) {
        double sum = 0;
        for (size_t k = 0; k < b.taps.size(); ++k) sum += double(b.taps[k]) * in[n + b.order() - size_t(b.delays[k])];
        for (size_t k = 0; k < a.taps.size(); ++k) sum -= double(a.taps[k]) * y[n + a.order() - size_t(a.delays[k])];
        y.push_back(sum);
    }
    return {y.begin() + long(a.order()), y.end()};
}

// Either kind of record, in a buffer of the size reported; both are copied from.
class Filter {
public:
    Filter(const Terms& b, const Terms* a, const std::vector<float>* past, Place at = {}) : a_(a) {
        const auto all = a ? joined(b, *a) : b;
        const Guarded<float> taps(all.taps);
        const Guarded<int32_t> delays(all.delays);
        const Guarded<float> line(past ? *past : std::vector<float>{});
        const size_t size = a ? reported(tevsIIRSparseGetStateSize_32f, int(b.taps.size()), int(a->taps.size()), int(b.order()), int(a->order()))
                              : reported(tevsFIRSparseGetStateSize_32f, int(b.taps.size()), int(b.order()));
        buffer_ = std::make_unique<Guarded<uint8_t>>(size, at);
        const float* const before = past ? line.data() : nullptr;
        EXPECT_EQ(a ? tevsIIRSparseInit_32f(&iir_, taps.data(), delays.data(), int(b.taps.size()), int(a->taps.size()), before, buffer_->data())
                    : tevsFIRSparseInit_32f(&fir_, taps.data(), delays.data(), int(b.taps.size()), before, buffer_->data()),
                  StatusOk);
    }
    ~Filter() { EXPECT_TRUE(buffer_->intact()); }
    Status operator()(const float* src, float* dst, int len) { return a_ ? tevsIIRSparse_32f(src, dst, len, iir_) : tevsFIRSparse_32f(src, dst, len, fir_); }

private:
    const Terms* a_;
    std::unique_ptr<Guarded<uint8_t>> buffer_;
    FIRSparseState_32f* fir_ = nullptr;
    IIRSparseState_32f* iir_ = nullptr;
};

void check(const Terms& b, const Terms* a, size_t len, bool silence, Place at) {
    const auto x = randomVector<float>(len);
    auto past = randomVector<float>(b.order() + (a ? a->order() : 0));
    if (silence) past.assign(past.size(), 0);
    const auto want = oracle(b, a ? *a : Terms{}, past, x);
    const Guarded<float> src(x, at);
    Guarded<float> dst(len, at);
    Filter whole(b, a, silence ? nullptr : &past, at), parts(b, a, &past);
    ASSERT_EQ(whole(src.data(), dst.data(), int(len)), StatusOk);
    ASSERT_TRUE(dst.intact());
    for (size_t n = 0; n < len; ++n)
        ASSERT_NEAR(dst.data()[n], want[n], 2e-6) << "at " << n << " of " << len << ", orders " << b.order() << ", " << (a ? a->order() : 0);
    // The same bits from blocks of any lengths.
    std::vector<float> y(len);
    for (size_t n = 0, m; n < len; n += m) {
        m = std::min(len - n, size_t(1 + generator()() % (n % 3 ? 7 : 150)));
        ASSERT_EQ(parts(&x[n], &y[n], int(m)), StatusOk);
    }
    ASSERT_TRUE(same(dst.values(), y));
}

const std::vector<int32_t> kDelays[] = {{0}, {3}, {0, 5}, {0, 1, 2, 3, 4, 5, 6}, {7, 8, 9, 64}, {1, 40, 200, 201, 1000}, {0, 16, 31, 33, 63, 65, 300}};
const std::vector<int32_t> kFeedback[] = {{}, {1}, {1, 2, 3}, {2, 9}, {4}, {7, 8}, {8}, {3, 16, 17, 100}, {16, 40}, {33, 70}, {64, 65, 130}, {500}};

TEST(Sparse, FollowsTheFormula) {
    for (const auto& delays : kDelays) {
        const Terms b = terms(delays, 1);
        for (int len = 1; len <= 72; ++len) check(b, nullptr, len == 71 ? 1003 : len == 72 ? 3000 : size_t(len), len % 5 == 0, {len % 16 * 4, len % 2 == 0});
    }
}
TEST(Sparse, FeedsBack) {
    for (const auto& delays : kDelays)
        for (const auto& feedback : kFeedback) {
            const Terms b = terms(delays, 1), a = terms(feedback, 0.9f);
            for (size_t len : {1u, 2u, 3u, 7u, 8u, 9u, 31u, 65u, 300u, 1003u}) check(b, &a, len, len % 5 == 0, {int(len % 13), len % 2 == 0});
        }
}

TEST(Sparse, IgnoresTheControlWords) {
    const Terms b = terms(kDelays[5], 1), a = terms(kFeedback[7], 0.9f);
    const auto x = randomVector<float>(500);
    for (const Terms* feedback : {static_cast<const Terms*>(nullptr), &a})
        expectOwnModes([&] {
            std::vector<float> y(500);
            EXPECT_EQ(Filter(b, feedback, nullptr)(x.data(), y.data(), 500), StatusOk);
            return y;
        });
}

TEST(Sparse, ReportsSizes) {
    int size = 7;
    const auto fir = [&](int count, int order) { return tevsFIRSparseGetStateSize_32f(count, order, &size); };
    const auto iir = [&](int n1, int n2, int o1, int o2) { return tevsIIRSparseGetStateSize_32f(n1, n2, o1, o2, &size); };
    expectEach(StatusFilterLength, {fir(0, -1), fir(INT_MIN, 0), fir(INT_MAX, 0)});
    expectEach(StatusSparseArg,
               {fir(1, -1), fir(1, INT_MIN), fir(1, INT_MAX), iir(1, 0, -1, 0), iir(1, 0, 0, -1), iir(1, 0, INT_MAX, 0), iir(1, 1, INT_MAX / 8, INT_MAX / 8)});
    expectEach(StatusFilterOrder, {iir(0, 0, -1, -1), iir(1, -1, -1, -1), iir(INT_MAX, INT_MAX, 0, 0), iir(INT_MIN, 0, 0, 0)});
    EXPECT_EQ(size, 7);
    for (const auto& [count, order, want] : {std::tuple{2, 5, 128}, {1, 0, 80}, {5, 2, 128}, {4, 1000, 8080}})
        EXPECT_TRUE(fir(count, order) == StatusOk && size == want) << size;
}

TEST(Sparse, ChecksInOrder) {
    const float x[4] = {1, 2, 3, 4};
    float y[2] = {7, 7};
    uint8_t block[256] = {};
    const Ptr mark = block;
    FIRSparseState_32f* fir = mark;
    IIRSparseState_32f* iir = mark;
    const auto initF = [&](std::vector<int32_t> at, int n) { return tevsFIRSparseInit_32f(&fir, x, at.data(), n, nullptr, block); };
    const auto initI = [&](std::vector<int32_t> at, int n1, int n2) { return tevsIIRSparseInit_32f(&iir, x, at.data(), n1, n2, nullptr, block); };
    expectEach(StatusFilterLength, {initF({-1, 5}, 0), initF({0}, INT_MIN), initF({0}, INT_MAX)});
    expectEach(StatusFilterOrder, {initI({-1}, 0, 0), initI({-1}, 1, -1), initI({0}, INT_MAX, INT_MAX)});
    expectEach(StatusSparseArg,
               {initF({0, 0}, 2), initF({-1, 5}, 2), initF({INT_MIN}, 1), initF({3, 2}, 2), initF({INT_MAX}, 1), initF({INT_MAX, INT_MIN}, 2),
                initI({-1, 1}, 1, 1), initI({0, 0}, 1, 1), initI({0, -3}, 1, 1), initI({5, 5}, 2, 0), initI({0, 2, 2}, 1, 2), initI({0, INT_MAX}, 1, 1)});
    EXPECT_TRUE(fir == mark.p && iir == mark.p && std::all_of(block, block + 256, [](uint8_t c) { return c == 0; }));

    ASSERT_EQ(initI({0, 5, 1, 2}, 2, 2), StatusOk);   // delays are compared on each side alone
    EXPECT_EQ(tevsFIRSparse_32f(x, y, 2, Ptr(iir)), StatusContextMismatch);
    ASSERT_EQ(initF({0, 5}, 2), StatusOk);
    EXPECT_EQ(tevsIIRSparse_32f(x, y, 2, Ptr(fir)), StatusContextMismatch);
    EXPECT_TRUE(y[0] == 7 && y[1] == 7);
}

}   // namespace
