// Windows, computed and applied, against plain loops and against the product with a window that was computed before.
#include "generate/window_plain.h"
#include "support/bench.h"
#include "tevs.h"

namespace {

template <class T, class F> void row(const std::string& operation, const char* who, F f) {
    bench::row(operation, who, bench::kSizes, [=](int n) {
        return
            [=, src = std::vector<T>(static_cast<size_t>(n), T{1}), dst = std::vector<T>(static_cast<size_t>(n))]() mutable { f(src.data(), dst.data(), n); };
    });
}
template <class T> void rows(const std::string& operation, Status (*f)(const T*, T*, int)) { row<T>(operation, "tevs", f); }
template <class T, class P> void rows(const std::string& operation, Status (*f)(const T*, T*, int), P plain, Status (*multiply)(const T*, const T*, T*, int)) {
    rows(operation, f);
    row<T>(operation, "plain", plain);
    bench::row(operation, "stored", bench::kSizes, [=](int n) {
        return [=, window = std::vector<T>(static_cast<size_t>(n), T(0.5)), src = std::vector<T>(static_cast<size_t>(n), T{1}),
                dst = std::vector<T>(static_cast<size_t>(n))]() mutable { multiply(src.data(), window.data(), dst.data(), n); };
    });
}

// Kaiser with the parameter that filter design calls beta = 8.
const bool registered = [] {
    rows<float>("WinBartlett_32f", tevsWinBartlett_32f, plain::bartlett<float>, tevsMul_32f);
    rows<double>("WinBartlett_64f", tevsWinBartlett_64f, plain::bartlett<double>, tevsMul_64f);
    rows<float>("WinHann_32f", tevsWinHann_32f, plain::hann<float>, tevsMul_32f);
    rows<double>("WinHann_64f", tevsWinHann_64f, plain::hann<double>, tevsMul_64f);
    rows<float>("WinHamming_32f", tevsWinHamming_32f, plain::hann<float>, tevsMul_32f);
    rows<float>(
        "WinBlackmanStd_32f", tevsWinBlackmanStd_32f, [](const float* s, float* d, int n) { plain::blackman(s, d, n, -0.16f); }, tevsMul_32f);
    rows<double>(
        "WinBlackmanStd_64f", tevsWinBlackmanStd_64f, [](const double* s, double* d, int n) { plain::blackman(s, d, n, -0.16); }, tevsMul_64f);
    rows<float>(
        "WinKaiser_32f", [](const float* s, float* d, int n) { return tevsWinKaiser_32f(s, d, n, 16.0f / float(n)); },
        [](const float* s, float* d, int n) { plain::kaiser(s, d, n, 16.0f / float(n)); }, tevsMul_32f);
    rows<double>(
        "WinKaiser_64f", [](const double* s, double* d, int n) { return tevsWinKaiser_64f(s, d, n, 16.0f / float(n)); },
        [](const double* s, double* d, int n) { plain::kaiser(s, d, n, 16.0 / n); }, tevsMul_64f);
    rows<int16_t>("WinHann_16s", tevsWinHann_16s);
    rows<Complex16s>("WinHann_16sc", tevsWinHann_16sc);
    rows<Complex32f>("WinHann_32fc", tevsWinHann_32fc);
    rows<Complex64f>("WinHann_64fc", tevsWinHann_64fc);
    return true;
}();

}   // namespace
