// DFT records: transforms of any length, built in one block of memory and from then on without a failure.
#pragma once

#include <limits.h>
#include <stdint.h>
#include <string.h>

#include "core/args.h"
#include "core/rounding.h"
#include "core/work.h"
#include "transform/float_fft.h"
#include "transform/mixed_radix.h"
#include "transform/spec.h"

namespace tevs {

// A complex transform of any length. A power of two is the FFT's, and so is a convolution of such a length, of which a transform with a prime above kMostPrime is made.
template <class T> struct AnyDft {
    int length;
    int convolution;   // its length, else 0
    uint64_t workBytes;
    T scale[2];   // of forward and inverse; an FFT that is the transform itself has its own
    FftSpec<T>* fft;
    union {
        const T* chirp;      // exp(-pi i k^2 / N)
        const int* powers;   // of a prime as a convolution of N - 1 values: its primitive root's powers g^p for p = 0 .. N - 2, and then g^-p
    };
    const T* spectrum;     // the transform of the chirp's conjugate, or of a prime's roots, wrapped around the convolution's length, over that length
    MixedRadix<T> mixed;   // of the length, or of a convolution that is no power of two
};

// Lays the transform's tables out behind it; over no block it only adds up. interleaved: of such values alone.
template <class T> void planDft(AnyDft<T>& dft, int length, int flag, bool interleaved, T* scratch, Carve& c, bool write);
// By convolution, whatever the length: as long as the next power of two that has the room, or as is fastest.
template <class T> void planChirp(AnyDft<T>& dft, int length, int flag, bool powerOfTwo, T* scratch, Carve& c, bool write);
template <Way way, class T> void runDft(const AnyDft<T>& dft, const Values<const T>& src, const Values<T>& dst, uint8_t* work);

template <class T> struct RealAtOnce {
    typename DftPairKernels<T>::Spectrum* spectrum;
    typename DftPairKernels<T>::RealValues* reals;
    T scale[2];
};

// Of reals: of a power of two the real FFT; else of their pairs, or for an odd length as complex values.
template <class T> struct RealDft {
    int length;
    uint64_t workBytes;
    FftSpec<T>* fft;
    union {
        const T* roots;                // of an even length: exp(-2 pi i k / N)
        const RealAtOnce<T>* atOnce;   // of the shortest, where dft has no length
    };
    AnyDft<T> dft;
};
// inPairs: with the tables that are faster, and longer.
template <class T> void planDft(RealDft<T>& real, int length, int flag, bool inPairs, T* scratch, Carve& c, bool write);
template <class T> void forwardReal(const RealDft<T>& real, const T* src, T* dst, Packing to, uint8_t* work);
template <class T> void inverseReal(const RealDft<T>& real, const T* src, T* dst, Packing from, uint8_t* work);

// The longest transforms that have their work area on the stack.
constexpr int kDftStackBytes = 4096 + 64;

template <class T> bool convolves(const AnyDft<T>& dft) { return dft.convolution != 0; }
template <class T> bool convolves(const RealDft<T>& real) { return real.dft.convolution != 0; }

// What sets the kinds of record apart: their identifier, the transform inside, and whether complex values come in two arrays.
template <uint32_t Id, class Any, class T, bool AreParts = false> struct DftKind {
    using Real = T;
    static constexpr uint32_t kId = Id;
    static constexpr bool kParts = AreParts;

    uint32_t id;
    int32_t length;
    int32_t workBytes;   // scratch of one call as it is reported, 0 for none
    bool owned;
    Any dft;

    static uint64_t reported(const Any& dft) { return dft.length <= 4 ? 0 : dft.workBytes; }
};

// The same of 16-bit samples, through floats.
template <uint32_t Id, class Any, bool AreParts = false> struct ShortDftKind : DftKind<Id, Any, float, AreParts> {
    static constexpr bool kReal = requires(Any any) { any.roots; };
    // Converted samples, and the float transform's own as its record reports it.
    static uint64_t inner(const Any& dft) { return dft.length > 4 && dft.workBytes ? dft.workBytes + kAlignmentRoom : 0; }
    static uint64_t reported(const Any& dft) {
        const auto n = uint64_t(dft.length);
        return n == 1 ? 0 : inner(dft) + (kReal ? 4 * (n + 2) : 8 * n) + kAlignmentRoom;
    }
};

// Builds a record of any kind in a block of its own.
template <class Spec> Status initAllocDft(Spec** ppSpec, int length, int flag) {
    using T = typename Spec::Real;
    if (Status s = Args().ptr(ppSpec).len(length)) return s;
    NearestRounding guard;
    Spec head{};
    const auto plan = [&](T* scratch, Carve& c, bool write) { planDft<T>(head.dft, length, flag, !Spec::kParts, scratch, c, write); };
    Carve size;
    size.take<Spec>(1);
    plan(nullptr, size, false);
    const bool good = goodFlag(flag);
    const uint64_t work = Spec::reported(head.dft);
    const bool fits = work <= INT_MAX && size.size() <= INT_MAX;
    if (good && !fits) return StatusNoMemory;
    // What is wrong with the flag comes after a record that there is no memory for.
    auto* const spec = static_cast<Spec*>(allocate(good ? size.size() : sizeof(Spec)));
    if (!spec) return StatusNoMemory;
    const Scratch scratch(good && convolves(head.dft) ? allocate(head.dft.workBytes) : nullptr);
    if (!good || (convolves(head.dft) && !scratch)) {
        release(spec);
        return good ? StatusNoMemory : StatusFftFlag;
    }
    head.length = length;
    head.workBytes = int(work);
    head.owned = true;
    Carve block(spec);
    block.take<Spec>(1);
    plan(static_cast<T*>(scratch.get()), block, true);
    head.id = Spec::kId;
    memcpy(static_cast<void*>(spec), &head, sizeof head);
    *ppSpec = spec;
    return StatusOk;
}

}   // namespace tevs

// The public names of the records.
struct DFTSpec_C_16sc : tevs::ShortDftKind<10, tevs::AnyDft<float>> {};
struct DFTSpec_C_16s : tevs::ShortDftKind<11, tevs::AnyDft<float>, true> {};
struct DFTSpec_R_16s : tevs::ShortDftKind<12, tevs::RealDft<float>> {};
struct DFTSpec_C_32fc : tevs::DftKind<13, tevs::AnyDft<float>, float> {};
struct DFTSpec_C_32f : tevs::DftKind<14, tevs::AnyDft<float>, float, true> {};
struct DFTSpec_R_32f : tevs::DftKind<15, tevs::RealDft<float>, float> {};
struct DFTSpec_C_64fc : tevs::DftKind<16, tevs::AnyDft<double>, double> {};
struct DFTSpec_C_64f : tevs::DftKind<17, tevs::AnyDft<double>, double, true> {};
struct DFTSpec_R_64f : tevs::DftKind<18, tevs::RealDft<double>, double> {};
struct DFTOutOrdSpec_C_32fc : tevs::DftKind<0x4C4D535E, tevs::AnyDft<float>, float> {};
struct DFTOutOrdSpec_C_64fc : tevs::DftKind<0x4C4D535F, tevs::AnyDft<double>, double> {};
