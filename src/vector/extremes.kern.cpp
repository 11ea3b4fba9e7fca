#include "core/simd/reduce.h"
#include "vector/extremes.table.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// ---- positions ------------------------------------------------------------------------------------------------------------------------

template <class V> TEVS_INLINE uint32_t matches(V equal) { return byteSigns((Vec<uint8_t, int(sizeof(V))>)equal); }

// The index of the first element equal to value; there is one.
template <class T, int N = kLanes<T>> int firstEqual(const T* src, int n, T value) {
    if constexpr (N > kLeast<T>) {
        if (n < N) return firstEqual<T, N / 2>(src, n, value);
    }
    if (n < N) {
        int i = 0;
        while (!(src[i] == value)) ++i;
        return i;
    }
    const auto v = splat<T, N>(value);
    const auto at = [=](int i) { return (Vec<uint8_t, N* int(sizeof(T))>)(load<T, N>(src + i) == v); };
    int i = 0;
    for (; i <= n - 4 * N; i += 4 * N)
        if (matches((at(i) | at(i + N)) | (at(i + 2 * N) | at(i + 3 * N)))) break;
    for (; i <= n - N; i += N)
        if (const uint32_t m = matches(at(i))) return i + __builtin_ctz(m) / int(sizeof(T));
    return n - N + __builtin_ctz(matches(at(n - N))) / int(sizeof(T));
}

// ---- extremes -------------------------------------------------------------------------------------------------------------------------

template <class T, class... Order> TEVS_INLINE Running<T, Order...> startFrom(T x) { return {{((void)sizeof(Order), x)...}}; }

template <class T, class... Order> TEVS_INLINE Running<T, Order...> extremesOf(const T* src, int n) {
    auto r = startFrom<T, Order...>(src[0]).template over<kLeast<T>>(n, Elements<T>{src});
    // Zeros of either sign are equal; which lane wins would decide the sign.
    if constexpr (T(0.5) != 0)
        for (T& x : r.best)
            if (x == 0) x = src[firstEqual(src, n, x)];
    return r;
}

template <class T, class Order> void value(const T* src, int n, T* out) { *out = extremesOf<T, Order>(src, n).best[0]; }
template <class T> void valueTwo(const T* src, int n, T* min, T* max) {
    const auto r = extremesOf<T, Less, Greater>(src, n);
    *min = r.best[0];
    *max = r.best[1];
}

// The extremes are found block by block; which position in its block an extreme has is looked up once, for the block that the last better one came from,
// which is still in the first cache if it is the last. Where nothing is better than the first element, that is the one.
template <class T, class... Order> struct Places { int at[sizeof...(Order)]; };
template <class T, class... Order> TEVS_INLINE Places<T, Order...> placesOf(const T* src, int n) {
    constexpr int kBlock = 8192 / int(sizeof(T)), k = int(sizeof...(Order));
    auto best = startFrom<T, Order...>(src[0]);
    int from[k];
    for (int& f : from) f = -1;
    for (int left = n; left > 0; left -= kBlock) {   // b + kBlock may leave the range
        const int b = n - left;
        const auto next = best.template over<kLeast<T>>(left < kBlock ? left : kBlock, Elements<T>{src + b});
        int i = 0;
        ((from[i] = Order::better(next.best[i], best.best[i]) ? b : from[i], ++i), ...);
        best = next;
    }
    Places<T, Order...> p;
    for (int i = 0; i < k; ++i) p.at[i] = from[i] < 0 ? 0 : from[i] + firstEqual(src + from[i], n - from[i] < kBlock ? n - from[i] : kBlock, best.best[i]);
    return p;
}

template <class T, class Order> void place(const T* src, int n, T* out, int* index) {
    const auto p = placesOf<T, Order>(src, n);
    *out = src[p.at[0]];
    *index = p.at[0];
}
template <class T> void placeTwo(const T* src, int n, T* min, int* minIndex, T* max, int* maxIndex) {
    const auto p = placesOf<T, Less, Greater>(src, n);
    const T lo = src[p.at[0]], hi = src[p.at[1]];
    *min = lo;
    *minIndex = p.at[0];
    *max = hi;
    *maxIndex = p.at[1];
}

