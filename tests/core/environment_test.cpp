// What holds for every exported function that takes no record, over the list that the build makes of the headers: a new function is covered, or fails here.
#include <unistd.h>

#include <climits>
#include <csignal>
#include <map>
#include <memory>
#include <span>

#include "support/control_words.h"
#include "support/function.h"
#include "support/guarded.h"

using namespace test;

namespace {

// What a parameter by value is called with; the numbers that are no int take 7. A name that is missing here is a function that is not covered.
const std::map<std::string_view, std::vector<int>> kValues = {
    {"scaleFactor", {0, 1, 4, 40, -2, -40, -13, -29}},   // one for each way that a scaled operation can take, and those that show all bits of an angle
    {"val", {7, 1, 40}},
    {"hint", {HintNone, HintFast}},
    {"rndMode", {RoundTowardZero, RoundNearest}},
    {"relOp", {CmpLess, CmpGreater}},
    {"maskSize", {3, 4, 9, 22}},
    // clang-format off
    // lengths and places
    {"nChannels", {3}}, {"srcLen", {30}}, {"dstLen", {40}}, {"len1", {30}}, {"len2", {20}}, {"bias", {3}}, {"lowLag", {-7}}, {"srcBitOffset", {3}}, {"dstBitOffset", {5}},
    // transforms and wavelets
    {"order", {5}}, {"length", {30}}, {"flag", {NoScale}}, {"family", {0}}, {"lift", {Lift53}}, {"levels", {3}}, {"ext", {ExtMirror}},
    {"tapsLenLow", {7}}, {"offsLow", {0}}, {"tapsLenHigh", {4}}, {"offsHigh", {-1}},
    // filters
    {"tapsLen", {7}}, {"tapsFactor", {2}}, {"numBq", {3}}, {"upFactor", {2}}, {"upPhase", {1}}, {"downFactor", {3}}, {"downPhase", {1}}, {"factor", {3}},
    {"nzTapsLen", {7}}, {"nzTapsLen1", {7}}, {"nzTapsLen2", {3}}, {"order1", {5}}, {"order2", {4}}, {"src", {7}}, {"taper", {TaperHann}}, {"numPoints", {6}},
    // searches
    {"tableLen", {6}}, {"bookLen", {4}}, {"dim", {3}},
    // thresholds and signals
    {"level", {7}}, {"levelLT", {-5}}, {"valueLT", {3}}, {"levelGT", {7}}, {"valueGT", {9}}, {"rFreq", {1}}, {"magn", {100}}, {"asymQ15", {7000}},
    {"alphaQ15", {-5243}}, {"lowerBound", {-1000}}, {"upperBound", {100000}},
    // codes
    {"numPoly", {2, 3}}, {"constraintLen", {5}}, {"numSymbols", {3}}, {"traceLen", {9}}, {"numStates", {3}}, {"numInputs", {2}}, {"patternLen", {5}},
    // clang-format on
};
std::vector<int> valuesOf(const Function& f, const Parameter& p) {
    if (p.is("tapsLen") && names(f, {"WtGen", "DWT"})) return {8};   // of wavelets, even
    if (const auto known = kValues.find(p.name); known != kValues.end()) return known->second;
    if (p.isInt) ADD_FAILURE() << f.name << " is not covered: there is no value for its " << p.name;
    return {7};
}

// Where a range leaves no room for such numbers.
const std::map<std::string_view, float> kFractions = {{"alpha", 0.004f}, {"rFreq", 0.1f},     {"asym", 0.5f},      {"rFreq1", 0.1f},
                                                      {"rFreq2", 0.3f},  {"rFreqPass", 0.1f}, {"rFreqStop", 0.3f}, {"rWidth", 0.1f},
                                                      {"ripple", 1.0f},  {"decibels", 30.0f}, {"rolloff", 0.25f}};

// No source is longer than len.
bool isOfVectors(const Function& f) {
    return f.find("len") && !f.find("upFactor") && !f.find("tapsLen") &&
           !names(f, {"SumWindow", "Nearest", "Copy_1u", "Ccs", "Direct", "WtHaar", "Response", "Viterbi"});
}
// An element of the result depends on the elements at its place alone, or else the name says so here.
bool isElementwise(const Function& f) {
    return std::none_of(f.find("len"), &f.parameters.back() + 1, [](const Parameter& p) { return p.pointer; }) &&
           !names(f, {"Flip", "Pack", "Perm", "Win", "Rand", "Triangle", "Vector", "Median", "Sort"});
}

// A stray access ends the program: with the name of the function that made it.
std::string_view running;
void nameTheFunction(int) {
    (void)!write(STDERR_FILENO, running.data(), running.size());
    (void)!write(STDERR_FILENO, " reached past a vector\n", 23);
    _exit(1);
}

// f over body(function), as long as nothing failed for that function.
template <class F> void forEachFunction(F body) {
    std::signal(SIGSEGV, nameTheFunction);
    int count = 0;
    for (const Function& f : functions())
        if (f.processes && !f.hasState()) {
            running = f.name;
            ++count;
            generator().seed(uint64_t(count));
            body(f);
        }
    EXPECT_GT(size_t(count), functions().size() / 2);
}

// body(arguments) with the parameters by value set in every way; it says whether to go on.
template <class F> void forEachSetting(const Function& f, F body) {
    std::vector<Argument> arguments(f.parameters.size());
    const auto choose = [&](auto self, size_t i) -> bool {
        if (i == arguments.size()) return body(std::as_const(arguments));
        const Parameter& p = f.parameters[i];
        if (p.pointer || p.isLength()) return self(self, i + 1);
        for (const int value : valuesOf(f, p)) {
            if (p.isInt)
                arguments[i].set(value);
            else if (const auto fraction = kFractions.find(p.name); fraction == kFractions.end())
                p.constant(arguments[i], value);
            else if (p.stride == sizeof(float))
                arguments[i].set(fraction->second);
            else
                arguments[i].set(double(fraction->second));
            if (!self(self, i + 1)) return false;
        }
        return true;
    };
    choose(choose, 0);
}

std::string text(const Function& f, const std::vector<Argument>& arguments) {
    std::string s(f.name);
    for (size_t i = 0; i < arguments.size(); ++i)
        if (f.parameters[i].isInt) {
            int value;
            std::memcpy(&value, arguments[i].bytes, sizeof value);
            s += ", " + f.parameters[i].name + " " + std::to_string(value);
        }
    return s;
}

using Bytes = std::vector<unsigned char>;
Bytes samplesOf(const Parameter& p, size_t n, Data data) {
    Bytes v(n * p.stride, p.name.starts_with("pRFreq") ? 0x3c : 0);   // between 0 and 1 in any format
    if (!p.is("pDlyLineIndex") && !p.is("pShift") && !p.name.starts_with("pPhase") && !p.name.starts_with("pRFreq"))
        p.fill(v.data(), p.stride == 3 ? 3 * n : n, data);
    return v;
}

// Vectors with room to spare for a call of any function. What they hold depends on the place of a source among the sources alone, so that an in-place form
// meets the same samples as its twin.
struct Call {
    Call(const Function& function, int length, Data data) : f(function), len(length), arguments(f.parameters.size()), vectors(f.parameters.size()) {
        const size_t room =
            size_t(len) *
                (f.find("numPoly") || f.find("upFactor") || f.find("factor") || f.find("nChannels") || f.find("dim") || names(f, {"Viterbi", "WtHaar"}) ? 8
                                                                                                                                                        : 1) +
            64;
        uint64_t source = 0;
        for (size_t i = 0; i < arguments.size(); ++i) {
            const Parameter& p = f.parameters[i];
            if (!p.pointer) continue;
            const bool written = p.name.starts_with("pDst");
            if (!written) generator().seed(++source);
            vectors[i] = written ? Bytes(room * p.stride, 0xa5) : samplesOf(p, room, data);
            if (p.is("pTaps") && f.name.find("IIR") != f.name.npos) vectors[i].assign(vectors[i].size(), 3);   // among them an exponent
        }
    }
    // The same vectors, and other parameters by value.
    Call(const Call& samples, const std::vector<Argument>& settings) : f(samples.f), len(samples.len), arguments(settings), vectors(samples.vectors) {
        for (size_t i = 0; i < arguments.size(); ++i) {
            const Parameter& p = f.parameters[i];
            if (p.vectors) {
                const size_t bytes = size_t(len) * p.stride;
                channels = {vectors[i].data(), vectors[i].data() + bytes, vectors[i].data() + 2 * bytes};
                arguments[i].set(channels.data());
            } else if (p.pointer) {
                arguments[i].set(vectors[i].data());
            } else if (p.isLength()) {
                arguments[i].set(len);
            }
        }
    }
    Call(const Call&) = delete;

