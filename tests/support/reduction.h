// Reductions against an oracle: at every short length and two long ones. Places, bad arguments and control words are core/environment_test's.
#pragma once

#include <array>
#include <tuple>
#include <type_traits>
#include <utility>

#include "support/elements.h"
#include "support/exact.h"

namespace test {

template <class R> auto partsOf(const R& r) {
    if constexpr (std::is_arithmetic_v<R>)
        return std::array{(long double)r};
    else
        return std::array{(long double)r.re, (long double)r.im};
}
// A real number as a complex one.
template <class V> std::array<V, 2> complexOf(auto x) { return {V(partsOf(x)[0]), V(partsOf(x).size() > 1 ? partsOf(x).back() : 0)}; }
template <class R> auto partOf(const R& r) {
    if constexpr (std::is_arithmetic_v<R>)
        return r;
    else
        return r.re;
}
template <class R> using Part = decltype(partOf(R{}));
template <class R> constexpr size_t kParts = sizeof(R) / sizeof(Part<R>);

// ---- what a result has to be --------------------------------------------------------------------------------------------------------------------

// And how far off it may be; a zero that may not be off has its sign. NaN stands for NaN.
struct Want {
    std::vector<long double> parts;
    long double tolerance = 0;
};
template <class R> Want exactly(const R& r) {
    const auto parts = partsOf(r);
    return {{parts.begin(), parts.end()}};
}
// Off by `error`, and then rounded to R.
template <class R> Want rounded(std::vector<long double> parts, long double error) {
    long double most = 0;
    for (long double p : parts) most = std::max(most, std::abs(p));
    return {std::move(parts), error + (std::is_integral_v<Part<R>> ? 0.5L : most * (std::numeric_limits<Part<R>>::epsilon() / 2))};
}

// The exact sum of each part, converted to R's or scaled and saturated.
using ExactSums = std::vector<ExactSum>;
template <class R> Want converted(const ExactSums& sums) {
    Want w;
    for (const ExactSum& s : sums) w.parts.push_back(Part<R>(s.value()));
    return w;
}
template <class R> Want scaled(const ExactSums& sums, int scale) {
    Want w;
    for (const ExactSum& s : sums) w.parts.push_back(s.scaled<Part<R>>(scale));
    return w;
}

template <class R>::testing::AssertionResult fits(const Want& want, const R& got) {
    const auto parts = partsOf(got);
    for (size_t i = 0; i < parts.size(); ++i) {
        const long double w = want.parts.at(i), g = parts[i];
        const bool otherZero = w == 0 && g == 0 && want.tolerance == 0 && std::is_floating_point_v<Part<R>> && std::signbit(w) != std::signbit(g);
        if (otherZero || !(w == g || (w != w && g != g) || std::abs(w - g) <= want.tolerance))
            return ::testing::AssertionFailure() << "part " << i << ": want " << w << " within " << want.tolerance << ", got " << g;
    }
    return ::testing::AssertionSuccess();
}

// ---- the sweep --------------------------------------------------------------------------------------------------------------------------------

constexpr int kLong = 2 * 65536 + 37;   // past two blocks of exact sums

inline std::vector<int> lengthsFrom(int least) {
    std::vector<int> lengths = {1003, kLong};
    for (int len = least; len <= 70; ++len) lengths.push_back(len);
    return lengths;
}
// For what does not depend on the length: a scale factor's effect, once it has been swept at some.
inline std::vector<int> lengthsAt(int scaleFactor) { return scaleFactor == 0 || scaleFactor == 5 ? lengthsFrom(1) : std::vector<int>{1, 2, 7, 61, 1003}; }

// The vectors that a sweep takes.
template <class T> using Make = std::vector<T> (*)(size_t);
template <class A, class B = A> struct Vectors {
    std::vector<int> lengths = lengthsFrom(1);
    Make<A> a = randomVector<A>;
    Make<B> b = randomVector<B>;
};
// With each part of each element changed.
template <class T, class Change> std::vector<T> withParts(std::vector<T> v, Change change) {
    for (size_t i = 0; i < v.size() * kParts<T>; ++i) change(reinterpret_cast<Part<T>*>(v.data())[i]);
    return v;
}
template <class T> std::vector<T> lowest(size_t n) {
    return withParts(std::vector<T>(n), [](Part<T>& part) { part = std::numeric_limits<Part<T>>::min(); });
}

// call(sources..., len, result) reduces vectors of the lengths to what oracle(vectors...) says.
template <class R, class Call, class Oracle, class... S> void sweepReduction(const std::vector<int>& lengths, Call call, Oracle oracle, Make<S>... make) {
    for (const int len : lengths) {
        const std::tuple<std::vector<S>...> vectors{make(size_t(len))...};
        const Want want = std::apply(oracle, vectors);
        R result;
        ASSERT_EQ(std::apply([&](auto&... v) { return call(v.data()..., len, &result); }, vectors), StatusOk);
        ASSERT_TRUE(fits(want, result)) << "length " << len;
    }
}

// The same of a function with more arguments behind the result, by its prototype: of one vector, and of two.
template <class T, class R, class... More, class Oracle>
void reduces(Status (*f)(const T*, int, R*, More...), Oracle oracle, const std::type_identity_t<Vectors<T>>& with = {}, std::type_identity_t<More>... more) {
    sweepReduction<R>(
        with.lengths, [=](const T* v, int len, R* r) { return f(v, len, r, more...); }, oracle, with.a);
}
template <class A, class B, class R, class... More, class Oracle>
void reduces(Status (*f)(const A*, const B*, int, R*, More...), Oracle oracle, const std::type_identity_t<Vectors<A, B>>& with = {},
             std::type_identity_t<More>... more) {
    sweepReduction<R>(
        with.lengths, [=](const A* a, const B* b, int len, R* r) { return f(a, b, len, r, more...); }, oracle, with.a, with.b);
}

}   // namespace test
