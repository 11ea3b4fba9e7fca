#include <algorithm>
#include <array>
#include <bit>
#include <climits>
#include <cmath>
#include <memory>
#include <span>

#include "support/control_words.h"
#include "support/elements.h"

using namespace test;

namespace {

int upTo(int n) { return int(generator()() % uint64_t(n)); }
std::vector<uint8_t> randomBits(int n) {
    std::vector<uint8_t> v(size_t(n), 0);
    for (auto& b : v) b = uint8_t(generator()());
    return v;
}
std::vector<int8_t> randomSoft(int n) {
    std::vector<int8_t> v(size_t(n), 0);
    for (auto& x : v) x = std::array<int8_t, 4>{int8_t(generator()()), -128, 127, int8_t(upTo(3) - 1)}[size_t(upTo(4))];
    return v;
}

// ---- oracles ----------------------------------------------------------------------------------------------------------------------------------

struct Code {
    int constraintLen;
    std::vector<int> poly;
    int states() const { return 1 << (constraintLen - 1); }
    int polys() const { return int(poly.size()); }
    std::vector<int> outputs(int s, int u) const {
        std::vector<int> y;
        for (int p : poly) y.push_back(std::popcount(unsigned((u * states() + s) & p & (2 * states() - 1))) % 2);
        return y;
    }
};
const Code kSeven = {7, {0171, 0133}};
Code randomCode(int constraintLen, int polys) {
    Code c{constraintLen, {}};
    for (int i = 0; i < polys; ++i) c.poly.push_back(int(generator()()));
    return c;
}

std::vector<uint8_t> encoded(const Code& c, const std::vector<uint8_t>& bits, int state = 0) {
    std::vector<uint8_t> v;
    for (uint8_t b : bits) {
        for (int y : c.outputs(state, b & 1)) v.push_back(uint8_t(y));
        state = ((b & 1) * c.states() + state) / 2;
    }
    return v;
}

std::vector<int8_t> hard(const std::vector<uint8_t>& code, int magnitude = 64) {
    std::vector<int8_t> v;
    for (uint8_t b : code) v.push_back(int8_t(b & 1 ? -magnitude : magnitude));
    return v;
}

struct Branch {
    int from, input, symbol;
};
// A decoder that compares whole paths' metrics in 64 bits and keeps every survivor's last branches.
class Slow {
public:
    Slow(int states, int traceLen) : in_(size_t(states)), metric_(size_t(states)), traceLen_(traceLen) { reset(0); }
    // Branches by rising state and input.
    void add(int to, Branch b) { in_[size_t(to)].push_back(b); }
    void reset(int start) {
        for (int i = 0; i < int(metric_.size()); ++i) metric_[size_t(i)] = start == StateAny || start == i ? 0 : INT64_MIN;
        steps_.clear();
    }
    template <class M> std::vector<uint8_t> step(const M* row) {
        std::vector<int64_t> next(metric_.size(), INT64_MIN);
        steps_.emplace_back(metric_.size());
        for (size_t t = 0; t < in_.size(); ++t)
            for (const Branch& b : in_[t])
                if (const int64_t m = metric_[size_t(b.from)]; m != INT64_MIN && m + row[b.symbol] > next[t]) {
                    next[t] = m + row[b.symbol];
                    steps_.back()[t] = b;
                }
        metric_ = next;
        if (int(steps_.size()) < 2 * traceLen_) return {};
        auto inputs = trace(best());
        inputs.resize(size_t(traceLen_));
        steps_.erase(steps_.begin(), steps_.begin() + traceLen_);
        return inputs;
    }
    std::vector<uint8_t> flush(int end) {
        const auto inputs = trace(end == StateAny || metric_[size_t(end)] == INT64_MIN ? best() : end);
        reset(end);
        return inputs;
    }

private:
    int best() const { return int(std::max_element(metric_.begin(), metric_.end()) - metric_.begin()); }
    std::vector<uint8_t> trace(int state) const {
        std::vector<uint8_t> v(steps_.size());
        for (size_t n = v.size(); n-- > 0; state = steps_[n][size_t(state)].from) v[n] = uint8_t(steps_[n][size_t(state)].input);
        return v;
    }
    std::vector<std::vector<Branch>> in_, steps_;
    std::vector<int64_t> metric_;
    int traceLen_;
};
Slow slow(const Code& c, int traceLen) {
    Slow d(c.states(), traceLen);
    for (int s = 0; s < c.states(); ++s)
        for (int u : {0, 1}) {
            int symbol = 0;
            for (int y : c.outputs(s, u)) symbol = 2 * symbol + y;
            d.add((u * c.states() + s) / 2, {s, u, symbol});
        }
    return d;
}
std::vector<int16_t> rowOf(const int8_t* soft, int polys) {
    std::vector<int16_t> row(size_t(1) << polys);
    for (size_t y = 0; y < row.size(); ++y)
        for (int i = 0; i < polys; ++i) row[y] = int16_t(row[y] + (y >> (polys - 1 - i) & 1 ? -soft[i] : soft[i]));
    return row;
}

// ---- the library's --------------------------------------------------------------------------------------------------------------------------

struct Free {
    void operator()(ViterbiState* s) const { EXPECT_EQ(tevsViterbiFree(s), StatusOk); }
};
using Decoder = std::unique_ptr<ViterbiState, Free>;
Decoder decoder(const Code& c, int traceLen) {
    ViterbiState* s = nullptr;
    EXPECT_EQ(tevsViterbiInitAlloc(&s, c.poly.data(), c.polys(), c.constraintLen, traceLen), StatusOk);
    return Decoder(s);
}
// By the tables of the code.
Decoder tableDecoder(const Code& c, int traceLen) {
    std::vector<int16_t> next(size_t(2) << (c.constraintLen - 1));
    std::vector<uint8_t> symbols(next.size());
    EXPECT_EQ(tevsViterbiNext_16s(next.data(), c.constraintLen), StatusOk);
    EXPECT_EQ(tevsViterbiSymbols_8u(c.poly.data(), symbols.data(), c.polys(), c.constraintLen), StatusOk);
    ViterbiState* s = nullptr;
    EXPECT_EQ(tevsViterbiInitAlloc_Table(&s, next.data(), symbols.data(), c.states(), 2, 1 << c.polys(), traceLen), StatusOk);
    return Decoder(s);
}

// Appends what a call releases, which keeps to its bound.
void take(std::vector<uint8_t>& to, size_t most, auto call) {
    Guarded<uint8_t> out(most);
    int got = -1;
    ASSERT_EQ(call(out.data(), &got), StatusOk);
    ASSERT_TRUE(got >= 0 && size_t(got) <= most && out.intact());
    const auto v = out.values();
    to.insert(to.end(), v.begin(), v.begin() + got);
}
void feed(std::vector<uint8_t>& to, const Decoder& d, const std::vector<int8_t>& soft, int polys, int traceLen, bool cut) {
    const int len = int(soft.size()) / polys;
    for (int at = 0, n; at < len; at += n) {
        n = cut ? std::min(len - at, 1 + upTo(3 * traceLen)) : len;
        const Guarded<int8_t> in(std::span<const int8_t>(soft).subspan(size_t(at * polys), size_t(n * polys)));
        take(to, size_t(n + traceLen - 1), [&](uint8_t* dst, int* got) { return tevsViterbi_8s8u(in.data(), n, dst, got, d.get()); });
    }
}
void feed(std::vector<uint8_t>& to, const Decoder& d, const std::vector<int16_t>& rows, int width, int traceLen, bool cut) {
    const int len = int(rows.size()) / width;
    for (int at = 0, n; at < len; at += n) {
        n = cut ? std::min(len - at, 1 + upTo(3 * traceLen)) : len;
        take(to, size_t(n + traceLen - 1), [&](uint8_t* dst, int* got) { return tevsViterbi_16s8u(&rows[size_t(at * width)], n, dst, got, d.get()); });
    }
}
void flush(std::vector<uint8_t>& to, const Decoder& d, int traceLen, int end) {
    take(to, size_t(2 * traceLen - 1), [&](uint8_t* dst, int* got) { return tevsViterbiFlush_8u(dst, got, end, d.get()); });
}

// Frames of both kinds of metrics, by records of both kinds, against the slow one.
void compare(const Code& c, int traceLen, int len, bool slowly = true) {
    SCOPED_TRACE(::testing::Message() << "K " << c.constraintLen << ", " << c.polys() << " polynomials, traceLen " << traceLen << ", len " << len);
    const Decoder d = decoder(c, traceLen), rows = decoder(c, traceLen), table = tableDecoder(c, traceLen);
    Slow want = slow(c, traceLen);
    for (int frame = 0; frame < 3; ++frame) {
        const int end = frame == 1 ? StateAny : upTo(c.states());
        auto soft = randomSoft(len * c.polys());
        if (frame == 0 && len % 2) soft = hard(encoded(c, randomBits(len), c.states() / 2), 127);   // all for a path that begins where it cannot
        if (frame == 2) std::fill(soft.begin(), soft.end(), int8_t(0));                             // every choice is between equals
        std::vector<uint8_t> expected, got, byRows, byTable;
        std::vector<int16_t> metrics(size_t(len) << c.polys());
        ASSERT_EQ(tevsViterbiMetric_8s16s(soft.data(), metrics.data(), len, c.polys()), StatusOk);
        for (int n = 0; n < len && slowly; ++n) {
            const auto row = rowOf(&soft[size_t(n * c.polys())], c.polys());
            ASSERT_TRUE(std::equal(row.begin(), row.end(), &metrics[size_t(n) << c.polys()]));
            for (uint8_t b : want.step(row.data())) expected.push_back(b);
        }
        for (uint8_t b : want.flush(end)) expected.push_back(b);
        feed(got, d, soft, c.polys(), traceLen, frame != 1);
        flush(got, d, traceLen, end);
        feed(byTable, table, metrics, 1 << c.polys(), traceLen, frame != 1);
        flush(byTable, table, traceLen, end);
        feed(byRows, rows, metrics, 1 << c.polys(), traceLen, frame != 1);
        flush(byRows, rows, traceLen, end);
        if (!slowly) expected = byTable;
        ASSERT_TRUE(same(expected, got)) << "soft bits, frame " << frame;
        ASSERT_TRUE(same(expected, byRows)) << "branch metrics, frame " << frame;
        ASSERT_TRUE(same(expected, byTable)) << "table, frame " << frame;
        if (frame == 0) {
            for (const auto* p : {&d, &rows, &table}) ASSERT_EQ(tevsViterbiReset(p->get(), c.states() - 1), StatusOk);
            want.reset(c.states() - 1);
        }
    }
}

TEST(Viterbi, IsTheBestPathOfEveryCode) {
    for (int constraintLen = 2; constraintLen <= 11; ++constraintLen)
        for (int polys = 1; polys <= 8; ++polys)
            for (int i = 0; i < (constraintLen < 9 ? 4 : 1); ++i) compare(randomCode(constraintLen, polys), 1 + upTo(5 * constraintLen), 1 + upTo(200));
    for (const Code& c : {kSeven, Code{7, {0171, 0133, 0165}}, Code{9, {0557, 0663, 0711}}, Code{5, {023, 033}}, Code{3, {7, 5}}, Code{9, {0777, 0777}}})
        for (int traceLen : {1, 2, 35, 70})
            for (int len : {1, 2, 5, 6, 7, 69, 70, 71, 140, 500, 1003}) compare(c, traceLen, len);
    compare({15, {046321, 051271, 070535}}, 40, 90);
    compare(randomCode(15, 8), 7, 40);
    // Metrics far apart for long: all polynomials, and all bits of one sign or the other.
    compare({15, std::vector<int>(8, 077777)}, 100, 700, false);
    compare(randomCode(13, 8), 64, 3000, false);
    compare(kSeven, 1000, 30000, false);
}

TEST(Viterbi, IsTheMostLikelyFrame) {
    const Code c = {4, {017, 013}};
    for (int frame = 0; frame < 20; ++frame) {
        const auto soft = randomSoft(2 * 12);
        const Decoder d = decoder(c, 12);
        std::vector<uint8_t> got;
        feed(got, d, soft, 2, 12, false);
        flush(got, d, 12, StateAny);
        const auto metric = [&](const std::vector<uint8_t>& bits) {
            const auto code = encoded(c, bits);
            int sum = 0;
            for (size_t i = 0; i < code.size(); ++i) sum += code[i] ? -soft[i] : soft[i];
            return sum;
        };
        const int reached = metric(got);
        std::vector<uint8_t> bits(12);
        for (int word = 0; word < 4096; ++word) {
            for (size_t i = 0; i < 12; ++i) bits[i] = uint8_t(word >> i & 1);
            ASSERT_LE(metric(bits), reached);
        }
    }
}

std::vector<uint8_t> ended(std::vector<uint8_t> bits, int constraintLen) {
    for (auto& b : bits) b &= 1;
    std::fill(bits.end() - (constraintLen - 1), bits.end(), uint8_t(0));
    return bits;
}

TEST(Viterbi, CorrectsFourErrors) {   // of the code of free distance 10
    const auto bits = ended(randomBits(18), 7);
    auto soft = hard(encoded(kSeven, bits));
    const Decoder d = decoder(kSeven, 20);
    std::vector<uint8_t> got;
    for (size_t a = 0; a < soft.size(); ++a)
        for (size_t b = a; b < soft.size(); ++b)
            for (size_t c = b; c < soft.size(); c += 2)
                for (size_t e = c; e < soft.size(); e += 3) {
                    auto wrong = soft;
                    for (size_t i : {a, b, c, e}) wrong[i] = int8_t(-soft[i]);
                    uint8_t out[64];
                    int n = 0;
                    ASSERT_EQ(tevsViterbi_8s8u(wrong.data(), 18, out, &n, d.get()), StatusOk);
                    ASSERT_EQ(n, 0);
                    ASSERT_EQ(tevsViterbiFlush_8u(out, &n, 0, d.get()), StatusOk);
                    ASSERT_TRUE(n == 18 && std::equal(bits.begin(), bits.end(), out));
                }
}

// Over white noise at 3 dB: 3.5e-4 of the bits are wrong, below the union bound of 5.8e-4 (Heller and Jacobs).
TEST(Viterbi, ErrorRateOverNoise) {
    constexpr int n = 1000000;
    auto bits = ended(randomBits(n), 7);
    const auto code = encoded(kSeven, bits);
    std::vector<double> noise(code.size());
    uint32_t seed = 77;
    tevsRandGauss_Direct_64f(noise.data(), int(noise.size()), 0, 32 / std::sqrt(std::pow(10, 0.3)), &seed);   // Es = Eb / 2
    std::vector<int8_t> soft(code.size());
    for (size_t i = 0; i < code.size(); ++i) soft[i] = int8_t(std::clamp(std::lrint((code[i] ? -32 : 32) + noise[i]), -128l, 127l));
    const Decoder d = decoder(kSeven, 70);
    std::vector<uint8_t> got;
    feed(got, d, soft, 2, 70, false);
    flush(got, d, 70, 0);
    int wrong = 0;
    for (size_t i = 0; i < bits.size(); ++i) wrong += got[i] != bits[i];
    EXPECT_GT(wrong, 2.6e-4 * n);
    EXPECT_LT(wrong, 4.4e-4 * n);
}

TEST(Viterbi, TailsThatBite) {
    const auto bits = ended(randomBits(90), 1);
    int start = 0;
    for (size_t i = 84; i < 90; ++i) start = start >> 1 | bits[i] << 5;
    auto soft = hard(encoded(kSeven, bits, start));
    soft[50] = soft[51] = soft[80] = soft[81] = 0;
    soft.insert(soft.end(), soft.begin(), soft.end());
    const Decoder d = decoder(kSeven, 180);
    ASSERT_EQ(tevsViterbiReset(d.get(), StateAny), StatusOk);
    std::vector<uint8_t> got;
    feed(got, d, soft, 2, 180, false);
    flush(got, d, 180, StateAny);
    for (size_t i = 45; i < 135; ++i) ASSERT_EQ(got[i], bits[i % 90]) << i;
}

TEST(Viterbi, PuncturedRates) {
    for (const std::vector<uint8_t>& pattern : {std::vector<uint8_t>{1, 1, 0, 1}, {1, 1, 0, 1, 7, 0}, {1, 1, 0, 1, 0, 1, 0, 1, 1, 0, 0, 1, 1, 0}}) {
        const int len = 1001, p = int(pattern.size());
        const auto bits = ended(randomBits(len), 7);
        auto code = encoded(kSeven, bits);
        std::vector<uint8_t> want, sent(code.size(), 9);
        for (size_t i = 0; i < code.size(); ++i)
            if (pattern[i % pattern.size()]) want.push_back(code[i]);
        int phase = 0, kept = 0, more = 0;
        ASSERT_EQ(tevsViterbiPuncture_8u(code.data(), 777, sent.data(), &kept, pattern.data(), p, &phase), StatusOk);
        ASSERT_EQ(phase, 777 % p);
        ASSERT_EQ(tevsViterbiPuncture_8u(&code[777], 2 * len - 777, &code[777], &more, pattern.data(), p, &phase), StatusOk);   // in place
        std::copy_n(&code[777], more, &sent[size_t(kept)]);
        ASSERT_EQ(size_t(kept + more), want.size());
        ASSERT_TRUE(std::equal(want.begin(), want.end(), sent.begin()));
        ASSERT_EQ(sent[want.size()], 9);
        const Guarded<int8_t> received(hard(want));
        std::vector<int8_t> soft(code.size(), 99);
        int at = 0, taken = -1, place = 0;
        for (int first = 0, n = 5; first < 2 * len; first += n, at += taken, n = std::min(n * 2, 2 * len - first))
            ASSERT_EQ(tevsViterbiDepuncture_8s(received.data() + at, &taken, &soft[size_t(first)], n, pattern.data(), p, &place), StatusOk);
        ASSERT_EQ(at, int(want.size()));
        const Decoder d = decoder(kSeven, 100);
        std::vector<uint8_t> got;
        feed(got, d, soft, 2, 100, true);
        flush(got, d, 100, 0);
        ASSERT_TRUE(same(bits, got)) << p;
    }
}

// Any trellis, with states that nothing leads to and branches that run side by side.
TEST(Viterbi, AnyTrellis) {
    for (const auto& [states, inputs, symbols, traceLen] : {std::array{8, 4, 8, 20}, {1, 1, 1, 1}, {5, 3, 256, 7}, {100, 16, 17, 3}, {16384, 16, 4, 2}}) {
        std::vector<int16_t> next(size_t(states * inputs)), rows(size_t(symbols * 61));
        std::vector<uint8_t> symbol(next.size());
        Slow want(states, traceLen);
        for (size_t i = 0; i < next.size(); ++i) {
            next[i] = int16_t(upTo(states) / 2 * 2 % states);
            symbol[i] = uint8_t(upTo(symbols));
            want.add(next[i], {int(i) / inputs, int(i) % inputs, symbol[i]});
        }
        ViterbiState* s = nullptr;
        ASSERT_EQ(tevsViterbiInitAlloc_Table(&s, next.data(), symbol.data(), states, inputs, symbols, traceLen), StatusOk);
        const Decoder d(s);
        for (int end : {int{StateAny}, std::min(1, states - 1), 0}) {
            for (auto& m : rows) m = end ? int16_t(generator()()) : int16_t(upTo(2));
            std::vector<uint8_t> expected, got;
            for (size_t n = 0; n < 61; ++n)
                for (uint8_t b : want.step(&rows[n * size_t(symbols)])) expected.push_back(b);
            for (uint8_t b : want.flush(end)) expected.push_back(b);
            feed(got, d, rows, symbols, traceLen, true);
            flush(got, d, traceLen, end);
            ASSERT_TRUE(same(expected, got)) << states << " states, to " << end;
        }
    }
}

// ---- pieces -----------------------------------------------------------------------------------------------------------------------------------

TEST(ViterbiEncode, FollowsTheRegister) {
    const uint8_t one[7] = {0xff, 0, 2, 0, 0, 0, 0};
    uint8_t out[14];
    int shift = 0;
    ASSERT_EQ(tevsViterbiEncode_8u(one, out, 7, kSeven.poly.data(), 2, 7, &shift), StatusOk);
    const uint8_t want[] = {1, 1, 1, 0, 1, 1, 1, 1, 0, 0, 0, 1, 1, 1};
    EXPECT_TRUE(std::equal(out, out + 14, want) && shift == 0);
    for (int constraintLen = 2; constraintLen <= 15; ++constraintLen)
        for (int polys = 1; polys <= 8; ++polys) {
            const Code c = randomCode(constraintLen, polys);
            const int start = upTo(c.states()), len = 3000;
            const auto bits = randomBits(len);
            std::vector<uint8_t> got;
            int state = start;
            for (int at = 0, n; at < len; at += n) {
                n = std::min(len - at, 1 + upTo(at < 1000 ? 70 : 2500));
                const Guarded<uint8_t> in(std::span<const uint8_t>(bits).subspan(size_t(at), size_t(n)));
                Guarded<uint8_t> code(size_t(n * polys), Place{at % 3, at % 2 == 0});
                ASSERT_EQ(tevsViterbiEncode_8u(in.data(), code, n, c.poly.data(), polys, constraintLen, &state), StatusOk);
                ASSERT_TRUE(code.intact());
                const auto v = code.values();
                got.insert(got.end(), v.begin(), v.end());
            }
            ASSERT_TRUE(same(encoded(c, bits, start), got)) << constraintLen << " " << polys;
            std::vector<uint8_t> symbols(size_t(2 * c.states()));
            std::vector<int16_t> next(symbols.size());
            ASSERT_EQ(tevsViterbiSymbols_8u(c.poly.data(), symbols.data(), polys, constraintLen), StatusOk);
            ASSERT_EQ(tevsViterbiNext_16s(next.data(), constraintLen), StatusOk);
            for (int i = 0; i < 2 * c.states(); ++i) {
                int symbol = 0;
                for (int y : c.outputs(i / 2, i % 2)) symbol = 2 * symbol + y;
                ASSERT_TRUE(symbols[size_t(i)] == symbol && next[size_t(i)] == (i % 2 * c.states() + i / 2) / 2);
            }
        }
}

TEST(ViterbiMetric, OfAConstellation) {
    const float nan = NAN, inf = INFINITY;
    for (const auto& [numPoints, numSymbols] : {std::array{4, 4}, {32, 8}, {8, 1}, {512, 2}, {256, 256}}) {
        auto points = randomVector<Complex32f>(size_t(numPoints));
        points[0] = {nan, 0};
        if (numPoints == 32) points[5] = {inf, 0}, points[9] = points[8], points[12] = points[13] = points[14] = points[15] = {0, nan};
        eachLength([&](int len) {
            const int each = numPoints / numSymbols, rows = len * numSymbols;
            if (numPoints > 32 && len % 16 != 1) return;
            auto x = randomVector<Complex32f>(size_t(len));
            x[size_t(len) - 1] = {nan, 1};
            const Guarded<Complex32f> src(x);
            for (float scale : {100.0f, 4000.0f, -1e9f}) {
                Guarded<int16_t> dst{size_t(rows)}, bare{size_t(rows)};
                Guarded<uint8_t> indx{size_t(rows)};
                ASSERT_EQ(tevsViterbiMetric_32fc16s(src.data(), dst, indx, len, points.data(), numPoints, numSymbols, scale), StatusOk);
                ASSERT_EQ(tevsViterbiMetric_32fc16s(src.data(), bare, nullptr, len, points.data(), numPoints, numSymbols, scale), StatusOk);
                ASSERT_TRUE(same(dst.values(), bare.values()));
                for (int i = 0; i < rows; ++i) {
                    float least = nan;
                    int place = 0;
                    for (int k = 0; k < each; ++k) {
                        const Complex32f p = points[size_t(i % numSymbols * each + k)], z = x[size_t(i / numSymbols)];
                        const volatile float re = z.re - p.re, im = z.im - p.im, a = re * re, b = im * im, d = a + b;
                        if (!std::isnan(d) && (std::isnan(least) || d < least)) least = d, place = k;
                    }
                    const float metric = -(scale * least);
                    const int16_t want = std::isnan(metric) ? -32768 : nearest<int16_t>(metric, 0);
                    ASSERT_TRUE(dst.data()[i] == want && indx.data()[i] == place) << numPoints << " " << len << " at " << i;
                }
            }
        });
    }
}

// ---- the frame ----------------------------------------------------------------------------------------------------------------------------------

TEST(Viterbi, RecordsAtAnyAddressAndInAnyMode) {
    const auto soft = randomSoft(2000);
    const Complex32f points[4] = {{1, 0}, {0, 1}, {-1, 0}, {0.3f, -1}};
    const auto x = randomVector<Complex32f>(100);
    expectOwnModes([&] {
        std::vector<uint8_t> all;
        for (int offset : {0, 1, 7, 15}) {
            int size = 0, tableSize = 0;
            EXPECT_EQ(tevsViterbiGetStateSize(7, 2, 30, &size), StatusOk);
            EXPECT_EQ(tevsViterbiGetStateSize_Table(3, 2, 4, 30, &tableSize), StatusOk);
            Guarded<uint8_t> memory(size_t(size), Place{offset, true}), other(size_t(tableSize), Place{offset, false});
            ViterbiState *s = nullptr, *table = nullptr;
            const int16_t next[] = {0, 1, 2, 0, 1, 2};
            const uint8_t symbols[] = {0, 1, 2, 3, 0, 1};
            EXPECT_EQ(tevsViterbiInit(&s, kSeven.poly.data(), 2, 7, 30, memory), StatusOk);
            EXPECT_EQ(tevsViterbiInit_Table(&table, next, symbols, 3, 2, 4, 30, other), StatusOk);
            EXPECT_EQ(uintptr_t(s) % 16, 0u);
            std::vector<uint8_t> out(1029);
            std::vector<int16_t> rows(400);
            int n = 0;
            EXPECT_EQ(tevsViterbi_8s8u(soft.data(), 1000, out.data(), &n, s), StatusOk);
            EXPECT_EQ(tevsViterbiMetric_32fc16s(x.data(), rows.data(), nullptr, 100, points, 4, 4, 100), StatusOk);
            all.insert(all.end(), out.begin(), out.begin() + n);
            EXPECT_EQ(tevsViterbi_16s8u(rows.data(), 100, out.data(), &n, table), StatusOk);
            all.insert(all.end(), out.begin(), out.begin() + n);
            EXPECT_EQ(tevsViterbiFree(s), StatusOk);
            EXPECT_EQ(tevsViterbiFree(table), StatusOk);
            EXPECT_EQ(tevsViterbiFlush_8u(out.data(), &n, 0, s), StatusOk);   // they remain
            EXPECT_EQ(n, 1000 - 960);
            EXPECT_TRUE(memory.intact() && other.intact());
        }
        return all;
    });
}

TEST(Viterbi, BadArguments) {
    int size = 7, n = 7, phase = 0;
    const int* poly = kSeven.poly.data();
    const int16_t next[] = {0, 1}, wrong[] = {0, 2}, below[] = {0, -1}, rows[] = {0, 0, 0, 0};
    const uint8_t symbols[] = {0, 1}, large[] = {0, 2};
    const int8_t soft[] = {1, 1};
    uint8_t out[64] = {7};
    int16_t metrics[4] = {7};
    const Complex32f z[2] = {};
    uint32_t stranger[32] = {1};
    ViterbiState *mark = reinterpret_cast<ViterbiState*>(stranger), *s = mark;
    EXPECT_EQ(tevsViterbiGetStateSize(1, 0, 0, nullptr), StatusNullPtr);
    for (const auto& [k, polys, trace] : {std::array{1, 2, 9}, {16, 2, 9}, {7, 0, 9}, {7, 9, 9}, {7, 2, 0}, {7, 2, INT_MAX}, {15, 2, 1 << 20}}) {
        EXPECT_EQ(tevsViterbiGetStateSize(k, polys, trace, &size), StatusBadSize) << k << " " << polys << " " << trace;
        EXPECT_EQ(tevsViterbiInitAlloc(&s, poly, polys, k, trace), StatusBadSize);
        EXPECT_EQ(tevsViterbiInit(&s, poly, polys, k, trace, out), StatusBadSize);
    }
    for (const auto& [states, inputs, syms, trace] :
         {std::array{0, 1, 1, 1}, {16385, 1, 1, 1}, {1, 0, 1, 1}, {1, 17, 1, 1}, {1, 1, 0, 1}, {1, 1, 257, 1}, {1, 1, 1, 0}, {16384, 16, 4, 20000}}) {
        EXPECT_EQ(tevsViterbiGetStateSize_Table(states, inputs, syms, trace, &size), StatusBadSize) << states << " " << inputs << " " << syms;
        EXPECT_EQ(tevsViterbiInitAlloc_Table(&s, next, symbols, states, inputs, syms, trace), StatusBadSize);
        EXPECT_EQ(tevsViterbiInit_Table(&s, next, symbols, states, inputs, syms, trace, out), StatusBadSize);
    }
    EXPECT_EQ(tevsViterbiInitAlloc_Table(&s, wrong, symbols, 2, 1, 2, 5), StatusBadArg);
    EXPECT_EQ(tevsViterbiInitAlloc_Table(&s, below, symbols, 2, 1, 2, 5), StatusBadArg);
    EXPECT_EQ(tevsViterbiInit_Table(&s, next, large, 2, 1, 2, 5, out), StatusBadArg);
    EXPECT_EQ(tevsViterbiInitAlloc(&s, nullptr, 0, 0, 0), StatusNullPtr);
    EXPECT_EQ(tevsViterbiInit(&s, poly, 0, 0, 0, nullptr), StatusNullPtr);
    EXPECT_EQ(tevsViterbiInit_Table(&s, next, nullptr, 0, 0, 0, 0, out), StatusNullPtr);
    EXPECT_EQ(s, mark);

    const Decoder code = decoder(kSeven, 5);
    ViterbiState* made = nullptr;
    ASSERT_EQ(tevsViterbiInitAlloc_Table(&made, next, symbols, 2, 1, 2, 5), StatusOk);
    const Decoder table(made);
    EXPECT_EQ(tevsViterbi_8s8u(soft, 0, out, nullptr, code.get()), StatusNullPtr);
    EXPECT_EQ(tevsViterbi_8s8u(soft, 0, out, &n, mark), StatusBadSize);
    EXPECT_EQ(tevsViterbi_8s8u(soft, 1, out, &n, mark), StatusContextMismatch);
    EXPECT_EQ(tevsViterbi_8s8u(soft, 1, out, &n, table.get()), StatusContextMismatch);
    EXPECT_EQ(tevsViterbi_16s8u(rows, 1, out, &n, mark), StatusContextMismatch);
    EXPECT_EQ(tevsViterbi_16s8u(rows, -1, out, &n, table.get()), StatusBadSize);
    for (const auto& [d, states] : {std::pair{code.get(), 64}, {table.get(), 2}})
        for (int state : {-2, states, INT_MAX}) {
            EXPECT_EQ(tevsViterbiReset(d, state), StatusBadArg);
            EXPECT_EQ(tevsViterbiFlush_8u(out, &n, state, d), StatusBadArg);
        }
    EXPECT_TRUE(n == 7 && out[0] == 7);
    EXPECT_EQ(tevsViterbi_8s8u(soft, 1, out, &n, code.get()), StatusOk);
    EXPECT_EQ(tevsViterbi_16s8u(rows, 1, out, &n, code.get()), StatusContextMismatch);
    EXPECT_EQ(tevsViterbiReset(code.get(), 3), StatusOk);
    EXPECT_EQ(tevsViterbi_16s8u(rows, 1, out, &n, code.get()), StatusOk);
    EXPECT_EQ(tevsViterbi_8s8u(soft, 1, out, &n, code.get()), StatusContextMismatch);
    EXPECT_EQ(tevsViterbiFlush_8u(out, &n, StateAny, code.get()), StatusOk);
    EXPECT_EQ(n, 1);
    EXPECT_EQ(tevsViterbi_8s8u(soft, 1, out, &n, code.get()), StatusOk);
    EXPECT_EQ(tevsViterbiFree(nullptr), StatusNullPtr);
    EXPECT_EQ(tevsViterbiFree(mark), StatusContextMismatch);
    EXPECT_EQ(tevsViterbiReset(mark, 0), StatusContextMismatch);
    EXPECT_EQ(tevsViterbiFlush_8u(out, nullptr, 0, mark), StatusNullPtr);

    out[0] = 7, n = 7;
    for (const auto& [k, polys] : {std::array{1, 2}, {16, 2}, {7, 0}, {7, 9}}) {
        EXPECT_EQ(tevsViterbiSymbols_8u(poly, out, polys, k), StatusBadSize);
        EXPECT_EQ(tevsViterbiEncode_8u(symbols, out, 1, poly, polys, k, &(phase = -1)), StatusBadSize);
    }
    EXPECT_EQ(tevsViterbiNext_16s(metrics, 16), StatusBadSize);
    EXPECT_EQ(tevsViterbiNext_16s(nullptr, 1), StatusNullPtr);
    for (int shift : {-1, 64}) EXPECT_EQ(tevsViterbiEncode_8u(symbols, out, 1, poly, 2, 7, &(phase = shift)), StatusBadArg);
    for (int at : {-1, 2, INT_MIN}) {
        EXPECT_EQ(tevsViterbiPuncture_8u(symbols, 2, out, &n, symbols, 2, &(phase = at)), StatusSamplePhase);
        EXPECT_EQ(tevsViterbiDepuncture_8s(soft, &n, reinterpret_cast<int8_t*>(out), 2, symbols, 2, &(phase = at)), StatusSamplePhase);
        EXPECT_EQ(tevsViterbiPuncture_8u(symbols, 0, out, &n, symbols, 2, &phase), StatusBadSize);
        EXPECT_EQ(tevsViterbiDepuncture_8s(soft, &n, reinterpret_cast<int8_t*>(out), 2, symbols, 0, &phase), StatusBadSize);
    }
    for (const auto& [points, syms] : {std::array{0, 1}, {3, 2}, {1, 2}, {514, 2}, {2, 0}, {257, 257}})
        EXPECT_EQ(tevsViterbiMetric_32fc16s(z, metrics, nullptr, 1, z, points, syms, 1), StatusBadSize) << points << " " << syms;
    EXPECT_EQ(tevsViterbiMetric_32fc16s(z, metrics, nullptr, 0, nullptr, 1, 1, 1), StatusNullPtr);
    EXPECT_EQ(tevsViterbiMetric_8s16s(soft, metrics, 1, 9), StatusBadSize);
    EXPECT_TRUE(out[0] == 7 && n == 7 && metrics[0] == 7);
}

}   // namespace
