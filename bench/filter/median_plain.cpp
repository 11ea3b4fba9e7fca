#include "filter/median_plain.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace plain {

template <class T> void median3(const T* x, T* y, int n) {
    y[0] = x[0], y[n - 1] = x[n - 1];
    for (int i = 1; i < n - 1; ++i) {
        const T a = x[i - 1], b = x[i], c = x[i + 1], lo = a < b ? a : b, hi = a < b ? b : a, m = hi < c ? hi : c;
        y[i] = lo < m ? m : lo;
    }
}

template <class T> void medianBySelection(const T* x, T* y, int n, int mask) {
    const int w = mask / 2;
    std::vector<T> window;
    for (int i = 0; i < n; ++i) {
        window.assign(x + std::max(i - w, 0), x + std::min(i + w + 1, n));
        const auto middle = window.begin() + long(window.size() / 2);
        std::nth_element(window.begin(), middle, window.end());
        y[i] = *middle;
    }
}

template <class T> void medianByInsertion(const T* x, T* y, int n, int mask) {
    const int w = mask / 2;
    std::vector<T> sorted(x, x + mask);
    std::sort(sorted.begin(), sorted.end());
    for (int i = w; i < n - w; ++i) {
        y[i] = sorted[size_t(w)];
        if (i + 1 == n - w) break;
        const T out = x[i - w], in = x[i + w + 1];
        size_t at = size_t(std::lower_bound(sorted.begin(), sorted.end(), out) - sorted.begin());
        for (; at + 1 < sorted.size() && sorted[at + 1] < in; ++at) sorted[at] = sorted[at + 1];
        for (; at > 0 && in < sorted[at - 1]; --at) sorted[at] = sorted[at - 1];
        sorted[at] = in;
    }
}

template void median3(const int16_t*, int16_t*, int);
template void median3(const float*, float*, int);
template void medianBySelection(const int16_t*, int16_t*, int, int);
template void medianBySelection(const float*, float*, int, int);
template void medianByInsertion(const int16_t*, int16_t*, int, int);
template void medianByInsertion(const float*, float*, int, int);

}   // namespace plain
