// Mixed-radix transforms: how a length is split, the tables, and the order of the passes.
#include "transform/mixed_radix.h"

#include <limits.h>
#include <string.h>

#include <algorithm>

#include "transform/fft.plan.h"
#include "transform/roots.h"
#include "vector/movement.table.h"

namespace tevs {
namespace {

template <class T> const DftKernels<T>* chosenKernels();
template <> const DftKernels<float>* chosenKernels() { return dft32; }
template <> const DftKernels<double>* chosenKernels() { return dft64; }

// The next prime factor of n, 1 of 1.
int smallestPrime(int n) {
    if (n == 1) return 1;
    for (int d = 2; int64_t{d} * d <= n && d <= kMostPrime; ++d)
        if (n % d == 0) return d;
    return n;
}

// ---- how to split a length -------------------------------------------------------------------------------------------------------------

// What a value costs in a pass of each radix, about: measured, where 16 registers hold a butterfly up to radix 8, and as the sums that they are for primes above 16.
double passCost(int radix) {
    static constexpr float kCosts[] = {0, 0, 9.5, 12, 12, 14, 15, 19, 16, 26, 27, 33, 26, 38, 36, 38, 36};
    return radix <= kMostRadix ? double(kCosts[radix]) : 12 + 1.6 * radix;
}
double rowsCost(int columns) {
    static constexpr float kCosts[] = {0, 0, 18, 21, 20, 23, 24, 27, 24, 31, 28, 37, 29, 42, 38, 35, 34};
    return columns <= kMostRadix ? double(kCosts[columns]) : 16 + 2.4 * columns;
}

struct Radixes {
    int count = 0;
    int r[kMostPasses] = {};
    double cost = 0;
};
// The cheapest product of radices, none above `most`, that is n and costs less than `limit`; its cost is limit where there is none.
Radixes cheapest(int n, double limit = 1e9, int most = kMostPrime) {
    Radixes best;
    if (n == 1) return best;
    best.cost = limit;
    const auto consider = [&](int radix) {
        const double cost = passCost(radix);
        if (cost >= best.cost) return;
        Radixes rest = cheapest(n / radix, best.cost - cost, std::min(radix, most));
        if (rest.cost + cost >= best.cost || rest.count == kMostPasses) return;
        best = rest;
        best.cost += cost;
        best.r[best.count++] = radix;
    };
    int prime = 0;
    for (int m = n; m > 1; m /= prime) prime = smallestPrime(m);
    if (prime > kMostRadix) {
        if (prime <= most) consider(prime);
        return best;
    }
    for (int radix = std::min(most, kMostRadix); radix >= 2; --radix)
        if (n % radix == 0 && isPassRadix(radix)) consider(radix);
    return best;
}

struct Split {
    int width, columns;
    Radixes passes;
};
template <class T> Split split(const DftKernels<T>& kernels, int n) {
    Split best{0, n, {}};
    double least = 1e30;
    for (int w = 0; w < kernels.widths; ++w) {
        const int lanes = kernels.width[w].lanes;
        const auto blocks = [=](int run) { return double((run + lanes - 1) / lanes) / run; };   // per value
        const auto consider = [&](int columns) {
            const int rows = n / columns;
            Radixes r = cheapest(rows);
            // The first pass has the shortest runs: let it be the cheapest one.
            if (r.count > 0) std::rotate(r.r, std::min_element(r.r, r.r + r.count, [](int a, int b) { return passCost(a) < passCost(b); }), r.r + r.count);
            double cost = columns > kMostRadix ? rowsCost(columns) / lanes : rowsCost(columns) * blocks(rows);
            for (int i = 0, run = columns; i < r.count; run *= r.r[i++]) cost += passCost(r.r[i]) * blocks(run);
            if (cost >= least) return;
            least = cost;
            best = {w, columns, r};
        };
        for (int columns = 2; columns <= std::min(n, kMostRadix); ++columns)
            if (n % columns == 0 && kernels.width[w].rows[columns]) consider(columns);
        for (int m = n, prime; m > 1; m /= prime)
            if ((prime = smallestPrime(m)) > kMostRadix) consider(prime);
    }
    return best;
}

// What a transform of interleaved values of each radix costs: counted operations.
double pairCost(int radix) {
    static constexpr uint8_t kCosts[] = {0, 0, 2, 7, 9, 20, 20, 36, 27, 54, 50, 80, 55, 108, 86, 95, 100};
    return kCosts[radix];
}
// The cheapest passes and last step of n, none above `most`, by what they cost a value.
Radixes cheapestPairs(int n, double limit, int most = kMostAtOnce) {
    Radixes best;
    if (n == 1) return best;
    best.cost = limit;
    for (int radix = std::min(most, n); radix >= 2; --radix) {
        if (n % radix != 0) continue;
        const double cost = pairCost(radix) / radix + 6;
        if (cost >= best.cost) continue;
        Radixes rest = cheapestPairs(n / radix, best.cost - cost, radix);
        if ((rest.count == 0 && n > radix) || rest.cost + cost >= best.cost || rest.count == kMostPasses) continue;
        best = rest;
        best.cost += cost;
        best.r[best.count++] = radix;
    }
    return best;
}

struct PairSplit {
    int width, a;    // a = 0: none
    Radixes steps;   // the passes and the last step
    double cost;     // of a value
};
template <class T> PairSplit splitPairs(const DftPairKernels<T>& kernels, int n) {
    PairSplit best{};
    double least = 1e9;
    for (int w = 0; w < kernels.widths; ++w) {
        const int lanes = kernels.width[w].lanes;
        for (int a = 2; a <= kMostAtOnce; ++a) {
            const int b = n / a;
            if (n % a != 0 || b < lanes || b < 2) continue;
            const double first = (b + lanes - 1) / lanes * (pairCost(a) + 7 * a) / n, share = (a + lanes - 1) / lanes / double(a);
            if (first >= least) continue;
            Radixes steps = cheapestPairs(b, (least - first) / share);
            // With passes in between, half registers are slower than the passes over separate parts.
            if (steps.count == 0 || (steps.count > 1 && (a % lanes != 0 || (w == 0 && kernels.widths > 1)))) continue;
            // Three steps behind the first, of up to 1024 points: 1000 took 1.2 times as long as by the passes over parts, but in registers of 64 bytes 0.8 times.
            if (steps.count > 2 && n <= 1024 && lanes * int(2 * sizeof(T)) < 64) continue;
            const double cost = first + steps.cost * share;
            if (cost >= least) continue;
            least = cost;
            best = {w, a, steps, cost};
        }
    }
    return best;
}

// ---- tables ------------------------------------------------------------------------------------------------------------------------------

template <class T> class Writer {
public:
    explicit Writer(T* at) : at_(at) {}
    void put(uint64_t num, uint64_t den) { pair(rootOfUnity(num, den)); }
    // Cosine and sine of 2 pi num / den.
    void turn(uint64_t num, uint64_t den) {
        const Root r = rootOfUnity(num, den);
        pair({r.re, -r.im});
    }
    // f(lane), for the lanes of a block: all real parts, then all imaginary ones.
    template <class F> void block(int lanes, F f) {
        for (int i = 0; i < lanes; ++i) {
            const Root r = f(i);
            at_[i] = T(r.re);
            at_[i + lanes] = T(r.im);
        }
        at_ += 2 * lanes;
    }

private:
    void pair(Root r) {
        *at_++ = T(r.re);
        *at_++ = T(r.im);
    }
    T* at_;
};

template <class T> const T* passFactors(Carve& c, bool write, int radix, int m) {
    T* const at = c.take<T>(uint64_t{2} * uint64_t(m - 1) * uint64_t(radix - 1));
    Writer<T> w(at);
    if (write)
        for (int p = 1; p < m; ++p)
            for (int j = 1; j < radix; ++j) w.put(uint64_t(p) * uint64_t(j), uint64_t(radix) * uint64_t(m));
    return at;
}
template <class T> const T* passTurns(Carve& c, bool write, int radix) {
    const int h = radix / 2, rows = (h + 1) / 2 * 2;
    T* const at = c.take<T>(uint64_t{2} * uint64_t(rows) * uint64_t(h));
    Writer<T> w(at);
    if (write)
        for (int k = 1; k <= rows; ++k)
            for (int j = 1; j <= h; ++j) w.turn(uint64_t(j * k), uint64_t(radix));
    return at;
}
template <class T> void rowTables(DftRows<T>& rows, Carve& c, bool write, int lanes) {
    constexpr int kGroup = 16 / int(sizeof(T));
    const auto r = uint64_t(rows.columns), m = uint64_t(rows.rows), n = r * m;
    const bool isPrime = rows.columns > kMostRadix;
    const uint64_t blocks = (m + uint64_t(lanes) - 1) / uint64_t(lanes);
    T* const factors = c.take<T>(2 * (r - 1) * (isPrime ? m - 1 : blocks * uint64_t(lanes)));
    Writer<T> w(factors);
    rows.factors = factors;
    if (write && !isPrime)
        for (uint64_t b = 0; b < blocks; ++b) {
            const uint64_t first = b * uint64_t(lanes), k = first + uint64_t(lanes) <= m ? first : m > uint64_t(lanes) ? m - uint64_t(lanes) : 0;
            for (uint64_t l = 1; l < r; ++l) w.block(lanes, [=](int i) { return rootOfUnity((k + uint64_t(laneAt(lanes, i, kGroup))) * l, n); });
        }
    if (!isPrime) return;
    if (write)
        for (uint64_t k = 1; k < m; ++k)
            for (uint64_t l = 1; l < r; ++l) w.put(k * l, n);
    const uint64_t h = r / 2, prime = (h + uint64_t(lanes) - 1) / uint64_t(lanes);
    T* const turns = c.take<T>(2 * uint64_t(lanes) * prime * h);
    Writer<T> t(turns);
    rows.prime = turns;
    if (write)
        for (uint64_t b = 0; b < prime; ++b)
            for (uint64_t j = 1; j <= h; ++j)
                t.block(lanes, [=](int i) {
                    const Root root = rootOfUnity(j * (b * uint64_t(lanes) + uint64_t(i) + 1), r);
                    return Root{root.re, -root.im};
                });
}

template <class T> const T* pairFactors(Carve& c, bool write, int lanes, int a, int b) {
    const int blocks = (b + lanes - 1) / lanes;
    T* const factors = c.take<T>(uint64_t(blocks) * uint64_t(a - 1) * uint64_t(4 * lanes));
    T* at = factors;
    for (int block = 0; write && block < blocks; ++block)
        for (int j = 1; j < a; ++j, at += 4 * lanes)
            for (int i = 0; i < lanes; ++i) {
                const Root r = rootOfUnity(uint64_t(std::min(block * lanes, b - lanes) + i) * uint64_t(j), uint64_t(a) * uint64_t(b));
                at[2 * i] = at[2 * i + 1] = T(r.re);
                at[2 * i + 2 * lanes] = T(-r.im);
                at[2 * i + 2 * lanes + 1] = T(r.im);
            }
    return factors;
}

template <class T> void pairTables(PairSteps<T>& steps, const Radixes& r, Carve& c, bool write, int lanes) {
    steps.factors = pairFactors<T>(c, write, lanes, steps.a, steps.b);
    steps.passes = r.count - 1;
    steps.runs = 1;
    auto* const pass = c.take<PairPass<T>>(uint64_t(steps.passes));
    steps.pass = pass;
    for (int i = 0, run = steps.b; i < steps.passes; ++i) {
        const int radix = r.r[i], rest = run / radix;
        T* at = c.take<T>(uint64_t(rest - 1) * uint64_t(radix - 1) * 4);
        if (write) pass[i] = {radix, steps.runs, rest, at};
        for (int l = 1; write && l < rest; ++l)
            for (int j = 1; j < radix; ++j, at += 4) {
                const Root root = rootOfUnity(uint64_t(l) * uint64_t(j), uint64_t(run));
                at[0] = at[1] = T(root.re);
                at[2] = T(-root.im);
                at[3] = T(root.im);
            }
        steps.runs *= radix;
        run = rest;
    }
    int* const place = c.take<int>(uint64_t(steps.passes ? steps.runs : 0));
    steps.place = place;
    // The first pass's digit of a run's number is the highest, and the lowest of k.
    for (int d = 0; write && steps.passes && d < steps.runs; ++d) {
        place[d] = 0;
        for (int i = steps.passes - 1, rest = d, weight = steps.runs; i >= 0; --i) {
            weight /= r.r[i];
            place[d] += rest % r.r[i] * weight;
            rest /= r.r[i];
        }
    }
}

}   // namespace

bool isMixedLength(int n) {
    while (n > 1) {
        const int prime = smallestPrime(n);
        if (prime > kMostPrime) return false;
        n /= prime;
    }
    return true;
}

template <class T> double costInPairs(int n) {
    if (n <= kMostAtOnce || n > kMostInPairs) return 0;
    int rest = n;
    for (int d : {2, 3, 5, 7, 11, 13})
        while (rest % d == 0) rest /= d;
    if (rest > 1) return 0;
    const PairSplit s = splitPairs(*pairKernels<T>(), n);
    return s.a ? s.cost * n : 0;
}

namespace {

// Whether transforms of interleaved values, and so long, are faster as they lie: they work in place, but their factors take twice what the values do. 44100 points are a tenth to a fifth
// faster, 48000 a tenth slower. What no second cache holds is up to 1.6 times faster again, but for registers of one or two values.
template <class T> bool pairsAreFaster(int n, int widths) {
    constexpr int kSecondCache = 1 << 20, kMostWithTables = 1 << 22;
    return n <= kMostInPairs || (widths > 1 && n >= kSecondCache / int(2 * sizeof(T)) && n <= kMostWithTables);
}

// False where there is no such plan.
template <class T> bool planPairs(MixedRadix<T>& plan, int n, Carve& c, bool write) {
    const auto* const kernels = pairKernels<T>();
    PairPlan<T> pairs{};
    PairSplit s{};
    if (n > kMostAtOnce && pairsAreFaster<T>(n, kernels->widths)) s = splitPairs(*kernels, n);
    if (n == 1 || (n > kMostAtOnce && !s.a)) return false;
    auto* const at = c.take<PairPlan<T>>(1);
    if (n <= kMostAtOnce) {
        pairs.whole[0] = kernels->forward[n];
        pairs.whole[1] = kernels->inverse[n];
    } else {
        const auto& width = kernels->width[s.width];
        pairs.columns = width.columns[s.a];
        pairs.width = &width;
        pairs.rows = width.rows[s.steps.r[s.steps.count - 1]];
        pairs.steps.a = s.a;
        pairs.steps.b = n / s.a;
        pairTables(pairs.steps, s.steps, c, write, width.lanes);
    }
    plan.passes = plan.kInPairs;
    plan.pairs = at;
    if (write) *at = pairs;
    return true;
}

}   // namespace

template <class T> void planMixedRadix(MixedRadix<T>& plan, int n, bool interleaved, Carve& tables, bool write) {
    plan = {};
    plan.length = n;
    plan.kernels = chosenKernels<T>();
    if (interleaved && planPairs(plan, n, tables, write)) return;
    if (n <= kMostRadix) return;
    const Split s = split(*plan.kernels, n);
    plan.width = &plan.kernels->width[s.width];
    plan.passes = s.passes.count;
    plan.rows = {n / s.columns, s.columns, nullptr, nullptr};
    auto* const pass = tables.take<DftPass<T>>(uint64_t(plan.passes));
    plan.pass = pass;
    int m = plan.rows.rows;
    ptrdiff_t run = s.columns;
    for (int i = 0; i < plan.passes; ++i) {
        const int radix = s.passes.r[i];
        m /= radix;
        const T *const factors = passFactors<T>(tables, write, radix, m), *const turns = radix > kMostRadix ? passTurns<T>(tables, write, radix) : nullptr;
        if (write) pass[i] = {radix, m, run, factors, turns};
        run *= radix;
    }
    rowTables(plan.rows, tables, write, plan.width->lanes);
}

template <class T> void runMixedRadix(const MixedRadix<T>& plan, const Values<const T>& from, const Values<T>& dst, T scale, T* work) {
    const int n = plan.length;
    if (n <= kMostRadix) return plan.kernels->whole[n](from, dst, scale);
    Values<const T> src = from;
    const size_t count = size_t(n);
    const Parts<T> first{work, work + count}, other = dst.form == Form::Parts ? Parts<T>{dst.re, dst.im} : Parts<T>{dst.re, dst.re + count};
    const auto parts = [](Parts<T> p) { return Values<const T>{Form::Parts, p.re, p.im}; };
    const auto slot = [](int radix) { return radix <= kMostRadix ? radix : 0; };
    const int columns = plan.rows.columns;
    Parts<const T> at{src.re, src.im};
    if (plan.passes == 0 && src.form == Form::Reals) {
        memset(first.im, 0, count * sizeof(T));
        at = {src.re, first.im};
    } else if (plan.passes == 0 && src.form != Form::Parts) {
        const auto split = sizeof(T) == 4 ? movement->split32 : movement->split64;
        const bool swapped = src.form == Form::SwappedPairs;
        split(src.re, swapped ? first.im : first.re, swapped ? first.re : first.im, n);
        at = {first.re, first.im};
    }
    // By turns here and there, such that the last pass comes to lie in work. With an even number the first one goes to the destination, which may be the source.
    const bool even = plan.passes > 0 && plan.passes % 2 == 0;
    const bool shared = src.re == dst.re || (dst.form == Form::Parts && (src.re == dst.im || src.im == dst.re || src.im == dst.im));
    if (even && shared) {
        if (src.form == Form::Parts) {
            memcpy(first.re, src.re, count * sizeof(T));
            memcpy(first.im, src.im, count * sizeof(T));
            src = parts(first);
        } else {
            memcpy(work, src.re, (src.form == Form::Reals ? 1 : 2) * count * sizeof(T));
            src.re = work;
        }
    }
    for (int i = 0; i < plan.passes; ++i) {
        const Parts<T> to = (i % 2 == 0) == even ? other : first;
        plan.width->pass[int(src.form)][slot(plan.pass[i].radix)](plan.pass[i], src, to);
        src = parts(to);
        at = {to.re, to.im};
    }
    plan.width->rows[slot(columns)](plan.rows, at, dst, scale);
}

template <class T> void runPairs(const PairPlan<T>& plan, const T* src, T* dst, T scale, bool inverse, T* work) {
    alignas(64) T onStack[2 * kMostOnStack];
    const PairSteps<T>& steps = plan.steps;
    T* const y = steps.a * steps.b <= kMostOnStack ? onStack : work;
    plan.columns(steps, src, y, inverse);
    for (int i = 0; i < steps.passes; ++i) plan.width->pass[steps.pass[i].radix](steps.pass[i], steps.a, y, inverse);
    plan.rows(steps, y, dst, scale, inverse);
}

template double costInPairs<float>(int);
template double costInPairs<double>(int);
template void planMixedRadix(MixedRadix<float>&, int, bool, Carve&, bool);
template void planMixedRadix(MixedRadix<double>&, int, bool, Carve&, bool);
template void runMixedRadix(const MixedRadix<float>&, const Values<const float>&, const Values<float>&, float, float*);
template void runMixedRadix(const MixedRadix<double>&, const Values<const double>&, const Values<double>&, double, double*);
template void runPairs(const PairPlan<float>&, const float*, float*, float, bool, float*);
template void runPairs(const PairPlan<double>&, const double*, double*, double, bool, double*);

}   // namespace tevs
