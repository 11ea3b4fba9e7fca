#!/usr/bin/env python3
"""manual.py HEADERS SOURCE MAN: writes the reference part of the manual from the headers' blocks: a page for each header to SOURCE, in reStructuredText for Sphinx,
with the index of all functions, and to MAN a page of section 3 for each operation, with a link to it for each function.

manual.py --check HEADERS HTML MAN: fails with a line for each function that the manual's search, its index or its pages in section 3 do not have, for each link
to a file or place that is not there, and for each formula that is not, name for name, what the header has.

A block is a comment that opens with a dashed title. In it, lines that are set in are formulas, tables and drawings, and keep their lines; a word with a gap behind it
opens an entry on that argument, operation or matter, which goes on as long as lines are set in as far; all else are paragraphs. In HTML formulas are typeset.
"""
import collections
import html.parser
import json
import os
import pathlib
import re
import sys
import textwrap
import time
import urllib.parse
from xml.etree import ElementTree

import cpp_header
import formulas

Paragraph = collections.namedtuple("Paragraph", "text")
Literal = collections.namedtuple("Literal", "lines")
Entry = collections.namedtuple("Entry", "label items")
STATUSES = re.compile(r"\b(?:Returns?|Statuses:|[Ss]tatuses: as|return Status)")
PLACES = re.compile(r"\b(in place|overlaps?|may equal|may be equal|may share|equal pointers|may begin|may be p\w+|lie apart|lies apart|apart from|distinct)\b", re.I)
THREADS = re.compile(r"\bthreads?\b|\b[Oo]ne call(?:er)? |work buffer\.$")


def indent(line):
    return len(line) - len(line.lstrip())


def parse(lines):
    """The items of a block."""
    items, column, n = [], None, 0
    while n < len(lines):
        line = lines[n]
        if not line.strip():
            n += 1
            continue
        if indent(line):
            end = n
            while end < len(lines) and (not lines[end].strip() or indent(lines[end])):
                end += 1
            group = lines[n:end]
            while not group[-1].strip():
                group.pop()
            # Behind a table within an entry the entry goes on at its own column.
            back = next((k for k, g in enumerate(group) if column and k and not group[k - 1].strip() and indent(g) >= column), None)
            if column and all(indent(g) >= column for g in group if g.strip()):
                items[-1].items.extend(parse([g[column:] for g in group]))
            elif back and isinstance(items[-1], Entry) and all(indent(g) >= column for g in group[back:] if g.strip()):
                items[-1].items.append(Literal(textwrap.dedent("\n".join(group[:back])).rstrip().split("\n")))
                items[-1].items.extend(parse([g[column:] for g in group[back:]]))
            else:
                items.append(Literal(textwrap.dedent("\n".join(group)).split("\n")))
                column = None
            n = end
            continue
        following = indent(lines[n + 1]) if n + 1 < len(lines) and lines[n + 1].strip() else 0
        gap = re.match(r"(\S.{0,43}?)  +(?=\S)", line)
        if following >= 8 and (len(line) <= following or line[following - 1] == " " and line[:following].strip()):
            column, label, first = following, line[:following].strip(), line[following:]
        elif following >= 8 and gap or gap and not re.search(r"[.:] *$", gap[1]):
            column, label, first = following or gap.end(), gap[1], line[gap.end():]
        else:
            if line.endswith(",") and " " not in line and n + 1 < len(lines) and re.match(r"\S+  +\S", lines[n + 1]):
                lines[n + 1] = line + " " + lines[n + 1]
            elif items and isinstance(items[-1], Paragraph) and lines[n - 1].strip():
                items[-1] = Paragraph(items[-1].text + " " + line.strip())
            else:
                items.append(Paragraph(line.strip()))
            column, n = None, n + 1
            continue
        text, n = [first] if first else [], n + 1
        while n < len(lines) and lines[n].strip() and indent(lines[n]):
            text.append(lines[n][min(column, indent(lines[n])):])
            n += 1
        items.append(Entry(label, parse(text)))
    return items


class Function(cpp_header.Function):
    """One of the companion library, whose name is its own."""
    def split(self):
        self.stem = self.name
        return self.name, ""


