// Taps in 16 bits with one exponent for all of them: the tap that the caller gave is about tap * 2^exponent.
#pragma once

#include <math.h>
#include <stdint.h>

#include <algorithm>

#include "core/complex.h"

namespace tevs {

// Of integers times 2^tapsFactor: shifted to the right until the largest magnitude is below 32767.
class IntegerTaps {
public:
    IntegerTaps(const int32_t* parts, int64_t count, int tapsFactor) {
        int64_t most = 0;
        for (int64_t k = 0; k < count; ++k) most = std::max(most, parts[k] < 0 ? -int64_t{parts[k]} : int64_t{parts[k]});
        for (; most > 32766; most >>= 1) ++shift_;
        exponent_ = int64_t{tapsFactor} + shift_;
    }
    int16_t operator()(int32_t tap) const { return int16_t(tap >> shift_); }
    int64_t exponent() const { return exponent_; }

private:
    int shift_ = 0;
    int64_t exponent_;
};

// Of floats: scaled so that the largest magnitude takes all 16 bits, and rounded half away from zero. Infinities count as the largest 16-bit tap and
// NaN as 0, whatever the others are; without a finite tap other than 0 the exponent is 0.
class FloatTaps {
public:
    FloatTaps(const float* parts, int64_t count, int = 0) {
        double most = 0;
        for (int64_t k = 0; k < count; ++k)
            if (isfinite(parts[k])) most = std::max(most, fabs(double(parts[k])));
        if (most == 0) return;
        for (; most * factor_ > 32767; factor_ /= 2) ++exponent_;
        for (; 2 * most * factor_ < 32767; factor_ *= 2) --exponent_;
    }
    int16_t operator()(float tap) const {
        if (isnan(tap)) return 0;
        const double v = std::clamp(tap * factor_, -32767.0, 32767.0);
        return int16_t(v < 0 ? int(v - 0.5) : int(v + 0.5));
    }
    int64_t exponent() const { return exponent_; }

private:
    double factor_ = 1;
    int64_t exponent_ = 0;
};

template <class Tap> using ShortTaps = std::conditional_t<std::is_same_v<Scalar<Tap>, int32_t>, IntegerTaps, FloatTaps>;

// The value of a 16-bit tap in the type in which taps are given: for integers the 16 bits themselves.
template <class Number> Number tapValue(int16_t tap, int64_t exponent) {
    if constexpr (std::is_same_v<Number, float>)
        return float(ldexp(double(tap), int(std::clamp<int64_t>(exponent, -1000, 1000))));
    else
        return tap;
}

}   // namespace tevs
