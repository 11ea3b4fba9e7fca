/* tevs.raw: the C functions, one to one, over anything with a buffer (PEP 3118).
 *
 * functions.h, made by generate.py of the headers, says of every function what its arguments are, how long its vectors have to be, and how it is called. What is here
 * is the same for all: arguments are read and checked before the call, so that no array is written beyond its end, as another type, or while it is also read otherwise;
 * the interpreter lock is released in the call; a status below 0 becomes an exception.
 *
 * The stable ABI of Python 3.11 and the buffer protocol rather than NumPy's C interface: one binary serves all later Pythons and both NumPy 1 and 2.
 */
#define PY_SSIZE_T_CLEAN
#define Py_LIMITED_API 0x030B0000
#include <Python.h>
#include <limits.h>
#include <stddef.h>
#include <string.h>
#include <unistd.h>

#include "function_table.h"

enum { kMostDims = 64 };
typedef struct RecordObject {
    PyObject_HEAD void* record; /* null once closed */
    const RecordKind* kind;
    Py_buffer memory; /* of a record in the caller's memory */
    int owned, users;
    PyThread_type_lock lock; /* of the one call at a time that a filter's record serves */
    pid_t holder;
    int32_t dims[kMostDims];
} RecordObject;

_Static_assert((int)kDims <= (int)kMostDims, "a record remembers more integers than it has room for");

/* ---- Errors -------------------------------------------------------------------------------------------------------------------------- */

static PyObject *error_type, *record_type, *memory_type;

static PyObject* status_error(const char* function, int status) {
    if (status == StatusNoMemory) return PyErr_Format(PyExc_MemoryError, "%s: %s", function, tevsGetStatusString(status));
    PyObject* error = PyObject_CallFunction(error_type, "N", PyUnicode_FromFormat("%s: %s", function, tevsGetStatusString(status)));
    PyObject* number = PyLong_FromLong(status);
    PyObject* name = PyUnicode_FromString(function);
    if (error && number && name && PyObject_SetAttrString(error, "status", number) == 0 && PyObject_SetAttrString(error, "function", name) == 0)
        PyErr_SetObject(error_type, error);
    Py_XDECREF(error);
    Py_XDECREF(number);
    Py_XDECREF(name);
    return NULL;
}

/* ---- Records: what the library keeps between calls ------------------------------------------------------------------------------------- */

/* A filter's record waits for the call that another thread is in; a transform's is shared. False with an exception. */
static int record_acquire(RecordObject* self, const char* function, const char* parameter, int alone) {
    if (self->kind->shared && alone && self->users) {
        PyErr_Format(PyExc_ValueError, "%s: %s: the record is in use by another thread", function, parameter);
        return 0;
    }
    if (!self->kind->shared && !PyThread_acquire_lock(self->lock, NOWAIT_LOCK)) {
        if (self->holder != getpid()) {
            PyErr_Format(PyExc_ValueError, "%s: %s: the record was in use by another thread when this process was forked", function, parameter);
            return 0;
        }
        Py_BEGIN_ALLOW_THREADS;
        PyThread_acquire_lock(self->lock, WAIT_LOCK);
        Py_END_ALLOW_THREADS;
    }
    if (!self->record) {
        if (!self->kind->shared) PyThread_release_lock(self->lock);
        PyErr_Format(PyExc_ValueError, "%s: %s: the record is closed", function, parameter);
        return 0;
    }
    self->holder = getpid();
    ++self->users;
    return 1;
}

static void record_release(RecordObject* self) {
    --self->users;
    if (!self->kind->shared) PyThread_release_lock(self->lock);
}

/* What is left of a record after its end. */
static void record_end(RecordObject* self) {
    self->record = NULL;
    PyBuffer_Release(&self->memory);
}

