// Tones: sinusoids and frequency shifts over a phase that is counted in 2^-64 of a turn (Tierney, Rader, Gold, A digital frequency synthesizer, 1971).
#include "tevs/tone.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <type_traits>

#include "core/args.h"
#include "core/complex.h"
#include "core/memory.h"
#include "core/rounding.h"
#include "core/work.h"
#include "generate/tone.table.h"

namespace tevs {
namespace {

// ---- integers ---------------------------------------------------------------------------------------------------------------------------

// The upper half of the product.
uint64_t mulHigh(uint64_t a, uint64_t b) {
    const uint64_t a0 = uint32_t(a), a1 = a >> 32, b0 = uint32_t(b), b1 = b >> 32;
    const uint64_t middle = a1 * b0 + (a0 * b0 >> 32), other = a0 * b1 + uint32_t(middle);
    return a1 * b1 + (middle >> 32) + (other >> 32);
}
static_assert(uint64_t{0xffffffff} * 0xffffffff + 2 * uint64_t{0xffffffff} == UINT64_MAX);   // no sum of the three overflows

// x * 2^scale of a double below 1, to nearest.
uint64_t fixedPoint(double x, int scale) {
    uint64_t bits;
    std::memcpy(&bits, &x, sizeof bits);
    const int exponent = int(bits >> 52 & 0x7ff);
    const uint64_t m = exponent ? (bits & 0xfffffffffffff) | 0x10000000000000 : bits & 0xfffffffffffff;
    const int left = std::max(exponent, 1) - 1075 + scale;
    if (left >= 0) return m << left;
    return left < -54 ? 0 : ((m >> (-left - 1)) + 1) >> 1;
}

// ---- phases -----------------------------------------------------------------------------------------------------------------------------

constexpr double kTwoPi = 6.283185307179586, kBelowTwoPi = 0x1.921fb54442d17p+2;
static_assert(kTwoPi == 0x1.921fb54442d18p+2);

// Frequencies as phases a sample; both in 2^-64 of a turn.
uint64_t stepOf(double rFreq) { return fixedPoint(rFreq, 64); }
// 2^61 times the phase, by 4 / pi. 2 pi is above its double by more than what is lost.
uint64_t wordOf(double phase) {
    const uint64_t x = fixedPoint(phase, 61);
    return x + mulHigh(x, 0x45f306dc9c882a54);
}
double phaseOf(uint64_t word) {
    const uint64_t x = mulHigh(word, 0xc90fdaa22168c235);   // 2^61 * 2 pi
    return std::min(double(uint32_t(x >> 32)) * 0x1p-29 + double(uint32_t(x)) * 0x1p-61, kBelowTwoPi);
}

// A number modulo 2^64 with 64 more bits behind the point.
struct Fixed {
    uint64_t whole, rest;
    uint64_t rounded() const { return whole + (rest >> 63); }
    Fixed times(uint64_t k) const { return {whole * k + mulHigh(rest, k), rest * k}; }
};
// x / d, toward zero.
Fixed quotient(int64_t x, uint32_t d) {
    const uint64_t m = x < 0 ? -uint64_t(x) : uint64_t(x), high = m % d << 32, low = high % d << 32;
    const Fixed q = {m / d, (high / d << 32) + low / d};
    return x < 0 ? Fixed{~q.whole + (q.rest == 0), -q.rest} : q;
}

}   // namespace
}   // namespace tevs

// An oscillator. On the way to another frequency sample n of glideLen has the phase start + from n + curve n^2, where curve is (to - from) / (2 glideLen).
struct ToneState {
    uint32_t id;
    bool owned;
    int glideLen, at;    // 0 where there is no glide
    uint64_t start;      // the phase of the next sample, of the glide's first one
    uint64_t from, to;   // phases a sample: to is that of the steady tone
    tevs::Fixed curve;

    static constexpr uint32_t kId = tevs::identifier("TONE");
    // Within a glide every block of so many samples begins at its exact phase; in it step and bend are integers, which are off by half a unit each.
    static constexpr int kBlock = 512;

    // What the next samples are made from.
    tevs::ToneWords words() const {
        if (glideLen == 0) return {start, to, 0};
        const uint64_t first = uint64_t(at - at % kBlock), i = uint64_t(at % kBlock);
        const uint64_t phase = start + from * first + curve.times(first * first).rounded();
        const uint64_t step = from + curve.times(2 * first + 1).rounded(), bend = curve.times(2).rounded();
        return {phase + i * step + i * (i - 1) / 2 * bend, step + i * bend, bend};
    }
    int wordsLast() const { return glideLen == 0 ? INT32_MAX : std::min(kBlock - at % kBlock, glideLen - at); }
    void advance(int n) {
        if (glideLen == 0) {
            start += uint64_t(n) * to;
            return;
        }
        at += n;
        if (at < glideLen) return;
        // The mean of two steps is an integer or lies half-way between two.
        const uint64_t both = from + to, len = uint64_t(glideLen);
        start += both * (len / 2) + len % 2 * (both / 2);
        glideLen = 0;
    }
    void setPhase(uint64_t word) { start += word - words().phase; }
    void setStep(uint64_t step, int len) {
        const uint64_t now = words().phase, reached = glideLen == 0 ? to : from + curve.times(2 * uint64_t(at)).rounded();
        start = now;
        from = reached;
        to = step;
        glideLen = len;
        at = 0;
        if (len > 0) curve = tevs::quotient(int64_t(to - from), 2 * uint32_t(len));
    }
};

