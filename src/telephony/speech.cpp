// Small steps of speech coders and detectors: emphasis, running levels, window sums, linear prediction.
#include "tevs/speech.h"

#include <algorithm>

#include "core/args.h"
#include "core/memory.h"
#include "core/rounding.h"
#include "core/scale.h"
#include "core/work.h"
#include "telephony/speech.table.h"

namespace tevs {
namespace {

// A double that is not 0 has a magnitude of 2^-1074 to 2^1024: scales beyond +-1100 change no result. A product that overflows between the factors saturates
// in the end, and one that loses bits to underflow rounds to 0.
SpeechScale scaleOf(int scaleFactor) {
    const int e = -std::clamp(scaleFactor, -1100, 1100);
    return {powerOfTwo<double>(e / 2), powerOfTwo<double>(e - e / 2)};
}

template <class T> Status preEmphasis(PreEmphasis<T> kernel, const T* pSrc, T* pDst, int len, double alpha, double* pMem, int scaleFactor = 0) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).ptr(pMem).len(len)) return s;
    const auto last = double(pSrc[len - 1]);
    toNearest(kernel, pSrc, pDst, len, alpha, *pMem, scaleOf(scaleFactor));
    *pMem = last;
    return StatusOk;
}

template <class T> Status deEmphasis(DeEmphasis<T> kernel, const T* pSrc, T* pDst, int len, double alpha, double* pMem, int scaleFactor = 0) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).ptr(pMem).len(len)) return s;
    *pMem = toNearest(kernel, pSrc, pDst, len, alpha, *pMem, scaleOf(scaleFactor));
    return StatusOk;
}

template <class T> Status track(Track<T> kernel, const T* pSrc, int len, double* pTrack, double alpha) {
    if (Status s = Args().ptr(pSrc).ptr(pTrack).len(len)) return s;
    *pTrack = toNearest(kernel, pSrc, len, *pTrack, alpha);
    return StatusOk;
}

// Orders and masks that take no memory of the heap.
constexpr int kOnStack = 256;

template <class S, class D> Status sumWindow(SumWindow<S, D> kernel, const S* pSrc, D* pDst, int len, int maskSize) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len).require(maskSize >= 1, StatusMaskSize)) return s;
    const bool sums = sizeof(D) == sizeof(S) && maskSize > kSummedAnew;
    return withWorkOnStack<kOnStack * sizeof(double)>(nullptr, sums ? uint64_t(maskSize) * sizeof(double) : 0,
                                                      [=](uint8_t* work) { toNearest(kernel, pSrc, pDst, len, maskSize, reinterpret_cast<double*>(work)); });
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsPreEmphasis_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int len, double alpha, double* pMem, int scaleFactor) {
    return preEmphasis(speech->preEmphasis16s, pSrc, pDst, len, alpha, pMem, scaleFactor);
}
Status tevsPreEmphasis_16s_ISfs(int16_t* pSrcDst, int len, double alpha, double* pMem, int scaleFactor) {
    return preEmphasis(speech->preEmphasis16s, pSrcDst, pSrcDst, len, alpha, pMem, scaleFactor);
}
Status tevsPreEmphasis_32f(const float* pSrc, float* pDst, int len, double alpha, double* pMem) {
    return preEmphasis(speech->preEmphasis32f, pSrc, pDst, len, alpha, pMem);
}
Status tevsPreEmphasis_32f_I(float* pSrcDst, int len, double alpha, double* pMem) {
    return preEmphasis(speech->preEmphasis32f, pSrcDst, pSrcDst, len, alpha, pMem);
}
Status tevsPreEmphasis_64f(const double* pSrc, double* pDst, int len, double alpha, double* pMem) {
    return preEmphasis(speech->preEmphasis64f, pSrc, pDst, len, alpha, pMem);
}
Status tevsPreEmphasis_64f_I(double* pSrcDst, int len, double alpha, double* pMem) {
    return preEmphasis(speech->preEmphasis64f, pSrcDst, pSrcDst, len, alpha, pMem);
}

