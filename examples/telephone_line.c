/* What a telephone line leaves of a recording.
 *
 *     telephone_line IN.wav OUTDIR
 *
 * Low-passes a recording to the telephone band, measures its level and spectrum before and after, and takes it down to 8 kHz in three ways. Writes line.wav,
 * line-8k.wav, spectrum.txt and spectrogram-{before,after}.txt into OUTDIR, and prints what each step took.
 */
#include <math.h>

#include "program.h"

enum { kRuns = 20, kBlockMilliseconds = 20, kLineRate = 8000 };
static const double kPi = 3.14159265358979323846;

/* ---- The filter: windowed sinc, Kaiser window -------------------------------------------------------------------------------- */

/* Modified Bessel function of the first kind and order 0, by its power series. */
static double besselI0(double x) {
    double term = 1, sum = 1;
    for (int k = 1; term > 1e-17 * sum; ++k) sum += term *= (x / 2 / k) * (x / 2 / k);
    return sum;
}

/* Taps of a low-pass that passes up to `pass` and stops from `stop` on, in units of the sample rate, by `decibels`. Kaiser's estimate of the length
 * and of the window's shape: Oppenheim and Schafer, Discrete-Time Signal Processing, section 7.6. */
static float* designLowPass(double pass, double stop, double decibels, int* tapsLen) {
    const double beta = 0.1102 * (decibels - 8.7), cutoff = (pass + stop) / 2;
    const int len = (int)ceil((decibels - 7.95) / (2.285 * 2 * kPi * (stop - pass))) | 1;
    float* taps = tevsMalloc_32f(len);
    if (!taps) return NULL;
    for (int k = 0; k < len; ++k) {
        const double t = k - (len - 1) / 2.0, r = 2 * t / (len - 1);
        const double sinc = t == 0 ? 2 * cutoff : sin(2 * kPi * cutoff * t) / (kPi * t);
        taps[k] = (float)(sinc * besselI0(beta * sqrt(1 - r * r)) / besselI0(beta));
    }
    *tapsLen = len;
    return taps;
}

/* ---- Down to 8 kHz ---------------------------------------------------------------------------------------------------------------- */

/* Of `down` samples, `up` are left. The taps are those of a low-pass at `up` times the recording's rate, where zeros lie between its samples: they take their part of the
 * level, and the taps make up for it. */
typedef struct {
    int up, down, tapsLen, iterations, atOnce; /* an iteration makes `up` samples */
    float* taps;
} Decimation;

static int commonDivisor(int a, int b) { return b == 0 ? a : commonDivisor(b, a % b); }

static Decimation makeDecimation(const Wav* wav, double pass, double stop) {
    const int common = commonDivisor((int)wav->rate, kLineRate);
    Decimation d = {.up = kLineRate / common, .down = (int)wav->rate / common};
    d.taps = designLowPass(pass / wav->rate / d.up, stop / wav->rate / d.up, 70, &d.tapsLen);
    if (!d.taps) must(StatusNoMemory, "taps");
    must(tevsMulC_32f_I((float)d.up, d.taps, d.tapsLen), "tevsMulC_32f_I");
    d.iterations = wav->len / d.down;
    d.atOnce = (int)wav->rate * kBlockMilliseconds / 1000 / d.down;
    if (d.atOnce < 1) d.atOnce = 1;
    return d;
}

static void byRecord(const Decimation* d, const float* x, float* y) {
    FIRMRState_32f* filter;
    must(tevsFIRMRInitAlloc_32f(&filter, d->taps, d->tapsLen, d->up, 0, d->down, 0, NULL), "tevsFIRMRInitAlloc_32f");
    for (int n = 0; n < d->iterations; n += d->atOnce)
        must(tevsFIR_32f(x + n * d->down, y + n * d->up, d->iterations - n < d->atOnce ? d->iterations - n : d->atOnce, filter), "tevsFIR_32f");
    tevsFIRFree_32f(filter);
}

static void stateless(const Decimation* d, const float* x, float* y, float* past) {
    must(tevsZero_32f(past, d->tapsLen), "tevsZero_32f");
    for (int n = 0; n < d->iterations; n += d->atOnce)
        must(tevsFIRMR_Direct_32f(x + n * d->down, y + n * d->up, d->iterations - n < d->atOnce ? d->iterations - n : d->atOnce, d->taps, d->tapsLen, d->up, 0,
                                  d->down, 0, past),
             "tevsFIRMR_Direct_32f");
}

