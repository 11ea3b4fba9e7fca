// The past of a filter, sample by sample.
#pragma once

#include <stdint.h>
#include <string.h>

#include "vector/samples.h"

namespace tevs {

// The past twice over in 2 tapsLen samples, so that it is in one piece from any index on.
template <class T> class Circle {
public:
    Circle(T* line, int tapsLen, int index) : line_(line), tapsLen_(tapsLen), at_(index % tapsLen) {
        if (at_ < 0) at_ += tapsLen;
    }
    const T* past() const { return line_ + at_; }   // oldest first
    const T* push(T x) {                            // the past with x as its newest sample
        line_[at_] = line_[at_ + tapsLen_] = x;
        if (++at_ == tapsLen_) at_ = 0;
        return past();
    }
    void push(const T* x, int n) {
        if (n > tapsLen_) {
            at_ = int((int64_t{at_} + (n - tapsLen_)) % tapsLen_);
            x += n - tapsLen_;
            n = tapsLen_;
        }
        while (n > 0) {
            const int m = n < tapsLen_ - at_ ? n : tapsLen_ - at_;
            memcpy(line_ + at_, x, size_t(m) * sizeof(T));
            memcpy(line_ + at_ + tapsLen_, x, size_t(m) * sizeof(T));
            at_ = at_ + m == tapsLen_ ? 0 : at_ + m;
            x += m;
            n -= m;
        }
    }
    int index() const { return at_; }

private:
    T* const line_;
    const int tapsLen_;
    int at_;
};

}   // namespace tevs
