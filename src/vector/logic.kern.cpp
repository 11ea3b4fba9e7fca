#include "core/simd/map.h"
#include "vector/logic.table.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// dst = f(sources...) over vectors of bytes. All that is done here has a period of at most 4 bytes, so it may begin again at any multiple of an element, as the
// last vector does.
template <class F, class... S> TEVS_INLINE void bytewise(void* dst, ptrdiff_t bytes, F f, S... src) {
    map<kRegisterBytes, 16>(
        bytes, static_cast<uint8_t*>(dst), [=](auto w, auto... s) { return f(load<uint8_t, w.n>(s)...); }, static_cast<const uint8_t*>(src)...);
}

void bitAnd(const void* a, const void* b, void* dst, ptrdiff_t bytes) {
    bytewise(
        dst, bytes, [](auto x, auto y) { return x & y; }, a, b);
}
void bitOr(const void* a, const void* b, void* dst, ptrdiff_t bytes) {
    bytewise(
        dst, bytes, [](auto x, auto y) { return x | y; }, a, b);
}
void bitXor(const void* a, const void* b, void* dst, ptrdiff_t bytes) {
    bytewise(
        dst, bytes, [](auto x, auto y) { return x ^ y; }, a, b);
}

template <class V> TEVS_INLINE V repeated(uint32_t val) { return (V)splat<uint32_t, int(sizeof(V) / 4)>(val); }

void bitAndC(const void* src, uint32_t val, void* dst, ptrdiff_t bytes) {
    bytewise(
        dst, bytes, [=](auto x) { return x & repeated<decltype(x)>(val); }, src);
}
void bitOrC(const void* src, uint32_t val, void* dst, ptrdiff_t bytes) {
    bytewise(
        dst, bytes, [=](auto x) { return x | repeated<decltype(x)>(val); }, src);
}
void bitXorC(const void* src, uint32_t val, void* dst, ptrdiff_t bytes) {
    bytewise(
        dst, bytes, [=](auto x) { return x ^ repeated<decltype(x)>(val); }, src);
}

// T's own shift over vectors of bytes.
template <class T> struct Shift {
    template <class V> TEVS_INLINE static V left(V v, int count) { return (V)((Vec<T, int(sizeof(V) / sizeof(T))>)v << count); }
    template <class V> TEVS_INLINE static V right(V v, int count) { return (V)((Vec<T, int(sizeof(V) / sizeof(T))>)v >> count); }
};
// There are no shifts of 8-bit lanes: those of 16 bits, less what came from the neighbour.
template <> struct Shift<uint8_t> {
    template <class V> TEVS_INLINE static V left(V v, int count) { return Shift<uint16_t>::left(v, count) & splat<uint8_t, kCount<V>>(uint8_t(0xff << count)); }
    template <class V> TEVS_INLINE static V right(V v, int count) {
        return Shift<uint16_t>::right(v, count) & splat<uint8_t, kCount<V>>(uint8_t(0xff >> count));
    }
};

template <class T> void left(const void* src, int count, void* dst, ptrdiff_t bytes) {
    bytewise(
        dst, bytes, [=](auto v) { return Shift<T>::left(v, count); }, src);
}
template <class T> void right(const void* src, int count, void* dst, ptrdiff_t bytes) {
    bytewise(
        dst, bytes, [=](auto v) { return Shift<T>::right(v, count); }, src);
}

}   // namespace

extern const LogicKernels logic = {
    .bitAnd = bitAnd,
    .bitOr = bitOr,
    .bitXor = bitXor,
    .bitAndC = bitAndC,
    .bitOrC = bitOrC,
    .bitXorC = bitXorC,
    .left8 = left<uint8_t>,
    .left16 = left<uint16_t>,
    .left32 = left<uint32_t>,
    .right8u = right<uint8_t>,
    .right16u = right<uint16_t>,
    .right16s = right<int16_t>,
    .right32s = right<int32_t>,
};

}   // namespace tevs::TEVS_LEVEL_NS
