// The lifecycle of transform records: sizes, building in the caller's memory or in the library's own, and the end.
//
// A kind of record begins with its identifier and has members workBytes, the scratch of one call (0 for none), and owned. It says of itself
//
//     kId, kBadLength                      its identifier, and the status of a length, or order, that it has no transform for
//     goodLength(length)
//     sizes(length, hint)                  in bytes
//     needsInit(length)                    whether Init asks for memory to build in
//     build(spec, length, flag, hint)      fills a record of zeros, and the room behind it
#pragma once

#include <limits.h>
#include <stdint.h>
#include <string.h>

#include "core/args.h"
#include "core/memory.h"
#include "core/rounding.h"
#include "core/work.h"

namespace tevs {

constexpr bool goodFlag(int flag) { return flag == ScaleFwdByN || flag == ScaleInvByN || flag == ScaleBySqrtN || flag == NoScale; }

// The three sizes that GetSize reports, in bytes. One that an int does not hold is reported as INT_MAX.
constexpr int clampToInt(uint64_t bytes) { return bytes < INT_MAX ? int(bytes) : INT_MAX; }
struct SpecSizes {
    uint64_t spec, init, work;
    constexpr bool fitInt() const { return spec <= INT_MAX && init <= INT_MAX && work <= INT_MAX; }
};

template <class Spec> Status getSize(int length, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    if (Status s = Args().require(Spec::goodLength(length), Spec::kBadLength).ptr(pSpecSize).ptr(pSpecBufferSize).ptr(pBufferSize)) return s;
    const SpecSizes sizes = Spec::sizes(length, hint);
    *pSpecSize = clampToInt(sizes.spec);
    *pSpecBufferSize = clampToInt(sizes.init);
    *pBufferSize = clampToInt(sizes.work);
    return StatusOk;
}

template <class Spec> Status init(Spec** ppSpec, int length, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    const bool legal = Spec::goodLength(length) && Spec::sizes(length, hint).fitInt();
    if (Status s = Args().ptr(ppSpec).require(legal, Spec::kBadLength).ptr(pMemSpec)) return s;
    auto* const spec = align16<Spec>(pMemSpec);
    memset(static_cast<void*>(spec), 0, sizeof *spec);   // whoever uses the block after a failure finds no identifier in it
    if (Status s = Args().require(goodFlag(flag), StatusFftFlag).require(pMemInit || !Spec::needsInit(length), StatusNullPtr)) return s;
    NearestRounding guard;
    Spec::build(spec, length, flag, hint);
    *ppSpec = spec;
    return StatusOk;
}

template <class Spec> Status initAlloc(Spec** ppSpec, int length, int flag, int hint) {
    if (Status s = Args().ptr(ppSpec).require(Spec::goodLength(length), Spec::kBadLength).require(goodFlag(flag), StatusFftFlag)) return s;
    const SpecSizes sizes = Spec::sizes(length, hint);
    auto* const spec = static_cast<Spec*>(sizes.fitInt() ? allocate(sizes.spec) : nullptr);
    if (!spec) return StatusNoMemory;
    memset(static_cast<void*>(spec), 0, sizeof *spec);
    NearestRounding guard;
    Spec::build(spec, length, flag, hint);
    spec->owned = true;
    *ppSpec = spec;
    return StatusOk;
}

template <class Spec> Status freeSpec(Spec* pSpec) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId)) return s;
    pSpec->id = 0;
    if (pSpec->owned) release(pSpec);
    return StatusOk;
}

template <class Spec> Status getBufSize(const Spec* pSpec, int* pSize) {
    if (Status s = Args().ptr(pSpec).ptr(pSize).record(pSpec, Spec::kId)) return s;
    *pSize = pSpec->workBytes < 1 ? 0 : clampToInt(uint64_t(pSpec->workBytes) + kAlignmentRoom);
    return StatusOk;
}

}   // namespace tevs
