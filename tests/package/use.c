/* Reaches into both libraries; returns 0 where they answer. */
#include <tevcore.h>
#include <tevs.h>

int main(void) {
    const float src[3] = {1.5f, -2.5f, 40000.0f};
    int16_t dst[3] = {0, 0, 0};
    if (tevsConvert_32f16s_Sfs(src, dst, 3, RoundNearest, 0) != StatusOk) return 1;
    if (dst[0] != 2 || dst[1] != -2 || dst[2] != 32767) return 2;
    return tevsGetLibVersion()->major == 5 && tevGetNumThreads() >= 1 ? 0 : 3;
}
