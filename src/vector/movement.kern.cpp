#include "core/complex.h"
#include "core/simd/map.h"
#include "vector/movement.table.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// ---- fill -----------------------------------------------------------------------------------------------------------------------

using Register = Vec<uint8_t, kRegisterBytes>;
constexpr ptrdiff_t kWidth = sizeof(Register);

TEVS_INLINE Register repeated(__m128i v) {
#if TEVS_REGISTER_BYTES >= 32
    return (Register)_mm256_broadcastsi128_si256(v);
#else
    return (Register)v;
#endif
}

// n bytes for sizeof(V) <= n <= 2 * sizeof(V): two stores that may overlap. Both begin at a multiple of the element.
template <class V> TEVS_INLINE void fillEnds(V v, uint8_t* d, ptrdiff_t n) {
    store(d, v);
    store(d + n - ptrdiff_t(sizeof(V)), v);
}

// From how many bytes on a string instruction stores, which takes whole cache lines without reading them first: past the caches, where the memory's own speed
// decides. In 32-bit it stores more than a 16-byte register at a time, too, and gains from a few kilobytes on.
#ifdef __x86_64__
constexpr ptrdiff_t kStringStore = ptrdiff_t{24} << 20;
using StringWord = uint64_t;
TEVS_INLINE uint8_t* storeString(uint8_t* d, uint64_t word, size_t words) {
    asm volatile("rep stosq" : "+D"(d), "+c"(words) : "a"(word) : "memory");
    return d;
}
#else
constexpr ptrdiff_t kStringStore = 4096;
using StringWord = uint32_t;
TEVS_INLINE uint8_t* storeString(uint8_t* d, uint32_t word, size_t words) {
    asm volatile("rep stosl" : "+D"(d), "+c"(words) : "a"(word) : "memory");
    return d;
}
#endif

void fill(__m128i pattern, int unit, void* dst, size_t bytes) {
    uint8_t* d = static_cast<uint8_t*>(dst);
    const ptrdiff_t n = ptrdiff_t(bytes);
    if (n < 16) {
        const auto v = (Vec<uint64_t, 2>)pattern;
        if (n >= 8) return fillEnds(v[0], d, n);
        if (n >= 4) return fillEnds(uint32_t(v[0]), d, n);
        return store(d, uint16_t(v[0]));
    }
    if (n < kWidth) return fillEnds((Vec<uint8_t, 16>)pattern, d, n);
    Register v = repeated(pattern);
    if (n <= 2 * kWidth) return fillEnds(v, d, n);
    if (n <= 4 * kWidth) return fillEnds(Two<Register>{v, v}, d, n);

    const Register first = v;
    uint8_t* const end = d + n;
    store(d, Two<Register>{v, v});
    d = reinterpret_cast<uint8_t*>((reinterpret_cast<uintptr_t>(d) + kWidth) & ~uintptr_t(kWidth - 1));
    // Aligned stores cross no cache line; streaming ones gain nothing on top, past the caches either. Where no element begins at the first aligned address,
    // the pattern's phase is read back from what already stands there.
    if ((d - static_cast<uint8_t*>(dst)) & (unit - 1)) v = loadAs<Register>(d);
    if (n >= kStringStore && unit <= int(sizeof(StringWord)))
        d = storeString(d, ((Vec<StringWord, kWidth / int(sizeof(StringWord))>)v)[0], size_t(end - d) / sizeof(StringWord));
    for (; end - d > 4 * kWidth; d += 4 * kWidth) {
        store(d, Two<Register>{v, v});
        store(d + 2 * kWidth, Two<Register>{v, v});
    }
    store(end - 4 * kWidth, Two<Register>{first, first});
    store(end - 2 * kWidth, Two<Register>{first, first});
}

// ---- order of elements and of bytes -----------------------------------------------------------------------------------------------

// d[i] = s[n-1-i], with f to reverse a vector. Works from both ends at once and reads the two vectors that change places before it writes either, so d may be s.
// The last pair may overlap; what is shorter than a vector is left to vectors of half the width.
template <int N, int Least, class T, class F> TEVS_INLINE void mirror(const T* s, T* d, ptrdiff_t n, F f) {
    ptrdiff_t i = 0, j = n - N;
    for (; i <= j; i += N, j -= N) {
        const auto front = f(load<T, N>(s + i)), back = f(load<T, N>(s + j));
        store(d + i, back);
        store(d + j, front);
    }
    if constexpr (N > Least) {
        if (j + N > i) mirror<N / 2, Least>(s + i, d + i, j + N - i, f);
    }
}

