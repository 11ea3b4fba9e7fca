/* Every filter of a telephone line, designed from its edges when the program starts, and measured by what comes out of it.
 *
 *     line_filters OUT.txt
 *
 * Writes the designed and the measured response of each, in dB over frequency, and prints sizes, edges and the time that a design took.
 */
#include <math.h>

#include "program.h"

enum { kRate = 8000, kPoints = 400, kLen = 16384, kRuns = 50, kMost = 6 };

typedef struct {
    const char* name;
    double low, high;         /* edges in Hz; 0 for none */
    int sections, taps;       /* one of the two is 0 */
    double best;              /* seconds for a design */
    double response[kPoints]; /* designed, then measured */
    double measured[kPoints];
} Filter;

static double frequency(int k) { return 0.5 * (k + 0.5) / kPoints; }
static double toDecibels(double power) { return 10 * log10(power + 1e-30); }

/* The gain of an impulse response, from a real transform of it. */
static void measure(Filter* f, const double* impulse) {
    double rFreq[kPoints];
    Complex64f h[kPoints];
    for (int k = 0; k < kPoints; ++k) rFreq[k] = frequency(k);
    must(tevsFIRResponse_64f(impulse, kLen, rFreq, h, kPoints), "tevsFIRResponse_64f");
    for (int k = 0; k < kPoints; ++k) f->measured[k] = toDecibels(h[k].re * h[k].re + h[k].im * h[k].im);
}
static void respond(Filter* f, const double* taps) {
    double rFreq[kPoints];
    Complex64f h[kPoints];
    for (int k = 0; k < kPoints; ++k) rFreq[k] = frequency(k);
    must(f->taps ? tevsFIRResponse_64f(taps, f->taps, rFreq, h, kPoints) : tevsIIRResponse_BiQuad_64f(taps, f->sections, rFreq, h, kPoints), "response");
    for (int k = 0; k < kPoints; ++k) f->response[k] = toDecibels(h[k].re * h[k].re + h[k].im * h[k].im);
}

/* An impulse in single precision through the filter. */
static void filter(Filter* f, const double* taps) {
    float* const x = tevsMalloc_32f(kLen);
    double* const wide = tevsMalloc_64f(kLen);
    if (!x || !wide) must(StatusNoMemory, "impulse");
    must(tevsZero_32f(x, kLen), "tevsZero_32f");
    x[0] = 1;
    if (f->taps) {
        FIRState64f_32f* state;
        must(tevsFIRInitAlloc64f_32f(&state, taps, f->taps, NULL), "tevsFIRInitAlloc64f_32f");
        must(tevsFIR64f_32f_I(x, kLen, state), "tevsFIR64f_32f_I");
        tevsFIRFree64f_32f(state);
    } else {
        IIRState64f_32f* state;
        must(tevsIIRInitAlloc64f_BiQuad_32f(&state, taps, f->sections, NULL), "tevsIIRInitAlloc64f_BiQuad_32f");
        must(tevsIIR64f_32f_I(x, kLen, state), "tevsIIR64f_32f_I");
        tevsIIRFree64f_32f(state);
    }
    must(tevsConvert_32f64f(x, wide, kLen), "tevsConvert_32f64f");
    measure(f, wide);
    tevsFree(wide);
    tevsFree(x);
}

