/* What the line codes of a telephone exchange cost, and how it quiets a noisy line.
 *
 *     telephone_codes IN.wav OUTDIR
 *
 * Compands and expands a recording at 8 kHz by both laws of G.711 and prints the distance in dB; adds noise to the recording and takes it out by coring. Writes
 * companded.wav, noisy.wav and cored.wav into OUTDIR.
 */
#include <math.h>

#include "program.h"

enum { kRate = 8000, kRuns = 20, kNoise = 60 };

/* The least time of a step, which is repeated. */
#define TIMED(best, call)                                       \
    do {                                                        \
        (best) = 1e9;                                           \
        for (int run = 0; run < kRuns; ++run) {                 \
            const double start = now();                         \
            must(call, #call);                                  \
            if (now() - start < (best)) (best) = now() - start; \
        }                                                       \
    } while (0)

/* Of a signal and what became of it, in dB. */
static double distance(const int16_t* was, const int16_t* is, int len) {
    float signal, error;
    must(tevsNorm_L2_16s32f(was, len, &signal), "tevsNorm_L2_16s32f");
    must(tevsNormDiff_L2_16s32f(was, is, len, &error), "tevsNormDiff_L2_16s32f");
    return 20 * log10((double)signal / (double)error);
}

/* ---- Line codes -------------------------------------------------------------------------------------------------------------------- */

static void companding(const Wav* wav, const char* dir) {
    typedef Status (*Encode)(const int16_t*, uint8_t*, int);
    typedef Status (*Decode)(const uint8_t*, int16_t*, int);
    static const struct {
        const char* name;
        Encode encode;
        Decode decode;
    } kLaw[2] = {{"A-law", tevsLinToALaw_16s8u, tevsALawToLin_8u16s}, {"mu-law", tevsLinToMuLaw_16s8u, tevsMuLawToLin_8u16s}};
    uint8_t *codes = tevsMalloc_8u(wav->len), *other = tevsMalloc_8u(wav->len);
    int16_t* back = tevsMalloc_16s(wav->len);
    if (!codes || !other || !back) must(StatusNoMemory, "buffers");

    printf("%-24s %14s %22s\n", "line code", "distance, dB", "ns a sample, to/from");
    for (int law = 0; law < 2; ++law) {
        double to, from;
        TIMED(to, kLaw[law].encode(wav->samples, codes, wav->len));
        TIMED(from, kLaw[law].decode(codes, back, wav->len));
        printf("%-24s %14.2f %13.3f %8.3f\n", kLaw[law].name, distance(wav->samples, back, wav->len), 1e9 * to / wav->len, 1e9 * from / wav->len);
        if (law == 0) save(dir, "companded.wav", kRate, back, wav->len);
    }
    double there, again; /* across a border and back */
    TIMED(there, tevsMuLawToALaw_8u(codes, other, wav->len));
    TIMED(again, tevsALawToMuLaw_8u(other, codes, wav->len));
    must(tevsMuLawToLin_8u16s(codes, back, wav->len), "tevsMuLawToLin_8u16s");
    printf("%-24s %14.2f %13.3f %8.3f\n\n", "mu-law, A-law, mu-law", distance(wav->samples, back, wav->len), 1e9 * there / wav->len, 1e9 * again / wav->len);
    tevsFree(back);
    tevsFree(other);
    tevsFree(codes);
}

/* ---- Coring: what is below the level of the noise is taken away, and the rest comes down by as much ----------------------------------------- */

/* Noise of that many steps at most, by a congruential generator. */
static int16_t noise(uint32_t* seed, int steps) {
    *seed = *seed * 1664525u + 1013904223u;
    return (int16_t)((int)(*seed >> 16) % (2 * steps + 1) - steps);
}

static void coring(const Wav* wav, const char* dir) {
    int16_t *noisy = tevsMalloc_16s(wav->len), *cored = tevsMalloc_16s(wav->len);
    if (!noisy || !cored) must(StatusNoMemory, "buffers");
    uint32_t seed = 7;
    for (int n = 0; n < wav->len; ++n) noisy[n] = noise(&seed, kNoise);
    must(tevsAdd_16s_ISfs(wav->samples, noisy, wav->len, 0), "tevsAdd_16s_ISfs");
    double best;
    TIMED(best, tevsThreshold_GTAbs_16s(noisy, cored, wav->len, kNoise));
    must(tevsSub_16s_ISfs(cored, noisy, wav->len, 0), "tevsSub_16s_ISfs"); /* noisy - limited */

    int quiet = 0; /* samples of digital silence once the noise is gone */
    for (int n = 0; n < wav->len; ++n) quiet += noisy[n] == 0;
    printf("noise of %d steps cored: %.1f %% of the samples are silent, %.2f dB from the recording; %.3f ns a sample\n", kNoise, 100.0 * quiet / wav->len,
           distance(wav->samples, noisy, wav->len), 1e9 * best / wav->len);
    save(dir, "cored.wav", kRate, noisy, wav->len);
    must(tevsAdd_16s_ISfs(cored, noisy, wav->len, 0), "tevsAdd_16s_ISfs");
    save(dir, "noisy.wav", kRate, noisy, wav->len);
    tevsFree(cored);
    tevsFree(noisy);
}

int main(int argc, char** argv) {
    Wav wav = {0, 0, NULL};
    if (argc != 3) {
        fprintf(stderr, "usage: telephone_codes IN.wav OUTDIR\n");
        return 2;
    }
    if (readWav(argv[1], &wav) || wav.rate != kRate) {
        fprintf(stderr, "telephone_codes: %s is no 16-bit WAV file at %d Hz\n", argv[1], kRate);
        return 1;
    }
    companding(&wav, argv[2]);
    coring(&wav, argv[2]);
    free(wav.samples);
    return 0;
}
