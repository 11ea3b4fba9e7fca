#include <climits>

#include "support/erased.h"
#include "tevs.h"

using namespace test;

namespace {

using Change = Status (*)(Ptr src, int, Ptr dst, Ptr dstLen, int factor, Ptr phase);
struct Api {
    const char* name;
    Type type;
    Change up, down;
};
#define SAMPLE(T, CODE) \
    { #CODE, typeOf < T>(), erased < tevsSampleUp_##CODE>, erased < tevsSampleDown_##CODE> }
const Api kApis[] = {SAMPLE(float, 32f),       SAMPLE(Complex32f, 32fc), SAMPLE(double, 64f),
                     SAMPLE(Complex64f, 64fc), SAMPLE(int16_t, 16s),     SAMPLE(Complex16s, 16sc)};
void PrintTo(const Api& api, std::ostream* out) { *out << api.name; }
class Sample : public ::testing::TestWithParam<Api> {};
INSTANTIATE_TEST_SUITE_P(All, Sample, ::testing::ValuesIn(kApis), [](const auto& api) { return std::string(api.param.name); });

// Any bits at all: samples are moved, not computed with.
Vector anySamples(Type type, size_t n) { return {type, randomVector<uint8_t>(n * type.size())}; }

void check(const Api& api, bool up, int len, int factor, int phase) {
    const Vector x = anySamples(api.type, size_t(len));
    Vector want(api.type, up ? size_t(len) * size_t(factor) : 0);
    int left = phase;
    if (up)
        for (size_t k = 0; k < x.size(); ++k) std::memcpy(want.at(k * size_t(factor) + size_t(phase)), x.at(k), api.type.size());
    else
        for (left -= len; left < 0; left += factor) want.bytes.insert(want.bytes.end(), x.at(size_t(len + left)), x.at(size_t(len + left) + 1));
    const Place at{(len + factor % 4) % 4 * int(api.type.size()), phase % 2 == 0};
    const Guarded<uint8_t> src(x.bytes, at);
    Guarded<uint8_t> dst(want.bytes.size(), at);
    int n = -1, p = phase;
    ASSERT_EQ((up ? api.up : api.down)(src.data(), len, dst.data(), &n, factor, &p), StatusOk);
    ASSERT_TRUE(n == int(want.size()) && p == left && dst.intact()) << len << " by " << factor << ", phase " << phase << ": " << n << ", " << p;
    ASSERT_TRUE(same(want.bytes, dst.values())) << len << (up ? " times " : " by ") << factor << ", phase " << phase;
}

const int kFactors[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 15, 16, 17, 18, 33, 64, 100, 1000};

TEST_P(Sample, PutsZerosBetweenOrLeavesSamplesOut) {
    eachLength([](int len) {
        for (const int factor : kFactors)
            for (int phase = 0; phase < factor; phase += factor <= 5 || phase == factor - 2 ? 1 : (factor - 2) / 2) {
                if (len * factor <= 20000) check(GetParam(), true, len, factor, phase);
                check(GetParam(), false, len, factor, phase);
            }
    });
}

// Blocks of any lengths, shorter than the phase too, are one stream.
TEST_P(Sample, StreamsMayBeCutAnywhere) {
    const auto down = GetParam().down;
    const Vector x = anySamples(GetParam().type, 500);
    for (const int factor : kFactors) {
        Vector whole(x.type, 500), parts(x.type, 500);
        int n, p = factor / 2, left = p, total = 0;
        ASSERT_EQ(down(x.at(0), 500, whole, &n, factor, &p), StatusOk);
        for (int at = 0, m, got; at < 500; at += m, total += got) {
            m = std::min(1 + int(generator()() % 9), 500 - at);
            ASSERT_EQ(down(x.at(size_t(at)), m, parts.at(size_t(total)), &got, factor, &left), StatusOk);
        }
        ASSERT_TRUE(total == n && left == p && same(whole, parts)) << factor;
    }
}

// Indices pass what an int holds.
TEST_P(Sample, DownByTheLargestFactors) {
    for (const int phase : {0, 4, 5, INT_MAX - 2, INT_MAX - 1}) {
        check(GetParam(), false, 4, INT_MAX, phase);
        check(GetParam(), false, 5, INT_MAX, phase);
    }
    check(GetParam(), false, 5, INT_MAX - 1, 3);
}

TEST_P(Sample, ChecksInOrder) {
    const Vector x(GetParam().type, 4), y = x;
    for (const Change call : {GetParam().up, GetParam().down}) {
        int n = 77, p = 3, none = -1, least = INT_MIN;
        expectEach(StatusNullPtr, {call(nullptr, 0, y, &n, 0, &p), call(x, 0, y, &n, 0, nullptr)});
        expectEach(StatusBadSize, {call(x, 0, y, &n, 0, &p), call(x, INT_MIN, y, &n, 3, &p)});
        expectEach(StatusSampleFactor, {call(x, 4, y, &n, 0, &p), call(x, 4, y, &n, INT_MIN, &p)});
        expectEach(StatusSamplePhase, {call(x, 4, y, &n, 3, &p), call(x, 4, y, &n, 1, &p), call(x, 4, y, &n, 3, &none), call(x, 4, y, &n, 3, &least)});
        none = 0;
        if (call == GetParam().up) expectEach(StatusBadSize, {call(x, 2, y, &n, INT_MAX / 2 + 1, &none), call(x, INT_MAX, y, &n, INT_MAX, &none)});
        EXPECT_TRUE(n == 77 && p == 3 && least == INT_MIN && same(x, y));
    }
}

}   // namespace
