// Tones and frequency shifts against the oscillators of others and plain loops.
#include "generate/tone_plain.h"
#include "support/bench.h"
#include "tevs.h"

#if TEVS_PEER_LIQUID
#define awgn liquid_awgn   // SpanDSP has one, too
#include <liquid/liquid.h>
#undef awgn
#endif
#if TEVS_PEER_SPANDSP
#include <spandsp.h>
#endif
#if TEVS_PEER_VOLK
#include <volk/volk.h>
#endif

#include <cmath>

namespace {

constexpr double kFreq = 0.0123;
const std::vector<int64_t> kLengths = {64, 1024, 16384, 1 << 20};

template <class D, class F> void row(const char* operation, const char* who, F f) {
    bench::row(operation, who, kLengths, [=](int n) { return [=, dst = std::vector<D>(size_t(n))]() mutable { f(dst.data(), n); }; });
}
template <class S, class D, class F> void mixRow(const char* operation, const char* who, F f) {
    bench::row(operation, who, kLengths, [=](int n) {
        return [=, src = std::vector<S>(size_t(n), S{1, 2}), dst = std::vector<D>(size_t(n))]() mutable { f(src.data(), dst.data(), n); };
    });
}

ToneState* oscillator() {
    ToneState* s = nullptr;
    tevsToneInitAlloc(&s, kFreq, 0);
    return s;
}
template <class T> void tone(const char* operation, Status (*f)(T*, int, double, ToneState*)) {
    row<T>(operation, "tevs", [=, s = oscillator()](T* d, int n) { f(d, n, 1000, s); });
    if constexpr (requires(T * d) { plain::tone(d, 1, 1, 1); }) row<T>(operation, "plain", [](T* d, int n) { plain::tone(d, n, 1000, kFreq); });
}

const bool registered = [] {
    tone("Tone_16s", tevsTone_16s);
    tone("Tone_16sc", tevsTone_16sc);
    tone("Tone_32f", tevsTone_32f);
    tone("Tone_32fc", tevsTone_32fc);
    tone("Tone_64f", tevsTone_64f);
    tone("Tone_64fc", tevsTone_64fc);
    row<float>("Tone_Direct_32f", "tevs", [phase = 0.0](float* d, int n) mutable { tevsTone_Direct_32f(d, n, 1000, kFreq, &phase); });
    row<float>("ToneGlide_32f", "tevs", [s = oscillator()](float* d, int n) {
        tevsToneSetFreq(s, 0.2, n);
        tevsTone_32f(d, n, 1000, s);
    });
    mixRow<Complex32f, Complex32f>("ToneMixUp_32fc", "tevs", [s = oscillator()](auto* x, auto* d, int n) { tevsToneMixUp_32fc(x, d, n, s); });
    mixRow<Complex32f, Complex32f>("ToneMixUp_32fc", "plain", [](auto* x, auto* d, int n) { plain::mix(x, d, n, kFreq); });
    mixRow<Complex32f, float>("ToneMixUp_32fc32f", "tevs", [s = oscillator()](auto* x, auto* d, int n) { tevsToneMixUp_32fc32f(x, d, n, s); });
    mixRow<Complex16s, Complex16s>("ToneMixUp_16sc", "tevs", [s = oscillator()](auto* x, auto* d, int n) { tevsToneMixUp_16sc(x, d, n, s); });
    bench::row("ToneMixDown_32f32fc", "tevs", kLengths, [s = oscillator()](int n) {
        return [=, src = std::vector<float>(size_t(n), 1), dst = std::vector<Complex32f>(size_t(n))]() mutable {
            tevsToneMixDown_32f32fc(src.data(), dst.data(), n, s);
        };
    });
#if TEVS_PEER_LIQUID
    const nco_crcf nco = nco_crcf_create(LIQUID_NCO);
    nco_crcf_set_frequency(nco, float(2 * M_PI * kFreq));
    row<float>("Tone_32f", "liquid", [=](float* d, int n) {
        for (int i = 0; i < n; ++i) {
            d[i] = nco_crcf_cos(nco);
            nco_crcf_step(nco);
        }
    });
    row<Complex32f>("Tone_32fc", "liquid", [=](Complex32f* d, int n) {
        for (int i = 0; i < n; ++i) {
            nco_crcf_cexpf(nco, reinterpret_cast<liquid_float_complex*>(d + i));
            nco_crcf_step(nco);
        }
    });
    mixRow<Complex32f, Complex32f>("ToneMixUp_32fc", "liquid", [=](Complex32f* x, Complex32f* d, int n) {
        nco_crcf_mix_block_up(nco, reinterpret_cast<liquid_float_complex*>(x), reinterpret_cast<liquid_float_complex*>(d), unsigned(n));
    });
#endif
#if TEVS_PEER_SPANDSP
    const int32_t rate = dds_phase_rate(440), rateF = dds_phase_ratef(440);
    row<int16_t>("Tone_16s", "SpanDSP", [=, at = uint32_t{0}](int16_t* d, int n) mutable {
        for (int i = 0; i < n; ++i) d[i] = dds(&at, rate);
    });
    row<float>("Tone_32f", "SpanDSP", [=, at = uint32_t{0}](float* d, int n) mutable {
        for (int i = 0; i < n; ++i) d[i] = ddsf(&at, rateF);
    });
    row<Complex32f>("Tone_32fc", "SpanDSP", [=, at = uint32_t{0}](Complex32f* d, int n) mutable {
        for (int i = 0; i < n; ++i) {
            const complexf_t z = dds_complexf(&at, rateF);
            d[i] = {z.re, z.im};
        }
    });
#endif
#if TEVS_PEER_VOLK
    mixRow<Complex32f, Complex32f>("ToneMixUp_32fc", "VOLK", [phase = lv_cmake(1.0f, 0.0f)](Complex32f* x, Complex32f* d, int n) mutable {
        const lv_32fc_t step = lv_cmake(float(std::cos(2 * M_PI * kFreq)), float(std::sin(2 * M_PI * kFreq)));
        volk_32fc_s32fc_x2_rotator_32fc(reinterpret_cast<lv_32fc_t*>(d), reinterpret_cast<lv_32fc_t*>(x), step, &phase, unsigned(n));
    });
#endif
    return true;
}();

}   // namespace
