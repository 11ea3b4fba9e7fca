#include "core/parallel.h"

#include <pthread.h>

namespace tevs {
namespace {

thread_local bool hasTeam = false, teamIsGone = false;

__attribute__((constructor)) void watchForks() {
    pthread_atfork(nullptr, nullptr, [] { teamIsGone |= hasTeam; });
}

}   // namespace

bool mayShare() { return !teamIsGone; }
void noteTeam() { hasTeam = true; }

}   // namespace tevs
