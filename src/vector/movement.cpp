// Data movement: vectors copied, filled, reversed, taken apart and put together. No arithmetic but the conjugate's sign.
#include "tevs/movement.h"

#include <algorithm>

#include "core/args.h"
#include "vector/movement.h"
#include "vector/movement.table.h"

namespace tevs {
namespace {

template <class T> Status move(const T* pSrc, T* pDst, int len) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    memmove(pDst, pSrc, bytesOf<T>(len));
    return StatusOk;
}

// 16 bytes of equal elements, as the fill kernel takes them.
template <class T> __m128i repeated(T val) {
    if constexpr (sizeof(T) == 2) return _mm_set1_epi16(short(val));
    if constexpr (sizeof(T) == 4) return _mm_set1_epi32(__builtin_bit_cast(int, val));
    if constexpr (sizeof(T) == 8) {
        const __m128i half = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(&val));
        return _mm_unpacklo_epi64(half, half);
    }
    if constexpr (sizeof(T) == 16) return _mm_loadu_si128(reinterpret_cast<const __m128i*>(&val));
}

template <class T> Status set(T val, T* pDst, int len) {
    if (Status s = Args().ptr(pDst).len(len)) return s;
    if constexpr (sizeof(T) == 1)
        memset(pDst, val, bytesOf<T>(len));
    else
        movement->fill(repeated(val), int(sizeof(T)), pDst, bytesOf<T>(len));
    return StatusOk;
}

template <class S, class D> Status unary(const S* pSrc, D* pDst, int len, void (*kernel)(const void*, void*, ptrdiff_t)) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    kernel(pSrc, pDst, len);
    return StatusOk;
}

template <class S, class D> Status split(const S* pSrc, D* pDstRe, D* pDstIm, int len, void (*kernel)(const void*, void*, void*, ptrdiff_t)) {
    if (Status s = Args().ptr(pSrc).ptr(pDstRe).ptr(pDstIm).len(len)) return s;
    kernel(pSrc, pDstRe, pDstIm, len);
    return StatusOk;
}

// The destination and the length are checked before the sources, one of which may be missing.
template <class S, class D>
Status join(const S* pSrcRe, const S* pSrcIm, D* pDst, int len, void (*both)(const void*, const void*, void*, ptrdiff_t),
            void (*onlyReal)(const void*, void*, ptrdiff_t), void (*onlyImag)(const void*, void*, ptrdiff_t)) {
    if (Status s = Args().ptr(pDst).len(len).require(pSrcRe || pSrcIm, StatusNullPtr)) return s;
    if (!pSrcIm)
        onlyReal(pSrcRe, pDst, len);
    else if (!pSrcRe)
        onlyImag(pSrcIm, pDst, len);
    else
        both(pSrcRe, pSrcIm, pDst, len);
    return StatusOk;
}

// Up to 8 bits from bit `at` of p on, right-justified. The second byte is read only if a bit of it is asked for.
unsigned bitsAt(const uint8_t* p, int at, int count) {
    const unsigned next = at + count > 8 ? p[1] : 0;
    return (unsigned(p[0]) << 8 | next) >> (16 - at - count) & ((1u << count) - 1);
}
// Into one byte, whose other bits stay.
void putBits(uint8_t* p, int at, int count, unsigned bits) {
    const int shift = 8 - at - count;
    const unsigned mask = ((1u << count) - 1) << shift;
    *p = uint8_t((*p & ~mask) | bits << shift);
}

