// G.711: linear samples to the A-law and mu-law codes and back, and from one code to the other.
#include "tevs/g711.h"

#include "core/args.h"
#include "core/rounding.h"
#include "telephony/g711.table.h"

namespace tevs {
namespace {

template <class S, class D> Status code(const S* pSrc, D* pDst, int len, void (*kernel)(const S*, D*, int)) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    NearestRounding guard;
    kernel(pSrc, pDst, len);
    return StatusOk;
}

// Recommendation G.711, tables 3 and 4, over the codes as they are sent: not what decoding and encoding again would give, which differs where a
// decoded value lies on, or nearly on, a decision value of the other law.
alignas(64) constexpr uint8_t kALawToMuLaw[128] = {
    42, 43, 40, 41, 46,  47,  44,  45,  34, 35, 32, 33, 38, 39, 36, 37, 57,  58,  55,  56,  61,  62,  59,  60,  49,  50,  47,  48,  53,  54,  51,  52,
    10, 11, 8,  9,  14,  15,  12,  13,  2,  3,  0,  1,  6,  7,  4,  5,  26,  27,  24,  25,  30,  31,  28,  29,  18,  19,  16,  17,  22,  23,  20,  21,
    98, 99, 96, 97, 102, 103, 100, 101, 93, 93, 92, 92, 95, 95, 94, 94, 116, 118, 112, 114, 124, 126, 120, 122, 106, 107, 104, 105, 110, 111, 108, 109,
    72, 73, 70, 71, 76,  77,  74,  75,  64, 65, 63, 63, 68, 69, 66, 67, 86,  87,  84,  85,  90,  91,  88,  89,  79,  79,  78,  78,  82,  83,  80,  81};
alignas(64) constexpr uint8_t kMuLawToALaw[128] = {
    42,  43,  40,  41,  46,  47,  44, 45, 34, 35, 32,  33,  38,  39,  36,  37,  58,  59,  56,  57,  62,  63,  60,  61,  50,  51,  48,  49,  54, 55, 52, 53,
    10,  11,  8,   9,   14,  15,  12, 13, 2,  3,  0,   1,   6,   7,   4,   26,  27,  24,  25,  30,  31,  28,  29,  18,  19,  16,  17,  22,  23, 20, 21, 106,
    104, 105, 110, 111, 108, 109, 98, 99, 96, 97, 102, 103, 100, 101, 122, 120, 126, 127, 124, 125, 114, 115, 112, 113, 118, 119, 116, 117, 75, 73, 79, 77,
    66,  67,  64,  65,  70,  71,  68, 69, 90, 91, 88,  89,  94,  95,  92,  93,  82,  82,  83,  83,  80,  80,  81,  81,  86,  86,  87,  87,  84, 84, 85, 85};

Status transcode(const uint8_t* pSrc, uint8_t* pDst, int len, const uint8_t* table) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    g711->transcode(pSrc, pDst, len, table);
    return StatusOk;
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsLinToALaw_16s8u(const int16_t* pSrc, uint8_t* pDst, int len) { return code(pSrc, pDst, len, g711->aLaw.compress16s); }
Status tevsLinToALaw_32f8u(const float* pSrc, uint8_t* pDst, int len) { return code(pSrc, pDst, len, g711->aLaw.compress32f); }
Status tevsLinToMuLaw_16s8u(const int16_t* pSrc, uint8_t* pDst, int len) { return code(pSrc, pDst, len, g711->muLaw.compress16s); }
Status tevsLinToMuLaw_32f8u(const float* pSrc, uint8_t* pDst, int len) { return code(pSrc, pDst, len, g711->muLaw.compress32f); }

Status tevsALawToLin_8u16s(const uint8_t* pSrc, int16_t* pDst, int len) { return code(pSrc, pDst, len, g711->aLaw.expand16s); }
Status tevsALawToLin_8u32f(const uint8_t* pSrc, float* pDst, int len) { return code(pSrc, pDst, len, g711->aLaw.expand32f); }
Status tevsMuLawToLin_8u16s(const uint8_t* pSrc, int16_t* pDst, int len) { return code(pSrc, pDst, len, g711->muLaw.expand16s); }
Status tevsMuLawToLin_8u32f(const uint8_t* pSrc, float* pDst, int len) { return code(pSrc, pDst, len, g711->muLaw.expand32f); }

Status tevsALawToMuLaw_8u(const uint8_t* pSrc, uint8_t* pDst, int len) { return transcode(pSrc, pDst, len, kALawToMuLaw); }
Status tevsMuLawToALaw_8u(const uint8_t* pSrc, uint8_t* pDst, int len) { return transcode(pSrc, pDst, len, kMuLawToALaw); }
