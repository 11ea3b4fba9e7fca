#include "tevcore.h"

#include <omp.h>
#include <pmmintrin.h>

#include <limits>

const float tevConstantOfNAN_32f = std::numeric_limits<float>::quiet_NaN();
const double tevConstantOfNAN_64f = std::numeric_limits<double>::quiet_NaN();
const float tevConstantOfINF_32f = std::numeric_limits<float>::infinity();
const double tevConstantOfINF_64f = std::numeric_limits<double>::infinity();

int32_t threads_omp_of_n_tev = 1;

// The OpenMP runtime has read OMP_NUM_THREADS and the affinity mask by now.
__attribute__((constructor)) static void countThreads() { threads_omp_of_n_tev = omp_get_max_threads(); }

uint32_t tev_set_cw_ssx(uint32_t cw) {
    const uint32_t before = _mm_getcsr();
    _mm_setcsr(cw);
    return before;
}

uint32_t tev_set_rc_ssx(uint32_t rc) {
    const uint32_t before = _mm_getcsr();
    _mm_setcsr((before & ~uint32_t{_MM_ROUND_MASK}) | (rc & 3) << 13);
    return before;
}

// Other threads may be reading it.
void tevSetNumThreads(int32_t n) { __atomic_store_n(&threads_omp_of_n_tev, n, __ATOMIC_RELAXED); }

int32_t tevGetNumThreads(void) { return __atomic_load_n(&threads_omp_of_n_tev, __ATOMIC_RELAXED); }
