#include "telephony/speech.table.h"

#include "core/complex.h"
#include "core/simd/lanes.h"
#include "core/simd/map.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// Everything here is computed in double precision: what is called a step is as many samples as K registers of doubles hold, and its results fill one register,
// of 64-bit samples two, so that chains of additions are shared by two registers.
constexpr int kDoubles = kLanes<double>;
using Doubles = Vec<double, kDoubles>;
using Single = Vec<double, 1>;
template <class T> constexpr int kRegisters = sizeof(T) == 8 ? 2 : 8 / int(sizeof(T));
template <class T> constexpr int kStep = kRegisters<T>* kDoubles;
template <class T> using Step = Some<Doubles, kRegisters<T>>;

template <class T, class S> TEVS_INLINE Step<T> loadStep(const S* p) { return loadLanes<double, kRegisterBytes, kRegisters<T>>(p); }

// y as samples, each rounded once.
template <class T> TEVS_INLINE auto rounded(const Step<T>& y, SpeechScale by) {
    if constexpr (sizeof(T) == 8) {
        return y;
    } else if constexpr (sizeof(T) == 4) {
        return eachPair(y, [](Doubles a, Doubles b) { return narrowed(Two<Doubles>{a, b}); });
    } else {
        // The bounds and the comparison both take NaN for what it is: no number, which becomes 0.
        const auto bounded = each(y, [=](Doubles v) {
            v = v * same<Doubles>(by.f) * same<Doubles>(by.g);
            return clamped<T>((Doubles)((Vec<int64_t, kDoubles>)v & (Vec<int64_t, kDoubles>)isAtMost(v, v)));
        });
        return packed<T>(eachPair(bounded, [](Doubles a, Doubles b) { return nearestInt(Two<Doubles>{a, b}); }));
    }
}

// ---- emphasis -------------------------------------------------------------------------------------------------------------------------

// From the last sample to the first: in place, no output then lies where a sample is still to be read. What is left at the front is computed before anything
// is stored, and stored over what the loop has left there.
template <class T> void preEmphasis(const T* src, T* dst, int len, double alpha, double before, SpeechScale by) {
    const auto at = [=](const T* p) TEVS_HERE {
        const Step<T> x = loadStep<T>(p), earlier = loadStep<T>(p - 1);
        Step<T> y;
        for (int k = 0; k < kRegisters<T>; ++k) y.v[k] = x.v[k] - same<Doubles>(alpha) * earlier.v[k];
        return rounded<T>(y, by);
    };
    constexpr int n = kStep<T>;
    T first[n];
    Step<T> y = {};
    y.v[0][0] = double(src[0]) - alpha * before;
    store(first, rounded<T>(y, by));

    if (len > n) {
        const auto front = at(src + 1);
        for (int i = len - n; i > 1; i -= n) store(dst + i, at(src + i));
        store(dst + 1, front);
    } else {
        T samples[n + 1] = {}, rest[n];
        moveBytes(src, samples, len * int(sizeof(T)));
        store(rest, at(samples + 1));
        moveBytes(rest, dst + 1, (len - 1) * int(sizeof(T)));
    }
    dst[0] = first[0];
}

// Each output waits for the one before, 8 cycles on most processors, in which a step is rounded beside it.
template <class T> double deEmphasis(const T* src, T* dst, int len, double alpha, double before, SpeechScale by) {
    constexpr int n = kStep<T>;
    double y[n] = {};
    const auto some = [&](int i, int count) TEVS_HERE {
        for (int j = 0; j < count; ++j) y[j] = before = double(src[i + j]) + alpha * before;
    };
    int i = 0;
    for (; i <= len - n; i += n) {
        some(i, n);
        store(dst + i, rounded<T>(loadStep<T>(y), by));
    }
    if (i < len) {
        T rest[n];
        some(i, len - i);
        store(rest, rounded<T>(loadStep<T>(y), by));
        moveBytes(rest, dst + i, (len - i) * int(sizeof(T)));
    }
    return before;
}

