#include "core/simd/lanes.h"
#include "core/simd/map.h"
#include "vector/search.table.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// ---- lanes in order -----------------------------------------------------------------------------------------------------------------------

template <class V> TEVS_INLINE V greater(V a, V b) {
#if TEVS_LEVEL <= 1
    if constexpr (sizeof(a[0]) == 8) {
        // SSE4.1 compares no more than 32 bits. What decides stands in the upper half: of equal ones the borrow of the lower.
        const __m128i x = (__m128i)a, y = (__m128i)b;
        const __m128i m = _mm_or_si128(_mm_cmpgt_epi32(x, y), _mm_and_si128(_mm_cmpeq_epi32(x, y), _mm_sub_epi64(y, x)));
        return (V)_mm_shuffle_epi32(_mm_srai_epi32(m, 31), 0xf5);
    }
#endif
    return (V)(a > b);
}

// The smaller and the larger of each two lanes.
template <class V> TEVS_INLINE Two<V> ordered(V a, V b) {
    constexpr int bits = 8 * int(sizeof(a[0]));
#if TEVS_LEVEL >= 3
    if constexpr (sizeof(V) == 64) {
        const auto x = (__m512i)a, y = (__m512i)b;
        if constexpr (bits == 16) return {(V)_mm512_min_epi16(x, y), (V)_mm512_max_epi16(x, y)};
        if constexpr (bits == 32) return {(V)_mm512_maskz_min_epi32(0xffff, x, y), (V)_mm512_maskz_max_epi32(0xffff, x, y)};
        if constexpr (bits == 64) return {(V)_mm512_maskz_min_epi64(0xff, x, y), (V)_mm512_maskz_max_epi64(0xff, x, y)};
    }
#endif
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(V) == 32 && bits == 16) return {(V)_mm256_min_epi16((__m256i)a, (__m256i)b), (V)_mm256_max_epi16((__m256i)a, (__m256i)b)};
    if constexpr (sizeof(V) == 32 && bits == 32) return {minimum(a, b), maximum(a, b)};
#endif
    if constexpr (sizeof(V) == 16 && bits == 16) return {(V)_mm_min_epi16((__m128i)a, (__m128i)b), (V)_mm_max_epi16((__m128i)a, (__m128i)b)};
#if TEVS_LEVEL >= 1
    if constexpr (sizeof(V) == 16 && bits == 32) return {minimum(a, b), maximum(a, b)};
#endif
    // Where there is no instruction the two are exchanged under a mask.
    const V change = (a ^ b) & greater(a, b);
    return {a ^ change, b ^ change};
}

// Lane i of the result is lane i ^ X.
template <int X, class V, int... I> TEVS_INLINE V exchangedOf(V v, Lane<I...>) { return __builtin_shufflevector(v, v, (I ^ X)...); }
template <int X, class V> TEVS_INLINE V exchanged(V v) {
    if constexpr (X == kCount<V> - 1)
        return reverse(v);
    else
        return exchangedOf<X>(v, Iota<kCount<V>>{});
}
// The lanes of b whose number has a bit of Bits, the others of a.
template <int Bits, class V, int... I> TEVS_INLINE V blendedOf(V a, V b, Lane<I...>) {
    return __builtin_shufflevector(a, b, (I & Bits ? I + int(sizeof...(I)) : I)...);
}
template <int Bits, class V> TEVS_INLINE V blended(V a, V b) { return blendedOf<Bits>(a, b, Iota<kCount<V>>{}); }

// ---- a sorting network over the registers of a matrix ---------------------------------------------------------------------------------------
//
// Rows are registers. The columns are sorted by Batcher's odd-even merge exchange, lane by lane. Then columns are merged by twos, fours and so on, each group of W columns
// to one sequence that runs along the rows: a bitonic merge, of which the halves of a step may lie anywhere as long as the next finds them. Left where the
// minima and maxima of row r and the mirrored row come out, they need one shuffle in two registers and no blend until a row is all there is.

template <int I, int J, class V> TEVS_INLINE void exchange(V* r) {
    const Two<V> two = ordered(r[I], r[J]);
    r[I] = two.a;
    r[J] = two.b;
}
template <int I, int End, int Step, int By, class V> TEVS_INLINE void exchangeRows(V* r) {
    if constexpr (I + By < End) {
        exchange<I, I + By>(r);
        exchangeRows<I + Step, End, Step, By>(r);
    }
}
template <int From, int N, int By, class V> TEVS_INLINE void mergeRows(V* r) {
    if constexpr (2 * By < N) {
        mergeRows<From, N, 2 * By>(r);
        mergeRows<From + By, N, 2 * By>(r);
        exchangeRows<From + By, From + N, 2 * By, By>(r);
    } else {
        exchange<From, From + By>(r);
    }
}
template <int From, int N, class V> TEVS_INLINE void sortRows(V* r) {
    if constexpr (N > 1) {
        sortRows<From, N / 2>(r);
        sortRows<From + N / 2, N / 2>(r);
        mergeRows<From, N, 1>(r);
    }
}

template <int W, int From, int N, int I, class V> TEVS_INLINE void mirrorRows(V* r) {
    if constexpr (I < N / 2) {
        V &upper = r[From + I], &lower = r[From + N - 1 - I];
        const Two<V> two = ordered(upper, exchanged<W - 1>(lower));
        upper = two.a;
        lower = two.b;
        mirrorRows<W, From, N, I + 1>(r);
    }
}
template <int D, class V> TEVS_INLINE V cleanLanes(V v) {
    const Two<V> two = ordered(v, exchanged<D>(v));
    v = blended<D>(two.a, two.b);
    if constexpr (D > 1)
        return cleanLanes<D / 2>(v);
    else
        return v;
}
template <int W, int From, int N, class V> TEVS_INLINE void mergeGroups(V* r) {
    if constexpr (N > 1) {
        mirrorRows<W, From, N, 0>(r);
        mergeGroups<W, From, N / 2>(r);
        mergeGroups<W, From + N / 2, N / 2>(r);
    } else {
        const Two<V> two = ordered(r[From], exchanged<W - 1>(r[From]));
        r[From] = blended<W / 2>(two.a, two.b);
        if constexpr (W > 2) r[From] = cleanLanes<W / 4>(r[From]);
    }
}
template <int W, int N, class V> TEVS_INLINE void mergeColumns(V* r) {
    mergeGroups<W, 0, N>(r);
    if constexpr (2 * W <= kCount<V>) mergeColumns<2 * W, N>(r);
}

