/* What generate.py writes functions.h in: every function of the library as data, for callers that choose functions and arguments at run time. */
#ifndef FUNCTION_TABLE_H
#define FUNCTION_TABLE_H

#include <stddef.h>
#include <stdint.h>

#include "tevcore.h"
#include "tevs.h"

typedef enum { I8, U8, I16, U16, I32, U32, I64, U64, F16, F32, F64, C8, C16, C32, C64, CF32, CF64 } Element;
static const struct {
    const char *name, *formats[3];
    uint8_t size;
} kElements[] = {
    [I8] = {"int8", {"b"}, 1},
    [U8] = {"uint8", {"B"}, 1},
    [I16] = {"int16", {"h"}, 2},
    [U16] = {"uint16", {"H"}, 2},
    [I32] = {"int32", {"i"}, 4},
    [U32] = {"uint32", {"I"}, 4},
    [I64] = {"int64", {"l", "q"}, 8},
    [U64] = {"uint64", {"L", "Q"}, 8},
    [F16] = {"float16", {"e", "H"}, 2},
    [F32] = {"float32", {"f"}, 4},
    [F64] = {"float64", {"d"}, 8},
    [C8] = {"complex_int8", {"T{b:re:b:im:}"}, 2},
    [C16] = {"complex_int16", {"T{h:re:h:im:}"}, 4},
    [C32] = {"complex_int32", {"T{i:re:i:im:}"}, 8},
    [C64] = {"complex_int64", {"T{l:re:l:im:}", "T{q:re:q:im:}"}, 16},
    [CF32] = {"complex64", {"Zf"}, 8},
    [CF64] = {"complex128", {"Zd"}, 16},
};

typedef enum {
    P_INT,
    P_FLOAT,
    P_DOUBLE,
    P_COMPLEX,
    P_ARRAY,
    P_ARRAYS, /* as many vectors as the next argument says */
    P_RECORD,
    P_MADE,      /* a record that the call makes: returned */
    P_MADE_HERE, /* the same in the caller's memory, which is the argument */
    P_MEMORY
} Kind;
enum {
    WRITTEN = 1,
    SHARED = 2,  /* a written vector may begin where this one does */
    ANYHOW = 4,  /* and overlap it in any way */
    REQUIRED = 8 /* the function itself does not look for a null pointer */
};
typedef struct {
    const char* name;
    uint8_t kind, element, flags; /* element of a record: its kind */
    int8_t dim;                   /* of an integer that a record remembers */
} Param;

typedef union {
    int64_t i;
    float f;
    double d;
    void* p;
    Complex8s c8;
    Complex16s c16;
    Complex32s c32;
    Complex64s c64;
    Complex32f cf32;
    Complex64f cf64;
} Any;
struct RecordObject;
typedef struct {
    Any a;
    struct RecordObject* record; /* the caller's own */
    const int32_t* dims;         /* of a record, the integers that it was built with */
    int64_t count;               /* elements of a vector */
    void* made;
} Value;

typedef enum { R_STATUS, R_VOID, R_INT, R_TEXT, R_VERSION, R_MEMORY } Result;
typedef struct {
    const char *name, *doc;
    const Param* params;
    uint8_t count, arguments, result, element, owned, freeing;
    void (*f)(void);
    void (*call)(void (*f)(void), const Value* v, Any* result);
    void (*need)(const Value* v, int64_t* need);
} Function;
typedef struct {
    const char* name;
    int (*release)(void*);
    int shared; /* any number of calls at a time */
} RecordKind;

/* The integer of that name that argument k, a record, was built with. */
#define R(k, dim) (v[k].dims ? (int64_t)v[k].dims[D_##dim] : 0)
static inline int64_t larger(int64_t a, int64_t b) { return a > b ? a : b; }
static inline int64_t ceil_div(int64_t a, int64_t b) { return a <= 0 || b <= 0 ? 0 : (a - 1) / b + 1; }
static inline int64_t pow2(int64_t order) { return order < 0 ? 0 : INT64_C(1) << (order < 31 ? order : 31); }
/* One element of a vector of int32, 0 where it is not there. */
static inline int64_t element(const Value* vector, int64_t n) {
    const int32_t* p = vector->a.p;
    return p && n >= 0 && n < vector->count ? p[n] : 0;
}
/* How many of n elements a pattern keeps that begins in its place *phase: what is out of range the function itself refuses. */
static inline int64_t kept(const Value* pattern, int64_t length, const Value* phase, int64_t n) {
    const uint8_t* p = pattern->a.p;
    const int32_t* at = phase->a.p;
    if (!p || !at || length < 1 || length > pattern->count || phase->count < 1 || *at < 0 || *at >= length || n < 1) return 0;
    int64_t whole = 0, rest = 0;
    for (int64_t k = 0; k < length; ++k) {
        whole += p[k] != 0;
        rest += p[(*at + k) % length] != 0 && k < n % length;
    }
    return n / length * whole + rest;
}

#include "functions.h"

#endif
