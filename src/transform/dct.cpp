// Discrete cosine transforms: sizes, methods, tables and the records.
#include <string.h>

#include <algorithm>
#include <bit>
#include <cmath>

#include "core/args.h"
#include "core/complex.h"
#include "tevs/dct.h"
#include "transform/dct.table.h"
#include "transform/dft.h"
#include "transform/integer.h"
#include "transform/roots.h"
#include "vector/arithmetic.table.h"
#include "vector/movement.table.h"

namespace tevs {
namespace {

// ---- sizes -----------------------------------------------------------------------------------------------------------------------------

constexpr bool isPowerOfTwo(int n) { return std::has_single_bit(unsigned(n)); }
constexpr int orderOf(int n) { return std::bit_width(unsigned(n)) - 1; }

constexpr int kMostDedicated = 8, kMostSums = 100, kLastFftLength = 32768;

// What a record of each length takes is fixed: callers keep such blocks in static memory. The sizes are those of methods that the ones here are faster than, and
// which these have to do with.
enum class Class { Dedicated, Small, Fft, Sums, Convolution };
constexpr Class classOf(int n, int hint) {
    if (isPowerOfTwo(n))
        return n <= kMostDedicated ? Class::Dedicated : n <= kMostMatrix || (n > kLastFftLength && hint != HintAccurate) ? Class::Small : Class::Fft;
    return n <= kMostSums ? Class::Sums : Class::Convolution;
}
// The order of the FFT that the sizes name.
int orderNamed(int n, int hint) {
    const Class c = classOf(n, hint);
    return c == Class::Fft ? orderOf(n) + 1 : c == Class::Convolution ? std::bit_width(std::bit_ceil(2 * uint64_t(n) - 1)) - 1 : 0;
}
template <class T> SpecSizes sizesOf(int length, int hint) {
    constexpr uint64_t kHead = 112;
    const auto n = uint64_t(length), values = n * sizeof(T);
    const int order = orderNamed(length, hint);
    switch (classOf(length, hint)) {
        case Class::Dedicated:
            return {100, 0, 0};
        case Class::Small:
            return {kHead + roundUp16(values), 0, values + kAlignmentRoom};
        case Class::Sums:
            return {kHead + 4 * values, 0, values + kAlignmentRoom};
        case Class::Fft: {
            const SpecSizes fft = fftSizes<T>(true, order);
            return {fft.spec + 2 * values + kHead, fft.init + 16, fft.work + 2 * values + kAlignmentRoom};
        }
        default: {
            const SpecSizes fft = fftSizes<T>(false, order);
            const uint64_t convolved = uint64_t{2 * sizeof(T)} << order;
            return {fft.spec + convolved + 4 * values + kHead, fft.init + 16, fft.work + convolved + kAlignmentRoom};
        }
    }
}

// ---- records -----------------------------------------------------------------------------------------------------------------------------

// In matrices up to 32; through the real transform of the folded samples where its tables fit, the shorter ones of parts if not the faster ones; by direct sums, or by convolution. Two-sided: a power of two too long for
// its work area, through the real transform in the destination. Halves: one too long for its tables, through two transforms of half the length.
enum class Method : uint8_t { Matrix, Real, RealInParts, TwoSided, Halves, Sums, Convolution };

// Roots as products of one for k / kFine and one for the rest.
constexpr int kFine = 256;
template <class T> struct TwoLevels { const T *fine, *coarse; };

// At a 16-byte boundary, its tables behind it in the same block.
template <class T> struct DctSpec {
    uint32_t id;
    int32_t length;
    int32_t workBytes;   // scratch of one call, 0 for none
    bool owned;          // where InitAlloc made the block
    Method method;
    T first, other;   // 1/sqrt(N), sqrt(2/N)
    union {
        const RealDft<T>* real;
        const AnyDft<T>* chirp;
        const double* turns;
    };
    const T* roots;               // exp(-pi i k / 2N) for 0 <= k <= N/2
    const TwoLevels<T>* levels;   // the same, or of halves for N/2
    const TwoLevels<T>* ofOdd;    // exp(-2 pi i (k + 1/8) / N) for k < N/4
};
static_assert(sizeof(DctSpec<float>) <= 80 && sizeof(DctSpec<double>) <= 80);

template <class T> const DctKernels<T>& kernels();
template <> const DctKernels<float>& kernels() { return *dct32; }
template <> const DctKernels<double>& kernels() { return *dct64; }

// exp(-2 pi i (k step + offset) / den).
template <class T> const T* rootTable(Carve& c, uint64_t count, uint64_t step, uint64_t den, bool write, uint64_t offset = 0) {
    T* const at = c.take<T>(2 * count);
    for (uint64_t k = 0; write && k < count; ++k) {
        const Root r = rootOfUnity(k * step + offset, den);
        at[2 * k] = T(r.re);
        at[2 * k + 1] = T(r.im);
    }
    return at;
}

template <class T> uint64_t folded(int n) { return roundUp16(uint64_t(n) * sizeof(T)); }

// Lays out what a method has behind its record; returns the work area that it needs.
template <class T> uint64_t layOut(DctSpec<T>& spec, Method method, Carve& c, T* scratch, bool write) {
    const auto n = uint64_t(spec.length);
    spec.method = method;
    const auto levels = [&](uint64_t count, uint64_t step, uint64_t den, uint64_t offset) {
        auto* const at = c.take<TwoLevels<T>>(1);
        const T *const fine = rootTable<T>(c, kFine, step, den, write), *const coarse = rootTable<T>(c, count / kFine, step * kFine, den, write, offset);
        if (write) *at = {fine, coarse};
        return at;
    };
    const auto realOf = [&](int length) {
        RealDft<T> plan;
        auto* const real = c.take<RealDft<T>>(1);
        planDft<T>(plan, length, NoScale, method != Method::RealInParts, nullptr, c, write);
        if (write) *real = plan;
        spec.real = real;
        return plan.workBytes;
    };
    switch (method) {
        case Method::Matrix:
            return 0;
        case Method::Real:
        case Method::RealInParts: {
            const uint64_t work = realOf(spec.length);
            spec.roots = rootTable<T>(c, n / 2 + 1, 1, 4 * n, write);
            return folded<T>(spec.length) + work;
        }
        case Method::TwoSided:
            realOf(spec.length);
            spec.levels = levels(n / 2, 1, 4 * n, 0);
            return folded<T>(spec.length);
        case Method::Halves:
            realOf(spec.length / 2);
            spec.levels = levels(n / 4, 1, 2 * n, 0);
            spec.ofOdd = levels(n / 4, 8, 8 * n, 1);
            return folded<T>(spec.length);
        case Method::Sums: {
            double* const turns = c.take<double>(2 * n);
            for (uint64_t k = 0; write && k < n; ++k) {
                const Root r = rootOfUnity(k, 4 * n);
                turns[k] = r.re;
                turns[n + k] = -r.im;
            }
            spec.turns = turns;
            return 0;
        }
        default: {
            AnyDft<T> plan;
            auto* const chirp = c.take<AnyDft<T>>(1);
            planChirp<T>(plan, spec.length, NoScale, true, scratch, c, write);   // the stated size has no room for factors of other lengths
            if (write) *chirp = plan;
            spec.chirp = chirp;
            spec.roots = rootTable<T>(c, n / 2 + 1, 1, 4 * n, write);
            return plan.workBytes;
        }
    }
}
template <class T> Method methodOf(int length, int hint) {
    if (isPowerOfTwo(length) && length <= kMostMatrix) return Method::Matrix;
    const SpecSizes sizes = sizesOf<T>(length, hint);
    const auto fits = [&](Method method) {
        DctSpec<T> trial{};
        trial.length = length;
        Carve c;
        c.take<DctSpec<T>>(1);
        const uint64_t work = layOut<T>(trial, method, c, nullptr, false);
        return c.size() + kAlignmentRoom - 1 <= sizes.spec && (work + kAlignmentRoom <= sizes.work || work <= kDftStackBytes);
    };
    if (classOf(length, hint) == Class::Small) return fits(Method::TwoSided) ? Method::TwoSided : Method::Halves;
    const bool mixed = isPowerOfTwo(length) || isMixedLength(length);
    if (mixed)
        for (Method method : {Method::Real, Method::RealInParts})
            if (fits(method)) return method;
    return length <= kMostSums ? Method::Sums : Method::Convolution;
}
// The scratch that building takes, in bytes.
template <class T> uint64_t scratchOf(int length, Method method) {
    if (method != Method::Convolution) return 0;
    AnyDft<T> plan;
    Carve c;
    planChirp<T>(plan, length, NoScale, true, nullptr, c, false);
    return plan.workBytes;
}
// spec is at a multiple of 16, with room for its stated size less what alignment may take.
template <class T> Status build(DctSpec<T>* spec, int length, int hint) {
    const Method method = methodOf<T>(length, hint);
    const uint64_t bytes = scratchOf<T>(length, method);
    const Scratch scratch(bytes ? allocate(bytes) : nullptr);
    if (bytes && !scratch) return StatusNoMemory;
    const uint64_t work = sizesOf<T>(length, hint).work;
    memset(static_cast<void*>(spec), 0, sizeof *spec);
    spec->length = length;
    spec->workBytes = work ? int(work - kAlignmentRoom) : 0;
    spec->first = T(1 / std::sqrt(double(length)));
    spec->other = T(1.4142135623730951 / std::sqrt(double(length)));
    Carve c(spec);
    c.take<DctSpec<T>>(1);
    layOut<T>(*spec, method, c, static_cast<T*>(scratch.get()), true);
    return StatusOk;
}

// ---- transforms --------------------------------------------------------------------------------------------------------------------------

// Calls body(from, to, roots), with the roots of from .. to - 1, for runs that make up first .. end - 1.
template <class T, class Body> void eachRun(const TwoLevels<T>& levels, int64_t first, int64_t end, const Body& body) {
    for (int64_t from = 0; from < end; from += kFine) {
        T roots[2 * kFine];
        const T* const coarse = levels.coarse + 2 * (from / kFine);
        if constexpr (sizeof(T) == 4)
            arithmetic->mulC32fc(levels.fine, {coarse[0], coarse[1]}, roots, 2 * kFine);
        else
            arithmetic->mulC64fc(levels.fine, {coarse[0], coarse[1]}, roots, 2 * kFine);
        const int64_t at = std::max(from, first);
        body(ptrdiff_t(at), ptrdiff_t(std::min<int64_t>(end, from + kFine)), roots + 2 * (at - from));
    }
}
template <class T, class Body> void eachRun(const DctSpec<T>& spec, int64_t end, const Body& body) {
    if (spec.levels)
        eachRun(*spec.levels, 1, end, body);
    else
        body(ptrdiff_t{1}, ptrdiff_t(end), spec.roots + 2);
}
template <class T> constexpr T kSqrtHalf = T(0.70710678118654752440);

// The n cosines y of the spectrum whose V[k] is at bins + 2k, whose first value is v0 and, of an even length, whose middle one is middle.
template <class T> void cosinesOf(const DctSpec<T>& spec, int n, const T* bins, T v0, T middle, T* y) {
    eachRun(spec, (n + 1) / 2, [&](ptrdiff_t from, ptrdiff_t to, const T* w) { kernels<T>().cosines(bins, y, n, from, to, w, spec.other); });
    y[0] = v0 * spec.first;
    if (n % 2 == 0) y[n / 2] = middle * (spec.other * kSqrtHalf<T>);
}
// And back, but for the first value and the middle one.
template <class T> void spectrumOf(const DctSpec<T>& spec, int n, const T* y, T* bins) {
    eachRun(spec, (n + 1) / 2, [&](ptrdiff_t from, ptrdiff_t to, const T* w) { kernels<T>().spectrum(y, bins, n, from, to, w, spec.other * T(0.5)); });
}

// A work area for the FFT that begins at this multiple of 16, and not at the next one of 32 (workIn): there is no room for more.
inline uint8_t* exactly(void* work) { return static_cast<uint8_t*>(work) - 1; }

// sum over n of  b[n] cos(pi (2n+1) (2k+1) / 4M), M = N/2, to y, by a complex transform of length M/2 (P. Duhamel, Y. Mahieux and J. P. Petit, A fast algorithm for the implementation
// of filter banks based on time domain aliasing cancellation, 1991). b is lost; y and z have room for M values, and may not lie in b.
template <class T> void oddCosines(const DctSpec<T>& spec, T* b, T* y, T* z) {
    const ptrdiff_t m = spec.length / 2, half = m / 2;
    const DctKernels<T>& k = kernels<T>();
    const auto turn = [&] {
        eachRun(*spec.ofOdd, 0, half, [&](ptrdiff_t from, ptrdiff_t to, const T* w) {
            if constexpr (sizeof(T) == 4)
                arithmetic->mul32fc(z + 2 * from, w, z + 2 * from, 2 * (to - from));
            else
                arithmetic->mul64fc(z + 2 * from, w, z + 2 * from, 2 * (to - from));
        });
    };
    k.fold(b, y, m);
    (sizeof(T) == 4 ? movement->join32 : movement->join64)(y, y + half, z, half);
    turn();
    transformBy<Way::Forward, T>(*spec.real->fft, Pairs<const T>{z}, Pairs<T>{z}, exactly(b));
    turn();
    (sizeof(T) == 4 ? movement->split32 : movement->split64)(z, b, b + half, half);
    for (ptrdiff_t i = half; i < m; ++i) b[i] = -b[i];
    k.unfold(b, y, m);
}

// N = 2M: the even cosines are those of x[n] + x[N-1-n], the odd ones of x[n] - x[N-1-n].
template <class T> void forwardHalves(const DctSpec<T>& spec, const T* src, T* dst, T* odd) {
    const int m = spec.length / 2;
    T* const even = odd + m;
    for (int i = 0; i < m; ++i) {
        const T a = src[i], b = src[2 * m - 1 - i];
        even[i] = a + b;
        odd[i] = a - b;
    }
    kernels<T>().fold(even, dst, m);
    forwardReal<T>(*spec.real, dst, dst, Packing::Perm, exactly(even));
    cosinesOf(spec, m, dst, dst[0], dst[1], even);
    oddCosines(spec, odd, dst, dst + m);
    for (int i = 0; i < m; ++i) odd[i] = dst[i] * spec.other;
    for (int i = 0; i < m; ++i) {
        dst[2 * i] = even[i];
        dst[2 * i + 1] = odd[i];
    }
}
template <class T> void inverseHalves(const DctSpec<T>& spec, const T* src, T* dst, T* odd) {
    const int m = spec.length / 2;
    T* const even = odd + m;
    for (int i = 0; i < m; ++i) {
        even[i] = src[2 * i];
        odd[i] = src[2 * i + 1] * spec.other;
    }
    spectrumOf(spec, m, even, dst);
    dst[0] = even[0] * spec.first;
    dst[1] = even[m / 2] * (spec.other * kSqrtHalf<T>);
    inverseReal<T>(*spec.real, dst, dst, Packing::Perm, exactly(even));
    kernels<T>().unfold(dst, even, m);
    oddCosines(spec, odd, dst, dst + m);
    memcpy(odd, dst, size_t(m) * sizeof(T));
    for (int i = 0; i < m; ++i) {
        dst[i] = even[i] + odd[i];
        dst[2 * m - 1 - i] = even[i] - odd[i];
    }
}

template <class T> void forwardBy(const DctSpec<T>& spec, const T* src, T* dst, uint8_t* work) {
    const int n = spec.length;
    const DctKernels<T>& k = kernels<T>();
    const size_t bytes = size_t(n) * sizeof(T);
    T* const v = reinterpret_cast<T*>(work);
    T* const bins = v + firstPair(Packing::Perm, n) - 2;
    switch (spec.method) {
        case Method::Real:
        case Method::RealInParts:
            k.fold(src, v, n);
            forwardReal<T>(*spec.real, v, v, Packing::Perm, work + folded<T>(n));
            return cosinesOf(spec, n, bins, v[0], v[1], dst);
        case Method::TwoSided: {
            k.fold(src, v, n);
            memcpy(dst, v, bytes);
            forwardReal<T>(*spec.real, dst, dst, Packing::Perm, work);
            memcpy(v, dst, bytes);
            return cosinesOf(spec, n, bins, v[0], v[1], dst);
        }
        case Method::Halves:
            return forwardHalves(spec, src, dst, v);
        default: {
            if (reinterpret_cast<uintptr_t>(work) % 32 != 0) work += 16;
            T *const x = reinterpret_cast<T*>(work), *const at = x + 2 * size_t(spec.chirp->convolution) - n;   // behind what the product is written to
            k.fold(src, at, n);
            runDft<Way::Forward, T>(*spec.chirp, {Form::Reals, at, nullptr}, {Form::Pairs, x, nullptr}, work);
            return cosinesOf(spec, n, x, x[0], x[2 * (n / 2)], dst);
        }
    }
}

template <class T> void inverseBy(const DctSpec<T>& spec, const T* src, T* dst, uint8_t* work) {
    const int n = spec.length;
    const DctKernels<T>& k = kernels<T>();
    const size_t bytes = size_t(n) * sizeof(T);
    T* const v = reinterpret_cast<T*>(work);
    const auto ends = [&](T* V) {
        V[0] = src[0] * spec.first;
        if (n % 2 == 0) V[1] = src[n / 2] * (spec.other * kSqrtHalf<T>);
    };
    T* const bins = v + firstPair(Packing::Perm, n) - 2;
    switch (spec.method) {
        case Method::Real:
        case Method::RealInParts:
            spectrumOf(spec, n, src, bins);
            ends(v);
            inverseReal<T>(*spec.real, v, v, Packing::Perm, work + folded<T>(n));
            return k.unfold(v, dst, n);
        case Method::TwoSided: {
            spectrumOf(spec, n, src, bins);
            ends(v);
            memcpy(dst, v, bytes);
            inverseReal<T>(*spec.real, dst, dst, Packing::Perm, work);
            memcpy(v, dst, bytes);
            return k.unfold(v, dst, n);
        }
        case Method::Halves:
            return inverseHalves(spec, src, dst, v);
        default: {
            if (reinterpret_cast<uintptr_t>(work) % 32 != 0) work += 16;
            T* const x = reinterpret_cast<T*>(work);
            spectrumOf(spec, n, src, x);
            x[0] = src[0] * spec.first;
            x[1] = 0;
            if (n % 2 == 0) {
                x[n] = src[n / 2] * (spec.other * kSqrtHalf<T>);
                x[n + 1] = 0;
            }
            const int pairs = (n - 1) / 2;
            (sizeof(T) == 4 ? movement->unfold32 : movement->unfold64)(x + 2, x + 2, x + 2 * (n - pairs), pairs);
            runDft<Way::Inverse, T>(*spec.chirp, {Form::Pairs, x, nullptr}, {Form::Pairs, x, nullptr}, work);
            T* const real = x + 2 * size_t(n);   // M >= 2N - 1 values: behind the result there is room for it
            (sizeof(T) == 4 ? movement->real32 : movement->real64)(x, real, n);
            return k.unfold(real, dst, n);
        }
    }
}

// ---- records of floats and of 16-bit samples ---------------------------------------------------------------------------------------------

enum class Direction { Forward, Inverse };

template <uint32_t Id, class T, Direction D> struct FloatDct : DctSpec<T> {
    using Real = T;
    static constexpr uint32_t kId = Id;
    static constexpr Direction kDirection = D;
    static SpecSizes sizes(int length, int hint) { return sizesOf<T>(length, hint); }
    static int order(int length, int hint) { return orderNamed(length, hint); }
    static Status build(FloatDct* spec, int length, int hint) { return tevs::build<T>(spec, length, hint); }
};

// 16 bytes, and behind them the record of the float transform, of which one sample has no need.
template <uint32_t Id, Direction D> struct ShortDct {
    using Real = float;
    static constexpr uint32_t kId = Id;
    static constexpr Direction kDirection = D;

    uint32_t id;
    int32_t length;
    int32_t workBytes;   // scratch of one call: the float transform's, and the converted samples
    bool owned;

    static SpecSizes sizes(int length, int) {
        if (length == 1) return {48, 0, 0};
        const SpecSizes inner = sizesOf<float>(length, HintFast);
        return {inner.spec + 48, inner.init ? inner.init + 16 : 0, inner.work + 4 * uint64_t(length) + kAlignmentRoom};
    }
    static int order(int length, int) { return orderNamed(length, HintFast); }
    static Status build(ShortDct* spec, int length, int hint) {
        const uint64_t work = sizes(length, hint).work;
        spec->length = length;
        spec->workBytes = work ? int(work - kAlignmentRoom) : 0;
        return length == 1 ? StatusOk : tevs::build<float>(spec->inner(), length, HintFast);
    }
    DctSpec<float>* inner() { return reinterpret_cast<DctSpec<float>*>(this + 1); }
    const DctSpec<float>& inner() const { return *reinterpret_cast<const DctSpec<float>*>(this + 1); }
};

// ---- lifecycle -----------------------------------------------------------------------------------------------------------------------------

template <class Spec> Status dctGetSize(int length, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    if (Status s = Args().len(length).ptr(pSpecSize).ptr(pSpecBufferSize).ptr(pBufferSize)) return s;
    if (Spec::order(length, hint) > kMaxOrder) return StatusFftOrder;
    const SpecSizes sizes = Spec::sizes(length, hint);
    *pSpecSize = clampToInt(sizes.spec);
    *pSpecBufferSize = clampToInt(sizes.init);
    *pBufferSize = clampToInt(sizes.work);
    return StatusOk;
}

// Fills the record and gives it its identifier.
template <class Spec> Status construct(Spec* spec, int length, int hint) {
    spec->id = 0;   // whoever uses the block after a failure finds no record in it
    spec->owned = false;
    NearestRounding guard;
    if (Status s = Spec::build(spec, length, hint)) return s;
    spec->id = Spec::kId;
    return StatusOk;
}
template <class Spec> Status dctInit(Spec** ppSpec, int length, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    if (Status s = Args().ptr(ppSpec).len(length).ptr(pMemSpec)) return s;
    if (Spec::order(length, hint) > kMaxOrder) return StatusFftOrder;
    const SpecSizes sizes = Spec::sizes(length, hint);
    if (Status s = Args().require(sizes.fitInt(), StatusFftOrder).require(pMemInit || !sizes.init, StatusNullPtr)) return s;
    auto* const spec = align16<Spec>(pMemSpec);
    if (Status s = construct(spec, length, hint)) return s;
    *ppSpec = spec;
    return StatusOk;
}
template <class Spec> Status dctInitAlloc(Spec** ppSpec, int length, int hint) {
    if (Status s = Args().ptr(ppSpec).len(length)) return s;
    if (Spec::order(length, hint) > kMaxOrder) return StatusFftOrder;
    const SpecSizes sizes = Spec::sizes(length, hint);
    auto* const spec = static_cast<Spec*>(sizes.fitInt() ? allocate(sizes.spec) : nullptr);
    if (!spec) return StatusNoMemory;
    if (Status s = construct(spec, length, hint)) {
        release(spec);
        return s;
    }
    spec->owned = true;
    *ppSpec = spec;
    return StatusOk;
}

// ---- calls ---------------------------------------------------------------------------------------------------------------------------------

template <Direction D, class T> void run(const DctSpec<T>& spec, const T* src, T* dst, uint8_t* work) {
    constexpr bool forward = D == Direction::Forward;
    const int n = spec.length;
    const DctKernels<T>& k = kernels<T>();
    if (n == 1)
        dst[0] = src[0];
    else if (spec.method == Method::Matrix)
        (forward ? k.forward : k.inverse)(src, dst, n, spec.first, spec.other);
    else if (spec.method == Method::Sums)
        (forward ? k.forwardSums : k.inverseSums)(src, dst, n, spec.turns, spec.first, spec.other);
    else
        (forward ? forwardBy<T> : inverseBy<T>)(spec, src, dst, work);
}

template <class Spec, class T> Status transform(const T* pSrc, T* pDst, const Spec* pSpec, uint8_t* pBuffer) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrc).ptr(pDst)) return s;
    const auto body = [=](uint8_t* work) { run<Spec::kDirection, T>(*pSpec, pSrc, pDst, work); };
    NearestRounding guard;
    if (pSpec->method == Method::Matrix || pSpec->method == Method::Sums) {
        body(nullptr);
        return StatusOk;
    }
    // Below 101 the sizes that are reported are no measure of what there is on the stack.
    return withWorkOnStack<kDftStackBytes>(pBuffer, pSpec->length <= kMostSums ? kDftStackBytes : uint64_t(pSpec->workBytes), body);
}

