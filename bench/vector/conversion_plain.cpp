// The loops that a caller would write, left to the compiler's vectoriser.
#include "vector/conversion_plain.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace plain {
namespace {

template <class Wide> Wide roundShift(Wide x, int s) { return (x + (Wide{1} << (s - 1)) - 1 + (x >> s & 1)) >> s; }
void put(Packed24& d, int32_t v) { d = {{uint8_t(v), uint8_t(v >> 8), uint8_t(v >> 16)}}; }
int32_t get(Packed24 x) { return int32_t(uint32_t(x.bytes[0]) << 8 | uint32_t(x.bytes[1]) << 16 | uint32_t(x.bytes[2]) << 24) >> 8; }

}   // namespace

template <class S, class D> void convert(const S* src, D* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = D(src[n]);
}
template <class S, class D> void narrow(const S* src, D* dst, int len, int shift) {
    constexpr int64_t lo = std::numeric_limits<D>::min(), hi = std::numeric_limits<D>::max();
    for (int n = 0; n < len; ++n) dst[n] = D(std::clamp(roundShift(int64_t{src[n]}, shift), lo, hi));
}
template <class S, class D> void round(const S* src, D* dst, int len, S factor) {
    constexpr S lo = S(std::numeric_limits<D>::min()), hi = S(std::numeric_limits<D>::max()) - (sizeof(D) == sizeof(S) ? 127 : 0);
    for (int n = 0; n < len; ++n) dst[n] = D(int32_t(std::rint(std::min(std::max(src[n] * factor, lo), hi))));
}

template void convert(const int8_t*, int16_t*, int);
template void convert(const int16_t*, int32_t*, int);
template void convert(const int32_t*, double*, int);
template void convert(const float*, double*, int);
template void convert(const int8_t*, float*, int);
template void convert(const uint8_t*, float*, int);
template void convert(const int16_t*, float*, int);
template void convert(const uint16_t*, float*, int);
template void convert(const int32_t*, float*, int);
template void convert(const double*, float*, int);
template void narrow(const int32_t*, int16_t*, int, int);
template void narrow(const int64_t*, int32_t*, int, int);
template void round(const float*, int8_t*, int, float);
template void round(const float*, uint8_t*, int, float);
template void round(const float*, int16_t*, int, float);
template void round(const float*, uint16_t*, int, float);
template void round(const float*, int32_t*, int, float);
template void round(const double*, int32_t*, int, double);

void unpack(const Packed24* src, int32_t* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = get(src[n]);
}
void unpack(const Packed24* src, float* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = float(get(src[n]));
}
void pack(const int32_t* src, Packed24* dst, int len, int shift) {
    for (int n = 0; n < len; ++n) put(dst[n], int32_t(std::clamp(roundShift(int64_t{src[n]}, shift), int64_t{-8388608}, int64_t{8388607})));
}
void pack(const float* src, Packed24* dst, int len, float factor) {
    for (int n = 0; n < len; ++n) put(dst[n], int32_t(std::rint(std::min(std::max(src[n] * factor, -8388608.0f), 8388607.0f))));
}

void join(const float* const* src, int nChannels, int chanLen, int16_t* dst, float factor) {
    for (int f = 0; f < chanLen; ++f)
        for (int k = 0; k < nChannels; ++k) *dst++ = int16_t(int(std::rint(std::min(std::max(src[k][f] * factor, -32768.0f), 32767.0f))));
}
void split(const int16_t* src, float* const* dst, int nChannels, int chanLen, float factor) {
    for (int f = 0; f < chanLen; ++f)
        for (int k = 0; k < nChannels; ++k) dst[k][f] = float(*src++) * factor;
}

}   // namespace plain
