#!/usr/bin/env python3
"""generate.py HEADERS OUTPUT: writes what tevs.raw is made of, from the C headers in HEADERS:

    functions.h    a table of all functions: their arguments, how long their vectors have to be, how they are called
    raw.pyi        their type stubs
    _index.py      the functions by operation and types, for the layer above

What a prototype says is taken from it. How long a vector has to be stands in the manual above it, and here in LENGTHS: a function with a vector that no rule
covers is left out and named, since nothing could keep a call of it within its arrays.
"""
import collections
import pathlib
import re
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "scripts"))
import cpp_header  # noqa: E402

# C type of an element: code in raw.c, type of NumPy.
ELEMENTS = {"int8_t": ("I8", "int8"), "uint8_t": ("U8", "uint8"), "int16_t": ("I16", "int16"), "uint16_t": ("U16", "uint16"), "int32_t": ("I32", "int32"),
            "int": ("I32", "int32"), "uint32_t": ("U32", "uint32"), "int64_t": ("I64", "int64"), "uint64_t": ("U64", "uint64"), "float": ("F32", "float32"),
            "double": ("F64", "float64"), "Complex8s": ("C8", "complex_int8"), "Complex16s": ("C16", "complex_int16"), "Complex32s": ("C32", "complex_int32"),
            "Complex64s": ("C64", "complex_int64"), "Complex32f": ("CF32", "complex64"), "Complex64f": ("CF64", "complex128"), "half": ("F16", "float16")}

# Parameters of one element, whatever the function.
ONE = set("pSize pSpecSize pSpecBufferSize pMax pMin pMaxIndx pMinIndx pMaxAbs pMinAbs pOrder pSum pMean pStdDev pNorm pDp pCounts pSeed pPhase pPhaseQ15 pMem "
          "pTrack pDlyLineIndex pDstLen pSrcLen pAlpha pTapsLen pShift pCoefLen pOffset pLen pResult".split())

