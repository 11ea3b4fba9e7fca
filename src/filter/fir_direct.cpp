// FIR filters without a record: taps and past come with every call.
//
// Blocks are cut into pieces of kOutputs outputs and kTaps taps. What a piece takes is brought into the type in which products are summed, in buffers on the
// stack, and goes to the kernels that serve records. Single outputs, and blocks of a few, are summed where taps and past lie.
#include <limits.h>
#include <math.h>
#include <string.h>

#include <algorithm>

#include "core/args.h"
#include "core/rounding.h"
#include "filter/delay_line.h"
#include "filter/fir.h"
#include "filter/fir.table.h"
#include "filter/fir_taps.h"

namespace tevs {
namespace {

constexpr int kOutputs = 256, kTaps = 256, kFewest = 4;

template <class Number> struct TapsAsTheyAre {
    TapsAsTheyAre(const Number*, int64_t, int) {}
    Number operator()(Number tap) const { return tap; }
    int64_t exponent() const { return 0; }
};

// A form says how sums are formed; of up to kExactTaps products they are exact, and so the same in any order.

// Sums in double precision, rounded once.
template <class Kind> class InDoubles {
public:
    using Tap = typename Kind::Tap;
    using Sample = typename Kind::Sample;
    using Value = std::conditional_t<kComplex<Tap>, Complex64f, double>;
    using Sum = Value;
    static constexpr bool kPaired = false;
    static constexpr int kExactTaps = Kind::kIntegerTaps ? 1 << 23 : 0;
    InDoubles(const Tap* pTaps, int tapsLen, int scaleFactor, int tapsFactor)
        : taps_(partsOf(pTaps), int64_t{tapsLen} * kParts<Tap>, tapsFactor),
          scaleFactor_(int(std::clamp<int64_t>(scaleFactor - taps_.exponent(), INT_MIN, INT_MAX))) {}
    static bool accepts(int, int) { return true; }
    static const auto& kernel() {
        if constexpr (kComplex<Tap>)
            return fir->complex64f;
        else
            return fir->real64f;
    }
    Value tap(Tap h) const {
        return eachPart<Value>(h, [this](auto part) { return double(taps_(part)); });
    }
    void put(const Sum* sums, Sample* pDst, int n) const { fromStored(sums, pDst, n, scaleFactor_); }
    Sample out(Sum sum) const { return fromStored<Sample>(sum, scaleFactor_); }

private:
    std::conditional_t<Kind::kIntegerTaps, IntegerTaps, TapsAsTheyAre<Scalar<Tap>>> taps_;
    int scaleFactor_;
};

// 16-bit taps that stand for taps * 2^-15, and sums in 32 bits, that wrap.
class Q15 {
public:
    using Tap = int16_t;
    using Sample = int16_t;
    using Value = int16_t;
    using Sum = uint32_t;
    static constexpr bool kPaired = true;
    static constexpr int kExactTaps = INT_MAX;
    Q15(const int16_t*, int, int scaleFactor, int) : scaleFactor_(std::clamp(scaleFactor, -100, 100) + 15) {}
    static bool accepts(int index, int tapsLen) { return index >= 0 && index < tapsLen; }
    static const auto& kernel() { return fir->real16s; }
    static int16_t tap(int16_t h) { return h; }
    void put(const uint32_t* sums, int16_t* pDst, int n) const { fromStored(reinterpret_cast<const int32_t*>(sums), pDst, n, scaleFactor_); }
    int16_t out(uint32_t sum) const { return scaled<int16_t, 31>(int64_t{int32_t(sum)}, scaleFactor_); }

private:
    int scaleFactor_;
};

template <class Form> class StatelessFir {
    using Tap = typename Form::Tap;
    using Sample = typename Form::Sample;
    using Value = typename Form::Value;
    using Sum = typename Form::Sum;

public:
    StatelessFir(const Tap* pTaps, int tapsLen, Sample* pDlyLine, int index, int scaleFactor, int tapsFactor)
        : form_(pTaps, tapsLen, scaleFactor, tapsFactor), pTaps_(pTaps), tapsLen_(tapsLen), circle_(pDlyLine, tapsLen, index) {}

    int block(const Sample* pSrc, Sample* pDst, int numIters) {
        // Sums that are not rounded have to be those of the kernel, which forms two in little more time than one.
        if (numIters < (std::is_same_v<Sample, Sum> ? 2 : kFewest)) {
            for (int n = 0; n < numIters; ++n) pDst[n] = ofShortBlock(circle_.push(pSrc[n]) + tapsLen_ - 1);
            return circle_.index();
        }
        Sum sums[kOutputs];
        for (int n = 0, count; n < numIters; n += count) {
            count = std::min(numIters - n, kOutputs);
            sumPieces(pSrc + n, count, sums);
            circle_.push(pSrc + n, count);
            form_.put(sums, pDst + n, count);
        }
        return circle_.index();
    }
    int one(Sample src, Sample* pDst) {
        *pDst = form_.out(inFours(circle_.push(src) + tapsLen_ - 1));
        return circle_.index();
    }

private:
    // The output at the newest sample, whichever order is quickest to sum in.
    Sum inFours(const Sample* newest) const {
        return inFours(newest, [](int, Sum, Sum) {});
    }
    template <class Also> Sum inFours(const Sample* newest, Also also) const {
        Sum sums[4] = {};
        const auto add = [&](int k, int l) {
            const Sum h = toStored<Sum>(form_.tap(pTaps_[k])), x = toStored<Sum>(newest[-k]);
            sums[l] = sumOf(sums[l], productOf(h, x));
            also(l, h, x);
        };
        int k = 0;
        for (; k + 4 <= tapsLen_; k += 4)
            for (int l = 0; l < 4; ++l) add(k + l, l);
        for (; k < tapsLen_; ++k) add(k, 0);
        return sumOf(sumOf(sums[0], sums[1]), sumOf(sums[2], sums[3]));
    }

    // The bits that the output has in a long block.
    Sample ofShortBlock(const Sample* newest) const {
        if constexpr (Form::kExactTaps < INT_MAX)
            if (tapsLen_ > Form::kExactTaps) return rounded(newest);
        return form_.out(inFours(newest));
    }
    // Sums of n products in any two orders lie within 2 n 2^-53 of the products' magnitudes from each other (Higham, Accuracy and Stability of Numerical Algorithms,
    // ch. 4), complex ones within twice that. Where as much to either side rounds to the same sample, the order is of no account; where not, and where sums are
    // not rounded at all, it is that of the kernel.
    Sample rounded(const Sample* newest) const {
        if constexpr (!std::is_same_v<Sample, Sum>) {
            double sizes[4] = {};
            const Sum sum = inFours(newest, [&](int l, Sum h, Sum x) { sizes[l] += sizeOf(h) * sizeOf(x); });
            const double margin = ((sizes[0] + sizes[1]) + (sizes[2] + sizes[3])) * (4.0 * tapsLen_ + 16) * 0x1p-53;
            const auto beside = [&](double by) { return form_.out(eachPart<Sum>(sum, [=](double part) { return part + by; })); };
            const Sample below = beside(-margin), above = beside(margin);
            if (memcmp(&below, &above, sizeof below) == 0) return below;
        }
        return form_.out(inOrder(newest));
    }
    static double sizeOf(Sum x) {
        if constexpr (kComplex<Sum>)
            return fabs(x.re) + fabs(x.im);
        else
            return fabs(double(x));
    }
    // As sumPieces, of an output whose sample has been pushed.
    Sum inOrder(const Sample* newest) const {
        Value in[kTaps], taps[kTaps];
        Sum sum = {}, more;
        for (int k = 0, count; k < tapsLen_; k += count) {
            count = std::min(kTaps, tapsLen_ - k);
            const Sample* from = newest + 1 - k - count;
            for (int j = 0; j < count; ++j) taps[count - 1 - j] = form_.tap(pTaps_[k + j]);
            if constexpr (std::is_same_v<Sample, Value>) {
                form_.kernel().block(from, taps, count, reinterpret_cast<KernelSum*>(&more), 1);
            } else {
                toStored(from, in, count);
                form_.kernel().block(in, taps, count, reinterpret_cast<KernelSum*>(&more), 1);
            }
            sum = k == 0 ? more : sumOf(sum, more);
        }
        return sum;
    }

    // n <= kOutputs outputs.
    void sumPieces(const Sample* pSrc, int n, Sum* sums) const {
        Value in[kOutputs + kTaps], taps[kTaps];
        Sum more[kOutputs];
        for (int k = 0, count; k < tapsLen_; k += count) {
            count = std::min(kTaps, tapsLen_ - k);
            const int even = count + (Form::kPaired ? count & 1 : 0);   // with a tap of 0 in front where the kernel wants an even number
            taps[0] = {};
            for (int j = 0; j < count; ++j) taps[even - 1 - j] = form_.tap(pTaps_[k + j]);
            // x[-before] .. x[n-1-k]. There are as many in the past: k + count <= tapsLen.
            const int before = k + even - 1, fromPast = std::min(before, n + even - 1);
            if (fromPast > 0) toStored(circle_.past() + (tapsLen_ - before), in, fromPast);
            if (n > k) toStored(pSrc, in + before, n - k);
            form_.kernel().block(in, taps, even, reinterpret_cast<KernelSum*>(k == 0 ? sums : more), n);
            if (k > 0)
                for (int i = 0; i < n; ++i) sums[i] = sumOf(sums[i], more[i]);
        }
    }
    using KernelSum = std::conditional_t<std::is_same_v<Sum, uint32_t>, int32_t, Sum>;

    const Form form_;
    const Tap* const pTaps_;
    const int tapsLen_;
    Circle<Sample> circle_;
};

template <class Form> Args checked(Args args, const typename Form::Tap* pTaps, int tapsLen, const typename Form::Sample* pDlyLine, const int* pDlyLineIndex) {
    return args.ptr(pTaps)
        .require(tapsLen >= 1, StatusFilterLength)
        .ptr(pDlyLine)
        .ptr(pDlyLineIndex)
        .require([=] { return Form::accepts(*pDlyLineIndex, tapsLen); }, StatusDelayIndex);
}

template <class Form, class Sample, class Tap>
Status stateless(const Sample* pSrc, Sample* pDst, int numIters, const Tap* pTaps, int tapsLen, Sample* pDlyLine, int* pDlyLineIndex, int scaleFactor = 0,
                 int tapsFactor = 0) {
    if (Status s = checked<Form>(Args().ptr(pSrc).ptr(pDst).len(numIters), pTaps, tapsLen, pDlyLine, pDlyLineIndex)) return s;
    NearestRounding guard;
    *pDlyLineIndex = StatelessFir<Form>(pTaps, tapsLen, pDlyLine, *pDlyLineIndex, scaleFactor, tapsFactor).block(pSrc, pDst, numIters);
    return StatusOk;
}

template <class Form, class Sample, class Tap>
Status statelessOne(const Sample* pSrc, Sample* pDst, const Tap* pTaps, int tapsLen, Sample* pDlyLine, int* pDlyLineIndex, int scaleFactor = 0,
                    int tapsFactor = 0) {
    if (Status s = checked<Form>(Args().ptr(pSrc).ptr(pDst), pTaps, tapsLen, pDlyLine, pDlyLineIndex)) return s;
    NearestRounding guard;
    *pDlyLineIndex = StatelessFir<Form>(pTaps, tapsLen, pDlyLine, *pDlyLineIndex, scaleFactor, tapsFactor).one(*pSrc, pDst);
    return StatusOk;
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsFIR_Direct_32f(const float* pSrc, float* pDst, int numIters, const float* pTaps, int tapsLen, float* pDlyLine, int* pDlyLineIndex) {
    return stateless<InDoubles<Fir_32f>>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIR_Direct_32f_I(float* pSrcDst, int numIters, const float* pTaps, int tapsLen, float* pDlyLine, int* pDlyLineIndex) {
    return stateless<InDoubles<Fir_32f>>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIR_Direct_32fc(const Complex32f* pSrc, Complex32f* pDst, int numIters, const Complex32f* pTaps, int tapsLen, Complex32f* pDlyLine,
                           int* pDlyLineIndex) {
    return stateless<InDoubles<Fir_32fc>>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIR_Direct_32fc_I(Complex32f* pSrcDst, int numIters, const Complex32f* pTaps, int tapsLen, Complex32f* pDlyLine, int* pDlyLineIndex) {
    return stateless<InDoubles<Fir_32fc>>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIR32f_Direct_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int numIters, const float* pTaps, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex,
                                 int scaleFactor) {
    return stateless<InDoubles<Fir32f_16s>>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIR32f_Direct_16s_ISfs(int16_t* pSrcDst, int numIters, const float* pTaps, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return stateless<InDoubles<Fir32f_16s>>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIR32fc_Direct_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int numIters, const Complex32f* pTaps, int tapsLen, Complex16s* pDlyLine,
                                   int* pDlyLineIndex, int scaleFactor) {
    return stateless<InDoubles<Fir32fc_16sc>>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIR32fc_Direct_16sc_ISfs(Complex16s* pSrcDst, int numIters, const Complex32f* pTaps, int tapsLen, Complex16s* pDlyLine, int* pDlyLineIndex,
                                    int scaleFactor) {
    return stateless<InDoubles<Fir32fc_16sc>>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIR32s_Direct_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int numIters, const int32_t* pTaps, int tapsLen, int tapsFactor, int16_t* pDlyLine,
                                 int* pDlyLineIndex, int scaleFactor) {
    return stateless<InDoubles<Fir32s_16s>>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor, tapsFactor);
}
Status tevsFIR32s_Direct_16s_ISfs(int16_t* pSrcDst, int numIters, const int32_t* pTaps, int tapsLen, int tapsFactor, int16_t* pDlyLine, int* pDlyLineIndex,
                                  int scaleFactor) {
    return stateless<InDoubles<Fir32s_16s>>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor, tapsFactor);
}
Status tevsFIR32sc_Direct_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int numIters, const Complex32s* pTaps, int tapsLen, int tapsFactor,
                                   Complex16s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return stateless<InDoubles<Fir32sc_16sc>>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor, tapsFactor);
}
Status tevsFIR32sc_Direct_16sc_ISfs(Complex16s* pSrcDst, int numIters, const Complex32s* pTaps, int tapsLen, int tapsFactor, Complex16s* pDlyLine,
                                    int* pDlyLineIndex, int scaleFactor) {
    return stateless<InDoubles<Fir32sc_16sc>>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor, tapsFactor);
}
Status tevsFIR_Direct_64f(const double* pSrc, double* pDst, int numIters, const double* pTaps, int tapsLen, double* pDlyLine, int* pDlyLineIndex) {
    return stateless<InDoubles<Fir_64f>>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIR_Direct_64f_I(double* pSrcDst, int numIters, const double* pTaps, int tapsLen, double* pDlyLine, int* pDlyLineIndex) {
    return stateless<InDoubles<Fir_64f>>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIR_Direct_64fc(const Complex64f* pSrc, Complex64f* pDst, int numIters, const Complex64f* pTaps, int tapsLen, Complex64f* pDlyLine,
                           int* pDlyLineIndex) {
    return stateless<InDoubles<Fir_64fc>>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIR_Direct_64fc_I(Complex64f* pSrcDst, int numIters, const Complex64f* pTaps, int tapsLen, Complex64f* pDlyLine, int* pDlyLineIndex) {
    return stateless<InDoubles<Fir_64fc>>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIR64f_Direct_32f(const float* pSrc, float* pDst, int numIters, const double* pTaps, int tapsLen, float* pDlyLine, int* pDlyLineIndex) {
    return stateless<InDoubles<Fir64f_32f>>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIR64f_Direct_32f_I(float* pSrcDst, int numIters, const double* pTaps, int tapsLen, float* pDlyLine, int* pDlyLineIndex) {
    return stateless<InDoubles<Fir64f_32f>>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIR64fc_Direct_32fc(const Complex32f* pSrc, Complex32f* pDst, int numIters, const Complex64f* pTaps, int tapsLen, Complex32f* pDlyLine,
                               int* pDlyLineIndex) {
    return stateless<InDoubles<Fir64fc_32fc>>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIR64fc_Direct_32fc_I(Complex32f* pSrcDst, int numIters, const Complex64f* pTaps, int tapsLen, Complex32f* pDlyLine, int* pDlyLineIndex) {
    return stateless<InDoubles<Fir64fc_32fc>>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIR64f_Direct_32s_Sfs(const int32_t* pSrc, int32_t* pDst, int numIters, const double* pTaps, int tapsLen, int32_t* pDlyLine, int* pDlyLineIndex,
                                 int scaleFactor) {
    return stateless<InDoubles<Fir64f_32s>>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIR64f_Direct_32s_ISfs(int32_t* pSrcDst, int numIters, const double* pTaps, int tapsLen, int32_t* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return stateless<InDoubles<Fir64f_32s>>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIR_Direct_32s_Sfs(const int32_t* pSrc, int32_t* pDst, int numIters, const double* pTaps, int tapsLen, int32_t* pDlyLine, int* pDlyLineIndex,
                              int scaleFactor) {
    return stateless<InDoubles<Fir64f_32s>>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIR_Direct_32s_ISfs(int32_t* pSrcDst, int numIters, const double* pTaps, int tapsLen, int32_t* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return stateless<InDoubles<Fir64f_32s>>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIR64fc_Direct_32sc_Sfs(const Complex32s* pSrc, Complex32s* pDst, int numIters, const Complex64f* pTaps, int tapsLen, Complex32s* pDlyLine,
                                   int* pDlyLineIndex, int scaleFactor) {
    return stateless<InDoubles<Fir64fc_32sc>>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIR64fc_Direct_32sc_ISfs(Complex32s* pSrcDst, int numIters, const Complex64f* pTaps, int tapsLen, Complex32s* pDlyLine, int* pDlyLineIndex,
                                    int scaleFactor) {
    return stateless<InDoubles<Fir64fc_32sc>>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIR64f_Direct_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int numIters, const double* pTaps, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex,
                                 int scaleFactor) {
    return stateless<InDoubles<Fir64f_16s>>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIR64f_Direct_16s_ISfs(int16_t* pSrcDst, int numIters, const double* pTaps, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return stateless<InDoubles<Fir64f_16s>>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIR64fc_Direct_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int numIters, const Complex64f* pTaps, int tapsLen, Complex16s* pDlyLine,
                                   int* pDlyLineIndex, int scaleFactor) {
    return stateless<InDoubles<Fir64fc_16sc>>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIR64fc_Direct_16sc_ISfs(Complex16s* pSrcDst, int numIters, const Complex64f* pTaps, int tapsLen, Complex16s* pDlyLine, int* pDlyLineIndex,
                                    int scaleFactor) {
    return stateless<InDoubles<Fir64fc_16sc>>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIR_Direct_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int numIters, const int16_t* pTapsQ15, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex,
                              int scaleFactor) {
    return stateless<Q15>(pSrc, pDst, numIters, pTapsQ15, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIR_Direct_16s_ISfs(int16_t* pSrcDst, int numIters, const int16_t* pTapsQ15, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return stateless<Q15>(pSrcDst, pSrcDst, numIters, pTapsQ15, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

Status tevsFIROne_Direct_32f(float src, float* pDst, const float* pTaps, int tapsLen, float* pDlyLine, int* pDlyLineIndex) {
    return statelessOne<InDoubles<Fir_32f>>(&src, pDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIROne_Direct_32f_I(float* pSrcDst, const float* pTaps, int tapsLen, float* pDlyLine, int* pDlyLineIndex) {
    return statelessOne<InDoubles<Fir_32f>>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIROne_Direct_32fc(Complex32f src, Complex32f* pDst, const Complex32f* pTaps, int tapsLen, Complex32f* pDlyLine, int* pDlyLineIndex) {
    return statelessOne<InDoubles<Fir_32fc>>(&src, pDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIROne_Direct_32fc_I(Complex32f* pSrcDst, const Complex32f* pTaps, int tapsLen, Complex32f* pDlyLine, int* pDlyLineIndex) {
    return statelessOne<InDoubles<Fir_32fc>>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIROne32f_Direct_16s_Sfs(int16_t src, int16_t* pDst, const float* pTaps, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return statelessOne<InDoubles<Fir32f_16s>>(&src, pDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIROne32f_Direct_16s_ISfs(int16_t* pSrcDst, const float* pTaps, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return statelessOne<InDoubles<Fir32f_16s>>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIROne32fc_Direct_16sc_Sfs(Complex16s src, Complex16s* pDst, const Complex32f* pTaps, int tapsLen, Complex16s* pDlyLine, int* pDlyLineIndex,
                                      int scaleFactor) {
    return statelessOne<InDoubles<Fir32fc_16sc>>(&src, pDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIROne32fc_Direct_16sc_ISfs(Complex16s* pSrcDst, const Complex32f* pTaps, int tapsLen, Complex16s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return statelessOne<InDoubles<Fir32fc_16sc>>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIROne32s_Direct_16s_Sfs(int16_t src, int16_t* pDst, const int32_t* pTaps, int tapsLen, int tapsFactor, int16_t* pDlyLine, int* pDlyLineIndex,
                                    int scaleFactor) {
    return statelessOne<InDoubles<Fir32s_16s>>(&src, pDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor, tapsFactor);
}
Status tevsFIROne32s_Direct_16s_ISfs(int16_t* pSrcDst, const int32_t* pTaps, int tapsLen, int tapsFactor, int16_t* pDlyLine, int* pDlyLineIndex,
                                     int scaleFactor) {
    return statelessOne<InDoubles<Fir32s_16s>>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor, tapsFactor);
}
Status tevsFIROne32sc_Direct_16sc_Sfs(Complex16s src, Complex16s* pDst, const Complex32s* pTaps, int tapsLen, int tapsFactor, Complex16s* pDlyLine,
                                      int* pDlyLineIndex, int scaleFactor) {
    return statelessOne<InDoubles<Fir32sc_16sc>>(&src, pDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor, tapsFactor);
}
Status tevsFIROne32sc_Direct_16sc_ISfs(Complex16s* pSrcDst, const Complex32s* pTaps, int tapsLen, int tapsFactor, Complex16s* pDlyLine, int* pDlyLineIndex,
                                       int scaleFactor) {
    return statelessOne<InDoubles<Fir32sc_16sc>>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor, tapsFactor);
}
Status tevsFIROne_Direct_64f(double src, double* pDst, const double* pTaps, int tapsLen, double* pDlyLine, int* pDlyLineIndex) {
    return statelessOne<InDoubles<Fir_64f>>(&src, pDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIROne_Direct_64f_I(double* pSrcDst, const double* pTaps, int tapsLen, double* pDlyLine, int* pDlyLineIndex) {
    return statelessOne<InDoubles<Fir_64f>>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIROne_Direct_64fc(Complex64f src, Complex64f* pDst, const Complex64f* pTaps, int tapsLen, Complex64f* pDlyLine, int* pDlyLineIndex) {
    return statelessOne<InDoubles<Fir_64fc>>(&src, pDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIROne_Direct_64fc_I(Complex64f* pSrcDst, const Complex64f* pTaps, int tapsLen, Complex64f* pDlyLine, int* pDlyLineIndex) {
    return statelessOne<InDoubles<Fir_64fc>>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIROne64f_Direct_32f(float src, float* pDst, const double* pTaps, int tapsLen, float* pDlyLine, int* pDlyLineIndex) {
    return statelessOne<InDoubles<Fir64f_32f>>(&src, pDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIROne64f_Direct_32f_I(float* pSrcDst, const double* pTaps, int tapsLen, float* pDlyLine, int* pDlyLineIndex) {
    return statelessOne<InDoubles<Fir64f_32f>>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIROne64fc_Direct_32fc(Complex32f src, Complex32f* pDst, const Complex64f* pTaps, int tapsLen, Complex32f* pDlyLine, int* pDlyLineIndex) {
    return statelessOne<InDoubles<Fir64fc_32fc>>(&src, pDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIROne64fc_Direct_32fc_I(Complex32f* pSrcDst, const Complex64f* pTaps, int tapsLen, Complex32f* pDlyLine, int* pDlyLineIndex) {
    return statelessOne<InDoubles<Fir64fc_32fc>>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIROne64f_Direct_32s_Sfs(int32_t src, int32_t* pDst, const double* pTaps, int tapsLen, int32_t* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return statelessOne<InDoubles<Fir64f_32s>>(&src, pDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIROne64f_Direct_32s_ISfs(int32_t* pSrcDst, const double* pTaps, int tapsLen, int32_t* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return statelessOne<InDoubles<Fir64f_32s>>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIROne_Direct_32s_Sfs(int32_t src, int32_t* pDst, const double* pTaps, int tapsLen, int32_t* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return statelessOne<InDoubles<Fir64f_32s>>(&src, pDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIROne_Direct_32s_ISfs(int32_t* pSrcDst, const double* pTaps, int tapsLen, int32_t* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return statelessOne<InDoubles<Fir64f_32s>>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIROne64fc_Direct_32sc_Sfs(Complex32s src, Complex32s* pDst, const Complex64f* pTaps, int tapsLen, Complex32s* pDlyLine, int* pDlyLineIndex,
                                      int scaleFactor) {
    return statelessOne<InDoubles<Fir64fc_32sc>>(&src, pDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIROne64fc_Direct_32sc_ISfs(Complex32s* pSrcDst, const Complex64f* pTaps, int tapsLen, Complex32s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return statelessOne<InDoubles<Fir64fc_32sc>>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIROne64f_Direct_16s_Sfs(int16_t src, int16_t* pDst, const double* pTaps, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return statelessOne<InDoubles<Fir64f_16s>>(&src, pDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIROne64f_Direct_16s_ISfs(int16_t* pSrcDst, const double* pTaps, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return statelessOne<InDoubles<Fir64f_16s>>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIROne64fc_Direct_16sc_Sfs(Complex16s src, Complex16s* pDst, const Complex64f* pTaps, int tapsLen, Complex16s* pDlyLine, int* pDlyLineIndex,
                                      int scaleFactor) {
    return statelessOne<InDoubles<Fir64fc_16sc>>(&src, pDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIROne64fc_Direct_16sc_ISfs(Complex16s* pSrcDst, const Complex64f* pTaps, int tapsLen, Complex16s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return statelessOne<InDoubles<Fir64fc_16sc>>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIROne_Direct_16s_Sfs(int16_t src, int16_t* pDst, const int16_t* pTapsQ15, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return statelessOne<Q15>(&src, pDst, pTapsQ15, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
Status tevsFIROne_Direct_16s_ISfs(int16_t* pSrcDst, const int16_t* pTapsQ15, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return statelessOne<Q15>(pSrcDst, pSrcDst, pTapsQ15, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}
