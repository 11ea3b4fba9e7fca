#include "audio.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <tevs.hpp>
#include <unistd.h>

namespace {

// Bits: how many an integer has, or has before it is coded; 0 is floating point.
struct Type {
    const char* name;
    int subtype, bits;
};
constexpr Type kTypes[] = {
    {"s16", SF_FORMAT_PCM_16, 16},     {"s24", SF_FORMAT_PCM_24, 24},     {"s32", SF_FORMAT_PCM_32, 32},     {"f32", SF_FORMAT_FLOAT, 0},
    {"f64", SF_FORMAT_DOUBLE, 0},      {"s8", SF_FORMAT_PCM_S8, 8},       {"u8", SF_FORMAT_PCM_U8, 8},       {"ulaw", SF_FORMAT_ULAW, 16},
    {"alaw", SF_FORMAT_ALAW, 16},      {"vorbis", SF_FORMAT_VORBIS, 0},   {"opus", SF_FORMAT_OPUS, 0},       {"mp3", SF_FORMAT_MPEG_LAYER_III, 0},
    {"ima", SF_FORMAT_IMA_ADPCM, 16},  {"ms", SF_FORMAT_MS_ADPCM, 16},    {"gsm", SF_FORMAT_GSM610, 16},     {"g721", SF_FORMAT_G721_32, 16},
    {"alac16", SF_FORMAT_ALAC_16, 16}, {"alac24", SF_FORMAT_ALAC_24, 24}, {"alac32", SF_FORMAT_ALAC_32, 32}, {"vox", SF_FORMAT_VOX_ADPCM, 16},
};

const Type* typeOf(int format) {
    const auto* type = std::ranges::find(kTypes, format & SF_FORMAT_SUBMASK, &Type::subtype);
    return type == std::end(kTypes) ? nullptr : type;
}

// The subtype, and the order of bytes: the least significant first, or by a "be" behind the type the other one.
int parseType(std::string name) {
    int order = SF_ENDIAN_FILE;
    if (name.size() > 3 && (name.ends_with("le") || name.ends_with("be"))) {
        order = name.ends_with("be") ? SF_ENDIAN_BIG : SF_ENDIAN_LITTLE;
        name.resize(name.size() - 2);
    }
    const auto* type = std::ranges::find_if(kTypes, [&](const Type& t) { return name == t.name; });
    if (type != std::end(kTypes)) return type->subtype | order;
    std::string known;
    for (const Type& t : kTypes) known += std::string(known.empty() ? "" : ", ") + t.name;
    throw UsageError("no sample type " + name + "; there are " + known);
}

// By the name's extension.
int parseContainer(const std::string& path) {
    static constexpr struct {
        const char* extension;
        int format;
    } kContainers[] = {
        {"wav", SF_FORMAT_WAV},  {"flac", SF_FORMAT_FLAC}, {"ogg", SF_FORMAT_OGG},   {"oga", SF_FORMAT_OGG},   {"opus", SF_FORMAT_OGG},
        {"mp3", SF_FORMAT_MPEG}, {"aiff", SF_FORMAT_AIFF}, {"aif", SF_FORMAT_AIFF},  {"au", SF_FORMAT_AU},     {"snd", SF_FORMAT_AU},
        {"caf", SF_FORMAT_CAF},  {"w64", SF_FORMAT_W64},   {"rf64", SF_FORMAT_RF64}, {"voc", SF_FORMAT_VOC},   {"mat", SF_FORMAT_MAT5},
        {"sf", SF_FORMAT_IRCAM}, {"nist", SF_FORMAT_NIST}, {"sph", SF_FORMAT_NIST},  {"paf", SF_FORMAT_PAF},   {"pvf", SF_FORMAT_PVF},
        {"svx", SF_FORMAT_SVX},  {"avr", SF_FORMAT_AVR},   {"htk", SF_FORMAT_HTK},   {"mpc", SF_FORMAT_MPC2K}, {"xi", SF_FORMAT_XI},
    };
    std::string extension = path.substr(std::min(path.size(), path.rfind('.') + 1));
    if (path.rfind('.') == std::string::npos || extension.find('/') != std::string::npos) extension.clear();
    std::ranges::transform(extension, extension.begin(), [](unsigned char c) { return char(std::tolower(c)); });
    for (const auto& [name, format] : kContainers)
        if (extension == name) return format;
    throw UsageError("cannot tell the format of " + path + " by its name; give it an extension like .wav or .flac, or --raw-out");
}

// What is written without --type: the input's type where the container has it, then what loses the least.
int defaultSubtype(SF_INFO info, int container, const std::string& path, const Input* like) {
    std::vector<int> candidates;
    if (path.ends_with(".opus")) candidates.push_back(SF_FORMAT_OPUS);
    const Type* type = like ? typeOf(like->format()) : nullptr;
    // Coded samples stay coded in their own container alone: for WAV, libsndfile says that it takes MP3, and then does not.
    constexpr int kPlain[] = {SF_FORMAT_PCM_S8, SF_FORMAT_PCM_U8, SF_FORMAT_PCM_16, SF_FORMAT_PCM_24, SF_FORMAT_PCM_32, SF_FORMAT_FLOAT, SF_FORMAT_DOUBLE};
    if (type && !std::ranges::count(kPlain, type->subtype) && (like->format() & SF_FORMAT_TYPEMASK) != container) type = nullptr;
    if (type) candidates.push_back(type->subtype);
    if (type && type->bits == 0) candidates.insert(candidates.end(), {SF_FORMAT_FLOAT, SF_FORMAT_PCM_24});
    candidates.insert(candidates.end(), {SF_FORMAT_PCM_16, SF_FORMAT_VORBIS, SF_FORMAT_MPEG_LAYER_III, SF_FORMAT_PCM_S8, SF_FORMAT_FLOAT, SF_FORMAT_DPCM_16});
    for (int subtype : candidates) {
        info.format = container | subtype;
        if (sf_format_check(&info)) return subtype;
    }
    throw Failure("libsndfile cannot write " + path);
}

// Packed samples of 24 bits that lie in the file as they do in this library's vectors, the least significant byte first.
bool isPacked24(int format) {
    const int container = format & SF_FORMAT_TYPEMASK, order = format & SF_FORMAT_ENDMASK;
    return (format & SF_FORMAT_SUBMASK) == SF_FORMAT_PCM_24 &&
           (container == SF_FORMAT_RAW ? order == SF_ENDIAN_LITTLE
                                       : order != SF_ENDIAN_BIG && (container == SF_FORMAT_WAV || container == SF_FORMAT_WAVEX || container == SF_FORMAT_RF64 ||
                                                                    container == SF_FORMAT_W64));
}

void interleave(const Channels& block, int frames, Samples& out) {
    const size_t n = block.size();
    out.resize(n * size_t(frames));
    if (n == 2) {
        tevs::realToCplx(std::span(block[0]).first(size_t(frames)), std::span(block[1]).first(size_t(frames)),
                         std::span(reinterpret_cast<Complex64f*>(out.data()), size_t(frames)));
        return;
    }
    for (size_t k = 0; k < n; ++k)
        for (int f = 0; f < frames; ++f) out[size_t(f) * n + k] = block[k][size_t(f)];
}

void split(const Samples& in, int frames, Channels& block) {
    const size_t n = block.size();
    if (n == 2) {
        tevs::cplxToReal(std::span(reinterpret_cast<const Complex64f*>(in.data()), size_t(frames)), std::span(block[0]), std::span(block[1]));
        return;
    }
    for (size_t k = 0; k < n; ++k)
        for (int f = 0; f < frames; ++f) block[k][size_t(f)] = in[size_t(f) * n + k];
}

}   // namespace

