// The loops that a caller would write, left to the compiler's vectoriser.
#pragma once

#include "tevs.h"

namespace plain {

// Products of two Pack spectra of len reals.
template <class T> void mulPack(const T* a, const T* b, T* dst, int len);
template <class T> void mulPackConj(const T* a, T* dst, int len);
void mulPack16s(const int16_t* a, const int16_t* b, int16_t* dst, int len, int scaleFactor);   // scaleFactor >= 1
// The whole spectrum of len values from a Pack or a CCS spectrum.
template <class T, class C> void conjPack(const T* src, C* dst, int len);
template <class T, class C> void conjCcs(const T* src, C* dst, int len);

}   // namespace plain