static RecordObject* record_new(const RecordKind* kind) {
    RecordObject* self = PyObject_New(RecordObject, (PyTypeObject*)record_type);
    if (!self) return NULL;
    memset((char*)self + offsetof(RecordObject, record), 0, sizeof *self - offsetof(RecordObject, record));
    self->kind = kind;
    if (!(self->lock = PyThread_allocate_lock())) {
        Py_DECREF(self);
        PyErr_NoMemory();
        return NULL;
    }
    return self;
}

static void record_dealloc(PyObject* object) {
    RecordObject* self = (RecordObject*)object;
    PyTypeObject* type = Py_TYPE(object);
    if (self->record && self->owned) self->kind->release(self->record);
    record_end(self);
    if (self->lock) PyThread_free_lock(self->lock);
    PyObject_Free(self);
    Py_DECREF(type);
}

static PyObject* record_close(PyObject* object, PyObject* unused) {
    (void)unused;
    RecordObject* self = (RecordObject*)object;
    if (!self->record) Py_RETURN_NONE;
    if (!record_acquire(self, "close", self->kind->name, 1)) return NULL;
    if (self->owned) self->kind->release(self->record);
    record_end(self);
    record_release(self);
    Py_RETURN_NONE;
}

static PyObject* record_enter(PyObject* self, PyObject* unused) {
    (void)unused;
    return Py_NewRef(self);
}

static PyObject* record_exit(PyObject* self, PyObject* arguments) {
    (void)arguments;
    return record_close(self, NULL);
}

static PyObject* record_kind(PyObject* self, void* unused) {
    (void)unused;
    return PyUnicode_FromString(((RecordObject*)self)->kind->name);
}

static PyObject* record_closed(PyObject* self, void* unused) {
    (void)unused;
    return PyBool_FromLong(!((RecordObject*)self)->record);
}

static PyObject* record_parameters(PyObject* self, void* unused) {
    (void)unused;
    PyObject* dict = PyDict_New();
    for (int k = 0; dict && k < kDims; ++k) {
        const int value = ((RecordObject*)self)->dims[k];
        PyObject* number = value ? PyLong_FromLong(value) : NULL;
        if (number) PyDict_SetItemString(dict, kDimNames[k], number);
        Py_XDECREF(number);
    }
    return dict;
}

static PyObject* record_repr(PyObject* object) {
    const RecordObject* self = (RecordObject*)object;
    return PyUnicode_FromFormat("<tevs.raw.Record %s%s>", self->kind->name, self->record ? "" : ", closed");
}

static PyMethodDef record_methods[] = {
    {"close", record_close, METH_NOARGS, "close($self, /)\n--\n\nGives the record's memory back. A closed record is refused by every call."},
    {"__enter__", record_enter, METH_NOARGS, NULL},
    {"__exit__", record_exit, METH_VARARGS, NULL},
    {0}};
static PyGetSetDef record_getset[] = {{"kind", record_kind, NULL, "The record's type in C.", NULL},
                                      {"closed", record_closed, NULL, "Whether the record is closed.", NULL},
                                      {"parameters", record_parameters, NULL, "The integers other than 0 that it was built with.", NULL},
                                      {0}};
static PyType_Slot record_slots[] = {{Py_tp_dealloc, record_dealloc},
                                     {Py_tp_repr, record_repr},
                                     {Py_tp_methods, record_methods},
                                     {Py_tp_getset, record_getset},
                                     {Py_tp_doc, "What the library keeps between calls: tables of a transform, state of a filter. Made by the Init functions."},
                                     {0, NULL}};
static PyType_Spec record_spec = {"tevs.raw.Record", sizeof(RecordObject), 0, Py_TPFLAGS_DEFAULT | Py_TPFLAGS_DISALLOW_INSTANTIATION, record_slots};

/* ---- Memory of tevsMalloc -------------------------------------------------------------------------------------------------------------- */

typedef struct {
    PyObject_HEAD void* address;
    Py_ssize_t length, size;
    int exports;
    Element element;
} MemoryObject;

