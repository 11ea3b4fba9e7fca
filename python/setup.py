"""Builds tevs.raw against the library and takes the library's two shared objects into the package.

The library is that of TEVS_LIBRARY_DIR (where libtevsq7.so and libtevcore.so are), else of this tree's build/x86_64, else the installed one that pkg-config knows. In the
source tree the C side is made of the headers; a source distribution brings what was made, and the headers that it was made of.

With TEVS_SYSTEM_LIBRARY in the environment the shared objects stay out of the package, for a system that has them where its loader looks.
"""
import os
import pathlib
import shutil
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

here = pathlib.Path(__file__).resolve().parent
made = here / "generated"
libraries = ["tevsq7", "tevcore"]
bundle = "TEVS_SYSTEM_LIBRARY" not in os.environ


def library_dir():
    tree = here.parent / "build" / "x86_64" / "lib"
    if "TEVS_LIBRARY_DIR" in os.environ:
        where = pathlib.Path(os.environ["TEVS_LIBRARY_DIR"])
    elif tree.is_dir():
        where = tree
    else:
        try:
            found = subprocess.run(["pkg-config", "--variable=libdir", "tevs"], capture_output=True, text=True, check=True).stdout.strip()
        except (OSError, subprocess.CalledProcessError):
            sys.exit("setup.py: no library: build it (cmake --preset x86_64 && cmake --build --preset x86_64), install it, or set TEVS_LIBRARY_DIR")
        where = pathlib.Path(found)
    for name in libraries:
        if not (where / f"lib{name}.so").exists():
            sys.exit(f"setup.py: there is no lib{name}.so in {where}")
    return where


def generate():
    headers = here.parent / "include"
    if not headers.is_dir():
        return   # a source distribution
    made.mkdir(exist_ok=True)
    subprocess.run([sys.executable, str(here / "generate.py"), str(headers), str(made)], check=True)
    shutil.rmtree(made / "include", ignore_errors=True)
    shutil.copytree(headers, made / "include")
    shutil.copy(here.parent / "LICENSE", here / "LICENSE")
    for name in ("raw.pyi", "_index.py"):
        shutil.copy(made / name, here / "tevs" / name)


def version():
    text = (made / "include" / "tevs" / "core.h").read_text()
    parts = (text.split(f"#define TEVS_VERSION_{part} ")[1].split()[0] for part in ("MAJOR", "MINOR", "PATCH"))
    return ".".join(parts)


class build(build_ext):
    def run(self):
        where = library_dir()
        for extension in self.extensions:
            extension.library_dirs = [str(where)]
        super().run()
        if not bundle:
            return
        package = here if self.inplace else pathlib.Path(self.build_lib)
        bundled = package / "tevs" / "_lib"
        bundled.mkdir(parents=True, exist_ok=True)
        for name in libraries:
            shutil.copy(where / f"lib{name}.so.5", bundled / f"lib{name}.so.5")


generate()
setup(
    version=version(),
    ext_modules=[Extension("tevs.raw", ["tevs/raw.c"], include_dirs=["generated", "generated/include"], libraries=libraries, py_limited_api=True,
                           extra_compile_args=["-std=gnu11", "-Wall", "-Wextra"], extra_link_args=["-Wl,-rpath,$ORIGIN/_lib", "-Wl,--no-as-needed"] if bundle else [])],
    cmdclass={"build_ext": build},
    options={"bdist_wheel": {"py_limited_api": "cp311"}},
)