template <class T> constexpr T kGreatest = T(~(uint64_t{1} << (8 * sizeof(T) - 1)));
template <class T> constexpr T kLeastOf = T(~kGreatest<T>);

// (Rows - 1) * N < n <= Rows * N elements, but for Rows <= 2: what is missing is made up by the greatest number, behind which nothing else sorts.
template <int Rows, class T> __attribute__((noinline)) void sortMatrix(T* p, int n) {
    constexpr int N = kLanes<T>;
    using V = Vec<T, N>;
    const int whole = n / N, rest = n % N;
    T last[N];
    store(last, same<V>(kGreatest<T>));
    moveBytes(p + whole * N, last, rest * int(sizeof(T)));
    V r[Rows];
#pragma GCC unroll 16
    for (int i = 0; i < Rows; ++i) {
        if (Rows <= 2 || i >= Rows / 2)
            r[i] = load<T, N>(i < whole ? p + i * N : last);
        else
            r[i] = load<T, N>(p + i * N);
        if (i > whole) r[i] = same<V>(kGreatest<T>);
    }
    sortRows<0, Rows>(r);
    mergeColumns<2, Rows>(r);
#pragma GCC unroll 16
    for (int i = 0; i < Rows; ++i)
        if ((Rows > 2 && i < Rows / 2) || i < whole)
            store(p + i * N, r[i]);
        else if (i == whole)
            store(last, r[i]);
    moveBytes(last, p + whole * N, rest * int(sizeof(T)));
}

constexpr int kRows = 16;
template <class T> constexpr int kShort = kRows* kLanes<T>;

template <class T> TEVS_INLINE void sortShort(T* p, int n) {
    constexpr int N = kLanes<T>;
    if (n <= 2 * N)
        n <= N ? sortMatrix<1>(p, n) : sortMatrix<2>(p, n);
    else if (n <= 4 * N)
        sortMatrix<4>(p, n);
    else
        n <= 8 * N ? sortMatrix<8>(p, n) : sortMatrix<16>(p, n);
}

// ---- partition --------------------------------------------------------------------------------------------------------------------------------

// For every set of lanes the permutation, in units of bytes or of more of them, that brings them behind the others, both kinds in their order.
template <int Count, int Unit> struct Orders {
    uint8_t at[1 << Count][Count * Unit];
    constexpr Orders() : at() {
        for (int set = 0; set < 1 << Count; ++set) {
            int k = 0;
            for (int behind = 0; behind < 2; ++behind)
                for (int lane = 0; lane < Count; ++lane)
                    for (int unit = 0; unit < Unit && (set >> lane & 1) == behind; ++unit) at[set][k++] = uint8_t(lane * Unit + unit);
        }
    }
};
template <int Count, int Unit> constexpr Orders<Count, Unit> kOrders;

struct BitCounts {
    uint8_t of[256];
    constexpr BitCounts() : of() {
        for (int i = 1; i < 256; ++i) of[i] = uint8_t(of[i / 2] + i % 2);
    }
};
constexpr BitCounts kBitCounts;
TEVS_INLINE int bitCount(uint32_t bits) {
#if TEVS_LEVEL >= 2
    return __builtin_popcount(bits);
#else
    return kBitCounts.of[bits];
#endif
}

#if TEVS_LEVEL >= 1

// The vectors that are partitioned: the widest whose lanes an instruction permutes.
template <class T> constexpr int kSplit = sizeof(T) == 2 ? 8 : kLanes<T>;

// A bit for each lane of v that is above the pivot.
template <class T> struct Above {
    T pivot;
    TEVS_INLINE bool operator()(T x) const { return x > pivot; }
    TEVS_INLINE uint32_t operator()(Vec<T, kSplit<T>> v, const T*) const {
        using V = decltype(v);
#if TEVS_LEVEL >= 3
        if constexpr (sizeof(V) == 64 && sizeof(T) == 4) return _mm512_cmpgt_epi32_mask((__m512i)v, (__m512i)same<V>(pivot));
        if constexpr (sizeof(V) == 64 && sizeof(T) == 8) return _mm512_cmpgt_epi64_mask((__m512i)v, (__m512i)same<V>(pivot));
#endif
        if constexpr (sizeof(V) <= 32) {
            const V m = greater(v, same<V>(pivot));
#if TEVS_REGISTER_BYTES >= 32
            if constexpr (sizeof(V) == 32) return uint32_t(sizeof(T) == 4 ? _mm256_movemask_ps((__m256)m) : _mm256_movemask_pd((__m256d)m));
#endif
            if constexpr (sizeof(V) == 16 && sizeof(T) == 2) return uint32_t(_mm_movemask_epi8(_mm_packs_epi16((__m128i)m, _mm_setzero_si128())));
            if constexpr (sizeof(V) == 16 && sizeof(T) == 4) return uint32_t(_mm_movemask_ps((__m128)m));
            if constexpr (sizeof(V) == 16 && sizeof(T) == 8) return uint32_t(_mm_movemask_pd((__m128d)m));
        }
    }
};