Status copyBits(const uint8_t* pSrc, uint8_t* pDst, int len, int srcBitOffset, int dstBitOffset) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len).require(srcBitOffset >= 0 && dstBitOffset >= 0, StatusBadSize)) return s;
    const uint8_t* src = pSrc + srcBitOffset / 8;
    uint8_t* dst = pDst + dstBitOffset / 8;
    int from = srcBitOffset % 8;
    if (const int at = dstBitOffset % 8) {
        const int count = std::min(8 - at, len);
        putBits(dst++, at, count, bitsAt(src, from, count));
        src += (from + count) / 8;
        from = (from + count) % 8;
        len -= count;
    }
    if (const int bytes = len / 8) {
        if (from)
            movement->shiftBits(src, from, dst, bytes);
        else
            memmove(dst, src, size_t(bytes));
    }
    if (const int count = len % 8) putBits(dst + len / 8, 0, count, bitsAt(src + len / 8, from, count));
    return StatusOk;
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsCopy_8u(const uint8_t* pSrc, uint8_t* pDst, int len) { return copy(pSrc, pDst, len); }
Status tevsCopy_16s(const int16_t* pSrc, int16_t* pDst, int len) { return copy(pSrc, pDst, len); }
Status tevsCopy_32s(const int32_t* pSrc, int32_t* pDst, int len) { return copy(pSrc, pDst, len); }
Status tevsCopy_32f(const float* pSrc, float* pDst, int len) { return copy(pSrc, pDst, len); }
Status tevsCopy_64s(const int64_t* pSrc, int64_t* pDst, int len) { return copy(pSrc, pDst, len); }
Status tevsCopy_64f(const double* pSrc, double* pDst, int len) { return copy(pSrc, pDst, len); }
Status tevsCopy_16sc(const Complex16s* pSrc, Complex16s* pDst, int len) { return copy(pSrc, pDst, len); }
Status tevsCopy_32sc(const Complex32s* pSrc, Complex32s* pDst, int len) { return copy(pSrc, pDst, len); }
Status tevsCopy_32fc(const Complex32f* pSrc, Complex32f* pDst, int len) { return copy(pSrc, pDst, len); }
Status tevsCopy_64sc(const Complex64s* pSrc, Complex64s* pDst, int len) { return copy(pSrc, pDst, len); }
Status tevsCopy_64fc(const Complex64f* pSrc, Complex64f* pDst, int len) { return copy(pSrc, pDst, len); }
Status tevsCopy_1u(const uint8_t* pSrc, uint8_t* pDst, int len, int srcBitOffset, int dstBitOffset) {
    return copyBits(pSrc, pDst, len, srcBitOffset, dstBitOffset);
}

Status tevsMove_8u(const uint8_t* pSrc, uint8_t* pDst, int len) { return move(pSrc, pDst, len); }
Status tevsMove_16s(const int16_t* pSrc, int16_t* pDst, int len) { return move(pSrc, pDst, len); }
Status tevsMove_32s(const int32_t* pSrc, int32_t* pDst, int len) { return move(pSrc, pDst, len); }
Status tevsMove_32f(const float* pSrc, float* pDst, int len) { return move(pSrc, pDst, len); }
Status tevsMove_64s(const int64_t* pSrc, int64_t* pDst, int len) { return move(pSrc, pDst, len); }
Status tevsMove_64f(const double* pSrc, double* pDst, int len) { return move(pSrc, pDst, len); }
Status tevsMove_16sc(const Complex16s* pSrc, Complex16s* pDst, int len) { return move(pSrc, pDst, len); }
Status tevsMove_32sc(const Complex32s* pSrc, Complex32s* pDst, int len) { return move(pSrc, pDst, len); }
Status tevsMove_32fc(const Complex32f* pSrc, Complex32f* pDst, int len) { return move(pSrc, pDst, len); }
Status tevsMove_64sc(const Complex64s* pSrc, Complex64s* pDst, int len) { return move(pSrc, pDst, len); }
Status tevsMove_64fc(const Complex64f* pSrc, Complex64f* pDst, int len) { return move(pSrc, pDst, len); }