// ---- running levels -------------------------------------------------------------------------------------------------------------------

// After the samples that do not fill a block, one level for each place in a block of B samples:
//
//     l[j] <- alpha^B * l[j] + (1 - alpha) * x[j]         j = 0 .. B-1
//
// and at the end their sum, each times alpha^(B-1-j). Powers that leave the normal range, and an alpha that is no level's, take the samples one by one.
constexpr int kLevels = kFewRegisters ? 8 : 16;

template <bool Power, class S> double track(const S* src, int len, double level, double alpha) {
    constexpr int parts = kParts<S>, block = kLevels / parts, registers = kLevels / kDoubles;
    const double share = 1 - alpha;
    const auto one = [](const Scalar<S>* p) TEVS_HERE {
        double x = p[0];
        if (Power) x *= x;
        if (parts == 2) x += double(p[parts - 1]) * double(p[parts - 1]);
        return x;
    };
    const bool inBlocks = alpha >= 0x1p-10 && alpha < 1 && len >= 4 * block;
    const int alone = inBlocks ? len % block : len;
    const Scalar<S>* p = partsOf(src);
    for (int i = 0; i < alone; ++i, p += parts) level = fma(Single{alpha}, Single{level}, Single{share * one(p)})[0];
    if (!inBlocks) return level;

    const auto squared = [](double x, int from, int to) {
        for (; from < to; from *= 2) x *= x;
        return x;
    };
    const double acrossRegister = squared(alpha, 1, kDoubles / parts);
    const Doubles acrossBlock = same<Doubles>(squared(acrossRegister, kDoubles / parts, block));
    double l[kLevels] = {};
    l[kLevels - parts] = level;
    auto levels = loadLanes<double, kRegisterBytes, registers>(l);
    for (int i = alone; i < len; i += block, p += kLevels) {
        const auto x = loadLanes<double, kRegisterBytes, registers>(p);
        for (int k = 0; k < registers; ++k) {
            const Doubles y = Power ? x.v[k] * x.v[k] : x.v[k];
            levels.v[k] = fma(acrossBlock, levels.v[k], same<Doubles>(share) * y);
        }
    }
    Doubles last = levels.v[0];
    for (int k = 1; k < registers; ++k) last = fma(same<Doubles>(acrossRegister), last, levels.v[k]);
    level = 0;
    for (int j = 0; j < kDoubles; j += parts) level = fma(Single{alpha}, Single{level}, Single{parts == 2 ? last[j] + last[j + 1] : last[j]})[0];
    return level;
}

// ---- window sums ------------------------------------------------------------------------------------------------------------------------

// Lane j from lane j - By, or j + By, and 0 where there is none.
template <int By, class V, int... I> TEVS_INLINE V upOf(V v, Lane<I...>) { return __builtin_shufflevector(v, V{}, (I < By ? kCount<V> : I - By)...); }
template <int By, class V, int... I> TEVS_INLINE V downOf(V v, Lane<I...>) {
    return __builtin_shufflevector(v, V{}, (I + By < kCount<V> ? I + By : kCount<V>)...);
}
template <int From, class V, int... I> TEVS_INLINE V laneOf(V v, Lane<I...>) { return __builtin_shufflevector(v, v, ((void)I, From)...); }

// The sums of lanes 0 .. j, or with Down of lanes j .. to the last, in lane j.
template <bool Down, int By = 1, class V> TEVS_INLINE V sumsOfLanes(V v) {
    if constexpr (By < kCount<V>) {
        const auto order = Iota<kCount<V>>{};
        return sumsOfLanes<Down, 2 * By>(v + (Down ? downOf<By>(v, order) : upOf<By>(v, order)));
    } else {
        return v;
    }
}
// In every lane.
template <bool Down, class V> TEVS_INLINE V totalIn(V sums) {
    constexpr int last = Down ? 0 : kCount<V> - 1;
    return laneOf<last>(sums, Iota<kCount<V>>{});
}

