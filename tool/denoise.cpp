#include <algorithm>
#include <cmath>
#include <tevs.hpp>

#include "commands.h"

namespace {

struct Bank {
    explicit Bank(int taps) : lowA(size_t(taps)), highA(lowA), lowS(lowA), highS(lowA) {
        if (tevsWtGenTaps_64f(lowA.data(), highA.data(), lowS.data(), highS.data(), taps, WaveletSymlet) != StatusOk)
            throw UsageError("--taps is even, from 4 to 40");
    }
    Samples lowA, highA, lowS, highS;
};

// Wavelet shrinkage (D. L. Donoho, De-Noising by Soft-Thresholding, IEEE Transactions on Information Theory 41, 1995) on a stream. Each level's analysis and synthesis delay by
// taps - 2 samples at its rate, so the details of a level wait for what the levels below make of its other half.
class Shrink : public Process {
public:
    Shrink(const Bank& bank, const DenoiseOptions& o, int rate) : unit_(size_t(1) << o.levels), strength_(o.strength) {
        noiseLen_ = std::max(unit_ * 16, size_t(o.noise * rate) / unit_ * unit_);
        int below = 0;   // the delay of all levels below, in pairs of this one
        levels_.resize(size_t(o.levels));
        const int taps = int(bank.lowA.size());
        for (size_t j = levels_.size(); j-- > 0;) {
            Level& level = levels_[j];
            level.analysis = tevs::wtAnalysisInitAlloc<WtState_64f>(std::span(bank.lowA), -1, std::span(bank.highA), -1);
            level.synthesis = tevs::wtSynthesisInitAlloc<WtState_64f>(std::span(bank.lowS), -1, std::span(bank.highS), -1);
            level.waiting.assign(size_t(below), 0.0);
            below = 2 * below + taps - 2;
        }
        delay_ = ahead_ = size_t(below);
    }

    void block(std::span<const double> x, Samples& y) override {
        in_.insert(in_.end(), x.begin(), x.end());
        if (!measured_ && in_.size() < noiseLen_) return;
        shrink(y);
    }
    void end(Samples& y) override {
        const size_t rest = in_.size() + delay_;
        in_.resize((rest + unit_ - 1) / unit_ * unit_, 0.0);
        const size_t extra = in_.size() - rest;
        shrink(y);
        y.resize(y.size() - extra);
    }

private:
    struct Level {
        tevs::Record<WtState_64f> analysis, synthesis;
        Samples waiting, low, high;
        double threshold = 0;
    };

    void shrink(Samples& y) {
        const size_t count = in_.size() / unit_ * unit_;
        if (!count) return;
        Samples x(in_.begin(), in_.begin() + ptrdiff_t(count));
        in_.erase(in_.begin(), in_.begin() + ptrdiff_t(count));
        for (Level& level : levels_) {
            const size_t pairs = x.size() / 2;
            level.low.resize(pairs);
            level.high.resize(pairs);
            tevsWtAnalysis_64f(x.data(), level.low.data(), level.high.data(), int(pairs), level.analysis);
            x = level.low;
        }
        if (!measured_) measure();
        for (size_t j = levels_.size(); j-- > 0;) {
            Level& level = levels_[j];
            const size_t pairs = level.high.size(), waiting = level.waiting.size();
            // The soft threshold: what is left beyond +-threshold.
            Samples limited(pairs);
            tevsThreshold_GTAbs_64f(level.high.data(), limited.data(), int(pairs), level.threshold);
            tevs::sub(std::span<const double>(limited), std::span(level.high));
            level.waiting.insert(level.waiting.end(), level.high.begin(), level.high.end());
            Samples up(2 * pairs);
            tevsWtSynthesis_64f(x.data(), level.waiting.data(), up.data(), int(pairs), level.synthesis);
            level.waiting.erase(level.waiting.begin(), level.waiting.begin() + ptrdiff_t(level.waiting.size() - waiting));
            x = std::move(up);
        }
        const size_t dropped = std::min(ahead_, x.size());
        ahead_ -= dropped;
        y.insert(y.end(), x.begin() + ptrdiff_t(dropped), x.end());
    }

    // Of each level: the median magnitude of the details at the beginning, which for normal noise is 0.6745 of its deviation and hardly moves for a click.
    void measure() {
        measured_ = true;
        for (Level& level : levels_) {
            const size_t count = std::min(level.high.size(), std::max<size_t>(noiseLen_ >> (&level - levels_.data() + 1), 1));
            Samples magnitudes(count);
            std::ranges::transform(level.high.begin(), level.high.begin() + ptrdiff_t(count), magnitudes.begin(), [](double v) { return std::abs(v); });
            const auto middle = magnitudes.begin() + ptrdiff_t(count / 2);
            std::ranges::nth_element(magnitudes, middle);
            level.threshold = strength_ * *middle / 0.6745;
        }
    }

    size_t unit_, noiseLen_ = 0, delay_ = 0, ahead_ = 0;
    double strength_;
    bool measured_ = false;
    Samples in_;
    std::vector<Level> levels_;
};

}   // namespace

void denoise(const DenoiseOptions& o) {
    Input input(o.files.input, o.files.rawIn);
    const Bank bank(o.taps);
    Output output(o.files.output, input.rate(), input.channels(), input.frames(), &input);
    run(input, output, [&] { return std::make_unique<Shrink>(bank, o, input.rate()); });
}
