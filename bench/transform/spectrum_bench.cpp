// Products and expansions of packed spectra against plain loops, per real of the spectrum, or per value of the whole spectrum.
#include "support/bench.h"
#include "tevs.h"
#include "transform/spectrum_plain.h"

#if TEVS_PEER_VOLK
#include <volk/volk.h>
#endif

namespace {

const std::vector<int64_t> kSizes = {8, 64, 1024, 16384, 1 << 20};

// Products of them stay in the range however often they are multiplied in place.
template <class T> std::vector<T> values(int n) {
    std::vector<T> v(size_t(n), T(1));
    for (int i = 0; i < n; i += 2) v[size_t(i)] = T(sizeof(T) == 2 ? 181 * (i % 100) : 0);
    return v;
}

template <class T, class F> void product(const std::string& operation, const char* who, F f) {
    bench::row(operation, who, kSizes,
               [=](int n) { return [=, a = values<T>(n), b = values<T>(n), dst = values<T>(n)]() mutable { f(a.data(), b.data(), dst.data(), n); }; });
}
template <class T, class F, class P> void products(const std::string& operation, F ours, P plain) {
    product<T>(operation, "tevs", ours);
    product<T>(operation, "plain", plain);
    bench::limit<2 * sizeof(T), sizeof(T)>(operation);
}

template <class T, class C, class F> void expansion(const std::string& operation, const char* who, F f) {
    bench::row(operation, who, kSizes,
               [=](int n) { return [=, src = values<T>(n + 2), dst = std::vector<C>(size_t(n))]() mutable { f(src.data(), dst.data(), n); }; });
}
template <class T, class C, class F, class P> void expansions(const std::string& operation, F ours, P plain) {
    expansion<T, C>(operation, "tevs", ours);
    expansion<T, C>(operation, "plain", plain);
    bench::limit<sizeof(T), sizeof(C)>(operation);
}

#if TEVS_PEER_VOLK
lv_32fc_t* pairs(float* p) { return reinterpret_cast<lv_32fc_t*>(p + 1); }
#endif

const bool registered = [] {
    products<float>("MulPack_32f", tevsMulPack_32f, plain::mulPack<float>);
    products<double>("MulPack_64f", tevsMulPack_64f, plain::mulPack<double>);
    products<int16_t>(
        "MulPack_16s_Sfs:15", [](auto... a) { tevsMulPack_16s_Sfs(a..., 15); }, [](auto... a) { plain::mulPack16s(a..., 15); });
    products<float>("MulPerm_32f", tevsMulPerm_32f, plain::mulPack<float>);
    products<float>(
        "MulPackConj_32f_I", [](auto* a, auto*, auto* d, int n) { tevsMulPackConj_32f_I(a, d, n); },
        [](auto* a, auto*, auto* d, int n) { plain::mulPackConj(a, d, n); });
    products<double>(
        "MulPackConj_64f_I", [](auto* a, auto*, auto* d, int n) { tevsMulPackConj_64f_I(a, d, n); },
        [](auto* a, auto*, auto* d, int n) { plain::mulPackConj(a, d, n); });
    expansions<int16_t, Complex16s>("ConjPack_16sc", tevsConjPack_16sc, plain::conjPack<int16_t, Complex16s>);
    expansions<float, Complex32f>("ConjPack_32fc", tevsConjPack_32fc, plain::conjPack<float, Complex32f>);
    expansions<double, Complex64f>("ConjPack_64fc", tevsConjPack_64fc, plain::conjPack<double, Complex64f>);
    expansions<float, Complex32f>("ConjCcs_32fc", tevsConjCcs_32fc, plain::conjCcs<float, Complex32f>);
#if TEVS_PEER_VOLK
    product<float>("MulPack_32f", "VOLK", [](auto* a, auto* b, auto* d, int n) {
        volk_32fc_x2_multiply_32fc(pairs(d), pairs(a), pairs(b), unsigned(n / 2 - 1));
        d[0] = a[0] * b[0];
        d[n - 1] = a[n - 1] * b[n - 1];
    });
    product<float>("MulPackConj_32f_I", "VOLK", [](auto* a, auto*, auto* d, int n) {
        volk_32fc_x2_multiply_conjugate_32fc(pairs(d), pairs(d), pairs(a), unsigned(n / 2 - 1));
        d[0] *= a[0];
        d[n - 1] *= a[n - 1];
    });
#endif
    return true;
}();

}   // namespace
