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

// A stand-in of N elements for the n < N elements at a pointer: a vector that starts there would run past the last of them.
// The lanes beyond repeat element 0, so they raise no condition that the true elements do not.
template <int N, class P> struct Stage;
template <int N, class T> struct Stage<N, T*> {
    struct Cell {
        unsigned char bytes[sizeof(T)];
    };
    Cell cell[N];
    TEVS_INLINE T* at() { return reinterpret_cast<T*>(cell); }
    TEVS_INLINE void in(const void* p, int n) {
        const Cell* c = static_cast<const Cell*>(p);
        for (int i = 0; i < N; ++i) cell[i] = c[i < n ? i : 0];
    }
    TEVS_INLINE void out(void* p, int n) const {
        for (int i = 0; i < n; ++i) static_cast<Cell*>(p)[i] = cell[i];
    }
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

// map() for an f of a hundred instructions: two copies of it instead of two for every width. What is left after whole steps goes through a padded copy.
template <int N, class D, class F, class... S> TEVS_INLINE void mapLong(int n, D d, F f, S... s) {
    int i = 0;
    for (; i <= n - N; i += N) put(d + i, f(Lanes<N>{}, (s + i)...));
    if (i == n) return;
    Stage<N, D> t;
    [&](auto... copy) __attribute__((always_inline)) { put(t.at(), f(Lanes<N>{}, copy.at()...)); }
    (staged<N>(s + i, n - i)...);
    t.out(d + i, n - i);
}

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