static void memory_dealloc(PyObject* object) {
    PyTypeObject* type = Py_TYPE(object);
    tevsFree(((MemoryObject*)object)->address);
    PyObject_Free(object);
    Py_DECREF(type);
}

static int memory_getbuffer(PyObject* object, Py_buffer* view, int flags) {
    MemoryObject* self = (MemoryObject*)object;
    if (!self->address) {
        view->obj = NULL;
        PyErr_SetString(PyExc_ValueError, "the memory is freed");
        return -1;
    }
    self->size = kElements[self->element].size;
    *view = (Py_buffer){.buf = self->address,
                        .obj = Py_NewRef(object),
                        .len = self->length * self->size,
                        .itemsize = self->size,
                        .ndim = 1,
                        .format = flags & PyBUF_FORMAT ? (char*)kElements[self->element].formats[0] : NULL,
                        .shape = flags & PyBUF_ND ? &self->length : NULL,
                        .strides = (flags & PyBUF_STRIDES) == PyBUF_STRIDES ? &self->size : NULL};
    ++self->exports;
    return 0;
}

static void memory_releasebuffer(PyObject* object, Py_buffer* view) {
    (void)view;
    --((MemoryObject*)object)->exports;
}

static Py_ssize_t memory_length(PyObject* object) { return ((MemoryObject*)object)->length; }

static PyType_Slot memory_slots[] = {{Py_tp_dealloc, memory_dealloc},
                                     {Py_bf_getbuffer, memory_getbuffer},
                                     {Py_bf_releasebuffer, memory_releasebuffer},
                                     {Py_sq_length, memory_length},
                                     {Py_tp_doc, "Aligned memory of the library, from the Malloc functions; numpy.asarray makes an array of it."},
                                     {0, NULL}};
static PyType_Spec memory_spec = {"tevs.raw.Memory", sizeof(MemoryObject), 0, Py_TPFLAGS_DEFAULT | Py_TPFLAGS_DISALLOW_INSTANTIATION, memory_slots};

/* ---- Arguments ------------------------------------------------------------------------------------------------------------------------- */

typedef struct {
    Py_buffer* views; /* of a vector of vectors */
    void** pointers;
    Py_ssize_t count;
} Arrays;

/* A view of the object as a vector of such elements, contiguous and, to write it, writable. */
static int read_array(const Function* f, const Param* p, PyObject* object, Py_buffer* view) {
    const char* name = kElements[p->element].name;
    if (PyObject_GetBuffer(object, view, PyBUF_STRIDES | PyBUF_FORMAT) != 0) {
        view->obj = NULL;
        PyErr_Clear();
        PyErr_Format(PyExc_TypeError, "%s: %s: needs an array of %s, not %R", f->name, p->name, name, Py_TYPE(object));
        return 0;
    }
    const char* format = view->format ? view->format : "B";
    if (*format == '@' || *format == '=' || *format == '<') ++format;
    int known = view->itemsize == kElements[p->element].size;
    if (known) {
        known = 0;
        for (int k = 0; k < 3 && kElements[p->element].formats[k]; ++k) known |= strcmp(format, kElements[p->element].formats[k]) == 0;
    }
    if (!known) {
        const char* found = NULL;
        for (size_t e = 0; e < sizeof kElements / sizeof *kElements; ++e)
            for (int k = 0; k < 3 && !found && kElements[e].formats[k]; ++k)
                if (strcmp(format, kElements[e].formats[k]) == 0) found = kElements[e].name;
        PyErr_Format(PyExc_TypeError, "%s: %s: needs an array of %s, not of %s%s", f->name, p->name, name, found ? found : "format ",
                     found ? "" : view->format);
        return 0;
    }
    if (!PyBuffer_IsContiguous(view, 'C')) {
        PyErr_Format(PyExc_ValueError, "%s: %s: the array is not contiguous", f->name, p->name);
        return 0;
    }
    if ((p->flags & WRITTEN) && view->readonly) {
        PyErr_Format(PyExc_ValueError, "%s: %s: the array is read-only", f->name, p->name);
        return 0;
    }
    return 1;
}

