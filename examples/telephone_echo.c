/* The channel filter of a telephone line as a cascade of second-order sections, and the echo that comes back from its far end found by an adaptive filter; then a
 * modem's symbols, and an equaliser that takes off what a line did to them.
 *
 *     telephone_echo IN.wav OUTDIR
 *
 * Band-limits a recording of 8 kHz to 300 .. 3400 Hz, recursively and by an FIR filter, then lets it return through an echo path and takes the echo off again.
 * Writes channel.wav, echo.wav, cancelled.wav, channel-response.txt, echo-path.txt, echo-level.txt and constellation.txt into OUTDIR, and prints what each step took.
 */
#include <math.h>

#include "program.h"

enum { kRuns = 20, kBlock = 160, kChannelTaps = 127, kPathLen = 96, kEchoTaps = 128, kPoints = 512 };
static const double kPi = 3.14159265358979323846;

/* ---- The channel filter -------------------------------------------------------------------------------------------------------- */

/* Sections of a Butterworth filter of order 2 pairs, from its analog poles by the bilinear transform (Oppenheim and Schafer, Discrete-Time Signal
 * Processing, section 7.1): low-pass up to `edge`, or high-pass from there on, in units of the sample rate. */
static void butterworth(double edge, int highPass, int pairs, float* taps) {
    const double w = tan(kPi * edge);
    for (int k = 0; k < pairs; ++k, taps += 6) {
        const double q = 2 * sin(kPi * (2 * k + 1) / (4 * pairs)), a0 = 1 + q * w + w * w, gain = highPass ? 1 : w * w;
        taps[0] = taps[2] = (float)gain;
        taps[1] = (float)(highPass ? -2 * gain : 2 * gain);
        taps[3] = (float)a0;
        taps[4] = (float)(2 * (w * w - 1));
        taps[5] = (float)(1 - q * w + w * w);
    }
}

/* The same band by a Hamming-windowed difference of two sincs. */
static void windowedBand(double low, double high, float* taps, int len) {
    for (int k = 0; k < len; ++k) {
        const double t = k - (len - 1) / 2.0;
        taps[k] = (float)(t == 0 ? 2 * (high - low) : (sin(2 * kPi * high * t) - sin(2 * kPi * low * t)) / (kPi * t));
    }
    must(tevsWinHamming_32f_I(taps, len), "tevsWinHamming_32f_I");
}

/* Decibels of the transform of an impulse response of 2 kPoints samples, in place: kPoints of them. */
static void toResponse(float* h) {
    FFTSpec_R_32f* fft;
    float* ccs = tevsMalloc_32f(2 * kPoints + 2);
    int order = 0;
    while (1 << order < 2 * kPoints) ++order;
    must(tevsFFTInitAlloc_R_32f(&fft, order, NoScale, HintNone), "tevsFFTInitAlloc_R_32f");
    if (!ccs) must(StatusNoMemory, "spectrum");
    must(tevsFFTFwd_RToCCS_32f(h, ccs, fft, NULL), "tevsFFTFwd_RToCCS_32f");
    must(tevsPowerSpectr_32fc((const Complex32f*)ccs, h, kPoints), "tevsPowerSpectr_32fc");
    for (int k = 0; k < kPoints; ++k) h[k] = 10 * log10f(h[k] + 1e-12f);
    tevsFFTFree_R_32f(fft);
    tevsFree(ccs);
}

/* ---- The far end ----------------------------------------------------------------------------------------------------------------- */

/* A delay of 2.5 ms, then a ringing that decays: what a hybrid sends back of what it is given. */
static void makeEchoPath(float* path) {
    for (int k = 0; k < kPathLen; ++k) path[k] = k < 20 ? 0 : (float)(0.45 * exp(-(k - 20) / 9.0) * cos(0.9 * (k - 20)));
}

/* ---- A modem ----------------------------------------------------------------------------------------------------------------------- */

static Complex32f decided(Complex32f z) { return (Complex32f){copysignf(0.70710678f, z.re), copysignf(0.70710678f, z.im)}; }