    void run() { status = f(arguments); }
    void settle() {
        for (size_t i = 0; i < arguments.size(); ++i)
            if (f.parameters[i].pointer) f.parameters[i].settle(vectors[i].data(), vectors[i].size() / f.parameters[i].stride);
    }
    std::vector<size_t> indices(std::string_view start) const {   // of the parameters whose names begin so
        std::vector<size_t> v;
        for (size_t i = 0; i < arguments.size(); ++i)
            if (f.parameters[i].name.starts_with(start)) v.push_back(i);
        return v;
    }

    const Function& f;
    int len;
    std::vector<Argument> arguments;
    std::vector<Bytes> vectors;
    std::vector<unsigned char*> channels;
    Status status = StatusOk;
};

// ---- control words --------------------------------------------------------------------------------------------------------------------------

// Equal in what is said of the call: status, and each vector to the bit.
::testing::AssertionResult sameResult(const Call& want, const Call& got) {
    if (want.status != got.status) return ::testing::AssertionFailure() << text(got.f, got.arguments) << ": status " << got.status << ", want " << want.status;
    for (size_t i = 0; i < want.vectors.size(); ++i)
        for (size_t k = 0; k < want.vectors[i].size(); ++k)
            if (want.vectors[i][k] != got.vectors[i][k])
                return ::testing::AssertionFailure() << text(got.f, got.arguments) << ": " << got.f.parameters[i].name << " at "
                                                     << k / got.f.parameters[i].stride;
    return ::testing::AssertionSuccess();
}

// No rounding mode is seen in the results, and FTZ and DAZ only where numbers are subnormal.
TEST(EveryFunction, IgnoresAndKeepsTheControlWords) {
    const auto run = [](const Call& samples, const std::vector<Argument>& settings, const Environment& e) {
        auto call = std::make_unique<Call>(samples, settings);
        EXPECT_TRUE(e.words.keptBy([&] { call->run(); })) << text(call->f, settings) << " changes the control words: " << e.name;
        call->settle();
        return call;
    };
    const auto agree = [=](const Call& samples, const std::vector<Argument>& settings, bool tame) {
        const auto want = run(samples, settings, {"default", {}}), flushed = run(samples, settings, {"FTZ and DAZ", {0x9fc0, 0x37f}});
        EXPECT_GE(want->status, StatusOk) << text(want->f, settings);
        auto equal = tame ? sameResult(*want, *flushed) : ::testing::AssertionSuccess();
        EXPECT_TRUE(equal) << "FTZ and DAZ";
        for (const Environment& e : kModes)
            if (equal) {
                EXPECT_TRUE(equal = sameResult(e.flushes() ? *flushed : *want, *run(samples, settings, e))) << e.name;
            }
        return bool(equal);
    };
    forEachFunction([=](const Function& f) {
        const size_t sources = size_t(std::count_if(f.parameters.begin(), f.parameters.end(), [](const Parameter& p) { return p.name.starts_with("pSrc"); }));
        const bool every = sources == 1 && f.find("scaleFactor") && f.find("len") && (f.find("pSrc") ? f.find("pSrc") : f.find("pSrcDst"))->stride == 2;
        const Call wild[] = {{f, every ? 65536 : 2001, Data::Wild}, {f, 5, Data::Wild}}, tame(f, 301, Data::Tame);
        forEachSetting(f, [&](const std::vector<Argument>& settings) {
            return agree(wild[0], settings, false) && agree(wild[1], settings, false) && agree(tame, settings, true);
        });
    });
}

// ---- elements ---------------------------------------------------------------------------------------------------------------------------------

// A vector of every length, against the guard pages and at several alignments, is what its elements are alone; so is its status: the first that is not
// StatusOk. Or where each depends on others, it is what it is elsewhere. Nothing is written beside it.
class Placement {
public:
    Placement(const Function& f, const std::vector<Argument>& settings, Data data)
        : f_(f), elementwise_(isElementwise(f)), arguments_(settings), in_(arguments_.size()), statuses_(kMost) {
        for (size_t i = 0; i < arguments_.size(); ++i) {
            const Parameter& p = f.parameters[i];
            if (!p.pointer) continue;
            in_[i] = samplesOf(p, kMost, data);
            arenas_.push_back(std::make_unique<Guarded<unsigned char>>(kArena));
        }
        alone_ = in_;
        for (size_t n = 0; n < kMost && elementwise_; ++n) statuses_[n] = runApart(n, 1);
    }

