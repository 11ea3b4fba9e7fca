#pragma once

namespace plain {

template <class T> void sampleUp(const T* x, T* y, int n, int factor, int phase);
template <class T> void sampleDown(const T* x, T* y, int n, int factor);   // n outputs

}   // namespace plain
