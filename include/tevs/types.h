/* Sample types, status codes, flags and hints of the signal library.
 *
 * Naming       tevs<Operation>[<tapType>][_<form>]_<srcType>[<dstType>][_I | _Sfs | _ISfs]
 *
 *   type codes   8u 8s 16u 16s 32u 32s 64s    integers
 *                24u 24s                      packed 3-byte integers, least significant byte first; conversions only
 *                16f                          IEEE 754 half precision; conversions only
 *                32f 64f                      IEEE 754 single and double precision
 *                16sc 32sc 64sc 32fc 64fc     complex: re, im interleaved, nothing between
 *   _I           in place: pSrcDst is both a source and the destination; of two operands it is the second
 *   _Sfs         integer result times 2^-scaleFactor, to nearest, ties to even, saturated
 *   _ISfs        both
 *   C, CRev      a constant operand; the constant comes first in the formula
 *   _Direct      a stateless form of a filter: taps and delay line are arguments
 *
 * Arguments    sources, destination, length, parameters, scaleFactor, work buffer. A constant follows the source out of
 *              place and comes first in place. Lengths count elements (a complex one is one) and are at least 1: 0 is
 *              an error, so an empty vector is the caller's to leave out.
 * Alignment    none is asked of any pointer.
 * Overlap      a destination may equal a source whose elements are at least as wide. Where it is wider than its source,
 *              and wherever vectors overlap in part, results are wrong, except in the Move functions and where a family
 *              says so.
 * Results      never follow the calling thread's rounding mode or precision control (MXCSR, x87), and never change
 *              them. Its flush bits (FTZ, DAZ) count as it has set them, but for tevsConvert from floating point to the
 *              nearest integer, which in a mode other than to nearest reads subnormal numbers as they are. No function
 *              prints, throws or exits.
 * Threads      distinct outputs and records may be worked on by any number of threads. A filter record serves one call
 *              at a time; a transform record any number, each call with its own work buffer. Calls that are long enough
 *              may share their work out (tevcore.h), with the caller's control word and so the same results. The
 *              library keeps no mutable state of its own, but for which threads have had a team when the process forks.
 * Records      GetSize or GetStateSize, then Init, build one in the caller's memory, at any address; InitAlloc builds
 *              it in memory of its own. A record holds addresses of its own parts: it cannot be copied or moved. Free
 *              gives back what InitAlloc took. Of a record built by Init it takes no memory: a transform record is one
 *              no longer, a filter record remains as it was, and either's memory is the caller's to reuse.
 * Statuses     checks run in the order of the arguments unless a family says otherwise (as a rule pointers, then
 *              lengths, then the record's identifier, then parameters); the first that fails decides. An error is below
 *              0 and leaves every destination as it was (the memory for a record need not be); a warning is above 0 and
 *              has written the whole destination. So test status < 0, or warnings pass for failures.
 */
#ifndef TEVS_TYPES_H
#define TEVS_TYPES_H

#include <stdint.h>

/* clang-format off */
/* Every declaration stands between these two: C linkage, and the only symbols that the library exports. */
#ifdef __cplusplus
#define TEVS_BEGIN _Pragma("GCC visibility push(default)") extern "C" {
#define TEVS_END } _Pragma("GCC visibility pop")
#else
#define TEVS_BEGIN _Pragma("GCC visibility push(default)")
#define TEVS_END _Pragma("GCC visibility pop")
#endif

typedef struct { int8_t re, im; } Complex8s;
typedef struct { int16_t re, im; } Complex16s;
typedef struct { int32_t re, im; } Complex32s;
typedef struct { int64_t re, im; } Complex64s;
typedef struct { float re, im; } Complex32f;
typedef struct { double re, im; } Complex64f;
/* clang-format on */

/* Xlib.h defines a macro of this name. Where it comes first, Status stays that macro to the caller (an int), and the
 * prototypes are read with it. */
