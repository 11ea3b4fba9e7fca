#include "telephony/viterbi.table.h"

#include "core/complex.h"
#include "core/simd/lanes.h"
#include "core/simd/map.h"
#include "core/simd/real.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

using Shorts = Vec<int16_t, kLanes<int16_t>>;
using Row = Vec<int16_t, 8>;
constexpr int kParts = 32 / kRegisterBytes;   // registers to a group of 16 states

// ---- branch metrics ---------------------------------------------------------------------------------------------------------------------

// The eight sums of a, b and c with their signs, of which the first bits of the symbol take the first.
TEVS_INLINE Row signedSums(int a, int b, int c) {
    const Row byA = {1, 1, 1, 1, -1, -1, -1, -1}, byB = {1, 1, -1, -1, 1, 1, -1, -1}, byC = {1, -1, 1, -1, 1, -1, 1, -1};
    return same<Row>(int16_t(a)) * byA + same<Row>(int16_t(b)) * byB + same<Row>(int16_t(c)) * byC;
}

void rows(const int8_t* src, int16_t* dst, int len, int numPoly) {
    int n = 0;
    if (numPoly == 2) {
        for (; n <= len - 8; n += 8, src += 16, dst += 32) {
            const auto x = load<int16_t, 8>(reinterpret_cast<const int16_t*>(src));
            const Row a = x << 8 >> 8, b = x >> 8, sum = a + b, less = a - b;
            using I = Vec<int32_t, 4>;
            const I first[2] = {(I)interleaveLow(sum, less), (I)interleaveHigh(sum, less)},
                    second[2] = {(I)interleaveLow(-less, -sum), (I)interleaveHigh(-less, -sum)};
            for (int i = 0; i < 2; ++i) store(dst + 16 * i, interleave(first[i], second[i]));
        }
    }
    const int symbols = 1 << numPoly;
    for (; n < len; ++n, src += numPoly, dst += symbols) {
        if (numPoly <= 2) {
            const int a = numPoly == 2 ? src[0] : 0, b = src[numPoly - 1];
            dst[0] = int16_t(a + b);
            dst[1] = int16_t(a - b);
            if (numPoly == 2) {
                dst[2] = int16_t(b - a);
                dst[3] = int16_t(-a - b);
            }
            continue;
        }
        const Row last = signedSums(src[numPoly - 3], src[numPoly - 2], src[numPoly - 1]);
        for (int y = 0; y < symbols; y += 8) {
            int first = 0;
            for (int i = 0; i < numPoly - 3; ++i) first += y >> (numPoly - 1 - i) & 1 ? -src[i] : src[i];
            store(dst + y, last + same<Row>(int16_t(first)));
        }
    }
}

// Steps in lanes. Not a number is what is nearest to begin with; it is no better than anything, and nothing that is is better than what is found.
void nearest(const Complex32f* src, int16_t* dst, uint8_t* indx, int len, const Complex32f* points, int numPoints, int numSymbols, float scale) {
    constexpr int N = kLanes<float>;
    using V = Vec<float, N>;
    using I = Vec<int32_t, N>;
    const int each = numPoints / numSymbols;
    for (ptrdiff_t n = 0; n < len; n += N) {
        const int count = len - n < N ? int(len - n) : N;
        Stage<N, const Complex32f*> held;
        const Complex32f* p = src + n;
        if (count < N) {
            held.in(p, count);
            p = held.at();
        }
        const auto z = loadSplit<float, N>(partsOf(p));
        for (int y = 0; y < numSymbols; ++y) {
            V least = constant<V>(__builtin_nan(""));
            I which = {};
            for (int i = 0; i < each; ++i) {
                const Complex32f q = points[ptrdiff_t{y} * each + i];
                const V re = z.a - same<V>(q.re), im = z.b - same<V>(q.im), d = re * re + im * im;
                const auto better = ~(d >= least) & (d == d);
                least = better ? d : least;
                which = better ? I{} + i : which;
            }
            int32_t metric[N], place[N];
            store(metric, nearestInt(atMost(constant<V>(32767), -(same<V>(scale) * least))));
            store(place, which);
            for (int k = 0; k < count; ++k) {
                const ptrdiff_t at = (n + k) * numSymbols + y;
                dst[at] = int16_t(metric[k] < -32768 ? -32768 : metric[k]);
                if (indx) indx[at] = uint8_t(place[k]);
            }
        }
    }
}

// ---- encoder ----------------------------------------------------------------------------------------------------------------------------

