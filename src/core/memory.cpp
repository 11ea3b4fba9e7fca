#include "core/memory.h"

#include <stdlib.h>
#include <string.h>

#include "tevs/core.h"

namespace tevs {
namespace {

// A block of malloc's, with room to move up to a multiple of 32 and for the word just below, which keeps the block's own address.
constexpr size_t kAlign = 32;
constexpr size_t kRoom = kAlign - 1 + sizeof(void*);

template <class T> T* allocateElements(int len) { return len < 1 ? nullptr : allocate<T>(uint64_t(len)); }

}   // namespace

void* allocate(uint64_t bytes) {
    if (bytes > SIZE_MAX - kRoom - 1) return nullptr;
    void* block = malloc(size_t(bytes) + kRoom + 1);
    if (!block) return nullptr;
    const auto p = reinterpret_cast<void*>((reinterpret_cast<uintptr_t>(block) + kRoom) & ~uintptr_t{kAlign - 1});
    memcpy(static_cast<char*>(p) - sizeof block, &block, sizeof block);
    return p;
}

void release(void* p) {
    if (!p) return;
    void* block;
    memcpy(&block, static_cast<char*>(p) - sizeof block, sizeof block);
    free(block);
}

}   // namespace tevs

using namespace tevs;

uint8_t* tevsMalloc_8u(int len) { return allocateElements<uint8_t>(len); }
uint16_t* tevsMalloc_16u(int len) { return allocateElements<uint16_t>(len); }
uint32_t* tevsMalloc_32u(int len) { return allocateElements<uint32_t>(len); }
int8_t* tevsMalloc_8s(int len) { return allocateElements<int8_t>(len); }
int16_t* tevsMalloc_16s(int len) { return allocateElements<int16_t>(len); }
int32_t* tevsMalloc_32s(int len) { return allocateElements<int32_t>(len); }
int64_t* tevsMalloc_64s(int len) { return allocateElements<int64_t>(len); }
float* tevsMalloc_32f(int len) { return allocateElements<float>(len); }
double* tevsMalloc_64f(int len) { return allocateElements<double>(len); }
Complex8s* tevsMalloc_8sc(int len) { return allocateElements<Complex8s>(len); }
Complex16s* tevsMalloc_16sc(int len) { return allocateElements<Complex16s>(len); }
Complex32s* tevsMalloc_32sc(int len) { return allocateElements<Complex32s>(len); }
Complex64s* tevsMalloc_64sc(int len) { return allocateElements<Complex64s>(len); }
Complex32f* tevsMalloc_32fc(int len) { return allocateElements<Complex32f>(len); }
Complex64f* tevsMalloc_64fc(int len) { return allocateElements<Complex64f>(len); }

void tevsFree(void* ptr) { release(ptr); }
