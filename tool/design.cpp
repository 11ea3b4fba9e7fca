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

// Taps by Kaiser's estimate of their number and of the window's shape, from which the stop-band is `aim` dB down, or nearly.
Samples estimatedTaps(Shape shape, double edge, double edge2, double width, double aim) {
    int len;
    float alpha;
    tevs::firGenKaiser(width, aim, &len, &alpha);
    if (len > 1 << 22) throw Failure("the filter would have " + std::to_string(len) + " taps; a wider transition (--width) takes fewer");
    Samples taps(static_cast<size_t>(len));
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
    return taps;
}

double gainAt(const Samples& taps, double frequency) {
    Complex64f gain;
    tevsFIRResponse_64f(taps.data(), int(taps.size()), &frequency, &gain, 1);
    return std::hypot(gain.re, gain.im);
}

}   // namespace

// Ripples of the pass-band and the stop-band are one, `attenuation` dB down. J. F. Kaiser, Nonrecursive Digital Filter Design Using the I0-sinh Window Function (1974). His
// estimate falls short by some dB where the attenuation is high; the stop-band is highest at its edge, so a look there tells by how much.
Samples kaiserTaps(Shape shape, double edge, double edge2, double width, double attenuation) {
    const double passed = shape == Shape::High ? 0.5 : shape == Shape::Band ? (edge + edge2) / 2 : 0;
    const double stopped = edge + (shape == Shape::Low || shape == Shape::Stop ? width / 2 : -width / 2);
    for (double aim = attenuation + 1;;) {
        Samples taps = estimatedTaps(shape, edge, edge2, width, aim);
        const double gain = gainAt(taps, passed), missing = attenuation + 20 * std::log10(gainAt(taps, stopped) / gain);
        if (missing <= 0 || aim > attenuation + 20) {
            tevs::mulC(1 / gain, std::span(taps));
            return taps;
        }
        aim += missing + 0.5;
    }
}
