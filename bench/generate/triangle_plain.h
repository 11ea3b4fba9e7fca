#pragma once

#include <cstdint>

namespace plain {

// Step by step, turned back at its peaks.
template <class T> void triangle(T* dst, int len, double magn, double rFreq, double phase);

}   // namespace plain