# Elements of a parameter by function (without "tevs", from its beginning) and name: the first rule that fits both. In an expression stand the function's
# integers, R.x for an integer that the record was built with, size(p) for what the family's GetSize or GetBufSize stores in p, and the functions of raw.c.
CCS = "2 * (N / 2 + 1)"
TRANSFORMS = [("FFT", "pow2(R.order)"), ("DFT|DCT|Hilbert", "R.length")]
LENGTHS = [
    (r"ConvCyclic4x4", r".*", "4"),
    (r"ConvCyclic8x8", r".*", "8"),
    (r"Conv_", r"pDst", "len1 + len2 - 1"),
    (r"Join|Split", r"pSrc|pDst", "nChannels * chanLen"),   # of the interleaved vector; each channel has chanLen
    (r"Copy_1u", r"pSrc", "ceil_div(srcBitOffset + len, 8)"),
    (r"Copy_1u", r"pDst", "ceil_div(dstBitOffset + len, 8)"),
    (r"Levinson", r"pSrc|pDst", "order + 1"),
    (r"Levinson", r"pRefl", "order"),
    (r"Levinson", r"pErr", "1"),
    (r"SumWindow", r"pSrc", "len + maskSize - 1"),
    (r"SampleUp", r"pDst", "factor * srcLen"),
    (r"SampleDown", r"pDst", "ceil_div(srcLen, factor)"),
    (r"GoertzTwo", r"pResult|pRFreq\w*", "2"),
    (r"(Max|Min)Indx", r"pIndx", "1"),
    (r"ConjCcs", r"pSrc", "2 * (len / 2 + 1)"),
    (r"[FD]FT\w*(CCS)\w*_I", r"pSrcDst", CCS),
    (r"[FD]FTFwd_RToCCS", r"pDst", CCS),
    (r"[FD]FTInv_CCSToR", r"pSrc", CCS),
    (r"([FD]FT|DCT)(OutOrd)?(Fwd|Inv)(?!Get|Init)|Hilbert(?!Init)", r"p(Src|Dst|SrcDst)(Re|Im)?", "N"),
    (r"([FD]FT|DCT)\w*(Fwd|Inv)(?!Get|Init)", r"pBuffer", "size(GetBufSize, pSize)"),
    (r"([FD]FT|DCT)\w*Init", r"pMemSpec", "size(GetSize, pSpecSize)"),
    (r"([FD]FT|DCT)\w*Init", r"pMemInit", "size(GetSize, pSpecBufferSize)"),
    (r"(FFT|DCT)\w*GetSize", r"pBufferSize", "1"),
    # FIR
    (r"FIRMR\w*_Direct", r"pSrc", "numIters * downFactor"),
    (r"FIRMR\w*_Direct", r"pDst", "numIters * upFactor"),
    (r"FIRMR\w*_Direct", r"pSrcDst", "numIters * larger(upFactor, downFactor)"),
    (r"FIRMR\w*", r"pTaps", "tapsLen"),
    (r"FIRMR\w*", r"pDlyLine", "ceil_div(tapsLen, upFactor)"),
    (r"FIRGen|FIRResponse", r"pTaps", "tapsLen"),
    (r"(FIR|IIR)Response", r"pRFreq|pDst", "len"),
    (r"(FIR|IIR)Sparse", r"pSrc|pDst", "len"),
    (r"FIRSparseInit", r"pNZTap(s|Pos)", "nzTapsLen"),
    (r"FIRSparseInit", r"pDlyLine", "element(pNZTapPos, nzTapsLen - 1)"),
    (r"IIRSparseInit", r"pNZTap(s|Pos)", "(int64_t)nzTapsLen1 + nzTapsLen2"),
    (r"IIRSparseInit", r"pDlyLine",
     "element(pNZTapPos, nzTapsLen1 - 1) + (nzTapsLen2 > 0 ? element(pNZTapPos, (int64_t)nzTapsLen1 + nzTapsLen2 - 1) : 0)"),
    (r"FIRLMSMRInit", r"pTaps", "tapsLen"),
    (r"FIRLMSMRInit", r"pDlyLine", "ceil_div(tapsLen, upFactor) + downFactor"),
    (r"FIRLMSMR[SG]etTaps", r"pTaps", "R.tapsLen"),
    (r"FIRLMSMRSetDlyLine", r"pDlyLine", "ceil_div(R.tapsLen, R.upFactor) + R.downFactor"),
    (r"FIRLMSMRGetDlyLine", r"pDlyLine", "len"),
    (r"FIRLMSMRFilter", r"pSrc", "R.downFactor"),
    (r"FIRLMSMRFilter", r"pDst", "R.upFactor"),
    (r"FIRLMSMRAdapt", r"pErr", "R.upFactor"),
    (r"FIRLMSMR", r"pSrc", "numIters * R.downFactor"),
    (r"FIRLMSMR", r"pRef|pDst", "numIters * R.upFactor"),
    (r"FIRLMSGet", r"pOutTaps|pDlyLine", "R.tapsLen"),
    (r"FIRLMSSet", r"pDlyLine", "R.tapsLen"),
    (r"FIRLMSInit", r"pTaps|pDlyLine", "tapsLen"),
    (r"FIRLMSOne_Direct", r"pTaps\w*", "tapsLen"),
    (r"FIR(LMSOne)?\w*_Direct|FIROne_Direct", r"pDlyLine", "2 * tapsLen"),
    (r"FIR\w*_Direct", r"pTaps(Q15)?", "tapsLen"),
    (r"FIROne|IIROne|FIRLMSOne", r"pDst|pSrcDst", "1"),
    (r"FIR\w*_Direct", r"pSrc|pDst|pSrcDst", "numIters"),
    (r"FIR(?!MR|LMS)Init\w*", r"pTaps|pDlyLine", "tapsLen"),
    (r"FIR[SG]etTaps", r"pTaps", "R.tapsLen"),
    (r"FIR[SG]etDlyLine", r"pDlyLine", "ceil_div(R.tapsLen, larger(1, R.upFactor))"),
    (r"FIR(32|64|_)", r"pSrc", "numIters * larger(1, R.downFactor)"),
    (r"FIR(32|64|_)", r"pDst", "numIters * larger(1, R.upFactor)"),
    (r"FIR(32|64|_)", r"pSrcDst", "numIters * larger(1, larger(R.upFactor, R.downFactor))"),
    # IIR: taps of arbitrary order or of sections
    (r"IIR(Init\w*BiQuad|\w*BiQuadDirect|Response_BiQuad)", r"pTaps", "6 * numBq"),
    (r"IIR(Init\w*BiQuad|\w*BiQuadDirect)", r"pDlyLine", "2 * numBq"),
    (r"IIR(Init|Response|\w*Direct)", r"pTaps", "2 * (order + 1)"),
    (r"IIR(Init|\w*Direct)", r"pDlyLine", "order"),
    (r"IIRSetTaps", r"pTaps", "R.numBq ? 6 * R.numBq : 2 * (R.order + 1)"),
    (r"IIR[SG]etDlyLine", r"pDlyLine", "R.numBq ? 2 * R.numBq : R.order"),
    (r"IIRGen(Low|High)pass_BiQuad", r"pTaps", "6 * ((order + 1) / 2)"),
    (r"IIRGenBand\w+_BiQuad", r"pTaps", "6 * order"),
    (r"IIRGen(Low|High)pass_", r"pTaps", "2 * (order + 1)"),
    # sorting and searching
    (r"NearestVec", r"pSrc", "len * dim"),
    (r"NearestVec", r"pBook", "bookLen * dim"),
    (r"NearestVec", r"pDist", "len"),
    (r"Nearest", r"pTable", "tableLen"),
    # Viterbi
    (r"Viterbi", r"pPoly", "numPoly"),
    (r"Viterbi\w*_Table", r"pNext|pSymbol", "numStates * numInputs"),
    (r"Viterbi(Symbols|Next)", r"pDst", "pow2(constraintLen)"),
    (r"ViterbiEncode", r"pDst", "len * numPoly"),
    (r"ViterbiPuncture", r"pDst", "kept(pPattern, patternLen, pPhase, srcLen)"),
    (r"ViterbiDepuncture", r"pSrc", "kept(pPattern, patternLen, pPhase, dstLen)"),
    (r"Viterbi", r"pPattern", "patternLen"),
    (r"ViterbiMetric_8s", r"pSrc", "len * numPoly"),
    (r"ViterbiMetric_8s", r"pDst", "len * pow2(numPoly)"),
    (r"ViterbiMetric_32fc", r"pDst|pIndx", "len * numSymbols"),
    (r"ViterbiMetric_32fc", r"pPoints", "numPoints"),
    (r"Viterbi_8s8u", r"pSrc", "len * R.numPoly"),
    (r"Viterbi_16s8u", r"pMetric", "len * (R.numSymbols ? R.numSymbols : pow2(R.numPoly))"),
    (r"Viterbi_", r"pDst", "len + R.traceLen - 1"),
    (r"ViterbiFlush", r"pDst", "2 * R.traceLen - 1"),
    # wavelets: len counts pairs
    (r"WtGenTaps", r".*", "tapsLen"),
    (r"WtLift", r"p(Src|Dst)Low", "ceil_div(N, 2)"),
    (r"WtLift", r"p(Src|Dst)High", "N / 2"),
    (r"Wt(Haar)?Analysis_", r"pSrc", "2 * len"),
    (r"Wt(Haar)?Synthesis_", r"pDst", "2 * len"),
    (r"Wt\w*Init", r"pTapsLow", "tapsLenLow"),
    (r"Wt\w*Init", r"pTapsHigh", "tapsLenHigh"),
    (r"Wt[SG]etDlyLine", r"pDlyLine",   # of either direction: the larger
     "larger(larger(R.tapsLenLow + R.offsLow, R.tapsLenHigh + R.offsHigh) - 1, (R.tapsLenLow + R.offsLow) / 2 + (R.tapsLenHigh + R.offsHigh) / 2)"),
    (r"DWTInit", r"p(Low|High)[AS]", "tapsLen"),
    (r"DWTInit", r"pMemSpec", "size(GetSize, pSpecSize)"),
    (r"DWTGetSize", r"pBufferSize", "1"),
    (r"DWTFwd", r"pSrc", "R.length"),
    (r"DWTFwd", r"pDst", "size(GetSize, pCoefLen)"),
    (r"DWTInv", r"pSrc", "size(GetSize, pCoefLen)"),
    (r"DWTInv", r"pDst", "R.length"),
    (r"DWT(Fwd|Inv)", r"pBuffer", "size(GetSize, pBufferSize)"),
    (r"\w*Init", r"pBuffer|pState", "size(GetStateSize, pSize)"),
    (r"\w*", r"pSrc1", "len1"),
    (r"\w*", r"pSrc2", "len2"),
    (r"\w*", r"pSrc", "srcLen"),
    (r"\w*", r"pDst", "dstLen"),
    (r"\w*", r"p(Src|Dst|SrcDst|Ref|Indx)\w*", "len"),
]
# A destination may begin where a source does, but for these functions, in which all vectors lie apart.
APART = re.compile(r"Conv(?!Cyclic)|CrossCorr|AutoCorr|Sample|Levinson|\w*Sparse|WtLift|WtGen|Wt\w*Synthesis|WtAnalysis|Viterbi(?!Puncture)|Join|Split|ConjFlip|Conj\w+_32fc$|Sort|Nearest")
ANYHOW = re.compile(r"Move")   # vectors may overlap in any way
UNCHECKED = re.compile(r"ConvCyclic")   # the function looks at no pointer itself


