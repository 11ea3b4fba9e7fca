// FIR filters between two rates: zeros go in between the inputs, the filter runs over both, and every so many outputs are kept.
//
// With t = downPhase + m downFactor - upPhase, output m is the sum over j of h[t mod U + j U] x[floor(t / U) - j], U = upFactor: a filter of every Uth tap, one
// of the U phases of h (Crochiere and Rabiner, Multirate Digital Signal Processing, ch. 3). After U outputs and D = downFactor inputs all is as before.
#include "filter/multirate.h"

#include <limits.h>
#include <string.h>

#include <algorithm>
#include <array>
#include <new>
#include <numeric>
#include <span>

#include "core/args.h"
#include "core/memory.h"
#include "core/parallel.h"
#include "core/rounding.h"
#include "core/scale.h"
#include "filter/delay_line.h"
#include "filter/fir_kernels.h"
#include "filter/fir_taps.h"
#include "filter/multirate.table.h"

namespace tevs {
namespace {

struct Rates {
    int up, upPhase, down, downPhase;

    Args check(Args args) const {
        const auto within = [](int phase, int factor) { return phase >= 0 && phase < factor; };
        return args.require(up >= 1 && down >= 1, StatusRateFactor).require(within(upPhase, up) && within(downPhase, down), StatusRatePhase);
    }
    bool single() const { return up == 1 && down == 1; }
};

int pastLen(int tapsLen, int up) { return int((int64_t{tapsLen} + up - 1) / up); }

enum RateKind : int32_t { kPolyphase = 1, kDecimating = 2, kIndexed = 3 };

RateKind kindOf(int tapsLen, int up, int down) {
    const float ratio = float(tapsLen) / (float(tapsLen) + 3 * float(down));
    if (double(ratio) > (up == 1 ? 0.5 : 0.3)) return kPolyphase;
    return up == 1 ? kDecimating : kIndexed;
}

// A record. Its period is the least multiple of the pattern of inputs and outputs that the kernels can work on.
struct RateState : FirState {
    const MultirateKernels* rateKernels;   // of the level that the record was built for
    Rates rates;
    int32_t kind;
    int32_t dlyLen;      // samples of the delay line at the interface
    int32_t before;      // periods of inputs before the current one that outputs reach back to; delay holds them in order of time
    int32_t outs, ins;   // outputs and inputs of a period
    int32_t atOnce;      // periods that pass through the streams at a time
    Streams streams;
    int32_t groupCount;   // of a piece
    int32_t pieces;       // that the taps of a phase are summed in, one array of groups for each
    PhaseGroup* groups;
    void* taps;        // in the caller's order
    void* groupTaps;   // in the order of the groups, once for each digit
    ptrdiff_t groupTapsCount, runTapsCount;
    int32_t runCount;   // 0 where they do not serve
    OutputRun* runs;
    void* runTaps;
    int32_t* place;    // of input -dlyLen and on
    void* streamsOf;   // of the caller's thread
    void* outputs;
    void* upper;
    void* totals;
    void* line;   // the inputs of a block of few periods, behind the past
    void* next;   // the past after the block that is being filtered
};

// A record's size is the same in both ABIs.
constexpr int kStateBytes = 320;
static_assert(sizeof(RateState) <= kStateBytes);

// Where a thread works: the streams, outputs on their way to the destination, and the inputs before its first.
template <class T, class S> struct Area {
    T* streams;
    T* outputs;
    T* upper;          // sums with the upper digits of taps
    int64_t* totals;   // of sums in pieces
    T* line;
    S* past;
};

// The kernel that takes samples of one type apart into streams of another.
inline auto splitOf(const MultirateKernels* k, const float*, float*) { return k->split_32f; }
inline auto splitOf(const MultirateKernels* k, const Complex32f*, float*) { return k->split_32fc; }
inline auto splitOf(const MultirateKernels* k, const int16_t*, float*) { return k->split16s_32f; }
inline auto splitOf(const MultirateKernels* k, const Complex16s*, float*) { return k->split16sc_32fc; }
inline auto splitOf(const MultirateKernels* k, const double*, double*) { return k->split_64f; }
inline auto splitOf(const MultirateKernels* k, const Complex64f*, double*) { return k->split_64fc; }
inline auto splitOf(const MultirateKernels* k, const float*, double*) { return k->split32f_64f; }
inline auto splitOf(const MultirateKernels* k, const Complex32f*, double*) { return k->split32fc_64fc; }
inline auto splitOf(const MultirateKernels* k, const int32_t*, double*) { return k->split32s_64f; }
inline auto splitOf(const MultirateKernels* k, const Complex32s*, double*) { return k->split32sc_64fc; }
inline auto splitOf(const MultirateKernels* k, const int16_t*, double*) { return k->split16s_64f; }
inline auto splitOf(const MultirateKernels* k, const Complex16s*, double*) { return k->split16sc_64fc; }
inline auto splitOf(const MultirateKernels* k, const Complex16s*, int32_t*) { return k->split_16sc; }

// A type pair, and how it is computed. 16-bit taps times 16-bit samples are multiplied two at a time and summed in 32 bits, as single-rate filters do it: taps whose
// magnitudes add up to too much are taken by digits, each in a pass of its own, and phases of more taps than have room in such a sum in pieces.
template <class Kind> struct Rated {
    using Tap = typename Kind::Tap;
    using Stored = typename Kind::Stored;
    using Sample = typename Kind::Sample;
    static constexpr bool kShort = Kind::kIntegerTaps;
    using Number = std::conditional_t<kShort, int32_t, Scalar<Stored>>;   // two parts of a complex sample or two samples, where they are short
    static constexpr int kOut = kParts<Sample>;                           // numbers of an output
    static constexpr int kIn = kShort ? 1 : kOut;                         // numbers of an input
    static constexpr int kStep = kShort && kOut == 1 ? 2 : 1;             // inputs in a number
    static constexpr int kDigits = kShort ? 2 : 1;
    static constexpr int kPieceTaps = kShort ? tevs::kRun<Stored> : INT_MAX;
    static constexpr int kRun = 16 / (kIn * int(sizeof(Number)));   // streams that are filled together
    static constexpr int kRows = 4 / kOut;                          // outputs that are computed together
    static constexpr int kRunNumbers = kRunBytes / int(sizeof(Number)), kRunOutputs = kRunNumbers / kOut, kRunInputs = kRunNumbers / kIn;
    static constexpr int kFew = 8;             // periods up to which a block is filtered by runs of outputs
    static constexpr int kStepsTogether = 3;   // times kPeriodsAtOnce: the most that the kernels take in one step
    static constexpr bool kDirect = std::is_same_v<Number, Scalar<Sample>>;

    // The dimensions of a record, of what depends on the phases the most that it can be. They may be too large: fits() tells.
    struct Extent {
        int64_t outs, ins, past, before, runs, run, atOnce, stride, groups, pieces, groupTaps, outputRuns, runTaps, lineLen;

        Extent(int tapsLen, int up, int down) {
            const int64_t common = std::gcd(up, down);
            outs = up / common;
            ins = down / common;
            // A group too many costs little where there are many: it repeats outputs of the one before it.
            int64_t times = outs >= 4 * kRows ? 1 : kRows / std::gcd(outs, int64_t{kRows});
            if (kRun == 4 && ins * times == 3) times *= 2;
            outs *= times;
            ins *= times;
            past = pastLen(tapsLen, up);
            before = (past + ins - 1) / ins;
            run = std::min<int64_t>(ins, kRun);
            runs = std::min((ins + run - 1) / run, outs * ((past + run - 1) / run + 1));
            // A third of the first cache at a time, in steps that fill the kernels' registers.
            constexpr int kMultiple = 3 * kPeriodsAtOnce;
            const int64_t largest = std::max(runs * run * kIn, kDirect ? 1 : outs * kOut) * int64_t{sizeof(Number)};
            const int64_t counted = (int64_t{1} << 30) / (std::max(ins, outs) * kOut);   // their inputs and outputs are counted in 32 bits
            atOnce = std::clamp<int64_t>(std::min(16384 / largest, counted) / kMultiple * kMultiple, kMultiple, 20 * kMultiple);
            stride = ((before + atOnce + 3) & ~int64_t{3}) + 4;
            groups = (outs + kRows - 1) / kRows;
            // Rows of a group that overlap start at most 3 down / up + 1 inputs apart, and have one table; others have one each.
            const int64_t apart = 3 * int64_t{down} / up + 1;
            const auto steps = [](int64_t inputs) { return kStep == 1 ? inputs : inputs / kStep + 2; };
            pieces = (past - 1) / kPieceTaps + 1;
            outputRuns = times == 1 && outs >= 4 * kRows && pieces == 1 ? (outs + kRunOutputs - 1) / kRunOutputs : 0;
            runTaps = outputRuns * steps(past) * kIn * kRunNumbers;
            lineLen = outputRuns ? (before + kFew) * ins + kRunSlack : 0;
            groupTaps = groups * pieces * 4 * (apart < past - 1 && pieces == 1 ? steps(past + apart) : 4 * steps(std::min<int64_t>(past, kPieceTaps)));
        }
        template <class S> uint64_t carveArea(Carve& c, Area<Number, S>& area) const {
            area.streams = c.take<Number>(uint64_t(runs * run * stride * kIn));
            area.outputs = c.take<Number>(uint64_t(outs * kOut * (kDirect ? kStepsTogether * kPeriodsAtOnce : atOnce)));
            area.upper = c.take<Number>(uint64_t(kShort ? outs * kOut * atOnce : 0));
            area.totals = c.take<int64_t>(uint64_t(pieces > 1 ? outs * kOut * atOnce : 0));
            area.line = c.take<Number>(uint64_t(lineLen * kIn));
            area.past = c.take<S>(uint64_t(before * ins));
            return c.size();
        }
        uint64_t areaBytes() const {
            Carve c;
            Area<Number, Sample> area;
            return carveArea(c, area);
        }
    };

    static bool fits(const Extent& e, int tapsLen) {
        // Each of these is a number of elements in the record.
        constexpr int64_t most = INT_MAX;
        return e.outs <= most / 64 && e.ins <= most / 64 && e.groupTaps <= most / 2 && e.runs * e.run <= most / e.stride / kIn &&
               layOut(nullptr, nullptr, tapsLen, e) <= uint64_t{INT_MAX} - 16;
    }

    // Over no block it only adds up.
    static uint64_t layOut(RateState* s, void* block, int tapsLen, const Extent& e) {
        Carve c(block);
        c.take<unsigned char>(kStateBytes);
        Stored* const taps = c.take<Stored>(uint64_t(tapsLen));
        PhaseGroup* const groups = c.take<PhaseGroup>(uint64_t(e.groups * e.pieces));
        Number* const groupTaps = c.take<Number>(uint64_t(kDigits * e.groupTaps));
        OutputRun* const runs = c.take<OutputRun>(uint64_t(e.outputRuns));
        Number* const runTaps = c.take<Number>(uint64_t(kDigits * e.runTaps));
        int32_t* const place = c.take<int32_t>(uint64_t(e.past + e.ins));
        int32_t* const starts = c.take<int32_t>(uint64_t(e.runs));
        Sample* const delay = c.take<Sample>(uint64_t(e.before * e.ins));
        const uint64_t at = c.size();
        Area<Number, Sample> area;
        e.carveArea(c, area);
        if (s) {
            new (s) RateState{};
            s->id = Kind::kMultirateId;
            s->tapsLen = tapsLen;
            s->digits = 1;
            s->kernels = fir;
            s->rateKernels = multirate;
            s->delay = delay;
            s->dlyLen = int(e.past);
            s->before = int(e.before);
            s->outs = int(e.outs);
            s->ins = int(e.ins);
            s->atOnce = int(e.atOnce);
            s->streams = {.places = int(e.ins), .runs = int(e.runs), .starts = starts, .stride = ptrdiff_t(e.stride)};
            s->groupCount = int(e.groups);
            s->pieces = int(e.pieces);
            s->groups = groups;
            s->taps = taps;
            s->groupTaps = groupTaps;
            s->groupTapsCount = ptrdiff_t(e.groupTaps);
            s->runTapsCount = ptrdiff_t(e.runTaps);
            s->runCount = int(e.outputRuns);
            s->runs = runs;
            s->runTaps = runTaps;
            s->place = place;
            s->streamsOf = area.streams;
            s->outputs = area.outputs;
            s->upper = area.upper;
            s->totals = area.totals;
            s->line = area.line;
            s->next = area.past;
            memset(static_cast<unsigned char*>(block) + at, 0, size_t(c.size() - at));   // lanes behind the last period are computed, and dropped
        }
        return c.size();
    }

    static Area<Number, Sample> areaIn(const Extent& e, void* block) {
        Carve c(block);
        Area<Number, Sample> area;
        e.carveArea(c, area);
        return area;
    }
    static Area<Number, Sample> own(const RateState* s) {
        return {static_cast<Number*>(s->streamsOf), static_cast<Number*>(s->outputs), static_cast<Number*>(s->upper),
                static_cast<int64_t*>(s->totals),   static_cast<Number*>(s->line),    static_cast<Sample*>(s->next)};
    }

    // ---- taps -----------------------------------------------------------------------------------------------------------------------------

    // Output p of a period: its newest input, and of every upFactor-th tap the first and their number; or a piece of these.
    struct Phase {
        int newest;
        int64_t first;
        int count;
    };
    static Phase phase(const RateState* s, int p, int piece = 0) {
        const Rates& r = s->rates;
        const int64_t t = int64_t{p} * r.down + r.downPhase - r.upPhase;
        const int64_t newest = t >= 0 ? t / r.up : -1;   // t > -up
        const int first = int(t - newest * r.up);
        const int count = first < s->tapsLen ? (s->tapsLen - 1 - first) / r.up + 1 : 0;
        const int skipped = piece == 0 ? 0 : std::min(piece * kPieceTaps, count);
        return {int(newest) - skipped, first + int64_t{skipped} * r.up, std::min(count - skipped, kPieceTaps)};
    }
    // One or both parts of its tap for an input, 0 where it has none.
    static const Stored* tapOf(const RateState* s, const Phase& f, int input) {
        static constexpr Stored kNone{};
        const int j = f.newest - input;
        return j >= 0 && j < f.count ? static_cast<const Stored*>(s->taps) + f.first + int64_t{j} * s->rates.up : &kNone;
    }
    // What the number of this input is multiplied by for a part of the output.
    template <class Digit> static Number factor(const RateState* s, const Phase& f, int input, int part, Digit digit) {
        const Stored tap = *tapOf(s, f, input);
        if constexpr (kShort) {
            int16_t pair[2];
            if constexpr (kOut == 1) {
                pair[0] = digit(*tapOf(s, f, input - 1));
                pair[1] = digit(tap);
            } else {
                pair[0] = digit(part == 0 ? tap.re : tap.im);
                pair[1] = digit(part == 0 ? int16_t(-tap.im) : tap.re);
            }
            Number n;
            memcpy(&n, pair, sizeof n);
            return n;
        } else {
            return digit(partsOf(&tap)[part]);
        }
    }

    static void buildGroups(RateState* s) {
        int64_t used = 0;
        for (int piece = 0; piece < s->pieces; ++piece) buildGroups(s, piece, used);
    }
    // Groups of one shape come one after another: the kernel's short loops then take the same turns as in the group before, which processors foresee.
    static void buildGroups(RateState* s, int piece, int64_t& used) {
        PhaseGroup *const groups = s->groups + ptrdiff_t{piece} * s->groupCount, *const end = groups + s->groupCount;
        for (int n = 0; n < s->groupCount; ++n) {
            PhaseGroup& g = groups[n];
            const int first = std::min(n * kRows, s->outs - kRows);   // the last group ends with the period
            g.output = first * kOut;
            for (int r = 0; r < 4; ++r) {
                const Phase f = phase(s, first + r / kOut, piece);
                g.end[r] = f.newest + 1;
                g.from[r] = g.end[r] - f.count;
            }
            g.overlap = *std::max_element(g.from, g.from + 4) < g.end[0];
            if constexpr (kStep == 2) alignPairs(g);
            for (int r = 0; r < 4; ++r) g.shared[r] = *std::max_element(g.from, g.from + r + 1);
        }
        const auto shape = [](const PhaseGroup& g) {
            std::array<int, 9> key{};
            for (int r = 0; r < 4; ++r) {
                key[size_t(r)] = g.from[r] - g.from[0];
                key[size_t(4 + r)] = g.end[r] - g.from[0];
            }
            key[8] = g.output;
            return key;
        };
        std::sort(groups, end, [=](const PhaseGroup& a, const PhaseGroup& b) { return shape(a) < shape(b); });
        for (PhaseGroup* g = groups; g < end; ++g) {
            const auto sameShape = [&] {
                const auto a = shape(g[0]), b = shape(g[1]);
                return std::equal(a.begin(), a.end() - 1, b.begin());
            };
            g->paired = !(g > groups && g[-1].paired) && g + 1 < end && sameShape();
        }
        for (PhaseGroup* g = groups; g < end; ++g) {
            const int first = *std::min_element(g->from, g->from + 4);
            for (int r = 0; r < 4; ++r) {
                const int from = g->overlap ? first : g->from[r];
                g->rows[r] = int(used - 4 / kStep * int64_t{from});
                if (!g->overlap || r == 3) used += 4 / kStep * int64_t{g->end[r] - from};
            }
        }
    }
    // Rows that are added together take the same pairs: every second one back from the newest input of all. A pair may hold one input that a row has no tap for.
    static void alignPairs(PhaseGroup& g) {
        const int newest = g.end[3] - 1;
        for (int r = 0; r < 4; ++r) {
            const int last = g.end[r] - 1 + (g.overlap ? (newest - (g.end[r] - 1)) % 2 : 0);
            const int pairs = g.from[r] < g.end[r] ? (last - g.from[r]) / 2 + 1 : 0;
            g.end[r] = last + 2;
            g.from[r] = g.end[r] - 2 * pairs;
        }
        // Taps of 0 cost less than rows that start and end one by one, as long as they are few.
        const int first = *std::min_element(g.from, g.from + 4);
        const int64_t all = 4 * int64_t{g.end[3] - first};
        int64_t taken = 0;
        for (int r = 0; r < 4; ++r) taken += g.end[r] - g.from[r];
        if (g.overlap && all <= taken + taken / 3) {
            std::fill_n(g.from, 4, first);
            std::fill_n(g.end, 4, g.end[3]);
            g.overlap = kTogether;
        }
    }

    // Neighbouring outputs, where their oldest inputs lie near enough to each other.
    static void buildRuns(RateState* s) {
        constexpr int kLanes = kRunBytes / 4 / kRunOutputs;       // of 32 bits, that an output takes
        constexpr int kElement = kIn * int(sizeof(Number)) / 4;   // and that a sample takes
        int used = 0;
        for (int n = 0; n < s->runCount; ++n) {
            OutputRun& r = s->runs[n];
            const int output = std::min(n * kRunOutputs, s->outs - kRunOutputs);
            Phase f[kRunOutputs];
            int most = 0;
            for (int o = 0; o < kRunOutputs; ++o) {
                f[o] = phase(s, output + o);
                most = std::max(most, f[o].count);
            }
            r.steps = (most + kStep - 1) / kStep;
            r.first = INT_MAX;
            for (int o = 0; o < kRunOutputs; ++o) r.first = std::min(r.first, oldest(f[o], r.steps));
            int farthest = 0;
            for (int o = 0; o < kRunOutputs; ++o) {
                const int at = oldest(f[o], r.steps) - r.first;
                farthest = std::max(farthest, at);
                for (int l = 0; l < kLanes; ++l) {
                    r.order[o * kLanes + l] = at * kElement + l % kElement;
                    r.last[o * kLanes + l] = f[o].count == r.steps ? -1 : 0;
                }
            }
            r.wide = farthest >= kRunInputs;
            r.output = output * kOut;
            r.taps = used;
            used += r.steps * kIn * kRunNumbers;
            if (farthest >= 2 * kRunInputs) {
                s->runCount = 0;
                return;
            }
        }
    }
    // Short ones all take the same number of steps, to the newest: some with no tap.
    static int oldest(const Phase& f, int steps) { return f.newest + kStep - (kShort ? kStep * steps : f.count); }
    template <class Digit> static void setRunTaps(RateState* s, Number* to, Digit digit) {
        for (int n = 0; n < s->runCount; ++n) {
            const OutputRun& r = s->runs[n];
            for (int o = 0; o < kRunOutputs; ++o) {
                const Phase f = phase(s, r.output / kOut + o);
                Number* lane = to + r.taps + o * kOut;
                int input = oldest(f, r.steps);
                for (int step = 0; step < r.steps; ++step, input += kStep)
                    for (int part = 0; part < kIn; ++part, lane += kRunNumbers)
                        for (int l = 0; l < kOut; ++l) lane[l] = factor(s, f, input, kShort ? l : part, digit);
            }
        }
    }

    // Places whose inputs are taken get a stream, with its neighbours in the same run.
    static void buildPlaces(RateState* s) {
        int32_t* const place = s->place + s->dlyLen;
        std::fill_n(place, s->ins, 0);
        for (const PhaseGroup& g : std::span(s->groups, size_t(s->groupCount) * size_t(s->pieces)))
            for (int r = 0; r < 4; ++r)
                for (int left = g.end[r] - g.from[r], i = (g.from[r] % s->ins + s->ins) % s->ins; left > 0; left -= kStep, i = (i + kStep) % s->ins)
                    place[i] = 1;
        const int run = std::min(s->ins, kRun);
        auto* const starts = const_cast<int32_t*>(s->streams.starts);
        const auto at = [=](int64_t stream, int64_t period) { return int32_t((stream * s->streams.stride + s->before + period) * kIn); };
        int runs = 0;
        for (int i = 0; i < s->ins; ++i) {
            if (place[i] == 0) continue;
            const int start = std::min(i, s->ins - run), end = start + run;
            starts[runs] = start;
            for (; i < end; ++i) place[i] = at(int64_t{runs} * run + i - start, 0);
            --i;
            ++runs;
        }
        s->streams.runs = runs;
        for (int i = -1; i >= -s->dlyLen; --i) place[i] = place[i + s->ins] - kIn;
    }

    static void setTaps(const Tap* pTaps, int tapsFactor, RateState* s) {
        auto* const taps = static_cast<Stored*>(s->taps);
        if constexpr (kShort) {
            const ShortTaps<Tap> quantise(partsOf(pTaps), int64_t{s->tapsLen} * kParts<Tap>, tapsFactor);
            s->exponent = quantise.exponent();
            for (int k = 0; k < s->tapsLen; ++k) taps[k] = eachPart<Stored>(pTaps[k], quantise);
            s->digits = mostMagnitude(s) <= kMostAtOnce ? 1 : 2;
            if (s->digits == 2) {
                fillTaps(s, 0, lowerDigit);
                fillTaps(s, 1, upperDigit);
                return;
            }
        } else {
            memcpy(taps, pTaps, size_t(s->tapsLen) * sizeof(Tap));
        }
        fillTaps(s, 0, [](auto part) { return part; });
    }
    // The largest sum of magnitudes of taps that join one sum.
    static int64_t mostMagnitude(const RateState* s) {
        int64_t most = 0;
        for (int p = 0; p < std::min(s->outs, s->rates.up); ++p)
            for (int piece = 0; piece < s->pieces; ++piece) {
                const Phase f = phase(s, p, piece);
                int64_t sum = 0;
                for (int j = 0; j < f.count; ++j)
                    for (int part = 0; part < kOut; ++part) sum += std::abs(int{partsOf(tapOf(s, f, f.newest - j))[part]});
                most = std::max(most, sum);
            }
        return most;
    }
    static Number* groupTaps(const RateState* s, int digit) { return static_cast<Number*>(s->groupTaps) + digit * s->groupTapsCount; }
    static Number* runTaps(const RateState* s, int digit) { return static_cast<Number*>(s->runTaps) + digit * s->runTapsCount; }
    template <class Digit> static void fillTaps(RateState* s, int place, Digit digit) {
        setRunTaps(s, runTaps(s, place), digit);
        Number* const to = groupTaps(s, place);
        for (int piece = 0; piece < s->pieces; ++piece)
            for (const PhaseGroup& g : groups(s, piece))
                for (int r = 0; r < 4; ++r) {
                    const Phase f = phase(s, (g.output + r) / kOut, piece);
                    for (int i = g.from[r]; i < g.end[r]; i += kStep) to[g.rows[r] + 4 / kStep * ptrdiff_t{i} + r] = factor(s, f, i, r % kOut, digit);
                }
    }
    static std::span<PhaseGroup> groups(const RateState* s, int piece) { return {s->groups + ptrdiff_t{piece} * s->groupCount, size_t(s->groupCount)}; }

    static void getTaps(const RateState* s, Tap* pTaps) {
        const auto* const taps = static_cast<const Stored*>(s->taps);
        if constexpr (kShort)
            for (int k = 0; k < s->tapsLen; ++k) pTaps[k] = eachPart<Tap>(taps[k], [=](int16_t tap) { return tapValue<Scalar<Tap>>(tap, s->exponent); });
        else
            memcpy(pTaps, taps, size_t(s->tapsLen) * sizeof(Tap));
    }

    // ---- delay line ------------------------------------------------------------------------------------------------------------------------

    static Sample* past(const RateState* s) { return static_cast<Sample*>(s->delay); }
    static int pastCount(const RateState* s) { return s->before * s->ins; }

    static void setPast(const Sample* pDlyLine, RateState* s) {
        const int older = pastCount(s) - s->dlyLen;
        memset(past(s), 0, size_t(older) * sizeof(Sample));
        tevs::setPast(past(s) + older, pDlyLine, s->dlyLen);
    }
    static void getPast(const RateState* s, Sample* pDlyLine) { tevs::getPast(past(s) + (pastCount(s) - s->dlyLen), pDlyLine, s->dlyLen); }

    // ---- filtering -------------------------------------------------------------------------------------------------------------------------

    static auto filter(const MultirateKernels* k) {
        if constexpr (kShort)
            return kOut == 1 ? k->real16s : k->complex16s;
        else if constexpr (std::is_same_v<Number, float>)
            return kOut == 1 ? k->real32f : k->complex32f;
        else
            return kOut == 1 ? k->real64f : k->complex64f;
    }

    static auto filterRuns(const MultirateKernels* k) {
        if constexpr (kShort)
            return kOut == 1 ? k->runs16s : k->runs16sc;
        else if constexpr (std::is_same_v<Number, float>)
            return kOut == 1 ? k->runs32f : k->runs32fc;
        else
            return kOut == 1 ? k->runs64f : k->runs64fc;
    }

    // n outputs whose sums, by one digit or two, are in the area.
    static void narrowed(const RateState* s, const Area<Number, Sample>& area, Sample* dst, int n, int scale) {
        if constexpr (kShort)
            if (s->digits == 2) {
                // What is not rounded that far saturates at 2^25.
                const bool rounded = scale >= 10;
                (rounded ? s->rateKernels->joinRounded : s->rateKernels->joinWhole)(area.outputs, area.upper, area.outputs, n * kOut);
                if (rounded) scale -= 8;
            }
        narrowParts(area.outputs, partsOf(dst), n * kOut, scale);
    }

    // From the inputs src, behind the past, the outputs of n <= kFew whole periods, by runs.
    static void few(const RateState* s, const Area<Number, Sample>& area, const Sample* past, const Sample* src, Sample* dst, int n, int scale) {
        const OutputRuns<Number> runs = {.runs = s->runs,
                                         .count = s->runCount,
                                         .taps = runTaps(s, 0),
                                         .inputs = ptrdiff_t{s->ins} * kIn,
                                         .outputs = ptrdiff_t{s->outs} * kOut,
                                         .digits = s->digits,
                                         .upperTaps = s->runTapsCount,
                                         .upperSums = area.upper - area.outputs};
        Number* const line = area.line + pastCount(s) * kIn;
        toLine(s, past, Sample{}, area.line, pastCount(s));
        toLine(s, src, past[pastCount(s) - 1], line, n * s->ins);
        if constexpr (kDirect) {
            filterRuns(s->rateKernels)(&runs, line, partsOf(dst), n);
        } else {
            filterRuns(s->rateKernels)(&runs, line, area.outputs, n);
            narrowed(s, area, dst, n * s->outs, scale);
        }
    }
    static void toLine(const RateState* s, const Sample* src, [[maybe_unused]] Sample before, Number* dst, int n) {
        static constexpr int32_t kFirst = 0;
        if constexpr (kStep == 2) {
            const Streams inOrder = {.places = 1, .runs = 1, .starts = &kFirst, .stride = 0};
            s->rateKernels->split_16s(src, before, n, &inOrder, dst);
        } else if constexpr (kShort || kDirect) {
            memcpy(dst, src, size_t(n) * sizeof(Sample));
        } else {
            widenParts(partsOf(src), dst, n * kIn);
        }
    }

    // `before` is the input before the first.
    static void split(const RateState* s, const Sample* src, [[maybe_unused]] Sample before, int count, Number* streams) {
        if constexpr (kStep == 2)
            s->rateKernels->split_16s(src, before, count, &s->streams, streams);
        else
            splitOf(s->rateKernels, src, streams)(src, count, &s->streams, streams);
    }

    static Phases<Number> phases(const RateState* s, int digit = 0, int piece = 0) {
        return {.groups = groups(s, piece).data(),
                .count = s->groupCount,
                .taps = groupTaps(s, digit),
                .place = s->place + s->dlyLen,
                .period = ptrdiff_t{s->outs} * kOut};
    }

    // n outputs by way of the area, from the streams there; units of kPeriodsAtOnce periods.
    static void sums(const RateState* s, const Area<Number, Sample>& area, int units, Sample* dst, int n, int scale) {
        const auto pass = [&](int digit, int piece, Number* to) {
            const auto p = phases(s, digit, piece);
            filter(s->rateKernels)(&p, area.streams, to, units);
        };
        if constexpr (kShort)
            if (s->pieces > 1) {
                memset(area.totals, 0, size_t(n) * kOut * sizeof(int64_t));
                for (int digit = 0; digit < s->digits; ++digit)
                    for (int piece = 0; piece < s->pieces; ++piece) {
                        pass(digit, piece, area.outputs);
                        s->kernels->addShifted(area.outputs, 8 * digit, area.totals, n * kOut);
                    }
                return narrowParts(area.totals, partsOf(dst), n * kOut, scale);
            }
        pass(0, 0, area.outputs);
        if (s->digits == 2) pass(1, 0, area.upper);
        narrowed(s, area, dst, n, scale);
    }

    // From the inputs src, behind the past, as many iterations as the caller counts.
    static void range(const RateState* s, const Area<Number, Sample>& area, const Sample* past, const Sample* src, Sample* dst, int64_t iterations, int scale) {
        int64_t inputs = iterations * s->rates.down, outputs = iterations * s->rates.up;
        if (s->runCount > 0 && outputs <= int64_t{kFew} * s->outs && filterRuns(s->rateKernels))
            return few(s, area, past, src, dst, int(outputs / s->outs), scale);
        const int64_t unit = int64_t{s->outs} * kPeriodsAtOnce;
        split(s, past, Sample{}, pastCount(s), area.streams);
        Sample before = past[pastCount(s) - 1];
        for (;;) {
            const int in = int(std::min<int64_t>(inputs, int64_t{s->atOnce} * s->ins)), out = int(std::min<int64_t>(outputs, int64_t{s->atOnce} * s->outs));
            split(s, src, before, in, area.streams + s->before * kIn);
            before = src[in - 1];
            const int all = int((out + unit - 1) / unit);
            if constexpr (kDirect) {
                // What does not fill a step of the kernel goes by way of the area, where the last step may write all of its periods.
                const int direct = out % unit == 0 ? all : all - 1 - (all - 1) % kStepsTogether;
                const auto p = phases(s);
                const auto filter = Rated::filter(s->rateKernels);
                if (direct > 0) filter(&p, area.streams, partsOf(dst), direct);
                if (direct < all) {
                    filter(&p, area.streams + ptrdiff_t{direct} * kPeriodsAtOnce * kIn, area.outputs, all - direct);
                    memcpy(dst + direct * unit, area.outputs, size_t(out - direct * unit) * sizeof(Sample));
                }
            } else {
                sums(s, area, all, dst, out, scale);
            }
            inputs -= in;
            outputs -= out;
            if (outputs == 0) return;
            src += in;
            dst += out;
            advance(s, area.streams);
        }
    }

    // What outputs of the next periods reach back to goes to the front.
    static void advance(const RateState* s, Number* streams) {
        const int count = std::min(s->ins, kRun) * s->streams.runs, before = s->before * kIn;
        const ptrdiff_t stride = s->streams.stride * kIn, passed = ptrdiff_t{s->atOnce} * kIn;
        for (int n = 0; n < count; ++n, streams += stride)
            for (int k = 0; k < before; ++k) streams[k] = streams[passed + k];
    }

    static void inParallel(const RateState* s, const Sample* src, Sample* dst, int numIters, int threads, int scale) {
        const Extent e(s->tapsLen, s->rates.up, s->rates.down);
        const uint64_t bytes = (e.areaBytes() + 63) & ~uint64_t{63};
        const Scratch areas{allocate(bytes * uint64_t(threads))};
        if (!areas) return range(s, own(s), past(s), src, dst, numIters, scale);
        parallelRanges(numIters, threads, [&](int first, int count, int thread) {
            void* const block = static_cast<unsigned char*>(areas.get()) + bytes * uint64_t(thread);
            memset(block, 0, size_t(bytes));
            const auto area = areaIn(e, block);
            const int64_t at = int64_t{first} * s->rates.down;
            pastAt(past(s), pastCount(s), src, ptrdiff_t(at), area.past);
            range(s, area, area.past, src + at, dst + int64_t{first} * s->rates.up, count, scale);
        });
    }

    static Status block(const Sample* src, Sample* dst, int numIters, RateState* s, int scaleFactor) {
        if (s->kind < kPolyphase || s->kind > kIndexed) return StatusContextMismatch;
        const int scale = int(std::clamp<int64_t>(scaleFactor - s->exponent, INT_MIN, INT_MAX));
        const int64_t inputs = int64_t{numIters} * s->rates.down;
        const int threads = numIters > Kind::kParallelAbove ? teamSize(s->threads) : 1;
        bool parallel = threads > 1;
        Scratch copy;
        if (src == dst && parallel) {
            // Threads in place would overwrite each other's inputs. Without memory for a copy one thread does it all.
            copy.reset(allocate<Sample>(uint64_t(inputs)));
            if (copy) src = static_cast<const Sample*>(memcpy(copy.get(), src, size_t(inputs) * sizeof(Sample)));
            parallel = copy != nullptr;
        }
        if (src == dst && s->rates.up > s->rates.down) {
            // Outputs that outnumber the inputs behind them overtake none when the inputs lie at the vector's end.
            src = dst + int64_t{numIters} * (s->rates.up - s->rates.down);
            memmove(const_cast<Sample*>(src), dst, size_t(inputs) * sizeof(Sample));
        }
        auto* const next = static_cast<Sample*>(s->next);
        pastAt(past(s), pastCount(s), src, ptrdiff_t(inputs), next);   // the past after this block, before any output is written
        if (parallel)
            inParallel(s, src, dst, numIters, threads, scale);
        else
            range(s, own(s), past(s), src, dst, numIters, scale);
        memcpy(past(s), next, size_t(pastCount(s)) * sizeof(Sample));
        return StatusOk;
    }

    // ---- lifecycle -------------------------------------------------------------------------------------------------------------------------

    static void build(RateState* s, const Extent& e, const Tap* pTaps, int tapsLen, int tapsFactor, const Rates& rates, const Sample* pDlyLine) {
        layOut(s, s, tapsLen, e);
        s->rates = rates;
        s->kind = kindOf(tapsLen, rates.up, rates.down);
        s->threads = threadsAtBuild();
        buildGroups(s);
        buildRuns(s);
        buildPlaces(s);
        setTaps(pTaps, tapsFactor, s);
        setPast(pDlyLine, s);
    }

    // single(...) does the same for one rate.
    template <class Single> static Status stateSize(int tapsLen, int up, int down, int* pSize, Single single) {
        if (Status s = Rates{up, 0, down, 0}.check(Args().ptr(pSize).require(tapsLen >= 1, StatusFilterLength))) return s;
        if (up == 1 && down == 1) return single(tapsLen, pSize);
        const Extent e(tapsLen, up, down);
        if (!fits(e, tapsLen)) return StatusFilterLength;
        *pSize = int(layOut(nullptr, nullptr, tapsLen, e)) + 15;
        return StatusOk;
    }
    template <class State, class Single>
    static Status init(State** ppState, const Tap* pTaps, int tapsLen, int tapsFactor, const Rates& rates, const Sample* pDlyLine, uint8_t* pBuffer,
                       Single single) {
        if (Status s = rates.check(Args().ptr(ppState).ptr(pTaps).ptr(pBuffer).require(tapsLen >= 1, StatusFilterLength))) return s;
        if (rates.single()) {
            if constexpr (Kind::kTapsFactor)
                return single(ppState, pTaps, tapsLen, tapsFactor, pDlyLine, pBuffer);
            else
                return single(ppState, pTaps, tapsLen, pDlyLine, pBuffer);
        }
        const Extent e(tapsLen, rates.up, rates.down);
        if (!fits(e, tapsLen)) return StatusFilterLength;
        auto* const state = align16<RateState>(pBuffer);
        build(state, e, pTaps, tapsLen, tapsFactor, rates, pDlyLine);
        *ppState = reinterpret_cast<State*>(state);
        return StatusOk;
    }
    template <class State, class Single>
    static Status initAlloc(State** ppState, const Tap* pTaps, int tapsLen, int tapsFactor, const Rates& rates, const Sample* pDlyLine, Single single) {
        if (Status s = rates.check(Args().ptr(ppState).ptr(pTaps).require(tapsLen >= 1, StatusFilterLength))) return s;
        if (rates.single()) {
            if constexpr (Kind::kTapsFactor)
                return single(ppState, pTaps, tapsLen, tapsFactor, pDlyLine);
            else
                return single(ppState, pTaps, tapsLen, pDlyLine);
        }
        const Extent e(tapsLen, rates.up, rates.down);
        auto* const state = static_cast<RateState*>(fits(e, tapsLen) ? allocate(layOut(nullptr, nullptr, tapsLen, e)) : nullptr);
        if (!state) return StatusNoMemory;
        build(state, e, pTaps, tapsLen, tapsFactor, rates, pDlyLine);
        state->allocated = 1;
        *ppState = reinterpret_cast<State*>(state);
        return StatusOk;
    }
};

// ---- without a record -----------------------------------------------------------------------------------------------------------------------

// Sums in double precision, rounded once; those with 16-bit taps are exact up to 2^22 taps a phase. Taps are put in order by phase, and inputs, as doubles, behind
// the past, for the kernel of single sums.
template <class Kind> class StatelessRate {
public:
    using Tap = typename Kind::Tap;
    using Sample = typename Kind::Sample;

    static Status block(const Sample* pSrc, Sample* pDst, int numIters, const Tap* pTaps, int tapsLen, int tapsFactor, const Rates& rates, Sample* pDlyLine,
                        int scaleFactor) {
        if (Status s = rates.check(Args().ptr(pSrc).ptr(pDst).len(numIters).ptr(pTaps).require(tapsLen >= 1, StatusFilterLength)).ptr(pDlyLine)) return s;
        NearestRounding guard;
        const int len = pastLen(tapsLen, rates.up);
        const uint64_t values = uint64_t(tapsLen) + uint64_t(len) + kBlock;
        Value near[kNear];
        const Scratch memory{values > kNear ? allocate<Value>(values) : nullptr};
        if (values > kNear && !memory) return StatusNoMemory;
        Value* const taps = memory ? static_cast<Value*>(memory.get()) : near;
        const StatelessRate f{rates, taps, taps + tapsLen, pDlyLine, tapsLen, len};
        if constexpr (Kind::kIntegerTaps) {
            const ShortTaps<Tap> shorten(partsOf(pTaps), int64_t{tapsLen} * kPer, tapsFactor);
            f.sortTaps(pTaps, [&](auto part) { return double(shorten(part)); });
            scaleFactor = int(std::clamp<int64_t>(scaleFactor - shorten.exponent(), INT_MIN, INT_MAX));
        } else {
            f.sortTaps(pTaps, [](auto part) { return double(part); });
        }
        f.filter(pSrc, pDst, numIters, scaleFactor);
        return StatusOk;
    }

private:
    using Value = std::conditional_t<kComplex<Sample>, Complex64f, double>;
    static constexpr int kPer = kParts<Sample>;
    static constexpr int kBlock = 256;                 // inputs, and outputs, at a time
    static constexpr uint64_t kNear = 1024 + kBlock;   // taps and inputs that find room on the stack

    StatelessRate(const Rates& rates, Value* taps, Value* line, Sample* past, int tapsLen, int len)
        : rates_(rates), taps_(taps), line_(line), past_(past), whole_(tapsLen / rates.up), longer_(tapsLen % rates.up), len_(len) {}

    // Phase u, its last tap first, and its number of taps: one more than of others for the first longer_ phases.
    Value* phase(int u) const { return taps_ + (int64_t{u} * whole_ + std::min(u, longer_)); }
    int count(int u) const { return whole_ + (u < longer_); }

    template <class F> void sortTaps(const Tap* pTaps, F value) const {
        for (int u = 0; u < rates_.up && count(u) > 0; ++u)
            for (int j = 0; j < count(u); ++j) phase(u)[count(u) - 1 - j] = eachPart<Value>(pTaps[u + int64_t{j} * rates_.up], value);
    }

    static Value inDouble(Sample x) {
        return eachPart<Value>(x, [](auto part) { return double(part); });
    }

    static Value sum(const Value* line, const Value* taps, int n) {
        if (n == 0) return {};
        if constexpr (kPer == 1)
            return fir->real64f.dot(line, taps, n);
        else
            return fir->complex64f.dot(line, taps, n);
    }

    // In place, an output may lie where the next input is read: outputs wait in a block until the inputs of the one behind them have been read. Where there are
    // more outputs than inputs, these are moved to the vector's end first.
    void filter(const Sample* src, Sample* dst, int numIters, int scale) const {
        const Rates& r = rates_;
        if (src == dst && r.up > r.down) {
            src = dst + int64_t{numIters} * (r.up - r.down);
            memmove(const_cast<Sample*>(src), dst, size_t(numIters) * size_t(r.down) * sizeof(Sample));
        }
        const Sample* const end = src + int64_t{numIters} * r.down;
        for (int j = 0; j < len_; ++j) line_[len_ - 1 - j] = inDouble(past_[j]);
        const int fresh = int(std::min<int64_t>(end - src, len_));
        memmove(past_ + fresh, past_, size_t(len_ - fresh) * sizeof(Sample));
        std::reverse_copy(end - fresh, end, past_);

        const Value *newest = line_ + len_ - 1, *last = newest;
        const auto refill = [&] {
            memmove(line_, last + 1 - len_, size_t(len_) * sizeof(Value));
            const int n = int(std::min<int64_t>(end - src, kBlock));
            for (int i = 0; i < n; ++i) line_[len_ + i] = inDouble(*src++);
            newest = line_ + len_ - 1;
            last = newest + n;
        };
        Value sums[kBlock];
        int waiting = 0;
        const auto flush = [&] {
            fromStored(sums, dst, waiting, scale);
            dst += waiting;
            waiting = 0;
        };
        int64_t since = int64_t{r.downPhase} - r.upPhase + r.up;   // from the newest input to the output, in steps of the clock that both rates divide
        for (int64_t left = int64_t{numIters} * r.up; left > 0; --left, since += r.down) {
            for (; since >= r.up; ++newest, since -= r.up)
                if (newest == last) refill();
            if (waiting == kBlock) flush();
            const int n = count(int(since));
            sums[waiting++] = sum(newest + 1 - n, phase(int(since)), n);
        }
        flush();
    }

    const Rates rates_;
    Value *const taps_, *const line_;
    Sample* const past_;
    const int whole_, longer_, len_;
};

}   // namespace

template <class Kind> Status multirateBlock(const typename Kind::Sample* pSrc, typename Kind::Sample* pDst, int numIters, FirState* s, int scaleFactor) {
    return Rated<Kind>::block(pSrc, pDst, numIters, static_cast<RateState*>(s), scaleFactor);
}
template <class Kind> Status multirateSetTaps(const typename Kind::Tap* pTaps, int tapsFactor, FirState* s) {
    Rated<Kind>::setTaps(pTaps, tapsFactor, static_cast<RateState*>(s));
    return StatusOk;
}
template <class Kind> Status multirateGetTaps(const FirState* s, typename Kind::Tap* pTaps) {
    Rated<Kind>::getTaps(static_cast<const RateState*>(s), pTaps);
    return StatusOk;
}
template <class Kind> Status multirateSetPast(const typename Kind::Sample* pDlyLine, FirState* s) {
    Rated<Kind>::setPast(pDlyLine, static_cast<RateState*>(s));
    return StatusOk;
}
template <class Kind> Status multirateGetPast(const FirState* s, typename Kind::Sample* pDlyLine) {
    Rated<Kind>::getPast(static_cast<const RateState*>(s), pDlyLine);
    return StatusOk;
}

#define TEVS_MULTIRATE(Kind)                                                                       \
    template Status multirateBlock<Kind>(const Kind::Sample*, Kind::Sample*, int, FirState*, int); \
    template Status multirateSetTaps<Kind>(const Kind::Tap*, int, FirState*);                      \
    template Status multirateGetTaps<Kind>(const FirState*, Kind::Tap*);                           \
    template Status multirateSetPast<Kind>(const Kind::Sample*, FirState*);                        \
    template Status multirateGetPast<Kind>(const FirState*, Kind::Sample*);
TEVS_MULTIRATE(Fir_32f)
TEVS_MULTIRATE(Fir_32fc)
TEVS_MULTIRATE(Fir32f_16s)
TEVS_MULTIRATE(Fir32fc_16sc)
TEVS_MULTIRATE(Fir32s_16s)
TEVS_MULTIRATE(Fir32s_16s32f)
TEVS_MULTIRATE(Fir32sc_16sc)
TEVS_MULTIRATE(Fir32sc_16sc32fc)
TEVS_MULTIRATE(Fir_64f)
TEVS_MULTIRATE(Fir_64fc)
TEVS_MULTIRATE(Fir64f_32f)
TEVS_MULTIRATE(Fir64fc_32fc)
TEVS_MULTIRATE(Fir64f_32s)
TEVS_MULTIRATE(Fir64fc_32sc)
TEVS_MULTIRATE(Fir64f_16s)
TEVS_MULTIRATE(Fir64fc_16sc)
#undef TEVS_MULTIRATE

}   // namespace tevs

