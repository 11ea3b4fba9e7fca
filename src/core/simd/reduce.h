// The driver of reductions: vectors of elements to one result.
#pragma once

#include "core/complex.h"
#include "core/simd/map.h"
#include "core/simd/real.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// ---- sources -----------------------------------------------------------------------------------------------------------------------
//
// A source gives N lanes for the N elements at its place by load<N>(), the first of them by first(), and moves on by +. held<N>(n) is a copy of the n < N elements there whose
// at() is a source of N: a load of N at the place itself would run past the last of them.

template <int N, class S> struct Held {
    S source;
    Stage<N, decltype(S::p)> cells;
    TEVS_INLINE S at() {
        source.p = cells.at();
        return source;
    }
};
template <int N, class S> TEVS_INLINE Held<N, S> heldCopy(S s, int n) {
    Held<N, S> h{s, {}};
    h.cells.in(s.p, n);
    return h;
}
// The same for a source made of one or two others.
template <class Make, class H> struct HeldOne {
    Make make;
    H a;
    TEVS_INLINE auto at() { return make(a.at()); }
};
template <class Make, class H> struct HeldTwo {
    Make make;
    H a, b;
    TEVS_INLINE auto at() { return make(a.at(), b.at()); }
};
template <class Make, class H> TEVS_INLINE HeldOne<Make, H> madeOf(Make make, H a) { return {make, a}; }
template <class Make, class H> TEVS_INLINE HeldTwo<Make, H> madeOf(Make make, H a, H b) { return {make, a, b}; }

// The elements as they are.
template <class T> struct Elements {
    const T* p;
    friend TEVS_INLINE Elements operator+(Elements s, ptrdiff_t i) { return {s.p + i}; }
    TEVS_INLINE auto first() const { return *p; }
    template <int N> TEVS_INLINE auto load() const { return TEVS_LEVEL_NS::load<T, N>(p); }
    template <int N> TEVS_INLINE auto held(int n) const { return heldCopy<N>(*this, n); }
};

// The elements in a type of twice the width.
template <class T> struct WideElements {
    const T* p;
    friend TEVS_INLINE WideElements operator+(WideElements s, ptrdiff_t i) { return {s.p + i}; }
    TEVS_INLINE auto first() const { return double(*p); }
    template <int N> TEVS_INLINE auto load() const { return loadWide<N>(p); }
    template <int N> TEVS_INLINE auto held(int n) const { return heldCopy<N>(*this, n); }
};

// a[n] - b[n]
template <class S> struct Differences {
    S a, b;
    friend TEVS_INLINE Differences operator+(Differences s, ptrdiff_t i) { return {s.a + i, s.b + i}; }
    TEVS_INLINE auto first() const { return a.first() - b.first(); }
    template <int N> TEVS_INLINE auto load() const { return a.template load<N>() - b.template load<N>(); }
    template <int N> TEVS_INLINE auto held(int n) const {
        return madeOf([](auto x, auto y) { return Differences<decltype(x)>{x, y}; }, a.template held<N>(n), b.template held<N>(n));
    }
};

// |x|, also of -0
template <class S> struct Magnitudes {
    S a;
    friend TEVS_INLINE Magnitudes operator+(Magnitudes s, ptrdiff_t i) { return {s.a + i}; }
    TEVS_INLINE auto first() const { return a.first() <= 0 ? 0 - a.first() : a.first(); }
    template <int N> TEVS_INLINE auto load() const { return abs(a.template load<N>()); }
    template <int N> TEVS_INLINE auto held(int n) const {
        return madeOf([](auto x) { return Magnitudes<decltype(x)>{x}; }, a.template held<N>(n));
    }
};

// ---- lanes --------------------------------------------------------------------------------------------------------------------------

template <int By, class V, int... I> TEVS_INLINE V rotatedOf(V v, Lane<I...>) { return __builtin_shufflevector(v, v, ((I + By) % int(sizeof...(I)))...); }

// Lanes i, i + Keep, i + 2 Keep, ... combined to lane i, for the first Keep lanes.
template <int Keep, class V, class Join, int Apart = kCount<V> / 2> TEVS_INLINE auto foldLanes(V v, Join join) {
    if constexpr (sizeof(V) > 16) {
        return foldLanes<Keep>(join(low(v), high(v)), join);
    } else if constexpr (Apart >= Keep) {
        return foldLanes<Keep, V, Join, Apart / 2>(join(v, rotatedOf<Apart>(v, Iota<kCount<V>>{})), join);
    } else {
        return v;
    }
}
constexpr auto plus = [](auto a, auto b) { return a + b; };
template <class V> TEVS_INLINE auto sumOfLanes(V v) { return foldLanes<1>(v, plus)[0]; }