class Function:
    def __init__(self, result, name, text, alias):
        self.result, self.name, self.short = result.strip(), name, name[len("tevs"):]
        self.parameters = [cpp_header.Parameter(p) for p in text.split(",")] if text.strip() not in ("", "void") else []
        self.prototype = f"{self.result} {name}({text})"
        self.record = None
        self.made = None   # the parameter through which a record comes to be
        for p in self.parameters:
            p.kind = alias.get(p.element, p.element) if p.record else None
            p.c_type = p.type
            if p.record:
                self.record = p
                if p.pointer == 2 or "Init" in name:
                    self.made = p
        self.rules = {}

    def operation(self):
        head, *tail = self.short.split("_")
        head = re.sub(rf"(?<=[A-Za-z])(?:{cpp_header.CODE})+$", "", head)
        return "_".join([head] + [t for t in tail if not re.fullmatch(rf"(?:{cpp_header.CODE})+|I|Sfs|ISfs", t)])

    def element(self, p):
        half = re.search(r"16f", self.name) and p.element == "uint16_t"
        return ELEMENTS["half" if half else p.element]

    def arguments(self):
        """Those of the Python function: what a call makes, it returns."""
        return [p for p in self.parameters if not (p is self.made and p.pointer == 2)]

    def rule(self, p):
        if p.name in ONE and not (p.name == "pResult" and "Two" in self.name):
            if not ("Sparse" in self.name and p.name == "pOrder"):
                return "1"
        names = {q.name for q in self.parameters if not q.pointer}
        for functions, parameters, expression in LENGTHS:
            if not re.match(functions, self.short) or not re.fullmatch(parameters, p.name):
                continue
            if expression in ("len", "len1", "len2", "srcLen", "dstLen", "numIters") and expression not in names:
                continue
            if re.search(r"\bN\b", expression):
                n = next((e for f, e in TRANSFORMS if re.match(f, self.short)), "dstLen" if "dstLen" in names else "srcLen")
                expression = re.sub(r"\bN\b", f"({n})", expression)
            if re.search(r"24[us]", self.name) and p.element == "uint8_t":
                expression = f"3 * ({expression})"
            return expression
        return None


