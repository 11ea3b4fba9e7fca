// Sample-rate change without a filter, per sample of the longer side: against a loop, and `limit`, what loading the inputs and storing the outputs takes where every
// vector of inputs has one that is wanted.
#include "filter/sample_plain.h"
#include "support/bench.h"
#include "tevs.h"

namespace {

const std::vector<int64_t> kSizes = {192, 3072, 1 << 20};

// Up: a vector loaded and `factor` of them stored, by turns; down: the other way round. The store is of what the compiler does not know to be zeros, lest it call memset.
template <bool Up> TEVS_WIDEST void touch(const char* src, char* dst, ptrdiff_t turns, int factor) {
    typedef char Widest __attribute__((vector_size(bench::kWidest)));
    Widest v = {};
    asm volatile("" : "+x"(v));
    for (; turns > 0; --turns) {
        for (int r = 0; r < (Up ? 1 : factor); ++r, src += bench::kWidest) {
            Widest x;
            std::memcpy(&x, src, sizeof x);
            asm volatile("" : : "x"(x));
        }
        for (int r = 0; r < (Up ? factor : 1); ++r, dst += bench::kWidest) std::memcpy(dst, &v, sizeof v);
    }
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
        // Of whole turns, which the shortest of the sizes is not.
        const auto limit = [=](const std::string& name, auto touches) {
            bench::row(name, "limit", {3072, 1 << 20}, with([=](const T* x, T* y, int n) {
                           touches((const char*)x, (char*)y, ptrdiff_t{n} * ptrdiff_t(sizeof(T)) / bench::kWidest / factor, factor);
                       }));
        };
        limit(upName, touch<true>);
        bench::row(downName, "tevs", kSizes, with([=](const T* x, T* y, int n) {
                       int len, phase = 1;
                       down(x, n, y, &len, factor, &phase);
                   }));
        bench::row(downName, "plain", kSizes, with([=](const T* x, T* y, int n) { plain::sampleDown(x + 1, y, n / factor, factor); }));
        if (factor * int(sizeof(T)) <= bench::kWidest) limit(downName, touch<false>);
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