    ::testing::AssertionResult holds() {
        const Place places[] = {{0, true}, {0, false}, {1, false}, {2, false}, {3, false}, {0, true}};
        for (int n = 1; n <= 71; ++n)
            for (size_t k = 0; k < (n <= 8 ? 16 : 5); ++k)
                if (const auto good = holdsAt(k * 4 + size_t(n) % 4, n == 71 ? kMost - 70 : size_t(n), places, k); !good) return good;
        return ::testing::AssertionSuccess();
    }

private:
    static constexpr size_t kMost = 1003, kArena = 20480, kMargin = 64;

    template <class At> void point(At at, size_t len) {
        for (size_t i = 0; i < arguments_.size(); ++i)
            if (f_.parameters[i].pointer)
                arguments_[i].set(at(i));
            else if (f_.parameters[i].isLength())
                arguments_[i].set(int(len));
    }

    Status runApart(size_t start, size_t len) {
        point([&](size_t i) { return &alone_[i][start * f_.parameters[i].stride]; }, len);
        return f_(arguments_);
    }
    // Beside vectors there are parameters of up to 4 elements, such as a seed.
    size_t elements(size_t i, size_t len) const { return elementwise_ || f_.parameters[i].name.starts_with("pSrc") ? len : std::max<size_t>(len, 4); }

