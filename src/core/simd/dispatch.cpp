// The level of every family's kernels is chosen here, once, when the library is loaded.
#include "core/simd/families.h"

#include <cpuid.h>
#include <stdlib.h>

#include "tevs/core.h"

namespace tevs {

// The base level serves calls that come before this library's constructor has run (from another library's constructor, say).
#define X(Type, name) const Type* name = &TEVS_BASE_NS::name;
TEVS_FAMILIES(X)
#undef X

namespace {

int levelInUse = kBaseLevel;

// Not every compiler's __builtin_cpu_supports knows this one.
bool hasHalfConversion() {
    unsigned a, b, c, d;
    return __get_cpuid(1, &a, &b, &c, &d) && (c & bit_F16C);
}

int supportedLevel() {
    __builtin_cpu_init();   // asks the operating system's part too (XCR0)
    if (!__builtin_cpu_supports("sse4.1")) return kBaseLevel;
    if (!__builtin_cpu_supports("avx2") || !__builtin_cpu_supports("fma") || !__builtin_cpu_supports("bmi") || !__builtin_cpu_supports("bmi2") ||
        !hasHalfConversion())
        return 1;
    const bool avx512 =
        __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl");
    return avx512 && kHighestLevel >= 3 ? 3 : 2;
}

// TEVS_LEVEL=n in the environment keeps the library to level n, or to the base where that is higher, for results that are the same on every machine. What is
// not one digit has no effect.
int chosenLevel() {
    const int supported = supportedLevel();
    const char* cap = secure_getenv("TEVS_LEVEL");
    if (!cap || cap[0] < '0' || cap[0] > '9' || cap[1] != '\0') return supported;
    const int wanted = cap[0] - '0';
    return wanted < kBaseLevel ? kBaseLevel : wanted < supported ? wanted : supported;
}

template <class Table> const Table* pick(int level, int top, const Table* const (&tables)[kHighestLevel + 1]) { return tables[level < top ? level : top]; }

__attribute__((constructor)) void choose() {
    const int level = levelInUse = chosenLevel();
#ifdef __i386__
#define X(Type, name) name = pick<Type>(level, name##TopLevel, {&level0::name, &level1::name, &level2::name});
#else
#define X(Type, name) name = pick<Type>(level, name##TopLevel, {nullptr, &level1::name, &level2::name, name##TopLevel >= 3 ? &level3::name : nullptr});
#endif
    TEVS_FAMILIES(X)
#undef X
}

}   // namespace
}   // namespace tevs

int tevsGetLevel(void) { return tevs::levelInUse; }
const char* tevsGetLevelName(int level) {
    constexpr const char* names[] = {"SSE3", "SSE4.1", "AVX2", "AVX-512"};
    return level >= 0 && level < 4 ? names[level] : "unknown level";
}
