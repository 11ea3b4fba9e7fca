#include "filter/sample_plain.h"

#include <cstdint>

#include "tevs/types.h"

namespace plain {

template <class T> void sampleUp(const T* x, T* y, int n, int factor, int phase) {
    for (int k = 0; k < n; ++k)
        for (int i = 0; i < factor; ++i) y[k * factor + i] = i == phase ? x[k] : T{};
}
template <class T> void sampleDown(const T* x, T* y, int n, int factor) {
    for (int k = 0; k < n; ++k) y[k] = x[k * factor];
}

#define PLAIN_SAMPLE(T)                                       \
    template void sampleUp<T>(const T*, T*, int n, int, int); \
    template void sampleDown<T>(const T*, T*, int n, int)
PLAIN_SAMPLE(int16_t);
PLAIN_SAMPLE(float);
PLAIN_SAMPLE(double);
PLAIN_SAMPLE(Complex64f);

}   // namespace plain
