/* The formants of the loudest vowel of a recording, by linear prediction.
 *
 *     formants IN.wav OUT.txt
 *
 * 30 ms of the signal, its high frequencies raised, are windowed; from their auto-correlation the Levinson recursion finds the all-pole filter whose response
 * envelops their spectrum, with two poles a kilohertz and two more. Its peaks are the resonances of the throat and mouth (Markel and Gray, Linear Prediction of
 * Speech, 1976). Columns: kHz, spectrum and envelope in dB.
 */
#include <math.h>
#include <tevs.h>

#include "wav.h"

enum { kFftOrder = 11, kPoints = (1 << kFftOrder) / 2 + 1, kMostPoles = 60 };

int main(int argc, char** argv) {
    Wav wav = {0};
    FILE* out = argc == 3 && readWav(argv[1], &wav) == 0 ? fopen(argv[2], "w") : NULL;
    if (!out) {
        fprintf(stderr, "usage: formants IN.wav OUT.txt\n");
        return 1;
    }
    const int frame = (int)wav.rate * 3 / 100, poles = (int)wav.rate / 500 + 2;
    float* x = tevsMalloc_32f(wav.len);
    float* padded = tevsMalloc_32f(1 << kFftOrder);
    Complex32f* bins = tevsMalloc_32fc(kPoints);
    FFTSpec_R_32f* fft;
    if (!x || !padded || !bins || frame > 1 << kFftOrder || frame > wav.len || poles > kMostPoles ||
        tevsFFTInitAlloc_R_32f(&fft, kFftOrder, NoScale, HintNone) != StatusOk)
        return 1;

    double before = 0;
    float loudest = 0;
    int at = 0;
    if (tevsConvert_16s32f(wav.samples, x, wav.len) != StatusOk || tevsPreEmphasis_32f_I(x, wav.len, 0.95, &before) != StatusOk) return 1;
    for (int start = 0; start + frame <= wav.len; start += frame / 3) {
        float norm;
        if (tevsNorm_L2_32f(x + start, frame, &norm) != StatusOk) return 1;
        if (norm > loudest) {
            loudest = norm;
            at = start;
        }
    }

    float r[kMostPoles + 1], a[kMostPoles + 1], reflection[kMostPoles], energy, level[kPoints];
    double taps[2 * (kMostPoles + 1)] = {0}, frequency[kPoints];
    Complex64f envelope[kPoints];
    Status s = tevsZero_32f(padded, 1 << kFftOrder);
    if (s == StatusOk) s = tevsWinHamming_32f(x + at, padded, frame);
    if (s == StatusOk) s = tevsAutoCorr_32f(padded, frame, r, poles + 1);
    if (s == StatusOk) s = tevsLevinson_32f(r, a, poles, reflection, &energy);
    if (s == StatusOk) s = tevsFFTFwd_RToCCS_32f(padded, &bins[0].re, fft, NULL);
    if (s == StatusOk) s = tevsMagnitude_32fc(bins, level, kPoints);
    taps[0] = sqrt(energy);
    for (int k = 0; k <= poles; ++k) taps[poles + 1 + k] = a[k];
    for (int i = 0; i < kPoints; ++i) frequency[i] = 0.5 * i / (kPoints - 1);
    if (s == StatusOk) s = tevsIIRResponse_64f(taps, poles, frequency, envelope, kPoints);
    if (s != StatusOk) {
        fprintf(stderr, "formants: %s\n", tevsGetStatusString(s));
        return 1;
    }

    printf("the loudest vowel is at %.2f s; prediction from %d samples leaves %.1f %% of its energy\nformants at", (double)at / wav.rate, poles,
           100 * energy / r[0]);
    double earlier[2] = {0, 0};
    for (int i = 0; i < kPoints; ++i) {
        const double hz = frequency[i] * wav.rate, high = hypot(envelope[i].re, envelope[i].im);
        fprintf(out, "%.4f %.2f %.2f\n", hz / 1000, 20 * log10(level[i] + 1e-3), 20 * log10(high));
        if (i > 1 && earlier[1] > earlier[0] && earlier[1] > high) printf(" %.0f", frequency[i - 1] * wav.rate);
        earlier[0] = earlier[1];
        earlier[1] = high;
    }
    printf(" Hz\n");
    tevsFFTFree_R_32f(fft);
    tevsFree(x);
    tevsFree(padded);
    tevsFree(bins);
    free(wav.samples);
    return fclose(out) ? 1 : 0;
}
