/* After <X11/Xlib.h>: its macro is the caller's still, and the calls work. Returns 0 where they do. */
#define Status int
#include <tevs.h>

typedef Status (*Copy)(const uint8_t* pSrc, uint8_t* pDst, int len);

int main(void) {
    const uint8_t src[2] = {3, 4};
    uint8_t dst[2] = {0, 0};
    const Copy copy = tevsCopy_8u;
    const int i = StatusNullPtr;
    Status s = copy(src, 0, 2);
    if (s != i) return 1;
    s = copy(src, dst, 2);
    return s != StatusOk || dst[0] != 3 || dst[1] != 4;
}
