#include <array>
#include <bit>
#include <climits>
#include <cmath>
#include <memory>

#include "support/elements.h"
#include "support/values.h"

using namespace test;

namespace {

int upTo(int n) { return int(generator()() % uint64_t(n)); }
std::vector<uint8_t> randomBits(int n) { return randomVector<uint8_t>(size_t(n)); }
std::vector<int8_t> randomSoft(int n) {
    std::vector<int8_t> v(static_cast<size_t>(n));
    for (auto& x : v) x = std::array<int8_t, 4>{int8_t(generator()()), -128, 127, int8_t(upTo(3) - 1)}[size_t(upTo(4))];
    return v;
}

// ---- oracles ----------------------------------------------------------------------------------------------------------------------------------

struct Code {
    int constraintLen;
    std::vector<int> poly;
    int polys() const { return int(poly.size()); }
};
const Code kSeven = {7, {0171, 0133}};
Code randomCode(int constraintLen, int polys) { return {constraintLen, randomVector<int>(size_t(polys))}; }

struct Trellis {
    int states, inputs, symbols;
    std::vector<int16_t> next;   // by state and input
    std::vector<uint8_t> symbol;
};
Trellis trellisOf(const Code& c) {
    Trellis t{1 << (c.constraintLen - 1), 2, 1 << c.polys(), {}, {}};
    for (int branch = 0; branch < 2 * t.states; ++branch) {
        const int r = branch % 2 * t.states + branch / 2;
        int symbol = 0;
        for (int p : c.poly) symbol = 2 * symbol + std::popcount(unsigned(r & p)) % 2;
        t.next.push_back(int16_t(r / 2));
        t.symbol.push_back(uint8_t(symbol));
    }
    return t;
}

std::vector<uint8_t> encoded(const Code& c, const std::vector<uint8_t>& bits, int state = 0) {
    const Trellis t = trellisOf(c);
    std::vector<uint8_t> v;
    for (uint8_t b : bits) {
        const size_t branch = size_t(2 * state + (b & 1));
        for (int i = c.polys() - 1; i >= 0; --i) v.push_back(t.symbol[branch] >> i & 1);
        state = t.next[branch];
    }
    return v;
}
std::vector<int8_t> hard(const std::vector<uint8_t>& code) {
    std::vector<int8_t> v;
    for (uint8_t b : code) v.push_back(b ? -127 : 127);
    return v;
}
std::vector<int16_t> rowsOf(const std::vector<int8_t>& soft, int polys) {
    std::vector<int16_t> rows((soft.size() / size_t(polys)) << polys);
    for (size_t k = 0; k < rows.size(); ++k)
        for (int i = 0; i < polys; ++i) {
            const int x = soft[(k >> polys) * size_t(polys) + size_t(i)];
            rows[k] = int16_t(rows[k] + (k >> (polys - 1 - i) & 1 ? -x : x));
        }
    return rows;
}

// Compares whole paths' metrics in 64 bits and keeps every survivor's branches.
class Slow {
public:
    Slow(const Trellis& t, int traceLen) : t_(t), metric_(size_t(t.states)), traceLen_(size_t(traceLen)) { reset(0); }
    void reset(int start) {
        for (int i = 0; i < t_.states; ++i) metric_[size_t(i)] = start == StateAny || start == i ? 0 : kNone;
        steps_.clear();
    }
    std::vector<uint8_t> decoded(const std::vector<int16_t>& rows, int end) {
        std::vector<uint8_t> v;
        for (size_t at = 0; at < rows.size(); at += size_t(t_.symbols)) {
            steps_.emplace_back(metric_.size());
            std::vector<int64_t> next(metric_.size(), kNone);
            for (size_t b = 0; b < t_.next.size(); ++b) {   // of equal ones the first
                const size_t to = size_t(t_.next[b]);
                const int64_t before = metric_[b / size_t(t_.inputs)], m = before + rows[at + t_.symbol[b]];
                if (before != kNone && m > next[to]) next[to] = m, steps_.back()[to] = int(b);
            }
            metric_ = next;
            if (steps_.size() == 2 * traceLen_) release(v, best(), traceLen_);
        }
        release(v, end == StateAny || metric_[size_t(end)] == kNone ? best() : end, steps_.size());
        reset(end);
        return v;
    }

private:
    static constexpr int64_t kNone = INT64_MIN;
    int best() const { return int(std::max_element(metric_.begin(), metric_.end()) - metric_.begin()); }
    void release(std::vector<uint8_t>& to, int state, size_t count) {
        std::vector<uint8_t> v(steps_.size());
        for (size_t n = v.size(); n-- > 0; state = steps_[n][size_t(state)] / t_.inputs) v[n] = uint8_t(steps_[n][size_t(state)] % t_.inputs);
        to.insert(to.end(), v.begin(), v.begin() + long(count));
        steps_.erase(steps_.begin(), steps_.begin() + long(count));
    }
    const Trellis& t_;
    std::vector<int64_t> metric_;
    std::vector<std::vector<int>> steps_;
    size_t traceLen_;
};

// ---- the decoder --------------------------------------------------------------------------------------------------------------------------------

using Decoder = std::unique_ptr<ViterbiState, decltype(&tevsViterbiFree)>;
template <class... A> Decoder made(Status (*init)(ViterbiState**, A...), std::type_identity_t<A>... a) {
    ViterbiState* s = nullptr;
    EXPECT_EQ(init(&s, a...), StatusOk);
    return {s, tevsViterbiFree};
}
Decoder decoder(const Code& c, int traceLen) { return made(tevsViterbiInitAlloc, c.poly.data(), c.polys(), c.constraintLen, traceLen); }

// A frame of soft bits or branch metrics, `width` of them to a step, in pieces or in one; no call releases more than it may.
template <class M> std::vector<uint8_t> decoded(const Decoder& d, const std::vector<M>& v, int width, int traceLen, bool cut, int end) {
    std::vector<uint8_t> all;
    const auto take = [&](int most, auto call) {
        Guarded<uint8_t> out(size_t(most), Place{upTo(16), false});
        int got = -1;
        EXPECT_EQ(call(out.data(), &got), StatusOk);
        EXPECT_TRUE(got >= 0 && got <= most && out.intact()) << got << " of " << most;
        const auto inputs = out.values();
        all.insert(all.end(), inputs.begin(), inputs.begin() + std::clamp(got, 0, most));
    };
    const int len = int(v.size()) / width;
    for (int at = 0, n; at < len; at += n) {
        n = cut ? std::min(len - at, 1 + upTo(3 * traceLen)) : len;
        const Guarded<M> in(std::span<const M>(v).subspan(size_t(at * width), size_t(n * width)));
        take(n + traceLen - 1, [&](uint8_t* dst, int* got) {
            if constexpr (sizeof(M) == 1)
                return tevsViterbi_8s8u(in.data(), n, dst, got, d.get());
            else
                return tevsViterbi_16s8u(in.data(), n, dst, got, d.get());
        });
    }
    take(2 * traceLen - 1, [&](uint8_t* dst, int* got) { return tevsViterbiFlush_8u(dst, got, end, d.get()); });
    return all;
}

// Frames of random metrics or, with a code, of soft bits, by every kind of record, against the slow one.
void compare(const Trellis& t, int traceLen, int len, const Code* c = nullptr) {
    SCOPED_TRACE(::testing::Message() << t.states << " states, " << t.symbols << " symbols, traceLen " << traceLen << ", len " << len);
    const int constraintLen = c ? c->constraintLen : 2, polys = c ? c->polys() : 1;
    Guarded<uint8_t> memory(reported(tevsViterbiGetStateSize, constraintLen, polys, traceLen), Place{upTo(16), len % 2 == 0});
    Guarded<uint8_t> tableMemory(reported(tevsViterbiGetStateSize_Table, t.states, t.inputs, t.symbols, traceLen), Place{upTo(16), len % 2 == 0});
    std::vector<Decoder> all;
    all.push_back(made(tevsViterbiInit_Table, t.next.data(), t.symbol.data(), t.states, t.inputs, t.symbols, traceLen, tableMemory));
    if (c) all.push_back(made(tevsViterbiInit, c->poly.data(), polys, constraintLen, traceLen, memory)), all.push_back(decoder(*c, traceLen));
    Slow slow(t, traceLen);
    for (int frame = 0; frame < 5; ++frame) {
        const int end = frame == 1 || frame == 2 ? StateAny : upTo(t.states), next = len % 2 ? t.states - 1 : int{StateAny};
        auto soft = randomSoft(len * polys);
        if (frame == 0 && len % 2 && c) soft = hard(encoded(*c, randomBits(len), t.states / 2));   // all for a path that begins where it cannot
        if (frame == 2) std::fill(soft.begin(), soft.end(), int8_t(0));                            // every choice is between equals
        auto metrics = c && frame < 4 ? rowsOf(soft, polys) : randomVector<int16_t>(size_t(len * t.symbols));
        for (auto& m : metrics)
            if (frame == 2) m &= 1;
        Guarded<int16_t> rows(size_t(len) << polys);
        ASSERT_EQ(tevsViterbiMetric_8s16s(Guarded<int8_t>(soft).data(), rows, len, polys), StatusOk);
        ASSERT_TRUE(same(rowsOf(soft, polys), rows.values()) && rows.intact());
        const auto want = slow.decoded(metrics, end);
        for (size_t k = 0; k < all.size() && k < (frame < 4 ? 3 : 2); ++k) {
            const auto got = k == 2 ? decoded(all[k], soft, polys, traceLen, frame != 1, end) : decoded(all[k], metrics, t.symbols, traceLen, frame != 1, end);
            ASSERT_TRUE(same(want, got)) << "decoder " << k << ", frame " << frame;
            ASSERT_EQ(frame == 0 ? tevsViterbiReset(all[k].get(), next) : k < 2 ? tevsViterbiFree(all[k].get()) : StatusOk, StatusOk);   // these remain
            ASSERT_TRUE(uintptr_t(all[k].get()) % 16 == 0 && memory.intact() && tableMemory.intact());
        }
        if (frame == 0) slow.reset(next);
    }
}

TEST(Viterbi, IsTheBestPathOfEveryCode) {
    const auto of = [](const Code& c, int traceLen, int len) { compare(trellisOf(c), traceLen, len, &c); };
    for (int constraintLen = 2; constraintLen <= 11; ++constraintLen)
        for (int polys = 1; polys <= 8; ++polys)
            for (int i = 0; i < (constraintLen < 9 ? 4 : 1); ++i) of(randomCode(constraintLen, polys), 1 + upTo(5 * constraintLen), 1 + upTo(200));
    for (const Code& c : {kSeven, Code{7, {0171, 0133, 0165}}, Code{9, {0557, 0663, 0711}}, Code{5, {023, 033}}, Code{3, {7, 5}}, Code{9, {0777, 0777}}})
        for (int traceLen : {1, 2, 35, 70})
            for (int len : {1, 2, 5, 6, 7, 69, 70, 71, 140, 500, 1003}) of(c, traceLen, len);
    of({15, {046321, 051271, 070535}}, 40, 90);
    // Metrics far apart for long, and where paths from states out of reach lose all the time until they end.
    of({15, std::vector<int>(8, 077777)}, 60, 301);
    of(kSeven, 1000, 9001);
    for (int constraintLen : {13, 14, 15}) of({constraintLen, std::vector<int>(8, 1 << (constraintLen - 1))}, constraintLen - 2, 41);
}

// Any trellis, with states that nothing leads to and branches that run side by side.
TEST(Viterbi, IsTheBestPathOfAnyTrellis) {
    for (const auto& [states, inputs, symbols, traceLen] : {std::array{8, 4, 8, 20}, {1, 1, 1, 1}, {5, 3, 256, 7}, {100, 16, 17, 3}, {16384, 16, 4, 2}}) {
        Trellis t{states, inputs, symbols, {}, {}};
        for (int i = 0; i < states * inputs; ++i) {
            t.next.push_back(int16_t(upTo(states) / 2 * 2 % states));
            t.symbol.push_back(uint8_t(upTo(symbols)));
        }
        for (int len : {60, 61}) compare(t, traceLen, len);
    }
}

// ---- pieces -----------------------------------------------------------------------------------------------------------------------------------

TEST(ViterbiEncode, FollowsTheRegister) {
    EXPECT_TRUE(same({1, 1, 1, 0, 1, 1, 1, 1, 0, 0, 0, 1, 1, 1}, encoded(kSeven, {0xff, 0, 2, 0, 0, 0, 0})));
    for (int constraintLen = 2; constraintLen <= 15; ++constraintLen)
        for (int polys = 1; polys <= 8; ++polys) {
            const Code c = randomCode(constraintLen, polys);
            const Trellis t = trellisOf(c);
            Guarded<uint8_t> symbols(t.symbol.size());
            Guarded<int16_t> next(t.next.size());
            ASSERT_EQ(tevsViterbiSymbols_8u(c.poly.data(), symbols, polys, constraintLen), StatusOk);
            ASSERT_EQ(tevsViterbiNext_16s(next, constraintLen), StatusOk);
            ASSERT_TRUE(same(t.symbol, symbols.values()) && same(t.next, next.values()));
            const int start = upTo(t.states), len = 3000;
            const auto bits = randomBits(len);
            std::vector<uint8_t> got;
            for (int at = 0, n, state = start; at < len; at += n) {
                n = std::min(len - at, 1 + upTo(at < 1000 ? 70 : 2500));
                const Guarded<uint8_t> in(std::span<const uint8_t>(bits).subspan(size_t(at), size_t(n)));
                Guarded<uint8_t> code(size_t(n * polys), Place{at % 3, at % 2 == 0});
                ASSERT_EQ(tevsViterbiEncode_8u(in.data(), code, n, c.poly.data(), polys, constraintLen, &state), StatusOk);
                ASSERT_TRUE(code.intact());
                const auto v = code.values();
                got.insert(got.end(), v.begin(), v.end());
            }
            ASSERT_TRUE(same(encoded(c, bits, start), got)) << constraintLen << " " << polys;
        }
}

// Of rates 1/2, 2/3, 3/4 and 7/8, with an error now and then.
TEST(ViterbiPuncture, LeavesWhatDecodes) {
    for (const std::vector<uint8_t>& pattern : {std::vector<uint8_t>{1}, {1, 1, 0, 1}, {1, 1, 0, 1, 7, 0}, {1, 1, 0, 1, 0, 1, 0, 1, 1, 0, 0, 1, 1, 0}}) {
        const int len = 2002, p = int(pattern.size());
        auto bits = randomBits(len / 2);
        for (size_t i = 0; i < bits.size(); ++i) bits[i] = i < bits.size() - 6 ? bits[i] & 1 : 0;
        auto code = encoded(kSeven, bits);
        std::vector<uint8_t> want;
        for (size_t i = 0; i < code.size(); ++i)
            if (pattern[i % pattern.size()]) want.push_back(code[i]);
        Guarded<uint8_t> sent(want.size());
        int phase = 0, kept = 0, more = 0;
        ASSERT_EQ(tevsViterbiPuncture_8u(code.data(), 777, sent, &kept, pattern.data(), p, &phase), StatusOk);
        ASSERT_EQ(phase, 777 % p);
        ASSERT_EQ(tevsViterbiPuncture_8u(&code[777], len - 777, &code[777], &more, pattern.data(), p, &phase), StatusOk);   // in place
        ASSERT_EQ(size_t(kept + more), want.size());
        std::copy_n(&code[777], more, sent.data() + kept);
        ASSERT_TRUE(same(want, sent.values()));
        auto bad = hard(want);
        for (size_t i = 7; i < bad.size(); i += 401) bad[i] = int8_t(-bad[i]);
        const Guarded<int8_t> received(bad);
        std::vector<int8_t> soft(static_cast<size_t>(len), 99);
        int taken = 0, place = 0;
        for (int first = 0, n = 5, got; first < len; first += n, taken += got, n = std::min(n * 2, len - first))
            ASSERT_EQ(tevsViterbiDepuncture_8s(received.data() + taken, &got, &soft[size_t(first)], n, pattern.data(), p, &place), StatusOk);
        ASSERT_EQ(taken, int(want.size()));
        ASSERT_TRUE(same(bits, decoded(decoder(kSeven, 100), soft, 2, 100, true, 0))) << p;
    }
}

TEST(ViterbiMetric, OfAConstellation) {
    const float nan = NAN, inf = INFINITY;
    for (const auto& [numPoints, numSymbols] : {std::array{4, 4}, {32, 8}, {8, 1}, {512, 2}, {256, 256}}) {
        auto points = randomVector<Complex32f>(size_t(numPoints));
        points[0] = {nan, 0};
        if (numPoints == 32) points[5] = {inf, 0}, points[9] = points[8], points[12] = points[13] = points[14] = points[15] = {0, nan};
        for (int len : {1, 2, 3, 4, 5, 7, 8, 9, 16, 17, 63, 303})
            for (float scale : {100.0f, 4000.0f, -1e9f}) {
                const size_t each = size_t(numPoints / numSymbols), rows = size_t(len * numSymbols);
                auto x = randomVector<Complex32f>(size_t(len));
                x.back() = {nan, 1};
                const Guarded<Complex32f> src(x);
                Guarded<int16_t> dst{rows}, bare{rows};
                Guarded<uint8_t> indx{rows};
                ASSERT_EQ(tevsViterbiMetric_32fc16s(src.data(), dst, indx, len, points.data(), numPoints, numSymbols, scale), StatusOk);
                ASSERT_EQ(tevsViterbiMetric_32fc16s(src.data(), bare, nullptr, len, points.data(), numPoints, numSymbols, scale), StatusOk);
                ASSERT_TRUE(same(dst.values(), bare.values()));
                for (size_t i = 0; i < rows; ++i) {
                    float least = nan;
                    size_t place = 0;
                    for (size_t k = 0; k < each; ++k) {
                        const Complex32f p = points[i % size_t(numSymbols) * each + k], z = x[i / size_t(numSymbols)];
                        const volatile float re = z.re - p.re, im = z.im - p.im, a = re * re, b = im * im, d = a + b;
                        if (!std::isnan(d) && (std::isnan(least) || d < least)) least = d, place = k;
                    }
                    ASSERT_TRUE(dst.data()[i] == nearest<int16_t>(-(scale * least), 0) && indx.data()[i] == place) << numPoints << " " << len << " at " << i;
                }
            }
    }
}

// ---- arguments ----------------------------------------------------------------------------------------------------------------------------------

TEST(Viterbi, BadArguments) {
    int n = 7, phase = 0;
    const int* poly = kSeven.poly.data();
    const int16_t next[] = {0, 1}, wrong[] = {0, 2}, below[] = {0, -1}, rows[] = {0, 0, 0, 0};
    const uint8_t symbols[] = {0, 1}, large[] = {0, 2};
    int8_t soft[] = {7, 1};
    uint8_t out[64] = {7};
    int16_t metrics[4] = {7};
    const Complex32f z{};
    ViterbiState *mark = reinterpret_cast<ViterbiState*>(out), *s = mark;
    for (const auto& [k, polys, trace] : {std::array{1, 2, 9}, {16, 2, 9}, {7, 0, 9}, {7, 9, 9}, {7, 2, 0}, {7, 2, INT_MAX}, {15, 2, 1 << 20}})
        expectEach(StatusBadSize, {tevsViterbiGetStateSize(k, polys, trace, &n), tevsViterbiInitAlloc(&s, poly, polys, k, trace),
                                   tevsViterbiInit(&s, poly, polys, k, trace, out)});
    for (const auto& [states, in, syms, trace] :
         {std::array{0, 1, 1, 1}, {16385, 1, 1, 1}, {1, 0, 1, 1}, {1, 17, 1, 1}, {1, 1, 0, 1}, {1, 1, 257, 1}, {1, 1, 1, 0}, {16384, 16, 4, 20000}})
        expectEach(StatusBadSize,
                   {tevsViterbiGetStateSize_Table(states, in, syms, trace, &n), tevsViterbiInitAlloc_Table(&s, wrong, large, states, in, syms, trace),
                    tevsViterbiInit_Table(&s, wrong, large, states, in, syms, trace, out)});
    for (const auto& [to, y] : {std::pair{wrong, symbols}, {below, symbols}, {next, large}})
        expectEach(StatusBadArg, {tevsViterbiInitAlloc_Table(&s, to, y, 2, 1, 2, 5), tevsViterbiInit_Table(&s, to, y, 2, 1, 2, 5, out)});
    for (const auto& [k, polys] : {std::array{1, 2}, {16, 2}, {7, 0}, {7, 9}})
        expectEach(StatusBadSize, {tevsViterbiSymbols_8u(poly, out, polys, k), tevsViterbiEncode_8u(symbols, out, 1, poly, polys, k, &(phase = -1)),
                                   k == 7 ? tevsViterbiMetric_8s16s(soft, metrics, 1, polys) : tevsViterbiNext_16s(metrics, k)});
    for (int at : {-1, 64, INT_MIN}) {
        EXPECT_EQ(tevsViterbiEncode_8u(symbols, out, 1, poly, 2, 7, &(phase = at)), StatusBadArg);
        EXPECT_EQ(tevsViterbiPuncture_8u(symbols, 2, out, &n, symbols, 2, &(phase = at)), StatusSamplePhase);
        EXPECT_EQ(tevsViterbiDepuncture_8s(soft, &n, soft, 2, symbols, 2, &(phase = at)), StatusSamplePhase);
        EXPECT_EQ(tevsViterbiPuncture_8u(symbols, 2, out, &n, symbols, 0, &phase), StatusBadSize);
        EXPECT_EQ(tevsViterbiDepuncture_8s(soft, &n, soft, 2, symbols, 0, &phase), StatusBadSize);
    }
    for (const auto& [points, syms] : {std::array{0, 1}, {3, 2}, {1, 2}, {514, 2}, {2, 0}, {257, 257}})
        EXPECT_EQ(tevsViterbiMetric_32fc16s(&z, metrics, nullptr, 1, &z, points, syms, 1), StatusBadSize) << points << " " << syms;

    const Decoder code = decoder(kSeven, 5), table = made(tevsViterbiInitAlloc_Table, next, symbols, 2, 1, 2, 5);
    ViterbiState *c = code.get(), *t = table.get();
    expectEach(StatusContextMismatch, {tevsViterbi_8s8u(soft, 1, out, &n, t), tevsViterbiReset(mark, -9), tevsViterbiFlush_8u(out, &n, -9, mark)});
    for (const auto& [d, states] : {std::pair{c, 64}, {t, 2}})
        for (int state : {-2, states, INT_MAX}) expectEach(StatusBadArg, {tevsViterbiReset(d, state), tevsViterbiFlush_8u(out, &n, state, d)});
    EXPECT_TRUE(s == mark && out[0] == 7 && soft[0] == 7 && n == 7 && metrics[0] == 7);

    // The first call of a frame says what all of it is made of.
    expectEach(StatusOk, {tevsViterbi_8s8u(soft, 1, out, &n, c)});
    expectEach(StatusContextMismatch, {tevsViterbi_16s8u(rows, 1, out, &n, c)});
    expectEach(StatusOk, {tevsViterbiReset(c, 3), tevsViterbi_16s8u(rows, 1, out, &n, c)});
    expectEach(StatusContextMismatch, {tevsViterbi_8s8u(soft, 1, out, &n, c)});
    expectEach(StatusOk, {tevsViterbiFlush_8u(out, &n, StateAny, c), tevsViterbi_8s8u(soft, 1, out, &n, c)});
}

// A call that would release more than *pDstLen can say reads nothing, and the stream goes on behind it.
TEST(Viterbi, CountsWhatItReleases) {
    const int16_t next[] = {0}, row[] = {3};
    const uint8_t symbols[] = {0};
    const std::vector<int8_t> soft(2 * 17, 5);
    const std::vector<int16_t> rows(17, 3);
    const Decoder code = decoder(kSeven, 9), table = made(tevsViterbiInitAlloc_Table, next, symbols, 1, 1, 1, 9);
    std::vector<uint8_t> out(17 + 8, 7);
    int n = 7;
    expectEach(StatusOk, {tevsViterbi_8s8u(soft.data(), 17, out.data(), &n, code.get()), tevsViterbi_16s8u(rows.data(), 17, out.data(), &n, table.get())});
    EXPECT_EQ(n, 0);   // 17 held: 17 + INT_MAX steps are 238609296 blocks of 9, all of them but one more than INT_MAX
    n = 7;
    expectEach(StatusBadSize,
               {tevsViterbi_8s8u(soft.data(), INT_MAX, out.data(), &n, code.get()), tevsViterbi_16s8u(row, INT_MAX, out.data(), &n, table.get())});
    EXPECT_TRUE(n == 7 && out == std::vector<uint8_t>(out.size(), 7));
    expectEach(StatusOk, {tevsViterbi_8s8u(soft.data(), 1, out.data(), &n, code.get())});
    EXPECT_EQ(n, 9);
    expectEach(StatusOk, {tevsViterbi_16s8u(row, 1, out.data(), &n, table.get())});
    EXPECT_EQ(n, 9);
}

}   // namespace
