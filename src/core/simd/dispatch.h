// Kernel tables. A family `movement` declares its table of kernel pointers once, in movement.table.h:
//
//     struct MovementKernels { void (*flip8)(const uint8_t* src, uint8_t* dst, int len); ... };
//     TEVS_KERNEL_TABLE(MovementKernels, movement, 2)
//
// movement.kern.cpp, compiled once per level, defines levelN::movement; the exports call through tevs::movement->flip8(...).
// The number is the family's highest level; FMA after it lets fma() fuse at level 2, as it does at 3: for what fma() is for (vec.h).
// cmake/Families.cmake reads these lines and writes families.h, the list of all tables; dispatch.cpp points each at its level when the library is loaded.
#pragma once

#include "core/simd/level.h"

#ifdef __i386__
#define TEVS_BASE_NS level0
constexpr int kBaseLevel = 0;
constexpr int kHighestLevel = 2;
#else
#define TEVS_BASE_NS level1
constexpr int kBaseLevel = 1;
constexpr int kHighestLevel = 3;
#endif

#define TEVS_KERNEL_TABLE(Type, name, top, ...) \
    namespace tevs {                            \
    namespace level0 {                          \
    extern const Type name;                     \
    }                                           \
    namespace level1 {                          \
    extern const Type name;                     \
    }                                           \
    namespace level2 {                          \
    extern const Type name;                     \
    }                                           \
    namespace level3 {                          \
    extern const Type name;                     \
    }                                           \
    extern const Type* name;                    \
    constexpr int name##TopLevel = top;         \
    }
