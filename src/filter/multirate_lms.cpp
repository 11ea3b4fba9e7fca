// Adaptive FIR filters between two rates: the filter of FIRMR, whose taps move by the rule of least mean squares.
#include "tevs/multirate_lms.h"

#include <limits.h>
#include <string.h>

#include <algorithm>

#include "core/args.h"
#include "core/memory.h"
#include "core/rounding.h"
#include "core/scale.h"
#include "filter/fir.table.h"
#include "filter/lms.table.h"
#include "filter/multirate_lms.table.h"
#include "tevs/dotprod.h"
#include "vector/samples.h"

namespace tevs {

// A record. It holds no addresses: where taps, line and errors lie follows from its own.
struct MultirateLmsState {
    uint32_t id;
    int32_t allocated;   // 1 where InitAlloc made the block
    int32_t tapsLen, tapsFactor;
    int32_t up, upPhase, down, downPhase;
    int32_t at;   // where the past begins in the line
};

namespace {

// ---- types ------------------------------------------------------------------------------------------------------------------------------------

// Taps, samples, errors, and what a step is computed in.
template <class TapT, class DataT, class ErrT, class StepT> struct Types {
    using Tap = TapT;
    using Data = DataT;
    using Err = ErrT;
    using Step = StepT;
    static constexpr bool kWhole = std::is_integral_v<Scalar<TapT>>;
};
struct Of32s_16s : Types<int32_t, int16_t, int32_t, double> {
    static constexpr uint32_t kId = identifier("LMSR");
};
struct Of32sc_16sc : Types<Complex32s, Complex16s, Complex32s, Complex64f> {
    static constexpr uint32_t kId = identifier("LMSC");
};
struct Of_32f : Types<float, float, float, float> {
    static constexpr uint32_t kId = identifier("LMSF");
};
struct Of_32fc : Types<Complex32f, Complex32f, Complex32f, Complex32f> {
    static constexpr uint32_t kId = identifier("LMSG");
};

int64_t dot(const int16_t* x, const int32_t* h, int n) { return multirateLms->dot16s(x, h, n); }
Complex64s dot(const Complex16s* x, const Complex32s* h, int n) { return multirateLms->dot16sc(x, h, n); }
float dot(const float* x, const float* h, int n) { return lms->dot(x, h, n); }
Complex32f dot(const Complex32f* x, const Complex32f* h, int n) { return fir->complex32f.dot(x, h, n); }

void adapt(const int16_t* x, int32_t* h, int n, double g) { multirateLms->adapt16s(x, h, n, g); }
void adapt(const Complex16s* x, Complex32s* h, int n, Complex64f g) { multirateLms->adapt16sc(x, h, n, g); }
void adapt(const float* x, float* h, int n, float g) { lms->adapt(x, h, n, g); }
void adapt(const Complex32f* x, Complex32f* h, int n, Complex32f g) { multirateLms->adapt32fc(x, h, n, g); }

// The sum of |x|^2 over n parts.
int64_t power(const int16_t* x, int n) {
    int64_t sum = 0;
    tevsDotProd_16s64s(x, x, n, &sum);
    return sum;
}
float power(const float* x, int n) { return multirateLms->power32f(x, n); }

// ---- a record ---------------------------------------------------------------------------------------------------------------------------------

struct Rates {
    int up, upPhase, down, downPhase;
};

template <class K> class Filter {
    using Tap = typename K::Tap;
    using Data = typename K::Data;
    using Err = typename K::Err;
    using Step = typename K::Step;
    using Real = Scalar<Step>;

public:
    explicit Filter(const MultirateLmsState* s) : Filter(Carve(const_cast<MultirateLmsState*>(s)), s->tapsLen, s->up, s->down) {}

    // Over no block it only adds up.
    static uint64_t bytes(int tapsLen, int up, int down) { return Filter(Carve(), tapsLen, up, down).bytes_; }
    static int each(int tapsLen, int up) { return int((int64_t{tapsLen} + up - 1) / up); }

    static MultirateLmsState* build(void* block, bool allocated, const Tap* pTaps, int tapsLen, int tapsFactor, const Rates& r, const Data* pDlyLine) {
        auto* const s = static_cast<MultirateLmsState*>(block);
        *s = {.id = K::kId,
              .allocated = allocated,
              .tapsLen = tapsLen,
              .tapsFactor = tapsFactor,
              .up = r.up,
              .upPhase = r.upPhase,
              .down = r.down,
              .downPhase = r.downPhase,
              .at = 0};
        Filter f(s);
        f.setTaps(pTaps);
        f.setPast(pDlyLine);
        return s;
    }

    // Taps of each phase by themselves, in the order in which they meet the samples.
    void setTaps(const Tap* pTaps) {
        Tap* to = taps_;
        for (int u = 0; u < phases(); ++u)
            for (int64_t j = rowLen(u) - 1; j >= 0; --j) *to++ = pTaps ? pTaps[u + j * s_->up] : Tap{};
    }
    void getTaps(Tap* pTaps) const {
        const Tap* from = taps_;
        for (int u = 0; u < phases(); ++u)
            for (int64_t j = rowLen(u) - 1; j >= 0; --j) pTaps[u + j * s_->up] = *from++;
    }

    int kept() const { return each_ + s_->down; }
    void setPast(const Data* pDlyLine) {
        s_->at = 0;
        if (pDlyLine)
            std::reverse_copy(pDlyLine, pDlyLine + kept(), line_);
        else
            std::fill_n(line_, kept(), Data{});
    }
    void getPast(Data* pDlyLine, int len, int dlyIndex) const {
        const Data* const newest = line_ + s_->at + kept() - dlyIndex;
        std::reverse_copy(newest - len, newest, pDlyLine);
    }

    void filter(const Data* pSrc, Data* pDst) {
        take(pSrc, s_->down);
        forEachOutput([=, this](int m, const Tap* h, const Data* x, int n) { pDst[m] = output(h, x, n); });
    }
    // Of the outputs of the last iteration, in order.
    void adaptBy(const Err* pErr, float mu, float norm) {
        if (mu == 0) return;
        const Real step = stepOf(mu);
        forEachOutput([=](int m, Tap* h, const Data* x, int n) {
            if (n > 0) adapt(x, h, n, gain(pErr[m], step, norm, norm > 0 ? realPower(power(partsOf(x), kParts<Data> * n)) : 0));
        });
    }
    void block(const Data* pSrc, const Data* pRef, Data* pDst, int numIters, float mu, float norm) {
        if (s_->up == 1) return oneOutputEach(pSrc, pRef, pDst, numIters, mu, norm);
        for (int i = 0; i < numIters; ++i, pSrc += s_->down, pRef += s_->up, pDst += s_->up) {
            take(pSrc, s_->down);
            forEachOutput([=, this](int m, const Tap* h, const Data* x, int n) {
                const Data y = output(h, x, n), ref = pRef[m];
                errors_[m] = difference(ref, y);
                pDst[m] = y;
            });
            adaptBy(errors_, mu, norm);
        }
    }

private:
    Filter(Carve c, int tapsLen, int up, int down)
        : s_(c.take<MultirateLmsState>(1)),
          each_(each(tapsLen, up)),
          lineLen_(uint64_t(each_) + uint64_t(down) + std::max<uint64_t>(kRoom, uint64_t(each_) + uint64_t(down))),
          taps_(c.take<Tap>(uint64_t(tapsLen))),
          line_(c.take<Data>(lineLen_)),
          errors_(c.take<Err>(uint64_t(up))),
          bytes_(c.size() + 16) {}

    // The first phases have as many taps as any, the others one less.
    int rowLen(int u) const { return each_ - (int64_t{u} + int64_t{each_ - 1} * s_->up >= s_->tapsLen); }
    int phases() const { return std::min(s_->up, s_->tapsLen); }
    int64_t rowAt(int u) const { return int64_t{u} * each_ - std::max<int64_t>(0, int64_t{u} - (s_->tapsLen - int64_t{each_ - 1} * s_->up)); }

    // n samples more, which are at most as many as the line has room for behind the past: that moves on with them, and back to the start where the line ends.
    const Data* take(const Data* x, int n) {
        if (uint64_t(s_->at) + uint64_t(kept()) + uint64_t(n) > lineLen_) {
            memmove(line_, line_ + s_->at, size_t(kept()) * sizeof(Data));
            s_->at = 0;
        }
        Data* const fresh = line_ + s_->at + kept();
        memcpy(fresh, x, size_t(n) * sizeof(Data));
        s_->at += n;
        return fresh;
    }

    // f(output, taps, samples, their number) for the outputs of the iteration whose inputs are the newest in the line. Output m stands at time downPhase + m down, inputs
    // at upPhase and every `up` from there on: it has phase u of the taps, and the last `behind` inputs come after it.
    template <class F> void forEachOutput(F f) {
        const int up = s_->up, down = s_->down;
        const Data* const end = line_ + s_->at + kept();
        const int from = s_->downPhase - s_->upPhase;
        int64_t u = from < 0 ? from + up : from % up;
        int64_t behind = down - (from < 0 ? 0 : int64_t{from} / up + 1);
        for (int m = 0; m < up; ++m) {
            const int n = u < phases() ? rowLen(int(u)) : 0;
            f(m, taps_ + (n ? rowAt(int(u)) : 0), end - behind - n, n);
            behind -= down / up;
            u += down % up;
            if (u >= up) u -= up, --behind;
        }
    }
    Data output(const Tap* h, const Data* x, int n) const {
        if (n == 0) return Data{};
        const auto sum = dot(x, h, n);
        if constexpr (K::kWhole) {
            const int scale = s_->tapsFactor == INT_MIN ? INT_MAX : -s_->tapsFactor;
            return eachPart<Data>(sum, [=](int64_t part) { return scaled<int16_t, 62>(part, scale); });
        } else {
            return sum;
        }
    }
    static Err difference(Data ref, Data y) {
        if constexpr (kComplex<Data>)
            return {Scalar<Err>(ref.re) - Scalar<Err>(y.re), Scalar<Err>(ref.im) - Scalar<Err>(y.im)};
        else
            return Err(ref) - Err(y);
    }
    // 2 mu, of integers in units of the taps. A mu that is not 0 has a magnitude of 2^-149 to 2^128: scales beyond +-1300 change no step, and of the factors that half of
    // the exponent goes into, the first leaves what is far within the range. The second rounds, if either does.
    Real stepOf(float mu) const {
        if constexpr (K::kWhole) {
            const int e = -std::clamp(s_->tapsFactor, -1300, 1300);
            return 2 * double(mu) * powerOfTwo<double>(e / 2) * powerOfTwo<double>(e - e / 2);
        } else {
            return 2 * mu;
        }
    }

    static Real realPower(int64_t sum) { return toFloat<double>(sum); }
    static Real realPower(float sum) { return sum; }
    static Step gain(Err e, Real step, float norm, Real power) {
        const Step g = eachPart<Step>(e, [=](auto part) { return step * Real(part); });
        return norm > 0 ? eachPart<Step>(g, [=](Real part) { return part / (Real(norm) + power); }) : g;
    }

    // As many iterations at a time as the line has room for: each has all taps and a window, `down` samples behind the one before.
    void oneOutputEach(const Data* pSrc, const Data* pRef, Data* pDst, int numIters, float mu, float norm) {
        const int down = s_->down, most = int(std::min<uint64_t>((lineLen_ - uint64_t(kept())) / uint64_t(down), INT_MAX));
        for (int m; numIters > 0; numIters -= m, pSrc += ptrdiff_t{m} * down, pRef += m, pDst += m) {
            m = std::min(numIters, most);
            window(take(pSrc, m * down) + (s_->downPhase + 1 - each_), pRef, pDst, m, mu, norm);
        }
    }
    void window(const Data* x, const Data* pRef, Data* pDst, int count, float mu, float norm) {
        const int n = each_, down = s_->down;
        const Real step = stepOf(mu);
        if constexpr (std::is_same_v<K, Of_32f>) {
            if (down == 1 && !(norm > 0)) return lms->block(x, pRef, pDst, count, 2 * mu, taps_, n);
            OutputAndPower at = multirateLms->dot32f(x, taps_, n);
            for (int i = 0;; ++i, x += down) {
                const float g = gain(difference(pRef[i], at.output), step, norm, at.power);
                pDst[i] = at.output;
                if (i == count - 1) {
                    if (mu != 0) adapt(x, taps_, n, g);
                    return;
                }
                at = mu == 0 ? multirateLms->dot32f(x + down, taps_, n) : multirateLms->adaptAndDot32f(x, g, x + down, taps_, n);
            }
        } else {
            // Exact sums of squares move on with the samples.
            using Sum = decltype(power(partsOf(x), 0));
            Sum sum = norm > 0 ? power(partsOf(x), kParts<Data> * n) : Sum{};
            for (int i = 0; i < count; ++i, x += down) {
                const Data y = output(taps_, x, n);
                const Err e = difference(pRef[i], y);
                pDst[i] = y;
                if (mu != 0) adapt(x, taps_, n, gain(e, step, norm, realPower(sum)));
                if (norm > 0 && i < count - 1) {
                    if (K::kWhole && down < n)
                        sum += squares(x + n, down) - squares(x, down);
                    else
                        sum = power(partsOf(x + down), kParts<Data> * n);
                }
            }
        }
    }
    static auto squares(const Data* x, int n) {
        decltype(power(partsOf(x), 0)) sum = 0;
        for (int i = 0; i < kParts<Data> * n; ++i) sum += decltype(sum)(partsOf(x)[i]) * decltype(sum)(partsOf(x)[i]);
        return sum;
    }

    static constexpr uint64_t kRoom = 1024;
    MultirateLmsState* s_;
    int each_;   // taps of a phase, at most
    uint64_t lineLen_;
    Tap* taps_;
    Data* line_;
    Err* errors_;
    uint64_t bytes_;
};

// ---- frames -----------------------------------------------------------------------------------------------------------------------------------

// Sums of products of 47 bits: 2^15 of them and their like for the imaginary parts stay within 63.
constexpr int kMostWhole = 1 << 15;

template <class K> Args checkSizes(Args args, int tapsLen, int up, int down) {
    const auto fits = [=](int u, int d) { return Filter<K>::bytes(tapsLen, u, d) <= INT_MAX; };
    // Phases share the taps, and the line is as long as one of them is: what is too much for a factor of 1 may fit with a larger one.
    return args
        .require(
            [=] { return tapsLen >= 1 && (fits(1, 1) || (up > 1 && fits(up, 1))) && (!K::kWhole || up < 1 || Filter<K>::each(tapsLen, up) <= kMostWhole); },
            StatusFilterLength)
        .require([=] { return up >= 1 && down >= 1 && fits(up, down); }, StatusRateFactor);
}
template <class K> Args checkRecord(Args args, int tapsLen, const Rates& r) {
    return checkSizes<K>(args, tapsLen, r.up, r.down).require(r.upPhase >= 0 && r.upPhase < r.up && r.downPhase >= 0 && r.downPhase < r.down, StatusRatePhase);
}

template <class K> Status stateSize(int tapsLen, int up, int down, int* pSize) {
    if (Status s = checkSizes<K>(Args().ptr(pSize), tapsLen, up, down)) return s;
    *pSize = int(Filter<K>::bytes(tapsLen, up, down));
    return StatusOk;
}

template <class K, class State, class Tap, class Data>
Status init(State** ppState, const Tap* pTaps, int tapsLen, int tapsFactor, const Rates& r, const Data* pDlyLine, uint8_t* pBuffer) {
    if (Status s = checkRecord<K>(Args().ptr(ppState).ptr(pBuffer), tapsLen, r)) return s;
    *ppState = static_cast<State*>(Filter<K>::build(align16(pBuffer), false, pTaps, tapsLen, tapsFactor, r, pDlyLine));
    return StatusOk;
}
template <class K, class State, class Tap, class Data>
Status initAlloc(State** ppState, const Tap* pTaps, int tapsLen, int tapsFactor, const Rates& r, const Data* pDlyLine) {
    if (Status s = checkRecord<K>(Args().ptr(ppState), tapsLen, r)) return s;
    void* const block = allocate(Filter<K>::bytes(tapsLen, r.up, r.down));
    if (!block) return StatusNoMemory;
    *ppState = static_cast<State*>(Filter<K>::build(block, true, pTaps, tapsLen, tapsFactor, r, pDlyLine));
    return StatusOk;
}
template <class K> Status free(MultirateLmsState* s) {
    if (Status status = Args().ptr(s).record(s, K::kId)) return status;
    if (s->allocated) releaseRecord(s);
    return StatusOk;
}

template <class K> Status setTaps(const typename K::Tap* pTaps, MultirateLmsState* s) {
    if (Status status = Args().ptr(s).record(s, K::kId)) return status;
    Filter<K>(s).setTaps(pTaps);
    return StatusOk;
}
template <class K> Status getTaps(const MultirateLmsState* s, typename K::Tap* pTaps) {
    if (Status status = Args().ptr(s).ptr(pTaps).record(s, K::kId)) return status;
    Filter<K>(s).getTaps(pTaps);
    return StatusOk;
}
template <class K> Status setPast(MultirateLmsState* s, const typename K::Data* pDlyLine) {
    if (Status status = Args().ptr(s).record(s, K::kId)) return status;
    Filter<K>(s).setPast(pDlyLine);
    return StatusOk;
}
template <class K> Status getPast(const MultirateLmsState* s, typename K::Data* pDlyLine, int len, int dlyIndex) {
    if (Status status = Args().ptr(s).ptr(pDlyLine).len(len).record(s, K::kId).require(
            [=] { return dlyIndex >= 0 && int64_t{dlyIndex} + len <= Filter<K>(s).kept(); }, StatusBadArg))
        return status;
    Filter<K>(s).getPast(pDlyLine, len, dlyIndex);
    return StatusOk;
}

template <class K> Status filterOnce(const typename K::Data* pSrc, typename K::Data* pDst, MultirateLmsState* s) {
    if (Status status = Args().ptr(pSrc).ptr(pDst).ptr(s).record(s, K::kId)) return status;
    const NearestRounding guard;
    Filter<K>(s).filter(pSrc, pDst);
    return StatusOk;
}
template <class K> Status adaptOnce(const typename K::Err* pErr, float mu, float norm, MultirateLmsState* s) {
    if (Status status = Args().ptr(pErr).ptr(s).record(s, K::kId)) return status;
    toNearest([](auto err, float step, float n, auto state) { Filter<K>(state).adaptBy(err, step, n); }, pErr, mu, norm, s);
    return StatusOk;
}
template <class K>
Status block(const typename K::Data* pSrc, const typename K::Data* pRef, typename K::Data* pDst, int numIters, float mu, float norm, MultirateLmsState* s) {
    if (Status status = Args().ptr(pSrc).ptr(pRef).ptr(pDst).ptr(s).len(numIters).record(s, K::kId)) return status;
    toNearest([](auto src, auto ref, auto dst, int n, float step, float norm_, auto state) { Filter<K>(state).block(src, ref, dst, n, step, norm_); }, pSrc,
              pRef, pDst, numIters, mu, norm, s);
    return StatusOk;
}

}   // namespace
}   // namespace tevs