// The lanes whose bit is not set to l, those whose bit is in front of r; a whole vector is written from l on and may be written up to r. Returns how many lanes l took.
template <class T, class V> TEVS_INLINE int splitTo(T* l, T* r, V v, uint32_t above) {
    const int count = bitCount(above);
#if TEVS_LEVEL >= 3
    if constexpr (sizeof(V) == 64) {
        if constexpr (sizeof(T) == 4) {
            store(l, (V)_mm512_maskz_compress_epi32(__mmask16(~above), (__m512i)v));
            _mm512_mask_storeu_epi32(r - count, __mmask16((1u << count) - 1), _mm512_maskz_compress_epi32(__mmask16(above), (__m512i)v));
        } else {
            store(l, (V)_mm512_maskz_compress_epi64(__mmask8(~above), (__m512i)v));
            _mm512_mask_storeu_epi64(r - count, __mmask8((1u << count) - 1), _mm512_maskz_compress_epi64(__mmask8(above), (__m512i)v));
        }
    }
#endif
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(V) == 32) {
        const auto order = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(kOrders<kCount<V>, int(sizeof(T)) / 4>.at[above]));
        v = (V)_mm256_permutevar8x32_epi32((__m256i)v, _mm256_cvtepu8_epi32(order));
    }
#endif
    if constexpr (sizeof(V) == 16) v = (V)_mm_shuffle_epi8((__m128i)v, loadAs<__m128i>(kOrders<kCount<V>, int(sizeof(T))>.at[above]));
    if constexpr (sizeof(V) <= 32) {
        store(l, v);
        store(r - kCount<V>, v);
    }
    return kCount<V> - count;
}

// Brings the elements of which `above` does not hold in front of the others, and returns how many they are. Some vectors at both ends are held back; that leaves
// room into which every further one is split, read from the side that has less of it: both then have room for the whole of it.
template <class T, class F> __attribute__((noinline)) ptrdiff_t partition(T* p, ptrdiff_t n, F above) {
    constexpr int N = kSplit<T>, K = N > 8 ? 4 : 8, kStep = K * N;
    using V = Vec<T, N>;
    T held[3 * kStep], high[3 * kStep + N];

    const ptrdiff_t front = kStep + n % kStep;
    const int frontVectors = int((front + N - 1) / N);
    for (int k = 0; k < frontVectors; ++k) store(held + k * N, load<T, N>(p + k * N));
    T* const back = held + frontVectors * N;
    for (int k = 0; k < K; ++k) store(back + k * N, load<T, N>(p + (n - kStep) + k * N));

    T *l = p, *r = p + n;
    const T *from = p + front, *to = p + (n - kStep);
    while (from < to) {
        const T* src;
        if (from - l > r - to) {
            to -= kStep;
            src = to;
        } else {
            src = from;
            from += kStep;
        }
        V v[K];
        uint32_t bits[K];
#pragma GCC unroll 8
        for (int k = 0; k < K; ++k) {
            v[k] = load<T, N>(src + k * N);
            bits[k] = above(v[k], src + k * N);
        }
#pragma GCC unroll 8
        for (int k = 0; k < K; ++k) {
            const int left = splitTo(l, r, v[k], bits[k]);
            l += left;
            r -= N - left;
        }
    }

    // What was held fills the room that is left. The vector that is not whole comes first: its surplus lanes go to the very end of `high`, and no further.
    T *const end = high + (3 * kStep + N), *h = end;
    const auto place = [&](const T* src, uint32_t surplus) TEVS_HERE {
        const V v = load<T, N>(src);
        const int left = splitTo(l, h, v, above(v, src) | surplus);
        l += left;
        h -= N - left;
    };
    const int whole = int(front / N), rest = int(front % N);
    if (rest) place(held + whole * N, (1u << N) - (1u << rest));
    for (int k = 0; k < whole; ++k) place(held + k * N, 0);
    for (int k = 0; k < K; ++k) place(back + k * N, 0);
    const ptrdiff_t count = (end - (rest ? N - rest : 0)) - h;
    if (count >= N) {
        for (ptrdiff_t i = count - N; i > 0; i -= N) store(l + i, load<T, N>(h + i));
        store(l, load<T, N>(h));
    } else {
        moveBytes(h, l, int(count) * int(sizeof(T)));
    }
    return l - p;
}

#else

template <class T> struct Above {
    T pivot;
    TEVS_INLINE bool operator()(T x) const { return x > pivot; }
};

template <class T, class F> __attribute__((noinline)) ptrdiff_t partition(T* p, ptrdiff_t n, F above) {
    ptrdiff_t left = 0;
    for (ptrdiff_t i = 0; i < n; ++i) {
        const T x = p[i];
        p[i] = p[left];
        p[left] = x;
        left += !above(x);
    }
    return left;
}

#endif

// ---- quicksort --------------------------------------------------------------------------------------------------------------------------------

// For what no pivot splits well.
template <class T, class Less> __attribute__((noinline, cold)) void heapSort(T* p, ptrdiff_t n, Less less) {
    const auto sift = [=](ptrdiff_t at, ptrdiff_t end) {
        const T x = p[at];
        for (ptrdiff_t child; (child = 2 * at + 1) < end; at = child) {
            if (child + 1 < end && less(p[child], p[child + 1])) ++child;
            if (!less(x, p[child])) break;
            p[at] = p[child];
        }
        p[at] = x;
    };
    for (ptrdiff_t i = n / 2; i-- > 0;) sift(i, n);
    for (ptrdiff_t end = n - 1; end > 0; --end) {
        const T x = p[end];
        p[end] = p[0];
        p[0] = x;
        sift(0, end);
    }
}

// The median of some elements, picked at one place in each of as many stretches; a place of its own in each, so that no period of the data falls in with them.
template <class K, class At> TEVS_INLINE K middle(ptrdiff_t n, At at) {
    constexpr int kMost = kShort<K> < 64 ? kShort<K> : 64;
    K some[kMost];
    const int count = n < 2048 ? 16 : kMost;
    const ptrdiff_t stretch = n / count;
    uint32_t random = uint32_t(n);
    for (int i = 0; i < count; ++i) {
        random = random * 1664525 + 1013904223;
        some[i] = at(i * stretch + ptrdiff_t(uint64_t{random} * uint32_t(stretch) >> 32));
    }
    sortShort(some, count);
    return some[count / 2];
}