def getter(f, family, functions):
    """The function that tells the sizes which f needs."""
    if family == "GetBufSize":
        return next(g for g in functions.values() if "GetBufSize" in g.name and g.record.kind == f.record.kind)
    if f.name.startswith("tevsDWT"):
        name = re.sub(r"(Init(Alloc)?|Fwd|Inv)_", "GetSize_", f.name)
    else:
        name = re.sub(r"(Analysis|Synthesis)?Init", "GetStateSize", f.name)
        if name not in functions:
            name = f.name.replace("Init", "GetSize")
    return functions[name]


def c_expression(f, rule, functions):
    """The rule in C over v, the values of a call."""
    at = {p.name: k for k, p in enumerate(f.parameters)}
    r = at[f.record.name] if f.record else -1
    call = re.fullmatch(r"size\((\w+), (\w+)\)", rule)
    if call:
        g = getter(f, call[1], functions)
        arguments = []
        for q in g.parameters:
            if q.record:
                arguments.append(f"({q.type})v[{r}].a.p")
            elif q.pointer:
                arguments.append(f"&s[{[x.name for x in g.parameters if x.pointer and not x.record].index(q.name)}]")
            elif q.name in at:
                arguments.append(f"(int)v[{at[q.name]}].a.i")
            elif f.made is None:
                arguments.append(f"R({r}, {q.name})")
            else:   # the orders of sparse filters: their last delays
                sparse = {"order": "nzTapsLen - 1", "order1": "nzTapsLen1 - 1", "order2": "(int64_t)nzTapsLen1 + nzTapsLen2 - 1"}[q.name]
                text = f"(int)element(pNZTapPos, {sparse})"
                if q.name == "order2":
                    text = f"(nzTapsLen2 > 0 ? {text} : 0)"
                arguments.append(c_expression(f, text, functions))
        wanted = [x.name for x in g.parameters if x.pointer and not x.record].index(call[2])
        guard = f"v[{r}].a.p && " if any(q.record for q in g.parameters) else ""
        return f"({guard}{g.name}({', '.join(arguments)}) == StatusOk ? s[{wanted}] : 0)"

    def word(m):
        if m[0].startswith("R."):
            return f"R({r}, {m[0][2:]})"
        if m[0] not in at:
            return m[0]
        k = at[m[0]]
        return f"&v[{k}]" if f.parameters[k].pointer else f"v[{k}].a.i"
    return re.sub(r"R\.\w+|\b[A-Za-z]\w*", word, rule)


