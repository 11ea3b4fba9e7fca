// IIR filters: arbitrary order and cascades of second-order sections, with taps and delay line in a record.
#include <limits.h>
#include <math.h>
#include <string.h>

#include <algorithm>
#include <limits>
#include <type_traits>

#include "core/args.h"
#include "core/memory.h"
#include "core/rounding.h"
#include "filter/iir.table.h"
#include "filter/pairs.h"
#include "tevs/iir.h"
#include "vector/samples.h"

namespace tevs {

// A record, at a 16-byte boundary, its arrays behind it.
struct IirState {
    uint32_t id;
    int32_t count;       // order, or sections
    int32_t sections;    // that it is filtered by: those of a cascade, or one where the order is at most 2; 0 for the recursion of arbitrary order
    int32_t tabled;      // the first so many have a table
    int32_t allocated;   // 1 where InitAlloc made the block
    void* taps;          // normalised: b0 b1 b2 a1 a2 of each section; of arbitrary order as the kernels take them
    void* tables;        // SectionTable of each section that has one
    void* delay;         // the state d, and zeros behind it
};

namespace {

constexpr int kStage = 512;    // samples of another type that are filtered at a time
constexpr int kChunk = 1024;   // samples that go through all sections at a time

enum Form { kArbitrary, kBiQuad };

// A pair's record. Everything is kept, and computed, in Kept. "II01" is the identifier of a record of arbitrary order, the next one that of a cascade.
template <class P> struct IirKind : P {
    using Kept = typename P::Float;
    static constexpr uint32_t kIds[2] = {numberedIdentifier("II", 2 * P::kPlace + 1), numberedIdentifier("II", 2 * P::kPlace + 2)};
};
using Iir_32f = IirKind<Pair_32f>;
using Iir_32fc = IirKind<Pair_32fc>;
using Iir32f_16s = IirKind<Pair32f_16s>;
using Iir32fc_16sc = IirKind<Pair32fc_16sc>;
using Iir32s_16s = IirKind<Pair32s_16s>;
using Iir32s_16s32f = IirKind<Pair32s_16s32f>;
using Iir32sc_16sc = IirKind<Pair32sc_16sc>;
using Iir32sc_16sc32fc = IirKind<Pair32sc_16sc32fc>;
using Iir_64f = IirKind<Pair_64f>;
using Iir_64fc = IirKind<Pair_64fc>;
using Iir64f_32f = IirKind<Pair64f_32f>;
using Iir64fc_32fc = IirKind<Pair64fc_32fc>;
using Iir64f_32s = IirKind<Pair64f_32s>;
using Iir64fc_32sc = IirKind<Pair64fc_32sc>;
using Iir64f_16s = IirKind<Pair64f_16s>;
using Iir64fc_16sc = IirKind<Pair64fc_16sc>;
static_assert(Iir_32f::kIds[kBiQuad] == identifier("II02") && Iir32sc_16sc::kIds[kArbitrary] == identifier("II11") &&
              Iir64fc_16sc::kIds[kBiQuad] == identifier("II28"));

// ---- taps ---------------------------------------------------------------------------------------------------------------------------------

// Both parts of a complex tap are 0; either part is NaN.
template <class T> bool isZero(T tap) {
    return std::all_of(partsOf(&tap), partsOf(&tap) + kParts<T>, [](auto part) { return part == 0; });
}
template <class T> bool isNaN(T tap) {
    return std::any_of(partsOf(&tap), partsOf(&tap) + kParts<T>, [](auto part) { return part != part; });
}

template <class T> bool isDivisor(T tap) { return !isZero(tap) && !isNaN(tap); }

// 1 / z. The square of z's magnitude is formed of parts near 1, and so neither overflows nor vanishes.
float reciprocal(float z) { return 1 / z; }
double reciprocal(double z) { return 1 / z; }
template <class C> C reciprocal(C z) {
    const double re = double(z.re), im = double(z.im);
    const int e = -ilogb(std::max(fabs(re), fabs(im)));
    const double f = powerOfTwo<double>(e / 2), g = powerOfTwo<double>(e - e / 2), u = re * f * g, v = im * f * g, squares = u * u + v * v;
    return {Scalar<C>(u / squares * f * g), Scalar<C>(-v / squares * f * g)};
}

// Given taps, one by one, in the type that they are kept in.
template <class Kind> class GivenTaps {
public:
    using Tap = typename Kind::Tap;
    using Kept = typename Kind::Kept;
    GivenTaps(const Tap* pTaps, int tapsFactor) : pTaps_(pTaps), tapsFactor_(tapsFactor) {}
    Kept operator[](int64_t k) const {
        Kept h;
        if constexpr (Kind::kTapsFactor)
            tevsConvert_32s32f_Sfs(partsOf(pTaps_ + k), partsOf(&h), kParts<Kept>, tapsFactor_);
        else
            h = pTaps_[k];
        return h;
    }
    bool good(Form form, int count) const {
        if (form == kArbitrary) return isDivisor((*this)[int64_t{count} + 1]);
        for (int64_t s = 0; s < count; ++s)
            if (isZero((*this)[6 * s]) || !isDivisor((*this)[6 * s + 3])) return false;
        return true;
    }

private:
    const Tap* const pTaps_;
    const int tapsFactor_;
};

// ---- recursions ---------------------------------------------------------------------------------------------------------------------------

template <class T> T differenceOf(T x, T y) {
    if constexpr (kComplex<T>)
        return {x.re - y.re, x.im - y.im};
    else
        return x - y;
}
// b x + d - a y, where y comes last.
template <class T> T next(T b, T x, T a, T y, T d) { return differenceOf(sumOf(productOf(b, x), d), productOf(a, y)); }

// A state that is below the smallest normal number in all its parts is made 0: there its decay would take many times as long, and stop short of 0 for ever.
// (One part alone made 0 would set the others going again.)
template <class T> void settle(T* d, int n) {
    auto* const parts = partsOf(d);
    bool tiny = true;
    for (ptrdiff_t k = 0; tiny && k < partCount<T>(n); ++k) tiny = fabs(parts[k]) < std::numeric_limits<Scalar<T>>::min();
    if (tiny) memset(d, 0, size_t(n) * sizeof(T));
}

// Of order 1 d[1] is 0, and stays so: 0 times an infinite x or y would be NaN.
template <class T> T stepSection(const Section<T>& s, int order, T x, T* d) {
    const T y = sumOf(productOf(s.b0, x), d[0]);
    d[0] = next(s.b1, x, s.a1, y, d[1]);
    if (order > 1) d[1] = differenceOf(productOf(s.b2, x), productOf(s.a2, y));
    return y;
}
template <class T> T stepArbitrary(const T* b, const T* a, int order, T x, T* d) {
    const T y = sumOf(productOf(b[0], x), d[0]);
    for (int k = 0; k < order; ++k) d[k] = next(b[k + 1], x, a[k + 1], y, d[k + 1]);   // d[order] is 0
    return y;
}

// ---- a section's table --------------------------------------------------------------------------------------------------------------------

struct WideComplex {
    long double re, im;
};
template <class T> using Wide = std::conditional_t<kComplex<T>, WideComplex, long double>;

// Puts z into the parts at p, and z i at a distance of `next` behind them.
template <class W, class Put> void putParts(W z, int next, Put put) {
    if constexpr (kComplex<W>) {
        put(0, z.re), put(1, z.im);
        put(next, -z.im), put(next + 1, z.re);
    } else {
        put(0, z);
    }
}

template <class T> class TableOf {
    using W = Wide<T>;
    using S = Scalar<T>;
    using Table = SectionTable<T>;
    static constexpr int kParts = Table::kParts, kStates = Table::kStates, kSamples = Table::kSamples;
    struct Vector {
        W s0, s1;
    };

public:
    static void make(const Section<T>* section, Table* table) { TableOf(*section, *table).fill(); }

private:
    TableOf(const Section<T>& s, Table& t) : s_(s), t_(t) {
        sigma_ = productOf(wide(s.a1), minusHalf());
        delta_ = differenceOf(productOf(sigma_, sigma_), wide(s.a2));
    }
    static W wide(T x) {
        return eachPart<W>(x, [](auto part) { return (long double)part; });
    }
    static W minusHalf() {
        if constexpr (kComplex<T>)
            return {-0.5L, 0};
        else
            return -0.5L;
    }
    Vector stepped(Vector v) const { return {sumOf(productOf(sigma_, v.s0), v.s1), sumOf(productOf(delta_, v.s0), productOf(sigma_, v.s1))}; }
    void put(S& to, long double v) {
        to = S(v);
        sum_ += to - to;
    }
    void fill() {
        memset(&t_, 0, sizeof t_);
        const W b0 = wide(s_.b0), first = differenceOf(wide(s_.b1), productOf(wide(s_.a1), b0));
        const Vector input = {first, sumOf(differenceOf(wide(s_.b2), productOf(wide(s_.a2), b0)), productOf(sigma_, first))};
        const auto respond = [&](int n, W h) {
            putParts(h, 2 * kIirBlock, [&](int part, long double v) { put((&t_.response[0][0])[kIirBlock - kParts + kParts * n + part], v); });
        };
        putParts(b0, kParts, [&](int part, long double v) {
            if (part < kParts) put(t_.direct[part], v);
        });
        Vector v = input;
        for (int n = kSamples - 1; n >= 0; --n, v = stepped(v)) {
            if (n > 0) respond(kSamples - n, v.s0);
            S* const to = t_.into + kParts * n * kStates;
            putParts(v.s0, kStates, [&](int part, long double x) { put(to[part], x); });
            putParts(v.s1, kStates, [&](int part, long double x) { put(to[kParts + part], x); });
        }
        for (int q = 0; q < 2; ++q) {
            v = {};
            *(q == 0 ? partsOf(&v.s0) : partsOf(&v.s1)) = 1;
            S* const out = t_.outOf + q * kParts * kIirBlock;
            for (int n = 0; n < kSamples; ++n, v = stepped(v)) putParts(v.s0, kIirBlock, [&](int part, long double x) { put(out[kParts * n + part], x); });
            const int at = q * kParts * kStates;
            const auto step = [&](int k, long double x) {
                t_.step[at + k] = double(x);
                t_.stepRest[at + k] = double(x - t_.step[at + k]);
                sum_ += S(t_.step[at + k] - t_.step[at + k]);
            };
            putParts(v.s0, kStates, step);
            putParts(v.s1, kStates, [&](int part, long double x) { step(kParts + part, x); });
        }
        putParts(sigma_, kParts, [&](int part, long double x) {
            if (part < kParts) t_.sigma[part] = double(x);
        });
        t_.usable = sum_ == 0;
    }

    const Section<T>& s_;
    Table& t_;
    W sigma_, delta_;
    S sum_ = 0;   // 0 as long as everything is finite
};

// ---- a record -----------------------------------------------------------------------------------------------------------------------------

template <class Kind> class Iir {
    using Kept = typename Kind::Kept;
    using Sample = typename Kind::Sample;
    using Real = Scalar<Kept>;
    using Table = SectionTable<Kept>;
    static constexpr bool kStraight = std::is_same_v<Kept, Sample>;   // samples are filtered where they lie
    static constexpr int kComponents = kParts<Kept>, kLanes = 16 / int(sizeof(Real));

public:
    explicit Iir(const IirState* s) : s_(const_cast<IirState*>(s)) {}

    // Taps and state take a small part of this.
    static int64_t stateBytes(Form form, int count) {
        constexpr int64_t parts = kParts<Kept>, size = sizeof(Scalar<Kept>), area = 1024 * parts;
        const int64_t n = parts * count;
        const auto rounded = [](int64_t scalars) { return int64_t(roundUp16(uint64_t(scalars * size))); };
        if (form == kBiQuad) return size * (area + 40 * n + 10) + 48 + rounded(5 * n) + rounded(2 * n) + 16;
        return size * (8 * n + area + 26) + 48 + rounded(2 * (n + parts)) + rounded(n + parts) + 16;
    }
    static bool fits(Form form, int count) { return count >= 1 && stateBytes(form, count) <= INT_MAX; }

    // Over no block it only adds up. As many sections have a table as there is room for: all of the first forty or so.
    static uint64_t layOut(void* block, Form form, int count) {
        Carve c(block);
        auto* const s = c.take<IirState>(1);
        const int sections = form == kBiQuad ? count : count <= 2 ? 1 : 0;
        const uint64_t registers = uint64_t(registersOf(count));
        void* const taps =
            sections > 0 ? static_cast<void*>(c.take<Section<Kept>>(uint64_t(sections))) : c.take<Real>(2 * kComponents * kLanes * (registers + 2));
        auto* const delay = c.take<Real>(sections > 0 ? uint64_t(2 * kComponents) * uint64_t(sections) : kLanes * (registers + 1));
        const int64_t room = (stateBytes(form, count) - 15 - int64_t(c.size())) / int64_t(roundUp16(sizeof(Table)));
        const int tabled = int(std::min<int64_t>(sections, room));
        auto* const tables = c.take<Table>(uint64_t(tabled));
        if (s)
            *s = {
                .id = Kind::kIds[form], .count = count, .sections = sections, .tabled = tabled, .allocated = 0, .taps = taps, .tables = tables, .delay = delay};
        if (s) memset(delay, 0, size_t(reinterpret_cast<uint8_t*>(tables) - reinterpret_cast<uint8_t*>(delay)));
        return c.size();
    }

    void setTaps(const GivenTaps<Kind>& given) {
        const int64_t n = s_->count;
        if (form() == kArbitrary) {
            const Kept r = reciprocal(given[n + 1]);
            const auto b = [&](int64_t k) { return k <= n ? productOf(given[k], r) : Kept{}; };
            const auto a = [&](int64_t k) { return 0 < k && k <= n ? productOf(given[n + 1 + k], r) : Kept{}; };
            if (s_->sections > 0)
                setSection(0, {b(0), b(1), b(2), a(1), a(2)});
            else
                setTable(b, a);
        }
        for (int64_t s = 0; form() == kBiQuad && s < n; ++s) {
            const Kept r = reciprocal(given[6 * s + 3]);
            const auto tap = [&](int k) { return productOf(given[6 * s + k], r); };
            setSection(s, {tap(0), tap(1), tap(2), tap(4), tap(5)});
        }
    }
    void setDelay(const Kept* pDlyLine) {
        if (pDlyLine)
            memcpy(d(), pDlyLine, size_t(delayLen()) * sizeof(Kept));
        else
            memset(d(), 0, size_t(delayLen()) * sizeof(Kept));
        if (sectionOrder() == 1) d()[1] = {};
    }
    void getDelay(Kept* pDlyLine) const { memcpy(pDlyLine, d(), size_t(delayLen()) * sizeof(Kept)); }

    void one(Sample src, Sample* pDst, int scaleFactor) {
        auto y = toStored<Kept>(src);
        for (int s = 0; s < s_->sections; ++s) {
            Kept* const delay = d() + 2 * ptrdiff_t{s};
            Kept now[2] = {delay[0], delay[1]};
            y = stepSection(sections()[s], sectionOrder(), y, now);
            settle(now, 2);
            delay[0] = now[0];
            delay[1] = now[1];
        }
        if (s_->sections == 0) {
            y = stepArbitrary(b(), a(), s_->count, y, d());
            settle(d(), s_->count);
        }
        *pDst = fromStored<Sample>(y, scaleFactor);
    }
    void block(const Sample* pSrc, Sample* pDst, int len, int scaleFactor) {
        constexpr int most = kStraight ? kChunk : kStage;
        for (int m; len > 0; len -= m, pSrc += m, pDst += m) {
            m = std::min(len, most);
            if constexpr (kStraight) {
                chunk(pSrc, pDst, m);
            } else {
                Kept stage[kStage];
                toStored(pSrc, stage, m);
                chunk(stage, stage, m);
                fromStored(stage, pDst, m, scaleFactor);
            }
        }
    }

private:
    static int registersOf(int order) { return int((int64_t{order} * kComponents + kLanes - 1) / kLanes); }
    static auto& kernel() {
        if constexpr (std::is_same_v<Kept, float>) return iir->real32f;
        if constexpr (std::is_same_v<Kept, Complex32f>) return iir->complex32f;
        if constexpr (std::is_same_v<Kept, double>) return iir->real64f;
        if constexpr (std::is_same_v<Kept, Complex64f>) return iir->complex64f;
    }
    Form form() const { return s_->id == Kind::kIds[kBiQuad] ? kBiQuad : kArbitrary; }
    int sectionOrder() const { return form() == kArbitrary && s_->count == 1 ? 1 : 2; }
    int delayLen() const { return form() == kBiQuad ? 2 * s_->count : s_->count; }
    Section<Kept>* sections() const { return static_cast<Section<Kept>*>(s_->taps); }
    Table* tables() const { return static_cast<Table*>(s_->tables); }
    Kept* d() const { return static_cast<Kept*>(s_->delay); }

    // Of arbitrary order: b, and a behind it.
    int registers() const { return registersOf(s_->count); }
    ptrdiff_t stride() const { return ptrdiff_t{kLanes} * (registers() + 2); }
    Real* table() const { return static_cast<Real*>(s_->taps); }
    Kept* b() const { return reinterpret_cast<Kept*>(table() + kLanes - kComponents); }
    Kept* a() const { return reinterpret_cast<Kept*>(table() + kComponents * stride() + kLanes - kComponents); }

    void setSection(int64_t s, const Section<Kept>& section) {
        sections()[s] = section;
        if (s < s_->tabled) inExtended(TableOf<Kept>::make, static_cast<const Section<Kept>*>(sections() + s), tables() + s);
    }
    template <class B, class A> void setTable(B b, A a) {
        std::fill_n(table(), 2 * kComponents * stride(), Real{});
        const auto put = [&](Real* to, const auto& tap) {
            for (int k = 0; k <= s_->count; ++k, to += kComponents) putParts(tap(k), int(stride()), [=](int part, Real v) { to[part] = v; });
        };
        put(table() + kLanes - kComponents, b);
        put(table() + kComponents * stride() + kLanes - kComponents, a);
    }

    void chunk(const Kept* x, Kept* y, int len) {
        for (int s = 0, n; s < s_->sections; s += n, x = y) {
            Kept* const delay = d() + 2 * ptrdiff_t{s};
            n = kernel().cascade(x, y, len, sections() + s, s_->sections - s, delay);
            if (n == 0) {
                section(s, x, y, len, delay);
                n = 1;
            } else {
                for (int k = 0; k < n; ++k) settle(delay + 2 * k, 2);
            }
        }
        if (s_->sections == 0) arbitrary(x, y, len);
    }
    // Whole blocks by the table; what is left, or not finite, sample by sample.
    void section(int s, const Kept* x, Kept* y, int len, Kept* delay) const {
        const bool blocks = s < s_->tabled && tables()[s].usable;
        const int order = sectionOrder();
        for (int n = 0; n < len;) {
            if (blocks) n += kernel().section(x + n, y + n, len - n, tables() + s, delay);
            const int end = blocks ? std::min(len, n + Table::kSamples) : len;
            Kept d[2] = {delay[0], order > 1 ? delay[1] : Kept{}};
            for (; n < end; ++n) y[n] = stepSection(sections()[s], order, x[n], d);
            delay[0] = d[0];
            delay[1] = d[1];
        }
        settle(delay, 2);
    }
    void arbitrary(const Kept* x, Kept* y, int len) const {
        const bool groups = registers() <= kMostIirRegisters;
        for (int n = 0; n < len;) {
            if (groups) n += kernel().arbitrary(x + n, y + n, len - n, table(), registers(), d());
            const int end = groups ? std::min(len, n + kLanes / kComponents) : len;
            for (; n < end; ++n) y[n] = stepArbitrary(b(), a(), s_->count, x[n], d());
        }
        settle(d(), s_->count);
    }

    IirState* const s_;
};

// ---- frames -------------------------------------------------------------------------------------------------------------------------------

template <class Kind> Status getStateSize(Form form, int count, int* pSize) {
    if (Status s = Args().ptr(pSize).require(Iir<Kind>::fits(form, count), StatusFilterOrder)) return s;
    *pSize = int(Iir<Kind>::stateBytes(form, count));
    return StatusOk;
}

template <class Kind> void build(IirState* state, Form form, int count, const GivenTaps<Kind>& given, const typename Kind::Kept* pDlyLine) {
    Iir<Kind>::layOut(state, form, count);
    Iir<Kind> f(state);
    f.setTaps(given);
    f.setDelay(pDlyLine);
}

template <class Kind, class State>
Status init(Form form, State** ppState, const typename Kind::Tap* pTaps, int count, const typename Kind::Kept* pDlyLine, uint8_t* pBuffer, int tapsFactor = 0) {
    if (Status s = Args().ptr(ppState).ptr(pTaps).ptr(pBuffer).require(Iir<Kind>::fits(form, count), StatusFilterOrder)) return s;
    const NearestRounding guard;
    const GivenTaps<Kind> given(pTaps, tapsFactor);
    if (!given.good(form, count)) return StatusDivByZeroErr;
    auto* const state = align16<State>(pBuffer);
    build(state, form, count, given, pDlyLine);
    *ppState = state;
    return StatusOk;
}

template <class Kind, class State>
Status initAlloc(Form form, State** ppState, const typename Kind::Tap* pTaps, int count, const typename Kind::Kept* pDlyLine, int tapsFactor = 0) {
    if (Status s = Args().ptr(ppState).ptr(pTaps).require(count >= 1, StatusFilterOrder)) return s;
    if (!Iir<Kind>::fits(form, count)) return StatusNoMemory;
    const NearestRounding guard;
    const GivenTaps<Kind> given(pTaps, tapsFactor);
    if (!given.good(form, count)) return StatusDivByZeroErr;
    auto* const state = static_cast<State*>(allocate(Iir<Kind>::layOut(nullptr, form, count)));
    if (!state) return StatusNoMemory;
    build(state, form, count, given, pDlyLine);
    state->allocated = 1;
    *ppState = state;
    return StatusOk;
}

// Chains that end with a record of either form.
template <class Kind> Args& record(Args& args, const IirState* s) { return args.record(s, Kind::kIds[kArbitrary], Kind::kIds[kBiQuad]); }

template <class Kind> Status free(IirState* s) {
    if (Status status = record<Kind>(Args().ptr(s), s)) return status;
    if (s->allocated) releaseRecord(s);
    return StatusOk;
}

template <class Kind> Status setTaps(const typename Kind::Tap* pTaps, IirState* s, int tapsFactor = 0) {
    if (Status status = record<Kind>(Args().ptr(pTaps).ptr(s), s)) return status;
    const NearestRounding guard;
    const GivenTaps<Kind> given(pTaps, tapsFactor);
    if (!given.good(s->id == Kind::kIds[kBiQuad] ? kBiQuad : kArbitrary, s->count)) return StatusDivByZeroErr;
    Iir<Kind>(s).setTaps(given);
    return StatusOk;
}

template <class Kind> Status setDlyLine(IirState* s, const typename Kind::Kept* pDlyLine) {
    if (Status status = record<Kind>(Args().ptr(s), s)) return status;
    Iir<Kind>(s).setDelay(pDlyLine);
    return StatusOk;
}

template <class Kind> Status getDlyLine(const IirState* s, typename Kind::Kept* pDlyLine) {
    if (Status status = record<Kind>(Args().ptr(s).ptr(pDlyLine), s)) return status;
    Iir<Kind>(s).getDelay(pDlyLine);
    return StatusOk;
}

template <class Kind> Status filter(const typename Kind::Sample* pSrc, typename Kind::Sample* pDst, int len, IirState* s, int scaleFactor = 0) {
    if (Status status = record<Kind>(Args().ptr(pSrc).ptr(pDst).ptr(s).len(len), s)) return status;
    const NearestRounding guard;
    Iir<Kind>(s).block(pSrc, pDst, len, scaleFactor);
    return StatusOk;
}

template <class Kind> Status filterOne(typename Kind::Sample src, typename Kind::Sample* pDst, IirState* s, int scaleFactor = 0) {
    if (Status status = record<Kind>(Args().ptr(pDst).ptr(s), s)) return status;
    const NearestRounding guard;
    Iir<Kind>(s).one(src, pDst, scaleFactor);
    return StatusOk;
}

}   // namespace
}   // namespace tevs