// Sums that go on over the registers of a step and from step to step: the chain from one to the next is one addition.
template <bool Down, class V, int K> TEVS_INLINE Some<V, K> runningSums(const Some<V, K>& x, V& sum) {
    Some<V, K> y;
    V total[K];
    for (int k = 0; k < K; ++k) {
        y.v[k] = sumsOfLanes<Down>(x.v[k]);
        total[k] = totalIn<Down>(y.v[k]);
    }
    V before = {};
    for (int i = 0; i < K; ++i) {
        const int k = Down ? K - 1 - i : i;
        y.v[k] += i ? sum + before : sum;
        before = i ? before + total[k] : total[k];
    }
    sum += before;
    return y;
}

// Integers: what enters less what leaves, exact in 32 bits as long as every window's sum is; in 64 bits and saturated beyond.
template <class S> void sumWindowOfIntegers(const S* src, int32_t* dst, int len, int maskSize, double*) {
    constexpr int32_t largest = LimitsOf<S>::isSigned ? -LimitsOf<S>::min : LimitsOf<S>::max;
    const S* const entering = src + maskSize;
    int i = 1;
    if (maskSize > INT32_MAX / largest) {
        int64_t sum = 0;
        const auto put = [&](int n) {
            const int64_t most = sum > INT32_MAX ? INT32_MAX : sum;
            dst[n] = int32_t(most < INT32_MIN ? INT32_MIN : most);
        };
        for (int n = 0; n < maskSize; ++n) sum += src[n];
        put(0);
        for (; i < len; ++i) {
            sum += entering[i - 1] - src[i - 1];
            put(i);
        }
        return;
    }
    using Ints = Vec<int32_t, kLanes<int32_t>>;
    constexpr int n = kLanes<int32_t>;
    int32_t first = 0;
    int m = 0;
    Ints sums = {};
    for (; m <= maskSize - n; m += n) sums += loadInts<int32_t, kRegisterBytes>(src + m);
    sums = totalIn<false>(sumsOfLanes<false>(sums));
    first = sums[0];
    for (; m < maskSize; ++m) first += src[m];
    dst[0] = first;
    sums = same<Ints>(first);
    for (; i <= len - n; i += n) {
        const Some<Ints, 1> change = {{loadInts<int32_t, kRegisterBytes>(entering + (i - 1)) - loadInts<int32_t, kRegisterBytes>(src + (i - 1))}};
        store(dst + i, runningSums<false>(change, sums));
    }
    for (; i < len; ++i) dst[i] = dst[i - 1] + (entering[i - 1] - src[i - 1]);
}

template <class T> TEVS_INLINE void storeSums(T* dst, const Step<T>& y) { store(dst, rounded<T>(y, SpeechScale{})); }

// Every window by itself.
template <class T> void sumWindowAnew(const T* src, T* dst, int len, int maskSize) {
    constexpr int n = kStep<T>;
    const auto at = [=](const T* p) TEVS_HERE {
        Step<T> y = loadStep<T>(p);
        for (int m = 1; m < maskSize; ++m) {
            const Step<T> x = loadStep<T>(p + m);
            for (int k = 0; k < kRegisters<T>; ++k) y.v[k] += x.v[k];
        }
        return y;
    };
    if (len >= n) {
        const auto last = at(src + (len - n));
        for (int i = 0; i < len - n; i += n) storeSums(dst + i, at(src + i));
        storeSums(dst + (len - n), last);
    } else {
        T samples[n + kSummedAnew] = {}, sums[n];
        moveBytes(src, samples, (len + maskSize - 1) * int(sizeof(T)));
        storeSums(sums, at(samples));
        moveBytes(sums, dst, len * int(sizeof(T)));
    }
}