const char* typeName(int format) {
    if (const Type* type = typeOf(format)) return type->name;
    static SF_FORMAT_INFO info;
    info = {format & SF_FORMAT_SUBMASK, nullptr, nullptr};
    return sf_command(nullptr, SFC_GET_FORMAT_INFO, &info, sizeof info) == 0 && info.name ? info.name : "unknown";
}

std::string formatName(int format) {
    SF_FORMAT_INFO info = {format & SF_FORMAT_TYPEMASK, nullptr, nullptr};
    return sf_command(nullptr, SFC_GET_FORMAT_INFO, &info, sizeof info) == 0 && info.name ? info.name : "unknown";
}

std::string formatSeconds(double seconds) {
    char text[64];
    const auto whole = int64_t(seconds);
    std::snprintf(text, sizeof text, "%lld:%02d:%06.3f", static_cast<long long>(whole / 3600), int(whole / 60 % 60), std::fmod(seconds, 60));
    return text;
}

int64_t framesIn(double seconds, int rate) { return std::llround(std::min(1e18, seconds * rate)); }

/* ---- Input ----------------------------------------------------------------------------------------------------------------------- */

Input::Input(const std::string& path, const std::string& raw) : path_(path == "-" ? "the standard input" : path) {
    if (!raw.empty()) {
        char type[16] = {}, rest = 0;
        int fields = std::sscanf(raw.c_str(), "%15[^,],%d,%d%c", type, &info_.samplerate, &info_.channels, &rest);
        if (fields == 2) info_.channels = 1;
        if (fields < 2 || fields > 3 || info_.samplerate < 1 || info_.channels < 1 || info_.channels > 1024)
            throw UsageError("--raw-in wants TYPE,RATE[,CHANNELS], like s16,8000 or f32,48000,2");
        info_.format = SF_FORMAT_RAW | parseType(type);
        if (!(info_.format & SF_FORMAT_ENDMASK)) info_.format |= SF_ENDIAN_LITTLE;
    }
    fd_ = path == "-" ? dup(STDIN_FILENO) : open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd_ < 0) throw Failure("cannot read " + path_ + ": " + std::strerror(errno));
    struct stat there = {};
    if (fstat(fd_, &there) == 0 && S_ISDIR(there.st_mode)) throw Failure("cannot read " + path_ + ": " + std::strerror(EISDIR));
    file_.reset(sf_open_fd(fd_, SFM_READ, &info_, SF_FALSE));
    if (!file_) throw Failure("cannot read " + path_ + ": " + sf_strerror(nullptr));
    if (S_ISREG(there.st_mode) && info_.seekable) frames_ = info_.frames;
}

