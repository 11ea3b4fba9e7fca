/* The formants of the loudest vowel of a recording, by linear prediction, and the recording spoken by coarse prediction.
 *
 *     formants IN.wav OUT.txt OUT.wav
 *
 * 30 ms of the signal, its high frequencies raised, are windowed; from their auto-correlation the Levinson recursion finds the all-pole filter whose response
 * envelops their spectrum, with two poles a kilohertz and two more. Its peaks are the resonances of the throat and mouth (Markel and Gray, Linear Prediction of
 * Speech, 1976). Columns: kHz, spectrum and envelope in dB.
 *
 * Then each 30 ms are taken apart into what prediction leaves and the filter's reflection coefficients. These are cut down to 5 bits each, and the filter that they give
 * puts the signal together again: what a speech coder does to an envelope.
 */
#include <math.h>
#include <tevs.h>

#include "wav.h"

enum { kFftOrder = 11, kPoints = (1 << kFftOrder) / 2 + 1, kMostPoles = 60, kLevels = 32 };

/* x to y, with `poles` samples before either, by prediction from coefficients of kLevels levels each. */
static Status speakCoarsely(const float* x, float* y, int len, int frame, int poles) {
    float levels[kLevels], window[1 << kFftOrder], r[kMostPoles + 1], a[kMostPoles + 1], k[kMostPoles], whitening[kMostPoles + 1], speaking[kMostPoles];
    int code[kMostPoles];
    /* Closest where a coefficient is near 1 and the response follows each small step of it. */
    for (int i = 0; i < kLevels; ++i) levels[i] = sinf(1.5707963f * (float)(2 * i + 1 - kLevels) / kLevels);
    Status s = StatusOk;
    for (int at = 0; at + frame <= len && s == StatusOk; at += frame) {
        if (s == StatusOk) s = tevsWinHamming_32f(x + at, window, frame);
        if (s == StatusOk) s = tevsAutoCorr_32f(window, frame, r, poles + 1);
        if (s == StatusOk) s = tevsLevinson_32f(r, a, poles, k, NULL);
        if (s == StatusOk) s = tevsFlip_32f(a, whitening, poles + 1);
        if (s == StatusOk) s = tevsNearest_32f(k, code, poles, levels, kLevels);
        for (int i = 0; i < poles; ++i) { /* the recursion's step up, from one order to the next */
            const float q = levels[code[i]];
            for (int up = 0, down = i - 1; up <= down; ++up, --down) {
                const float below = a[up + 1], above = a[down + 1];
                a[up + 1] = below + q * above;
                a[down + 1] = above + q * below;
            }
            a[i + 1] = q;
        }
        if (s == StatusOk) s = tevsFlip_32f(a + 1, speaking, poles);
        for (int n = at; n < at + frame && s == StatusOk; ++n) {
            float left, predicted;
            s = tevsDotProd_32f(whitening, x + n - poles, poles + 1, &left);
            if (s == StatusOk) s = tevsDotProd_32f(speaking, y + n - poles, poles, &predicted);
            y[n] = left - predicted;
        }
    }
    return s;
}

int main(int argc, char** argv) {
    Wav wav = {0};
    FILE* out = argc == 4 && readWav(argv[1], &wav) == 0 ? fopen(argv[2], "w") : NULL;
    if (!out) {
        fprintf(stderr, "usage: formants IN.wav OUT.txt OUT.wav\n");
        return 1;
    }
    const int frame = (int)wav.rate * 3 / 100, poles = (int)wav.rate / 500 + 2;
    float* signal = tevsMalloc_32f(wav.len + kMostPoles);
    float* spoken = tevsMalloc_32f(wav.len + kMostPoles);
    float* padded = tevsMalloc_32f(1 << kFftOrder);
    Complex32f* bins = tevsMalloc_32fc(kPoints);
    FFTSpec_R_32f* fft;
    if (!signal || !spoken || !padded || !bins || frame > 1 << kFftOrder || frame > wav.len || poles > kMostPoles ||
        tevsFFTInitAlloc_R_32f(&fft, kFftOrder, NoScale, HintNone) != StatusOk)
        return 1;

    float *const x = signal + kMostPoles, *const y = spoken + kMostPoles; /* silence before them */
    if (tevsZero_32f(signal, kMostPoles) != StatusOk || tevsZero_32f(spoken, wav.len + kMostPoles) != StatusOk) return 1;
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

    before = 0;
    s = speakCoarsely(x, y, wav.len, frame, poles);
    if (s == StatusOk) s = tevsDeEmphasis_32f_I(y, wav.len, 0.95, &before);
    if (s == StatusOk) s = tevsConvert_32f16s_Sfs(y, wav.samples, wav.len, RoundNearest, 0);
    if (s != StatusOk || writeWav(argv[3], &wav)) return 1;
    printf("spoken again by coefficients of 5 bits, %.0f bit/s beside what prediction leaves\n", 5.0 * poles * wav.rate / frame);
    tevsFFTFree_R_32f(fft);
    tevsFree(signal);
    tevsFree(spoken);
    tevsFree(padded);
    tevsFree(bins);
    free(wav.samples);
    return fclose(out) ? 1 : 0;
}
