// Functions that work element by element, against an oracle. Lengths, places, in-place forms, bad arguments and control words are core/environment_test's.
#pragma once

#include "support/data.h"
#include "support/guarded.h"

namespace test {

constexpr size_t kMany = 2003;

// Equal to the bit, but for which NaN it is.
template <class T>::testing::AssertionResult sameNumbers(std::vector<T> want, std::vector<T> got) {
    for (auto* v : {&want, &got})
        for (T& x : *v) canonical(x);
    return same(want, got);
}

// call(sources, dst, len) gives want(elements) for the elements at each place, and the status.
template <class D, class Call, class Want, class... S>::testing::AssertionResult agrees(Status status, Call call, Want want, const std::vector<S>&... sources) {
    const size_t n = std::min({sources.size()...});
    std::vector<D> expected(n), got(n);
    for (size_t i = 0; i < n; ++i) expected[i] = want(sources[i]...);
    if (const Status s = call(sources.data()..., got.data(), int(n)); s != status)
        return ::testing::AssertionFailure() << "status " << s << ", want " << status;
    return sameNumbers(expected, got);
}
template <class D, class Call, class Want, class... S>::testing::AssertionResult agrees(Call call, Want want, const std::vector<S>&... sources) {
    return agrees<D>(StatusOk, call, want, sources...);
}

}   // namespace test
