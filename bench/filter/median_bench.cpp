// Median filters, per sample: against a loop over minima and maxima (mask 3), a selection for each sample, and a sorted window that is kept up.
#include "filter/median_plain.h"
#include "support/bench.h"
#include "tevs.h"

namespace {

template <class T> std::vector<T> noise(size_t n, double most) {
    std::vector<T> v(n);
    uint64_t state = 1;
    for (T& x : v) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        x = T((double(state >> 40) / (1 << 23) - 1) * most);
    }
    return v;
}

constexpr int kLen = 4096;
const std::vector<int64_t> kSizes = {64, kLen, 1 << 20};

template <class T> void rows(const std::string& types, double most, Status (*filter)(const T*, T*, int, int)) {
    for (int mask : {3, 5, 7, 9, 11, 21, 31, 45, 63, 127, 255, 1023, 2045, 2047, 20001}) {
        const auto name = "FilterMedian_" + types + "_mask_" + std::to_string(mask);
        const auto with = [=](auto f) {
            return [=](int n) { return [=, x = noise<T>(size_t(n), most), y = std::vector<T>(size_t(n))]() mutable { f(x.data(), y.data(), n); }; };
        };
        const auto& sizes = mask == 20001 ? std::vector<int64_t>{1 << 20} : mask <= 9 ? kSizes : std::vector<int64_t>{kLen, 1 << 16};
        bench::row(name, "tevs", sizes, with([=](const T* x, T* y, int n) { filter(x, y, n, mask); }));
        if constexpr (sizeof(T) == sizeof(int16_t) || std::is_same_v<T, float>) {
            if (mask == 3) bench::row(name, "plain", kSizes, with([](const T* x, T* y, int n) { plain::median3(x, y, n); }));
            if (mask > 1023) continue;
            bench::row(name, "selection", {kLen}, with([=](const T* x, T* y, int n) { plain::medianBySelection(x, y, n, mask); }));
            bench::row(name, "insertion", {kLen}, with([=](const T* x, T* y, int n) { plain::medianByInsertion(x, y, n, mask); }));
        }
    }
}

[[maybe_unused]] const bool registered = [] {
    rows<int16_t>("16s", 32767, tevsFilterMedian_16s);
    rows<float>("32f", 1, tevsFilterMedian_32f);
    rows<uint8_t>("8u", 100, [](const uint8_t* x, uint8_t* y, int n, int mask) { return tevsFilterMedian_8u(x, y, n, mask); });
    rows<int32_t>("32s", 1e9, tevsFilterMedian_32s);
    rows<double>("64f", 1, tevsFilterMedian_64f);
    // Where the order of -0 and +0 matters.
    for (int mask : {3, 9, 63})
        bench::row("FilterMedian_32f_zeros_mask_" + std::to_string(mask), "tevs", {kLen}, [=](int n) {
            auto x = noise<float>(size_t(n), 1);
            for (int i = 0; i < n; i += 100) x[size_t(i)] = -0.0f;
            return [=, y = std::vector<float>(size_t(n))]() mutable { tevsFilterMedian_32f(x.data(), y.data(), n, mask); };
        });
    return true;
}();

}   // namespace
