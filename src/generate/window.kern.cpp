#include "generate/window.table.h"

#include "core/complex.h"
#include "core/simd/angle.h"
#include "core/simd/explog.h"
#include "generate/samples.kern.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// ---- weights ---------------------------------------------------------------------------------------------------------------------------------

template <class W> void bartlett(const Taper& t, TaperWork&, int first, int count, W* w) {
    produce<Nearest>(
        w, count, [step = 2.0 / (t.len - 1)](auto n, Index at) { return both(widen(indices<n.n>(at)), [=](auto v) { return v * step; }); }, Index{first});
}

// The windows of cosines, by q = sin^2(n pi / (len - 1)) = (1 - cos(n theta)) / 2. Where the cosine form subtracts two numbers next to 1, this one keeps every digit
// of the weights at the ends.
struct Hann {
    template <class V> TEVS_INLINE V operator()(V q) const { return q; }
};
struct Hamming {
    template <class V> TEVS_INLINE V operator()(V q) const { return constant<V>(0.08) + constant<V>(0.92) * q; }
};
// (alpha + 1) / 2 - cos(n theta) / 2 - alpha cos(2 n theta) / 2 = q + 4 alpha q (1 - q)
struct Blackman {
    double alpha;
    template <class V> TEVS_INLINE V operator()(V q) const { return q + constant<V>(alpha) * (constant<V>(4) * q * (constant<V>(1) - q)); }
};

using Reals = Vec<double, kLanes<double>>;

// The sine and the cosine of x for 0 <= x <= pi/2 in double precision: the sine and, but for the error of x itself, the cosine within a unit in the last place.
template <class V> TEVS_INLINE Two<V> sineCosine(V x) {
    const auto steep = isLess(constant<V>(kPi / 4), x);
    const V r = select(steep, (constant<V>(kPi / 2) - x) + constant<V>(kPiLow / 2), x), z = r * r;
    const V sine = r + r * (z * polynomial(z, -0x1.5555555555555p-3, 0x1.111111111110bp-7, -0x1.a01a01a018ae6p-13, 0x1.71de3a5339acfp-19,
                                           -0x1.ae64529894892p-26, 0x1.612092e78f177p-33, -0x1.aaa55f96c4421p-41));
    const V cosine = (constant<V>(1) - constant<V>(0.5) * z) + (z * z) * polynomial(z, 0x1.555555555554cp-5, -0x1.6c16c16c15181p-10, 0x1.a01a019cb219ap-16,
                                                                                    -0x1.27e4f80a35a8cp-22, 0x1.1ee9ec19d5103p-29, -0x1.8faeb68577f3ap-37);
    return {select(steep, cosine, sine), select(steep, sine, cosine)};
}

// The sine and the cosine of (first + stride * i) * step, i = 0 .. count - 1, at most a right angle. Whole vectors are stored.
TEVS_INLINE void anglesOf(double step, int first, int stride, int count, double* sine, double* cosine) {
    using V = Reals;
    V n = constant<V>(first);
    const V apart = constant<V>(stride);
    n += apart * countOf<V>(Iota<kCount<V>>{});
    for (int i = 0; i < count; i += kCount<V>, n += apart * constant<V>(kCount<V>)) {
        const Two<V> s = sineCosine(atMost(constant<V>(kPi / 2), n * constant<V>(step)));
        store(sine + i, s.a);
        store(cosine + i, s.b);
    }
}

