#!/usr/bin/env python3
"""The interface that binaries see, as text that can be reviewed, and as something that abidiff can read.

    interface.py describe HEADERS       prints the types and prototypes of the public headers, each function on a line
    interface.py library TEXT SOURCE    writes a C program that defines what TEXT, the output of the former, declares
"""
import pathlib
import re
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent.parent / "scripts"))
import cpp_header  # noqa: E402


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
    print("/* The types and functions that programs are built with, of this major version: made of the public headers by interface.py. */\n#include <stdint.h>")
    families = re.findall(r'#include "(tevs/\w+\.h)"', (headers / "tevs.h").read_text())
    for header in ["tevs/types.h", *(f for f in families if f != "tevs/types.h"), "tevcore.h"]:
        print(f"\n/* {header} */")
        for statement in statements((headers / header).read_text()):
            print(statement)


def library(text, source):
    """Constants that no function names are made the parameter of one, or nobody would see them change."""
    out = ["#include <stdint.h>\n"]
    for statement in statements(text):
        constants = re.match(r"enum \{\s*(\w+)", statement)
        function = cpp_header.PROTOTYPE.match(statement)
        variable = re.match(r"extern (.*);", statement)
        if constants:
            name = f"constants_{constants[1]}"
            out.append(f"{statement.replace('enum', f'enum {name}', 1)}\nvoid {name}(enum {name} value) {{}}\n")
        elif function:
            out.append(f"{statement[:-1]} {{ __builtin_unreachable(); }}\n")
        elif variable:
            out.append(f"{variable[1]} = 0;\n")
        else:
            out.append(f"{statement}\n")
    source.write_text("".join(out))


if sys.argv[1] == "describe":
    describe(pathlib.Path(sys.argv[2]))
else:
    library(pathlib.Path(sys.argv[2]).read_text(), pathlib.Path(sys.argv[3]))
