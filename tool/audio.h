#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <sndfile.h>
#include <span>
#include <string>
#include <vector>

#include "output_file.h"
#include "progress.h"

// Arguments that make no sense together: exit code 2.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Vectors that resize() leaves as they are: what is about to be written need not be zeroed.
template <class T> struct Unset : std::allocator<T> {
    template <class U> struct rebind { using other = Unset<U>; };
    template <class U> void construct(U* p) { ::new (static_cast<void*>(p)) U; }
    template <class U, class... Values> void construct(U* p, Values&&... values) { ::new (static_cast<void*>(p)) U(std::forward<Values>(values)...); }
};
template <class T> using Buffer = std::vector<T, Unset<T>>;

using Samples = Buffer<double>;
using Channels = std::vector<Samples>;   // a vector a channel, all of one length; full scale is 1

constexpr int kBlockFrames = 1 << 13;   // a block and its copies stay in the second-level cache

// Closes what it holds; not the descriptor below it.
using SoundFile = std::unique_ptr<SNDFILE, decltype(&sf_close)>;

const char* typeName(int format);     // s16, f32, vorbis, ..; of formats without a name here, libsndfile's
std::string formatName(int format);   // WAV (Microsoft), ..
std::string formatSeconds(double seconds);
int64_t framesIn(double seconds, int rate);   // of a time that no file lasts, more than any has

// A file of libsndfile, or samples without a header. "-" is the standard input.
class Input {
public:
    Input(const std::string& path, const std::string& raw);   // raw: "TYPE,RATE[,CHANNELS]", or empty
    ~Input();
    const std::string& path() const { return path_; }
    int rate() const { return info_.samplerate; }
    int channels() const { return info_.channels; }
    int format() const { return info_.format; }
    int64_t frames() const { return frames_; }                  // -1: not known before the end
    std::vector<std::pair<int, std::string>> strings() const;   // title, artist, ..

    int64_t skip(int64_t frames);
    int read(Channels& block, int frames = kBlockFrames);   // how many, 0 at the end

private:
    std::string path_;
    int fd_;
    SF_INFO info_ = {};
    SoundFile file_{nullptr, sf_close};
    int64_t frames_ = -1, read_ = 0;
    Buffer<int16_t> shorts_;
    Buffer<int32_t> ints_;
    Buffer<uint8_t> bytes_;
    Samples interleaved_;
};

// What output options there are, and of which input it takes what they do not say.
struct OutputOptions {
    std::string path, raw, type;
    bool dither = false;
};

class Output {
public:
    Output(const OutputOptions& options, int rate, int channels, int64_t frames, const Input* like);   // frames: as many as are expected, or -1
    ~Output();
    void write(const Channels& block, int frames);
    void finish();

private:
    void check(int64_t written, int frames) const;

    OutputFile target_;
    SF_INFO info_ = {};
    SoundFile file_{nullptr, sf_close};
    int bits_ = 0;   // of integers and what is coded from them; 0 for floating point
    bool dither_ = false;
    unsigned seed_ = 1;
    int64_t clipped_ = 0;
    Samples interleaved_, noise_;
    Buffer<int32_t> ints_;
    Buffer<int16_t> shorts_;
    Buffer<uint8_t> bytes_;
};

// What a command makes of one channel: takes blocks, and appends what comes out of them.
class Process {
public:
    virtual ~Process() = default;
    virtual void block(std::span<const double> x, Samples& y) = 0;
    virtual void end(Samples&) {}   // what is still inside
};

// All of the input through a process a channel, each as long at the end as the others.
void run(Input& input, Output& output, const std::function<std::unique_ptr<Process>()>& make);
