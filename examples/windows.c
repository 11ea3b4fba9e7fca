/* What each window makes of a spectral line.
 *
 *     windows OUT.txt
 *
 * Windows a constant of 64 samples, takes its spectrum 128 times as fine as 64 samples would have it, writes the levels (columns: offset from the line in bins, then dB
 * for each window), and prints how wide the line is at half its amplitude, how far the highest side lobe lies below it, and what it loses half-way between two bins.
 */
#include <math.h>
#include <stdio.h>
#include <tevs.h>

enum { kLen = 64, kFine = 128, kOrder = 13, kPoints = 1 << kOrder, kShown = 16 * kFine, kWindows = 7 };

static Status none(double* x, int len) { return tevsMulC_64f_I(1, x, len); }
static Status kaiser(double* x, int len) { return tevsWinKaiser_64f_I(x, len, 2 * 8.0f / (float)(len - 1)); }

static const struct {
    const char* name;
    Status (*apply)(double* x, int len);
} kWindow[kWindows] = {{"none", none},
                       {"Bartlett", tevsWinBartlett_64f_I},
                       {"Hann", tevsWinHann_64f_I},
                       {"Hamming", tevsWinHamming_64f_I},
                       {"Blackman", tevsWinBlackmanStd_64f_I},
                       {"Blackman, optimal", tevsWinBlackmanOpt_64f_I},
                       {"Kaiser, beta 8", kaiser}};

static double level[kWindows][kPoints / 2 + 1]; /* dB below the line's top */

static Status spectrum(Status (*apply)(double*, int), const FFTSpec_R_64f* fft, double* level) {
    static double signal[kPoints];
    static Complex64f line[kPoints / 2 + 1];
    tevsZero_64f(signal, kPoints);
    tevsSet_64f(1, signal, kLen);
    Status s = apply(signal, kLen);
    if (s == StatusOk) s = tevsFFTFwd_RToCCS_64f(signal, &line[0].re, fft, NULL);
    if (s == StatusOk) s = tevsMagnitude_64fc(line, level, kPoints / 2 + 1);
    if (s != StatusOk) return s;
    const double top = level[0];
    for (int k = 0; k <= kPoints / 2; ++k) level[k] = 20 * log10(level[k] / top + 1e-12);
    return StatusOk;
}

int main(int argc, char** argv) {
    FILE* out = argc == 2 ? fopen(argv[1], "w") : NULL;
    FFTSpec_R_64f* fft;
    if (!out || tevsFFTInitAlloc_R_64f(&fft, kOrder, NoScale, HintNone) != StatusOk) {
        fprintf(stderr, "usage: windows OUT.txt\n");
        return 1;
    }
    printf("%-20s %16s %16s %16s\n", "window", "width, bins", "side lobe, dB", "scalloping, dB");
    for (int w = 0; w < kWindows; ++w) {
        if (spectrum(kWindow[w].apply, fft, level[w]) != StatusOk) return 1;
        int half = 0, valley = 0;
        while (level[w][half] > -6.0206) ++half;
        while (level[w][valley + 1] < level[w][valley]) ++valley;
        double lobe = -300;
        for (int k = valley; k <= kPoints / 2; ++k) lobe = level[w][k] > lobe ? level[w][k] : lobe;
        printf("%-20s %16.2f %16.1f %16.2f\n", kWindow[w].name, 2.0 * half / kFine, lobe, level[w][kFine / 2]);
    }
    for (int k = 0; k <= kShown; ++k) {
        fprintf(out, "%g", (double)k / kFine);
        for (int w = 0; w < kWindows; ++w) fprintf(out, " %.2f", level[w][k]);
        fprintf(out, "\n");
    }
    tevsFFTFree_R_64f(fft);
    return fclose(out) != 0;
}
