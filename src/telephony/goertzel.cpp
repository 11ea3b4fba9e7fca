// Goertzel: the spectrum of a signal at one frequency, or at two.
#include "tevs/goertzel.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

#include "core/args.h"
#include "core/complex.h"
#include "core/rounding.h"
#include "core/scale.h"
#include "telephony/goertzel.table.h"

namespace tevs {
namespace {

// Those that a signal of len elements takes, three at least. By squaring in extended precision, which has the bits to spare that it loses: one for each power.
// Every kFresh-th comes from its own angle, an exact multiple, so that no power loses more.
void phasePowers(PhasePowers* z, double omega, int len) {
    constexpr int kFresh = 14;
    long double re = 0, im = 0;
    for (int i = 0; i < 3 || len >> i; ++i) {
        if (i % kFresh == 0) {
            const long double angle = static_cast<long double>(omega) * (1 << i);
            re = std::cos(angle);
            im = std::sin(angle);
        }
        z->re[i] = double(re);
        z->im[i] = double(im);
        const long double square = re * re - im * im;
        im = 2 * re * im;
        re = square;
    }
}

// What becomes of a part of the result: scaled, from single precision.
template <class T> T rounded(double x, int) { return T(x); }
template <> int16_t rounded(double x, int scaleFactor) {
    const ScaleFactors by(scaleFactor);
    return int16_t(std::lrint(std::clamp(float(x) * by.f * by.g, -32768.0f, 32767.0f)));
}

template <int Count, class S, class D, class F> void evaluate(const S* src, int len, D* result, const F* frequencies, int scaleFactor, Goertzel<S> kernel) {
    FrequencyOf<S> own[Count];
    for (int i = 0; i < Count; ++i)
        if constexpr (std::is_same_v<FrequencyOf<S>, double>)
            own[i] = frequencies[i];
        else
            inExtended(phasePowers, &own[i], 6.283185307179586 * frequencies[i], len);
    Complex64f y[Count];
    kernel(src, len, own, y);
    for (int i = 0; i < Count; ++i) result[i] = eachPart<D>(y[i], [=](double x) { return rounded<Scalar<D>>(x, scaleFactor); });
}

// The frequencies are checked one after the other, and results written when all is computed.
template <int Count, class S, class D, class F> Status values(const S* pSrc, int len, D* pResult, const F* pRFreq, Goertzel<S> kernel, int scaleFactor = 0) {
    Args args = Args().ptr(pSrc).ptr(pResult).ptr(pRFreq).len(len);
    for (int i = 0; i < Count; ++i) args.require([=] { return pRFreq[i] >= 0 && pRFreq[i] < 1; }, StatusRelFreq);
    if (Status s = args) return s;
    toNearest(evaluate<Count, S, D, F>, pSrc, len, pResult, pRFreq, scaleFactor, kernel);
    return StatusOk;
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsGoertz_32f(const float* pSrc, int len, Complex32f* pResult, float rFreq) { return values<1>(pSrc, len, pResult, &rFreq, goertzel->one32f); }
Status tevsGoertz_32fc(const Complex32f* pSrc, int len, Complex32f* pResult, float rFreq) { return values<1>(pSrc, len, pResult, &rFreq, goertzel->one32fc); }
Status tevsGoertz_64fc(const Complex64f* pSrc, int len, Complex64f* pResult, double rFreq) { return values<1>(pSrc, len, pResult, &rFreq, goertzel->one64fc); }
Status tevsGoertz_16s_Sfs(const int16_t* pSrc, int len, Complex16s* pResult, float rFreq, int scaleFactor) {
    return values<1>(pSrc, len, pResult, &rFreq, goertzel->one16s, scaleFactor);
}
Status tevsGoertz_16sc_Sfs(const Complex16s* pSrc, int len, Complex16s* pResult, float rFreq, int scaleFactor) {
    return values<1>(pSrc, len, pResult, &rFreq, goertzel->one16sc, scaleFactor);
}
// The sign of the frequency before the pointers.
Status tevsGoertzQ15_16sc_Sfs(const Complex16s* pSrc, int len, Complex16s* pResult, int16_t rFreqQ15, int scaleFactor) {
    if (rFreqQ15 < 0) return StatusRelFreq;
    return tevsGoertz_16sc_Sfs(pSrc, len, pResult, rFreqQ15 * 0x1p-15f, scaleFactor);
}

Status tevsGoertzTwo_32fc(const Complex32f* pSrc, int len, Complex32f* pResult, const float* pRFreq) {
    return values<2>(pSrc, len, pResult, pRFreq, goertzel->two32fc);
}
Status tevsGoertzTwo_64fc(const Complex64f* pSrc, int len, Complex64f* pResult, const double* pRFreq) {
    return values<2>(pSrc, len, pResult, pRFreq, goertzel->two64fc);
}
Status tevsGoertzTwo_16sc_Sfs(const Complex16s* pSrc, int len, Complex16s* pResult, const float* pRFreq, int scaleFactor) {
    return values<2>(pSrc, len, pResult, pRFreq, goertzel->two16sc, scaleFactor);
}
Status tevsGoertzTwoQ15_16sc_Sfs(const Complex16s* pSrc, int len, Complex16s* pResult, const int16_t* pRFreqQ15, int scaleFactor) {
    if (!pRFreqQ15) return StatusNullPtr;
    if (pRFreqQ15[0] < 0 || pRFreqQ15[1] < 0) return StatusRelFreq;
    const float rFreq[2] = {pRFreqQ15[0] * 0x1p-15f, pRFreqQ15[1] * 0x1p-15f};
    return tevsGoertzTwo_16sc_Sfs(pSrc, len, pResult, rFreq, scaleFactor);
}
