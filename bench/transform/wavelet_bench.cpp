// Wavelets, per sample of the signal: streams beside the FIR filter that multiplies and adds as often, whole signals beside GSL, pairs beside plain loops and what
// loading and storing take.
#if TEVS_PEER_GSL && TEVS_PEER_GSLCBLAS
#include <gsl/gsl_wavelet.h>
#endif

#include <bit>
#include <memory>

#include "support/bench.h"
#include "tevs.h"
#include "transform/wavelet_plain.h"

namespace {

template <class T> std::vector<T> noise(size_t n, double most = 1) {
    std::vector<T> v(n);
    for (size_t i = 0; i < n; ++i) v[i] = T((double(i * 2654435761u % 1000) * 2e-3 - 1) * most);
    return v;
}

const std::vector<int64_t> kSamples = {64, 1024, 16384, 1 << 20};

void streams() {
    for (int taps : {2, 8, 20, 40}) {
        const auto name = [=](const char* what) { return std::string(what) + "_32f_" + std::to_string(taps) + "_taps"; };
        std::vector<float> h[4];
        for (auto& v : h) v.resize(size_t(taps));
        tevsWtGenTaps_32f(h[0].data(), h[1].data(), h[2].data(), h[3].data(), taps, WaveletDaubechies);
        bench::row(name("WtAnalysis"), "tevs", kSamples, [=](int n) {
            WtState_32f* p = nullptr;
            tevsWtAnalysisInitAlloc_32f(&p, h[0].data(), taps, -1, h[1].data(), taps, -1);
            return [=, s = std::shared_ptr<WtState_32f>(p, tevsWtFree_32f), x = noise<float>(size_t(n)), low = std::vector<float>(size_t(n) / 2),
                    high = std::vector<float>(size_t(n) / 2)]() mutable { tevsWtAnalysis_32f(x.data(), low.data(), high.data(), n / 2, s.get()); };
        });
        bench::row(name("WtAnalysis"), "plain", kSamples, [=](int n) {
            return [=, x = noise<float>(size_t(n + taps)), low = std::vector<float>(size_t(n) / 2), high = std::vector<float>(size_t(n) / 2)]() mutable {
                plain::analysis(&x[size_t(taps)], h[0].data(), h[1].data(), taps, low.data(), high.data(), n / 2);
            };
        });
        bench::row(name("WtSynthesis"), "tevs", kSamples, [=](int n) {
            WtState_32f* p = nullptr;
            tevsWtSynthesisInitAlloc_32f(&p, h[2].data(), taps, -1, h[3].data(), taps, -1);
            return [=, s = std::shared_ptr<WtState_32f>(p, tevsWtFree_32f), y = std::vector<float>(size_t(n)), low = noise<float>(size_t(n) / 2),
                    high = noise<float>(size_t(n) / 2)]() mutable { tevsWtSynthesis_32f(low.data(), high.data(), y.data(), n / 2, s.get()); };
        });
        // As many products: one filter at the full rate. In memory of the caller's it filters directly.
        for (const char* of : {"WtAnalysis", "WtSynthesis"})
            bench::row(name(of), "fir", kSamples, [=](int n) {
                int size = 0;
                tevsFIRGetStateSize_32f(taps, &size);
                FIRState_32f* p = nullptr;
                auto block = std::make_shared<std::vector<uint8_t>>(size_t(size));
                tevsFIRInit_32f(&p, h[0].data(), taps, nullptr, block->data());
                return [=, x = noise<float>(size_t(n)), y = std::vector<float>(size_t(n))]() mutable {
                    (void)block;
                    tevsFIR_32f(x.data(), y.data(), n, p);
                };
            });
    }
}

template <class T, class Spec, class GenTaps, class Init, class Free, class Run>
void whole(const char* name, GenTaps genTaps, Init init, Free free, Run run, int taps, const std::vector<int64_t>& sizes, int ext) {
    bench::row(std::string(name) + "_" + std::to_string(taps) + "_taps", "tevs", sizes, [=](int n) {
        std::vector<T> h[4];
        for (auto& v : h) v.resize(size_t(taps));
        genTaps(h[0].data(), h[1].data(), h[2].data(), h[3].data(), taps, WaveletDaubechies);
        Spec* p = nullptr;
        init(&p, n, std::bit_width(unsigned(n)) - 1, h[0].data(), h[1].data(), h[2].data(), h[3].data(), taps, ext);
        return [=, s = std::shared_ptr<Spec>(p, free), x = noise<T>(size_t(n) + 2000), y = std::vector<T>(size_t(n) + 2000),
                buffer = std::vector<uint8_t>(size_t(n) * 4 * sizeof(T) + 8192)]() mutable { run(x.data(), y.data(), s.get(), buffer.data()); };
    });
}

void signals() {
    const std::vector<int64_t> odd = {63, 1023, 16383};
    for (int taps : {2, 8, 20}) {
        for (const auto& sizes : {kSamples, odd}) {
            whole<double, DWTSpec_64f>("DWTFwd_64f", tevsWtGenTaps_64f, tevsDWTInitAlloc_64f, tevsDWTFree_64f, tevsDWTFwd_64f, taps, sizes, ExtPeriodic);
            whole<double, DWTSpec_64f>("DWTInv_64f", tevsWtGenTaps_64f, tevsDWTInitAlloc_64f, tevsDWTFree_64f, tevsDWTInv_64f, taps, sizes, ExtPeriodic);
            whole<float, DWTSpec_32f>("DWTFwd_32f", tevsWtGenTaps_32f, tevsDWTInitAlloc_32f, tevsDWTFree_32f, tevsDWTFwd_32f, taps, sizes, ExtPeriodic);
            whole<double, DWTSpec_64f>("DWTFwd_mirror_64f", tevsWtGenTaps_64f, tevsDWTInitAlloc_64f, tevsDWTFree_64f, tevsDWTFwd_64f, taps, sizes, ExtMirror);
            bench::row("DWTFwd_64f_" + std::to_string(taps) + "_taps", "plain", sizes, [=](int n) {
                std::vector<double> h[4];
                for (auto& v : h) v.resize(size_t(taps));
                tevsWtGenTaps_64f(h[0].data(), h[1].data(), h[2].data(), h[3].data(), taps, WaveletDaubechies);
                return [=, low = h[0], high = h[1], x = noise<double>(size_t(n)), y = std::vector<double>(size_t(n) + 64),
                        work = std::vector<double>(size_t(n) * 2 + 256)]() mutable {
                    plain::dwt(x.data(), y.data(), work.data(), n, std::bit_width(unsigned(n)) - 1, low.data(), high.data(), taps);
                };
            });
        }
#if TEVS_PEER_GSL && TEVS_PEER_GSLCBLAS
        // In place, and of powers of two only.
        for (const bool forward : {true, false})
            bench::row(std::string(forward ? "DWTFwd_64f_" : "DWTInv_64f_") + std::to_string(taps) + "_taps", "gsl", kSamples, [=](int n) {
                const std::shared_ptr<gsl_wavelet> w(gsl_wavelet_alloc(taps == 2 ? gsl_wavelet_haar : gsl_wavelet_daubechies, size_t(taps)), gsl_wavelet_free);
                const std::shared_ptr<gsl_wavelet_workspace> work(gsl_wavelet_workspace_alloc(size_t(n)), gsl_wavelet_workspace_free);
                return [=, x = noise<double>(size_t(n)), y = std::vector<double>(size_t(n))]() mutable {
                    std::copy(x.begin(), x.end(), y.begin());
                    (forward ? gsl_wavelet_transform_forward : gsl_wavelet_transform_inverse)(w.get(), y.data(), 1, size_t(n), work.get());
                };
            });
#endif
    }
}

template <class T, class Run> void split(const char* name, const char* who, Run run) {
    bench::row(name, who, kSamples, [=](int n) {
        return [=, x = noise<T>(size_t(n), sizeof(T) == 2 ? 10000 : 1), low = std::vector<T>(size_t(n) / 2), high = std::vector<T>(size_t(n) / 2)]() mutable {
            run(x.data(), low.data(), high.data(), n);
        };
    });
}
template <class T, class Run> void join(const char* name, const char* who, Run run) {
    bench::row(name, who, kSamples, [=](int n) {
        return [=, low = noise<T>(size_t(n) / 2, sizeof(T) == 2 ? 10000 : 1), high = noise<T>(size_t(n) / 2, sizeof(T) == 2 ? 10000 : 1),
                y = std::vector<T>(size_t(n))]() mutable { run(low.data(), high.data(), y.data(), n); };
    });
}
void pairs() {
    split<float>("WtHaarAnalysis_32f", "tevs", [](auto x, auto l, auto h, int n) { tevsWtHaarAnalysis_32f(x, l, h, n / 2); });
    split<float>("WtHaarAnalysis_32f", "plain", [](auto x, auto l, auto h, int n) { plain::haar(x, l, h, n / 2); });
    split<int16_t>("WtHaarAnalysis_16s_Sfs", "tevs", [](auto x, auto l, auto h, int n) { tevsWtHaarAnalysis_16s_Sfs(x, l, h, n / 2, 1); });
    split<int16_t>("WtHaarAnalysis_16s_Sfs", "plain", [](auto x, auto l, auto h, int n) { plain::haar(x, l, h, n / 2); });
    split<int16_t>("WtLiftAnalysis_16s", "tevs", [](auto x, auto l, auto h, int n) { tevsWtLiftAnalysis_16s(x, l, h, n, Lift53); });
    split<int16_t>("WtLiftAnalysis_16s", "plain", [](auto x, auto l, auto h, int n) { plain::lift53(x, l, h, n / 2); });
    split<int32_t>("WtLiftAnalysis_32s", "tevs", [](auto x, auto l, auto h, int n) { tevsWtLiftAnalysis_32s(x, l, h, n, Lift53); });
    join<float>("WtHaarSynthesis_32f", "tevs", [](auto l, auto h, auto y, int n) { tevsWtHaarSynthesis_32f(l, h, y, n / 2); });
    join<int16_t>("WtHaarSynthesis_16s_Sfs", "tevs", [](auto l, auto h, auto y, int n) { tevsWtHaarSynthesis_16s_Sfs(l, h, y, n / 2, 0); });
    join<int16_t>("WtLiftSynthesis_16s", "tevs", [](auto l, auto h, auto y, int n) { tevsWtLiftSynthesis_16s(l, h, y, n, Lift53); });
    join<int32_t>("WtLiftSynthesis_32s", "tevs", [](auto l, auto h, auto y, int n) { tevsWtLiftSynthesis_32s(l, h, y, n, Lift53); });
    for (const char* name : {"WtHaarAnalysis_32f", "WtHaarSynthesis_32f", "WtLiftAnalysis_32s", "WtLiftSynthesis_32s"}) bench::limit<4, 4>(name);
    for (const char* name : {"WtHaarAnalysis_16s_Sfs", "WtHaarSynthesis_16s_Sfs", "WtLiftAnalysis_16s", "WtLiftSynthesis_16s"}) bench::limit<2, 2>(name);
}

[[maybe_unused]] const bool registered = [] {
    streams();
    signals();
    pairs();
    return true;
}();

}   // namespace