int main(int argc, char** argv) {
    if (argc != 2) {
        fprintf(stderr, "usage: line_filters OUT.txt\n");
        return 2;
    }
    /* How many: the least order and the estimated number of taps that reach what is asked. */
    int channelOrder, humOrder, antiAliasTaps;
    float alpha;
    must(tevsIIRGenOrder_64f(3400.0 / kRate, 3950.0 / kRate, 0.1, 45, &channelOrder), "tevsIIRGenOrder_64f");
    must(tevsIIRGenOrder_64f(300.0 / kRate, 100.0 / kRate, 0.1, 45, &humOrder), "tevsIIRGenOrder_64f");
    must(tevsFIRGenKaiser_64f(400.0 / kRate, 60, &antiAliasTaps, &alpha), "tevsFIRGenKaiser_64f");
    Filter filters[kMost] = {{"low-pass, Chebyshev 0.1 dB", 0, 3400, (channelOrder + 1) / 2, 0, 0, {0}, {0}},
                             {"high-pass, Chebyshev 0.1 dB", 300, 0, (humOrder + 1) / 2, 0, 0, {0}, {0}},
                             {"channel, Butterworth", 300, 3400, 4, 0, 0, {0}, {0}},
                             {"notch of the 2100 Hz tone", 2050, 2150, 2, 0, 0, {0}, {0}},
                             {"anti-alias, Kaiser 60 dB", 0, 3200, 0, antiAliasTaps, 0, {0}, {0}},
                             {"modem pulse, root cosine", 0, 600, 0, 129, 0, {0}, {0}}};
    FILE* const file = fopen(argv[1], "w");
    if (!file) {
        perror(argv[1]);
        return 1;
    }
    static double taps[1024];
    printf("%-30s %8s %8s %10s %6s %14s %16s\n", "filter", "low, Hz", "high, Hz", "sections", "taps", "designed, us", "most apart, dB");
    for (int i = 0; i < kMost; ++i) {
        Filter* const f = &filters[i];
        const double low = f->low / kRate, high = f->high / kRate;
        f->best = 1e9;
        for (int run = 0; run < kRuns; ++run) {
            const double begin = now();
            switch (i) {
                case 0:
                    must(tevsIIRGenLowpass_BiQuad_64f(taps, channelOrder, high, 0.1), "tevsIIRGenLowpass_BiQuad_64f");
                    break;
                case 1:
                    must(tevsIIRGenHighpass_BiQuad_64f(taps, humOrder, low, 0.1), "tevsIIRGenHighpass_BiQuad_64f");
                    break;
                case 2:
                    must(tevsIIRGenBandpass_BiQuad_64f(taps, 4, low, high, 0), "tevsIIRGenBandpass_BiQuad_64f");
                    break;
                case 3:
                    must(tevsIIRGenBandstop_BiQuad_64f(taps, 2, low, high, 0), "tevsIIRGenBandstop_BiQuad_64f");
                    break;
                case 4: { /* a window of the caller's: no taper, that window, and the gain divided out */
                    const double zero = 0;
                    Complex64f gain;
                    must(tevsFIRGenLowpass_64f(taps, f->taps, high, TaperNone), "tevsFIRGenLowpass_64f");
                    must(tevsWinKaiser_64f_I(taps, f->taps, alpha), "tevsWinKaiser_64f_I");
                    must(tevsFIRResponse_64f(taps, f->taps, &zero, &gain, 1), "tevsFIRResponse_64f");
                    must(tevsDivC_64f_I(gain.re, taps, f->taps), "tevsDivC_64f_I");
                    break;
                }
                default:
                    must(tevsFIRGenRootCosine_64f(taps, f->taps, 2 * high, 0.25), "tevsFIRGenRootCosine_64f");
            }
            f->best = fmin(f->best, now() - begin);
        }
        respond(f, taps);
        filter(f, taps);
        double apart = 0;
        for (int k = 0; k < kPoints; ++k)
            if (f->response[k] > -60) apart = fmax(apart, fabs(f->response[k] - f->measured[k]));
        printf("%-30s %8.0f %8.0f %10d %6d %14.2f %16.5f\n", f->name, f->low, f->high, f->sections, f->taps, 1e6 * f->best, apart);
    }
    fprintf(file, "# Hz, then designed and measured dB of each filter\n");
    for (int k = 0; k < kPoints; ++k) {
        fprintf(file, "%.1f", frequency(k) * kRate);
        for (int i = 0; i < kMost; ++i) fprintf(file, " %.2f %.2f", fmax(filters[i].response[k], -120), fmax(filters[i].measured[k], -120));
        fprintf(file, "\n");
    }
    fclose(file);
    return 0;
}
