"""Compiles what the pages of docs/ show in C and C++, by a compiler that takes warnings for errors.

    compiled_test.py ROOT C-COMPILER C++-COMPILER INCLUDE-FOLDER...

A block of the language `c` or `cpp` is the body of a function, in which the blocks of its page before it stand around it.
"""

import pathlib
import re
import subprocess
import sys
import tempfile

BLOCK = re.compile(r"^```(c|cpp)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
# What a reader knows to be there, and a page does not show.
HEADERS = {
    "c": ["<stdio.h>", '"bsp_pon.h"', '"board/service.h"', '"bsp_testing/simulator.h"'],
    "cpp": ["<string>"],
}
AROUND = {
    "c": "void fail(const char *why);\nextern char said[256];\nextern bsp_simulator *other;\nvoid shown(void);\nvoid shown(void)\n",
    "cpp": "extern std::string line;\nvoid shown();\nvoid shown()\n",
}
OPTIONS = {
    "c": ["-std=c99", "-Wno-unused-variable", "-Wno-unused-but-set-variable"],
    "cpp": ["-std=c++20", "-Wno-unused-variable", "-Wno-unused-but-set-variable"],
}


def program_of(language, blocks):
    lines = [f"#include {header}" for header in HEADERS[language]]
    lines += [line for block in blocks for line in block.splitlines() if line.startswith("#include")]
    body = "\n{\n".join("\n".join(line for line in block.splitlines() if not line.startswith("#include")) for block in blocks)
    return "\n".join(lines) + "\n" + AROUND[language] + "{\n" + body + "\n}" * len(blocks) + "\n"


def main(root, c_compiler, cpp_compiler, *folders):
    compiled = wrong = 0
    for page in sorted(pathlib.Path(root, "docs").glob("*.md")):
        found = BLOCK.findall(page.read_text(encoding="utf-8"))
        for language, compiler in (("c", c_compiler), ("cpp", cpp_compiler)):
            blocks = [block for named, block in found if named == language]
            if not blocks:
                continue
            with tempfile.TemporaryDirectory() as folder:
                source = pathlib.Path(folder, f"{page.stem}.{language}")
                source.write_text(program_of(language, blocks), encoding="utf-8")
                words = [compiler, "-fsyntax-only", "-Wall", "-Wextra", "-Werror", *OPTIONS[language], *(f"-I{one}" for one in folders), source]
                done = subprocess.run(words, capture_output=True, text=True, check=False)
            compiled += len(blocks)
            if done.returncode != 0:
                wrong += 1
                print(f"{page.name}: what it shows in {language} does not compile:\n{done.stderr}")
    print(f"{compiled} blocks")
    return 1 if wrong or compiled == 0 else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
