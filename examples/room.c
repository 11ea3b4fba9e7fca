/* The response of a room measured by correlation, and applied by convolution.
 *
 *     room IN.wav OUTDIR
 *
 * A loudspeaker plays noise of random signs; a microphone hears it through the room, and other noise. The correlation of what was played with what was heard is the room's
 * response, since such noise is uncorrelated with itself at all lags but 0. A recording convolved with it sounds as if it were played there, and the room's reverberation time
 * follows from how the response's energy decays (Schroeder, New method of measuring reverberation time, 1965).
 * Writes room.wav and room-response.txt into OUTDIR, and prints what each step took.
 */
#include <math.h>

#include "program.h"

enum { kRuns = 5, kNoiseSeconds = 30 };

static float* vector(int len) { return need(tevsMalloc_32f(len)); }

/* A direct sound after 5 ms, four early reflections, and from 20 ms on a diffuse tail that decays by 60 dB in 0.35 s. */
static void makeRoom(float* room, int len, int rate) {
    static const float kEarly[][2] = {{0.005f, 1}, {0.0083f, -0.55f}, {0.0117f, 0.42f}, {0.0152f, 0.33f}, {0.0191f, -0.28f}};
    uint32_t seed = 77;
    must(tevsRandGauss_Direct_32f(room, len, 0, 0.12f, &seed), "tevsRandGauss_Direct_32f");
    for (int n = 0; n < len; ++n) room[n] *= n < rate / 50 ? 0 : expf(-6.908f * (float)n / (0.35f * (float)rate));
    for (int k = 0; k < 5; ++k) room[(int)(kEarly[k][0] * (float)rate)] += kEarly[k][1];
}

/* Seconds in which the energy that is still to come falls by 60 dB, from its fall between -2 and -12 dB. */
static double reverberation(const float* response, int len, int rate) {
    double left = 0, from = 0, to = 0;
    for (int n = 0; n < len; ++n) left += (double)response[n] * response[n];
    const double all = left;
    for (int n = 0; n < len && to == 0; ++n) {
        const double level = 10 * log10(left / all);
        if (from == 0 && level < -2) from = n;
        if (level < -12) to = n;
        left -= (double)response[n] * response[n];
    }
    return 6 * (to - from) / rate;
}

static double decibels(const float* x, int len) {
    float norm;
    must(tevsNorm_L2_32f(x, len, &norm), "tevsNorm_L2_32f");
    return 20 * log10(norm + 1e-12);
}

int main(int argc, char** argv) {
    Wav wav = {0, 0, NULL};
    if (argc != 3) {
        fprintf(stderr, "usage: room IN.wav OUTDIR\n");
        return 2;
    }
    if (readWav(argv[1], &wav)) {
        fprintf(stderr, "room: %s is no 16-bit WAV file\n", argv[1]);
        return 1;
    }
    const int rate = (int)wav.rate, roomLen = rate * 2 / 5, noiseLen = kNoiseSeconds * rate, heardLen = noiseLen + roomLen - 1, wetLen = wav.len + roomLen - 1;
    float *room = vector(roomLen), *found = vector(roomLen), *played = vector(noiseLen), *heard = vector(heardLen), *hiss = vector(heardLen);
    float *dry = vector(wav.len), *wet = vector(wetLen);
    makeRoom(room, roomLen, rate);
    must(tevsConvert_16s32f_Sfs(wav.samples, dry, wav.len, 15), "tevsConvert_16s32f_Sfs");

    /* Noise of signs, and a hiss 10 dB below it. */
    uint32_t seed = 1;
    must(tevsRandUniform_Direct_32f(played, noiseLen, -1, 1, &seed), "tevsRandUniform_Direct_32f");
    for (int n = 0; n < noiseLen; ++n) played[n] = played[n] < 0 ? -1.0f : 1.0f;
    must(tevsRandGauss_Direct_32f(hiss, heardLen, 0, 0.3f, &seed), "tevsRandGauss_Direct_32f");

    double best[3] = {1e9, 1e9, 1e9};
    for (int run = 0; run < kRuns; ++run) {
        const double begin = now();
        must(tevsConv_32f(played, noiseLen, room, roomLen, heard), "tevsConv_32f");
        const double middle = now();
        must(tevsAdd_32f_I(hiss, heard, heardLen), "tevsAdd_32f_I");
        const double again = now();
        must(tevsCrossCorr_32f(played, noiseLen, heard, heardLen, found, roomLen, 0), "tevsCrossCorr_32f");
        must(tevsMulC_32f_I(1.0f / (float)noiseLen, found, roomLen), "tevsMulC_32f_I");
        const double end = now();
        must(tevsConv_32f(dry, wav.len, found, roomLen, wet), "tevsConv_32f");
        best[0] = fmin(best[0], middle - begin);
        best[1] = fmin(best[1], end - again);
        best[2] = fmin(best[2], now() - end);
    }
    printf("%s: %.2f s at %d Hz; a response of %d samples, measured with %d s of noise\n\n", argv[1], (double)wav.len / rate, rate, roomLen, kNoiseSeconds);
    static const char* const kStep[3][2] = {
        {"noise in the room", "tevsConv_32f"}, {"its response found", "tevsCrossCorr_32f"}, {"recording in the room", "tevsConv_32f"}};
    const double seconds[3] = {kNoiseSeconds, kNoiseSeconds, (double)wav.len / rate};
    printf("%-22s %10s %16s  %s\n", "step", "time, ms", "times real time", "functions");
    for (int s = 0; s < 3; ++s) printf("%-22s %10.3f %16.0f  %s\n", kStep[s][0], 1e3 * best[s], seconds[s] / best[s], kStep[s][1]);

    FILE* const file = create(argv[2], "room-response.txt");
    fprintf(file, "# ms, the room's response, what was found of it\n");
    for (int n = 0; n < roomLen; ++n) fprintf(file, "%.4f %.5f %.5f\n", 1e3 * n / rate, room[n], found[n]);
    fclose(file);

    /* As loud as it may be without clipping. */
    float most;
    must(tevsNorm_Inf_32f(wet, wetLen, &most), "tevsNorm_Inf_32f");
    must(tevsMulC_32f_I(most > 0 ? 0.9f / most : 1, wet, wetLen), "tevsMulC_32f_I");
    saveFloats(argv[2], "room.wav", wav.rate, wet, wetLen);

    const double reverberant[2] = {reverberation(room, roomLen, rate), reverberation(found, roomLen, rate)}, whole = decibels(room, roomLen);
    must(tevsSub_32f_I(room, found, roomLen), "tevsSub_32f_I");
    printf("\nthe response found is %.1f dB off the room's; its reverberation time is %.2f s, the room's %.2f s\n", decibels(found, roomLen) - whole,
           reverberant[1], reverberant[0]);

    tevsFree(wet);
    tevsFree(dry);
    tevsFree(hiss);
    tevsFree(heard);
    tevsFree(played);
    tevsFree(found);
    tevsFree(room);
    free(wav.samples);
    return 0;
}