// The float transform's work area comes first.
template <class Spec> Status transform(const int16_t* pSrc, int16_t* pDst, const Spec* pSpec, int scaleFactor, uint8_t* pBuffer) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrc).ptr(pDst)) return s;
    const int n = pSpec->length;
    const uint64_t inner = n > kMostSums ? roundUp16(uint64_t(pSpec->inner().workBytes)) : 0;
    const uint64_t bytes = n > kMostSums ? uint64_t(pSpec->workBytes) : 512;
    return throughFloats<float>({pSrc}, {pDst}, n, n, n, scaleFactor, pBuffer, bytes, inner, [=](float* x, uint8_t* work) {
        if (n == 1) return;
        if (n > kMostSums) return run<Spec::kDirection, float>(pSpec->inner(), x, x, work);
        alignas(64) uint8_t onStack[kDftStackBytes];
        run<Spec::kDirection, float>(pSpec->inner(), x, x, onStack);
    });
}

}   // namespace
}   // namespace tevs

// The public names of the records.
struct DCTFwdSpec_16s : tevs::ShortDct<19, tevs::Direction::Forward> {};
struct DCTInvSpec_16s : tevs::ShortDct<20, tevs::Direction::Inverse> {};
struct DCTFwdSpec_32f : tevs::FloatDct<21, float, tevs::Direction::Forward> {};
struct DCTInvSpec_32f : tevs::FloatDct<22, float, tevs::Direction::Inverse> {};
struct DCTFwdSpec_64f : tevs::FloatDct<23, double, tevs::Direction::Forward> {};
struct DCTInvSpec_64f : tevs::FloatDct<24, double, tevs::Direction::Inverse> {};

