#pragma once

#include <cstdint>

namespace plain {

template <class T> void ramp(T* dst, int len, float offset, float slope);
template <class T> void jaehne(T* dst, int len, double magn);

}   // namespace plain