Input::~Input() {
    file_.reset();
    close(fd_);
}

std::vector<std::pair<int, std::string>> Input::strings() const {
    std::vector<std::pair<int, std::string>> all;
    for (int kind = SF_STR_FIRST; kind <= SF_STR_LAST; ++kind)
        if (const char* text = sf_get_string(file_.get(), kind)) all.emplace_back(kind, text);
    return all;
}

int64_t Input::skip(int64_t frames) {
    if (frames_ >= 0) {
        read_ = std::min(frames, frames_);
        if (sf_seek(file_.get(), read_, SEEK_SET) != read_) throw Failure("cannot find a place in " + path_ + ": " + sf_strerror(file_.get()));
        return read_;
    }
    Channels block;
    int64_t skipped = 0;
    while (const int n = skipped < frames ? read(block, int(std::min<int64_t>(kBlockFrames, frames - skipped))) : 0) skipped += n;
    return skipped;
}

// Integers come as integers and are converted here, exactly.
int Input::read(Channels& block, int frames) {
    const size_t n = size_t(info_.channels), size = n * size_t(frames);
    block.resize(n);
    for (Samples& channel : block) channel.resize(size_t(frames));
    interleaved_.resize(size);
    Samples& to = n == 1 ? block[0] : interleaved_;
    int64_t got = 0;
    switch (info_.format & SF_FORMAT_SUBMASK) {
        case SF_FORMAT_PCM_16:
            shorts_.resize(size);
            got = sf_readf_short(file_.get(), shorts_.data(), frames);
            if (got > 0) tevs::convert(std::span<const int16_t>(shorts_).first(n * size_t(got)), std::span(to).first(n * size_t(got)), 15);
            break;
        case SF_FORMAT_PCM_24:
        case SF_FORMAT_PCM_32:
            ints_.resize(size);
            got = sf_readf_int(file_.get(), ints_.data(), frames);
            if (got > 0) tevs::convert(std::span<const int32_t>(ints_).first(n * size_t(got)), std::span(to).first(n * size_t(got)), 31);
            break;
        default:
            got = sf_readf_double(file_.get(), to.data(), frames);
    }
    if (sf_error(file_.get())) throw Failure("cannot read " + path_ + ": " + sf_strerror(file_.get()));
    read_ += got;
    if (got == 0 && frames_ >= 0 && read_ < frames_)
        throw Failure(path_ + " ends after " + std::to_string(read_) + " of " + std::to_string(frames_) + " frames");
    for (Samples& channel : block) channel.resize(size_t(got));
    if (n > 1 && got > 0) split(interleaved_, int(got), block);
    return int(got);
}

