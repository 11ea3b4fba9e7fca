/* What the longer examples share: a clock, an end at the first failure, and the files that they leave in a directory. */
#ifndef PROGRAM_H
#define PROGRAM_H

#include <tevs.h>
#include <time.h>

#include "wav.h"

/* Seconds since some time in the past. */
static inline double now(void) {
    struct timespec t;
    timespec_get(&t, TIME_UTC);
    return (double)t.tv_sec + 1e-9 * (double)t.tv_nsec;
}

/* Ends the program where `what` has failed. */
static inline void must(Status status, const char* what) {
    if (status == StatusOk) return;
    fprintf(stderr, "%s: %s\n", what, tevsGetStatusString(status));
    exit(1);
}
static inline void* need(void* memory) {
    if (!memory) must(StatusNoMemory, "buffers");
    return memory;
}

/* A text file dir/name. */
static inline FILE* create(const char* dir, const char* name) {
    char path[4096];
    snprintf(path, sizeof path, "%s/%s", dir, name);
    FILE* const file = fopen(path, "w");
    if (!file) {
        perror(path);
        exit(1);
    }
    return file;
}

/* A recording dir/name. */
static inline void save(const char* dir, const char* name, uint32_t rate, int16_t* samples, int len) {
    char path[4096];
    snprintf(path, sizeof path, "%s/%s", dir, name);
    if (writeWav(path, &(Wav){rate, len, samples})) {
        perror(path);
        exit(1);
    }
}
/* The same of floats between -1 and 1. */
static inline void saveFloats(const char* dir, const char* name, uint32_t rate, const float* x, int len) {
    int16_t* const samples = need(tevsMalloc_16s(len));
    must(tevsConvert_32f16s_Sfs(x, samples, len, RoundNearest, -15), "tevsConvert_32f16s_Sfs");
    save(dir, name, rate, samples, len);
    tevsFree(samples);
}

#endif
