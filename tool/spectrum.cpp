#include <algorithm>
#include <cmath>
#include <cstdio>
#include <tevs.hpp>

#include "commands.h"
#include "picture.h"

namespace {

// Power of overlapped Hann-windowed frames, in which a sine of full scale has 1 at its bin. P. D. Welch, The Use of Fast Fourier Transform for the Estimation of
// Power Spectra, IEEE Transactions on Audio and Electroacoustics 15 (1967).
class Analyser {
public:
    // Of 2^order samples; 0 takes so many seconds or a little more.
    Analyser(int order, double seconds, const Input& input) : order_(order) {
        if (!order_)
            for (order_ = 6; 1 << order_ < seconds * input.rate() && order_ < 16;) ++order_;
        window_.assign(size_t(1) << order_, 1.0);
        tevs::winHann(std::span(window_));
        double sum;
        tevs::sum(std::span<const double>(window_), &sum);
        tevs::mulC(2 / sum, std::span(window_));
        fft_ = tevs::fftInitAllocR<FFTSpec_R_64f>(order_, NoScale, HintNone);
        pending_.resize(size_t(input.channels()));
        hop_ = window_.size() / 2;
    }
    // Frames that many samples apart, of which the first one has the first sample in its middle.
    void centre(int hop) {
        hop_ = size_t(hop);
        for (Samples& channel : pending_) channel.assign(window_.size() / 2, 0.0);
    }
    int len() const { return 1 << order_; }
    int bins() const { return len() / 2 + 1; }

    // frame(channel, power of its bins), for each frame that is whole by now.
    void add(const Channels& block, const std::function<void(size_t, std::span<const double>)>& frame) {
        Samples x(window_.size()), ccs(window_.size() + 2), power(static_cast<size_t>(bins()));
        for (size_t k = 0; k < pending_.size(); ++k) pending_[k].insert(pending_[k].end(), block[k].begin(), block[k].end());
        size_t n = 0;
        for (; n + window_.size() <= pending_[0].size(); n += hop_)
            for (size_t k = 0; k < pending_.size(); ++k) {
                tevsMul_64f(pending_[k].data() + n, window_.data(), x.data(), len());
                tevsFFTFwd_RToCCS_64f(x.data(), ccs.data(), fft_, nullptr);
                tevsPowerSpectr_64fc(reinterpret_cast<const Complex64f*>(ccs.data()), power.data(), bins());
                frame(k, power);
            }
        for (Samples& channel : pending_) channel.erase(channel.begin(), channel.begin() + ptrdiff_t(n));
    }

private:
    int order_;
    size_t hop_;
    Samples window_;
    tevs::Record<FFTSpec_R_64f> fft_;
    Channels pending_;
};

double decibels(double power) { return 10 * std::log10(std::max(power, 1e-30)); }

// All frames of a file, and of so much silence behind it; one that is shorter than a transform is filled up.
int64_t analyse(Input& input, Analyser& analyser, int silence, const std::function<void(size_t, std::span<const double>)>& frame) {
    Progress progress(input.frames(), input.rate());
    Channels block;
    int64_t done = 0;
    while (const int n = input.read(block)) {
        analyser.add(block, frame);
        progress.at(done += n);
    }
    if (!done) throw Failure(input.path() + " holds no samples");
    silence = int(std::max<int64_t>(silence, analyser.len() - done));
    if (silence > 0) analyser.add(Channels(static_cast<size_t>(input.channels()), Samples(size_t(silence), 0.0)), frame);
    return done;
}

bool isPicture(const std::string& path) { return path.ends_with(".png") || path.ends_with(".PNG"); }

}   // namespace

void spectrum(const PictureOptions& o) {
    Input input(o.input, o.rawIn);
    Analyser analyser(o.order, 0.05, input);
    Channels sums(static_cast<size_t>(input.channels()), Samples(static_cast<size_t>(analyser.bins()), 0.0));
    int64_t frames = 0;
    analyse(input, analyser, 0, [&](size_t k, std::span<const double> power) {
        tevs::add(power, std::span(sums[k]));
        frames += k == 0;
    });
    for (Samples& sum : sums)
        for (double& v : sum) v = decibels(v / double(frames));

    if (isPicture(o.output)) {
        std::vector<Curve> curves;
        for (size_t k = 0; k < sums.size(); ++k) curves.push_back({"channel " + std::to_string(k + 1), {sums[k].begin(), sums[k].end()}});
        const bool kilo = input.rate() > 4000;
        drawCurves(o.output, o.width, o.height, "Spectrum of " + input.path(), {kilo ? "kHz" : "Hz", 0, input.rate() / (kilo ? 2000.0 : 2.0)},
                   {"dBFS, a sine of full scale is 0", -o.range, 5}, curves);
        return;
    }
    std::string table = "# Hz";
    for (size_t k = 0; k < sums.size(); ++k) table += " dBFS-" + std::to_string(k + 1);
    table += "\n";
    for (size_t bin = 0; bin < sums[0].size(); ++bin) {
        char number[32];
        std::snprintf(number, sizeof number, "%.3f", double(bin) * input.rate() / analyser.len());
        table += number;
        for (const Samples& sum : sums) {
            std::snprintf(number, sizeof number, " %.2f", sum[bin]);
            table += number;
        }
        table += "\n";
    }
    OutputFile file(o.output.empty() ? "-" : o.output);
    file.write(table.data(), table.size());
    file.commit();
}

// Frames are gathered in columns, their mean power each. Where there are twice as many as the picture has pixels, two become one: the memory stays, whatever the length.
void spectrogram(const PictureOptions& o) {
    if (!isPicture(o.output)) throw UsageError("a spectrogram is a picture: OUT ends in .png");
    Input input(o.input, o.rawIn);
    Analyser analyser(o.order, 0.02, input);
    const int64_t perPixel = input.frames() < 0 ? analyser.len() : input.frames() / o.width;
    analyser.centre(int(std::clamp<int64_t>(perPixel, std::max(1, analyser.len() / 64), analyser.len() / 2)));
    const auto most = 2 * size_t(o.width);
    std::vector<Samples> columns;
    Samples column(static_cast<size_t>(analyser.bins()), 0.0);
    const size_t lastChannel = size_t(input.channels()) - 1;
    int64_t each = 1, inColumn = 0;
    const int64_t samples = analyse(input, analyser, analyser.len() / 2, [&](size_t k, std::span<const double> power) {
        tevs::add(power, std::span(column));
        if (k != lastChannel || ++inColumn < each) return;
        columns.push_back(column);
        std::ranges::fill(column, 0.0);
        inColumn = 0;
        if (columns.size() < most) return;
        for (size_t c = 0; c < most / 2; ++c) {
            if (c) columns[c] = columns[2 * c];
            tevs::add(std::span<const double>(columns[2 * c + 1]), std::span(columns[c]));
        }
        columns.resize(most / 2);
        each *= 2;
    });
    if (inColumn) {
        tevs::mulC(double(each) / double(inColumn), std::span(column));
        columns.push_back(column);
    }
    const double scale = 1.0 / double(each) / input.channels();
    for (Samples& c : columns)
        for (double& v : c) v = decibels(v * scale);
    const bool kilo = input.rate() > 4000;
    drawRaster(o.output, o.width, o.height, "Spectrogram of " + input.path(), {"seconds", 0, double(samples) / input.rate()},
               {kilo ? "kHz" : "Hz", 0, input.rate() / (kilo ? 2000.0 : 2.0)}, {"dBFS", -o.range, 0}, int(columns.size()), analyser.bins(),
               [&](int c, int bin) { return columns[size_t(c)][size_t(bin)]; });
}
