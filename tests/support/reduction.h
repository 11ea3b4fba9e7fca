// Reductions against an oracle: at every short length and two long ones, at any address, with nothing written but the result.
#pragma once

#include <array>
#include <cstring>
#include <type_traits>
#include <vector>

#include "support/data.h"
#include "support/guarded.h"

namespace test {

template <class R> auto partsOf(const R& r) {
    if constexpr (std::is_arithmetic_v<R>)
        return std::array{(long double)r};
    else
        return std::array{(long double)r.re, (long double)r.im};
}

// What a result has to be, and how far off it may be. NaN stands for NaN.
struct Want {
    std::vector<long double> parts;
    long double tolerance = 0;
};
template <class R> Want exactly(const R& r) {
    const auto parts = partsOf(r);
    return {{parts.begin(), parts.end()}};
}

template <class R>::testing::AssertionResult fits(const Want& want, const R& got) {
    const auto parts = partsOf(got);
    for (size_t i = 0; i < parts.size(); ++i) {
        const long double w = want.parts.at(i), g = parts[i];
        if (w == g || (w != w && g != g)) continue;
        if (!(std::abs(w - g) <= want.tolerance))
            return ::testing::AssertionFailure() << "part " << i << ": want " << w << " within " << want.tolerance << ", got " << g;
    }
    return ::testing::AssertionSuccess();
}

constexpr int kLong = 2 * 65536 + 37;   // past two blocks of exact sums

inline std::vector<int> lengthsFrom(int least) {
    std::vector<int> lengths = {1003, kLong};
    for (int len = least; len <= 70; ++len) lengths.push_back(len);
    return lengths;
}
// For what does not depend on the length: a scale factor's effect, once it has been swept at some.
inline std::vector<int> lengthsAt(int scaleFactor) { return scaleFactor == 0 || scaleFactor == 5 ? lengthsFrom(1) : std::vector<int>{1, 2, 7, 61, 1003}; }

// call(a, b, len, result) reduces vectors that make() has made, oracle(a, b) says what comes out. The result depends on the elements alone: it is the same to the
// bit wherever they lie.
template <class A, class B, class R, class Call, class Oracle, class MakeA = std::vector<A> (*)(size_t), class MakeB = std::vector<B> (*)(size_t)>
void sweepReduction(Call call, Oracle oracle, MakeA makeA = randomVector<A>, MakeB makeB = randomVector<B>, const std::vector<int>& lengths = lengthsFrom(1)) {
    for (const int len : lengths) {
        const std::vector<A> a = makeA(size_t(len));
        const std::vector<B> b = makeB(size_t(len));
        const Want want = oracle(a, b);
        std::vector<R> first;
        for (int offset = len == kLong ? 3 : 0; offset < 5; ++offset) {
            const int at = offset < 4 ? offset : 0;
            const Guarded<A> srcA(a, Place{at * int(sizeof(A)), offset < 4});
            const Guarded<B> srcB(b, Place{(3 - at) * int(sizeof(B)), offset < 3});
            Guarded<R> result(1);
            ASSERT_EQ(call(srcA.data(), srcB.data(), len, result.data()), StatusOk);
            ASSERT_TRUE(fits(want, result.values()[0])) << "length " << len;
            ASSERT_TRUE(result.intact());
            if (first.empty()) first = result.values();
            ASSERT_TRUE(same(first, result.values())) << "length " << len << " offset " << offset;
        }
    }
}
template <class T, class R, class Call, class Oracle, class Make = std::vector<T> (*)(size_t)>
void sweepReduction1(Call call, Oracle oracle, Make make = randomVector<T>, const std::vector<int>& lengths = lengthsFrom(1)) {
    sweepReduction<T, char, R>([=](const T* p, const char*, int len, R* r) { return call(p, len, r); },
                               [=](const std::vector<T>& v, const std::vector<char>&) { return oracle(v); }, make, randomVector<char>, lengths);
}

}   // namespace test