static int read_integer(const Function* f, const Param* p, PyObject* object, int64_t* value) {
    static const struct {
        int64_t low, high;
    } kRanges[] = {[I8] = {INT8_MIN, INT8_MAX},    [U8] = {0, UINT8_MAX},   [I16] = {INT16_MIN, INT16_MAX}, [U16] = {0, UINT16_MAX},
                   [I32] = {INT32_MIN, INT32_MAX}, [U32] = {0, UINT32_MAX}, [I64] = {INT64_MIN, INT64_MAX}, [U64] = {0, INT64_MAX}};
    int overflow = 0;
    PyObject* number = PyNumber_Index(object);
    if (!number) {
        PyErr_Clear();
        PyErr_Format(PyExc_TypeError, "%s: %s: needs an integer, not %R", f->name, p->name, Py_TYPE(object));
        return 0;
    }
    *value = PyLong_AsLongLongAndOverflow(number, &overflow);
    Py_DECREF(number);
    if (overflow || *value < kRanges[p->element].low || *value > kRanges[p->element].high) {
        PyErr_Format(PyExc_ValueError, "%s: %s: %R does not fit in %s", f->name, p->name, object, kElements[p->element].name);
        return 0;
    }
    return 1;
}

static int read_number(const Function* f, const Param* p, PyObject* object, double* value) {
    *value = PyFloat_AsDouble(object);
    if (*value != -1 || !PyErr_Occurred()) return 1;
    PyErr_Clear();
    PyErr_Format(PyExc_TypeError, "%s: %s: needs a number, not %R", f->name, p->name, Py_TYPE(object));
    return 0;
}

/* Complex floats from whatever complex() takes, complex integers from it or from two integers. */
static int read_complex(const Function* f, const Param* p, PyObject* object, Any* a) {
    const int whole = p->element >= C8 && p->element <= C64;
    double re, im;
    if (whole && !PyComplex_Check(object) && PySequence_Check(object) && PySequence_Size(object) == 2) {
        static const Element parts[] = {[C8] = I8, [C16] = I16, [C32] = I32, [C64] = I64};
        const Param part = {p->name, P_INT, parts[p->element], 0, -1};
        int64_t n[2];
        for (int k = 0; k < 2; ++k) {
            PyObject* item = PySequence_GetItem(object, k);
            const int good = item && read_integer(f, &part, item, &n[k]);
            Py_XDECREF(item);
            if (!good) return 0;
        }
        switch (p->element) {
            case C8:
                a->c8 = (Complex8s){(int8_t)n[0], (int8_t)n[1]};
                break;
            case C16:
                a->c16 = (Complex16s){(int16_t)n[0], (int16_t)n[1]};
                break;
            case C32:
                a->c32 = (Complex32s){(int32_t)n[0], (int32_t)n[1]};
                break;
            default:
                a->c64 = (Complex64s){n[0], n[1]};
        }
        return 1;
    }
    PyObject* number = whole ? NULL : PyObject_CallFunctionObjArgs((PyObject*)&PyComplex_Type, object, NULL);
    if (!number) {
        PyErr_Clear();
        PyErr_Format(PyExc_TypeError, "%s: %s: needs %s, not %R", f->name, p->name, whole ? "two integers (re, im)" : "a complex number", Py_TYPE(object));
        return 0;
    }
    re = PyComplex_RealAsDouble(number);
    im = PyComplex_ImagAsDouble(number);
    Py_DECREF(number);
    if (p->element == CF32)
        a->cf32 = (Complex32f){(float)re, (float)im};
    else
        a->cf64 = (Complex64f){re, im};
    return 1;
}

