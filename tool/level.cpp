#include <algorithm>
#include <cmath>
#include <cstdio>
#include <tevs.hpp>

#include "commands.h"

namespace {

double decibels(double amplitude) { return 20 * std::log10(amplitude); }   // -inf for silence

// Of one channel. Windows of 50 ms tell loud passages from pauses.
struct Meter {
    double peak = 0, sum = 0, energy = 0, windowEnergy = 0, loudest = 0, quietest = HUGE_VAL;
    int inWindow = 0;
    int64_t peakAt = 0, full = 0;

    void add(std::span<const double> x, int64_t at, int window) {
        double least, most, part;
        tevs::minMax(x, &least, &most);
        if (const double top = std::max(-least, most); top > peak) {
            peak = top;
            peakAt = at + (std::ranges::find_if(x, [top](double v) { return std::abs(v) == top; }) - x.begin());
        }
        if (std::max(-least, most) >= 1 - 1.0 / 32768) full += std::ranges::count_if(x, [](double v) { return std::abs(v) >= 1 - 1.0 / 32768; });
        tevs::sum(x, &part);
        sum += part;
        for (size_t n = 0; n < x.size();) {
            const size_t count = std::min(x.size() - n, size_t(window - inWindow));
            double norm;
            tevs::normL2(x.subspan(n, count), &norm);
            windowEnergy += norm * norm;
            energy += norm * norm;
            inWindow += int(count);
            n += count;
            if (inWindow < window) break;
            loudest = std::max(loudest, windowEnergy / window);
            quietest = std::min(quietest, windowEnergy / window);
            windowEnergy = 0;
            inWindow = 0;
        }
    }
};

}   // namespace

void level(const LevelOptions& o) {
    Input input(o.input, o.rawIn);
    std::vector<Meter> meters(static_cast<size_t>(input.channels()));
    const int window = std::max(1, input.rate() / 20);
    Channels block;
    int64_t frames = 0;
    {
        Progress progress(input.frames(), input.rate());
        while (const int n = input.read(block)) {
            for (size_t k = 0; k < block.size(); ++k) meters[k].add(block[k], frames, window);
            progress.at(frames += n);
        }
    }
    if (!frames) throw Failure(input.path() + " holds no samples");
    std::printf("channel    peak dBFS    at seconds     rms dBFS  loudest 50 ms  quietest 50 ms     mean  at full scale\n");
    for (size_t k = 0; k < meters.size(); ++k) {
        const Meter& m = meters[k];
        const double rms = std::sqrt(m.energy / double(frames));
        std::printf("%7zu %12.2f %13.3f %12.2f %14.2f %15.2f %8.5f %14lld\n", k + 1, decibels(m.peak), double(m.peakAt) / input.rate(), decibels(rms),
                    decibels(m.quietest == HUGE_VAL ? rms : std::sqrt(m.loudest)), decibels(m.quietest == HUGE_VAL ? rms : std::sqrt(m.quietest)),
                    m.sum / double(frames), static_cast<long long>(m.full));
    }
}
