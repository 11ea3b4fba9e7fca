// Exported functions as data: what a prototype says of its parameters, and a call with arguments that were chosen at run time. Any function fits; of a record no more is known than its pointer.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/data.h"

namespace test {

enum class Data { Tame, Wild };   // floats of either kind: of magnitudes about 1, or any at all

// Integers: of any magnitude, and small ones, where ties are; and where there is room for them, all values of 16 bits.
template <class T> std::vector<T> samples(size_t n, Data data) {
    if constexpr (std::is_integral_v<T>) {
        std::vector<T> v = randomVector<T>(n);
        for (size_t i = 0; i < n; ++i)
            if (sizeof(T) == 2 && n >= 65536)
                v[i] = T(i);
            else if (generator()() % 2)
                v[i] = T(int(generator()() % 41) - 20);
        return v;
    } else if constexpr (std::is_floating_point_v<T>) {
        std::vector<T> v = data == Data::Wild ? wildFloats<T>(n) : randomVector<T>(n);
        for (T& x : v)
            if (const uint64_t r = generator()(); r % 4 == 0)
                x = T(int(r >> 8 & 31) - 15) / 2;
            else if (data == Data::Tame)
                x = std::copysign(std::ldexp(1 + std::fabs(x), int(r >> 8 & 15) - 10), x);
        return v;
    } else {
        const auto parts = samples<decltype(T::re)>(2 * n, data);
        std::vector<T> v(n);
        std::memcpy(v.data(), parts.data(), n * sizeof(T));
        return v;
    }
}

struct Argument {   // by value; wide enough for any
    alignas(16) unsigned char bytes[16];
    template <class T> void set(const T& x) { std::memcpy(bytes, &x, sizeof x); }
};

struct Parameter {
    std::string name;
    bool pointer, written, vectors, record, isInt;   // vectors: a pointer to pointers
    size_t stride;                                   // bytes of an element
    void (*fill)(void* p, size_t n, Data data);      // samples
    void (*settle)(void* p, size_t n);               // makes each NaN the same
    void (*constant)(Argument& a, int whole);        // for a parameter by value: (whole, -3), or 0.1 less where there are fractions

    bool is(std::string_view what) const { return name == what; }
    bool isLength() const { return is("len") || is("numIters") || is("chanLen") || is("srcLen") || is("dstLen"); }
};

struct Function {
    std::string_view name;
    bool processes;   // returns a Status
    std::vector<Parameter> parameters;
    void (*address)();
    Status (*invoke)(void (*f)(), const Argument* arguments);

    Status operator()(const std::vector<Argument>& arguments) const { return invoke(address, arguments.data()); }
    const Parameter* find(std::string_view parameter) const {
        const auto p = std::find_if(parameters.begin(), parameters.end(), [=](const Parameter& q) { return q.is(parameter); });
        return p == parameters.end() ? nullptr : &*p;
    }
    bool hasState() const {
        return std::any_of(parameters.begin(), parameters.end(), [](const Parameter& p) { return p.record; });
    }
};
// Whether any of these is part of its name.
inline bool names(const Function& f, std::initializer_list<std::string_view> parts) {
    return std::any_of(parts.begin(), parts.end(), [&](std::string_view part) { return f.name.find(part) != f.name.npos; });
}

template <class T> struct Element {   // of type T, which may be incomplete
    using Type = std::remove_const_t<T>;
};
template <class T> struct Element<T*> : Element<T> {};
template <class T> struct Element<T* const> : Element<T> {};

template <class P> Parameter describe() {
    using To = std::remove_pointer_t<P>;
    using T = typename Element<P>::Type;
    Parameter p{};
    p.pointer = std::is_pointer_v<P>;
    p.written = p.pointer && !std::is_const_v<To>;
    p.vectors = std::is_pointer_v<To>;
    p.isInt = std::is_same_v<P, int>;
    if constexpr (std::is_void_v<T>) {
        p.record = true;
    } else if constexpr (!requires { sizeof(T); }) {
        p.record = true;
    } else if constexpr (std::is_arithmetic_v<T> || Complex<T>) {
        p.stride = sizeof(T);
        p.fill = [](void* to, size_t n, Data data) { std::memcpy(to, samples<T>(n, data).data(), n * sizeof(T)); };
        p.settle = [](void* v, size_t n) {
            for (size_t i = 0; i < n; ++i) {
                T x;
                std::memcpy(&x, static_cast<char*>(v) + i * sizeof x, sizeof x);
                canonical(x);
                std::memcpy(static_cast<char*>(v) + i * sizeof x, &x, sizeof x);
            }
        };
        p.constant = [](Argument& a, int whole) {
            if constexpr (Complex<T>) {
                using R = decltype(T::re);
                a.set(T{R(whole - 0.1), R(-3.1)});
            } else {
                a.set(T(std::is_integral_v<T> ? whole : whole - 0.1));
            }
        };
    }
    return p;
}

// The prototype's text gives the names: "(const float* pSrc, float* pDst, int len)".
template <class R, class... P> Function function(std::string_view name, R (*f)(P...), std::string_view prototype) {
    Function g{name, std::is_same_v<R, Status>, {describe<P>()...}, reinterpret_cast<void (*)()>(f), nullptr};
    if constexpr (std::is_same_v<R, Status>)
        g.invoke = [](void (*address)(), const Argument* arguments) {
            return [&]<size_t... I>(std::index_sequence<I...>) {
                const auto get = []<class T>(const Argument& a, std::type_identity<T>) {
                    T x;
                    std::memcpy(&x, a.bytes, sizeof x);
                    return x;
                };
                return reinterpret_cast<Status (*)(P...)>(address)(get(arguments[I], std::type_identity<P>{})...);
            }
            (std::index_sequence_for<P...>{});
        };
    for (Parameter& p : g.parameters) {
        const size_t end = prototype.find_first_of(",)"), start = prototype.find_last_of(" *", end) + 1;
        p.name = prototype.substr(start, end - start);
        prototype.remove_prefix(end + 1);
        // Three bytes to an element in a format that C has no type for.
        if (p.stride == 1 && (name.find("24s") != name.npos || name.find("24u") != name.npos)) p.stride = 3;
    }
    return g;
}

template <auto f> Function made(std::string_view name, std::string_view prototype) { return function(name, f, prototype); }

// Every function that the headers declare, in their order; the build writes the list.
const std::vector<Function>& functions();

}   // namespace test