constexpr int kChunk = 1024;
using Plane = uint8_t[kChunk + kRegisterBytes];

// dst[i * count + k] = planes[k][i] for up to 8 planes: four bytes at a time, of which those that are too many are written over by the next.
void putTogether(const Plane* planes, uint8_t* dst, int n, int count) {
    constexpr int N = kRegisterBytes;
    uint8_t four[2][4 * (kChunk + N)];
    for (int q = 0; 4 * q < count; ++q)
        for (int i = 0; i < n; i += N) {
            const auto plane = [&](int k) { return load<uint8_t, N>(planes[4 * q + k < count ? 4 * q + k : 0] + i); };
            using W = Vec<uint16_t, N / 2>;
            const auto a = interleave(plane(0), plane(1)), b = interleave(plane(2), plane(3));
            store(four[q] + 4 * i, interleave((W)a.a, (W)b.a));
            store(four[q] + 4 * i + 2 * N, interleave((W)a.b, (W)b.b));
        }
    for (int i = 0; i < n - 1; ++i, dst += count) {
        memcpy(dst, four[0] + 4 * i, 4);
        if (count > 4) memcpy(dst + 4, four[1] + 4 * i, 4);
    }
    for (int k = 0; k < count; ++k) dst[k] = four[k / 4][4 * (n - 1) + k % 4];
}

// Each output is the exclusive or of the inputs at the delays that its polynomial has: whole vectors of them, at any address.
void encode(const uint8_t* src, uint8_t* dst, int len, const int* poly, int numPoly, int constraintLen, int state) {
    constexpr int kPast = 16, N = kRegisterBytes;
    using V = Vec<uint8_t, N>;
    uint8_t in[kPast + kChunk + N];
    Plane out[8];
    for (int d = 1; d < constraintLen; ++d) in[kPast - d] = uint8_t(state >> (constraintLen - 1 - d) & 1);
    for (int n; len > 0; len -= n, src += n, dst += ptrdiff_t{n} * numPoly) {
        n = len < kChunk ? len : kChunk;
        int i = 0;
        for (; i <= n - N; i += N) store(in + kPast + i, load<uint8_t, N>(src + i) & 1);
        for (; i < n; ++i) in[kPast + i] = src[i] & 1;
        for (int k = 0; k < numPoly; ++k)
            for (i = 0; i < n; i += N) {
                V y = {};
                for (int taps = poly[k] & ((1 << constraintLen) - 1); taps; taps &= taps - 1)
                    y ^= load<uint8_t, N>(in + kPast + i - (constraintLen - 1 - __builtin_ctz(unsigned(taps))));
                store(out[k] + i, y);
            }
        if (numPoly == 1)
            memcpy(dst, out[0], size_t(n));
        else if (numPoly == 2)
            mapLong<N>(
                n, reinterpret_cast<LanePair<uint8_t>*>(dst),
                [](auto, const uint8_t* a, const uint8_t* b) { return interleave(load<uint8_t, N>(a), load<uint8_t, N>(b)); },
                static_cast<const uint8_t*>(out[0]), static_cast<const uint8_t*>(out[1]));
        else
            putTogether(out, dst, n, numPoly);
        if (len > n) memcpy(in, in + n, kPast);
    }
}

// ---- forward ----------------------------------------------------------------------------------------------------------------------------

TEVS_INLINE Shorts larger(Shorts a, Shorts b) {
#if TEVS_REGISTER_BYTES >= 32
    return (Shorts)_mm256_max_epi16((__m256i)a, (__m256i)b);
#else
    return (Shorts)_mm_max_epi16((__m128i)a, (__m128i)b);
#endif
}
TEVS_INLINE int largestLane(Shorts v) {
    int16_t lane[kLanes<int16_t>];
    store(lane, v);
    int most = lane[0];
    for (int16_t x : lane) most = x > most ? x : most;
    return most;
}

// Two bytes of the row for each lane.
TEVS_INLINE Shorts looked(const int16_t* row, const uint8_t* lookup) {
#if TEVS_REGISTER_BYTES >= 32
    return (Shorts)_mm256_shuffle_epi8(_mm256_broadcastsi128_si256(loadLow<16>(row)), loadAs<__m256i>(lookup));
#elif TEVS_LEVEL >= 1
    return (Shorts)_mm_shuffle_epi8(loadLow<16>(row), loadLow<16>(lookup));
#else
    const auto which = load<int16_t, 8>(reinterpret_cast<const int16_t*>(lookup));
    Shorts v = {};
    for (int y = 0; y < 8; ++y) v |= (which == int16_t(0x202 * y + 0x100)) & row[y];
    return v;
#endif
}

