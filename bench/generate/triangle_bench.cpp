// Triangle waves against plain loops.
#include "generate/triangle_plain.h"
#include "support/bench.h"
#include "tevs.h"

namespace {

template <class T, class F> void row(const char* operation, const char* who, F f) {
    bench::row(operation, who, bench::kSizes, [=](int n) { return [=, dst = std::vector<T>(static_cast<size_t>(n))]() mutable { f(dst.data(), n); }; });
}
template <class T> void triangle(const char* operation, Status (*f)(T*, int, float, float, float, float*)) {
    row<T>(operation, "tevs", [=, phase = 1.0f](T* d, int n) mutable { f(d, n, 100, 0.05f, 0, &phase); });
    if constexpr (std::is_arithmetic_v<T>) row<T>(operation, "plain", [](T* d, int n) { plain::triangle(d, n, 100, 0.05, 1); });
}

const bool registered = [] {
    triangle("Triangle_Direct_16s", tevsTriangle_Direct_16s);
    triangle("Triangle_Direct_32f", tevsTriangle_Direct_32f);
    triangle("Triangle_Direct_64f", tevsTriangle_Direct_64f);
    triangle("Triangle_Direct_32fc", tevsTriangle_Direct_32fc);
    return true;
}();

}   // namespace
