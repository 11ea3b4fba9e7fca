#include "filter/median.table.h"

#include "core/simd/map.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// ---- the lower and the higher of two --------------------------------------------------------------------------------------------------------

// The sign bit of a lane is set where a < b, of 64 bits.
template <class V> TEVS_INLINE V signOfLess(V a, V b) {
#if TEVS_LEVEL >= 2
    return (V)(a < b);
#else
    // That of the difference, but where this overflows. The compiler would compare the lanes one by one.
    using U = Vec<uint64_t, kCount<V>>;
    const U difference = (U)a - (U)b;
    return (V)(difference ^ (((U)a ^ (U)b) & (difference ^ (U)a)));
#endif
}

template <class V> TEVS_INLINE V lower(V a, V b) {
    using T = Element<V>;
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(V) == 32 && __is_same(T, uint8_t)) return (V)_mm256_min_epu8((__m256i)a, (__m256i)b);
    if constexpr (sizeof(V) == 32 && __is_same(T, int16_t)) return (V)_mm256_min_epi16((__m256i)a, (__m256i)b);
#endif
    if constexpr (sizeof(V) == 16 && __is_same(T, uint8_t)) return (V)_mm_min_epu8((__m128i)a, (__m128i)b);
    if constexpr (sizeof(V) == 16 && __is_same(T, int16_t)) return (V)_mm_min_epi16((__m128i)a, (__m128i)b);
    if constexpr (__is_same(T, int32_t)) return minimum(a, b);
    if constexpr (__is_same(T, int64_t)) return bySign(signOfLess(a, b), a, b);
    if constexpr (__is_same(T, float) || __is_same(T, double)) return atMost(a, b);
}
template <class V> TEVS_INLINE V higher(V a, V b) {
    using T = Element<V>;
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(V) == 32 && __is_same(T, uint8_t)) return (V)_mm256_max_epu8((__m256i)a, (__m256i)b);
    if constexpr (sizeof(V) == 32 && __is_same(T, int16_t)) return (V)_mm256_max_epi16((__m256i)a, (__m256i)b);
#endif
    if constexpr (sizeof(V) == 16 && __is_same(T, uint8_t)) return (V)_mm_max_epu8((__m128i)a, (__m128i)b);
    if constexpr (sizeof(V) == 16 && __is_same(T, int16_t)) return (V)_mm_max_epi16((__m128i)a, (__m128i)b);
    if constexpr (__is_same(T, int32_t)) return maximum(a, b);
    if constexpr (__is_same(T, int64_t)) return bySign(signOfLess(a, b), b, a);
    if constexpr (__is_same(T, float) || __is_same(T, double)) return atLeast(a, b);
}
template <class V> TEVS_INLINE void exchange(V& a, V& b) {
    const V least = lower(a, b);
    b = higher(a, b);
    a = least;
}

// ---- windows of 3 to 9 ----------------------------------------------------------------------------------------------------------------------

template <class V> TEVS_INLINE V middle(V a, V b, V c) { return higher(lower(a, b), lower(higher(a, b), c)); }

// Networks of 4, 10, 20 and 30 minima and maxima: what cannot be the median any more is dropped as soon as that is known. The one of nine sorts three triples;
// the median is that of the largest first, the middle second and the smallest third elements (Paeth, Median Finding on a 3x3 Grid, Graphics Gems, 1990).
template <int W, class V> TEVS_INLINE V medianOf(V* v) {
    if constexpr (W == 1) return middle(v[0], v[1], v[2]);
    if constexpr (W == 4) {
        for (int i = 0; i < 9; i += 3) {
            exchange(v[i + 1], v[i + 2]);
            exchange(v[i], v[i + 1]);
            exchange(v[i + 1], v[i + 2]);
        }
        return middle(higher(higher(v[0], v[3]), v[6]), middle(v[1], v[4], v[7]), lower(lower(v[2], v[5]), v[8]));
    }
    exchange(v[0], v[1]);
    exchange(v[2], v[3]);
    if constexpr (W == 2) return middle(higher(v[0], v[2]), lower(v[1], v[3]), v[4]);
    if constexpr (W == 3) {   // the ends of five, then of four, dropped
        exchange(v[0], v[2]);
        exchange(v[1], v[3]);
        v[4] = lower(higher(v[0], v[4]), v[3]);
        exchange(v[1], v[2]);
        exchange(v[4], v[5]);
        return middle(higher(v[1], v[4]), lower(v[2], v[5]), v[6]);
    }
}