/* ---- Output ---------------------------------------------------------------------------------------------------------------------- */

Output::Output(const OutputOptions& options, int rate, int channels, int64_t frames, const Input* like) : target_(options.path), dither_(options.dither) {
    info_.samplerate = rate;
    info_.channels = channels;
    const bool stream = options.path == "-" || !target_.seekable();
    if (!options.raw.empty()) {
        if (!options.type.empty()) throw UsageError("--raw-out has the type; --type is for files with a header");
        info_.format = SF_FORMAT_RAW | parseType(options.raw);
        if (!(info_.format & SF_FORMAT_ENDMASK)) info_.format |= SF_ENDIAN_LITTLE;
    } else if (options.path == "-" || (stream && options.path.find('.') == std::string::npos)) {
        // AU is the one format with a header that can be written to a pipe: lengths are left open.
        info_.format = SF_FORMAT_AU | (options.type.empty() ? SF_FORMAT_DOUBLE : parseType(options.type));
    } else {
        const int container = parseContainer(options.path);
        info_.format = container | (options.type.empty() ? defaultSubtype(info_, container, options.path, like) : parseType(options.type));
    }
    if (const Type* type = typeOf(info_.format)) bits_ = type->bits;
    if ((info_.format & SF_FORMAT_TYPEMASK) == SF_FORMAT_WAV && !stream) {
        // The lengths in a WAV header have 32 bits. RF64 has more, and becomes a plain WAV file again where they were not needed.
        const double bytes = double(frames) * channels * (bits_ ? bits_ / 8 : 8);
        SF_INFO large = info_;
        large.format = (info_.format & ~SF_FORMAT_TYPEMASK) | SF_FORMAT_RF64;
        if ((frames < 0 || bytes > 4.2e9) && sf_format_check(&large)) info_ = large;
    }
    const std::string what =
        formatName(info_.format) + " of " + typeName(info_.format) + ", " + std::to_string(channels) + " channels at " + std::to_string(rate) + " Hz";
    if (!sf_format_check(&info_)) throw UsageError("cannot write " + target_.path() + ": there is no " + what);
    const int format = info_.format;
    file_.reset(sf_open_fd(target_.fd(), SFM_WRITE, &info_, SF_FALSE));
    if (!file_) throw Failure("cannot write " + target_.path() + " as " + what + ": " + sf_strerror(nullptr));
    info_.format = format;
    sf_command(file_.get(), SFC_RF64_AUTO_DOWNGRADE, nullptr, SF_TRUE);
    sf_command(file_.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);   // it has a time of day in it: the same samples make the same file
    sf_command(file_.get(), SFC_SET_CLIPPING, nullptr, SF_TRUE);
    if (like && options.raw.empty())
        for (const auto& [kind, text] : like->strings())
            if (kind != SF_STR_SOFTWARE) sf_set_string(file_.get(), kind, text.c_str());
}

Output::~Output() { file_.reset(); }

