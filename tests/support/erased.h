// Values and functions with their types erased: a test over many types is compiled once.
#pragma once

#include <cmath>
#include <complex>
#include <cstring>
#include <tuple>
#include <type_traits>

#include "support/data.h"
#include "support/guarded.h"

namespace test {

using Real = long double;

// ---- values ---------------------------------------------------------------------------------------------------------------------------------

enum class Number { i16, i32, f32, f64 };
template <class F> auto withNumber(Number n, F f) {
    switch (n) {
        case Number::i16:
            return f(int16_t{});
        case Number::i32:
            return f(int32_t{});
        case Number::f32:
            return f(float{});
        default:
            return f(double{});
    }
}

struct Type {
    Number number;
    int parts;
    size_t size() const { return (number == Number::i16 ? 2 : number == Number::f64 ? 8 : 4) * size_t(parts); }
    bool whole() const { return number <= Number::i32; }
};
template <class T> constexpr Type typeOf() {
    if constexpr (requires(T z) { z.re; })
        return {typeOf<decltype(T::re)>().number, 2};
    else
        return {std::is_same_v<T, int16_t> ? Number::i16 : std::is_same_v<T, int32_t> ? Number::i32 : std::is_same_v<T, float> ? Number::f32 : Number::f64, 1};
}

// Elements as the bytes that functions take.
struct Vector {
    Type type;
    std::vector<uint8_t> bytes;
    explicit Vector(Type t, size_t n = 0) : type(t), bytes(n * t.size()) {}
    Vector(Type t, std::vector<uint8_t> b) : type(t), bytes(std::move(b)) {}
    size_t size() const { return bytes.size() / type.size(); }
    uint8_t* at(size_t n) { return bytes.data() + n * type.size(); }
    const uint8_t* at(size_t n) const { return bytes.data() + n * type.size(); }
    size_t parts() const { return size() * size_t(type.parts); }
    Real part(size_t i) const {
        return withNumber(type.number, [&](auto x) { return std::memcpy(&x, &bytes[i * sizeof x], sizeof x), Real(x); });
    }
    void setPart(size_t i, Real v) {
        withNumber(type.number, [&](auto x) { return x = decltype(x)(v), std::memcpy(&bytes[i * sizeof x], &x, sizeof x), 0; });
    }
    Vector slice(size_t from, size_t n) const { return {type, {at(from), at(from + n)}}; }
};
inline Vector randomVector(Type t, size_t n) {
    Vector v(t, n);
    withNumber(t.number, [&](auto x) {
        for (size_t i = 0; i < v.parts(); ++i) x = randomValue<decltype(x)>(), std::memcpy(&v.bytes[i * sizeof x], &x, sizeof x);
        return 0;
    });
    return v;
}
inline ::testing::AssertionResult same(const Vector& a, const Vector& b) { return same(a.bytes, b.bytes); }

// Error norm over signal norm.
template <class Numbers> double distance(const Numbers& want, const Numbers& got) {
    Real off = 0, all = 0;
    for (size_t i = 0; i < want.size(); ++i) {
        off += std::norm(want[i] - got[i]);
        all += std::norm(want[i]);
    }
    return double(std::sqrt(off / all));
}

// ---- functions ------------------------------------------------------------------------------------------------------------------------------

// Arguments that become what a function takes there: an address of anything, an element by value, and factors of taps and of results that only some functions take.
struct Ptr {
    const void* p = nullptr;
    Ptr() = default;
    Ptr(std::nullptr_t) {}
    template <class T> Ptr(T* q) : p(q) {}
    Ptr(const Vector& v) : p(v.bytes.data()) {}
    template <class T> operator T*() const { return static_cast<T*>(const_cast<void*>(p)); }
};
struct Element {
    const void* p;
    template <class T> operator T() const {
        T x;
        std::memcpy(&x, p, sizeof x);
        return x;
    }
};
template <int> struct Optional { int of; };
using Factor = Optional<0>;
using Scale = Optional<1>;

template <bool F, bool S, class A> auto argument(A a) {
    if constexpr (requires { a.arguments(); })
        return a.arguments();
    else if constexpr (std::is_same_v<A, Factor> || std::is_same_v<A, Scale>) {
        if constexpr (std::is_same_v<A, Factor> ? F : S)
            return std::tuple{a.of};
        else
            return std::tuple{};
    } else
        return std::tuple{a};
}
template <class Function, class Tuple> constexpr bool takes = false;
template <class Function, class... A> constexpr bool takes<Function, std::tuple<A...>> = std::is_invocable_v<Function, A...>;
template <auto Function, bool F, bool S, class... A> Status call(A... a) {
    const auto all = std::tuple_cat(argument<F, S>(a)...);
    if constexpr (takes<decltype(Function), std::remove_const_t<decltype(all)>>)
        return std::apply(Function, all);
    else if constexpr (F)
        return call<Function, false, S>(a...);
    else
        return call<Function, true, false>(a...);
}
template <auto Function> constexpr auto erased = []<class... A>(A... a) { return call<Function, true, true>(a...); };

inline void expectEach(Status want, std::initializer_list<Status> all) {
    for (const Status& got : all) EXPECT_EQ(got, want) << "call " << &got - all.begin();
}

}   // namespace test
