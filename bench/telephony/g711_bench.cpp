// G.711 against plain loops and tables, and SpanDSP's.
#include "support/bench.h"
#include "telephony/g711_plain.h"
#include "tevs.h"

#if TEVS_PEER_SPANDSP
#include <spandsp.h>
#endif

namespace {

// Samples and codes over the whole range.
template <class S> S value(int i) {
    if constexpr (std::is_same_v<S, float>)
        return float(i * 7919 % 65536 - 32768) / 32768;
    else
        return S(i * 7919);
}
template <class S, class D, class F> void row(const char* operation, const char* who, F f) {
    bench::row(operation, who, bench::kSizes, [=](int n) {
        std::vector<S> src(static_cast<size_t>(n));
        for (int i = 0; i < n; ++i) src[size_t(i)] = value<S>(i);
        return [=, src = std::move(src), dst = std::vector<D>(static_cast<size_t>(n))]() mutable { f(src.data(), dst.data(), n); };
    });
}
template <class S, class D, class P> void encoder(const char* operation, Status (*f)(const S*, D*, int), P plain) {
    row<S, D>(operation, "tevs", f);
    row<S, D>(operation, "plain", plain);
    bench::limit<sizeof(S), sizeof(D)>(operation);
}
// The plain loop looks up what the function gives for each code.
template <class D> void decoder(const char* operation, Status (*f)(const uint8_t*, D*, int)) {
    std::vector<uint8_t> codes(256);
    std::vector<D> table(256);
    for (int c = 0; c < 256; ++c) codes[size_t(c)] = uint8_t(c);
    f(codes.data(), table.data(), 256);
    encoder<uint8_t, D>(operation, f, [=](const uint8_t* s, D* d, int n) { plain::lookUp(s, d, n, table.data()); });
}

const bool registered = [] {
    encoder<int16_t, uint8_t>("LinToALaw_16s8u", tevsLinToALaw_16s8u, [](const int16_t* s, uint8_t* d, int n) { plain::aLaw(s, d, n); });
    encoder<int16_t, uint8_t>("LinToMuLaw_16s8u", tevsLinToMuLaw_16s8u, [](const int16_t* s, uint8_t* d, int n) { plain::muLaw(s, d, n); });
    encoder<float, uint8_t>("LinToALaw_32f8u", tevsLinToALaw_32f8u, [](const float* s, uint8_t* d, int n) { plain::aLaw(s, d, n); });
    encoder<float, uint8_t>("LinToMuLaw_32f8u", tevsLinToMuLaw_32f8u, [](const float* s, uint8_t* d, int n) { plain::muLaw(s, d, n); });
    decoder("ALawToLin_8u16s", tevsALawToLin_8u16s);
    decoder("MuLawToLin_8u16s", tevsMuLawToLin_8u16s);
    decoder("ALawToLin_8u32f", tevsALawToLin_8u32f);
    decoder("MuLawToLin_8u32f", tevsMuLawToLin_8u32f);
    decoder("ALawToMuLaw_8u", tevsALawToMuLaw_8u);
    decoder("MuLawToALaw_8u", tevsMuLawToALaw_8u);
#if TEVS_PEER_SPANDSP
    row<int16_t, uint8_t>("LinToALaw_16s8u", "SpanDSP", [](const int16_t* s, uint8_t* d, int n) {
        for (int i = 0; i < n; ++i) d[i] = linear_to_alaw(s[i]);
    });
    row<int16_t, uint8_t>("LinToMuLaw_16s8u", "SpanDSP", [](const int16_t* s, uint8_t* d, int n) {
        for (int i = 0; i < n; ++i) d[i] = linear_to_ulaw(s[i]);
    });
    row<uint8_t, int16_t>("ALawToLin_8u16s", "SpanDSP", [](const uint8_t* s, int16_t* d, int n) {
        for (int i = 0; i < n; ++i) d[i] = alaw_to_linear(s[i]);
    });
    row<uint8_t, int16_t>("MuLawToLin_8u16s", "SpanDSP", [](const uint8_t* s, int16_t* d, int n) {
        for (int i = 0; i < n; ++i) d[i] = ulaw_to_linear(s[i]);
    });
    row<uint8_t, uint8_t>("ALawToMuLaw_8u", "SpanDSP", [](const uint8_t* s, uint8_t* d, int n) {
        for (int i = 0; i < n; ++i) d[i] = alaw_to_ulaw(s[i]);
    });
    row<uint8_t, uint8_t>("MuLawToALaw_8u", "SpanDSP", [](const uint8_t* s, uint8_t* d, int n) {
        for (int i = 0; i < n; ++i) d[i] = ulaw_to_alaw(s[i]);
    });
#endif
    return true;
}();

}   // namespace