/* QPSK in root raised-cosine pulses at two samples a symbol, over a line with echoes and noise. An equaliser at both samples, one symbol out, learns it from symbols that
 * it knows, and goes on by its own decisions: filter, decide, adapt. Writes the last symbols as they come and as they leave it. */
static void equalise(FILE* file) {
    enum { kSymbols = 4000, kKnown = 1000, kPulse = 33, kLineTaps = 7, kTaps = 21, kDelay = ((kPulse - 1) / 2 + (kTaps - 1) / 2) / 2 };
    static const Complex32f kLine[kLineTaps] = {{1, 0}, {0, 0}, {0.35f, 0.3f}, {0, 0}, {-0.2f, 0.1f}, {0, 0}, {0.1f, -0.1f}};
    double pulse[kPulse];
    Complex32f shape[kPulse], start[kTaps] = {{0, 0}};
    Complex32f *sent = tevsMalloc_32fc(kSymbols), *line = tevsMalloc_32fc(2 * kSymbols), *noise = tevsMalloc_32fc(2 * kSymbols);
    if (!sent || !line || !noise) must(StatusNoMemory, "symbols");
    uint32_t seed = 1;
    must(tevsRandUniform_Direct_32f(&sent->re, 2 * kSymbols, -1, 1, &seed), "tevsRandUniform_Direct_32f");
    must(tevsRandGauss_Direct_32f(&noise->re, 4 * kSymbols, 0, 0.02f, &seed), "tevsRandGauss_Direct_32f");
    for (int n = 0; n < kSymbols; ++n) sent[n] = decided(sent[n]);

    must(tevsFIRGenRootCosine_64f(pulse, kPulse, 0.5, 0.25), "tevsFIRGenRootCosine_64f");
    for (int k = 0; k < kPulse; ++k) shape[k] = (Complex32f){(float)pulse[k], 0};
    FIRState_32fc *sender, *echoes;
    must(tevsFIRMRInitAlloc_32fc(&sender, shape, kPulse, 2, 0, 1, 0, NULL), "tevsFIRMRInitAlloc_32fc");
    must(tevsFIRInitAlloc_32fc(&echoes, kLine, kLineTaps, NULL), "tevsFIRInitAlloc_32fc");
    must(tevsFIR_32fc(sent, line, kSymbols, sender), "tevsFIR_32fc");
    must(tevsFIR_32fc_I(line, 2 * kSymbols, echoes), "tevsFIR_32fc_I");
    must(tevsAdd_32fc_I(noise, line, 2 * kSymbols), "tevsAdd_32fc_I");

    FIRLMSMRState_32fc* equaliser;
    start[(kTaps - 1) / 2].re = 1;
    must(tevsFIRLMSMRInitAlloc_32fc(&equaliser, start, kTaps, 1, 0, 2, 0, NULL), "tevsFIRLMSMRInitAlloc_32fc");
    double off = 0;
    int wrong = 0;
    fprintf(file, "# a symbol as it comes, and as it leaves the equaliser\n");
    for (int n = 0; n < kSymbols; ++n) {
        Complex32f y;
        must(tevsFIRLMSMRFilter_32fc(line + 2 * n, &y, equaliser), "tevsFIRLMSMRFilter_32fc");
        if (n < kDelay) continue;
        const Complex32f is = sent[n - kDelay], want = n < kKnown ? is : decided(y), error = {want.re - y.re, want.im - y.im};
        must(tevsFIRLMSMRAdapt_32fc(&error, 0.1f, 1, equaliser), "tevsFIRLMSMRAdapt_32fc");
        wrong += want.re != is.re || want.im != is.im;
        if (n < kSymbols - 1000) continue;
        off += pow(is.re - y.re, 2) + pow(is.im - y.im, 2);
        fprintf(file, "%.4f %.4f %.4f %.4f\n", line[2 * n].re, line[2 * n].im, y.re, y.im);
    }
    printf("\n%d QPSK symbols over a line with echoes, an equaliser of %d taps: %d wrong after %d known ones; the last 1000 are %.1f dB off\n", kSymbols, kTaps,
           wrong, kKnown, 10 * log10(off / 1000));
    tevsFIRLMSMRFree_32fc(equaliser);
    tevsFIRFree_32fc(echoes);
    tevsFIRFree_32fc(sender);
    tevsFree(noise);
    tevsFree(line);
    tevsFree(sent);
}