static int read_arrays(const Function* f, const Param* p, PyObject* object, Arrays* arrays, Value* value) {
    const Py_ssize_t count = PySequence_Check(object) ? PySequence_Size(object) : -1;
    if (count < 0) {
        PyErr_Clear();
        PyErr_Format(PyExc_TypeError, "%s: %s: needs a sequence of arrays, not %R", f->name, p->name, Py_TYPE(object));
        return 0;
    }
    arrays->views = PyMem_Malloc((size_t)(count + 1) * sizeof *arrays->views);
    arrays->pointers = PyMem_Malloc((size_t)(count + 1) * sizeof *arrays->pointers);
    if (!arrays->views || !arrays->pointers) {
        PyErr_NoMemory();
        return 0;
    }
    for (; arrays->count < count; ++arrays->count) {
        Py_buffer* view = &arrays->views[arrays->count];
        PyObject* item = PySequence_GetItem(object, arrays->count);
        const int good = item && read_array(f, p, item, view);
        Py_XDECREF(item);
        if (!good) {
            if (item && view->obj) PyBuffer_Release(view);
            return 0;
        }
        arrays->pointers[arrays->count] = view->buf;
    }
    value->a.p = arrays->pointers;
    value->count = count;
    return 1;
}

/* The bytes that a call touches. */
typedef struct {
    const char *begin, *end;
    const Param* param;
} Extent;

static int check_overlap(const Function* f, const Extent* extents, int count) {
    for (int w = 0; w < count; ++w) {
        if (!(extents[w].param->flags & WRITTEN)) continue;
        for (int r = 0; r < count; ++r) {
            const Extent *a = &extents[w], *b = &extents[r];
            if (r == w || (b->param->flags & WRITTEN && r < w) || a->begin >= b->end || b->begin >= a->end) continue;
            if (b->param->flags & ANYHOW) continue;
            const int both = (b->param->flags & WRITTEN) != 0;
            if (!both && a->begin == b->begin && (b->param->flags & SHARED) && kElements[a->param->element].size <= kElements[b->param->element].size) continue;
            PyErr_Format(PyExc_ValueError, "%s: %s: the array overlaps %s", f->name, a->param->name, b->param->name);
            return 0;
        }
    }
    return 1;
}

/* Lengths of all vectors, and what they share. `need` in elements. */
static int check_vectors(const Function* f, Value* v, const Arrays* arrays, const int64_t* need) {
    Extent few[kMostParams], *extents = few;
    int count = 0, good = 1;
    for (int k = 0; k < f->count; ++k) count += f->params[k].kind == P_ARRAYS ? (int)arrays->count : 1;
    if (count > kMostParams && !(extents = PyMem_Malloc((size_t)count * sizeof *extents))) {
        PyErr_NoMemory();
        return 0;
    }
    count = 0;
    for (int k = 0; good && k < f->count; ++k) {
        const Param* p = &f->params[k];
        const int64_t n = need[k] > 0 ? need[k] : 0;
        if (p->kind == P_ARRAYS && v[k].a.p) {
            if (arrays->count < v[k + 1].a.i) {
                PyErr_Format(PyExc_ValueError, "%s: %s: %zd arrays, needs %lld", f->name, p->name, arrays->count, (long long)v[k + 1].a.i);
                good = 0;
            }
            for (Py_ssize_t c = 0; good && c < v[k + 1].a.i; ++c) {
                const Py_buffer* view = &arrays->views[c];
                if (view->len / view->itemsize < n) {
                    PyErr_Format(PyExc_ValueError, "%s: %s: array %zd has %zd elements, needs %lld", f->name, p->name, c, view->len / view->itemsize,
                                 (long long)n);
                    good = 0;
                }
                extents[count++] = (Extent){view->buf, (char*)view->buf + n * view->itemsize, p};
            }
        } else if ((p->kind == P_ARRAY || p->kind == P_MADE_HERE) && v[k].a.p) {
            if (v[k].count < n) {
                PyErr_Format(PyExc_ValueError, "%s: %s: the array has %lld elements, needs %lld", f->name, p->name, (long long)v[k].count, (long long)n);
                good = 0;
            }
            const int size = p->kind == P_MADE_HERE ? 1 : kElements[p->element].size;
            extents[count++] = (Extent){v[k].a.p, (char*)v[k].a.p + n * size, p};
        }
    }
    good = good && check_overlap(f, extents, count);
    if (extents != few) PyMem_Free(extents);
    return good;
}

