// Emphasis, running levels, window sums and linear prediction against plain loops, and the time that memory takes.
#include <cmath>

#include "support/bench.h"
#include "telephony/speech_plain.h"
#include "tevs.h"

namespace {

constexpr double kAlpha = 0.95, kLevel = 0.999;

template <class S> std::vector<S> samples(int n) {
    std::vector<S> src(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) src[size_t(i)] = S(i * 7919 % 2003 - (sizeof(S) == 1 ? 0 : 1001));
    return src;
}
// f over n + mask - 1 samples and as many results as it likes, and what it carries on from call to call.
template <class S, class D, class F> void row(const std::string& operation, const char* who, int mask, F f) {
    bench::row(operation, who, bench::kSizes, [=](int n) {
        return [=, src = samples<S>(n + mask - 1), dst = std::vector<D>(static_cast<size_t>(n)), carried = 0.0]() mutable {
            f(src.data(), dst.data(), n, &carried);
        };
    });
}
template <class T> void emphasis(const std::string& type, Status (*pre)(const T*, T*, int, double, double*), Status (*de)(const T*, T*, int, double, double*)) {
    row<T, T>("PreEmphasis_" + type, "tevs", 1, [=](const T* s, T* d, int n, double* mem) { pre(s, d, n, kAlpha, mem); });
    row<T, T>("PreEmphasis_" + type, "plain", 1, [](const T* s, T* d, int n, double* mem) { plain::preEmphasis(s, d, n, kAlpha, mem); });
    bench::limit<sizeof(T), sizeof(T)>("PreEmphasis_" + type);
    row<T, T>("DeEmphasis_" + type, "tevs", 1, [=](const T* s, T* d, int n, double* mem) { de(s, d, n, kAlpha, mem); });
    row<T, T>("DeEmphasis_" + type, "plain", 1, [](const T* s, T* d, int n, double* mem) { plain::deEmphasis(s, d, n, kAlpha, mem); });
}
template <class T> void track(const std::string& type, Status (*mean)(const T*, int, double*, double), Status (*power)(const T*, int, double*, double)) {
    row<T, T>("TrackMean_" + type, "tevs", 1, [=](const T* s, T*, int n, double* level) { mean(s, n, level, kLevel); });
    row<T, T>("TrackMean_" + type, "plain", 1, [](const T* s, T*, int n, double* level) { plain::trackMean(s, n, level, kLevel); });
    row<T, T>("TrackPower_" + type, "tevs", 1, [=](const T* s, T*, int n, double* level) { power(s, n, level, kLevel); });
    row<T, T>("TrackPower_" + type, "plain", 1, [](const T* s, T*, int n, double* level) { plain::trackPower(s, n, level, kLevel); });
}
template <class S, class D> void sumWindow(const std::string& type, Status (*f)(const S*, D*, int, int)) {
    for (const int mask : {3, 12, 80, 1000}) {
        const std::string operation = "SumWindow_" + type + "_" + std::to_string(mask);
        row<S, D>(operation, "tevs", mask, [=](const S* s, D* d, int n, double*) { f(s, d, n, mask); });
        row<S, D>(operation, "plain", mask, [=](const S* s, D* d, int n, double*) { plain::sumWindow(s, d, n, mask); });
        bench::limit<sizeof(S), sizeof(D)>(operation);
    }
}
template <class F> void levinson(const char* who, F f) {
    bench::row("Levinson_64f", who, {10, 16, 32, 128, 1024}, [=](int order) {
        std::vector<double> r(size_t(order) + 1), a(r.size()), k(r.size());
        for (size_t i = 0; i < r.size(); ++i) r[i] = std::exp(-0.05 * double(i)) * std::cos(0.7 * double(i)) + (i == 0);
        return [=]() mutable { f(r.data(), a.data(), order, k.data()); };
    });
}

const bool registered = [] {
    emphasis<int16_t>(
        "16s_Sfs", [](const int16_t* s, int16_t* d, int n, double a, double* mem) { return tevsPreEmphasis_16s_Sfs(s, d, n, a, mem, 0); },
        [](const int16_t* s, int16_t* d, int n, double a, double* mem) { return tevsDeEmphasis_16s_Sfs(s, d, n, a, mem, 0); });
    emphasis<float>("32f", tevsPreEmphasis_32f, tevsDeEmphasis_32f);
    emphasis<double>("64f", tevsPreEmphasis_64f, tevsDeEmphasis_64f);
    track<int16_t>("16s", tevsTrackMean_16s, tevsTrackPower_16s);
    track<float>("32f", tevsTrackMean_32f, tevsTrackPower_32f);
    track<double>("64f", tevsTrackMean_64f, tevsTrackPower_64f);
    sumWindow<uint8_t, int32_t>("8u32s", tevsSumWindow_8u32s);
    sumWindow<int16_t, int32_t>("16s32s", tevsSumWindow_16s32s);
    sumWindow<float, float>("32f", tevsSumWindow_32f);
    sumWindow<double, double>("64f", tevsSumWindow_64f);
    levinson("tevs", [](const double* r, double* a, int order, double* k) { tevsLevinson_64f(r, a, order, k, nullptr); });
    levinson("plain", plain::levinson);
    return true;
}();

}   // namespace
