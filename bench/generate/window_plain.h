#pragma once

namespace plain {

// The formula at each sample.
template <class T> void bartlett(const T* src, T* dst, int len);
template <class T> void hann(const T* src, T* dst, int len);
template <class T> void blackman(const T* src, T* dst, int len, T alpha);
template <class T> void kaiser(const T* src, T* dst, int len, T alpha);

}   // namespace plain
