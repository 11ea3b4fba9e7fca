// i386 callers may come with a stack aligned to 4 bytes only: a 16-byte spill at a fixed offset from such a stack pointer would fault.
#include <gtest/gtest.h>

#ifndef __SANITIZE_ADDRESS__   // lays its red zones out for frames that are aligned by the convention

#include <cstring>
#include <vector>

#include "support/data.h"

namespace {

// Calls f(args) with the stack pointer `shift` bytes below a multiple of 16; at 0 that is the usual call.
class Caller {
public:
    explicit Caller(int shift) : shift_(shift) {}

    template <class... P> Status operator()(Status (*f)(P...), std::type_identity_t<P>... args) const {
        std::vector<uint32_t> words;
        (push(words, args), ...);
        return at(reinterpret_cast<void*>(f), words.data(), int(words.size()), shift_);
    }

private:
    template <class T> static void push(std::vector<uint32_t>& words, const T& value) {
        const size_t at = words.size();
        words.resize(at + (sizeof value + 3) / 4);
        std::memcpy(&words[at], &value, sizeof value);
    }
    [[gnu::noinline]] static Status at(void* f, const uint32_t* words, int count, int shift) {
        int room = 4 * count + 16;
        asm volatile(
            "movl %%esp, %%ebx\n\t"
            "subl %%edx, %%esp\n\t"
            "andl $-16, %%esp\n\t"
            "subl %%edi, %%esp\n\t"
            "movl %%esp, %%edi\n\t"
            "cld\n\t"
            "rep movsl\n\t"
            "call *%%eax\n\t"
            "movl %%ebx, %%esp"
            : "+a"(f), "+c"(count), "+d"(room), "+S"(words), "+D"(shift)
            :
            : "ebx", "memory", "cc", "xmm0", "xmm1", "xmm2", "xmm3", "xmm4", "xmm5", "xmm6", "xmm7", "st", "st(1)", "st(2)", "st(3)", "st(4)", "st(5)", "st(6)",
              "st(7)");
        return Status(reinterpret_cast<intptr_t>(f));
    }

