// FFT records and the transforms that use them: lifecycle and tables, complex and real transforms.
#include "transform/fft.h"

#include <limits.h>
#include <string.h>

#include <algorithm>
#include <bit>
#include <cmath>

#include "core/args.h"
#include "core/memory.h"
#include "core/rounding.h"
#include "tevs/fft.h"
#include "transform/fft.plan.h"
#include "transform/roots.h"

namespace tevs {
namespace {

enum class Signal { Complex, Real };

constexpr int kMaxOrder = 30;
constexpr int kMostInRegisters = 2 << 7;   // floats of the longest transform that is one kernel in registers

// ---- sizes --------------------------------------------------------------------------------------------------------------------------

// What a record of each order takes is fixed: callers keep such blocks in static memory. The parts are named after the plain radix-4 layout that
// the numbers come from; how the passes here use the room is their own business (fft.plan.h).
constexpr uint64_t permutationBytes(int order) { return roundUp16(((uint64_t{1} << order) / 4 + 1) * 4); }

constexpr int splitOrder(int order) {
    constexpr int kSplit[] = {4, 4, 4, 5, 6, 6};
    return order <= 21 ? kSplit[order - kFirstLargeOrder] : 8;
}
constexpr int blockOrder(int order) {
    constexpr int kBlockOrder[] = {9, 10, 10, 13, 13, 13};
    return order <= 21 ? kBlockOrder[order - kFirstLargeOrder] : 14;
}
constexpr uint64_t factorBytes(int order) {
    const uint64_t n = uint64_t{1} << order;
    if (order < kFirstLargeOrder) return (8 * n + 23) & ~uint64_t{15};
    return factorBytes(order - splitOrder(order)) + 8 * n;
}
constexpr uint64_t scratchBytes(int order) {
    if (order < kFirstLargeOrder) return uint64_t{8} << order;
    return std::max(scratchBytes(order - splitOrder(order)), uint64_t{8} << blockOrder(order));
}

constexpr uint64_t kAlignmentRoom = 16;   // what a caller's buffer may lose up to its first 16-byte boundary

constexpr FftSizes sizesOf(Signal signal, int order) {
    constexpr uint64_t kRecord = 96;
    if (order <= 3) return {kRecord, 0, 0};
    const uint64_t init = permutationBytes(order) + kAlignmentRoom;
    if (signal == Signal::Complex) return {kRecord + factorBytes(order) + permutationBytes(order), init, roundUp16(scratchBytes(order)) + kAlignmentRoom};
    const uint64_t recombination = 2 * roundUp16((uint64_t{8} << order) / 4);
    if (order == 4) return {kRecord + recombination, init, 0};
    return {kRecord + factorBytes(order - 1) + permutationBytes(order - 1) + recombination, init, roundUp16(scratchBytes(order - 1)) + kAlignmentRoom};
}
static_assert(sizesOf(Signal::Complex, 16).spec == 622720 && sizesOf(Signal::Real, 4).spec == 160 && sizesOf(Signal::Complex, 20).work == 131088);

constexpr bool fitsInt(const FftSizes& s) { return std::max({s.spec, s.init, s.work}) <= INT_MAX; }
int clampToInt(uint64_t bytes) { return int(std::min<uint64_t>(bytes, INT_MAX)); }

// ---- tables -------------------------------------------------------------------------------------------------------------------------

// Writes exp(-2 pi i num / den), one after another, in blocks of `lanes` real and `lanes` imaginary parts (1: interleaved).
class FactorWriter {
public:
    FactorWriter(float* at, int lanes) : at_(at), lanes_(lanes) {}
    void put(uint64_t num, uint64_t den) {
        const Root r = unityRoot(num, den);
        at_[lane_] = float(r.re);
        at_[lane_ + lanes_] = float(r.im);
        if (++lane_ == lanes_) {
            lane_ = 0;
            at_ += 2 * lanes_;
        }
    }
    float* end() const { return at_; }

private:
    float* at_;
    const int lanes_;
    int lane_ = 0;
};

// The factors of passes over `points` points, but for the last, which has none.
float* writePassFactors(float* at, const Radices& r, int first, uint64_t points) {
    FactorWriter w(at, 1);
    for (int i = first; i < r.count - 1; ++i) {
        const uint64_t m = points / uint64_t(r.r[i]);
        for (uint64_t p = 0; p < m; ++p)
            for (uint64_t j = 1; j < uint64_t(r.r[i]); ++j) w.put(p * j, points);
        points = m;
    }
    return w.end();
}

void writeStockhamFactors(float* at, int order, int lanes) {
    const Radices r = passesOf(order, lanes);
    const int k = fusedLanes(order, lanes) ? fusedLanes(order, lanes) : lanes;
    const uint64_t n = uint64_t{1} << order, radix = uint64_t(r.r[0]);
    FactorWriter w(at, k);
    for (uint64_t p = 0; p < n / radix; p += uint64_t(k))
        for (uint64_t j = 1; j < radix; ++j)
            for (int l = 0; l < k; ++l) w.put((p + uint64_t(laneAt(k, l))) * j, n);
    writePassFactors(w.end(), r, 1, n / radix);
}

void writeLargeFactors(float* passes, float* outer, int order, int lanes) {
    const int p = outerOrder(order), q = innerOrder(order);
    writePassFactors(passes, radicesOf(p), 0, uint64_t{1} << p);
    writePassFactors(passes + (uint64_t{2} << p), radicesOf(q), 0, uint64_t{1} << q);
    const uint64_t n = uint64_t{1} << order, rows = uint64_t{1} << p;
    FactorWriter within(outer, lanes);
    for (uint64_t k = 0; k < rows; ++k)
        for (uint64_t g = 0; g < kTileColumns; g += uint64_t(lanes))
            for (int l = 0; l < lanes; ++l) within.put((g + uint64_t(laneAt(lanes, l))) * k, n);
    FactorWriter between(within.end(), 1);
    for (uint64_t c = 0; c < uint64_t{1} << q; c += kTileColumns)
        for (uint64_t k = 0; k < rows; ++k) between.put(c * k, n);
}

void writeRecombination(float* at, int order, int lanes) {
    const int block = order == 3 ? 4 : lanes;
    FactorWriter w(at, block);
    for (uint64_t k = 1; k <= uint64_t{1} << (order - 1); k += uint64_t(block))
        for (int l = 0; l < block; ++l) w.put(k + uint64_t(laneAt(block, l)), uint64_t{2} << order);
}

// ---- lifecycle ----------------------------------------------------------------------------------------------------------------------

constexpr uint32_t identifierOf(Signal signal) { return signal == Signal::Complex ? kFftC32fc : kFftR32f; }

bool goodFlag(int flag) { return flag == ScaleFwdByN || flag == ScaleInvByN || flag == ScaleBySqrtN || flag == NoScale; }

// Builds the record and its tables at a 16-byte boundary of a block of the reported size.
FftSpec* build(Signal signal, void* block, int order, int flag, int hint, bool owned) {
    auto* const spec = static_cast<FftSpec*>(block);
    memset(spec, 0, sizeof *spec);
    spec->id = identifierOf(signal);
    spec->order = order;
    const int64_t n = int64_t{1} << order;
    const float factor = flag == ScaleBySqrtN ? float(1.0 / std::sqrt(double(n))) : 1.0f / float(n);
    spec->forwardScale = flag == ScaleFwdByN || flag == ScaleBySqrtN ? factor : 1.0f;
    spec->inverseScale = flag == ScaleInvByN || flag == ScaleBySqrtN ? factor : 1.0f;
    spec->hint = hint;
    const uint64_t work = sizesOf(signal, order).work;
    spec->workBytes = work ? int(work - kAlignmentRoom) : 0;
    spec->owned = owned;

    FftTables& t = spec->tables;
    t.order = signal == Signal::Complex ? order : std::max(order - 1, 0);
    // Tables start on a cache line: the reported sizes have the room that the permutation table would take.
    float* at = reinterpret_cast<float*>((reinterpret_cast<uintptr_t>(spec + 1) + 15) & ~uintptr_t{15});
    if (t.order >= 6) at = reinterpret_cast<float*>((reinterpret_cast<uintptr_t>(at) + 63) & ~uintptr_t{63});
    if (t.order >= kFirstLargeOrder) {
        float* const outer = at + (uint64_t{4} << innerOrder(t.order));
        writeLargeFactors(at, outer, t.order, fft->lanes);
        t.passes = at;
        t.outer = outer;
        at = outer + (uint64_t{2} * kTileColumns << outerOrder(t.order)) + ((uint64_t{2} << t.order) / kTileColumns);
    } else if (t.order >= 4) {
        writeStockhamFactors(at, t.order, fft->lanes);
        t.passes = at;
        at += uint64_t{2} << t.order;
    }
    if (signal == Signal::Real && t.order >= 3) {
        writeRecombination(at, t.order, fft->lanes);
        t.recombination = at;
    }
    return spec;
}

Status getSize(Signal signal, int order, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    if (Status s = Args().require(order >= 0 && order <= kMaxOrder, StatusFftOrder).ptr(pSpecSize).ptr(pSpecBufferSize).ptr(pBufferSize)) return s;
    const FftSizes sizes = sizesOf(signal, order);
    *pSpecSize = clampToInt(sizes.spec);
    *pSpecBufferSize = clampToInt(sizes.init);
    *pBufferSize = clampToInt(sizes.work);
    return StatusOk;
}

template <class Spec> Status init(Signal signal, Spec** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    const bool legal = order >= 0 && order <= kMaxOrder && fitsInt(sizesOf(signal, order));
    if (Status s = Args().ptr(ppSpec).require(legal, StatusFftOrder).ptr(pMemSpec)) return s;
    void* const block = align16(pMemSpec);
    if (Status s = Args().require(goodFlag(flag), StatusFftFlag).require(order <= 3 || pMemInit, StatusNullPtr)) {
        memset(block, 0, sizeof(FftSpec));   // whoever uses the block all the same finds no identifier in it
        return s;
    }
    NearestRounding guard;
    *ppSpec = static_cast<Spec*>(build(signal, block, order, flag, hint, false));
    return StatusOk;
}

template <class Spec> Status initAlloc(Signal signal, Spec** ppSpec, int order, int flag, int hint) {
    if (Status s = Args().ptr(ppSpec).require(order >= 0 && order <= kMaxOrder, StatusFftOrder).require(goodFlag(flag), StatusFftFlag)) return s;
    const FftSizes sizes = sizesOf(signal, order);
    void* const block = fitsInt(sizes) ? allocate(size_t(sizes.spec)) : nullptr;
    if (!block) return StatusNoMemory;
    NearestRounding guard;
    *ppSpec = static_cast<Spec*>(build(signal, block, order, flag, hint, true));
    return StatusOk;
}

Status release(Signal signal, FftSpec* pSpec) {
    if (Status s = Args().ptr(pSpec).record(pSpec, identifierOf(signal))) return s;
    pSpec->id = 0;
    if (pSpec->owned) tevs::release(pSpec);
    return StatusOk;
}

Status getBufSize(Signal signal, const FftSpec* pSpec, int* pSize) {
    if (Status s = Args().ptr(pSpec).ptr(pSize).record(pSpec, identifierOf(signal))) return s;
    *pSize = pSpec->workBytes < 1 ? 0 : clampToInt(uint64_t(pSpec->workBytes) + kAlignmentRoom);
    return StatusOk;
}

// ---- transforms ---------------------------------------------------------------------------------------------------------------------

// Calls run(work) with a work area of the library's own.
template <class Run> [[gnu::noinline]] Status withOwnWork(uint64_t bytes, const Run& run) {
    const Scratch own(allocate(size_t(bytes)));
    if (!own) return StatusNoMemory;
    run(static_cast<float*>(own.get()));
    return StatusOk;
}
// With the work area of one call: the caller's, from its first 16-byte boundary on, or one of its own. The transforms that are one kernel in
// registers need none: at their length the call itself is what costs.
template <class Run> [[gnu::always_inline]] inline Status withWork(const FftSpec& spec, uint8_t* pBuffer, const Run& run) {
    const int order = spec.tables.order;
    // Two tiles are more than what is reported for the largest orders; beside their data, a block of their own is nothing.
    const uint64_t tiles = order >= kFirstLargeOrder ? uint64_t{16} * kTileColumns << innerOrder(order) : 0;
    NearestRounding guard;
    if (!pBuffer || tiles > uint64_t(spec.workBytes)) return withOwnWork(std::max(uint64_t(spec.workBytes), tiles), run);
    run(align16<float>(pBuffer));
    return StatusOk;
}
bool inRegisters(const FftTables& t) { return t.order <= 3 || fusedLanes(t.order, fft->lanes); }

Status complexTransform(const Complex32f* pSrc, Complex32f* pDst, const FftSpec* pSpec, uint8_t* pBuffer, const FftKernels::Orders& kernels,
                        float FftSpec::*scale) {
    if (Status s = Args().ptr(pSpec).record(pSpec, kFftC32fc).ptr(pSrc).ptr(pDst)) return s;
    const FftTables& t = pSpec->tables;
    FftTransform* const kernel = kernels[t.order];
    if (!inRegisters(t)) return withWork(*pSpec, pBuffer, [=, &t](float* work) { kernel(t, &pSrc->re, &pDst->re, work, pSpec->*scale); });
    NearestRounding guard;
    kernel(t, &pSrc->re, &pDst->re, nullptr, pSpec->*scale);
    return StatusOk;
}

Status forward(const Complex32f* pSrc, Complex32f* pDst, const FftSpec* pSpec, uint8_t* pBuffer) {
    return complexTransform(pSrc, pDst, pSpec, pBuffer, fft->forward, &FftSpec::forwardScale);
}
Status inverse(const Complex32f* pSrc, Complex32f* pDst, const FftSpec* pSpec, uint8_t* pBuffer) {
    return complexTransform(pSrc, pDst, pSpec, pBuffer, fft->inverse, &FftSpec::inverseScale);
}

// Where a packed spectrum of N = 2^order reals keeps its values: X[k] for 0 < k < N/2 at 2k + shift and the next, and the two real ones.
struct Packing {
    int shift;
    bool ccs;
    int last(int n) const { return ccs ? n : shift ? n - 1 : 1; }
};
constexpr Packing kPerm{0, false}, kPack{-1, false}, kCcs{0, true};

// The spectrum of the pairs' transform in z, to its packing. z may be pDst where the packing leaves the values between the ends in place.
void pack(const FftTables& t, const float* z, float* pDst, int n, Packing to) {
    float first, last;
    fft->spectrumOfReal(t, z, pDst + to.shift, &first, &last);
    pDst[0] = first;
    pDst[to.last(n)] = last;
    if (to.ccs) pDst[1] = pDst[n + 1] = 0;
}

Status realForward(const float* pSrc, float* pDst, const FftSpec* pSpec, uint8_t* pBuffer, Packing to) {
    if (Status s = Args().ptr(pSpec).record(pSpec, kFftR32f).ptr(pSrc).ptr(pDst)) return s;
    const int n = 1 << pSpec->order;
    const FftTables& t = pSpec->tables;
    const float scale = 0.5f * pSpec->forwardScale;   // the recombination takes half the transform
    FftTransform* const kernel = fft->forward[t.order];
    if (n == 1) {
        NearestRounding guard;
        pDst[0] = pSrc[0] * pSpec->forwardScale;
        if (to.ccs) pDst[1] = 0;
        return StatusOk;
    }
    if (inRegisters(t)) {
        NearestRounding guard;
        float z[kMostInRegisters];
        kernel(t, pSrc, z, nullptr, scale);
        pack(t, z, pDst, n, to);
        return StatusOk;
    }
    return withWork(*pSpec, pBuffer, [=, &t](float* work) {
        if (t.order < kFirstLargeOrder) {
            kernel(t, pSrc, work, pDst, scale);
            pack(t, work, pDst, n, to);
            return;
        }
        kernel(t, pSrc, pDst, work, scale);
        pack(t, pDst, pDst, n, to.shift ? kPerm : to);
        if (!to.shift) return;
        const float last = pDst[1];
        memmove(pDst + 1, pDst + 2, size_t(n - 2) * sizeof(float));
        pDst[n - 1] = last;
    });
}

Status realInverse(const float* pSrc, float* pDst, const FftSpec* pSpec, uint8_t* pBuffer, Packing from) {
    if (Status s = Args().ptr(pSpec).record(pSpec, kFftR32f).ptr(pSrc).ptr(pDst)) return s;
    const int n = 1 << pSpec->order;
    const FftTables& t = pSpec->tables;
    const float scale = pSpec->inverseScale;
    FftTransform* const kernel = fft->inverse[t.order];
    if (n == 1) {
        NearestRounding guard;
        pDst[0] = pSrc[0] * scale;
        return StatusOk;
    }
    const float first = pSrc[0], last = pSrc[from.last(n)];
    if (inRegisters(t)) {
        NearestRounding guard;
        float z[kMostInRegisters];
        fft->pairsOfSpectrum(t, pSrc + from.shift, first, last, z);
        kernel(t, z, pDst, nullptr, scale);
        return StatusOk;
    }
    return withWork(*pSpec, pBuffer, [=, &t](float* work) {
        if (t.order < kFirstLargeOrder) {
            fft->pairsOfSpectrum(t, pSrc + from.shift, first, last, work);
            kernel(t, work, pDst, work, scale);
            return;
        }
        if (from.shift) memmove(pDst + 2, pSrc + 1, size_t(n - 2) * sizeof(float));
        fft->pairsOfSpectrum(t, from.shift ? pDst : pSrc, first, last, pDst);
        kernel(t, pDst, pDst, work, scale);
    });
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsFFTGetSize_C_32fc(int order, int, int, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    return getSize(Signal::Complex, order, pSpecSize, pSpecBufferSize, pBufferSize);
}
Status tevsFFTGetSize_R_32f(int order, int, int, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    return getSize(Signal::Real, order, pSpecSize, pSpecBufferSize, pBufferSize);
}
Status tevsFFTInit_C_32fc(FFTSpec_C_32fc** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    return init(Signal::Complex, ppSpec, order, flag, hint, pMemSpec, pMemInit);
}
Status tevsFFTInit_R_32f(FFTSpec_R_32f** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    return init(Signal::Real, ppSpec, order, flag, hint, pMemSpec, pMemInit);
}
Status tevsFFTInitAlloc_C_32fc(FFTSpec_C_32fc** ppSpec, int order, int flag, int hint) { return initAlloc(Signal::Complex, ppSpec, order, flag, hint); }
Status tevsFFTInitAlloc_R_32f(FFTSpec_R_32f** ppSpec, int order, int flag, int hint) { return initAlloc(Signal::Real, ppSpec, order, flag, hint); }
Status tevsFFTFree_C_32fc(FFTSpec_C_32fc* pSpec) { return release(Signal::Complex, pSpec); }
Status tevsFFTFree_R_32f(FFTSpec_R_32f* pSpec) { return release(Signal::Real, pSpec); }
Status tevsFFTGetBufSize_C_32fc(const FFTSpec_C_32fc* pSpec, int* pSize) { return getBufSize(Signal::Complex, pSpec, pSize); }
Status tevsFFTGetBufSize_R_32f(const FFTSpec_R_32f* pSpec, int* pSize) { return getBufSize(Signal::Real, pSpec, pSize); }

Status tevsFFTFwd_CToC_32fc(const Complex32f* pSrc, Complex32f* pDst, const FFTSpec_C_32fc* pSpec, uint8_t* pBuffer) {
    return forward(pSrc, pDst, pSpec, pBuffer);
}
Status tevsFFTFwd_CToC_32fc_I(Complex32f* pSrcDst, const FFTSpec_C_32fc* pSpec, uint8_t* pBuffer) { return forward(pSrcDst, pSrcDst, pSpec, pBuffer); }
Status tevsFFTInv_CToC_32fc(const Complex32f* pSrc, Complex32f* pDst, const FFTSpec_C_32fc* pSpec, uint8_t* pBuffer) {
    return inverse(pSrc, pDst, pSpec, pBuffer);
}
Status tevsFFTInv_CToC_32fc_I(Complex32f* pSrcDst, const FFTSpec_C_32fc* pSpec, uint8_t* pBuffer) { return inverse(pSrcDst, pSrcDst, pSpec, pBuffer); }

Status tevsFFTFwd_RToCCS_32f(const float* pSrc, float* pDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return realForward(pSrc, pDst, pSpec, pBuffer, kCcs);
}
Status tevsFFTFwd_RToCCS_32f_I(float* pSrcDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) { return realForward(pSrcDst, pSrcDst, pSpec, pBuffer, kCcs); }
Status tevsFFTFwd_RToPack_32f(const float* pSrc, float* pDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return realForward(pSrc, pDst, pSpec, pBuffer, kPack);
}
Status tevsFFTFwd_RToPack_32f_I(float* pSrcDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) { return realForward(pSrcDst, pSrcDst, pSpec, pBuffer, kPack); }
Status tevsFFTFwd_RToPerm_32f(const float* pSrc, float* pDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return realForward(pSrc, pDst, pSpec, pBuffer, kPerm);
}
Status tevsFFTFwd_RToPerm_32f_I(float* pSrcDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) { return realForward(pSrcDst, pSrcDst, pSpec, pBuffer, kPerm); }
Status tevsFFTInv_CCSToR_32f(const float* pSrc, float* pDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return realInverse(pSrc, pDst, pSpec, pBuffer, kCcs);
}
Status tevsFFTInv_CCSToR_32f_I(float* pSrcDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) { return realInverse(pSrcDst, pSrcDst, pSpec, pBuffer, kCcs); }
Status tevsFFTInv_PackToR_32f(const float* pSrc, float* pDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return realInverse(pSrc, pDst, pSpec, pBuffer, kPack);
}
Status tevsFFTInv_PackToR_32f_I(float* pSrcDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) { return realInverse(pSrcDst, pSrcDst, pSpec, pBuffer, kPack); }
Status tevsFFTInv_PermToR_32f(const float* pSrc, float* pDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return realInverse(pSrc, pDst, pSpec, pBuffer, kPerm);
}
Status tevsFFTInv_PermToR_32f_I(float* pSrcDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer) { return realInverse(pSrcDst, pSrcDst, pSpec, pBuffer, kPerm); }
