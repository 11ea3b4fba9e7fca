#include "support/bench.h"
#include "tevs.h"
#include "vector/conversion_plain.h"

#if TEVS_PEER_VOLK
#include <volk/volk.h>
#endif

namespace {

// A row of a call f(src, dst, len) on values that no conversion saturates.
template <class S, class D, class F> void row(const char* operation, const char* who, F f) {
    bench::row(operation, who, bench::kSizes, [=](int n) {
        std::vector<S> src(static_cast<size_t>(n));
        for (int i = 0; i < n; ++i) src[static_cast<size_t>(i)] = static_cast<S>(i % 20011 - 10000);
        return [=, src = std::move(src), dst = std::vector<D>(static_cast<size_t>(n))]() mutable { f(src.data(), dst.data(), n); };
    });
}

const bool registered = [] {
    constexpr auto plain = [](const auto* src, auto* dst, int len) { plain::convert(src, dst, len); };
    row<int16_t, float>("Convert_16s32f", "tevs", tevsConvert_16s32f);
    row<int16_t, float>("Convert_16s32f", "plain", plain);
    row<float, double>("Convert_32f64f", "tevs", tevsConvert_32f64f);
    row<float, double>("Convert_32f64f", "plain", plain);
    row<double, float>("Convert_64f32f", "tevs", tevsConvert_64f32f);
    row<double, float>("Convert_64f32f", "plain", plain);
    row<float, int16_t>("Convert_32f16s_Sfs", "tevs", [](const float* src, int16_t* dst, int len) { tevsConvert_32f16s_Sfs(src, dst, len, RoundNearest, 1); });
    row<float, int16_t>("Convert_32f16s_Sfs", "plain", [](const float* src, int16_t* dst, int len) { plain::convertScaled(src, dst, len, 0.5f); });
#if TEVS_PEER_VOLK
    row<int16_t, float>("Convert_16s32f", "VOLK", [](const int16_t* src, float* dst, int len) { volk_16i_s32f_convert_32f(dst, src, 1.0f, unsigned(len)); });
    row<float, int16_t>("Convert_32f16s_Sfs", "VOLK",
                        [](const float* src, int16_t* dst, int len) { volk_32f_s32f_convert_16i(dst, src, 0.5f, unsigned(len)); });
    row<float, double>("Convert_32f64f", "VOLK", [](const float* src, double* dst, int len) { volk_32f_convert_64f(dst, src, unsigned(len)); });
    row<double, float>("Convert_64f32f", "VOLK", [](const double* src, float* dst, int len) { volk_64f_convert_32f(dst, src, unsigned(len)); });
#endif
    bench::limit<2, 4>("Convert_16s32f");
    bench::limit<4, 8>("Convert_32f64f");
    bench::limit<8, 4>("Convert_64f32f");
    bench::limit<4, 2>("Convert_32f16s_Sfs");
    return true;
}();

}   // namespace
