// Thresholds against plain loops.
#include "support/bench.h"
#include "telephony/threshold_plain.h"
#include "tevs.h"

namespace {

// Values on both sides of the levels below, a quarter of them beyond.
template <class T> T part(int i) {
    const int x = i * 7919 % 2003 - 1001;
    return sizeof(T) == 2 ? T(x) : T(x * T(0.5));
}
template <class T, class F> void row(const char* operation, const char* who, F f) {
    bench::row(operation, who, bench::kSizes, [=](int n) {
        std::vector<T> src(static_cast<size_t>(n));
        for (int i = 0; i < n; ++i) {
            if constexpr (std::is_arithmetic_v<T>)
                src[size_t(i)] = part<T>(i);
            else
                src[size_t(i)] = {part<decltype(T::re)>(i), part<decltype(T::re)>(i + 12345)};
        }
        return [=, src = std::move(src), dst = std::vector<T>(static_cast<size_t>(n))]() mutable { f(src.data(), dst.data(), n); };
    });
}
template <class T, class F, class P> void rows(const char* operation, F f, P plain) {
    row<T>(operation, "tevs", f);
    row<T>(operation, "plain", plain);
    bench::limit<sizeof(T), sizeof(T)>(operation);
}
template <class T> void below(const char* operation, Status (*f)(const T*, T*, int, T)) {
    rows<T>(
        operation, [=](const T* s, T* d, int n) { f(s, d, n, T(-250)); }, [](const T* s, T* d, int n) { plain::below(s, d, n, T(-250)); });
}
template <class T> void belowValue(const char* operation, Status (*f)(const T*, T*, int, T, T)) {
    rows<T>(
        operation, [=](const T* s, T* d, int n) { f(s, d, n, T(-250), T(7)); }, [](const T* s, T* d, int n) { plain::belowValue(s, d, n, T(-250), T(7)); });
}
template <class T> void aboveValue(const char* operation, Status (*f)(const T*, T*, int, T, T)) {
    rows<T>(
        operation, [=](const T* s, T* d, int n) { f(s, d, n, T(250), T(7)); }, [](const T* s, T* d, int n) { plain::aboveValue(s, d, n, T(250), T(7)); });
}
template <class T> void outside(const char* operation, Status (*f)(const T*, T*, int, T, T, T, T)) {
    rows<T>(
        operation, [=](const T* s, T* d, int n) { f(s, d, n, T(-300), T(7), T(300), T(8)); },
        [](const T* s, T* d, int n) { plain::outside(s, d, n, T(-300), T(7), T(300), T(8)); });
}
template <class T> void magnitude(const char* operation, Status (*f)(const T*, T*, int, T)) {
    rows<T>(
        operation, [=](const T* s, T* d, int n) { f(s, d, n, T(150)); }, [](const T* s, T* d, int n) { plain::smallMagnitude(s, d, n, T(150)); });
}

const bool registered = [] {
    below("Threshold_LT_16s", tevsThreshold_LT_16s);
    below("Threshold_LT_32s", tevsThreshold_LT_32s);
    below("Threshold_LT_32f", tevsThreshold_LT_32f);
    below("Threshold_LT_64f", tevsThreshold_LT_64f);
    belowValue("Threshold_LTVal_16s", tevsThreshold_LTVal_16s);
    belowValue("Threshold_LTVal_32f", tevsThreshold_LTVal_32f);
    belowValue("Threshold_LTVal_64f", tevsThreshold_LTVal_64f);
    aboveValue("Threshold_GTVal_16s", tevsThreshold_GTVal_16s);
    aboveValue("Threshold_GTVal_32f", tevsThreshold_GTVal_32f);
    outside("Threshold_LTValGTVal_16s", tevsThreshold_LTValGTVal_16s);
    outside("Threshold_LTValGTVal_32s", tevsThreshold_LTValGTVal_32s);
    outside("Threshold_LTValGTVal_32f", tevsThreshold_LTValGTVal_32f);
    magnitude("Threshold_LTAbs_16s", tevsThreshold_LTAbs_16s);
    magnitude("Threshold_LTAbs_32s", tevsThreshold_LTAbs_32s);
    magnitude("Threshold_LTAbs_32f", tevsThreshold_LTAbs_32f);
    rows<float>(
        "Threshold_LTInv_32f", [](const float* s, float* d, int n) { tevsThreshold_LTInv_32f(s, d, n, 150); },
        [](const float* s, float* d, int n) { plain::inverse(s, d, n, 150); });
    rows<Complex32f>(
        "Threshold_LT_32fc", [](const Complex32f* s, Complex32f* d, int n) { tevsThreshold_LT_32fc(s, d, n, 200); },
        [](const Complex32f* s, Complex32f* d, int n) { plain::below(s, d, n, 200); });
    rows<Complex32f>(
        "Threshold_LTVal_32fc",
        [](const Complex32f* s, Complex32f* d, int n) {
            tevsThreshold_LTVal_32fc(s, d, n, 200, {1, 2});
        },
        [](const Complex32f* s, Complex32f* d, int n) {
            plain::belowValue(s, d, n, 200, {1, 2});
        });
    rows<Complex64f>(
        "Threshold_LTVal_64fc",
        [](const Complex64f* s, Complex64f* d, int n) {
            tevsThreshold_LTVal_64fc(s, d, n, 200, {1, 2});
        },
        [](const Complex64f* s, Complex64f* d, int n) {
            plain::belowValue(s, d, n, 200, {1, 2});
        });
    rows<Complex16s>(
        "Threshold_LTVal_16sc",
        [](const Complex16s* s, Complex16s* d, int n) {
            tevsThreshold_LTVal_16sc(s, d, n, 200, {1, 2});
        },
        [](const Complex16s* s, Complex16s* d, int n) {
            plain::belowValue(s, d, n, 200, {1, 2});
        });
    row<Complex16s>("Threshold_LT_16sc", "tevs", [](const Complex16s* s, Complex16s* d, int n) { tevsThreshold_LT_16sc(s, d, n, 200); });
    rows<Complex32f>(
        "Threshold_LTInv_32fc", [](const Complex32f* s, Complex32f* d, int n) { tevsThreshold_LTInv_32fc(s, d, n, 200); },
        [](const Complex32f* s, Complex32f* d, int n) { plain::inverse(s, d, n, 200); });
    return true;
}();

}   // namespace
