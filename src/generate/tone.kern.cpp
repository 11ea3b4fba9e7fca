#include "generate/tone.table.h"

#include "core/complex.h"
#include "core/simd/lanes.h"
#include "core/simd/map.h"
#include "core/simd/real.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// Of every sample the phase is an integer, which says by itself where the wave is: what comes out does not hang on which lane a sample meets, nor on which call.
// Phases keep their 64 bits; single precision looks at the upper 32.

// Which sample a lane of phases is of. In each block of 128 bits the upper halves of two such registers become one register of floats; results that belong
// together are interleaved by blocks as well (kPairs).
enum class Order { kSamples, kPairs };
template <class T, Order O> constexpr int sampleAt(int word, int lane) {
    constexpr int n = kRegisterBytes / 8;
    if (sizeof(T) == 4) return O == Order::kPairs ? word * n + lane : lane / 2 * 4 + word * 2 + lane % 2;
    return O == Order::kPairs ? lane / 2 + lane % 2 * (n / 2) : lane;
}

// The phases of the samples of one register of T, and of those that follow. Steady: at one frequency.
template <class T, Order O, bool Steady> class Phases {
public:
    using U = Vec<uint64_t, kRegisterBytes / 8>;
    TEVS_INLINE explicit Phases(const ToneWords& w) {
        constexpr int n = kLanes<T>;
        uint64_t at[2 * n], step = w.step;
        at[0] = w.phase;
        for (int i = 1; i < 2 * n; ++i, step += w.bend) at[i] = at[i - 1] + step;
        for (int k = 0; k < kRegisters; ++k)
            for (int l = 0; l < kCount<U>; ++l) {
                const int i = sampleAt<T, O>(k, l);
                now_[k][l] = at[i];
                step_[k][l] = at[i + n] - at[i];
            }
        bend_ = same<U>(w.bend * uint64_t(n * n));
        if (Steady)
            for (U& s : step_) s = same<U>(w.step * uint64_t(n));
    }
    // As many bits of each as T has.
    TEVS_INLINE auto next() {
        const U first = now_[0], last = now_[kRegisters - 1];
        for (int k = 0; k < kRegisters; ++k) {
            now_[k] += step_[k];
            if (!Steady) step_[k] += bend_;
        }
        if constexpr (sizeof(T) == 8)
            return first;
        else
#if TEVS_REGISTER_BYTES >= 32
            return (Vec<uint32_t, kLanes<T>>)_mm256_shuffle_ps((__m256)first, (__m256)last, 0xdd);
#else
            return (Vec<uint32_t, kLanes<T>>)_mm_shuffle_ps((__m128)first, (__m128)last, 0xdd);
#endif
    }

private:
    static constexpr int kRegisters = int(sizeof(uint64_t) / sizeof(T));
    U now_[kRegisters], step_[kRegisters], bend_;
};

// dst[i] = f(phases, src + i ...) for as many samples as N says, in which f takes registers of phases.
template <int N, class T, Order O, class D, class F, class... S> TEVS_INLINE void forPhases(const ToneWords& words, D* dst, int len, F f, const S*... src) {
    const auto each = [&](auto phases) TEVS_HERE {
        mapLong<N>(
            len, dst, [&](auto, auto... p) TEVS_HERE { return f(phases, p...); }, src...);
    };
    if (words.bend == 0)
        each(Phases<T, O, true>(words));
    else
        each(Phases<T, O, false>(words));
}

// Integers as fractions of their range, in -1 .. 1, rounded once.
TEVS_INLINE auto fraction(Vec<uint32_t, kLanes<float>> u) {
    using V = Vec<float, kLanes<float>>;
    return __builtin_convertvector((Vec<int32_t, kLanes<float>>)u, V) * constant<V>(0x1p-31);
}
// Both halves become significands; the sum of the upper one's with what it is too large by is exact.
TEVS_INLINE auto fraction(Vec<uint64_t, kLanes<double>> u) {
    using V = Vec<double, kLanes<double>>;
    const V high = (V)((u >> 32) ^ 0x4530000080000000u), low = (V)((u & 0xffffffffu) | 0x4330000000000000u);
    return ((high - constant<V>(0x1.00000801p+84)) + low) * constant<V>(0x1p-63);
}

