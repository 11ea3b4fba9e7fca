// Lengths up to INT_MAX of 1-byte types: with them the counters of a 32-bit build have no room to spare. The vector is one piece of shared memory over and
// over, but for an end of its own.
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <climits>
#include <cstring>

#include "tevs.h"

// The compiler takes no object to be larger than half of the addresses.
#pragma GCC diagnostic ignored "-Warray-bounds"
#pragma GCC diagnostic ignored "-Wstringop-overflow"

namespace {

constexpr size_t kPiece = size_t{1} << 22, kAll = size_t{1} << 31;

class Lengths : public testing::Test {
protected:
    void SetUp() override {
        void* const all = mmap(nullptr, kAll, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        if (all == MAP_FAILED) GTEST_SKIP() << "no 2^31 addresses in a row";
        p_ = static_cast<uint8_t*>(all);
        const int piece = memfd_create("piece", 0);
        ASSERT_EQ(ftruncate(piece, kPiece), 0);
        for (size_t at = 0; at < kAll - kPiece; at += kPiece)
            ASSERT_NE(mmap(p_ + at, kPiece, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED, piece, 0), MAP_FAILED);
        ASSERT_NE(mmap(p_ + kAll - kPiece, kPiece, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0), MAP_FAILED);
        close(piece);
        std::memset(p_, 100, kPiece);
        std::memset(p_ + kAll - kPiece, 100, kPiece);
    }
    void TearDown() override {
        if (p_) munmap(p_, kAll);
    }

    uint8_t* p_ = nullptr;
};

TEST_F(Lengths, ExtremesAtTheVeryEnd) {
    for (int len : {2147475456, 2147475457, INT_MAX - 64, INT_MAX}) {
        uint8_t lo, hi;
        int at[2] = {-1, -1};
        p_[len - 1] = 101;
        p_[len - 2] = 99;
        EXPECT_EQ(tevsMinMax_8u(p_, len, &lo, &hi), StatusOk);
        EXPECT_EQ(lo + hi, 200);
        EXPECT_EQ(tevsMinMaxIndx_8u(p_, len, &lo, &at[0], &hi, &at[1]), StatusOk);
        EXPECT_EQ(at[0], len - 2);
        EXPECT_EQ(at[1], len - 1);
        p_[len - 1] = p_[len - 2] = 100;
    }
}

TEST_F(Lengths, ElementsInPlace) {
    constexpr int n = INT_MAX;
    p_[n] = 77;
    const auto leaves = [&](int want, Status s, const char* what) {
        EXPECT_EQ(s, StatusOk) << what;
        EXPECT_EQ(p_[n - 1], want) << what;
        EXPECT_EQ(p_[n], 77) << what;
    };
    leaves(5, tevsSet_8u(5, p_, n), "Set");
    leaves(105, tevsAddC_8u_ISfs(100, p_, n, 0), "AddC");
    leaves(104, tevsXorC_8u_I(1, p_, n), "Xor");
    leaves(52, tevsDivC_8u_ISfs(2, p_, n, 0), "DivC");
    leaves(7, tevsSqrt_8u_ISfs(p_, n, 0), "Sqrt");
    p_[0] = 200;
    leaves(200, tevsFlip_8u_I(p_, n), "Flip");
    leaves(0, tevsZero_8u(p_, n), "Zero");
    p_[n - 1] = 3;
    EXPECT_EQ(tevsMove_8u(p_ + 1, p_, n - 1), StatusOk);
    EXPECT_EQ(p_[n - 2], 3);   // in the piece that is there once
}

}   // namespace
