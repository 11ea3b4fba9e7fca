#define Status int   // as Xlib.h has it
#include <tevs.hpp>
#include <vector>

int main() {
    const std::vector<float> x = {1, 2, 3};
    std::vector<float> y(3), shorter(2);
    if (tevs::add(x, x, y) != 0 || y[2] != 6) return 1;
#if TEVS_EXCEPTIONS
    try {
        tevs::add(x, x, shorter);
        return 2;
    } catch (const tevs::Error& e) {
        if (e.status() != StatusBadSize) return 3;
    }
    return tevs::sum(x, HintNone) == 6 ? 0 : 4;
#else
    const auto none = tevs::firInitAlloc<FIRState_32f>(std::span<const float>(x).first(0), nullptr);
    return tevs::add(x, x, shorter) == StatusBadSize && none.get() == nullptr && none.status() == StatusFilterLength ? 0 : 2;
#endif
}
