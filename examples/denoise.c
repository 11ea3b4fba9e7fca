/* Noise taken off a recording by wavelets, and the recording packed without loss.
 *
 *     denoise IN.wav OUTDIR
 *
 * Adds noise, transforms the sum by five levels of an 8-tap symlet, shrinks the details towards 0 by a threshold (Donoho and Johnstone, Ideal Spatial Adaptation by Wavelet
 * Shrinkage, 1994) and transforms back. Writes noisy-wavelet.wav, denoised.wav and denoise.txt into OUTDIR; prints the gain, what each step took, and the entropy of
 * the recording before and after five levels of lossless 5/3 lifting.
 */
#include <math.h>

#include "program.h"

enum { kLevels = 5, kTaps = 8, kRuns = 20 };

/* Decibels of x over what y differs from it. */
static double ratio(const float* x, const float* y, int len) {
    float signal, noise;
    must(tevsNorm_L2_32f(x, len, &signal), "tevsNorm_L2_32f");
    must(tevsNormDiff_L2_32f(x, y, len, &noise), "tevsNormDiff_L2_32f");
    return 20 * log10(signal / noise);
}

/* The noise's deviation is that of the finest details where there is little else: their median magnitude over 0.6745. */
static int ascending(const void* a, const void* b) {
    const float x = *(const float*)a, y = *(const float*)b;
    return (x > y) - (x < y);
}
static float deviation(const float* details, int len) {
    float* const sorted = need(tevsMalloc_32f(len));
    must(tevsAbs_32f(details, sorted, len), "tevsAbs_32f");
    qsort(sorted, (size_t)len, sizeof *sorted, ascending);
    const float median = sorted[len / 2];
    tevsFree(sorted);
    return median / 0.6745f;
}

/* Everything nearer to 0 than the threshold becomes 0, all else comes nearer by that. */
static void shrink(float* x, int len, float threshold) {
    float* const inner = need(tevsMalloc_32f(len));
    must(tevsThreshold_LTValGTVal_32f(x, inner, len, -threshold, -threshold, threshold, threshold), "tevsThreshold_LTValGTVal_32f");
    must(tevsSub_32f_I(inner, x, len), "tevsSub_32f_I");
    tevsFree(inner);
}

/* Bits a sample that a coder of single values would need. */
static double entropy(const int16_t* x, int len) {
    static int count[65536];
    double bits = 0;
    memset(count, 0, sizeof count);
    for (int n = 0; n < len; ++n) ++count[x[n] + 32768];
    for (int v = 0; v < 65536; ++v)
        if (count[v]) bits -= (double)count[v] / len * log2((double)count[v] / len);
    return bits;
}

