#include <omp.h>

#include <climits>
#include <cmath>
#include <memory>

#include "support/data.h"
#include "support/guarded.h"
#include "tevcore.h"

using namespace test;

namespace {

using Floats = std::vector<float>;

// y[n] = sum over k of h[k] x[n-k], what lies before x taken from the delay line, newest first.
std::vector<long double> oracle(const Floats& h, const Floats& x, const Floats& before) {
    std::vector<long double> y(x.size());
    for (size_t n = 0; n < x.size(); ++n)
        for (size_t k = 0; k < h.size(); ++k) y[n] += (long double)h[k] * (k <= n ? x[n - k] : before[k - n - 1]);
    return y;
}

// The delay line after x.
Floats pastAfter(const Floats& x, const Floats& before) {
    Floats d(before.size());
    for (size_t k = 0; k < d.size(); ++k) d[k] = k < x.size() ? x[x.size() - 1 - k] : before[k - x.size()];
    return d;
}

// A running sum of n products of random signs grows like n^(1/2) and is rounded n times: its error has a deviation of about n 2^-24 / 4 here, and
// six of these are allowed. A transform's error is below that.
::testing::AssertionResult near(const std::vector<long double>& want, const Floats& got, size_t taps) {
    const long double bound = 1.5L * 0x1p-24L * (long double)taps + 3e-7L;
    for (size_t n = 0; n < want.size(); ++n)
        if (!(std::fabs(want[n] - got[n]) <= bound)) return ::testing::AssertionFailure() << "at " << n << ": want " << double(want[n]) << ", got " << got[n];
    return ::testing::AssertionSuccess();
}

// A record of either lifecycle; the caller's memory has exactly the reported size, at any address, between guard pages.
class Filter {
public:
    Filter(const Floats& h, const float* before, bool owned, int offset = 0) {
        if (owned) {
            EXPECT_EQ(tevsFIRInitAlloc_32f(&state, h.data(), int(h.size()), before), StatusOk);
            return;
        }
        int size = 0;
        EXPECT_EQ(tevsFIRGetStateSize_32f(int(h.size()), &size), StatusOk);
        memory = std::make_unique<Guarded<uint8_t>>(size_t(size), Place{offset, false});
        EXPECT_EQ(tevsFIRInit_32f(&state, h.data(), int(h.size()), before, memory->data()), StatusOk);
    }
    ~Filter() {
        EXPECT_EQ(tevsFIRFree_32f(state), StatusOk);
        EXPECT_TRUE(!memory || memory->intact());
    }
    operator FIRState_32f*() { return state; }
    Floats past(size_t taps) const {
        Guarded<float> d(taps);
        EXPECT_EQ(tevsFIRGetDlyLine_32f(state, d), StatusOk);
        return d.values();
    }

private:
    FIRState_32f* state = nullptr;
    std::unique_ptr<Guarded<uint8_t>> memory;
};

void block(size_t taps, size_t len, bool owned, Place at, int offset) {
    const Floats h = randomVector<float>(taps), x = randomVector<float>(len), before = randomVector<float>(taps);
    const auto want = oracle(h, x, before);
    const Guarded<float> gh(h, at), gbefore(before, at), src(x, at);
    Filter apart(gh.values(), gbefore.data(), owned, offset), inPlace(h, before.data(), owned, offset);
    Guarded<float> dst(len, at), both(x, at);
    ASSERT_EQ(tevsFIR_32f(src.data(), dst, int(len), apart), StatusOk);
    ASSERT_EQ(tevsFIR_32f_I(both, int(len), inPlace), StatusOk);
    ASSERT_TRUE(near(want, dst.values(), taps)) << taps << " taps, " << len << " samples, owned " << owned;
    ASSERT_TRUE(same(dst.values(), both.values())) << taps << " taps, " << len << " samples, owned " << owned;
    ASSERT_TRUE(same(pastAfter(x, before), apart.past(taps)));
    ASSERT_TRUE(same(pastAfter(x, before), inPlace.past(taps)));
    ASSERT_TRUE(dst.intact() && both.intact());
}

TEST(Fir, BlocksEqualConvolution) {
    for (size_t taps = 1; taps <= 70; ++taps) {
        const size_t chunk = ((taps + 3) & ~size_t{3}) + 1;   // where the way through a block changes
        for (size_t len : {size_t{1}, taps, chunk - 1, chunk, chunk + 1, size_t{3} * taps + 7, size_t{97}})
            block(taps, len, taps % 2, Place{int(taps % 4) * 4, taps % 3 != 0}, int(taps % 16));
    }
    for (size_t len = 1; len <= 70; ++len) block(33, len, false, Place{int(len % 4) * 4, len % 2 == 0}, int(len % 16));
}

TEST(Fir, LongBlocksEqualConvolution) {
    for (size_t taps : {16u, 63u, 64u, 65u, 127u, 128u, 511u, 700u})
        for (size_t len : {511u, 512u, 513u, 1000u, 5000u})
            for (bool owned : {false, true}) block(taps, len, owned, {}, 0);
}

TEST(Fir, AnySplitOfAStreamGivesTheSameBits) {
    for (size_t taps : {1u, 2u, 7u, 16u, 33u, 100u}) {
        const Floats h = randomVector<float>(taps), x = randomVector<float>(1500);
        Floats whole(x.size());
        Filter one(h, nullptr, false);
        ASSERT_EQ(tevsFIR_32f(x.data(), whole.data(), int(x.size()), one), StatusOk);
        for (int most : {1, 3, 17, 40, 300}) {
            Floats parts(x.size());
            Filter other(h, nullptr, false);
            for (size_t n = 0; n < x.size();) {
                const int len = std::min(1 + int(generator()() % unsigned(most)), int(x.size() - n));
                ASSERT_EQ(tevsFIR_32f(x.data() + n, parts.data() + n, len, other), StatusOk);
                n += size_t(len);
            }
            ASSERT_TRUE(same(whole, parts)) << taps << " taps, parts up to " << most;
        }
    }
}

// Blocks by FFT, blocks done directly and single samples, in any order on one record.
TEST(Fir, MixesBlocksAndSamples) {
    for (size_t taps : {1u, 5u, 64u, 200u})
        for (bool owned : {false, true}) {
            const Floats h = randomVector<float>(taps), x = randomVector<float>(4000), before = randomVector<float>(taps);
            Floats y(x.size());
            Filter f(h, before.data(), owned);
            for (size_t n = 0; n < x.size();) {
                const int lengths[] = {1, 1, 2, 30, 511, 600};
                const int len = std::min(lengths[generator()() % 6], int(x.size() - n));
                if (len == 1)
                    ASSERT_EQ(tevsFIROne_32f(x[n], &y[n], f), StatusOk);
                else
                    ASSERT_EQ(tevsFIR_32f(&x[n], &y[n], len, f), StatusOk);
                n += size_t(len);
            }
            ASSERT_TRUE(near(oracle(h, x, before), y, taps)) << taps << " taps, owned " << owned;
            ASSERT_TRUE(same(pastAfter(x, before), f.past(taps)));
        }
}

TEST(Fir, TapsAndDelayLineCanBeExchanged) {
    for (bool owned : {false, true}) {
        const Floats first = randomVector<float>(80), h = randomVector<float>(80), x = randomVector<float>(600), before = randomVector<float>(80);
        Filter f(first, nullptr, owned);
        float y;
        tevsFIROne_32f(1.0f, &y, f);   // leaves the past in the middle of its buffer
        const Guarded<float> gh(h), gd(before);
        ASSERT_EQ(tevsFIRSetTaps_32f(gh.data(), f), StatusOk);
        ASSERT_EQ(tevsFIRSetDlyLine_32f(f, gd.data()), StatusOk);
        Guarded<float> read(80), dst(600);
        ASSERT_EQ(tevsFIRGetTaps_32f(f, read), StatusOk);
        EXPECT_TRUE(same(h, read.values()));
        EXPECT_TRUE(same(before, f.past(80)));
        ASSERT_EQ(tevsFIR_32f(x.data(), dst, 600, f), StatusOk);
        EXPECT_TRUE(near(oracle(h, x, before), dst.values(), 80));
        ASSERT_EQ(tevsFIRSetDlyLine_32f(f, nullptr), StatusOk);
        EXPECT_TRUE(same(Floats(80), f.past(80)));
    }
}

TEST(Fir, StatelessFormsRoundOnce) {
    for (size_t taps : {1u, 2u, 3u, 4u, 5u, 31u, 64u}) {
        const Floats h = randomVector<float>(taps), x = randomVector<float>(200);
        const auto want = oracle(h, x, Floats(taps));
        Guarded<float> line(2 * taps), lineInPlace(2 * taps), lineOne(2 * taps), dst(x.size()), both(x), one(x.size());
        for (Guarded<float>* l : {&line, &lineInPlace, &lineOne}) l->assign(Floats(2 * taps));
        const Guarded<float> gh(h);
        int index = 0, indexInPlace = 3 * int(taps), indexOne = -int(taps);   // all the same place in the circle
        for (size_t n = 0; n < x.size(); n += 50) {
            ASSERT_EQ(tevsFIR_Direct_32f(&x[n], dst.data() + n, 50, gh.data(), int(taps), line, &index), StatusOk);
            ASSERT_EQ(tevsFIR_Direct_32f_I(both.data() + n, 50, gh.data(), int(taps), lineInPlace, &indexInPlace), StatusOk);
            for (size_t i = n; i < n + 50; ++i) {
                one.data()[i] = x[i];
                if (i % 2)
                    ASSERT_EQ(tevsFIROne_Direct_32f(x[i], one.data() + i, gh.data(), int(taps), lineOne, &indexOne), StatusOk);
                else
                    ASSERT_EQ(tevsFIROne_Direct_32f_I(one.data() + i, gh.data(), int(taps), lineOne, &indexOne), StatusOk);
            }
        }
        EXPECT_EQ(index, 200 % int(taps));
        for (size_t n = 0; n < x.size(); ++n) ASSERT_LE(std::fabs(want[n] - dst.data()[n]), std::fabs(want[n]) * 0x1.01p-24L + 1e-14L) << taps << " " << n;
        EXPECT_TRUE(same(dst.values(), both.values()));
        EXPECT_TRUE(same(dst.values(), one.values()));
        EXPECT_TRUE(line.intact() && dst.intact());
    }
}

// ---- threads ------------------------------------------------------------------------------------------------------------------------

struct Threads {   // the count while a scope lasts
    explicit Threads(int n) : before(tevGetNumThreads()) { tevSetNumThreads(n); }
    ~Threads() { tevSetNumThreads(before); }
    const int before;
};

TEST(Fir, ThreadsChangeNothing) {
    for (size_t taps : {16u, 64u, 700u})
        for (size_t len : {160000u, 160001u, 200003u}) {
            const Floats h = randomVector<float>(taps), x = randomVector<float>(len);
            for (bool owned : {false, true}) {
                Floats want;
                struct {
                    int built, run;
                } counts[] = {{1, 1}, {2, 2}, {3, 3}, {1, 8}, {3, 1}, {2, -5}};   // also raised and lowered after the record was built
                for (auto c : counts) {
                    std::unique_ptr<Filter> apart, inPlace;
                    {
                        Threads at(c.built);
                        apart = std::make_unique<Filter>(h, nullptr, owned);
                        inPlace = std::make_unique<Filter>(h, nullptr, owned);
                    }
                    Threads at(c.run);
                    Floats y(len), z = x;
                    ASSERT_EQ(tevsFIR_32f(x.data(), y.data(), int(len), *apart), StatusOk);
                    ASSERT_EQ(tevsFIR_32f_I(z.data(), int(len), *inPlace), StatusOk);
                    if (want.empty()) want = y;
                    ASSERT_TRUE(same(want, y)) << taps << " taps, " << len << ", owned " << owned << ", built for " << c.built << ", run with " << c.run;
                    ASSERT_TRUE(same(want, z)) << taps << " taps, " << len << ", owned " << owned << ", built for " << c.built << ", run with " << c.run;
                    ASSERT_TRUE(same(pastAfter(x, Floats(taps)), apart->past(taps)));
                }
            }
        }
}

TEST(Fir, RunsInsideACallersParallelRegion) {
    const Floats h = randomVector<float>(100), x = randomVector<float>(170000);
    Threads two(2);
    Floats want(x.size()), got[3] = {want, want, want};
    Filter alone(h, nullptr, true);
    tevsFIR_32f(x.data(), want.data(), int(x.size()), alone);
    Filter a(h, nullptr, true), b(h, nullptr, true), c(h, nullptr, false);
    FIRState_32f* states[] = {a, b, c};
#pragma omp parallel for num_threads(2)
    for (int i = 0; i < 2; ++i) tevsFIR_32f(x.data(), got[i].data(), int(x.size()), states[i]);
    EXPECT_TRUE(same(want, got[0]));
    EXPECT_TRUE(same(want, got[1]));
}

// ---- the frame ----------------------------------------------------------------------------------------------------------------------

TEST(Fir, StateSizes) {
    struct {
        int taps, threads, size;
    } rows[] = {{8, 1, 16784}, {8, 2, 16800}, {1, 1, 32 + 5 * 16 + 128 + 16384}, {100, 4, 1216 + 2000 + 128 + 4 * (16 + 4092)}};
    for (auto r : rows) {
        Threads at(r.threads);
        int size = 0;
        ASSERT_EQ(tevsFIRGetStateSize_32f(r.taps, &size), StatusOk);
        EXPECT_EQ(size, r.size);
    }
    Floats h(9, 0.5f);
    for (int offset = 0; offset < 16; ++offset) {
        Threads built(1);
        Filter f(h, nullptr, false, offset);
        Threads more(64);   // building does not depend on the count of the moment
        float y;
        EXPECT_EQ(tevsFIROne_32f(2.0f, &y, f), StatusOk);
        EXPECT_EQ(y, 1.0f);
    }
}

TEST(Fir, RejectsBadArguments) {
    const Floats h(4, 1.0f);
    alignas(16) uint8_t foreign[128] = {};
    auto* const stranger = reinterpret_cast<FIRState_32f*>(foreign);
    Filter good(h, nullptr, true);
    FIRState_32f *const mark = stranger, *state = mark;
    Guarded<uint8_t> memory(20000);
    Guarded<float> dst(4), line(8);
    const float src[4] = {};
    const float* const none = nullptr;
    int size = 77, index = 0;
    struct {
        Status want, got;
    } rows[] = {
        {StatusNullPtr, tevsFIRGetStateSize_32f(0, nullptr)},
        {StatusFilterLength, tevsFIRGetStateSize_32f(0, &size)},
        {StatusFilterLength, tevsFIRGetStateSize_32f(INT_MIN, &size)},
        {StatusFilterLength, tevsFIRGetStateSize_32f(INT_MAX, &size)},
        {StatusNullPtr, tevsFIRInit_32f(nullptr, h.data(), 4, none, memory)},
        {StatusNullPtr, tevsFIRInit_32f(&state, none, 0, none, memory)},
        {StatusNullPtr, tevsFIRInit_32f(&state, h.data(), 0, none, nullptr)},
        {StatusFilterLength, tevsFIRInit_32f(&state, h.data(), 0, none, memory)},
        {StatusFilterLength, tevsFIRInit_32f(&state, h.data(), INT_MAX, none, memory)},
        {StatusNullPtr, tevsFIRInitAlloc_32f(nullptr, h.data(), 4, none)},
        {StatusNullPtr, tevsFIRInitAlloc_32f(&state, none, 0, none)},
        {StatusFilterLength, tevsFIRInitAlloc_32f(&state, h.data(), -1, none)},
        {StatusNullPtr, tevsFIRFree_32f(nullptr)},
        {StatusContextMismatch, tevsFIRFree_32f(stranger)},
        {StatusNullPtr, tevsFIRSetTaps_32f(none, stranger)},
        {StatusNullPtr, tevsFIRSetTaps_32f(h.data(), nullptr)},
        {StatusContextMismatch, tevsFIRSetTaps_32f(h.data(), stranger)},
        {StatusNullPtr, tevsFIRGetTaps_32f(stranger, nullptr)},
        {StatusContextMismatch, tevsFIRGetTaps_32f(stranger, dst)},
        {StatusNullPtr, tevsFIRSetDlyLine_32f(nullptr, h.data())},
        {StatusContextMismatch, tevsFIRSetDlyLine_32f(stranger, nullptr)},
        {StatusNullPtr, tevsFIRGetDlyLine_32f(good, nullptr)},
        {StatusContextMismatch, tevsFIRGetDlyLine_32f(stranger, dst)},
        {StatusNullPtr, tevsFIR_32f(none, dst, 0, stranger)},
        {StatusNullPtr, tevsFIR_32f(src, nullptr, 0, stranger)},
        {StatusNullPtr, tevsFIR_32f(src, dst, 0, nullptr)},
        {StatusBadSize, tevsFIR_32f(src, dst, 0, stranger)},
        {StatusBadSize, tevsFIR_32f(src, dst, INT_MIN, good)},
        {StatusContextMismatch, tevsFIR_32f(src, dst, 4, stranger)},
        {StatusNullPtr, tevsFIR_32f_I(nullptr, 4, good)},
        {StatusContextMismatch, tevsFIR_32f_I(dst, 4, stranger)},
        {StatusNullPtr, tevsFIROne_32f(1, nullptr, good)},
        {StatusNullPtr, tevsFIROne_32f(1, dst, nullptr)},
        {StatusContextMismatch, tevsFIROne_32f(1, dst, stranger)},
        {StatusNullPtr, tevsFIR_Direct_32f(none, dst, 0, none, 0, line, &index)},
        {StatusNullPtr, tevsFIR_Direct_32f(src, nullptr, 0, none, 0, line, &index)},
        {StatusBadSize, tevsFIR_Direct_32f(src, dst, 0, none, 0, line, &index)},
        {StatusNullPtr, tevsFIR_Direct_32f(src, dst, 4, none, 0, line, &index)},
        {StatusFilterLength, tevsFIR_Direct_32f(src, dst, 4, h.data(), 0, nullptr, &index)},
        {StatusNullPtr, tevsFIR_Direct_32f(src, dst, 4, h.data(), 4, nullptr, &index)},
        {StatusNullPtr, tevsFIR_Direct_32f(src, dst, 4, h.data(), 4, line, nullptr)},
        {StatusNullPtr, tevsFIROne_Direct_32f(1, nullptr, h.data(), 4, line, &index)},
        {StatusFilterLength, tevsFIROne_Direct_32f(1, dst, h.data(), 0, line, &index)},
        {StatusNullPtr, tevsFIROne_Direct_32f_I(dst, none, 4, line, &index)},
    };
    int row = 0;
    for (auto r : rows) EXPECT_EQ(r.got, r.want) << "row " << row++;
    EXPECT_EQ(size, 77);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(state, mark);
    EXPECT_TRUE(dst.untouched() && line.untouched() && memory.untouched());
    EXPECT_TRUE(same(Floats(4), good.past(4)));
}

TEST(Fir, IgnoresAndKeepsTheCallersRounding) {
    const Floats h = randomVector<float>(70), x = randomVector<float>(3000);
    for (bool owned : {false, true}) {
        Floats want(x.size()), got(x.size());
        Filter a(h, nullptr, owned), b(h, nullptr, owned);
        tevsFIR_32f(x.data(), want.data(), int(x.size()), a);
        const uint32_t before = tev_set_rc_ssx(3);
        tevsFIR_32f(x.data(), got.data(), int(x.size()), b);
        EXPECT_EQ(tev_set_cw_ssx(before) >> 13 & 3, 3u);
        EXPECT_TRUE(same(want, got));
    }
}

}   // namespace
