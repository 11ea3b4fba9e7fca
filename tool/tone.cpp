#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <tevs.hpp>

#include "commands.h"

namespace {

// The keys of ITU-T Q.23: a row and a column each.
constexpr char kKeys[] = "123A456B789C*0#D";
constexpr double kRows[4] = {697, 770, 852, 941}, kColumns[4] = {1209, 1336, 1477, 1633};

void checkFrequency(double f, int rate) {
    if (!(f >= 0 && f < rate / 2.0)) throw UsageError("frequencies lie from 0 to below " + std::to_string(rate / 2) + " Hz, half the rate");
}

double amplitude(double decibels) { return std::pow(10, decibels / 20); }

// Adds the oscillators' next samples to x.
void addTones(std::vector<tevs::Record<ToneState>>& tones, double magn, Samples& x) {
    Samples one(x.size());
    for (auto& tone : tones) {
        tevs::tone(std::span(one), magn, tone);
        tevs::add(std::span<const double>(one), std::span(x));
    }
}

}   // namespace

void tone(const ToneOptions& o) {
    const int64_t frames = framesIn(o.length, o.rate);
    if (frames < 1) throw UsageError("--length is above 0");
    if (o.to && (o.frequencies.size() != 1 || frames > INT32_MAX)) throw UsageError("--to goes from one frequency to another, in 2^31 samples at most");
    std::vector<tevs::Record<ToneState>> tones;
    for (double f : o.frequencies) {
        checkFrequency(f, o.rate);
        tones.push_back(tevs::toneInitAlloc<ToneState>(f / o.rate, 4.71238898038469));   // a sine: zero, and rising
        if (!o.to) continue;
        checkFrequency(*o.to, o.rate);
        tevs::toneSetFreq(tones[0], *o.to / o.rate, int(frames));
    }
    Output output(o.output, o.rate, o.channels, frames, nullptr);
    Progress progress(frames, o.rate);
    for (int64_t done = 0; done < frames;) {
        Samples x(size_t(std::min<int64_t>(kBlockFrames, frames - done)), 0.0);
        addTones(tones, amplitude(o.level), x);
        output.write(Channels(static_cast<size_t>(o.channels), x), int(x.size()));
        progress.at(done += int64_t(x.size()));
    }
    output.finish();
}

void dial(const DialOptions& o) {
    checkFrequency(kColumns[3], o.rate);
    const int64_t on = framesIn(o.on, o.rate), off = framesIn(o.off, o.rate);
    if (on < 1 || off < 0 || on + off > 1 << 28) throw UsageError("--on is above 0, --off is not below, and both together are no year");
    std::vector<int> keys;
    for (char c : o.number) {
        if (std::strchr(" -().", c) && c) continue;
        const char* key = std::strchr(kKeys, std::toupper(static_cast<unsigned char>(c)));
        if (!key || !c) throw UsageError(std::string("no key ") + c + "; there are 0 to 9, A to D, * and #");
        keys.push_back(int(key - kKeys));
    }
    if (keys.empty()) throw UsageError("nothing to dial");
    Output output(o.output, o.rate, 1, off + int64_t(keys.size()) * (on + off), nullptr);
    const Channels pause(1, Samples(size_t(off), 0.0));
    output.write(pause, int(off));
    for (int key : keys) {
        std::vector<tevs::Record<ToneState>> pair;
        for (double f : {kRows[key / 4], kColumns[key % 4]}) pair.push_back(tevs::toneInitAlloc<ToneState>(f / o.rate, 4.71238898038469));
        Channels x(1, Samples(size_t(on), 0.0));
        addTones(pair, amplitude(o.level), x[0]);
        output.write(x, int(on));
        output.write(pause, int(off));
    }
    output.finish();
}

/* ---- Detection -------------------------------------------------------------------------------------------------------------------- */

namespace {

// The key of a block, or 0: one row and one column hold most of its energy, within 9 dB of one another, above -54 dBFS.
char keyOf(std::span<const double> block, int rate) {
    std::vector<Complex64f> x(block.size());
    tevs::realToCplx(block, Samples(block.size(), 0.0), std::span(x));
    Complex64f y[8];
    double power[8], norm;
    for (int i = 0; i < 4; i += 2) {
        const double rows[2] = {kRows[i] / rate, kRows[i + 1] / rate}, columns[2] = {kColumns[i] / rate, kColumns[i + 1] / rate};
        tevsGoertzTwo_64fc(x.data(), int(x.size()), y + i, rows);
        tevsGoertzTwo_64fc(x.data(), int(x.size()), y + 4 + i, columns);
    }
    tevs::powerSpectr(std::span<const Complex64f>(y), std::span(power));
    tevs::normL2(block, &norm);
    double row, column;
    int r, c;
    tevsMaxIndx_64f(power, 4, &row, &r);
    tevsMaxIndx_64f(power + 4, 4, &column, &c);
    const double len = double(block.size()), energy = norm * norm;
    // Tones alone would give energy * len / 2.
    return energy > 4e-6 * len && row + column > 0.75 * energy * len / 2 && row < 8 * column && column < 8 * row ? kKeys[4 * r + c] : 0;
}

}   // namespace

void detect(const DetectOptions& o) {
    Input input(o.input, o.rawIn);
    const int rate = input.rate();
    checkFrequency(kColumns[3], rate);
    // Blocks of 25.6 ms, each half over the one before: two of them lie within the 40 ms that a key lasts at least (ITU-T Q.24).
    const int hop = std::max(1, int(std::lround(0.0128 * rate)));
    Samples x;
    Channels block;
    int64_t at = 0, begin = 0;
    char candidate = 0, key = 0;
    std::string digits;
    const auto ended = [&](int64_t end) {
        if (key && !o.digits) {
            std::printf("%c %9.3f %7.3f\n", key, double(begin) / rate, double(end - begin) / rate);
            std::fflush(stdout);
        }
        key = 0;
    };
    if (!o.digits) std::printf("# key, begin and length in seconds\n");
    {
        Progress progress(input.frames(), rate);
        while (input.read(block)) {
            for (size_t k = 1; k < block.size(); ++k) tevs::add(std::span<const double>(block[k]), std::span(block[0]));
            x.insert(x.end(), block[0].begin(), block[0].end());
            size_t n = 0;
            for (; n + size_t(2 * hop) <= x.size(); n += size_t(hop), at += hop) {
                const char heard = keyOf(std::span<const double>(x).subspan(n, size_t(2 * hop)), rate);
                if (key && heard != key) ended(at + hop / 2);
                if (heard && heard == candidate && !key) {
                    key = heard;
                    begin = at - hop / 2;
                    digits += key;
                }
                candidate = heard;
            }
            x.erase(x.begin(), x.begin() + ptrdiff_t(n));
            progress.at(at);
        }
    }
    ended(at + hop / 2);
    if (o.digits) std::printf("%s\n", digits.c_str());
}