struct IIRState_32f : tevs::IirState {};
struct IIRState_32fc : tevs::IirState {};
struct IIRState32f_16s : tevs::IirState {};
struct IIRState32fc_16sc : tevs::IirState {};
struct IIRState32s_16s : tevs::IirState {};
struct IIRState32sc_16sc : tevs::IirState {};
struct IIRState_64f : tevs::IirState {};
struct IIRState_64fc : tevs::IirState {};
struct IIRState64f_32f : tevs::IirState {};
struct IIRState64fc_32fc : tevs::IirState {};
struct IIRState64f_32s : tevs::IirState {};
struct IIRState64fc_32sc : tevs::IirState {};
struct IIRState64f_16s : tevs::IirState {};
struct IIRState64fc_16sc : tevs::IirState {};

using namespace tevs;

Status tevsIIRGetStateSize_32f(int order, int* pSize) { return getStateSize<Iir_32f>(kArbitrary, order, pSize); }
Status tevsIIRGetStateSize_32fc(int order, int* pSize) { return getStateSize<Iir_32fc>(kArbitrary, order, pSize); }
Status tevsIIRGetStateSize32f_16s(int order, int* pSize) { return getStateSize<Iir32f_16s>(kArbitrary, order, pSize); }
Status tevsIIRGetStateSize32fc_16sc(int order, int* pSize) { return getStateSize<Iir32fc_16sc>(kArbitrary, order, pSize); }
Status tevsIIRGetStateSize32s_16s(int order, int* pSize) { return getStateSize<Iir32s_16s>(kArbitrary, order, pSize); }
Status tevsIIRGetStateSize32s_16s32f(int order, int* pSize) { return getStateSize<Iir32s_16s32f>(kArbitrary, order, pSize); }
Status tevsIIRGetStateSize32sc_16sc(int order, int* pSize) { return getStateSize<Iir32sc_16sc>(kArbitrary, order, pSize); }
Status tevsIIRGetStateSize32sc_16sc32fc(int order, int* pSize) { return getStateSize<Iir32sc_16sc32fc>(kArbitrary, order, pSize); }
Status tevsIIRGetStateSize_64f(int order, int* pSize) { return getStateSize<Iir_64f>(kArbitrary, order, pSize); }
Status tevsIIRGetStateSize_64fc(int order, int* pSize) { return getStateSize<Iir_64fc>(kArbitrary, order, pSize); }
Status tevsIIRGetStateSize64f_32f(int order, int* pSize) { return getStateSize<Iir64f_32f>(kArbitrary, order, pSize); }
Status tevsIIRGetStateSize64fc_32fc(int order, int* pSize) { return getStateSize<Iir64fc_32fc>(kArbitrary, order, pSize); }
Status tevsIIRGetStateSize64f_32s(int order, int* pSize) { return getStateSize<Iir64f_32s>(kArbitrary, order, pSize); }
Status tevsIIRGetStateSize64fc_32sc(int order, int* pSize) { return getStateSize<Iir64fc_32sc>(kArbitrary, order, pSize); }
Status tevsIIRGetStateSize64f_16s(int order, int* pSize) { return getStateSize<Iir64f_16s>(kArbitrary, order, pSize); }
Status tevsIIRGetStateSize64fc_16sc(int order, int* pSize) { return getStateSize<Iir64fc_16sc>(kArbitrary, order, pSize); }
Status tevsIIRGetStateSize_BiQuad_32f(int numBq, int* pSize) { return getStateSize<Iir_32f>(kBiQuad, numBq, pSize); }
Status tevsIIRGetStateSize_BiQuad_32fc(int numBq, int* pSize) { return getStateSize<Iir_32fc>(kBiQuad, numBq, pSize); }
Status tevsIIRGetStateSize32f_BiQuad_16s(int numBq, int* pSize) { return getStateSize<Iir32f_16s>(kBiQuad, numBq, pSize); }
Status tevsIIRGetStateSize32fc_BiQuad_16sc(int numBq, int* pSize) { return getStateSize<Iir32fc_16sc>(kBiQuad, numBq, pSize); }
Status tevsIIRGetStateSize32s_BiQuad_16s(int numBq, int* pSize) { return getStateSize<Iir32s_16s>(kBiQuad, numBq, pSize); }
Status tevsIIRGetStateSize32s_BiQuad_16s32f(int numBq, int* pSize) { return getStateSize<Iir32s_16s32f>(kBiQuad, numBq, pSize); }
Status tevsIIRGetStateSize32sc_BiQuad_16sc(int numBq, int* pSize) { return getStateSize<Iir32sc_16sc>(kBiQuad, numBq, pSize); }
Status tevsIIRGetStateSize32sc_BiQuad_16sc32fc(int numBq, int* pSize) { return getStateSize<Iir32sc_16sc32fc>(kBiQuad, numBq, pSize); }
Status tevsIIRGetStateSize_BiQuad_64f(int numBq, int* pSize) { return getStateSize<Iir_64f>(kBiQuad, numBq, pSize); }
Status tevsIIRGetStateSize_BiQuad_64fc(int numBq, int* pSize) { return getStateSize<Iir_64fc>(kBiQuad, numBq, pSize); }
Status tevsIIRGetStateSize64f_BiQuad_32f(int numBq, int* pSize) { return getStateSize<Iir64f_32f>(kBiQuad, numBq, pSize); }
Status tevsIIRGetStateSize64fc_BiQuad_32fc(int numBq, int* pSize) { return getStateSize<Iir64fc_32fc>(kBiQuad, numBq, pSize); }
Status tevsIIRGetStateSize64f_BiQuad_32s(int numBq, int* pSize) { return getStateSize<Iir64f_32s>(kBiQuad, numBq, pSize); }
Status tevsIIRGetStateSize64fc_BiQuad_32sc(int numBq, int* pSize) { return getStateSize<Iir64fc_32sc>(kBiQuad, numBq, pSize); }
Status tevsIIRGetStateSize64f_BiQuad_16s(int numBq, int* pSize) { return getStateSize<Iir64f_16s>(kBiQuad, numBq, pSize); }
Status tevsIIRGetStateSize64fc_BiQuad_16sc(int numBq, int* pSize) { return getStateSize<Iir64fc_16sc>(kBiQuad, numBq, pSize); }