template <class T> void flip(const void* src, void* dst, ptrdiff_t n) {
    mirror<kLanes<T>, 1>(static_cast<const T*>(src), static_cast<T*>(dst), n, [](auto v) { return reverse(v); });
}

template <int Bytes, class V, int... I> TEVS_INLINE V swapBytesOf(V v, Lane<I...>) { return __builtin_shufflevector(v, v, (I ^ (Bytes - 1))...); }

// Reverses the bytes of each element of 2, 4 or 8 bytes.
template <int Bytes, class V> TEVS_INLINE V swapBytes(V v) {
#if TEVS_LEVEL == 0
    auto w = (Vec<uint16_t, 8>)v;
    w = w << 8 | w >> 8;
    constexpr int order = Bytes == 8 ? 0x1b : 0xb1;
    return Bytes == 2 ? (V)w : (V)_mm_shufflehi_epi16(_mm_shufflelo_epi16((__m128i)w, order), order);
#else
    return swapBytesOf<Bytes>(v, Iota<kCount<V>>{});
#endif
}

template <class T> void swap(const void* src, void* dst, ptrdiff_t n) {
    map<kRegisterBytes, 16>(
        n * ptrdiff_t(sizeof(T)), static_cast<uint8_t*>(dst), [](auto w, auto s) { return swapBytes<sizeof(T)>(load<uint8_t, w.n>(s)); },
        static_cast<const uint8_t*>(src));
}

// Five elements of three bytes; the sixteenth byte stays as it is.
TEVS_INLINE __m128i swapTriples(__m128i v) {
#if TEVS_LEVEL == 0
    const __m128i first = _mm_setr_epi8(-1, 0, 0, -1, 0, 0, -1, 0, 0, -1, 0, 0, -1, 0, 0, 0), third = _mm_slli_si128(first, 2);
    const __m128i moved = _mm_or_si128(_mm_and_si128(_mm_srli_si128(v, 2), first), _mm_and_si128(_mm_slli_si128(v, 2), third));
    return _mm_or_si128(moved, _mm_andnot_si128(_mm_or_si128(first, third), v));
#else
    return _mm_shuffle_epi8(v, _mm_setr_epi8(2, 1, 0, 5, 4, 3, 8, 7, 6, 11, 10, 9, 14, 13, 12, 15));
#endif
}

void swap24(const void* src, void* dst, ptrdiff_t n) {
    const uint8_t* s = static_cast<const uint8_t*>(src);
    uint8_t* d = static_cast<uint8_t*>(dst);
    const ptrdiff_t bytes = 3 * n;
    if (bytes < 16) {
        Stage<16, uint8_t*> t;
        t.in(s, int(bytes));
        store(t.at(), swapTriples(loadAs<__m128i>(t.at())));
        t.out(d, int(bytes));
        return;
    }
    // The last five elements are held back: a whole vector at the end would not begin at an element.
    const __m128i last = swapTriples(_mm_srli_si128(loadAs<__m128i>(s + bytes - 16), 1));
    for (ptrdiff_t i = 0; i < bytes - 15; i += 15) store(d + i, swapTriples(loadAs<__m128i>(s + i)));
    store(d + bytes - 15, ((Vec<uint64_t, 2>)last)[0]);
    store(d + bytes - 8, ((Vec<uint64_t, 2>)_mm_srli_si128(last, 7))[0]);
}

// ---- complex elements -------------------------------------------------------------------------------------------------------------

