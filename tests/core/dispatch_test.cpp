// Which level's kernels each family gets. Linked from the library's objects: the tables are not visible from outside.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <set>
#include <sstream>

#include "core/simd/families.h"
#include "tevs/core.h"

namespace tevs {
namespace {

// What the system says of the processor, apart from the library's own question to it.
int machineLevel() {
    std::ifstream file("/proc/cpuinfo");
    std::set<std::string> flags;
    for (std::string line, word; flags.empty() && std::getline(file, line);)
        if (line.starts_with("flags"))
            for (std::istringstream words(line); words >> word;) flags.insert(word);
    const auto has = [&](std::initializer_list<const char*> all) { return std::ranges::all_of(all, [&](const char* f) { return flags.contains(f); }); };
    if (!has({"sse4_1"})) return 0;
    if (!has({"avx2", "fma", "bmi1", "bmi2", "f16c"})) return 1;
    return kHighestLevel >= 3 && has({"avx512f", "avx512bw", "avx512dq", "avx512vl"}) ? 3 : 2;
}

// One digit caps the level, though not below the base; anything else has no effect.
int cappedLevel() {
    const char* setting = getenv("TEVS_LEVEL");
    const std::string cap = setting ? setting : "";
    if (cap.size() != 1 || cap[0] < '0' || cap[0] > '9') return machineLevel();
    return std::max(kBaseLevel, std::min(machineLevel(), cap[0] - '0'));
}

TEST(Dispatch, EveryFamilyAtItsHighestAllowedLevel) {
    const int level = cappedLevel();
    EXPECT_EQ(tevsGetLevel(), level);
#ifdef __i386__
#define LEVEL(name) (name == &level0::name ? 0 : name == &level1::name ? 1 : name == &level2::name ? 2 : -1)
#else
#define LEVEL(name) (name == &level1::name ? 1 : name == &level2::name ? 2 : name##TopLevel >= 3 && name == &level3::name ? 3 : -1)
#endif
#define X(Type, name) EXPECT_EQ(LEVEL(name), std::min(level, name##TopLevel)) << #name;
    TEVS_FAMILIES(X)
#undef X
#undef LEVEL
}

}   // namespace
}   // namespace tevs