Status tevsIIRInit_32f(IIRState_32f** ppState, const float* pTaps, int order, const float* pDlyLine, uint8_t* pBuffer) {
    return init<Iir_32f>(kArbitrary, ppState, pTaps, order, pDlyLine, pBuffer);
}
Status tevsIIRInit_32fc(IIRState_32fc** ppState, const Complex32f* pTaps, int order, const Complex32f* pDlyLine, uint8_t* pBuffer) {
    return init<Iir_32fc>(kArbitrary, ppState, pTaps, order, pDlyLine, pBuffer);
}
Status tevsIIRInit32f_16s(IIRState32f_16s** ppState, const float* pTaps, int order, const float* pDlyLine, uint8_t* pBuffer) {
    return init<Iir32f_16s>(kArbitrary, ppState, pTaps, order, pDlyLine, pBuffer);
}
Status tevsIIRInit32fc_16sc(IIRState32fc_16sc** ppState, const Complex32f* pTaps, int order, const Complex32f* pDlyLine, uint8_t* pBuffer) {
    return init<Iir32fc_16sc>(kArbitrary, ppState, pTaps, order, pDlyLine, pBuffer);
}
Status tevsIIRInit32s_16s(IIRState32s_16s** ppState, const int32_t* pTaps, int order, int tapsFactor, const float* pDlyLine, uint8_t* pBuffer) {
    return init<Iir32s_16s>(kArbitrary, ppState, pTaps, order, pDlyLine, pBuffer, tapsFactor);
}
Status tevsIIRInit32s_16s32f(IIRState32s_16s32f** ppState, const float* pTaps, int order, const float* pDlyLine, uint8_t* pBuffer) {
    return init<Iir32s_16s32f>(kArbitrary, ppState, pTaps, order, pDlyLine, pBuffer);
}
Status tevsIIRInit32sc_16sc(IIRState32sc_16sc** ppState, const Complex32s* pTaps, int order, int tapsFactor, const Complex32f* pDlyLine, uint8_t* pBuffer) {
    return init<Iir32sc_16sc>(kArbitrary, ppState, pTaps, order, pDlyLine, pBuffer, tapsFactor);
}
Status tevsIIRInit32sc_16sc32fc(IIRState32sc_16sc32fc** ppState, const Complex32f* pTaps, int order, const Complex32f* pDlyLine, uint8_t* pBuffer) {
    return init<Iir32sc_16sc32fc>(kArbitrary, ppState, pTaps, order, pDlyLine, pBuffer);
}
Status tevsIIRInit_64f(IIRState_64f** ppState, const double* pTaps, int order, const double* pDlyLine, uint8_t* pBuffer) {
    return init<Iir_64f>(kArbitrary, ppState, pTaps, order, pDlyLine, pBuffer);
}
Status tevsIIRInit_64fc(IIRState_64fc** ppState, const Complex64f* pTaps, int order, const Complex64f* pDlyLine, uint8_t* pBuffer) {
    return init<Iir_64fc>(kArbitrary, ppState, pTaps, order, pDlyLine, pBuffer);
}
Status tevsIIRInit64f_32f(IIRState64f_32f** ppState, const double* pTaps, int order, const double* pDlyLine, uint8_t* pBuffer) {
    return init<Iir64f_32f>(kArbitrary, ppState, pTaps, order, pDlyLine, pBuffer);
}
Status tevsIIRInit64fc_32fc(IIRState64fc_32fc** ppState, const Complex64f* pTaps, int order, const Complex64f* pDlyLine, uint8_t* pBuffer) {
    return init<Iir64fc_32fc>(kArbitrary, ppState, pTaps, order, pDlyLine, pBuffer);
}
Status tevsIIRInit64f_32s(IIRState64f_32s** ppState, const double* pTaps, int order, const double* pDlyLine, uint8_t* pBuffer) {
    return init<Iir64f_32s>(kArbitrary, ppState, pTaps, order, pDlyLine, pBuffer);
}
Status tevsIIRInit64fc_32sc(IIRState64fc_32sc** ppState, const Complex64f* pTaps, int order, const Complex64f* pDlyLine, uint8_t* pBuffer) {
    return init<Iir64fc_32sc>(kArbitrary, ppState, pTaps, order, pDlyLine, pBuffer);
}
Status tevsIIRInit64f_16s(IIRState64f_16s** ppState, const double* pTaps, int order, const double* pDlyLine, uint8_t* pBuffer) {
    return init<Iir64f_16s>(kArbitrary, ppState, pTaps, order, pDlyLine, pBuffer);
}
Status tevsIIRInit64fc_16sc(IIRState64fc_16sc** ppState, const Complex64f* pTaps, int order, const Complex64f* pDlyLine, uint8_t* pBuffer) {
    return init<Iir64fc_16sc>(kArbitrary, ppState, pTaps, order, pDlyLine, pBuffer);
}
Status tevsIIRInit_BiQuad_32f(IIRState_32f** ppState, const float* pTaps, int numBq, const float* pDlyLine, uint8_t* pBuffer) {
    return init<Iir_32f>(kBiQuad, ppState, pTaps, numBq, pDlyLine, pBuffer);
}
Status tevsIIRInit_BiQuad_32fc(IIRState_32fc** ppState, const Complex32f* pTaps, int numBq, const Complex32f* pDlyLine, uint8_t* pBuffer) {
    return init<Iir_32fc>(kBiQuad, ppState, pTaps, numBq, pDlyLine, pBuffer);
}
Status tevsIIRInit32f_BiQuad_16s(IIRState32f_16s** ppState, const float* pTaps, int numBq, const float* pDlyLine, uint8_t* pBuffer) {
    return init<Iir32f_16s>(kBiQuad, ppState, pTaps, numBq, pDlyLine, pBuffer);
}
Status tevsIIRInit32fc_BiQuad_16sc(IIRState32fc_16sc** ppState, const Complex32f* pTaps, int numBq, const Complex32f* pDlyLine, uint8_t* pBuffer) {
    return init<Iir32fc_16sc>(kBiQuad, ppState, pTaps, numBq, pDlyLine, pBuffer);
}
Status tevsIIRInit32s_BiQuad_16s(IIRState32s_16s** ppState, const int32_t* pTaps, int numBq, int tapsFactor, const float* pDlyLine, uint8_t* pBuffer) {
    return init<Iir32s_16s>(kBiQuad, ppState, pTaps, numBq, pDlyLine, pBuffer, tapsFactor);
}
Status tevsIIRInit32s_BiQuad_16s32f(IIRState32s_16s32f** ppState, const float* pTaps, int numBq, const float* pDlyLine, uint8_t* pBuffer) {
    return init<Iir32s_16s32f>(kBiQuad, ppState, pTaps, numBq, pDlyLine, pBuffer);
}
Status tevsIIRInit32sc_BiQuad_16sc(IIRState32sc_16sc** ppState, const Complex32s* pTaps, int numBq, int tapsFactor, const Complex32f* pDlyLine,
                                   uint8_t* pBuffer) {
    return init<Iir32sc_16sc>(kBiQuad, ppState, pTaps, numBq, pDlyLine, pBuffer, tapsFactor);
}
Status tevsIIRInit32sc_BiQuad_16sc32fc(IIRState32sc_16sc32fc** ppState, const Complex32f* pTaps, int numBq, const Complex32f* pDlyLine, uint8_t* pBuffer) {
    return init<Iir32sc_16sc32fc>(kBiQuad, ppState, pTaps, numBq, pDlyLine, pBuffer);
}
Status tevsIIRInit_BiQuad_64f(IIRState_64f** ppState, const double* pTaps, int numBq, const double* pDlyLine, uint8_t* pBuffer) {
    return init<Iir_64f>(kBiQuad, ppState, pTaps, numBq, pDlyLine, pBuffer);
}
Status tevsIIRInit_BiQuad_64fc(IIRState_64fc** ppState, const Complex64f* pTaps, int numBq, const Complex64f* pDlyLine, uint8_t* pBuffer) {
    return init<Iir_64fc>(kBiQuad, ppState, pTaps, numBq, pDlyLine, pBuffer);
}
Status tevsIIRInit64f_BiQuad_32f(IIRState64f_32f** ppState, const double* pTaps, int numBq, const double* pDlyLine, uint8_t* pBuffer) {
    return init<Iir64f_32f>(kBiQuad, ppState, pTaps, numBq, pDlyLine, pBuffer);
}
Status tevsIIRInit64fc_BiQuad_32fc(IIRState64fc_32fc** ppState, const Complex64f* pTaps, int numBq, const Complex64f* pDlyLine, uint8_t* pBuffer) {
    return init<Iir64fc_32fc>(kBiQuad, ppState, pTaps, numBq, pDlyLine, pBuffer);
}
Status tevsIIRInit64f_BiQuad_32s(IIRState64f_32s** ppState, const double* pTaps, int numBq, const double* pDlyLine, uint8_t* pBuffer) {
    return init<Iir64f_32s>(kBiQuad, ppState, pTaps, numBq, pDlyLine, pBuffer);
}
Status tevsIIRInit64fc_BiQuad_32sc(IIRState64fc_32sc** ppState, const Complex64f* pTaps, int numBq, const Complex64f* pDlyLine, uint8_t* pBuffer) {
    return init<Iir64fc_32sc>(kBiQuad, ppState, pTaps, numBq, pDlyLine, pBuffer);
}
Status tevsIIRInit64f_BiQuad_16s(IIRState64f_16s** ppState, const double* pTaps, int numBq, const double* pDlyLine, uint8_t* pBuffer) {
    return init<Iir64f_16s>(kBiQuad, ppState, pTaps, numBq, pDlyLine, pBuffer);
}
Status tevsIIRInit64fc_BiQuad_16sc(IIRState64fc_16sc** ppState, const Complex64f* pTaps, int numBq, const Complex64f* pDlyLine, uint8_t* pBuffer) {
    return init<Iir64fc_16sc>(kBiQuad, ppState, pTaps, numBq, pDlyLine, pBuffer);
}

