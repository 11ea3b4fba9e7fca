/* The whole interface under calls that an input chooses: a function, its arguments, and for one that takes a record how that is built and a stream of calls cut anywhere.
 *
 * Vectors have exactly the elements that the manual asks for, as python/generate.py has it of every function, and lie before or behind a page that faults. What the
 * manual promises of every call is checked: a known status, sources as they were, destinations too where the call is refused, nothing written beside them, the control
 * word kept, a record that is none refused.
 */
#include <limits.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <xmmintrin.h>

#include "fuzz.h"
#include "function_table.h"

enum { kPage = 4096, kArena = 64 * kPage, kMargin = 64, kFill = 0xa5, kMostChannels = 64, kKinds = sizeof kRecordKinds / sizeof *kRecordKinds };
enum { kFunctionCount = sizeof kFunctions / sizeof *kFunctions, kMostCalls = 12 };
static const uint8_t kSizes[] = {[I8] = 1,  [U8] = 1,  [I16] = 2, [U16] = 2, [I32] = 4, [U32] = 4,  [I64] = 8,  [U64] = 8,  [F16] = 2,
                                 [F32] = 4, [F64] = 8, [C8] = 2,  [C16] = 4, [C32] = 8, [C64] = 16, [CF32] = 8, [CF64] = 16};

/* ---- The input ---------------------------------------------------------------------------------------------------------------------------- */

static const uint8_t* input;
static size_t left;
static uint64_t generator; /* of what fills vectors: xorshift, from a word of the input */

static unsigned byte(void) { return left ? (--left, *input++) : 0; }
static uint32_t word(void) {
    uint32_t w = 0;
    for (int k = 0; k < 4; ++k) w = w << 8 | byte();
    return w;
}
static bool seldom(void) { return byte() >= 248; }
static uint64_t random64(void) {
    generator ^= generator << 13;
    generator ^= generator >> 7;
    return generator ^= generator << 17;
}

/* Where the values lie that calls accept, of parameters for which 0 .. 12 are not those. */
static const struct {
    const char* name;
    int low, high;
} kTypical[] = {{"len", 1, 150},        {"len1", 1, 90},        {"len2", 1, 90},         {"srcLen", 1, 150},     {"dstLen", 1, 150},   {"numIters", 1, 90},
                {"chanLen", 1, 90},     {"length", 1, 300},     {"tapsLen", 1, 70},      {"scaleFactor", -9, 9}, {"maskSize", 1, 70},  {"hint", 0, 2},
                {"upFactor", 1, 6},     {"downFactor", 1, 6},   {"upPhase", 0, 2},       {"downPhase", 0, 2},    {"factor", 1, 6},     {"numBq", 1, 6},
                {"order", 1, 11},       {"nChannels", 1, 9},    {"tapsLenLow", 1, 12},   {"tapsLenHigh", 1, 12}, {"offsLow", -1, 9},   {"offsHigh", -1, 9},
                {"levels", 1, 5},       {"numPoly", 1, 4},      {"constraintLen", 2, 9}, {"traceLen", 1, 50},    {"numStates", 1, 40}, {"numInputs", 1, 4},
                {"numSymbols", 1, 16},  {"numPoints", 1, 16},   {"patternLen", 1, 9},    {"bookLen", 1, 20},     {"dim", 1, 9},        {"tableLen", 1, 60},
                {"nzTapsLen", 1, 9},    {"nzTapsLen1", 1, 9},   {"nzTapsLen2", 0, 9},    {"rndMode", 0, 1},      {"relOp", 0, 1},      {"lowLag", -40, 40},
                {"alphaQ15", 0, 32767}, {"rFreqQ15", 0, 16383}, {"magn", 1, 32767},      {"vDiv", 1, 9},         {"family", 0, 2},     {"lift", 0, 2}};

