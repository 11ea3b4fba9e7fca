#include "core/complex.h"
#include "core/simd/lanes.h"
#include "core/simd/map.h"
#include "vector/conversion.table.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// What is stored is in T (the lanes' type) when it comes to put(), except where the width changes.
template <class V> TEVS_INLINE void put(Int24* d, const Some<V, 4>& s) { store(d, pack24(s)); }
template <class V> TEVS_INLINE void put(UInt24* d, const Some<V, 4>& s) { store(d, pack24(s)); }

// dst[n] = finish(src[n] as a lane of T): one loop for all formats. `finish` takes all registers of a step and returns what put() stores.
//
// A step makes one register of a narrower destination out of kPerStep of T's, and otherwise two registers of the destination, which pays for the
// loop; four would store no faster than one. A packed source is loaded in pairs, a packed destination made of four.
template <class T, class S, class D> constexpr int kPerStep = sizeof(D) == 3 ? 4 : sizeof(S) == 3 ? 2 : sizeof(D) < sizeof(T) ? int(sizeof(T) / sizeof(D)) : 1;

template <class T, int Unrolled = 1, class S, class D, class F> TEVS_INLINE void convert(const S* src, D* dst, int len, F finish) {
    constexpr int least = 16 * kPerStep<T, S, D> / int(sizeof(T)),
                  full = kPerStep<T, S, D> == 1 ? 2 * kRegisterBytes / int(sizeof(T)) : Unrolled * least * kRegisterBytes / 16;
    map<full, least>(
        len, dst,
        [=](auto w, auto s) {
            constexpr int bytes = w.n * int(sizeof(T)), atOnce = bytes / kPerStep<T, S, D>, B = atOnce < kRegisterBytes ? atOnce : kRegisterBytes;
            return finish(loadLanes<T, B, bytes / B>(s));
        },
        src);
}

// ---- to wider or floating types: the load does it --------------------------------------------------------------------------------------

template <class T, class S, class D> void loaded(const S* src, D* dst, int len) {
    convert<T>(src, dst, len, [](const auto& s) { return s; });
}
template <class S, class D> void loadedTimes(const S* src, D* dst, int len, float factor) {
    convert<D>(src, dst, len, [=](const auto& s) { return each(s, [=](auto v) { return v * D(factor); }); });
}
template <class S, class D> constexpr Scalable<S, D> floating = {loaded<D, S, D>, loadedTimes<S, D>};

// Where a step of one register takes two cycles, the loop counts: two make it faster by an eighth.
void narrow64f32f(const double* src, float* dst, int len) {
    convert<double, 2>(src, dst, len, [](const auto& s) { return eachPair(s, [](auto a, auto b) { return narrow(Two{a, b}); }); });
}

// ---- integers to narrower integers -------------------------------------------------------------------------------------------------------

// To the range of D; to its width too where that is a register's.
template <class D, class V, int K> TEVS_INLINE auto saturated(const Some<V, K>& s) {
    if constexpr (sizeof(D) != 3)
        return packed<D>(s);
    else
        return each(s, [](V v) {
            const V most = minimum(v, same<V>(LimitsOf<D>::max));
            if constexpr (Limits<V>::isSigned)
                return maximum(most, same<V>(LimitsOf<D>::min));
            else
                return most;
        });
}

// The lanes of S; 64 bits count as unsigned, for want of instructions.
template <class S> struct LaneOf { using type = S; };
template <> struct LaneOf<int64_t> { using type = uint64_t; };
template <class S> using LaneType = typename LaneOf<S>::type;

template <class S, class D> void narrowed(const S* src, D* dst, int len) {
    convert<LaneType<S>>(src, dst, len, [](const auto& s) { return saturated<D>(s); });
}
template <class S, class D> void narrowedRight(const S* src, D* dst, int len, int shift) {
    convert<LaneType<S>>(src, dst, len, [=](const auto& s) { return saturated<D>(each(s, [=](auto v) { return roundRight(v, shift); })); });
}
// Saturated first: what leaves the range before the shift would leave it after.
template <class S, class D> void narrowedLeft(const S* src, D* dst, int len, int shift) {
    convert<LaneType<S>>(src, dst, len, [=](const auto& s) {
        const auto r = each(saturated<D>(s), [=](auto v) { return shiftLeftSat(v, shift); });
        if constexpr (sizeof(D) == 3)
            return saturated<D>(r);
        else
            return r;
    });
}
template <class S, class D> constexpr Narrowing<S, D> narrowing = {narrowed<S, D>, narrowedRight<S, D>, narrowedLeft<S, D>};