/* Filters at the higher rate, of which most is then dropped: for whole factors only. */
static void byDropping(const Decimation* d, const float* x, float* y, float* all) {
    FIRState_32f* filter;
    must(tevsFIRInitAlloc_32f(&filter, d->taps, d->tapsLen, NULL), "tevsFIRInitAlloc_32f");
    for (int n = 0; n < d->iterations; n += d->atOnce) {
        const int count = d->iterations - n < d->atOnce ? d->iterations - n : d->atOnce;
        must(tevsFIR_32f(x + n * d->down, all, count * d->down, filter), "tevsFIR_32f");
        for (int m = 0; m < count; ++m) y[n + m] = all[m * d->down];
    }
    tevsFIRFree_32f(filter);
}

/* ---- The spectrum: power of overlapped, Hann-windowed frames -------------------------------------------------------------------- */

typedef struct {
    int order, len, hop, frames, bins;
    float *window, *frame, *ccs;
    uint8_t* work;
    FFTSpec_R_32f* fft;
} Analyser;

static Analyser makeAnalyser(uint32_t rate, int samples) {
    Analyser a = {.order = 5};
    while ((1 << a.order) < (int)rate / 25 && a.order < 15) ++a.order; /* 40 ms or a little more */
    a.len = 1 << a.order;
    a.hop = samples / 1000 > a.len / 4 ? samples / 1000 : a.len / 4; /* at most a thousand frames: a picture shows no more */
    a.bins = a.len / 2 + 1;
    a.frames = samples < a.len ? 1 : 1 + (samples - a.len) / a.hop;
    a.window = tevsMalloc_32f(a.len);
    a.frame = tevsMalloc_32f(a.len);
    a.ccs = tevsMalloc_32f(a.len + 2);
    must(tevsFFTInitAlloc_R_32f(&a.fft, a.order, NoScale, HintNone), "tevsFFTInitAlloc_R_32f");
    int bytes = 0;
    must(tevsFFTGetBufSize_R_32f(a.fft, &bytes), "tevsFFTGetBufSize_R_32f");
    a.work = bytes ? tevsMalloc_8u(bytes) : NULL;
    if (!a.window || !a.frame || !a.ccs || (bytes && !a.work)) must(StatusNoMemory, "analyser");
    for (int n = 0; n < a.len; ++n) a.window[n] = (float)(0.5 - 0.5 * cos(2 * kPi * n / a.len));
    return a;
}

static void freeAnalyser(Analyser* a) {
    tevsFFTFree_R_32f(a->fft);
    tevsFree(a->work);
    tevsFree(a->ccs);
    tevsFree(a->frame);
    tevsFree(a->window);
}

/* power[frame * bins + bin] of 16-bit samples: a sine at full scale has power 1 in its bin. */
static void spectrogram(const Analyser* a, const float* x, int samples, float* power) {
    const float amplitude = 4.0f / (float)a->len / 32768;
    must(tevsZero_32f(a->frame, a->len), "tevsZero_32f");
    for (int f = 0; f < a->frames; ++f, power += a->bins) {
        const int begin = f * a->hop, count = samples - begin < a->len ? samples - begin : a->len;
        must(tevsMul_32f(x + begin, a->window, a->frame, count), "tevsMul_32f");
        must(tevsFFTFwd_RToCCS_32f(a->frame, a->ccs, a->fft, a->work), "tevsFFTFwd_RToCCS_32f");
        must(tevsPowerSpectr_32fc((const Complex32f*)a->ccs, power, a->bins), "tevsPowerSpectr_32fc");
        must(tevsMulC_32f_I(amplitude * amplitude, power, a->bins), "tevsMulC_32f_I");
    }
}

/* The mean of the frames' powers. */
static void meanSpectrum(const Analyser* a, const float* power, float* mean) {
    must(tevsZero_32f(mean, a->bins), "tevsZero_32f");
    for (int f = 0; f < a->frames; ++f) must(tevsAdd_32f_I(power + (size_t)f * (size_t)a->bins, mean, a->bins), "tevsAdd_32f_I");
    must(tevsMulC_32f_I(1.0f / (float)a->frames, mean, a->bins), "tevsMulC_32f_I");
}

