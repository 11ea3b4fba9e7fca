/* calls FILE...          runs the inputs of these files, as libFuzzer leaves them
 * calls COUNT [SEED]     makes COUNT calls with inputs from a generator, from the input SEED on
 *
 * Without libFuzzer: the inputs are the same on every machine, and no feedback chooses them.
 */
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "fuzz.h"

static unsigned long long seed;

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) /* which bring a malloc of their own, and options for this */
/* A record of any size could be had, and would take its time: for one of more than this there is no memory. */
void* __libc_malloc(size_t n);
__attribute__((visibility("default"))) void* malloc(size_t n) { return n > (size_t)16 << 20 ? NULL : __libc_malloc(n); }
#endif

static void stop(int number) {
    fprintf(stderr, "signal %d at input %llu: ", number, seed);
    describe_call();
    signal(number, SIG_DFL);
    raise(number);
}

int main(int argc, char** argv) {
    static const int kSignals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};
    for (size_t k = 0; k < sizeof kSignals / sizeof *kSignals; ++k) signal(kSignals[k], stop);
    static uint8_t data[1 << 16];
    char* end = NULL;
    const unsigned long long count = argc > 1 ? strtoull(argv[1], &end, 10) : 0;
    if (argc < 2) return fprintf(stderr, "usage: %s FILE...\n       %s COUNT [SEED]\n", argv[0], argv[0]), 2;
    if (*end) {
        for (int k = 1; k < argc; ++k) {
            FILE* file = fopen(argv[k], "rb");
            if (!file) return perror(argv[k]), 2;
            const size_t size = fread(data, 1, sizeof data, file);
            fclose(file);
            LLVMFuzzerTestOneInput(data, size);
        }
        return 0;
    }
    for (seed = argc > 2 ? strtoull(argv[2], NULL, 10) : 0; calls_made < count; ++seed) {
        /* splitmix64: each input has a sequence of its own, and so can be run alone. */
        uint64_t state = seed * 0xd1342543de82ef95u;
        for (size_t k = 0; k < 256; k += 8) {
            uint64_t z = state += 0x9e3779b97f4a7c15u;
            z = (z ^ z >> 30) * 0xbf58476d1ce4e5b9u;
            z = (z ^ z >> 27) * 0x94d049bb133111ebu;
            z ^= z >> 31;
            memcpy(data + k, &z, 8);
        }
        LLVMFuzzerTestOneInput(data, 256);
    }
    printf("%llu calls, inputs up to %llu\n", calls_made, seed);
    return 0;
}
