#include <algorithm>
#include <cmath>
#include <numeric>

#include "commands.h"
#include "overlap_save.h"

namespace {

struct Copy : Process {
    void block(std::span<const double> x, Samples& y) override { y.assign(x.begin(), x.end()); }
};

}   // namespace

void resample(const ResampleOptions& o) {
    Input input(o.files.input, o.files.rawIn);
    if (o.rate == input.rate()) {
        Output output(o.files.output, o.rate, input.channels(), input.frames(), &input);
        run(input, output, [] { return std::make_unique<Copy>(); });
        return;
    }
    // Down by the attenuation at the lower Nyquist frequency, so that what is cut there, and what aliases, is.
    const double nyquist = 0.5 * std::min(1.0, double(o.rate) / input.rate()), pass = nyquist * o.band / 100;
    const int common = std::gcd(o.rate, input.rate());
    const Plan plan(kaiserTaps(Shape::Low, (pass + nyquist) / 2, 0, nyquist - pass, o.attenuation), o.rate / common, input.rate() / common);
    const int64_t frames = input.frames() < 0 ? -1 : int64_t(std::ceil(double(input.frames()) * o.rate / input.rate()));
    Output output(o.files.output, o.rate, input.channels(), frames, &input);
    run(input, output, [&] { return std::make_unique<OverlapSave>(plan); });
}