// Windows of a vector of outputs, or of two where one is shorter than they reach back. What the next ones take from before their own place is read before these are
// stored, and the last ones are computed first and stored last: dst may be src.
template <int W, int N, class T> TEVS_INLINE void network(const T* s, T* d, ptrdiff_t n) {
    using V = Vec<T, N>;
    constexpr int U = N < W ? 2 : 1, kStep = U * N;
    struct Behind {
        V v[W];
    };
    struct Medians {
        V v[U];
    };
    const auto behind = [](const T* at) TEVS_HERE {
        Behind b;
        for (int k = 0; k < W; ++k) b.v[k] = load<T, N>(at - W + k);
        return b;
    };
    const auto medians = [](const T* at, const Behind& first) TEVS_HERE {
        Medians m;
        for (int u = 0; u < U; ++u) {
            V v[2 * W + 1];
            for (int k = 0; k <= 2 * W; ++k) {
                const int o = u * N + k;
                v[k] = o < W ? first.v[o < W ? o : 0] : load<T, N>(at - W + o);
            }
            m.v[u] = medianOf<W>(v);
        }
        return m;
    };
    const auto put = [](T* at, const Medians& m) TEVS_HERE {
        for (int u = 0; u < U; ++u) store(at + u * N, m.v[u]);
    };
    const Medians last = medians(s + (n - kStep), behind(s + (n - kStep)));
    Behind next = behind(s);
    for (ptrdiff_t i = 0; i < n - kStep;) {
        const Medians m = medians(s + i, next);
        i += kStep;
        if (i < n - kStep) next = behind(s + i);
        put(d + (i - kStep), m);
    }
    put(d + (n - kStep), last);
}
template <int W, class T> void networkOf(const T* s, T* d, ptrdiff_t n) {
    if (n >= kLanes<T>)
        network<W, kLanes<T>>(s, d, n);
    else
        network<W, kLeast<T>>(s, d, n);
}

// ---- larger windows: tiles ------------------------------------------------------------------------------------------------------------------
//
// What all windows of b neighbouring outputs have in common is 2w + 2 - b inputs, the core. Of these only the middle b can be anybody's median: b - 1 inputs are still
// to come. Given them in order, those of each half of the tile follow: h = b/2 inputs more are common to its windows; with these, in order, the h lowest of all
// and the h highest are dropped, and h are left to be put in order. At a tile of one output one is left, which is its median. (After Adams, Fast Median Filters Using
// Separable Sorting Networks, ACM Trans. Graph. 40(4), 2021.) No step depends on the values: a vector does it for as many tiles at a time. Sorting is
// Batcher's (1968): bitonic sequences, whose elements half the length apart are exchanged where need be, then a quarter, and so on.

template <int H, class V> TEVS_INLINE void cleanIn(V* v) {
    if constexpr (H > 1) {
#pragma GCC unroll 8
        for (int i = 0; i < H / 2; ++i) exchange(v[i], v[i + H / 2]);
        cleanIn<H / 2>(v);
        cleanIn<H / 2>(v + H / 2);
    }
}
template <int H, class V> TEVS_INLINE void sortIn(V* v) {
    if constexpr (H == 2) exchange(v[0], v[1]);
    if constexpr (H == 4) {
        sortIn<2>(v);
        sortIn<2>(v + 2);
        exchange(v[0], v[2]);
        exchange(v[1], v[3]);
        exchange(v[1], v[2]);
    }
    if constexpr (H == 8) {   // odd-even merging: 19 exchanges
        sortIn<4>(v);
        sortIn<4>(v + 4);
        for (int i = 0; i < 4; ++i) exchange(v[i], v[i + 4]);
        exchange(v[2], v[4]);
        exchange(v[3], v[5]);
        for (int i = 1; i < 7; i += 2) exchange(v[i], v[i + 1]);
    }
}