class Operation:
    """The functions of a block that differ in their types and places only."""
    def __init__(self, block, name):
        self.block, self.name, self.functions = block, name, []
        self.anchor = re.sub(r"\W", "-", f"{block.anchor}-{name}".lower())

    def names(self):
        return [f.name for f in self.functions]

    def parameters(self):
        return list(dict.fromkeys(p.name for f in self.functions for p in f.parameters))


class Block:
    def __init__(self, header, number, title, items, code):
        self.header, self.title, self.items = header, title, items
        self.anchor = f"{header.name}-{number}"
        self.operations = {}
        for result, name, parameters in cpp_header.functions_of(code):
            f = (cpp_header if header.name != "tevcore" else sys.modules[__name__]).Function(result, name, parameters)
            f.prototype = f"{result}{name}({' '.join(parameters.split())})"
            self.operations.setdefault(f.stem, Operation(self, f.stem)).functions.append(f)
        code = re.sub(r"/\* \*/|" + cpp_header.PROTOTYPE.pattern, "", re.sub(r"\n[ \t]+(?=\S[^\n]*\);)", " ", code), flags=re.M)
        code = re.sub(r"^#(?:if|endif|include|ifndef|define TEV\w+_H).*$|^TEV\w+_(?:BEGIN|END)$|^/\*(?!.*;).*?\*/$", "", code, flags=re.M | re.S)
        self.code = re.sub(r"\n\s*\n+", "\n", code).strip("\n")


class Header:
    def __init__(self, path):
        self.name, self.path = path.stem, path
        text = path.read_text()
        self.functions = [m[1] for m in cpp_header.read_header(path)[0]]
        comments = [m for m in re.finditer(r"^/\*.*?\*/\n", text, re.M | re.S) if m[0].count("\n") > 1 or "----" in m[0]]
        if self.name == "tevcore":
            comments = [m for m in re.finditer(r"^/\*.*?\*/\n", text, re.M | re.S) if "clang-format" not in m[0]]
        self.intro, self.blocks = [], []
        for n, m in enumerate(comments):
            title = re.match(r"/\* ---- (.*?) -*$", m[0], re.M)
            body = m[0].strip()[2:-2].rstrip()
            lines = body.split("\n")[1 if title else 0:]
            lines = [re.sub(r"^ \* ?", "", line).rstrip() for line in lines]
            lines[0] = lines[0].strip() if not title else lines[0]
            code = text[m.end():comments[n + 1].start() if n + 1 < len(comments) else len(text)]
            if title or (self.name == "tevcore" and n):
                title = title[1] if title else ", ".join(re.findall(r"(tev_\w+|tev[A-Z]\w+|threads_\w+)(?:\(|;)", code))
                self.blocks.append(Block(self, len(self.blocks), title, parse(lines), code))
            elif not self.blocks:
                self.intro += parse(lines)
                self.before = code
            else:
                self.blocks[-1].items += parse(lines)
                self.blocks[-1].code += "\n" + Block(self, 0, "", [], code).code
        title = self.name if self.name in ("tevcore", "types") else f"tevs/{self.name}.h"
        self.title = {"tevcore": "tevcore.h", "types": "tevs/types.h"}.get(self.name, title)


def flat(items):
    """The texts of items and of what is in them."""
    for item in items:
        if isinstance(item, Paragraph):
            yield item.text
        elif isinstance(item, Entry):
            yield from flat(item.items)


def terms(label):
    return [t.strip(". ") for t in re.split(r",\s*", label)]


def belongs(term, operation):
    head = operation.name.split("_")[0]
    return len(term) > 1 and (term[0].isupper() or term[0] in "_1") and (operation.name.endswith(term) or head.endswith(term))


