// Sample-rate change without a filter, per sample of the longer side: against a loop, and `limit`, what loading the inputs and storing the outputs takes.
#include "filter/sample_plain.h"
#include "support/bench.h"
#include "tevs.h"

namespace {

const std::vector<int64_t> kSizes = {192, 3072, 1 << 20};

// As bench::touch, of as many bytes on each side as there are.
TEVS_WIDEST void touch(const char* src, ptrdiff_t reads, char* dst, ptrdiff_t writes) {
    typedef char Widest __attribute__((vector_size(bench::kWidest)));
    const Widest zero = {};
    constexpr ptrdiff_t kStep = 4 * bench::kWidest;
    for (ptrdiff_t i = 0; i + kStep <= reads; i += kStep)
#pragma GCC unroll 4
        for (ptrdiff_t k = i; k < i + kStep; k += bench::kWidest) {
            Widest v;
            std::memcpy(&v, src + k, sizeof v);
            asm volatile("" : : "x"(v));
        }
    for (ptrdiff_t i = 0; i + kStep <= writes; i += kStep)
#pragma GCC unroll 4
        for (ptrdiff_t k = i; k < i + kStep; k += bench::kWidest) std::memcpy(dst + k, &zero, sizeof zero);
}

template <class T> void rows(const std::string& types, Status (*up)(const T*, int, T*, int*, int, int*), Status (*down)(const T*, int, T*, int*, int, int*)) {
    for (int factor : {2, 3, 4, 6, 12, 48}) {
        const auto with = [=](auto f) {
            return [=](int n) { return [=, x = std::vector<T>(size_t(n)), y = std::vector<T>(size_t(n))]() mutable { f(x.data(), y.data(), n); }; };
        };
        const auto upName = "SampleUp_" + types + "_by_" + std::to_string(factor), downName = "SampleDown_" + types + "_by_" + std::to_string(factor);
        bench::row(upName, "tevs", kSizes, with([=](const T* x, T* y, int n) {
                       int len, phase = 1;
                       up(x, n / factor, y, &len, factor, &phase);
                   }));
        bench::row(upName, "plain", kSizes, with([=](const T* x, T* y, int n) { plain::sampleUp(x, y, n / factor, factor, 1); }));
        const auto bytes = [=](int n) { return ptrdiff_t{n} * ptrdiff_t(sizeof(T)); };
        const auto chars = [](auto* p) { return (char*)p; };
        bench::row(upName, "limit", kSizes, with([=](const T* x, T* y, int n) { touch(chars(x), bytes(n) / factor, chars(y), bytes(n)); }));
        bench::row(downName, "tevs", kSizes, with([=](const T* x, T* y, int n) {
                       int len, phase = 1;
                       down(x, n, y, &len, factor, &phase);
                   }));
        bench::row(downName, "plain", kSizes, with([=](const T* x, T* y, int n) { plain::sampleDown(x + 1, y, n / factor, factor); }));
        bench::row(downName, "limit", kSizes, with([=](const T* x, T* y, int n) { touch(chars(x), bytes(n), chars(y), bytes(n) / factor); }));
    }
}

[[maybe_unused]] const bool registered = [] {
    rows<int16_t>("16s", tevsSampleUp_16s, tevsSampleDown_16s);
    rows<float>("32f", tevsSampleUp_32f, tevsSampleDown_32f);
    rows<double>("64f", tevsSampleUp_64f, tevsSampleDown_64f);
    rows<Complex64f>("64fc", tevsSampleUp_64fc, tevsSampleDown_64fc);
    return true;
}();

}   // namespace