template <class T> void real(const void* src, void* dst, ptrdiff_t n) {
    map<kLanes<T>, kLeast<T>>(
        n, static_cast<T*>(dst), [](auto w, auto s) { return loadSplit<T, w.n>(partsOf(s)).a; }, static_cast<const LanePair<T>*>(src));
}
template <class T> void imag(const void* src, void* dst, ptrdiff_t n) {
    map<kLanes<T>, kLeast<T>>(
        n, static_cast<T*>(dst), [](auto w, auto s) { return loadSplit<T, w.n>(partsOf(s)).b; }, static_cast<const LanePair<T>*>(src));
}
template <class T> void split(const void* src, void* re, void* im, ptrdiff_t n) {
    map<kLanes<T>, kLeast<T>>(
        n, Both<T>{static_cast<T*>(re), static_cast<T*>(im)}, [](auto w, auto s) { return loadSplit<T, w.n>(partsOf(s)); },
        static_cast<const LanePair<T>*>(src));
}
template <class T> void join(const void* re, const void* im, void* dst, ptrdiff_t n) {
    map<kLanes<T>, kLeast<T>>(
        n, static_cast<LanePair<T>*>(dst), [](auto w, auto a, auto b) { return interleave(load<T, w.n>(a), load<T, w.n>(b)); }, static_cast<const T*>(re),
        static_cast<const T*>(im));
}
template <class T> void onlyReal(const void* re, void* dst, ptrdiff_t n) {
    map<kLanes<T>, kLeast<T>>(
        n, static_cast<LanePair<T>*>(dst), [](auto w, auto s) { return interleave(load<T, w.n>(s), Vec<T, w.n>{}); }, static_cast<const T*>(re));
}
template <class T> void onlyImag(const void* im, void* dst, ptrdiff_t n) {
    map<kLanes<T>, kLeast<T>>(
        n, static_cast<LanePair<T>*>(dst), [](auto w, auto s) { return interleave(Vec<T, w.n>{}, load<T, w.n>(s)); }, static_cast<const T*>(im));
}

// 16-bit lanes, saturated. A vector shorter than a register is computed in one.
template <class V> TEVS_INLINE V subtractSaturated(V a, V b) {
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(V) == 32) return (V)_mm256_subs_epi16((__m256i)a, (__m256i)b);
#endif
    if constexpr (sizeof(V) == 16) return (V)_mm_subs_epi16((__m128i)a, (__m128i)b);
    if constexpr (sizeof(V) < 16) {
        __m128i x{}, y{};
        memcpy(&x, &a, sizeof a);
        memcpy(&y, &b, sizeof b);
        x = _mm_subs_epi16(x, y);
        memcpy(&a, &x, sizeof a);
        return a;
    }
}

// The conjugates of whole elements, as 32-bit lanes, 64-bit lanes, and pairs of 64-bit lanes. -im is ~im - (-1), which saturates at -32768.
constexpr auto conjugate16 = [](auto v) {
    const auto im = decltype(v){} + 0xffff0000u;
    return subtractSaturated(v ^ im, im);
};
constexpr uint64_t kSign = uint64_t{1} << 63;
constexpr auto conjugate32 = [](auto v) { return v ^ kSign; };
constexpr auto conjugate64 = [](auto v) { return v ^ interleaveLow(decltype(v){}, decltype(v){} + kSign); };

template <class T, class F> TEVS_INLINE void conj(const void* src, void* dst, ptrdiff_t lanes, F f) {
    map<kLanes<T>, kLeast<T>>(
        lanes, static_cast<T*>(dst), [=](auto w, auto s) { return f(load<T, w.n>(s)); }, static_cast<const T*>(src));
}
void conj16(const void* src, void* dst, ptrdiff_t n) { conj<uint32_t>(src, dst, n, conjugate16); }
void conj32(const void* src, void* dst, ptrdiff_t n) { conj<uint64_t>(src, dst, n, conjugate32); }
void conj64(const void* src, void* dst, ptrdiff_t n) { conj<uint64_t>(src, dst, 2 * n, conjugate64); }

template <class T, int Least, class F> TEVS_INLINE void conjFlip(const void* src, void* dst, ptrdiff_t lanes, F f) {
    mirror<kLanes<T>, Least>(static_cast<const T*>(src), static_cast<T*>(dst), lanes, f);
}
constexpr auto conjugateReverse16 = [](auto v) { return conjugate16(reverse(v)); };
constexpr auto conjugateReverse32 = [](auto v) { return conjugate32(reverse(v)); };
constexpr auto conjugateReverse64 = [](auto v) { return conjugate64(swapPairs(reverse(v))); };
void conjFlip16(const void* src, void* dst, ptrdiff_t n) { conjFlip<uint32_t, 1>(src, dst, n, conjugateReverse16); }
void conjFlip32(const void* src, void* dst, ptrdiff_t n) { conjFlip<uint64_t, 1>(src, dst, n, conjugateReverse32); }
void conjFlip64(const void* src, void* dst, ptrdiff_t n) { conjFlip<uint64_t, 2>(src, dst, 2 * n, conjugateReverse64); }

