// The median filter: networks for windows of 3 to 9, tiles of neighbouring outputs above, and running medians over ordered values where a tile would be too large.
#include "tevs/median.h"

#include <limits.h>
#include <string.h>

#include <algorithm>
#include <type_traits>
#include <utility>

#include "core/args.h"
#include "core/memory.h"
#include "filter/median.table.h"
#include "vector/movement.h"

namespace tevs {
namespace {

// ---- elements as what has an order --------------------------------------------------------------------------------------------------------------

template <class T> auto& kernelOf() {
    if constexpr (std::is_same_v<T, uint8_t>) return median->of8u;
    if constexpr (std::is_same_v<T, int16_t>) return median->of16s;
    if constexpr (std::is_same_v<T, int32_t>) return median->of32s;
    if constexpr (std::is_same_v<T, int64_t>) return median->of64s;
    if constexpr (std::is_same_v<T, float>) return median->of32f;
    if constexpr (std::is_same_v<T, double>) return median->of64f;
}

template <class T> auto& endsOf() {
    if constexpr (std::is_same_v<T, uint8_t>) return median->ends8u;
    if constexpr (std::is_same_v<T, int16_t>) return median->ends16s;
    if constexpr (std::is_same_v<T, int32_t>) return median->ends32s;
    if constexpr (std::is_same_v<T, float>) return median->ends32f;
    if constexpr (std::is_same_v<T, double>) return median->ends64f;
}

template <class T> constexpr bool kFloat = std::is_floating_point_v<T>;
template <class T> using Key = std::conditional_t<!kFloat<T>, T, std::conditional_t<sizeof(T) == 4, int32_t, int64_t>>;

bool plain(const float* p, ptrdiff_t n) { return median->plain32f(p, n); }
bool plain(const double* p, ptrdiff_t n) { return median->plain64f(p, n); }
void toKeys(const float* from, int32_t* to, ptrdiff_t n) { median->toKeys32f(from, to, n); }
void toKeys(const double* from, int64_t* to, ptrdiff_t n) { median->toKeys64f(from, to, n); }
void fromKeys(const int32_t* from, float* to, ptrdiff_t n) { median->fromKeys32f(from, to, n); }
void fromKeys(const int64_t* from, double* to, ptrdiff_t n) { median->fromKeys64f(from, to, n); }

// ---- windows of 3 to 9 --------------------------------------------------------------------------------------------------------------------------

constexpr int kPiece = 2048;   // floats that are looked at, and then filtered as numbers or as keys
constexpr int kLeast = 16;     // elements of a vector that is worked on as it is; what is more than pieces is part of the last

template <class T> [[gnu::noinline]] void byKeys(const T* src, T* dst, int n, int w) {
    Key<T> keys[kPiece + kLeast + 2 * kMostHalf];
    toKeys(src - w, keys, n + 2 * w);
    kernelOf<Key<T>>().network[w - 1](keys + w, keys + w, n);
    fromKeys(keys + w, dst, n);
}

// n >= kLeast outputs, of floats below kPiece + kLeast, from src[-w] .. src[n+w-1].
template <class T> void medians(const T* src, T* dst, int n, int w) {
    if constexpr (kFloat<T>)
        if (!plain(src - w, n + 2 * w)) return byKeys(src, dst, n, w);
    kernelOf<T>().network[w - 1](src, dst, n);
}

// All of it in pieces. What one of them takes from where the one before has its last outputs is put back there until it is done, since src may be dst.
template <class T> void mediansInPieces(const T* src, T* dst, int n, int w) {
    T outputs[kMostHalf], inputs[kMostHalf];
    for (int at = 0, m; at < n; at += m) {
        m = n - at < kPiece + kLeast ? n - at : kPiece;
        memcpy(inputs, src + at + m - w, size_t(w) * sizeof(T));
        medians(src + at, dst + at, m, w);
        if (at > 0) memcpy(dst + at - w, outputs, size_t(w) * sizeof(T));
        if (at + m == n) return;
        memcpy(outputs, dst + at + m - w, size_t(w) * sizeof(T));
        memcpy(dst + at + m - w, inputs, size_t(w) * sizeof(T));
    }
}

template <class T> void byNetwork(const T* src, T* dst, int len, int w) {
    if (len < kLeast + 2 * w) {   // as part of a longer vector
        constexpr int kMost = kLeast + 2 * kMostHalf;
        T in[kMost + 2 * kMostHalf], out[kMost];
        std::fill_n(in, w, src[0]);
        memcpy(in + w, src, size_t(len) * sizeof(T));
        std::fill(in + w + len, in + kMost + 2 * w, src[len - 1]);
        medians(in + w, out, kMost, w);
        memcpy(dst, out, size_t(len) * sizeof(T));
        return;
    }
    T head[kMostHalf], tail[kMostHalf];
    endsOf<T>()[w - 1](src, len, head, tail);
    if constexpr (kFloat<T>)
        mediansInPieces(src + w, dst + w, len - 2 * w, w);
    else
        medians(src + w, dst + w, len - 2 * w, w);
    for (int i = 0; i < w; ++i) dst[i] = head[i], dst[len - w + i] = tail[i];
}

// ---- larger windows -----------------------------------------------------------------------------------------------------------------------------

// Calls piece(z, m, out) for every m <= most outputs in turn, z the m + 2w inputs that they take: they are no longer needed in src then, which may be dst.
// z has `room`, all of it filled: copies of the last input stand behind those that there are.
template <class T, class Piece> void forEachPiece(const T* src, T* dst, int len, int w, T* z, int64_t room, int64_t most, Piece piece) {
    const ptrdiff_t reach = 2 * ptrdiff_t{w};
    std::fill_n(z, w, src[0]);
    memcpy(z + w, src, size_t(w) * sizeof(T));
    for (ptrdiff_t n = 0; n < len; n += ptrdiff_t(most)) {
        const ptrdiff_t m = std::min<ptrdiff_t>(ptrdiff_t(most), len - n);
        const ptrdiff_t fresh = std::clamp<ptrdiff_t>(len - w - n, 0, ptrdiff_t(most));
        memcpy(z + reach, src + n + w, size_t(fresh) * sizeof(T));
        std::fill(z + reach + fresh, z + room, src[len - 1]);
        piece(z, m, dst + n);
        memmove(z, z + most, size_t(reach) * sizeof(T));
    }
}

// call(area) with an Area that is built over memory of its own, for as long as that takes. Over no block its constructor only adds up.
template <class Area, class Call, class... A> Status withArea(Call call, A... a) {
    Carve none;
    Area(none, a...);
    const Scratch block(allocate(none.size()));
    if (!block) return StatusNoMemory;
    Carve c(block.get());
    Area area(c, a...);
    call(area);
    return StatusOk;
}

// ---- by tiles -----------------------------------------------------------------------------------------------------------------------------------

constexpr int kMostTile = 512;   // outputs; from 2 kMostTile - 1 on a window's half is for running medians

template <class T> struct TileArea {
    int w, log2, tiles;   // at a time
    ptrdiff_t stride;
    void* rows;
    int32_t* offset;
    T *z, *streams, *out;

    TileArea(Carve& c, int half, int len) : w(half), log2(31 - __builtin_clz(unsigned(half) + 1)) {
        const int all = int((int64_t{len} + size() - 1) >> log2), some = std::max(2 * kTileLanes, 4096 >> log2);
        tiles = (std::min(all, some) + kTileLanes - 1) / kTileLanes * kTileLanes;
        stride = tiles + (sizeof(T) == 1 ? 16 : 8);   // a window's inputs reach into four tiles more, and streams are made of 16 bytes at least
        rows = c.template take<unsigned char>(uint64_t(kRowsPerOutput * kRowBytes) << log2);
        offset = c.template take<int32_t>(uint64_t(size() + 2 * w));
        z = c.template take<T>(uint64_t(stride) << log2);
        streams = c.template take<T>(uint64_t(stride) << log2);
        out = c.template take<T>(uint64_t(stride) << log2);
    }
    int size() const { return 1 << log2; }
    int outputs() const { return tiles << log2; }
    int inputs() const { return outputs() + 2 * w; }
};

template <class T> constexpr int kLog2Bytes = sizeof(T) == 1 ? 0 : sizeof(T) == 2 ? 1 : sizeof(T) == 4 ? 2 : 3;

template <class T> void byTiles(const TileArea<T>& area, const T* src, T* dst, int len) {
    const Tiles shape = {.w = area.w, .log2 = area.log2, .stride = area.stride, .offset = area.offset};
    for (int q = 0; q < area.size() + 2 * area.w; ++q) area.offset[q] = int32_t((q & (area.size() - 1)) * area.stride + (q >> area.log2));
    const ptrdiff_t all = area.stride << area.log2;
    forEachPiece(src, dst, len, area.w, area.z, all, area.outputs(), [&](const T* z, ptrdiff_t m, T* to) {
        const int tiles = int((m + area.size() - 1) >> area.log2);
        median->split[kLog2Bytes<T>](z, area.streams, area.log2, area.stride, area.stride);
        bool done = false;
        if constexpr (kFloat<T>)
            if (!plain(z, area.inputs())) {
                const auto keys = reinterpret_cast<Key<T>*>(area.streams), medians = reinterpret_cast<Key<T>*>(area.out);
                toKeys(area.streams, keys, all);
                kernelOf<Key<T>>().tile(&shape, keys, medians, area.rows, tiles);
                fromKeys(medians, area.out, all);
                done = true;
            }
        if (!done) kernelOf<T>().tile(&shape, area.streams, area.out, area.rows, tiles);
        // Whole vectors of tiles go to their place, the rest by way of the streams, which have done their duty.
        constexpr ptrdiff_t kAtOnce = 16 / sizeof(T);
        const ptrdiff_t whole = (m >> area.log2) / kAtOnce * kAtOnce, rest = m - (whole << area.log2);
        median->join[kLog2Bytes<T>](area.out, to, area.log2, area.stride, whole);
        if (rest == 0) return;
        median->join[kLog2Bytes<T>](area.out + whole, area.streams, area.log2, area.stride, kAtOnce);
        memcpy(to + (whole << area.log2), area.streams, size_t(rest) * sizeof(T));
    });
}

// ---- running medians ----------------------------------------------------------------------------------------------------------------------------

// How often each of a row of values occurs in a window, with the values that do in a tree of bits: bit i of a level is set where word i of the level below is not 0.
class Histogram {
public:
    using Word = unsigned long;
    static constexpr int kBits = 8 * sizeof(Word), kShift = kBits == 64 ? 6 : 5, kLevels = (32 + kShift - 1) / kShift;