template <class T, class Order> constexpr OneExtreme<T> kOne = {value<T, Order>, place<T, Order>};
template <class T> constexpr TwoExtremes<T> kTwo = {valueTwo<T>, placeTwo<T>};

// ---- magnitudes -----------------------------------------------------------------------------------------------------------------------

template <class T> struct Unsigned { using type = uint32_t; };
template <> struct Unsigned<int16_t> { using type = uint16_t; };

// -|x|, which holds for INT_MIN too.
template <class T> struct Negated {
    const T* p;
    friend TEVS_INLINE Negated operator+(Negated s, ptrdiff_t i) { return {s.p + i}; }
    template <int N> TEVS_INLINE auto load() const {
        const auto x = TEVS_LEVEL_NS::load<T, N>(p);
        const auto minus = (Vec<T, N>)-(Vec<typename Unsigned<T>::type, N>)x;
        return x < minus ? x : minus;
    }
    template <int N> TEVS_INLINE auto held(int n) const { return heldCopy<N>(*this, n); }
};

template <class T> T nearest(const T* src, int n) {
    const T first = src[0] < 0 ? src[0] : T(-src[0]);
    return startFrom<T, Greater>(first).template over<kLeast<T>>(n, Negated<T>{src}).best[0];
}

// Elements times 0 are 0, or NaN where they are not finite: their sum goes along.
template <class V> struct Checked { V max, zero; };
struct CheckedMagnitude {
    static constexpr bool kIdempotent = true;
    template <class V> TEVS_INLINE Checked<V> start() const { return {V{}, V{}}; }
    template <class V> TEVS_INLINE Checked<V> step(Checked<V> s, V x) const {
        const V zero = x * V{};
        return {Greater::pick(abs(x), s.max), s.zero + zero};
    }
    template <class V> TEVS_INLINE Checked<V> join(Checked<V> a, Checked<V> b) const { return {Greater::pick(a.max, b.max), a.zero + b.zero}; }
    template <class V> TEVS_INLINE auto finish(Checked<V> s) const { return foldLanes<1>(s.max, Greater::pick)[0] + sumOfLanes(s.zero); }
};
template <class T> T magnitude(const T* src, int n) { return reduce<kLanes<T>, kLeast<T>, kTurns / 2>(n, CheckedMagnitude{}, Elements<T>{src}); }

// ---- element by element ---------------------------------------------------------------------------------------------------------------

template <class T, class Order> void every(const T* src, T* srcDst, int n) {
    map<kLanes<T>, kLeast<T>>(
        n, srcDst, [](auto w, auto a, auto b) { return Order::pick(load<T, w.n>(a), load<T, w.n>(b)); }, src, static_cast<const T*>(srcDst));
}

}   // namespace

extern const ExtremesKernels extremes = {
    .max16s = kOne<int16_t, Greater>,
    .min16s = kOne<int16_t, Less>,
    .max32s = kOne<int32_t, Greater>,
    .min32s = kOne<int32_t, Less>,
    .max32f = kOne<float, Greater>,
    .min32f = kOne<float, Less>,
    .max64f = kOne<double, Greater>,
    .min64f = kOne<double, Less>,
    .minMax8u = kTwo<uint8_t>,
    .minMax16u = kTwo<uint16_t>,
    .minMax16s = kTwo<int16_t>,
    .minMax32u = kTwo<uint32_t>,
    .minMax32s = kTwo<int32_t>,
    .minMax32f = kTwo<float>,
    .minMax64f = kTwo<double>,
    .nearest16s = nearest<int16_t>,
    .nearest32s = nearest<int32_t>,
    .magnitude32f = magnitude<float>,
    .magnitude64f = magnitude<double>,
    .maxEvery16s = every<int16_t, Greater>,
    .maxEvery32s = every<int32_t, Greater>,
    .maxEvery32f = every<float, Greater>,
    .minEvery16s = every<int16_t, Less>,
    .minEvery32s = every<int32_t, Less>,
    .minEvery32f = every<float, Less>,
};

}   // namespace tevs::TEVS_LEVEL_NS