namespace tevs {
namespace {

bool isFrequency(double rFreq) { return rFreq >= 0 && rFreq < 0.5; }
bool isPhase(double phase) { return phase >= 0 && phase < kTwoPi; }

Status init(ToneState** ppState, double rFreq, double phase, void* block, bool owned) {
    if (!block) return StatusNoMemory;
    *ppState = new (block) ToneState{ToneState::kId, owned, 0, 0, wordOf(phase), 0, stepOf(rFreq), {}};
    return StatusOk;
}

// kernel(words, first, count) over stretches of len samples.
template <class Kernel> void run(ToneState& state, int len, Kernel kernel) {
    for (int first = 0, n; first < len; first += n) {
        n = std::min(len - first, state.wordsLast());
        kernel(state.words(), first, n);
        state.advance(n);
    }
}

// The magnitudes that kernels take as they are: products with the least coefficients are normal numbers, and the tone is finite. Others are put in by their significand, and
// the power of two multiplied in afterwards; an infinite one by itself, and so the wave's zeros become NaN. Integers saturate long before.
template <class T> struct Magnitude {
    static constexpr bool isFloat = std::is_floating_point_v<T>;
    double inKernel, after = 1;
    explicit Magnitude(double magn) : inKernel(magn) {
        constexpr double low = sizeof(T) == 8 ? 0x1p-900 : 0x1p-60, high = sizeof(T) == 8 ? 0x1p1023 : 0x1p126;
        if (!isFloat) {
            inKernel = std::min(magn, 0x1p60);
        } else if (magn == INFINITY) {
            inKernel = 1;
            after = magn;
        } else if (magn < low || magn >= high) {
            int exponent;
            inKernel = std::frexp(magn, &exponent) * 2;
            after = std::ldexp(1.0, exponent - 1);
        }
    }
    void finish(T* dst, ptrdiff_t n) const {
        if constexpr (isFloat)
            if (after != 1)
                for (ptrdiff_t i = 0; i < n; ++i) dst[i] = T(dst[i] * after);
    }
};
template <class T> void fill(T* dst, int len, const ToneWords& words, double magn, Tone<T> kernel) {
    const Magnitude<Scalar<T>> m(magn);
    kernel(dst, len, words, m.inKernel);
    m.finish(partsOf(dst), partCount<T>(len));
}

template <class T> Status generate(T* pDst, int len, double magn, ToneState* pState, Tone<T> kernel) {
    if (Status s = Args().ptr(pDst).ptr(pState).len(len).record(pState, ToneState::kId).require(magn > 0, StatusToneMagnitude)) return s;
    NearestRounding guard;
    run(*pState, len, [=](const ToneWords& words, int first, int n) { fill(pDst + first, n, words, magn, kernel); });
    return StatusOk;
}

template <class T> Status direct(T* pDst, int len, double magn, double rFreq, double* pPhase, Tone<T> kernel) {
    if (Status s = Args()
                       .ptr(pDst)
                       .ptr(pPhase)
                       .len(len)
                       .require(magn > 0, StatusToneMagnitude)
                       .require(isFrequency(rFreq), StatusToneFreq)
                       .require([=] { return isPhase(*pPhase); }, StatusTonePhase))
        return s;
    NearestRounding guard;
    const ToneWords words = {wordOf(*pPhase), stepOf(rFreq), 0};
    fill(pDst, len, words, magn, kernel);
    *pPhase = toNearest(phaseOf, words.phase + uint64_t(len) * words.step);
    return StatusOk;
}

template <class S, class D> Status mix(const S* pSrc, D* pDst, int len, ToneState* pState, ToneMix<S, D> kernel) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).ptr(pState).len(len).record(pState, ToneState::kId)) return s;
    NearestRounding guard;
    run(*pState, len, [=](const ToneWords& words, int first, int n) { kernel(pSrc + first, pDst + first, n, words); });
    return StatusOk;
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsToneGetStateSize(int* pSize) {
    if (Status s = Args().ptr(pSize)) return s;
    *pSize = int(roundUp16(sizeof(ToneState)) + kAlignmentRoom);
    return StatusOk;
}
Status tevsToneInit(ToneState** ppState, double rFreq, double phase, uint8_t* pBuffer) {
    if (Status s = Args().ptr(ppState).ptr(pBuffer).require(isFrequency(rFreq), StatusToneFreq).require(isPhase(phase), StatusTonePhase)) return s;
    return init(ppState, rFreq, phase, align16(pBuffer), false);
}
Status tevsToneInitAlloc(ToneState** ppState, double rFreq, double phase) {
    if (Status s = Args().ptr(ppState).require(isFrequency(rFreq), StatusToneFreq).require(isPhase(phase), StatusTonePhase)) return s;
    return init(ppState, rFreq, phase, allocate(sizeof(ToneState)), true);
}
Status tevsToneFree(ToneState* pState) {
    if (Status s = Args().ptr(pState).record(pState, ToneState::kId)) return s;
    if (pState->owned) releaseRecord(pState);
    return StatusOk;
}
Status tevsToneSetFreq(ToneState* pState, double rFreq, int glideLen) {
    if (Status s = Args().ptr(pState).record(pState, ToneState::kId).require(isFrequency(rFreq), StatusToneFreq).require(glideLen >= 0, StatusBadSize))
        return s;
    pState->setStep(stepOf(rFreq), glideLen);
    return StatusOk;
}
Status tevsToneSetPhase(ToneState* pState, double phase) {
    if (Status s = Args().ptr(pState).record(pState, ToneState::kId).require(isPhase(phase), StatusTonePhase)) return s;
    pState->setPhase(wordOf(phase));
    return StatusOk;
}
Status tevsToneGetPhase(const ToneState* pState, double* pPhase) {
    if (Status s = Args().ptr(pState).ptr(pPhase).record(pState, ToneState::kId)) return s;
    *pPhase = toNearest(phaseOf, pState->words().phase);
    return StatusOk;
}

