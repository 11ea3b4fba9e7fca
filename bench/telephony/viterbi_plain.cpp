// The loops that a caller would write, left to the compiler.
#include "telephony/viterbi_plain.h"

#include <algorithm>

namespace plain {

void encode(const uint8_t* src, uint8_t* dst, int len, const int* poly, int numPoly, int constraintLen) {
    int state = 0;
    for (int n = 0; n < len; ++n) {
        const int r = (src[n] & 1) << (constraintLen - 1) | state;
        for (int i = 0; i < numPoly; ++i) *dst++ = uint8_t(__builtin_parity(unsigned(r & poly[i])));
        state = r >> 1;
    }
}

Viterbi::Viterbi(const int* poly, int numPoly, int constraintLen, int len)
    : numPoly_(numPoly),
      states_(1 << (constraintLen - 1)),
      len_(len),
      symbols_(new uint8_t[2 * size_t(states_)]),
      odd_(new uint8_t[size_t(len) * size_t(states_)]),
      now_(new int[size_t(states_)]),
      next_(new int[size_t(states_)]) {
    for (int r = 0; r < 2 * states_; ++r) {
        symbols_[r] = 0;
        for (int i = 0; i < numPoly; ++i) symbols_[r] = uint8_t(2 * symbols_[r] + __builtin_parity(unsigned(r & poly[i])));
    }
}
Viterbi::~Viterbi() {
    delete[] symbols_;
    delete[] odd_;
    delete[] now_;
    delete[] next_;
}
void Viterbi::decode(const int8_t* src, uint8_t* dst) {
    std::fill_n(now_, states_, -(1 << 24));
    now_[0] = 0;
    for (int n = 0; n < len_; ++n, src += numPoly_) {
        int metric[256];
        for (int y = 0; y < 1 << numPoly_; ++y) {
            metric[y] = 0;
            for (int i = 0; i < numPoly_; ++i) metric[y] += y >> (numPoly_ - 1 - i) & 1 ? -src[i] : src[i];
        }
        uint8_t* const odd = odd_ + size_t(n) * size_t(states_);
        const int half = states_ / 2;
        for (int i = 0; i < half; ++i) {
            const int even = now_[2 * i], up = now_[2 * i + 1];
            const int a = even + metric[symbols_[2 * i]], b = up + metric[symbols_[2 * i + 1]];
            const int c = even + metric[symbols_[states_ + 2 * i]], d = up + metric[symbols_[states_ + 2 * i + 1]];
            next_[i] = std::max(a, b);
            next_[i + half] = std::max(c, d);
            odd[i] = b > a;
            odd[i + half] = d > c;
        }
        std::swap(now_, next_);
    }
    for (int n = len_ - 1, s = 0; n >= 0; --n) {
        dst[n] = uint8_t(s >= states_ / 2);
        s = (2 * s + odd_[size_t(n) * size_t(states_) + size_t(s)]) & (states_ - 1);
    }
}

}   // namespace plain
