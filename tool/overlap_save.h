#pragma once

#include <tevs.hpp>

#include "audio.h"

// A filter of zero phase, and from each `down` samples `up`. By overlap-save: the spectrum of a block, times the response, is cut or filled up with zeros to the other
// block length. Blocks of a whole multiple of the two factors keep every sample at its place. Oppenheim and Schafer, Discrete-Time Signal Processing, ch. 8.
struct Plan {
    // An odd number of symmetric taps at the input's rate; where the rates differ, those of a low-pass that stops at the lower one of the two Nyquist frequencies.
    Plan(const Samples& taps, int up, int down);

    int up, down, lenIn, lenOut, overlapIn, overlapOut, bins;
    tevs::Record<DFTSpec_R_64f> forward, inverse;
    Samples response;   // of each bin twice, for its two parts
};

class OverlapSave : public Process {
public:
    explicit OverlapSave(const Plan& plan);
    void block(std::span<const double> x, Samples& y) override;
    void end(Samples& y) override;

private:
    void convert(const double* x, Samples& y);

    const Plan& plan_;
    Samples in_, spectrum_, out_;
    std::vector<uint8_t> work_;
    int64_t taken_ = 0, made_ = 0;
};
