// Adaptive filters between two rates, per iteration of a block: at factors of 1 and 1 against loops and other libraries, and an equaliser of two samples to the symbol against its
// dot product and step one after the other.
#if TEVS_PEER_LIQUID
#include <complex>
#include <liquid/liquid.h>
#endif

#include <memory>

#include "filter/multirate_lms_plain.h"
#include "support/bench.h"
#include "tevs.h"

namespace {

template <class T> std::vector<T> noise(size_t n, double most) {
    std::vector<T> v(n);
    uint64_t state = 7;
    const auto next = [&] {
        state = state * 6364136223846793005u + 1442695040888963407u;
        return (double(state >> 40) / (1 << 23) - 1) * most;
    };
    for (T& x : v)
        if constexpr (requires { x.im; })
            x = {decltype(x.re)(next()), decltype(x.re)(next())};
        else
            x = T(next());
    return v;
}

// Blocks of 480 iterations.
template <class Tap, class Data, class Init, class State>
void rows(const char* types, double most, Init init, Status (*free)(State*), Status (*block)(const Data*, const Data*, Data*, int, float, float, State*)) {
    for (int taps : {16, 64, 256, 1024})
        for (float norm : {0.0f, 1.0f}) {
            const float mu = norm > 0 ? 0.1f : most > 1 ? 1e-14f : 1e-5f;
            const auto name = std::string("FIRLMSMR") + types + "_" + std::to_string(taps) + (norm > 0 ? "_taps_normalised" : "_taps");
            for (int down : {1, 2})
                bench::row(down == 1 ? name : name + "_down_2", "tevs", {480}, [=](int n) {
                    State* p = nullptr;
                    init(&p, taps, down);
                    return [=, s = std::shared_ptr<State>(p, free), x = noise<Data>(size_t(n * down), most), ref = noise<Data>(size_t(n), most / 2),
                            y = std::vector<Data>(size_t(n))]() mutable { block(x.data(), ref.data(), y.data(), n, mu, norm, s.get()); };
                });
            if constexpr (!std::is_same_v<Data, Complex16s>)
                bench::row(name, "plain", {480}, [=](int n) {
                    return [=, x = noise<Data>(size_t(n + taps), most), ref = noise<Data>(size_t(n), most / 2), y = std::vector<Data>(size_t(n)),
                            h = std::vector<Tap>(size_t(taps))]() mutable { plain::lms(&x[size_t(taps)], ref.data(), y.data(), n, mu, norm, h.data(), taps); };
                });
        }
}

[[maybe_unused]] const bool registered = [] {
    rows<float, float>(
        "_32f", 0.5, [](auto p, int taps, int down) { tevsFIRLMSMRInitAlloc_32f(p, nullptr, taps, 1, 0, down, 0, nullptr); }, tevsFIRLMSMRFree_32f,
        tevsFIRLMSMR_32f);
    rows<Complex32f, Complex32f>(
        "_32fc", 0.5, [](auto p, int taps, int down) { tevsFIRLMSMRInitAlloc_32fc(p, nullptr, taps, 1, 0, down, 0, nullptr); }, tevsFIRLMSMRFree_32fc,
        tevsFIRLMSMR_32fc);
    rows<int32_t, int16_t>(
        "32s_16s", 10000, [](auto p, int taps, int down) { tevsFIRLMSMRInitAlloc32s_16s(p, nullptr, taps, -30, 1, 0, down, 0, nullptr); },
        tevsFIRLMSMRFree32s_16s, tevsFIRLMSMR32s_16s);
    rows<Complex32s, Complex16s>(
        "32sc_16sc", 10000, [](auto p, int taps, int down) { tevsFIRLMSMRInitAlloc32sc_16sc(p, nullptr, taps, -30, 1, 0, down, 0, nullptr); },
        tevsFIRLMSMRFree32sc_16sc, tevsFIRLMSMR32sc_16sc);
    for (int taps : {16, 64, 256, 1024}) {
        const auto at = [=](const char* types) { return std::string("FIRLMSMR") + types + "_" + std::to_string(taps) + "_taps_normalised"; };
        bench::row(at("_32f"), "two calls", {480}, [=](int n) {
            return [=, x = noise<float>(size_t(n + taps), 0.5), ref = noise<float>(size_t(n), 0.3), h = std::vector<float>(size_t(taps))]() mutable {
                for (int i = 0; i < n; ++i) {
                    float y;
                    tevsDotProd_32f(&x[size_t(i)], h.data(), taps, &y);
                    tevsAddProductC_32f(&x[size_t(i)], (ref[size_t(i)] - y) * 1e-5f, h.data(), taps);
                }
            };
        });
#if TEVS_PEER_LIQUID
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
        bench::row(at("_32f"), "liquid-dsp", {480}, [=](int n) {
            const std::shared_ptr<std::remove_pointer_t<eqlms_rrrf>> q(eqlms_rrrf_create(nullptr, unsigned(taps)), eqlms_rrrf_destroy);
            return [=, x = noise<float>(size_t(n), 0.5), ref = noise<float>(size_t(n), 0.3), y = std::vector<float>(size_t(n))]() mutable {
                for (size_t i = 0; i < size_t(n); ++i) {
                    eqlms_rrrf_push(q.get(), x[i]);
                    eqlms_rrrf_execute(q.get(), &y[i]);
                    eqlms_rrrf_step(q.get(), ref[i], y[i]);
                }
            };
        });
        bench::row(at("_32fc"), "liquid-dsp", {480}, [=](int n) {
            using C = std::complex<float>;
            const std::shared_ptr<std::remove_pointer_t<eqlms_cccf>> q(eqlms_cccf_create(nullptr, unsigned(taps)), eqlms_cccf_destroy);
            return [=, x = std::vector<C>(size_t(n), C(0.5f, 0.1f)), ref = std::vector<C>(size_t(n), C(0.3f, 0.2f)), y = std::vector<C>(size_t(n))]() mutable {
                for (size_t i = 0; i < size_t(n); ++i) {
                    eqlms_cccf_push(q.get(), x[i]);
                    eqlms_cccf_execute(q.get(), &y[i]);
                    eqlms_cccf_step(q.get(), ref[i], y[i]);
                }
            };
        });
#endif
    }
    return true;
}();

}   // namespace
