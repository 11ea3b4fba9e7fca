#pragma once

namespace plain {

// y[m] = sum over j of h[p][j] x[at + j], where p and at step through the pattern of up outputs and down inputs; h holds up rows of `taps` reversed taps each,
// and the first tap of the first output meets x[0].
void multirate(const float* x, const float* h, int taps, int up, int down, float* y, int len);

}   // namespace plain
