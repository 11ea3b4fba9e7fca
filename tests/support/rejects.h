// Bad pointers and lengths, for any function whose length follows its last pointer.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <iterator>
#include <tuple>
#include <type_traits>

#include "tevs/types.h"

namespace test {

// Each pointer null in turn, with a bad length too, which comes second; then bad lengths. No byte changes.
template <class... P> void rejects(Status (*f)(P...)) {
    constexpr size_t n = sizeof...(P);
    using Arguments = std::tuple<P...>;
    constexpr bool isPointer[] = {std::is_pointer_v<P>...};
    constexpr size_t lenAt = size_t(std::find(std::rbegin(isPointer), std::rend(isPointer), true).base() - std::begin(isPointer));
    alignas(16) unsigned char memory[n][32], before[n][32];
    std::memset(memory, 0x3c, sizeof memory);
    std::memcpy(before, memory, sizeof memory);
    const auto call = [&](size_t nullAt, int len) {
        size_t i = 0;
        const auto argument = [&]<class A>(std::type_identity<A>) -> A {
            const size_t at = i++;
            if constexpr (std::is_pointer_v<A>)
                return at == nullAt ? nullptr : reinterpret_cast<A>(memory[at]);
            else if constexpr (std::is_same_v<A, int>)
                return at == lenAt ? len : 1;
            else
                return A{};
        };
        return std::apply(f, Arguments{argument(std::type_identity<P>{})...});
    };
    for (size_t i = 0; i < n; ++i)
        for (int len : {1, 0})
            if (isPointer[i]) {
                EXPECT_EQ(call(i, len), StatusNullPtr) << "argument " << i;
            }
    for (int len : {0, -1, INT_MIN}) EXPECT_EQ(call(n, len), StatusBadSize);
    EXPECT_EQ(std::memcmp(memory, before, sizeof memory), 0);
}

}   // namespace test
