#include "support/bench.h"
#include "tevs.h"
#include "vector/arithmetic_plain.h"

#if TEVS_PEER_VOLK
#include <volk/volk.h>
#endif

namespace {

const std::vector<int64_t> kSizes = {8, 16, 64, 1024, 16384, 1 << 22};

// Operands of middling size, none of them zero.
template <class T> T value(int i) {
    if constexpr (requires(T z) { z.re; })
        return {value<decltype(T::re)>(i), value<decltype(T::im)>(i + 7)};
    else
        return static_cast<T>(static_cast<T>(i % 101 + 3) * static_cast<T>(sizeof(T) == 1 ? 1 : 19));
}
template <class T> std::vector<T> values(int n, int from) {
    std::vector<T> v(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) v[static_cast<size_t>(i)] = value<T>(i + from);
    return v;
}

// A row of f(a, b, dst, len).
template <class T, class F> void row(const std::string& operation, const char* who, F f) {
    bench::row(operation, who, kSizes, [=](int n) {
        return [=, a = values<T>(n, 0), b = values<T>(n, 31), dst = std::vector<T>(static_cast<size_t>(n))]() mutable { f(a.data(), b.data(), dst.data(), n); };
    });
}
template <class T, class F, class P> void pair(const std::string& operation, F ours, P plain) {
    row<T>(operation, "tevs", ours);
    row<T>(operation, "plain", plain);
    bench::limit<2 * sizeof(T), sizeof(T)>(operation);
}
// At scale 0, at 1, to the right, to the left.
template <class T, class F, class P> void scales(const std::string& operation, F ours, P plain, int right) {
    for (int s : {0, 1, right, -3})
        pair<T>(
            operation + ":" + std::to_string(s), [=](auto... a) { ours(a..., s); }, [=](auto... a) { plain(a..., s); });
}

const bool registered = [] {
    using namespace plain;
    pair<float>("Add_32f", tevsAdd_32f, binary<float, Sum>);
    pair<float>("Mul_32f", tevsMul_32f, binary<float, Product>);
    pair<float>("Div_32f", tevsDiv_32f, binary<float, Quotient>);
    pair<float>("AddProduct_32f", tevsAddProduct_32f, addProduct<float>);
    pair<double>("Add_64f", tevsAdd_64f, binary<double, Sum>);
    pair<double>("Div_64f", tevsDiv_64f, binary<double, Quotient>);
    pair<Complex32f>("Mul_32fc", tevsMul_32fc, static_cast<void (*)(const Complex32f*, const Complex32f*, Complex32f*, int)>(complexProduct<Complex32f>));
    pair<Complex64f>("Mul_64fc", tevsMul_64fc, static_cast<void (*)(const Complex64f*, const Complex64f*, Complex64f*, int)>(complexProduct<Complex64f>));
    pair<Complex32f>("Div_32fc", tevsDiv_32fc, complexQuotient<Complex32f>);
    scales<uint8_t>("Add_8u_Sfs", tevsAdd_8u_Sfs, scaled<uint8_t, int, Sum>, 3);
    scales<int16_t>("Add_16s_Sfs", tevsAdd_16s_Sfs, scaled<int16_t, int, Sum>, 5);
    scales<int32_t>("Add_32s_Sfs", tevsAdd_32s_Sfs, scaled<int32_t, int64_t, Sum>, 5);
    scales<uint8_t>("Mul_8u_Sfs", tevsMul_8u_Sfs, scaled<uint8_t, int, Product>, 7);
    scales<int16_t>("Mul_16s_Sfs", tevsMul_16s_Sfs, scaled<int16_t, int, Product>, 15);
    scales<int32_t>("Mul_32s_Sfs", tevsMul_32s_Sfs, scaled<int32_t, int64_t, Product>, 31);
    pair<Complex16s>(
        "Mul_16sc_Sfs:15", [](auto... a) { tevsMul_16sc_Sfs(a..., 15); }, [](auto... a) { complexProduct<Complex16s, int64_t>(a..., 15); });
    pair<Complex32s>(
        "Mul_32sc_Sfs:31", [](auto... a) { tevsMul_32sc_Sfs(a..., 31); }, [](auto... a) { complexProduct<Complex32s, int64_t>(a..., 31); });
    pair<uint8_t>(
        "Div_8u_Sfs:0", [](auto... a) { tevsDiv_8u_Sfs(a..., 0); }, [](auto... a) { divide<uint8_t, float>(a..., 0); });
    pair<int16_t>(
        "Div_16s_Sfs:0", [](auto... a) { tevsDiv_16s_Sfs(a..., 0); }, [](auto... a) { divide<int16_t, float>(a..., 0); });
    pair<int32_t>(
        "Div_32s_Sfs:0", [](auto... a) { tevsDiv_32s_Sfs(a..., 0); }, [](auto... a) { divide<int32_t, double>(a..., 0); });
    row<int16_t>("Abs_16s", "tevs", [](auto* a, auto*, auto* d, int n) { tevsAbs_16s(a, d, n); });
    row<int16_t>("Abs_16s", "plain", [](auto* a, auto*, auto* d, int n) { plain::abs(a, d, n); });
    bench::limit<2, 2>("Abs_16s");
#if TEVS_PEER_VOLK
    row<float>("Add_32f", "VOLK", [](auto* a, auto* b, auto* d, int n) { volk_32f_x2_add_32f(d, a, b, unsigned(n)); });
    row<float>("Mul_32f", "VOLK", [](auto* a, auto* b, auto* d, int n) { volk_32f_x2_multiply_32f(d, a, b, unsigned(n)); });
    row<float>("Div_32f", "VOLK", [](auto* a, auto* b, auto* d, int n) { volk_32f_x2_divide_32f(d, b, a, unsigned(n)); });
    row<double>("Add_64f", "VOLK", [](auto* a, auto* b, auto* d, int n) { volk_64f_x2_add_64f(d, a, b, unsigned(n)); });
    row<Complex32f>("Mul_32fc", "VOLK", [](auto* a, auto* b, auto* d, int n) {
        volk_32fc_x2_multiply_32fc(reinterpret_cast<lv_32fc_t*>(d), reinterpret_cast<const lv_32fc_t*>(a), reinterpret_cast<const lv_32fc_t*>(b), unsigned(n));
    });
    row<Complex32f>("Div_32fc", "VOLK", [](auto* a, auto* b, auto* d, int n) {
        volk_32fc_x2_divide_32fc(reinterpret_cast<lv_32fc_t*>(d), reinterpret_cast<const lv_32fc_t*>(b), reinterpret_cast<const lv_32fc_t*>(a), unsigned(n));
    });
    row<Complex16s>("Mul_16sc_Sfs:15", "VOLK (unscaled)", [](auto* a, auto* b, auto* d, int n) {
        volk_16ic_x2_multiply_16ic(reinterpret_cast<lv_16sc_t*>(d), reinterpret_cast<const lv_16sc_t*>(a), reinterpret_cast<const lv_16sc_t*>(b), unsigned(n));
    });
#endif
    return true;
}();

}   // namespace
