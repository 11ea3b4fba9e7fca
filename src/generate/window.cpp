// Windows: each sample times a weight that hangs on its place, computed in the call.
#include "tevs/window.h"

#include <cmath>
#include <type_traits>

#include "core/args.h"
#include "core/complex.h"
#include "core/rounding.h"
#include "core/scale.h"
#include "generate/window.table.h"
#include "tevs/polar.h"

namespace tevs {
namespace {

constexpr double kPi = 0x1.921fb54442d18p+1;

template <class T> constexpr bool kWide = std::is_same_v<Scalar<T>, double>;
template <class T> using WeightOf = std::conditional_t<kWide<T>, double, float>;

// Results in 16 bits and in single precision take weights in single precision, those in double precision weights in double.
template <class T> auto weightsFor(const Weights& w) {
    if constexpr (kWide<T>)
        return w.wide;
    else
        return w.single;
}

auto productsFor(int16_t) { return window->by16s; }
auto productsFor(Complex16s) { return window->by16sc; }
auto productsFor(float) { return window->by32f; }
auto productsFor(Complex32f) { return window->by32fc; }
auto productsFor(double) { return window->by64f; }
auto productsFor(Complex64f) { return window->by64fc; }

// One half of the weights, each for the two samples as far from either end. Of an odd number the middle one is left out.
template <class T, class P, class... Scale> void taperHalves(const T* src, T* dst, const Taper& t, const Weights& weights, const P& products, Scale... scale) {
    const int half = t.len / 2;
    TaperWork work;
    alignas(64) WeightOf<T> w[kTaperBlock + kTaperSlack];
    for (int first = 0; first < half; first += kTaperBlock) {
        const int count = half - first < kTaperBlock ? half - first : kTaperBlock, last = t.len - first - count;
        weightsFor<T>(weights)(t, work, first, count, w);
        products.forward(src + first, w, dst + first, count, scale...);
        products.backward(src + last, w, dst + last, count, scale...);
    }
}
template <class T> Status taper(const T* src, T* dst, const Taper& t, const Weights& weights) {
    taperHalves(src, dst, t, weights, productsFor(T()));
    if (t.len % 2) dst[t.len / 2] = src[t.len / 2];
    return StatusOk;
}

// Of three samples a window leaves the middle one. The zeros are stored and not multiplied: their sign is positive whatever the samples are.
template <class T> Status middleAlone(const T* src, T* dst) {
    dst[1] = src[1];
    dst[0] = dst[2] = T();
    return StatusOk;
}

template <class T> Args windowArgs(const T* pSrc, const T* pDst, int len, int least) { return Args().ptr(pSrc).ptr(pDst).require(len >= least, StatusBadSize); }

template <class T> Status bartlett(const T* pSrc, T* pDst, int len) {
    if (Status s = windowArgs(pSrc, pDst, len, 3)) return s;
    NearestRounding guard;
    return len == 3 ? middleAlone(pSrc, pDst) : taper(pSrc, pDst, {.len = len}, window->bartlett);
}
template <class T> Status hann(const T* pSrc, T* pDst, int len) {
    if (Status s = windowArgs(pSrc, pDst, len, 3)) return s;
    NearestRounding guard;
    return len == 3 && !kWide<T> ? middleAlone(pSrc, pDst) : taper(pSrc, pDst, {.len = len}, window->hann);
}
template <class T> Status hamming(const T* pSrc, T* pDst, int len) {
    if (Status s = windowArgs(pSrc, pDst, len, 3)) return s;
    NearestRounding guard;
    return taper(pSrc, pDst, {.len = len}, window->hamming);
}

template <class T> Status blackman(const T* pSrc, T* pDst, int len, double alpha) {
    if (Status s = windowArgs(pSrc, pDst, len, 3)) return s;
    NearestRounding guard;
    return len == 3 ? middleAlone(pSrc, pDst) : taper(pSrc, pDst, {.len = len, .alpha = alpha}, window->blackman);
}
template <class T> Status blackmanStd(const T* pSrc, T* pDst, int len) { return blackman(pSrc, pDst, len, kWide<T> ? -0.16 : double(-0.16f)); }
// alpha = -1 / (2 cos(pi / (len - 1)))^2. The cosine is the library's own: the C library's is not the same in both ABIs.
double optimum(int len) {
    const double one = 1, angle = kPi / (len - 1);
    double cosine, sine;
    tevsPolarToCart_64f(&one, &angle, &cosine, &sine, 1);
    const double a = 0.5 / cosine;
    return a * (0 - a);
}
template <class T> Status blackmanOpt(const T* pSrc, T* pDst, int len) {
    if (len < 4) return StatusBadSize;
    return blackman(pSrc, pDst, len, toNearest([](int n) { return double(WeightOf<T>(optimum(n))); }, len));
}
template <class T> Status blackmanQ15(const T* pSrc, T* pDst, int len, int alphaQ15) { return blackman(pSrc, pDst, len, alphaQ15 * 0x1p-15); }

// x * 2^-scaleFactor, half away from zero, saturated.
int16_t middleScaled(int16_t x, int scaleFactor) {
    const double y = x * powerOfTwo<double>(scaleFactor < -15 ? 15 : scaleFactor > 17 ? -17 : -scaleFactor);
    return saturate<int16_t>(int(y < 0 ? y - 0.5 : y + 0.5));
}
Status blackmanQ15Scaled(int16_t* pSrcDst, int len, int alphaQ15, int scaleFactor) {
    if (Status s = windowArgs(pSrcDst, pSrcDst, len, 3)) return s;
    if (len == 3) {
        middleAlone(pSrcDst, pSrcDst);
    } else {
        NearestRounding guard;
        const ScaleFactors scale(scaleFactor);
        taperHalves<int16_t>(pSrcDst, pSrcDst, {.len = len, .alpha = alphaQ15 * 0x1p-15}, window->blackman, window->by16sScaled, scale.f, scale.g);
    }
    if (len % 2) pSrcDst[len / 2] = middleScaled(pSrcDst[len / 2], scaleFactor);
    return StatusOk;
}

// |alpha| (len - 1) / 2
double argumentAtMiddle(double alpha, int len) {
    return toNearest([](double a, double steps) { return std::fabs(a) * steps * 0.5; }, alpha, double(len) - 1);
}
template <class T> Status kaiser(const T* pSrc, T* pDst, int len, double alpha, double peak) {
    constexpr double limit = std::is_same_v<Scalar<T>, float> ? 38 : 308;
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len).require(!(argumentAtMiddle(alpha, len) > limit), StatusHugeWindow)) return s;
    NearestRounding guard;
    return taper(pSrc, pDst, {.len = len, .alpha = alpha, .peak = peak}, window->kaiser);
}
// The peak's product is rounded to single precision for every type.
template <class T> Status kaiserFloat(const T* pSrc, T* pDst, int len, float alpha) {
    const double peak = toNearest([](float a, double steps) { return double(float(steps) * std::fabs(a)) * 0.5; }, alpha, double(len) - 1);
    return kaiser(pSrc, pDst, len, alpha, peak);
}
template <class T> Status kaiserQ15(const T* pSrc, T* pDst, int len, int alphaQ15) {
    const double alpha = alphaQ15 * 0x1p-15;
    return kaiser(pSrc, pDst, len, alpha, argumentAtMiddle(alpha, len));
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsWinBartlett_16s(const int16_t* pSrc, int16_t* pDst, int len) { return bartlett(pSrc, pDst, len); }
Status tevsWinBartlett_16s_I(int16_t* pSrcDst, int len) { return bartlett(pSrcDst, pSrcDst, len); }
Status tevsWinBartlett_16sc(const Complex16s* pSrc, Complex16s* pDst, int len) { return bartlett(pSrc, pDst, len); }
Status tevsWinBartlett_16sc_I(Complex16s* pSrcDst, int len) { return bartlett(pSrcDst, pSrcDst, len); }
Status tevsWinBartlett_32f(const float* pSrc, float* pDst, int len) { return bartlett(pSrc, pDst, len); }
Status tevsWinBartlett_32f_I(float* pSrcDst, int len) { return bartlett(pSrcDst, pSrcDst, len); }
Status tevsWinBartlett_32fc(const Complex32f* pSrc, Complex32f* pDst, int len) { return bartlett(pSrc, pDst, len); }
Status tevsWinBartlett_32fc_I(Complex32f* pSrcDst, int len) { return bartlett(pSrcDst, pSrcDst, len); }
Status tevsWinBartlett_64f(const double* pSrc, double* pDst, int len) { return bartlett(pSrc, pDst, len); }
Status tevsWinBartlett_64f_I(double* pSrcDst, int len) { return bartlett(pSrcDst, pSrcDst, len); }
Status tevsWinBartlett_64fc(const Complex64f* pSrc, Complex64f* pDst, int len) { return bartlett(pSrc, pDst, len); }
Status tevsWinBartlett_64fc_I(Complex64f* pSrcDst, int len) { return bartlett(pSrcDst, pSrcDst, len); }

Status tevsWinHann_16s(const int16_t* pSrc, int16_t* pDst, int len) { return hann(pSrc, pDst, len); }
Status tevsWinHann_16s_I(int16_t* pSrcDst, int len) { return hann(pSrcDst, pSrcDst, len); }
Status tevsWinHann_16sc(const Complex16s* pSrc, Complex16s* pDst, int len) { return hann(pSrc, pDst, len); }
Status tevsWinHann_16sc_I(Complex16s* pSrcDst, int len) { return hann(pSrcDst, pSrcDst, len); }
Status tevsWinHann_32f(const float* pSrc, float* pDst, int len) { return hann(pSrc, pDst, len); }
Status tevsWinHann_32f_I(float* pSrcDst, int len) { return hann(pSrcDst, pSrcDst, len); }
Status tevsWinHann_32fc(const Complex32f* pSrc, Complex32f* pDst, int len) { return hann(pSrc, pDst, len); }
Status tevsWinHann_32fc_I(Complex32f* pSrcDst, int len) { return hann(pSrcDst, pSrcDst, len); }
Status tevsWinHann_64f(const double* pSrc, double* pDst, int len) { return hann(pSrc, pDst, len); }
Status tevsWinHann_64f_I(double* pSrcDst, int len) { return hann(pSrcDst, pSrcDst, len); }
Status tevsWinHann_64fc(const Complex64f* pSrc, Complex64f* pDst, int len) { return hann(pSrc, pDst, len); }
Status tevsWinHann_64fc_I(Complex64f* pSrcDst, int len) { return hann(pSrcDst, pSrcDst, len); }

Status tevsWinHamming_16s(const int16_t* pSrc, int16_t* pDst, int len) { return hamming(pSrc, pDst, len); }
Status tevsWinHamming_16s_I(int16_t* pSrcDst, int len) { return hamming(pSrcDst, pSrcDst, len); }
Status tevsWinHamming_16sc(const Complex16s* pSrc, Complex16s* pDst, int len) { return hamming(pSrc, pDst, len); }
Status tevsWinHamming_16sc_I(Complex16s* pSrcDst, int len) { return hamming(pSrcDst, pSrcDst, len); }
Status tevsWinHamming_32f(const float* pSrc, float* pDst, int len) { return hamming(pSrc, pDst, len); }
Status tevsWinHamming_32f_I(float* pSrcDst, int len) { return hamming(pSrcDst, pSrcDst, len); }
Status tevsWinHamming_32fc(const Complex32f* pSrc, Complex32f* pDst, int len) { return hamming(pSrc, pDst, len); }
Status tevsWinHamming_32fc_I(Complex32f* pSrcDst, int len) { return hamming(pSrcDst, pSrcDst, len); }
Status tevsWinHamming_64f(const double* pSrc, double* pDst, int len) { return hamming(pSrc, pDst, len); }
Status tevsWinHamming_64f_I(double* pSrcDst, int len) { return hamming(pSrcDst, pSrcDst, len); }
Status tevsWinHamming_64fc(const Complex64f* pSrc, Complex64f* pDst, int len) { return hamming(pSrc, pDst, len); }
Status tevsWinHamming_64fc_I(Complex64f* pSrcDst, int len) { return hamming(pSrcDst, pSrcDst, len); }

Status tevsWinBlackman_16s(const int16_t* pSrc, int16_t* pDst, int len, float alpha) { return blackman(pSrc, pDst, len, alpha); }
Status tevsWinBlackman_16s_I(int16_t* pSrcDst, int len, float alpha) { return blackman(pSrcDst, pSrcDst, len, alpha); }
Status tevsWinBlackman_16sc(const Complex16s* pSrc, Complex16s* pDst, int len, float alpha) { return blackman(pSrc, pDst, len, alpha); }
Status tevsWinBlackman_16sc_I(Complex16s* pSrcDst, int len, float alpha) { return blackman(pSrcDst, pSrcDst, len, alpha); }
Status tevsWinBlackman_32f(const float* pSrc, float* pDst, int len, float alpha) { return blackman(pSrc, pDst, len, alpha); }
Status tevsWinBlackman_32f_I(float* pSrcDst, int len, float alpha) { return blackman(pSrcDst, pSrcDst, len, alpha); }
Status tevsWinBlackman_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, float alpha) { return blackman(pSrc, pDst, len, alpha); }
Status tevsWinBlackman_32fc_I(Complex32f* pSrcDst, int len, float alpha) { return blackman(pSrcDst, pSrcDst, len, alpha); }
Status tevsWinBlackman_64f(const double* pSrc, double* pDst, int len, double alpha) { return blackman(pSrc, pDst, len, alpha); }
Status tevsWinBlackman_64f_I(double* pSrcDst, int len, double alpha) { return blackman(pSrcDst, pSrcDst, len, alpha); }
Status tevsWinBlackman_64fc(const Complex64f* pSrc, Complex64f* pDst, int len, double alpha) { return blackman(pSrc, pDst, len, alpha); }
Status tevsWinBlackman_64fc_I(Complex64f* pSrcDst, int len, double alpha) { return blackman(pSrcDst, pSrcDst, len, alpha); }
Status tevsWinBlackmanStd_16s(const int16_t* pSrc, int16_t* pDst, int len) { return blackmanStd(pSrc, pDst, len); }
Status tevsWinBlackmanStd_16s_I(int16_t* pSrcDst, int len) { return blackmanStd(pSrcDst, pSrcDst, len); }
Status tevsWinBlackmanStd_16sc(const Complex16s* pSrc, Complex16s* pDst, int len) { return blackmanStd(pSrc, pDst, len); }
Status tevsWinBlackmanStd_16sc_I(Complex16s* pSrcDst, int len) { return blackmanStd(pSrcDst, pSrcDst, len); }
Status tevsWinBlackmanStd_32f(const float* pSrc, float* pDst, int len) { return blackmanStd(pSrc, pDst, len); }
Status tevsWinBlackmanStd_32f_I(float* pSrcDst, int len) { return blackmanStd(pSrcDst, pSrcDst, len); }
Status tevsWinBlackmanStd_32fc(const Complex32f* pSrc, Complex32f* pDst, int len) { return blackmanStd(pSrc, pDst, len); }
Status tevsWinBlackmanStd_32fc_I(Complex32f* pSrcDst, int len) { return blackmanStd(pSrcDst, pSrcDst, len); }
Status tevsWinBlackmanStd_64f(const double* pSrc, double* pDst, int len) { return blackmanStd(pSrc, pDst, len); }
Status tevsWinBlackmanStd_64f_I(double* pSrcDst, int len) { return blackmanStd(pSrcDst, pSrcDst, len); }
Status tevsWinBlackmanStd_64fc(const Complex64f* pSrc, Complex64f* pDst, int len) { return blackmanStd(pSrc, pDst, len); }
Status tevsWinBlackmanStd_64fc_I(Complex64f* pSrcDst, int len) { return blackmanStd(pSrcDst, pSrcDst, len); }
Status tevsWinBlackmanOpt_16s(const int16_t* pSrc, int16_t* pDst, int len) { return blackmanOpt(pSrc, pDst, len); }
Status tevsWinBlackmanOpt_16s_I(int16_t* pSrcDst, int len) { return blackmanOpt(pSrcDst, pSrcDst, len); }
Status tevsWinBlackmanOpt_16sc(const Complex16s* pSrc, Complex16s* pDst, int len) { return blackmanOpt(pSrc, pDst, len); }
Status tevsWinBlackmanOpt_16sc_I(Complex16s* pSrcDst, int len) { return blackmanOpt(pSrcDst, pSrcDst, len); }
Status tevsWinBlackmanOpt_32f(const float* pSrc, float* pDst, int len) { return blackmanOpt(pSrc, pDst, len); }
Status tevsWinBlackmanOpt_32f_I(float* pSrcDst, int len) { return blackmanOpt(pSrcDst, pSrcDst, len); }
Status tevsWinBlackmanOpt_32fc(const Complex32f* pSrc, Complex32f* pDst, int len) { return blackmanOpt(pSrc, pDst, len); }
Status tevsWinBlackmanOpt_32fc_I(Complex32f* pSrcDst, int len) { return blackmanOpt(pSrcDst, pSrcDst, len); }
Status tevsWinBlackmanOpt_64f(const double* pSrc, double* pDst, int len) { return blackmanOpt(pSrc, pDst, len); }
Status tevsWinBlackmanOpt_64f_I(double* pSrcDst, int len) { return blackmanOpt(pSrcDst, pSrcDst, len); }
Status tevsWinBlackmanOpt_64fc(const Complex64f* pSrc, Complex64f* pDst, int len) { return blackmanOpt(pSrc, pDst, len); }
Status tevsWinBlackmanOpt_64fc_I(Complex64f* pSrcDst, int len) { return blackmanOpt(pSrcDst, pSrcDst, len); }
Status tevsWinBlackmanQ15_16s(const int16_t* pSrc, int16_t* pDst, int len, int alphaQ15) { return blackmanQ15(pSrc, pDst, len, alphaQ15); }
Status tevsWinBlackmanQ15_16s_I(int16_t* pSrcDst, int len, int alphaQ15) { return blackmanQ15(pSrcDst, pSrcDst, len, alphaQ15); }
Status tevsWinBlackmanQ15_16sc(const Complex16s* pSrc, Complex16s* pDst, int len, int alphaQ15) { return blackmanQ15(pSrc, pDst, len, alphaQ15); }
Status tevsWinBlackmanQ15_16sc_I(Complex16s* pSrcDst, int len, int alphaQ15) { return blackmanQ15(pSrcDst, pSrcDst, len, alphaQ15); }
Status tevsWinBlackmanQ15_16s_ISfs(int16_t* pSrcDst, int len, int alphaQ15, int scaleFactor) { return blackmanQ15Scaled(pSrcDst, len, alphaQ15, scaleFactor); }

