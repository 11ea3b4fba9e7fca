#include <tevcore.h>

int main(void) { return tevGetNumThreads() < 1; }
