// Where records, tables and scratch come from and go back to.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include <memory>

namespace tevs {

// bytes of memory at a multiple of 32, or null, as for more than there are addresses; release() takes it back, and null too.
void* allocate(uint64_t bytes);
template <class T> T* allocate(uint64_t n) { return n <= SIZE_MAX / sizeof(T) ? static_cast<T*>(allocate(n * sizeof(T))) : nullptr; }
void release(void* p);

// The same for a record, whose identifier is cleared first: used once more, it is refused as long as its memory is there.
inline void releaseRecord(void* record) {
    *static_cast<uint32_t*>(record) = 0;
    release(record);
}

struct Release {
    void operator()(void* p) const { release(p); }
};

// Memory that goes back at the end of its scope, whichever way that is left.
using Scratch = std::unique_ptr<void, Release>;

// The first 16-byte boundary at or after p: where a record or a work area begins in a caller's block.
template <class T = void> T* align16(void* p) { return reinterpret_cast<T*>((reinterpret_cast<uintptr_t>(p) + 15) & ~uintptr_t{15}); }
constexpr uint64_t roundUp16(uint64_t bytes) { return (bytes + 15) & ~uint64_t{15}; }

// Cuts 16-byte aligned pieces off a block. Over no block it only adds up, so the function that reports a record's size and the one that
// builds it walk the same layout, and the size promised cannot drift from the size used.
class Carve {
public:
    explicit Carve(void* block = nullptr) : base_(static_cast<unsigned char*>(block)) {}
    template <class T> T* take(uint64_t n) {
        const uint64_t at = used_;
        used_ += roundUp16(n * sizeof(T));
        return base_ ? reinterpret_cast<T*>(base_ + at) : nullptr;
    }
    uint64_t size() const { return used_; }

private:
    unsigned char* base_;
    uint64_t used_ = 0;
};

}   // namespace tevs