    ::testing::AssertionResult holdsAt(size_t start, size_t len, std::span<const Place> places, size_t turn) {
        if (!elementwise_) {
            alone_ = in_;
            statuses_[start] = runApart(start, len);
        }
        std::vector<unsigned char*> vectors(arguments_.size());
        for (size_t i = 0, a = 0; i < vectors.size(); ++i) {
            if (!f_.parameters[i].pointer) continue;
            const size_t stride = f_.parameters[i].stride, bytes = elements(i, len) * stride;
            const Place& place = places[(turn + a) % places.size()];
            unsigned char* arena = arenas_[a++]->data();
            vectors[i] = arena + (place.atEnd ? kArena - bytes : size_t(place.offset) * stride);
            std::memset(std::max(arena, vectors[i] - kMargin), kFill, size_t(vectors[i] - std::max(arena, vectors[i] - kMargin)));
            std::memcpy(vectors[i], &in_[i][start * stride], bytes);
            std::memset(vectors[i] + bytes, kFill, std::min(kMargin, size_t(arena + kArena - vectors[i]) - bytes));
        }
        point([&](size_t i) { return vectors[i]; }, len);
        const Status got = f_(arguments_);
        Status* const end = &statuses_[start] + (elementwise_ ? len : 1);
        const auto first = std::find_if(&statuses_[start], end, [](Status s) { return s != StatusOk; });
        const Status want = first == end ? StatusOk : *first;
        if (got != want) return ::testing::AssertionFailure() << text(f_, arguments_) << ": status " << got << ", of the elements alone " << want;
        for (size_t i = 0, a = 0; i < vectors.size(); ++i) {
            const Parameter& p = f_.parameters[i];
            if (!p.pointer) continue;
            const unsigned char *arena = arenas_[a++]->data(), *v = vectors[i], *end = v + elements(i, len) * p.stride;
            const auto filled = [](unsigned char c) { return c == kFill; };
            if (!std::all_of(std::max(arena, v - kMargin), v, filled) || !std::all_of(end, std::min(arena + kArena, end + kMargin), filled))
                return ::testing::AssertionFailure() << text(f_, arguments_) << ": writes beside " << p.name;
            const std::span<unsigned char> alone(&alone_[i][start * p.stride], elements(i, len) * p.stride);
            if (std::equal(v, end, alone.begin())) continue;
            p.settle(vectors[i], elements(i, len));
            p.settle(alone.data(), elements(i, len));
            if (const auto at = std::mismatch(v, end, alone.begin()).first; at != end)
                return ::testing::AssertionFailure() << text(f_, arguments_) << ": " << p.name << " at " << size_t(at - v) / p.stride << " of " << len;
        }
        return ::testing::AssertionSuccess();
    }

