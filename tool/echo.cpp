#include <algorithm>
#include <cmath>
#include <cstdio>
#include <tevs.hpp>

#include "commands.h"

namespace {

constexpr int kStep = 64;   // samples for which the step of the adaptation stays

}   // namespace

// The adaptive filter learns what the far end's signal returns as, and that is taken off the near end's. The step is normalised by the energy of the far end's last samples
// (S. Haykin, Adaptive Filter Theory, normalised LMS), and 0 while the near end is louder than an echo can be: a speaker there (D. L. Duttweiler, A Twelve-Channel Digital
// Echo Canceler, IEEE Transactions on Communications 26, 1978).
void echo(const EchoOptions& o) {
    Input far(o.far, ""), near(o.files.input, o.files.rawIn);
    if (far.rate() != near.rate()) throw UsageError("both ends have one rate; see tevs resample");
    if (far.channels() != 1 || near.channels() != 1) throw UsageError("both ends have one channel; see tevs convert --channels");
    const int rate = near.rate();
    const int64_t length = framesIn(o.length, rate);
    if (length > 1 << 20) throw UsageError("--length is too long");
    const int taps = std::max(1, int(length));
    const auto filter = tevs::firlmsInitAlloc<FIRLMSState_32f>(std::vector<float>(size_t(taps), 0.0f), nullptr, 0);
    Output output(o.files.output, rate, 1, near.frames(), &near);
    Progress progress(near.frames(), rate);

    std::vector<float> past(size_t(taps + kStep), 0.0f), reference(kStep), model(kStep);
    Channels theirs, ours, out(1);
    double before = 0, after = 0;
    int64_t done = 0, hold = 0;
    while (const int frames = near.read(ours)) {
        const int heard = far.read(theirs, frames);   // silence when it ends first
        theirs[0].resize(size_t(frames), 0.0);
        out[0].resize(size_t(frames));
        std::fill(theirs[0].begin() + heard, theirs[0].end(), 0.0);
        for (int n = 0; n < frames; n += kStep) {
            const int count = std::min(kStep, frames - n);
            const auto x = std::span(past).subspan(size_t(taps), size_t(count)), d = std::span(reference).first(size_t(count)),
                       y = std::span(model).first(size_t(count));
            tevs::convert(std::span<const double>(theirs[0]).subspan(size_t(n), size_t(count)), x);
            tevs::convert(std::span<const double>(ours[0]).subspan(size_t(n), size_t(count)), d);
            float norm, loudest, nearest;
            const auto window = std::span<const float>(past).first(size_t(taps + count));   // what the filter sees in these samples
            tevs::normL2(window, &norm);
            tevs::normInf(window, &loudest);
            tevs::normInf(std::span<const float>(d), &nearest);
            if (nearest > 0.7f * loudest) hold = done + n + rate / 30;
            const float mu = done + n < hold || norm == 0 ? 0.0f : float(0.5 * o.step / (double(norm) * norm + 1e-6));
            tevs::firlms(std::span<const float>(x), std::span<const float>(d), y, mu, filter);
            std::copy(past.begin() + count, past.begin() + count + taps, past.begin());
            double energy;
            tevs::convert(std::span<const float>(y), std::span(out[0]).subspan(size_t(n), size_t(count)));
            tevs::normL2(std::span<const double>(ours[0]).subspan(size_t(n), size_t(count)), &energy);
            before += energy * energy;
            tevs::sub(std::span<const double>(out[0]).subspan(size_t(n), size_t(count)), std::span<const double>(ours[0]).subspan(size_t(n), size_t(count)),
                      std::span(out[0]).subspan(size_t(n), size_t(count)));
            tevs::normL2(std::span<const double>(out[0]).subspan(size_t(n), size_t(count)), &energy);
            after += energy * energy;
        }
        output.write(out, frames);
        progress.at(done += frames);
    }
    output.finish();
    if (!Progress::quiet)
        std::fprintf(stderr, "tevs: the near end's level went down by %.1f dB\n", 10 * std::log10(std::max(before, 1e-30) / std::max(after, 1e-30)));
}
