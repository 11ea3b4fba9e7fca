// The parallel frame: a few long-running operations share their output out over an OpenMP team.
//
// Each operation compares its length with a fixed threshold and calls these only above it. A team of one (a single processor, a refused or nested fork)
// runs the same body and does all the work.
#pragma once

#include <omp.h>

#include <algorithm>
#include <limits>

#include "core/rounding.h"
#include "tevcore.h"
#include "tevs/types.h"

namespace tevs {

// Calls body(first, count) on disjoint ranges that cover 0 .. count-1: an equal share for each thread, the last also taking the rest.
template <class Body> void parallelRanges(int count, int threads, Body body) {
#pragma omp parallel num_threads(std::max(threads, 1))
    {
        NearestRounding guard;   // each thread has a control word of its own
        const int team = omp_get_num_threads(), t = omp_get_thread_num();
        const int share = count / team;
        const int mine = t == team - 1 ? count - t * share : share;
        if (mine > 0) body(t * share, mine);
    }
}

// Calls body(unit, thread) for units 0 .. units-1, dealt round-robin, and returns the lowest status: any error wins over success.
// thread < threads, so a body may use work areas that were laid out for `threads` of them.
template <class Body> Status parallelUnits(int units, int threads, Body body) {
    int lowest = StatusOk;
#pragma omp parallel num_threads(std::max(threads, 1)) reduction(min : lowest)
    {
        NearestRounding guard;
        const int team = omp_get_num_threads(), t = omp_get_thread_num();
        for (int u = t; u < units; u += team) lowest = std::min<int>(lowest, body(u, t));
    }
    return Status(lowest);
}

// The number of threads to ask for now, at most `areas`, the number that a record was laid out for. Another thread may set the count at any time, so it is read
// once for each decision, and everything that follows from the decision goes by that value.
inline int teamSize(int areas) { return std::clamp(int(__atomic_load_n(&threads_omp_of_n_tev, __ATOMIC_RELAXED)), 1, std::max(areas, 1)); }

// The number of areas for a record that is built now. Its size and its layout follow from one call.
inline int threadsAtBuild() { return teamSize(std::numeric_limits<int>::max()); }

}   // namespace tevs
