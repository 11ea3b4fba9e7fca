// The parallel frame: a few long-running operations share their output out over an OpenMP team.
//
// Each operation compares its length with a fixed threshold and calls these only above it. A team of one (a single processor, a refused or nested fork, a forked
// process) runs the same body and does all the work. The members of a team compute under the caller's SSE control word, so that results are the same for any
// number of threads; the one of the x87 unit stays theirs, and bodies go without that unit.
#pragma once

#include <omp.h>

#include <algorithm>

#include "core/rounding.h"
#include "tevcore.h"
#include "tevs/types.h"

namespace tevs {

// Whether this thread may work with others. The OpenMP runtime keeps a thread's team for its next one; of a team from before a fork the child has the record but not
// the threads, and would wait for them for ever.
bool mayShare();
void noteTeam();

// Calls body(thread, team) in each member of a team of up to `threads`. Bodies cannot fail: what they need was taken before.
template <class Body> void inTeam(int threads, Body body) {
    if (threads <= 1) return body(0, 1);
    noteTeam();
    const uint32_t word = _mm_getcsr() & ~uint32_t{_MM_EXCEPT_MASK};
#pragma omp parallel num_threads(threads)
    {
        const ControlWordOf caller(word);
        body(omp_get_thread_num(), omp_get_num_threads());
    }
}

// Calls body(first, count, thread) on disjoint ranges that cover 0 .. count-1: an equal share for each thread, the last also taking the rest.
// thread < threads, so a body may use work areas that were laid out for `threads` of them.
template <class Body> void parallelRanges(int count, int threads, Body body) {
    inTeam(threads, [&](int t, int team) {
        const int share = count / team, mine = t == team - 1 ? count - t * share : share;
        if (mine > 0) body(t * share, mine, t);
    });
}

// Calls body(unit) for units 0 .. units-1, dealt round-robin.
template <class Body> void parallelUnits(int units, int threads, Body body) {
    inTeam(threads, [&](int t, int team) {
        for (int u = t; u < units; u += team) body(u);
    });
}

// The number of areas for a record that is built now. Its size and its layout follow from one call: another thread may set the count at any time, so it is
// read once for each decision.
inline int threadsAtBuild() { return std::max(int(__atomic_load_n(&threads_omp_of_n_tev, __ATOMIC_RELAXED)), 1); }

// The number of threads to ask for now, at most `areas`, the number that a record was laid out for.
inline int teamSize(int areas) {
    const int threads = std::min(threadsAtBuild(), areas);
    return threads > 1 && mayShare() ? threads : 1;
}

}   // namespace tevs
