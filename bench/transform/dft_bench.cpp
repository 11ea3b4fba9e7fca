// Transforms of any length against FFTW's measured plans, per point.
#if TEVS_PEER_FFTW
#include <fftw3.h>
#endif

#include <memory>

#include "support/bench.h"
#include "tevs.h"

namespace {

const std::vector<int64_t> kLengths = {6, 7, 12, 31, 60, 100, 120, 127, 149, 151, 360, 480, 960, 1000, 1009, 1920, 4410, 10007, 44100, 48000};
const std::vector<int64_t> kCyclicLengths = {12, 60, 100, 151, 360, 1000, 1024, 1920, 4410, 16384, 48000};   // forward, product, inverse
const std::vector<int64_t> kCosineLengths = {8, 16, 32, 64, 100, 256, 480, 1000, 1009, 1024, 4096, 65536};

template <class T> using Buffer = std::shared_ptr<T>;
template <class T> Buffer<T> buffer(int64_t count) {
    Buffer<T> b(reinterpret_cast<T*>(tevsMalloc_8u(int(count * int64_t(sizeof(T))))), tevsFree);
    for (int64_t i = 0; i < count; ++i) b.get()[i] = T(unsigned(i) * 2654435761u % 1000) * T(1e-3) - T(0.5);
    return b;
}

// transform(src, dst, record, work) of scalars T, on a record that init(&record, n) has built.
template <class T, class Spec, class Init, class Transform>
void add(const std::string& name, const std::vector<int64_t>& lengths, Init init, Status (*free)(Spec*), Status (*size)(const Spec*, int*),
         Transform transform) {
    bench::row(name, "tevs", lengths, [=](int n) {
        Spec* p = nullptr;
        init(&p, n);
        const std::shared_ptr<Spec> record(p, free);
        int bytes = 0;
        size(p, &bytes);
        return [=, work = std::vector<uint8_t>(size_t(bytes) + 1), a = buffer<T>(2 * int64_t{n} + 2), b = buffer<T>(2 * int64_t{n} + 2)]() mutable {
            transform(a.get(), b.get(), record.get(), work.data());
        };
    });
}

// Out of order, and in order: x's transform times h, and back.
template <class T, class Spec, class Init, class Cyclic>
void addCyclic(const std::string& name, const std::string& who, Init init, Status (*free)(Spec*), Status (*size)(const Spec*, int*), Cyclic cyclic) {
    bench::row(name, who, kCyclicLengths, [=](int n) {
        Spec* p = nullptr;
        init(&p, n, ScaleInvByN, HintNone);
        const std::shared_ptr<Spec> record(p, free);
        int bytes = 0;
        size(p, &bytes);
        return [=, work = std::vector<uint8_t>(size_t(bytes) + 1), a = buffer<T>(2 * int64_t{n}), h = buffer<T>(2 * int64_t{n}),
                b = buffer<T>(2 * int64_t{n})]() mutable { cyclic(a.get(), h.get(), b.get(), n, record.get(), work.data()); };
    });
}
#define TEVS_ADD_CYCLIC(T, C, c, who, DFT)                                                                                    \
    addCyclic<T>("DFTOutOrd_cyclic_" #c, who, tevs##DFT##InitAlloc_C_##c, tevs##DFT##Free_C_##c, tevs##DFT##GetBufSize_C_##c, \
                 [](T* a, T* h, T* b, int n, auto* r, uint8_t* w) {                                                           \
                     auto *const x = reinterpret_cast<C*>(a), *const y = reinterpret_cast<C*>(b);                             \
                     tevs##DFT##Fwd_CToC_##c(x, y, r, w);                                                                     \
                     tevsMul_##c##_I(reinterpret_cast<C*>(h), y, n);                                                          \
                     tevs##DFT##Inv_CToC_##c(y, y, r, w);                                                                     \
                 });

#define TEVS_ADD(T, C, c, f)                                                                                                                          \
    const auto initPairs = [](auto** p, int n) { tevsDFTInitAlloc_C_##c(p, n, NoScale, HintNone); };                                                  \
    add<T>("DFTFwd_CToC_" #c, kLengths, initPairs, tevsDFTFree_C_##c, tevsDFTGetBufSize_C_##c,                                                        \
           [](T* a, T* b, auto* r, uint8_t* w) { tevsDFTFwd_CToC_##c(reinterpret_cast<C*>(a), reinterpret_cast<C*>(b), r, w); });                     \
    add<T>("DFTInv_CToC_" #c, kLengths, initPairs, tevsDFTFree_C_##c, tevsDFTGetBufSize_C_##c,                                                        \
           [](T* a, T* b, auto* r, uint8_t* w) { tevsDFTInv_CToC_##c(reinterpret_cast<C*>(a), reinterpret_cast<C*>(b), r, w); });                     \
    const auto initReal = [](auto** p, int n) { tevsDFTInitAlloc_R_##f(p, n, NoScale, HintNone); };                                                   \
    add<T>("DFTFwd_RToCCS_" #f, kLengths, initReal, tevsDFTFree_R_##f, tevsDFTGetBufSize_R_##f,                                                       \
           [](T* a, T* b, auto* r, uint8_t* w) { tevsDFTFwd_RToCCS_##f(a, b, r, w); });                                                               \
    add<T>("DFTInv_CCSToR_" #f, kLengths, initReal, tevsDFTFree_R_##f, tevsDFTGetBufSize_R_##f,                                                       \
           [](T* a, T* b, auto* r, uint8_t* w) { tevsDFTInv_CCSToR_##f(a, b, r, w); });                                                               \
    add<T>(                                                                                                                                           \
        "DCTFwd_" #f, kCosineLengths, [](auto** p, int n) { tevsDCTFwdInitAlloc_##f(p, n, HintNone); }, tevsDCTFwdFree_##f, tevsDCTFwdGetBufSize_##f, \
        [](T* a, T* b, auto* r, uint8_t* w) { tevsDCTFwd_##f(a, b, r, w); });                                                                         \
    add<T>(                                                                                                                                           \
        "DCTInv_" #f, kCosineLengths, [](auto** p, int n) { tevsDCTInvInitAlloc_##f(p, n, HintNone); }, tevsDCTInvFree_##f, tevsDCTInvGetBufSize_##f, \
        [](T* a, T* b, auto* r, uint8_t* w) { tevsDCTInv_##f(a, b, r, w); });

#if TEVS_PEER_FFTW
enum class Kind { Forward, Inverse, ToComplex, ToReal, Cosines, FromCosines };
template <class T> struct Fftw;
#define TEVS_FFTW(T, fftw)                                                                                                          \
    template <> struct Fftw<T> {                                                                                                    \
        static auto plan(Kind kind, int n, T* a, T* b) {                                                                            \
            auto *const ca = reinterpret_cast<fftw##_complex*>(a), *const cb = reinterpret_cast<fftw##_complex*>(b);                \
            const auto cosines = kind == Kind::Cosines ? FFTW_REDFT10 : FFTW_REDFT01;                                               \
            auto* const p = kind == Kind::Forward || kind == Kind::Inverse                                                          \
                                ? fftw##_plan_dft_1d(n, ca, cb, kind == Kind::Forward ? FFTW_FORWARD : FFTW_BACKWARD, FFTW_MEASURE) \
                            : kind == Kind::ToComplex ? fftw##_plan_dft_r2c_1d(n, a, cb, FFTW_MEASURE)                              \
                            : kind == Kind::ToReal    ? fftw##_plan_dft_c2r_1d(n, ca, b, FFTW_MEASURE | FFTW_PRESERVE_INPUT)        \
                                                      : fftw##_plan_r2r_1d(n, a, b, cosines, FFTW_MEASURE);                            \
            return std::shared_ptr<std::remove_pointer_t<decltype(p)>>(p, fftw##_destroy_plan);                                     \
        }                                                                                                                           \
        static constexpr auto execute = fftw##_execute;                                                                             \
    };
TEVS_FFTW(float, fftwf)
TEVS_FFTW(double, fftw)
template <class T> void addFftw(const std::string& name, Kind kind, const std::vector<int64_t>& lengths) {
    bench::row(name, "FFTW", lengths, [=](int n) {
        const int64_t count = 2 * int64_t{n} + 2;
        const auto a = buffer<T>(count), b = buffer<T>(count), saved = buffer<T>(count);
        const auto plan = Fftw<T>::plan(kind, n, a.get(), b.get());
        std::copy_n(saved.get(), count, a.get());                           // planning writes to its buffers
        return [=, keep = a, also = b] { Fftw<T>::execute(plan.get()); };   // the plan holds addresses alone
    });
}
#define TEVS_ADD_FFTW(T, c, f)                                  \
    addFftw<T>("DFTFwd_CToC_" #c, Kind::Forward, kLengths);     \
    addFftw<T>("DFTInv_CToC_" #c, Kind::Inverse, kLengths);     \
    addFftw<T>("DFTFwd_RToCCS_" #f, Kind::ToComplex, kLengths); \
    addFftw<T>("DFTInv_CCSToR_" #f, Kind::ToReal, kLengths);    \
    addFftw<T>("DCTFwd_" #f, Kind::Cosines, kCosineLengths);    \
    addFftw<T>("DCTInv_" #f, Kind::FromCosines, kCosineLengths);
#else
#define TEVS_ADD_FFTW(T, c, f)
#endif

const bool registered = [] {
    TEVS_ADD_CYCLIC(float, Complex32f, 32fc, "tevs", DFTOutOrd)
    TEVS_ADD_CYCLIC(float, Complex32f, 32fc, "ordered", DFT)
    TEVS_ADD_CYCLIC(double, Complex64f, 64fc, "tevs", DFTOutOrd)
    TEVS_ADD_CYCLIC(double, Complex64f, 64fc, "ordered", DFT){TEVS_ADD(float, Complex32f, 32fc, 32f) TEVS_ADD_FFTW(float, 32fc, 32f)} {
        TEVS_ADD(double, Complex64f, 64fc, 64f)
        TEVS_ADD_FFTW(double, 64fc, 64f)
    }
    return true;
}();

}   // namespace
