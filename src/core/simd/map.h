// The driver of element-wise kernels.
#pragma once

#include "core/simd/vec.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

template <int N> struct Lanes { static constexpr int n = N; };

// Two destinations that advance together.
template <class A, class B = A> struct Both {
    A* a;
    B* b;
    friend TEVS_INLINE Both operator+(Both p, ptrdiff_t i) { return {p.a + i, p.b + i}; }
};

// put(d, r): what an element-wise operation returned goes to its destination.
template <class D, class R> TEVS_INLINE void put(D* d, R r) { store(d, r); }
template <class A, class B, class V> TEVS_INLINE void put(Both<A, B> d, Two<V> r) {
    store(d.a, r.a);
    store(d.b, r.b);
}

TEVS_INLINE void moveBytes(const void* from, void* to, int n) {
    const char* s = static_cast<const char*>(from);
    char* d = static_cast<char*>(to);
    const auto piece = [&](auto bytes) {
        memcpy(d, s, sizeof bytes);
        s += sizeof bytes;
        d += sizeof bytes;
    };
    for (; n >= 8; n -= 8) piece(uint64_t{});
    if (n & 4) piece(uint32_t{});
    if (n & 2) piece(uint16_t{});
    if (n & 1) piece(uint8_t{});
}

// The n < 16 bytes at p, elements of Size bytes, and the first element over and over behind them. Put together in a register: a vector read back from
// memory that narrower stores have just written waits for all of them.
template <int Size> TEVS_INLINE __m128i partial(const void* p, int n) {
    const auto piece = [p](auto bytes, int at) {
        memcpy(&bytes, static_cast<const char*>(p) + at, sizeof bytes);
        return bytes;
    };
    const auto shifted = [](__m128i v, int bytes) { return _mm_sll_epi64(v, _mm_cvtsi32_si128(8 * bytes)); };
    __m128i v;
    if (n >= 8) {
        const __m128i last = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(static_cast<const char*>(p) + n - 8));
        v = _mm_unpacklo_epi64(_mm_loadl_epi64(static_cast<const __m128i*>(p)), _mm_srl_epi64(last, _mm_cvtsi32_si128(8 * (16 - n))));
    } else if (n >= 4) {
        v = _mm_or_si128(_mm_cvtsi32_si128(piece(int32_t{}, 0)), shifted(_mm_cvtsi32_si128(piece(int32_t{}, n - 4)), n - 4));
    } else {   // 1 .. 3
        v = _mm_cvtsi32_si128(piece(uint8_t{}, 0) | piece(uint8_t{}, n / 2) << 8 * (n / 2) | piece(uint8_t{}, n - 1) << 8 * (n - 1));
    }
    // The first element over and over, out of the register: by way of memory a 32-bit build reads four bytes where it has just written one.
    const __m128i twice = Size == 1 ? _mm_unpacklo_epi8(v, v) : v, half = Size <= 2 ? _mm_shufflelo_epi16(twice, 0) : v;
    const __m128i spread = Size == 4 ? _mm_shuffle_epi32(v, 0) : _mm_unpacklo_epi64(half, half);
    static const uint8_t kBehind[32] = {0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,
                                        0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff};
    return _mm_or_si128(v, _mm_and_si128(spread, _mm_loadu_si128(reinterpret_cast<const __m128i*>(kBehind + 16 - n))));
}

// A stand-in of N elements for the n < N elements at a pointer: a vector that starts there would run past the last of them.
// The lanes beyond repeat element 0, so they raise no condition that the true elements do not.
template <int N, class P> struct Stage;
template <int N, class T> struct Stage<N, T*> {
    struct Cell {
        unsigned char bytes[sizeof(T)];
    };
    static constexpr int kSize = sizeof(Cell), kBytes = N * kSize;
    Cell cell[N];
    TEVS_INLINE T* at() { return reinterpret_cast<T*>(cell); }
    TEVS_INLINE void in(const void* p, int n) {
        if constexpr (kBytes <= 16 && (kSize & (kSize - 1)) == 0) {
            const __m128i v = partial<kSize>(p, n * kSize);
            memcpy(cell, &v, sizeof cell);
        } else {
            for (int i = 0; i < N; ++i) memcpy(cell + i, p, sizeof(Cell));
            moveBytes(p, cell, n * kSize);
        }
    }
    TEVS_INLINE void out(void* p, int n) const { moveBytes(cell, p, n * kSize); }
};
template <int N, class A, class B> struct Stage<N, Both<A, B>> {
    Stage<N, A*> a;
    Stage<N, B*> b;
    TEVS_INLINE Both<A, B> at() { return {a.at(), b.at()}; }
    TEVS_INLINE void out(Both<A, B> d, int n) const {
        a.out(d.a, n);
        b.out(d.b, n);
    }
};

template <int N, class T> TEVS_INLINE Stage<N, const T*> staged(const T* s, int n) {
    Stage<N, const T*> t;
    t.in(s, n);
    return t;
}

// d[i] = f(s[i], ...) for 0 <= i < n. f(Lanes<N>, s...) loads N elements at each of its pointers and returns what put() stores.
//
// Every element is read before it is written, so a destination may equal a source. There is no scalar twin: the last N elements are
// computed before anything is stored and stored last, over what the loop has left there, which is the same to the bit. Below N elements the width
// is halved, down to Least lanes; fewer than those go through a padded copy. Nothing is read or written past element n - 1.
// The count is an int, or a ptrdiff_t where it counts bytes.
template <int N, int Least, class Count, class D, class F, class... S> TEVS_INLINE void map(Count n, D d, F f, S... s) {
    if (n >= N) {
        const auto last = f(Lanes<N>{}, (s + (n - N))...);
        for (Count i = 0; i < n - N; i += N) put(d + i, f(Lanes<N>{}, (s + i)...));
        put(d + (n - N), last);
    } else if constexpr (N > Least) {
        map<N / 2, Least>(n, d, f, s...);
    } else {
        Stage<N, D> t;
        [&](auto... copy) { put(t.at(), f(Lanes<N>{}, copy.at()...)); }(staged<N>(s, int(n))...);
        t.out(d, int(n));
    }
}

// Two lanes that belong together, as one element: the parts of a complex number.
template <class T> struct LanePair { T re, im; };

// map() for an f in which the lanes of a pair meet. N, Least and n count lanes and f sees pointers to lanes, but all goes by
// whole pairs: what pads a short vector is its first pair, and f meets no pair that is not an element.
template <int N, int Least, class T, class F, class... S> TEVS_INLINE void mapPairs(ptrdiff_t n, T* d, F f, const S*... s) {
    map<N / 2, Least / 2>(
        n / 2, reinterpret_cast<LanePair<T>*>(d), [&f](auto w, auto... p) TEVS_HERE { return f(Lanes<2 * w.n>{}, reinterpret_cast<const S*>(p)...); },
        reinterpret_cast<const LanePair<S>*>(s)...);
}

// map() for an f of a hundred instructions: two copies of it instead of two for every width. What is left after whole steps goes through a padded copy.
template <int N, class D, class F, class... S> TEVS_INLINE void mapLong(int n, D d, F f, S... s) {
    int i = 0;
    for (; i <= n - N; i += N) put(d + i, f(Lanes<N>{}, (s + i)...));
    if (i == n) return;
    Stage<N, D> t;
    [&](auto... copy) TEVS_HERE { put(t.at(), f(Lanes<N>{}, copy.at()...)); }(staged<N>(s + i, n - i)...);
    t.out(d + i, n - i);
}

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