// Integers are rounded to nearest and saturated here; libsndfile is handed the bits that it stores.
void Output::write(const Channels& block, int frames) {
    if (frames < 1) return;
    const size_t size = block.size() * size_t(frames);
    if (block.size() == 1)
        interleaved_.assign(block[0].begin(), block[0].begin() + frames);
    else
        interleave(block, frames, interleaved_);
    const std::span<double> x(interleaved_.data(), size);
    int64_t written;
    if (bits_ == 0) {
        written = sf_writef_double(file_.get(), x.data(), frames);
    } else {
        const double full = std::ldexp(1.0, bits_ - 1);
        if (dither_) {   // the sum of two even distributions of one step each: S. P. Lipshitz et al., Quantization and Dither, JAES 40 (1992)
            noise_.resize(size);
            for (int k = 0; k < 2; ++k) {
                tevs::randUniformDirect(std::span(noise_), -0.5 / full, 0.5 / full, &seed_);
                tevs::add(std::span<const double>(noise_), x);
            }
        }
        double least, most;
        tevs::minMax(std::span<const double>(x), &least, &most);
        if (least < -1 - 0.5 / full || most >= 1 - 0.5 / full)
            clipped_ += std::ranges::count_if(x, [full](double v) { return v < -1 - 0.5 / full || v >= 1 - 0.5 / full; });
        ints_.resize(size);
        tevs::convert(std::span<const double>(x), std::span(ints_), RoundNearest, 1 - bits_);
        if (isPacked24(info_.format)) {
            bytes_.resize(3 * size);
            tevsConvert_32s24s_Sfs(ints_.data(), bytes_.data(), int(size), 0);
            written = sf_write_raw(file_.get(), bytes_.data(), int64_t(3 * size)) / int64_t(3 * block.size());
            return check(written, frames);
        }
        const int wide = bits_ > 16 ? 32 : 16, least32 = int(-full), most32 = int(full - 1);
        if (wide > bits_) {
            tevs::thresholdLTValGTVal(std::span(ints_), least32, least32, most32, most32);
            tevs::lShiftC(wide - bits_, std::span(ints_));
        }
        if (wide == 16) {
            shorts_.resize(size);
            tevs::convert(std::span<const int32_t>(ints_), std::span(shorts_));
            written = sf_writef_short(file_.get(), shorts_.data(), frames);
        } else {
            written = sf_writef_int(file_.get(), ints_.data(), frames);
        }
    }
    check(written, frames);
}

void Output::check(int64_t written, int frames) const {
    if (written != frames || sf_error(file_.get())) {
        const int error = errno;
        throw Failure("cannot write " + target_.path() + ": " +
                      (sf_error(file_.get()) > SF_ERR_SYSTEM || !error ? sf_strerror(file_.get()) : std::strerror(error)));
    }
}

void Output::finish() {
    // Codecs write their last block, and headers their lengths; libsndfile does not hand on every error of that, but the system's number stays.
    errno = 0;
    const int closed = sf_close(file_.release());
    if (closed != 0 || errno == ENOSPC || errno == EFBIG || errno == EDQUOT || errno == EIO || errno == EPIPE)
        throw Failure("cannot write " + target_.path() + ": " + (errno ? std::strerror(errno) : sf_error_number(closed)));
    target_.commit();
    if (clipped_ && !Progress::quiet)
        std::fprintf(stderr, "tevs: %lld samples were beyond full scale and are clipped in %s\n", static_cast<long long>(clipped_), target_.path().c_str());
}

/* ---- All of a file ----------------------------------------------------------------------------------------------------------------- */

void run(Input& input, Output& output, const std::function<std::unique_ptr<Process>()>& make) {
    std::vector<std::unique_ptr<Process>> processes;
    for (int k = 0; k < input.channels(); ++k) processes.push_back(make());
    Progress progress(input.frames(), input.rate());
    Channels in, out(processes.size());
    int64_t done = 0;
    for (;;) {
        const int frames = input.read(in);
        for (size_t k = 0; k < processes.size(); ++k) {
            out[k].clear();
            if (frames)
                processes[k]->block(in[k], out[k]);
            else
                processes[k]->end(out[k]);
        }
        output.write(out, int(out[0].size()));
        if (!frames) break;
        progress.at(done += frames);
    }
    output.finish();
}
