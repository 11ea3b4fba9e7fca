#include <CLI/CLI.hpp>
#include <cstdio>
#include <new>
#include <tevcore.h>
#include <tevs.hpp>

#include "commands.h"

namespace {

enum { kDone = 0, kFailed = 1, kUsage = 2 };

constexpr const char* kFooter =
    "IN and OUT are files of any format that libsndfile knows, OUT by its extension; - is the standard input or output.\n"
    "A file appears under its name when it is complete. See tevs(1).";

void inputOptions(CLI::App& command, std::string& raw) {
    command.add_option("--raw-in", raw, "IN has no header: TYPE,RATE[,CHANNELS], like s16,8000 or f32,48000,2")->type_name("TYPE,..");
}
void outputOptions(CLI::App& command, OutputOptions& o) {
    command.add_option("OUT", o.path, "file to write, or -")->required();
    command.add_option("--type", o.type, "samples of OUT: s16, s24, s32, f32, f64, u8, ulaw, alaw, vorbis, ..; else those of IN");
    command.add_option("--raw-out", o.raw, "OUT gets no header, and samples of this type; s16be: the most significant byte first")->type_name("TYPE");
    command.add_flag("--dither", o.dither, "add triangular noise of one step before integers are rounded");
}
void fileOptions(CLI::App& command, Files& files) {
    command.add_option("IN", files.input, "file to read, or -")->required();
    outputOptions(command, files.output);
    inputOptions(command, files.rawIn);
}
void pictureOptions(CLI::App& command, PictureOptions& o, bool required) {
    command.add_option("IN", o.input, "file to read, or -")->required();
    auto* out = command.add_option("OUT", o.output, required ? "picture to write, .png" : "picture (.png) or table to write; else the table is printed");
    if (required) out->required();
    inputOptions(command, o.rawIn);
    command.add_option("--order", o.order, std::string("transforms of 2^N samples; else ") + (required ? "20" : "50") + " ms or a little more")
        ->type_name("N")
        ->check(CLI::Range(4, 20));
    command.add_option("--width", o.width, "of the picture, in pixels")->capture_default_str()->type_name("N")->check(CLI::Range(200, 10000));
    command.add_option("--height", o.height, "of the picture, in pixels")->capture_default_str()->type_name("N")->check(CLI::Range(150, 10000));
    command.add_option("--range", o.range, "how far down from full scale it goes")->capture_default_str()->type_name("DB")->check(CLI::Range(10.0, 300.0));
}

}   // namespace