def read(headers):
    functions, alias = {}, {}
    families = re.findall(r'#include "(tevs/\w+\.h)"', (headers / "tevs.h").read_text())
    for family in families + ["tevcore.h"]:
        prototypes, names = cpp_header.read_header(headers / family)
        alias.update((name, alias.get(of, of)) for of, name in names)
        for m in prototypes:
            functions[m[1]] = Function(*m, alias)
    return functions, families


def main():
    headers, output = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    functions, families = read(headers)
    missing = []
    for f in functions.values():
        for p in f.parameters:
            if p.pointer and p.element not in ("void",) and (not p.record or (p is f.made and p.pointer == 1)):
                f.rules[p.name] = f.rule(p)
                if f.rules[p.name] is None:
                    missing.append(f"{f.name}: {p.name}")
    usable = {n: f for n, f in functions.items() if None not in f.rules.values()}
    if missing:
        print("generate.py: no rule for the length of\n    " + "\n    ".join(missing), file=sys.stderr)
    dims = sorted({p.name for f in usable.values() if f.made for p in f.parameters if not p.pointer and p.type == "int"})
    kinds = {}
    for f in usable.values():
        if f.record is not None:
            kinds.setdefault(f.record.kind, len(kinds))
    free = {}
    for f in functions.values():
        if f.record and len(f.parameters) == 1 and "Free" in f.name:
            free.setdefault(f.record.kind, f.name)

    out = ["/* Made by generate.py of the headers. */\n"]
    out += [f'#include "{h}"\n' for h in families]
    out.append("enum { " + ", ".join(f"D_{d}" for d in dims) + f", kDims }};\nstatic const char* const kDimNames[] = {{{', '.join(chr(34) + d + chr(34) for d in dims)}}};\n")
    out.append("static const RecordKind kRecordKinds[] = {\n")
    for kind in kinds:
        release = f"(int (*)(void*)){free[kind]}" if kind in free else "NULL"
        out.append(f'    {{"{kind}", {release}, {int("Spec" in kind)}}},\n')
    out.append("};\n\n")

    thunks, shapes, needs = {}, {}, collections.OrderedDict()
    table = []
    for f in usable.values():
        types = tuple(re.sub(r"\b\w*(State|Spec)\w*\b", "void", p.type) if p.record else p.type for p in f.parameters)
        result = f.result
        key = (result, types)
        if key not in thunks:
            thunks[key] = f"t{len(thunks)}"
            fields = {"float": "f", "double": "d", "Complex8s": "c8", "Complex16s": "c16", "Complex32s": "c32", "Complex64s": "c64", "Complex32f": "cf32", "Complex64f": "cf64"}
            values = [f"({t})v[{k}].a.p" if "*" in t else (f"v[{k}].a.{fields[t]}" if t in fields else f"({t})v[{k}].a.i") for k, t in enumerate(types)]
            pointer = f"({result} (*)({', '.join(types) or 'void'}))"
            call = f"({pointer}f)({', '.join(values)})"
            if result == "void":
                body = call + ";"
            elif "*" in result:
                body = f"result->p = (void*){call};"
            else:
                body = f"result->i = {call};"
            out.append(f"static void {thunks[key]}(void (*f)(void), const Value* v, Any* result) {{\n    (void)v, (void)result;\n    {body}\n}}\n")
        shape = []
        for p in f.parameters:
            flags, element = [], "0"
            if p is f.made:
                kind = "P_MADE" if p.pointer == 2 else "P_MADE_HERE"
                flags.append("WRITTEN")
                element = str(kinds[p.kind])
            elif p.record:
                kind, element = "P_RECORD", str(kinds[p.kind])
            elif p.element == "void":
                kind = "P_MEMORY"
            elif p.pointer == 2:
                kind, element = "P_ARRAYS", f.element(p)[0]
                if "const" not in p.type.split("*")[0]:
                    flags.append("WRITTEN")
            elif p.pointer:
                kind, element = "P_ARRAY", f.element(p)[0]
                if p.written:
                    flags.append("WRITTEN")
                if re.match(r"p(Src|Ref|X|H)", p.name) and not APART.match(f.short):
                    flags.append("SHARED")
                if ANYHOW.match(f.short):
                    flags.append("ANYHOW")
                if UNCHECKED.match(f.short):
                    flags.append("REQUIRED")
            elif p.type == "float":
                kind = "P_FLOAT"
            elif p.type == "double":
                kind = "P_DOUBLE"
            elif p.type.startswith("Complex"):
                kind, element = "P_COMPLEX", ELEMENTS[p.type][0]
            elif p.type == "Status":
                kind, element = "P_INT", "I32"
            else:
                kind, element = "P_INT", ELEMENTS[p.type][0]
            dim = f"D_{p.name}" if f.made and p.name in dims and not p.pointer else "-1"
            shape.append(f'{{"{p.name}", {kind}, {element}, {" | ".join(flags) or "0"}, {dim}}}')
        shape = ", ".join(shape)
        if shape and shape not in shapes:
            shapes[shape] = f"p{len(shapes)}"
            out.append(f"static const Param {shapes[shape]}[] = {{{shape}}};\n")
        lines = []
        for k, p in enumerate(f.parameters):
            if p.name in f.rules and f.rules[p.name] is not None:
                expression = c_expression(f, f.rules[p.name], functions) if not (p.pointer == 2) else c_expression(f, "chanLen", functions)
                lines.append(f"    need[{k}] = {expression};")
        need = "NULL"
        if lines:
            body = "\n".join(lines)
            if body not in needs:
                needs[body] = f"n{len(needs)}"
                local = "    int s[4] = {0};\n" if "s[" in body else ""
                out.append(f"static void {needs[body]}(const Value* v, int64_t* need) {{\n    (void)v;\n{local}{body}\n}}\n")
            need = needs[body]
        kinds_of_result = {"Status": "R_STATUS", "void": "R_VOID", "const char*": "R_TEXT", "const LibraryVersion*": "R_VERSION"}
        kind = kinds_of_result.get(f.result) or ("R_MEMORY" if "*" in f.result else "R_INT")
        element = ELEMENTS[f.result.replace("*", "").strip()][0] if kind == "R_MEMORY" else "0"
        signature = ", ".join(p.name for p in f.arguments())
        vectors = [f"{p.name}: {f.element(p)[1]}[{f.rules[p.name]}]" for p in f.parameters if p.name in f.rules and not p.record and p.pointer == 1]
        doc = f"{f.prototype}\\n\\n" + "\\n".join(vectors)
        text = f"{f.name}({signature}{', ' if signature else ''}/)" if signature else f"{f.name}()"
        owned = int("InitAlloc" in f.name)
        freeing = int("Free" in f.name and f.record is not None)
        table.append(f'    {{"{f.name}", "{text}\\n--\\n\\n{doc}", {shapes.get(shape, "NULL")}, {len(f.parameters)}, {len(f.arguments())}, {kind}, {element}, {owned}, {freeing}, '
                     f"(void (*)(void)){f.name}, {thunks[key]}, {need}}},\n")
    out += ["\nstatic const Function kFunctions[] = {\n", *table, "};\n"]
    longest = max(len(f.parameters) for f in usable.values())
    out.append(f"enum {{ kMostParams = {longest} }};\n")
    # Choices of the headers by name.
    constants = {}
    for family in families:
        text = re.sub(r"/\*.*?\*/", "", (headers / family).read_text(), flags=re.S)
        for body in re.findall(r"enum(?: \w+)? \{(.*?)\}", text, flags=re.S):
            for name, value in re.findall(r"(\w+) = (-?\d+)", body):
                constants[name] = int(value)
    out.append("static const struct { const char* name; int value; } kConstants[] = {\n" + "".join(f'    {{"{n}", {n}}},\n' for n in constants) + "};\n")
    (output / "functions.h").write_text("".join(out))
    (output / "raw.pyi").write_text(stubs(usable, constants))
    (output / "_index.py").write_text(index(usable))


