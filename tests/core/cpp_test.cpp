// The C++ interface: the same results as the C calls, every one of which it has.
#include <cctype>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

#include "support/data.h"
#include "support/guarded.h"
#include "tevs.hpp"

using namespace test;

namespace {

TEST(Cpp, HasEveryFunction) {
    const auto words = [](const char* path, auto isPart) {
        std::ifstream file(path);
        std::string text((std::istreambuf_iterator<char>(file)), {});
        for (char& c : text)
            if (!isPart(c)) c = ' ';
        std::istringstream in(text);
        return std::set<std::string>(std::istream_iterator<std::string>(in), {});
    };
    const auto isPart = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; };
    const auto declared = words(TEVS_NAMES, isPart), called = words(TEVS_CPP_HEADER, isPart);
    EXPECT_GT(declared.size(), 1000u);
    for (const std::string& name : declared)
        if (name.find("Free") == name.npos && !name.starts_with("tevsMalloc") && !name.starts_with("tevsGetL")) {
            EXPECT_TRUE(called.contains(name)) << name;
        }
}

TEST(Cpp, ChoosesByTheTypesOfTheArguments) {
    const auto a = randomVector<float>(77), b = randomVector<float>(77);
    std::vector<float> want(77), got(77);
    tevsAdd_32f(a.data(), b.data(), want.data(), 77), tevs::add(a, b, got);
    EXPECT_TRUE(same(want, got));
    tevsMulC_32f_I(0.3f, want.data(), 77), tevs::mulC(0.3f, got);
    EXPECT_TRUE(same(want, got));
    tevsSub_32f_I(a.data(), want.data(), 77), tevs::sub(a, got);
    EXPECT_TRUE(same(want, got));

    const auto s = randomVector<Complex16s>(77), t = randomVector<Complex16s>(77);
    std::vector<Complex16s> wantS(77), gotS(77);
    tevsMul_16sc_Sfs(s.data(), t.data(), wantS.data(), 77, 12), tevs::mul(s, t, gotS, 12);
    EXPECT_TRUE(same(wantS, gotS));

    std::vector<int16_t> wantI(77), gotI(77);
    tevsConvert_32f16s_Sfs(a.data(), wantI.data(), 77, RoundNearest, -14), tevs::convert(a, gotI, RoundNearest, -14);
    EXPECT_TRUE(same(wantI, gotI));

    float mean, meanToo;
    tevsMean_32f(a.data(), 77, &mean, HintNone), tevs::mean(a, &meanToo, HintNone);
    EXPECT_EQ(mean, meanToo);
    EXPECT_EQ(mean, tevs::mean(a, HintNone));
}

TEST(Cpp, RecordsMoveAndReleaseThemselves) {
    const auto taps = randomVector<float>(33), x = randomVector<float>(200);
    std::vector<float> want(200), got(200);
    FIRState_32f* state;
    ASSERT_EQ(tevsFIRInitAlloc_32f(&state, taps.data(), 33, nullptr), StatusOk);
    tevsFIR_32f(x.data(), want.data(), 200, state);
    tevsFIRFree_32f(state);

    auto fir = tevs::firInitAlloc<FIRState_32f>(taps, nullptr);
    auto moved = std::move(fir);
    EXPECT_EQ(fir.get(), nullptr);
    EXPECT_EQ(moved.status(), StatusOk);
    tevs::fir(x.data(), got.data(), 200, moved);
    EXPECT_TRUE(same(want, got));
    moved = tevs::firInitAlloc<FIRState_32f>(taps, nullptr);   // and the first is released with the temporary
    tevs::fir(x.data(), got.data(), 200, moved);
    EXPECT_TRUE(same(want, got));
    static_assert(!std::is_copy_constructible_v<decltype(fir)>);
}

TEST(Cpp, ErrorsAreThrownAndWarningsReturned) {
    const std::vector<float> a(5, 1.0f), zeros(5);
    std::vector<float> dst(5, 7.0f);
    EXPECT_EQ(tevs::div(zeros, a, dst), WarnDivByZero);
    const auto thrown = [](auto call) {
        try {
            call();
        } catch (const tevs::Error& e) {
            return std::pair<Status, std::string>(e.status(), e.function() + std::string(": ") + e.what());
        }
        return std::pair<Status, std::string>();
    };
    dst.assign(5, 7.0f);
    const auto unequal = thrown([&] { tevs::add(std::span(a).first(4), a, dst); });
    EXPECT_EQ(unequal.first, StatusBadSize);
    EXPECT_EQ(unequal.second, "tevsAdd_32f: a length or count is below 1 or outside its stated range");
    EXPECT_EQ(thrown([&] { tevs::add(std::span<const float>(), {}, std::span<float>()); }).first, StatusNullPtr);
    EXPECT_EQ(thrown([&] { tevs::firInitAlloc<FIRState_32f>(std::span<const float>(a).first(0), nullptr); }).first, StatusFilterLength);
    EXPECT_EQ(dst, std::vector<float>(5, 7.0f));
}

}   // namespace