constexpr int kIn = 8;   // rows that are worked on in registers

template <class V> TEVS_INLINE void inRegisters(V* rows, void (*f)(V*)) {
    V v[kIn];
    for (int i = 0; i < kIn; ++i) v[i] = rows[i];
    f(v);
    for (int i = 0; i < kIn; ++i) rows[i] = v[i];
}
// A bitonic sequence of h >= kIn rows, in order.
template <class V> void clean(V* rows, int h) {
    int s = h / 2;
    for (; s >= 2 * kIn; s /= 4)   // two steps at a time
        for (V* p = rows; p < rows + h; p += 2 * s)
            for (int i = 0; i < s / 2; ++i) {
                V a = p[i], b = p[i + s / 2], c = p[i + s], d = p[i + s + s / 2];
                exchange(a, c);
                exchange(b, d);
                exchange(a, b);
                exchange(c, d);
                p[i] = a, p[i + s / 2] = b, p[i + s] = c, p[i + s + s / 2] = d;
            }
    for (; s >= kIn; s /= 2)
        for (V* p = rows; p < rows + h; p += 2 * s)
            for (int i = 0; i < s; ++i) exchange(p[i], p[i + s]);
    for (V* p = rows; p < rows + h; p += kIn) inRegisters<V>(p, [](V* v) { cleanIn<kIn>(v); });
}
// Two runs of h >= kIn rows in order as one.
template <class V> void merge(V* rows, int h) {
    for (int i = 0; i < h; ++i) exchange(rows[i], rows[2 * h - 1 - i]);
    clean(rows, h);
    clean(rows + h, h);
}