static int64_t integer(const Param* p) {
    static const int64_t kEnds[] = {0, -1, INT_MAX, INT_MIN, INT_MAX - 1, 1 << 30, 65536, 32768, -32768, 255};
    const unsigned choice = byte();
    if (choice >= 250) return (int32_t)word();
    if (choice >= 240) return kEnds[choice - 240];
    if (strcmp(p->name, "flag") == 0) return 1 << choice % 4;
    int low = 0, high = 12;
    for (size_t k = 0; k < sizeof kTypical / sizeof *kTypical; ++k)
        if (strcmp(p->name, kTypical[k].name) == 0) low = kTypical[k].low, high = kTypical[k].high;
    return low + (int)((choice << 8 | byte()) % (unsigned)(high - low + 1));
}

static double number(void) {
    static const double kEnds[] = {0.0, -0.0, 1.0, -1.0, 0.5, 1e-310, 1e-40, 1e30, 1e300, __builtin_inf(), -__builtin_inf(), __builtin_nan("")};
    const unsigned choice = byte();
    if (choice < sizeof kEnds / sizeof *kEnds) return kEnds[choice];
    return (choice - 12) / 486.0; /* below 0.5: a relative frequency, a ripple, a roll-off */
}

/* ---- Vectors ------------------------------------------------------------------------------------------------------------------------------- */

/* The memory of the arguments of one call. */
typedef struct {
    unsigned char *arena, *data, *before; /* before: the vector as it was ahead of the call */
    size_t bytes;
    bool used, shared; /* shared: a destination lies there too */
} Vector;
typedef struct {
    Vector vectors[kMostParams];
    void* channels[kMostChannels];
} Set;
static Set maker_set, call_set;

