// The SIMD levels. A kernel source is compiled once per level, with TEVS_LEVEL set, and puts everything into its level's namespace.
//
//   level 0   SSE3                       16-byte registers   the base of the 32-bit library
//   level 1   SSE4.1                     16-byte registers   the base of the 64-bit library
//   level 2   AVX2, FMA, F16C, BMI1, 2   32-byte registers   in 32-bit code 16-byte registers
//   level 3   AVX-512 F, BW, DQ, VL      64-byte registers   64-bit only, and only for families that gain by it
//
// A 32-bit process in which anybody has run 256-bit code executes instructions in SSE encoding 3 to 6 times slower until its next context switch: vzeroupper
// does not reach all that the registers' upper halves are marked by. Level 2 there is the same instructions on 16 bytes: in VEX encoding they neither cause
// that nor suffer from it.
#pragma once

#if TEVS_LEVEL >= 3
#define TEVS_REGISTER_BYTES 64
#elif TEVS_LEVEL == 2 && !defined(__i386__)
#define TEVS_REGISTER_BYTES 32
#else
#define TEVS_REGISTER_BYTES 16
#endif

#define TEVS_JOIN2(a, b) a##b
#define TEVS_JOIN(a, b) TEVS_JOIN2(a, b)
#define TEVS_LEVEL_NS TEVS_JOIN(level, TEVS_LEVEL)
