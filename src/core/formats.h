// Sample formats that C has no type for, as units of memory. The interface names them by their bytes (uint8_t) or bits (uint16_t).
#pragma once

#include <stdint.h>

namespace tevs {

// Packed integers, least significant byte first.
struct Int24 {
    uint8_t bytes[3];
};
struct UInt24 {
    uint8_t bytes[3];
};

// IEEE 754 binary16.
struct Half {
    uint16_t bits;
};

static_assert(sizeof(Int24) == 3 && sizeof(UInt24) == 3 && sizeof(Half) == 2);

}   // namespace tevs