constexpr int kCounts = 1024;
// 16-bit numbers of a range that is less than theirs.
__attribute__((noinline)) inline void countingSort(int16_t* p, ptrdiff_t n, int lo, int hi) {
    uint32_t counts[kCounts] = {};
    for (ptrdiff_t i = 0; i < n; ++i) ++counts[p[i] - lo];
    for (int x = lo; x <= hi; ++x) {
        ptrdiff_t count = ptrdiff_t(counts[x - lo]);
        constexpr int N = kLanes<int16_t>;
        const auto v = same<Vec<int16_t, N>>(int16_t(x));
        for (; count >= N; count -= N, p += N) store(p, v);
        for (; count > 0; --count) *p++ = int16_t(x);
    }
}

TEVS_INLINE int bitWidth(uint64_t x) { return x ? 64 - __builtin_clzll(x) : 0; }
// How many splits may leave less than a sixteenth on one side before the heap takes over.
TEVS_INLINE int patience(ptrdiff_t n) { return bitWidth(uint64_t(n)); }

// Elements that are known to lie in lo .. hi.
template <class T> void quickSort(T* p, ptrdiff_t n, T lo, T hi, int patient) {
    while (n > kShort<T>) {
        if (lo == hi) return;
        if constexpr (sizeof(T) == 2) {
            if (hi - lo < kCounts && n / 8 > hi - lo) return countingSort(p, n, lo, hi);
        }
        if (patient < 0) return heapSort(p, n, [](T a, T b) { return a < b; });
        T pivot = middle<T>(n, [=](ptrdiff_t i) { return p[i]; });
        if (pivot == hi) --pivot;   // so that either side's range is less than before
        const ptrdiff_t left = partition(p, n, Above<T>{pivot}), right = n - left;
        if ((left < right ? left : right) < n / 16) --patient;
        if (left < right) {
            quickSort(p, left, lo, pivot, patient);
            p += left;
            n = right;
            lo = T(pivot + 1);
        } else {
            quickSort(p + left, right, T(pivot + 1), hi, patient);
            n = left;
            hi = pivot;
        }
    }
    if (n > 1) sortShort(p, int(n));
}
template <class T> TEVS_INLINE void quickSort(T* p, ptrdiff_t n) { quickSort(p, n, kLeastOf<T>, kGreatest<T>, patience(n)); }

// The bits of floats in an order that is theirs, -0 below +0; and back.
template <class K> constexpr K kInfinityBits = sizeof(K) == 4 ? K(0x7f800000) : K(uint64_t{0x7ff} << 52);
template <class V> TEVS_INLINE V asOrdered(V bits) { return bits ^ (greater(V{}, bits) & same<V>(kGreatest<Element<V>>)); }
template <class V> TEVS_INLINE V isNaN(V bits) { return greater(bits & same<V>(kGreatest<Element<V>>), same<V>(kInfinityBits<Element<V>>)); }

template <class K, bool Float> void sort(K* p, int n, bool down) {
    const K flip = down ? K(-1) : K(0);
    int numbers = n;
    if constexpr (Float) {
        bool nan = false;
        map<kLanes<K>, kLeast<K>>(
            n, p,
            [&nan, flip](auto w, const K* s) TEVS_HERE {
                const auto x = load<K, w.n>(s);
                nan |= any(isNaN(x));
                return asOrdered(x) ^ same<decltype(x + x)>(flip);
            },
            (const K*)p);
        if (nan)
            for (int i = 0; i < numbers;) {
                const K key = K(p[i] ^ flip), magnitude = K((key < 0 ? K(key ^ kGreatest<K>) : key) & kGreatest<K>);
                if (magnitude > kInfinityBits<K>) {
                    p[i] = p[--numbers];
                    p[numbers] = K(key ^ flip);
                } else {
                    ++i;
                }
            }
    } else if (down) {
        map<kLanes<K>, kLeast<K>>(
            n, p, [](auto w, const K* s) TEVS_HERE { return ~load<K, w.n>(s); }, (const K*)p);
    }
    quickSort(p, numbers);
    if (Float || down)
        map<kLanes<K>, kLeast<K>>(
            n, p,
            [flip](auto w, const K* s) TEVS_HERE {
                const auto x = load<K, w.n>(s);
                const auto y = x ^ same<decltype(x + x)>(flip);
                if constexpr (Float)
                    return asOrdered(y);
                else
                    return y;
            },
            (const K*)p);
}

// ---- the order that sorts -----------------------------------------------------------------------------------------------------------------------

// What the elements are ordered by, as integers: NaNs the greatest of all.
template <class K, bool Float> struct Keys {
    const K* src;
    K flip;

    TEVS_INLINE K operator[](ptrdiff_t i) const {
        const K x = src[i];
        if constexpr (!Float) return K(x ^ flip);
        if (K(x & kGreatest<K>) > kInfinityBits<K>) return kGreatest<K>;
        return K(K(x < 0 ? K(x ^ kGreatest<K>) : x) ^ flip);
    }
    template <class V> TEVS_INLINE V of(V x) const {
        if constexpr (!Float) return x ^ same<V>(flip);
        const V nan = isNaN(x);
        return ((asOrdered(x) ^ same<V>(flip)) & ~nan) | (nan & same<V>(kGreatest<K>));
    }
    // Of any two keys, as a number that is not negative.
    TEVS_INLINE uint64_t difference(K a, K b) const {
        if constexpr (sizeof(K) == 8)
            return uint64_t(a) - uint64_t(b);
        else
            return uint32_t(a) - uint32_t(b);
    }
};