Status tevsTone_16s(int16_t* pDst, int len, double magn, ToneState* pState) { return generate(pDst, len, magn, pState, tone->tone16s); }
Status tevsTone_16sc(Complex16s* pDst, int len, double magn, ToneState* pState) { return generate(pDst, len, magn, pState, tone->tone16sc); }
Status tevsTone_32f(float* pDst, int len, double magn, ToneState* pState) { return generate(pDst, len, magn, pState, tone->tone32f); }
Status tevsTone_32fc(Complex32f* pDst, int len, double magn, ToneState* pState) { return generate(pDst, len, magn, pState, tone->tone32fc); }
Status tevsTone_64f(double* pDst, int len, double magn, ToneState* pState) { return generate(pDst, len, magn, pState, tone->tone64f); }
Status tevsTone_64fc(Complex64f* pDst, int len, double magn, ToneState* pState) { return generate(pDst, len, magn, pState, tone->tone64fc); }
Status tevsTone_Direct_16s(int16_t* pDst, int len, double magn, double rFreq, double* pPhase) { return direct(pDst, len, magn, rFreq, pPhase, tone->tone16s); }
Status tevsTone_Direct_16sc(Complex16s* pDst, int len, double magn, double rFreq, double* pPhase) {
    return direct(pDst, len, magn, rFreq, pPhase, tone->tone16sc);
}
Status tevsTone_Direct_32f(float* pDst, int len, double magn, double rFreq, double* pPhase) { return direct(pDst, len, magn, rFreq, pPhase, tone->tone32f); }
Status tevsTone_Direct_32fc(Complex32f* pDst, int len, double magn, double rFreq, double* pPhase) {
    return direct(pDst, len, magn, rFreq, pPhase, tone->tone32fc);
}
Status tevsTone_Direct_64f(double* pDst, int len, double magn, double rFreq, double* pPhase) { return direct(pDst, len, magn, rFreq, pPhase, tone->tone64f); }
Status tevsTone_Direct_64fc(Complex64f* pDst, int len, double magn, double rFreq, double* pPhase) {
    return direct(pDst, len, magn, rFreq, pPhase, tone->tone64fc);
}
Status tevsToneMixUp_16sc(const Complex16s* pSrc, Complex16s* pDst, int len, ToneState* pState) { return mix(pSrc, pDst, len, pState, tone->up16sc); }
Status tevsToneMixUp_16sc_I(Complex16s* pSrcDst, int len, ToneState* pState) { return mix(pSrcDst, pSrcDst, len, pState, tone->up16sc); }
Status tevsToneMixUp_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, ToneState* pState) { return mix(pSrc, pDst, len, pState, tone->up32fc); }
Status tevsToneMixUp_32fc_I(Complex32f* pSrcDst, int len, ToneState* pState) { return mix(pSrcDst, pSrcDst, len, pState, tone->up32fc); }
Status tevsToneMixUp_32fc32f(const Complex32f* pSrc, float* pDst, int len, ToneState* pState) { return mix(pSrc, pDst, len, pState, tone->up32fc32f); }
Status tevsToneMixDown_16sc(const Complex16s* pSrc, Complex16s* pDst, int len, ToneState* pState) { return mix(pSrc, pDst, len, pState, tone->down16sc); }
Status tevsToneMixDown_16sc_I(Complex16s* pSrcDst, int len, ToneState* pState) { return mix(pSrcDst, pSrcDst, len, pState, tone->down16sc); }
Status tevsToneMixDown_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, ToneState* pState) { return mix(pSrc, pDst, len, pState, tone->down32fc); }
Status tevsToneMixDown_32fc_I(Complex32f* pSrcDst, int len, ToneState* pState) { return mix(pSrcDst, pSrcDst, len, pState, tone->down32fc); }
Status tevsToneMixDown_32f32fc(const float* pSrc, Complex32f* pDst, int len, ToneState* pState) { return mix(pSrc, pDst, len, pState, tone->down32f32fc); }
