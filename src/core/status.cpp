#include "tevs/core.h"

// The words of types.h. No default: the compiler names a status that is missing.
const char* tevsGetStatusString(Status status) {
    switch (status) {
        case WarnInfOrNaN:
            return "the largest magnitude of the source is not finite";
        case WarnLnNegArg:
            return "a logarithm argument was negative";
        case WarnLnZeroArg:
            return "a logarithm argument was zero";
        case WarnDivByZero:
            return "an element-wise divisor was zero; its result was replaced";
        case WarnEvenMedianMask:
            return "an even median mask size was reduced by one";
        case WarnInvZero:
            return "an inverse-threshold source element was zero; its result was replaced";
        case WarnSqrtNegArg:
            return "a square-root source element was negative; its result was replaced";
        case StatusOk:
            return "no error";
        case StatusBadArg:
            return "an index argument lies outside the record's range";
        case StatusBadSize:
            return "a length or count is below 1 or outside its stated range";
        case StatusNullPtr:
            return "a required pointer is null";
        case StatusNoMemory:
            return "memory for a record or for scratch could not be had";
        case StatusDivByZeroErr:
            return "a divisor given as a constant is zero";
        case StatusTapsFactor:
            return "the exponent that 16-bit IIR taps carry in the a0 position is negative";
        case StatusFftOrder:
            return "an FFT order is outside the supported range";
        case StatusFftFlag:
            return "a normalisation flag is not one of the defined values";
        case StatusContextMismatch:
            return "a record's identifier is not the one that the call expects";
        case StatusThresholdErr:
            return "a threshold level is inconsistent";
        case StatusThresholdNegLevel:
            return "a threshold level that must not be negative is negative";
        case StatusDelayIndex:
            return "a delay-line index is not in 0 .. tapsLen-1";
        case StatusFilterOrder:
            return "an IIR order is negative, or below 1 where one is needed";
        case StatusFilterLength:
            return "an FIR tap count is below 1, or too large for the sizes to be said";
        case StatusRelFreq:
            return "a relative frequency lies outside [0, 1)";
        case StatusRatePhase:
            return "a multirate phase is not in 0 .. factor-1";
        case StatusRateFactor:
            return "a multirate up or down factor is below 1";
        case StatusSamplePhase:
            return "a sample-rate phase is not in 0 .. factor-1";
        case StatusSampleFactor:
            return "a sample-rate factor is below 1";
        case StatusShift:
            return "a shift count is negative";
        case StatusMaskSize:
            return "a summation window length is below 1";
        case StatusWtOffset:
            return "a wavelet filter offset is below -1";
        case StatusJaehneMagnitude:
            return "a test-vector magnitude is negative";
        case StatusHugeWindow:
            return "a Kaiser window parameter is too large";
        case StatusTriangleAsym:
            return "a triangle-wave asymmetry is outside [-pi, pi)";
        case StatusTrianglePhase:
            return "a triangle-wave phase is outside [0, 2pi)";
        case StatusTriangleFreq:
            return "a triangle-wave relative frequency is outside [0, 0.5)";
        case StatusTriangleMagnitude:
            return "a triangle-wave magnitude is not positive";
        case StatusTonePhase:
            return "a tone phase is outside its range";
        case StatusToneFreq:
            return "a tone relative frequency is outside [0, 0.5)";
        case StatusToneMagnitude:
            return "a tone magnitude is not positive";
        case StatusSparseArg:
            return "a sparse filter's tap-position count or largest position is negative";
        case StatusIirGenOrder:
            return "a designed IIR filter's order is not in 1 .. 12";
        case StatusIirGenFreq:
            return "a designed IIR filter's relative cut-off frequency is not in (0, 0.5]";
        case StatusIirGenDecibels:
            return "a Chebyshev design's pass-band variation is not in (0, 29] dB";
    }
    return "unknown status";
}
