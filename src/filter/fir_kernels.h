// The kernels of FIR filters as whoever sums products with a row of taps calls them.
#pragma once

#include <stdint.h>

#include <type_traits>

#include "core/complex.h"
#include "filter/fir.table.h"

namespace tevs {

// Of the type that taps and samples are in.
template <class Stored> auto& kernelOf(const FirKernels* fir) {
    if constexpr (std::is_same_v<Stored, float>) return fir->real32f;
    if constexpr (std::is_same_v<Stored, Complex32f>) return fir->complex32f;
    if constexpr (std::is_same_v<Stored, double>) return fir->real64f;
    if constexpr (std::is_same_v<Stored, Complex64f>) return fir->complex64f;
    if constexpr (std::is_same_v<Stored, int16_t>) return fir->real16s;
    if constexpr (std::is_same_v<Stored, Complex16s>) return fir->complex16s;
}

// 16-bit taps are multiplied two at a time and summed in 32 bits, which is exact as long as their magnitudes add up to less than 2^16: samples are
// of 2^15 at most. Larger ones are taken as lower digit + 256 upper digit, of magnitudes up to 128, in runs short enough for that; the sums of runs are added in 64 bits.
constexpr int64_t kMostAtOnce = 65535;
template <class Stored> constexpr int kRun = kComplex<Stored> ? 240 : 496;
static_assert(kRun<int16_t> * 128 <= kMostAtOnce && kRun<Complex16s> * 2 * 128 <= kMostAtOnce);

inline int16_t lowerDigit(int16_t tap) { return int8_t(tap); }
inline int16_t upperDigit(int16_t tap) { return int16_t((tap - int8_t(tap)) >> 8); }

}   // namespace tevs
