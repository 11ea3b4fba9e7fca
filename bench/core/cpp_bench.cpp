// Calls by way of tevs.hpp beside the C calls that they make.
#include "support/bench.h"
#include "tevs.hpp"

namespace {

template <class F> void row(const char* operation, const char* who, F f) {
    bench::row(operation, who, {8, 64, 1024}, [=](int n) {
        const auto length = static_cast<size_t>(n);
        return [=, a = std::vector<float>(length, 2), b = std::vector<float>(length, 3), dst = std::vector<float>(length)]() mutable { f(a, b, dst); };
    });
}
using Floats = std::vector<float>;

const bool registered = [] {
    row("hpp_add", "tevs", [](const Floats& a, const Floats& b, Floats& dst) { benchmark::DoNotOptimize(tevs::add(a, b, dst)); });
    row("hpp_add", "C",
        [](const Floats& a, const Floats& b, Floats& dst) { benchmark::DoNotOptimize(tevsAdd_32f(a.data(), b.data(), dst.data(), int(dst.size()))); });
    row("hpp_mean", "tevs", [](const Floats& a, const Floats&, Floats&) { benchmark::DoNotOptimize(tevs::mean(a, HintNone)); });
    row("hpp_mean", "C", [](const Floats& a, const Floats&, Floats&) {
        float mean;
        tevsMean_32f(a.data(), int(a.size()), &mean, HintNone);
        benchmark::DoNotOptimize(mean);
    });
    return true;
}();

}   // namespace
