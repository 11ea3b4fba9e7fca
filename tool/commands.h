#pragma once

#include <optional>
#include <string>
#include <vector>

#include "audio.h"

// What the commands are told; main.cpp fills it in. Frequencies in Hz, times in seconds, levels and attenuations in dB.
struct Files {
    std::string input, rawIn;
    OutputOptions output;
};

struct InfoOptions {
    std::vector<std::string> inputs;
    std::string rawIn;
};
void info(const InfoOptions&);

struct ConvertOptions {
    Files files;
    std::vector<std::string> channels;   // numbers from 1, or "mix"
    double gain = 0, start = 0;
    std::optional<double> length;
};
void convert(const ConvertOptions&);

struct FilterOptions {
    Files files;
    std::optional<double> low, high;
    std::vector<double> band, stop;
    bool iir = false;
    std::optional<double> width;
    std::optional<int> order;
    double attenuation = 120, ripple = 0;
};
void filter(const FilterOptions&);

struct ResampleOptions {
    Files files;
    int rate = 0;
    double attenuation = 150, band = 95;
};
void resample(const ResampleOptions&);

struct PictureOptions {
    std::string input, rawIn, output;
    int order = 0, width = 1200, height = 600;   // transforms of 2^order samples; 0: by the rate
    double range = 120;
};
void spectrum(const PictureOptions&);
void spectrogram(const PictureOptions&);

struct LevelOptions {
    std::string input, rawIn;
};
void level(const LevelOptions&);

struct DenoiseOptions {
    Files files;
    int levels = 7, taps = 16;
    double strength = 3, noise = 0.5;
};
void denoise(const DenoiseOptions&);

struct ToneOptions {
    OutputOptions output;
    std::vector<double> frequencies;
    std::optional<double> to;
    int rate = 48000, channels = 1;
    double length = 1, level = -20;
};
void tone(const ToneOptions&);

struct DialOptions {
    OutputOptions output;
    std::string number;
    int rate = 8000;
    double on = 0.1, off = 0.1, level = -12;
};
void dial(const DialOptions&);

struct DetectOptions {
    std::string input, rawIn;
    bool digits = false;
};
void detect(const DetectOptions&);

struct EchoOptions {
    std::string far;
    Files files;   // the input is the near end
    double length = 0.064, step = 0.5;
};
void echo(const EchoOptions&);

// Taps of an FIR filter of odd length, by the window method with a Kaiser window (design.cpp). Edges of the middle of the transitions, in cycles per sample.
enum class Shape { Low, High, Band, Stop };
Samples kaiserTaps(Shape shape, double edge, double edge2, double width, double attenuation);