/* ---- The call --------------------------------------------------------------------------------------------------------------------------- */

static PyObject* returned(const Function* f, const Any* result) {
    switch ((Result)f->result) {
        case R_VOID:
            Py_RETURN_NONE;
        case R_TEXT:
            return PyUnicode_FromString(result->p);
        case R_VERSION: {
            const LibraryVersion* version = result->p;
            return Py_BuildValue("{si si si si ss# ss ss ss}", "major", version->major, "minor", version->minor, "majorBuild", version->majorBuild, "build",
                                 version->build, "targetCpu", version->targetCpu, (Py_ssize_t)strnlen(version->targetCpu, sizeof version->targetCpu), "name",
                                 version->name, "version", version->version, "buildDate", version->buildDate);
        }
        default:
            return PyLong_FromLongLong(result->i);
    }
}

static PyObject* call(PyObject* self, PyObject* const* arguments, Py_ssize_t count) {
    const Function* f = PyCapsule_GetPointer(self, NULL);
    if (count != f->arguments) return PyErr_Format(PyExc_TypeError, "%s: takes %d arguments, not %zd", f->name, f->arguments, count);

    Value v[kMostParams + 1];
    Py_buffer views[kMostParams];
    int64_t need[kMostParams] = {0};
    Arrays arrays = {0};
    Any result = {0};
    RecordObject *held = NULL, *made = NULL;
    MemoryObject* memory = NULL;
    PyObject* value = NULL;
    int viewed = 0, taken = 0; /* views[0 .. viewed-1] are to be released where they have an object */

    for (int k = 0; k < f->count; ++k) {
        const Param* p = &f->params[k];
        v[k] = (Value){0};
        views[k].obj = NULL;
        ++viewed;
        if (p->kind == P_MADE) {
            v[k].a.p = &v[k].made;
            continue;
        }
        PyObject* object = arguments[taken++];
        int good = 1;
        switch ((Kind)p->kind) {
            case P_INT:
                good = read_integer(f, p, object, &v[k].a.i);
                break;
            case P_DOUBLE:
                good = read_number(f, p, object, &v[k].a.d);
                break;
            case P_FLOAT: {
                double number;
                good = read_number(f, p, object, &number);
                if (good) v[k].a.f = (float)number;
                break;
            }
            case P_COMPLEX:
                good = read_complex(f, p, object, &v[k].a);
                break;
            case P_RECORD:
                if (object == Py_None) break;
                if (Py_TYPE(object) != (PyTypeObject*)record_type || ((RecordObject*)object)->kind != &kRecordKinds[p->element]) {
                    if (Py_TYPE(object) == (PyTypeObject*)record_type)
                        PyErr_Format(PyExc_TypeError, "%s: %s: needs a %s, not a %s", f->name, p->name, kRecordKinds[p->element].name,
                                     ((RecordObject*)object)->kind->name);
                    else
                        PyErr_Format(PyExc_TypeError, "%s: %s: needs a %s, not %R", f->name, p->name, kRecordKinds[p->element].name, Py_TYPE(object));
                    good = 0;
                    break;
                }
                v[k].record = (RecordObject*)object;
                good = record_acquire(v[k].record, f->name, p->name, f->freeing);
                if (good) {
                    held = v[k].record;
                    v[k].a.p = held->record;
                    v[k].dims = held->dims;
                }
                break;
            case P_MEMORY:
                if (object == Py_None) break;
                if (Py_TYPE(object) != (PyTypeObject*)memory_type) {
                    PyErr_Format(PyExc_TypeError, "%s: %s: needs the memory of a Malloc function, not %R", f->name, p->name, Py_TYPE(object));
                    good = 0;
                } else if (((MemoryObject*)object)->exports) {
                    PyErr_Format(PyExc_ValueError, "%s: %s: an array still uses the memory", f->name, p->name);
                    good = 0;
                } else {
                    memory = (MemoryObject*)object;
                    v[k].a.p = memory->address;
                }
                break;
            case P_ARRAYS:
                if (object != Py_None) good = read_arrays(f, p, object, &arrays, &v[k]);
                break;
            default: /* P_ARRAY, P_MADE_HERE */
                if (object == Py_None) {
                    if ((good = !(p->flags & REQUIRED)) == 0) PyErr_Format(PyExc_TypeError, "%s: %s: needs an array, not None", f->name, p->name);
                    break;
                }
                {
                    Param bytes = *p;
                    if (p->kind == P_MADE_HERE) bytes.element = U8;
                    good = read_array(f, &bytes, object, &views[k]);
                }
                if (good) {
                    v[k].a.p = views[k].buf;
                    v[k].count = views[k].len / views[k].itemsize;
                    if (!v[k].a.p) v[k].a.p = (void*)1; /* an empty array is none that is missing; nothing of it is touched */
                }
        }
        if (!good) goto done;
    }
    if (f->need) f->need(v, need);
    if (f->need && !check_vectors(f, v, &arrays, need)) goto done;

    const Param* maker = NULL;
    int m = 0;
    for (int k = 0; k < f->count; ++k)
        if (f->params[k].kind == P_MADE || f->params[k].kind == P_MADE_HERE) maker = &f->params[m = k];
    if (maker && !(made = record_new(&kRecordKinds[maker->element]))) goto done;
    if (f->result == R_MEMORY) {
        if (!(memory = PyObject_New(MemoryObject, (PyTypeObject*)memory_type))) goto done;
        memory->exports = 0;
    }

    /* What is about to be freed nobody else begins with while the lock is released. */
    void* const freed = f->freeing && held ? held->record : NULL;
    if (freed) held->record = NULL;
    if (memory) memory->address = NULL;

    Py_BEGIN_ALLOW_THREADS;
    f->call(f->f, v, &result);
    Py_END_ALLOW_THREADS;

    if (f->result == R_STATUS && (int)result.i < 0) {
        if (freed) held->record = freed;
        /* A transform whose inner memory was refused leaves a record that only Free takes, or, where Free refuses it, the memory alone. */
        if (made && f->owned && v[m].made && made->kind->release(v[m].made) < 0) tevsFree(v[m].made);
        status_error(f->name, (int)result.i);
    } else if (maker) {
        made->record = maker->kind == P_MADE ? v[m].made : v[m].a.p;
        made->owned = f->owned;
        for (int k = 0; k < f->count; ++k) {
            const Param* p = &f->params[k];
            if (p->dim >= 0) made->dims[p->dim] = (int32_t)v[k].a.i;
            if (!f->owned && p->kind != P_MADE && (strcmp(p->name, "pBuffer") == 0 || strcmp(p->name, "pMemSpec") == 0 || p->kind == P_MADE_HERE)) {
                made->memory = views[k];
                views[k].obj = NULL;
            }
        }
        value = Py_NewRef((PyObject*)made);
    } else if (f->result == R_MEMORY) {
        memory->address = result.p;
        memory->element = f->element;
        memory->length = (Py_ssize_t)v[0].a.i;
        value = result.p ? Py_NewRef((PyObject*)memory) : v[0].a.i < 1 ? status_error(f->name, StatusBadSize) : PyErr_NoMemory();
    } else {
        if (freed) record_end(held);
        value = f->result == R_STATUS ? PyLong_FromLong((long)(int)result.i) : returned(f, &result);
    }

done:
    if (held) record_release(held);
    for (int k = 0; k < viewed; ++k)
        if (views[k].obj) PyBuffer_Release(&views[k]);
    for (Py_ssize_t c = 0; c < arrays.count; ++c) PyBuffer_Release(&arrays.views[c]);
    PyMem_Free(arrays.views);
    PyMem_Free(arrays.pointers);
    Py_XDECREF((PyObject*)made);
    if (f->result == R_MEMORY) Py_XDECREF((PyObject*)memory);
    return value;
}

