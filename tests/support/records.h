// Records of Fourier transforms, with the types erased: one test of each rule of their lifecycle and of their calls, for every kind.
#pragma once

#include <functional>
#include <span>

#include "support/spec.h"

namespace test {

// The lifecycle of one kind of record. `size` is a length or, of kinds that have a block of the caller's too, an order.
struct Kind {
    const char* name;
    uint32_t identifier;
    Number time, frequency;
    Status (*initAlloc)(Ptr ppSpec, int size, int flag, int hint);
    Status (*free)(Ptr spec);
    Status (*getBufSize)(Ptr spec, Ptr size);
    int firstWithInit = 0;   // the order from which on Init needs memory to build in
    Status (*getSize)(int order, int flag, int hint, Ptr spec, Ptr init, Ptr work) = nullptr;
    Status (*init)(Ptr ppSpec, int order, int flag, int hint, Ptr memory, Ptr scratch) = nullptr;
};

// One transform, in the function of the two that takes its layout, and in the one in place where there is such a one. Parts in two arrays lie one behind the other.
struct Form {
    const Kind& kind;
    const char* name;
    Layout from, to;
    Status (*pairs)(Ptr src, Ptr dst, Ptr spec, Scale scale, Ptr buffer);
    Status (*parts)(Ptr srcRe, Ptr srcIm, Ptr dstRe, Ptr dstIm, Ptr spec, Scale scale, Ptr buffer);
    Status (*pairsInPlace)(Ptr srcDst, Ptr spec, Scale scale, Ptr buffer) = nullptr;
    Status (*partsInPlace)(Ptr srcDstRe, Ptr srcDstIm, Ptr spec, Scale scale, Ptr buffer) = nullptr;

    bool forward() const { return name[0] == 'F'; }
    Type in() const { return {forward() ? kind.time : kind.frequency, 1}; }
    Type out() const { return {forward() ? kind.frequency : kind.time, 1}; }
    Vector source(size_t n) const { return randomVector(in(), scalars(from, n)); }
    Ptr second(Ptr p, size_t n) const { return p.p ? static_cast<const char*>(p.p) + n * in().size() : nullptr; }