template <class T> class Tiling {
    static constexpr int N = kLanes<T>;
    using V = Vec<T, N>;

public:
    Tiling(const Tiles& shape, const T* streams, T* out, void* rows)
        : w_(shape.w), b_(1 << shape.log2), stride_(shape.stride), offset_(shape.offset), streams_(streams), out_(out), rows_(static_cast<V*>(rows)) {}

    void run(int tiles) {
        for (; tiles > 0; tiles -= N, streams_ += N, out_ += N) {
            if (b_ <= kIn)
                b_ == kIn ? start<kIn>() : start<kIn / 2>();
            else
                start();
        }
    }

private:
    V row(int q) const { return load<T, N>(streams_ + offset_[q]); }
    template <int H> TEVS_INLINE void fetch(int q, V* to) const {
#pragma GCC unroll 8
        for (int i = 0; i < H; ++i) to[i] = row(q + i);
    }
    // Rows lie for the halves of a node behind its own.
    V* common() const { return rows_ + 3 * b_; }

    // n <= b inputs of the core from q on in order, and behind and before them as many that are below and above all others, b rows in all.
    template <int B> TEVS_INLINE void sortedRun(int q, int n, V* to) const {
        const int pads = B - n;
#pragma GCC unroll 8
        for (int i = 0; i < B; ++i) to[i] = i < n ? row(q + i) : same<V>(i < n + pads / 2 ? lowest() : highest());
        sortIn<B>(to);
    }
    void sortedRun(int q, int n, V* to) const {
        for (int i = 0; i < b_; i += kIn) {
            V v[kIn];
            for (int k = 0; k < kIn; ++k) v[k] = i + k < n ? row(q + i + k) : same<V>(i + k < n + (b_ - n) / 2 ? lowest() : highest());
            sortIn<kIn>(v);
            for (int k = 0; k < kIn; ++k) to[i + k] = v[k];
        }
        for (int r = kIn; r < b_; r *= 2)
            for (V* p = to; p < to + b_; p += 2 * r) merge(p, r);
    }
    static T lowest() {
        if constexpr (__is_same(T, float) || __is_same(T, double))
            return -T(__builtin_inf());
        else
            return T(-1) < T(0) ? T(uint64_t{1} << (8 * sizeof(T) - 1)) : T(0);
    }
    static T highest() {
        if constexpr (__is_same(T, float) || __is_same(T, double))
            return T(__builtin_inf());
        else
            return T(~lowest());
    }

    // The middle b of the core: sorted runs of b, of which there are up to three, the last one filled up.
    void start() {
        const int core = 2 * w_ + 2 - b_;
        V *const a = rows_, *const b = a + b_, *const c = b + b_, *k = a;
        sortedRun(b_ - 1, b_ < core ? b_ : core, a);
        if (core > b_) {
            sortedRun(2 * b_ - 1, core < 2 * b_ ? core - b_ : b_, b);
            merge(a, b_);
            k = a + b_ / 2;
        }
        if (core > 2 * b_) {
            sortedRun(3 * b_ - 1, core - 2 * b_, c);
            narrow(a, c, common(), b_);
            k = common();
        }
        halves(k, 0, b_, common() + b_);
    }
    template <int B> void start() {
        const int core = 2 * w_ + 2 - B;
        V r[3 * B];
        sortedRun<B>(B - 1, B < core ? B : core, r);
        if (core <= B) return halvesIn<B>(r, 0);
        sortedRun<B>(2 * B - 1, core < 2 * B ? core - B : B, r + B);
        for (int i = 0; i < B; ++i) exchange(r[i], r[2 * B - 1 - i]);
        cleanIn<B>(r);
        cleanIn<B>(r + B);
        if (core <= 2 * B) return halvesIn<B>(r + B / 2, 0);
        sortedRun<B>(3 * B - 1, core - 2 * B, r + 2 * B);
        V k[B];
        narrowIn<B>(r, r + 2 * B, k);
        halvesIn<B>(k, 0);
    }

    // The middle h of 2h rows and h rows more, each in order. The h lowest of all are among the lower half and the new ones, and each stands beside one that is
    // not lower when these are laid against each other; likewise the h highest.
    static void narrow(const V* rows, const V* more, V* to, int h) {
        for (int i = 0; i < h; ++i) to[i] = higher(rows[i], more[h - 1 - i]);
        clean(to, h);
        for (int i = 0; i < h; ++i) to[i] = lower(to[i], rows[2 * h - 1 - i]);
        clean(to, h);
    }
    template <int H> static TEVS_INLINE void narrowIn(const V* rows, const V* more, V* to) {
#pragma GCC unroll 8
        for (int i = 0; i < H; ++i) to[i] = higher(rows[i], more[H - 1 - i]);
        cleanIn<H>(to);
#pragma GCC unroll 8
        for (int i = 0; i < H; ++i) to[i] = lower(to[i], rows[2 * H - 1 - i]);
        cleanIn<H>(to);
    }

    // The outputs p .. p+b-1, from the rows that one of them has its median among.
    void halves(const V* rows, int p, int b, V* free) const {
        const int h = b / 2;
        for (int right = 0; right < 2; ++right) {
            const int q = right ? p + 2 * w_ + 1 : p + h - 1;
            if (h == kIn) {
                V more[kIn], k[kIn];
                fetch<kIn>(q, more);
                sortIn<kIn>(more);
                narrowIn<kIn>(rows, more, k);
                halvesIn<kIn>(k, right ? p + h : p);
            } else {
                for (int i = 0; i < h; i += kIn) {
                    V v[kIn];
                    fetch<kIn>(q + i, v);
                    sortIn<kIn>(v);
                    for (int k = 0; k < kIn; ++k) free[i + k] = v[k];
                }
                for (int r = kIn; r < h; r *= 2)
                    for (V* e = free; e < free + h; e += 2 * r) merge(e, r);
                narrow(rows, free, free + h, h);
                halves(free + h, right ? p + h : p, h, free + 2 * h);
            }
        }
    }
    template <int B> TEVS_INLINE void halvesIn(const V* rows, int p) const {
        if constexpr (B == 1) {
            store(out_ + p * stride_, rows[0]);
        } else {
            constexpr int H = B / 2;
            for (int right = 0; right < 2; ++right) {
                V more[H], k[H];
                fetch<H>(right ? p + 2 * w_ + 1 : p + H - 1, more);
                sortIn<H>(more);
                narrowIn<H>(rows, more, k);
                halvesIn<H>(k, right ? p + H : p);
            }
        }
    }

    const int w_, b_;
    const ptrdiff_t stride_;
    const int32_t* const offset_;
    const T* streams_;
    T* out_;
    V* const rows_;
};
template <class T> void tile(const Tiles* shape, const T* streams, T* out, void* rows, int tiles) { Tiling<T>(*shape, streams, out, rows).run(tiles); }

