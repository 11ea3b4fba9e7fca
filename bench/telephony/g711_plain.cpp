// Companding as a caller would write it: a loop without branches for the vectoriser, and tables for the way back.
#include "telephony/g711_plain.h"

#include <algorithm>
#include <cmath>

namespace plain {
namespace {

int width(int x) { return 32 - __builtin_clz(unsigned(x) | 1); }

uint8_t aLaw(int s) {
    const int p = (s ^ s >> 31) >> 3, segment = std::max(width(p) - 5, 0);
    return uint8_t((segment << 4 | (p >> std::max(segment, 1) & 15)) ^ (s < 0 ? 0x55 : 0xd5));
}
uint8_t muLaw(int s) {
    const int a = std::min(((s ^ s >> 31) >> 2) + 33, 8191), segment = width(a) - 5;
    return uint8_t(((8 - segment) << 4 | (15 - (a >> segment & 15))) ^ (s < 0 ? 0 : 0x80));
}
int rounded(float x) { return int(std::min(std::max(x * 32768 + std::copysign(0.5f, x), -32768.0f), 32767.0f)); }

}   // namespace

void aLaw(const int16_t* src, uint8_t* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = aLaw(int{src[n]});
}
void muLaw(const int16_t* src, uint8_t* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = muLaw(int{src[n]});
}
void aLaw(const float* src, uint8_t* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = aLaw(rounded(src[n]));
}
void muLaw(const float* src, uint8_t* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = muLaw(rounded(src[n]));
}

template <class D> void lookUp(const uint8_t* src, D* dst, int len, const D* table) {
    for (int n = 0; n < len; ++n) dst[n] = table[src[n]];
}
template void lookUp(const uint8_t*, uint8_t*, int, const uint8_t*);
template void lookUp(const uint8_t*, int16_t*, int, const int16_t*);
template void lookUp(const uint8_t*, float*, int, const float*);

}   // namespace plain