static double decibels(const float* x, int len) {
    float norm;
    must(tevsNorm_L2_32f(x, len, &norm), "tevsNorm_L2_32f");
    return 20 * log10(norm / sqrt(len) + 1e-9);
}

int main(int argc, char** argv) {
    Wav wav = {0, 0, NULL};
    if (argc != 3) {
        fprintf(stderr, "usage: telephone_echo IN.wav OUTDIR\n");
        return 2;
    }
    if (readWav(argv[1], &wav)) {
        fprintf(stderr, "telephone_echo: %s is no 16-bit WAV file\n", argv[1]);
        return 1;
    }
    const int len = wav.len;
    const double seconds = (double)len / wav.rate, low = fmin(300.0 / wav.rate, 0.1), high = fmin(3400.0 / wav.rate, 0.45);
    float *x = tevsMalloc_32f(len), *line = tevsMalloc_32f(len), *byFir = tevsMalloc_32f(len), *echo = tevsMalloc_32f(len), *model = tevsMalloc_32f(len);
    if (!x || !line || !byFir || !echo || !model) must(StatusNoMemory, "buffers");
    must(tevsConvert_16s32f_Sfs(wav.samples, x, len, 15), "tevsConvert_16s32f_Sfs");

    enum { kSections = 6 };
    float sections[6 * kSections], taps[kChannelTaps], path[kPathLen], found[kEchoTaps];
    butterworth(low, 1, 3, sections);
    butterworth(high, 0, 3, sections + 18);
    windowedBand(low, high, taps, kChannelTaps);
    makeEchoPath(path);

    double best[3] = {1e9, 1e9, 1e9};
    for (int run = 0; run < kRuns; ++run) {
        IIRState_32f* recursive;
        FIRState_32f *direct, *hybrid;
        FIRLMSState_32f* canceller;
        must(tevsIIRInitAlloc_BiQuad_32f(&recursive, sections, kSections, NULL), "tevsIIRInitAlloc_BiQuad_32f");
        must(tevsFIRInitAlloc_32f(&direct, taps, kChannelTaps, NULL), "tevsFIRInitAlloc_32f");
        must(tevsFIRInitAlloc_32f(&hybrid, path, kPathLen, NULL), "tevsFIRInitAlloc_32f");
        must(tevsFIRLMSInitAlloc_32f(&canceller, NULL, kEchoTaps, NULL, 0), "tevsFIRLMSInitAlloc_32f");
        double spent[3] = {0, 0, 0};
        for (int n = 0; n < len; n += kBlock) { /* in blocks of 20 ms, as they would come off a line */
            const int m = len - n < kBlock ? len - n : kBlock;
            const double begin = now();
            must(tevsIIR_32f(x + n, line + n, m, recursive), "tevsIIR_32f");
            const double middle = now();
            must(tevsFIR_32f(x + n, byFir + n, m, direct), "tevsFIR_32f");
            const double end = now();
            must(tevsFIR_32f(line + n, echo + n, m, hybrid), "tevsFIR_32f");
            const double again = now();
            must(tevsFIRLMS_32f(line + n, echo + n, model + n, m, 0.2f, canceller), "tevsFIRLMS_32f");
            spent[0] += middle - begin;
            spent[1] += end - middle;
            spent[2] += now() - again;
        }
        for (int s = 0; s < 3; ++s) best[s] = fmin(best[s], spent[s]);
        must(tevsFIRLMSGetTaps_32f(canceller, found), "tevsFIRLMSGetTaps_32f");
        tevsFIRLMSFree_32f(canceller);
        tevsFIRFree_32f(hybrid);
        tevsFIRFree_32f(direct);
        tevsIIRFree_32f(recursive);
    }
    printf("%s: %.2f s at %u Hz; %d sections beside %d taps; an echo path of %d samples, %d adaptive taps\n\n", argv[1], seconds, (unsigned)wav.rate, kSections,
           kChannelTaps, kPathLen, kEchoTaps);
    static const char* const kStep[3][2] = {{"channel, recursive", "tevsIIR_32f"}, {"  as FIR filter", "tevsFIR_32f"}, {"echo canceller", "tevsFIRLMS_32f"}};
    printf("%-20s %10s %16s  %s\n", "step", "time, ms", "times real time", "functions");
    for (int s = 0; s < 3; ++s) printf("%-20s %10.3f %16.0f  %s\n", kStep[s][0], 1e3 * best[s], seconds / best[s], kStep[s][1]);

    /* Responses, of impulses through either filter. */
    float response[2][2 * kPoints] = {{1}, {1}};
    IIRState_32f* recursive;
    FIRState_32f* direct;
    must(tevsIIRInitAlloc_BiQuad_32f(&recursive, sections, kSections, NULL), "tevsIIRInitAlloc_BiQuad_32f");
    must(tevsFIRInitAlloc_32f(&direct, taps, kChannelTaps, NULL), "tevsFIRInitAlloc_32f");
    must(tevsIIR_32f_I(response[0], 2 * kPoints, recursive), "tevsIIR_32f_I");
    must(tevsFIR_32f_I(response[1], 2 * kPoints, direct), "tevsFIR_32f_I");
    tevsFIRFree_32f(direct);
    tevsIIRFree_32f(recursive);
    toResponse(response[0]);
    toResponse(response[1]);
    FILE* file = create(argv[2], "channel-response.txt");
    fprintf(file, "# Hz, dB of the sections, dB of the FIR filter\n");
    for (int k = 0; k < kPoints; ++k) fprintf(file, "%.1f %.2f %.2f\n", (double)k * wav.rate / (2 * kPoints), response[0][k], response[1][k]);
    fclose(file);

    /* What is left of the echo, and of the difference between the path and what was found. */
    file = create(argv[2], "echo-path.txt");
    fprintf(file, "# sample, echo path, taps found\n");
    float apart = 0, whole = 0;
    for (int k = 0; k < kEchoTaps; ++k) {
        const float h = k < kPathLen ? path[k] : 0;
        apart += (h - found[k]) * (h - found[k]);
        whole += h * h;
        fprintf(file, "%d %.5f %.5f\n", k, h, found[k]);
    }
    fclose(file);
    saveFloats(argv[2], "channel.wav", wav.rate, line, len);
    saveFloats(argv[2], "echo.wav", wav.rate, echo, len);
    must(tevsSub_32f(model, echo, x, len), "tevsSub_32f"); /* the echo less its model */
    saveFloats(argv[2], "cancelled.wav", wav.rate, x, len);
    file = create(argv[2], "echo-level.txt");
    fprintf(file, "# seconds, dB of the echo, dB of what is left\n");
    const int last = len - len / 4;
    for (int n = 0; n + kBlock <= len; n += kBlock)
        fprintf(file, "%.3f %.2f %.2f\n", (double)n / wav.rate, decibels(echo + n, kBlock), decibels(x + n, kBlock));
    fclose(file);
    printf("\nthe echo in the last quarter: %.1f dB of full scale, %.1f dB left; the taps found are %.1f dB off the path\n", decibels(echo + last, len - last),
           decibels(x + last, len - last), 10 * log10f(apart / whole + 1e-12f));

    file = create(argv[2], "constellation.txt");
    equalise(file);
    fclose(file);

    tevsFree(model);
    tevsFree(echo);
    tevsFree(byFir);
    tevsFree(line);
    tevsFree(x);
    free(wav.samples);
    return 0;
}
