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
#include "transform/float_fft.h"
#include "vector/samples.h"

namespace tevs {

template <class T> class OverlapSave {
public:
    // Blocks of 2^order points, more than tapsLen, and a work area for each of `threads` threads, or null where there is no memory. Taps come with setTaps().
    static OverlapSave* create(int tapsLen, int order, int threads) {
        const uint64_t fftLen = uint64_t{1} << order, head = cacheLines(sizeof(OverlapSave));
        auto* const block = allocate<unsigned char>(head + FloatFft<T>::bytes(order));
        if (!block) return nullptr;
        auto* const o = new (block) OverlapSave(FloatFft<T>::build(block + head, order, ScaleInvByN), tapsLen - 1, int(fftLen));
        o->areaBytes_ = cacheLines(Area(nullptr, *o).bytes);
        o->spectrum_ = static_cast<T*>(allocate(cacheLines(fftLen * sizeof(T)) + uint64_t(threads) * o->areaBytes_));
        if (o->spectrum_) return o;
        destroy(o);
        return nullptr;
    }
    static void destroy(OverlapSave* o) {
        if (o) release(o->spectrum_);
        release(o);
    }

    template <class S> void setTaps(const S* pTaps) {
        const Area a = area(0);
        toStored(pTaps, a.x, kept_ + 1);
        memset(a.x + kept_ + 1, 0, size_t(fftLen_ - kept_ - 1) * sizeof(T));
        fft_->forward(a.x, spectrum_, a.work);
    }

    // `count` outputs. load(to, n, m) brings the samples x[n] .. x[n+m-1] of the signal, store(y, n, m) takes the outputs of as many; before x[0] stand the tapsLen - 1
    // samples of `past`, or zeros where that is null. A run of blocks goes to each of `team` threads, and every sample is loaded before the output in its place is stored.
    template <class Load, class Store> void filter(const T* past, int count, int team, Load load, Store store) const {
        const int step = fftLen_ - kept_, blocks = (count - 1) / step + 1, shares = std::min(team, blocks);
        const auto first = [=](int share) { return int(int64_t{share} * blocks / shares); };
        if (past)
            memcpy(area(0).past, past, size_t(kept_) * sizeof(T));
        else
            memset(area(0).past, 0, size_t(kept_) * sizeof(T));
        for (int u = 1; u < shares; ++u) load(area(u).past, ptrdiff_t{first(u)} * step - kept_, kept_);
        const auto share = [=, this](int u) {
            const Area a = area(u);
            for (int b = first(u); b < first(u + 1); ++b) {
                const ptrdiff_t at = ptrdiff_t{b} * step;
                const int fresh = int(std::min<ptrdiff_t>(step, count - at));
                memcpy(a.x, a.past, size_t(kept_) * sizeof(T));
                load(a.x + kept_, at, fresh);
                memcpy(a.past, a.x + fresh, size_t(kept_) * sizeof(T));
                memset(a.x + kept_ + fresh, 0, size_t(fftLen_ - kept_ - fresh) * sizeof(T));
                fft_->forward(a.x, a.x, a.work);
                fft_->multiply(spectrum_, a.x);
                fft_->inverse(a.x, a.x, a.work);
                store(a.x + kept_, at, fresh);
            }
        };
        parallelUnits(shares, shares, share);
    }

private:
    OverlapSave(FloatFft<T>* fft, int kept, int fftLen) : fft_(fft), kept_(kept), fftLen_(fftLen) {}

    // Where one thread works: a block, the samples before the next one, and the transform's scratch.
    struct Area {
        Area(void* block, const OverlapSave& o) {
            Carve c(block);
            x = c.take<T>(uint64_t(o.fftLen_));
            work = c.take<uint8_t>(o.fft_->workBytes());
            past = c.take<T>(uint64_t(o.kept_));
            bytes = c.size();
        }
        T *x, *past;
        uint8_t* work;
        uint64_t bytes;
    };
    Area area(int thread) const {
        auto* const areas = reinterpret_cast<unsigned char*>(spectrum_) + cacheLines(uint64_t(fftLen_) * sizeof(T));
        return {areas + areaBytes_ * uint64_t(thread), *this};
    }
    static uint64_t cacheLines(uint64_t bytes) { return (bytes + 63) & ~uint64_t{63}; }

    FloatFft<T>* const fft_;
    const int kept_, fftLen_;
    T* spectrum_ = nullptr;   // of the taps, zeros behind them; then the areas
    uint64_t areaBytes_ = 0;
};

}   // namespace tevs