template <class V, class T> TEVS_INLINE V splatAs(T x) {
    if constexpr (T(0.5) != 0)
        return splat<kCount<V>>(x);
    else
        return splat<T, kCount<V>>(x);
}

// ---- the driver -----------------------------------------------------------------------------------------------------------------------

alignas(64) const uint8_t kWindow[3 * 64] = {
#define TEVS_ONES 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255
#define TEVS_ZEROS 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0
    TEVS_ZEROS, TEVS_ZEROS, TEVS_ZEROS, TEVS_ZEROS, TEVS_ONES, TEVS_ONES, TEVS_ONES, TEVS_ONES};
#undef TEVS_ONES
#undef TEVS_ZEROS

// v in its last or its first n lanes, zeros or `pad` elsewhere.
template <class V> TEVS_INLINE V lastLanes(int n, V v) {
    using Bits = Vec<uint8_t, int(sizeof(V))>;
    return (V)((Bits)v & loadAs<Bits>(kWindow + 64 - (kCount<V> - n) * int(sizeof(V{}[0]))));
}
template <class V> TEVS_INLINE V firstLanes(int n, V v, V pad) {
    using Bits = Vec<uint8_t, int(sizeof(V))>;
    const auto ones = loadAs<Bits>(kWindow + 128 - n * int(sizeof(V{}[0])));
    return (V)(((Bits)v & ones) | ((Bits)pad & ~ones));
}

// U states that take turns. A tree and not an array, which the compiler would keep in memory.
template <class State, int U> struct Turns {
    Turns<State, U / 2> a, b;
    explicit TEVS_INLINE Turns(State s) : a(s), b(s) {}
    TEVS_INLINE Turns(Turns<State, U / 2> first, Turns<State, U / 2> second) : a(first), b(second) {}
    template <int N, class Op, class... S> TEVS_INLINE Turns step(Op op, S... s) const {
        return {a.template step<N>(op, s...), b.template step<N>(op, (s + U / 2 * N)...)};
    }
    template <class Op> TEVS_INLINE Turns join(Op op, Turns t) const { return {a.join(op, t.a), b.join(op, t.b)}; }
};
template <class State> struct Turns<State, 1> {
    State state;
    explicit TEVS_INLINE Turns(State s) : state(s) {}
    template <int N, class Op, class... S> TEVS_INLINE Turns step(Op op, S... s) const { return Turns(op.step(state, s.template load<N>()...)); }
    template <class Op> TEVS_INLINE Turns join(Op op, Turns t) const { return Turns(op.join(state, t.state)); }
};

// One turn of each power of two below U that is left of n elements from i on; the state in the end, short of what is less than a vector.
template <int N, class State, int U, class Op, class... S> TEVS_INLINE Turns<State, 1> lastTurns(Turns<State, U> t, ptrdiff_t& i, ptrdiff_t n, Op op, S... s) {
    if constexpr (U == 1) {
        return t;
    } else {
        auto half = t.a.join(op, t.b);
        if (i <= n - U / 2 * N) {
            half = half.template step<N>(op, (s + i)...);
            i += U / 2 * N;
        }
        return lastTurns<N>(half, i, n, op, s...);
    }
}

// The last and the first n lanes of x, and what adds nothing.
template <class Op, class V> TEVS_INLINE V lastOf(int n, V x) { return Op::kIdempotent ? x : lastLanes(n, x); }
template <class Op, class V> TEVS_INLINE V firstOf(int n, V x) { return firstLanes(n, x, Op::kIdempotent ? splatAs<V>(x[0]) : V{}); }

// The result of op over the elements 0 .. n - 1 of the sources, n >= 1. An operation has
//
//     start<X...>()      the state before the first element, for vectors of types X; its type follows the width
//     step(state, x...)  the state after one vector of each source
//     join(a, b)         two states in one
//     finish(state)      the result
//     kIdempotent        whether an element that is taken twice adds nothing; if not, a zero adds nothing
//
// U states take turns, so that steps overlap. The last vector ends with the last element and what the loop has had of it is padded out; below N
// elements the width is halved, down to Least lanes; fewer than those go through a copy. Nothing is read past element n - 1, and the order of the
// steps depends on n alone.
template <int N, int Least, int U, class Op, class... S> TEVS_INLINE auto reduce(ptrdiff_t n, Op op, S... s) {
    auto start = op.template start<decltype(s.template load<N>())...>();
    if (n >= N) {
        Turns<decltype(start), U> turns(start);
        ptrdiff_t i = 0;
        for (; i <= n - U * N; i += U * N) turns = turns.template step<N>(op, (s + i)...);
        auto state = lastTurns<N>(turns, i, n, op, s...).state;
        if (i < n) {
            const int left = int(n - i);
            state = op.step(state, lastOf<Op>(left, (s + (n - N)).template load<N>())...);
        }
        return op.finish(state);
    } else if constexpr (N > Least) {
        return reduce<N / 2, Least, 1>(n, op, s...);   // at most one whole vector and a part
    } else {
        return [&](auto... copy) { return op.finish(op.step(start, firstOf<Op>(int(n), copy.at().template load<N>())...)); }(s.template held<N>(int(n))...);
    }
}

