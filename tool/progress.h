#pragma once

#include <chrono>
#include <cstdint>

// A bar on the terminal that standard error is, if it is one: redrawn ten times a second, wiped at the end.
class Progress {
public:
    Progress(int64_t total, double perSecond);   // total below 0: unknown; perSecond turns counts into seconds of signal
    ~Progress();
    void at(int64_t done);

    static bool quiet;

private:
    int64_t total_;
    double perSecond_;
    bool shown_, drawn_ = false;
    std::chrono::steady_clock::time_point begin_, next_;
};
