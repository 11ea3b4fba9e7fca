// Records of transforms: one test of each rule of their lifecycle and of their calls, for every kind.
#pragma once

#include <climits>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

#include "support/control_words.h"
#include "support/data.h"
#include "support/dft.h"
#include "support/guarded.h"
#include "tevcore.h"

namespace test {

struct Sizes {   // rows of tables, whose braces are left out
    int order, spec, init, work;
};

// The lifecycle of one kind of record.
struct Kind {
    const char* name;
    uint32_t identifier;
    int firstWithInit;   // the order from which on Init needs memory to build in
    Status (*getSize)(int order, int flag, int hint, int* spec, int* init, int* work);
    Status (*init)(void** spec, int order, int flag, int hint, uint8_t* memory, uint8_t* scratch);
    Status (*initAlloc)(void** spec, int order, int flag, int hint);
    Status (*free)(void* spec);
    Status (*getBufSize)(const void* spec, int* size);
};
// The library's functions without the record's type, which they tell apart by its identifier alone.
template <auto F> struct Untyped;
template <class S, class... P, Status (*F)(S**, P...)> struct Untyped<F> {
    static Status call(void** spec, P... rest) {
        S* typed = spec ? static_cast<S*>(*spec) : nullptr;
        const Status s = F(spec ? &typed : nullptr, rest...);
        if (spec) *spec = typed;
        return s;
    }
};
template <class S, Status (*F)(S*)> struct Untyped<F> {
    static Status call(void* spec) { return F(static_cast<S*>(spec)); }
};
template <class S, Status (*F)(const S*, int*)> struct Untyped<F> {
    static Status call(const void* spec, int* size) { return F(static_cast<const S*>(spec), size); }
};
#define TEVS_KIND(k, identifier, firstWithInit)                                                                                                   \
    test::Kind {                                                                                                                                  \
#k, identifier, firstWithInit, tevsFFTGetSize_##k, test::Untyped < tevsFFTInit_##k> ::call, test::Untyped < tevsFFTInitAlloc_##k> ::call, \
            test::Untyped < tevsFFTFree_##k> ::call, test::Untyped < tevsFFTGetBufSize_##k> ::call                                                \
    }

using Record = std::unique_ptr<void, Status (*)(void*)>;
inline Record record(const Kind& kind, int order, int flag, int hint = HintNone) {
    void* spec = nullptr;
    EXPECT_EQ(kind.initAlloc(&spec, order, flag, hint), StatusOk);
    return {spec, kind.free};
}
inline size_t bufferSize(const Kind& kind, const void* spec) {
    int size = -1;
    EXPECT_EQ(kind.getBufSize(spec, &size), StatusOk);
    return size_t(size);
}

constexpr int kFlags[] = {ScaleFwdByN, ScaleInvByN, ScaleBySqrtN, NoScale};

// One transform in both of its forms, from scalars S to scalars D: parts in two arrays lie one behind the other. Floats have no scale.
template <class S, class D> struct Form {
    const Kind& kind;
    std::string name;
    Layout from, to;
    Status (*call)(const void* src, void* dst, const void* spec, int scaleFactor, uint8_t* buffer, int order);
    Status (*inPlace)(const void*, void* srcDst, const void* spec, int scaleFactor, uint8_t* buffer, int order);   // null where there is no such form
    bool forward() const { return name[0] == 'F'; }
    std::vector<S> source(int order) const { return randomVector<S>(scalars(from, order)); }
};
// Any of the library's transforms in that shape.
template <auto F> struct Flat;
template <class First, class... P, Status (*F)(First*, P...)> struct Flat<F> {
    static Status call(const void* src, void* dst, const void* spec, int scaleFactor, uint8_t* buffer, int order) {
        constexpr size_t kArrays = 1 + (std::is_pointer_v<P> + ...) - 2;   // behind them the record, the scale, the buffer
        constexpr bool kInPlace = !std::is_const_v<First>;
        size_t at = 0;
        const auto argument = [&]<class A>(std::type_identity<A>) -> A {
            if constexpr (std::is_same_v<A, int>) {
                return scaleFactor;
            } else {
                const size_t i = at++;
                using Element = std::remove_const_t<std::remove_pointer_t<A>>;
                if (i >= kArrays) return A(i == kArrays ? const_cast<void*>(spec) : buffer);
                auto* const array = static_cast<Element*>(i < (kArrays + 1) / 2 && !kInPlace ? const_cast<void*>(src) : dst);
                const bool second = kArrays == 4 ? i % 2 : kInPlace && i;
                if constexpr (std::is_arithmetic_v<Element>)
                    return A(array && second ? array + samples(order) : array);
                else
                    return A(array);
            }
        };
        std::tuple<First*, P...> all{argument(std::type_identity<First*>{}), argument(std::type_identity<P>{})...};   // braces: in this order
        return std::apply(F, all);
    }
};
#define TEVS_FORM(kind, name, suffix, outOfPlace, in, from, to) \
    { kind, #name #suffix, from, to, test::Flat<tevsFFT##name##suffix##outOfPlace>::call, test::Flat<tevsFFT##name##suffix##in>::call }
#define TEVS_COMPLEX_FORMS(kind, type, o, i, layout) \
    { TEVS_FORM(kind, Fwd_CToC, _##type, o, i, layout, layout), TEVS_FORM(kind, Inv_CToC, _##type, o, i, layout, layout) }
#define TEVS_REAL_FORMS(kind, type, o, i)                                                                                      \
    {                                                                                                                          \
        TEVS_FORM(kind, Fwd_RToCCS, _##type, o, i, Reals, Ccs), TEVS_FORM(kind, Fwd_RToPack, _##type, o, i, Reals, Pack),      \
            TEVS_FORM(kind, Fwd_RToPerm, _##type, o, i, Reals, Perm), TEVS_FORM(kind, Inv_CCSToR, _##type, o, i, Ccs, Reals),  \
            TEVS_FORM(kind, Inv_PackToR, _##type, o, i, Pack, Reals), TEVS_FORM(kind, Inv_PermToR, _##type, o, i, Perm, Reals) \
    }

template <class S, class D> std::vector<D> run(const Form<S, D>& f, const std::vector<S>& src, const void* spec, int order, int scaleFactor = 0) {
    std::vector<D> dst(scalars(f.to, order));
    EXPECT_EQ(f.call(src.data(), dst.data(), spec, scaleFactor, nullptr, order), StatusOk);
    return dst;
}

// ---- records ------------------------------------------------------------------------------------------------------------------------------

// What is reported, and what a record built so asks for: `room` more, where the size that 32-bit integers report has no room to align in.
inline void expectSizes(const Kind& kind, int hint, std::span<const Sizes> rows, int firstTooLarge, const std::function<int(int order)>& room) {
    for (int i = 0; i < int(rows.size()) + 31 - firstTooLarge; ++i) {
        const bool listed = i < int(rows.size());
        const int order = listed ? rows[size_t(i)].order : firstTooLarge + i - int(rows.size());
        int spec = 0, init = 0, work = 0;
        ASSERT_EQ(kind.getSize(order, -7, hint, &spec, &init, &work), StatusOk);
        if (listed) {
            const Sizes& want = rows[size_t(i)];
            EXPECT_TRUE(spec == want.spec && init == want.init && work == want.work)
                << kind.name << " " << order << " hint " << hint << ": " << spec << " " << init << " " << work;
            EXPECT_EQ(bufferSize(kind, record(kind, order, NoScale, hint).get()), size_t(work + room(order))) << kind.name << " " << order;
        } else {
            EXPECT_TRUE(spec == INT_MAX && init > 0 && work > 0) << kind.name << " " << order;
        }
    }
}

inline uint32_t identifierOf(const void* spec) {
    uint32_t word;
    std::memcpy(&word, spec, sizeof word);
    return word;
}

// A record in a block of exactly the reported size, at any address, works as one of the library's own does; building it keeps to its two blocks.
template <class S, class D> void expectInitAnywhere(const Form<S, D>& form, int order, int hint, int step) {
    const Kind& kind = form.kind;
    int specSize, initSize, workSize;
    ASSERT_EQ(kind.getSize(order, NoScale, hint, &specSize, &initSize, &workSize), StatusOk);
    const auto src = form.source(order);
    const auto want = run(form, src, record(kind, order, ScaleFwdByN, hint).get(), order);
    for (int offset = 0; offset < 16; offset += step)
        for (bool atEnd : {false, true}) {
            Guarded<uint8_t> memory(size_t(specSize), {offset, atEnd}), scratch(size_t(initSize), {offset, atEnd});
            void* spec = nullptr;
            ASSERT_EQ(kind.init(&spec, order, ScaleFwdByN, hint, memory, initSize ? scratch.data() : nullptr), StatusOk);
            ASSERT_EQ(reinterpret_cast<uintptr_t>(spec), (reinterpret_cast<uintptr_t>(memory.data()) + 15) / 16 * 16);
            const auto before = memory.values();
            ASSERT_EQ(identifierOf(spec), kind.identifier);
            ASSERT_TRUE(same(want, run(form, src, spec, order))) << form.name << " order " << order << " offset " << offset;
            ASSERT_TRUE(same(before, memory.values())) << "a call changed the record";
            ASSERT_EQ(kind.free(spec), StatusOk);
            ASSERT_EQ(kind.free(spec), StatusContextMismatch);
            ASSERT_EQ(identifierOf(spec), 0u);
            ASSERT_TRUE(memory.intact() && scratch.intact()) << form.name << " order " << order << " offset " << offset;
        }
}

// Every check of the lifecycle, in its order. `strangers` are records of all kinds.
inline void expectChecks(const Kind& kind, std::span<const Kind* const> strangers) {
    int a = 7, b = 7, c = 7;
    for (int order : {-1, 31, INT_MIN, INT_MAX}) EXPECT_EQ(kind.getSize(order, 0, 0, nullptr, nullptr, nullptr), StatusFftOrder);
    EXPECT_EQ(kind.getSize(5, 0, 0, nullptr, &b, &c), StatusNullPtr);
    EXPECT_EQ(kind.getSize(5, 0, 0, &a, nullptr, &c), StatusNullPtr);
    EXPECT_EQ(kind.getSize(5, 0, 0, &a, &b, nullptr), StatusNullPtr);
    EXPECT_TRUE(a == 7 && b == 7 && c == 7);

    const int first = kind.firstWithInit;
    alignas(16) uint8_t block[176], scratch[32];
    void *const mark = scratch, *spec = mark;
    struct Row {
        bool ppSpec;
        int order, flag;
        bool memory, init;
        Status want;
    };
    for (const Row& r :
         {Row{false, -1, 3, false, false, StatusNullPtr}, Row{true, -1, 3, false, false, StatusFftOrder}, Row{true, 31, 3, false, false, StatusFftOrder},
          Row{true, 28, 3, false, false, StatusFftOrder}, Row{true, first, 3, false, false, StatusNullPtr}, Row{true, first, 3, true, false, StatusFftFlag},
          Row{true, first, 0, true, true, StatusFftFlag}, Row{true, 0, 16, true, true, StatusFftFlag}, Row{true, 0, -1, true, false, StatusFftFlag},
          Row{true, first, NoScale, true, false, StatusNullPtr}}) {
        std::memcpy(block, &kind.identifier, sizeof kind.identifier);   // a failure must end what looks like a record
        EXPECT_EQ(kind.init(r.ppSpec ? &spec : nullptr, r.order, r.flag, HintNone, r.memory ? block : nullptr, r.init ? scratch : nullptr), r.want)
            << kind.name << " " << r.order << " " << r.flag;
        EXPECT_EQ(spec, mark);
        if (r.memory) {
            EXPECT_EQ(kind.getBufSize(block, &a), StatusContextMismatch);
        }
    }
    EXPECT_EQ(kind.initAlloc(nullptr, 31, 3, HintNone), StatusNullPtr);
    EXPECT_EQ(kind.initAlloc(&spec, 31, 3, HintNone), StatusFftOrder);
    EXPECT_EQ(kind.initAlloc(&spec, 0, 3, HintNone), StatusFftFlag);
    EXPECT_EQ(kind.initAlloc(&spec, 30, NoScale, HintNone), StatusNoMemory);
    EXPECT_EQ(spec, mark);
    EXPECT_EQ(kind.init(&spec, first - 1, NoScale, HintNone, block, nullptr), StatusOk);
    EXPECT_EQ(kind.free(spec), StatusOk);

    EXPECT_EQ(kind.free(nullptr), StatusNullPtr);
    EXPECT_EQ(kind.getBufSize(nullptr, &a), StatusNullPtr);
    EXPECT_EQ(kind.getBufSize(block, nullptr), StatusNullPtr);
    EXPECT_EQ(kind.free(spec), StatusContextMismatch);
    for (const Kind* other : strangers) {
        if (other->identifier == kind.identifier) continue;
        const auto stranger = record(*other, 5, NoScale);
        EXPECT_EQ(kind.getBufSize(stranger.get(), &a), StatusContextMismatch);
        EXPECT_EQ(kind.free(stranger.get()), StatusContextMismatch);
    }
    EXPECT_EQ(a, 7);
}

// ---- calls --------------------------------------------------------------------------------------------------------------------------------

template <class S, class D> void expectCallChecks(const Form<S, D>& form) {
    alignas(16) uint32_t stranger[32] = {form.kind.identifier ^ 1, 5};
    for (int order : {0, 5}) {
        const auto spec = record(form.kind, order, NoScale);
        const auto src = form.source(order);
        Guarded<D> dst(scalars(form.to, order));
        struct Row {
            const void *src, *spec;
            bool dst;
            Status want;
        };
        for (const Row& r : {Row{nullptr, nullptr, false, StatusNullPtr}, Row{nullptr, stranger, false, StatusContextMismatch},
                             Row{nullptr, spec.get(), true, StatusNullPtr}, Row{src.data(), spec.get(), false, StatusNullPtr},
                             Row{src.data(), nullptr, true, StatusNullPtr}, Row{src.data(), stranger, true, StatusContextMismatch}}) {
            EXPECT_EQ(form.call(r.src, r.dst ? dst.data() : nullptr, r.spec, 0, nullptr, order), r.want) << form.name;
            if (form.inPlace && (!r.dst || r.spec != spec.get())) {
                EXPECT_EQ(form.inPlace(nullptr, r.dst ? dst.data() : nullptr, r.spec, 0, nullptr, order), r.want) << form.name;
            }
        }
        EXPECT_TRUE(dst.untouched()) << form.name;
    }
}

// In place or not, at any address, in whose work buffer ever: the same bits, and nothing touched beside the destination.
template <class S, class D> void expectSameEverywhere(const Form<S, D>& form, int order, int scaleFactor) {
    const auto spec = record(form.kind, order, ScaleBySqrtN);
    const auto src = form.source(order);
    const auto want = run(form, src, spec.get(), order, scaleFactor);
    int ignored, reported;
    ASSERT_EQ(form.kind.getSize(order, NoScale, HintNone, &ignored, &ignored, &reported), StatusOk);
    const size_t work = std::min(size_t(reported), bufferSize(form.kind, spec.get()));
    constexpr int e = int(sizeof(S));
    for (Place at : {Place{0, false}, Place{e, false}, Place{2 * e, false}, Place{3 * e, false}, Place{0, true}, Place{1, true}}) {
        const Guarded<S> in(src, at);
        Guarded<D> out(want.size(), at);
        Guarded<uint8_t> buffer(work, {at.offset / e * 5 + at.offset % e, at.atEnd});
        ASSERT_EQ(form.call(in.data(), out, spec.get(), scaleFactor, buffer, order), StatusOk);
        ASSERT_TRUE(same(want, out.values())) << form.name << " order " << order << " offset " << at.offset;
        ASSERT_TRUE(same(src, in.values()) && out.intact() && in.intact() && buffer.intact()) << form.name << " order " << order;
        if constexpr (std::is_same_v<S, D>) {
            Guarded<S> both(std::max(src.size(), want.size()), at);
            both.assign(src);
            ASSERT_EQ(form.inPlace(nullptr, both, spec.get(), scaleFactor, at.atEnd ? nullptr : buffer.data(), order), StatusOk);
            auto got = both.values();
            got.resize(want.size());
            ASSERT_TRUE(same(want, got)) << form.name << " in place, order " << order << " offset " << at.offset;
            ASSERT_TRUE(both.intact() && buffer.intact()) << form.name << " order " << order;
        }
    }
}

template <class S, class D> void expectOwnRounding(const Form<S, D>& form, int order) {
    SCOPED_TRACE(::testing::Message() << form.name << " " << order);
    const auto src = form.source(order);
    expectOwnModes([&] { return run(form, src, record(form.kind, order, ScaleBySqrtN).get(), order, 1); });
}

}   // namespace test