// sin(a + b) = sin a cos b + cos a sin b, for anchors a that are kFine samples apart and the angles b between them: no term is negative, so nothing cancels, and no
// error runs on from one sample to the next. The sines are within 4 units of 2^-53.
template <class W, class F> TEVS_INLINE void ofSines(const Taper& t, TaperWork& work, int first, int count, W* w, F weight) {
    using V = Reals;
    constexpr int n = kCount<V>;
    const double step = kPi / (t.len - 1);
    if (first == 0) anglesOf(step, 0, 1, count < kFine ? (count + 2 * n - 1) & -2 * n : kFine, work.sine, work.cosine);
    alignas(64) double sine[kTaperBlock / kFine], cosine[kTaperBlock / kFine];
    anglesOf(step, first, kFine, (count + kFine - 1) / kFine, sine, cosine);
    for (int k = 0; k < count; k += kFine) {
        const V s = constant<V>(sine[k / kFine]), c = constant<V>(cosine[k / kFine]);
        const auto at = [&](int j) {
            const V root = s * load<double, n>(work.cosine + j) + c * load<double, n>(work.sine + j);
            return weight(root * root);
        };
        const int end = count - k < kFine ? count - k : kFine;
        for (int j = 0; j < end; j += 2 * n) {
            const Two<V> v = {at(j), at(j + n)};
            if constexpr (__is_same(W, double))
                store(w + k + j, v);
            else
                store(w + k + j, narrow(v));
        }
    }
}

template <class W> void hann(const Taper& t, TaperWork& work, int first, int count, W* w) { ofSines(t, work, first, count, w, Hann{}); }
template <class W> void hamming(const Taper& t, TaperWork& work, int first, int count, W* w) { ofSines(t, work, first, count, w, Hamming{}); }
template <class W> void blackman(const Taper& t, TaperWork& work, int first, int count, W* w) { ofSines(t, work, first, count, w, Blackman{t.alpha}); }

// I0: a polynomial in z = (x / kFar)^2 below kFar, and from there on e^x / sqrt(x) times one in u = kFar / x. M. Abramowitz and I. A. Stegun, Handbook of Mathematical
// Functions, 9.8.1 and 9.8.2; in double precision a fit of its own. The peak, by which all weights are divided, is computed in double precision for either, with
// coefficients that differ a little from those of the elements.
template <class T> struct Bessel;
template <> struct Bessel<float> {
    static constexpr double kFar = 3.75;
    template <class V> static TEVS_INLINE V near(V z) { return nearWith(z, 0.26687756); }
    template <class V> static TEVS_INLINE V nearPeak(V z) { return nearWith(z, 0.2659732); }
    template <class V> static TEVS_INLINE V far(V u) {
        return polynomial(u, 0.39894228, 0.01328592, 0.00225319, -0.00157565, 0.00916281, -0.02057706, 0.02635537, -0.01647633, 0.00392377);
    }
    template <class V> static TEVS_INLINE V farPeak(V u) { return far(u); }

private:
    template <class V> static TEVS_INLINE V nearWith(V z, double c) { return polynomial(z, 1, 3.5156229, 3.0899424, 1.2067492, c, 0.0360768, 0.0045813); }
};
template <> struct Bessel<double> {
    static constexpr double kFar = 4;
    template <class V> static TEVS_INLINE V near(V z) { return nearWith(z, 4.000003096, 0.000674193709375); }
    template <class V> static TEVS_INLINE V nearPeak(V z) { return nearWith(z, 4.0000001935, 0.0008267816); }
    template <class V> static TEVS_INLINE V far(V u) { return farWith(u, 0.0022585681074049, 0.04958113163828737, 0.18954771930079328); }
    template <class V> static TEVS_INLINE V farPeak(V u) { return farWith(u, 0.0022585672, 0.0495811118, 0.1895476618); }

private:
    template <class V> static TEVS_INLINE V nearWith(V z, double c1, double c7) {
        return polynomial(z, 0.9999999985, c1, 3.9999959541, 1.777809969, 0.4443189384, 0.0713758187, 0.0075942968, c7);
    }
    template <class V> static TEVS_INLINE V farWith(V u, double c4, double c6, double c8) {
        return polynomial(u, 0.3989422809, 0.0124667783, 0.0017623668, 0.00026, c4, -0.0128314822, c6, -0.1209940805, c8, -0.1867783276, 0.1113315511,
                          -0.0366694767, 0.0051246015);
    }
};