    Histogram(Carve& c, uint64_t values) : values_(values) {
        count_ = c.take<uint32_t>(values);
        for (Word*& level : level_) level = c.take<Word>(values = (values + kBits - 1) / kBits);
    }
    void clear() {
        std::fill_n(count_, values_, 0u);
        uint64_t n = values_;
        for (Word* level : level_) std::fill_n(level, n = (n + kBits - 1) / kBits, Word{0});
        at_ = 0;
        below_ = 0;
    }
    void add(uint32_t value) {
        below_ += value < at_;
        if (count_[value]++ != 0) return;
        for (Word* level : level_) {
            const Word before = level[value >> kShift];
            level[value >> kShift] = before | Word{1} << (value & (kBits - 1));
            if (before != 0) return;
            value >>= kShift;
        }
    }
    void remove(uint32_t value) {
        below_ -= value < at_;
        if (--count_[value] != 0) return;
        for (Word* level : level_) {
            if ((level[value >> kShift] &= ~(Word{1} << (value & (kBits - 1)))) != 0) return;
            value >>= kShift;
        }
    }
    // The value that exactly `rank` are before, equal ones counted too. From the last one it goes step by step.
    uint32_t valueAt(uint64_t rank) {
        while (below_ > rank) below_ -= count_[at_ = before(at_)];
        for (; below_ + count_[at_] <= rank; at_ = behind(at_)) below_ += count_[at_];
        return at_;
    }

private:
    // The nearest value that occurs, of which there is one.
    uint32_t behind(uint32_t value) const {
        for (int l = 0;; ++l, value >>= kShift) {
            const int bit = int(value & (kBits - 1));
            if (const Word above = level_[l][value >> kShift] & ~Word{1} << bit) {
                value = (value & ~uint32_t{kBits - 1}) | uint32_t(__builtin_ctzl(above));
                while (--l >= 0) value = value << kShift | uint32_t(__builtin_ctzl(level_[l][value]));
                return value;
            }
        }
    }
    uint32_t before(uint32_t value) const {
        for (int l = 0;; ++l, value >>= kShift) {
            const int bit = int(value & (kBits - 1));
            if (const Word under = level_[l][value >> kShift] & ~(~Word{0} << bit)) {
                value = (value & ~uint32_t{kBits - 1}) | uint32_t(kBits - 1 - __builtin_clzl(under));
                while (--l >= 0) value = value << kShift | uint32_t(kBits - 1 - __builtin_clzl(level_[l][value]));
                return value;
            }
        }
    }