    static constexpr unsigned char kFill = 0xa5;
    const Function& f_;
    const bool elementwise_;
    std::vector<Argument> arguments_;
    std::vector<Bytes> in_, alone_;
    std::vector<Status> statuses_;
    std::vector<std::unique_ptr<Guarded<unsigned char>>> arenas_;
};

TEST(EveryFunction, OfVectorsGivesTheSameWhereverTheyLie) {
    forEachFunction([](const Function& f) {
        if (!isOfVectors(f)) return;
        forEachSetting(f, [&](const std::vector<Argument>& settings) {
            for (const Data data : {Data::Wild, Data::Tame}) {
                const auto good = Placement(f, settings, data).holds();
                EXPECT_TRUE(good);
                if (!good) return false;
            }
            return true;
        });
    });
}

// ---- in place -----------------------------------------------------------------------------------------------------------------------------------

// The statuses are equal and, but for errors, vector i of a holds what vector k of b does.
bool sameVector(Call& a, size_t i, Call& b, size_t k) {
    const Parameter& p = b.f.parameters[k];
    for (Bytes* v : {&a.vectors[i], &b.vectors[k]}) p.settle(v->data(), size_t(b.len));
    return a.status == b.status &&
           (a.status < StatusOk || std::equal(a.vectors[i].begin(), a.vectors[i].begin() + b.len * long(p.stride), b.vectors[k].begin()));
}

TEST(EveryFunction, InPlaceEqualsItsTwin) {
    std::map<std::string, const Function*> byName;
    for (const Function& f : functions()) byName[std::string(f.name)] = &f;
    forEachFunction([&](const Function& f) {
        if (!f.name.ends_with("_I") && !f.name.ends_with("_ISfs")) return;
        std::string name(f.name);
        name.replace(name.rfind("_I"), 2, name.ends_with("Sfs") ? "_" : "");
        const Function* twin = byName[name];
        if (!twin) return;
        const auto source = std::find_if(twin->parameters.rbegin(), twin->parameters.rend(), [](const Parameter& p) { return p.name.starts_with("pSrc"); });
        if (source == twin->parameters.rend() || source->stride != twin->find("pDst")->stride) return;   // by value, or of another type
        forEachSetting(f, [&](const std::vector<Argument>& settings) {
            std::vector<Argument> same(twin->parameters.size());
            for (size_t i = 0; i < same.size(); ++i)
                if (const Parameter* p = f.find(twin->parameters[i].name)) same[i] = settings[size_t(p - f.parameters.data())];
            bool good = true;
            for (const int len : {300, 37, 4, 3, 2, 1}) {
                Call want(Call(*twin, len, Data::Wild), same), got(Call(f, len, Data::Wild), settings);
                want.run(), got.run();
                good = good && sameVector(got, got.indices("pSrcDst").at(0), want, want.indices("pDst").at(0));
            }
            EXPECT_TRUE(good) << text(f, settings) << ": is not as " << name;
            return good;
        });
    });
}

// A destination may be any source whose elements are as wide, but where vectors are to be distinct.
TEST(EveryFunction, WorksAtTheAddressOfASource) {
    forEachFunction([](const Function& f) {
        if (f.find("srcBitOffset") || f.find("upFactor") || f.find("nChannels") || f.find("pRefl") ||
            names(f, {"Conv_", "Biased", "Corr", "tevsWt", "Viterbi"}))
            return;
        forEachSetting(f, [&](const std::vector<Argument>& settings) {
            for (const int len : {300, 37, 1}) {
                const Call samples(f, len, Data::Wild);
                Call want(samples, settings);
                const auto sources = want.indices("pSrc"), destinations = want.indices("pDst");
                want.run();
                for (size_t turn = 0; turn < sources.size() && destinations.size() <= sources.size(); ++turn) {
                    Call got(samples, settings);
                    const auto source = [&](size_t d) { return sources[(turn + d) % sources.size()]; };
                    bool good = true;
                    for (size_t d = 0; d < destinations.size(); ++d) {
                        good = good && f.parameters[source(d)].stride == f.parameters[destinations[d]].stride;
                        got.arguments[destinations[d]] = got.arguments[source(d)];
                    }
                    if (!good) continue;
                    got.run();
                    for (size_t d = 0; d < destinations.size(); ++d) good = good && sameVector(got, source(d), want, destinations[d]);
                    EXPECT_TRUE(good) << text(f, settings) << ", in place of source " << turn;
                    if (!good) return false;
                }
            }
            return true;
        });
    });
}

// ---- arguments ----------------------------------------------------------------------------------------------------------------------------------

bool isOptional(const Function& f, const Parameter& p) {
    return p.is("pDlyLine") || p.is("pRefl") || p.is("pErr") || p.is("pDist") ||
           (p.is("pIndx") && names(f, {"Indx", "ViterbiMetric"}) && !names(f, {"Sort"})) ||
           (f.name.find("RealToCplx") != f.name.npos && p.name.starts_with("pSrc"));
}

// Each pointer null in turn, then bad lengths; with both, the pointer is what is found, but for the functions of the last line.
TEST(EveryFunction, RejectsBadArguments) {
    forEachFunction([](const Function& f) {
        if (names(f, {"Cyclic"})) return;   // which check nothing
        forEachSetting(f, [&](const std::vector<Argument>& settings) {
            const auto rejects = [&](size_t null, int len, Status status) {
                Call untouched(Call(f, 4, Data::Tame), settings), call(Call(f, 4, Data::Tame), settings);
                if (null < settings.size()) call.arguments[null].set<void*>(nullptr);
                for (size_t i = 0; i < settings.size(); ++i)
                    if (f.parameters[i].isLength()) call.arguments[i].set(len);
                call.run();
                untouched.status = status;
                EXPECT_TRUE(sameResult(untouched, call)) << "null: " << (null < settings.size() ? f.parameters[null].name : "none");
            };
            const bool pointersFirst = f.find("len") && f.name.find("MaxOrder") == f.name.npos && f.name.find("BlackmanOpt") == f.name.npos &&
                                       f.name.find("RealToCplx") == f.name.npos;
            for (size_t i = 0; i < settings.size(); ++i) {
                if (f.parameters[i].pointer && !isOptional(f, f.parameters[i])) {
                    rejects(i, 4, StatusNullPtr);
                    if (pointersFirst) rejects(i, 0, StatusNullPtr);
                }
                if (f.parameters[i].isLength())
                    for (const int len : {0, -1, INT_MIN}) rejects(settings.size(), len, StatusBadSize);
            }
            return false;   // one setting will do
        });
    });
}

}   // namespace
