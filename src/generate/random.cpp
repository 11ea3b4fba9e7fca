// Random numbers: one sequence of 32-bit integers, spread evenly or normally.
#include "tevs/random.h"

#include <algorithm>
#include <new>
#include <type_traits>

#include "core/args.h"
#include "core/memory.h"
#include "core/rounding.h"
#include "generate/random.table.h"

namespace tevs {
namespace {

// So many steps of x <- 69069 x + 1013904243 mod 2^32 at once.
struct Congruential {
    uint32_t factor = 1, summand = 0;
    constexpr uint32_t operator()(uint32_t x) const { return factor * x + summand; }
    constexpr Congruential after() const { return {69069 * factor, 69069 * summand + 1013904243}; }
};

// The generator in a record: five words in this order.
struct Core {
    uint32_t lcg, x1, x2, x3;
    int16_t borrow;   // 0 or -1
    uint16_t owned;   // the record came from InitAlloc

    static constexpr uint32_t next(uint32_t x) { return Congruential{}.after()(x); }
    explicit Core(uint32_t seed, bool fromInitAlloc = false) : lcg(1131199209), x1(seed), x2(next(x1)), x3(next(x2)), borrow(-1), owned(fromInitAlloc) {}
};

// The next len numbers, at most a block. Each difference waits for the borrow of the one before, which takes two operations in a row and cannot be shared among lanes:
// the sign makes the sequence no linear one that one could jump ahead in. Three steps at a time, no register is moved, and three of the congruential numbers, which can
// jump, come from one.
void draw(Core& core, int32_t* raw, int len) {
    uint32_t lcg = core.lcg, x1 = core.x1, x2 = core.x2, x3 = core.x3;
    int32_t borrow = core.borrow;
    const auto difference = [&](uint32_t newer, uint32_t& oldest) {
        const int32_t t = int32_t(newer - oldest + uint32_t(borrow));
        borrow = t >> 31;
        return oldest = uint32_t(t) + (uint32_t(borrow) & uint32_t(-18));
    };
    constexpr auto afterOne = Congruential{}.after(), afterTwo = afterOne.after(), afterThree = afterTwo.after();
    int i = 0;
    for (; i <= len - 3; i += 3) {
        raw[i] = int32_t(difference(x2, x3) + afterOne(lcg));
        raw[i + 1] = int32_t(difference(x1, x2) + afterTwo(lcg));
        lcg = afterThree(lcg);
        raw[i + 2] = int32_t(difference(x3, x1) + lcg);
    }
    for (; i < len; ++i) {
        lcg = afterOne(lcg);
        raw[i] = int32_t(difference(x2, x3) + lcg);
        const uint32_t x = x3;
        x3 = x2;
        x2 = x1;
        x1 = x;
    }
    core.lcg = lcg;
    core.x1 = x1;
    core.x2 = x2;
    core.x3 = x3;
    core.borrow = int16_t(borrow);
}

// What the results of a type are made by.
template <class T> struct Kind;
template <> struct Kind<uint8_t> {
    static constexpr uint32_t kUniform = 35, kNormal = 38;
    static Uniform<uint8_t> uniform() { return randomNumbers->truncated8u; }
    static Shifted<uint8_t> shifted() { return randomNumbers->shifted8u; }
};
template <> struct Kind<int16_t> {
    static constexpr uint32_t kUniform = 36, kNormal = 39;
    static Uniform<int16_t> uniform() { return randomNumbers->truncated16s; }
    static Shifted<int16_t> shifted() { return randomNumbers->shifted16s; }
};
template <> struct Kind<float> {
    static constexpr uint32_t kUniform = 37, kNormal = 40;
    static Uniform<float> uniform() { return randomNumbers->uniform32f; }
    static Shifted<float> shifted() { return randomNumbers->shifted32f; }
};
template <> struct Kind<double> {
    static Uniform<double> uniform() { return randomNumbers->uniform64f; }
    static Shifted<double> shifted() { return randomNumbers->shifted64f; }
};

// ---- uniform -----------------------------------------------------------------------------------------------------------------------------------

// The bounds' sum and difference are integers, or of the bounds' own type.
template <class T> double meanOf(T low, T high) {
    return toNearest([](T l, T h) { return (l + h) * 0.5; }, low, high);
}
template <class T> double scaleOf(T low, T high) {
    return toNearest([](T l, T h) { return (h - l) * 0x1p-32; }, low, high);
}

template <class T> void fillUniform(Core& core, T* dst, int len, double scale, double mean, Uniform<T> kernel) {
    constexpr int kBlock = 504;
    alignas(64) int32_t raw[kBlock];
    for (int left = len, n; left > 0; left -= n, dst += n) {
        n = std::min(left, kBlock);
        draw(core, raw, n);
        kernel(raw, dst, n, scale, mean);
    }
}

// ---- normal ------------------------------------------------------------------------------------------------------------------------------------

// The value that is left over where a call ends between the two of a pair: f and u1.
struct Spare {
    double factor, value;
};

// Fills a block with pairs from within the circle, out of as many as are missing each time: none is drawn that is not needed. What is rejected is written as well, and
// written over by the next.
void drawPairs(Core& core, PolarPairs& pairs, int count) {
    alignas(64) int32_t raw[2 * kPairBlock];
    for (int at = 0; at < count;) {
        const int missing = count - at;
        draw(core, raw, 2 * missing);
        for (int i = 0; i < missing; ++i) {
            const double u1 = raw[2 * i] * 0x1p-31, u2 = raw[2 * i + 1] * 0x1p-31, s = u1 * u1 + u2 * u2;
            pairs.u1[at] = u1;
            pairs.u2[at] = u2;
            pairs.s[at] = s;
            at += (s < 1) & (s > 0);
        }
    }
}

// The spare is that of an odd len.
template <class T> Spare fillNormal(Core& core, T* dst, int len, double mean, double stdDev, Shifted<T> kernel) {
    PolarPairs pairs = {};
    alignas(64) double product[2 * kPairBlock];
    Spare spare{};
    for (int left = len, n; left > 0; left -= n, dst += n) {
        n = std::min(left, 2 * kPairBlock);
        const int count = (n + 1) / 2;
        drawPairs(core, pairs, count);
        randomNumbers->normal(pairs, count, stdDev, product);
        kernel(product, dst, n, mean);
        spare = {pairs.s[count - 1], pairs.u1[count - 1]};
    }
    return spare;
}

// ---- records -----------------------------------------------------------------------------------------------------------------------------------

// At any address, with nothing between their members but what keeps them at multiples of 4 from the start.
template <class T> constexpr int kPad = sizeof(T) == 1 ? 2 : 0;
#pragma pack(push, 1)
template <class T> struct UniformRecord {
    static constexpr uint32_t kId = Kind<T>::kUniform;
    static constexpr int kAllocated = sizeof(T) == 4 ? 52 : 48;
    uint32_t idCtx, seed;
    T low, high;
    uint8_t pad[kPad<T>];
    double mean, scale;
    Core core;

    UniformRecord(T low, T high, uint32_t seed, bool owned)
        : idCtx(kId), seed(seed), low(low), high(high), mean(meanOf(low, high)), scale(scaleOf(low, high)), core(seed, owned) {}
    void fill(T* dst, int len) {
        Core now = core;
        fillUniform(now, dst, len, scale, mean, Kind<T>::uniform());
        core = now;
    }
};
template <class T> struct NormalRecord {
    static constexpr uint32_t kId = Kind<T>::kNormal;
    static constexpr int kAllocated = sizeof(T) == 4 ? 68 : 60;
    uint32_t idCtx, seed;
    T mean, stdDev;
    uint8_t pad[kPad<T>];
    Core core;
    int32_t needPair;   // 1: no value is left over
    double spareFactor, spareValue, reserved;

    NormalRecord(T mean, T stdDev, uint32_t seed, bool owned)
        : idCtx(kId), seed(seed), mean(mean), stdDev(stdDev), core(seed, owned), needPair(1), spareFactor(0), spareValue(0), reserved(0) {}
    void fill(T* dst, int len) {
        if (needPair == 0) {
            const double product = toNearest([](double d, double f, double u) { return d * f * u; }, double(stdDev), spareFactor, spareValue);
            Kind<T>::shifted()(&product, dst, 1, mean);
            needPair = 1;
            ++dst;
            --len;
        }
        if (len == 0) return;
        Core now = core;
        const Spare spare = fillNormal(now, dst, len, mean, stdDev, Kind<T>::shifted());
        core = now;
        if (len % 2) {
            needPair = 0;
            spareFactor = spare.factor;
            spareValue = spare.value;
        }
    }
};
#pragma pack(pop)
static_assert(sizeof(UniformRecord<uint8_t>) == 48 && sizeof(UniformRecord<int16_t>) == 48 && sizeof(UniformRecord<float>) == 52);
static_assert(sizeof(NormalRecord<uint8_t>) == 60 && sizeof(NormalRecord<int16_t>) == 60 && sizeof(NormalRecord<float>) == 64);

// The record that a public type stands for.
template <class State> struct RecordOf;
template <> struct RecordOf<RandUniState_8u> : std::type_identity<UniformRecord<uint8_t>> {};
template <> struct RecordOf<RandUniState_16s> : std::type_identity<UniformRecord<int16_t>> {};
template <> struct RecordOf<RandUniState_32f> : std::type_identity<UniformRecord<float>> {};
template <> struct RecordOf<RandGaussState_8u> : std::type_identity<NormalRecord<uint8_t>> {};
template <> struct RecordOf<RandGaussState_16s> : std::type_identity<NormalRecord<int16_t>> {};
template <> struct RecordOf<RandGaussState_32f> : std::type_identity<NormalRecord<float>> {};
template <class State> using Record = typename RecordOf<State>::type;

template <class State> Status getSize(int* pSize) {
    if (Status s = Args().ptr(pSize)) return s;
    *pSize = sizeof(Record<State>);
    return StatusOk;
}
template <class State, class T> Status init(State* pState, T a, T b, uint32_t seed) {
    if (Status s = Args().ptr(pState)) return s;
    new (pState) Record<State>(a, b, seed, false);
    return StatusOk;
}
// The allocator counts elements of the samples' type: 16s takes twice and 32f four times what the record needs.
template <class State, class T> Status initAlloc(State** ppState, T a, T b, uint32_t seed) {
    if (Status s = Args().ptr(ppState)) return s;
    void* const block = allocate(Record<State>::kAllocated * sizeof(T));
    if (!block) return StatusNoMemory;
    new (block) Record<State>(a, b, seed, true);
    *ppState = static_cast<State*>(block);
    return StatusOk;
}
template <class State, class T> Status fill(T* pDst, int len, State* pState) {
    if (Status s = Args().ptr(pDst).ptr(pState).len(len).record(pState, Record<State>::kId)) return s;
    NearestRounding guard;
    reinterpret_cast<Record<State>*>(pState)->fill(pDst, len);
    return StatusOk;
}
template <class State> Status free(State* pState) {
    if (Status s = Args().ptr(pState).record(pState, Record<State>::kId)) return s;
    if (reinterpret_cast<Record<State>*>(pState)->core.owned) releaseRecord(pState);
    return StatusOk;
}

template <class T, class F> Status direct(T* pDst, int len, uint32_t* pSeed, F fillFrom) {
    if (Status s = Args().ptr(pDst).ptr(pSeed).len(len)) return s;
    NearestRounding guard;
    Core core(*pSeed);
    fillFrom(core);
    *pSeed = core.x1;
    return StatusOk;
}
template <class T> Status uniformDirect(T* pDst, int len, T low, T high, uint32_t* pSeed, Uniform<T> kernel) {
    return direct(pDst, len, pSeed, [=](Core& core) { fillUniform(core, pDst, len, scaleOf(low, high), meanOf(low, high), kernel); });
}
template <class T> Status normalDirect(T* pDst, int len, T mean, T stdDev, uint32_t* pSeed) {
    return direct(pDst, len, pSeed, [=](Core& core) { fillNormal(core, pDst, len, mean, stdDev, Kind<T>::shifted()); });
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsRandUniformGetSize_16s(int* pSize) { return getSize<RandUniState_16s>(pSize); }
Status tevsRandUniformInit_16s(RandUniState_16s* pState, int16_t low, int16_t high, uint32_t seed) { return init(pState, low, high, seed); }
Status tevsRandUniformInitAlloc_8u(RandUniState_8u** ppState, uint8_t low, uint8_t high, uint32_t seed) { return initAlloc(ppState, low, high, seed); }
Status tevsRandUniformInitAlloc_16s(RandUniState_16s** ppState, int16_t low, int16_t high, uint32_t seed) { return initAlloc(ppState, low, high, seed); }
Status tevsRandUniformInitAlloc_32f(RandUniState_32f** ppState, float low, float high, uint32_t seed) { return initAlloc(ppState, low, high, seed); }
Status tevsRandUniform_8u(uint8_t* pDst, int len, RandUniState_8u* pState) { return fill(pDst, len, pState); }
Status tevsRandUniform_16s(int16_t* pDst, int len, RandUniState_16s* pState) { return fill(pDst, len, pState); }
Status tevsRandUniform_32f(float* pDst, int len, RandUniState_32f* pState) { return fill(pDst, len, pState); }
Status tevsRandUniformFree_8u(RandUniState_8u* pState) { return tevs::free(pState); }
Status tevsRandUniformFree_16s(RandUniState_16s* pState) { return tevs::free(pState); }
Status tevsRandUniformFree_32f(RandUniState_32f* pState) { return tevs::free(pState); }
Status tevsRandGaussGetSize_16s(int* pSize) { return getSize<RandGaussState_16s>(pSize); }
Status tevsRandGaussInit_16s(RandGaussState_16s* pState, int16_t mean, int16_t stdDev, uint32_t seed) { return init(pState, mean, stdDev, seed); }
Status tevsRandGaussInitAlloc_8u(RandGaussState_8u** ppState, uint8_t mean, uint8_t stdDev, uint32_t seed) { return initAlloc(ppState, mean, stdDev, seed); }
Status tevsRandGaussInitAlloc_16s(RandGaussState_16s** ppState, int16_t mean, int16_t stdDev, uint32_t seed) { return initAlloc(ppState, mean, stdDev, seed); }
Status tevsRandGaussInitAlloc_32f(RandGaussState_32f** ppState, float mean, float stdDev, uint32_t seed) { return initAlloc(ppState, mean, stdDev, seed); }
Status tevsRandGauss_8u(uint8_t* pDst, int len, RandGaussState_8u* pState) { return fill(pDst, len, pState); }
Status tevsRandGauss_16s(int16_t* pDst, int len, RandGaussState_16s* pState) { return fill(pDst, len, pState); }
Status tevsRandGauss_32f(float* pDst, int len, RandGaussState_32f* pState) { return fill(pDst, len, pState); }
Status tevsRandGaussFree_8u(RandGaussState_8u* pState) { return tevs::free(pState); }
Status tevsRandGaussFree_16s(RandGaussState_16s* pState) { return tevs::free(pState); }
Status tevsRandGaussFree_32f(RandGaussState_32f* pState) { return tevs::free(pState); }
Status tevsRandUniform_Direct_16s(int16_t* pDst, int len, int16_t low, int16_t high, uint32_t* pSeed) {
    return uniformDirect(pDst, len, low, high, pSeed, randomNumbers->nearest16s);
}
Status tevsRandUniform_Direct_32f(float* pDst, int len, float low, float high, uint32_t* pSeed) {
    return uniformDirect(pDst, len, low, high, pSeed, randomNumbers->uniform32f);
}
Status tevsRandUniform_Direct_64f(double* pDst, int len, double low, double high, uint32_t* pSeed) {
    return uniformDirect(pDst, len, low, high, pSeed, randomNumbers->uniform64f);
}
Status tevsRandGauss_Direct_16s(int16_t* pDst, int len, int16_t mean, int16_t stdDev, uint32_t* pSeed) { return normalDirect(pDst, len, mean, stdDev, pSeed); }
Status tevsRandGauss_Direct_32f(float* pDst, int len, float mean, float stdDev, uint32_t* pSeed) { return normalDirect(pDst, len, mean, stdDev, pSeed); }
Status tevsRandGauss_Direct_64f(double* pDst, int len, double mean, double stdDev, uint32_t* pSeed) { return normalDirect(pDst, len, mean, stdDev, pSeed); }