/* 10 log10 of powers, none below -140 dB. */
static void toDecibels(float* power, int len) {
    must(tevsAddC_32f_I(1e-14f, power, len), "tevsAddC_32f_I");
    must(tevsLn_32f_I(power, len), "tevsLn_32f_I");
    must(tevsMulC_32f_I(4.3429448190325183f, power, len), "tevsMulC_32f_I");
}

/* ---- Results ------------------------------------------------------------------------------------------------------------------- */

static void writeSpectrum(const char* dir, const Analyser* a, uint32_t rate, const float* before, const float* after) {
    FILE* file = create(dir, "spectrum.txt");
    fprintf(file, "# Hz, dB before, dB after: mean power of %d frames\n", a->frames);
    for (int k = 0; k < a->bins; ++k) fprintf(file, "%.1f %.2f %.2f\n", (double)k * rate / a->len, before[k], after[k]);
    fclose(file);
}

static void writeSpectrogram(const char* dir, const char* name, const Analyser* a, uint32_t rate, const float* decibels) {
    FILE* file = create(dir, name);
    fprintf(file, "# seconds, Hz, dB\n");
    for (int f = 0; f < a->frames; ++f) {
        for (int k = 0; k < a->bins; ++k) fprintf(file, "%.4f %.1f %.1f\n", (f * a->hop + a->len / 2.0) / rate, (double)k * rate / a->len, *decibels++);
        fputc('\n', file);
    }
    fclose(file);
}

typedef struct {
    float peak, rms;
} Level; /* dB of full scale */

static Level levelOf(const int16_t* x, int len) {
    float largest, root;
    must(tevsNorm_Inf_16s32f(x, len, &largest), "tevsNorm_Inf_16s32f");
    must(tevsNorm_L2_16s32f(x, len, &root), "tevsNorm_L2_16s32f");
    return (Level){20 * log10f(largest / 32768), 20 * log10f(root / 32768 / sqrtf((float)len))};
}

/* The steps of the line, each with the fastest of its runs. */
enum { kToFloat, kLowPass, kToInt, kByRecord, kStateless, kByDropping, kLevels, kSpectra, kDecibels, kSteps };
static const char* const kStep[kSteps][2] = {
    {"16-bit to float", "tevsConvert_16s32f"},
    {"low-pass", "tevsFIR_32f"},
    {"float to 16-bit", "tevsConvert_32f16s_Sfs"},
    {"to 8 kHz: record", "tevsFIRMRInitAlloc_32f, tevsFIR_32f"},
    {"  without a record", "tevsFIRMR_Direct_32f"},
    {"  low-pass, drop", "tevsFIR_32f"},
    {"levels", "tevsNorm_Inf_16s32f, tevsNorm_L2_16s32f"},
    {"window, FFT, power", "tevsMul_32f, tevsFFTFwd_RToCCS_32f, tevsPowerSpectr_32fc"},
    {"decibels", "tevsAddC_32f, tevsLn_32f, tevsMulC_32f"},
};

