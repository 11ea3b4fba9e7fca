// Filters between two rates, per output: records and stateless forms against a plain loop, the polyphase filters of other libraries, and the multiply-adds alone.
#if TEVS_PEER_LIQUID
#include <complex>
#include <liquid/liquid.h>
#endif
#if TEVS_PEER_SPEEXDSP
#include <speex/speex_resampler.h>
#endif

#include <algorithm>
#include <functional>
#include <memory>

#include "filter/multirate_plain.h"
#include "support/bench.h"
#include "tevs.h"

namespace {

using Floats = std::vector<float>;

Floats noise(int n) {
    Floats v(static_cast<size_t>(n));
    for (size_t i = 0; i < v.size(); ++i) v[i] = float(i * 2654435761u % 1000) * 1e-3f - 0.5f;
    return v;
}

// The multiply-adds of n sums of `taps` products, as many vectors at a time as there are registers for; a multiplication and an addition in 32-bit.
TEVS_WIDEST void multiplyAdds(int taps, int n, float* y) {
    typedef float Wide __attribute__((vector_size(bench::kWidest)));
    constexpr int kVectors = bench::kWidest == 32 ? 12 : 6, kLanes = bench::kWidest / 4;
    Wide h = {1.0f}, x = {0.5f};
    for (; n > 0; n -= kVectors * kLanes) {
        Wide sum[kVectors] = {};
        for (int j = 0; j < taps; ++j)
#pragma GCC unroll 12
            for (int a = 0; a < kVectors; ++a) {
#ifdef __i386__
                asm volatile("" : "+x"(x));
                sum[a] += h * x;
#else
                asm volatile("vfmadd231ps %1, %2, %0" : "+x"(sum[a]) : "x"(h), "x"(x));
#endif
            }
        std::memcpy(y, sum, sizeof(Wide));
    }
}

struct Rate {
    int up, down, per;   // taps for each of as many phases as the faster rate has
    int most() const { return std::max(up, down); }
    int taps() const { return per * most(); }
    int products() const { return taps() / up; }   // of an output
    int inputs(int outputs) const { return outputs / up * down; }
    std::string name() const { return "FIRMR_32f_" + std::to_string(up) + "_" + std::to_string(down) + "_per_" + std::to_string(per); }
};

std::shared_ptr<FIRMRState_32f> record(const Rate& r) {
    FIRMRState_32f* p = nullptr;
    tevsFIRMRInitAlloc_32f(&p, noise(r.taps()).data(), r.taps(), r.up, 0, r.down, 0, nullptr);
    return {p, tevsFIRFree_32f};
}

void add(const Rate& r, const std::vector<int64_t>& sizes) {
    bench::row(r.name(), "tevs", sizes, [=](int n) {
        return [=, f = record(r), x = noise(r.inputs(n)), y = Floats(size_t(n))]() mutable { tevsFIR_32f(x.data(), y.data(), n / r.up, f.get()); };
    });
    bench::row(r.name(), "stateless", sizes, [=](int n) {
        return [=, h = noise(r.taps()), past = Floats(size_t(r.taps())), x = noise(r.inputs(n)), y = Floats(size_t(n))]() mutable {
            tevsFIRMR_Direct_32f(x.data(), y.data(), n / r.up, h.data(), r.taps(), r.up, 0, r.down, 0, past.data());
        };
    });
    bench::row(r.name(), "plain", sizes, [=](int n) {
        return [=, h = noise(r.products() * r.up), x = noise(r.inputs(n) + r.products()), y = Floats(size_t(n))]() mutable {
            plain::multirate(x.data(), h.data(), r.products(), r.up, r.down, y.data(), n);
        };
    });
    bench::row(r.name(), "limit", sizes, [=](int n) { return [=, y = Floats(16)]() mutable { multiplyAdds(r.products(), n, y.data()); }; });
#if TEVS_PEER_LIQUID
    bench::row(r.name(), "liquid-dsp", sizes, [=](int n) -> std::function<void()> {
        Floats x = noise(r.inputs(n)), y(static_cast<size_t>(n)), h = noise(r.taps() + 1);
        if (r.up == 1) {
            std::shared_ptr<firdecim_rrrf_s> q(firdecim_rrrf_create(unsigned(r.down), h.data(), unsigned(r.taps())), firdecim_rrrf_destroy);
            return [=]() mutable { firdecim_rrrf_execute_block(q.get(), x.data(), unsigned(n), y.data()); };
        }
        if (r.down == 1) {
            std::shared_ptr<firinterp_rrrf_s> q(firinterp_rrrf_create(unsigned(r.up), h.data(), unsigned(r.taps())), firinterp_rrrf_destroy);
            return [=]() mutable { firinterp_rrrf_execute_block(q.get(), x.data(), unsigned(n / r.up), y.data()); };
        }
        // 2 m taps for each output.
        std::shared_ptr<rresamp_rrrf_s> q(rresamp_rrrf_create(unsigned(r.up), unsigned(r.down), unsigned(r.products() / 2), h.data()), rresamp_rrrf_destroy);
        return [=]() mutable { rresamp_rrrf_execute_block(q.get(), x.data(), unsigned(n / r.up), y.data()); };
    });
#endif
#if TEVS_PEER_SPEEXDSP
    // Its quality stands for so many taps for each output of the slower rate's phases.
    bench::row(r.name(), "SpeexDSP", sizes, [=](int n) {
        int error = 0;
        std::shared_ptr<SpeexResamplerState> q(speex_resampler_init(1, spx_uint32_t(r.down), spx_uint32_t(r.up), r.per == 8 ? 0 : 2, &error),
                                               speex_resampler_destroy);
        return [=, x = noise(r.inputs(n)), y = Floats(size_t(n) + 64)]() mutable {
            spx_uint32_t in = spx_uint32_t(x.size()), out = spx_uint32_t(y.size());
            speex_resampler_process_float(q.get(), 0, x.data(), &in, y.data(), &out);
        };
    });
#endif
}

// The other types, next to the plain loop alone.
template <class State, class Tap, class PlainTap, class Sample, class Init, class Free, class Run>
void addType(const std::string& type, const Rate& r, Init init, Free free, Run run) {
    const std::string name = "FIRMR" + type + r.name().substr(std::string("FIRMR_32f").size());
    const std::vector<int64_t> sizes = {9600};
    bench::row(name, "tevs", sizes, [=](int n) {
        State* p = nullptr;
        init(&p, std::vector<Tap>(size_t(r.taps())).data());
        return [=, f = std::shared_ptr<State>(p, free), x = std::vector<Sample>(size_t(r.inputs(n))), y = std::vector<Sample>(size_t(n))]() mutable {
            run(x.data(), y.data(), n / r.up, f.get());
        };
    });
    bench::row(name, "plain", sizes, [=](int n) {
        return [=, h = std::vector<PlainTap>(size_t(r.products() * r.up)), x = std::vector<Sample>(size_t(r.inputs(n) + r.products())),
                y = std::vector<Sample>(size_t(n))]() mutable { plain::multirate(x.data(), h.data(), r.products(), r.up, r.down, y.data(), n); };
    });
}

const bool registered = [] {
    for (const Rate& r : {Rate{1, 6, 8}, {1, 6, 32}, {160, 147, 32}, {4, 1, 8}}) {
        addType<FIRMRState_32fc, Complex32f, Complex32f, Complex32f>(
            "_32fc", r, [=](auto p, const Complex32f* h) { tevsFIRMRInitAlloc_32fc(p, h, r.taps(), r.up, 0, r.down, 0, nullptr); }, tevsFIRFree_32fc,
            tevsFIR_32fc);
        addType<FIRMRState_64f, double, double, double>(
            "_64f", r, [=](auto p, const double* h) { tevsFIRMRInitAlloc_64f(p, h, r.taps(), r.up, 0, r.down, 0, nullptr); }, tevsFIRFree_64f, tevsFIR_64f);
        addType<FIRMRState32f_16s, float, float, int16_t>(
            "32f_16s", r, [=](auto p, const float* h) { tevsFIRMRInitAlloc32f_16s(p, h, r.taps(), r.up, 0, r.down, 0, nullptr); }, tevsFIRFree32f_16s,
            [](auto x, auto y, int n, auto f) { tevsFIR32f_16s_Sfs(x, y, n, f, 0); });
        addType<FIRMRState32s_16s, int32_t, int16_t, int16_t>(
            "32s_16s", r, [=](auto p, const int32_t* h) { tevsFIRMRInitAlloc32s_16s(p, h, r.taps(), 0, r.up, 0, r.down, 0, nullptr); }, tevsFIRFree32s_16s,
            [](auto x, auto y, int n, auto f) { tevsFIR32s_16s_Sfs(x, y, n, f, 15); });
    }
    for (int per : {8, 32}) {
        for (auto [up, down] : {std::pair{1, 2}, {1, 4}, {1, 6}, {1, 8}, {2, 1}, {4, 1}, {8, 1}, {3, 2}, {2, 3}, {160, 147}}) add({up, down, per}, {480, 9600});
        add({147, 160, per}, {441, 8820});
    }
    return true;
}();

}   // namespace