// ---- floats ---------------------------------------------------------------------------------------------------------------------------------

template <class T> struct KeyOf;
template <> struct KeyOf<float> {
    using Type = int32_t;
    using Wrapping = uint32_t;
    static constexpr Wrapping kDown = 0x7fffff;
};
template <> struct KeyOf<double> {
    using Type = int64_t;
    using Wrapping = uint64_t;
    static constexpr Wrapping kDown = 0xfffffffffffff;
};
template <class T> using Key = typename KeyOf<T>::Type;

#if TEVS_REGISTER_BYTES >= 32
TEVS_INLINE Vec<int32_t, 8> unordered(Vec<float, 8> a, Vec<float, 8> b) { return (Vec<int32_t, 8>)_mm256_cmp_ps((__m256)a, (__m256)b, _CMP_UNORD_Q); }
TEVS_INLINE Vec<int64_t, 4> unordered(Vec<double, 4> a, Vec<double, 4> b) { return (Vec<int64_t, 4>)_mm256_cmp_pd((__m256d)a, (__m256d)b, _CMP_UNORD_Q); }
#endif
TEVS_INLINE Vec<int32_t, 4> unordered(Vec<float, 4> a, Vec<float, 4> b) { return (Vec<int32_t, 4>)_mm_cmpunord_ps((__m128)a, (__m128)b); }
TEVS_INLINE Vec<int64_t, 2> unordered(Vec<double, 2> a, Vec<double, 2> b) { return (Vec<int64_t, 2>)_mm_cmpunord_pd((__m128d)a, (__m128d)b); }

template <class T> bool plain(const T* s, ptrdiff_t n) {
    constexpr int N = kLanes<T>;
    using V = Vec<T, N>;
    using I = Vec<Key<T>, N>;
    const I zero = (I)same<V>(T(-0.0));
    if (n < 2 * N) {
        bool good = true;
        for (ptrdiff_t i = 0; i < n; ++i) good &= s[i] == s[i] && __builtin_bit_cast(Key<T>, s[i]) != __builtin_bit_cast(Key<T>, T(-0.0));
        return good;
    }
    I bad = {}, least = {};
    const auto look = [&](const T* p) TEVS_HERE {
        const V a = inRegister(load<T, N>(p)), b = inRegister(load<T, N>(p + N));
        bad |= unordered(a, b);
        // As signed integers, -0 is the least of all.
        if constexpr (TEVS_LEVEL >= 1 && sizeof(T) == 4)
            least = minimum(minimum(least, (I)a), (I)b);
        else
            bad |= ((I)a == zero) | ((I)b == zero);
    };
    look(s + n - 2 * N);
    ptrdiff_t i = 0;
    for (; i + 4 * N <= n; i += 4 * N) look(s + i), look(s + i + 2 * N);
    if (i + 2 * N <= n) look(s + i);
    return !any(bad | (least == zero));
}

