// Elements of any type as numbers of extended precision, and the sizes that functions report.
#pragma once

#include <complex>
#include <limits>
#include <utility>

#include "support/erased.h"

namespace test {

// The values that an oracle computes with; real elements have no imaginary part.
using Value = std::complex<Real>;
inline std::vector<Value> numbers(const Vector& v) {
    std::vector<Value> all;
    for (size_t i = 0; i < v.parts(); i += size_t(v.type.parts)) all.push_back({v.part(i), v.type.parts == 2 ? v.part(i + 1) : 0});
    return all;
}

// The least and the largest of a type, which results saturate at.
inline std::pair<Real, Real> rangeOf(Number number) {
    return withNumber(number, [](auto v) {
        return std::pair<Real, Real>{std::numeric_limits<decltype(v)>::lowest(), std::numeric_limits<decltype(v)>::max()};
    });
}

// What f(a..., &size) sets: bytes of a record.
template <class F, class... A> size_t reported(F f, A... a) {
    int size = -1;
    EXPECT_EQ(f(a..., &size), StatusOk);
    return size_t(size);
}

}   // namespace test
