// What every function that makes a record or works on one answers to null pointers, to lengths and to what is no record, over the list that the build makes of the headers. The
// other arguments of makers are their families' tests', and so are transforms, which look at the record before anything else.
#include <gtest/gtest.h>

#include <climits>

#include "support/function.h"

using namespace test;

namespace {

bool makes(const Function& f) { return names(f, {"Init"}); }
bool isOptional(const Function& f, const Parameter& p) {
    return (p.is("pDlyLine") && (makes(f) || names(f, {"Set"}))) || (p.is("pTaps") && names(f, {"LMSInit", "LMSMRInit", "LMSMRSet"}));
}

// Of zeros, which no record begins with; only the length is given. Nothing may be written.
void expect(Status want, const Function& f, const Parameter* null, int len) {
    std::vector<Argument> arguments(f.parameters.size(), Argument{});
    const std::vector<uint64_t> zeros(32 * f.parameters.size());
    auto vector = zeros;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const Parameter& p = f.parameters[i];
        if (p.pointer && &p != null) arguments[i].set(&vector[32 * i]);
        if (p.isLength()) arguments[i].set(len);
    }
    EXPECT_EQ(f(arguments), want) << f.name << ", length " << len << ", null: " << (null ? null->name : "none");
    EXPECT_EQ(vector, zeros) << f.name;
}

TEST(EveryFunction, OfARecordChecksItsArguments) {
    int count = 0;
    for (const Function& f : functions()) {
        if (!f.processes || !f.hasState() || names(f, {"FFT", "DFT", "DCT", "DWT", "Hilbert"})) continue;
        ++count;
        for (const Parameter& p : f.parameters)
            if (p.pointer && !isOptional(f, p))
                for (const int len : {0, 1}) expect(StatusNullPtr, f, &p, len);
        if (makes(f)) continue;
        if (std::any_of(f.parameters.begin(), f.parameters.end(), [](const Parameter& p) { return p.isLength(); }))
            for (const int len : {0, -1, INT_MIN}) expect(StatusBadSize, f, nullptr, len);
        expect(StatusContextMismatch, f, nullptr, 1);
    }
    EXPECT_GT(count, 400);
}

}   // namespace