Status tevsIIRInitAlloc_32f(IIRState_32f** ppState, const float* pTaps, int order, const float* pDlyLine) {
    return initAlloc<Iir_32f>(kArbitrary, ppState, pTaps, order, pDlyLine);
}
Status tevsIIRInitAlloc_32fc(IIRState_32fc** ppState, const Complex32f* pTaps, int order, const Complex32f* pDlyLine) {
    return initAlloc<Iir_32fc>(kArbitrary, ppState, pTaps, order, pDlyLine);
}
Status tevsIIRInitAlloc32f_16s(IIRState32f_16s** ppState, const float* pTaps, int order, const float* pDlyLine) {
    return initAlloc<Iir32f_16s>(kArbitrary, ppState, pTaps, order, pDlyLine);
}
Status tevsIIRInitAlloc32fc_16sc(IIRState32fc_16sc** ppState, const Complex32f* pTaps, int order, const Complex32f* pDlyLine) {
    return initAlloc<Iir32fc_16sc>(kArbitrary, ppState, pTaps, order, pDlyLine);
}
Status tevsIIRInitAlloc32s_16s(IIRState32s_16s** ppState, const int32_t* pTaps, int order, int tapsFactor, const float* pDlyLine) {
    return initAlloc<Iir32s_16s>(kArbitrary, ppState, pTaps, order, pDlyLine, tapsFactor);
}
Status tevsIIRInitAlloc32s_16s32f(IIRState32s_16s32f** ppState, const float* pTaps, int order, const float* pDlyLine) {
    return initAlloc<Iir32s_16s32f>(kArbitrary, ppState, pTaps, order, pDlyLine);
}
Status tevsIIRInitAlloc32sc_16sc(IIRState32sc_16sc** ppState, const Complex32s* pTaps, int order, int tapsFactor, const Complex32f* pDlyLine) {
    return initAlloc<Iir32sc_16sc>(kArbitrary, ppState, pTaps, order, pDlyLine, tapsFactor);
}
Status tevsIIRInitAlloc32sc_16sc32fc(IIRState32sc_16sc32fc** ppState, const Complex32f* pTaps, int order, const Complex32f* pDlyLine) {
    return initAlloc<Iir32sc_16sc32fc>(kArbitrary, ppState, pTaps, order, pDlyLine);
}
Status tevsIIRInitAlloc_64f(IIRState_64f** ppState, const double* pTaps, int order, const double* pDlyLine) {
    return initAlloc<Iir_64f>(kArbitrary, ppState, pTaps, order, pDlyLine);
}
Status tevsIIRInitAlloc_64fc(IIRState_64fc** ppState, const Complex64f* pTaps, int order, const Complex64f* pDlyLine) {
    return initAlloc<Iir_64fc>(kArbitrary, ppState, pTaps, order, pDlyLine);
}
Status tevsIIRInitAlloc64f_32f(IIRState64f_32f** ppState, const double* pTaps, int order, const double* pDlyLine) {
    return initAlloc<Iir64f_32f>(kArbitrary, ppState, pTaps, order, pDlyLine);
}
Status tevsIIRInitAlloc64fc_32fc(IIRState64fc_32fc** ppState, const Complex64f* pTaps, int order, const Complex64f* pDlyLine) {
    return initAlloc<Iir64fc_32fc>(kArbitrary, ppState, pTaps, order, pDlyLine);
}
Status tevsIIRInitAlloc64f_32s(IIRState64f_32s** ppState, const double* pTaps, int order, const double* pDlyLine) {
    return initAlloc<Iir64f_32s>(kArbitrary, ppState, pTaps, order, pDlyLine);
}
Status tevsIIRInitAlloc64fc_32sc(IIRState64fc_32sc** ppState, const Complex64f* pTaps, int order, const Complex64f* pDlyLine) {
    return initAlloc<Iir64fc_32sc>(kArbitrary, ppState, pTaps, order, pDlyLine);
}
Status tevsIIRInitAlloc64f_16s(IIRState64f_16s** ppState, const double* pTaps, int order, const double* pDlyLine) {
    return initAlloc<Iir64f_16s>(kArbitrary, ppState, pTaps, order, pDlyLine);
}
Status tevsIIRInitAlloc64fc_16sc(IIRState64fc_16sc** ppState, const Complex64f* pTaps, int order, const Complex64f* pDlyLine) {
    return initAlloc<Iir64fc_16sc>(kArbitrary, ppState, pTaps, order, pDlyLine);
}
Status tevsIIRInitAlloc_BiQuad_32f(IIRState_32f** ppState, const float* pTaps, int numBq, const float* pDlyLine) {
    return initAlloc<Iir_32f>(kBiQuad, ppState, pTaps, numBq, pDlyLine);
}
Status tevsIIRInitAlloc_BiQuad_32fc(IIRState_32fc** ppState, const Complex32f* pTaps, int numBq, const Complex32f* pDlyLine) {
    return initAlloc<Iir_32fc>(kBiQuad, ppState, pTaps, numBq, pDlyLine);
}
Status tevsIIRInitAlloc32f_BiQuad_16s(IIRState32f_16s** ppState, const float* pTaps, int numBq, const float* pDlyLine) {
    return initAlloc<Iir32f_16s>(kBiQuad, ppState, pTaps, numBq, pDlyLine);
}
Status tevsIIRInitAlloc32fc_BiQuad_16sc(IIRState32fc_16sc** ppState, const Complex32f* pTaps, int numBq, const Complex32f* pDlyLine) {
    return initAlloc<Iir32fc_16sc>(kBiQuad, ppState, pTaps, numBq, pDlyLine);
}
Status tevsIIRInitAlloc32s_BiQuad_16s(IIRState32s_16s** ppState, const int32_t* pTaps, int numBq, int tapsFactor, const float* pDlyLine) {
    return initAlloc<Iir32s_16s>(kBiQuad, ppState, pTaps, numBq, pDlyLine, tapsFactor);
}
Status tevsIIRInitAlloc32s_BiQuad_16s32f(IIRState32s_16s32f** ppState, const float* pTaps, int numBq, const float* pDlyLine) {
    return initAlloc<Iir32s_16s32f>(kBiQuad, ppState, pTaps, numBq, pDlyLine);
}
Status tevsIIRInitAlloc32sc_BiQuad_16sc(IIRState32sc_16sc** ppState, const Complex32s* pTaps, int numBq, int tapsFactor, const Complex32f* pDlyLine) {
    return initAlloc<Iir32sc_16sc>(kBiQuad, ppState, pTaps, numBq, pDlyLine, tapsFactor);
}
Status tevsIIRInitAlloc32sc_BiQuad_16sc32fc(IIRState32sc_16sc32fc** ppState, const Complex32f* pTaps, int numBq, const Complex32f* pDlyLine) {
    return initAlloc<Iir32sc_16sc32fc>(kBiQuad, ppState, pTaps, numBq, pDlyLine);
}
Status tevsIIRInitAlloc_BiQuad_64f(IIRState_64f** ppState, const double* pTaps, int numBq, const double* pDlyLine) {
    return initAlloc<Iir_64f>(kBiQuad, ppState, pTaps, numBq, pDlyLine);
}
Status tevsIIRInitAlloc_BiQuad_64fc(IIRState_64fc** ppState, const Complex64f* pTaps, int numBq, const Complex64f* pDlyLine) {
    return initAlloc<Iir_64fc>(kBiQuad, ppState, pTaps, numBq, pDlyLine);
}
Status tevsIIRInitAlloc64f_BiQuad_32f(IIRState64f_32f** ppState, const double* pTaps, int numBq, const double* pDlyLine) {
    return initAlloc<Iir64f_32f>(kBiQuad, ppState, pTaps, numBq, pDlyLine);
}
Status tevsIIRInitAlloc64fc_BiQuad_32fc(IIRState64fc_32fc** ppState, const Complex64f* pTaps, int numBq, const Complex64f* pDlyLine) {
    return initAlloc<Iir64fc_32fc>(kBiQuad, ppState, pTaps, numBq, pDlyLine);
}
Status tevsIIRInitAlloc64f_BiQuad_32s(IIRState64f_32s** ppState, const double* pTaps, int numBq, const double* pDlyLine) {
    return initAlloc<Iir64f_32s>(kBiQuad, ppState, pTaps, numBq, pDlyLine);
}
Status tevsIIRInitAlloc64fc_BiQuad_32sc(IIRState64fc_32sc** ppState, const Complex64f* pTaps, int numBq, const Complex64f* pDlyLine) {
    return initAlloc<Iir64fc_32sc>(kBiQuad, ppState, pTaps, numBq, pDlyLine);
}
Status tevsIIRInitAlloc64f_BiQuad_16s(IIRState64f_16s** ppState, const double* pTaps, int numBq, const double* pDlyLine) {
    return initAlloc<Iir64f_16s>(kBiQuad, ppState, pTaps, numBq, pDlyLine);
}
Status tevsIIRInitAlloc64fc_BiQuad_16sc(IIRState64fc_16sc** ppState, const Complex64f* pTaps, int numBq, const Complex64f* pDlyLine) {
    return initAlloc<Iir64fc_16sc>(kBiQuad, ppState, pTaps, numBq, pDlyLine);
}

