/* What a convolutional code is worth.
 *
 *     coded_text OUT.txt [TEXT]
 *
 * Sends TEXT through white noise as it is and by the code of constraint length 7 (octal 171, 133) at half the rate, with the same energy for each bit of the text, and prints
 * what arrives. Counts the bits in error over many copies, and writes them into OUT.txt beside theory: the energy of a bit over the noise's density in dB; without the code,
 * measured and Q(sqrt(2 Eb/N0)); with it, measured and the union bound over its first weights.
 */
#include <math.h>
#include <string.h>

#include "program.h"

enum { kConstraint = 7, kPolys = 2, kTrace = 70, kAmplitude = 32, kBits = 1 << 20, kBlock = 8192, kMostText = 4096 };
static const int kPoly[kPolys] = {0171, 0133};

/* The probability that normal noise exceeds x. */
static double tail(double x) { return erfc(x / sqrt(2)) / 2; }
/* Heller and Jacobs (1971): information weights of the paths at distances 10, 12 .. 20. */
static double unionBound(double energy) {
    static const double kWeight[] = {36, 211, 1404, 11633, 77433, 502690};
    double sum = 0;
    for (int i = 0; i < 6; ++i) sum += kWeight[i] * tail(sqrt(energy * (10 + 2 * i)));
    return sum;
}

/* Noise on bits sent as +-kAmplitude, and what comes in as soft bits. energy: of what is sent over the noise's density. */
static void channel(const uint8_t* bits, int8_t* soft, int len, double energy, uint32_t* seed) {
    enum { kPiece = 4096 };
    float x[kPiece], sent[kPiece];
    for (int at = 0, n; at < len; at += n) {
        n = len - at < kPiece ? len - at : kPiece;
        must(tevsRandGauss_Direct_32f(x, n, 0, (float)(kAmplitude / sqrt(2 * energy)), seed), "tevsRandGauss_Direct_32f");
        for (int i = 0; i < n; ++i) sent[i] = bits[at + i] & 1 ? -kAmplitude : kAmplitude;
        must(tevsAdd_32f_I(sent, x, n), "tevsAdd_32f_I");
        must(tevsConvert_32f8s_Sfs(x, soft + at, n, RoundNearest, 0), "tevsConvert_32f8s_Sfs");
    }
}
static int errors(const uint8_t* a, const uint8_t* b, int len) {
    int count = 0;
    for (int i = 0; i < len; ++i) count += (a[i] ^ b[i]) & 1;
    return count;
}
static void printText(const char* what, const uint8_t* bits, int len) {
    printf("  %-8s ", what);
    for (int i = 0; i + 8 <= len; i += 8) {
        int c = 0;
        for (int k = 0; k < 8; ++k) c = c << 1 | (bits[i + k] & 1);
        putchar(c >= 32 && c < 127 ? c : '?');
    }
    putchar('\n');
}

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3 || (argc == 3 && (strlen(argv[2]) == 0 || strlen(argv[2]) > kMostText))) {
        fprintf(stderr, "usage: coded_text OUT.txt [TEXT]\n");
        return 2;
    }
    const char* text = argc > 2 ? argv[2] : "The fundamental problem of communication is that of reproducing at one point a message selected at another.";
    FILE* out = fopen(argv[1], "w");
    if (!out) {
        perror(argv[1]);
        return 1;
    }
    /* The text over and over, and zeros that end in state 0. */
    const int len = 8 * (int)strlen(text), total = kBits + kConstraint - 1;
    uint8_t *bits = tevsMalloc_8u(total), *code = tevsMalloc_8u(kPolys * total), *back = tevsMalloc_8u(total + kTrace);
    int8_t* soft = (int8_t*)tevsMalloc_8u(kPolys * total);
    if (!bits || !code || !back || !soft) must(StatusNoMemory, "buffers");
    for (int i = 0; i < total; ++i) bits[i] = i < kBits ? (uint8_t)(text[i % len / 8] >> (7 - i % 8) & 1) : 0;
    double encoding = 1e9;
    for (int run = 0; run < 5; ++run) {
        int shift = 0;
        const double begin = now();
        must(tevsViterbiEncode_8u(bits, code, total, kPoly, kPolys, kConstraint, &shift), "tevsViterbiEncode_8u");
        if (now() - begin < encoding) encoding = now() - begin;
    }
    double decoding = 1e9;
    ViterbiState* decoder;
    must(tevsViterbiInitAlloc(&decoder, kPoly, kPolys, kConstraint, kTrace), "tevsViterbiInitAlloc");

    uint32_t seed = 1;
    fprintf(out, "# Eb/N0 in dB, bit errors without the code, in theory, with the code, union bound\n");
    for (int half = 0; half <= 16; ++half) {
        const double decibels = half / 2.0, energy = pow(10, decibels / 10);
        channel(bits, soft, kBits, energy, &seed);
        for (int i = 0; i < kBits; ++i) back[i] = soft[i] < 0;
        const int plain = errors(bits, back, kBits);
        const int show = half % 4 == 0 && half <= 12;
        if (show) {
            printf("Eb/N0 %g dB\n", decibels);
            printText("plain", back, len < kBits ? len : kBits);
        }
        /* Each of two bits has half the energy. */
        channel(code, soft, kPolys * total, energy / kPolys, &seed);
        int got = 0, released;
        for (int at = 0, n; at < total; at += n, got += released) {
            n = total - at < kBlock ? total - at : kBlock;
            const double start = now();
            must(tevsViterbi_8s8u(soft + kPolys * at, n, back + got, &released, decoder), "tevsViterbi_8s8u");
            if (n == kBlock && (now() - start) / n < decoding) decoding = (now() - start) / n;
        }
        must(tevsViterbiFlush_8u(back + got, &released, 0, decoder), "tevsViterbiFlush_8u");
        const int coded = errors(bits, back, kBits);
        if (show) printText("coded", back, len < kBits ? len : kBits);
        fprintf(out, "%g %.3g %.3g %.3g %.3g\n", decibels, (double)plain / kBits, tail(sqrt(2 * energy)), (double)coded / kBits, unionBound(energy));
    }
    printf("encoding %.2f ns a bit, decoding %.2f\n", 1e9 * encoding / total, 1e9 * decoding);
    must(tevsViterbiFree(decoder), "tevsViterbiFree");
    tevsFree(soft);
    tevsFree(back);
    tevsFree(code);
    tevsFree(bits);
    return fclose(out) ? 1 : 0;
}