template <class K, bool Float> class IndexSort {
public:
    IndexSort(const K* src, int* indx, int n, bool down) : keys_{src, down ? K(-1) : K(0)}, indx_(indx), n_(n), indexBits_(bitWidth(uint64_t(n - 1))) {}

    void run() {
        K lo, hi;
        range(lo, hi);
        const uint64_t width = keys_.difference(hi, lo);
        if (bitWidth(width) + indexBits_ <= 32)
            packed(lo);
        else if (n_ <= kBlock)
            whole(lo, hi);
        else
            distributed(lo, width);
    }

private:
    static constexpr int kBlock = 1024, kBuckets = 1024;

    void range(K& lo, K& hi) const {
        constexpr int N = kLanes<K>;
        using V = Vec<K, N>;
        lo = hi = keys_[0];
        int i = 0;
        if (n_ >= N) {
            V least = same<V>(lo), most = least;
            const auto take = [&](const K* p) TEVS_HERE {
                const V v = keys_.of(load<K, N>(p));
                least = ordered(least, v).a;
                most = ordered(most, v).b;
            };
            for (; i <= n_ - N; i += N) take(keys_.src + i);
            take(keys_.src + (n_ - N));
            i = n_;
            for (int k = 0; k < N; ++k) {
                lo = least[k] < lo ? least[k] : lo;
                hi = most[k] > hi ? most[k] : hi;
            }
        }
        for (; i < n_; ++i) {
            const K key = keys_[i];
            lo = key < lo ? key : lo;
            hi = key > hi ? key : hi;
        }
    }

    // Key and index fit into 32 bits, and so into the destination.
    void packed(K lo) {
        constexpr uint32_t kSign = 0x80000000;
        for (int i = 0; i < n_; ++i) indx_[i] = int((uint32_t(uint64_t(keys_.difference(keys_[i], lo)) << indexBits_) | uint32_t(i)) ^ kSign);
        quickSort(indx_, n_);
        const int mask = int((uint64_t{1} << indexBits_) - 1);
        for (int i = 0; i < n_; ++i) indx_[i] = (indx_[i] ^ int(kSign)) & mask;
    }

    void whole(K lo, K hi) {
        for (int i = 0; i < n_; ++i) indx_[i] = i;
        block(indx_, n_, lo, hi);
    }

    // Up to kBlock indices whose keys lie in lo .. hi, beside their keys in 63 bits. Where these do not hold the whole key, neighbours may have come out in the order of their
    // indices instead.
    void block(int* p, int n, K lo, K hi) const {
        int64_t area[kBlock];
        const int bits = bitWidth(keys_.difference(hi, lo)) + indexBits_, drop = bits > 63 ? bits - 63 : 0;
        for (int i = 0; i < n; ++i) area[i] = int64_t(keys_.difference(keys_[p[i]], lo) >> drop << indexBits_ | uint32_t(p[i]));
        quickSort(area, n, int64_t{0}, kGreatest<int64_t>, patience(n));
        const int mask = int((uint64_t{1} << indexBits_) - 1);
        for (int i = 0; i < n; ++i) p[i] = int(area[i]) & mask;
        if (drop == 0) return;
        for (int i = 0; i < n;) {
            const int start = i;
            bool sorted = true;
            for (++i; i < n && area[i] >> indexBits_ == area[start] >> indexBits_; ++i) sorted = sorted && keys_[p[i - 1]] <= keys_[p[i]];
            if (!sorted) heapSort(p + start, i - start, less());
        }
    }
    auto less() const {
        return [keys = keys_](int a, int b) {
            const K x = keys[a], y = keys[b];
            return x < y || (x == y && a < b);
        };
    }

    // A counting sort by the keys' leading bits, then each bucket by itself.
    void distributed(K lo, uint64_t width) {
        int ends[kBuckets] = {};
        const int most = bitWidth(uint64_t(n_)) - 8, bits = most < 10 ? most : 10;
        const int shift = bitWidth(width) > bits ? bitWidth(width) - bits : 0;
        const auto bucket = [&](int i) TEVS_HERE { return keys_.difference(keys_[i], lo) >> shift; };
        for (int i = 0; i < n_; ++i) ++ends[bucket(i)];
        for (int b = 0, sum = 0; b < kBuckets; ++b) {
            const int count = ends[b];
            ends[b] = sum;
            sum += count;
        }
        for (int i = 0; i < n_; ++i) indx_[ends[bucket(i)]++] = i;
        for (int b = 0, begin = 0; b < 1 << bits; begin = ends[b++]) {
            const uint64_t from = uint64_t(b) << shift, to = from + ((uint64_t{1} << shift) - 1);
            sortIndices(indx_ + begin, ends[b] - begin, K(uint64_t(lo) + from), K(uint64_t(lo) + (to < width ? to : width)), patience(n_));
        }
    }

    struct AboveByIndex {
        Keys<K, Float> keys;
        K pivot;
        TEVS_INLINE bool operator()(int i) const { return keys[i] > pivot; }
        template <class V> TEVS_INLINE uint32_t operator()(V, const int* p) const {
            uint32_t bits = 0;
            for (int k = 0; k < kCount<V>; ++k) bits |= uint32_t((*this)(p[k])) << k;
            return bits;
        }
    };

    void sortIndices(int* p, ptrdiff_t n, K lo, K hi, int patient) const {
        while (n > kBlock) {
            if (lo == hi) return quickSort(p, n);
            if (patient < 0) return heapSort(p, n, less());
            K pivot = middle<K>(n, [=, this](ptrdiff_t i) { return keys_[p[i]]; });
            if (pivot == hi) --pivot;
            const ptrdiff_t left = partition(p, n, AboveByIndex{keys_, pivot}), right = n - left;
            if ((left < right ? left : right) < n / 16) --patient;
            if (left < right) {
                sortIndices(p, left, lo, pivot, patient);
                p += left;
                n = right;
                lo = K(pivot + 1);
            } else {
                sortIndices(p + left, right, K(pivot + 1), hi, patient);
                n = left;
                hi = pivot;
            }
        }
        if (n > 1) block(p, int(n), lo, hi);
    }

    const Keys<K, Float> keys_;
    int* const indx_;
    const int n_, indexBits_;
};