Status tevsWinKaiser_16s(const int16_t* pSrc, int16_t* pDst, int len, float alpha) { return kaiserFloat(pSrc, pDst, len, alpha); }
Status tevsWinKaiser_16s_I(int16_t* pSrcDst, int len, float alpha) { return kaiserFloat(pSrcDst, pSrcDst, len, alpha); }
Status tevsWinKaiser_16sc(const Complex16s* pSrc, Complex16s* pDst, int len, float alpha) { return kaiserFloat(pSrc, pDst, len, alpha); }
Status tevsWinKaiser_16sc_I(Complex16s* pSrcDst, int len, float alpha) { return kaiserFloat(pSrcDst, pSrcDst, len, alpha); }
Status tevsWinKaiser_32f(const float* pSrc, float* pDst, int len, float alpha) { return kaiserFloat(pSrc, pDst, len, alpha); }
Status tevsWinKaiser_32f_I(float* pSrcDst, int len, float alpha) { return kaiserFloat(pSrcDst, pSrcDst, len, alpha); }
Status tevsWinKaiser_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, float alpha) { return kaiserFloat(pSrc, pDst, len, alpha); }
Status tevsWinKaiser_32fc_I(Complex32f* pSrcDst, int len, float alpha) { return kaiserFloat(pSrcDst, pSrcDst, len, alpha); }
Status tevsWinKaiser_64f(const double* pSrc, double* pDst, int len, float alpha) { return kaiserFloat(pSrc, pDst, len, alpha); }
Status tevsWinKaiser_64f_I(double* pSrcDst, int len, float alpha) { return kaiserFloat(pSrcDst, pSrcDst, len, alpha); }
Status tevsWinKaiser_64fc(const Complex64f* pSrc, Complex64f* pDst, int len, float alpha) { return kaiserFloat(pSrc, pDst, len, alpha); }
Status tevsWinKaiser_64fc_I(Complex64f* pSrcDst, int len, float alpha) { return kaiserFloat(pSrcDst, pSrcDst, len, alpha); }
Status tevsWinKaiserQ15_16s(const int16_t* pSrc, int16_t* pDst, int len, int alphaQ15) { return kaiserQ15(pSrc, pDst, len, alphaQ15); }
Status tevsWinKaiserQ15_16s_I(int16_t* pSrcDst, int len, int alphaQ15) { return kaiserQ15(pSrcDst, pSrcDst, len, alphaQ15); }
Status tevsWinKaiserQ15_16sc(const Complex16s* pSrc, Complex16s* pDst, int len, int alphaQ15) { return kaiserQ15(pSrc, pDst, len, alphaQ15); }
Status tevsWinKaiserQ15_16sc_I(Complex16s* pSrcDst, int len, int alphaQ15) { return kaiserQ15(pSrcDst, pSrcDst, len, alphaQ15); }