// 1 / I0(peak), and that times e^peak, which stays a moderate number. The peak's rounding to W goes into the latter.
template <class W> TEVS_INLINE void kaiserFactors(double peak, TaperWork& work) {
    using V = Vec<double, 2>;
    using B = Bessel<W>;
    const V x = constant<V>(peak), stored = constant<V>(W(peak)), ratio = x / constant<V>(B::kFar);
    if (peak < B::kFar) {
        const V low = constant<V>(1) / B::nearPeak(ratio * ratio);
        work.low = low[0];
        work.high = (low * exponential(stored))[0];
    } else {
        const V scaled = squareRoot(x) / B::farPeak(constant<V>(B::kFar) / x);
        work.low = (scaled * exponential(-x))[0];
        work.high = (scaled * exponential(stored - x))[0];
    }
}

// Lanes of n, and of len - 1 - n.
template <class V> TEVS_INLINE Two<V> distances(int n, int len) {
    if constexpr (sizeof(V{}[0]) == 4) {
        const auto at = indices<kCount<V>>(Index{n});
        return {__builtin_convertvector(at, V), __builtin_convertvector(len - 1 - at, V)};
    } else {
        const V at = constant<V>(n) + countOf<V>(Iota<kCount<V>>{});
        return {at, constant<V>(len - 1) - at};
    }
}

// The weight I0(x) / I0(peak), x = |alpha| sqrt(n (len - 1 - n)). The large form takes e^(x - peak), which neither overflows nor loses what a small g would lose.
// x grows with n, so all vectors but one or two take one form alone.
template <class W> void kaiser(const Taper& t, TaperWork& work, int first, int count, W* w) {
    using V = Vec<W, kLanes<W>>;
    using B = Bessel<W>;
    if (first == 0) kaiserFactors<W>(t.peak, work);
    const V alpha = abs(constant<V>(t.alpha)), ratio = alpha * constant<V>(1 / B::kFar), square = ratio * ratio;
    const V lowFactor = constant<V>(work.low), highFactor = constant<V>(work.high), peak = constant<V>(t.peak), far = constant<V>(B::kFar),
            one = constant<V>(1);
    for (int i = 0; i < count; i += kCount<V>) {
        const Two<V> n = distances<V>(first + i, t.len);
        const V m = n.a * n.b, z = m * square;
        const auto isNear = isLess(z, one);
        V weight;
        if (all(isNear))
            weight = B::near(z) * lowFactor;
        else {
            const V x = atLeast(far, alpha * squareRoot(m)), inverse = one / x;
            weight = exponential(x - peak) * (B::far(far * inverse) * squareRoot(inverse)) * highFactor;
            if (any(isNear)) weight = select(isNear, B::near(z) * lowFactor, weight);
        }
        store(w + i, weight);
    }
}

// ---- products --------------------------------------------------------------------------------------------------------------------------------

// Weights in their order, and from the last to the first.
template <class W> struct Ahead {
    const W* p;
    friend TEVS_INLINE Ahead operator+(Ahead a, ptrdiff_t i) { return {a.p + i}; }
    template <int N> TEVS_INLINE Vec<W, N> load() const { return TEVS_LEVEL_NS::load<W, N>(p); }
};
template <class W> struct Backward {
    const W* end;
    friend TEVS_INLINE Backward operator+(Backward a, ptrdiff_t i) { return {a.end - i}; }
    template <int N> TEVS_INLINE Vec<W, N> load() const { return reverse(TEVS_LEVEL_NS::load<W, N>(end - N)); }
};
// The n < N weights that a source has left, with weights of 0 around them.
template <int N, class W> struct HeldWeights {
    W w[2 * N] = {};
    int n;
    TEVS_INLINE HeldWeights(const W* from, int count) : n(count) { moveBytes(from, w + N, count * int(sizeof(W))); }
};
template <int N, class W> struct HeldAhead : HeldWeights<N, W> {
    using HeldWeights<N, W>::HeldWeights;
    TEVS_INLINE Ahead<W> at() const { return {this->w + N}; }
};
template <int N, class W> struct HeldBackward : HeldWeights<N, W> {
    using HeldWeights<N, W>::HeldWeights;
    TEVS_INLINE Backward<W> at() const { return {this->w + N + this->n}; }
};
template <int N, class W> TEVS_INLINE HeldAhead<N, W> staged(Ahead<W> a, int n) { return {a.p, n}; }
template <int N, class W> TEVS_INLINE HeldBackward<N, W> staged(Backward<W> a, int n) { return {a.end - n, n}; }

