#include "filter/sample.table.h"

#include "core/simd/vec.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

template <int Size> struct ElementOf { unsigned char bytes[Size]; };

// ---- up ---------------------------------------------------------------------------------------------------------------------------------------

template <class T> TEVS_INLINE void scatter(const T* s, T* d, ptrdiff_t n, int factor) {
    for (ptrdiff_t k = 0; k < n; ++k) memcpy(d + k * factor, s + k, sizeof(T));
}
// Zeros first, as many as stay in the first cache.
template <class T> void spread(const T* s, T* d, ptrdiff_t n, int factor, int phase) {
    const ptrdiff_t most = 8192 / (ptrdiff_t{factor} * ptrdiff_t(sizeof(T))) + 1;
    for (ptrdiff_t m; n > 0; n -= m, s += m, d += m * factor) {
        m = n < most ? n : most;
        memset(d, 0, size_t(m) * size_t(factor) * sizeof(T));
        scatter(s, d + phase, m, factor);
    }
}

#if TEVS_LEVEL >= 1

// Each 16 bytes of input make `factor` times as many: that is one permutation of bytes after the other, in which a negative index is a zero.
constexpr int kMostPatterns = 16;
struct Patterns {
    alignas(32) unsigned char bytes[2 * kMostPatterns * 16];   // twice over
    template <int Size> TEVS_INLINE void make(int factor, int phase) {
        memset(bytes, 0x80, size_t(factor) * 16);
        for (int b = 0; b < 16; ++b) bytes[(b / Size * factor + phase) * Size + b % Size] = (unsigned char)b;
        memcpy(bytes + factor * 16, bytes, size_t(factor) * 16);
    }
};

#if TEVS_REGISTER_BYTES >= 32
using Block = __m256i;
TEVS_INLINE Block permuted(Block v, Block pattern) { return _mm256_shuffle_epi8(v, pattern); }
// Half of a vector of outputs comes of one half of the inputs each; with an odd factor the middle one of both.
template <int Factor> TEVS_INLINE void upBlock(const unsigned char* s, unsigned char* d, const Block* p, int factor) {
    const Block both = loadAs<Block>(s);
    const Block first = _mm256_permute2x128_si256(both, both, 0x00), second = _mm256_permute2x128_si256(both, both, 0x11);
    const int f = Factor ? Factor : factor;
    int r = 0;
#pragma GCC unroll 4
    for (; r < f / 2; ++r) store(d + r * 32, permuted(first, p[r]));
    if (f % 2) store(d + r * 32, permuted(both, p[r])), ++r;
#pragma GCC unroll 4
    for (; r < f; ++r) store(d + r * 32, permuted(second, p[r]));
}
#else
using Block = __m128i;
TEVS_INLINE Block permuted(Block v, Block pattern) { return _mm_shuffle_epi8(v, pattern); }
template <int Factor> TEVS_INLINE void upBlock(const unsigned char* s, unsigned char* d, const Block* p, int factor) {
    const Block v = loadAs<Block>(s);
    const int f = Factor ? Factor : factor;
#pragma GCC unroll 4
    for (int r = 0; r < f; ++r) store(d + r * 16, permuted(v, p[r]));
}
#endif

// Factor 0: any, given at run time.
template <int Factor> TEVS_INLINE ptrdiff_t upBlocks(const unsigned char* s, unsigned char* d, ptrdiff_t bytes, const Patterns& patterns, int factor) {
    constexpr int kFew = Factor ? Factor : 1;
    const Block* p = reinterpret_cast<const Block*>(patterns.bytes);
    Block few[kFew];
    if constexpr (Factor) {
        for (int r = 0; r < kFew; ++r) few[r] = p[r];
        p = few;
    }
    ptrdiff_t i = 0;
    for (; i + ptrdiff_t(sizeof(Block)) <= bytes; i += sizeof(Block)) upBlock<Factor>(s + i, d + i * factor, p, factor);
    return i;
}
template <int Size> void up(const void* src, void* dst, ptrdiff_t n, int factor, int phase) {
    using T = ElementOf<Size>;
    const auto* s = static_cast<const unsigned char*>(src);
    auto* d = static_cast<unsigned char*>(dst);
    ptrdiff_t done = 0;
    if (factor <= kMostPatterns && n * Size >= ptrdiff_t(sizeof(Block))) {
        Patterns p;
        p.make<Size>(factor, phase);
        switch (factor) {
            case 2:
                done = upBlocks<2>(s, d, n * Size, p, 2);
                break;
            case 3:
                done = upBlocks<3>(s, d, n * Size, p, 3);
                break;
            case 4:
                done = upBlocks<4>(s, d, n * Size, p, 4);
                break;
            default:
                done = upBlocks<0>(s, d, n * Size, p, factor);
        }
    }
    spread(reinterpret_cast<const T*>(s + done), reinterpret_cast<T*>(d + done * factor), n - done / Size, factor, phase);
}

#else

template <int Size> void up(const void* src, void* dst, ptrdiff_t n, int factor, int phase) {
    using T = ElementOf<Size>;
    spread(static_cast<const T*>(src), static_cast<T*>(dst), n, factor, phase);
}

#endif

// ---- down -------------------------------------------------------------------------------------------------------------------------------------

template <int Size> void down(const void* src, void* dst, ptrdiff_t n, int factor) {
    using T = ElementOf<Size>;
    const T* s = static_cast<const T*>(src);
    T* d = static_cast<T*>(dst);
    ptrdiff_t k = 0;
#if TEVS_LEVEL >= 1
    // Where several elements of a vector are wanted, `factor` vectors make one; for a few it takes longer to say which.
    if (factor <= 4 && Size * factor < 16 && n >= 96) {
        constexpr int kEach = 16 / Size;
        __m128i pattern[4] = {};
        unsigned char bytes[4][16];
        memset(bytes, 0x80, sizeof bytes);
        for (int b = 0; b < 16; ++b) {
            const int at = b / Size * factor * Size + b % Size;
            bytes[at / 16][b] = (unsigned char)(at % 16);
        }
        memcpy(pattern, bytes, sizeof bytes);
        for (; k + kEach < n; k += kEach) {   // one more: what is read behind the last element wanted lies before the next
            __m128i v = {};
            for (int r = 0; r < factor; ++r) v |= _mm_shuffle_epi8(loadAs<__m128i>(reinterpret_cast<const char*>(s + k * factor) + 16 * r), pattern[r]);
            store(d + k, v);
        }
    }
#endif
    for (; k + 4 <= n; k += 4) {
        T v[4];
#pragma GCC unroll 4
        for (int i = 0; i < 4; ++i) memcpy(v + i, s + (k + i) * factor, Size);
        memcpy(d + k, v, sizeof v);
    }
    for (; k < n; ++k) memcpy(d + k, s + k * factor, Size);
}

}   // namespace

extern const SampleKernels sample = {
    .up16 = up<2>,
    .up32 = up<4>,
    .up64 = up<8>,
    .up128 = up<16>,
    .down16 = down<2>,
    .down32 = down<4>,
    .down64 = down<8>,
    .down128 = down<16>,
};

}   // namespace tevs::TEVS_LEVEL_NS
