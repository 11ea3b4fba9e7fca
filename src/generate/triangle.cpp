// Triangle wave: blocks of a periodic wave with slopes of any ratio, which follow each other without a break.
#include "tevs/triangle.h"

#include <cmath>
#include <new>

#include "core/args.h"
#include "core/memory.h"
#include "core/rounding.h"
#include "generate/triangle.table.h"

namespace tevs {
namespace {

constexpr double kPi = 0x1.921fb54442d18p+1, kTwoPi = 2 * kPi, kCycle = 0x1.45f306dc9c883p-3;   // 1 / (2 pi)

// Ranges as they are documented; NaN is in none. Of asymmetries, single precision's -pi is the least, though it lies a little below -pi.
struct Parameters {
    double magn, rFreq, asym, phase;

    Args& check(Args& args) const {
        return args.require(magn > 0, StatusTriangleMagnitude)
            .require(rFreq >= 0 && rFreq < 0.5, StatusTriangleFreq)
            .require(asym >= -double(float(kPi)) && asym < kPi, StatusTriangleAsym)
            .require(phase >= 0 && phase < kTwoPi, StatusTrianglePhase);
    }
};

Wave waveOf(Parameters p) {
    const double asym = p.asym > -kPi ? p.asym : -kPi, fall = kPi + asym;
    return {.phase = p.phase * kCycle, .step = p.rFreq, .fall = fall * kCycle, .down = kTwoPi * 2 / fall, .up = kTwoPi * 2 / (kPi - asym), .magn = p.magn};
}
Wave wave(const Parameters& p) {
    return toNearest([](Parameters q) { return waveOf(q); }, p);
}

// The phase len samples on, in single precision. Next to a full turn that rounds up to one, which is no phase: 0 stands for it.
float phaseAfter(const Parameters& p, int len) {
    return toNearest(
        [](Parameters q, int n) {
            const double x = kTwoPi * q.rFreq * n + q.phase;
            const float after = float(x - kTwoPi * std::floor(x * kCycle));
            return after >= 0 && after < kTwoPi ? after : 0;
        },
        p, len);
}

template <class T> Status direct(T* pDst, int len, float magn, float rFreq, float asym, float* pPhase, Waves<T> kernel) {
    Args args;
    if (Status s = args.ptr(pPhase)) return s;
    const Parameters p{magn, rFreq, asym, *pPhase};
    if (Status s = p.check(args).ptr(pDst).len(len)) return s;
    *pPhase = phaseAfter(p, len);
    NearestRounding guard;
    kernel(wave(p), pDst, len);
    return StatusOk;
}

// ---- fixed point -----------------------------------------------------------------------------------------------------------------------------

Parameters fixedPoint(int16_t magn, int16_t rFreqQ15, int asymQ15, int phaseQ15) {
    return {double(magn), rFreqQ15 * 0x1p-15, asymQ15 * 0x1p-15, phaseQ15 * 0x1p-15};
}

// Frequencies are multiples of 2^-15 cycles. With the first phase a multiple of 2^-40 every later one is a double: a sample hangs on its place alone.
double startOf(double phase) {
    return toNearest([](double x) { return std::floor(x * 0x1p40 + 0.5) * 0x1p-40; }, phase);
}

// At any address.
struct [[gnu::packed]] Record {
    static constexpr uint32_t kId = identifier("TRIA");
    uint32_t idCtx;
    int16_t owned;   // the record came from InitAlloc
    int16_t rFreqQ15;
    uint32_t turned;   // since the start, in 2^-15 cycles; whole cycles wrap around
    double start, fall, down, up, magn;

