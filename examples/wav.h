/* Just enough of RIFF/WAVE for the examples: 16-bit PCM, several channels averaged into one. */
#ifndef WAV_H
#define WAV_H

#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

typedef struct {
    uint32_t rate;    /* samples per second */
    int len;          /* samples */
    int16_t* samples; /* from malloc */
} Wav;

/* A chunk of a RIFF file: its four letters and the bytes after its header. */
typedef struct {
    char id[4];
    uint32_t size;
} WavChunk;

typedef struct {
    uint16_t format, channels;
    uint32_t rate, bytesPerSecond;
    uint16_t bytesPerFrame, bits;
} WavFormat;

/* Returns 0, or -1 if the file cannot be read or holds something else. */
static inline int readWav(const char* path, Wav* wav) {
    FILE* file = fopen(path, "rb");
    if (!file) return -1;
    int result = -1;
    char wave[4];
    WavChunk chunk;
    WavFormat format = {0};
    if (fread(&chunk, sizeof chunk, 1, file) == 1 && !memcmp(chunk.id, "RIFF", 4) && fread(wave, 4, 1, file) == 1 && !memcmp(wave, "WAVE", 4)) {
        while (result && fread(&chunk, sizeof chunk, 1, file) == 1) {
            const long next = ftell(file) + (long)chunk.size + (chunk.size & 1); /* chunks are padded to an even length */
            if (!memcmp(chunk.id, "fmt ", 4)) {
                if (fread(&format, sizeof format, 1, file) != 1) break;
            } else if (!memcmp(chunk.id, "data", 4)) {
                const uint32_t frames = format.channels ? chunk.size / (2u * format.channels) : 0;
                if (format.bits != 16 || frames < 1 || frames > INT32_MAX / 8) break;
                int16_t* const data = malloc((size_t)frames * format.channels * 2);
                if (!data || fread(data, 2u * format.channels, frames, file) != frames) {
                    free(data);
                    break;
                }
                for (uint32_t n = 0; n < frames; ++n) {
                    int32_t sum = 0;
                    for (int c = 0; c < format.channels; ++c) sum += data[(size_t)n * format.channels + (size_t)c];
                    data[n] = (int16_t)(sum / format.channels);
                }
                *wav = (Wav){format.rate, (int)frames, data};
                result = 0;
            }
            if (fseek(file, next, SEEK_SET)) break;
        }
    }
    fclose(file);
    return result;
}

/* Returns 0, or -1 if the file cannot be written. */
static inline int writeWav(const char* path, const Wav* wav) {
    const uint32_t bytes = 2u * (uint32_t)wav->len;
    const WavChunk riff = {{'R', 'I', 'F', 'F'}, 36 + bytes}, fmt = {{'f', 'm', 't', ' '}, 16}, data = {{'d', 'a', 't', 'a'}, bytes};
    const WavFormat format = {1, 1, wav->rate, 2 * wav->rate, 2, 16};
    FILE* file = fopen(path, "wb");
    if (!file) return -1;
    const int whole = fwrite(&riff, 8, 1, file) == 1 && fwrite("WAVE", 4, 1, file) == 1 && fwrite(&fmt, 8, 1, file) == 1 && fwrite(&format, 16, 1, file) == 1 &&
                      fwrite(&data, 8, 1, file) == 1 && fwrite(wav->samples, bytes, 1, file) == 1;
    return fclose(file) == 0 && whole ? 0 : -1;
}

#endif
