// Records of transforms of any length, with the types erased.
#pragma once

#include <algorithm>
#include <climits>

#include "support/control_words.h"
#include "support/dft.h"
#include "support/erased.h"

namespace test {

// A record for the length of a scope.
template <class Kind> class Spec {
public:
    template <class... Options> Spec(const Kind& kind, size_t n, Options... options) : kind_(kind) {
        EXPECT_EQ(kind.initAlloc(&spec_, int(n), options...), StatusOk) << kind.name << " " << n;
    }
    ~Spec() { EXPECT_EQ(kind_.free(spec_), StatusOk) << kind_.name; }
    Spec(const Spec&) = delete;
    operator Ptr() const { return spec_; }
    size_t buffer() const {
        int size = -1;
        EXPECT_EQ(kind_.getBufSize(spec_, &size), StatusOk);
        return size_t(size);
    }

private:
    const Kind& kind_;
    void* spec_ = nullptr;
};

inline std::vector<Real> reals(const Vector& v) {
    return withNumber(v.type.number, [&](auto part) {
        std::vector<Real> x(v.parts());
        for (size_t i = 0; i < x.size(); ++i) std::memcpy(&part, &v.bytes[i * sizeof part], sizeof part), x[i] = part;
        return x;
    });
}

// What the distance from the definition grows like over the stages of a transform.
inline double roundings(Number number, size_t n) { return (number == Number::f64 ? 0x1p-53 : 0x1p-24) * std::sqrt(std::log2(double(n)) + 1); }
inline size_t largestPrime(size_t n) {
    size_t most = 1;
    for (size_t d = 2; n > 1; ++d)
        for (; n % d == 0; n /= d) most = d;
    return most;
}

// How far a 16-bit result is from the value that it is rounded from.
inline Real distanceSaturated(Real want, int scaleFactor, Real got) { return std::abs(std::clamp<Real>(std::ldexp(want, -scaleFactor), -32768, 32767) - got); }

// Zeros stay, and all else of 16 bits saturates or vanishes, at scales that leave nothing in between.
template <class Run> void checkExtremeScales(const Vector& x, Run run) {
    for (int scaleFactor : {INT_MIN, -1000, -128, 127, 128, 1000, INT_MAX}) {
        const auto still = reals(run(Vector(x.type, x.size()), scaleFactor)), y = reals(run(x, scaleFactor));
        for (size_t i = 0; i < y.size(); ++i)
            ASSERT_TRUE(still[i] == 0 && (y[i] == 0 || (scaleFactor < 0 && (y[i] == 32767 || y[i] == -32768)))) << scaleFactor << " at " << i;
    }
}

// In place or not, at any address, in whose work buffer ever: the same bits, and nothing touched beside the destination. call(src, dst, buffer)
template <class Call> void checkPlaces(const Vector& src, const Vector& want, size_t bufferSize, Call call) {
    const int e = int(src.type.size());
    for (Place at : {Place{0, false}, Place{e, false}, Place{1, false}, Place{2 * e, false}, Place{3 * e, false}, Place{0, true}, Place{1, true}}) {
        const Guarded<uint8_t> in(src.bytes, at);
        Guarded<uint8_t> out(want.bytes.size(), at), both(std::max(src.bytes.size(), want.bytes.size()), at),
            buffer(bufferSize, {at.offset / e * 5 + at.offset % e, at.atEnd});
        ASSERT_EQ(call(in.data(), out.data(), bufferSize ? Ptr(buffer.data()) : Ptr()), StatusOk);
        ASSERT_TRUE(same(want.bytes, out.values())) << "offset " << at.offset;
        ASSERT_TRUE(same(src.bytes, in.values()) && in.intact() && out.intact() && buffer.intact()) << "offset " << at.offset;
        if (src.type.size() != want.type.size()) continue;   // is not done in place
        both.assign(src.bytes);
        ASSERT_EQ(call(both.data(), both.data(), at.atEnd ? Ptr() : Ptr(buffer.data())), StatusOk);
        ASSERT_TRUE(same(want, Vector(want.type, both.values()).slice(0, want.size()))) << "in place, offset " << at.offset;
        ASSERT_TRUE(both.intact() && buffer.intact()) << "in place, offset " << at.offset;
    }
}

// A record in a block of exactly its size, at any address, works: check(spec) says so. Building it keeps to its two blocks. init(ppSpec, memory, scratch)
template <class Kind, class Init, class Check> void checkRecordPlaces(const Kind& kind, int specSize, int initSize, int step, Init init, Check check) {
    for (int offset = 0; offset < 16; offset += step)
        for (bool atEnd : {false, true}) {
            Guarded<uint8_t> memory(size_t(specSize), {offset, atEnd}), scratch(size_t(initSize), {offset, atEnd});
            void* spec = nullptr;
            ASSERT_EQ(init(&spec, memory.data(), initSize ? scratch.data() : nullptr), StatusOk);
            ASSERT_EQ(reinterpret_cast<uintptr_t>(spec), (reinterpret_cast<uintptr_t>(memory.data()) + 15) / 16 * 16);
            ASSERT_EQ(std::memcmp(spec, &kind.identifier, sizeof kind.identifier), 0);
            const auto record = memory.values();
            check(spec);
            ASSERT_TRUE(same(record, memory.values())) << "a call changed the record";
            ASSERT_EQ(kind.free(spec), StatusOk);
            ASSERT_EQ(kind.free(spec), StatusContextMismatch);
            ASSERT_TRUE(memory.intact() && scratch.intact()) << "offset " << offset;
        }
}

}   // namespace test
