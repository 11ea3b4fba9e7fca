#pragma once

namespace plain {

// Least mean squares: x[-(taps-1)] .. x[-1] lie before x; h is h[taps-1] .. h[0].
void lms(const float* x, const float* ref, float* y, int n, float step, float* h, int taps);

}   // namespace plain
