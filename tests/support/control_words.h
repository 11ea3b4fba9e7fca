// The control words of both floating-point units, and the modes that no result depends on.
#pragma once

#include "support/guarded.h"

namespace test {

struct ControlWords {
    uint32_t sse = 0x1f80;
    uint16_t x87 = 0x37f;

    static ControlWords read() {
        ControlWords w;
        asm volatile("stmxcsr %0\n\tfnstcw %1" : "=m"(w.sse), "=m"(w.x87));
        w.sse &= ~0x3fu;   // what happened is no mode
        return w;
    }
    void load() const { asm volatile("ldmxcsr %0\n\tfldcw %1" : : "m"(sse), "m"(x87) : "memory"); }
    bool operator==(const ControlWords&) const = default;

    // Calls f under these, and says whether it has left them.
    template <class F> bool keptBy(F f) const {
        const ControlWords before = read();
        load();
        f();
        const ControlWords after = read();
        before.load();
        return after == *this;
    }
};

constexpr uint32_t kFlush = 0x8040;   // FTZ and DAZ
struct Environment {
    const char* name;
    ControlWords words;
    bool flushes() const { return words.sse & kFlush; }
};
constexpr Environment kModes[] = {{"MXCSR downward", {0x3f80, 0x37f}},
                                  {"MXCSR upward", {0x5f80, 0x37f}},
                                  {"MXCSR toward zero", {0x7f80, 0x37f}},
                                  {"x87 downward", {0x1f80, 0x77f}},
                                  {"x87 upward", {0x1f80, 0xb7f}},
                                  {"x87 toward zero", {0x1f80, 0xf7f}},
                                  {"x87 in single precision", {0x1f80, 0x07f}},
                                  {"x87 in double precision, both upward", {0x5f80, 0xa7f}},
                                  {"FTZ and DAZ, downward", {0xbfc0, 0x77f}},
                                  {"FTZ and DAZ, toward zero", {0xffc0, 0xf7f}}};

// run() gives the same vector, where nothing is subnormal, in every mode.
template <class Run> void expectOwnModes(Run run) {
    const auto want = run();
    for (const Environment& e : kModes) {
        auto got = want;
        EXPECT_TRUE(e.words.keptBy([&] { got = run(); })) << e.name;
        EXPECT_TRUE(same(want, got)) << e.name;
    }
}

}   // namespace test
