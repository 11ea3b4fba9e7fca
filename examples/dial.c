/* A number dialled and detected.
 *
 *     dial OUTDIR [NUMBER]
 *
 * Dials NUMBER in pairs of tones (ITU-T Q.23), sends it through A-law and noise, and detects it again: one Goertzel value for each of the eight frequencies in blocks of 205
 * samples. Writes dialled.wav into OUTDIR.
 */
#include <math.h>
#include <string.h>

#include "program.h"

enum { kRate = 8000, kBlock = 205, kTone = 400, kPause = 400, kRuns = 20 };

static const char kKeys[] = "123A456B789C*0#D";
static const float kHertz[8] = {697, 770, 852, 941, 1209, 1336, 1477, 1633}; /* rows, then columns */

/* Two oscillators go on through the pauses; each key gives them new frequencies. */
static void dial(const char* number, int16_t* line, double* best) {
    ToneState *row, *column;
    int16_t other[kTone];
    must(tevsToneInitAlloc(&row, 0, 0), "tevsToneInitAlloc");
    must(tevsToneInitAlloc(&column, 0, 0), "tevsToneInitAlloc");
    for (const char* digit = number; *digit; ++digit, line += kTone + kPause) {
        const char* key = strchr(kKeys, *digit);
        if (!key) must(StatusBadArg, "a key is one of 123A456B789C*0#D");
        const int k = (int)(key - kKeys);
        must(tevsToneSetFreq(row, (double)kHertz[k / 4] / kRate, 0), "tevsToneSetFreq");
        must(tevsToneSetFreq(column, (double)kHertz[4 + k % 4] / kRate, 0), "tevsToneSetFreq");
        for (int run = 0; run < kRuns; ++run) {
            const double start = now();
            must(tevsToneSetPhase(row, 0), "tevsToneSetPhase");
            must(tevsToneSetPhase(column, 0), "tevsToneSetPhase");
            must(tevsTone_16s(line + kPause, kTone, 6000, row), "tevsTone_16s");
            must(tevsTone_16s(other, kTone, 6000, column), "tevsTone_16s");
            must(tevsAdd_16s_ISfs(other, line + kPause, kTone, 0), "tevsAdd_16s_ISfs");
            if (now() - start < *best) *best = now() - start;
        }
    }
    must(tevsToneFree(column), "tevsToneFree");
    must(tevsToneFree(row), "tevsToneFree");
}

/* The key of a block, or 0: one row and one column hold most of its power. */
static char keyOf(const float* block, double* best) {
    Complex32f y;
    float power[8], energy;
    const double start = now();
    for (int i = 0; i < 8; ++i) {
        must(tevsGoertz_32f(block, kBlock, &y, kHertz[i] / kRate), "tevsGoertz_32f");
        must(tevsPowerSpectr_32fc(&y, &power[i], 1), "tevsPowerSpectr_32fc");
    }
    if (now() - start < *best) *best = now() - start;
    float row, column;
    int r, c;
    must(tevsMaxIndx_32f(power, 4, &row, &r), "tevsMaxIndx_32f");
    must(tevsMaxIndx_32f(power + 4, 4, &column, &c), "tevsMaxIndx_32f");
    must(tevsNorm_L2_32f(block, kBlock, &energy), "tevsNorm_L2_32f");
    /* A tone alone would give energy^2 * kBlock / 2. */
    return energy > 1000 && row + column > 0.7f * energy * energy * kBlock / 2 && row < 8 * column && column < 8 * row ? kKeys[4 * r + c] : 0;
}

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3) {
        fprintf(stderr, "usage: dial OUTDIR [NUMBER]\n");
        return 2;
    }
    const char* number = argc > 2 ? argv[2] : "0123456789*#ABCD";
    const int len = (int)strlen(number) * (kTone + kPause) + kPause;
    int16_t *line = tevsMalloc_16s(len), *noise = tevsMalloc_16s(len);
    uint8_t* codes = tevsMalloc_8u(len);
    float* heard = tevsMalloc_32f(len);
    if (!line || !noise || !codes || !heard) must(StatusNoMemory, "buffers");
    double tones = 1e9, best = 1e9;
    uint32_t seed = 1;
    must(tevsZero_16s(line, len), "tevsZero_16s");
    dial(number, line, &tones);
    must(tevsRandUniform_Direct_16s(noise, len, -600, 600, &seed), "tevsRandUniform_Direct_16s");
    must(tevsAdd_16s_ISfs(noise, line, len, 0), "tevsAdd_16s_ISfs");
    must(tevsLinToALaw_16s8u(line, codes, len), "tevsLinToALaw_16s8u");
    must(tevsALawToLin_8u32f(codes, heard, len), "tevsALawToLin_8u32f");
    must(tevsMulC_32f_I(32768, heard, len), "tevsMulC_32f_I");

    char last = 0;
    printf("dialled  %s\ndetected ", number);
    for (int n = 0; n + kBlock <= len; n += kBlock) {
        const char key = keyOf(heard + n, &best);
        if (key && key != last) putchar(key);
        last = key;
    }
    printf("\ntwo tones of %d samples, %.3f ns a sample\n", kTone, 1e9 * tones / kTone);
    printf("eight frequencies in blocks of %d samples, %.2f us a block: %.0f lines at once\n", kBlock, 1e6 * best, (double)kBlock / kRate / best);

    save(argv[1], "dialled.wav", kRate, line, len);
    tevsFree(heard);
    tevsFree(codes);
    tevsFree(noise);
    tevsFree(line);
    return 0;
}
