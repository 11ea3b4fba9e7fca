#include <stdio.h>
#include <tevs.h>

static void show(const char* what, const int16_t* x) {
    printf("%-26s%6d%7d%7d\n", what, x[0], x[1], x[2]);
}

int main(void) {
    const int16_t a[3] = {3, 250, 20000}, b[3] = {10, 1000, 30000};
    int16_t y[3];
    tevsSub_16s(a, b, y, 3);
    show("Sub(a, b)", y);
    tevsDiv_16s_Sfs(a, b, y, 3, 0);
    show("Div(a, b)", y);
    for (int scaleFactor = -1; scaleFactor <= 2; ++scaleFactor) {
        char what[32];
        tevsAdd_16s_Sfs(a, b, y, 3, scaleFactor);
        snprintf(what, sizeof what, "Add(a, b), scaleFactor %d", scaleFactor);
        show(what, y);
    }
    printf("length 0: %s\n", tevsGetStatusString(tevsAdd_16s(a, b, y, 0)));
    return 0;
}