Status tevsSet_8u(uint8_t val, uint8_t* pDst, int len) { return set(val, pDst, len); }
Status tevsSet_16s(int16_t val, int16_t* pDst, int len) { return set(val, pDst, len); }
Status tevsSet_32s(int32_t val, int32_t* pDst, int len) { return set(val, pDst, len); }
Status tevsSet_32f(float val, float* pDst, int len) { return set(val, pDst, len); }
Status tevsSet_64s(int64_t val, int64_t* pDst, int len) { return set(val, pDst, len); }
Status tevsSet_64f(double val, double* pDst, int len) { return set(val, pDst, len); }
Status tevsSet_16sc(Complex16s val, Complex16s* pDst, int len) { return set(val, pDst, len); }
Status tevsSet_32sc(Complex32s val, Complex32s* pDst, int len) { return set(val, pDst, len); }
Status tevsSet_32fc(Complex32f val, Complex32f* pDst, int len) { return set(val, pDst, len); }
Status tevsSet_64sc(Complex64s val, Complex64s* pDst, int len) { return set(val, pDst, len); }
Status tevsSet_64fc(Complex64f val, Complex64f* pDst, int len) { return set(val, pDst, len); }

Status tevsZero_8u(uint8_t* pDst, int len) { return zero(pDst, len); }
Status tevsZero_16s(int16_t* pDst, int len) { return zero(pDst, len); }
Status tevsZero_32s(int32_t* pDst, int len) { return zero(pDst, len); }
Status tevsZero_32f(float* pDst, int len) { return zero(pDst, len); }
Status tevsZero_64s(int64_t* pDst, int len) { return zero(pDst, len); }
Status tevsZero_64f(double* pDst, int len) { return zero(pDst, len); }
Status tevsZero_16sc(Complex16s* pDst, int len) { return zero(pDst, len); }
Status tevsZero_32sc(Complex32s* pDst, int len) { return zero(pDst, len); }
Status tevsZero_32fc(Complex32f* pDst, int len) { return zero(pDst, len); }
Status tevsZero_64sc(Complex64s* pDst, int len) { return zero(pDst, len); }
Status tevsZero_64fc(Complex64f* pDst, int len) { return zero(pDst, len); }

Status tevsFlip_8u(const uint8_t* pSrc, uint8_t* pDst, int len) { return unary(pSrc, pDst, len, movement->flip8); }
Status tevsFlip_8u_I(uint8_t* pSrcDst, int len) { return unary(pSrcDst, pSrcDst, len, movement->flip8); }
Status tevsFlip_16u(const uint16_t* pSrc, uint16_t* pDst, int len) { return unary(pSrc, pDst, len, movement->flip16); }
Status tevsFlip_16u_I(uint16_t* pSrcDst, int len) { return unary(pSrcDst, pSrcDst, len, movement->flip16); }
Status tevsFlip_32f(const float* pSrc, float* pDst, int len) { return unary(pSrc, pDst, len, movement->flip32); }
Status tevsFlip_32f_I(float* pSrcDst, int len) { return unary(pSrcDst, pSrcDst, len, movement->flip32); }
Status tevsFlip_64f(const double* pSrc, double* pDst, int len) { return unary(pSrc, pDst, len, movement->flip64); }
Status tevsFlip_64f_I(double* pSrcDst, int len) { return unary(pSrcDst, pSrcDst, len, movement->flip64); }

Status tevsSwapBytes_16u(const uint16_t* pSrc, uint16_t* pDst, int len) { return unary(pSrc, pDst, len, movement->swap16); }
Status tevsSwapBytes_16u_I(uint16_t* pSrcDst, int len) { return unary(pSrcDst, pSrcDst, len, movement->swap16); }
Status tevsSwapBytes_24u(const uint8_t* pSrc, uint8_t* pDst, int len) { return unary(pSrc, pDst, len, movement->swap24); }
Status tevsSwapBytes_24u_I(uint8_t* pSrcDst, int len) { return unary(pSrcDst, pSrcDst, len, movement->swap24); }
Status tevsSwapBytes_32u(const uint32_t* pSrc, uint32_t* pDst, int len) { return unary(pSrc, pDst, len, movement->swap32); }
Status tevsSwapBytes_32u_I(uint32_t* pSrcDst, int len) { return unary(pSrcDst, pSrcDst, len, movement->swap32); }
Status tevsSwapBytes_64u(const uint64_t* pSrc, uint64_t* pDst, int len) { return unary(pSrc, pDst, len, movement->swap64); }
Status tevsSwapBytes_64u_I(uint64_t* pSrcDst, int len) { return unary(pSrcDst, pSrcDst, len, movement->swap64); }

