// Movement and logic against the C library, plain loops and VOLK.
#include <cstring>
#if TEVS_PEER_VOLK
#include <volk/volk.h>
#endif

#include "support/bench.h"
#include "vector/movement_plain.h"

namespace {

using bench::kSizes;

// call(src1, src2, dst1, dst2, n) over vectors of zeros, as wide as the widest element.
template <class Call> void add(const char* operation, const char* who, Call call) {
    bench::row(operation, who, kSizes, [=](int n) {
        const size_t words = 2 * size_t(n);
        return [=, a = std::vector<uint64_t>(words), b = std::vector<uint64_t>(words), c = std::vector<uint64_t>(words),
                d = std::vector<uint64_t>(words)]() mutable { call(a.data(), b.data(), c.data(), d.data(), n); };
    });
}
template <class T> T* as(uint64_t* p) { return reinterpret_cast<T*>(p); }

using P = uint64_t*;

const bool registered = [] {
    add("Copy_32f", "tevs", [](P a, P, P c, P, int n) { tevsCopy_32f(as<float>(a), as<float>(c), n); });
    add("Copy_32f", "memcpy", [](P a, P, P c, P, int n) { memcpy(c, a, size_t(n) * 4); });
    add("Zero_32f", "tevs", [](P, P, P c, P, int n) { tevsZero_32f(as<float>(c), n); });
    add("Zero_32f", "memset", [](P, P, P c, P, int n) { memset(c, 0, size_t(n) * 4); });
    add("Set_32f", "tevs", [](P, P, P c, P, int n) { tevsSet_32f(1.5f, as<float>(c), n); });
    add("Set_32f", "memset", [](P, P, P c, P, int n) { memset(c, 1, size_t(n) * 4); });
    add("Set_32f", "plain", [](P, P, P c, P, int n) { plain::set(1.5f, as<float>(c), n); });
    add("Flip_8u", "tevs", [](P a, P, P c, P, int n) { tevsFlip_8u(as<uint8_t>(a), as<uint8_t>(c), n); });
    add("Flip_8u", "plain", [](P a, P, P c, P, int n) { plain::flip(as<uint8_t>(a), as<uint8_t>(c), n); });
    add("Flip_32f", "tevs", [](P a, P, P c, P, int n) { tevsFlip_32f(as<float>(a), as<float>(c), n); });
    add("Flip_32f", "plain", [](P a, P, P c, P, int n) { plain::flip(as<float>(a), as<float>(c), n); });
    add("SwapBytes_16u", "tevs", [](P a, P, P c, P, int n) { tevsSwapBytes_16u(as<uint16_t>(a), as<uint16_t>(c), n); });
    add("SwapBytes_16u", "plain", [](P a, P, P c, P, int n) { plain::swapBytes16(as<uint16_t>(a), as<uint16_t>(c), n); });
    add("SwapBytes_24u", "tevs", [](P a, P, P c, P, int n) { tevsSwapBytes_24u(as<uint8_t>(a), as<uint8_t>(c), n); });
    add("SwapBytes_24u", "plain", [](P a, P, P c, P, int n) { plain::swapBytes24(as<uint8_t>(a), as<uint8_t>(c), n); });
    add("SwapBytes_32u", "tevs", [](P a, P, P c, P, int n) { tevsSwapBytes_32u(as<uint32_t>(a), as<uint32_t>(c), n); });
    add("SwapBytes_32u", "plain", [](P a, P, P c, P, int n) { plain::swapBytes32(as<uint32_t>(a), as<uint32_t>(c), n); });
    add("Real_16sc", "tevs", [](P a, P, P c, P, int n) { tevsReal_16sc(as<Complex16s>(a), as<int16_t>(c), n); });
    add("Real_16sc", "plain", [](P a, P, P c, P, int n) { plain::real(as<Complex16s>(a), as<int16_t>(c), n); });
    add("CplxToReal_32fc", "tevs", [](P a, P, P c, P d, int n) { tevsCplxToReal_32fc(as<Complex32f>(a), as<float>(c), as<float>(d), n); });
    add("CplxToReal_32fc", "plain", [](P a, P, P c, P d, int n) { plain::split(as<Complex32f>(a), as<float>(c), as<float>(d), n); });
    add("RealToCplx_32f", "tevs", [](P a, P b, P c, P, int n) { tevsRealToCplx_32f(as<float>(a), as<float>(b), as<Complex32f>(c), n); });
    add("RealToCplx_32f", "plain", [](P a, P b, P c, P, int n) { plain::join(as<float>(a), as<float>(b), as<Complex32f>(c), n); });
    add("Conj_32fc", "tevs", [](P a, P, P c, P, int n) { tevsConj_32fc(as<Complex32f>(a), as<Complex32f>(c), n); });
    add("Conj_32fc", "plain", [](P a, P, P c, P, int n) { plain::conj(as<Complex32f>(a), as<Complex32f>(c), n); });
    add("ConjFlip_32fc", "tevs", [](P a, P, P c, P, int n) { tevsConjFlip_32fc(as<Complex32f>(a), as<Complex32f>(c), n); });
    add("ConjFlip_32fc", "plain", [](P a, P, P c, P, int n) { plain::conjFlip(as<Complex32f>(a), as<Complex32f>(c), n); });
    add("And_32u", "tevs", [](P a, P b, P c, P, int n) { tevsAnd_32u(as<uint32_t>(a), as<uint32_t>(b), as<uint32_t>(c), n); });
    add("And_32u", "plain", [](P a, P b, P c, P, int n) { plain::bitAnd(as<uint32_t>(a), as<uint32_t>(b), as<uint32_t>(c), n); });
    add("LShiftC_8u", "tevs", [](P a, P, P c, P, int n) { tevsLShiftC_8u(as<uint8_t>(a), 3, as<uint8_t>(c), n); });
    add("LShiftC_8u", "plain", [](P a, P, P c, P, int n) { plain::left(as<uint8_t>(a), 3, as<uint8_t>(c), n); });
    add("RShiftC_16s", "tevs", [](P a, P, P c, P, int n) { tevsRShiftC_16s(as<int16_t>(a), 3, as<int16_t>(c), n); });
    add("RShiftC_16s", "plain", [](P a, P, P c, P, int n) { plain::right(as<int16_t>(a), 3, as<int16_t>(c), n); });
#if TEVS_PEER_VOLK
    add("CplxToReal_32fc", "VOLK", [](P a, P, P c, P d, int n) { volk_32fc_deinterleave_32f_x2(as<float>(c), as<float>(d), as<lv_32fc_t>(a), unsigned(n)); });
    add("RealToCplx_32f", "VOLK", [](P a, P b, P c, P, int n) { volk_32f_x2_interleave_32fc(as<lv_32fc_t>(c), as<float>(a), as<float>(b), unsigned(n)); });
    add("Conj_32fc", "VOLK", [](P a, P, P c, P, int n) { volk_32fc_conjugate_32fc(as<lv_32fc_t>(c), as<lv_32fc_t>(a), unsigned(n)); });
    add("And_32u", "VOLK", [](P a, P b, P c, P, int n) { volk_32i_x2_and_32i(as<int32_t>(c), as<int32_t>(a), as<int32_t>(b), unsigned(n)); });
#endif
    return true;
}();

}   // namespace
