#ifndef TEVS_CORE_H
#define TEVS_CORE_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- Malloc, Free: aligned memory -----------------------------------------------------------------------------------
 *
 * tevsMalloc_<type> returns memory for len elements at an address that is a multiple of 32 bytes, not cleared, or a
 * null pointer if len < 1 or the system has no memory. tevsFree gives it back; a null pointer is let pass, and any
 * other that did not come from tevsMalloc is a fault of the caller. Both are as safe to call from several threads as
 * malloc and free.
 */
uint8_t* tevsMalloc_8u(int len);
uint16_t* tevsMalloc_16u(int len);
uint32_t* tevsMalloc_32u(int len);
int8_t* tevsMalloc_8s(int len);
int16_t* tevsMalloc_16s(int len);
int32_t* tevsMalloc_32s(int len);
int64_t* tevsMalloc_64s(int len);
float* tevsMalloc_32f(int len);
double* tevsMalloc_64f(int len);
Complex8s* tevsMalloc_8sc(int len);
Complex16s* tevsMalloc_16sc(int len);
Complex32s* tevsMalloc_32sc(int len);
Complex64s* tevsMalloc_64sc(int len);
Complex32f* tevsMalloc_32fc(int len);
Complex64f* tevsMalloc_64fc(int len);
void tevsFree(void* ptr);

/* ---- GetLibVersion --------------------------------------------------------------------------------------------------
 *
 * The library's one version record, constant and never released; every call returns the same pointer.
 */
typedef struct LibraryVersion {
    int32_t major, minor;      /* 5, 1 */
    int32_t majorBuild, build; /* identify this build */
    char targetCpu[4];         /* code of the processor class, zero-padded */
    const char* name;          /* file name of the library */
    const char* version;       /* "major.minor.patch" */
    const char* buildDate;
} LibraryVersion;

const LibraryVersion* tevsGetLibVersion(void);

/* The version of this header: of what a program is compiled with, as tevsGetLibVersion tells what it runs with. One
 * comparable number of it:
 *
 *     #if TEVS_VERSION >= TEVS_VERSION_NUMBER(5, 1, 0)
 */
#define TEVS_VERSION_MAJOR 5
#define TEVS_VERSION_MINOR 1
#define TEVS_VERSION_PATCH 1
#define TEVS_VERSION_NUMBER(major, minor, patch) ((major) * 10000 + (minor) * 100 + (patch))
#define TEVS_VERSION TEVS_VERSION_NUMBER(TEVS_VERSION_MAJOR, TEVS_VERSION_MINOR, TEVS_VERSION_PATCH)

/* ---- GetStatusString ------------------------------------------------------------------------------------------------
 *
 * What a status says, in one line of English without a full stop; of a number that is none of Status, "unknown status".
 * Static text, never released.
 */
const char* tevsGetStatusString(Status status);

/* ---- GetLevel, GetLevelName -----------------------------------------------------------------------------------------
 *
 * The SIMD level that the library runs at, chosen for the processor when it was loaded and capped by the environment
 * variable TEVS_LEVEL: 0 "SSE3", 1 "SSE4.1", 2 "AVX2", 3 "AVX-512". tevsGetLevelName gives these texts, static, and
 * "unknown level" for other numbers.
 */
int tevsGetLevel(void);
const char* tevsGetLevelName(int level);

TEVS_END

#endif