Status tevsReal_16sc(const Complex16s* pSrc, int16_t* pDst, int len) { return unary(pSrc, pDst, len, movement->real16); }
Status tevsReal_32fc(const Complex32f* pSrc, float* pDst, int len) { return unary(pSrc, pDst, len, movement->real32); }
Status tevsReal_64fc(const Complex64f* pSrc, double* pDst, int len) { return unary(pSrc, pDst, len, movement->real64); }

Status tevsImag_16sc(const Complex16s* pSrc, int16_t* pDst, int len) { return unary(pSrc, pDst, len, movement->imag16); }
Status tevsImag_32fc(const Complex32f* pSrc, float* pDst, int len) { return unary(pSrc, pDst, len, movement->imag32); }
Status tevsImag_64fc(const Complex64f* pSrc, double* pDst, int len) { return unary(pSrc, pDst, len, movement->imag64); }

Status tevsCplxToReal_16sc(const Complex16s* pSrc, int16_t* pDstRe, int16_t* pDstIm, int len) { return split(pSrc, pDstRe, pDstIm, len, movement->split16); }
Status tevsCplxToReal_32fc(const Complex32f* pSrc, float* pDstRe, float* pDstIm, int len) { return split(pSrc, pDstRe, pDstIm, len, movement->split32); }
Status tevsCplxToReal_64fc(const Complex64f* pSrc, double* pDstRe, double* pDstIm, int len) { return split(pSrc, pDstRe, pDstIm, len, movement->split64); }

Status tevsRealToCplx_16s(const int16_t* pSrcRe, const int16_t* pSrcIm, Complex16s* pDst, int len) {
    return join(pSrcRe, pSrcIm, pDst, len, movement->join16, movement->onlyReal16, movement->onlyImag16);
}
Status tevsRealToCplx_32f(const float* pSrcRe, const float* pSrcIm, Complex32f* pDst, int len) {
    return join(pSrcRe, pSrcIm, pDst, len, movement->join32, movement->onlyReal32, movement->onlyImag32);
}
Status tevsRealToCplx_64f(const double* pSrcRe, const double* pSrcIm, Complex64f* pDst, int len) {
    return join(pSrcRe, pSrcIm, pDst, len, movement->join64, movement->onlyReal64, movement->onlyImag64);
}

Status tevsConj_16sc(const Complex16s* pSrc, Complex16s* pDst, int len) { return unary(pSrc, pDst, len, movement->conj16); }
Status tevsConj_16sc_I(Complex16s* pSrcDst, int len) { return unary(pSrcDst, pSrcDst, len, movement->conj16); }
Status tevsConj_32fc(const Complex32f* pSrc, Complex32f* pDst, int len) { return unary(pSrc, pDst, len, movement->conj32); }
Status tevsConj_32fc_I(Complex32f* pSrcDst, int len) { return unary(pSrcDst, pSrcDst, len, movement->conj32); }
Status tevsConj_64fc(const Complex64f* pSrc, Complex64f* pDst, int len) { return unary(pSrc, pDst, len, movement->conj64); }
Status tevsConj_64fc_I(Complex64f* pSrcDst, int len) { return unary(pSrcDst, pSrcDst, len, movement->conj64); }

Status tevsConjFlip_16sc(const Complex16s* pSrc, Complex16s* pDst, int len) { return unary(pSrc, pDst, len, movement->conjFlip16); }
Status tevsConjFlip_32fc(const Complex32f* pSrc, Complex32f* pDst, int len) { return unary(pSrc, pDst, len, movement->conjFlip32); }
Status tevsConjFlip_64fc(const Complex64f* pSrc, Complex64f* pDst, int len) { return unary(pSrc, pDst, len, movement->conjFlip64); }