Status tevsIIRFree_32f(IIRState_32f* pState) { return free<Iir_32f>(pState); }
Status tevsIIRFree_32fc(IIRState_32fc* pState) { return free<Iir_32fc>(pState); }
Status tevsIIRFree32f_16s(IIRState32f_16s* pState) { return free<Iir32f_16s>(pState); }
Status tevsIIRFree32fc_16sc(IIRState32fc_16sc* pState) { return free<Iir32fc_16sc>(pState); }
Status tevsIIRFree32s_16s(IIRState32s_16s* pState) { return free<Iir32s_16s>(pState); }
Status tevsIIRFree32s_16s32f(IIRState32s_16s32f* pState) { return free<Iir32s_16s32f>(pState); }
Status tevsIIRFree32sc_16sc(IIRState32sc_16sc* pState) { return free<Iir32sc_16sc>(pState); }
Status tevsIIRFree32sc_16sc32fc(IIRState32sc_16sc32fc* pState) { return free<Iir32sc_16sc32fc>(pState); }
Status tevsIIRFree_64f(IIRState_64f* pState) { return free<Iir_64f>(pState); }
Status tevsIIRFree_64fc(IIRState_64fc* pState) { return free<Iir_64fc>(pState); }
Status tevsIIRFree64f_32f(IIRState64f_32f* pState) { return free<Iir64f_32f>(pState); }
Status tevsIIRFree64fc_32fc(IIRState64fc_32fc* pState) { return free<Iir64fc_32fc>(pState); }
Status tevsIIRFree64f_32s(IIRState64f_32s* pState) { return free<Iir64f_32s>(pState); }
Status tevsIIRFree64fc_32sc(IIRState64fc_32sc* pState) { return free<Iir64fc_32sc>(pState); }
Status tevsIIRFree64f_16s(IIRState64f_16s* pState) { return free<Iir64f_16s>(pState); }
Status tevsIIRFree64fc_16sc(IIRState64fc_16sc* pState) { return free<Iir64fc_16sc>(pState); }