    Status call(Ptr src, Ptr dst, Ptr spec, size_t n, int scaleFactor = 0, Ptr buffer = nullptr) const {
        if (pairs) return pairs(src, dst, spec, {scaleFactor}, buffer);
        return parts(src, second(src, n), dst, second(dst, n), spec, {scaleFactor}, buffer);
    }
    Status inPlace(Ptr both, Ptr spec, size_t n, int scaleFactor = 0, Ptr buffer = nullptr) const {
        if (pairsInPlace) return pairsInPlace(both, spec, {scaleFactor}, buffer);
        if (partsInPlace) return partsInPlace(both, second(both, n), spec, {scaleFactor}, buffer);
        return call(both, both, spec, n, scaleFactor, buffer);
    }
    Vector run(const Vector& src, Ptr spec, size_t n, int scaleFactor = 0) const {
        Vector dst(out(), scalars(to, n));
        EXPECT_EQ(call(src, dst, spec, n, scaleFactor), StatusOk) << kind.name << " " << name << " " << n;
        return dst;
    }
};
inline void PrintTo(const Form& form, std::ostream* out) { *out << form.kind.name << " " << form.name; }

// The forms of a kind; CALLS(name, ...) gives the functions of one.
// clang-format off
#define TEVS_COMPLEX_FORMS(kind, layout, CALLS, type, ...)                  \
    {kind, "Fwd_CToC", layout, layout, CALLS(Fwd_CToC_##type, __VA_ARGS__)}, \
    {kind, "Inv_CToC", layout, layout, CALLS(Inv_CToC_##type, __VA_ARGS__)}
#define TEVS_REAL_FORMS(kind, CALLS, type, ...)                               \
    {kind, "Fwd_RToCCS", Reals, Ccs, CALLS(Fwd_RToCCS_##type, __VA_ARGS__)},   \
    {kind, "Fwd_RToPack", Reals, Pack, CALLS(Fwd_RToPack_##type, __VA_ARGS__)}, \
    {kind, "Fwd_RToPerm", Reals, Perm, CALLS(Fwd_RToPerm_##type, __VA_ARGS__)}, \
    {kind, "Inv_CCSToR", Ccs, Reals, CALLS(Inv_CCSToR_##type, __VA_ARGS__)},   \
    {kind, "Inv_PackToR", Pack, Reals, CALLS(Inv_PackToR_##type, __VA_ARGS__)}, \
    {kind, "Inv_PermToR", Perm, Reals, CALLS(Inv_PermToR_##type, __VA_ARGS__)}
// Of two to the power of an order.
#define TEVS_FFT_KIND(k, identifier, time, frequency, firstWithInit)                                                                           \
    {#k, identifier, Number::time, Number::frequency, erased<tevsFFTInitAlloc_##k>, erased<tevsFFTFree_##k>, erased<tevsFFTGetBufSize_##k>, \
     firstWithInit, erased<tevsFFTGetSize_##k>, erased<tevsFFTInit_##k>}
#define TEVS_FFT_PAIRS(name, suffix, inPlace) erased<tevsFFT##name##suffix>, nullptr, erased<tevsFFT##name##inPlace>
#define TEVS_FFT_PARTS(name, suffix, inPlace) nullptr, erased<tevsFFT##name##suffix>, nullptr, erased<tevsFFT##name##inPlace>
// clang-format on

constexpr int kFlags[] = {ScaleFwdByN, ScaleInvByN, ScaleBySqrtN, NoScale};
// What a direction multiplies its result by.
inline Real factor(int flag, bool forward, size_t n) {
    if (flag == ScaleBySqrtN) return 1 / std::sqrt(Real(n));
    return flag == (forward ? ScaleFwdByN : ScaleInvByN) ? 1 / Real(n) : 1;
}

// ---- records ------------------------------------------------------------------------------------------------------------------------------

struct Sizes {   // rows of tables, whose braces are left out
    int order, spec, init, work;
};

// What is reported, and what a record built so asks for: `room` more, where the size that 32-bit integers report has no room to align in.
inline void expectSizes(const Kind& kind, int hint, std::span<const Sizes> rows, int firstTooLarge, const std::function<int(int order)>& room) {
    const auto sizes = [&](int order) {
        Sizes s{order, 0, 0, 0};
        EXPECT_EQ(kind.getSize(order, -7, hint, &s.spec, &s.init, &s.work), StatusOk);
        return s;
    };
    for (const Sizes& want : rows) {
        const Sizes s = sizes(want.order);
        EXPECT_TRUE(s.spec == want.spec && s.init == want.init && s.work == want.work)
            << kind.name << " " << s.order << " hint " << hint << ": " << s.spec << " " << s.init << " " << s.work;
        EXPECT_EQ(Spec(kind, size_t(s.order), NoScale, hint).buffer(), size_t(s.work + room(s.order))) << kind.name << " " << s.order;
    }
    for (int order = firstTooLarge; order < 31; ++order) {
        const Sizes s = sizes(order);
        EXPECT_TRUE(s.spec == INT_MAX && s.init > 0 && s.work > 0) << kind.name << " " << order;
    }
}

// A block of the caller's holds a record that works as one of the library's own does.
inline void expectInitAnywhere(const Form& form, int order, int hint, int step) {
    SCOPED_TRACE(::testing::Message() << ::testing::PrintToString(form) << " order " << order);
    const Kind& kind = form.kind;
    const size_t n = samples(order);
    int specSize, initSize, workSize;
    ASSERT_EQ(kind.getSize(order, NoScale, hint, &specSize, &initSize, &workSize), StatusOk);
    const Vector src = form.source(n), want = form.run(src, Spec(kind, size_t(order), ScaleFwdByN, hint), n);
    const auto init = [&](Ptr spec, Ptr memory, Ptr scratch) { return kind.init(spec, order, ScaleFwdByN, hint, memory, scratch); };
    checkRecordPlaces(kind, specSize, initSize, step, init, [&](Ptr spec) { ASSERT_TRUE(same(want, form.run(src, spec, n))); });
}

// Every check of the lifecycle, in its order.
inline void expectChecks(const Kind& kind) {
    SCOPED_TRACE(kind.name);
    int a = 7, b = 7, c = 7;
    const int first = kind.firstWithInit;
    alignas(16) uint8_t block[176], scratch[32];
    alignas(16) uint32_t stranger[64] = {kind.identifier ^ 1, 5};
    void *const mark = scratch, *spec = mark;
    const auto init = [&](Ptr ppSpec, int order, int flag, Ptr memory, Ptr in) {
        std::memcpy(block, &kind.identifier, sizeof kind.identifier);   // a failure must end what looks like a record
        const Status s = kind.init(ppSpec, order, flag, HintNone, memory, in);
        EXPECT_TRUE(!memory.p || kind.getBufSize(block, &a) == StatusContextMismatch) << order << " " << flag;
        return s;
    };
    for (int order : {-1, 31, INT_MIN, INT_MAX}) EXPECT_EQ(kind.getSize(order, 0, 0, nullptr, nullptr, nullptr), StatusFftOrder);
    expectEach(StatusNullPtr, {kind.getSize(5, 0, 0, nullptr, &b, &c), kind.getSize(5, 0, 0, &a, nullptr, &c), kind.getSize(5, 0, 0, &a, &b, nullptr),
                               init(nullptr, -1, 3, nullptr, nullptr), init(&spec, first, 3, nullptr, nullptr), init(&spec, first, NoScale, block, nullptr),
                               kind.initAlloc(nullptr, 31, 3, 0), kind.free(nullptr), kind.getBufSize(nullptr, &a), kind.getBufSize(stranger, nullptr)});
    expectEach(StatusFftOrder, {init(&spec, -1, 3, nullptr, nullptr), init(&spec, 31, 3, nullptr, nullptr), init(&spec, 28, 3, nullptr, nullptr),
                                kind.initAlloc(&spec, 31, 3, 0)});
    expectEach(StatusFftFlag, {init(&spec, first, 3, block, nullptr), init(&spec, first, 0, block, scratch), init(&spec, 0, 16, block, scratch),
                               init(&spec, 0, -1, block, nullptr), kind.initAlloc(&spec, 0, 3, 0)});
    expectEach(StatusContextMismatch, {kind.free(stranger), kind.getBufSize(stranger, &a)});
    EXPECT_EQ(kind.initAlloc(&spec, 30, NoScale, HintNone), StatusNoMemory);
    EXPECT_TRUE(spec == mark && a == 7 && b == 7 && c == 7);
    expectEach(StatusOk, {kind.init(&spec, first - 1, NoScale, HintNone, block, nullptr), kind.free(spec)});
}

// ---- calls --------------------------------------------------------------------------------------------------------------------------------

// Of a record for n values.
inline void expectCallChecks(const Form& form, Ptr spec, size_t n) {
    SCOPED_TRACE(::testing::PrintToString(form));
    const Vector src = form.source(n), before(form.out(), scalars(form.to, n));
    Vector dst = before;
    alignas(16) uint32_t stranger[64] = {form.kind.identifier ^ 1, 5};
    expectEach(StatusNullPtr,
               {form.call(nullptr, nullptr, nullptr, n), form.call(src, dst, nullptr, n), form.call(nullptr, dst, spec, n), form.call(src, nullptr, spec, n)});
    expectEach(StatusContextMismatch, {form.call(nullptr, nullptr, stranger, n), form.call(src, dst, stranger, n)});
    if (form.pairsInPlace || form.partsInPlace) {
        expectEach(StatusNullPtr, {form.inPlace(nullptr, nullptr, n), form.inPlace(nullptr, spec, n), form.inPlace(dst, nullptr, n)});
        expectEach(StatusContextMismatch, {form.inPlace(nullptr, stranger, n), form.inPlace(dst, stranger, n)});
    }
    for (int missing = 0; missing < 4 && form.parts; ++missing) {
        const auto p = [&](int i, const Vector& v) { return i == missing ? Ptr() : Ptr(v); };
        EXPECT_EQ(form.parts(p(0, src), p(1, src), p(2, dst), p(3, dst), spec, {0}, nullptr), StatusNullPtr);
        if (form.partsInPlace && missing < 2) {
            EXPECT_EQ(form.partsInPlace(p(0, dst), p(1, dst), spec, {0}, nullptr), StatusNullPtr);
        }
    }
    EXPECT_TRUE(same(before, dst));
}

// In place or not, at any address, in whose work buffer ever; `size` is the length or the order of n values.
inline void expectSameEverywhere(const Form& form, size_t size, size_t n) {
    SCOPED_TRACE(::testing::Message() << ::testing::PrintToString(form) << " " << n);
    const Spec spec(form.kind, size, ScaleBySqrtN, HintNone);
    int spare, work = INT_MAX;
    EXPECT_TRUE(!form.kind.getSize || form.kind.getSize(int(size), NoScale, HintNone, &spare, &spare, &work) == StatusOk);
    const Vector src = form.source(n);
    checkPlaces(src, form.run(src, spec, n, 1), std::min(size_t(work), spec.buffer()),
                [&](Ptr x, Ptr y, Ptr buffer) { return x.p == y.p ? form.inPlace(y, spec, n, 1, buffer) : form.call(x, y, spec, n, 1, buffer); });
}

inline void expectOwnRounding(const Form& form, size_t size, size_t n) {
    SCOPED_TRACE(::testing::Message() << ::testing::PrintToString(form) << " " << n);
    const Vector src = form.source(n);
    expectOwnModes([&] { return form.run(src, Spec(form.kind, size, ScaleBySqrtN, HintNone), n, 1).bytes; });
}

// Any array of a source may be any of the destination: three arrays, and which of them are source re, im and destination re, im.
inline void expectShareableArrays(const Form& form, size_t size, size_t n) {
    const Spec spec(form.kind, size, NoScale, HintNone);
    const Vector src = form.source(n), want = form.run(src, spec, n, 3);
    constexpr int kSharings[][4] = {{0, 1, 0, 1}, {0, 1, 1, 0}, {0, 1, 0, 2}, {0, 1, 2, 1}, {0, 1, 2, 0}, {0, 1, 1, 2}};
    for (const auto& at : kSharings) {
        Vector arrays[] = {src.slice(0, n), src.slice(n, n), Vector(form.out(), n)};
        ASSERT_EQ(form.parts(arrays[at[0]], arrays[at[1]], arrays[at[2]], arrays[at[3]], spec, {3}, nullptr), StatusOk);
        EXPECT_TRUE(same(want.slice(0, n), arrays[at[2]]) && same(want.slice(n, n), arrays[at[3]]))
            << ::testing::PrintToString(form) << " " << n << " sharing " << at[0] << at[1] << at[2] << at[3];
    }
}

}   // namespace test