// With all bits but the sign turned where that is set, numbers are in the order of signed integers: negative NaN below -infinity, other NaN above +infinity. As integers
// go round, taking them down to where -infinity is the least puts negative NaN behind the others.
template <class T, int N> TEVS_INLINE auto turned(Vec<typename KeyOf<T>::Wrapping, N> v) {
    using U = decltype(v);
    return v ^ (U)((Vec<Key<T>, N>)v >> int(8 * sizeof(T) - 1)) >> 1;
}
template <class T> void toKeys(const T* src, Key<T>* dst, ptrdiff_t n) {
    map<kLanes<T>, kLeast<T>>(
        n, dst, [](auto w, auto s) { return turned<T, w.n>(loadAs<Vec<typename KeyOf<T>::Wrapping, w.n>>(s)) - KeyOf<T>::kDown; }, src);
}
template <class T> void fromKeys(const Key<T>* src, T* dst, ptrdiff_t n) {
    map<kLanes<T>, kLeast<T>>(
        n, dst, [](auto w, auto s) { return turned<T, w.n>(loadAs<Vec<typename KeyOf<T>::Wrapping, w.n>>(s) + KeyOf<T>::kDown); }, src);
}

// ---- ends -----------------------------------------------------------------------------------------------------------------------------------

// An element as what has an order, and back.
template <class T> TEVS_INLINE T keyOf(T x) { return x; }
template <class T> TEVS_INLINE Key<T> floatKey(T x) {
    using U = typename KeyOf<T>::Wrapping;
    const U bits = __builtin_bit_cast(U, x);
    return Key<T>((bits ^ U(Key<T>(bits) >> (8 * sizeof(T) - 1)) >> 1) - KeyOf<T>::kDown);
}
TEVS_INLINE int32_t keyOf(float x) { return floatKey(x); }
TEVS_INLINE int64_t keyOf(double x) { return floatKey(x); }

// Both ends at once: each with copies of its last sample before or behind it, one behind the other.
template <int W, class T> void ends(const T* s, ptrdiff_t n, T* head, T* tail) {
    using K = decltype(keyOf(T{}));
    constexpr int N = kLanes<K>, kAll = (4 * W + N - 1) / N * N;
    K in[kAll + 2 * W] = {}, out[kAll];
#pragma GCC unroll 8
    for (int i = 0; i < 2 * W; ++i) {
        in[W + i] = keyOf(s[i]);
        in[3 * W + i] = keyOf(s[n - 2 * W + i]);
    }
#pragma GCC unroll 8
    for (int i = 0; i < W; ++i) in[i] = in[W], in[5 * W + i] = in[5 * W - 1];
    networkOf<W>(in + W, out, kAll);
    if constexpr (sizeof(T) >= 4 && T(0.5) != 0) fromKeys<T>(out, reinterpret_cast<T*>(out), kAll);
    memcpy(head, out, W * sizeof(T));
    memcpy(tail, out + 3 * W, W * sizeof(T));
}

// ---- streams --------------------------------------------------------------------------------------------------------------------------------

// R vectors as one row of elements: after interleaving the first half of it with the second, the number of an element's place is turned by one bit. Turned often enough,
// rows and columns of a matrix have changed places. R is the tile, or as many elements as make 16 bytes where it is longer; tiles are a power of two.
template <class T, int R> TEVS_INLINE void turn(Vec<T, kLeast<T>>* v, int times) {
    Vec<T, kLeast<T>> to[R];
    for (int t = 0; t < times; ++t) {
#pragma GCC unroll 8
        for (int i = 0; i < R / 2; ++i) {
            const auto both = interleave(v[i], v[i + R / 2]);
            to[2 * i] = both.a, to[2 * i + 1] = both.b;
        }
#pragma GCC unroll 16
        for (int i = 0; i < R; ++i) v[i] = to[i];
    }
}
constexpr int log2Of(int n) { return n <= 1 ? 0 : 1 + log2Of(n / 2); }

