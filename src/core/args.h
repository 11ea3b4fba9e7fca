// The check chain that opens every export.
#pragma once

#include <stdint.h>

#include <concepts>

#include "tevs/types.h"

namespace tevs {

// Keeps the first failure and skips the checks after it: the order written is the order callers observe.
class Args {
public:
    Args& ptr(const void* p) { return require(p != nullptr, StatusNullPtr); }
    Args& len(int n) { return require(n >= 1, StatusBadSize); }
    // A record begins with its identifier. Read as a word: the caller may hand in any memory at all.
    Args& record(const void* r, uint32_t id) { return record(r, id, id); }
    // Of either of two kinds.
    Args& record(const void* r, uint32_t id, uint32_t other) {
        return require([=] { return identifierOf(r) == id || identifierOf(r) == other; }, StatusContextMismatch);
    }
    Args& require(bool ok, Status s) {
        if (status_ == StatusOk && !ok) status_ = s;
        return *this;
    }
    template <std::predicate Test> Args& require(Test test, Status s) {   // for tests that read through a pointer
        return status_ == StatusOk ? require(bool(test()), s) : *this;
    }
    operator Status() const { return status_; }

    static uint32_t identifierOf(const void* r) {
        uint32_t id;
        __builtin_memcpy(&id, r, sizeof id);
        return id;
    }

private:
    Status status_ = StatusOk;
};

// Four characters of a filter record's identifier, the first in the most significant byte.
constexpr uint32_t identifier(const char (&s)[5]) { return uint32_t(s[0]) << 24 | uint32_t(s[1]) << 16 | uint32_t(s[2]) << 8 | uint32_t(s[3]); }
static_assert(identifier("FI01") == 0x46493031);

}   // namespace tevs
