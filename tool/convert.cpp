#include <algorithm>
#include <cmath>
#include <cstdio>
#include <tevs.hpp>

#include "commands.h"

void info(const InfoOptions& o) {
    for (const std::string& path : o.inputs) {
        const Input input(path, o.rawIn);
        std::printf("%-12s %s\n%-12s %s\n%-12s %s\n%-12s %d Hz\n%-12s %d\n", "file", input.path().c_str(), "format", formatName(input.format()).c_str(),
                    "samples", typeName(input.format()), "rate", input.rate(), "channels", input.channels());
        if (input.frames() >= 0)
            std::printf("%-12s %lld\n%-12s %s\n", "frames", static_cast<long long>(input.frames()), "length",
                        formatSeconds(double(input.frames()) / input.rate()).c_str());
        static constexpr const char* kStrings[] = {"title", "copyright", "software", "artist", "comment", "date", "album", "license", "track", "genre"};
        for (const auto& [kind, text] : input.strings()) {
            const size_t n = size_t(kind - SF_STR_FIRST);
            std::printf("%-12s %s\n", n < std::size(kStrings) ? kStrings[n] : "text", text.c_str());
        }
        if (&path != &o.inputs.back()) std::printf("\n");
    }
}

void convert(const ConvertOptions& o) {
    Input input(o.files.input, o.files.rawIn);
    std::vector<int> picked;
    const bool mix = o.channels == std::vector<std::string>{"mix"};
    for (const std::string& word : mix ? std::vector<std::string>() : o.channels) {
        char rest = 0;
        int number = 0;
        if (std::sscanf(word.c_str(), "%d%c", &number, &rest) != 1 || number < 1 || number > input.channels())
            throw UsageError("no channel " + word + " in " + input.path() + ", which has " + std::to_string(input.channels()));
        picked.push_back(number - 1);
    }
    if (o.channels.empty())
        for (int k = 0; k < input.channels(); ++k) picked.push_back(k);

    const int64_t begin = framesIn(o.start, input.rate());
    int64_t left = o.length ? framesIn(*o.length, input.rate()) : INT64_MAX;
    if (input.skip(begin) < begin) throw Failure(input.path() + " ends before the start");
    const int64_t expected = input.frames() < 0 ? -1 : std::min(left, input.frames() - begin);
    const int channels = mix ? 1 : int(picked.size());
    Output output(o.files.output, input.rate(), channels, expected, &input);
    Progress progress(expected, input.rate());
    const double gain = std::pow(10, o.gain / 20);
    Channels in, out(static_cast<size_t>(channels));
    int64_t done = 0;
    while (const int frames = left > 0 ? input.read(in, int(std::min<int64_t>(kBlockFrames, left))) : 0) {
        if (mix) {
            out[0] = in[0];
            for (size_t k = 1; k < in.size(); ++k) tevs::add(std::span<const double>(in[k]), std::span(out[0]));
            tevs::mulC(1.0 / double(in.size()), std::span(out[0]));
        } else {
            for (size_t k = 0; k < picked.size(); ++k) out[k] = in[size_t(picked[k])];
        }
        if (o.gain != 0)
            for (Samples& channel : out) tevs::mulC(gain, std::span(channel));
        output.write(out, frames);
        left -= frames;
        progress.at(done += frames);
    }
    output.finish();
}