    int shift_;
};

using Result = std::vector<float>;

const std::vector<int16_t> kShorts = test::randomVector<int16_t>(2048);
const std::vector<float> kFloats = test::randomVector<float>(1024);

// One or more calls of each family, long enough for whole vectors and a tail; no result where a call failed.
Result convert(const Caller& call) {
    Result dst(37);
    std::vector<int16_t> back(37);
    if (call(tevsConvert_16s32f, kShorts.data(), dst.data(), 37)) return Result();
    if (call(tevsConvert_32f16s_Sfs, kFloats.data(), back.data(), 37, RoundNearest, -15)) return Result();
    dst.insert(dst.end(), back.begin(), back.end());
    return dst;
}

Result movement(const Caller& call) {
    Result dst(2 * 37);
    const auto src = reinterpret_cast<const Complex32f*>(kFloats.data());
    return call(tevsConjFlip_32fc, src, reinterpret_cast<Complex32f*>(dst.data()), 37) ? Result() : dst;
}

Result arithmetic(const Caller& call) {
    Result dst(2 * 37);
    const auto z = reinterpret_cast<const Complex16s*>(kShorts.data());
    std::vector<Complex16s> quotient(37), product(37);
    if (call(tevsMul_32fc, reinterpret_cast<const Complex32f*>(kFloats.data()), reinterpret_cast<const Complex32f*>(kFloats.data() + 1),
             reinterpret_cast<Complex32f*>(dst.data()), 37))
        return Result();
    if (call(tevsDiv_16sc_Sfs, z, z + 1, quotient.data(), 37, -3) < 0) return Result();   // a zero divisor is but a warning
    if (call(tevsMul_16sc_Sfs, z, z + 1, product.data(), 37, 15)) return Result();
    for (int i = 0; i < 37; ++i) dst.insert(dst.end(), {float(quotient[size_t(i)].re), float(product[size_t(i)].im)});
    return dst;
}

Result elementary(const Caller& call) {
    Result exponential(37), phase(37), re(37), im(37);
    std::vector<int16_t> logarithm(37);
    if (call(tevsExp_32f, kFloats.data(), exponential.data(), 37)) return Result();
    if (call(tevsLn_16s_Sfs, kShorts.data(), logarithm.data(), 37, -10) < 0) return Result();
    if (call(tevsPhase_32fc, reinterpret_cast<const Complex32f*>(kFloats.data()), phase.data(), 37)) return Result();
    if (call(tevsPolarToCart_32f, exponential.data(), phase.data(), re.data(), im.data(), 37)) return Result();
    for (const Result* part : {&phase, &re, &im}) exponential.insert(exponential.end(), part->begin(), part->end());
    exponential.insert(exponential.end(), logarithm.begin(), logarithm.end());
    return exponential;
}

Result reductions(const Caller& call) {
    Result dst(7);
    int at;
    int64_t norm;
    if (call(tevsMaxIndx_32f, kFloats.data(), 37, &dst[0], &at)) return Result();
    if (call(tevsSum_32f, kFloats.data(), 37, &dst[1], HintAccurate)) return Result();
    if (call(tevsNorm_L2_32f, kFloats.data(), 37, &dst[2])) return Result();
    if (call(tevsNormDiff_L2Sqr_16s64s_Sfs, kShorts.data(), kShorts.data() + 3, 37, &norm, 20)) return Result();
    if (call(tevsDotProd_32f, kFloats.data(), kFloats.data() + 1, 37, &dst[3])) return Result();
    if (call(tevsDotProd_16sc32fc, reinterpret_cast<const Complex16s*>(kShorts.data()), reinterpret_cast<const Complex16s*>(kShorts.data() + 1), 37,
             reinterpret_cast<Complex32f*>(&dst[4])))
        return Result();
    dst[6] = float(at);
    dst.push_back(float(norm));
    return dst;
}

Result fft(const Caller& call) {
    Result dst(1026);
    FFTSpec_R_32f* spec;
    if (call(tevsFFTInitAlloc_R_32f, &spec, 10, NoScale, HintNone)) return Result();
    if (call(tevsFFTFwd_RToCCS_32f, kFloats.data(), dst.data(), spec, nullptr)) return Result();
    if (call(tevsFFTInv_CCSToR_32f_I, dst.data(), spec, nullptr)) return Result();
    if (call(tevsFFTFree_R_32f, spec)) return Result();
    for (int order : {3, 8, 10}) {   // on the call's stack, and not
        FFTSpec_C_16sc* shorts;
        std::vector<Complex16s> z(size_t{1} << order);
        if (call(tevsFFTInitAlloc_C_16sc, &shorts, order, NoScale, HintNone)) return Result();
        if (call(tevsFFTFwd_CToC_16sc_Sfs, reinterpret_cast<const Complex16s*>(kShorts.data()), z.data(), shorts, order, nullptr)) return Result();
        if (call(tevsFFTFree_C_16sc, shorts)) return Result();
        for (Complex16s v : z) dst.insert(dst.end(), {float(v.re), float(v.im)});
    }
    return dst;
}

Result fir(const Caller& call) {
    Result dst(2 * 511);
    for (int tapsLen : {20, 400}) {   // direct, and by overlap-save
        FIRState_32f* state;
        if (call(tevsFIRInitAlloc_32f, &state, kFloats.data(), tapsLen, nullptr)) return Result();
        if (call(tevsFIR_32f, kFloats.data(), dst.data() + (tapsLen > 20 ? 511 : 0), 511, state)) return Result();
        if (call(tevsFIRFree_32f, state)) return Result();
    }
    return dst;
}

Result spectrum(const Caller& call) {
    Result dst = kFloats;
    return call(tevsMulPerm_32f_I, kFloats.data() + 1, dst.data(), 1022) ? Result() : dst;
}

struct Case {
    const char* name;
    Result (*run)(const Caller& call);
};
constexpr Case kCases[] = {{"Convert", convert}, {"Movement", movement}, {"Arithmetic", arithmetic}, {"Elementary", elementary}, {"Reductions", reductions},
                           {"FFT", fft},         {"FIR", fir},           {"MulPerm", spectrum}};

TEST(Stack, AlignedToFourBytesWillDo) {
    for (const Case& c : kCases) {
        const Result want = c.run(Caller(0));
        ASSERT_FALSE(want.empty()) << c.name;
        for (int shift : {4, 8, 12}) EXPECT_EQ(c.run(Caller(shift)), want) << c.name << ", shift " << shift;
    }
}

}   // namespace

#else

TEST(Stack, AlignedByTheConvention) { GTEST_SKIP(); }

#endif