// A bit for each lane of what is all ones or zeros, by blocks of eight lanes of a and of b.
TEVS_INLINE uint32_t laneSigns(Shorts a, Shorts b) {
#if TEVS_REGISTER_BYTES >= 32
    return uint32_t(_mm256_movemask_epi8(_mm256_packs_epi16((__m256i)a, (__m256i)b)));
#else
    return uint32_t(_mm_movemask_epi8(_mm_packs_epi16((__m128i)a, (__m128i)b)));
#endif
}

// The rows of metrics of a few steps.
constexpr int kSteps = 32;
struct Rows {
    int16_t row[Trellis::kMostParts][kSteps * 8 + 8];
    int stride[Trellis::kMostParts];

    TEVS_INLINE Rows(const Trellis& t, const int8_t* src, int len) {
        for (int part = 0, first = 0; part < t.parts; ++part) {
            const int polys = t.numPoly - first < Trellis::kPartPolys ? t.numPoly - first : Trellis::kPartPolys;
            stride[part] = 1 << polys;
            if (t.parts == 1) {
                rows(src, row[0], len, polys);
            } else {
                int8_t some[kSteps * Trellis::kPartPolys];
                for (int n = 0; n < len; ++n)
                    for (int i = 0; i < polys; ++i) some[n * polys + i] = src[n * t.numPoly + first + i];
                rows(some, row[part], len, polys);
            }
            first += polys;
        }
    }
};

// The metrics of branch k (0 .. 3) of a pair of groups at a step.
template <bool OnePart> TEVS_INLINE Shorts branch(const Trellis& t, const Rows& r, int step, int k, int at) {
    const uint8_t* const lookup = t.lookup + ptrdiff_t{k} * t.parts * t.states() + at;
    Shorts v = looked(r.row[0] + step * r.stride[0], lookup);
    if (!OnePart)
        for (int part = 1; part < t.parts; ++part) v += looked(r.row[part] + step * r.stride[part], lookup + ptrdiff_t{part} * t.states());
    return v;
}

// One register of each of two groups, x and y, becomes one of what the lower and of what the upper half is made from: put(0 or 1, register). Lanes are rotated with the input's bit, which
// brings each bit of the state to where it was.
template <bool Symmetric, bool OnePart, class Put>
TEVS_INLINE uint32_t butterfly(const Trellis& t, const Rows& r, int step, int at, Shorts x, Shorts y, Put put) {
    const Shorts v = branch<OnePart>(t, r, step, 0, at);
    const Shorts a = x + v, b = Symmetric ? y - v : y + branch<OnePart>(t, r, step, 1, at);
    const Shorts c = Symmetric ? x - v : x + branch<OnePart>(t, r, step, 2, at), d = Symmetric ? y + v : y + branch<OnePart>(t, r, step, 3, at);
    const Shorts zero = larger(a, b), one = larger(c, d), even = blockLow(zero, one), odd = blockHigh(zero, one);
#if TEVS_REGISTER_BYTES >= 32
    put(0, (Shorts)_mm256_permute2x128_si256((__m256i)even, (__m256i)odd, 0x20));
    put(1, (Shorts)_mm256_permute2x128_si256((__m256i)even, (__m256i)odd, 0x31));
#else
    put(0, even);
    put(1, odd);
#endif
    return laneSigns((Shorts)(b > a), (Shorts)(d > c));
}

