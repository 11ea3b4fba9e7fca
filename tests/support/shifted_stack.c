/* i386 callers may come with a stack aligned to 4 bytes only: a 16-byte spill at a fixed offset from such a stack pointer would fault.
 *
 * Linked into a 32-bit test, this stands before every exported function and calls it with the stack pointer 0, 4, 8 and 12 bytes below a multiple
 * of 16 in turn, so that each test is a test of this too. shifted_stack.inc names the functions, each as X(name). */
#define _GNU_SOURCE
#ifndef __SANITIZE_ADDRESS__ /* lays its red zones out for frames that are aligned by the convention */

#include <dlfcn.h>
#include <stdint.h>
#include <stdlib.h>

static const char* const kNames[] = {
#define X(name) #name,
#include "shifted_stack.inc"
#undef X
};
enum { kCount = sizeof kNames / sizeof *kNames };

static void* functions[kCount];

static void* function(uint32_t index) {
    if (!functions[index] && !(functions[index] = dlsym(RTLD_NEXT, kNames[index]))) abort();
    return functions[index];
}
/* All at once, before a test counts allocations; what is called earlier still is found by itself. */
__attribute__((constructor)) static void findAll(void) {
    for (uint32_t i = 0; i < kCount; ++i) function(i);
}

/* In eax and edx. Threads may disturb each other's count: any shift will do. */
__attribute__((used, regparm(1))) static uint64_t shiftedCall(uint32_t index) {
    static uint32_t calls;
    return (uintptr_t)function(index) | (uint64_t)(4 * (calls++ % 4)) << 32;
}

/* Entered with the function's index pushed after the return address. No function takes more than 64 words of arguments. */
__asm__(
    "callShifted:\n\t"
    "pushl %ebp\n\t"
    "movl %esp, %ebp\n\t"
    "pushl %esi\n\t"
    "pushl %edi\n\t"
    "movl 4(%ebp), %eax\n\t"
    "call shiftedCall\n\t"
    "subl $256, %esp\n\t"
    "andl $-16, %esp\n\t"
    "subl %edx, %esp\n\t"
    "leal 12(%ebp), %esi\n\t"
    "movl %esp, %edi\n\t"
    "movl $64, %ecx\n\t"
    "rep movsl\n\t"
    "call *%eax\n\t"
    "leal -8(%ebp), %esp\n\t"
    "popl %edi\n\t"
    "popl %esi\n\t"
    "popl %ebp\n\t"
    "addl $4, %esp\n\t"
    "ret");

enum {
#define X(name) kIndexOf_##name,
#include "shifted_stack.inc"
#undef X
};

/* clang-format off */
#define X(name)                                                          \
    void name(void);                                                     \
    __attribute__((naked)) void name(void) {                             \
        __asm__("pushl %0\n\tjmp callShifted" : : "i"(kIndexOf_##name)); \
    }
#include "shifted_stack.inc"
/* clang-format on */

#endif
