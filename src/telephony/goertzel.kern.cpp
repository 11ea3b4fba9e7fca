#include "telephony/goertzel.table.h"

#include "core/complex.h"
#include "core/simd/lanes.h"
#include "core/simd/map.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// The recurrence s(n) = x(n) + 2 cos(omega) s(n-1) - s(n-2) waits for itself twice a sample, and its rounding errors grow with 1 / sin(omega). The value that
// it ends in, sum of x(n) z^(len-n) with z = e^(j omega), is formed by blocks of B elements instead, with the powers of 1 / z in a table:
//
//     y <- (y + sum over j < B of x(j) z^-j) z^B
//
// Complex elements go as pairs of real ones that share a factor; the sums over real and over imaginary parts are told apart at the end. Sums are kept in 32 bytes
// of lanes, which are added up in one order, and nothing is fused: results are the same at every level. After 16 blocks the lanes go into a sum in double
// precision, and these sums are put together two by two: z^16B, rounded, would come into the first of them as often as there are others, each time with the same
// error, and so each meets one power of z for every doubling of the length.
constexpr int kBytes = 32, kSteps = 8, kBlocksAtOnce = 16;
template <class T> constexpr int kTogether = kBytes / int(sizeof(T));
template <class T> constexpr int kBlock = kSteps* kTogether<T>;
template <class T> using Together = Some<Vec<T, kLanes<T>>, kBytes / kRegisterBytes>;

struct Value {
    double re, im;
};
TEVS_INLINE Value operator+(Value a, Value b) { return {a.re + b.re, a.im + b.im}; }
TEVS_INLINE Value operator*(Value a, Value b) { return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re}; }

// z^-j for each element of a block, and in T for each part.
template <class T> struct Phases {
    alignas(kBytes) T re[kBlock<T>], im[kBlock<T>];
    double exactRe[kBlock<T>], exactIm[kBlock<T>];
};

// The four numbers at p as T.
template <class T> TEVS_INLINE auto fourAs(const double* p) {
    if constexpr (sizeof(T) == 8)
        return loadLanes<double, kRegisterBytes, kBytes / kRegisterBytes>(p);
    else if constexpr (kRegisterBytes == kBytes)
        return Some<Vec<float, 4>, 1>{{__builtin_convertvector((load<double, 4>(p)), Vec<float, 4>)}};
    else
        return Some<Vec<float, 4>, 1>{{narrow(loadTwo<double, 2>(p))}};
}

// For the first elements of a block, at least four and a power of two: element j has the factors of element j - k, times z^-k, with the highest power of two k in j.
template <int Parts, class T> TEVS_INLINE void prepare(Phases<T>& w, const PhasePowers& z, int elements) {
    constexpr int kMost = kBlock<T> / Parts;
    const Value one = {z.re[0], -z.im[0]}, two = {z.re[1], -z.im[1]}, first[4] = {{1, 0}, one, two, one * two};
    for (int j = 0; j < 4; ++j) {
        w.exactRe[j] = first[j].re;
        w.exactIm[j] = first[j].im;
    }
    for (int j = 0; j < kMost && j < elements; j += 4) {
        if (j > 0) {
            const int i = 31 - __builtin_clz(unsigned(j)), from = j - (1 << i);
            const double c = z.re[i], s = -z.im[i];
            constexpr int n = kLanes<double>;
            for (int l = 0; l < 4; l += n) {
                const auto re = load<double, n>(w.exactRe + from + l), im = load<double, n>(w.exactIm + from + l);
                store(w.exactRe + j + l, re * c - im * s);
                store(w.exactIm + j + l, re * s + im * c);
            }
        }
        const auto put = [=](T* dst, const double* exact) {
            const auto v = fourAs<T>(exact + j);
            if constexpr (Parts == 2)
                store(dst + 2 * j, each(v, [](auto v) { return interleave(v, v); }));
            else
                store(dst + j, v);
        };
        put(w.re, w.exactRe);
        put(w.im, w.exactIm);
    }
}

template <class T> struct Sums {
    Together<T> re{}, im{};

    // Parts from memory with the factors from place j of a block on.
    TEVS_INLINE void add(const Together<T>& x, const Phases<T>& w, int j) {
        constexpr int n = kLanes<T>;
        for (int k = 0; k < kBytes / kRegisterBytes; ++k) {
            re.v[k] += x.v[k] * load<T, n>(w.re + j + k * n);
            im.v[k] += x.v[k] * load<T, n>(w.im + j + k * n);
        }
    }
    TEVS_INLINE void turnAndAdd(T c, T s, const Sums& next) {
        for (int k = 0; k < kBytes / kRegisterBytes; ++k) {
            const auto a = re.v[k], b = im.v[k];
            re.v[k] = (a * c - b * s) + next.re.v[k];
            im.v[k] = (a * s + b * c) + next.im.v[k];
        }
    }
    // The sum of all lanes; every second one is of imaginary parts, whose sum counts times j.
    template <int Parts> TEVS_INLINE Value total() const {
        T a[kTogether<T>], b[kTogether<T>];
        store(a, re);
        store(b, im);
        Value sum[Parts] = {};
        for (int i = 0; i < kTogether<T>; ++i) sum[i % Parts] = sum[i % Parts] + Value{double(a[i]), double(b[i])};
        if constexpr (Parts == 2) return {sum[0].re - sum[1].im, sum[0].im + sum[1].re};
        return sum[0];
    }
};

