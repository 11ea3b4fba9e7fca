// The work area of one call: the caller's, one on the stack, or one of the library's own.
#pragma once

#include "core/memory.h"
#include "tevs/types.h"

namespace tevs {

constexpr uint64_t kAlignmentRoom = 16;   // what a caller's buffer may lose up to its first 16-byte boundary

// Where the area of a caller's buffer begins. Blocks off the heap begin at a multiple of 16: there the room left for alignment reaches the next of 32, and no vector
// crosses a cache line. Half of them crossing took 30 to 70 % longer.
inline uint8_t* workIn(uint8_t* pBuffer) {
    const bool spare = reinterpret_cast<uintptr_t>(pBuffer) % 32 == 16;
    return align16<uint8_t>(pBuffer) + (spare ? 16 : 0);
}

// Calls body(work) with `bytes` of the library's own.
template <class Body> [[gnu::noinline]] Status withOwnWork(uint64_t bytes, const Body& body) {
    const Scratch own(allocate(bytes));
    if (!own) return StatusNoMemory;
    body(static_cast<uint8_t*>(own.get()));
    return StatusOk;
}
// With the caller's, of bytes + kAlignmentRoom, or with its own where there is none.
template <class Body> [[gnu::always_inline]] inline Status withWork(uint8_t* pBuffer, uint64_t bytes, const Body& body) {
    if (!pBuffer) return withOwnWork(bytes, body);
    body(workIn(pBuffer));
    return StatusOk;
}
// The same, on the stack where that has the room.
template <int StackBytes, class Body> [[gnu::always_inline]] inline Status withWorkOnStack(uint8_t* pBuffer, uint64_t bytes, const Body& body) {
    if (bytes > StackBytes) return withWork(pBuffer, bytes, body);
    alignas(64) uint8_t onStack[StackBytes];
    body(onStack);
    return StatusOk;
}

}   // namespace tevs