int main(int argc, char** argv) try {
    CLI::App app("Filters, resamples, measures and draws recordings.", "tevs");
    app.footer(kFooter);
    app.require_subcommand(1);
    app.set_version_flag("--version",
                         "tevs " + std::to_string(TEVS_VERSION_MAJOR) + "." + std::to_string(TEVS_VERSION_MINOR) + "." + std::to_string(TEVS_VERSION_PATCH));
    app.add_flag("-q,--quiet", Progress::quiet, "no progress bar, no remarks");
    app.fallthrough();

    const auto add = [&](const char* name, const char* what) {
        CLI::App* command = app.add_subcommand(name, what);
        command->footer(kFooter);
        return command;
    };

    InfoOptions infoOptions;
    auto* command = add("info", "tell format, rate, channels and length of files");
    command->add_option("IN", infoOptions.inputs, "files to read")->required();
    inputOptions(*command, infoOptions.rawIn);
    command->callback([&] { info(infoOptions); });

    ConvertOptions convertOptions;
    command = add("convert", "write in another format, of other samples; pick channels, cut, amplify");
    fileOptions(*command, convertOptions.files);
    command->add_option("--channels", convertOptions.channels, "channels to keep, in this order, from 1; or mix")->type_name("LIST")->delimiter(',');
    command->add_option("--gain", convertOptions.gain, "amplify by so much")->type_name("DB");
    command->add_option("--start", convertOptions.start, "begin there")->type_name("SECONDS")->check(CLI::NonNegativeNumber);
    command->add_option("--length", convertOptions.length, "so much at most")->type_name("SECONDS")->check(CLI::NonNegativeNumber);
    command->callback([&] { convert(convertOptions); });

    FilterOptions filterOptions;
    command = add("filter", "pass or stop a band, by an FIR filter of linear phase or a recursive one");
    fileOptions(*command, filterOptions.files);
    command->add_option("--low", filterOptions.low, "pass what lies below")->type_name("HZ");
    command->add_option("--high", filterOptions.high, "pass what lies above")->type_name("HZ");
    command->add_option("--band", filterOptions.band, "pass what lies between")->type_name("HZ,HZ")->expected(2)->delimiter(',');
    command->add_option("--stop", filterOptions.stop, "stop what lies between")->type_name("HZ,HZ")->expected(2)->delimiter(',');
    command->add_option("--width", filterOptions.width, "of the transition, with the edge in its middle; else a tenth of the lower edge, 20 Hz at least")
        ->type_name("HZ");
    command->add_option("--attenuation", filterOptions.attenuation, "of what is stopped")
        ->capture_default_str()
        ->type_name("DB")
        ->check(CLI::Range(10.0, 200.0));
    command->add_flag("--iir", filterOptions.iir, "recursive: Butterworth, or Chebyshev with --ripple");
    command->add_option("--order", filterOptions.order, "of the recursive filter, 8 without it")->type_name("N")->check(CLI::Range(1, 12));
    command->add_option("--ripple", filterOptions.ripple, "of the recursive filter's pass-band")->type_name("DB")->check(CLI::Range(0.0, 29.0));
    command->callback([&] { filter(filterOptions); });

    ResampleOptions resampleOptions;
    command = add("resample", "change the rate");
    fileOptions(*command, resampleOptions.files);
    command->add_option("--rate", resampleOptions.rate, "the new rate")->type_name("HZ")->required()->check(CLI::Range(1, 100000000));
    command->add_option("--attenuation", resampleOptions.attenuation, "of what would alias")
        ->capture_default_str()
        ->type_name("DB")
        ->check(CLI::Range(10.0, 200.0));
    command->add_option("--band", resampleOptions.band, "of what both rates can hold, so much passes")
        ->capture_default_str()
        ->type_name("PERCENT")
        ->check(CLI::Range(10.0, 99.9));
    command->callback([&] { resample(resampleOptions); });

    PictureOptions spectrumOptions;
    command = add("spectrum", "draw or print the mean power spectrum");
    pictureOptions(*command, spectrumOptions, false);
    command->callback([&] { spectrum(spectrumOptions); });

    PictureOptions spectrogramOptions;
    command = add("spectrogram", "draw power over time and frequency");
    pictureOptions(*command, spectrogramOptions, true);
    command->callback([&] { spectrogram(spectrogramOptions); });

    LevelOptions levelOptions;
    command = add("level", "measure peaks, levels and offsets");
    command->add_option("IN", levelOptions.input, "file to read, or -")->required();
    inputOptions(*command, levelOptions.rawIn);
    command->callback([&] { level(levelOptions); });

    DenoiseOptions denoiseOptions;
    command = add("denoise", "take steady noise off, by wavelets");
    fileOptions(*command, denoiseOptions.files);
    command->add_option("--noise", denoiseOptions.noise, "the recording begins with so much of noise alone")
        ->capture_default_str()
        ->type_name("SECONDS")
        ->check(CLI::Range(0.01, 60.0));
    command->add_option("--strength", denoiseOptions.strength, "what is below so many deviations of the noise goes")
        ->capture_default_str()
        ->check(CLI::Range(0.0, 100.0));
    command->add_option("--levels", denoiseOptions.levels, "octaves to clean, from the highest down")
        ->capture_default_str()
        ->type_name("N")
        ->check(CLI::Range(1, 14));
    command->add_option("--taps", denoiseOptions.taps, "of the wavelet, a symlet: 4, 6 .. 40")->capture_default_str()->type_name("N")->check(CLI::Range(4, 40));
    command->callback([&] { denoise(denoiseOptions); });

    ToneOptions toneOptions;
    command = add("tone", "make a tone, several at once, or a sweep");
    outputOptions(*command, toneOptions.output);
    command->add_option("--freq", toneOptions.frequencies, "one frequency or several")->type_name("HZ[,HZ..]")->required()->delimiter(',');
    command->add_option("--to", toneOptions.to, "sweep evenly to that frequency")->type_name("HZ");
    command->add_option("--length", toneOptions.length, "how long")->capture_default_str()->type_name("SECONDS")->check(CLI::PositiveNumber);
    command->add_option("--level", toneOptions.level, "peak of each tone, below full scale")
        ->capture_default_str()
        ->type_name("DBFS")
        ->check(CLI::Range(-200.0, 200.0));
    command->add_option("--rate", toneOptions.rate, "samples a second")->capture_default_str()->type_name("HZ")->check(CLI::Range(1, 100000000));
    command->add_option("--channels", toneOptions.channels, "alike")->capture_default_str()->type_name("N")->check(CLI::Range(1, 1024));
    command->callback([&] { tone(toneOptions); });

    DialOptions dialOptions;
    command = add("dial", "make the tones of a telephone number");
    command->add_option("NUMBER", dialOptions.number, "of 0 to 9, A to D, * and #")->required();
    outputOptions(*command, dialOptions.output);
    command->add_option("--on", dialOptions.on, "length of a key")->capture_default_str()->type_name("SECONDS")->check(CLI::PositiveNumber);
    command->add_option("--off", dialOptions.off, "pause behind it")->capture_default_str()->type_name("SECONDS")->check(CLI::NonNegativeNumber);
    command->add_option("--level", dialOptions.level, "peak of each of the two tones")
        ->capture_default_str()
        ->type_name("DBFS")
        ->check(CLI::Range(-200.0, 200.0));
    command->add_option("--rate", dialOptions.rate, "samples a second")->capture_default_str()->type_name("HZ")->check(CLI::Range(1, 100000000));
    command->callback([&] { dial(dialOptions); });

    DetectOptions detectOptions;
    command = add("detect", "find the keys of a telephone in a recording");
    command->add_option("IN", detectOptions.input, "file to read, or -")->required();
    inputOptions(*command, detectOptions.rawIn);
    command->add_flag("--digits", detectOptions.digits, "print the keys alone, in one line");
    command->callback([&] { detect(detectOptions); });

    EchoOptions echoOptions;
    command = add("echo", "take off a recording what came back of another");
    command->add_option("FAR", echoOptions.far, "what was sent: one channel")->required();
    fileOptions(*command, echoOptions.files);
    command->add_option("--length", echoOptions.length, "of the echo, with its delay")->capture_default_str()->type_name("SECONDS")->check(CLI::PositiveNumber);
    command->add_option("--step", echoOptions.step, "of the adaptation: large is quick, small is exact")->capture_default_str()->check(CLI::Range(0.001, 1.0));
    command->callback([&] { echo(echoOptions); });

    // Channels and files are worked through in one thread; a team for each block of one would mostly wait.
    tevSetNumThreads(1);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        return app.exit(e) == 0 ? kDone : kUsage;
    }
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) throw Failure("cannot write the standard output");
    return kDone;
} catch (const UsageError& e) {
    std::fprintf(stderr, "tevs: %s\n", e.what());
    return kUsage;
} catch (const tevs::Error& e) {
    std::fprintf(stderr, "tevs: %s: %s\n", e.function(), e.what());
    return kFailed;
} catch (const std::bad_alloc&) {
    std::fprintf(stderr, "tevs: not enough memory\n");
    return kFailed;
} catch (const std::exception& e) {
    std::fprintf(stderr, "tevs: %s\n", e.what());
    return kFailed;
}
