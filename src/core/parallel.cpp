#include "core/parallel.h"

#include <pthread.h>

namespace tevs {
namespace {

// In the room that the loader keeps in every thread: the first use of any other takes memory, and ends the process where there is none.
[[gnu::tls_model("initial-exec")]] thread_local bool hasTeam = false, teamIsGone = false;

__attribute__((constructor)) void watchForks() {
    pthread_atfork(nullptr, nullptr, [] { teamIsGone |= hasTeam; });
}

}   // namespace

bool mayShare() { return !teamIsGone; }
void noteTeam() { hasTeam = true; }

}   // namespace tevs