// Of 64 states, in registers all along.
template <bool Symmetric, bool OnePart> TEVS_INLINE uint32_t* steps64(const Trellis& t, const Rows& r, int len, int16_t* metrics, uint32_t* decisions) {
    constexpr int n = kLanes<int16_t>;
    Shorts m[4 * kParts];
    for (int i = 0; i < 4 * kParts; ++i) m[i] = load<int16_t, n>(metrics + i * n);
    for (int step = 0; step < len; ++step, decisions += 2) {
        Shorts next[4 * kParts];
        uint32_t word[2] = {};
        for (int pair = 0; pair < 2; ++pair)
            for (int half = 0; half < kParts; ++half)
                word[pair] |=
                    butterfly<Symmetric, OnePart>(t, r, step, 32 * pair + kRegisterBytes * half, m[2 * pair * kParts + half], m[(2 * pair + 1) * kParts + half],
                                                  [&](int i, Shorts v) TEVS_HERE { next[kParts == 1 ? 2 * i + pair : 2 * (2 * half + pair) + i] = v; })
                    << (16 * half);
        for (int i = 0; i < 4 * kParts; ++i) m[i] = next[i];
        store(decisions, Two<uint32_t>{word[0], word[1]});
    }
    for (int i = 0; i < 4 * kParts; ++i) store(metrics + i * n, m[i]);
    return decisions;
}
// Of more.
template <bool Symmetric, bool OnePart>
TEVS_INLINE void stepOf(const Trellis& t, const Rows& r, int step, const int16_t* now, int16_t* next, uint32_t* decisions) {
    constexpr int n = kLanes<int16_t>;
    const int words = t.words();
    for (int pair = 0; pair < words; ++pair) {
        uint32_t word = 0;
        for (int half = 0; half < kParts; ++half)
            word |= butterfly<Symmetric, OnePart>(
                        t, r, step, 32 * pair + kRegisterBytes * half, load<int16_t, n>(now + 32 * pair + half * n),
                        load<int16_t, n>(now + 32 * pair + 16 + half * n),
                        [&](int i, Shorts v) TEVS_HERE { store(next + (kParts == 1 ? 16 * (pair + i * words) : 16 * (pair + half * words) + i * n), v); })
                    << (16 * half);
        decisions[pair] = word;
    }
}

// All less the largest, and then half of what they may lie apart: so there is as much room above as below.
void centre(const Trellis& t, int16_t* metrics) {
    constexpr int n = kLanes<int16_t>;
    Shorts most = load<int16_t, n>(metrics);
    for (int i = n; i < t.states(); i += n) most = larger(most, load<int16_t, n>(metrics + i));
    const Shorts by = same<Shorts>(int16_t(largestLane(most) - 128 * (t.bits + 1) * t.numPoly));
    for (int i = 0; i < t.states(); i += n) store(metrics + i, load<int16_t, n>(metrics + i) - by);
}

template <bool Symmetric, bool OnePart> void forwardOf(Trellis& t, const int8_t* src, int len, int16_t* now, int16_t* other, uint32_t* decisions) {
    int16_t* const home = now;
    for (int n; len > 0; len -= n, src += n * t.numPoly, t.since += n) {
        // No sooner: by then paths lead from the first state into all, and those from states out of reach, which lie further apart, are gone.
        if (t.since == t.interval) {
            centre(t, now);
            t.since = 0;
        }
        n = len < kSteps ? len : kSteps;
        if (n > t.interval - t.since) n = t.interval - t.since;
        const Rows r(t, src, n);
        if (t.bits == 6) {
            decisions = steps64<Symmetric, OnePart>(t, r, n, now, decisions);
            continue;
        }
        for (int step = 0; step < n; ++step, decisions += t.words()) {
            stepOf<Symmetric, OnePart>(t, r, step, now, other, decisions);
            int16_t* const next = other;
            other = now;
            now = next;
        }
    }
    if (now != home) memcpy(home, now, size_t(t.states()) * sizeof *home);
}
void forward(Trellis& t, const int8_t* src, int len, int16_t* now, int16_t* other, uint32_t* decisions) {
    if (t.parts > 1)
        forwardOf<false, false>(t, src, len, now, other, decisions);
    else if (t.symmetric)
        forwardOf<true, true>(t, src, len, now, other, decisions);
    else
        forwardOf<false, true>(t, src, len, now, other, decisions);
}

// ---- back -------------------------------------------------------------------------------------------------------------------------------

constexpr int kReversed[16] = {0, 8, 4, 12, 2, 10, 6, 14, 1, 9, 5, 13, 3, 11, 7, 15};

int best(const Trellis& t, const int16_t* metrics, int first, int last) {
    constexpr int n = kLanes<int16_t>;
    const auto at = [&](int i) { return kReversed[i % 16] << (t.bits - 4) | i / 16; };
    int most = INT16_MIN - 1, state = 0;
    if (last - first + 1 == t.states()) {
        Shorts v = load<int16_t, n>(metrics);
        for (int i = n; i < t.states(); i += n) v = larger(v, load<int16_t, n>(metrics + i));
        most = largestLane(v);
        state = INT32_MAX;
        for (int i = 0; i < t.states(); i += n) {
            const Shorts equal = (Shorts)(load<int16_t, n>(metrics + i) == int16_t(most));
            uint32_t signs = laneSigns(equal, Shorts{});
            for (; signs; signs &= signs - 1) {
                const int bit = __builtin_ctz(signs), s = at(i + bit % 8 + bit / 16 * 8);
                state = s < state ? s : state;
            }
        }
        return state;
    }
    for (int s = first; s <= last; ++s) {
        const int m = metrics[(s & ((1 << (t.bits - 4)) - 1)) * 16 + kReversed[s >> (t.bits - 4)]];
        if (m > most) {
            most = m;
            state = s;
        }
    }
    return state;
}