class Section:
    """What the manual says of one operation, out of its block, and where that is silent out of the header's introduction or the blocks before."""
    def __init__(self, operation):
        self.operation = operation
        block, header = operation.block, operation.block.header
        before = header.blocks[:header.blocks.index(block)]
        places = [block.items, header.intro] + [b.items for b in reversed(before)]

        entries = [i for i in block.items if isinstance(i, Entry)]
        exact = [e for e in entries if operation.name in terms(e.label)]
        named = exact or [e for e in entries if any(belongs(t, operation) for t in terms(e.label))]
        if not named:   # GetTaps, told under SetTaps
            word = re.search(r"(?:Get|Set|Init|Free)[A-Z]?\w*$", operation.name)
            others = [o for o in block.operations.values() if o is not operation]
            named = [e for e in entries if word and re.search(rf"\b{word[0]}\b", " ".join(flat(e.items))) and
                     any(belongs(t, o) for t in terms(e.label) for o in others)]
        self.formulas = self.own_lines(block)
        self.text = named
        arguments = {}
        for name in operation.parameters():
            for items in places:
                found = [e for e in items if isinstance(e, Entry) and name in terms(e.label)]
                if found:
                    arguments.setdefault(id(found[0]), (found[0].items, []))[1].append(name)
                    break
        self.arguments = [(", ".join(group), items) for items, group in arguments.values()]
        self.statuses = []
        if any(f.result == "Status" for f in operation.functions) and not any("Status" in t for e in named for t in flat(e.items)):
            for items in places:
                self.statuses = [i for i in items if isinstance(i, Paragraph) and STATUSES.search(i.text)]
                if self.statuses:
                    # What follows a text that ends in a comma is its list.
                    last = items.index(self.statuses[-1])
                    if re.search(r"[,:]$", self.statuses[-1].text):
                        self.statuses += items[last + 1:last + 2]
                    break
        self.places = self.place_rules(places)
        self.threads = self.sentences(places[:2], THREADS)[:4] or self.thread_rule()

    def own_lines(self, block):
        lines = []
        for literal in (i for i in block.items if isinstance(i, Literal)):
            taken = None
            for line in literal.lines:
                segments = re.split(r"\s{2,}", line.strip())
                if line.strip() and any(self.operation.name in terms(s) for s in segments):
                    taken = indent(line)
                    lines.append(line)
                elif line.strip() and taken is not None and indent(line) > taken:
                    lines.append(line)
                else:
                    taken = None
        return lines

    @staticmethod
    def sentences(places, pattern):
        for items in places:
            found = [s.strip().rstrip(";.") for t in flat(items) for s in re.split(r"(?<=[.;])\s+(?=\S)", t) if pattern.search(s)]
            if found:
                return list(dict.fromkeys(f"{s[0].upper() if not s.startswith('p') else s[0]}{s[1:]}." for s in found))
        return []

    def place_rules(self, places):
        inplace = [f.name for f in self.operation.functions if re.search(r"_IS?f?s?$", f.name)]
        rules = []
        if inplace:
            second = any(len([p for p in f.parameters if p.name == "pSrc"]) for f in self.operation.functions if f.name in inplace)
            rules.append("The forms that end in _I or _ISfs work in place: pSrcDst is both source and destination" + (", and of two operands the second." if second else "."))
        vectors = [p for f in self.operation.functions for p in f.parameters if p.name.startswith(("pSrc", "pDst"))]
        if any(p.written for p in vectors) and any(not p.written for p in vectors):
            rules += self.sentences(places[:2], PLACES)[:3] or \
                ["As everywhere, a destination may equal a source whose elements are at least as wide; vectors that overlap in part give wrong results."]
        return rules

    def thread_rule(self):
        records = {p.element for f in self.operation.functions for p in f.parameters if p.record and p.name in ("pState", "pSpec")}
        if any("Spec" in r for r in records):
            return ["A transform record serves any number of calls at a time, each with a work buffer of its own."]
        if records:
            return ["A record serves one call at a time; distinct records any number of threads."]
        return ["Any number of threads may call it for distinct destinations."]