Status tevsIIRSetTaps_32f(const float* pTaps, IIRState_32f* pState) { return setTaps<Iir_32f>(pTaps, pState); }
Status tevsIIRSetTaps_32fc(const Complex32f* pTaps, IIRState_32fc* pState) { return setTaps<Iir_32fc>(pTaps, pState); }
Status tevsIIRSetTaps32f_16s(const float* pTaps, IIRState32f_16s* pState) { return setTaps<Iir32f_16s>(pTaps, pState); }
Status tevsIIRSetTaps32fc_16sc(const Complex32f* pTaps, IIRState32fc_16sc* pState) { return setTaps<Iir32fc_16sc>(pTaps, pState); }
Status tevsIIRSetTaps32s_16s(const int32_t* pTaps, IIRState32s_16s* pState, int tapsFactor) { return setTaps<Iir32s_16s>(pTaps, pState, tapsFactor); }
Status tevsIIRSetTaps32s_16s32f(const float* pTaps, IIRState32s_16s32f* pState) { return setTaps<Iir32s_16s32f>(pTaps, pState); }
Status tevsIIRSetTaps32sc_16sc(const Complex32s* pTaps, IIRState32sc_16sc* pState, int tapsFactor) { return setTaps<Iir32sc_16sc>(pTaps, pState, tapsFactor); }
Status tevsIIRSetTaps32sc_16sc32fc(const Complex32f* pTaps, IIRState32sc_16sc32fc* pState) { return setTaps<Iir32sc_16sc32fc>(pTaps, pState); }
Status tevsIIRSetTaps_64f(const double* pTaps, IIRState_64f* pState) { return setTaps<Iir_64f>(pTaps, pState); }
Status tevsIIRSetTaps_64fc(const Complex64f* pTaps, IIRState_64fc* pState) { return setTaps<Iir_64fc>(pTaps, pState); }
Status tevsIIRSetTaps64f_32f(const double* pTaps, IIRState64f_32f* pState) { return setTaps<Iir64f_32f>(pTaps, pState); }
Status tevsIIRSetTaps64fc_32fc(const Complex64f* pTaps, IIRState64fc_32fc* pState) { return setTaps<Iir64fc_32fc>(pTaps, pState); }
Status tevsIIRSetTaps64f_32s(const double* pTaps, IIRState64f_32s* pState) { return setTaps<Iir64f_32s>(pTaps, pState); }
Status tevsIIRSetTaps64fc_32sc(const Complex64f* pTaps, IIRState64fc_32sc* pState) { return setTaps<Iir64fc_32sc>(pTaps, pState); }
Status tevsIIRSetTaps64f_16s(const double* pTaps, IIRState64f_16s* pState) { return setTaps<Iir64f_16s>(pTaps, pState); }
Status tevsIIRSetTaps64fc_16sc(const Complex64f* pTaps, IIRState64fc_16sc* pState) { return setTaps<Iir64fc_16sc>(pTaps, pState); }