// Products of 16-bit samples on their way back.
struct Unscaled {
    template <class V> TEVS_INLINE V operator()(V v) const { return v; }
};
struct Scaled {
    float f, g;
    template <class V> TEVS_INLINE V operator()(V v) const { return v * f * g; }
};
template <class V, class S> TEVS_INLINE auto rounded(V v, S scale) {
    const V limited = atMost(constant<V>(32767), scale(v));
    return nearestInt(limited) & (limited == limited);
}

template <class T, class Order, class S = Unscaled> TEVS_INLINE void multiply(const T* src, Order weights, T* dst, int len, S scale = {}) {
    using P = Scalar<T>;
    constexpr bool isShort = sizeof(P) == 2;
    // A step has one register of weights for a real float and for complex samples, two for real 16-bit ones.
    constexpr int size = isShort ? 4 : int(sizeof(P)), registers = isShort && !kComplex<T> ? 2 : 1;
    map<kRegisterBytes / size * registers, 16 / size * registers>(
        len, dst,
        [=](auto n, const T* s, Order w) {
            constexpr int lanes = n.n / registers;
            const P* const p = reinterpret_cast<const P*>(s);
            const auto of = [&] {
                if constexpr (kComplex<T>) {
                    const auto v = w.template load<lanes>();
                    return interleave(v, v);
                } else {
                    return Two{w.template load<lanes>(), (w + (registers - 1) * lanes).template load<lanes>()};
                }
            }();
            if constexpr (isShort) {
                using F = Vec<float, lanes>;
                return pack16(rounded(__builtin_convertvector(loadWide<lanes>(p), F) * of.a, scale),
                              rounded(__builtin_convertvector(loadWide<lanes>(p + lanes), F) * of.b, scale));
            } else if constexpr (kComplex<T>) {
                return Two{load<P, lanes>(p) * of.a, load<P, lanes>(p + lanes) * of.b};
            } else {
                return load<P, lanes>(p) * of.a;
            }
        },
        src, weights);
}

template <class T, class W>
constexpr Products<T, W> products = {[](const T* src, const W* w, T* dst, int len) { multiply(src, Ahead<W>{w}, dst, len); },
                                     [](const T* src, const W* w, T* dst, int len) { multiply(src, Backward<W>{w + len}, dst, len); }};

void ahead16sScaled(const int16_t* src, const float* w, int16_t* dst, int len, float f, float g) { multiply(src, Ahead<float>{w}, dst, len, Scaled{f, g}); }
void backward16sScaled(const int16_t* src, const float* w, int16_t* dst, int len, float f, float g) {
    multiply(src, Backward<float>{w + len}, dst, len, Scaled{f, g});
}

}   // namespace

extern const WindowKernels window = {
    .bartlett = {bartlett<float>, bartlett<double>},
    .hann = {hann<float>, hann<double>},
    .hamming = {hamming<float>, hamming<double>},
    .blackman = {blackman<float>, blackman<double>},
    .kaiser = {kaiser<float>, kaiser<double>},
    .by16s = products<int16_t, float>,
    .by16sc = products<Complex16s, float>,
    .by32f = products<float, float>,
    .by32fc = products<Complex32f, float>,
    .by64f = products<double, double>,
    .by64fc = products<Complex64f, double>,
    .by16sScaled = {ahead16sScaled, backward16sScaled},
};

}   // namespace tevs::TEVS_LEVEL_NS