template <class K, bool Float> void sortIndx(const K* src, int* indx, int n, bool down) { IndexSort<K, Float>(src, indx, n, down).run(); }

// ---- the nearest value --------------------------------------------------------------------------------------------------------------------------

// What a sample is searched as, and an integer as wide, for indices.
template <class T> struct LaneOf { using type = T; };
template <> struct LaneOf<int16_t> { using type = int32_t; };
template <class T> struct IndexOf { using type = int32_t; };
template <> struct IndexOf<double> { using type = int64_t; };
template <class T> constexpr int kSought = kLanes<typename LaneOf<T>::type>;
template <class T> using Sought = Vec<typename LaneOf<T>::type, kSought<T>>;
template <class T> using Places = Vec<typename IndexOf<T>::type, kSought<T>>;

// p[i] of every lane, each below n; Inner: below n - 1, where of 16-bit entries the next one can be read along. n >= 2.
template <bool Inner, class T> TEVS_INLINE Sought<T> gathered(const T* p, Places<T> i, int n) {
    using V = Sought<T>;
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(T) == 2) {
        const V last = Inner ? V{} : greater(i, same<V>(n - 2)), at = i + last;
#if TEVS_LEVEL >= 3
        const auto two = (V)_mm512_mask_i32gather_epi32(__m512i{}, 0xffff, (__m512i)at, p, 2);
#else
        const auto two = (V)_mm256_i32gather_epi32(reinterpret_cast<const int*>(p), (__m256i)at, 2);
#endif
        const V first = two << 16 >> 16;
        return Inner ? first : (first & ~last) | (two >> 16 & last);
    }
#if TEVS_LEVEL >= 3
    if constexpr (sizeof(T) == 4) return (V)_mm512_mask_i32gather_epi32(__m512i{}, 0xffff, (__m512i)i, p, 4);
    if constexpr (sizeof(T) == 8) return (V)_mm512_mask_i64gather_epi64(__m512i{}, 0xff, (__m512i)i, p, 8);
#else
    if constexpr (sizeof(T) == 4) return (V)_mm256_i32gather_epi32(reinterpret_cast<const int*>(p), (__m256i)i, 4);
    if constexpr (sizeof(T) == 8) return (V)_mm256_i64gather_epi64(reinterpret_cast<const long long*>(p), (__m256i)i, 8);
#endif
#else
    (void)n;
    V v;
    for (int k = 0; k < kSought<T>; ++k) v[k] = p[i[k]];
    return v;
#endif
}

// What rounding takes from a - b.
template <class V> TEVS_INLINE V rest(V a, V b, V difference) {
    const V back = a - difference;
    return (a - (difference + back)) + (back - b);
}

// The lanes in which b is nearer to x than a is, for a <= x <= b. Where x is infinite and equal to b its distance is NaN, and b is the nearer.
template <class V> TEVS_INLINE auto isNearer(V a, V x, V b) {
    if constexpr (Element<V>(0.5) != 0) {
        const V below = x - a, above = b - x;
        auto no = isLess(below, above);
        const auto equal = isAtMost(below, above) & isAtMost(above, below);
        if (any(equal)) [[unlikely]] {
            // An a that is infinite is not nearer than any b: the difference to that may have overflowed.
            const auto finite = isLess(same<V>(-__builtin_inff()), a);
            no |= equal & finite & ~isLess(rest(b, x, above), rest(x, a, below));
        }
        return ~no;
    } else {
        using Unsigned = Vec<uint32_t, kCount<V>>;
        const auto below = (V)((Unsigned)x - (Unsigned)a), above = (V)((Unsigned)b - (Unsigned)x);
        return greater(below ^ INT32_MIN, above ^ INT32_MIN);   // they may be as great as 2^32 - 1
    }
}

template <class V> TEVS_INLINE auto isBelow(V a, V b) {
    if constexpr (Element<V>(0.5) != 0)
        return isLess(a, b);
    else
        return greater(b, a);
}

// Equal entries before the one found: the first of them.
template <class T> __attribute__((noinline, cold)) int firstEqual(const T* table, int i) {
    int base = 0, n = i + 1;
    for (; n > 1; n -= n / 2) base += table[base + n / 2 - 1] < table[i] ? n / 2 : 0;
    return base;
}

// The lower halves of 64-bit lanes.
template <class I> struct LowInts { I v; };
template <class I> TEVS_INLINE void store(int* p, LowInts<I> low) {
    for (int k = 0; k < kCount<I>; ++k) p[k] = int(low.v[k]);
}