// sin(pi x / 4) / x and (cos(pi x / 4) - 1) / x^2 as polynomials of x^2 for |x| <= 1 (Remez): off by 2^-29.6 and 2^-34.1, and for double precision by 2^-59.5 and 2^-64.7.
template <class T> struct Series;
template <> struct Series<float> {
    static constexpr double sine[] = {0x1.921fb4e7050d7p-1, -0x1.4abba77bb8aa0p-4, 0x1.465a3d593f930p-9, -0x1.2cf5d3807bd06p-15};
    static constexpr double cosine[] = {-0x1.3bd3cc7ec2ba5p-2, 0x1.03c1decc71090p-6, -0x1.55c6643bd22c2p-12, 0x1.d9f7bc35d906bp-19};
    static constexpr double sineRest = 0;
};
template <> struct Series<double> {
    static constexpr double sine[] = {0x1.921fb54442d18p-1,  -0x1.4abbce625be21p-4,  0x1.466bc6775679ep-9, -0x1.32d2cce12a0fap-15,
                                      0x1.50782e6867604p-22, -0x1.e2ff49f7687e6p-30, 0x1.e39886fabc1cep-38};
    static constexpr double cosine[] = {-0x1.3bd3cc9be45dep-2,  0x1.03c1f081b5ab0p-6,  -0x1.55d3c7e3c95bcp-12, 0x1.e1f50683b4276p-19,
                                        -0x1.a6d1ecb73c8b2p-26, 0x1.f9cc6acd5f210p-34, -0x1.b26fe7b5b3fd2p-42};
    static constexpr double sineRest = 0x1.1a62633145c07p-55;   // of pi / 4
};

// (magn cos, magn sin) of phases. The magnitude is part of the coefficients, and in single precision of two numbers where it counts: nothing is rounded after the last
// sum of the cosine and the last product of the sine.
template <class T, bool Unit = false> class Wave {
public:
    using V = Vec<T, kLanes<T>>;
    TEVS_INLINE explicit Wave(double magn) {
        const auto part = [=](V& high, V& low, double c) {
            const T h = T(c);
            high = same<V>(h);
            low = same<V>(T(c - double(h)));
        };
        part(magn_, magnRest_, magn);
        part(sine_[0], sineRest_, magn * Series<T>::sine[0]);
        if constexpr (sizeof(T) == 8) sineRest_ = same<V>(magn * Series<T>::sineRest);
        for (int i = 1; i < kSine; ++i) sine_[i] = same<V>(T(magn * Series<T>::sine[i]));
        for (int i = 0; i < kCosine; ++i) cosine_[i] = same<V>(T(magn * Series<T>::cosine[i]));
    }

    // The fraction of a quarter turn nearest to the phase, and which quarter that is.
    template <class P> TEVS_INLINE Two<V> at(P phase) const {
        constexpr int top = 8 * int(sizeof(T)) - 1;
        constexpr auto bit = [](int i) { return Element<P>(1) << i; };
        const V x = fraction(phase << 2), z = x * x;
        V s = sine_[kSine - 1], c = cosine_[kCosine - 1];
#pragma GCC unroll 8
        for (int i = kSine - 2; i >= 1; --i) s = s * z + sine_[i];
#pragma GCC unroll 8
        for (int i = kCosine - 2; i >= 0; --i) c = c * z + cosine_[i];
        s = x * (sine_[0] + (s * z + sineRest_));
        c = Unit ? c * z + constant<V>(1) : magn_ + (c * z + magnRest_);
        const P quarter = phase + bit(top - 2);
        const V odd = (V)(quarter << 1), re = bySign(odd, s, c), im = bySign(odd, c, s);
        return {flip(re, signOf((V)(quarter + bit(top - 1)))), flip(im, signOf((V)quarter))};
    }

private:
    static constexpr int kSine = int(sizeof Series<T>::sine / 8), kCosine = int(sizeof Series<T>::cosine / 8);
    V magn_, magnRest_, sine_[kSine], sineRest_, cosine_[kCosine];
};

// To 16 bits, interleaved. Beyond 32767 the conversion would give the least integer.
template <class V> TEVS_INLINE auto toShorts(V v) { return nearestInt(atMost(constant<V>(32767), v)); }
template <class V> TEVS_INLINE auto toShortPairs(Two<V> z) {
    const auto re = toShorts(z.a), im = toShorts(z.b);
    return blockPack(blockLow(re, im), blockHigh(re, im));
}
// By blocks of 128 bits.
template <class V> TEVS_INLINE Two<V> blockPairs(V a, V b) {
    using I = Vec<int32_t, int(sizeof(V) / 4)>;
    if constexpr (sizeof(a[0]) == 8)
        return {blockLow(a, b), blockHigh(a, b)};
    else
        return {(V)blockLow((I)a, (I)b), (V)blockHigh((I)a, (I)b)};
}

