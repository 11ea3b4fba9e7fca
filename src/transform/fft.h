// FFT records: what they hold and how they are laid out.
#pragma once

#include <limits.h>
#include <stdint.h>

#include "tevs/types.h"
#include "transform/fft.table.h"

namespace tevs {

// A record, at a 16-byte boundary, its tables behind it in the same block. Every reported size leaves room for 80 bytes of it, at any address.
template <class T> struct FftSpec {
    using Real = T;

    uint32_t id;
    int32_t order;    // of the transform; the complex one inside a real one is one less
    T forwardScale;   // 1/N, 1/sqrt(N), or 1 for none
    T inverseScale;
    int32_t hint;        // as given
    int32_t workBytes;   // scratch of one call, 0 for none
    int32_t owned;       // 1 where InitAlloc made the block
    int32_t stored;      // 1 where the transform stores between its passes, 0 for one kernel in registers, which needs no work area
    FftTables<T> tables;
};
static_assert(sizeof(FftSpec<float>) <= 80 && sizeof(FftSpec<double>) <= 80);

// What sets the kinds of one precision apart: their identifier, and whether the transform is of real values.
template <class T, uint32_t Id, bool IsReal> struct FftKind : FftSpec<T> {
    static constexpr uint32_t kId = Id;
    static constexpr bool kReal = IsReal;
};

constexpr int kMaxOrder = 30;
constexpr bool goodOrder(int order) { return order >= 0 && order <= kMaxOrder; }
constexpr bool goodFlag(int flag) { return flag == ScaleFwdByN || flag == ScaleInvByN || flag == ScaleBySqrtN || flag == NoScale; }

enum class Way { Forward, Inverse };

constexpr uint64_t kAlignmentRoom = 16;   // what a caller's buffer may lose up to its first 16-byte boundary

// The three sizes that GetSize reports, in bytes. One that an int does not hold is reported as INT_MAX.
constexpr int clampToInt(uint64_t bytes) { return bytes < INT_MAX ? int(bytes) : INT_MAX; }
struct FftSizes {
    uint64_t spec, init, work;
    constexpr bool fitInt() const { return spec <= INT_MAX && init <= INT_MAX && work <= INT_MAX; }
    void report(int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) const {
        *pSpecSize = clampToInt(spec);
        *pSpecBufferSize = clampToInt(init);
        *pBufferSize = clampToInt(work);
    }
};

}   // namespace tevs

// The public names of the records.
struct FFTSpec_C_32fc : tevs::FftKind<float, 4, false> {};
struct FFTSpec_C_32f : tevs::FftKind<float, 5, false> {};
struct FFTSpec_R_32f : tevs::FftKind<float, 6, true> {};
struct FFTSpec_C_64fc : tevs::FftKind<double, 7, false> {};
struct FFTSpec_C_64f : tevs::FftKind<double, 8, false> {};
struct FFTSpec_R_64f : tevs::FftKind<double, 9, true> {};