// U searches abreast, each of which waits for its memory: how many entries are below, then which of the two neighbours is nearer.
template <int U, class T> TEVS_INLINE auto nearestOf(const T* src, const T* table, int tableLen) {
    constexpr int N = kSought<T>;
    using V = Sought<T>;
    using I = Places<T>;
    const auto x = loadLanes<Element<V>, kRegisterBytes, U>(src);
    Some<I, U> found = {};
    for (int n = tableLen; n > 1; n -= n / 2) {
        const auto half = same<I>(n / 2), probe = same<I>(n / 2 - 1);
#pragma GCC unroll 4
        for (int u = 0; u < U; ++u) found.v[u] += (I)isBelow(gathered<true>(table, found.v[u] + probe, tableLen), x.v[u]) & half;
    }
#pragma GCC unroll 4
    for (int u = 0; u < U; ++u) {
        const I below = found.v[u] - (I)isBelow(gathered<false>(table, found.v[u], tableLen), x.v[u]);   // of comparisons a lane that holds is -1
        const I lower = below + greater(below, I{}), upper = below + greater(below, same<I>(tableLen - 1));
        const V a = gathered<false>(table, lower, tableLen);
        const I nearer = greater(upper, lower) & (I)isNearer(a, x.v[u], gathered<false>(table, upper, tableLen));
        I i = (lower & ~nearer) | (upper & nearer);
        const auto before = gathered<true>(table, lower + greater(lower, I{}), tableLen);
        const I again = ~nearer & greater(lower, I{}) & ~(I)isBelow(before, a);
        if (any(again)) [[unlikely]] {
            Element<I> at[N], equal[N];
            store(at, i);
            store(equal, again);
            for (int k = 0; k < N; ++k)
                if (equal[k]) at[k] = firstEqual(table, int(at[k]));
            i = load<Element<I>, N>(at);
        }
        found.v[u] = i;
    }
    if constexpr (sizeof(I{}[0]) == 4) {
        return found;
    } else {
        constexpr int W = kRegisterBytes / 4;
        if constexpr (U > 1)
            return eachPair(found, [](I p, I q) TEVS_HERE { return evens((Vec<int32_t, W>)p, (Vec<int32_t, W>)q); });
        else
            return LowInts<I>{found.v[0]};
    }
}

template <class T> void nearest(const T* src, int* indx, int len, const T* table, int tableLen) {
    constexpr int N = kSought<T>, U = 4;
    if (tableLen == 1) {
        for (int i = 0; i < len; ++i) indx[i] = 0;
        return;
    }
    const int whole = len - len % (U * N);
    for (int i = 0; i < whole; i += U * N) store(indx + i, nearestOf<U>(src + i, table, tableLen));
    // The last vector of all may come a second time.
    const int from = whole > 0 && len - whole < N ? len - N : whole;
    if (len > whole)
        map<N, N>(
            len - from, indx + from, [=](auto, const T* s) TEVS_HERE { return nearestOf<1>(s, table, tableLen); }, src + from);
}

// ---- the nearest vector -------------------------------------------------------------------------------------------------------------------------
//
// Lanes are as many vectors of one side, their elements side by side in an area on the stack; the elements of the other side are repeated in all lanes. Samples fill the lanes,
// or rows do where there are few samples. What is too long for the area is summed along the elements.

constexpr int kFloats = kLanes<float>, kAbreast = 2 * kFloats, kAreaDim = 128;
using Floats = Vec<float, kFloats>;
using Ints = Vec<int32_t, kFloats>;

// The best sum of each lane, and its row; -1 where none was below infinity.
struct Best {
    Floats sum;
    Ints row;
    TEVS_INLINE void take(Floats s, Ints r) {
        const Ints better = (Ints)isLess(s, sum);
        sum = atMost(s, sum);
        row = (row & ~better) | (r & better);
    }
};
TEVS_INLINE Best noneYet() { return {same<Floats>(__builtin_inff()), same<Ints>(-1)}; }

// Element k of vector i to area[k * kAbreast + i]; behind the last of n <= kAbreast vectors it is repeated.
TEVS_INLINE void layAbreast(const float* p, int n, int dim, float* area) {
    using V = Vec<float, 4>;
    for (int i = 0; i < kAbreast; i += 4) {
        const float* v[4];
        for (int q = 0; q < 4; ++q) v[q] = p + ptrdiff_t{i + q < n ? i + q : n - 1} * dim;
        int k = 0;
        for (; k <= dim - 4; k += 4) {
            const auto t = transposed((V)load<float, 4>(v[0] + k), (V)load<float, 4>(v[1] + k), (V)load<float, 4>(v[2] + k), (V)load<float, 4>(v[3] + k));
            for (int q = 0; q < 4; ++q) store(area + (k + q) * kAbreast + i, t.v[q]);
        }
        for (; k < dim; ++k)
            for (int q = 0; q < 4; ++q) area[k * kAbreast + i + q] = v[q][k];
    }
}

// take(q, sums) for each q < B, of the vectors abreast with vector q of B at p.
template <int B, class F> TEVS_INLINE void sumsAbreast(const float* area, const float* p, int dim, F take) {
    Two<Floats> s[B] = {};
    for (int k = 0; k < dim; ++k) {
        const auto x = loadTwo<float, kFloats>(area + k * kAbreast);
#pragma GCC unroll 4
        for (int q = 0; q < B; ++q) {
            const Floats y = same<Floats>(p[ptrdiff_t{q} * dim + k]), a = x.a - y, b = x.b - y;
            s[q] = {fma(a, a, s[q].a), fma(b, b, s[q].b)};
        }
    }
#pragma GCC unroll 4
    for (int q = 0; q < B; ++q) take(q, s[q]);
}

struct Found {
    float sum;
    int row;
};

// Of a vector to which no row is nearer than infinity: the first whose sum is not NaN.
__attribute__((noinline, cold)) Found firstNumber(const float* x, const float* book, int bookLen, int dim) {
    for (int j = 0; j < bookLen; ++j) {
        float sum = 0;
        for (int k = 0; k < dim; ++k) {
            const float d = x[k] - book[ptrdiff_t{j} * dim + k];
            sum += d * d;
        }
        if (sum == sum) return {sum, j};
    }
    return {__builtin_nanf(""), 0};
}

template <class V> TEVS_INLINE float total(V v) {
    constexpr int n = kCount<V>;
    if constexpr (n > 2)
        return total(low(v) + high(v));
    else
        return v[0] + v[1];
}

struct Search {
    const float *src, *book;
    int bookLen, dim;
    int* indx;
    float* dist;

    TEVS_INLINE void put(int i, Found f) const {
        if (f.row < 0) f = firstNumber(src + ptrdiff_t{i} * dim, book, bookLen, dim);
        indx[i] = f.row;
        if (dist) dist[i] = f.sum;
    }