Status tevsDeEmphasis_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int len, double alpha, double* pMem, int scaleFactor) {
    return deEmphasis(speech->deEmphasis16s, pSrc, pDst, len, alpha, pMem, scaleFactor);
}
Status tevsDeEmphasis_16s_ISfs(int16_t* pSrcDst, int len, double alpha, double* pMem, int scaleFactor) {
    return deEmphasis(speech->deEmphasis16s, pSrcDst, pSrcDst, len, alpha, pMem, scaleFactor);
}
Status tevsDeEmphasis_32f(const float* pSrc, float* pDst, int len, double alpha, double* pMem) {
    return deEmphasis(speech->deEmphasis32f, pSrc, pDst, len, alpha, pMem);
}
Status tevsDeEmphasis_32f_I(float* pSrcDst, int len, double alpha, double* pMem) {
    return deEmphasis(speech->deEmphasis32f, pSrcDst, pSrcDst, len, alpha, pMem);
}
Status tevsDeEmphasis_64f(const double* pSrc, double* pDst, int len, double alpha, double* pMem) {
    return deEmphasis(speech->deEmphasis64f, pSrc, pDst, len, alpha, pMem);
}
Status tevsDeEmphasis_64f_I(double* pSrcDst, int len, double alpha, double* pMem) {
    return deEmphasis(speech->deEmphasis64f, pSrcDst, pSrcDst, len, alpha, pMem);
}

Status tevsTrackMean_16s(const int16_t* pSrc, int len, double* pTrack, double alpha) { return track(speech->mean16s, pSrc, len, pTrack, alpha); }
Status tevsTrackMean_32f(const float* pSrc, int len, double* pTrack, double alpha) { return track(speech->mean32f, pSrc, len, pTrack, alpha); }
Status tevsTrackMean_64f(const double* pSrc, int len, double* pTrack, double alpha) { return track(speech->mean64f, pSrc, len, pTrack, alpha); }
Status tevsTrackPower_16s(const int16_t* pSrc, int len, double* pTrack, double alpha) { return track(speech->power16s, pSrc, len, pTrack, alpha); }
Status tevsTrackPower_32f(const float* pSrc, int len, double* pTrack, double alpha) { return track(speech->power32f, pSrc, len, pTrack, alpha); }
Status tevsTrackPower_64f(const double* pSrc, int len, double* pTrack, double alpha) { return track(speech->power64f, pSrc, len, pTrack, alpha); }
Status tevsTrackPower_32fc(const Complex32f* pSrc, int len, double* pTrack, double alpha) { return track(speech->power32fc, pSrc, len, pTrack, alpha); }

Status tevsSumWindow_8u32s(const uint8_t* pSrc, int32_t* pDst, int len, int maskSize) { return sumWindow(speech->sumWindow8u, pSrc, pDst, len, maskSize); }
Status tevsSumWindow_16s32s(const int16_t* pSrc, int32_t* pDst, int len, int maskSize) { return sumWindow(speech->sumWindow16s, pSrc, pDst, len, maskSize); }
Status tevsSumWindow_32f(const float* pSrc, float* pDst, int len, int maskSize) { return sumWindow(speech->sumWindow32f, pSrc, pDst, len, maskSize); }
Status tevsSumWindow_64f(const double* pSrc, double* pDst, int len, int maskSize) { return sumWindow(speech->sumWindow64f, pSrc, pDst, len, maskSize); }

// Everything is rounded to single precision at the end: from double vectors r, a, k.
Status tevsLevinson_32f(const float* pSrc, float* pDst, int order, float* pRefl, float* pErr) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).require(order >= 1, StatusBadSize)) return s;
    const uint64_t n = uint64_t(order) + 1;
    return withWorkOnStack<3 * (kOnStack + 1) * sizeof(double)>(nullptr, 3 * n * sizeof(double), [=](uint8_t* work) {
        double *r = reinterpret_cast<double*>(work), *a = r + n, *k = a + n;
        std::copy_n(pSrc, n, r);
        toNearest(
            [](double* r, double* a, double* k, float* pDst, int order, float* pRefl, float* pErr) {
                const double energy = speech->levinson(r, a, order, k);
                for (ptrdiff_t i = 0; i <= order; ++i) pDst[i] = float(a[i]);
                if (pRefl) std::transform(k, k + order, pRefl, [](double x) { return float(x); });
                if (pErr) *pErr = float(energy);
            },
            r, a, k, pDst, order, pRefl, pErr);
    });
}
Status tevsLevinson_64f(const double* pSrc, double* pDst, int order, double* pRefl, double* pErr) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).require(order >= 1, StatusBadSize)) return s;
    const double energy = toNearest(speech->levinson, pSrc, pDst, order, pRefl);
    if (pErr) *pErr = energy;
    return StatusOk;
}
