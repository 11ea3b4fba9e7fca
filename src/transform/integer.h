// Transforms of integer samples through those of floats.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "core/rounding.h"
#include "core/work.h"
#include "vector/samples.h"

namespace tevs {

// Up to here a call converts on its stack: the longest complex FFTs with a work area of less than a page's allocation, orders 8 (16 bits) and 7.
constexpr int kIntegerStackBytes = 4096 + 64;

// Converts `taken` scalars of each source array, calls body(x, work) to transform them where they are, array behind array of n, and rounds the `given` scalars of each
// result once. The work area of workBytes holds the float transform's, of innerBytes, and x. Where that is not on the stack, each has 16 bytes to align in.
// All is read before anything is written: any array may be any other.
template <class T, class S, class D, size_t Arrays, class Body>
Status throughFloats(const S* const (&src)[Arrays], D* const (&dst)[Arrays], int n, int taken, int given, int scaleFactor, uint8_t* pBuffer, uint64_t workBytes,
                     uint64_t innerBytes, const Body& body) {
    return withWorkOnStack<kIntegerStackBytes>(pBuffer, workBytes, [&](uint8_t* work) {
        // Vectors of 32 bytes that each cross a line of the cache cost half as much time again. The float transform's area comes first: converted reals and their
        // spectrum are no multiple of 32 bytes.
        if (reinterpret_cast<uintptr_t>(work) % 32 != 0) work += 16;
        NearestRounding guard;
        T* const x = reinterpret_cast<T*>(work + innerBytes);
        for (size_t a = 0; a < Arrays; ++a) toStored(src[a], x + a * size_t(n), taken);
        body(x, work);
        for (size_t a = 0; a < Arrays; ++a) fromStored(x + a * size_t(n), dst[a], given, scaleFactor);
    });
}

}   // namespace tevs
