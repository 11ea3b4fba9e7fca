// Long signals with the same taps all along, by transforms of blocks that overlap (Oppenheim and Schafer, Discrete-Time Signal Processing, ch. 8).
//
// A block is what the transform takes: the tapsLen - 1 samples before, and step() = fftLen - (tapsLen - 1) more. The first tapsLen - 1 points of its circular
// convolution with the taps are wrapped round, and dropped; the others are step() outputs.
#pragma once

#include <stddef.h>
#include <stdint.h>
#include <string.h>

#include <algorithm>
#include <new>

#include "core/memory.h"
#include "core/parallel.h"
#include "tevs/arithmetic.h"
#include "tevs/fft.h"

namespace tevs {

template <class SpecT, auto Build, auto Free, auto BufSize, auto Forward, auto Multiply, auto Inverse> struct TransformBy {
    using Spec = SpecT;
    static constexpr auto build = Build;
    static constexpr auto free = Free;
    static constexpr auto bufSize = BufSize;
    static constexpr auto forward = Forward;
    static constexpr auto multiply = Multiply;
    static constexpr auto inverse = Inverse;
};
template <class T> struct Transform;
template <>
struct Transform<float> : TransformBy<FFTSpec_R_32f, tevsFFTInitAlloc_R_32f, tevsFFTFree_R_32f, tevsFFTGetBufSize_R_32f, tevsFFTFwd_RToPerm_32f_I,
                                      tevsMulPerm_32f_I, tevsFFTInv_PermToR_32f_I> {};
template <>
struct Transform<Complex32f> : TransformBy<FFTSpec_C_32fc, tevsFFTInitAlloc_C_32fc, tevsFFTFree_C_32fc, tevsFFTGetBufSize_C_32fc, tevsFFTFwd_CToC_32fc_I,
                                           tevsMul_32fc_I, tevsFFTInv_CToC_32fc_I> {};
template <>
struct Transform<double> : TransformBy<FFTSpec_R_64f, tevsFFTInitAlloc_R_64f, tevsFFTFree_R_64f, tevsFFTGetBufSize_R_64f, tevsFFTFwd_RToPerm_64f_I,
                                       tevsMulPerm_64f_I, tevsFFTInv_PermToR_64f_I> {};
template <>
struct Transform<Complex64f> : TransformBy<FFTSpec_C_64fc, tevsFFTInitAlloc_C_64fc, tevsFFTFree_C_64fc, tevsFFTGetBufSize_C_64fc, tevsFFTFwd_CToC_64fc_I,
                                           tevsMul_64fc_I, tevsFFTInv_CToC_64fc_I> {};

template <class T> class OverlapSave {
    using Transform = tevs::Transform<T>;

public:
    // Blocks of 2^order points, more than tapsLen, and a work area for each of `threads` threads. Taps come with setTaps().
    static Status create(OverlapSave** to, int tapsLen, int order, int threads) {
        typename Transform::Spec* fft;
        int scratch = 0;
        if (Status s = Transform::build(&fft, order, ScaleInvByN, HintNone)) return s;
        Transform::bufSize(fft, &scratch);
        const uint64_t fftLen = uint64_t{1} << order, areaBytes = whole(Area(nullptr, fftLen, tapsLen - 1, scratch).bytes);
        const uint64_t bytes = whole(sizeof(OverlapSave)) + whole(fftLen * sizeof(T)) + uint64_t(threads) * areaBytes;
        auto* const block = static_cast<unsigned char*>(bytes <= SIZE_MAX / 2 ? allocate(size_t(bytes)) : nullptr);
        if (!block) {
            Transform::free(fft);
            return StatusNoMemory;
        }
        *to = new (block) OverlapSave(fft, scratch, tapsLen - 1, int(fftLen), reinterpret_cast<T*>(block + whole(sizeof(OverlapSave))), areaBytes);
        return StatusOk;
    }
    static void destroy(OverlapSave* o) {
        if (!o) return;
        Transform::free(o->fft_);
        release(o);
    }

    Status setTaps(const T* pTaps) {
        const Area a = area(0);
        const int tapsLen = kept_ + 1;
        memcpy(a.x, pTaps, size_t(tapsLen) * sizeof(T));
        memset(a.x + tapsLen, 0, size_t(fftLen_ - tapsLen) * sizeof(T));
        if (Status s = Transform::forward(a.x, fft_, a.scratch)) return s;
        memcpy(spectrum_, a.x, size_t(fftLen_) * sizeof(T));
        return StatusOk;
    }

    // `count` outputs. load(to, n, m) brings the samples x[n] .. x[n+m-1] of the signal, store(y, n, m) takes the outputs of as many; before x[0] stand the tapsLen - 1
    // samples of `past`. A run of blocks goes to each of `team` threads, and every sample is loaded before the output in its place is stored.
    template <class Load, class Store> Status run(const T* past, int count, int team, Load load, Store store) const {
        const int step = fftLen_ - kept_, blocks = (count - 1) / step + 1, shares = std::min(team, blocks);
        const auto first = [=](int share) { return int(int64_t{share} * blocks / shares); };
        memcpy(area(0).past, past, size_t(kept_) * sizeof(T));
        for (int u = 1; u < shares; ++u) load(area(u).past, ptrdiff_t{first(u)} * step - kept_, kept_);
        const auto share = [=, this](int u, int) {
            const Area a = area(u);
            for (int b = first(u); b < first(u + 1); ++b) {
                const ptrdiff_t at = ptrdiff_t{b} * step;
                const int fresh = int(std::min<ptrdiff_t>(step, count - at));
                memcpy(a.x, a.past, size_t(kept_) * sizeof(T));
                load(a.x + kept_, at, fresh);
                memcpy(a.past, a.x + fresh, size_t(kept_) * sizeof(T));
                memset(a.x + kept_ + fresh, 0, size_t(fftLen_ - kept_ - fresh) * sizeof(T));
                if (Status s = convolve(a)) return s;
                store(a.x + kept_, at, fresh);
            }
            return StatusOk;
        };
        return shares == 1 ? share(0, 0) : parallelUnits(shares, shares, share);
    }

private:
    // Where one thread works: a block, the samples before the next one, and the transform's scratch.
    struct Area {
        Area(void* block, uint64_t fftLen, int kept, int scratchBytes) {
            Carve c(block);
            x = c.take<T>(fftLen);
            scratch = c.take<uint8_t>(uint64_t(scratchBytes));
            past = c.take<T>(uint64_t(kept));
            bytes = c.size();
        }
        T *x, *past;
        uint8_t* scratch;
        uint64_t bytes;
    };
    static uint64_t whole(uint64_t bytes) { return (bytes + 63) & ~uint64_t{63}; }   // cache lines

    OverlapSave(typename Transform::Spec* fft, int scratchBytes, int kept, int fftLen, T* spectrum, uint64_t areaBytes)
        : fft_(fft), spectrum_(spectrum), areaBytes_(areaBytes), scratchBytes_(scratchBytes), kept_(kept), fftLen_(fftLen) {}

    Area area(int thread) const {
        auto* const areas = reinterpret_cast<unsigned char*>(spectrum_) + whole(uint64_t(fftLen_) * sizeof(T));
        return {areas + areaBytes_ * uint64_t(thread), uint64_t(fftLen_), kept_, scratchBytes_};
    }

    Status convolve(const Area& a) const {
        Status s = Transform::forward(a.x, fft_, a.scratch);
        if (s == StatusOk) s = Transform::multiply(spectrum_, a.x, fftLen_);
        if (s == StatusOk) s = Transform::inverse(a.x, fft_, a.scratch);
        return s;
    }

    typename Transform::Spec* fft_;
    T* spectrum_;   // of the taps, zeros behind them
    uint64_t areaBytes_;
    int scratchBytes_, kept_, fftLen_;
};

}   // namespace tevs