Status tevsIIRSetDlyLine_32f(IIRState_32f* pState, const float* pDlyLine) { return setDlyLine<Iir_32f>(pState, pDlyLine); }
Status tevsIIRSetDlyLine_32fc(IIRState_32fc* pState, const Complex32f* pDlyLine) { return setDlyLine<Iir_32fc>(pState, pDlyLine); }
Status tevsIIRSetDlyLine32f_16s(IIRState32f_16s* pState, const float* pDlyLine) { return setDlyLine<Iir32f_16s>(pState, pDlyLine); }
Status tevsIIRSetDlyLine32fc_16sc(IIRState32fc_16sc* pState, const Complex32f* pDlyLine) { return setDlyLine<Iir32fc_16sc>(pState, pDlyLine); }
Status tevsIIRSetDlyLine32s_16s(IIRState32s_16s* pState, const float* pDlyLine) { return setDlyLine<Iir32s_16s>(pState, pDlyLine); }
Status tevsIIRSetDlyLine32sc_16sc(IIRState32sc_16sc* pState, const Complex32f* pDlyLine) { return setDlyLine<Iir32sc_16sc>(pState, pDlyLine); }
Status tevsIIRSetDlyLine_64f(IIRState_64f* pState, const double* pDlyLine) { return setDlyLine<Iir_64f>(pState, pDlyLine); }
Status tevsIIRSetDlyLine_64fc(IIRState_64fc* pState, const Complex64f* pDlyLine) { return setDlyLine<Iir_64fc>(pState, pDlyLine); }
Status tevsIIRSetDlyLine64f_32f(IIRState64f_32f* pState, const double* pDlyLine) { return setDlyLine<Iir64f_32f>(pState, pDlyLine); }
Status tevsIIRSetDlyLine64fc_32fc(IIRState64fc_32fc* pState, const Complex64f* pDlyLine) { return setDlyLine<Iir64fc_32fc>(pState, pDlyLine); }
Status tevsIIRSetDlyLine64f_32s(IIRState64f_32s* pState, const double* pDlyLine) { return setDlyLine<Iir64f_32s>(pState, pDlyLine); }
Status tevsIIRSetDlyLine64fc_32sc(IIRState64fc_32sc* pState, const Complex64f* pDlyLine) { return setDlyLine<Iir64fc_32sc>(pState, pDlyLine); }
Status tevsIIRSetDlyLine64f_16s(IIRState64f_16s* pState, const double* pDlyLine) { return setDlyLine<Iir64f_16s>(pState, pDlyLine); }
Status tevsIIRSetDlyLine64fc_16sc(IIRState64fc_16sc* pState, const Complex64f* pDlyLine) { return setDlyLine<Iir64fc_16sc>(pState, pDlyLine); }

Status tevsIIRGetDlyLine_32f(const IIRState_32f* pState, float* pDlyLine) { return getDlyLine<Iir_32f>(pState, pDlyLine); }
Status tevsIIRGetDlyLine_32fc(const IIRState_32fc* pState, Complex32f* pDlyLine) { return getDlyLine<Iir_32fc>(pState, pDlyLine); }
Status tevsIIRGetDlyLine32f_16s(const IIRState32f_16s* pState, float* pDlyLine) { return getDlyLine<Iir32f_16s>(pState, pDlyLine); }
Status tevsIIRGetDlyLine32fc_16sc(const IIRState32fc_16sc* pState, Complex32f* pDlyLine) { return getDlyLine<Iir32fc_16sc>(pState, pDlyLine); }
Status tevsIIRGetDlyLine32s_16s(const IIRState32s_16s* pState, float* pDlyLine) { return getDlyLine<Iir32s_16s>(pState, pDlyLine); }
Status tevsIIRGetDlyLine32sc_16sc(const IIRState32sc_16sc* pState, Complex32f* pDlyLine) { return getDlyLine<Iir32sc_16sc>(pState, pDlyLine); }
Status tevsIIRGetDlyLine_64f(const IIRState_64f* pState, double* pDlyLine) { return getDlyLine<Iir_64f>(pState, pDlyLine); }
Status tevsIIRGetDlyLine_64fc(const IIRState_64fc* pState, Complex64f* pDlyLine) { return getDlyLine<Iir_64fc>(pState, pDlyLine); }
Status tevsIIRGetDlyLine64f_32f(const IIRState64f_32f* pState, double* pDlyLine) { return getDlyLine<Iir64f_32f>(pState, pDlyLine); }
Status tevsIIRGetDlyLine64fc_32fc(const IIRState64fc_32fc* pState, Complex64f* pDlyLine) { return getDlyLine<Iir64fc_32fc>(pState, pDlyLine); }
Status tevsIIRGetDlyLine64f_32s(const IIRState64f_32s* pState, double* pDlyLine) { return getDlyLine<Iir64f_32s>(pState, pDlyLine); }
Status tevsIIRGetDlyLine64fc_32sc(const IIRState64fc_32sc* pState, Complex64f* pDlyLine) { return getDlyLine<Iir64fc_32sc>(pState, pDlyLine); }
Status tevsIIRGetDlyLine64f_16s(const IIRState64f_16s* pState, double* pDlyLine) { return getDlyLine<Iir64f_16s>(pState, pDlyLine); }
Status tevsIIRGetDlyLine64fc_16sc(const IIRState64fc_16sc* pState, Complex64f* pDlyLine) { return getDlyLine<Iir64fc_16sc>(pState, pDlyLine); }

