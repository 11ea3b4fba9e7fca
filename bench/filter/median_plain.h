#pragma once

namespace plain {

// Medians of windows of 3: minima and maxima, which the compiler makes vectors of.
template <class T> void median3(const T* x, T* y, int n);
// A selection for each sample; windows that reach past the ends are cut off there.
template <class T> void medianBySelection(const T* x, T* y, int n, int mask);
// The sorted window, out of which a sample is taken and into which one is put.
template <class T> void medianByInsertion(const T* x, T* y, int n, int mask);

}   // namespace plain