// Which bit of its word decides for a state, from its upper five bits.
constexpr int bitOf(int top) { return (top & 1) * 16 + (top >> 4) * 8 + (top >> 1 & 1) * 4 + (top >> 2 & 1) * 2 + (top >> 3 & 1); }
struct BitTable {
    uint8_t bit[32];
    constexpr BitTable() : bit{} {
        for (int i = 0; i < 32; ++i) bit[i] = uint8_t(bitOf(i));
    }
};
constexpr BitTable kBits;
// Of 64 states: the place of each among the bits of two words, and from a place to that of the even predecessor. That of the odd one has bit 5 as well.
constexpr int placeOf(int state) { return (state & 1) * 32 + bitOf(state >> 1); }
struct PlaceTable {
    uint8_t place[64], state[64], before[64];
    constexpr PlaceTable() : place{}, state{}, before{} {
        for (int s = 0; s < 64; ++s) {
            place[s] = uint8_t(placeOf(s));
            state[placeOf(s)] = uint8_t(s);
            before[placeOf(s)] = uint8_t(placeOf(s << 1 & 63));
        }
    }
};
constexpr PlaceTable kPlaces;
static_assert(placeOf(1) == 32 && placeOf(3) == 48);

// A trace waits for itself at every step; several take turns. What they go by is copied: bytes that are written might be part of it.
template <int Count> struct Traces {
    const uint32_t* from[Count];
    uint8_t* to[Count];
    uint32_t at[Count];
};
template <int Count, bool Write> TEVS_INLINE void back64(Traces<Count> r, int len, int* states) {
    for (uint32_t& q : r.at) q = kPlaces.place[q];
    for (ptrdiff_t n = len - 1; n >= 0; --n)
        for (int w = 0; w < Count; ++w) {
            const uint32_t q = r.at[w];
#ifdef __i386__
            const uint32_t odd = r.from[w][2 * n + (q >> 5)] >> (q & 31) & 1;
#else
            uint64_t word;
            memcpy(&word, r.from[w] + 2 * n, sizeof word);
            const uint32_t odd = uint32_t(word >> q & 1);
#endif
            if (Write) r.to[w][n] = uint8_t(q >> 3 & 1);
            r.at[w] = kPlaces.before[q] | odd << 5;
        }
    for (int w = 0; w < Count; ++w) states[w] = kPlaces.state[r.at[w]];
}
template <int Count, bool Write> TEVS_INLINE void backOf(const Trellis& t, const uint32_t* const* decisions, int len, int* states, uint8_t* const* dst) {
    Traces<Count> r;
    for (int w = 0; w < Count; ++w) {
        r.from[w] = decisions[w];
        r.to[w] = Write ? dst[w] : nullptr;
        r.at[w] = uint32_t(states[w]);
    }
    if (t.bits == 6) {
        back64<Count, Write>(r, len, states);
        return;
    }
    const uint32_t words = uint32_t(t.words()), last = uint32_t(t.states() - 1);
    const int top = t.bits - 1;
    for (ptrdiff_t n = len - 1; n >= 0; --n)
        for (int w = 0; w < Count; ++w) {
            const uint32_t s = r.at[w], odd = r.from[w][n * words + (s & (words - 1))] >> kBits.bit[s >> (top - 4)] & 1;
            if (Write) r.to[w][n] = uint8_t(s >> top);
            r.at[w] = (s << 1 | odd) & last;
        }
    for (int w = 0; w < Count; ++w) states[w] = int(r.at[w]);
}
void back(const Trellis& t, int count, const uint32_t* const* decisions, int len, int* states, uint8_t* const* dst) {
    if (count == kWindows && dst)
        backOf<kWindows, true>(t, decisions, len, states, dst);
    else if (count == kWindows)
        backOf<kWindows, false>(t, decisions, len, states, dst);
    else if (dst)
        backOf<1, true>(t, decisions, len, states, dst);
    else
        backOf<1, false>(t, decisions, len, states, dst);
}

}   // namespace

extern const ViterbiKernels viterbi = {
    .rows = rows,
    .nearest = nearest,
    .encode = encode,
    .forward = forward,
    .best = best,
    .back = back,
};

}   // namespace tevs::TEVS_LEVEL_NS
