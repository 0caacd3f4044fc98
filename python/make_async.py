"""Writes the classes of bsp_pon.aio, which have the methods of the synchronous ones. Called as a script, with the
folder of the hand-written modules, that of the generated ones, and the output.

The methods are read from the sources, so that nothing has to be compiled before. Each waits for its namesake, which
runs in a thread of the pool; mypy holds both to the same arguments.
"""

import ast
import pathlib
import sys

OPENING = '''# generated from the synchronous classes by python/make_async.py; change those, not this file.
"""The classes of an OLT and its parts for asyncio: each method waits for the one of the same name, in a thread."""

from __future__ import annotations

from collections.abc import Iterable, Sequence
from typing import Literal, TypeVar

from . import answers, olt, onu, parts, rows
from ._field import Value
from ._layout import Values
from ._pool import Pool
from ._row import Row
from .parts import Configuration

AnyRow = TypeVar("AnyRow", bound=Row)'''

# Each class, with the module of each class that it is made of, from the ground up.
CLASSES = {
    "onu.Onu": {"OnuBase": "_onu_base", "OnuMethods": "_onu_methods", "Onu": "onu"},
    **{f"parts.{name}": {name: f"parts/{module}"} for name, module in {
        "Configurations": "configuration", "Profiles": "profiles", "Upgrades": "upgrades", "Fdb": "fdb", "P2p": "p2p",
        "LoopDetection": "loop_detection", "Modules": "modules", "Chip": "chip"}.items()},
    "olt.Olt": {"OltBase": "_olt_base", "Olt": "olt"},
}
# Waiting is different where it does not hold up others; what sends nothing needs no thread.
BY_HAND = ("pause", "wait", "wait_online", "onu")


def write(folders, output):
    lines = [OPENING]
    for name, modules in CLASSES.items():
        lines += class_of(name, [parsed(folders, module, each) for each, module in modules.items()])
    output.write_text("\n".join(lines) + "\n", encoding="utf-8")


def parsed(folders, module, name):
    """Returns a class of a module."""
    file = next(folder / f"{module}.py" for folder in folders if (folder / f"{module}.py").is_file())
    for node in ast.parse(file.read_text(encoding="utf-8")).body:
        if isinstance(node, ast.ClassDef) and node.name == name:
            return node
    sys.exit(f"make_async.py: {file} has no class {name}")


def class_of(name, classes):
    own = name.partition(".")[2]
    lines = ["", "", f"class {own}:", *docstring(classes[-1], "    "), "",
             f"    def __init__(self, pool: Pool, made: {name}) -> None:",
             "        self._pool, self._made = pool, made"]
    if own == "Onu":
        lines += ["        self.port, self.onu_id = made.port, made.onu_id", "",
                  "    def __repr__(self) -> str:", "        return repr(self._made)"]
    if own == "Olt":
        lines += [f"        self.{part} = {kind}(pool, made.{part})" for part, kind in parts_of(classes[0])]
    methods = {node.name: node for each in classes for node in each.body if isinstance(node, ast.FunctionDef)}
    for method in methods.values():
        if not method.name.startswith("_") and method.name not in BY_HAND:
            lines += ["", *method_of(method, name)]
    return lines


def parts_of(base):
    """Returns the attributes that a new OLT has, and their classes."""
    (init,) = [node for node in base.body if isinstance(node, ast.FunctionDef) and node.name == "__init__"]
    names = {name.partition(".")[2] for name in CLASSES}
    return [(node.targets[0].attr, node.value.func.id) for node in init.body
            if isinstance(node, ast.Assign) and isinstance(node.value.func, ast.Name) and node.value.func.id in names]


def method_of(node, owner):
    is_static = any(isinstance(each, ast.Name) and each.id == "staticmethod" for each in node.decorator_list)
    taken, returned = ast.unparse(node.args), ast.unparse(node.returns)
    given = [argument.arg for argument in [*node.args.posonlyargs, *node.args.args] if argument.arg != "self"]
    given += [f"*{node.args.vararg.arg}"] if node.args.vararg else []
    given += [f"{argument.arg}={argument.arg}" for argument in node.args.kwonlyargs]
    given += [f"**{node.args.kwarg.arg}"] if node.args.kwarg else []
    if is_static:
        return ["    @staticmethod", f"    def {node.name}({taken}) -> {returned}:", *docstring(node, "        "),
                f"        return {owner}.{node.name}({', '.join(given)})"]
    call = f"await self._pool.run({', '.join([f'self._made.{node.name}', *given])})"
    if "AnyRow" in taken:  # mypy does not follow a type of the caller's through another function
        call = f"await self._pool.run(lambda: self._made.{node.name}({', '.join(given)}))"
    return [f"    async def {node.name}({taken}) -> {returned}:", *docstring(node, "        "),
            f"        {call if returned == 'None' else f'return {call}'}"]


def docstring(node, indent):
    lines = ast.get_docstring(node).replace("\\", "\\\\").split("\n")
    if len(lines) == 1:
        return [f'{indent}"""{lines[0]}"""']
    return [f'{indent}"""{lines[0]}', *(f"{indent}{line}".rstrip() for line in lines[1:]), f'{indent}"""']


if __name__ == "__main__":
    write([pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])], pathlib.Path(sys.argv[3]))
