// Bitwise logic and shifts by a constant.
#include "tevs/logic.h"

#include <algorithm>

#include "core/args.h"
#include "vector/logic.table.h"
#include "vector/movement.h"

namespace tevs {
namespace {

template <class T> Status binary(const T* pSrc1, const T* pSrc2, T* pDst, int len, void (*kernel)(const void*, const void*, void*, ptrdiff_t)) {
    if (Status s = Args().ptr(pSrc1).ptr(pSrc2).ptr(pDst).len(len)) return s;
    kernel(pSrc1, pSrc2, pDst, ptrdiff_t(bytesOf<T>(len)));
    return StatusOk;
}

template <class T> Status constant(const T* pSrc, T val, T* pDst, int len, void (*kernel)(const void*, uint32_t, void*, ptrdiff_t)) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    constexpr uint32_t kOnes = sizeof(T) == 1 ? 0x01010101 : sizeof(T) == 2 ? 0x00010001 : 1;
    kernel(pSrc, kOnes * val, pDst, ptrdiff_t(bytesOf<T>(len)));
    return StatusOk;
}

template <class T> constexpr int kWidth = 8 * int(sizeof(T));
using ShiftKernel = void(const void*, int, void*, ptrdiff_t);

// A count of 0 is a copy, with the copy's checks and no others. The sign of the count is looked at last. Counts from the width on shift by one less than it,
// which leaves the sign in every bit.
template <class T> Status shiftSigned(const T* pSrc, int val, T* pDst, int len, ShiftKernel* kernel) {
    if (val == 0) return copy(pSrc, pDst, len);
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len).require(val > 0, StatusShift)) return s;
    kernel(pSrc, std::min(val, kWidth<T> - 1), pDst, ptrdiff_t(bytesOf<T>(len)));
    return StatusOk;
}

