/* The clicks of a worn record, put on a recording and taken off again by medians.
 *
 *     clicks IN.wav OUTDIR
 *
 * A median over a few samples takes out whatever is shorter than half of them, and smooths what is not. So it is put only where the samples are far off it: further
 * than is usual around there, which is a median again, over some ten milliseconds of distances. Writes clicked.wav and repaired.wav into OUTDIR and prints what was gained.
 */
#include <math.h>

#include "program.h"

enum { kRuns = 20, kMask = 9, kAround = 511, kTimesUsual = 8, kFloor = 200 };

/* One to three samples, of up to full scale either way, every 10 ms or so. Returns their number. */
static int addClicks(int16_t* x, int len, int rate) {
    enum { kTake = 3 };
    uint32_t seed = 1954;
    int count = 0;
    int16_t random[kTake];
    for (int n = 0;; ++count) {
        must(tevsRandUniform_Direct_16s(random, kTake, -30000, 30000, &seed), "tevsRandUniform_Direct_16s");
        n += rate / 200 + abs(random[0]) % (rate / 100);
        if (n + 3 > len) return count;
        for (int i = 0; i <= abs(random[1]) % 3; ++i) {
            const int y = x[n + i] + random[2] / (i + 1);
            x[n + i] = (int16_t)(y > 32767 ? 32767 : y < -32768 ? -32768 : y);
        }
    }
}

/* Decibels of the recording over what differs from it. */
static double ratio(const int16_t* clean, const int16_t* x, int len) {
    float signal, error;
    must(tevsNorm_L2_16s32f(clean, len, &signal), "tevsNorm_L2_16s32f");
    must(tevsNormDiff_L2_16s32f(clean, x, len, &error), "tevsNormDiff_L2_16s32f");
    return 20 * log10((double)signal / (error + 1e-9));
}

int main(int argc, char** argv) {
    Wav wav = {0, 0, NULL};
    if (argc != 3 || readWav(argv[1], &wav)) {
        fprintf(stderr, "usage: clicks IN.wav OUTDIR\n");
        return 1;
    }
    const int len = wav.len;
    const double seconds = (double)len / wav.rate;
    int16_t *clicked = tevsMalloc_16s(len), *smooth = tevsMalloc_16s(len), *off = tevsMalloc_16s(len), *usual = tevsMalloc_16s(len),
            *repaired = tevsMalloc_16s(len);
    if (!clicked || !smooth || !off || !usual || !repaired) must(StatusNoMemory, "buffers");
    must(tevsCopy_16s(wav.samples, clicked, len), "tevsCopy_16s");
    const int clicks = addClicks(clicked, len, (int)wav.rate);

    double best[2] = {1e9, 1e9};
    int changed = 0;
    for (int run = 0; run < kRuns; ++run) {
        const double begin = now();
        must(tevsFilterMedian_16s(clicked, smooth, len, kMask), "tevsFilterMedian_16s");
        const double middle = now();
        must(tevsSub_16s_Sfs(smooth, clicked, off, len, 0), "tevsSub_16s_Sfs");
        must(tevsAbs_16s_I(off, len), "tevsAbs_16s_I");
        const double again = now();
        must(tevsFilterMedian_16s(off, usual, len, kAround), "tevsFilterMedian_16s");
        const double end = now();
        changed = 0;
        for (int n = 0; n < len; ++n) {
            const int far = off[n] > kTimesUsual * usual[n] + kFloor;
            repaired[n] = far ? smooth[n] : clicked[n];
            changed += far;
        }
        best[0] = fmin(best[0], middle - begin);
        best[1] = fmin(best[1], end - again);
    }
    printf("%s: %.2f s at %u Hz, %d clicks\n\n", argv[1], seconds, (unsigned)wav.rate, clicks);
    printf("%-20s %10s %16s  %s\n", "step", "time, ms", "times real time", "functions");
    printf("median of %-10d %10.3f %16.0f  tevsFilterMedian_16s\n", kMask, 1e3 * best[0], seconds / best[0]);
    printf("median of %-10d %10.3f %16.0f  tevsFilterMedian_16s\n", kAround, 1e3 * best[1], seconds / best[1]);
    printf("\nthe recording over what is off it: %.1f dB with clicks, %.1f dB with the median everywhere, %.1f dB with %d samples of it\n",
           ratio(wav.samples, clicked, len), ratio(wav.samples, smooth, len), ratio(wav.samples, repaired, len), changed);
    save(argv[2], "clicked.wav", wav.rate, clicked, len);
    save(argv[2], "repaired.wav", wav.rate, repaired, len);
    tevsFree(repaired);
    tevsFree(usual);
    tevsFree(off);
    tevsFree(smooth);
    tevsFree(clicked);
    free(wav.samples);
    return 0;
}
