// Designs, per tap or per order: 255 taps in 20 us are 78 ns a tap.
#if TEVS_PEER_LIQUID
#include <complex>
#include <liquid/liquid.h>
#endif

#include "support/bench.h"
#include "tevs.h"

namespace {

template <class F> auto into(int room, F f) {
    return [=](int n) { return [=, h = std::vector<double>(size_t(room * (n + 1)))]() mutable { f(h.data(), n); }; };
}
#if TEVS_PEER_LIQUID
template <class F> auto intoFloats(F f) {
    return [=](int n) {
        return [=, h = std::vector<float>(size_t(8 * (n + 1))), g = std::vector<float>(size_t(8 * (n + 1)))]() mutable { f(h.data(), g.data(), n); };
    };
}
#endif

[[maybe_unused]] const bool registered = [] {
    const std::vector<int64_t> taps = {31, 129, 255, 1023}, orders = {2, 4, 8, 12};
    bench::row("FIRGenLowpass_64f", "tevs", taps, into(1, [](double* h, int n) { tevsFIRGenLowpass_64f(h, n, 0.2, TaperHamming); }));
    bench::row("FIRGenBandstop_64f", "tevs", taps, into(1, [](double* h, int n) { tevsFIRGenBandstop_64f(h, n, 0.1, 0.2, TaperHamming); }));
    bench::row("FIRGenRootCosine_64f", "tevs", taps, into(1, [](double* h, int n) { tevsFIRGenRootCosine_64f(h, n, 0.25, 0.25); }));
    bench::row("IIRGenLowpass_BiQuad_64f", "tevs", orders, into(6, [](double* h, int n) { tevsIIRGenLowpass_BiQuad_64f(h, n, 0.2, 1); }));
    bench::row("IIRGenBandpass_BiQuad_64f", "tevs", orders, into(6, [](double* h, int n) { tevsIIRGenBandpass_BiQuad_64f(h, n, 0.1, 0.2, 1); }));
#if TEVS_PEER_LIQUID
    bench::row("FIRGenLowpass_64f", "liquid-dsp", taps, intoFloats([](float* h, float*, int n) { liquid_firdes_kaiser(unsigned(n), 0.2f, 60.0f, 0.0f, h); }));
    bench::row("FIRGenRootCosine_64f", "liquid-dsp", {129}, intoFloats([](float* h, float*, int) { liquid_firdes_rrcos(4, 16, 0.25f, 0.0f, h); }));
    bench::row("IIRGenLowpass_BiQuad_64f", "liquid-dsp", orders, intoFloats([](float* b, float* a, int n) {
                   liquid_iirdes(LIQUID_IIRDES_CHEBY1, LIQUID_IIRDES_LOWPASS, LIQUID_IIRDES_SOS, unsigned(n), 0.2f, 0.0f, 1.0f, 60.0f, b, a);
               }));
#endif
    return true;
}();

}   // namespace