using namespace tevs;

Status tevsFIRMRGetStateSize_32f(int tapsLen, int upFactor, int downFactor, int* pSize) {
    return Rated<Fir_32f>::stateSize(tapsLen, upFactor, downFactor, pSize, tevsFIRGetStateSize_32f);
}
Status tevsFIRMRGetStateSize_32fc(int tapsLen, int upFactor, int downFactor, int* pSize) {
    return Rated<Fir_32fc>::stateSize(tapsLen, upFactor, downFactor, pSize, tevsFIRGetStateSize_32fc);
}
Status tevsFIRMRGetStateSize32f_16s(int tapsLen, int upFactor, int downFactor, int* pSize) {
    return Rated<Fir32f_16s>::stateSize(tapsLen, upFactor, downFactor, pSize, tevsFIRGetStateSize32f_16s);
}
Status tevsFIRMRGetStateSize32fc_16sc(int tapsLen, int upFactor, int downFactor, int* pSize) {
    return Rated<Fir32fc_16sc>::stateSize(tapsLen, upFactor, downFactor, pSize, tevsFIRGetStateSize32fc_16sc);
}
Status tevsFIRMRGetStateSize32s_16s(int tapsLen, int upFactor, int downFactor, int* pSize) {
    return Rated<Fir32s_16s>::stateSize(tapsLen, upFactor, downFactor, pSize, tevsFIRGetStateSize32s_16s);
}
Status tevsFIRMRGetStateSize32s_16s32f(int tapsLen, int upFactor, int downFactor, int* pSize) {
    return Rated<Fir32s_16s32f>::stateSize(tapsLen, upFactor, downFactor, pSize, tevsFIRGetStateSize32s_16s32f);
}
Status tevsFIRMRGetStateSize32sc_16sc(int tapsLen, int upFactor, int downFactor, int* pSize) {
    return Rated<Fir32sc_16sc>::stateSize(tapsLen, upFactor, downFactor, pSize, tevsFIRGetStateSize32sc_16sc);
}
Status tevsFIRMRGetStateSize32sc_16sc32fc(int tapsLen, int upFactor, int downFactor, int* pSize) {
    return Rated<Fir32sc_16sc32fc>::stateSize(tapsLen, upFactor, downFactor, pSize, tevsFIRGetStateSize32sc_16sc32fc);
}
Status tevsFIRMRGetStateSize_64f(int tapsLen, int upFactor, int downFactor, int* pSize) {
    return Rated<Fir_64f>::stateSize(tapsLen, upFactor, downFactor, pSize, tevsFIRGetStateSize_64f);
}
Status tevsFIRMRGetStateSize_64fc(int tapsLen, int upFactor, int downFactor, int* pSize) {
    return Rated<Fir_64fc>::stateSize(tapsLen, upFactor, downFactor, pSize, tevsFIRGetStateSize_64fc);
}
Status tevsFIRMRGetStateSize64f_32f(int tapsLen, int upFactor, int downFactor, int* pSize) {
    return Rated<Fir64f_32f>::stateSize(tapsLen, upFactor, downFactor, pSize, tevsFIRGetStateSize64f_32f);
}
Status tevsFIRMRGetStateSize64fc_32fc(int tapsLen, int upFactor, int downFactor, int* pSize) {
    return Rated<Fir64fc_32fc>::stateSize(tapsLen, upFactor, downFactor, pSize, tevsFIRGetStateSize64fc_32fc);
}
Status tevsFIRMRGetStateSize64f_32s(int tapsLen, int upFactor, int downFactor, int* pSize) {
    return Rated<Fir64f_32s>::stateSize(tapsLen, upFactor, downFactor, pSize, tevsFIRGetStateSize64f_32s);
}
Status tevsFIRMRGetStateSize_32s(int tapsLen, int upFactor, int downFactor, int* pSize) {
    return Rated<Fir64f_32s>::stateSize(tapsLen, upFactor, downFactor, pSize, tevsFIRGetStateSize_32s);
}
Status tevsFIRMRGetStateSize64fc_32sc(int tapsLen, int upFactor, int downFactor, int* pSize) {
    return Rated<Fir64fc_32sc>::stateSize(tapsLen, upFactor, downFactor, pSize, tevsFIRGetStateSize64fc_32sc);
}
Status tevsFIRMRGetStateSize64f_16s(int tapsLen, int upFactor, int downFactor, int* pSize) {
    return Rated<Fir64f_16s>::stateSize(tapsLen, upFactor, downFactor, pSize, tevsFIRGetStateSize64f_16s);
}
Status tevsFIRMRGetStateSize64fc_16sc(int tapsLen, int upFactor, int downFactor, int* pSize) {
    return Rated<Fir64fc_16sc>::stateSize(tapsLen, upFactor, downFactor, pSize, tevsFIRGetStateSize64fc_16sc);
}
Status tevsFIRMRInit_32f(FIRState_32f** ppState, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                         const float* pDlyLine, uint8_t* pBuffer) {
    return Rated<Fir_32f>::init(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, pBuffer, tevsFIRInit_32f);
}
Status tevsFIRMRInit_32fc(FIRState_32fc** ppState, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                          const Complex32f* pDlyLine, uint8_t* pBuffer) {
    return Rated<Fir_32fc>::init(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, pBuffer, tevsFIRInit_32fc);
}
Status tevsFIRMRInit32f_16s(FIRState32f_16s** ppState, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                            const int16_t* pDlyLine, uint8_t* pBuffer) {
    return Rated<Fir32f_16s>::init(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, pBuffer, tevsFIRInit32f_16s);
}
Status tevsFIRMRInit32fc_16sc(FIRState32fc_16sc** ppState, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                              const Complex16s* pDlyLine, uint8_t* pBuffer) {
    return Rated<Fir32fc_16sc>::init(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, pBuffer, tevsFIRInit32fc_16sc);
}
Status tevsFIRMRInit32s_16s(FIRState32s_16s** ppState, const int32_t* pTaps, int tapsLen, int tapsFactor, int upFactor, int upPhase, int downFactor,
                            int downPhase, const int16_t* pDlyLine, uint8_t* pBuffer) {
    return Rated<Fir32s_16s>::init(ppState, pTaps, tapsLen, tapsFactor, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, pBuffer, tevsFIRInit32s_16s);
}
Status tevsFIRMRInit32s_16s32f(FIRState32s_16s32f** ppState, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                               const int16_t* pDlyLine, uint8_t* pBuffer) {
    return Rated<Fir32s_16s32f>::init(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, pBuffer, tevsFIRInit32s_16s32f);
}
Status tevsFIRMRInit32sc_16sc(FIRState32sc_16sc** ppState, const Complex32s* pTaps, int tapsLen, int tapsFactor, int upFactor, int upPhase, int downFactor,
                              int downPhase, const Complex16s* pDlyLine, uint8_t* pBuffer) {
    return Rated<Fir32sc_16sc>::init(ppState, pTaps, tapsLen, tapsFactor, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, pBuffer, tevsFIRInit32sc_16sc);
}
Status tevsFIRMRInit32sc_16sc32fc(FIRState32sc_16sc32fc** ppState, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                                  int downPhase, const Complex16s* pDlyLine, uint8_t* pBuffer) {
    return Rated<Fir32sc_16sc32fc>::init(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, pBuffer, tevsFIRInit32sc_16sc32fc);
}
Status tevsFIRMRInit_64f(FIRState_64f** ppState, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                         const double* pDlyLine, uint8_t* pBuffer) {
    return Rated<Fir_64f>::init(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, pBuffer, tevsFIRInit_64f);
}
Status tevsFIRMRInit_64fc(FIRState_64fc** ppState, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                          const Complex64f* pDlyLine, uint8_t* pBuffer) {
    return Rated<Fir_64fc>::init(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, pBuffer, tevsFIRInit_64fc);
}
Status tevsFIRMRInit64f_32f(FIRState64f_32f** ppState, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                            const float* pDlyLine, uint8_t* pBuffer) {
    return Rated<Fir64f_32f>::init(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, pBuffer, tevsFIRInit64f_32f);
}
Status tevsFIRMRInit64fc_32fc(FIRState64fc_32fc** ppState, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                              const Complex32f* pDlyLine, uint8_t* pBuffer) {
    return Rated<Fir64fc_32fc>::init(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, pBuffer, tevsFIRInit64fc_32fc);
}
Status tevsFIRMRInit64f_32s(FIRState64f_32s** ppState, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                            const int32_t* pDlyLine, uint8_t* pBuffer) {
    return Rated<Fir64f_32s>::init(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, pBuffer, tevsFIRInit64f_32s);
}
Status tevsFIRMRInit_32s(FIRState_32s** ppState, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                         const int32_t* pDlyLine, uint8_t* pBuffer) {
    return Rated<Fir64f_32s>::init(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, pBuffer, tevsFIRInit_32s);
}
Status tevsFIRMRInit64fc_32sc(FIRState64fc_32sc** ppState, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                              const Complex32s* pDlyLine, uint8_t* pBuffer) {
    return Rated<Fir64fc_32sc>::init(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, pBuffer, tevsFIRInit64fc_32sc);
}
Status tevsFIRMRInit64f_16s(FIRState64f_16s** ppState, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                            const int16_t* pDlyLine, uint8_t* pBuffer) {
    return Rated<Fir64f_16s>::init(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, pBuffer, tevsFIRInit64f_16s);
}
Status tevsFIRMRInit64fc_16sc(FIRState64fc_16sc** ppState, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                              const Complex16s* pDlyLine, uint8_t* pBuffer) {
    return Rated<Fir64fc_16sc>::init(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, pBuffer, tevsFIRInit64fc_16sc);
}
Status tevsFIRMRInitAlloc_32f(FIRState_32f** ppState, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                              const float* pDlyLine) {
    return Rated<Fir_32f>::initAlloc(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, tevsFIRInitAlloc_32f);
}
Status tevsFIRMRInitAlloc_32fc(FIRState_32fc** ppState, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                               const Complex32f* pDlyLine) {
    return Rated<Fir_32fc>::initAlloc(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, tevsFIRInitAlloc_32fc);
}
Status tevsFIRMRInitAlloc32f_16s(FIRState32f_16s** ppState, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                 const int16_t* pDlyLine) {
    return Rated<Fir32f_16s>::initAlloc(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, tevsFIRInitAlloc32f_16s);
}
Status tevsFIRMRInitAlloc32fc_16sc(FIRState32fc_16sc** ppState, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                   const Complex16s* pDlyLine) {
    return Rated<Fir32fc_16sc>::initAlloc(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, tevsFIRInitAlloc32fc_16sc);
}
Status tevsFIRMRInitAlloc32s_16s(FIRState32s_16s** ppState, const int32_t* pTaps, int tapsLen, int tapsFactor, int upFactor, int upPhase, int downFactor,
                                 int downPhase, const int16_t* pDlyLine) {
    return Rated<Fir32s_16s>::initAlloc(ppState, pTaps, tapsLen, tapsFactor, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, tevsFIRInitAlloc32s_16s);
}
Status tevsFIRMRInitAlloc32s_16s32f(FIRState32s_16s32f** ppState, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                    const int16_t* pDlyLine) {
    return Rated<Fir32s_16s32f>::initAlloc(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, tevsFIRInitAlloc32s_16s32f);
}
Status tevsFIRMRInitAlloc32sc_16sc(FIRState32sc_16sc** ppState, const Complex32s* pTaps, int tapsLen, int tapsFactor, int upFactor, int upPhase, int downFactor,
                                   int downPhase, const Complex16s* pDlyLine) {
    return Rated<Fir32sc_16sc>::initAlloc(ppState, pTaps, tapsLen, tapsFactor, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, tevsFIRInitAlloc32sc_16sc);
}
Status tevsFIRMRInitAlloc32sc_16sc32fc(FIRState32sc_16sc32fc** ppState, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                                       int downPhase, const Complex16s* pDlyLine) {
    return Rated<Fir32sc_16sc32fc>::initAlloc(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, tevsFIRInitAlloc32sc_16sc32fc);
}
Status tevsFIRMRInitAlloc_64f(FIRState_64f** ppState, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                              const double* pDlyLine) {
    return Rated<Fir_64f>::initAlloc(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, tevsFIRInitAlloc_64f);
}
Status tevsFIRMRInitAlloc_64fc(FIRState_64fc** ppState, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                               const Complex64f* pDlyLine) {
    return Rated<Fir_64fc>::initAlloc(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, tevsFIRInitAlloc_64fc);
}
Status tevsFIRMRInitAlloc64f_32f(FIRState64f_32f** ppState, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                 const float* pDlyLine) {
    return Rated<Fir64f_32f>::initAlloc(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, tevsFIRInitAlloc64f_32f);
}
Status tevsFIRMRInitAlloc64fc_32fc(FIRState64fc_32fc** ppState, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                   const Complex32f* pDlyLine) {
    return Rated<Fir64fc_32fc>::initAlloc(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, tevsFIRInitAlloc64fc_32fc);
}
Status tevsFIRMRInitAlloc64f_32s(FIRState64f_32s** ppState, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                 const int32_t* pDlyLine) {
    return Rated<Fir64f_32s>::initAlloc(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, tevsFIRInitAlloc64f_32s);
}
Status tevsFIRMRInitAlloc_32s(FIRState_32s** ppState, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                              const int32_t* pDlyLine) {
    return Rated<Fir64f_32s>::initAlloc(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, tevsFIRInitAlloc_32s);
}
Status tevsFIRMRInitAlloc64fc_32sc(FIRState64fc_32sc** ppState, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                   const Complex32s* pDlyLine) {
    return Rated<Fir64fc_32sc>::initAlloc(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, tevsFIRInitAlloc64fc_32sc);
}
Status tevsFIRMRInitAlloc64f_16s(FIRState64f_16s** ppState, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                 const int16_t* pDlyLine) {
    return Rated<Fir64f_16s>::initAlloc(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, tevsFIRInitAlloc64f_16s);
}
Status tevsFIRMRInitAlloc64fc_16sc(FIRState64fc_16sc** ppState, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                   const Complex16s* pDlyLine) {
    return Rated<Fir64fc_16sc>::initAlloc(ppState, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, tevsFIRInitAlloc64fc_16sc);
}
Status tevsFIRMR_Direct_32f(const float* pSrc, float* pDst, int numIters, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                            int downPhase, float* pDlyLine) {
    return StatelessRate<Fir_32f>::block(pSrc, pDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, 0);
}
Status tevsFIRMR_Direct_32f_I(float* pSrcDst, int numIters, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                              float* pDlyLine) {
    return StatelessRate<Fir_32f>::block(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, 0);
}
Status tevsFIRMR_Direct_32fc(const Complex32f* pSrc, Complex32f* pDst, int numIters, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase,
                             int downFactor, int downPhase, Complex32f* pDlyLine) {
    return StatelessRate<Fir_32fc>::block(pSrc, pDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, 0);
}
Status tevsFIRMR_Direct_32fc_I(Complex32f* pSrcDst, int numIters, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                               int downPhase, Complex32f* pDlyLine) {
    return StatelessRate<Fir_32fc>::block(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, 0);
}
Status tevsFIRMR32f_Direct_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int numIters, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                                   int downPhase, int16_t* pDlyLine, int scaleFactor) {
    return StatelessRate<Fir32f_16s>::block(pSrc, pDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, scaleFactor);
}
Status tevsFIRMR32f_Direct_16s_ISfs(int16_t* pSrcDst, int numIters, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                    int16_t* pDlyLine, int scaleFactor) {
    return StatelessRate<Fir32f_16s>::block(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, scaleFactor);
}
Status tevsFIRMR32fc_Direct_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int numIters, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase,
                                     int downFactor, int downPhase, Complex16s* pDlyLine, int scaleFactor) {
    return StatelessRate<Fir32fc_16sc>::block(pSrc, pDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, scaleFactor);
}
Status tevsFIRMR32fc_Direct_16sc_ISfs(Complex16s* pSrcDst, int numIters, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                                      int downPhase, Complex16s* pDlyLine, int scaleFactor) {
    return StatelessRate<Fir32fc_16sc>::block(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, scaleFactor);
}
Status tevsFIRMR32s_Direct_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int numIters, const int32_t* pTaps, int tapsLen, int tapsFactor, int upFactor,
                                   int upPhase, int downFactor, int downPhase, int16_t* pDlyLine, int scaleFactor) {
    return StatelessRate<Fir32s_16s>::block(pSrc, pDst, numIters, pTaps, tapsLen, tapsFactor, {upFactor, upPhase, downFactor, downPhase}, pDlyLine,
                                            scaleFactor);
}
Status tevsFIRMR32s_Direct_16s_ISfs(int16_t* pSrcDst, int numIters, const int32_t* pTaps, int tapsLen, int tapsFactor, int upFactor, int upPhase,
                                    int downFactor, int downPhase, int16_t* pDlyLine, int scaleFactor) {
    return StatelessRate<Fir32s_16s>::block(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, tapsFactor, {upFactor, upPhase, downFactor, downPhase}, pDlyLine,
                                            scaleFactor);
}
Status tevsFIRMR32sc_Direct_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int numIters, const Complex32s* pTaps, int tapsLen, int tapsFactor, int upFactor,
                                     int upPhase, int downFactor, int downPhase, Complex16s* pDlyLine, int scaleFactor) {
    return StatelessRate<Fir32sc_16sc>::block(pSrc, pDst, numIters, pTaps, tapsLen, tapsFactor, {upFactor, upPhase, downFactor, downPhase}, pDlyLine,
                                              scaleFactor);
}
Status tevsFIRMR32sc_Direct_16sc_ISfs(Complex16s* pSrcDst, int numIters, const Complex32s* pTaps, int tapsLen, int tapsFactor, int upFactor, int upPhase,
                                      int downFactor, int downPhase, Complex16s* pDlyLine, int scaleFactor) {
    return StatelessRate<Fir32sc_16sc>::block(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, tapsFactor, {upFactor, upPhase, downFactor, downPhase}, pDlyLine,
                                              scaleFactor);
}
Status tevsFIRMR_Direct_64f(const double* pSrc, double* pDst, int numIters, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                            int downPhase, double* pDlyLine) {
    return StatelessRate<Fir_64f>::block(pSrc, pDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, 0);
}
Status tevsFIRMR_Direct_64f_I(double* pSrcDst, int numIters, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                              double* pDlyLine) {
    return StatelessRate<Fir_64f>::block(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, 0);
}
Status tevsFIRMR_Direct_64fc(const Complex64f* pSrc, Complex64f* pDst, int numIters, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase,
                             int downFactor, int downPhase, Complex64f* pDlyLine) {
    return StatelessRate<Fir_64fc>::block(pSrc, pDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, 0);
}
Status tevsFIRMR_Direct_64fc_I(Complex64f* pSrcDst, int numIters, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                               int downPhase, Complex64f* pDlyLine) {
    return StatelessRate<Fir_64fc>::block(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, 0);
}
Status tevsFIRMR64f_Direct_32f(const float* pSrc, float* pDst, int numIters, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                               int downPhase, float* pDlyLine) {
    return StatelessRate<Fir64f_32f>::block(pSrc, pDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, 0);
}
Status tevsFIRMR64f_Direct_32f_I(float* pSrcDst, int numIters, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                 float* pDlyLine) {
    return StatelessRate<Fir64f_32f>::block(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, 0);
}
Status tevsFIRMR64fc_Direct_32fc(const Complex32f* pSrc, Complex32f* pDst, int numIters, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase,
                                 int downFactor, int downPhase, Complex32f* pDlyLine) {
    return StatelessRate<Fir64fc_32fc>::block(pSrc, pDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, 0);
}
Status tevsFIRMR64fc_Direct_32fc_I(Complex32f* pSrcDst, int numIters, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                                   int downPhase, Complex32f* pDlyLine) {
    return StatelessRate<Fir64fc_32fc>::block(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, 0);
}
Status tevsFIRMR64f_Direct_32s_Sfs(const int32_t* pSrc, int32_t* pDst, int numIters, const double* pTaps, int tapsLen, int upFactor, int upPhase,
                                   int downFactor, int downPhase, int32_t* pDlyLine, int scaleFactor) {
    return StatelessRate<Fir64f_32s>::block(pSrc, pDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, scaleFactor);
}
Status tevsFIRMR64f_Direct_32s_ISfs(int32_t* pSrcDst, int numIters, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                    int32_t* pDlyLine, int scaleFactor) {
    return StatelessRate<Fir64f_32s>::block(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, scaleFactor);
}
Status tevsFIRMR_Direct_32s_Sfs(const int32_t* pSrc, int32_t* pDst, int numIters, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                                int downPhase, int32_t* pDlyLine, int scaleFactor) {
    return StatelessRate<Fir64f_32s>::block(pSrc, pDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, scaleFactor);
}
Status tevsFIRMR_Direct_32s_ISfs(int32_t* pSrcDst, int numIters, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                 int32_t* pDlyLine, int scaleFactor) {
    return StatelessRate<Fir64f_32s>::block(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, scaleFactor);
}
Status tevsFIRMR64fc_Direct_32sc_Sfs(const Complex32s* pSrc, Complex32s* pDst, int numIters, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase,
                                     int downFactor, int downPhase, Complex32s* pDlyLine, int scaleFactor) {
    return StatelessRate<Fir64fc_32sc>::block(pSrc, pDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, scaleFactor);
}
Status tevsFIRMR64fc_Direct_32sc_ISfs(Complex32s* pSrcDst, int numIters, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                                      int downPhase, Complex32s* pDlyLine, int scaleFactor) {
    return StatelessRate<Fir64fc_32sc>::block(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, scaleFactor);
}
Status tevsFIRMR64f_Direct_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int numIters, const double* pTaps, int tapsLen, int upFactor, int upPhase,
                                   int downFactor, int downPhase, int16_t* pDlyLine, int scaleFactor) {
    return StatelessRate<Fir64f_16s>::block(pSrc, pDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, scaleFactor);
}
Status tevsFIRMR64f_Direct_16s_ISfs(int16_t* pSrcDst, int numIters, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                    int16_t* pDlyLine, int scaleFactor) {
    return StatelessRate<Fir64f_16s>::block(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, scaleFactor);
}
Status tevsFIRMR64fc_Direct_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int numIters, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase,
                                     int downFactor, int downPhase, Complex16s* pDlyLine, int scaleFactor) {
    return StatelessRate<Fir64fc_16sc>::block(pSrc, pDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, scaleFactor);
}
Status tevsFIRMR64fc_Direct_16sc_ISfs(Complex16s* pSrcDst, int numIters, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                                      int downPhase, Complex16s* pDlyLine, int scaleFactor) {
    return StatelessRate<Fir64fc_16sc>::block(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, 0, {upFactor, upPhase, downFactor, downPhase}, pDlyLine, scaleFactor);
}
