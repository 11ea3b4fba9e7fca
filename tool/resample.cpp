#include <algorithm>
#include <cmath>
#include <numeric>
#include <tevs.hpp>

#include "commands.h"

namespace {

// From `down` samples to `up`, by overlap-save: the spectrum of a block, times the response of a low-pass of zero phase, is cut or filled up with zeros to the other
// block length. Blocks of a whole multiple of the two factors keep every sample at its place. The low-pass is down by the attenuation at the lower one of the two Nyquist
// frequencies, so that what is cut there, and what aliases, is.
struct Plan {
    Plan(int rateIn, int rateOut, double band, double attenuation) {
        const int common = std::gcd(rateIn, rateOut);
        down = rateIn / common;
        up = rateOut / common;
        const double nyquist = 0.5 * std::min(1.0, double(up) / down), pass = nyquist * band;
        const Samples taps = kaiserTaps(Shape::Low, (pass + nyquist) / 2, 0, nyquist - pass, attenuation);
        const int delay = int(taps.size() / 2);

        // Overlaps are `guard` units of `down` samples on either side; blocks of 16 of those and more spend an eighth of their work on them.
        const int guard = (delay + down - 1) / down;
        int64_t units = 4;
        while (units < 16 * int64_t(guard) && (units * std::max(up, down) < 1 << 15 || units < 4 * guard)) units *= 2;
        while (units * std::max(up, down) < 4096) units *= 2;
        if (units * std::max(up, down) > 1 << 27) throw Failure("the two rates have no common factor that would do; go by way of another rate");
        lenIn = int(units * down);
        lenOut = int(units * up);
        overlapIn = guard * down;
        overlapOut = guard * up;
        forward = tevs::dftInitAllocR<DFTSpec_R_64f>(lenIn, NoScale, HintNone);
        inverse = tevs::dftInitAllocR<DFTSpec_R_64f>(lenOut, NoScale, HintNone);

        Samples h(size_t(lenIn), 0.0), ccs(size_t(lenIn) + 2);
        for (int n = -delay; n <= delay; ++n) h[size_t((n + lenIn) % lenIn)] = taps[size_t(n + delay)];
        tevsDFTFwd_RToCCS_64f(h.data(), ccs.data(), forward, nullptr);
        bins = (std::min(lenIn, lenOut) + 1) / 2;   // without the Nyquist frequency
        response.resize(2 * size_t(bins));
        for (size_t k = 0; k < size_t(bins); ++k) response[2 * k] = response[2 * k + 1] = ccs[2 * k] / lenIn;
    }

    int up, down, lenIn, lenOut, overlapIn, overlapOut, bins;
    tevs::Record<DFTSpec_R_64f> forward, inverse;
    Samples response;   // of each bin twice, for its two parts
};

struct Copy : Process {
    void block(std::span<const double> x, Samples& y) override { y.assign(x.begin(), x.end()); }
};

class Resampler : public Process {
public:
    explicit Resampler(const Plan& plan)
        : plan_(plan), in_(size_t(plan.overlapIn), 0.0), spectrum_(size_t(std::max(plan.lenIn, plan.lenOut)) + 2), out_(size_t(plan.lenOut)) {
        int forward, inverse;
        tevsDFTGetBufSize_R_64f(plan.forward, &forward);
        tevsDFTGetBufSize_R_64f(plan.inverse, &inverse);
        work_.resize(size_t(std::max({forward, inverse, 1})));
    }

    void block(std::span<const double> x, Samples& y) override {
        taken_ += int64_t(x.size());
        in_.insert(in_.end(), x.begin(), x.end());
        size_t at = 0;
        for (; in_.size() - at >= size_t(plan_.lenIn); at += size_t(plan_.lenIn - 2 * plan_.overlapIn)) convert(in_.data() + at, y);
        in_.erase(in_.begin(), in_.begin() + ptrdiff_t(at));
    }

    // As many samples as lie within the input's time, the first one at its start: ceil(n up / down).
    void end(Samples& y) override {
        const int64_t wanted = (taken_ * plan_.up + plan_.down - 1) / plan_.down - made_;
        const Samples silence(size_t(plan_.lenIn), 0.0);
        while (int64_t(y.size()) < wanted) block(silence, y);
        y.resize(size_t(wanted));
    }

private:
    void convert(const double* x, Samples& y) {
        tevsDFTFwd_RToCCS_64f(x, spectrum_.data(), plan_.forward, work_.data());
        tevsMul_64f_I(plan_.response.data(), spectrum_.data(), 2 * plan_.bins);
        std::fill(spectrum_.begin() + 2 * plan_.bins, spectrum_.begin() + plan_.lenOut + 2, 0.0);
        tevsDFTInv_CCSToR_64f(spectrum_.data(), out_.data(), plan_.inverse, work_.data());
        y.insert(y.end(), out_.begin() + plan_.overlapOut, out_.end() - plan_.overlapOut);
        made_ += plan_.lenOut - 2 * plan_.overlapOut;
    }

    const Plan& plan_;
    Samples in_, spectrum_, out_;
    std::vector<uint8_t> work_;
    int64_t taken_ = 0, made_ = 0;
};

}   // namespace

void resample(const ResampleOptions& o) {
    Input input(o.files.input, o.files.rawIn);
    if (o.rate == input.rate()) {
        Output output(o.files.output, o.rate, input.channels(), input.frames(), &input);
        run(input, output, [] { return std::make_unique<Copy>(); });
        return;
    }
    const Plan plan(input.rate(), o.rate, o.band / 100, o.attenuation);
    const int64_t frames = input.frames() < 0 ? -1 : int64_t(std::ceil(double(input.frames()) * o.rate / input.rate()));
    Output output(o.files.output, o.rate, input.channels(), frames, &input);
    run(input, output, [&] { return std::make_unique<Resampler>(plan); });
}
