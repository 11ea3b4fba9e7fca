#!/usr/bin/env python3
"""cpp_header.py HEADERS OUTPUT: writes tevs.hpp, the C++20 interface, from the C headers in HEADERS/tevs.

A C name is tevs, an operation, and then types and suffixes that tell its forms apart; in C++ the types of the arguments do that, and all forms of an operation
overload one name: tevsAdd_32f, tevsAdd_32f_I, tevsAdd_16s_Sfs are tevs::add, tevsFFTFwd_CToC_32fc is tevs::fftFwdCToC. Vectors whose length is an argument of its
own become spans. Forms that the arguments do not tell apart keep the types in their name.
"""
import collections
import pathlib
import re
import sys

PROTOTYPE = re.compile(r"^([A-Za-z_]\w*(?: \w+)*?[ *]+)(tev\w+)\(([^()]*)\);", re.M)
CODE = r"(?:1u|8u|8s|8sc|16u|16s|16sc|16f|24u|24s|32u|32s|32sc|32f|32fc|64u|64s|64sc|64f|64fc)"
SUFFIXES = {"I", "Sfs", "ISfs"}
KEYWORDS = {"and", "or", "xor", "not"}
# Samples that C++ has no type for: their vectors are of bytes or words of another type, and their lengths are no number of those.
UNTYPED = re.compile(r"24[us]|16f|1u")
# The vectors that a length counts; of len those before it that no other length counts.
COUNTED = {"len": "p", "length": "p", "srcLen": "pSrc", "dstLen": "pDst", "tapsLen": "pTaps", "len1": "pSrc1", "len2": "pSrc2", "tableLen": "pTable",
           "tapsLenLow": "pTapsLow", "tapsLenHigh": "pTapsHigh", "nzTapsLen": "pNZTap", "patternLen": "pPattern"}
# Functions in which len does not count the elements of every vector before it.
UNEVEN = {"upFactor", "maskSize", "nChannels", "srcBitOffset", "dstBitOffset", "dim", "levels"}
# What a call finds out, where it is all that the call writes.
RESULTS = {"pSum", "pMean", "pStdDev", "pNorm", "pDp", "pMin", "pMax", "pMinAbs", "pMaxAbs", "pSize", "pResult", "pOrder"}


class Parameter:
    def __init__(self, text):
        self.type, self.name = re.fullmatch(r"(.*?[ *])(\w+)", text.strip()).groups()
        self.type = self.type.strip()
        self.pointer = self.type.count("*")
        self.element = self.type.replace("const", "").replace("*", "").strip()
        self.record = re.search(r"(State|Spec)(_|\d|$)", self.element) is not None
        self.written = self.pointer == 1 and not self.type.startswith("const")
        self.span = False

    def declared(self):
        if self.span:
            return f"std::span<{self.type[:-1].rstrip()}> {self.name}"
        return f"{self.type} {self.name}"


