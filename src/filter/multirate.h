// What the calls of FIR filters do with a record of several rates.
#pragma once

#include "filter/fir.h"

namespace tevs {

// numIters * downFactor inputs make numIters * upFactor outputs.
template <class Kind> Status multirateBlock(const typename Kind::Sample* pSrc, typename Kind::Sample* pDst, int numIters, FirState* s, int scaleFactor);

template <class Kind> Status multirateSetTaps(const typename Kind::Tap* pTaps, int tapsFactor, FirState* s);
template <class Kind> Status multirateGetTaps(const FirState* s, typename Kind::Tap* pTaps);
template <class Kind> Status multirateSetPast(const typename Kind::Sample* pDlyLine, FirState* s);
template <class Kind> Status multirateGetPast(const FirState* s, typename Kind::Sample* pDlyLine);

}   // namespace tevs