    void bySamples(int len) const {
        constexpr int B = kRegisterBytes == 16 && sizeof(void*) == 4 ? 2 : 4;
        float area[kAreaDim * kAbreast];
        for (int i = 0; len - i > 0; i += kAbreast) {
            const int n = len - i < kAbreast ? len - i : kAbreast;
            layAbreast(src + ptrdiff_t{i} * dim, n, dim, area);
            Best a = noneYet(), b = a;
            int j = 0;
            const auto take = [&](int q, Two<Floats> s) TEVS_HERE {
                a.take(s.a, same<Ints>(j + q));
                b.take(s.b, same<Ints>(j + q));
            };
            for (; j <= bookLen - B; j += B) sumsAbreast<B>(area, book + ptrdiff_t{j} * dim, dim, take);
            for (; j < bookLen; ++j) sumsAbreast<1>(area, book + ptrdiff_t{j} * dim, dim, take);
            float sums[kAbreast];
            int rows[kAbreast];
            store(sums, Two{a.sum, b.sum});
            store(rows, Two{a.row, b.row});
            for (int k = 0; k < n; ++k) put(i + k, {sums[k], rows[k]});
            if (len - i <= kAbreast) break;
        }
    }

    // Fewer than kFloats samples.
    void byRows(int len) const {
        float area[kAreaDim * kAbreast];
        Best best[kFloats][2];
        for (auto& b : best) b[0] = b[1] = noneYet();
        const auto lanes = [](int from) {
            int row[kFloats];
            for (int k = 0; k < kFloats; ++k) row[k] = from + k;
            return load<int32_t, kFloats>(row);
        };
        Ints rows = lanes(0);
        for (int left = bookLen, j = 0; left > 0; left -= kAbreast, j += left > 0 ? kAbreast : 0) {
            layAbreast(book + ptrdiff_t{j} * dim, left < kAbreast ? left : kAbreast, dim, area);
            for (int i = 0; i < len; ++i)
                sumsAbreast<1>(area, src + ptrdiff_t{i} * dim, dim, [&](int, Two<Floats> s) TEVS_HERE {
                    best[i][0].take(s.a, rows);
                    best[i][1].take(s.b, rows + kFloats);
                });
            rows += kAbreast;
        }
        for (int i = 0; i < len; ++i) {
            float sums[kAbreast];
            int at[kAbreast];
            store(sums, Two{best[i][0].sum, best[i][1].sum});
            store(at, Two{best[i][0].row, best[i][1].row});
            Found f = {sums[0], at[0]};
            for (int k = 1; k < kAbreast; ++k)
                if (at[k] >= 0 && (f.row < 0 || sums[k] < f.sum || (sums[k] == f.sum && at[k] < f.row))) f = {sums[k], at[k]};
            put(i, f);
        }
    }

    // Rows four by four, of more than kFloats elements; the last register of each ends where the row does, and of its lanes those count that are new.
    void along(int len) const {
        int32_t counts[2 * kFloats];
        for (int k = 0; k < 2 * kFloats; ++k) counts[k] = k < kFloats ? 0 : -1;
        const Ints fresh = load<int32_t, kFloats>(counts + dim % kFloats);
        const auto sums = [&](auto rows, const float* x, const float* y, float* out) TEVS_HERE {
            Floats s[rows.n] = {};
            for (int k = 0; k <= dim - kFloats; k += kFloats) {
                const Floats v = load<float, kFloats>(x + k);
#pragma GCC unroll 4
                for (int q = 0; q < rows.n; ++q) {
                    const Floats d = v - load<float, kFloats>(y + ptrdiff_t{q} * dim + k);
                    s[q] = fma(d, d, s[q]);
                }
            }
            for (int q = 0; q < rows.n; ++q) {
                const int k = dim - kFloats;
                const Floats d = (Floats)((Ints)(load<float, kFloats>(x + k) - load<float, kFloats>(y + ptrdiff_t{q} * dim + k)) & fresh);
                s[q] = fma(d, d, s[q]);
                out[q] = total(s[q]);
            }
        };
        for (int i = 0; i < len; ++i) {
            Found f = {__builtin_inff(), -1};
            const float* x = src + ptrdiff_t{i} * dim;
            float out[4];
            int j = 0;
            for (; j <= bookLen - 4; j += 4) {
                sums(Lanes<4>{}, x, book + ptrdiff_t{j} * dim, out);
                for (int q = 0; q < 4; ++q)
                    if (out[q] < f.sum) f = {out[q], j + q};
            }
            for (; j < bookLen; ++j) {
                sums(Lanes<1>{}, x, book + ptrdiff_t{j} * dim, out);
                if (out[0] < f.sum) f = {out[0], j};
            }
            put(i, f);
        }
    }
};

void nearestVec(const float* src, int* indx, float* dist, int len, const float* book, int bookLen, int dim) {
    const Search search = {src, book, bookLen, dim, indx, dist};
    if (dim > kAreaDim || (len < 4 && dim >= 2 * kFloats))
        search.along(len);
    else if (len < kFloats)
        search.byRows(len);
    else
        search.bySamples(len);
}

}   // namespace

extern const SearchKernels search = {
    .sort16s = sort<int16_t, false>,
    .sort32s = sort<int32_t, false>,
    .sort32f = sort<int32_t, true>,
    .sort64f = sort<int64_t, true>,
    .indx16s = sortIndx<int16_t, false>,
    .indx32s = sortIndx<int32_t, false>,
    .indx32f = sortIndx<int32_t, true>,
    .indx64f = sortIndx<int64_t, true>,
    .nearest16s = nearest<int16_t>,
    .nearest32s = nearest<int32_t>,
    .nearest32f = nearest<float>,
    .nearest64f = nearest<double>,
    .nearestVec = nearestVec,
};

}   // namespace tevs::TEVS_LEVEL_NS
