// Transforms against FFTW's measured plans, per point.
#if TEVS_PEER_FFTW
#include <fftw3.h>
#endif

#include <cmath>
#include <memory>

#include "support/bench.h"
#include "tevs.h"

namespace {

std::vector<int64_t> lengths() {
    std::vector<int64_t> n;
    for (int order = 1; order <= 20; ++order) n.push_back(int64_t{1} << order);
    return n;
}

template <class T> using Buffer = std::shared_ptr<T>;
template <class T> Buffer<T> buffer(int64_t count) {
    Buffer<T> b(reinterpret_cast<T*>(tevsMalloc_8u(int(count * int64_t(sizeof(T))))), tevsFree);
    for (int64_t i = 0; i < count; ++i) b.get()[i] = T(unsigned(i) * 2654435761u % 1000) * T(1e-3) - T(0.5);
    return b;
}

// The calls of one precision, and FFTW's.
template <class T> struct Calls;
#define TEVS_CALLS(T, f, c, fftw)                                  \
    template <> struct Calls<T> {                                  \
        static constexpr const char *kComplex = #c, *kReal = #f;   \
        static constexpr auto initPairs = tevsFFTInitAlloc_C_##c;  \
        static constexpr auto initParts = tevsFFTInitAlloc_C_##f;  \
        static constexpr auto initReal = tevsFFTInitAlloc_R_##f;   \
        static constexpr auto freePairs = tevsFFTFree_C_##c;       \
        static constexpr auto freeParts = tevsFFTFree_C_##f;       \
        static constexpr auto freeReal = tevsFFTFree_R_##f;        \
        static constexpr auto sizePairs = tevsFFTGetBufSize_C_##c; \
        static constexpr auto sizeParts = tevsFFTGetBufSize_C_##f; \
        static constexpr auto sizeReal = tevsFFTGetBufSize_R_##f;  \
        static constexpr auto forwardPairs = tevsFFTFwd_CToC_##c;  \
        static constexpr auto inversePairs = tevsFFTInv_CToC_##c;  \
        static constexpr auto forwardParts = tevsFFTFwd_CToC_##f;  \
        static constexpr auto forwardReal = tevsFFTFwd_RToCCS_##f; \
        static constexpr auto inverseReal = tevsFFTInv_CCSToR_##f; \
        static constexpr auto copy = tevsCopy_##c;                 \
        TEVS_FFTW_CALLS(fftw)                                      \
    };
#if TEVS_PEER_FFTW
#define TEVS_FFTW_CALLS(fftw)                                     \
    using Value = fftw##_complex;                                 \
    using Plan = fftw##_plan;                                     \
    static constexpr auto planPairs = fftw##_plan_dft_1d;         \
    static constexpr auto planParts = fftw##_plan_guru_split_dft; \
    static constexpr auto planForward = fftw##_plan_dft_r2c_1d;   \
    static constexpr auto planInverse = fftw##_plan_dft_c2r_1d;   \
    static constexpr auto setTimeLimit = fftw##_set_timelimit;    \
    static constexpr auto execute = fftw##_execute;               \
    static constexpr auto destroy = fftw##_destroy_plan;
#else
#define TEVS_FFTW_CALLS(fftw)
#endif
TEVS_CALLS(float, 32f, 32fc, fftwf)
TEVS_CALLS(double, 64f, 64fc, fftw)

template <class Spec> std::shared_ptr<Spec> record(Status (*init)(Spec**, int, int, int), Status (*free)(Spec*), int n) {
    Spec* p = nullptr;
    init(&p, int(std::log2(n)), NoScale, HintNone);
    return {p, free};
}
template <class Spec> std::vector<uint8_t> work(Status (*size)(const Spec*, int*), const std::shared_ptr<Spec>& r) {
    int bytes = 0;
    size(r.get(), &bytes);
    return std::vector<uint8_t>(size_t(bytes) + 1);
}

template <class T, class Transform> void addPairs(const std::string& name, Transform transform, bool inPlace = false) {
    using C = Calls<T>;
    bench::row(name, "tevs", lengths(), [=](int n) {
        const auto r = record(C::initPairs, C::freePairs, n);
        return [=, w = work(C::sizePairs, r), a = buffer<T>(2 * int64_t{n}), b = buffer<T>(2 * int64_t{n})]() mutable {
            using Complex = std::conditional_t<sizeof(T) == 4, Complex32f, Complex64f>;
            auto *const src = reinterpret_cast<Complex*>(a.get()), *const dst = reinterpret_cast<Complex*>(b.get());
            // In place a copy of the input comes first: a transform run on its own output again and again would leave the range of the type.
            if (inPlace) C::copy(src, dst, n);
            transform(inPlace ? dst : src, dst, r.get(), w.data());
        };
    });
}
template <class T> void addParts(const std::string& name) {
    using C = Calls<T>;
    bench::row(name, "tevs", lengths(), [=](int n) {
        const auto r = record(C::initParts, C::freeParts, n);
        return [=, w = work(C::sizeParts, r), a = buffer<T>(2 * int64_t{n}), b = buffer<T>(2 * int64_t{n})]() mutable {
            C::forwardParts(a.get(), a.get() + n, b.get(), b.get() + n, r.get(), w.data());
        };
    });
}
template <class T, class Transform> void addReal(const std::string& name, Transform transform) {
    using C = Calls<T>;
    bench::row(name, "tevs", lengths(), [=](int n) {
        const auto r = record(C::initReal, C::freeReal, n);
        return [=, w = work(C::sizeReal, r), a = buffer<T>(int64_t{n} + 2), b = buffer<T>(int64_t{n} + 2)]() mutable {
            transform(a.get(), b.get(), r.get(), w.data());
        };
    });
}

#if TEVS_PEER_FFTW
enum class Kind { Pairs, Parts, ToComplex, ToReal };
template <class T> void addFftw(const std::string& name, Kind kind, int sign = FFTW_FORWARD, bool inPlace = false) {
    using C = Calls<T>;
    bench::row(name, "FFTW", lengths(), [=](int n) {
        const int64_t count = 2 * int64_t{n} + 2;
        const auto a = buffer<T>(count), b = inPlace ? a : buffer<T>(count), saved = buffer<T>(count);
        auto *const ca = reinterpret_cast<typename C::Value*>(a.get()), *const cb = reinterpret_cast<typename C::Value*>(b.get());
        const unsigned effort = FFTW_MEASURE;
        C::setTimeLimit(4);   // seconds; from 2^18 points on it would go on for minutes, and takes the best that it has found
        const fftw_iodim whole = {n, 1, 1};
        const auto plan = kind == Kind::Pairs ? C::planPairs(n, ca, cb, sign, effort)
                          : kind == Kind::Parts
                              ? C::planParts(1, reinterpret_cast<const fftw_iodim*>(&whole), 0, nullptr, a.get(), a.get() + n, b.get(), b.get() + n, effort)
                          : kind == Kind::ToComplex ? C::planForward(n, a.get(), cb, effort)
                                                    : C::planInverse(n, ca, b.get(), effort | FFTW_PRESERVE_INPUT);
        std::copy_n(saved.get(), count, a.get());                                                                  // planning writes to its buffers
        return [=, source = a, p = std::shared_ptr<std::remove_pointer_t<typename C::Plan>>(plan, C::destroy)] {   // the plan holds addresses alone
            if (inPlace) std::copy_n(saved.get(), 2 * int64_t{n}, b.get());
            C::execute(p.get());
        };
    });
}
#endif

template <class T> void addAll() {
    using C = Calls<T>;
    const std::string complex = C::kComplex, real = C::kReal;
    addPairs<T>("FFTFwd_CToC_" + complex, C::forwardPairs);
    addPairs<T>("FFTInv_CToC_" + complex, C::inversePairs);
    addPairs<T>("FFTFwd_CToC_" + complex + "_I", C::forwardPairs, true);
    addParts<T>("FFTFwd_CToC_" + real);
    addReal<T>("FFTFwd_RToCCS_" + real, C::forwardReal);
    addReal<T>("FFTInv_CCSToR_" + real, C::inverseReal);
#if TEVS_PEER_FFTW
    addFftw<T>("FFTFwd_CToC_" + complex, Kind::Pairs);
    addFftw<T>("FFTInv_CToC_" + complex, Kind::Pairs, FFTW_BACKWARD);
    addFftw<T>("FFTFwd_CToC_" + complex + "_I", Kind::Pairs, FFTW_FORWARD, true);
    addFftw<T>("FFTFwd_CToC_" + real, Kind::Parts);
    addFftw<T>("FFTFwd_RToCCS_" + real, Kind::ToComplex);
    addFftw<T>("FFTInv_CCSToR_" + real, Kind::ToReal);
#endif
}

const bool registered = [] {
    addAll<float>();
    addAll<double>();
    return true;
}();

}   // namespace