// f(first element of tile, first stream, tile) for blocks of as many tiles as 16 bytes have elements, and of R streams.
template <class T, int R, class F> TEVS_INLINE void forEachBlock(int log2, ptrdiff_t tiles, F f) {
    for (ptrdiff_t t = 0; t < tiles; t += kLeast<T>)
        for (ptrdiff_t j = 0; j < ptrdiff_t{1} << log2; j += R) f(t, j);
}
template <class T, int R> void splitBy(const T* s, T* streams, int log2, ptrdiff_t stride, ptrdiff_t tiles) {
    constexpr int E = kLeast<T>;
    const ptrdiff_t row = R < E ? E : ptrdiff_t{1} << log2;
    forEachBlock<T, R>(log2, tiles, [=](ptrdiff_t t, ptrdiff_t j) TEVS_HERE {
        Vec<T, E> v[R];
#pragma GCC unroll 16
        for (int r = 0; r < R; ++r) v[r] = load<T, E>(s + (t << log2) + j + r * row);
        turn<T, R>(v, log2Of(E));
#pragma GCC unroll 16
        for (int r = 0; r < R; ++r) store(streams + (j + r) * stride + t, v[r]);
    });
}
template <class T, int R> void joinBy(const T* streams, T* d, int log2, ptrdiff_t stride, ptrdiff_t tiles) {
    constexpr int E = kLeast<T>;
    const ptrdiff_t row = R < E ? E : ptrdiff_t{1} << log2;
    forEachBlock<T, R>(log2, tiles, [=](ptrdiff_t t, ptrdiff_t j) TEVS_HERE {
        Vec<T, E> v[R];
#pragma GCC unroll 16
        for (int r = 0; r < R; ++r) v[r] = load<T, E>(streams + (j + r) * stride + t);
        turn<T, R>(v, log2Of(R));
#pragma GCC unroll 16
        for (int r = 0; r < R; ++r) store(d + (t << log2) + j + r * row, v[r]);
    });
}
template <class T> void split(const void* src, void* to, int log2, ptrdiff_t stride, ptrdiff_t tiles) {
    const T* const s = static_cast<const T*>(src);
    T* const streams = static_cast<T*>(to);
    if (kLeast < T >> 4 && log2 == 2) return splitBy<T, 4>(s, streams, log2, stride, tiles);
    if (kLeast < T >> 8 && log2 == 3) return splitBy<T, 8>(s, streams, log2, stride, tiles);
    splitBy<T, kLeast<T>>(s, streams, log2, stride, tiles);
}
template <class T> void join(const void* from, void* dst, int log2, ptrdiff_t stride, ptrdiff_t tiles) {
    const T* const streams = static_cast<const T*>(from);
    T* const d = static_cast<T*>(dst);
    if (kLeast < T >> 4 && log2 == 2) return joinBy<T, 4>(streams, d, log2, stride, tiles);
    if (kLeast < T >> 8 && log2 == 3) return joinBy<T, 8>(streams, d, log2, stride, tiles);
    joinBy<T, kLeast<T>>(streams, d, log2, stride, tiles);
}

template <class T> constexpr MedianKernel<T> kernelOf() {
    return {.network = {networkOf<1, T>, networkOf<2, T>, networkOf<3, T>, networkOf<4, T>}, .tile = tile<T>};
}

}   // namespace

extern const MedianKernels median = {
    .of8u = kernelOf<uint8_t>(),
    .of16s = kernelOf<int16_t>(),
    .of32s = kernelOf<int32_t>(),
    .of64s = kernelOf<int64_t>(),
    .of32f = kernelOf<float>(),
    .of64f = kernelOf<double>(),
    .ends8u = {ends<1>, ends<2>, ends<3>, ends<4>},
    .ends16s = {ends<1>, ends<2>, ends<3>, ends<4>},
    .ends32s = {ends<1>, ends<2>, ends<3>, ends<4>},
    .ends32f = {ends<1>, ends<2>, ends<3>, ends<4>},
    .ends64f = {ends<1>, ends<2>, ends<3>, ends<4>},
    .split = {split<uint8_t>, split<uint16_t>, split<uint32_t>, split<uint64_t>},
    .join = {join<uint8_t>, join<uint16_t>, join<uint32_t>, join<uint64_t>},
    .plain32f = plain<float>,
    .plain64f = plain<double>,
    .toKeys32f = toKeys<float>,
    .toKeys64f = toKeys<double>,
    .fromKeys32f = fromKeys<float>,
    .fromKeys64f = fromKeys<double>,
};

}   // namespace tevs::TEVS_LEVEL_NS
