// The SIMD levels. A kernel source is compiled once per level, with TEVS_LEVEL set, and puts everything into its level's namespace.
//
//   level 0   SSE3                       16-byte registers   the base of the 32-bit library
//   level 1   SSE4.1                     16-byte registers   the base of the 64-bit library
//   level 2   AVX2, FMA, F16C, BMI1, 2   32-byte registers   64-bit only: 256-bit code leaves a 32-bit process slow until its next context switch
//   level 3   AVX-512 F, BW, DQ, VL      64-byte registers   64-bit only, and only for families that gain by it
#pragma once

#define TEVS_JOIN2(a, b) a##b
#define TEVS_JOIN(a, b) TEVS_JOIN2(a, b)
#define TEVS_LEVEL_NS TEVS_JOIN(level, TEVS_LEVEL)
