// Copy and Zero as other families take them for their shortcuts, with the checks and statuses of the exports.
#pragma once

#include <string.h>

#include "core/args.h"

namespace tevs {

template <class T> size_t bytesOf(int len) { return size_t(len) * sizeof(T); }

template <class T> Status copy(const T* pSrc, T* pDst, int len) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    if (pSrc != pDst) memcpy(pDst, pSrc, bytesOf<T>(len));
    return StatusOk;
}

template <class T> Status zero(T* pDst, int len) {
    if (Status s = Args().ptr(pDst).len(len)) return s;
    memset(pDst, 0, bytesOf<T>(len));
    return StatusOk;
}

}   // namespace tevs
