#include "support/bench.h"
#include "tevs.h"
#include "vector/elementary_plain.h"

#include <cmath>
#include <cstdlib>

#if TEVS_PEER_SLEEF
#include <immintrin.h>
#endif
#if TEVS_PEER_VOLK
#include <volk/volk.h>
#endif

namespace {

const std::vector<int64_t> kSizes = {16, 64, 1024, 16384};

// A row of a call f(src, dst, len). Values are positive, and their logarithms uniform.
template <class S, class D = S, class F> void row(const char* operation, const char* who, F f) {
    bench::row(operation, who, kSizes, [=](int n) {
        std::vector<S> src(static_cast<size_t>(n));
        for (int i = 0; i < n; ++i) src[static_cast<size_t>(i)] = static_cast<S>(std::exp(7 * std::fmod(i * 0.6180339887, 1.0)) - 0.5);
        return [=, src = std::move(src), dst = std::vector<D>(static_cast<size_t>(n))]() mutable { f(src.data(), dst.data(), n); };
    });
}
// The same of arguments in -20 .. 20.
template <class S, class F> void rowExp(const char* operation, const char* who, F f) {
    bench::row(operation, who, kSizes, [=](int n) {
        std::vector<S> src(static_cast<size_t>(n));
        for (int i = 0; i < n; ++i) src[static_cast<size_t>(i)] = static_cast<S>(40 * std::fmod(i * 0.6180339887, 1.0) - 20);
        return [=, src = std::move(src), dst = std::vector<S>(static_cast<size_t>(n))]() mutable { f(src.data(), dst.data(), n); };
    });
}

#if TEVS_PEER_SLEEF
// SLEEF's functions take and give one vector; its header declares only those of the instruction set that the source is compiled for.
#define SINGLES(name, f, bound)                                                                                                 \
    extern "C" __m512 Sleef_##f##f16_##bound##avx512f(__m512);                                                                  \
    extern "C" __m256 Sleef_##f##f8_##bound##avx2(__m256);                                                                      \
    __attribute__((target("avx512f"))) void name##Wide(const float* src, float* dst, int len) {                                 \
        for (int n = 0; n < len; n += 16) _mm512_storeu_ps(dst + n, Sleef_##f##f16_##bound##avx512f(_mm512_loadu_ps(src + n))); \
    }                                                                                                                           \
    __attribute__((target("avx2"))) void name(const float* src, float* dst, int len) {                                          \
        for (int n = 0; n < len; n += 8) _mm256_storeu_ps(dst + n, Sleef_##f##f8_##bound##avx2(_mm256_loadu_ps(src + n)));      \
    }
#define DOUBLES(name, f, bound)                                                                                               \
    extern "C" __m512d Sleef_##f##d8_##bound##avx512f(__m512d);                                                               \
    extern "C" __m256d Sleef_##f##d4_##bound##avx2(__m256d);                                                                  \
    __attribute__((target("avx512f"))) void name##Wide(const double* src, double* dst, int len) {                             \
        for (int n = 0; n < len; n += 8) _mm512_storeu_pd(dst + n, Sleef_##f##d8_##bound##avx512f(_mm512_loadu_pd(src + n))); \
    }                                                                                                                         \
    __attribute__((target("avx2"))) void name(const double* src, double* dst, int len) {                                      \
        for (int n = 0; n < len; n += 4) _mm256_storeu_pd(dst + n, Sleef_##f##d4_##bound##avx2(_mm256_loadu_pd(src + n)));    \
    }
SINGLES(exp32, exp, u10)
SINGLES(ln32, log, u10)
SINGLES(ln32u35, log, u35)
SINGLES(sqrt32, sqrt, u05)
SINGLES(cubrt32, cbrt, u10)
SINGLES(cubrt32u35, cbrt, u35)
DOUBLES(exp64, exp, u10)
DOUBLES(ln64, log, u10)
DOUBLES(ln64u35, log, u35)
DOUBLES(sqrt64, sqrt, u05)
#undef SINGLES
#undef DOUBLES

// The widest registers that the library may use in this run.
bool wide() {
    const char* cap = std::getenv("TEVS_LEVEL");
    return __builtin_cpu_supports("avx512f") && !(cap && cap[0] < '3');
}
#endif

const bool registered = [] {
    constexpr auto exp = [](const auto* src, auto* dst, int len) { plain::exp(src, dst, len); };
    constexpr auto ln = [](const auto* src, auto* dst, int len) { plain::ln(src, dst, len); };
    constexpr auto sqrt = [](const auto* src, auto* dst, int len) { plain::sqrt(src, dst, len); };
    constexpr auto cubrt = [](const auto* src, auto* dst, int len) { plain::cubrt(src, dst, len); };
    constexpr auto sqr = [](const auto* src, auto* dst, int len) { plain::sqr(src, dst, len); };
    rowExp<float>("Exp_32f", "tevs", tevsExp_32f);
    rowExp<float>("Exp_32f", "plain", exp);
    rowExp<double>("Exp_64f", "tevs", tevsExp_64f);
    rowExp<double>("Exp_64f", "plain", exp);
    row<float>("Ln_32f", "tevs", tevsLn_32f);
    row<float>("Ln_32f", "plain", ln);
    row<double>("Ln_64f", "tevs", tevsLn_64f);
    row<double>("Ln_64f", "plain", ln);
    row<float>("Sqrt_32f", "tevs", tevsSqrt_32f);
    row<float>("Sqrt_32f", "plain", sqrt);
    row<double>("Sqrt_64f", "tevs", tevsSqrt_64f);
    row<double>("Sqrt_64f", "plain", sqrt);
    row<float>("Cubrt_32f", "tevs", tevsCubrt_32f);
    row<float>("Cubrt_32f", "plain", cubrt);
    row<float>("Sqr_32f", "tevs", tevsSqr_32f);
    row<float>("Sqr_32f", "plain", sqr);
    row<float>("Normalize_32f", "tevs", [](const float* src, float* dst, int len) { tevsNormalize_32f(src, dst, len, 3, 7); });
    row<float>("Normalize_32f", "plain", [](const float* src, float* dst, int len) { plain::normalize(src, dst, len, 3, 7); });
    bench::row("Sqrt_32fc", "tevs", kSizes, [](int n) {
        return [n, src = std::vector<Complex32f>(size_t(n), {-3, 4}), dst = std::vector<Complex32f>(size_t(n))]() mutable {
            tevsSqrt_32fc(src.data(), dst.data(), n);
        };
    });
    bench::row("Sqrt_32fc", "plain", kSizes, [](int n) {
        return [n, src = std::vector<std::complex<float>>(size_t(n), {-3, 4}), dst = std::vector<std::complex<float>>(size_t(n))]() mutable {
            plain::sqrt(src.data(), dst.data(), n);
        };
    });
    row<int16_t>("Sqr_16s_Sfs", "tevs", [](const int16_t* src, int16_t* dst, int len) { tevsSqr_16s_Sfs(src, dst, len, 5); });
    row<int16_t>("Sqr_16s_Sfs", "plain", [](const int16_t* src, int16_t* dst, int len) { plain::sqr(src, dst, len, 5); });
    row<int16_t>("Sqrt_16s_Sfs", "tevs", [](const int16_t* src, int16_t* dst, int len) { tevsSqrt_16s_Sfs(src, dst, len, 0); });
    row<int16_t>("Sqrt_16s_Sfs", "plain", [](const int16_t* src, int16_t* dst, int len) { plain::sqrt(src, dst, len, 0); });
    row<int32_t>("Ln_32s_Sfs", "tevs", [](const int32_t* src, int32_t* dst, int len) { tevsLn_32s_Sfs(src, dst, len, -20); });
    row<int32_t>("Ln_32s_Sfs", "plain", [](const int32_t* src, int32_t* dst, int len) { plain::ln(src, dst, len, -20); });
#if TEVS_PEER_SLEEF
    rowExp<float>("Exp_32f", "SLEEF_u10", wide() ? exp32Wide : exp32);
    rowExp<double>("Exp_64f", "SLEEF_u10", wide() ? exp64Wide : exp64);
    row<float>("Ln_32f", "SLEEF_u10", wide() ? ln32Wide : ln32);
    row<float>("Ln_32f", "SLEEF_u35", wide() ? ln32u35Wide : ln32u35);
    row<double>("Ln_64f", "SLEEF_u10", wide() ? ln64Wide : ln64);
    row<double>("Ln_64f", "SLEEF_u35", wide() ? ln64u35Wide : ln64u35);
    row<float>("Sqrt_32f", "SLEEF_u05", wide() ? sqrt32Wide : sqrt32);
    row<double>("Sqrt_64f", "SLEEF_u05", wide() ? sqrt64Wide : sqrt64);
    row<float>("Cubrt_32f", "SLEEF_u10", wide() ? cubrt32Wide : cubrt32);
    row<float>("Cubrt_32f", "SLEEF_u35", wide() ? cubrt32u35Wide : cubrt32u35);
#endif
#if TEVS_PEER_VOLK
    rowExp<float>("Exp_32f", "VOLK", [](const float* src, float* dst, int len) { volk_32f_exp_32f(dst, src, unsigned(len)); });
    row<float>("Ln_32f", "VOLK_log2", [](const float* src, float* dst, int len) { volk_32f_log2_32f(dst, src, unsigned(len)); });
    row<float>("Sqrt_32f", "VOLK", [](const float* src, float* dst, int len) { volk_32f_sqrt_32f(dst, src, unsigned(len)); });
    row<float>("Sqr_32f", "VOLK", [](const float* src, float* dst, int len) { volk_32f_x2_multiply_32f(dst, src, src, unsigned(len)); });
#endif
    bench::limit<4, 4>("Sqr_32f");
    bench::limit<4, 4>("Sqrt_32f");
    bench::limit<2, 2>("Sqr_16s_Sfs");
    return true;
}();

}   // namespace
