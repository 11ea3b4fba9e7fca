/* The envelope, the instantaneous frequency and the strongest line of a recording, every 20 ms.
 *
 *     envelope IN.wav OUT.txt
 *
 * The analytic signal of the whole recording gives envelope and frequency, whatever its length is; each frame of rate/50 samples (960 at 48 kHz) is transformed as it is, not
 * padded to a power of two. Columns: seconds, envelope (root mean square), frequency (weighted by the squared envelope, Hz), strongest line of the frame (Hz).
 */
#include <math.h>
#include <tevs.h>

#include "wav.h"

int main(int argc, char** argv) {
    Wav wav = {0};
    FILE* out = argc == 3 && readWav(argv[1], &wav) == 0 ? fopen(argv[2], "w") : NULL;
    if (!out) {
        fprintf(stderr, "usage: envelope IN.wav OUT.txt\n");
        return 1;
    }
    const int frame = (int)wav.rate / 50;
    HilbertSpec_16s32fc* hilbert;
    DFTSpec_R_32f* dft;
    Complex32f* analytic = tevsMalloc_32fc(wav.len);
    Complex32f* line = tevsMalloc_32fc(frame / 2 + 1);
    float *samples = tevsMalloc_32f(frame), *level = tevsMalloc_32f(frame / 2 + 1);
    if (!analytic || !line || !samples || !level || tevsHilbertInitAlloc_16s32fc(&hilbert, wav.len, HintNone) != StatusOk ||
        tevsDFTInitAlloc_R_32f(&dft, frame, ScaleFwdByN, HintNone) != StatusOk || tevsHilbert_16s32fc(wav.samples, analytic, hilbert) != StatusOk)
        return 1;
    double loudest = 0, at = 0, pitch = 0;
    int frames = 0;
    for (int start = 0; start + frame < wav.len; start += frame, ++frames) {
        /* The phase of y[t+1] conj(y[t]) is the turn from one sample to the next, and its magnitude the weight. */
        double power = 0, turn = 0, weight = 0;
        for (int t = start; t < start + frame; ++t) {
            const Complex32f a = analytic[t], b = analytic[t + 1];
            const double re = (double)b.re * a.re + (double)b.im * a.im, im = (double)b.im * a.re - (double)b.re * a.im, r = hypot(re, im);
            power += (double)a.re * a.re + (double)a.im * a.im;
            turn += r * atan2(im, re);
            weight += r;
        }
        int top = 0;
        float most;
        Status s = tevsConvert_16s32f(wav.samples + start, samples, frame);
        if (s == StatusOk) s = tevsWinHann_32f_I(samples, frame);
        if (s == StatusOk) s = tevsDFTFwd_RToCCS_32f(samples, &line[0].re, dft, NULL);
        if (s == StatusOk) s = tevsMagnitude_32fc(line, level, frame / 2 + 1);
        if (s == StatusOk) s = tevsMaxIndx_32f(level, frame / 2 + 1, &most, &top);
        if (s != StatusOk) return 1;
        const double envelope = sqrt(power / (2 * frame)), frequency = weight > 0 ? turn / weight * wav.rate / 6.283185307179586 : 0;
        fprintf(out, "%.3f %.1f %.1f %d\n", (double)start / wav.rate, envelope, frequency, top * 50);
        if (envelope > loudest) {
            loudest = envelope;
            at = (double)start / wav.rate;
            pitch = frequency;
        }
    }
    printf("%d frames of %d samples; loudest at %.2f s: rms %.0f, %.0f Hz\n", frames, frame, at, loudest, pitch);
    tevsHilbertFree_16s32fc(hilbert);
    tevsDFTFree_R_32f(dft);
    tevsFree(analytic);
    tevsFree(line);
    tevsFree(samples);
    tevsFree(level);
    free(wav.samples);
    return fclose(out) != 0;
}
