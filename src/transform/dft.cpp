// DFT of any length: tables, methods, and the float records.
#include "transform/dft.h"

#include <string.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

#include "core/args.h"
#include "core/complex.h"
#include "tevs/dft.h"
#include "transform/roots.h"
#include "vector/arithmetic.table.h"
#include "vector/movement.table.h"

namespace tevs {
namespace {

constexpr bool isPowerOfTwo(int n) { return std::has_single_bit(unsigned(n)); }
constexpr int orderOf(int n) { return std::bit_width(unsigned(n)) - 1; }

template <class T> FftSpec<T>* planFft(bool real, int order, int flag, Carve& c, bool write, Places places = Places::Pairs) {
    auto* const fft = reinterpret_cast<FftSpec<T>*>(c.take<uint8_t>(fftBytes<T>(real, order, places)));
    if (write) buildFft<T>(fft, real, order, flag, places);
    return fft;
}
// What a record of the FFT says of its work area: more than any has where it could not be built by itself.
template <class T> uint64_t fftWork(bool real, int order) {
    const SpecSizes sizes = fftSizes<T>(real, order);
    return !sizes.fitInt() ? UINT64_MAX / 2 : sizes.work ? sizes.work - kAlignmentRoom : 0;
}

template <class T> void setScales(T (&scale)[2], int length, int flag) {
    const T factor = flag == ScaleBySqrtN ? T(1.0 / std::sqrt(double(length))) : T(1) / T(length);
    scale[0] = flag == ScaleFwdByN || flag == ScaleBySqrtN ? factor : T(1);
    scale[1] = flag == ScaleInvByN || flag == ScaleBySqrtN ? factor : T(1);
}

template <class T> auto* productKernel() {
    if constexpr (sizeof(T) == 4)
        return arithmetic->mul32fc;
    else
        return arithmetic->mul64fc;
}

// A convolution's transforms, in place.
template <Way way, class T> void convolved(const AnyDft<T>& dft, T* x, uint8_t* work) {
    if (dft.fft)
        transformBy<way, T>(*dft.fft, Pairs<const T>{x}, Pairs<T>{x}, work);
    else
        runPairs<T>(*dft.mixed.pairs, x, x, T(1), way == Way::Inverse, reinterpret_cast<T*>(work));
}

template <Way way, class T> void runChirp(const AnyDft<T>& dft, const Values<const T>& src, const Values<T>& dst, uint8_t* work) {
    if (reinterpret_cast<uintptr_t>(work) % 32 != 0) work += 16;
    const size_t n = size_t(dft.length), m = size_t(dft.convolution);
    T* const x = reinterpret_cast<T*>(work);
    uint8_t* const free = work + 2 * m * sizeof(T);
    const auto multiply = productKernel<T>();
    if (src.form == Form::Parts || src.form == Form::Reals) {
        if (src.form == Form::Parts)
            (sizeof(T) == 4 ? movement->join32 : movement->join64)(src.re, src.im, x, ptrdiff_t(n));
        else
            (sizeof(T) == 4 ? movement->onlyReal32 : movement->onlyReal64)(src.re, x, ptrdiff_t(n));
        multiply(x, dft.chirp, x, 2 * ptrdiff_t(n));
    } else {
        multiply(src.re, dft.chirp, x, 2 * ptrdiff_t(n));
    }
    memset(x + 2 * n, 0, 2 * (m - n) * sizeof(T));
    convolved<Way::Forward>(dft, x, free);
    multiply(x, dft.spectrum, x, 2 * ptrdiff_t(m));
    convolved<Way::Inverse>(dft, x, free);
    const bool parts = dst.form == Form::Parts;
    T* const y = parts ? x : dst.re;
    multiply(x, dft.chirp, y, 2 * ptrdiff_t(n));
    const T scale = dft.scale[way == Way::Inverse];
    if (scale != 1)
        for (size_t i = 0; i < 2 * n; ++i) y[i] *= scale;
    if (way == Way::Inverse)
        for (size_t i = 1, j = n - 1; i < j; ++i, --j) {
            std::swap(y[2 * i], y[2 * j]);
            std::swap(y[2 * i + 1], y[2 * j + 1]);
        }
    if (parts) (sizeof(T) == 4 ? movement->split32 : movement->split64)(y, dst.re, dst.im, ptrdiff_t(n));
}

// Of a prime N with the primitive root g: X[g^-q] - x[0] = sum over p of  x[g^p] w^(g^(p-q)), a cyclic convolution of N - 1 values (C. M. Rader, Discrete Fourier Transforms When
// the Number of Data Samples Is Prime, 1968). Its value 0 is the sum of all, and x[0] added there is added to every result.
template <Way way, class T> void runRoots(const AnyDft<T>& dft, const Values<const T>& src, const Values<T>& dst, uint8_t* work) {
    if (reinterpret_cast<uintptr_t>(work) % 32 != 0) work += 16;
    const int n = dft.length, m = dft.convolution;
    T* const x = reinterpret_cast<T*>(work);
    uint8_t* const free = work + 2 * size_t(m) * sizeof(T);
    const bool apart = src.form != Form::Pairs, reals = src.form == Form::Reals;
    const auto re = [&](int i) { return src.re[apart ? i : 2 * i]; };
    const auto im = [&](int i) { return reals ? T(0) : apart ? src.im[i] : src.re[2 * i + 1]; };
    const int* const to = dft.powers;
    if (!apart)
        for (int p = 0; p < m; ++p) memcpy(x + 2 * p, src.re + 2 * to[p], 2 * sizeof(T));
    else
        for (int p = 0; p < m; ++p) {
            x[2 * p] = re(to[p]);
            x[2 * p + 1] = im(to[p]);
        }
    const T firstRe = re(0), firstIm = im(0);
    convolved<Way::Forward>(dft, x, free);
    const T sumRe = x[0], sumIm = x[1];
    productKernel<T>()(x, dft.spectrum, x, 2 * ptrdiff_t(m));
    x[0] += firstRe;
    x[1] += firstIm;
    convolved<Way::Inverse>(dft, x, free);
    const T scale = dft.scale[way == Way::Inverse];
    const bool parts = dst.form == Form::Parts;
    T *const outRe = dst.re, *const outIm = parts ? dst.im : dst.re + 1;
    const int step = parts ? 1 : 2;
    outRe[0] = (firstRe + sumRe) * scale;
    outIm[0] = (firstIm + sumIm) * scale;
    for (int q = 0; q < m; ++q) {
        const int k = way == Way::Inverse ? n - to[m + q] : to[m + q];
        outRe[step * k] = x[2 * q] * scale;
        outIm[step * k] = x[2 * q + 1] * scale;
    }
}

template <class T> const DftKernels<T>* kernelsOf(const RealDft<T>& real) {
    if (real.dft.mixed.kernels) return real.dft.mixed.kernels;
    if constexpr (sizeof(T) == 4)
        return dft32;
    else
        return dft64;
}

// A primitive root of the prime n.
int primitiveRoot(int n) {
    const auto power = [n](int64_t g, int e) {
        int64_t r = 1;
        for (; e; e >>= 1, g = g * g % n)
            if (e & 1) r = r * g % n;
        return r;
    };
    for (int g = 2;; ++g) {
        bool primitive = true;
        for (int d = 2, rest = n - 1; primitive && rest > 1; ++d) {
            if (int64_t{d} * d > rest) d = rest;
            if (rest % d != 0) continue;
            primitive = power(g, (n - 1) / d) != 1;
            while (rest % d == 0) rest /= d;
        }
        if (primitive) return g;
    }
}
bool isPrime(int n) {
    for (int d = 2; int64_t{d} * d <= n; ++d)
        if (n % d == 0) return false;
    return n > 1;
}

template <class T> constexpr uint64_t roomInPairs(int m) { return 2 * (2 * sizeof(T) * uint64_t(m)) + kAlignmentRoom; }

// The cheapest length of a convolution with a chirp, from 2n - 1 on, for which the work area has the room: twice its values.
template <class T> int chirpLength(int n, uint64_t workBytes) {
    const int least = 2 * n - 1, most = int(std::bit_ceil(unsigned(least)));
    if (least > kMostInPairs) return most;
    int best = most;
    double cost = 0;
    for (int m = std::min(most, kMostInPairs) / 16 * 16; cost == 0 && m > least; m -= 16)
        cost = costInPairs<T>(m) * most / m;   // a power of two costs about what products near it do
    for (int m = (least + 15) / 16 * 16; m < most; m += 16) {
        const double c = costInPairs<T>(m);
        if (c == 0 || c > 0.9 * cost || roomInPairs<T>(m) > workBytes) continue;
        cost = c / 0.9;
        best = m;
    }
    return best;
}

}   // namespace

// Bluestein's form of the transform as a convolution with a chirp (L. Bluestein, A linear filtering approach to the computation of the discrete Fourier transform, 1970). The work
// area is what the next power of two takes, whatever the length.
template <class T> void planChirp(AnyDft<T>& dft, int length, int flag, bool powerOfTwo, T* scratch, Carve& c, bool write) {
    dft = {};
    dft.length = length;
    setScales(dft.scale, length, flag);
    const auto n = uint64_t(dft.length), most = std::bit_ceil(2 * n - 1);
    const int order = std::bit_width(most) - 1;
    dft.workBytes = 2 * sizeof(T) * most;
    if (order > kMaxOrder) return;   // more than any record may have
    dft.workBytes += fftWork<T>(false, order) + kAlignmentRoom;
    const uint64_t m = powerOfTwo ? most : uint64_t(chirpLength<T>(length, dft.workBytes));
    dft.convolution = int(m);
    if (m == most)
        dft.fft = planFft<T>(false, order, NoScale, c, write);
    else
        planMixedRadix(dft.mixed, int(m), true, c, write);
    T *const chirp = c.take<T>(2 * n), *const h = c.take<T>(2 * m);
    dft.chirp = chirp;
    dft.spectrum = h;
    if (!write) return;
    memset(h, 0, size_t(2 * m) * sizeof(T));
    const T over = T(1) / T(m);
    for (uint64_t k = 0, square = 0; k < n; ++k) {
        const Root r = rootOfUnity(square, 2 * n);
        chirp[2 * k] = T(r.re);
        chirp[2 * k + 1] = T(r.im);
        for (uint64_t at : {k, (m - k) % m}) {
            h[2 * at] = T(r.re) * over;
            h[2 * at + 1] = T(-r.im) * over;
        }
        square = (square + 2 * k + 1) % (2 * n);   // (k + 1)^2
    }
    convolved<Way::Forward>(dft, h, reinterpret_cast<uint8_t*>(scratch));
}

namespace {

// A prime whose predecessor has short factors, as a convolution of that length.
template <class T> void planRoots(AnyDft<T>& dft, T* scratch, Carve& c, bool write) {
    const int n = dft.length, m = n - 1;
    dft.convolution = m;
    planMixedRadix(dft.mixed, m, true, c, write);
    T* const h = c.take<T>(2 * uint64_t(m));
    int* const powers = c.take<int>(2 * uint64_t(m));
    dft.spectrum = h;
    dft.powers = powers;
    if (!write) return;
    const int g = primitiveRoot(n);
    int64_t power = 1;
    for (int p = 0; p < m; ++p, power = power * g % n) powers[p] = powers[m + (m - p) % m] = int(power);
    for (int q = 0; q < m; ++q) {
        const Root r = rootOfUnity(uint64_t(powers[m + q]), uint64_t(n));
        h[2 * q] = T(r.re / m);
        h[2 * q + 1] = T(r.im / m);
    }
    convolved<Way::Forward>(dft, h, reinterpret_cast<uint8_t*>(scratch));
}

}   // namespace

template <class T> void planDft(AnyDft<T>& dft, int length, int flag, bool interleaved, T* scratch, Carve& c, bool write) {
    if (!isPowerOfTwo(length) && !isMixedLength(length)) {
        Carve none;
        planChirp<T>(dft, length, flag, true, nullptr, none, false);
        const uint64_t workBytes = dft.workBytes;
        if (costInPairs<T>(length - 1) == 0 || !isPrime(length) || roomInPairs<T>(length - 1) > workBytes)
            return planChirp<T>(dft, length, flag, false, scratch, c, write);
        dft = {};
        dft.length = length;
        dft.workBytes = workBytes;
        setScales(dft.scale, length, flag);
        return planRoots(dft, scratch, c, write);
    }
    dft = {};
    dft.length = length;
    setScales(dft.scale, length, flag);
    if (isPowerOfTwo(length)) {
        const int order = orderOf(length);
        dft.fft = planFft<T>(false, order, flag, c, write, Places::Either);
        const uint64_t work = fftWork<T>(false, order);
        dft.workBytes = work ? work + kAlignmentRoom : 0;
    } else {
        planMixedRadix(dft.mixed, length, interleaved, c, write);
        dft.workBytes = length <= 4 ? 0 : 2 * sizeof(T) * uint64_t(length) + kAlignmentRoom;
    }
}

template <Way way, class T> void runDft(const AnyDft<T>& dft, const Values<const T>& src, const Values<T>& dst, uint8_t* work) {
    if (dft.convolution) return dft.convolution < dft.length ? runRoots<way>(dft, src, dst, work) : runChirp<way>(dft, src, dst, work);
    if (dft.fft) {
        if (src.form == Form::Parts)
            transformBy<way, T>(*dft.fft, Parts<const T>{src.re, src.im}, Parts<T>{dst.re, dst.im}, work);
        else
            transformBy<way, T>(*dft.fft, Pairs<const T>{src.re}, Pairs<T>{dst.re}, work);
        return;
    }
    const T scale = dft.scale[way == Way::Inverse];
    if (dft.mixed.inPairs() && src.form == Form::Pairs) {
        if (const auto whole = dft.mixed.pairs->whole[way == Way::Inverse]) return whole(src.re, dst.re, scale);
        return runPairs(*dft.mixed.pairs, src.re, dst.re, scale, way == Way::Inverse, reinterpret_cast<T*>(work));
    }
    T* const area = reinterpret_cast<T*>(work);
    if (way == Way::Forward) return runMixedRadix(dft.mixed, src, dst, scale, area);
    const auto exchanged = []<class V>(const V& v) { return v.form == Form::Parts ? V{v.form, v.im, v.re} : V{Form::SwappedPairs, v.re, nullptr}; };
    runMixedRadix(dft.mixed, exchanged(src), exchanged(dst), scale, area);
}

template <class T> void planDft(RealDft<T>& real, int length, int flag, bool inPairs, T* scratch, Carve& c, bool write) {
    real = {};
    real.length = length;
    const auto n = uint64_t(length);
    if (isPowerOfTwo(length)) {
        const int order = orderOf(length);
        real.fft = planFft<T>(true, order, flag, c, write);
        const uint64_t work = fftWork<T>(true, order);
        real.workBytes = work ? work + kAlignmentRoom : 0;
        return;
    }
    const bool even = length % 2 == 0;
    const auto* const kernels = pairKernels<T>();
    if (inPairs && length <= 2 * kMostAtOnce && kernels->spectrum[length]) {
        Carve none;
        planDft(real.dft, even ? length / 2 : length, NoScale, inPairs, scratch, none, false);
        real.workBytes = roundUp16((even ? 1 : 2) * n * sizeof(T)) + real.dft.workBytes;
        real.dft = {};
        auto* const atOnce = c.take<RealAtOnce<T>>(1);
        real.atOnce = atOnce;
        if (!write) return;
        *atOnce = {kernels->spectrum[length], kernels->reals[length], {}};
        setScales(atOnce->scale, length, flag);
        return;
    }
    planDft(real.dft, even ? length / 2 : length, NoScale, inPairs, scratch, c, write);
    setScales(real.dft.scale, length, flag);
    real.workBytes = roundUp16((even ? 1 : 2) * n * sizeof(T)) + real.dft.workBytes;
    if (!even) return;
    real.dft.scale[0] *= T(0.5);   // the recombination takes half the transform
    T* const roots = c.take<T>((n / 2 + 1) / 2 * 2);
    real.roots = roots;
    for (uint64_t k = 0; write && k < (n / 2 + 1) / 2; ++k) {
        const Root r = rootOfUnity(k, n);
        roots[2 * k] = T(r.re);
        roots[2 * k + 1] = T(r.im);
    }
}

template <class T> bool isAtOnce(const RealDft<T>& real) { return !real.fft && !real.dft.length; }
template <class T> void forwardAtOnce(const RealDft<T>& real, const T* src, T* dst, Packing to) {
    const int n = real.length;
    T last;
    T* const second = dst + secondReal(to, n);
    real.atOnce->spectrum(src, dst, n % 2 ? &last : second, dst + firstPair(to, n), real.atOnce->scale[0]);
    if (to != Packing::Ccs) return;
    dst[1] = 0;
    if (n % 2 == 0) second[1] = 0;
}
template <class T> void inverseAtOnce(const RealDft<T>& real, const T* src, T* dst, Packing from) {
    const int n = real.length;
    real.atOnce->reals(src + firstPair(from, n), src[0], n % 2 ? T(0) : src[secondReal(from, n)], dst, real.atOnce->scale[1]);
}

template <class T> void forwardReal(const RealDft<T>& real, const T* src, T* dst, Packing to, uint8_t* work) {
    if (real.fft) return forwardBy<T>(*real.fft, src, dst, to, work);
    if (isAtOnce(real)) return forwardAtOnce<T>(real, src, dst, to);
    const int n = real.length, half = n / 2;
    const uint64_t area = roundUp16((n % 2 == 0 ? 1 : 2) * uint64_t(n) * sizeof(T));
    T* const z = reinterpret_cast<T*>(work);
    T* const bins = dst + firstPair(to, n);   // X[1]
    if (n % 2 == 0) {
        runDft<Way::Forward, T>(real.dft, {Form::Pairs, src, nullptr}, {Form::Pairs, z, nullptr}, work + area);
        kernelsOf(real)->binsOfPairs(z, bins - 2, half, real.roots);
        const T a = z[0] + z[0], b = z[1] + z[1];
        dst[0] = a + b;
        dst[secondReal(to, n)] = a - b;
        if (to == Packing::Ccs) dst[1] = dst[n + 1] = 0;
        return;
    }
    if (real.dft.mixed.inPairs() && !real.dft.convolution) {
        (sizeof(T) == 4 ? movement->onlyReal32 : movement->onlyReal64)(src, z, n);
        runDft<Way::Forward, T>(real.dft, {Form::Pairs, z, nullptr}, {Form::Pairs, z, nullptr}, work + area);
    } else {
        runDft<Way::Forward, T>(real.dft, {Form::Reals, src, nullptr}, {Form::Pairs, z, nullptr}, work + area);
    }
    memcpy(bins, z + 2, 2 * size_t(half) * sizeof(T));
    dst[0] = z[0];
    if (to == Packing::Ccs) dst[1] = 0;
}

template <class T> void inverseReal(const RealDft<T>& real, const T* src, T* dst, Packing from, uint8_t* work) {
    if (real.fft) return inverseBy<T>(*real.fft, src, dst, from, work);
    if (isAtOnce(real)) return inverseAtOnce<T>(real, src, dst, from);
    const int n = real.length, half = n / 2;
    const uint64_t area = roundUp16((n % 2 == 0 ? 1 : 2) * uint64_t(n) * sizeof(T));
    T* const z = reinterpret_cast<T*>(work);
    const T* const bins = src + firstPair(from, n);
    if (n % 2 == 0) {
        kernelsOf(real)->pairsOfBins(bins - 2, z, half, real.roots);
        const T first = src[0], last = src[secondReal(from, n)];
        z[0] = first + last;
        z[1] = first - last;
        runDft<Way::Inverse, T>(real.dft, {Form::Pairs, z, nullptr}, {Form::Pairs, dst, nullptr}, work + area);
        return;
    }
    z[0] = src[0];
    z[1] = 0;
    (sizeof(T) == 4 ? movement->unfold32 : movement->unfold64)(bins, z + 2, z + 2 * (n - half), half);
    runDft<Way::Inverse, T>(real.dft, {Form::Pairs, z, nullptr}, {Form::Pairs, z, nullptr}, work + area);
    (sizeof(T) == 4 ? movement->real32 : movement->real64)(z, dst, n);
}

#define TEVS_ANY_DFT(T)                                                                                       \
    template void planChirp(AnyDft<T>&, int, int, bool, T*, Carve&, bool);                                    \
    template void planDft(AnyDft<T>&, int, int, bool, T*, Carve&, bool);                                      \
    template void planDft(RealDft<T>&, int, int, bool, T*, Carve&, bool);                                     \
    template void runDft<Way::Forward>(const AnyDft<T>&, const Values<const T>&, const Values<T>&, uint8_t*); \
    template void runDft<Way::Inverse>(const AnyDft<T>&, const Values<const T>&, const Values<T>&, uint8_t*); \
    template void forwardReal(const RealDft<T>&, const T*, T*, Packing, uint8_t*);                            \
    template void inverseReal(const RealDft<T>&, const T*, T*, Packing, uint8_t*);
TEVS_ANY_DFT(float)
TEVS_ANY_DFT(double)
#undef TEVS_ANY_DFT

namespace {

// ---- calls -----------------------------------------------------------------------------------------------------------------------------

// Calls body(work): on the stack, where that has the room; else the caller's, or the library's own.
template <class Any, class Body> [[gnu::always_inline]] inline Status withDftWork(const Any& dft, uint8_t* pBuffer, const Body& body) {
    NearestRounding guard;
    return withWorkOnStack<kDftStackBytes>(pBuffer, dft.workBytes, body);
}

template <Way way, class Spec, class C> Status transform(const C* pSrc, C* pDst, const Spec* pSpec, uint8_t* pBuffer) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrc).ptr(pDst)) return s;
    using T = typename Spec::Real;
    constexpr bool kInverse = way == Way::Inverse;
    const MixedRadix<T>& mixed = pSpec->dft.mixed;
    // The shortest ones take as long as what their calls take else.
    if (mixed.inPairs() && mixed.length <= kMostOnStack && !pSpec->dft.convolution) {
        const NearestRounding guard;
        const T scale = pSpec->dft.scale[kInverse];
        if (const auto whole = mixed.pairs->whole[kInverse])
            whole(&pSrc->re, &pDst->re, scale);
        else
            runPairs<T>(*mixed.pairs, &pSrc->re, &pDst->re, scale, kInverse, nullptr);
        return StatusOk;
    }
    return withDftWork(pSpec->dft, pBuffer, [=](uint8_t* work) {
        runDft<way, T>(pSpec->dft, {Form::Pairs, &pSrc->re, nullptr}, {Form::Pairs, &pDst->re, nullptr}, work);
    });
}
template <Way way, class Spec, class T> Status transform(const T* pSrcRe, const T* pSrcIm, T* pDstRe, T* pDstIm, const Spec* pSpec, uint8_t* pBuffer) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrcRe).ptr(pSrcIm).ptr(pDstRe).ptr(pDstIm)) return s;
    return withDftWork(pSpec->dft, pBuffer, [=](uint8_t* work) {
        runDft<way, T>(pSpec->dft, {Form::Parts, pSrcRe, pSrcIm}, {Form::Parts, pDstRe, pDstIm}, work);
    });
}
template <class Spec, class T> Status forward(const T* pSrc, T* pDst, const Spec* pSpec, uint8_t* pBuffer, Packing to) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrc).ptr(pDst)) return s;
    if (isAtOnce(pSpec->dft)) {
        const NearestRounding guard;
        forwardAtOnce<T>(pSpec->dft, pSrc, pDst, to);
        return StatusOk;
    }
    return withDftWork(pSpec->dft, pBuffer, [=](uint8_t* work) { forwardReal<T>(pSpec->dft, pSrc, pDst, to, work); });
}
template <class Spec, class T> Status inverse(const T* pSrc, T* pDst, const Spec* pSpec, uint8_t* pBuffer, Packing from) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrc).ptr(pDst)) return s;
    if (isAtOnce(pSpec->dft)) {
        const NearestRounding guard;
        inverseAtOnce<T>(pSpec->dft, pSrc, pDst, from);
        return StatusOk;
    }
    return withDftWork(pSpec->dft, pBuffer, [=](uint8_t* work) { inverseReal<T>(pSpec->dft, pSrc, pDst, from, work); });
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsDFTInitAlloc_C_32fc(DFTSpec_C_32fc** ppSpec, int length, int flag, int) { return initAllocDft(ppSpec, length, flag); }
Status tevsDFTInitAlloc_C_32f(DFTSpec_C_32f** ppSpec, int length, int flag, int) { return initAllocDft(ppSpec, length, flag); }
Status tevsDFTInitAlloc_R_32f(DFTSpec_R_32f** ppSpec, int length, int flag, int) { return initAllocDft(ppSpec, length, flag); }
Status tevsDFTInitAlloc_C_64fc(DFTSpec_C_64fc** ppSpec, int length, int flag, int) { return initAllocDft(ppSpec, length, flag); }
Status tevsDFTInitAlloc_C_64f(DFTSpec_C_64f** ppSpec, int length, int flag, int) { return initAllocDft(ppSpec, length, flag); }
Status tevsDFTInitAlloc_R_64f(DFTSpec_R_64f** ppSpec, int length, int flag, int) { return initAllocDft(ppSpec, length, flag); }
Status tevsDFTFree_C_32fc(DFTSpec_C_32fc* pSpec) { return freeSpec(pSpec); }
Status tevsDFTFree_C_32f(DFTSpec_C_32f* pSpec) { return freeSpec(pSpec); }
Status tevsDFTFree_R_32f(DFTSpec_R_32f* pSpec) { return freeSpec(pSpec); }
Status tevsDFTFree_C_64fc(DFTSpec_C_64fc* pSpec) { return freeSpec(pSpec); }
Status tevsDFTFree_C_64f(DFTSpec_C_64f* pSpec) { return freeSpec(pSpec); }
Status tevsDFTFree_R_64f(DFTSpec_R_64f* pSpec) { return freeSpec(pSpec); }
Status tevsDFTGetBufSize_C_32fc(const DFTSpec_C_32fc* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDFTGetBufSize_C_32f(const DFTSpec_C_32f* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDFTGetBufSize_R_32f(const DFTSpec_R_32f* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDFTGetBufSize_C_64fc(const DFTSpec_C_64fc* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDFTGetBufSize_C_64f(const DFTSpec_C_64f* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDFTGetBufSize_R_64f(const DFTSpec_R_64f* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDFTFwd_CToC_32fc(const Complex32f* pSrc, Complex32f* pDst, const DFTSpec_C_32fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Forward>(pSrc, pDst, pSpec, pBuffer);
}
Status tevsDFTInv_CToC_32fc(const Complex32f* pSrc, Complex32f* pDst, const DFTSpec_C_32fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Inverse>(pSrc, pDst, pSpec, pBuffer);
}
Status tevsDFTFwd_CToC_32f(const float* pSrcRe, const float* pSrcIm, float* pDstRe, float* pDstIm, const DFTSpec_C_32f* pSpec, uint8_t* pBuffer) {
    return transform<Way::Forward>(pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, pBuffer);
}
Status tevsDFTInv_CToC_32f(const float* pSrcRe, const float* pSrcIm, float* pDstRe, float* pDstIm, const DFTSpec_C_32f* pSpec, uint8_t* pBuffer) {
    return transform<Way::Inverse>(pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, pBuffer);
}
Status tevsDFTFwd_CToC_64fc(const Complex64f* pSrc, Complex64f* pDst, const DFTSpec_C_64fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Forward>(pSrc, pDst, pSpec, pBuffer);
}
Status tevsDFTInv_CToC_64fc(const Complex64f* pSrc, Complex64f* pDst, const DFTSpec_C_64fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Inverse>(pSrc, pDst, pSpec, pBuffer);
}
Status tevsDFTFwd_CToC_64f(const double* pSrcRe, const double* pSrcIm, double* pDstRe, double* pDstIm, const DFTSpec_C_64f* pSpec, uint8_t* pBuffer) {
    return transform<Way::Forward>(pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, pBuffer);
}
Status tevsDFTInv_CToC_64f(const double* pSrcRe, const double* pSrcIm, double* pDstRe, double* pDstIm, const DFTSpec_C_64f* pSpec, uint8_t* pBuffer) {
    return transform<Way::Inverse>(pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, pBuffer);
}
Status tevsDFTFwd_RToCCS_32f(const float* pSrc, float* pDst, const DFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return forward(pSrc, pDst, pSpec, pBuffer, Packing::Ccs);
}
Status tevsDFTFwd_RToPack_32f(const float* pSrc, float* pDst, const DFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return forward(pSrc, pDst, pSpec, pBuffer, Packing::Pack);
}
Status tevsDFTFwd_RToPerm_32f(const float* pSrc, float* pDst, const DFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return forward(pSrc, pDst, pSpec, pBuffer, Packing::Perm);
}
Status tevsDFTFwd_RToCCS_64f(const double* pSrc, double* pDst, const DFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return forward(pSrc, pDst, pSpec, pBuffer, Packing::Ccs);
}
Status tevsDFTFwd_RToPack_64f(const double* pSrc, double* pDst, const DFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return forward(pSrc, pDst, pSpec, pBuffer, Packing::Pack);
}
Status tevsDFTFwd_RToPerm_64f(const double* pSrc, double* pDst, const DFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return forward(pSrc, pDst, pSpec, pBuffer, Packing::Perm);
}
Status tevsDFTInv_CCSToR_32f(const float* pSrc, float* pDst, const DFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return inverse(pSrc, pDst, pSpec, pBuffer, Packing::Ccs);
}
Status tevsDFTInv_PackToR_32f(const float* pSrc, float* pDst, const DFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return inverse(pSrc, pDst, pSpec, pBuffer, Packing::Pack);
}
Status tevsDFTInv_PermToR_32f(const float* pSrc, float* pDst, const DFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return inverse(pSrc, pDst, pSpec, pBuffer, Packing::Perm);
}
Status tevsDFTInv_CCSToR_64f(const double* pSrc, double* pDst, const DFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return inverse(pSrc, pDst, pSpec, pBuffer, Packing::Ccs);
}
Status tevsDFTInv_PackToR_64f(const double* pSrc, double* pDst, const DFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return inverse(pSrc, pDst, pSpec, pBuffer, Packing::Pack);
}
Status tevsDFTInv_PermToR_64f(const double* pSrc, double* pDst, const DFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return inverse(pSrc, pDst, pSpec, pBuffer, Packing::Perm);
}
Status tevsDFTOutOrdInitAlloc_C_32fc(DFTOutOrdSpec_C_32fc** ppSpec, int length, int flag, int) { return initAllocDft(ppSpec, length, flag); }
Status tevsDFTOutOrdInitAlloc_C_64fc(DFTOutOrdSpec_C_64fc** ppSpec, int length, int flag, int) { return initAllocDft(ppSpec, length, flag); }
Status tevsDFTOutOrdFree_C_32fc(DFTOutOrdSpec_C_32fc* pSpec) { return freeSpec(pSpec); }
Status tevsDFTOutOrdFree_C_64fc(DFTOutOrdSpec_C_64fc* pSpec) { return freeSpec(pSpec); }
Status tevsDFTOutOrdGetBufSize_C_32fc(const DFTOutOrdSpec_C_32fc* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDFTOutOrdGetBufSize_C_64fc(const DFTOutOrdSpec_C_64fc* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDFTOutOrdFwd_CToC_32fc(const Complex32f* pSrc, Complex32f* pDst, const DFTOutOrdSpec_C_32fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Forward>(pSrc, pDst, pSpec, pBuffer);
}
Status tevsDFTOutOrdInv_CToC_32fc(const Complex32f* pSrc, Complex32f* pDst, const DFTOutOrdSpec_C_32fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Inverse>(pSrc, pDst, pSpec, pBuffer);
}
Status tevsDFTOutOrdFwd_CToC_64fc(const Complex64f* pSrc, Complex64f* pDst, const DFTOutOrdSpec_C_64fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Forward>(pSrc, pDst, pSpec, pBuffer);
}
Status tevsDFTOutOrdInv_CToC_64fc(const Complex64f* pSrc, Complex64f* pDst, const DFTOutOrdSpec_C_64fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Inverse>(pSrc, pDst, pSpec, pBuffer);
}
