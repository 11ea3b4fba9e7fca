// The loops that a caller would write, left to the compiler.
#include "generate/tone_plain.h"

#include <cmath>
#include <numbers>

namespace plain {

void tone(float* dst, int len, float magn, float rFreq) {
    const float omega = 2 * std::numbers::pi_v<float> * rFreq;
    for (int n = 0; n < len; ++n) dst[n] = magn * cosf(omega * float(n));
}
void tone(Complex32f* dst, int len, float magn, float rFreq) {
    const float omega = 2 * std::numbers::pi_v<float> * rFreq;
    for (int n = 0; n < len; ++n) {
        float s, c;
        sincosf(omega * float(n), &s, &c);
        dst[n] = {magn * c, magn * s};
    }
}
void tone(int16_t* dst, int len, float magn, float rFreq) {
    const float omega = 2 * std::numbers::pi_v<float> * rFreq;
    for (int n = 0; n < len; ++n) dst[n] = int16_t(lrintf(magn * cosf(omega * float(n))));
}
void tone(double* dst, int len, double magn, double rFreq) {
    const double omega = 2 * std::numbers::pi * rFreq;
    for (int n = 0; n < len; ++n) dst[n] = magn * std::cos(omega * n);
}
// A phasor that turns with each sample.
void mix(const Complex32f* src, Complex32f* dst, int len, float rFreq) {
    const float omega = 2 * std::numbers::pi_v<float> * rFreq, c = cosf(omega), s = sinf(omega);
    float re = 1, im = 0;
    for (int n = 0; n < len; ++n) {
        const Complex32f x = src[n];
        dst[n] = {x.re * re - x.im * im, x.re * im + x.im * re};
        const float next = re * c - im * s;
        im = re * s + im * c;
        re = next;
    }
}

}   // namespace plain
