// The arctangent and the polar functions beside SLEEF's of 1.0 (u10) and 3.5 (u35) units, the C library's vector functions (plain) and VOLK's kernels.
#include "support/bench.h"
#include "tevs.h"
#include "vector/polar_plain.h"
#include "vector/polar_sleef.h"

#if TEVS_PEER_VOLK
#include <volk/volk.h>
#endif

#include <random>

namespace {

const std::vector<int64_t> kLengths = {64, 1024, 16384};

// Parts in -1 .. 1, phases in -pi .. pi nearly, no zeros.
template <class T> std::vector<T> values(int n, double limit) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> uniform(-limit, limit);
    std::vector<T> v(static_cast<size_t>(n));
    for (T& x : v) {
        if constexpr (requires { x.re; }) {
            x.re = static_cast<decltype(x.re)>(uniform(random));
            x.im = static_cast<decltype(x.im)>(uniform(random));
        } else {
            x = static_cast<T>(uniform(random));
        }
    }
    return v;
}

template <class S, class D, class F> void row(const char* operation, const char* who, double limit, F f) {
    bench::row(operation, who, kLengths,
               [=](int n) { return [=, src = values<S>(n, limit), dst = std::vector<D>(static_cast<size_t>(n))]() mutable { f(src.data(), dst.data(), n); }; });
}
// f(a, b, p, q, len) with two sources and two destinations; those that have one destination leave q alone.
template <class T, class F> void split(const char* operation, const char* who, F f) {
    bench::row(operation, who, kLengths, [=](int n) {
        return [=, a = values<T>(n, 1), b = values<T>(n + 1, 3), p = std::vector<T>(static_cast<size_t>(n)),
                q = std::vector<T>(static_cast<size_t>(n))]() mutable { f(a.data(), b.data(), p.data(), q.data(), n); };
    });
}

template <class T> void sleefUnary(const char* operation, const char* who, void (*f)(const T*, T*, int)) { row<T, T>(operation, who, 4, f); }
template <class T> void sleefSplit(const char* operation, const char* who, void (*f)(const T*, const T*, T*, T*, int)) { split<T>(operation, who, f); }

