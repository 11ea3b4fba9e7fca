// Adaptive filters, per sample of a block: against a loop, this library's dot product and scaled addition one after the other, and other libraries.
#if TEVS_PEER_LIQUID
#include <complex>
#include <liquid/liquid.h>
#endif
#if TEVS_PEER_SPANDSP
#include <spandsp/telephony.h>
#include <spandsp/vector_float.h>   // the whole library has names that liquid-dsp has too
#endif

#include <memory>

#include "filter/lms_plain.h"
#include "support/bench.h"
#include "tevs.h"

namespace {

constexpr float kMu = 1e-5f;

template <class T> std::vector<T> noise(size_t n, double most) {
    std::vector<T> v(n);
    for (size_t i = 0; i < n; ++i) v[i] = T((double(i * 2654435761u % 1000) * 2e-3 - 1) * most);
    return v;
}

[[maybe_unused]] const bool registered = [] {
    for (int taps : {16, 64, 256, 1024}) {
        const auto name = [=](const char* types) { return std::string("FIRLMS") + types + "_" + std::to_string(taps) + "_taps"; };
        const auto with = [=](auto f) {
            return [=](int n) {
                return [=, x = noise<float>(size_t(n + taps), 0.5), ref = noise<float>(size_t(n), 0.3), y = std::vector<float>(size_t(n)),
                        h = std::vector<float>(size_t(taps))]() mutable { f(&x[size_t(taps)], ref.data(), y.data(), n, h.data()); };
            };
        };
        bench::row(name("_32f"), "tevs", {480}, [=](int n) {
            FIRLMSState_32f* p = nullptr;
            tevsFIRLMSInitAlloc_32f(&p, nullptr, taps, nullptr, 0);
            return [=, s = std::shared_ptr<FIRLMSState_32f>(p, tevsFIRLMSFree_32f), x = noise<float>(size_t(n), 0.5), ref = noise<float>(size_t(n), 0.3),
                    y = std::vector<float>(size_t(n))]() mutable { tevsFIRLMS_32f(x.data(), ref.data(), y.data(), n, kMu, s.get()); };
        });
        bench::row(name("32f_16s"), "tevs", {480}, [=](int n) {
            FIRLMSState32f_16s* p = nullptr;
            tevsFIRLMSInitAlloc32f_16s(&p, nullptr, taps, nullptr, 0);
            return [=, s = std::shared_ptr<FIRLMSState32f_16s>(p, tevsFIRLMSFree32f_16s), x = noise<int16_t>(size_t(n), 10000),
                    ref = noise<int16_t>(size_t(n), 3000),
                    y = std::vector<int16_t>(size_t(n))]() mutable { tevsFIRLMS32f_16s(x.data(), ref.data(), y.data(), n, 1e-14f, s.get()); };
        });
        bench::row(name("_32f"), "plain", {480},
                   with([=](const float* x, const float* ref, float* y, int n, float* h) { plain::lms(x, ref, y, n, 2 * kMu, h, taps); }));
        bench::row(name("_32f"), "two calls", {480}, with([=](const float* x, const float* ref, float* y, int n, float* h) {
                       for (int i = 0; i < n; ++i) {
                           const float* const in = x + i - (taps - 1);
                           tevsDotProd_32f(in, h, taps, &y[i]);
                           tevsAddProductC_32f(in, (ref[i] - y[i]) * 2 * kMu, h, taps);
                       }
                   }));
#if TEVS_PEER_LIQUID
        bench::row(name("_32f"), "liquid-dsp", {480}, [=](int n) {
            const std::shared_ptr<std::remove_pointer_t<eqlms_rrrf>> q(eqlms_rrrf_create(nullptr, unsigned(taps)), eqlms_rrrf_destroy);
            eqlms_rrrf_set_bw(q.get(), kMu);
            return [=, x = noise<float>(size_t(n), 0.5), ref = noise<float>(size_t(n), 0.3), y = std::vector<float>(size_t(n))]() mutable {
                for (size_t i = 0; i < size_t(n); ++i) {
                    eqlms_rrrf_push(q.get(), x[i]);
                    eqlms_rrrf_execute(q.get(), &y[i]);
                    eqlms_rrrf_step(q.get(), ref[i], y[i]);
                }
            };
        });
#endif
#if TEVS_PEER_SPANDSP
        // Its vector routines, which its echo canceller and equalisers are made of.
        bench::row(name("_32f"), "spandsp", {480}, with([=](const float* x, const float* ref, float* y, int n, float* h) {
                       for (int i = 0; i < n; ++i) {
                           const float* const in = x + i - (taps - 1);
                           y[i] = vec_dot_prodf(in, h, taps);
                           vec_lmsf(in, h, taps, (ref[i] - y[i]) * 2 * kMu);
                       }
                   }));
#endif
    }
    return true;
}();

}   // namespace
