#ifndef TEVS_TONE_H
#define TEVS_TONE_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- Tone, ToneMix: an oscillator -----------------------------------------------------------------------------------
 *
 * An oscillator counts its phase in 2^-64 of a turn. Neither amplitude nor phase drift, for as long as it runs, and
 * wherever a stream is cut into blocks, in whatever types and at whatever SIMD level they are computed, samples are the
 * same to the bit (Tierney, Rader, Gold, A Digital Frequency Synthesizer, IEEE Transactions on Audio and
 * Electroacoustics 19, 1971). With theta(n) the phase of sample n and phi that of the first one:
 *
 *     Tone           real:  magn cos theta(n)          complex:  magn (cos theta(n) + j sin theta(n))
 *     ToneMixUp      x[n] e^(j theta(n)); 32fc32f: the real part of that
 *     ToneMixDown    x[n] e^(-j theta(n)); 32f32fc: of a real x
 *
 *     theta(n)       phi + 2 pi rFreq n
 *                    phi + 2 pi (f0 n + (f1 - f0) n^2 / (2 G))     for n <= G after SetFreq(f1, G) at the frequency f0;
 *                                                                  from there on at f1
 *
 * rFreq       of the sampling rate, in [0, 0.5). A shift by a negative frequency is one by the positive frequency in
 *             the other direction.
 * phase       radians, in [0, 2 pi), where 2 pi is the double 6.283185307179586, which is not in it; 0 is the positive
 *             peak
 * magn        above 0. An infinite one saturates integers (0 stays 0), and in floating point gives what products with
 *             it are: infinities, and NaN at zeros.
 * glideLen    samples to go to the new frequency in, at a constant rate: a chirp, a dial tone, a smooth return. 0
 *             switches at the next sample.
 * pSrc, pDst  len >= 1 samples; _I forms work in place, and equal pointers do where the two types are the same
 *
 * GetStateSize, Init   The bytes that a record takes in a buffer at any address, and a record in there
 * InitAlloc            A record in memory of its own, which Free gives back. Free leaves a record of Init as it is. One
 *                      record serves samples of all types.
 * SetFreq              Another frequency, with a phase that goes on from where it is. In a glide it starts from the
 *                      frequency reached.
 * SetPhase, GetPhase   The phase of the next sample. A glide goes on over SetPhase. What GetPhase gives is fit for
 *                      SetPhase and for Direct.
 * Tone_Direct          A tone without a record: the phase is read at *pPhase, and that of the next sample is left
 *                      there.
 *
 * Errors. The phase after n samples is within (n + 2^13) 2^-65 turns of the formula, since a frequency below 2^-12 is
 * rounded to a multiple of 2^-64; in a glide within 2^-45 turns more, which one that is broken off keeps, and one that
 * ends adds half a unit of 2^-64. Of the phase as it is counted, _32f and _32fc are within 2^-23 magn and _64f and
 * _64fc within 2^-51 magn, beside what subnormal results lose; _16s and _16sc within 0.5 + 2^-23 magn, saturated;
 * mixing of _32fc gives each part within 2^-22 |x|, and of _16sc within 0.51, saturated. Direct adds at most 2^-49
 * radians for its phase. These bounds add up. At quarter turns a tone is exactly 0, magn or -magn.
 *
 * Return StatusOk, or the first that applies, with nothing written and the phase as it was: StatusNullPtr,
 * StatusBadSize (len < 1), StatusContextMismatch (pState is not such a record), StatusToneMagnitude, StatusToneFreq,
 * StatusTonePhase (out of range, or NaN); SetFreq: StatusBadSize (glideLen < 0) last; InitAlloc: StatusNoMemory. One
 * call per record at a time.
 */
typedef struct ToneState ToneState;

Status tevsToneGetStateSize(int* pSize);
Status tevsToneInit(ToneState** ppState, double rFreq, double phase, uint8_t* pBuffer);
Status tevsToneInitAlloc(ToneState** ppState, double rFreq, double phase);
Status tevsToneFree(ToneState* pState);
Status tevsToneSetFreq(ToneState* pState, double rFreq, int glideLen);
Status tevsToneSetPhase(ToneState* pState, double phase);
Status tevsToneGetPhase(const ToneState* pState, double* pPhase);

Status tevsTone_16s(int16_t* pDst, int len, double magn, ToneState* pState);
Status tevsTone_16sc(Complex16s* pDst, int len, double magn, ToneState* pState);
Status tevsTone_32f(float* pDst, int len, double magn, ToneState* pState);
Status tevsTone_32fc(Complex32f* pDst, int len, double magn, ToneState* pState);
Status tevsTone_64f(double* pDst, int len, double magn, ToneState* pState);
Status tevsTone_64fc(Complex64f* pDst, int len, double magn, ToneState* pState);

Status tevsTone_Direct_16s(int16_t* pDst, int len, double magn, double rFreq, double* pPhase);
Status tevsTone_Direct_16sc(Complex16s* pDst, int len, double magn, double rFreq, double* pPhase);
Status tevsTone_Direct_32f(float* pDst, int len, double magn, double rFreq, double* pPhase);
Status tevsTone_Direct_32fc(Complex32f* pDst, int len, double magn, double rFreq, double* pPhase);
Status tevsTone_Direct_64f(double* pDst, int len, double magn, double rFreq, double* pPhase);
Status tevsTone_Direct_64fc(Complex64f* pDst, int len, double magn, double rFreq, double* pPhase);

Status tevsToneMixUp_16sc(const Complex16s* pSrc, Complex16s* pDst, int len, ToneState* pState);
Status tevsToneMixUp_16sc_I(Complex16s* pSrcDst, int len, ToneState* pState);
Status tevsToneMixUp_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, ToneState* pState);
Status tevsToneMixUp_32fc_I(Complex32f* pSrcDst, int len, ToneState* pState);
Status tevsToneMixUp_32fc32f(const Complex32f* pSrc, float* pDst, int len, ToneState* pState);

Status tevsToneMixDown_16sc(const Complex16s* pSrc, Complex16s* pDst, int len, ToneState* pState);
Status tevsToneMixDown_16sc_I(Complex16s* pSrcDst, int len, ToneState* pState);
Status tevsToneMixDown_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, ToneState* pState);
Status tevsToneMixDown_32fc_I(Complex32f* pSrcDst, int len, ToneState* pState);
Status tevsToneMixDown_32f32fc(const float* pSrc, Complex32f* pDst, int len, ToneState* pState);

TEVS_END

#endif