int main(int argc, char** argv) {
    Wav wav = {0, 0, NULL};
    if (argc != 3) {
        fprintf(stderr, "usage: telephone_line IN.wav OUTDIR\n");
        return 2;
    }
    if (readWav(argv[1], &wav)) {
        fprintf(stderr, "telephone_line: %s is no 16-bit WAV file\n", argv[1]);
        return 1;
    }
    const int len = wav.len, block = (int)wav.rate * kBlockMilliseconds / 1000;
    const double seconds = (double)len / wav.rate, stop = fmin(4000, wav.rate / 2.0), pass = 0.85 * stop;

    int tapsLen = 0;
    float* taps = designLowPass(pass / wav.rate, stop / wav.rate, 70, &tapsLen);
    const Decimation decimation = makeDecimation(&wav, pass, stop);
    const int lineLen = decimation.iterations * decimation.up;
    Analyser analyser = makeAnalyser(wav.rate, len);
    float *x = tevsMalloc_32f(len), *y = tevsMalloc_32f(len);
    int16_t* out = tevsMalloc_16s(len);
    const int cells = analyser.frames * analyser.bins;
    float *before = tevsMalloc_32f(cells), *after = tevsMalloc_32f(cells), *mean = tevsMalloc_32f(2 * analyser.bins);
    float *line = tevsMalloc_32f(lineLen + 1), *other = tevsMalloc_32f(lineLen + 1), *past = tevsMalloc_32f(decimation.tapsLen), *all = tevsMalloc_32f(len);
    if (!line || !other || !past || !all || !taps || !x || !y || !out || !before || !after || !mean) must(StatusNoMemory, "buffers");

    double best[kSteps];
    Level was, is;
    float apart = 0;
    for (int s = 0; s < kSteps; ++s) best[s] = 1e9;
    for (int run = 0; run < kRuns; ++run) {
        double mark[kSteps + 1];
        FIRState_32f* filter;
        must(tevsFIRInitAlloc_32f(&filter, taps, tapsLen, NULL), "tevsFIRInitAlloc_32f");

        mark[kToFloat] = now();
        must(tevsConvert_16s32f(wav.samples, x, len), "tevsConvert_16s32f");
        mark[kLowPass] = now();
        for (int n = 0; n < len; n += block) /* in blocks, as they would come off a line; the record carries the filter's past over */
            must(tevsFIR_32f(x + n, y + n, len - n < block ? len - n : block, filter), "tevsFIR_32f");
        mark[kToInt] = now();
        must(tevsConvert_32f16s_Sfs(y, out, len, RoundNearest, 0), "tevsConvert_32f16s_Sfs");
        mark[kByRecord] = now();
        byRecord(&decimation, x, line);
        mark[kStateless] = now();
        stateless(&decimation, x, other, past);
        mark[kByDropping] = now();
        if (decimation.up == 1) byDropping(&decimation, x, other, all);
        mark[kLevels] = now();
        was = levelOf(wav.samples, len);
        is = levelOf(out, len);
        mark[kSpectra] = now();
        spectrogram(&analyser, x, len, before);
        spectrogram(&analyser, y, len, after);
        meanSpectrum(&analyser, before, mean);
        meanSpectrum(&analyser, after, mean + analyser.bins);
        mark[kDecibels] = now();
        toDecibels(before, cells);
        toDecibels(after, cells);
        toDecibels(mean, 2 * analyser.bins);
        mark[kSteps] = now();

        tevsFIRFree_32f(filter);
        for (int s = 0; s < kSteps; ++s) best[s] = fmin(best[s], mark[s + 1] - mark[s]);
    }
    printf("%s: %.2f s at %u Hz; low-pass of %d taps, %.0f to %.0f Hz; spectra of %d frames of %d points\n\n", argv[1], seconds, (unsigned)wav.rate, tapsLen,
           pass, stop, analyser.frames, analyser.len);
    printf("%-20s %10s %16s  %s\n", "step", "time, ms", "times real time", "functions");
    for (int s = 0; s < kSteps; ++s)
        if (s != kByDropping || decimation.up == 1) printf("%-20s %10.3f %16.0f  %s\n", kStep[s][0], 1e3 * best[s], seconds / best[s], kStep[s][1]);
    if (lineLen > 0) must(tevsNormDiff_Inf_32f(line, other, lineLen, &apart), "tevsNormDiff_Inf_32f");
    printf("\n%d/%d of the samples at 8 kHz, %d taps; two ways differ by at most %.2g of a step of 16 bits\n", decimation.up, decimation.down,
           decimation.tapsLen, apart);
    printf("level, dB of full scale: peak %.2f, rms %.2f before; peak %.2f, rms %.2f after\n", was.peak, was.rms, is.peak, is.rms);

    save(argv[2], "line.wav", wav.rate, out, len);
    if (lineLen > 0) must(tevsConvert_32f16s_Sfs(line, out, lineLen, RoundNearest, 0), "tevsConvert_32f16s_Sfs");
    save(argv[2], "line-8k.wav", kLineRate, out, lineLen);
    writeSpectrum(argv[2], &analyser, wav.rate, mean, mean + analyser.bins);
    writeSpectrogram(argv[2], "spectrogram-before.txt", &analyser, wav.rate, before);
    writeSpectrogram(argv[2], "spectrogram-after.txt", &analyser, wav.rate, after);

    tevsFree(all);
    tevsFree(past);
    tevsFree(other);
    tevsFree(line);
    tevsFree(decimation.taps);
    tevsFree(mean);
    tevsFree(after);
    tevsFree(before);
    tevsFree(out);
    tevsFree(y);
    tevsFree(x);
    freeAnalyser(&analyser);
    tevsFree(taps);
    free(wav.samples);
    return 0;
}
