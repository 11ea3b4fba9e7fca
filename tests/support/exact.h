// Exact sums of integers and of their products, in digits of 16 bits.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace test {

class ExactSum {
public:
    void add(int64_t x) { addProduct(x >> 32, int64_t{1} << 32), addProduct(x & 0xffffffff, 1); }
    void addProduct(int64_t a, int64_t b) {   // of up to 34 bits each
        const int64_t a0 = a & 0xffff, a1 = a >> 16, b0 = b & 0xffff, b1 = b >> 16;
        digit_[0] += a0 * b0;
        digit_[1] += a0 * b1 + a1 * b0;
        digit_[2] += a1 * b1;
    }
    void subtractProduct(int64_t a, int64_t b) { addProduct(-a, b); }

    // Exact below 2^64.
    long double value() const {
        const Magnitude m = magnitude();
        long double v = 0;
        for (int k = kDigits - 1; k >= 0; --k) v = v * 65536 + m.digit[k];
        return m.negative ? -v : v;
    }
    // The value * 2^-scale, to nearest, ties to even, saturated to D.
    template <class D> D scaled(int scale) const {
        const Magnitude m = magnitude();
        const uint64_t bound = m.negative ? uint64_t{1} << std::numeric_limits<D>::digits : uint64_t(std::numeric_limits<D>::max());
        uint64_t q = 0;
        for (int i = 16 * kDigits - 1; i >= std::max(scale, 0); --i) {
            if (q > bound / 2) return m.negative ? std::numeric_limits<D>::min() : std::numeric_limits<D>::max();
            q = 2 * q + m.bit(i);
        }
        if (scale > 0 && m.bit(scale - 1)) {
            bool more = q & 1;
            for (int i = 0; i < std::min(scale - 1, 16 * kDigits); ++i) more |= m.bit(i);
            q += more;
        }
        for (int i = 0; i > scale && q != 0 && q <= bound; --i) q = q > bound / 2 ? bound + 1 : 2 * q;
        q = std::min(q, bound);
        return D(m.negative ? 0 - q : q);
    }

private:
    static constexpr int kDigits = 8;
    struct Magnitude {
        int64_t digit[kDigits];
        bool negative;
        bool bit(int i) const { return i < 16 * kDigits && (digit[i / 16] >> i % 16 & 1); }
    };
    Magnitude magnitude() const {
        Magnitude m{};
        for (int sign : {1, -1}) {
            m.negative = sign < 0;
            for (int k = 0; k < kDigits; ++k) m.digit[k] = sign * digit_[k];
            for (int k = 0; k + 1 < kDigits; ++k) {
                m.digit[k + 1] += m.digit[k] >> 16;
                m.digit[k] &= 0xffff;
            }
            if (m.digit[kDigits - 1] >= 0) break;
        }
        return m;
    }

    int64_t digit_[kDigits] = {};
};

}   // namespace test