PYTHON = {"float": "float", "double": "float"}


def stubs(functions, constants):
    lines = ['"""The C functions, one to one. Made by generate.py of the headers."""\nfrom types import TracebackType\nfrom typing import Any, Final, Protocol, Sequence, Union\n\n'
             "Array = Any  # what has a buffer: a NumPy array, bytearray, memoryview, Memory\n\n"
             "class Error(ValueError):\n    status: int\n    function: str\n\n"
             "class Memory:\n    def __len__(self) -> int: ...\n\n"
             "class Record:\n    @property\n    def kind(self) -> str: ...\n    @property\n    def closed(self) -> bool: ...\n    @property\n    def parameters(self) -> dict[str, int]: ...\n"
             "    def close(self) -> None: ...\n    def __enter__(self) -> Record: ...\n"
             "    def __exit__(self, type: type[BaseException] | None, value: BaseException | None, traceback: TracebackType | None, /) -> None: ...\n\n"]
    lines += [f"{n}: Final = {v}\n" for n, v in constants.items()]
    lines.append("tevConstantOfNAN_32f: Final[float]\ntevConstantOfNAN_64f: Final[float]\ntevConstantOfINF_32f: Final[float]\ntevConstantOfINF_64f: Final[float]\n\n")
    for f in functions.values():
        arguments = []
        for p in f.arguments():
            if p.record and p is not f.made:
                t = "Record | None"
            elif p.element == "void":
                t = "Memory | None"
            elif p.pointer == 2:
                t = "Sequence[Array] | None"
            elif p.pointer:
                t = "Array | None"
            elif p.type.startswith("Complex"):
                t = "complex | Sequence[int]" if p.type.endswith("s") else "complex"
            else:
                t = PYTHON.get(p.type, "int")
            arguments.append(f"{p.name}: {t}")
        if f.made is not None:
            result = "Record"
        else:
            result = {"Status": "int", "void": "None", "const char*": "str", "const LibraryVersion*": "dict[str, Any]"}.get(f.result) or ("Memory" if "*" in f.result else "int")
        lines.append(f"def {f.name}({', '.join(arguments)}{', /' if arguments else ''}) -> {result}: ...\n")
    return "".join(lines)


def index(functions):
    """operation: [(function, types of its vectors and constants, names of its arguments)]"""
    operations = collections.OrderedDict()
    for f in functions.values():
        if f.result != "Status":
            continue
        types = []
        for p in f.arguments():
            if p.record:
                types.append("record")
            elif p.pointer:
                types.append(f.element(p)[1])
            else:
                types.append("float" if p.type in ("float", "double") else "complex" if p.type.startswith("Complex") else "int")
        operations.setdefault(f.operation(), []).append((f.name, " ".join(types), " ".join(p.name for p in f.arguments())))
    body = "".join(f'    "{o}": [\n' + "".join(f'        ("{n}", "{t}", "{a}"),\n' for n, t, a in forms) + "    ],\n" for o, forms in operations.items())
    return f'"""The functions of tevs.raw by operation: name, types and names of the arguments. Made by generate.py of the headers."""\nFUNCTIONS = {{\n{body}}}\n'


if __name__ == "__main__":
    main()
