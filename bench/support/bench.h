// The rows of a benchmark. A row is named <operation>/<who>/<size>; scripts/bench.sh compares the rows of one operation and size, `tevs`
// with everyone else and with `limit`, by their time per element.
//
// 256-bit code leaves a 32-bit process in a state in which code in SSE encoding is several times slower, until the next context switch. Every row begins
// without it. With TEVS_BENCH_AFTER256 in the environment each 32-bit row `tevs` has a row `after256` behind it, measured in that state.
#pragma once

#include <benchmark/benchmark.h>
#include <omp.h>
#include <sched.h>
#ifdef __i386__
#include <immintrin.h>
#endif

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "tevs.h"

namespace bench {

inline const bool kLevelShown = (benchmark::AddCustomContext("tevs_level", tevsGetLevelName(tevsGetLevel())), true);

#ifdef __i386__
inline const bool kHasAvx = __builtin_cpu_supports("avx2");

// What another library does: a few 256-bit operations, and vzeroupper behind them.
__attribute__((target("avx2"), noinline)) inline void runs256() {
    __m256 v = _mm256_set1_ps(1);
    asm volatile("vaddps %0, %0, %0" : "+x"(v));
    _mm256_zeroupper();
}
// The upper halves of all registers in their first state again, the control word as it is.
__attribute__((target("avx2,xsave"), noinline)) inline void forgets256() {
    constexpr int kUpperHalves = 4;
    alignas(64) unsigned char area[1024] = {};
    _xsave(area, kUpperHalves);
    area[512] &= ~kUpperHalves;   // the first byte of the header: what is not in its first state
    _xrstor(area, kUpperHalves);
}
#else
constexpr bool kHasAvx = false;
inline void runs256() {}
inline void forgets256() {}
#endif

// While it lives, the library may have two threads, on any processor, whatever one the program is bound to.
class Everywhere {
public:
    Everywhere() {
        omp_set_num_threads(2);
        sched_getaffinity(0, sizeof bound_, &bound_);
        cpu_set_t all;
        std::memset(&all, 0xff, sizeof all);
        sched_setaffinity(0, sizeof all, &all);
    }
    ~Everywhere() {
        sched_setaffinity(0, sizeof bound_, &bound_);
        omp_set_num_threads(1);
    }
    Everywhere(const Everywhere&) = delete;
    Everywhere& operator=(const Everywhere&) = delete;

private:
    cpu_set_t bound_ = {};
};

// For each size, make(size) prepares data and returns what is to be timed: a call that works on `size` elements, and on the same data each time.
template <class Make> void row(const std::string& operation, const std::string& who, const std::vector<int64_t>& sizes, Make make) {
    const bool threads = operation.ends_with("threads");
    const auto add = [&](const std::string& as, auto begin, auto between) {
        auto* b = benchmark::RegisterBenchmark((operation + "/" + as).c_str(), [=](benchmark::State& state) {
            std::optional<Everywhere> everywhere;
            if (threads) everywhere.emplace();
            auto call = make(int(state.range(0)));
            // Once in ten thousands of elements: far more often than threads are switched, and too seldom to be seen in the time.
            const int64_t apart = std::max<int64_t>(1, 65536 / state.range(0));
            int64_t left = apart;
            begin();
            for (auto _ : state) {
                call();
                benchmark::ClobberMemory();
                if (--left == 0) {
                    between();
                    left = apart;
                }
            }
            if (kHasAvx) forgets256();
            state.SetItemsProcessed(state.iterations() * state.range(0));
        });
        if (threads) b->UseRealTime();   // CPU time counts the caller's thread alone
        for (int64_t n : sizes) b->Arg(n);
    };
    const auto nothing = [] {};
    add(who, nothing, nothing);
    if (who == "tevs" && kHasAvx && std::getenv("TEVS_BENCH_AFTER256")) add("after256", runs256, runs256);
}

// Sizes that users have: short, a telephone frame with a tail, inside the first and the second cache, and past both.
inline const std::vector<int64_t> kSizes = {16, 163, 1024, 16384, 1 << 20};

#ifdef __i386__
#define TEVS_WIDEST
constexpr int kWidest = 16;
#else
#define TEVS_WIDEST __attribute__((target("avx2")))
constexpr int kWidest = 32;
#endif

// Reads Read bytes and writes Write bytes for each of n elements, 64 elements at a time, and does nothing else.
template <int Read, int Write> TEVS_WIDEST void touch(const char* src, char* dst, int n) {
    typedef char Widest __attribute__((vector_size(kWidest)));
    const Widest zero = {};
    for (int i = 0; i + 64 <= n; i += 64) {
#pragma GCC unroll 64
        for (int k = 0; k < 64 * Read / kWidest; ++k) {
            Widest v;
            std::memcpy(&v, src + ptrdiff_t{i} * Read + ptrdiff_t{k} * kWidest, kWidest);
            asm volatile("" : : "x"(v));
        }
#pragma GCC unroll 64
        for (int k = 0; k < 64 * Write / kWidest; ++k) std::memcpy(dst + ptrdiff_t{i} * Write + ptrdiff_t{k} * kWidest, &zero, kWidest);
    }
}

// The rows `limit` of an element-wise operation: what loading its sources and storing its destination takes, for sizes of whole steps.
template <int Read, int Write> void limit(const std::string& operation) {
    row(operation, "limit", {1024, 16384, 1 << 20, 1 << 22}, [](int n) {
        return [n, src = std::vector<char>(size_t(n) * Read), dst = std::vector<char>(size_t(n) * Write)]() mutable {
            touch<Read, Write>(src.data(), dst.data(), n);
        };
    });
}

}   // namespace bench
