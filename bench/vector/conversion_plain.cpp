// The loops that a caller would write, left to the compiler's vectoriser.
#include "vector/conversion_plain.h"

#include <cmath>

namespace plain {

void convert(const int16_t* src, float* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = float(src[n]);
}
void convert(const float* src, double* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = double(src[n]);
}
void convert(const double* src, float* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = float(src[n]);
}
void convertScaled(const float* src, int16_t* dst, int len, float factor) {
    for (int n = 0; n < len; ++n) {
        const float v = std::fmin(std::fmax(src[n] * factor, -32768.0f), 32767.0f);
        dst[n] = int16_t(int(std::rint(v)));
    }
}

}   // namespace plain
