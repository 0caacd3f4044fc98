"""This module writes the methods of a remote ONU: one for each question to it, and one for each of its settings."""

import re

from .answers import description_of, type_of, type_of_one
from .queries import asked, settings, short
from .text import class_name, docstring, opening

# The first setting is of a UNI port, and no question of its name says so. The other one is of all of them.
UNI_SETTINGS, ONU_SETTINGS = ("port_config",), ("perf_monitor",)
# Images are pushed part by part by a method that is written by hand.
BY_HAND = ("image_write",)
# What methods call the arguments of operations.
ARGUMENTS = {"uni_port": "uni", "byte_arg": "uni", "index": "index"}
SWITCHES = ({"off", "on"}, {"no", "yes"})


def onu(catalogue):
    lines = [*opening("What can be asked of a remote ONU, and set there: a method each."),
             "from typing import Any, Literal, cast", "", "from . import answers, rows", "from ._field import Value",
             "from ._onu_base import OnuBase", "", "",
             "class OnuMethods(OnuBase):", '    """The questions and the settings of the catalogue, by name."""']
    questions = {short(operation.command.name): (operation, view, layout)
                 for operation, view, layout in asked(catalogue)}
    for name, (operation, view, layout) in questions.items():
        if name.removeprefix("view_").startswith("onu_") and {"pon_port", "onu_id"} <= given_of(operation):
            lines += question(name, operation, view, layout)
    for name, layout, _ in settings(catalogue):
        if name not in BY_HAND:
            lines += setting(name, layout, questions)
    return "\n".join(lines) + "\n"


def given_of(operation):
    """Returns the names of the numbers that a question takes. One whose record the caller builds takes the ONU's."""
    if operation.answer == "in_place":
        return {"pon_port", "onu_id"}
    return {argument.name for argument in operation.args.values()}


def question(name, operation, view, layout):
    arguments = [ARGUMENTS[argument] for argument in operation.args if argument in ARGUMENTS]
    taken = "".join(f", {argument}: int" for argument in arguments).replace("index: int", "index: int = 0")
    by_name = ["index" if argument == "index" else "byte_arg" if "byte_arg" in operation.args else "uni"
               for argument in arguments]
    passed = "".join(f", {key}={argument}" for key, argument in zip(by_name, arguments))
    # A table is named as its rows are, and a number of values after the question.
    method = view.name.removeprefix("onu_") if view else "get_" + name.removeprefix("onu_")
    kind = f"list[rows.{class_name(view.name)}]" if view else f"answers.{class_name(layout.name)}"
    # How the answer travels is nothing to whoever calls this.
    about = re.sub(r", (by datagram|by a record|for the SNMP agent|which comes as a text in the answer).*", ".",
                   operation.brief)
    call = f'self.ask("{name}"{passed})'
    if view:
        result = f'return self.table(rows.{class_name(view.name)}, "{name}"{passed})'
    else:
        result = f"return cast({kind}, {call})"
    about = docstring([about, "", (view or layout).brief], "        ")
    return ["", f"    def {method}(self{taken}) -> {kind}:", *about, f"        {result}"]


def setting(name, layout, questions):
    fields = [field for field in layout.fields.values() if field.index == 0]
    counters = {field.counter for field in fields}
    fields = [field for field in fields if field.base not in counters]
    read = next((questions[each] for each in (f"onu_{name}", f"onu_{name}_local") if each in questions), None)
    of_uni = name in UNI_SETTINGS or name not in ONU_SETTINGS and read and "uni_port" in read[0].args
    taken = ["uni: int"] if of_uni else []
    taken += ["index: int"] if any(field.base == "index" for field in fields) else []
    named = [field for field in fields if field.base != "index"]
    left_out = layout.left_out or ("What is not named stays as it is." if layout.present else "")
    about = [f"{layout.brief} {left_out}".strip(), "", "Args:"]
    about += [("    uni: UNI port of the ONU", "        ")] if of_uni else []
    about += [(f"    {description_of(field)}", "        ") for field in fields]
    lines = ["", f"    def set_{name}(self, {''.join(f'{each}, ' for each in taken)}*,"]
    lines += [f"{' ' * 8}{field.base}: {taken_type(field)} | None = None," for field in named]
    lines[-1] = lines[-1].rstrip(",") + ") -> None:"
    lines += docstring(about, "        ")
    pairs = [f'"{field.base}": {field.base}' for field in named]
    lines += ["        given: dict[str, Any] = {", *(f"            {pair}," for pair in pairs), "        }"]
    passed = "uni=uni, " if of_uni else ""
    passed += "index=index, " if "index: int" in taken else ""
    return [*lines, f'        self._set_given("{name}", given, {passed.rstrip(", ")})'.replace(", )", ")")]


def taken_type(field):
    """Returns the type of what a field takes."""
    if field.times > 1:
        return "list[Value]" if field.decider else type_of(field)
    if field.values:
        names = f"Literal[{', '.join(repr(name) for name in field.values)}]"
        return f"{names} | bool" if set(field.values) in SWITCHES else names
    return "Value" if field.decider else type_of_one(field)
