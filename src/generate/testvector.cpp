// Test vectors: a ramp, and a chirp through all frequencies.
#include "tevs/testvector.h"

#include <algorithm>
#include <cstring>

#include "core/args.h"
#include "core/memory.h"
#include "core/rounding.h"
#include "generate/testvector.table.h"
#include "tevs/extremes.h"

namespace tevs {
namespace {

template <class T> Status ramp(T* pDst, int len, float offset, float slope, Ramp<T> kernel) {
    if (Status s = Args().ptr(pDst).len(len)) return s;
    NearestRounding guard;
    kernel(pDst, len, offset, slope);
    return StatusOk;
}

template <class T> Status jaehne(T* pDst, int len, T magn, Stored<T> store) {
    if (Status s = Args().ptr(pDst).len(len).require(!(magn < 0), StatusJaehneMagnitude)) return s;
    NearestRounding guard;
    if (len == 1) {
        *pDst = 0;
        return StatusOk;
    }
    constexpr int kBlock = 512;
    alignas(64) double y[kBlock + kSweepSlack];
    for (int first = 0, n; first < len; first += n) {
        n = std::min(len - first, kBlock);
        testVector->sweep(y, first, n, len, magn);
        store(y, pDst + first, n);
    }
    return StatusOk;
}
void storeDoubles(const double* y, double* dst, int len) { std::memcpy(dst, y, size_t(len) * sizeof *dst); }

template <class T> Status jaehneSpread(T* pDst, int len, T magn, Spread<T> spread) {
    if (Status s = Args().ptr(pDst).len(len)) return s;
    NearestRounding guard;
    if (len == 1 || magn == 0) {
        std::memset(pDst, 0, size_t(len) * sizeof(T));
        return StatusOk;
    }
    const auto y = allocate<double>(uint64_t(len) + kSweepSlack);
    if (!y) return StatusNoMemory;
    const Scratch block(y);
    testVector->sweep(y, 0, len, len, magn);
    double low, high;
    tevsMinMax_64f(y, len, &low, &high);
    spread(y, pDst, len, low, high, magn);
    return StatusOk;
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsVectorRamp_8u(uint8_t* pDst, int len, float offset, float slope) { return ramp(pDst, len, offset, slope, testVector->ramp8u); }
Status tevsVectorRamp_8s(int8_t* pDst, int len, float offset, float slope) { return ramp(pDst, len, offset, slope, testVector->ramp8s); }
Status tevsVectorRamp_16u(uint16_t* pDst, int len, float offset, float slope) { return ramp(pDst, len, offset, slope, testVector->ramp16u); }
Status tevsVectorRamp_16s(int16_t* pDst, int len, float offset, float slope) { return ramp(pDst, len, offset, slope, testVector->ramp16s); }
Status tevsVectorRamp_32u(uint32_t* pDst, int len, float offset, float slope) { return ramp(pDst, len, offset, slope, testVector->ramp32u); }
Status tevsVectorRamp_32s(int32_t* pDst, int len, float offset, float slope) { return ramp(pDst, len, offset, slope, testVector->ramp32s); }
Status tevsVectorRamp_32f(float* pDst, int len, float offset, float slope) { return ramp(pDst, len, offset, slope, testVector->ramp32f); }
Status tevsVectorRamp_64f(double* pDst, int len, float offset, float slope) { return ramp(pDst, len, offset, slope, testVector->ramp64f); }

Status tevsVectorJaehne_8u(uint8_t* pDst, int len, uint8_t magn) { return jaehneSpread(pDst, len, magn, testVector->spread8u); }
Status tevsVectorJaehne_8s(int8_t* pDst, int len, int8_t magn) { return jaehne(pDst, len, magn, testVector->stored8s); }
Status tevsVectorJaehne_16u(uint16_t* pDst, int len, uint16_t magn) { return jaehneSpread(pDst, len, magn, testVector->spread16u); }
Status tevsVectorJaehne_16s(int16_t* pDst, int len, int16_t magn) { return jaehne(pDst, len, magn, testVector->stored16s); }
Status tevsVectorJaehne_32u(uint32_t* pDst, int len, uint32_t magn) { return jaehneSpread(pDst, len, magn, testVector->spread32u); }
Status tevsVectorJaehne_32s(int32_t* pDst, int len, int32_t magn) { return jaehne(pDst, len, magn, testVector->stored32s); }
Status tevsVectorJaehne_32f(float* pDst, int len, float magn) { return jaehne(pDst, len, magn, testVector->stored32f); }
Status tevsVectorJaehne_64f(double* pDst, int len, double magn) { return jaehne(pDst, len, magn, storeDoubles); }