class Function:
    def __init__(self, result, name, parameters):
        self.result, self.name = result.strip(), name
        self.parameters = [] if parameters.strip() in ("", "void") else [Parameter(p) for p in parameters.split(",")]
        self.operation, self.types = self.split()
        self.lengths = {}   # of a length parameter: the spans that it counts
        if not UNTYPED.search(self.types):
            self.find_spans()

    def split(self):
        tokens = self.name[len("tevs"):].split("_")
        operation, types = [], []
        for i, token in enumerate(tokens):
            attached = re.fullmatch(rf"(\d*[A-Za-z]\w*?)((?:{CODE})+)", token) if i == 0 else None
            if i and re.fullmatch(rf"(?:{CODE})+", token):
                types.append(token)
            elif token in SUFFIXES:
                continue
            elif attached:
                operation.append(attached[1])
                types.append(attached[2])
            else:
                operation.append(token)
        self.stem = "_".join(operation)   # as the manual writes it
        word = "".join(operation)
        word = re.sub(r"^10Log10", "Log10Times10", word)
        head = re.match(r"[A-Z]+(?=[A-Z][a-z]|$|\d)|[A-Z]", word)[0]   # an acronym, or a letter
        word = head.lower() + word[len(head):]
        return word + ("_" if word in KEYWORDS else ""), "_".join(types)

    def find_spans(self):
        if any(p.name in UNEVEN for p in self.parameters):
            return
        waiting = []
        for p in self.parameters:
            if p.pointer == 1 and not p.record and p.element != "void":
                waiting.append(p)
            elif p.type == "int" and p.name in COUNTED and waiting:
                counted = [q for q in waiting if q.name.startswith(COUNTED[p.name]) and not q.name.startswith("pDlyLine")]
                if counted:
                    self.lengths[p.name] = counted
                    for q in counted:
                        q.span = True
                waiting = [q for q in waiting if not q.span]

    def arguments(self):
        """Of the C++ function: lengths that spans tell are left out."""
        return [p for p in self.parameters if p.name not in self.lengths]

    def signature(self, alias=None, less=None):
        """What overloads differ in: records are the same where one is another's alias."""
        types = [p.declared().rsplit(" ", 1)[0] for p in self.arguments() if p is not less]
        return self.operation, tuple(re.sub(r"\w+", lambda m: (alias or {}).get(m[0], m[0]), t) for t in types)

    def call(self, replaced=()):
        replaced = dict(replaced)
        checks, values = [], []
        for p in self.parameters:
            if p.name in self.lengths:
                spans = ", ".join(q.name for q in self.lengths[p.name])
                values.append(f"detail::length({spans})")
            elif p.name in replaced:
                values.append(replaced[p.name])
            else:
                values.append(p.name + ".data()" if p.span else p.name)
        return f'{self.name}({", ".join(values)})'

    def result_parameter(self):
        written = [p for p in self.parameters if p.written and not p.record]
        if len(written) == 1 and written[0].name in RESULTS and not written[0].span:
            return written[0]
        return None


def functions_of(text):
    """The functions that a piece of a header declares, as (result, name, parameters)."""
    return PROTOTYPE.findall(re.sub(r"\n[ \t]+", " ", re.sub(r"/\*.*?\*/", "", text, flags=re.S)))


def read_header(path):
    """Its functions as (result, name, parameters), and the aliases of its types."""
    text = path.read_text()
    return functions_of(text), re.findall(r"^typedef (\w+) (\w+);", text, flags=re.M)


def declared(parameters):
    return ", ".join(p.declared() for p in parameters)


def emit(f, returns):
    """Its C++ form, and where `returns` another one that returns what the call finds out."""
    arguments = f.arguments()
    first = arguments[0] if arguments else None
    if "InitAlloc" in f.operation and first.pointer == 2:
        return (f"template <std::same_as<{first.element}> R> Record<R> {f.operation}({declared(arguments[1:])}) {{\n"
                f"    R* record = nullptr;\n"
                f"    const Status status = detail::checked({f.call([(first.name, '&record')])}, \"{f.name}\");\n"
                f"    return Record<R>(record, status);\n}}")
    text = f"inline Status {f.operation}({declared(arguments)}) {{ return detail::checked({f.call()}, \"{f.name}\"); }}"
    if returns:
        value = f.result_parameter()
        text += (f"\n#if TEVS_EXCEPTIONS\ninline {value.element} {f.operation}({declared([p for p in arguments if p is not value])}) {{\n"
                 f"    {value.element} {value.name}{{}};\n"
                 f"    detail::checked({f.call([(value.name, '&' + value.name)])}, \"{f.name}\");\n    return {value.name};\n}}\n#endif")
    return text