template <class T> struct ComputedIn { using Type = T; };
template <> struct ComputedIn<int16_t> { using Type = float; };

template <class T> void sinusoid(T* dst, int len, const ToneWords& words, double magn) {
    using F = typename ComputedIn<Scalar<T>>::Type;
    constexpr bool isShort = sizeof(Scalar<T>) == 2;
    constexpr Order order = kComplex<T> && !isShort ? Order::kPairs : Order::kSamples;
    const Wave<F> wave(magn);
    forPhases<kLanes<F>*(isShort && !kComplex<T> ? 2 : 1), F, order>(words, dst, len, [&](auto& phases) TEVS_HERE {
        const auto z = wave.at(phases.next());
        if constexpr (isShort && kComplex<T>)
            return toShortPairs(z);
        else if constexpr (isShort)
            return pack16(toShorts(z.a), toShorts(wave.at(phases.next()).a));
        else if constexpr (kComplex<T>)
            return blockPairs(z.a, z.b);
        else
            return z.a;
    });
}

using Floats = Vec<float, kLanes<float>>;

// x (c + j s), with the sine's sign turned to go down.
template <bool Down> TEVS_INLINE Two<Floats> shifted(Two<Floats> x, Two<Floats> z) {
    if constexpr (Down) return {x.a * z.a + x.b * z.b, x.b * z.a - x.a * z.b};
    return {x.a * z.a - x.b * z.b, x.b * z.a + x.a * z.b};
}

template <bool Down> void mix16sc(const Complex16s* src, Complex16s* dst, int len, const ToneWords& words) {
    const Wave<float, true> wave(1);
    const auto mixed = [&](auto& phases, const Complex16s* p) TEVS_HERE {
        const auto x = loadAs<Vec<int32_t, kLanes<float>>>(p);
        const Two<Floats> parts = {__builtin_convertvector(x << 16 >> 16, Floats), __builtin_convertvector(x >> 16, Floats)};
        return toShortPairs(shifted<Down>(parts, wave.at(phases.next())));
    };
    forPhases<kLanes<float>, float, Order::kSamples>(words, dst, len, mixed, src);
}
template <bool Down> void mix32fc(const Complex32f* src, Complex32f* dst, int len, const ToneWords& words) {
    const Wave<float, true> wave(1);
    const auto mixed = [&](auto& phases, const Complex32f* p) TEVS_HERE {
        const auto z = wave.at(phases.next());
        const auto x = loadTwo<float, kLanes<float>>(partsOf(p));
        const auto c = blockPairs(z.a, z.a), s = blockPairs(z.b, z.b);
        const auto times = [](Floats x, Floats c, Floats s) {
            const Floats a = x * c, b = swapPairs(x) * s;
            return Down ? addSub(a, b) : subAdd(a, b);
        };
        return Two{times(x.a, c.a, s.a), times(x.b, c.b, s.b)};
    };
    forPhases<kLanes<float>, float, Order::kPairs>(words, dst, len, mixed, src);
}
void up32fc32f(const Complex32f* src, float* dst, int len, const ToneWords& words) {
    const Wave<float, true> wave(1);
    const auto mixed = [&](auto& phases, const Complex32f* p)
                           TEVS_HERE { return shifted<false>(loadSplit<float, kLanes<float>>(partsOf(p)), wave.at(phases.next())).a; };
    forPhases<kLanes<float>, float, Order::kSamples>(words, dst, len, mixed, src);
}
void down32f32fc(const float* src, Complex32f* dst, int len, const ToneWords& words) {
    const Wave<float, true> wave(1);
    const auto mixed = [&](auto& phases, const float* p) TEVS_HERE {
        const auto z = wave.at(phases.next());
        const auto x = load<float, kLanes<float>>(p);
        return interleave(x * z.a, -x * z.b);
    };
    forPhases<kLanes<float>, float, Order::kSamples>(words, dst, len, mixed, src);
}

}   // namespace

extern const ToneKernels tone = {
    .tone16s = sinusoid<int16_t>,
    .tone16sc = sinusoid<Complex16s>,
    .tone32f = sinusoid<float>,
    .tone32fc = sinusoid<Complex32f>,
    .tone64f = sinusoid<double>,
    .tone64fc = sinusoid<Complex64f>,
    .up16sc = mix16sc<false>,
    .down16sc = mix16sc<true>,
    .up32fc = mix32fc<false>,
    .down32fc = mix32fc<true>,
    .up32fc32f = up32fc32f,
    .down32f32fc = down32f32fc,
};

}   // namespace tevs::TEVS_LEVEL_NS