using namespace tevs;

Status tevsDCTFwdGetSize_16s(int length, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    return dctGetSize<DCTFwdSpec_16s>(length, hint, pSpecSize, pSpecBufferSize, pBufferSize);
}
Status tevsDCTFwdGetSize_32f(int length, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    return dctGetSize<DCTFwdSpec_32f>(length, hint, pSpecSize, pSpecBufferSize, pBufferSize);
}
Status tevsDCTFwdGetSize_64f(int length, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    return dctGetSize<DCTFwdSpec_64f>(length, hint, pSpecSize, pSpecBufferSize, pBufferSize);
}
Status tevsDCTInvGetSize_16s(int length, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    return dctGetSize<DCTInvSpec_16s>(length, hint, pSpecSize, pSpecBufferSize, pBufferSize);
}
Status tevsDCTInvGetSize_32f(int length, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    return dctGetSize<DCTInvSpec_32f>(length, hint, pSpecSize, pSpecBufferSize, pBufferSize);
}
Status tevsDCTInvGetSize_64f(int length, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    return dctGetSize<DCTInvSpec_64f>(length, hint, pSpecSize, pSpecBufferSize, pBufferSize);
}
Status tevsDCTFwdInit_16s(DCTFwdSpec_16s** ppSpec, int length, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    return dctInit(ppSpec, length, hint, pMemSpec, pMemInit);
}
Status tevsDCTFwdInit_32f(DCTFwdSpec_32f** ppSpec, int length, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    return dctInit(ppSpec, length, hint, pMemSpec, pMemInit);
}
Status tevsDCTFwdInit_64f(DCTFwdSpec_64f** ppSpec, int length, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    return dctInit(ppSpec, length, hint, pMemSpec, pMemInit);
}
Status tevsDCTInvInit_16s(DCTInvSpec_16s** ppSpec, int length, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    return dctInit(ppSpec, length, hint, pMemSpec, pMemInit);
}
Status tevsDCTInvInit_32f(DCTInvSpec_32f** ppSpec, int length, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    return dctInit(ppSpec, length, hint, pMemSpec, pMemInit);
}
Status tevsDCTInvInit_64f(DCTInvSpec_64f** ppSpec, int length, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    return dctInit(ppSpec, length, hint, pMemSpec, pMemInit);
}
Status tevsDCTFwdInitAlloc_16s(DCTFwdSpec_16s** ppSpec, int length, int hint) { return dctInitAlloc(ppSpec, length, hint); }
Status tevsDCTFwdInitAlloc_32f(DCTFwdSpec_32f** ppSpec, int length, int hint) { return dctInitAlloc(ppSpec, length, hint); }
Status tevsDCTFwdInitAlloc_64f(DCTFwdSpec_64f** ppSpec, int length, int hint) { return dctInitAlloc(ppSpec, length, hint); }
Status tevsDCTInvInitAlloc_16s(DCTInvSpec_16s** ppSpec, int length, int hint) { return dctInitAlloc(ppSpec, length, hint); }
Status tevsDCTInvInitAlloc_32f(DCTInvSpec_32f** ppSpec, int length, int hint) { return dctInitAlloc(ppSpec, length, hint); }
Status tevsDCTInvInitAlloc_64f(DCTInvSpec_64f** ppSpec, int length, int hint) { return dctInitAlloc(ppSpec, length, hint); }
Status tevsDCTFwdFree_16s(DCTFwdSpec_16s* pSpec) { return freeSpec(pSpec); }
Status tevsDCTFwdFree_32f(DCTFwdSpec_32f* pSpec) { return freeSpec(pSpec); }
Status tevsDCTFwdFree_64f(DCTFwdSpec_64f* pSpec) { return freeSpec(pSpec); }
Status tevsDCTInvFree_16s(DCTInvSpec_16s* pSpec) { return freeSpec(pSpec); }
Status tevsDCTInvFree_32f(DCTInvSpec_32f* pSpec) { return freeSpec(pSpec); }
Status tevsDCTInvFree_64f(DCTInvSpec_64f* pSpec) { return freeSpec(pSpec); }
Status tevsDCTFwdGetBufSize_16s(const DCTFwdSpec_16s* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDCTFwdGetBufSize_32f(const DCTFwdSpec_32f* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDCTFwdGetBufSize_64f(const DCTFwdSpec_64f* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDCTInvGetBufSize_16s(const DCTInvSpec_16s* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDCTInvGetBufSize_32f(const DCTInvSpec_32f* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDCTInvGetBufSize_64f(const DCTInvSpec_64f* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDCTFwd_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const DCTFwdSpec_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return transform(pSrc, pDst, pSpec, scaleFactor, pBuffer);
}
Status tevsDCTFwd_16s_ISfs(int16_t* pSrcDst, const DCTFwdSpec_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return transform<DCTFwdSpec_16s>(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer);
}
Status tevsDCTFwd_32f(const float* pSrc, float* pDst, const DCTFwdSpec_32f* pSpec, uint8_t* pBuffer) { return transform(pSrc, pDst, pSpec, pBuffer); }
Status tevsDCTFwd_32f_I(float* pSrcDst, const DCTFwdSpec_32f* pSpec, uint8_t* pBuffer) { return transform<DCTFwdSpec_32f>(pSrcDst, pSrcDst, pSpec, pBuffer); }
Status tevsDCTFwd_64f(const double* pSrc, double* pDst, const DCTFwdSpec_64f* pSpec, uint8_t* pBuffer) { return transform(pSrc, pDst, pSpec, pBuffer); }
Status tevsDCTFwd_64f_I(double* pSrcDst, const DCTFwdSpec_64f* pSpec, uint8_t* pBuffer) { return transform<DCTFwdSpec_64f>(pSrcDst, pSrcDst, pSpec, pBuffer); }
Status tevsDCTInv_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const DCTInvSpec_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return transform(pSrc, pDst, pSpec, scaleFactor, pBuffer);
}
Status tevsDCTInv_16s_ISfs(int16_t* pSrcDst, const DCTInvSpec_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return transform<DCTInvSpec_16s>(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer);
}
Status tevsDCTInv_32f(const float* pSrc, float* pDst, const DCTInvSpec_32f* pSpec, uint8_t* pBuffer) { return transform(pSrc, pDst, pSpec, pBuffer); }
Status tevsDCTInv_32f_I(float* pSrcDst, const DCTInvSpec_32f* pSpec, uint8_t* pBuffer) { return transform<DCTInvSpec_32f>(pSrcDst, pSrcDst, pSpec, pBuffer); }
Status tevsDCTInv_64f(const double* pSrc, double* pDst, const DCTInvSpec_64f* pSpec, uint8_t* pBuffer) { return transform(pSrc, pDst, pSpec, pBuffer); }
Status tevsDCTInv_64f_I(double* pSrcDst, const DCTInvSpec_64f* pSpec, uint8_t* pBuffer) { return transform<DCTInvSpec_64f>(pSrcDst, pSrcDst, pSpec, pBuffer); }
