// Memory, the version record, and the companion library.
#include <pmmintrin.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <set>
#include <string>

#include "support/elements.h"
#include "tevcore.h"
#include "tevs.h"

namespace {

constexpr auto allocates = []<class T>(T* (*allocate)(int)) {
    for (int len : {0, -1, -5, INT_MIN}) EXPECT_EQ(allocate(len), nullptr);
    for (int len : {1, 2, 3, 7, 31, 32, 33, 1000}) {
        T* p = allocate(len);
        ASSERT_NE(p, nullptr);
        EXPECT_EQ(reinterpret_cast<uintptr_t>(p) % 32, 0u);
        std::memset(p, 0x5a, sizeof(T) * size_t(len));   // the heap's own checks, or the sanitizer's, see an overrun
        tevsFree(p);
    }
};

TEST(Malloc, EveryTypeAlignedAndWhole) {
    test::each(allocates, tevsMalloc_8u, tevsMalloc_16u, tevsMalloc_32u, tevsMalloc_8s, tevsMalloc_16s, tevsMalloc_32s, tevsMalloc_64s, tevsMalloc_32f,
               tevsMalloc_64f, tevsMalloc_8sc, tevsMalloc_16sc, tevsMalloc_32sc, tevsMalloc_64sc, tevsMalloc_32fc, tevsMalloc_64fc);
    tevsFree(nullptr);
}

#ifdef __i386__
TEST(Malloc, MoreThanThereAreAddresses) {
    EXPECT_EQ(tevsMalloc_64fc(INT_MAX), nullptr);   // 2^35 - 16 bytes, 2^32 - 16 of them in a word
    EXPECT_EQ(tevsMalloc_32fc(1 << 29), nullptr);
    EXPECT_EQ(tevsMalloc_32f((1 << 30) - 1), nullptr);   // and the room for the alignment
}
#endif

TEST(GetStatusString, EachStatusHasALineOfItsOwn) {
    std::set<std::string> lines;
    for (int status = -256; status < 256; ++status) {
        const std::string line = tevsGetStatusString(Status(status));
        EXPECT_TRUE(!line.empty() && line.back() != '.' && line.find('\n') == line.npos) << line;
        if (line != "unknown status") {
            EXPECT_TRUE(lines.insert(line).second) << line;
        }
    }
    EXPECT_EQ(lines.size(), 43u);
    EXPECT_STREQ(tevsGetStatusString(StatusOk), "no error");
    EXPECT_STREQ(tevsGetStatusString(StatusNullPtr), "a required pointer is null");
}

TEST(GetLevelName, NamesTheLevels) {
    const char* const names[] = {"SSE3", "SSE4.1", "AVX2", "AVX-512"};
    for (int level = 0; level < 4; ++level) EXPECT_STREQ(tevsGetLevelName(level), names[level]);
    for (int level : {-1, 4, INT_MAX, INT_MIN}) EXPECT_STREQ(tevsGetLevelName(level), "unknown level");
}

TEST(GetLibVersion, OneConstantRecord) {
    const LibraryVersion* v = tevsGetLibVersion();
    EXPECT_EQ(v, tevsGetLibVersion());
    EXPECT_EQ(v->major, 5);
    EXPECT_EQ(v->minor, 1);
    EXPECT_EQ(v->majorBuild, 133);
    EXPECT_EQ(v->build, 274);
    EXPECT_EQ(v->version, std::to_string(TEVS_VERSION_MAJOR) + "." + std::to_string(TEVS_VERSION_MINOR) + "." + std::to_string(TEVS_VERSION_PATCH));
    static_assert(TEVS_VERSION > TEVS_VERSION_NUMBER(5, 1, 0) && TEVS_VERSION < TEVS_VERSION_NUMBER(5, 2, 0));
    EXPECT_EQ(std::memcmp(v->targetCpu, "q7\0\0", 4), 0);
    EXPECT_STREQ(v->name, "libtevsq7.so.5.1");
    EXPECT_STREQ(v->version, "5.1.1");
    EXPECT_STREQ(v->buildDate, "Jun 17 2006");
}

TEST(Companion, Constants) {
    uint32_t nan;
    std::memcpy(&nan, &tevConstantOfNAN_32f, 4);
    EXPECT_EQ(nan, 0x7fc00000u);
    uint64_t nan64;
    std::memcpy(&nan64, &tevConstantOfNAN_64f, 8);
    EXPECT_EQ(nan64, 0x7ff8000000000000u);
    EXPECT_EQ(tevConstantOfINF_32f, INFINITY);
    EXPECT_EQ(tevConstantOfINF_64f, double(INFINITY));
}

TEST(Companion, ControlWord) {
    const uint32_t mine = _mm_getcsr();
    for (uint32_t rc = 0; rc < 4; ++rc) {
        EXPECT_EQ(tev_set_rc_ssx(rc), mine);
        EXPECT_EQ(_mm_getcsr(), (mine & ~0x6000u) | rc << 13);
        EXPECT_EQ(tev_set_cw_ssx(mine), (mine & ~0x6000u) | rc << 13);
    }
    EXPECT_EQ(tev_set_rc_ssx(4), mine);   // two bits count
    EXPECT_EQ(tev_set_cw_ssx(mine), mine);
}

TEST(Companion, ThreadCountIsOneVariable) {
    const int32_t before = tevGetNumThreads();
    EXPECT_GE(before, 1);
    EXPECT_EQ(before, threads_omp_of_n_tev);
    tevSetNumThreads(7);
    EXPECT_EQ(threads_omp_of_n_tev, 7);
    threads_omp_of_n_tev = before;
    EXPECT_EQ(tevGetNumThreads(), before);
}

}   // namespace