#pragma push_macro("Status")
#undef Status
typedef enum Status {
    /* warnings: the whole destination was written */
    WarnInfOrNaN = 9,       /* the largest magnitude of the source is not finite */
    WarnLnNegArg = 8,       /* a logarithm argument was negative */
    WarnLnZeroArg = 7,      /* a logarithm argument was zero */
    WarnDivByZero = 6,      /* an element-wise divisor was zero; its result was replaced */
    WarnEvenMedianMask = 5, /* an even median mask size was reduced by one */
    WarnInvZero = 4,        /* an inverse-threshold source element was zero; its result was replaced */
    WarnSqrtNegArg = 3,     /* a square-root source element was negative; its result was replaced */

    StatusOk = 0,

    /* errors: no destination was written */
    StatusBadArg = -5,             /* an index argument lies outside the record's range */
    StatusBadSize = -6,            /* a length or count is below 1 or outside its stated range */
    StatusNullPtr = -8,            /* a required pointer is null */
    StatusNoMemory = -9,           /* memory for a record or for scratch could not be had */
    StatusDivByZeroErr = -10,      /* a divisor given as a constant is zero */
    StatusTapsFactor = -13,        /* the exponent that 16-bit IIR taps carry in the a0 position is negative */
    StatusFftOrder = -15,          /* an FFT order is outside the supported range */
    StatusFftFlag = -16,           /* a normalisation flag is not one of the defined values */
    StatusContextMismatch = -17,   /* a record's identifier is not the one that the call expects */
    StatusThresholdErr = -18,      /* a threshold level is inconsistent */
    StatusThresholdNegLevel = -19, /* a threshold level that must not be negative is negative */
    StatusDelayIndex = -24,        /* a delay-line index is not in 0 .. tapsLen-1 */
    StatusFilterOrder = -25,       /* an IIR order is negative, or below 1 where one is needed */
    StatusFilterLength = -26,      /* an FIR tap count is below 1, or too large for the sizes to be said */
    StatusRelFreq = -27,           /* a relative frequency lies outside [0, 1) */
    StatusRatePhase = -28,         /* a multirate phase is not in 0 .. factor-1 */
    StatusRateFactor = -29,        /* a multirate up or down factor is below 1 */
    StatusSamplePhase = -30,       /* a sample-rate phase is not in 0 .. factor-1 */
    StatusSampleFactor = -31,      /* a sample-rate factor is below 1 */
    StatusShift = -32,             /* a shift count is negative */
    StatusMaskSize = -33,          /* a summation window length is below 1 */
    StatusWtOffset = -35,          /* a wavelet filter offset is below -1 */
    StatusJaehneMagnitude = -38,   /* a test-vector magnitude is negative */
    StatusHugeWindow = -39,        /* a Kaiser window parameter is too large */
    StatusTriangleAsym = -40,      /* a triangle-wave asymmetry is outside [-pi, pi) */
    StatusTrianglePhase = -41,     /* a triangle-wave phase is outside [0, 2pi) */
    StatusTriangleFreq = -42,      /* a triangle-wave relative frequency is outside [0, 0.5) */
    StatusTriangleMagnitude = -43, /* a triangle-wave magnitude is not positive */
    StatusTonePhase = -44,         /* a tone phase is outside its range */
    StatusToneFreq = -45,          /* a tone relative frequency is outside [0, 0.5) */
    StatusToneMagnitude = -46,     /* a tone magnitude is not positive */
    StatusSparseArg = -194,        /* a sparse filter's tap-position count or largest position is negative */
    StatusIirGenOrder = -206,      /* a designed IIR filter's order is not in 1 .. 12 */
    StatusIirGenFreq = -208,       /* a designed IIR filter's relative cut-off frequency is not in (0, 0.5] */
    StatusIirGenDecibels = -209    /* a Chebyshev design's pass-band variation is not in (0, 29] dB */
} Status;
#pragma pop_macro("Status")

/* Rounding of float to integer and to half-precision conversions. */
enum { RoundTowardZero = 0, RoundNearest = 1 };

/* Which direction of a transform multiplies its result, and by what, for a transform of length N. */
enum {
    ScaleFwdByN = 1,  /* forward by 1/N */
    ScaleInvByN = 2,  /* inverse by 1/N */
    ScaleBySqrtN = 4, /* both by 1/sqrt(N) */
    NoScale = 8       /* neither */
};

/* How a transform or statistic may trade accuracy for speed. */
enum { HintNone = 0, HintFast = 1, HintAccurate = 2 };

#endif
