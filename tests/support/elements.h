// Functions that work element by element, against an oracle. Lengths, places, in-place forms, bad arguments and control words are core/environment_test's.
#pragma once

#include <dlfcn.h>

#include <tuple>
#include <utility>

#include "support/data.h"
#include "support/guarded.h"

namespace test {

constexpr size_t kMany = 2003;

template <class F> const char* nameOf(F f) {
    Dl_info found{};
    dladdr(reinterpret_cast<void*>(f), &found);
    return found.dli_sname ? found.dli_sname : "?";
}
// check(f) for each function, under its name.
template <class Check, class... F> void each(Check check, F... f) {
    const auto named = [=](auto g) {
        SCOPED_TRACE(nameOf(g));
        check(g);
    };
    (named(f), ...);
}

// Equal to the bit, but for which NaN it is.
template <class T>::testing::AssertionResult sameNumbers(std::vector<T> want, std::vector<T> got) {
    for (auto* v : {&want, &got})
        for (T& x : *v) canonical(x);
    return same(want, got);
}

template <class... S> std::tuple<const std::vector<S>&...> of(const std::vector<S>&... sources) { return {sources...}; }

// call(sources, dst, len) gives want(elements) for the elements at each place, and the status.
template <class D, class Call, class Want, class... S>
::testing::AssertionResult agrees(Call call, const std::tuple<const std::vector<S>&...>& sources, Want want, Status status = StatusOk) {
    const auto check = [&](auto&... v) {
        const size_t n = std::min({v.size()...});
        std::vector<D> expected(n), got(n);
        for (size_t i = 0; i < n; ++i) expected[i] = want(v[i]...);
        const Status s = call(v.data()..., got.data(), int(n));
        return s == status ? sameNumbers(expected, got) : ::testing::AssertionFailure() << "status " << s << ", want " << status;
    };
    return std::apply(check, sources);
}

// Calls of f with arguments behind those of agrees(), over elements of any types of the same layout as its own.
template <class... P, class... A> auto with(Status (*f)(P...), A... a) {
    return [=](auto... v) { return std::apply([=](auto... x) { return f((P)(x)...); }, std::tuple(v..., a...)); };
}
// A constant before the destination.
template <class F, class T, class... A> auto by(F f, T val, A... a) {
    return [=](auto s, auto d, int len) { return f(s, val, d, len, a...); };
}
// Calls of an f that works on its destination: what that holds before is the last source.
template <class F, class... A> auto onto(F f, A... a) {
    return [=](auto... v) {
        constexpr size_t n = sizeof...(v) - 3;
        const std::tuple all(v...);
        std::copy_n(std::get<n>(all), std::get<n + 2>(all), std::get<n + 1>(all));
        return [&]<size_t... I>(std::index_sequence<I...>) { return f(std::get<I>(all)..., std::get<n + 1>(all), std::get<n + 2>(all), a...); }
        (std::make_index_sequence<n>());
    };
}

// ---- what results have to be -------------------------------------------------------------------------------------------------------------------

// exact * 2^-scale to nearest, ties to even, saturated; of NaN the least D.
template <class D> D nearest(long double exact, int scale) {
    using Limits = std::numeric_limits<D>;
    if (std::isnan(exact)) return Limits::min();
    return D(std::clamp<long double>(std::nearbyint(std::ldexp(exact, -std::clamp(scale, -40000, 40000))), Limits::min(), Limits::max()));
}

// |got - want| in units of the last place of want; zeros and infinities (beyond the range of T) have to agree with their signs, and any NaN with any other.
template <class T> double ulps(T got, long double want) {
    using Limits = std::numeric_limits<T>;
    if (std::isnan(want) || std::isnan(got)) return std::isnan(want) && std::isnan(got) ? 0 : INFINITY;
    if (got == T(want)) return got == 0 && std::signbit(got) != std::signbit(want) ? INFINITY : 0;
    if (want == 0 || std::isinf(got)) return INFINITY;
    const int exponent = std::max(std::ilogb(want), Limits::min_exponent - 1) - Limits::digits + 1;
    return double(std::ldexp(std::fabs(got - want), -exponent));
}

// Of results that are the same to the bit at every level and in both ABIs, but for which NaN it is.
template <class T> uint64_t hashOf(std::vector<T> v) {
    for (T& x : v)
        if (std::isnan(x)) x = 0;
    return hashOf(v.data(), v.size() * sizeof(T));
}

}   // namespace test