PREAMBLE = """\
// The C++20 interface: overloads by sample type over spans, records that release themselves, errors as exceptions or as values.
//
// A vector is a std::span, and its length with it: where several vectors have one length in C, spans of other lengths give StatusBadSize. What the C function says of
// arguments, statuses, places and threads holds here too; tevs.h is the manual. A call costs what the C call costs.
//
//     std::vector<float> taps = ..., x = ..., y(x.size());
//     auto fir = tevs::firInitAlloc<FIRState_32f>(taps, nullptr);
//     tevs::fir(x.data(), y.data(), int(x.size()), fir);
//     tevs::mulC(0.5f, std::span(y));                               // in place
//     double level = tevs::normL2(std::span<const float>(y));
//
// Errors: a status below 0 is thrown as tevs::Error, warnings are returned. Where exceptions are off (or TEVS_EXCEPTIONS is defined as 0) every status is returned,
// and a Record that could not be built is empty and has the status.
#ifndef TEVS_HPP
#define TEVS_HPP

#include <cstddef>
#include <cstdint>
#include <concepts>
#include <limits>
#include <span>
#include <type_traits>
#include <utility>

#include "tevs.h"

#ifndef TEVS_EXCEPTIONS
#ifdef __cpp_exceptions
#define TEVS_EXCEPTIONS 1
#else
#define TEVS_EXCEPTIONS 0
#endif
#endif
#if TEVS_EXCEPTIONS
#include <exception>
#endif

#pragma push_macro("Status")
#undef Status

namespace tevs {

#if TEVS_EXCEPTIONS
class Error : public std::exception {
public:
    Error(Status status, const char* function) : status_(status), function_(function) {}
    const char* what() const noexcept override { return tevsGetStatusString(status_); }
    Status status() const noexcept { return status_; }
    const char* function() const noexcept { return function_; }   // the C function that refused

private:
    Status status_;
    const char* function_;
};
#endif

namespace detail {

// An int, since Xlib's macro of that name may have stood for Status where the prototypes were read.
inline Status checked(int status, [[maybe_unused]] const char* function) {
#if TEVS_EXCEPTIONS
    if (status < StatusOk) [[unlikely]]
        throw Error(static_cast<Status>(status), function);
#endif
    return static_cast<Status>(status);
}

// The one length of all; 0, which every function refuses, where they differ or it is no int.
template <class First, class... Rest> constexpr int length(const First& first, const Rest&... rest) {
    const bool good = ((rest.size() == first.size()) && ...) && first.size() <= std::size_t(std::numeric_limits<int>::max());
    return good ? int(first.size()) : 0;
}

"""

RECORD = """\
}   // namespace detail

// A record of the library's own memory, released with this object.
template <class R> class Record {
public:
    Record() = default;
    Record(R* record, Status status) : record_(status < StatusOk ? nullptr : record), status_(status) {}
    Record(Record&& other) noexcept : record_(std::exchange(other.record_, nullptr)), status_(other.status_) {}
    Record& operator=(Record&& other) noexcept {
        std::swap(record_, other.record_);
        std::swap(status_, other.status_);
        return *this;
    }
    ~Record() {
        if (record_) detail::release(record_);
    }
    operator R*() const { return record_; }
    R* get() const { return record_; }
    Status status() const { return status_; }

private:
    R* record_ = nullptr;
    Status status_ = StatusOk;
};

"""


def is_free(f):
    return "Free" in f.operation and len(f.parameters) == 1 and f.parameters[0].record


def main():
    headers, output = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    functions, alias = [], {}
    for family in re.findall(r'#include "(tevs/\w+\.h)"', (headers / "tevs.h").read_text()):
        prototypes, names = read_header(headers / family)
        alias.update((name, alias.get(of, of)) for of, name in names)
        functions += [(family, Function(*m)) for m in prototypes]

    releases, calls, values = {}, {}, collections.Counter()
    for family, f in functions:
        if is_free(f):
            record = alias.get(f.parameters[0].element, f.parameters[0].element)
            releases.setdefault(record, f"inline void release({record}* record) {{ {f.name}(record); }}\n")
        elif f.result == "Status":
            values[f.signature(less=f.result_parameter())] += 1
            calls.setdefault(f.signature(alias), []).append((family, f))
    lines, home = [PREAMBLE, *releases.values(), RECORD], None
    for same in calls.values():
        # Over records that are one type the first form has the plain name.
        plain = same[0][1] if any(p.record for p in same[0][1].parameters) or len(same) == 1 else None
        for family, f in same:
            if f is not plain or UNTYPED.search(f.types):
                f.operation += "_" + f.types
            returns = f.result_parameter() is not None and values[f.signature(less=f.result_parameter())] == 1
            if family != home:
                lines.append(f"// {family}\n")
                home = family
            lines.append(emit(f, returns) + "\n")
    lines.append('\n}   // namespace tevs\n\n#pragma pop_macro("Status")\n\n#endif\n')
    output.parent.mkdir(parents=True, exist_ok=True)
    output.write_text("".join(lines))


if __name__ == "__main__":
    main()
