// Ramps and chirps against plain loops.
#include "generate/testvector_plain.h"
#include "support/bench.h"
#include "tevs.h"

namespace {

template <class T, class F> void row(const char* operation, const char* who, F f) {
    bench::row(operation, who, bench::kSizes, [=](int n) { return [=, dst = std::vector<T>(static_cast<size_t>(n))]() mutable { f(dst.data(), n); }; });
}
template <class T> void ramp(const char* operation, Status (*f)(T*, int, float, float)) {
    row<T>(operation, "tevs", [=](T* d, int n) { f(d, n, 3, 0.01f); });
    row<T>(operation, "plain", [](T* d, int n) { plain::ramp(d, n, 3, 0.01f); });
    bench::limit<0, sizeof(T)>(operation);
}
template <class T> void jaehne(const char* operation, Status (*f)(T*, int, T)) {
    row<T>(operation, "tevs", [=](T* d, int n) { f(d, n, 100); });
    if constexpr (!std::is_unsigned_v<T>) row<T>(operation, "plain", [](T* d, int n) { plain::jaehne(d, n, 100); });
}

const bool registered = [] {
    ramp("VectorRamp_8u", tevsVectorRamp_8u);
    ramp("VectorRamp_16s", tevsVectorRamp_16s);
    ramp("VectorRamp_32s", tevsVectorRamp_32s);
    ramp("VectorRamp_32f", tevsVectorRamp_32f);
    jaehne("VectorJaehne_8u", tevsVectorJaehne_8u);
    jaehne("VectorJaehne_16s", tevsVectorJaehne_16s);
    jaehne("VectorJaehne_32f", tevsVectorJaehne_32f);
    jaehne("VectorJaehne_64f", tevsVectorJaehne_64f);
    return true;
}();

}   // namespace
