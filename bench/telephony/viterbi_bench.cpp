// Encoding and decoding of convolutional codes, ns a bit: in frames that begin and end in state 0, and in a stream, against plain loops and the decoders of others.
#include <array>
#include <memory>

#include "support/bench.h"
#include "telephony/viterbi_plain.h"
#include "tevs.h"

#if TEVS_PEER_OSMOCORE
extern "C" {
#include <osmocom/core/conv.h>
}
#endif

namespace {

struct Code {
    const char* name;
    int constraintLen;
    std::vector<int> poly;
    int polys() const { return int(poly.size()); }
};
const std::vector<Code> kCodes = {{"K7_half", 7, {0171, 0133}},
                                  {"K7_third", 7, {0171, 0133, 0165}},
                                  {"K9_half", 9, {0561, 0753}},
                                  {"K9_third", 9, {0557, 0663, 0711}},
                                  {"K5_half", 5, {023, 033}}};

std::vector<int8_t> noise(size_t n) {
    std::vector<int8_t> v(n);
    uint32_t x = 1;
    for (auto& s : v) s = int8_t((x = x * 1664525u + 1013904223u) >> 24);
    return v;
}
std::shared_ptr<ViterbiState> decoder(const Code& c, int traceLen) {
    ViterbiState* s = nullptr;
    tevsViterbiInitAlloc(&s, c.poly.data(), c.polys(), c.constraintLen, traceLen);
    return {s, tevsViterbiFree};
}

#if TEVS_PEER_OSMOCORE
// Its registers take the newest bit at the lower end.
struct Osmo {
    std::vector<std::array<uint8_t, 2>> output, state;
    osmo_conv_code code{};
    Osmo(const Code& c, int len) : output(size_t(1) << (c.constraintLen - 1)), state(output.size()) {
        for (size_t s = 0; s < output.size(); ++s)
            for (unsigned u = 0; u < 2; ++u) {
                const unsigned r = unsigned(s) << 1 | u;
                unsigned symbol = 0;
                for (int p : c.poly) {
                    unsigned parity = 0;
                    for (int b = 0; b < c.constraintLen; ++b) parity ^= r >> b & unsigned(p) >> (c.constraintLen - 1 - b) & 1;
                    symbol = 2 * symbol + parity;
                }
                output[s][u] = uint8_t(symbol);
                state[s][u] = uint8_t(r & (output.size() - 1));
            }
        code.N = c.polys();
        code.K = c.constraintLen;
        code.len = len;
        code.next_output = reinterpret_cast<const uint8_t(*)[2]>(output.data());
        code.next_state = reinterpret_cast<const uint8_t(*)[2]>(state.data());
    }
};
#endif

const bool registered = [] {
    const std::vector<int64_t> frames = {200, 2000}, streams = {1 << 17};
    for (const Code& c : kCodes) {
        const int tail = c.constraintLen - 1, trace = 10 * tail;
        const std::string frame = std::string("ViterbiFrame_") + c.name, stream = std::string("ViterbiStream_") + c.name;
        bench::row(frame, "tevs", frames, [=](int n) {
            return [=, d = decoder(c, trace), soft = noise(size_t((n + tail) * c.polys())), out = std::vector<uint8_t>(size_t(n + 2 * trace))]() mutable {
                int released, rest;
                tevsViterbi_8s8u(soft.data(), n + tail, out.data(), &released, d.get());
                tevsViterbiFlush_8u(&out[size_t(released)], &rest, 0, d.get());
            };
        });
        bench::row(stream, "tevs", streams, [=](int n) {
            return [=, d = decoder(c, trace), soft = noise(size_t(n * c.polys())), out = std::vector<uint8_t>(size_t(n + trace))]() mutable {
                int released;
                tevsViterbi_8s8u(soft.data(), n, out.data(), &released, d.get());
            };
        });
        bench::row(frame, "plain", frames, [=](int n) {
            return [d = std::make_shared<plain::Viterbi>(c.poly.data(), c.polys(), c.constraintLen, n + tail), soft = noise(size_t((n + tail) * c.polys())),
                    out = std::vector<uint8_t>(size_t(n + tail))]() mutable { d->decode(soft.data(), out.data()); };
        });
        const std::string encoder = std::string("ViterbiEncode_") + c.name;
        bench::row(encoder, "tevs", {200, 16384}, [=](int n) {
            return [=, bits = std::vector<uint8_t>(size_t(n), 1), out = std::vector<uint8_t>(size_t(n * c.polys()))]() mutable {
                int shift = 0;
                tevsViterbiEncode_8u(bits.data(), out.data(), n, c.poly.data(), c.polys(), c.constraintLen, &shift);
            };
        });
        bench::row(encoder, "plain", {200, 16384}, [=](int n) {
            return [=, bits = std::vector<uint8_t>(size_t(n), 1), out = std::vector<uint8_t>(size_t(n * c.polys()))]() mutable {
                plain::encode(bits.data(), out.data(), n, c.poly.data(), c.polys(), c.constraintLen);
            };
        });
#if TEVS_PEER_OSMOCORE
        bench::row(frame, "osmocore", frames, [=](int n) {
            return [o = std::make_shared<Osmo>(c, n), soft = noise(size_t((n + tail) * c.polys())), out = std::vector<uint8_t>(size_t(n + tail))]() mutable {
                osmo_conv_decode(&o->code, soft.data(), out.data());
            };
        });
#endif
    }
    return true;
}();

}   // namespace