// Where zeros enter, counts from the width on leave nothing else: only the source pointer is checked before they are stored.
template <class T> Status shift(const T* pSrc, int val, T* pDst, int len, ShiftKernel* kernel) {
    if (val < kWidth<T>) return shiftSigned(pSrc, val, pDst, len, kernel);
    return pSrc ? zero(pDst, len) : StatusNullPtr;
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsAnd_8u(const uint8_t* pSrc1, const uint8_t* pSrc2, uint8_t* pDst, int len) { return binary(pSrc1, pSrc2, pDst, len, logic->bitAnd); }
Status tevsAnd_8u_I(const uint8_t* pSrc, uint8_t* pSrcDst, int len) { return binary(pSrc, pSrcDst, pSrcDst, len, logic->bitAnd); }
Status tevsAnd_16u(const uint16_t* pSrc1, const uint16_t* pSrc2, uint16_t* pDst, int len) { return binary(pSrc1, pSrc2, pDst, len, logic->bitAnd); }
Status tevsAnd_16u_I(const uint16_t* pSrc, uint16_t* pSrcDst, int len) { return binary(pSrc, pSrcDst, pSrcDst, len, logic->bitAnd); }
Status tevsAnd_32u(const uint32_t* pSrc1, const uint32_t* pSrc2, uint32_t* pDst, int len) { return binary(pSrc1, pSrc2, pDst, len, logic->bitAnd); }
Status tevsAnd_32u_I(const uint32_t* pSrc, uint32_t* pSrcDst, int len) { return binary(pSrc, pSrcDst, pSrcDst, len, logic->bitAnd); }

Status tevsOr_8u(const uint8_t* pSrc1, const uint8_t* pSrc2, uint8_t* pDst, int len) { return binary(pSrc1, pSrc2, pDst, len, logic->bitOr); }
Status tevsOr_8u_I(const uint8_t* pSrc, uint8_t* pSrcDst, int len) { return binary(pSrc, pSrcDst, pSrcDst, len, logic->bitOr); }
Status tevsOr_16u(const uint16_t* pSrc1, const uint16_t* pSrc2, uint16_t* pDst, int len) { return binary(pSrc1, pSrc2, pDst, len, logic->bitOr); }
Status tevsOr_16u_I(const uint16_t* pSrc, uint16_t* pSrcDst, int len) { return binary(pSrc, pSrcDst, pSrcDst, len, logic->bitOr); }
Status tevsOr_32u(const uint32_t* pSrc1, const uint32_t* pSrc2, uint32_t* pDst, int len) { return binary(pSrc1, pSrc2, pDst, len, logic->bitOr); }
Status tevsOr_32u_I(const uint32_t* pSrc, uint32_t* pSrcDst, int len) { return binary(pSrc, pSrcDst, pSrcDst, len, logic->bitOr); }

Status tevsXor_8u(const uint8_t* pSrc1, const uint8_t* pSrc2, uint8_t* pDst, int len) { return binary(pSrc1, pSrc2, pDst, len, logic->bitXor); }
Status tevsXor_8u_I(const uint8_t* pSrc, uint8_t* pSrcDst, int len) { return binary(pSrc, pSrcDst, pSrcDst, len, logic->bitXor); }
Status tevsXor_16u(const uint16_t* pSrc1, const uint16_t* pSrc2, uint16_t* pDst, int len) { return binary(pSrc1, pSrc2, pDst, len, logic->bitXor); }
Status tevsXor_16u_I(const uint16_t* pSrc, uint16_t* pSrcDst, int len) { return binary(pSrc, pSrcDst, pSrcDst, len, logic->bitXor); }
Status tevsXor_32u(const uint32_t* pSrc1, const uint32_t* pSrc2, uint32_t* pDst, int len) { return binary(pSrc1, pSrc2, pDst, len, logic->bitXor); }
Status tevsXor_32u_I(const uint32_t* pSrc, uint32_t* pSrcDst, int len) { return binary(pSrc, pSrcDst, pSrcDst, len, logic->bitXor); }

Status tevsAndC_8u(const uint8_t* pSrc, uint8_t val, uint8_t* pDst, int len) { return constant(pSrc, val, pDst, len, logic->bitAndC); }
Status tevsAndC_8u_I(uint8_t val, uint8_t* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, logic->bitAndC); }
Status tevsAndC_16u(const uint16_t* pSrc, uint16_t val, uint16_t* pDst, int len) { return constant(pSrc, val, pDst, len, logic->bitAndC); }
Status tevsAndC_16u_I(uint16_t val, uint16_t* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, logic->bitAndC); }
Status tevsAndC_32u(const uint32_t* pSrc, uint32_t val, uint32_t* pDst, int len) { return constant(pSrc, val, pDst, len, logic->bitAndC); }
Status tevsAndC_32u_I(uint32_t val, uint32_t* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, logic->bitAndC); }

Status tevsOrC_8u(const uint8_t* pSrc, uint8_t val, uint8_t* pDst, int len) { return constant(pSrc, val, pDst, len, logic->bitOrC); }
Status tevsOrC_8u_I(uint8_t val, uint8_t* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, logic->bitOrC); }
Status tevsOrC_16u(const uint16_t* pSrc, uint16_t val, uint16_t* pDst, int len) { return constant(pSrc, val, pDst, len, logic->bitOrC); }
Status tevsOrC_16u_I(uint16_t val, uint16_t* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, logic->bitOrC); }
Status tevsOrC_32u(const uint32_t* pSrc, uint32_t val, uint32_t* pDst, int len) { return constant(pSrc, val, pDst, len, logic->bitOrC); }
Status tevsOrC_32u_I(uint32_t val, uint32_t* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, logic->bitOrC); }

Status tevsXorC_8u(const uint8_t* pSrc, uint8_t val, uint8_t* pDst, int len) { return constant(pSrc, val, pDst, len, logic->bitXorC); }
Status tevsXorC_8u_I(uint8_t val, uint8_t* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, logic->bitXorC); }
Status tevsXorC_16u(const uint16_t* pSrc, uint16_t val, uint16_t* pDst, int len) { return constant(pSrc, val, pDst, len, logic->bitXorC); }
Status tevsXorC_16u_I(uint16_t val, uint16_t* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, logic->bitXorC); }
Status tevsXorC_32u(const uint32_t* pSrc, uint32_t val, uint32_t* pDst, int len) { return constant(pSrc, val, pDst, len, logic->bitXorC); }
Status tevsXorC_32u_I(uint32_t val, uint32_t* pSrcDst, int len) { return constant(pSrcDst, val, pSrcDst, len, logic->bitXorC); }

