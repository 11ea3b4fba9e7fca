// Random numbers against the C++ library's Mersenne twister and its distributions.
#include <random>

#include "support/bench.h"
#include "tevs.h"

namespace {

template <class T, class F> void row(const char* operation, const char* who, F f) {
    bench::row(operation, who, bench::kSizes, [=](int n) { return [=, dst = std::vector<T>(static_cast<size_t>(n))]() mutable { f(dst.data(), n); }; });
}
template <class T, class Distribution> void twister(const char* operation, Distribution d) {
    row<T>(operation, "std::mt19937", [d, g = std::mt19937(5)](T* dst, int n) mutable {
        for (int i = 0; i < n; ++i) dst[i] = T(d(g));
    });
}
// One record for all rows of a function: what is timed is the call.
template <class T, class State> void record(const char* operation, State* state, Status (*f)(T*, int, State*)) {
    row<T>(operation, "tevs", [=](T* dst, int n) { f(dst, n, state); });
}
template <class T> void direct(const char* operation, Status (*f)(T*, int, T, T, uint32_t*)) {
    row<T>(operation, "tevs", [=, seed = 5u](T* dst, int n) mutable { f(dst, n, T(0), T(100), &seed); });
}

const bool registered = [] {
    RandUniState_8u* u8;
    RandUniState_16s* u16;
    RandUniState_32f* u32;
    RandGaussState_8u* g8;
    RandGaussState_16s* g16;
    RandGaussState_32f* g32;
    if (tevsRandUniformInitAlloc_8u(&u8, 0, 255, 5) || tevsRandUniformInitAlloc_16s(&u16, -1000, 1000, 5) || tevsRandUniformInitAlloc_32f(&u32, -1, 1, 5) ||
        tevsRandGaussInitAlloc_8u(&g8, 100, 20, 5) || tevsRandGaussInitAlloc_16s(&g16, 0, 1000, 5) || tevsRandGaussInitAlloc_32f(&g32, 0, 1, 5))
        return false;
    record<uint8_t>("RandUniform_8u", u8, tevsRandUniform_8u);
    record<int16_t>("RandUniform_16s", u16, tevsRandUniform_16s);
    record<float>("RandUniform_32f", u32, tevsRandUniform_32f);
    twister<uint8_t>("RandUniform_8u", std::uniform_int_distribution<int>(0, 255));
    twister<int16_t>("RandUniform_16s", std::uniform_int_distribution<int>(-1000, 1000));
    twister<float>("RandUniform_32f", std::uniform_real_distribution<float>(-1, 1));
    record<uint8_t>("RandGauss_8u", g8, tevsRandGauss_8u);
    record<int16_t>("RandGauss_16s", g16, tevsRandGauss_16s);
    record<float>("RandGauss_32f", g32, tevsRandGauss_32f);
    twister<uint8_t>("RandGauss_8u", std::normal_distribution<float>(100, 20));
    twister<int16_t>("RandGauss_16s", std::normal_distribution<float>(0, 1000));
    twister<float>("RandGauss_32f", std::normal_distribution<float>(0, 1));
    direct<int16_t>("RandUniform_Direct_16s", tevsRandUniform_Direct_16s);
    direct<float>("RandUniform_Direct_32f", tevsRandUniform_Direct_32f);
    direct<double>("RandUniform_Direct_64f", tevsRandUniform_Direct_64f);
    twister<double>("RandUniform_Direct_64f", std::uniform_real_distribution<double>(0, 100));
    direct<float>("RandGauss_Direct_32f", tevsRandGauss_Direct_32f);
    direct<double>("RandGauss_Direct_64f", tevsRandGauss_Direct_64f);
    twister<double>("RandGauss_Direct_64f", std::normal_distribution<double>(0, 100));
    return true;
}();

}   // namespace
