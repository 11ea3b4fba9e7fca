// Angles far outside one turn, one at a time. The vector code of core/simd/angle.h calls this for the rare lane that it cannot reduce itself.
#pragma once

namespace tevs {

// The quarter turn that phase is nearest to, modulo 4, for phase >= 1: phase = (4 n + quarter) pi / 2 + r[0] + r[1], with r[0] in -pi/4 .. pi/4 and r[1] half a
// unit of it or less; the sum is off by less than 2^-100 of itself. Both are NaN where phase is infinite or NaN.
int reducePhase(double phase, double* r);

}   // namespace tevs