static void make_arenas(Set* set) {
    for (int k = 0; k < kMostParams; ++k) {
        unsigned char* map = mmap(NULL, kArena + 2 * kPage, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (map == MAP_FAILED || mprotect(map + kPage, kArena, PROT_READ | PROT_WRITE) != 0) exit(2);
        set->vectors[k] = (Vector){.arena = map + kPage, .before = malloc(kArena)};
    }
}

static void fill(unsigned char* to, size_t bytes, unsigned element, unsigned choice) {
    static const uint32_t kFloats[] = {0x7f800000, 0xff800000, 0x7fc00000, 0, 0x80000000, 1, 0x807fffff, 0x7f7fffff, 0x3f800000, 0xbf800000};
    static const uint64_t kDoubles[] = {0x7ff0000000000000, 0xfff0000000000000, 0x7ff8000000000000, 0, 0x8000000000000000, 1, 0x800fffffffffffff,
                                        0x7fefffffffffffff, 0x3ff0000000000000, 0xbff0000000000000};
    static const uint8_t kParts[] = {[C8] = 1, [C16] = 2, [C32] = 4, [C64] = 8, [CF32] = 4, [CF64] = 8};
    const unsigned size = element >= C8 ? kParts[element] : kSizes[element];
    const bool floats = element == F32 || element == F64 || element >= CF32;
    for (size_t n = 0; n * size < bytes; ++n) {
        const uint64_t r = random64();
        uint64_t value = r; /* any bits */
        switch (choice % 16) {
            case 0:
            case 1:
                break;
            case 2: /* ends of ranges */
            case 3:
                if (floats)
                    value = size == 4 ? kFloats[r % 10] : kDoubles[r % 10];
                else
                    value = (r & 1 ? UINT64_C(1) << (8 * size - 1) : 0) - (r >> 1 & 1);
                break;
            case 4: /* rising */
            case 5:
                value = n + choice % 2;
                break;
            case 6: /* small, not negative */
            case 7:
                value = r >> 62;
                break;
            case 8:
                value = byte();
                break;
            default: /* small, and within -1 .. 1 */
                if (floats) {
                    const double d = (double)((int64_t)r >> 40) * 0x1p-23;
                    const float f = (float)d;
                    memcpy(&value, size == 4 ? (const void*)&f : &d, size);
                } else {
                    value = (uint64_t)((int64_t)r >> 58);
                }
        }
        memcpy(to + n * size, &value, size);
    }
}

/* What lies beside a vector, up to the pages: it begins at *before and ends at *behind. */
static void margins(const Vector* v, unsigned char** before, unsigned char** behind) {
    *before = v->data - v->arena < kMargin ? v->arena : v->data - kMargin;
    *behind = v->arena + kArena - v->data - v->bytes < kMargin ? v->arena + kArena : v->data + v->bytes + kMargin;
}

/* Exactly so many bytes, against one of the two pages, with something known beside them. */
static void place(Vector* v, size_t bytes, unsigned where) {
    const size_t slack = where % 8 ? 0 : where / 8 % 8;
    unsigned char *before, *behind;
    v->bytes = bytes;
    v->data = where & 128 ? v->arena + slack : v->arena + kArena - bytes - slack;
    v->used = true;
    v->shared = false;
    margins(v, &before, &behind);
    memset(before, kFill, (size_t)(v->data - before));
    memset(v->data + bytes, kFill, (size_t)(behind - v->data) - bytes);
}

static bool intact(const Vector* v) {
    unsigned char *before, *behind, known[kMargin];
    margins(v, &before, &behind);
    memset(known, kFill, sizeof known);
    return memcmp(before, known, (size_t)(v->data - before)) == 0 && memcmp(v->data + v->bytes, known, (size_t)(behind - v->data) - v->bytes) == 0;
}

static bool is_vector(const Param* p) { return p->kind == P_ARRAY || p->kind == P_ARRAYS || p->kind == P_MADE_HERE; }
static unsigned size_of(const Param* p) { return p->kind == P_MADE_HERE ? 1 : kSizes[p->element]; }
static bool is_work(const Param* p) { return p->kind == P_MADE_HERE || strncmp(p->name, "pBuffer", 7) == 0 || strncmp(p->name, "pMem", 4) == 0; }

/* ---- A call -------------------------------------------------------------------------------------------------------------------------------- */

unsigned long long calls_made;
static const Function* current;
static Value* arguments;

void describe_call(void) {
    if (!current) return;
    fprintf(stderr, "%s(", current->name);
    for (int k = 0; k < current->count; ++k) {
        const Param* p = &current->params[k];
        fprintf(stderr, "%s%s ", k ? ", " : "", p->name);
        if (p->kind == P_INT)
            fprintf(stderr, "%lld", (long long)arguments[k].a.i);
        else if (p->kind == P_FLOAT || p->kind == P_DOUBLE)
            fprintf(stderr, "%g", p->kind == P_FLOAT ? (double)arguments[k].a.f : arguments[k].a.d);
        else if (p->kind == P_COMPLEX)
            fprintf(stderr, "...");
        else
            fprintf(stderr, "%p[%lld]", arguments[k].a.p, (long long)arguments[k].count);
    }
    fprintf(stderr, ")\n");
}

static _Noreturn void fault(const char* what, const char* where) {
    fprintf(stderr, "%s %s: ", what, where);
    describe_call();
    abort();
}

/* How many elements of each vector a call with these arguments needs. */
static void needs(const Function* f, const Value* v, int64_t* need) {
    memset(need, 0, kMostParams * sizeof *need);
    if (f->need) f->need(v, need);
}

static int64_t channels_of(const Function* f, const Value* v, int k) { return f->params[k].kind == P_ARRAYS ? v[k + 1].a.i : 1; }

/* All arguments but the record, from the input. The lengths of some vectors stand in others: they grow until all are long enough. */
static void prepare(const Function* f, Set* set, Value* v) {
    int64_t need[kMostParams];
    bool fits = true;
    for (int k = 0; k < f->count; ++k) {
        const Param* p = &f->params[k];
        set->vectors[k].used = false;
        if (p->kind == P_RECORD) continue;
        v[k] = (Value){0};
        if (p->kind == P_INT)
            v[k].a.i = integer(p);
        else if (p->kind == P_FLOAT)
            v[k].a.f = (float)number();
        else if (p->kind == P_DOUBLE)
            v[k].a.d = number();
        else if (p->kind == P_COMPLEX)
            fill((unsigned char*)&v[k].a, kSizes[p->element], p->element, byte());
        else if (p->kind == P_MADE && !seldom())
            v[k].a.p = &v[k].made;
    }
    generator = (uint64_t)word() << 8 | 1;
    for (bool grown = true; grown && fits;) {
        grown = false;
        needs(f, v, need);
        for (int k = 0; k < f->count && fits; ++k) {
            const Param* p = &f->params[k];
            if (!is_vector(p) || (set->vectors[k].used && need[k] <= v[k].count)) continue;
            const int64_t channels = channels_of(f, v, k), n = need[k] > 0 ? need[k] : 0;
            fits = channels <= kMostChannels && n <= kArena && (channels < 1 ? 1 : channels) * n * size_of(p) <= kArena - 8;
            if (!fits) break;
            const int64_t each = n * size_of(p);
            Vector* x = &set->vectors[k];
            place(x, (size_t)((channels < 1 ? 0 : channels) * each), byte());
            const bool positions = strcmp(p->name, "pNZTapPos") == 0 || strcmp(p->name, "pTable") == 0;
            const unsigned choice = byte();
            if (is_work(p))
                memset(x->data, (int)choice, x->bytes);
            else
                fill(x->data, x->bytes, p->element, positions && choice >= 32 ? 4 + choice % 2 : choice);
            v[k].a.p = x->data;
            if (p->kind == P_ARRAYS) {
                for (int64_t c = 0; c < channels; ++c) set->channels[c] = x->data + c * each;
                v[k].a.p = set->channels;
            }
            v[k].count = n;
            grown = true;
        }
    }
    bool destination = true; /* for one destination in an eighth of the calls: a source's place */
    for (int k = 0; k < f->count; ++k) {
        const Param* p = &f->params[k];
        if (!is_vector(p)) continue;
        if (!fits || (!(p->flags & REQUIRED) && seldom())) { /* vectors too long for the arenas: none */
            v[k].a.p = NULL;
            set->vectors[k].used = false;
        } else if (destination && p->kind == P_ARRAY && strncmp(p->name, "pDst", 4) == 0 && byte() >= 224) {
            destination = false;
            for (int j = 0; j < f->count; ++j) {
                const Param* q = &f->params[j];
                Vector* x = &set->vectors[j];
                if (q->kind != P_ARRAY || !(q->flags & SHARED) || (q->flags & WRITTEN) || !x->used || kSizes[q->element] < kSizes[p->element]) continue;
                const size_t bytes = set->vectors[k].bytes;
                if (x->bytes < bytes) {
                    place(x, bytes, byte());
                    fill(x->data, bytes, q->element, byte());
                    v[j].a.p = x->data;
                }
                x->shared = true;
                v[k].a.p = x->data;
                set->vectors[k].used = false;
                break;
            }
        }
    }
}

/* Whether the call could be made: where vectors do not fit and the function does not look for null pointers itself it cannot. */
static bool callable(const Function* f, const Value* v) {
    for (int k = 0; k < f->count; ++k)
        if (f->params[k].flags & REQUIRED && !v[k].a.p) return false;
    return true;
}

static int call(const Function* f, Set* set, Value* v) {
    Any result = {0};
    current = f;
    arguments = v;
    for (int k = 0; k < f->count; ++k)
        if (set->vectors[k].used) memcpy(set->vectors[k].before, set->vectors[k].data, set->vectors[k].bytes);
    ++calls_made;
    const unsigned control = _mm_getcsr() & ~0x3fu;
    f->call(f->f, v, &result);
    if ((_mm_getcsr() & ~0x3fu) != control) fault("changes the control word", "");
    const int status = f->result == R_STATUS ? (int)result.i : StatusOk;
    if (f->result == R_STATUS && strcmp(tevsGetStatusString((Status)status), "unknown status") == 0) fault("answers an unknown status", "");
    for (int k = 0; k < f->count; ++k) {
        const Param* p = &f->params[k];
        const Vector* x = &set->vectors[k];
        if (!x->used) continue;
        if (!intact(x)) fault("writes beside", p->name);
        const bool kept = status < 0 ? !is_work(p) : !(p->flags & WRITTEN) && !x->shared;
        if (kept && memcmp(x->before, x->data, x->bytes) != 0) fault(status < 0 ? "is refused, and writes" : "writes to", p->name);
    }
    if (f->result == R_MEMORY) tevsFree(result.p);
    return status;
}

/* ---- Records ------------------------------------------------------------------------------------------------------------------------------- */

typedef struct {
    short at[kFunctionCount];
    int count;
} List;
static List plain, makers[kKinds], users[kKinds], releases[kKinds];

static int record_parameter(const Function* f) {
    for (int k = 0; k < f->count; ++k)
        if (f->params[k].kind == P_RECORD || f->params[k].kind == P_MADE || f->params[k].kind == P_MADE_HERE) return k;
    return -1;
}

static void add(List* list, int at) { list->at[list->count++] = (short)at; }

static void sort_functions(void) {
    for (int i = 0; i < kFunctionCount; ++i) {
        const Function* f = &kFunctions[i];
        bool memory = false;
        for (int k = 0; k < f->count; ++k) memory |= f->params[k].kind == P_MEMORY;
        /* What sets the process's control word or threads, and what takes back memory. */
        if (memory || strncmp(f->name, "tev_", 4) == 0 || strcmp(f->name, "tevSetNumThreads") == 0) continue;
        const int k = record_parameter(f);
        if (k < 0)
            add(&plain, i);
        else if (f->params[k].kind != P_RECORD)
            add(&makers[f->params[k].element], i);
        else
            add(f->freeing ? &releases[f->params[k].element] : &users[f->params[k].element], i);
    }
}

static void use_record(void* record, const int32_t* dims, const Set* memory, int kind) {
    static uint32_t nothing[64];
    static Value v[kMostParams + 1];
    const Function* f = &kFunctions[users[kind].at[word() % (unsigned)users[kind].count]];
    const int r = record_parameter(f);
    const unsigned choice = byte();
    uint32_t* const identifier = record;
    v[r] = (Value){.a.p = choice == 255 ? NULL : choice == 254 ? nothing : record, .dims = dims};
    prepare(f, &call_set, v);
    if (!callable(f, v)) return;
    if (choice == 253) *identifier = ~*identifier; /* no record has such a one */
    if (call(f, &call_set, v) >= 0 && choice >= 253) fault("takes what is no record", "");
    if (choice == 253) *identifier = ~*identifier;
    for (int k = 0; k < kMostParams; ++k)
        if (memory->vectors[k].used && !intact(&memory->vectors[k])) fault("writes beside the record", "");
}

static void live_with_record(int kind) {
    static Value v[kMostParams + 1];
    int32_t dims[kDims] = {0};
    const Function* f = &kFunctions[makers[kind].at[word() % (unsigned)makers[kind].count]];
    const int m = record_parameter(f);
    prepare(f, &maker_set, v);
    if (!callable(f, v)) return;
    const int status = call(f, &maker_set, v);
    void* const record = f->params[m].kind == P_MADE ? v[m].made : v[m].a.p;
    if (status < 0) {
        /* A transform whose inner memory was refused leaves a record that only Free takes, or, where Free refuses it, the memory alone. */
        if (f->owned && record && kRecordKinds[kind].release(record) < 0) tevsFree(record);
        return;
    }
    if (!record) fault("makes no record", "");
    for (int k = 0; k < f->count; ++k)
        if (f->params[k].dim >= 0) dims[f->params[k].dim] = (int32_t)v[k].a.i;
    for (int n = 0; n < kMostCalls && left && users[kind].count; ++n) use_record(record, dims, &maker_set, kind);
    if (f->owned || (releases[kind].count && byte() % 2)) kRecordKinds[kind].release(record);
}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (!plain.count) {
        sort_functions();
        make_arenas(&maker_set);
        make_arenas(&call_set);
        tevSetNumThreads(1);
    }
    static Value v[kMostParams + 1];
    input = data;
    left = size;
    /* As many inputs go to records as their functions are of all. */
    const unsigned choice = word();
    if (choice % kFunctionCount >= (unsigned)plain.count) {
        int at = (int)(choice % kFunctionCount) - plain.count, kind = 0;
        for (; kind < kKinds - 1 && at >= makers[kind].count + users[kind].count + releases[kind].count; ++kind)
            at -= makers[kind].count + users[kind].count + releases[kind].count;
        live_with_record(kind);
        return 0;
    }
    const Function* f = &kFunctions[plain.at[choice % kFunctionCount]];
    prepare(f, &call_set, v);
    if (callable(f, v)) call(f, &call_set, v);
    return 0;
}
