// Reductions against plain loops and VOLK.
#include <cstdlib>
#include <memory>
#include <random>
#if TEVS_PEER_VOLK
#include <volk/volk.h>
#endif

#include "support/bench.h"
#include "vector/statistics_plain.h"

namespace {

// Aligned as the peers ask for.
template <class T> std::shared_ptr<T> data(int n) {
    std::mt19937 g(7);
    std::shared_ptr<T> v(static_cast<T*>(aligned_alloc(64, (size_t(n) * sizeof(T) + 63) / 64 * 64)), free);
    for (T* x = v.get(); x < v.get() + n; ++x) {
        if constexpr (std::is_integral_v<T>)
            *x = T(g());
        else if constexpr (std::is_floating_point_v<T>)
            *x = T(g() >> 8) * T(0x1p-20) + T(0.25);
        else
            *x = {decltype(x->re)(g() >> 17), decltype(x->im)(g() >> 17)};
    }
    return v;
}

// call(a, b, n) over vectors of A and of B; what it returns is used.
template <class A, class B = A, class Call> void add(const char* operation, const char* who, Call call) {
    bench::row(operation, who, bench::kSizes, [=](int n) {
        return [=, a = data<A>(n), b = data<B>(n)] {
            auto r = call(a.get(), b.get(), n);
            benchmark::DoNotOptimize(r);
        };
    });
}
// f(a, len, result) and f(a, b, len, result) as calls that return the result.
template <class T, class R> auto one(Status (*f)(const T*, int, R*)) {
    return [=](const T* a, const T*, int n) {
        R r;
        f(a, n, &r);
        return r;
    };
}
template <class A, class B, class R> auto two(Status (*f)(const A*, const B*, int, R*)) {
    return [=](const A* a, const B* b, int n) {
        R r;
        f(a, b, n, &r);
        return r;
    };
}
template <class T, class R> auto scaled(Status (*f)(const T*, int, R*, int)) {
    return [=](const T* a, const T*, int n) {
        R r;
        f(a, n, &r, 3);
        return r;
    };
}
template <class T, class R> auto plainOne(R (*f)(const T*, int)) {
    return [=](const T* a, const T*, int n) { return f(a, n); };
}
template <class T> auto indexed(Status (*f)(const T*, int, T*, int*)) {
    return [=](const T* a, const T*, int n) {
        T r;
        int i;
        f(a, n, &r, &i);
        return i;
    };
}

using F = const float*;
using S = const int16_t*;
using W = const int32_t*;

const bool registered = [] {
    add<float>("Sum_32f_Fast", "tevs", one(tevsSum_32f_Fast));
    add<float>("Sum_32f_Fast", "plain", plainOne<float, float>(plain::sum));
    add<float>("Sum_32f_Accur", "tevs", one(tevsSum_32f_Accur));
    add<float>("Sum_32f_Accur", "plain", plainOne<float, float>(plain::sumExtended));
    add<double>("Sum_64f", "tevs", one(tevsSum_64f));
    add<double>("Sum_64f", "plain", plainOne<double, double>(plain::sum));
    add<int16_t>("Sum_16s32s_Sfs", "tevs", scaled(tevsSum_16s32s_Sfs));
    add<int16_t>("Sum_16s32s_Sfs", "plain", plainOne<int16_t, int64_t>(plain::sum));
    add<int32_t>("Sum_32s_Sfs", "tevs", scaled(tevsSum_32s_Sfs));
    add<int32_t>("Sum_32s_Sfs", "plain", plainOne<int32_t, int64_t>(plain::sum));
    add<float>("StdDev_32f_Fast", "tevs", one(tevsStdDev_32f_Fast));
    add<float>("StdDev_32f_Fast", "plain", plainOne<float, float>(plain::deviation));
    add<float>("StdDev_32f_Accur", "tevs", one(tevsStdDev_32f_Accur));
    add<int16_t>("StdDev_16s_Sfs", "tevs", scaled(tevsStdDev_16s_Sfs));

    add<float>("Max_32f", "tevs", one(tevsMax_32f));
    add<float>("Max_32f", "plain", plainOne<float, float>(plain::max));
    add<int16_t>("Max_16s", "tevs", one(tevsMax_16s));
    add<int16_t>("Max_16s", "plain", plainOne<int16_t, int16_t>(plain::max));
    add<float>("MinMax_32f", "tevs", [](F a, F, int n) {
        Complex32f r;
        tevsMinMax_32f(a, n, &r.re, &r.im);
        return r;
    });
    add<float>("MinMax_32f", "plain", [](F a, F, int n) {
        Complex32f r;
        plain::minMax(a, n, &r.re, &r.im);
        return r;
    });
    add<float>("MaxIndx_32f", "tevs", indexed(tevsMaxIndx_32f));
    add<float>("MaxIndx_32f", "plain", plainOne<float, int>(plain::maxIndex));
    add<int16_t>("MaxIndx_16s", "tevs", indexed(tevsMaxIndx_16s));
    add<int16_t>("MaxIndx_16s", "plain", plainOne<int16_t, int>(plain::maxIndex));
    add<float>("MaxEvery_32f_I", "tevs", [](F a, float* b, int n) { return tevsMaxEvery_32f_I(a, b, n); });
    add<float>("MaxEvery_32f_I", "plain", [](F a, float* b, int n) {
        plain::maxEvery(a, b, n);
        return 0;
    });
    add<float>("MaxOrder_32f", "tevs", one(tevsMaxOrder_32f));
    add<float>("MaxOrder_32f", "plain", plainOne<float, int>(plain::order));

    add<float>("Norm_Inf_32f", "tevs", one(tevsNorm_Inf_32f));
    add<float>("Norm_Inf_32f", "plain", plainOne<float, float>(plain::largest));
    add<float>("Norm_L1_32f", "tevs", one(tevsNorm_L1_32f));
    add<float>("Norm_L1_32f", "plain", plainOne<float, double>(plain::sumAbs));
    add<int16_t>("Norm_L1_16s64s_Sfs", "tevs", scaled(tevsNorm_L1_16s64s_Sfs));
    add<int16_t>("Norm_L1_16s64s_Sfs", "plain", plainOne<int16_t, int64_t>(plain::sumAbs));
    add<Complex32f>("Norm_L1_32fc64f", "tevs", one(tevsNorm_L1_32fc64f));
    add<Complex32f>("Norm_L1_32fc64f", "plain", plainOne<Complex32f, double>(plain::sumAbs));
    add<float>("Norm_L2_32f", "tevs", one(tevsNorm_L2_32f));
    add<float>("Norm_L2_32f", "plain", plainOne<float, double>(plain::squares));
    add<int16_t>("Norm_L2_16s32f", "tevs", one(tevsNorm_L2_16s32f));
    add<int16_t>("Norm_L2_16s32f", "plain", plainOne<int16_t, int64_t>(plain::squares));
    add<int16_t>("NormDiff_L2_16s32f", "tevs", two(tevsNormDiff_L2_16s32f));
    add<int16_t>("NormDiff_L2_16s32f", "plain", [](S a, S b, int n) { return plain::squaresOfDifference(a, b, n); });

    add<float>("DotProd_32f", "tevs", two(tevsDotProd_32f));
    add<float>("DotProd_32f", "plain", [](F a, F b, int n) { return plain::dot(a, b, n); });
    add<double>("DotProd_64f", "tevs", two(tevsDotProd_64f));
    add<double>("DotProd_64f", "plain", [](const double* a, const double* b, int n) { return plain::dot(a, b, n); });
    add<Complex32f>("DotProd_32fc", "tevs", two(tevsDotProd_32fc));
    add<Complex32f>("DotProd_32fc", "plain", [](const Complex32f* a, const Complex32f* b, int n) { return plain::dot(a, b, n); });
    add<float, Complex32f>("DotProd_32f32fc", "tevs", two(tevsDotProd_32f32fc));
    add<float, Complex32f>("DotProd_32f32fc", "plain", [](F a, const Complex32f* b, int n) { return plain::dot(a, b, n); });
    add<int16_t>("DotProd_16s64s", "tevs", two(tevsDotProd_16s64s));
    add<int16_t>("DotProd_16s64s", "plain", [](S a, S b, int n) { return plain::dot(a, b, n); });
    add<Complex16s>("DotProd_16sc64sc", "tevs", two(tevsDotProd_16sc64sc));
    add<Complex16s>("DotProd_16sc64sc", "plain", [](const Complex16s* a, const Complex16s* b, int n) { return plain::dot(a, b, n); });
    add<int32_t>("DotProd_32s_Sfs", "tevs", [](W a, W b, int n) {
        int32_t r;
        tevsDotProd_32s_Sfs(a, b, n, &r, 40);
        return r;
    });
    add<int32_t>("DotProd_32s_Sfs", "plain", [](W a, W b, int n) { return plain::dot(a, b, n); });   // wraps where the sum needs more than 64 bits

    add<int32_t>("CountInRange_32s", "tevs", [](W a, W, int n) {
        int r;
        tevsCountInRange_32s(a, n, &r, -1000000000, 1000000000);
        return r;
    });
    add<int32_t>("CountInRange_32s", "plain", [](W a, W, int n) { return plain::count(a, n, -1000000000, 1000000000); });
    add<float>("SumLn_32f", "tevs", one(tevsSumLn_32f));
    add<float>("SumLn_32f", "plain", plainOne<float, double>(plain::sumLn));

    for (const char* operation :
         {"Sum_32f_Fast", "Max_32f", "MinMax_32f", "MaxIndx_32f", "Norm_Inf_32f", "Norm_L1_32f", "Norm_L2_32f", "Sum_32s_Sfs", "CountInRange_32s"})
        bench::limit<4, 0>(operation);
    for (const char* operation : {"Sum_16s32s_Sfs", "Max_16s", "MaxIndx_16s", "Norm_L1_16s64s_Sfs", "Norm_L2_16s32f"}) bench::limit<2, 0>(operation);
    for (const char* operation : {"DotProd_32f", "Sum_64f", "DotProd_32s_Sfs"}) bench::limit<8, 0>(operation);
    for (const char* operation : {"DotProd_16s64s", "NormDiff_L2_16s32f"}) bench::limit<4, 0>(operation);
    for (const char* operation : {"DotProd_32fc", "DotProd_64f"}) bench::limit<16, 0>(operation);
#if TEVS_PEER_VOLK
    add<float>("Sum_32f_Fast", "VOLK", [](F a, F, int n) {
        float r;
        volk_32f_accumulator_s32f(&r, a, unsigned(n));
        return r;
    });
    add<float>("StdDev_32f_Fast", "VOLK", [](F a, F, int n) {
        float r, mean;
        volk_32f_stddev_and_mean_32f_x2(&r, &mean, a, unsigned(n));
        return r;
    });
    add<float>("MaxIndx_32f", "VOLK", [](F a, F, int n) {
        uint32_t r;
        volk_32f_index_max_32u(&r, a, unsigned(n));
        return r;
    });
    add<float>("MaxEvery_32f_I", "VOLK", [](F a, float* b, int n) {
        volk_32f_x2_max_32f(b, a, b, unsigned(n));
        return 0;
    });
    add<float>("DotProd_32f", "VOLK", [](F a, F b, int n) {
        float r;
        volk_32f_x2_dot_prod_32f(&r, a, b, unsigned(n));
        return r;
    });
    add<Complex32f>("DotProd_32fc", "VOLK", [](const Complex32f* a, const Complex32f* b, int n) {
        lv_32fc_t r;
        volk_32fc_x2_dot_prod_32fc(&r, reinterpret_cast<const lv_32fc_t*>(a), reinterpret_cast<const lv_32fc_t*>(b), unsigned(n));
        return r;
    });
    add<float, Complex32f>("DotProd_32f32fc", "VOLK", [](F a, const Complex32f* b, int n) {
        lv_32fc_t r;
        volk_32fc_32f_dot_prod_32fc(&r, reinterpret_cast<const lv_32fc_t*>(b), a, unsigned(n));
        return r;
    });
#endif
    return true;
}();

}   // namespace