    Record(const Wave& w, int16_t rFreqQ15, bool owned)
        : idCtx(kId), owned(owned), rFreqQ15(rFreqQ15), turned(0), start(startOf(w.phase)), fall(w.fall), down(w.down), up(w.up), magn(w.magn) {}
    double phase() const {
        const double x = start + (turned & 0x7fff) * 0x1p-15;
        return x < 1 ? x : x - 1;
    }
    void fill(int16_t* dst, int len) {
        triangle->by16s({.phase = phase(), .step = rFreqQ15 * 0x1p-15, .fall = fall, .down = down, .up = up, .magn = magn}, dst, len);
        turned += uint32_t(rFreqQ15) * uint32_t(len);
    }
};
Record* recordOf(TriangleState_16s* p) { return reinterpret_cast<Record*>(p); }

Status getStateSize(int* pSize) {
    if (Status s = Args().ptr(pSize)) return s;
    *pSize = sizeof(Record);
    return StatusOk;
}
Status init(TriangleState_16s* pState, int16_t magn, int16_t rFreqQ15, int asymQ15, int phaseQ15) {
    const Parameters p = fixedPoint(magn, rFreqQ15, asymQ15, phaseQ15);
    Args args;
    if (Status s = p.check(args.ptr(pState))) return s;
    new (pState) Record(wave(p), rFreqQ15, false);
    return StatusOk;
}
Status initAlloc(TriangleState_16s** ppState, int16_t magn, int16_t rFreqQ15, int asymQ15, int phaseQ15) {
    const Parameters p = fixedPoint(magn, rFreqQ15, asymQ15, phaseQ15);
    Args args;
    if (Status s = p.check(args.ptr(ppState))) return s;
    void* const block = allocate(sizeof(Record));
    if (!block) return StatusNoMemory;
    new (block) Record(wave(p), rFreqQ15, true);
    *ppState = static_cast<TriangleState_16s*>(block);
    return StatusOk;
}
Status fill(int16_t* pDst, int len, TriangleState_16s* pState) {
    if (Status s = Args().ptr(pDst).ptr(pState).len(len).record(pState, Record::kId)) return s;
    NearestRounding guard;
    recordOf(pState)->fill(pDst, len);
    return StatusOk;
}
Status directQ15(int16_t* pDst, int len, int16_t magn, int16_t rFreqQ15, int asymQ15, int* pPhaseQ15) {
    Args args;
    if (Status s = args.ptr(pPhaseQ15)) return s;
    const Parameters p = fixedPoint(magn, rFreqQ15, asymQ15, *pPhaseQ15);
    if (Status s = p.check(args).ptr(pDst).len(len)) return s;
    NearestRounding guard;
    Record record(wave(p), rFreqQ15, false);
    record.fill(pDst, len);
    *pPhaseQ15 = toNearest([](double x) { return int(x * (kTwoPi * 32768) + 0.5); }, record.phase());
    return StatusOk;
}
Status free(TriangleState_16s* pState) {
    if (Status s = Args().ptr(pState).record(pState, Record::kId)) return s;
    if (recordOf(pState)->owned) releaseRecord(pState);
    return StatusOk;
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsTriangle_Direct_32f(float* pDst, int len, float magn, float rFreq, float asym, float* pPhase) {
    return direct(pDst, len, magn, rFreq, asym, pPhase, triangle->by32f);
}
Status tevsTriangle_Direct_64f(double* pDst, int len, float magn, float rFreq, float asym, float* pPhase) {
    return direct(pDst, len, magn, rFreq, asym, pPhase, triangle->by64f);
}
Status tevsTriangle_Direct_16s(int16_t* pDst, int len, float magn, float rFreq, float asym, float* pPhase) {
    return direct(pDst, len, magn, rFreq, asym, pPhase, triangle->by16s);
}
Status tevsTriangle_Direct_32fc(Complex32f* pDst, int len, float magn, float rFreq, float asym, float* pPhase) {
    return direct(pDst, len, magn, rFreq, asym, pPhase, triangle->by32fc);
}
Status tevsTriangle_Direct_64fc(Complex64f* pDst, int len, float magn, float rFreq, float asym, float* pPhase) {
    return direct(pDst, len, magn, rFreq, asym, pPhase, triangle->by64fc);
}
Status tevsTriangle_Direct_16sc(Complex16s* pDst, int len, float magn, float rFreq, float asym, float* pPhase) {
    return direct(pDst, len, magn, rFreq, asym, pPhase, triangle->by16sc);
}

Status tevsTriangleGetStateSizeQ15_16s(int* pSize) { return getStateSize(pSize); }
Status tevsTriangleInitQ15_16s(TriangleState_16s* pState, int16_t magn, int16_t rFreqQ15, int asymQ15, int phaseQ15) {
    return init(pState, magn, rFreqQ15, asymQ15, phaseQ15);
}
Status tevsTriangleInitAllocQ15_16s(TriangleState_16s** ppState, int16_t magn, int16_t rFreqQ15, int asymQ15, int phaseQ15) {
    return initAlloc(ppState, magn, rFreqQ15, asymQ15, phaseQ15);
}
Status tevsTriangleQ15_16s(int16_t* pDst, int len, TriangleState_16s* pState) { return fill(pDst, len, pState); }
Status tevsTriangleQ15_Direct_16s(int16_t* pDst, int len, int16_t magn, int16_t rFreqQ15, int asymQ15, int* pPhaseQ15) {
    return directQ15(pDst, len, magn, rFreqQ15, asymQ15, pPhaseQ15);
}
Status tevsTriangleFree(TriangleState_16s* pState) { return tevs::free(pState); }
