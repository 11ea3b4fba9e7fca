// The loops that a caller would write, left to the compiler's vectoriser.
#include "vector/movement_plain.h"

namespace plain {

void set(float val, float* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = val;
}
void flip(const uint8_t* src, uint8_t* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = src[len - 1 - n];
}
void flip(const float* src, float* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = src[len - 1 - n];
}
void swapBytes16(const uint16_t* src, uint16_t* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = __builtin_bswap16(src[n]);
}
void swapBytes24(const uint8_t* src, uint8_t* dst, int len) {
    for (int n = 0; n < 3 * len; n += 3) {
        const uint8_t low = src[n];
        dst[n + 1] = src[n + 1];
        dst[n] = src[n + 2];
        dst[n + 2] = low;
    }
}
void swapBytes32(const uint32_t* src, uint32_t* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = __builtin_bswap32(src[n]);
}
void real(const Complex16s* src, int16_t* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = src[n].re;
}
void split(const Complex32f* src, float* re, float* im, int len) {
    for (int n = 0; n < len; ++n) {
        re[n] = src[n].re;
        im[n] = src[n].im;
    }
}
void join(const float* re, const float* im, Complex32f* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = {re[n], im[n]};
}
void conj(const Complex32f* src, Complex32f* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = {src[n].re, -src[n].im};
}
void conjFlip(const Complex32f* src, Complex32f* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = {src[len - 1 - n].re, -src[len - 1 - n].im};
}
void bitAnd(const uint32_t* a, const uint32_t* b, uint32_t* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = a[n] & b[n];
}
void left(const uint8_t* src, int count, uint8_t* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = uint8_t(src[n] << count);
}
void right(const int16_t* src, int count, int16_t* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = int16_t(src[n] >> count);
}

}   // namespace plain
