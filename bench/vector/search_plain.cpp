#include "vector/search_plain.h"

#include <stdint.h>

#include <algorithm>
#include <numeric>

namespace plain {

template <class T> void sort(T* p, int n) { std::sort(p, p + n); }
template <class T> void sortIndx(const T* src, int* indx, int n) {
    std::iota(indx, indx + n, 0);
    std::stable_sort(indx, indx + n, [=](int a, int b) { return src[a] < src[b]; });
}
template <class T> void nearest(const T* src, int* indx, int len, const T* table, int tableLen) {
    for (int i = 0; i < len; ++i) {
        int at = int(std::lower_bound(table, table + tableLen, src[i]) - table);
        if (at == tableLen || (at > 0 && double(src[i]) - double(table[at - 1]) <= double(table[at]) - double(src[i]))) --at;
        indx[i] = at;
    }
}
#define EACH(T)                                  \
    template void sort(T*, int);                 \
    template void sortIndx(const T*, int*, int); \
    template void nearest(const T*, int*, int, const T*, int);
EACH(int16_t)
EACH(int32_t)
EACH(float)
EACH(double)

void nearestVec(const float* src, int* indx, float* dist, int len, const float* book, int bookLen, int dim) {
    for (int i = 0; i < len; ++i) {
        float best = __builtin_inff();
        for (int j = 0; j < bookLen; ++j) {
            float sum = 0;
            for (int k = 0; k < dim; ++k) {
                const float d = src[i * dim + k] - book[j * dim + k];
                sum += d * d;
            }
            if (sum < best) {
                best = sum;
                indx[i] = j;
            }
        }
        dist[i] = best;
    }
}

}   // namespace plain
