/* The companion core library: constants, SSE floating-point control, and the number of threads.
 *
 * Independent of tevs.h; the signal library is linked with it and takes its thread count from here.
 */
#ifndef TEVCORE_H
#define TEVCORE_H

#include <stdint.h>

/* clang-format off */
#ifdef __cplusplus
#define TEVCORE_BEGIN _Pragma("GCC visibility push(default)") extern "C" {
#define TEVCORE_END } _Pragma("GCC visibility pop")
#else
#define TEVCORE_BEGIN _Pragma("GCC visibility push(default)")
#define TEVCORE_END _Pragma("GCC visibility pop")
#endif
/* clang-format on */

TEVCORE_BEGIN

/* Quiet NaN with the sign bit clear, and positive infinity. */
extern const float tevConstantOfNAN_32f;
extern const double tevConstantOfNAN_64f;
extern const float tevConstantOfINF_32f;
extern const double tevConstantOfINF_64f;

/* Sets the calling thread's SSE control and status word (MXCSR) and returns the one before. The reserved bits of cw
 * must be 0. */
uint32_t tev_set_cw_ssx(uint32_t cw);

/* Sets only the rounding field of that word and returns the whole word before, ready for tev_set_cw_ssx.
 * rc: 0 to nearest, ties to even; 1 down; 2 up; 3 toward zero. Only its two low bits count. */
uint32_t tev_set_rc_ssx(uint32_t rc);

/* How many threads the signal library asks for where a call is long enough to be shared out; below 1 counts as 1.
 * At load time: OMP_NUM_THREADS if it is set, else the number of processors that the process may use. Filter records
 * size their per-thread areas by it when they are built and never use more threads than they have areas for.
 *
 * The threads of a team belong to the process that started them. In a forked child, the thread that called fork works
 * alone if it has had a team in the parent, and gets the same results. That holds for the teams of this library: a
 * program that has OpenMP regions of its own before it forks sets the number to 1 in the child. */
extern int32_t threads_omp_of_n_tev;
void tevSetNumThreads(int32_t n);
int32_t tevGetNumThreads(void);

TEVCORE_END

#endif
