// FFT records of floats.
#pragma once

#include <stdint.h>

#include "tevs/types.h"
#include "transform/fft.table.h"
#include "transform/spec.h"

namespace tevs {

// A record, at a 16-byte boundary, its tables behind it in the same block. Every reported size leaves room for 80 bytes of it, at any address.
template <class T> struct FftSpec {
    using Real = T;

    uint32_t id;
    int32_t order;       // of the transform; the complex one inside a real one is one less
    int32_t workBytes;   // scratch of one call, 0 for none
    bool owned;          // where InitAlloc made the block
    bool stored;         // where the transform stores between its passes; one kernel in registers needs no work area
    T forwardScale;      // 1/N, 1/sqrt(N), or 1 for none
    T inverseScale;
    const FftKernels<T>* kernels;   // the tables are in their layout: the library may choose others after a record is built before its constructor has run
    FftTables<T> tables;
};
static_assert(sizeof(FftSpec<float>) <= 80 && sizeof(FftSpec<double>) <= 80);

constexpr int kMaxOrder = 30;

// The sizes that GetSize reports for a record of 2^order reals or complex values.
template <class T> SpecSizes fftSizes(bool real, int order);
// How the complex values lie that a record can transform.
enum class Places { Pairs, Parts, Either };
// Fills a record but for its identifier. Reported sizes have room for Pairs or for Parts.
template <class T> void buildFft(FftSpec<T>* spec, bool real, int order, int flag, Places places = Places::Pairs);

// What sets the kinds of one precision apart: their identifier, and whether the transform is of real values, or of complex ones in two arrays.
template <class T, uint32_t Id, bool IsReal, bool AreParts = false> struct FftKind : FftSpec<T> {
    static constexpr uint32_t kId = Id;
    static constexpr bool kReal = IsReal, kParts = AreParts;
    static constexpr Status kBadLength = StatusFftOrder;
    static constexpr bool goodLength(int order) { return order >= 0 && order <= kMaxOrder; }
    static constexpr bool needsInit(int order) { return order > 3; }
    static SpecSizes sizes(int order, int) { return fftSizes<T>(IsReal, order); }
    static void build(FftKind* spec, int order, int flag, int) {
        buildFft<T>(spec, IsReal, order, flag, AreParts ? Places::Parts : Places::Pairs);
        spec->id = Id;
    }
};

enum class Way { Forward, Inverse };

}   // namespace tevs

// The public names of the records.
struct FFTSpec_C_32fc : tevs::FftKind<float, 4, false> {};
struct FFTSpec_C_32f : tevs::FftKind<float, 5, false, true> {};
struct FFTSpec_R_32f : tevs::FftKind<float, 6, true> {};
struct FFTSpec_C_64fc : tevs::FftKind<double, 7, false> {};
struct FFTSpec_C_64f : tevs::FftKind<double, 8, false, true> {};
struct FFTSpec_R_64f : tevs::FftKind<double, 9, true> {};
