#include <stdio.h>
#include <tevs.h>

int main(void) {
    const float taps[4] = {0.25f, 0.25f, 0.25f, 0.25f};
    const float noisy[8] = {1, 3, 1, 3, 1, 3, 1, 3};
    float smooth[8];
    FIRState_32f* filter;
    if (tevsFIRInitAlloc_32f(&filter, taps, 4, NULL) != StatusOk) return 1;
    tevsFIR_32f(noisy, smooth, 8, filter);
    for (int n = 0; n < 8; ++n) printf("%g%c", smooth[n], n < 7 ? ' ' : '\n');
    tevsFIRFree_32f(filter);
    return 0;
}
