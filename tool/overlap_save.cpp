#include "overlap_save.h"

#include <algorithm>

Plan::Plan(const Samples& taps, int up, int down) : up(up), down(down) {
    const int delay = int(taps.size() / 2);

    // Overlaps are `guard` units of `down` samples on either side; blocks of 16 of those and more spend an eighth of their work on them.
    const int guard = (delay + down - 1) / down;
    int64_t units = 4;
    while (units < 16 * int64_t(guard) && (units * std::max(up, down) < 1 << 15 || units < 4 * int64_t(guard))) units *= 2;
    while (units * std::max(up, down) < 4096) units *= 2;
    if (units * std::max(up, down) > 1 << 27)
        throw Failure(up == down ? "the filter is too long" : "the two rates have no common factor that would do; go by way of another rate");
    lenIn = int(units * down);
    lenOut = int(units * up);
    overlapIn = guard * down;
    overlapOut = guard * up;
    forward = tevs::dftInitAllocR<DFTSpec_R_64f>(lenIn, NoScale, HintNone);
    inverse = tevs::dftInitAllocR<DFTSpec_R_64f>(lenOut, NoScale, HintNone);

    Samples h(size_t(lenIn), 0.0), ccs(size_t(lenIn) + 2);
    for (int n = -delay; n <= delay; ++n) h[size_t((n + lenIn) % lenIn)] = taps[size_t(n + delay)];
    tevsDFTFwd_RToCCS_64f(h.data(), ccs.data(), forward, nullptr);
    bins = up == down ? lenIn / 2 + 1 : (std::min(lenIn, lenOut) + 1) / 2;   // between rates without the Nyquist frequency
    response.resize(2 * size_t(bins));
    for (size_t k = 0; k < size_t(bins); ++k) response[2 * k] = response[2 * k + 1] = ccs[2 * k] / lenIn;
}

OverlapSave::OverlapSave(const Plan& plan)
    : plan_(plan), in_(size_t(plan.overlapIn), 0.0), spectrum_(size_t(std::max(plan.lenIn, plan.lenOut)) + 2), out_(size_t(plan.lenOut)) {
    int forward, inverse;
    tevsDFTGetBufSize_R_64f(plan.forward, &forward);
    tevsDFTGetBufSize_R_64f(plan.inverse, &inverse);
    work_.resize(size_t(std::max({forward, inverse, 1})));
}

void OverlapSave::block(std::span<const double> x, Samples& y) {
    taken_ += int64_t(x.size());
    in_.insert(in_.end(), x.begin(), x.end());
    size_t at = 0;
    for (; in_.size() - at >= size_t(plan_.lenIn); at += size_t(plan_.lenIn - 2 * plan_.overlapIn)) convert(in_.data() + at, y);
    in_.erase(in_.begin(), in_.begin() + ptrdiff_t(at));
}

// As many samples as lie within the input's time, the first one at its start: ceil(n up / down).
void OverlapSave::end(Samples& y) {
    const int64_t wanted = (taken_ * plan_.up + plan_.down - 1) / plan_.down - made_;
    const Samples silence(size_t(plan_.lenIn), 0.0);
    while (int64_t(y.size()) < wanted) block(silence, y);
    y.resize(size_t(wanted));
}

void OverlapSave::convert(const double* x, Samples& y) {
    tevsDFTFwd_RToCCS_64f(x, spectrum_.data(), plan_.forward, work_.data());
    tevsMul_64f_I(plan_.response.data(), spectrum_.data(), 2 * plan_.bins);
    std::fill(spectrum_.begin() + 2 * plan_.bins, spectrum_.begin() + plan_.lenOut + 2, 0.0);
    tevsDFTInv_CCSToR_64f(spectrum_.data(), out_.data(), plan_.inverse, work_.data());
    y.insert(y.end(), out_.begin() + plan_.overlapOut, out_.end() - plan_.overlapOut);
    made_ += plan_.lenOut - 2 * plan_.overlapOut;
}
