// The pairs of tap and sample types that filters with records are made for.
#pragma once

#include <stdint.h>

#include <type_traits>

#include "core/args.h"
#include "core/complex.h"

namespace tevs {

// Taps of type TapT over samples of type SampleT. FloatT is the type of floating-point arithmetic, exact for single samples, that tells the pair's precision; what
// the taps are kept in is the family's affair. The identifiers of every family number its records in the order of PlaceT.
template <class TapT, class FloatT, class SampleT, int PlaceT> struct Pair {
    using Tap = TapT;
    using Float = FloatT;
    using Sample = SampleT;
    static constexpr int kPlace = PlaceT;
    static constexpr bool kIntegerTaps = PlaceT / 2 == 2;                   // in the records, whichever type they are given in
    static constexpr bool kTapsFactor = std::is_integral_v<Scalar<TapT>>;   // and given taps one of their own
};

using Pair_32f = Pair<float, float, float, 0>;
using Pair_32fc = Pair<Complex32f, Complex32f, Complex32f, 1>;
using Pair32f_16s = Pair<float, float, int16_t, 2>;
using Pair32fc_16sc = Pair<Complex32f, Complex32f, Complex16s, 3>;
using Pair32s_16s = Pair<int32_t, float, int16_t, 4>;
using Pair32s_16s32f = Pair<float, float, int16_t, 4>;
using Pair32sc_16sc = Pair<Complex32s, Complex32f, Complex16s, 5>;
using Pair32sc_16sc32fc = Pair<Complex32f, Complex32f, Complex16s, 5>;
using Pair_64f = Pair<double, double, double, 6>;
using Pair_64fc = Pair<Complex64f, Complex64f, Complex64f, 7>;
using Pair64f_32f = Pair<double, double, float, 8>;
using Pair64fc_32fc = Pair<Complex64f, Complex64f, Complex32f, 9>;
using Pair64f_32s = Pair<double, double, int32_t, 10>;
using Pair64fc_32sc = Pair<Complex64f, Complex64f, Complex32s, 11>;
using Pair64f_16s = Pair<double, double, int16_t, 12>;
using Pair64fc_16sc = Pair<Complex64f, Complex64f, Complex16s, 13>;

// Two letters and a number of two digits: "FI01".
constexpr uint32_t numberedIdentifier(const char (&letters)[3], int n) {
    return identifier({letters[0], letters[1], char('0' + n / 10), char('0' + n % 10), 0});
}

}   // namespace tevs
