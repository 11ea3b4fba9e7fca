#include <cmath>
#include <tevs.hpp>

#include "commands.h"

namespace {

// The modified Bessel function of the first kind and order 0, by its power series: all digits, where WinKaiser has those for stop-bands down to -130 dB.
double besselI0(double x) {
    double term = 1, sum = 1;
    for (int k = 1; term > 1e-17 * sum; ++k) sum += term *= (x / 2 / k) * (x / 2 / k);
    return sum;
}

}   // namespace

// Ripples of the pass-band and the stop-band are one, `attenuation` dB down. J. F. Kaiser, Nonrecursive Digital Filter Design Using the I0-sinh Window Function (1974).
Samples kaiserTaps(Shape shape, double edge, double edge2, double width, double attenuation) {
    int len;
    float alpha;
    tevs::firGenKaiser(width, attenuation, &len, &alpha);
    if (len > 1 << 22) throw Failure("the filter would have " + std::to_string(len) + " taps; a wider transition (--width) takes fewer");
    Samples taps(size_t(len), 0.0);
    switch (shape) {
        case Shape::Low:
            tevs::firGenLowpass(std::span(taps), edge, TaperNone);
            break;
        case Shape::High:
            tevs::firGenHighpass(std::span(taps), edge, TaperNone);
            break;
        case Shape::Band:
            tevs::firGenBandpass(std::span(taps), edge, edge2, TaperNone);
            break;
        case Shape::Stop:
            tevs::firGenBandstop(std::span(taps), edge, edge2, TaperNone);
            break;
    }
    const double beta = 0.5 * double(alpha) * (len - 1), top = besselI0(beta);
    for (int n = 0; n < len; ++n) {
        const double t = len > 1 ? 2.0 * n / (len - 1) - 1 : 0;
        taps[size_t(n)] *= besselI0(beta * std::sqrt(1 - t * t)) / top;
    }
    const double at = shape == Shape::High ? 0.5 : shape == Shape::Band ? (edge + edge2) / 2 : 0;
    Complex64f gain;
    tevsFIRResponse_64f(taps.data(), len, &at, &gain, 1);
    tevs::mulC(1 / std::hypot(gain.re, gain.im), std::span(taps));
    return taps;
}