// ---- floating to integers ------------------------------------------------------------------------------------------------------------------

template <class Mode, class V> TEVS_INLINE auto toInt(V v) {
    if constexpr (__is_same(Mode, Truncated))
        return truncatedInt(v);
    else
        return nearestInt(v);
}

// What is below the range of 32 bits, and NaN, converts to INT32_MIN, which the packs saturate to D's minimum. What is above would too, so it is
// cut off first; a packed format needs its lower bound as well. 2^31 - 1 is no float: there INT32_MIN turns over where the source is above.
template <class D, class Mode, class V, int K> TEVS_INLINE auto rounded(const Some<V, K>& s) {
    if constexpr (__is_same(D, int32_t) && sizeof(V{}[0]) == 8) {
        return eachPair(s, [](V a, V b) { return toInt<Mode>(Two<V>{atMost(same<V>(2147483647.0), a), atMost(same<V>(2147483647.0), b)}); });
    } else if constexpr (__is_same(D, int32_t)) {
        return each(s, [](V v) { return toInt<Mode>(v) ^ (v >= 0x1p31f); });
    } else if constexpr (sizeof(D) == 3) {
        return each(s, [](V v) {
            return toInt<Mode>(atLeast(atMost(same<V>(float(LimitsOf<D>::max)), v), same<V>(float(LimitsOf<D>::min))));
        });   // of a NaN, the second
    } else {
        return packed<D>(each(s, [](V v) { return toInt<Mode>(atMost(same<V>(float(LimitsOf<D>::max)), v)); }));
    }
}

template <class Mode, class T, class S, class D> void integers(const S* src, D* dst, int len) {
    convert<T>(src, dst, len, [](const auto& s) { return rounded<D, Mode>(s); });
}
template <class Mode, class T, class S, class D> void integersTimes(const S* src, D* dst, int len, T factor) {
    convert<T>(src, dst, len, [=](const auto& s) { return rounded<D, Mode>(each(s, [=](auto v) { return v * factor; })); });
}
template <class Mode, class T, class S, class D> constexpr Scalable<S, D, T> rounding = {integers<Mode, T, S, D>, integersTimes<Mode, T, S, D>};
template <class T, class S, class D> constexpr Rounded<S, D, T> roundings = {rounding<Nearest, T, S, D>, rounding<Truncated, T, S, D>};

// ---- to half precision -----------------------------------------------------------------------------------------------------------------------

template <class Mode, class S> void halves(const S* src, Half* dst, int len) {
    convert<float>(src, dst, len, [](const auto& s) { return eachPair(s, [](auto a, auto b) { return toHalf<Mode>(a, b); }); });
}

// ---- channels ----------------------------------------------------------------------------------------------------------------------------------

// W frames at a time, four channels at a time. Four that reach past the last channel go on into the next frame (or the slack), which they spoil when
// they are stored: so the channels of W frames are stored from the last to the first, and each four from their first frame on.
template <int W> TEVS_INLINE void interleaveSquares(const float* const* channels, int first, int nChannels, int frames, float* dst) {
    for (int f = 0; f < frames; f += W) {
        if (f > frames - W) f = frames - W;
        for (int c = (nChannels - 1) & ~3; c >= 0; c -= 4) {
            Vec<float, W> r[4];
            for (int k = 0; k < 4; ++k) r[k] = load<float, W>(channels[c + k < nChannels ? c + k : c] + first + f);
            const auto t = transposed(r[0], r[1], r[2], r[3]);
            float* frame = dst + f * nChannels + c;
            for (int k = 0; k < W; ++k, frame += nChannels) {
                if constexpr (W == 4)
                    store(frame, t.v[k]);
                else
                    store(frame, k < 4 ? low(t.v[k]) : high(t.v[k - 4]));
            }
        }
    }
}
template <int W> TEVS_INLINE void deinterleaveSquares(const float* src, float* const* channels, int first, int nChannels, int frames) {
    for (int f = 0; f < frames; f += W) {
        if (f > frames - W) f = frames - W;
        for (int c = 0; c < nChannels; c += 4) {
            Vec<float, W> r[4];
            const float* frame = src + f * nChannels + c;
            for (int k = 0; k < 4; ++k, frame += nChannels) {
                if constexpr (W == 4)
                    r[k] = load<float, 4>(frame);
                else
                    r[k] = join(load<float, 4>(frame), load<float, 4>(frame + 4 * nChannels));
            }
            const auto t = transposed(r[0], r[1], r[2], r[3]);
            for (int k = 0; k < 4 && c + k < nChannels; ++k) store(channels[c + k] + first + f, t.v[k]);
        }
    }
}