class Rst:
    """Sphinx's reStructuredText, in which all that could be mark-up is escaped, and functions, statuses and headers are links."""
    def __init__(self, functions, statuses, headers):
        words = "|".join([r"tev\w+", r"(?:Status|Warn)[A-Z]\w+", r"tevs/\w+\.h", r"tevcore\.h"])
        self.link = re.compile(rf"(?<![\w/])(?:{words})(?!\w)")
        self.functions, self.statuses, self.headers = functions, statuses, headers

    @staticmethod
    def escape(text):
        return re.sub(r"([^\w\s]|_)", r"\\\1", text)

    def linked(self, m):
        word = m[0]
        if word in self.functions:
            return f"\\ :c:func:`{word}`\\ "
        if word in self.statuses:
            return f"\\ :c:enumerator:`{word}`\\ "
        stem = pathlib.Path(word).stem
        return f"\\ :doc:`{word} <{stem}>`\\ " if word.endswith(".h") and stem in self.headers else self.escape(word)

    def text(self, text):
        parts, at = [], 0
        for m in self.link.finditer(text):
            parts += [self.escape(text[at:m.start()]), self.linked(m)]
            at = m.end()
        return "".join(parts + [self.escape(text[at:])])

    def items(self, items, level=""):
        out = []
        for item in items:
            if isinstance(item, Paragraph):
                out += [level + self.text(item.text), ""]
            elif isinstance(item, Literal):
                out += self.formulas(item.lines, level)
            else:
                out += self.entry(item.label, item.items, level)
        return out

    def entry(self, label, items, level):
        return [f"{level}**{self.escape(label)}**", *self.items(items or [Paragraph(" ")], level + "   "), ""]

    def formulas(self, lines, level):
        """Groups of lines as formulas, where each line has one, and as they stand otherwise."""
        groups = re.split(r"\n\s*\n", "\n".join(lines))
        tables = [formulas.table(textwrap.dedent(group).split("\n")) for group in groups]
        if not any(tables):
            return self.literal(lines, level)
        out = []
        for group, table in zip(groups, tables):
            out += [f"{level}.. raw:: html", "", f"{level}   {table}", ""] if table else self.literal(group.split("\n"), level)
        return out

    @staticmethod
    def literal(lines, level, language="none"):
        return [f"{level}.. code-block:: {language}", "", *(f"{level}   {line}" for line in lines), ""]

    def page(self, header, about):
        title = f"{header.title}: {about}" if about else header.title
        out = [self.escape(title), "=" * 2 * len(title), "", *self.items(header.intro)]
        if header.name == "types":
            out += self.status_enum(header)
        for block in header.blocks:
            out += [f".. _{block.anchor}:", "", self.escape(block.title), "-" * 2 * len(block.title), "", *self.items(block.items)]
            if block.code:
                out += self.literal(block.code.split("\n"), "", "c")
            for operation in block.operations.values():
                out += self.section(Section(operation))
        return "\n".join(out) + "\n"

    def section(self, section):
        o = section.operation
        prototypes = [self.signature(f.prototype) for f in o.functions]
        out = [f".. _{o.anchor}:", "", self.escape(f"tevs{o.name}" if o.block.header.name != "tevcore" else o.name), "^" * (len(o.name) + 8), ""]
        out += [".. c:function:: " + "\n                ".join(prototypes), ""]
        level = "   "
        if section.formulas:
            out += self.formulas(section.formulas, level)
        for e in section.text:
            out += self.items(e.items, level)
        if section.arguments:
            out += [f"{level}.. rubric:: Arguments", ""]
            for name, items in section.arguments:
                out += self.entry(name, items, level)
        for title, items in self.rules(section):
            out += [f"{level}.. rubric:: {title}", "", *self.items(items, level)]
        return out

    @staticmethod
    def rules(section):
        return [(title, items) for title, items in (("Statuses", section.statuses), ("In place", [Paragraph(" ".join(section.places))] if section.places else []),
                                                    ("Threads", [Paragraph(" ".join(section.threads))])) if items]

    @staticmethod
    def signature(prototype):
        return re.sub(r"\s*\*+\s*", lambda m: " " + m[0].strip(), prototype).replace("* tev", "*tev")

    def status_enum(self, header):
        text = header.path.read_text()
        out = ["Statuses", "--------", "", ".. c:enum:: Status", ""]
        for name, value, meaning in re.findall(r"^    (\w+) = (-?\d+),?\s*(?:/\* (.*?) \*/)?$", re.search(r"enum Status \{(.*?)\n\}", text, re.S)[1], re.M):
            out += [f"   .. c:enumerator:: {name}", "", f"      {value}: {self.text(meaning or 'no error')}", ""]
        rest = text[text.index("/* Rounding of float"):text.index("#endif", text.index("/* Rounding of float"))]
        types = re.findall(r"^typedef struct \{.*\} Complex\w+;", text, re.M)
        return out + ["Types and flags", "---------------", ""] + self.literal([*types, "", *rest.strip().split("\n")], "", "c")


