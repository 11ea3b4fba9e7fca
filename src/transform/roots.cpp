#include "transform/roots.h"

namespace tevs {
namespace {

struct Listed {
    Root of[2 * kMostListed];
    constexpr Listed() : of() {
        of[1] = unityRoot(0, 1);
        for (uint32_t den = 2; den <= kMostListed; den *= 2)
            for (uint32_t num = 0; num < den; ++num) of[den + num] = num % 2 ? unityRoot(num, den) : of[(den + num) / 2];
    }
};
constexpr Listed kListed;

}   // namespace

constinit const Root (&kListedRoots)[2 * kMostListed] = kListed.of;

}   // namespace tevs