// The elements at s: to lower as they are, to upper as f makes them of each vector, the last vector first. From the top down, and every vector is read before
// it is written: lower may lie above s by less than a vector, as the pairs of a packed spectrum do that is expanded in place.
template <int N, int Least, class T, class F> TEVS_INLINE void unfold(const T* s, T* lower, T* upper, ptrdiff_t n, F f) {
    if (n >= N) {
        const auto first = load<T, N>(s);
        for (ptrdiff_t i = n - N; i > 0; i -= N) {
            const auto v = load<T, N>(s + i);
            store(lower + i, v);
            store(upper + (n - N - i), f(v));
        }
        store(lower, first);
        store(upper + (n - N), f(first));
    } else if constexpr (N > Least) {
        unfold<N / 2, Least>(s, lower, upper, n, f);
    }
}
template <class T, int Least, class F> TEVS_INLINE void unfold(const void* src, void* lower, void* upper, ptrdiff_t lanes, F f) {
    unfold<kLanes<T>, Least>(static_cast<const T*>(src), static_cast<T*>(lower), static_cast<T*>(upper), lanes, f);
}
void unfold16(const void* src, void* lower, void* upper, ptrdiff_t n) { unfold<uint32_t, 1>(src, lower, upper, n, conjugateReverse16); }
void unfold32(const void* src, void* lower, void* upper, ptrdiff_t n) { unfold<uint64_t, 1>(src, lower, upper, n, conjugateReverse32); }
void unfold64(const void* src, void* lower, void* upper, ptrdiff_t n) { unfold<uint64_t, 2>(src, lower, upper, 2 * n, conjugateReverse64); }

// ---- bits -------------------------------------------------------------------------------------------------------------------------

// Shifts of bytes as shifts of 16-bit lanes; the mask drops what came from the neighbour.
void shiftBits(const uint8_t* src, int bit, uint8_t* dst, ptrdiff_t n) {
    const uint8_t upper = uint8_t(0xff << bit), lower = uint8_t(~upper);
    const __m128i left = _mm_cvtsi32_si128(bit), right = _mm_cvtsi32_si128(8 - bit);
    map<16, 16>(
        n, dst,
        [=](auto w, auto a, auto b) {
            const auto x = (__m128i)load<uint8_t, w.n>(a), y = (__m128i)load<uint8_t, w.n>(b);
            return _mm_or_si128(_mm_and_si128(_mm_sll_epi16(x, left), _mm_set1_epi8(char(upper))),
                                _mm_and_si128(_mm_srl_epi16(y, right), _mm_set1_epi8(char(lower))));
        },
        src, src + 1);
}

}   // namespace

extern const MovementKernels movement = {
    .fill = fill,
    .flip8 = flip<uint8_t>,
    .flip16 = flip<uint16_t>,
    .flip32 = flip<uint32_t>,
    .flip64 = flip<uint64_t>,
    .swap16 = swap<uint16_t>,
    .swap24 = swap24,
    .swap32 = swap<uint32_t>,
    .swap64 = swap<uint64_t>,
    .real16 = real<uint16_t>,
    .real32 = real<uint32_t>,
    .real64 = real<uint64_t>,
    .imag16 = imag<uint16_t>,
    .imag32 = imag<uint32_t>,
    .imag64 = imag<uint64_t>,
    .split16 = split<uint16_t>,
    .split32 = split<uint32_t>,
    .split64 = split<uint64_t>,
    .join16 = join<uint16_t>,
    .join32 = join<uint32_t>,
    .join64 = join<uint64_t>,
    .onlyReal16 = onlyReal<uint16_t>,
    .onlyReal32 = onlyReal<uint32_t>,
    .onlyReal64 = onlyReal<uint64_t>,
    .onlyImag16 = onlyImag<uint16_t>,
    .onlyImag32 = onlyImag<uint32_t>,
    .onlyImag64 = onlyImag<uint64_t>,
    .conj16 = conj16,
    .conj32 = conj32,
    .conj64 = conj64,
    .conjFlip16 = conjFlip16,
    .conjFlip32 = conjFlip32,
    .conjFlip64 = conjFlip64,
    .unfold16 = unfold16,
    .unfold32 = unfold32,
    .unfold64 = unfold64,
    .shiftBits = shiftBits,
};

}   // namespace tevs::TEVS_LEVEL_NS
