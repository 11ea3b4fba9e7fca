// The rows of a benchmark. A row is named <operation>/<who>/<size>; scripts/bench.sh compares the rows of one operation and size, `tevs`
// with everyone else and with `limit`, by their time per element.
#pragma once

#include <benchmark/benchmark.h>

#include <cstring>
#include <string>
#include <vector>

namespace bench {

// For each size, make(size) prepares data and returns what is to be timed: a call that works on `size` elements, and on the same data each time.
template <class Make> void row(const std::string& operation, const std::string& who, const std::vector<int64_t>& sizes, Make make) {
    auto* b = benchmark::RegisterBenchmark((operation + "/" + who).c_str(), [make](benchmark::State& state) {
        auto call = make(int(state.range(0)));
        for (auto _ : state) {
            call();
            benchmark::ClobberMemory();
        }
        state.SetItemsProcessed(state.iterations() * state.range(0));
    });
    if (operation.ends_with("threads")) b->UseRealTime();   // CPU time counts the caller's thread alone
    for (int64_t n : sizes) b->Arg(n);
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
