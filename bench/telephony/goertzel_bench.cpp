// Goertzel against the textbook's recurrence and SpanDSP's.
#include "support/bench.h"
#include "telephony/goertzel_plain.h"
#include "tevs.h"

#if TEVS_PEER_SPANDSP
#include <spandsp.h>
#endif

namespace {

const std::vector<int64_t> kBlocks = {16, 105, 205, 1024, 16384, 1 << 20};   // 105 and 205: what detectors of tone pairs look at at a time
constexpr float kTone = 770.0f / 8000, kTones[2] = {kTone, 1336.0f / 8000};
constexpr double kExactTones[2] = {770.0 / 8000, 1336.0 / 8000};

template <class S, class D, class F> void row(const char* operation, const char* who, F f) {
    bench::row(operation, who, kBlocks, [=](int n) {
        std::vector<S> src(static_cast<size_t>(n));
        auto* parts = reinterpret_cast<std::conditional_t<sizeof(D) == 16, double, std::conditional_t<std::is_integral_v<S>, int16_t, float>>*>(src.data());
        if constexpr (std::is_same_v<S, Complex16s>) {
            for (int i = 0; i < n; ++i) src[size_t(i)] = {int16_t(i * 7919), int16_t(i * 104729)};
        } else {
            for (size_t i = 0; i < src.size() * sizeof(S) / sizeof *parts; ++i)
                parts[i] = static_cast<std::remove_pointer_t<decltype(parts)>>(int16_t(i * 7919));
        }
        return [=, src = std::move(src), result = std::vector<D>(2)]() mutable { f(src.data(), n, result.data()); };
    });
}

const bool registered = [] {
    row<float, Complex32f>("Goertz_32f", "tevs", [](const float* s, int n, Complex32f* y) { tevsGoertz_32f(s, n, y, kTone); });
    row<float, Complex32f>("Goertz_32f", "plain", [](const float* s, int n, Complex32f* y) { plain::goertzel(s, n, y, kTone); });
    row<Complex32f, Complex32f>("Goertz_32fc", "tevs", [](const Complex32f* s, int n, Complex32f* y) { tevsGoertz_32fc(s, n, y, kTone); });
    row<Complex32f, Complex32f>("Goertz_32fc", "plain", [](const Complex32f* s, int n, Complex32f* y) { plain::goertzel(s, n, y, kTone); });
    row<Complex64f, Complex64f>("Goertz_64fc", "tevs", [](const Complex64f* s, int n, Complex64f* y) { tevsGoertz_64fc(s, n, y, kExactTones[0]); });
    row<Complex64f, Complex64f>("Goertz_64fc", "plain", [](const Complex64f* s, int n, Complex64f* y) { plain::goertzel(s, n, y, kExactTones[0]); });
    row<int16_t, Complex32f>("Goertz_16s_Sfs", "tevs",
                             [](const int16_t* s, int n, Complex32f* y) { tevsGoertz_16s_Sfs(s, n, reinterpret_cast<Complex16s*>(y), kTone, 7); });
    row<int16_t, Complex32f>("Goertz_16s_Sfs", "plain", [](const int16_t* s, int n, Complex32f* y) { plain::goertzel(s, n, y, kTone); });
    row<Complex16s, Complex16s>("Goertz_16sc_Sfs", "tevs", [](const Complex16s* s, int n, Complex16s* y) { tevsGoertz_16sc_Sfs(s, n, y, kTone, 7); });
    row<Complex16s, Complex32f>("Goertz_16sc_Sfs", "plain", [](const Complex16s* s, int n, Complex32f* y) { plain::goertzel(s, n, y, kTone); });
    row<Complex32f, Complex32f>("GoertzTwo_32fc", "tevs", [](const Complex32f* s, int n, Complex32f* y) { tevsGoertzTwo_32fc(s, n, y, kTones); });
    row<Complex32f, Complex32f>("GoertzTwo_32fc", "plain", [](const Complex32f* s, int n, Complex32f* y) {
        for (int i = 0; i < 2; ++i) plain::goertzel(s, n, y + i, kTones[i]);
    });
    row<Complex64f, Complex64f>("GoertzTwo_64fc", "tevs", [](const Complex64f* s, int n, Complex64f* y) { tevsGoertzTwo_64fc(s, n, y, kExactTones); });
    row<Complex64f, Complex64f>("GoertzTwo_64fc", "plain", [](const Complex64f* s, int n, Complex64f* y) {
        for (int i = 0; i < 2; ++i) plain::goertzel(s, n, y + i, kExactTones[i]);
    });
    row<Complex16s, Complex16s>("GoertzTwo_16sc_Sfs", "tevs", [](const Complex16s* s, int n, Complex16s* y) { tevsGoertzTwo_16sc_Sfs(s, n, y, kTones, 7); });
    row<Complex16s, Complex32f>("GoertzTwo_16sc_Sfs", "plain", [](const Complex16s* s, int n, Complex32f* y) {
        for (int i = 0; i < 2; ++i) plain::goertzel(s, n, y + i, kTones[i]);
    });
#if TEVS_PEER_SPANDSP
    row<int16_t, Complex32f>("Goertz_16s_Sfs", "SpanDSP", [](const int16_t* s, int n, Complex32f* y) {
        goertzel_descriptor_t tone;
        make_goertzel_descriptor(&tone, 770, n);
        goertzel_state_t state;
        goertzel_init(&state, &tone);
        goertzel_update(&state, s, n);
        y->re = float(goertzel_result(&state));
    });
#endif
    return true;
}();

}   // namespace
