// Buffers that notice a stray access: a page that faults lies before and behind, and the bytes between buffer and page are checked.
#pragma once

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstring>
#include <span>
#include <vector>

namespace test {

// Where a buffer lies: `offset` bytes behind the first page boundary, or (atEnd) with its last byte `offset` bytes before the last one.
struct Place {
    int offset = 0;
    bool atEnd = true;
};

template <class T> class Guarded {
public:
    explicit Guarded(size_t n, Place at = {}) : n_(n) {
        const size_t page = size_t(sysconf(_SC_PAGESIZE));
        bytes_ = (n * sizeof(T) + size_t(at.offset) + page - 1) / page * page;
        if (bytes_ == 0) bytes_ = page;
        map_ = static_cast<unsigned char*>(mmap(nullptr, bytes_ + 2 * page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
        if (map_ == MAP_FAILED) abort();
        inner_ = map_ + page;
        mprotect(inner_, bytes_, PROT_READ | PROT_WRITE);
        std::memset(inner_, kFill, bytes_);
        start_ = at.atEnd ? bytes_ - n * sizeof(T) - size_t(at.offset) : size_t(at.offset);
        mapped_ = bytes_ + 2 * page;
    }
    Guarded(std::span<const T> from, Place at = {}) : Guarded(from.size(), at) { assign(from); }
    Guarded(const std::vector<T>& from, Place at = {}) : Guarded(std::span<const T>(from), at) {}
    Guarded(const Guarded&) = delete;
    Guarded& operator=(const Guarded&) = delete;
    ~Guarded() { munmap(map_, mapped_); }

    T* data() { return reinterpret_cast<T*>(inner_ + start_); }
    const T* data() const { return reinterpret_cast<const T*>(inner_ + start_); }
    operator T*() { return data(); }
    size_t size() const { return n_; }
    void assign(std::span<const T> from) {
        if (!from.empty()) std::memcpy(inner_ + start_, from.data(), from.size_bytes());
    }
    std::vector<T> values() const {
        std::vector<T> v(n_);
        if (n_) std::memcpy(v.data(), inner_ + start_, n_ * sizeof(T));
        return v;
    }
    // Nothing was written beside the buffer.
    bool intact() const {
        for (size_t i = 0; i < bytes_; ++i)
            if ((i < start_ || i >= start_ + n_ * sizeof(T)) && inner_[i] != kFill) return false;
        return true;
    }
    // No byte was written at all since construction without contents.
    bool untouched() const {
        for (size_t i = 0; i < bytes_; ++i)
            if (inner_[i] != kFill) return false;
        return true;
    }

private:
    static constexpr unsigned char kFill = 0xa5;
    size_t n_, bytes_, start_, mapped_;
    unsigned char *map_, *inner_;
};

// Equal to the bit; names the first element that is not.
template <class T>::testing::AssertionResult same(const std::vector<T>& want, const std::vector<T>& got) {
    if (want.size() != got.size()) return ::testing::AssertionFailure() << "sizes " << want.size() << " and " << got.size();
    for (size_t i = 0; i < want.size(); ++i)
        if (std::memcmp(&want[i], &got[i], sizeof(T)) != 0)
            return ::testing::AssertionFailure() << "at " << i << " of " << want.size() << ": want " << ::testing::PrintToString(want[i]) << ", got "
                                                 << ::testing::PrintToString(got[i]);
    return ::testing::AssertionSuccess();
}

}   // namespace test