Status tevsIIR_32f(const float* pSrc, float* pDst, int len, IIRState_32f* pState) { return filter<Iir_32f>(pSrc, pDst, len, pState); }
Status tevsIIR_32f_I(float* pSrcDst, int len, IIRState_32f* pState) { return filter<Iir_32f>(pSrcDst, pSrcDst, len, pState); }
Status tevsIIR_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, IIRState_32fc* pState) { return filter<Iir_32fc>(pSrc, pDst, len, pState); }
Status tevsIIR_32fc_I(Complex32f* pSrcDst, int len, IIRState_32fc* pState) { return filter<Iir_32fc>(pSrcDst, pSrcDst, len, pState); }
Status tevsIIR32f_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int len, IIRState32f_16s* pState, int scaleFactor) {
    return filter<Iir32f_16s>(pSrc, pDst, len, pState, scaleFactor);
}
Status tevsIIR32f_16s_ISfs(int16_t* pSrcDst, int len, IIRState32f_16s* pState, int scaleFactor) {
    return filter<Iir32f_16s>(pSrcDst, pSrcDst, len, pState, scaleFactor);
}
Status tevsIIR32fc_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int len, IIRState32fc_16sc* pState, int scaleFactor) {
    return filter<Iir32fc_16sc>(pSrc, pDst, len, pState, scaleFactor);
}
Status tevsIIR32fc_16sc_ISfs(Complex16s* pSrcDst, int len, IIRState32fc_16sc* pState, int scaleFactor) {
    return filter<Iir32fc_16sc>(pSrcDst, pSrcDst, len, pState, scaleFactor);
}
Status tevsIIR32s_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int len, IIRState32s_16s* pState, int scaleFactor) {
    return filter<Iir32s_16s>(pSrc, pDst, len, pState, scaleFactor);
}
Status tevsIIR32s_16s_ISfs(int16_t* pSrcDst, int len, IIRState32s_16s* pState, int scaleFactor) {
    return filter<Iir32s_16s>(pSrcDst, pSrcDst, len, pState, scaleFactor);
}
Status tevsIIR32sc_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int len, IIRState32sc_16sc* pState, int scaleFactor) {
    return filter<Iir32sc_16sc>(pSrc, pDst, len, pState, scaleFactor);
}
Status tevsIIR32sc_16sc_ISfs(Complex16s* pSrcDst, int len, IIRState32sc_16sc* pState, int scaleFactor) {
    return filter<Iir32sc_16sc>(pSrcDst, pSrcDst, len, pState, scaleFactor);
}
Status tevsIIR_64f(const double* pSrc, double* pDst, int len, IIRState_64f* pState) { return filter<Iir_64f>(pSrc, pDst, len, pState); }
Status tevsIIR_64f_I(double* pSrcDst, int len, IIRState_64f* pState) { return filter<Iir_64f>(pSrcDst, pSrcDst, len, pState); }
Status tevsIIR_64fc(const Complex64f* pSrc, Complex64f* pDst, int len, IIRState_64fc* pState) { return filter<Iir_64fc>(pSrc, pDst, len, pState); }
Status tevsIIR_64fc_I(Complex64f* pSrcDst, int len, IIRState_64fc* pState) { return filter<Iir_64fc>(pSrcDst, pSrcDst, len, pState); }
Status tevsIIR64f_32f(const float* pSrc, float* pDst, int len, IIRState64f_32f* pState) { return filter<Iir64f_32f>(pSrc, pDst, len, pState); }
Status tevsIIR64f_32f_I(float* pSrcDst, int len, IIRState64f_32f* pState) { return filter<Iir64f_32f>(pSrcDst, pSrcDst, len, pState); }
Status tevsIIR64fc_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, IIRState64fc_32fc* pState) { return filter<Iir64fc_32fc>(pSrc, pDst, len, pState); }
Status tevsIIR64fc_32fc_I(Complex32f* pSrcDst, int len, IIRState64fc_32fc* pState) { return filter<Iir64fc_32fc>(pSrcDst, pSrcDst, len, pState); }
Status tevsIIR64f_32s_Sfs(const int32_t* pSrc, int32_t* pDst, int len, IIRState64f_32s* pState, int scaleFactor) {
    return filter<Iir64f_32s>(pSrc, pDst, len, pState, scaleFactor);
}
Status tevsIIR64f_32s_ISfs(int32_t* pSrcDst, int len, IIRState64f_32s* pState, int scaleFactor) {
    return filter<Iir64f_32s>(pSrcDst, pSrcDst, len, pState, scaleFactor);
}
Status tevsIIR64fc_32sc_Sfs(const Complex32s* pSrc, Complex32s* pDst, int len, IIRState64fc_32sc* pState, int scaleFactor) {
    return filter<Iir64fc_32sc>(pSrc, pDst, len, pState, scaleFactor);
}
Status tevsIIR64fc_32sc_ISfs(Complex32s* pSrcDst, int len, IIRState64fc_32sc* pState, int scaleFactor) {
    return filter<Iir64fc_32sc>(pSrcDst, pSrcDst, len, pState, scaleFactor);
}
Status tevsIIR64f_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int len, IIRState64f_16s* pState, int scaleFactor) {
    return filter<Iir64f_16s>(pSrc, pDst, len, pState, scaleFactor);
}
Status tevsIIR64f_16s_ISfs(int16_t* pSrcDst, int len, IIRState64f_16s* pState, int scaleFactor) {
    return filter<Iir64f_16s>(pSrcDst, pSrcDst, len, pState, scaleFactor);
}
Status tevsIIR64fc_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int len, IIRState64fc_16sc* pState, int scaleFactor) {
    return filter<Iir64fc_16sc>(pSrc, pDst, len, pState, scaleFactor);
}
Status tevsIIR64fc_16sc_ISfs(Complex16s* pSrcDst, int len, IIRState64fc_16sc* pState, int scaleFactor) {
    return filter<Iir64fc_16sc>(pSrcDst, pSrcDst, len, pState, scaleFactor);
}

Status tevsIIROne_32f(float src, float* pDst, IIRState_32f* pState) { return filterOne<Iir_32f>(src, pDst, pState); }
Status tevsIIROne_32fc(Complex32f src, Complex32f* pDst, IIRState_32fc* pState) { return filterOne<Iir_32fc>(src, pDst, pState); }
Status tevsIIROne32f_16s_Sfs(int16_t src, int16_t* pDst, IIRState32f_16s* pState, int scaleFactor) {
    return filterOne<Iir32f_16s>(src, pDst, pState, scaleFactor);
}
Status tevsIIROne32fc_16sc_Sfs(Complex16s src, Complex16s* pDst, IIRState32fc_16sc* pState, int scaleFactor) {
    return filterOne<Iir32fc_16sc>(src, pDst, pState, scaleFactor);
}
Status tevsIIROne32s_16s_Sfs(int16_t src, int16_t* pDst, IIRState32s_16s* pState, int scaleFactor) {
    return filterOne<Iir32s_16s>(src, pDst, pState, scaleFactor);
}
Status tevsIIROne32sc_16sc_Sfs(Complex16s src, Complex16s* pDst, IIRState32sc_16sc* pState, int scaleFactor) {
    return filterOne<Iir32sc_16sc>(src, pDst, pState, scaleFactor);
}
Status tevsIIROne_64f(double src, double* pDst, IIRState_64f* pState) { return filterOne<Iir_64f>(src, pDst, pState); }
Status tevsIIROne_64fc(Complex64f src, Complex64f* pDst, IIRState_64fc* pState) { return filterOne<Iir_64fc>(src, pDst, pState); }
Status tevsIIROne64f_32f(float src, float* pDst, IIRState64f_32f* pState) { return filterOne<Iir64f_32f>(src, pDst, pState); }
Status tevsIIROne64fc_32fc(Complex32f src, Complex32f* pDst, IIRState64fc_32fc* pState) { return filterOne<Iir64fc_32fc>(src, pDst, pState); }
Status tevsIIROne64f_32s_Sfs(int32_t src, int32_t* pDst, IIRState64f_32s* pState, int scaleFactor) {
    return filterOne<Iir64f_32s>(src, pDst, pState, scaleFactor);
}
Status tevsIIROne64fc_32sc_Sfs(Complex32s src, Complex32s* pDst, IIRState64fc_32sc* pState, int scaleFactor) {
    return filterOne<Iir64fc_32sc>(src, pDst, pState, scaleFactor);
}
Status tevsIIROne64f_16s_Sfs(int16_t src, int16_t* pDst, IIRState64f_16s* pState, int scaleFactor) {
    return filterOne<Iir64f_16s>(src, pDst, pState, scaleFactor);
}
Status tevsIIROne64fc_16sc_Sfs(Complex16s src, Complex16s* pDst, IIRState64fc_16sc* pState, int scaleFactor) {
    return filterOne<Iir64fc_16sc>(src, pDst, pState, scaleFactor);
}