// States that are sums.
struct Additive {
    static constexpr bool kIdempotent = false;
    template <class A> TEVS_INLINE A join(A a, A b) const { return a + b; }
};

template <class V> TEVS_INLINE Two<V> operator+(Two<V> x, Two<V> y) { return {x.a + y.a, x.b + y.b}; }

// Exact sums in lanes of half the width that they need, over blocks of at most kExactBlock elements: a term t adds t modulo 2^32 to `low` and floor(t / 2^16) to
// `high`. The sum less 2^16 * high is then at least 0 and below kExactBlock * 2^16 = 2^32, so `low` has all of it.
constexpr int kExactBlock = 1 << 16;
template <class V> using Unsigned32 = Vec<uint32_t, int(sizeof(V) / 4)>;
template <class V> struct ExactSum {
    Unsigned32<V> low;
    V high;
    friend TEVS_INLINE ExactSum operator+(ExactSum x, ExactSum y) { return {x.low + y.low, x.high + y.high}; }
    TEVS_INLINE int64_t sum() const {
        const uint32_t h = uint32_t(sumOfLanes(high));
        return int64_t{int32_t(h)} * 65536 + (sumOfLanes(low) - (h << 16));
    }
};

// reduce() over blocks of at most kExactBlock elements, and the sum of their results.
template <int N, int Least, int U, class Op, class... S> TEVS_INLINE auto reduceBlocks(ptrdiff_t n, Op op, S... s) {
    decltype(reduce<N, Least, U>(n, op, s...)) sum{};
    for (ptrdiff_t i = 0; i < n; i += kExactBlock) sum = sumOf(sum, reduce<N, Least, U>(n - i < kExactBlock ? n - i : kExactBlock, op, (s + i)...));
    return sum;
}

// How many states take turns where each is one register.
constexpr int kTurns = kFewRegisters ? 4 : 8;
// Whether steps of products do well fused. A fused step waits for the whole one before it, and four that take turns wait longer than products and sums apart do.
constexpr bool kFusedTurns = kTurns >= 8;

// An extreme is replaced by a strictly better element only: NaN is never better, and nothing is better than NaN.
struct Greater {
    static constexpr auto better = [](auto x, auto best) { return x > best; };
    static constexpr auto pick = [](auto x, auto best) { return x > best ? x : best; };
};
struct Less {
    static constexpr auto better = [](auto x, auto best) { return x < best; };
    static constexpr auto pick = [](auto x, auto best) { return x < best ? x : best; };
};

// The extremes of each order, as an operation of reduce(): it starts from those of what went before, and its result is it again, further on.
template <class T, class... Order> struct Running {
    static constexpr bool kIdempotent = true;
    static constexpr int k = int(sizeof...(Order));
    T best[k];

    template <class V> struct State { V v[k]; };
    template <class V> TEVS_INLINE State<V> start() const {
        State<V> s;
        for (int i = 0; i < k; ++i) s.v[i] = splatAs<V>(best[i]);
        return s;
    }
    template <class V> TEVS_INLINE State<V> step(State<V> s, V x) const {
        int i = 0;
        ((s.v[i] = Order::pick(x, s.v[i]), ++i), ...);
        return s;
    }
    template <class V> TEVS_INLINE State<V> join(State<V> a, State<V> b) const {
        int i = 0;
        ((a.v[i] = Order::pick(a.v[i], b.v[i]), ++i), ...);
        return a;
    }
    template <class V> TEVS_INLINE Running finish(State<V> s) const {
        Running r;
        int i = 0;
        ((r.best[i] = foldLanes<1>(s.v[i], Order::pick)[0], ++i), ...);
        return r;
    }
    template <int Least, class S> TEVS_INLINE Running over(ptrdiff_t n, S s) const {
        return reduce<kRegisterBytes / int(sizeof(T)), Least, kTurns / k>(n, *this, s);
    }
};

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