const bool registered = [] {
    row<float, float>("Arctan_32f", "tevs", 4, tevsArctan_32f);
    row<double, double>("Arctan_64f", "tevs", 4, tevsArctan_64f);
    row<Complex32f, float>("Magnitude_32fc", "tevs", 1, tevsMagnitude_32fc);
    row<Complex64f, double>("Magnitude_64fc", "tevs", 1, tevsMagnitude_64fc);
    row<Complex16s, int16_t>("Magnitude_16sc_Sfs", "tevs", 30000, [](const auto* s, auto* d, int len) { tevsMagnitude_16sc_Sfs(s, d, len, 0); });
    row<Complex16s, float>("Magnitude_16sc32f", "tevs", 30000, tevsMagnitude_16sc32f);
    row<Complex32f, float>("Phase_32fc", "tevs", 1, tevsPhase_32fc);
    row<Complex64f, double>("Phase_64fc", "tevs", 1, tevsPhase_64fc);
    row<Complex16s, int16_t>("Phase_16sc_Sfs", "tevs", 30000, [](const auto* s, auto* d, int len) { tevsPhase_16sc_Sfs(s, d, len, -12); });
    row<Complex32f, float>("PowerSpectr_32fc", "tevs", 1, tevsPowerSpectr_32fc);
    row<Complex64f, double>("PowerSpectr_64fc", "tevs", 1, tevsPowerSpectr_64fc);
    row<Complex16s, int16_t>("PowerSpectr_16sc_Sfs", "tevs", 30000, [](const auto* s, auto* d, int len) { tevsPowerSpectr_16sc_Sfs(s, d, len, 16); });

    constexpr auto arctan = [](const auto* s, auto* d, int len) { plain::arctan(s, d, len); };
    constexpr auto magnitude = [](const auto* s, auto* d, int len) { plain::magnitude(s, d, len); };
    constexpr auto phase = [](const auto* s, auto* d, int len) { plain::phase(s, d, len); };
    constexpr auto power = [](const auto* s, auto* d, int len) { plain::power(s, d, len); };
    row<float, float>("Arctan_32f", "plain", 4, arctan);
    row<double, double>("Arctan_64f", "plain", 4, arctan);
    row<Complex32f, float>("Magnitude_32fc", "plain", 1, magnitude);
    row<Complex64f, double>("Magnitude_64fc", "plain", 1, magnitude);
    row<Complex16s, int16_t>("Magnitude_16sc_Sfs", "plain", 30000, magnitude);
    row<Complex32f, float>("Phase_32fc", "plain", 1, phase);
    row<Complex64f, double>("Phase_64fc", "plain", 1, phase);
    row<Complex16s, int16_t>("Phase_16sc_Sfs", "plain", 30000, phase);
    row<Complex32f, float>("PowerSpectr_32fc", "plain", 1, power);
    row<Complex64f, double>("PowerSpectr_64fc", "plain", 1, power);
    row<Complex16s, int16_t>("PowerSpectr_16sc_Sfs", "plain", 30000, power);

    split<float>("Magnitude_32f", "tevs", [](const float* a, const float* b, float* p, float*, int len) { tevsMagnitude_32f(a, b, p, len); });
    split<double>("Magnitude_64f", "tevs", [](const double* a, const double* b, double* p, double*, int len) { tevsMagnitude_64f(a, b, p, len); });
    split<float>("Phase_32f", "tevs", [](const float* a, const float* b, float* p, float*, int len) { tevsPhase_32f(a, b, p, len); });
    split<double>("Phase_64f", "tevs", [](const double* a, const double* b, double* p, double*, int len) { tevsPhase_64f(a, b, p, len); });
    split<float>("CartToPolar_32f", "tevs", tevsCartToPolar_32f);
    split<float>("PolarToCart_32f", "tevs", tevsPolarToCart_32f);
    split<double>("PolarToCart_64f", "tevs", tevsPolarToCart_64f);
    constexpr auto cartesian = [](const auto* a, const auto* b, auto* p, auto* q, int len) { plain::cartesian(a, b, p, q, len); };
    split<float>("PolarToCart_32f", "plain", cartesian);
    split<double>("PolarToCart_64f", "plain", cartesian);
#if TEVS_PEER_SLEEF
#define ROW(kind, operation, function, quality, width)                                  \
    kind<float>(operation "_32f", "SLEEF_" quality "_" #width, sleef##width::function); \
    kind<double>(operation "_64f", "SLEEF_" quality "_" #width, sleef##width::function);
#define ROWS(kind, operation, function, quality)     \
    ROW(kind, operation, function, quality, 256)     \
    if (__builtin_cpu_supports("avx512f")) {         \
        ROW(kind, operation, function, quality, 512) \
    }
    ROWS(sleefUnary, "Arctan", arctanU10, "u10")
    ROWS(sleefUnary, "Arctan", arctanU35, "u35")
    ROWS(sleefSplit, "Phase", phaseU10, "u10")
    ROWS(sleefSplit, "Phase", phaseU35, "u35")
    ROWS(sleefSplit, "Magnitude", magnitudeU05, "u05")
    ROWS(sleefSplit, "Magnitude", magnitudeU35, "u35")
    ROWS(sleefSplit, "PolarToCart", cartesianU10, "u10")
    ROWS(sleefSplit, "PolarToCart", cartesianU35, "u35")
#endif
#if TEVS_PEER_VOLK
    row<float, float>("Arctan_32f", "VOLK", 4, [](const float* s, float* d, int len) { volk_32f_atan_32f(d, s, unsigned(len)); });
    const auto complex = [](const Complex32f* s) { return reinterpret_cast<const lv_32fc_t*>(s); };
    row<Complex32f, float>("Magnitude_32fc", "VOLK", 1, [=](const Complex32f* s, float* d, int len) { volk_32fc_magnitude_32f(d, complex(s), unsigned(len)); });
    row<Complex32f, float>("PowerSpectr_32fc", "VOLK", 1,
                           [=](const Complex32f* s, float* d, int len) { volk_32fc_magnitude_squared_32f(d, complex(s), unsigned(len)); });
    row<Complex32f, float>("Phase_32fc", "VOLK", 1,
                           [=](const Complex32f* s, float* d, int len) { volk_32fc_s32f_atan2_32f(d, complex(s), 1.0f, unsigned(len)); });
    row<Complex16s, int16_t>("Magnitude_16sc_Sfs", "VOLK", 30000, [](const Complex16s* s, int16_t* d, int len) {
        volk_16ic_magnitude_16i(d, reinterpret_cast<const lv_16sc_t*>(s), unsigned(len));
    });
    row<Complex16s, float>("Magnitude_16sc32f", "VOLK", 30000, [](const Complex16s* s, float* d, int len) {
        volk_16ic_s32f_magnitude_32f(d, reinterpret_cast<const lv_16sc_t*>(s), 1.0f, unsigned(len));
    });
#endif
    bench::limit<8, 4>("Magnitude_32fc");
    bench::limit<8, 4>("PowerSpectr_32fc");
    bench::limit<4, 2>("PowerSpectr_16sc_Sfs");
    return true;
}();

}   // namespace