// For Count frequencies in one run over the signal.
template <class T, int Count, class S> void valueAt(const S* src, int len, const PhasePowers* z, Complex64f* y) {
    using P = Scalar<S>;
    constexpr int parts = kParts<S>, elements = kBlock<T> / parts, log2 = elements == 64 ? 6 : elements == 32 ? 5 : 4;
    static_assert(1 << log2 == elements && kBlocksAtOnce == 1 << 4);
    const auto loadParts = [](const P* p) { return loadLanes<T, kRegisterBytes, kBytes / kRegisterBytes>(p); };

    const int blocks = len / elements, rest = len % elements;
    int known = blocks > 0 ? elements : 8;
    while (known <= rest) known *= 2;
    Phases<T> w[Count];
    for (int f = 0; f < Count; ++f) prepare<parts>(w[f], z[f], known);

    const P* p = partsOf(src);
    // waiting[i] is the sum over 2^i times 16 blocks, or over fewer at the start, whose other half has yet to come; zero where there is none.
    const int doublings = blocks > kBlocksAtOnce ? 32 - __builtin_clz(unsigned(blocks - 1) / kBlocksAtOnce) : 0;
    Value sum[Count] = {}, waiting[Count][kPhasePowers - (log2 + 4)];
    for (int f = 0; f < Count; ++f)
        for (int i = 0; i < doublings; ++i) waiting[f][i] = {0, 0};
    for (int left = blocks; left > 0;) {
        const int now = left % kBlocksAtOnce ? left % kBlocksAtOnce : kBlocksAtOnce;   // fewer the first time
        Sums<T> lanes[Count];
        for (int b = 0; b < now; ++b) {
            Sums<T> block[Count];
#pragma GCC unroll 8
            for (int step = 0; step < kSteps; ++step, p += kTogether<T>) {
                const auto x = loadParts(p);
                for (int f = 0; f < Count; ++f) block[f].add(x, w[f], step * kTogether<T>);
            }
            for (int f = 0; f < Count; ++f) lanes[f].turnAndAdd(T(z[f].re[log2]), T(z[f].im[log2]), block[f]);
        }
        left -= now;
        for (int f = 0; f < Count; ++f) sum[f] = lanes[f].template total<parts>();
        int i = 0;
        for (; i < doublings && !(left >> (i + 4) & 1); ++i)
            for (int f = 0; f < Count; ++f) sum[f] = waiting[f][i] * Value{z[f].re[log2 + 4 + i], z[f].im[log2 + 4 + i]} + sum[f];
        if (left > 0)
            for (int f = 0; f < Count; ++f) waiting[f][i] = sum[f];
    }
    if (blocks > 0)
        for (int f = 0; f < Count; ++f) sum[f] = sum[f] * Value{z[f].re[log2], z[f].im[log2]};
    if (rest > 0) {
        Sums<T> last[Count];
        int j = 0;
        const auto step = [&](const Together<T>& x) {
            for (int f = 0; f < Count; ++f) last[f].add(x, w[f], j);
        };
        for (; j + kTogether<T> <= rest * parts; j += kTogether<T>) step(loadParts(p + j));
        if (const int few = rest * parts % kTogether<T>; few > 0) {
            P held[kTogether<T>] = {};
            moveBytes(p + j, held, few * int(sizeof(P)));
            step(loadParts(held));
        }
        for (int f = 0; f < Count; ++f) sum[f] = (sum[f] + last[f].template total<parts>()) * Value{w[f].exactRe[rest], -w[f].exactIm[rest]};
    }
    for (int f = 0; f < Count; ++f) y[f] = {sum[f].re, sum[f].im};
}

}   // namespace

extern const GoertzelKernels goertzel = {
    .one32f = valueAt<float, 1, float>,
    .one16s = valueAt<float, 1, int16_t>,
    .one32fc = valueAt<float, 1, Complex32f>,
    .two32fc = valueAt<float, 2, Complex32f>,
    .one64fc = valueAt<double, 1, Complex64f>,
    .two64fc = valueAt<double, 2, Complex64f>,
    .one16sc = valueAt<float, 1, Complex16s>,
    .two16sc = valueAt<float, 2, Complex16s>,
};

}   // namespace tevs::TEVS_LEVEL_NS
