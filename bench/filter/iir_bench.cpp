// IIR filters, per sample: cascades of second-order sections against a loop in the caller's code and liquid-dsp, and filters of arbitrary order against
// the cascade of as many poles.
#if TEVS_PEER_LIQUID
#include <complex>
#include <liquid/liquid.h>
#endif

#include <cmath>
#include <memory>

#include "filter/iir_plain.h"
#include "support/bench.h"
#include "tevs.h"

namespace {

const std::vector<int64_t> kBlocks = {64, 480, 4096};
constexpr double kPi = 3.14159265358979324;

template <class T> constexpr bool kComplex = requires(T z) { z.re; };
template <class T> T number(double re, double im = 0) {
    if constexpr (kComplex<T>)
        return {decltype(T::re)(re), decltype(T::re)(im)};
    else
        return T(re);
}
template <class T> std::vector<T> noise(int n) {
    std::vector<T> v(static_cast<size_t>(n));
    size_t i = 0;
    const auto part = [&] { return (double(i++ * 2654435761u % 1000) * 1e-3 - 0.5) * (std::is_integral_v<T> ? 30000 : 1); };
    for (T& x : v) x = number<T>(part(), part());
    return v;
}
// A low-pass filter of as many sections, poles at radii from 0.6 to 0.95.
template <class T> std::vector<T> lowPass(int sections) {
    std::vector<T> taps;
    for (int s = 0; s < sections; ++s) {
        const double r = 0.6 + 0.35 * (s + 1) / sections, w = 0.2 * kPi;
        const double den[] = {1, -2 * r * std::cos(w), r * r}, gain = (den[0] + den[1] + den[2]) / 4;
        for (double b : {gain, 2 * gain, gain}) taps.push_back(number<T>(b));
        for (double a : den) taps.push_back(number<T>(a));
    }
    return taps;
}
// The same filter as one quotient of polynomials.
template <class T> std::vector<T> asOne(int sections) {
    const auto taps = lowPass<double>(sections);
    std::vector<T> all;
    for (size_t side : {0, 3}) {
        std::vector<double> p{1};
        for (size_t s = 0; s < size_t(sections); ++s) {
            std::vector<double> q(p.size() + 2);
            for (size_t i = 0; i < p.size(); ++i)
                for (size_t k = 0; k < 3; ++k) q[i + k] += p[i] * taps[6 * s + side + k];
            p = q;
        }
        for (double h : p) all.push_back(number<T>(h));
    }
    return all;
}

template <class T, class State, class Sample, auto InitAlloc, auto Free, auto Block>
void filter(const std::string& name, int count, std::vector<T> taps, const std::vector<int64_t>& sizes = kBlocks) {
    bench::row(name, "tevs", sizes, [=](int n) {
        State* p = nullptr;
        InitAlloc(&p, taps.data(), count, nullptr);
        return [=, s = std::shared_ptr<State>(p, Free), x = noise<Sample>(n), y = std::vector<Sample>(size_t(n))]() mutable {
            if constexpr (std::is_invocable_v<decltype(Block), const Sample*, Sample*, int, State*>)
                Block(x.data(), y.data(), n, s.get());
            else
                Block(x.data(), y.data(), n, s.get(), 1);
        };
    });
}
template <class T, class P> void plainCascade(const std::string& name, int sections, const std::vector<int64_t>& sizes = kBlocks) {
    bench::row(name, "plain", sizes, [=](int n) {
        std::vector<plain::Section<P>> s;
        const auto taps = lowPass<T>(sections);
        for (size_t k = 0; k < taps.size(); k += 6) {
            P c[6];
            std::memcpy(c, &taps[k], sizeof c);
            s.push_back({c[0], c[1], c[2], c[4], c[5], {}, {}});
        }
        return [=, x = noise<T>(n), y = std::vector<T>(size_t(n))]() mutable {
            plain::cascade(reinterpret_cast<const P*>(x.data()), reinterpret_cast<P*>(y.data()), n, s.data(), sections);
        };
    });
}

[[maybe_unused]] const bool registered = [] {
    for (int k : {1, 2, 4, 8}) {
        const auto name = [=](const char* types) { return std::string("IIR_BiQuad") + types + "_" + std::to_string(k) + "_sections"; };
        filter<float, IIRState_32f, float, tevsIIRInitAlloc_BiQuad_32f, tevsIIRFree_32f, tevsIIR_32f>(name("_32f"), k, lowPass<float>(k));
        filter<float, IIRState32f_16s, int16_t, tevsIIRInitAlloc32f_BiQuad_16s, tevsIIRFree32f_16s, tevsIIR32f_16s_Sfs>(name("32f_16s"), k, lowPass<float>(k));
        filter<double, IIRState_64f, double, tevsIIRInitAlloc_BiQuad_64f, tevsIIRFree_64f, tevsIIR_64f>(name("_64f"), k, lowPass<double>(k));
        filter<Complex32f, IIRState_32fc, Complex32f, tevsIIRInitAlloc_BiQuad_32fc, tevsIIRFree_32fc, tevsIIR_32fc>(name("_32fc"), k, lowPass<Complex32f>(k));
        filter<Complex64f, IIRState_64fc, Complex64f, tevsIIRInitAlloc_BiQuad_64fc, tevsIIRFree_64fc, tevsIIR_64fc>(name("_64fc"), k, lowPass<Complex64f>(k));
        plainCascade<float, float>(name("_32f"), k);
        plainCascade<double, double>(name("_64f"), k);
        plainCascade<Complex32f, plain::Complex32f>(name("_32fc"), k);
        plainCascade<Complex64f, plain::Complex64f>(name("_64fc"), k);
#if TEVS_PEER_LIQUID
        bench::row(name("_32f"), "liquid-dsp", kBlocks, [=](int n) {
            auto taps = lowPass<float>(k);
            std::vector<float> b, a;
            for (size_t i = 0; i < taps.size(); ++i) (i % 6 < 3 ? b : a).push_back(taps[i]);
            const std::shared_ptr<std::remove_pointer_t<iirfilt_rrrf>> q(iirfilt_rrrf_create_sos(b.data(), a.data(), unsigned(k)), iirfilt_rrrf_destroy);
            return
                [=, x = noise<float>(n), y = std::vector<float>(size_t(n))]() mutable { iirfilt_rrrf_execute_block(q.get(), x.data(), unsigned(n), y.data()); };
        });
#endif
    }
    // One sample at a time, `size` of them; the loop stays in the caller.
    bench::row("IIROne_BiQuad_32f", "tevs", {480}, [](int n) {
        IIRState_32f* p = nullptr;
        tevsIIRInitAlloc_BiQuad_32f(&p, lowPass<float>(1).data(), 1, nullptr);
        return [=, s = std::shared_ptr<IIRState_32f>(p, tevsIIRFree_32f), x = noise<float>(n), y = std::vector<float>(size_t(n))]() mutable {
            for (size_t i = 0; i < size_t(n); ++i) tevsIIROne_32f(x[i], &y[i], s.get());
        };
    });
    plainCascade<float, float>("IIROne_BiQuad_32f", 1, {480});
    for (int k : {1, 2, 3, 4, 6}) {
        const auto name = [=](const char* types) { return std::string("IIR") + types + "_order_" + std::to_string(2 * k); };
        filter<float, IIRState_32f, float, tevsIIRInitAlloc_32f, tevsIIRFree_32f, tevsIIR_32f>(name("_32f"), 2 * k, asOne<float>(k));
        filter<double, IIRState_64f, double, tevsIIRInitAlloc_64f, tevsIIRFree_64f, tevsIIR_64f>(name("_64f"), 2 * k, asOne<double>(k));
        plainCascade<float, float>(name("_32f"), k);
        plainCascade<double, double>(name("_64f"), k);
    }
    return true;
}();

}   // namespace
