#include <algorithm>
#include <cmath>
#include <tevs.hpp>

#include "commands.h"
#include "overlap_save.h"

namespace {

class Iir : public Process {
public:
    explicit Iir(const Samples& sections) : record_(tevs::iirInitAllocBiQuad<IIRState_64f>(sections.data(), int(sections.size() / 6), nullptr)) {}

    void block(std::span<const double> x, Samples& y) override {
        y.resize(x.size());
        tevs::iir(x, std::span(y), record_);
    }

private:
    tevs::Record<IIRState_64f> record_;
};

}   // namespace

void filter(const FilterOptions& o) {
    if (int(o.low.has_value()) + int(o.high.has_value()) + int(!o.band.empty()) + int(!o.stop.empty()) != 1)
        throw UsageError("give one of --low, --high, --band and --stop");
    Input input(o.files.input, o.files.rawIn);
    const double rate = input.rate();
    const Shape shape = o.low ? Shape::Low : o.high ? Shape::High : !o.band.empty() ? Shape::Band : Shape::Stop;
    const std::vector<double> edges = o.low ? std::vector{*o.low} : o.high ? std::vector{*o.high} : shape == Shape::Band ? o.band : o.stop;
    const double f1 = edges.front() / rate, f2 = edges.back() / rate;
    if (!(f1 > 0 && f2 < 0.5 && (edges.size() == 1 || f1 < f2)))
        throw UsageError("edges lie above 0 and below " + std::to_string(input.rate() / 2) + " Hz, half the rate of " + input.path() + ", the lower one first");

    if (o.iir) {
        int order = o.order.value_or(8);
        if (o.width) {
            if (o.order || edges.size() == 2) throw UsageError("with --iir, --width finds the order of --low and --high; bands take --order");
            const double other = shape == Shape::Low ? f1 + *o.width / rate : f1 - *o.width / rate;
            if (!(other > 0 && other < 0.5)) throw UsageError("the transition is wider than what lies beyond the edge");
            if (tevsIIRGenOrder_64f(f1, other, o.ripple, o.attenuation, &order) != StatusOk)
                throw UsageError("no recursive filter of order 12 or less is " + std::to_string(int(o.attenuation)) +
                                 " dB down so close to the edge; leave out --iir");
        }
        Samples sections(size_t(6 * (edges.size() == 2 ? order : (order + 1) / 2)));
        switch (shape) {
            case Shape::Low:
                tevs::iirGenLowpassBiQuad(sections.data(), order, f1, o.ripple);
                break;
            case Shape::High:
                tevs::iirGenHighpassBiQuad(sections.data(), order, f1, o.ripple);
                break;
            case Shape::Band:
                tevs::iirGenBandpassBiQuad(sections.data(), order, f1, f2, o.ripple);
                break;
            case Shape::Stop:
                tevs::iirGenBandstopBiQuad(sections.data(), order, f1, f2, o.ripple);
                break;
        }
        Output output(o.files.output, input.rate(), input.channels(), input.frames(), &input);
        run(input, output, [&] { return std::make_unique<Iir>(sections); });
        return;
    }
    if (o.order || o.ripple != 0) throw UsageError("--order and --ripple are for --iir; an FIR filter has --width and --attenuation");
    // A tenth of the lower edge, or of what room there is.
    const double room = 2 * std::min({f1, 0.5 - f2, edges.size() == 2 ? (f2 - f1) / 2 : 1.0});
    const double width = o.width ? *o.width / rate : std::min(std::max(f1 / 10, 20 / rate), room);
    if (!(width > 0 && width <= room)) throw UsageError("--width is above 0 and at most " + std::to_string(room * rate) + " Hz here");
    const Plan plan(kaiserTaps(shape, f1, f2, std::min(width, 0.499), o.attenuation), 1, 1);
    Output output(o.files.output, input.rate(), input.channels(), input.frames(), &input);
    run(input, output, [&] { return std::make_unique<OverlapSave>(plan); });
}
