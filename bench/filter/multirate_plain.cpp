// The loop that a careful caller would write: each output by the taps of its phase, in as many sums as a vector has lanes.
#include "filter/multirate_plain.h"

#include <math.h>

namespace plain {
namespace {

template <int Lanes, class Sum, class S, class T, class D, class Finish>
void outputs(const S* x, const T* h, int taps, int up, int down, D* y, int len, Finish finish) {
    int phase = 0;
    for (int m = 0; m < len; ++m) {
        const T* const row = h + phase * taps;
        Sum sum[Lanes] = {};
        for (int j = 0; j + Lanes <= taps; j += Lanes)
            for (int l = 0; l < Lanes; ++l) sum[l] += Sum(row[j + l]) * Sum(x[j + l]);
        Sum all = 0;
        for (int l = 0; l < Lanes; ++l) all += sum[l];
        y[m] = finish(all);
        for (phase += down; phase >= up; phase -= up) ++x;
    }
}

int16_t saturated(int v) { return int16_t(v < -32768 ? -32768 : v > 32767 ? 32767 : v); }

}   // namespace

void multirate(const float* x, const float* h, int taps, int up, int down, float* y, int len) {
    outputs<8, float>(x, h, taps, up, down, y, len, [](float v) { return v; });
}
void multirate(const double* x, const double* h, int taps, int up, int down, double* y, int len) {
    outputs<8, double>(x, h, taps, up, down, y, len, [](double v) { return v; });
}
void multirate(const int16_t* x, const float* h, int taps, int up, int down, int16_t* y, int len) {
    outputs<8, float>(x, h, taps, up, down, y, len, [](float v) { return saturated(int(lrintf(v))); });
}
void multirate(const int16_t* x, const int16_t* h, int taps, int up, int down, int16_t* y, int len) {
    outputs<8, int>(x, h, taps, up, down, y, len, [](int v) { return saturated((v + 16384) >> 15); });
}
void multirate(const Complex32f* x, const Complex32f* h, int taps, int up, int down, Complex32f* y, int len) {
    int phase = 0;
    for (int m = 0; m < len; ++m) {
        constexpr int kLanes = 4;
        const Complex32f* const row = h + phase * taps;
        float re[kLanes] = {}, im[kLanes] = {};
        for (int j = 0; j + kLanes <= taps; j += kLanes)
            for (int l = 0; l < kLanes; ++l) {
                re[l] += row[j + l].re * x[j + l].re - row[j + l].im * x[j + l].im;
                im[l] += row[j + l].re * x[j + l].im + row[j + l].im * x[j + l].re;
            }
        y[m] = {(re[0] + re[1]) + (re[2] + re[3]), (im[0] + im[1]) + (im[2] + im[3])};
        for (phase += down; phase >= up; phase -= up) ++x;
    }
}

}   // namespace plain
