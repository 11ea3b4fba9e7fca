#include "progress.h"

#include <algorithm>
#include <cstdio>
#include <unistd.h>

using namespace std::chrono;

bool Progress::quiet = false;

Progress::Progress(int64_t total, double perSecond)
    : total_(total), perSecond_(perSecond), shown_(!quiet && isatty(STDERR_FILENO)), begin_(steady_clock::now()), next_(begin_ + milliseconds(300)) {}

void Progress::at(int64_t done) {
    if (!shown_) return;
    const auto now = steady_clock::now();
    if (now < next_) return;
    next_ = now + milliseconds(100);
    drawn_ = true;
    const double spent = duration<double>(now - begin_).count(), seconds = double(done) / perSecond_;
    if (total_ <= 0) {
        std::fprintf(stderr, "\r\033[K%.0f s, %.0f x real time", seconds, seconds / spent);
        return;
    }
    constexpr int kWidth = 40;
    const double part = std::clamp(double(done) / double(total_), 0.0, 1.0);
    char bar[kWidth + 1] = {};
    for (int k = 0; k < kWidth; ++k) bar[k] = k < int(part * kWidth) ? '=' : ' ';
    std::fprintf(stderr, "\r\033[K[%s] %3.0f %%  %.0f s left, %.0f x real time", bar, 100 * part, part > 0 ? spent / part - spent : 0, seconds / spent);
}

Progress::~Progress() {
    if (drawn_) std::fputs("\r\033[K", stderr);
}
