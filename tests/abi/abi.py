"""This module has what the tests of the library's binary interface share: they read the header as text, and build and
examine the library.

abi.py TARGET OPTIMISATION FOLDER    builds the library's objects and the library into the folder
abi.py --command TARGET              prints the command of docs/board.md, with the sources in their order
"""

import pathlib
import re
import shlex
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
HEADER = ROOT / "include" / "bsp_pon.h"
MAP = ROOT / "catalog" / "generated" / "libbsp_pon.map"

# This command is all that a board's build system has to know, as docs/board.md states it. The flags behind it keep the C++
# runtime out of the link.
BUILD = ("{prefix}g++ -std=c++20 -shared -fPIC -fno-exceptions -fno-rtti -fvisibility=hidden "
         "-Iinclude -Iboard/include -Isrc $(find src -name '*.cpp')")
WITHOUT_RUNTIME = "-nodefaultlibs -lc"

# These are the prefixes of the tool chains for the host and for the board.
TARGETS = {"host": "", "mips": "mips-linux-gnu-"}
OPTIMISATIONS = ("-O0", "-O2", "-Os")
LIBRARY = "libbsp_pon.so"


def available(target):
    return shutil.which(TARGETS[target] + "g++") is not None


def run(command):
    """Returns the output of a command that must succeed and write nothing on standard error."""
    done = subprocess.run(command, cwd=ROOT, capture_output=True, text=True)
    if done.returncode or done.stderr:
        raise AssertionError(f"{shlex.join(map(str, command))} failed:\n{done.stdout}{done.stderr}")
    return done.stdout


def flags_for(target):
    return BUILD.format(prefix=TARGETS[target]).split(" $(")[0]


def build(target, optimisation, folder):
    """Builds the library's object files with the flags of its build, and the library from them. Without optimisation
    the library is built by exactly the command of docs/board.md.
    """
    command = BUILD.format(prefix=TARGETS[target])
    flags = flags_for(target)
    library = folder / LIBRARY
    objects = []
    for index, source in enumerate(sorted((ROOT / "src").rglob("*.cpp"))):
        objects.append(folder / f"{index}-{source.stem}.o")
        run([*flags.replace("-shared ", "").split(), optimisation, "-c", source, "-o", objects[-1]])
    if optimisation == "-O0":
        run(["sh", "-c", f"{command} {WITHOUT_RUNTIME} -o {shlex.quote(str(library))}"])
    else:
        run([*flags.split(), optimisation, *objects, *WITHOUT_RUNTIME.split(), "-o", library])


def dynamic_symbols(target, library, which):
    """Returns {name: type letter}. `which` is --defined-only or --undefined-only."""
    rows = run([TARGETS[target] + "nm", "-D", which, library]).split("\n")
    found = {row.split()[-1].split("@")[0]: row.split()[-2] for row in rows if row}
    return {name: letter for name, letter in found.items() if letter != "A"}  # the names of versions


def sections(target, files):
    """Returns {file: {name: size}} for object files."""
    found = {}
    for row in run([TARGETS[target] + "size", "-A", *files]).split("\n"):
        if row.endswith(" :"):
            found[row.split()[0]] = current = {}
        elif row.startswith("."):
            current[row.split()[0]] = int(row.split()[1])
    return found


def mapped_names():
    names = re.findall(r"^\s+(\w+);$", MAP.read_text(encoding="utf-8"), re.MULTILINE)
    return set(names)


def without_comments(text):
    return re.sub(r"/\*.*?\*/", "", text, flags=re.DOTALL)


def header_text():
    return without_comments(HEADER.read_text(encoding="utf-8"))


def prototypes():
    """Returns {name: 'result(argument types)'} for the header's functions."""
    found = {}
    for result, name, arguments in re.findall(r"^BSP_PON_API (.+?)(\w+)\(([^)]*)\);", header_text(), re.MULTILINE):
        types = [" ".join(re.sub(r"\w+$", "", argument.strip()).split()) if argument.strip() != "void" else "void"
                 for argument in arguments.split(",")]
        found[name] = f"{result.strip()}({', '.join(types)})"
    return found


def structs():
    """Returns {name: [member, ...]} for the header's records."""
    found = {}
    for name, body in re.findall(r"^struct (\w+) \{(.*?)^\};", header_text(), re.MULTILINE | re.DOTALL):
        found[name] = re.findall(r"(\w+)(?:\[\d+\])?;", body)
    return found


def constants():
    """Returns {name: value as written} for the header's constants."""
    return dict(re.findall(r"^#define (BSP_\w+) (\d+u)", header_text(), re.MULTILINE))


if __name__ == "__main__" and sys.argv[1] == "--command":
    print(flags_for(sys.argv[2]), *sorted(path.relative_to(ROOT) for path in (ROOT / "src").rglob("*.cpp")), WITHOUT_RUNTIME)
elif __name__ == "__main__":
    build(sys.argv[1], sys.argv[2], pathlib.Path(sys.argv[3]))