void interleaved(const float* const* channels, int first, int nChannels, int frames, float* dst) {
    constexpr int W = kRegisterBytes / 4;
    if (nChannels == 2) {
        map<W, 4>(
            frames, reinterpret_cast<LanePair<float>*>(dst), [](auto w, auto a, auto b) { return interleave(load<float, w.n>(a), load<float, w.n>(b)); },
            channels[0] + first, channels[1] + first);
    } else if (frames >= W) {
        interleaveSquares<W>(channels, first, nChannels, frames, dst);
    } else if (frames >= 4) {
        interleaveSquares<4>(channels, first, nChannels, frames, dst);
    } else {
        for (int f = 0; f < frames; ++f)
            for (int c = 0; c < nChannels; ++c) *dst++ = channels[c][first + f];
    }
}

void deinterleaved(const float* src, float* const* channels, int first, int nChannels, int frames) {
    constexpr int W = kRegisterBytes / 4;
    if (nChannels == 2) {
        map<W, 4>(
            frames, Both<float>{channels[0] + first, channels[1] + first}, [](auto w, auto s) { return loadSplit<float, w.n>(partsOf(s)); },
            reinterpret_cast<const LanePair<float>*>(src));
    } else if (frames >= W) {
        deinterleaveSquares<W>(src, channels, first, nChannels, frames);
    } else if (frames >= 4) {
        deinterleaveSquares<4>(src, channels, first, nChannels, frames);
    } else {
        for (int f = 0; f < frames; ++f)
            for (int c = 0; c < nChannels; ++c) channels[c][first + f] = *src++;
    }
}

}   // namespace

extern const ConversionKernels conversion = {
    .widen8s16s = loaded<int16_t, int8_t, int16_t>,
    .widen16s32s = loaded<int32_t, int16_t, int32_t>,
    .widen24s32s = loaded<int32_t, Int24, int32_t>,
    .widen24u32u = loaded<uint32_t, UInt24, uint32_t>,
    .widen32f64f = loaded<double, float, double>,
    .narrow64f32f = narrow64f32f,

    .float8s = loaded<float, int8_t, float>,
    .float8u = loaded<float, uint8_t, float>,
    .float16u = loaded<float, uint16_t, float>,
    .float24u = loaded<float, UInt24, float>,
    .float16f = loaded<float, Half, float>,
    .float16s = floating<int16_t, float>,
    .float32s = floating<int32_t, float>,
    .float24s = floating<Int24, float>,
    .double16s = floating<int16_t, double>,
    .double32s = floating<int32_t, double>,

    .narrow32s16s = narrowing<int32_t, int16_t>,
    .narrow64s32s = narrowing<int64_t, int32_t>,
    .narrow32s24s = narrowing<int32_t, Int24>,
    .narrow32u24u = narrowing<uint32_t, UInt24>,

    .round32f8s = roundings<float, float, int8_t>,
    .round32f8u = roundings<float, float, uint8_t>,
    .round32f16s = roundings<float, float, int16_t>,
    .round32f16u = roundings<float, float, uint16_t>,
    .round32f32s = roundings<float, float, int32_t>,
    .round64f32s = roundings<double, double, int32_t>,
    .round16f16s = roundings<float, Half, int16_t>,
    .nearest32f24s = rounding<Nearest, float, float, Int24>,
    .nearest32f24u = rounding<Nearest, float, float, UInt24>,

    .halfNearest16s = halves<Nearest, int16_t>,
    .halfTruncated16s = halves<Truncated, int16_t>,
    .halfNearest32f = halves<Nearest, float>,
    .halfTruncated32f = halves<Truncated, float>,

    .interleave = interleaved,
    .deinterleave = deinterleaved,
};

}   // namespace tevs::TEVS_LEVEL_NS