Status tevsNot_8u(const uint8_t* pSrc, uint8_t* pDst, int len) { return constant(pSrc, uint8_t(~0), pDst, len, logic->bitXorC); }
Status tevsNot_8u_I(uint8_t* pSrcDst, int len) { return constant(pSrcDst, uint8_t(~0), pSrcDst, len, logic->bitXorC); }
Status tevsNot_16u(const uint16_t* pSrc, uint16_t* pDst, int len) { return constant(pSrc, uint16_t(~0), pDst, len, logic->bitXorC); }
Status tevsNot_16u_I(uint16_t* pSrcDst, int len) { return constant(pSrcDst, uint16_t(~0), pSrcDst, len, logic->bitXorC); }
Status tevsNot_32u(const uint32_t* pSrc, uint32_t* pDst, int len) { return constant(pSrc, ~uint32_t{0}, pDst, len, logic->bitXorC); }
Status tevsNot_32u_I(uint32_t* pSrcDst, int len) { return constant(pSrcDst, ~uint32_t{0}, pSrcDst, len, logic->bitXorC); }

Status tevsLShiftC_8u(const uint8_t* pSrc, int val, uint8_t* pDst, int len) { return shift(pSrc, val, pDst, len, logic->left8); }
Status tevsLShiftC_8u_I(int val, uint8_t* pSrcDst, int len) { return shift(pSrcDst, val, pSrcDst, len, logic->left8); }
Status tevsLShiftC_16u(const uint16_t* pSrc, int val, uint16_t* pDst, int len) { return shift(pSrc, val, pDst, len, logic->left16); }
Status tevsLShiftC_16u_I(int val, uint16_t* pSrcDst, int len) { return shift(pSrcDst, val, pSrcDst, len, logic->left16); }
Status tevsLShiftC_16s(const int16_t* pSrc, int val, int16_t* pDst, int len) { return shift(pSrc, val, pDst, len, logic->left16); }
Status tevsLShiftC_16s_I(int val, int16_t* pSrcDst, int len) { return shift(pSrcDst, val, pSrcDst, len, logic->left16); }
Status tevsLShiftC_32s(const int32_t* pSrc, int val, int32_t* pDst, int len) { return shift(pSrc, val, pDst, len, logic->left32); }
Status tevsLShiftC_32s_I(int val, int32_t* pSrcDst, int len) { return shift(pSrcDst, val, pSrcDst, len, logic->left32); }

Status tevsRShiftC_8u(const uint8_t* pSrc, int val, uint8_t* pDst, int len) { return shift(pSrc, val, pDst, len, logic->right8u); }
Status tevsRShiftC_8u_I(int val, uint8_t* pSrcDst, int len) { return shift(pSrcDst, val, pSrcDst, len, logic->right8u); }
Status tevsRShiftC_16u(const uint16_t* pSrc, int val, uint16_t* pDst, int len) { return shift(pSrc, val, pDst, len, logic->right16u); }
Status tevsRShiftC_16u_I(int val, uint16_t* pSrcDst, int len) { return shift(pSrcDst, val, pSrcDst, len, logic->right16u); }
Status tevsRShiftC_16s(const int16_t* pSrc, int val, int16_t* pDst, int len) { return shiftSigned(pSrc, val, pDst, len, logic->right16s); }
Status tevsRShiftC_16s_I(int val, int16_t* pSrcDst, int len) { return shiftSigned(pSrcDst, val, pSrcDst, len, logic->right16s); }
Status tevsRShiftC_32s(const int32_t* pSrc, int val, int32_t* pDst, int len) { return shiftSigned(pSrc, val, pDst, len, logic->right32s); }
Status tevsRShiftC_32s_I(int val, int32_t* pSrcDst, int len) { return shiftSigned(pSrcDst, val, pSrcDst, len, logic->right32s); }