    uint64_t values_;
    uint32_t* count_;
    Word* level_[kLevels];
    uint32_t at_ = 0;
    uint64_t below_ = 0;   // elements with values before at_
};

// Values of up to 16 bits are their own places in the order.
template <class T> class Order {
    static constexpr int kLeast = std::is_signed_v<T> ? INT16_MIN : 0;

public:
    Order(Carve&, uint64_t) {}
    uint64_t places() const { return uint64_t{1} << (8 * sizeof(T)); }
    void rank(const T*, uint64_t) {}
    uint32_t place(const T* z, uint64_t i) const { return uint32_t(z[i] - kLeast); }
    T value(uint32_t place) const { return T(int(place) + kLeast); }
};

// Wider ones get theirs by being sorted, byte by byte, the last one first.
template <class T>
requires(sizeof(T) >= 4) class Order<T> {
    using Bits = std::conditional_t<sizeof(T) == 4, uint32_t, uint64_t>;
    static constexpr Bits kSign = Bits{1} << (8 * sizeof(T) - 1);
    struct Item {
        Bits bits;
        uint32_t from;
    };

public:
    Order(Carve& c, uint64_t n) : most_(n), items_(c.take<Item>(n)), others_(c.take<Item>(n)), places_(c.take<uint32_t>(n)) {}
    uint64_t places() const { return most_; }

    void rank(const T* z, uint64_t n) {
        size_t count[sizeof(T)][256] = {};
        const auto digit = [](Bits bits, size_t b) { return bits >> 8 * b & 255; };
        auto* const keys = reinterpret_cast<Key<T>*>(others_);
        if constexpr (kFloat<T>)
            toKeys(z, keys, ptrdiff_t(n));
        else
            memcpy(keys, z, size_t(n) * sizeof(T));
        for (size_t i = 0; i < n; ++i) {
            items_[i] = {Bits(keys[i]) ^ kSign, uint32_t(i)};
            for (size_t b = 0; b < sizeof(T); ++b) ++count[b][digit(items_[i].bits, b)];
        }
        for (size_t b = 0; b < sizeof(T); ++b) {
            if (count[b][digit(items_[0].bits, b)] == n) continue;   // all alike
            size_t at = 0;
            for (size_t& c : count[b]) at += std::exchange(c, at);
            for (size_t i = 0; i < n; ++i) others_[count[b][digit(items_[i].bits, b)]++] = items_[i];
            std::swap(items_, others_);
        }
        values_ = reinterpret_cast<T*>(others_);
        auto* const distinct = reinterpret_cast<Key<T>*>(others_);
        uint32_t place = 0;
        for (size_t i = 0; i < n; ++i) {
            place += i > 0 && items_[i].bits != items_[i - 1].bits;
            places_[items_[i].from] = place;
            distinct[place] = Key<T>(items_[i].bits ^ kSign);
        }
        if constexpr (kFloat<T>) fromKeys(distinct, values_, ptrdiff_t(place) + 1);
    }
    uint32_t place(const T*, uint64_t i) const { return places_[i]; }
    T value(uint32_t place) const { return values_[place]; }

private:
    uint64_t most_;
    Item *items_, *others_;
    uint32_t* places_;
    T* values_ = nullptr;
};

template <class T> struct RunningArea {
    T* z;
    int most;   // outputs at a time
    Order<T> order;
    Histogram histogram;

    RunningArea(Carve& c, int w, int len)
        : z(c.template take<T>(inputs(w, len))), most(outputs(w, len)), order(c, inputs(w, len)), histogram(c, order.places()) {}
    static int outputs(int w, int len) { return int(std::min<int64_t>(len, std::max<int64_t>(2 * int64_t{w}, 1 << 14))); }
    static uint64_t inputs(int w, int len) { return uint64_t(outputs(w, len)) + 2 * uint64_t(w); }
};

template <class T> void byRunning(RunningArea<T>& area, const T* src, T* dst, int len, int w) {
    forEachPiece(src, dst, len, w, area.z, int64_t(area.inputs(w, len)), area.most, [&](const T* z, ptrdiff_t m, T* to) {
        const size_t reach = 2 * size_t(w);
        area.order.rank(z, reach + size_t(m));
        area.histogram.clear();
        for (size_t i = 0; i < reach; ++i) area.histogram.add(area.order.place(z, i));
        for (size_t n = 0; n < size_t(m); ++n) {
            area.histogram.add(area.order.place(z, n + reach));
            to[n] = area.order.value(area.histogram.valueAt(uint32_t(w)));
            area.histogram.remove(area.order.place(z, n));
        }
    });
}

// ---- frame ----------------------------------------------------------------------------------------------------------------------------------------

template <class T> Status filter(const T* pSrc, T* pDst, int len, int maskSize) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len).require(maskSize >= 1, StatusBadSize)) return s;
    const Status done = maskSize % 2 ? StatusOk : WarnEvenMedianMask;
    // A window that reaches past both ends has its median between them, where one copy more of each makes no difference.
    const int w = std::min((maskSize - 1) / 2, len - 1);
    if (w == 0 || len < 3) {
        copy(pSrc, pDst, len);
        return done;
    }
    Status s = StatusOk;
    if (w <= kMostHalf)
        byNetwork(pSrc, pDst, len, w);
    else if (w < 2 * kMostTile - 1)
        s = withArea<TileArea<T>>([=](const auto& area) { byTiles(area, pSrc, pDst, len); }, w, len);
    else if (RunningArea<T>::inputs(w, len) > UINT32_MAX)
        s = StatusNoMemory;
    else
        s = withArea<RunningArea<T>>([=](auto& area) { byRunning(area, pSrc, pDst, len, w); }, w, len);
    return s ? s : done;
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsFilterMedian_32f(const float* pSrc, float* pDst, int len, int maskSize) { return filter(pSrc, pDst, len, maskSize); }
Status tevsFilterMedian_32f_I(float* pSrcDst, int len, int maskSize) { return filter(pSrcDst, pSrcDst, len, maskSize); }
Status tevsFilterMedian_64f(const double* pSrc, double* pDst, int len, int maskSize) { return filter(pSrc, pDst, len, maskSize); }
Status tevsFilterMedian_64f_I(double* pSrcDst, int len, int maskSize) { return filter(pSrcDst, pSrcDst, len, maskSize); }
Status tevsFilterMedian_16s(const int16_t* pSrc, int16_t* pDst, int len, int maskSize) { return filter(pSrc, pDst, len, maskSize); }
Status tevsFilterMedian_16s_I(int16_t* pSrcDst, int len, int maskSize) { return filter(pSrcDst, pSrcDst, len, maskSize); }
Status tevsFilterMedian_8u(const uint8_t* pSrc, uint8_t* pDst, int len, int maskSize) { return filter(pSrc, pDst, len, maskSize); }
Status tevsFilterMedian_8u_I(uint8_t* pSrcDst, int len, int maskSize) { return filter(pSrcDst, pSrcDst, len, maskSize); }
Status tevsFilterMedian_32s(const int32_t* pSrc, int32_t* pDst, int len, int maskSize) { return filter(pSrc, pDst, len, maskSize); }
Status tevsFilterMedian_32s_I(int32_t* pSrcDst, int len, int maskSize) { return filter(pSrcDst, pSrcDst, len, maskSize); }
