// The samples before a stream's next one. They are kept oldest first, in the type that the filter computes in; callers give and get them newest first.
#pragma once

#include <stddef.h>
#include <stdint.h>
#include <string.h>

#include <algorithm>

#include "vector/samples.h"

namespace tevs {

// A past of n samples from the caller's, where null stands for silence; and back.
template <class Sample, class Kept> void setPast(Kept* past, const Sample* pDlyLine, int n) {
    if (!pDlyLine) {
        memset(past, 0, size_t(n) * sizeof(Kept));
        return;
    }
    toStored(pDlyLine, past, n);
    std::reverse(past, past + n);
}
template <class Sample, class Kept> void getPast(const Kept* past, Sample* pDlyLine, int n) {
    fromStored(past, pDlyLine, n, 0);
    std::reverse(pDlyLine, pDlyLine + n);
}

// The n samples before x[at] of a block x that `past` stands before. They may go to where a past lies that is not newer.
template <class Sample, class Kept> void pastAt(const Kept* past, int n, const Sample* x, ptrdiff_t at, Kept* to) {
    const int fresh = int(std::min<ptrdiff_t>(at, n)), old = n - fresh;
    if (old > 0) memmove(to, past + fresh, size_t(old) * sizeof(Kept));
    if (fresh > 0) toStored(x + (at - fresh), to + old, fresh);
}

// The past twice over in 2 tapsLen samples, so that it is in one piece from any index on.
template <class T> class Circle {
public:
    Circle(T* line, int tapsLen, int index) : line_(line), tapsLen_(tapsLen), at_(index % tapsLen) {
        if (at_ < 0) at_ += tapsLen;
    }
    const T* past() const { return line_ + at_; }   // oldest first
    const T* push(T x) {                            // the past with x as its newest sample
        line_[at_] = line_[ptrdiff_t{at_} + tapsLen_] = x;
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