struct FIRLMSMRState32s_16s : tevs::MultirateLmsState {};
struct FIRLMSMRState32sc_16sc : tevs::MultirateLmsState {};
struct FIRLMSMRState_32f : tevs::MultirateLmsState {};
struct FIRLMSMRState_32fc : tevs::MultirateLmsState {};

using namespace tevs;

Status tevsFIRLMSMRGetStateSize32s_16s(int tapsLen, int upFactor, int downFactor, int* pSize) {
    return stateSize<Of32s_16s>(tapsLen, upFactor, downFactor, pSize);
}
Status tevsFIRLMSMRGetStateSize32sc_16sc(int tapsLen, int upFactor, int downFactor, int* pSize) {
    return stateSize<Of32sc_16sc>(tapsLen, upFactor, downFactor, pSize);
}
Status tevsFIRLMSMRGetStateSize_32f(int tapsLen, int upFactor, int downFactor, int* pSize) { return stateSize<Of_32f>(tapsLen, upFactor, downFactor, pSize); }
Status tevsFIRLMSMRGetStateSize_32fc(int tapsLen, int upFactor, int downFactor, int* pSize) { return stateSize<Of_32fc>(tapsLen, upFactor, downFactor, pSize); }
Status tevsFIRLMSMRInit32s_16s(FIRLMSMRState32s_16s** ppState, const int32_t* pTaps, int tapsLen, int tapsFactor, int upFactor, int upPhase, int downFactor,
                               int downPhase, const int16_t* pDlyLine, uint8_t* pBuffer) {
    return init<Of32s_16s>(ppState, pTaps, tapsLen, tapsFactor, Rates{upFactor, upPhase, downFactor, downPhase}, pDlyLine, pBuffer);
}
Status tevsFIRLMSMRInit32sc_16sc(FIRLMSMRState32sc_16sc** ppState, const Complex32s* pTaps, int tapsLen, int tapsFactor, int upFactor, int upPhase,
                                 int downFactor, int downPhase, const Complex16s* pDlyLine, uint8_t* pBuffer) {
    return init<Of32sc_16sc>(ppState, pTaps, tapsLen, tapsFactor, Rates{upFactor, upPhase, downFactor, downPhase}, pDlyLine, pBuffer);
}
Status tevsFIRLMSMRInit_32f(FIRLMSMRState_32f** ppState, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                            const float* pDlyLine, uint8_t* pBuffer) {
    return init<Of_32f>(ppState, pTaps, tapsLen, 0, Rates{upFactor, upPhase, downFactor, downPhase}, pDlyLine, pBuffer);
}
Status tevsFIRLMSMRInit_32fc(FIRLMSMRState_32fc** ppState, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                             const Complex32f* pDlyLine, uint8_t* pBuffer) {
    return init<Of_32fc>(ppState, pTaps, tapsLen, 0, Rates{upFactor, upPhase, downFactor, downPhase}, pDlyLine, pBuffer);
}
Status tevsFIRLMSMRInitAlloc32s_16s(FIRLMSMRState32s_16s** ppState, const int32_t* pTaps, int tapsLen, int tapsFactor, int upFactor, int upPhase,
                                    int downFactor, int downPhase, const int16_t* pDlyLine) {
    return initAlloc<Of32s_16s>(ppState, pTaps, tapsLen, tapsFactor, Rates{upFactor, upPhase, downFactor, downPhase}, pDlyLine);
}
Status tevsFIRLMSMRInitAlloc32sc_16sc(FIRLMSMRState32sc_16sc** ppState, const Complex32s* pTaps, int tapsLen, int tapsFactor, int upFactor, int upPhase,
                                      int downFactor, int downPhase, const Complex16s* pDlyLine) {
    return initAlloc<Of32sc_16sc>(ppState, pTaps, tapsLen, tapsFactor, Rates{upFactor, upPhase, downFactor, downPhase}, pDlyLine);
}
Status tevsFIRLMSMRInitAlloc_32f(FIRLMSMRState_32f** ppState, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                 const float* pDlyLine) {
    return initAlloc<Of_32f>(ppState, pTaps, tapsLen, 0, Rates{upFactor, upPhase, downFactor, downPhase}, pDlyLine);
}
Status tevsFIRLMSMRInitAlloc_32fc(FIRLMSMRState_32fc** ppState, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                  const Complex32f* pDlyLine) {
    return initAlloc<Of_32fc>(ppState, pTaps, tapsLen, 0, Rates{upFactor, upPhase, downFactor, downPhase}, pDlyLine);
}
Status tevsFIRLMSMRFree32s_16s(FIRLMSMRState32s_16s* pState) { return free<Of32s_16s>(pState); }
Status tevsFIRLMSMRFree32sc_16sc(FIRLMSMRState32sc_16sc* pState) { return free<Of32sc_16sc>(pState); }
Status tevsFIRLMSMRFree_32f(FIRLMSMRState_32f* pState) { return free<Of_32f>(pState); }
Status tevsFIRLMSMRFree_32fc(FIRLMSMRState_32fc* pState) { return free<Of_32fc>(pState); }
Status tevsFIRLMSMRSetTaps32s_16s(const int32_t* pTaps, FIRLMSMRState32s_16s* pState) { return setTaps<Of32s_16s>(pTaps, pState); }
Status tevsFIRLMSMRSetTaps32sc_16sc(const Complex32s* pTaps, FIRLMSMRState32sc_16sc* pState) { return setTaps<Of32sc_16sc>(pTaps, pState); }
Status tevsFIRLMSMRSetTaps_32f(const float* pTaps, FIRLMSMRState_32f* pState) { return setTaps<Of_32f>(pTaps, pState); }
Status tevsFIRLMSMRSetTaps_32fc(const Complex32f* pTaps, FIRLMSMRState_32fc* pState) { return setTaps<Of_32fc>(pTaps, pState); }
Status tevsFIRLMSMRGetTaps32s_16s(const FIRLMSMRState32s_16s* pState, int32_t* pTaps) { return getTaps<Of32s_16s>(pState, pTaps); }
Status tevsFIRLMSMRGetTaps32sc_16sc(const FIRLMSMRState32sc_16sc* pState, Complex32s* pTaps) { return getTaps<Of32sc_16sc>(pState, pTaps); }
Status tevsFIRLMSMRGetTaps_32f(const FIRLMSMRState_32f* pState, float* pTaps) { return getTaps<Of_32f>(pState, pTaps); }
Status tevsFIRLMSMRGetTaps_32fc(const FIRLMSMRState_32fc* pState, Complex32f* pTaps) { return getTaps<Of_32fc>(pState, pTaps); }
Status tevsFIRLMSMRSetDlyLine32s_16s(FIRLMSMRState32s_16s* pState, const int16_t* pDlyLine) { return setPast<Of32s_16s>(pState, pDlyLine); }
Status tevsFIRLMSMRSetDlyLine32sc_16sc(FIRLMSMRState32sc_16sc* pState, const Complex16s* pDlyLine) { return setPast<Of32sc_16sc>(pState, pDlyLine); }
Status tevsFIRLMSMRSetDlyLine_32f(FIRLMSMRState_32f* pState, const float* pDlyLine) { return setPast<Of_32f>(pState, pDlyLine); }
Status tevsFIRLMSMRSetDlyLine_32fc(FIRLMSMRState_32fc* pState, const Complex32f* pDlyLine) { return setPast<Of_32fc>(pState, pDlyLine); }
Status tevsFIRLMSMRGetDlyLine32s_16s(const FIRLMSMRState32s_16s* pState, int16_t* pDlyLine, int len, int dlyIndex) {
    return getPast<Of32s_16s>(pState, pDlyLine, len, dlyIndex);
}
Status tevsFIRLMSMRGetDlyLine32sc_16sc(const FIRLMSMRState32sc_16sc* pState, Complex16s* pDlyLine, int len, int dlyIndex) {
    return getPast<Of32sc_16sc>(pState, pDlyLine, len, dlyIndex);
}
Status tevsFIRLMSMRGetDlyLine_32f(const FIRLMSMRState_32f* pState, float* pDlyLine, int len, int dlyIndex) {
    return getPast<Of_32f>(pState, pDlyLine, len, dlyIndex);
}
Status tevsFIRLMSMRGetDlyLine_32fc(const FIRLMSMRState_32fc* pState, Complex32f* pDlyLine, int len, int dlyIndex) {
    return getPast<Of_32fc>(pState, pDlyLine, len, dlyIndex);
}
Status tevsFIRLMSMRFilter32s_16s(const int16_t* pSrc, int16_t* pDst, FIRLMSMRState32s_16s* pState) { return filterOnce<Of32s_16s>(pSrc, pDst, pState); }
Status tevsFIRLMSMRFilter32sc_16sc(const Complex16s* pSrc, Complex16s* pDst, FIRLMSMRState32sc_16sc* pState) {
    return filterOnce<Of32sc_16sc>(pSrc, pDst, pState);
}
Status tevsFIRLMSMRFilter_32f(const float* pSrc, float* pDst, FIRLMSMRState_32f* pState) { return filterOnce<Of_32f>(pSrc, pDst, pState); }
Status tevsFIRLMSMRFilter_32fc(const Complex32f* pSrc, Complex32f* pDst, FIRLMSMRState_32fc* pState) { return filterOnce<Of_32fc>(pSrc, pDst, pState); }
Status tevsFIRLMSMRAdapt32s_16s(const int32_t* pErr, float mu, float norm, FIRLMSMRState32s_16s* pState) {
    return adaptOnce<Of32s_16s>(pErr, mu, norm, pState);
}
Status tevsFIRLMSMRAdapt32sc_16sc(const Complex32s* pErr, float mu, float norm, FIRLMSMRState32sc_16sc* pState) {
    return adaptOnce<Of32sc_16sc>(pErr, mu, norm, pState);
}
Status tevsFIRLMSMRAdapt_32f(const float* pErr, float mu, float norm, FIRLMSMRState_32f* pState) { return adaptOnce<Of_32f>(pErr, mu, norm, pState); }
Status tevsFIRLMSMRAdapt_32fc(const Complex32f* pErr, float mu, float norm, FIRLMSMRState_32fc* pState) { return adaptOnce<Of_32fc>(pErr, mu, norm, pState); }
Status tevsFIRLMSMR32s_16s(const int16_t* pSrc, const int16_t* pRef, int16_t* pDst, int numIters, float mu, float norm, FIRLMSMRState32s_16s* pState) {
    return block<Of32s_16s>(pSrc, pRef, pDst, numIters, mu, norm, pState);
}
Status tevsFIRLMSMR32sc_16sc(const Complex16s* pSrc, const Complex16s* pRef, Complex16s* pDst, int numIters, float mu, float norm,
                             FIRLMSMRState32sc_16sc* pState) {
    return block<Of32sc_16sc>(pSrc, pRef, pDst, numIters, mu, norm, pState);
}
Status tevsFIRLMSMR_32f(const float* pSrc, const float* pRef, float* pDst, int numIters, float mu, float norm, FIRLMSMRState_32f* pState) {
    return block<Of_32f>(pSrc, pRef, pDst, numIters, mu, norm, pState);
}
Status tevsFIRLMSMR_32fc(const Complex32f* pSrc, const Complex32f* pRef, Complex32f* pDst, int numIters, float mu, float norm, FIRLMSMRState_32fc* pState) {
    return block<Of_32fc>(pSrc, pRef, pDst, numIters, mu, norm, pState);
}
