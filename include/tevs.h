/* Signal-processing primitives over one-dimensional vectors of integer, floating-point and complex samples.
 *
 * This is the one header that callers include. tevs/types.h says what all functions share: names, sample types,
 * statuses, the rules on overlap, alignment and threads; each family's header is its manual.
 */
#ifndef TEVS_H
#define TEVS_H

#include "tevs/types.h"

#include "tevs/core.h"          /* memory, version */
#include "tevs/movement.h"      /* copy, set, reverse, complex parts, conjugate */
#include "tevs/logic.h"         /* bitwise logic, shifts */
#include "tevs/arithmetic.h"    /* sums, products, quotients, with scaling and saturation */
#include "tevs/conversion.h"    /* between sample types */
#include "tevs/polar.h"         /* arctangent, magnitude, phase, power, polar form */
#include "tevs/extremes.h"      /* largest and smallest elements, where they are, their magnitudes */
#include "tevs/statistics.h"    /* sums, means, deviations, norms, counts, sums of logarithms */
#include "tevs/dotprod.h"       /* dot products */
#include "tevs/elementary.h"    /* exponential, logarithm, roots, squares, normalisation */
#include "tevs/search.h"        /* order, nearest values and vectors */
#include "tevs/fft.h"           /* FFT records, complex and real transforms, packed spectra */
#include "tevs/dft.h"           /* the same transforms of any length */
#include "tevs/dct.h"           /* discrete cosine transforms of any length */
#include "tevs/hilbert.h"       /* the analytic signal */
#include "tevs/wavelet.h"       /* wavelets: taps, one level of pairs or of a stream, all levels of a signal */
#include "tevs/fir.h"           /* FIR filters, with records and without */
#include "tevs/iir.h"           /* recursive filters, arbitrary order and second-order sections */
#include "tevs/sparse.h"        /* filters given by their non-zero taps */
#include "tevs/lms.h"           /* adaptive FIR filters */
#include "tevs/multirate_lms.h" /* adaptive FIR filters between two rates */
#include "tevs/convolution.h"   /* convolution and correlation */
#include "tevs/median.h"        /* median of a sliding window */
#include "tevs/sample.h"        /* sample-rate change without a filter */
#include "tevs/design.h"        /* taps of FIR and recursive filters from edges and ripples, frequency responses */
#include "tevs/g711.h"          /* A-law and mu-law companding */
#include "tevs/goertzel.h"      /* the spectrum at one frequency, or two */
#include "tevs/speech.h"        /* emphasis, running levels, window sums, linear prediction */
#include "tevs/viterbi.h"       /* convolutional codes, Viterbi decoding */
#include "tevs/threshold.h"     /* elements below or above a level replaced */
#include "tevs/window.h"        /* Bartlett, Hann, Hamming, Blackman and Kaiser windows */
#include "tevs/random.h"        /* uniform and normal random numbers */
#include "tevs/tone.h"          /* sinusoids, chirps, frequency shifts */
#include "tevs/triangle.h"      /* triangle wave */
#include "tevs/testvector.h"    /* ramp, chirp */

#endif