int main(int argc, char** argv) {
    Wav wav = {0, 0, NULL};
    if (argc != 3) {
        fprintf(stderr, "usage: denoise IN.wav OUTDIR\n");
        return 2;
    }
    if (readWav(argv[1], &wav)) {
        fprintf(stderr, "denoise: %s is no 16-bit WAV file\n", argv[1]);
        return 1;
    }
    const int len = wav.len;
    const double seconds = (double)len / wav.rate;
    float *clean = need(tevsMalloc_32f(len)), *noisy = need(tevsMalloc_32f(len)), *y = need(tevsMalloc_32f(len));
    must(tevsConvert_16s32f_Sfs(wav.samples, clean, len, 15), "tevsConvert_16s32f_Sfs");

    /* Noise 10 dB below the recording. */
    float norm;
    unsigned seed = 20061;
    must(tevsNorm_L2_32f(clean, len, &norm), "tevsNorm_L2_32f");
    must(tevsRandGauss_Direct_32f(noisy, len, 0, norm / sqrtf((float)len) * 0.316f, &seed), "tevsRandGauss_Direct_32f");
    must(tevsAdd_32f_I(clean, noisy, len), "tevsAdd_32f_I");

    float taps[4][kTaps];
    DWTSpec_32f* dwt;
    int specSize, bufferSize, coefLen;
    must(tevsWtGenTaps_32f(taps[0], taps[1], taps[2], taps[3], kTaps, WaveletSymlet), "tevsWtGenTaps_32f");
    must(tevsDWTGetSize_32f(len, kLevels, kTaps, ExtMirror, &specSize, &bufferSize, &coefLen), "tevsDWTGetSize_32f");
    must(tevsDWTInitAlloc_32f(&dwt, len, kLevels, taps[0], taps[1], taps[2], taps[3], kTaps, ExtMirror), "tevsDWTInitAlloc_32f");
    float* const c = need(tevsMalloc_32f(coefLen));
    uint8_t* const buffer = need(tevsMalloc_8u(bufferSize));

    int offset, bandLen;
    float threshold = 0;
    double best[3] = {1e9, 1e9, 1e9};
    for (int run = 0; run < kRuns; ++run) {
        const double begin = now();
        must(tevsDWTFwd_32f(noisy, c, dwt, buffer), "tevsDWTFwd_32f");
        const double middle = now();
        must(tevsDWTGetBand_32f(dwt, 1, &offset, &bandLen), "tevsDWTGetBand_32f");
        if (run == 0) threshold = 1.5f * deviation(c + offset, bandLen);
        for (int level = 1; level <= kLevels; ++level) {
            must(tevsDWTGetBand_32f(dwt, level, &offset, &bandLen), "tevsDWTGetBand_32f");
            shrink(c + offset, bandLen, threshold);
        }
        const double end = now();
        must(tevsDWTInv_32f(c, y, dwt, buffer), "tevsDWTInv_32f");
        best[0] = fmin(best[0], middle - begin);
        best[1] = fmin(best[1], end - middle);
        best[2] = fmin(best[2], now() - end);
    }
    const double before = ratio(clean, noisy, len), after = ratio(clean, y, len);
    printf("%s: %.2f s at %u Hz; %d levels of a symlet of %d taps, threshold %.4f\n\n", argv[1], seconds, (unsigned)wav.rate, kLevels, kTaps, threshold);
    static const char* const kStep[3][2] = {{"coefficients", "tevsDWTFwd_32f"}, {"threshold", "tevsThreshold_LTValGTVal_32f"}, {"signal", "tevsDWTInv_32f"}};
    printf("%-20s %10s %16s  %s\n", "step", "time, ms", "times real time", "functions");
    for (int s = 0; s < 3; ++s) printf("%-20s %10.3f %16.0f  %s\n", kStep[s][0], 1e3 * best[s], seconds / best[s], kStep[s][1]);
    printf("\nsignal to noise: %.1f dB before, %.1f dB after, gain %.1f dB\n", before, after, after - before);

    saveFloats(argv[2], "noisy-wavelet.wav", wav.rate, noisy, len);
    saveFloats(argv[2], "denoised.wav", wav.rate, y, len);
    FILE* const file = create(argv[2], "denoise.txt");
    fprintf(file, "# seconds, recording, with noise, denoised\n");
    for (int n = 0; n < len; ++n) fprintf(file, "%.5f %.4f %.4f %.4f\n", (double)n / wav.rate, clean[n], noisy[n], y[n]);
    fclose(file);

    /* Without loss: low values in front, their details behind them, level by level. */
    int16_t *packed = need(tevsMalloc_16s(len)), *part = need(tevsMalloc_16s(len));
    must(tevsCopy_16s(wav.samples, packed, len), "tevsCopy_16s");
    int lens[kLevels + 1] = {len}, levels = 0;
    for (; levels < kLevels && lens[levels] > 1; ++levels) {
        const int n = lens[levels], low = lens[levels + 1] = (n + 1) / 2;
        must(tevsCopy_16s(packed, part, n), "tevsCopy_16s");
        must(tevsWtLiftAnalysis_16s(part, packed, packed + low, n, Lift53), "tevsWtLiftAnalysis_16s");
    }
    const double bits[2] = {entropy(wav.samples, len), entropy(packed, len)};
    while (levels-- > 0) {
        const int n = lens[levels], low = lens[levels + 1];
        must(tevsCopy_16s(packed, part, n), "tevsCopy_16s");
        must(tevsWtLiftSynthesis_16s(part, part + low, packed, n, Lift53), "tevsWtLiftSynthesis_16s");
    }
    printf("5/3 lifting: %.2f bits a sample before, %.2f after; the recording comes back %s\n", bits[0], bits[1],
           memcmp(packed, wav.samples, (size_t)len * 2) ? "CHANGED" : "bit for bit");

    tevsFree(part);
    tevsFree(packed);
    tevsFree(buffer);
    tevsFree(c);
    tevsDWTFree_32f(dwt);
    tevsFree(y);
    tevsFree(noisy);
    tevsFree(clean);
    free(wav.samples);
    return 0;
}
