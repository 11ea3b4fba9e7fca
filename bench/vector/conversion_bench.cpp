// Conversions against plain loops and VOLK.
#include "support/bench.h"
#include "tevs.h"
#include "vector/conversion_plain.h"

#if TEVS_PEER_VOLK
#include <volk/volk.h>
#endif

namespace {

// A row of a call f(src, dst, len), on values that do not saturate.
template <class S, class D, class F> void row(const char* operation, const char* who, F f) {
    bench::row(operation, who, bench::kSizes, [=](int n) {
        std::vector<S> src(static_cast<size_t>(n));
        for (int i = 0; i < n; ++i) {
            if constexpr (std::is_arithmetic_v<S>)
                src[static_cast<size_t>(i)] = static_cast<S>(i % 20011 - 10000);
            else
                std::memset(static_cast<void*>(&src[static_cast<size_t>(i)]), i % 120, sizeof(S));
        }
        return [=, src = std::move(src), dst = std::vector<D>(static_cast<size_t>(n))]() mutable { f(src.data(), dst.data(), n); };
    });
}

// The library's row, the plain loop's and the limit's.
template <class S, class D, class F, class P> void rows(const char* operation, F f, P plain) {
    row<S, D>(operation, "tevs", f);
    row<S, D>(operation, "plain", plain);
    bench::limit<sizeof(S), sizeof(D)>(operation);
}
template <class S, class D> void unscaled(const char* operation, Status (*f)(const S*, D*, int)) {
    rows<S, D>(operation, f, [](const S* s, D* d, int n) { plain::convert(s, d, n); });
}
template <class S, class D> void narrowed(const char* operation, Status (*f)(const S*, D*, int, int)) {
    rows<S, D>(
        operation, [=](const S* s, D* d, int n) { f(s, d, n, 5); }, [](const S* s, D* d, int n) { plain::narrow(s, d, n, 5); });
}
template <class S, class D> void rounded(const char* operation, Status (*f)(const S*, D*, int, int, int)) {
    rows<S, D>(
        operation, [=](const S* s, D* d, int n) { f(s, d, n, RoundNearest, 1); }, [](const S* s, D* d, int n) { plain::round(s, d, n, S(0.5)); });
}

// Frames of `channels` samples; the sizes count samples of all channels.
void channels(int count) {
    const std::string join = "JoinScaled_32f16s_D2L_" + std::to_string(count), split = "SplitScaled_16s32f_D2L_" + std::to_string(count);
    const auto add = [=](const std::string& operation, const char* who, auto f) {
        bench::row(operation, who, {1024, 16384}, [=](int n) {
            const int len = n / count;
            std::vector<std::vector<float>> data(size_t(count), std::vector<float>(size_t(len), 0.25f));
            std::vector<float*> pointers;
            for (auto& v : data) pointers.push_back(v.data());
            return [=, data = std::move(data), frames = std::vector<int16_t>(size_t(len * count))]() mutable { f(pointers.data(), count, len, frames.data()); };
        });
    };
    add(join, "tevs", [](float** c, int k, int n, int16_t* d) { tevsJoinScaled_32f16s_D2L(c, k, n, d); });
    add(join, "plain", [](float** c, int k, int n, int16_t* d) { plain::join(c, k, n, d, 32768.0f); });
    add(split, "tevs", [](float** c, int k, int n, int16_t* s) { tevsSplitScaled_16s32f_D2L(s, c, k, n); });
    add(split, "plain", [](float** c, int k, int n, int16_t* s) { plain::split(s, c, k, n, 0x1p-15f); });
}

using plain::Packed24;

const bool registered = [] {
    unscaled("Convert_8s16s", tevsConvert_8s16s);
    unscaled("Convert_16s32s", tevsConvert_16s32s);
    unscaled("Convert_32s64f", tevsConvert_32s64f);
    unscaled("Convert_32f64f", tevsConvert_32f64f);
    unscaled("Convert_8s32f", tevsConvert_8s32f);
    unscaled("Convert_8u32f", tevsConvert_8u32f);
    unscaled("Convert_16s32f", tevsConvert_16s32f);
    unscaled("Convert_16u32f", tevsConvert_16u32f);
    unscaled("Convert_32s32f", tevsConvert_32s32f);
    unscaled("Convert_64f32f", tevsConvert_64f32f);
    narrowed("Convert_32s16s_Sfs", tevsConvert_32s16s_Sfs);
    narrowed("Convert_64s32s_Sfs", tevsConvert_64s32s_Sfs);
    rounded("Convert_32f8s_Sfs", tevsConvert_32f8s_Sfs);
    rounded("Convert_32f8u_Sfs", tevsConvert_32f8u_Sfs);
    rounded("Convert_32f16s_Sfs", tevsConvert_32f16s_Sfs);
    rounded("Convert_32f16u_Sfs", tevsConvert_32f16u_Sfs);
    rounded("Convert_32f32s_Sfs", tevsConvert_32f32s_Sfs);
    rounded("Convert_64f32s_Sfs", tevsConvert_64f32s_Sfs);
    rows<Packed24, int32_t>(
        "Convert_24s32s", [](const Packed24* s, int32_t* d, int n) { tevsConvert_24s32s(s->bytes, d, n); },
        [](const Packed24* s, int32_t* d, int n) { plain::unpack(s, d, n); });
    rows<Packed24, float>(
        "Convert_24s32f", [](const Packed24* s, float* d, int n) { tevsConvert_24s32f(s->bytes, d, n); },
        [](const Packed24* s, float* d, int n) { plain::unpack(s, d, n); });
    rows<int32_t, Packed24>(
        "Convert_32s24s_Sfs", [](const int32_t* s, Packed24* d, int n) { tevsConvert_32s24s_Sfs(s, d->bytes, n, 5); },
        [](const int32_t* s, Packed24* d, int n) { plain::pack(s, d, n, 5); });
    rows<float, Packed24>(
        "Convert_32f24s_Sfs", [](const float* s, Packed24* d, int n) { tevsConvert_32f24s_Sfs(s, d->bytes, n, 1); },
        [](const float* s, Packed24* d, int n) { plain::pack(s, d, n, 0.5f); });
    row<uint16_t, float>("Convert_16f32f", "tevs", tevsConvert_16f32f);
    bench::limit<2, 4>("Convert_16f32f");
    row<float, uint16_t>("Convert_32f16f", "tevs", [](const float* s, uint16_t* d, int n) { tevsConvert_32f16f(s, d, n, RoundNearest); });
    bench::limit<4, 2>("Convert_32f16f");
    row<uint16_t, int16_t>("Convert_16f16s_Sfs", "tevs", [](const uint16_t* s, int16_t* d, int n) { tevsConvert_16f16s_Sfs(s, d, n, RoundNearest, 1); });
    bench::limit<2, 2>("Convert_16f16s_Sfs");
    for (int count : {2, 4, 6}) channels(count);
#if TEVS_PEER_VOLK
    row<int8_t, int16_t>("Convert_8s16s", "VOLK", [](const int8_t* s, int16_t* d, int n) { volk_8i_convert_16i(d, s, unsigned(n)); });
    row<int8_t, float>("Convert_8s32f", "VOLK", [](const int8_t* s, float* d, int n) { volk_8i_s32f_convert_32f(d, s, 1.0f, unsigned(n)); });
    row<int16_t, float>("Convert_16s32f", "VOLK", [](const int16_t* s, float* d, int n) { volk_16i_s32f_convert_32f(d, s, 1.0f, unsigned(n)); });
    row<int32_t, float>("Convert_32s32f", "VOLK", [](const int32_t* s, float* d, int n) { volk_32i_s32f_convert_32f(d, s, 1.0f, unsigned(n)); });
    row<float, double>("Convert_32f64f", "VOLK", [](const float* s, double* d, int n) { volk_32f_convert_64f(d, s, unsigned(n)); });
    row<double, float>("Convert_64f32f", "VOLK", [](const double* s, float* d, int n) { volk_64f_convert_32f(d, s, unsigned(n)); });
    row<float, int8_t>("Convert_32f8s_Sfs", "VOLK", [](const float* s, int8_t* d, int n) { volk_32f_s32f_convert_8i(d, s, 0.5f, unsigned(n)); });
    row<float, int16_t>("Convert_32f16s_Sfs", "VOLK", [](const float* s, int16_t* d, int n) { volk_32f_s32f_convert_16i(d, s, 0.5f, unsigned(n)); });
    row<float, int32_t>("Convert_32f32s_Sfs", "VOLK", [](const float* s, int32_t* d, int n) { volk_32f_s32f_convert_32i(d, s, 0.5f, unsigned(n)); });
#endif
    return true;
}();

}   // namespace