/* ---- The module ---------------------------------------------------------------------------------------------------------------------------- */

static PyMethodDef methods[sizeof kFunctions / sizeof *kFunctions];

static int add(PyObject* module, const char* name, PyObject* value) {
    const int status = value ? PyModule_AddObjectRef(module, name, value) : -1;
    Py_XDECREF(value);
    return status;
}

static int fill(PyObject* module) {
    PyObject* name = PyModule_GetNameObject(module);
    if (!name) return -1;
    for (size_t k = 0; k < sizeof kFunctions / sizeof *kFunctions; ++k) {
        const Function* f = &kFunctions[k];
        methods[k] = (PyMethodDef){f->name, (PyCFunction)(void (*)(void))call, METH_FASTCALL, f->doc};
        PyObject* capsule = PyCapsule_New((void*)f, NULL, NULL);
        if (!capsule || add(module, f->name, PyCFunction_NewEx(&methods[k], capsule, name)) != 0) return -1;
        Py_DECREF(capsule);
    }
    Py_DECREF(name);
    for (size_t k = 0; k < sizeof kConstants / sizeof *kConstants; ++k)
        if (PyModule_AddIntConstant(module, kConstants[k].name, kConstants[k].value) != 0) return -1;
    if (add(module, "tevConstantOfNAN_32f", PyFloat_FromDouble(tevConstantOfNAN_32f)) ||
        add(module, "tevConstantOfNAN_64f", PyFloat_FromDouble(tevConstantOfNAN_64f)) ||
        add(module, "tevConstantOfINF_32f", PyFloat_FromDouble(tevConstantOfINF_32f)) ||
        add(module, "tevConstantOfINF_64f", PyFloat_FromDouble(tevConstantOfINF_64f)))
        return -1;
    error_type = PyErr_NewExceptionWithDoc(
        "tevs.raw.Error", "A call that the library refused: nothing was written. `status` is its number, `function` the C function.", PyExc_ValueError, NULL);
    record_type = PyType_FromSpec(&record_spec);
    memory_type = PyType_FromSpec(&memory_spec);
    if (!error_type || !record_type || !memory_type) return -1;
    return PyModule_AddObjectRef(module, "Error", error_type) || PyModule_AddObjectRef(module, "Record", record_type) ||
                   PyModule_AddObjectRef(module, "Memory", memory_type)
               ? -1
               : 0;
}

static struct PyModuleDef definition = {
    PyModuleDef_HEAD_INIT, .m_name = "tevs.raw", .m_size = -1,
    .m_doc =
        "The C functions, one to one.\n\n"
        "A vector is any object with a buffer: a NumPy array, contiguous, of exactly the type that the function takes, and long enough; None is the null\n"
        "pointer. Complex integers are of dtype [('re', 'i2'), ('im', 'i2')] (tevs.complex_int16 and so on). Lengths are arguments as in C. Init functions\n"
        "return the Record that they make; the others return their status, 0 or a warning above 0. An error is raised as Error (a ValueError), of memory\n"
        "as MemoryError, and wrong arrays as TypeError or ValueError, before anything is written."};

PyMODINIT_FUNC PyInit_raw(void) {
    PyObject* module = PyModule_Create(&definition);
    if (module && fill(module) != 0) {
        Py_DECREF(module);
        return NULL;
    }
    return module;
}
