#!/usr/bin/env python3
"""The interface that binaries see, as text that can be reviewed, and as something that abidiff can read.

    interface.py describe HEADERS       prints the types of the public headers, and of the functions their types and, by these, their names
    interface.py library TEXT SOURCE    writes a C program that defines what TEXT, the output of the former, declares
"""
import pathlib
import re
import sys
import textwrap


def statements(text):
    """The declarations of a header or of a description, each on a line but for the enumerators of an enum."""
    text = re.sub(r"/\*.*?\*/", "", text, flags=re.S)
    text = re.sub(r"^#.*(\\\n.*)*$|^(TEVS|TEVCORE)_(BEGIN|END)$", "", text, flags=re.M)
    for statement in re.findall(r"(?:[^;{}]|\{[^}]*\})+;", text):
        statement = " ".join(statement.split())
        if re.match(r"(typedef )?enum", statement):
            statement = re.sub(r",? ?(\w+ = -?\d+)", r"\n    \1,", statement).replace(", }", "\n}")
        yield statement


def describe(headers):
    families = re.findall(r'#include "(tevs/\w+\.h)"', (headers / "tevs.h").read_text())
    functions = {}
    for header in ["tevs/types.h", *(f for f in families if f != "tevs/types.h"), "tevcore.h"]:
        for statement in statements((headers / header).read_text()):
            function = re.fullmatch(r"([^(]*?)(\w+)\(([^()]*)\);", statement)
            if not function or statement.startswith("typedef"):
                print(statement)
                continue
            types = ", ".join(re.sub(r"\s*\b\w+$", "", p.strip()) or p.strip() for p in function[3].split(","))
            functions.setdefault(f"{function[1].strip()} ({types})", []).append(function[2])
    for kind, names in functions.items():
        print(textwrap.fill(f"{kind}: {' '.join(names)};", 160, subsequent_indent="    ", break_long_words=False, break_on_hyphens=False))


def library(text, source):
    """Constants that no function names are made the parameter of one, or nobody would see them change."""
    out = ["#include <stdint.h>\n"]
    for statement in statements(text):
        constants = re.match(r"enum \{\s*(\w+)", statement)
        functions = re.fullmatch(r"([^(]*) (\([^()]*\)): (.*);", statement)
        variable = re.match(r"extern (.*);", statement)
        if constants:
            name = f"constants_{constants[1]}"
            out.append(f"{statement.replace('enum', f'enum {name}', 1)}\nvoid {name}(enum {name} value) {{}}\n")
        elif functions:
            out += (f"{functions[1]} {name}{functions[2]} {{ __builtin_unreachable(); }}\n" for name in functions[3].split())
        elif variable:
            out.append(f"{variable[1]} = 0;\n")
        else:
            out.append(f"{statement}\n")
    source.write_text("".join(out))


if sys.argv[1] == "describe":
    describe(pathlib.Path(sys.argv[2]))
else:
    library(pathlib.Path(sys.argv[2]).read_text(), pathlib.Path(sys.argv[3]))