class Man:
    """A page of section 3, in mdoc."""
    @staticmethod
    def escape(text):
        return re.sub(r"^([.'])", r"\\&\1", text.replace("\\", "\\e"))

    def items(self, items):
        out = []
        for item in items:
            if isinstance(item, Paragraph):
                out += [".Pp", self.escape(item.text)]
            elif isinstance(item, Literal):
                out += self.literal(item.lines)
            else:
                out += self.entry(item.label, item.items)
        return out

    def entry(self, label, items):
        inner = self.items(items)
        quoted = label.replace("\\", "\\e").replace('"', '""')
        return [".Bl -tag -width Ds", f'.It "{quoted}"', *(inner[1:] if inner[:1] == [".Pp"] else inner), ".El"]

    def literal(self, lines):
        return [".Bd -literal -offset indent", *(self.escape(line) for line in lines), ".Ed"]

    def page(self, section, date, about):
        o = section.operation
        out = [f".Dd {date}", f".Dt {page_name(o)} 3", ".Os", ".Sh NAME"]
        names = o.names()
        out += [f".Nm {name} ,".removesuffix(" ," if n + 1 == len(names) else "") for n, name in enumerate(names)]
        header = "tevcore.h" if o.block.header.name == "tevcore" else "tevs.h"
        out += [f".Nd {self.escape(about)}", ".Sh SYNOPSIS", f".In {header}", ".Bd -literal"]
        out += [self.escape(line) for f in o.functions for line in textwrap.wrap(f.prototype + ";", 100, subsequent_indent="        ")]
        out += [".Ed", ".Sh DESCRIPTION"]
        if section.formulas:
            out += self.literal(section.formulas)
        for e in section.text:
            out += self.items(e.items)
        for name, items in section.arguments:
            out += self.entry(name, items)
        for title, items in Rst.rules(section):
            out += [f'.Ss "{title}"', *self.items(items)[1:]]
        out += [f'.Ss "{self.escape(o.block.title)}"', *self.items(o.block.items)]
        if o.block.header.intro:
            out += [f'.Ss "All of {o.block.header.title}"', *self.items(o.block.header.intro)]
        others = [page_name(other) for other in o.block.operations.values() if other is not o]
        out += [".Sh SEE ALSO", *(f".Xr {name} 3 ," for name in sorted(others)), ".Xr tevs 1"]
        return "\n".join(out) + "\n"


def page_name(operation):
    """That of the operation's first function: a name that nobody has to guess."""
    return operation.functions[0].name


def read(headers):
    families = re.findall(r'#include "tevs/(\w+)\.h"\s*(?:/\* (.*?) \*/)?', (headers / "tevs.h").read_text())
    found = [(Header(headers / "tevs" / f"{name}.h"), about) for name, about in families]
    return found + [(Header(headers / "tevcore.h"), "the companion library")]


def index(found):
    """All functions, by operation and letter."""
    operations = collections.defaultdict(list)
    for header, _ in found:
        for block in header.blocks:
            for o in block.operations.values():
                operations[re.sub(r"^tev(?:_|(?=[A-Z]))|^\d+(?=[A-Z])", "", o.name)].append(o)
    out, letter = ["Functions, A to Z", "=================", "",
                   "By operation; the rest of a name is its types and its form.", ""], None
    for name in sorted(operations, key=str.lower):
        if name[0].upper() != letter:
            letter = name[0].upper()
            out += [letter, "-", ""]
        for o in operations[name]:
            forms = [f":c:func:`{n} <{n}>`" for n in o.names()]
            out += [f":ref:`{o.name} <{o.anchor}>`", "   " + " · ".join(forms), ""]
    return "\n".join(out)