// The window that starts at sample i of a block is what is left of the block from there on, summed from its end, and the first i samples of the next block.
template <class T> void sumWindow(const T* src, T* dst, int len, int maskSize, double* left) {
    if (maskSize <= kSummedAnew) return sumWindowAnew(src, dst, len, maskSize);
    constexpr int n = kStep<T>;
    for (ptrdiff_t start = 0; start < len; start += maskSize) {
        const T *const block = src + start, *const next = block + maskSize;
        T* const out = dst + start;
        const int count = len - start < maskSize ? int(len - start) : maskSize;

        int i = maskSize;
        double sum = 0;
        while (i % n) {
            sum += double(block[--i]);
            left[i] = sum;
        }
        for (Doubles sums = same<Doubles>(sum); i > 0;) {
            i -= n;
            store(left + i, runningSums<true>(loadStep<T>(block + i), sums));
        }

        const double first = left[0];
        Doubles sums = {};
        for (i = 1; i <= count - n; i += n) {
            Step<T> y = runningSums<false>(loadStep<T>(next + (i - 1)), sums);
            for (int k = 0; k < kRegisters<T>; ++k) y.v[k] += load<double, kDoubles>(left + i + k * kDoubles);
            storeSums(out + i, y);
        }
        for (sum = sums[0]; i < count; ++i) {
            sum += double(next[i - 1]);
            out[i] = T(left[i] + sum);
        }
        out[0] = T(first);
    }
}

// ---- linear prediction ------------------------------------------------------------------------------------------------------------------

double levinson(const double* r, double* a, int order, double* k) {
    constexpr int n = kDoubles;
    double energy = r[0] > 0 ? r[0] : 0;
    a[0] = 1;
    int i = 1;
    for (; i <= order && energy > 0; ++i) {
        Doubles sums = {};
        int j = 1;
        for (; j <= i - n; j += n) sums = fma(load<double, n>(a + j), reverse(load<double, n>(r + (i - j - n + 1))), sums);
        double sum = r[i];
        for (int l = 0; l < n; ++l) sum += sums[l];
        for (; j < i; ++j) sum += a[j] * r[i - j];

        const double reflection = -sum / energy;
        if (!(reflection > -1 && reflection < 1)) break;
        // Two coefficients at equal distances from the ends change with each other.
        const Doubles factor = same<Doubles>(reflection);
        int up = 1, down = i - 1;
        for (; down - up >= 2 * n - 1; up += n, down -= n) {
            double* const upper = a + (down - n + 1);
            const auto x = load<double, n>(a + up), y = load<double, n>(upper);
            store(a + up, fma(factor, reverse(y), x));
            store(upper, fma(factor, reverse(x), y));
        }
        for (; up < down; ++up, --down) {
            const double x = a[up], y = a[down];
            a[up] = x + reflection * y;
            a[down] = y + reflection * x;
        }
        if (up == down) a[up] += reflection * a[up];
        a[i] = reflection;
        if (k) k[i - 1] = reflection;
        energy *= 1 - reflection * reflection;
    }
    for (; i <= order; ++i) {
        a[i] = 0;
        if (k) k[i - 1] = 0;
    }
    return energy;
}

}   // namespace

extern const SpeechKernels speech = {
    .preEmphasis16s = preEmphasis<int16_t>,
    .preEmphasis32f = preEmphasis<float>,
    .preEmphasis64f = preEmphasis<double>,
    .deEmphasis16s = deEmphasis<int16_t>,
    .deEmphasis32f = deEmphasis<float>,
    .deEmphasis64f = deEmphasis<double>,
    .mean16s = track<false, int16_t>,
    .power16s = track<true, int16_t>,
    .mean32f = track<false, float>,
    .power32f = track<true, float>,
    .mean64f = track<false, double>,
    .power64f = track<true, double>,
    .power32fc = track<true, Complex32f>,
    .sumWindow8u = sumWindowOfIntegers<uint8_t>,
    .sumWindow16s = sumWindowOfIntegers<int16_t>,
    .sumWindow32f = sumWindow<float>,
    .sumWindow64f = sumWindow<double>,
    .levinson = levinson,
};

}   // namespace tevs::TEVS_LEVEL_NS