def write(headers, source, man):
    found = read(headers)
    functions = {f for header, _ in found for f in header.functions}
    statuses = set(re.findall(r"^    ((?:Status|Warn)\w+) =", (headers / "tevs/types.h").read_text(), re.M))
    rst, mdoc = Rst(functions, statuses, {h.name for h, _ in found}), Man()
    version = re.findall(r"TEVS_VERSION_(?:MAJOR|MINOR|PATCH) (\d+)", (headers / "tevs/core.h").read_text())
    reference, pages = source / "reference", man / "man3"
    for directory in reference, pages:
        directory.mkdir(parents=True, exist_ok=True)
    operations, date = {}, time.strftime("%B %-d, %Y", time.gmtime(int(os.environ.get("SOURCE_DATE_EPOCH", time.time()))))
    for header, about in found:
        (reference / f"{header.name}.rst").write_text(rst.page(header, about or "names, types, statuses"))
        for block in header.blocks:
            for o in block.operations.values():
                operations.setdefault("tevs" + o.name, o.anchor)
                page = mdoc.page(Section(o), date, block.title.split(": ", 1)[-1])
                (pages / f"{page_name(o)}.3").write_text(page)
                for name in o.names()[1:]:
                    (pages / f"{name}.3").write_text(f".so man3/{page_name(o)}.3\n")
    (reference / "functions.rst").write_text(index(found))
    names = {"version": ".".join(version[:3]), "functions": sorted(functions), "operations": operations}
    (source / "names.json").write_text(json.dumps(names))
    print(f"{len(functions)} functions in {len(found)} headers, {sum(len(b.operations) for h, _ in found for b in h.blocks)} operations")


class Page(html.parser.HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.anchors, self.links = set(), []
        self.feed(path.read_text())

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name in ("id", "name") and value:
                self.anchors.add(value)
            elif name in ("href", "src") and value:
                self.links.append(value)


def check(headers, site, man):
    faults = []
    functions = [f for header, _ in read(headers) for f in header.functions]
    search, listed = (site / "searchindex.js").read_text(), Page(site / "reference/functions.html")
    indexed = {link.rpartition("#c.")[2] for link in listed.links if "#c." in link}
    for f in functions:
        if f'"{f}"' not in search:
            faults.append(f"the search does not know {f}")
        if f not in indexed:
            faults.append(f"the index does not have {f}")
        page = man / "man3" / f"{f}.3"
        if not page.is_file() or not re.search(rf"^\.so man3/|^\.Nm {f}\b", page.read_text(), re.M):
            faults.append(f"no page in section 3 for {f}")
    pages = {path.resolve(): Page(path) for path in site.rglob("*.html")}
    for path, page in pages.items():
        for link in page.links:
            url = urllib.parse.urlsplit(link)
            if url.scheme or url.netloc:
                continue
            target = (path.parent / urllib.parse.unquote(url.path)).resolve() if url.path else path
            if not target.exists():
                faults.append(f"{path.relative_to(site.resolve())}: {link} is not there")
            elif url.fragment and target in pages and urllib.parse.unquote(url.fragment) not in pages[target].anchors:
                faults.append(f"{path.relative_to(site.resolve())}: {link} has no such place")
    typeset = [(path, m[0]) for path in pages for m in re.finditer(r"<math .*?</math>", path.read_text())]
    faults += [f"{path.name}: a formula has lost or moved something: {text}" for path, text in typeset if not formulas.faithful(ElementTree.fromstring(text))]
    for fault in faults[:20]:
        print(fault, file=sys.stderr)
    links = sum(len(p.links) for p in pages.values())
    print(f"{len(functions)} functions found by search, index and man, {links} links of {len(pages)} pages followed, {len(typeset)} formulas typeset, {len(faults)} faults")
    return bool(faults)


def main():
    paths = [pathlib.Path(a) for a in sys.argv[1:]]
    if sys.argv[1] == "--check":
        sys.exit(check(*paths[1:]))
    write(*paths)


if __name__ == "__main__":
    main()
