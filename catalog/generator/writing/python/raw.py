"""This module writes a Python function for each operation, with the names, numbers and order of the C function."""

from ...reading.arguments import OUTWARD
from ..header import result_text, size_text
from .text import WIDTH, call_of, docstring, opening

ERRORS = {"report": "BSP_ERR_IPC", "pass": "the IPC library's own value", "silent": "the IPC library's own value"}
WORDS = {"u8-out": ("uint8_t", 1), "u16-out": ("uint16_t", 2), "u32-out": ("uint32_t", 4)}
# The helpers have names that no argument has.
HELPERS = [("_call", "NULL"), ("_call", "block"), ("_call", "buffer"), ("_call", "copied"), ("_call", "failure"),
           ("_call", "new"), ("_call", "optional_block"), ("_call", "optional_text"), ("_call", "text"),
           ("_call", "text_of"), ("_native", "lib"), ("database", "database"), ("database", "memory")]
BRIEF = (
    "Every operation of the library, exactly: the names, the arguments and their order are those of the C functions. "
    "What a C function delivers through a pointer is returned instead, several values as a tuple. A length that says "
    "how long a block of the caller is has no argument here.")


def raw(catalogue):
    operations = catalogue.operations()
    functions = [function for family in catalogue.families for function in family.functions]
    lines = [*opening(BRIEF), "from typing import Final", "",
             "from . import records", "from ._call import Bytes",
             *(f"from .{module} import {name} as _{name}" for module, name in HELPERS),
             "from .database import Database, Memory", "from .onu_ids import " + ", ".join(
                 sorted(["onu_id_set", *(function.name for function in functions)])), ""]
    lines += [f"{name}: Final = {value}  # {brief}" for name, value, brief in constants(catalogue)]
    for operation in operations:
        lines += Writer(operation).lines()
    names = [*(function.name for function in functions), *(operation.name for operation in operations)]
    lines += ["", "", "# The names of all functions.", "OPERATIONS: Final[tuple[str, ...]] = ("]
    lines += [f'    "{name}",' for name in names]
    return "\n".join([*lines, ")"]) + "\n"


def constants(catalogue):
    for status in catalogue.statuses.values():
        yield status.name, status.value, status.brief
    for channel in catalogue.channels.values():
        yield channel.name, channel.type, channel.brief
    for command in sorted(catalogue.commands.values(), key=lambda command: (command.channel.type, command.code)):
        yield command.name, command.code, f"{command.channel.name}: {command.brief}"


class Writer:
    """This class writes the function of one operation."""

    def __init__(self, operation):
        self.operation = operation
        self.given = []     # the parameters in Python
        self.before = []    # statements that make room
        self.passed = []    # the arguments of the C call
        self.outputs = []   # (name, expression, type) of what is delivered
        for argument in operation.args.values():
            getattr(self, "take_" + argument.type.replace("-", "_"))(argument)

    def take_u32(self, argument):
        self.given.append((argument.name, "int"))
        self.passed.append(argument.name)

    take_u8 = take_u16 = take_u32

    def take_mac(self, argument):
        self.given.append((argument.name, "Bytes"))
        self.passed.append(f'_block({argument.name}, 6, "{argument.name}")')

    def take_text(self, argument):
        self.given.append((argument.name, "str" if argument.required else "str | None"))
        self.passed.append(f'{"_text" if argument.required else "_optional_text"}({argument.name}, "{argument.name}")')

    def take_block(self, argument):
        self.given.append((argument.name, "Bytes | None" if argument.optional else "Bytes"))
        size = argument.size or None
        converted = "_optional_block" if argument.optional else "_block"
        self.passed.append(f'{converted}({argument.name}, {size}, "{argument.name}")')

    def take_length(self, argument):
        if self.states_room(argument):
            self.given.append((argument.name, "int"))
            self.passed.append(argument.name)
        else:
            self.passed.append(f"len({argument.of.name} or b\"\")")

    def take_length_at(self, argument):
        self.given.append((argument.name, "int"))
        self.passed.append(f'_new("uint32_t *", {argument.name})')

    def states_room(self, argument):
        return argument.of.type == "block-out"

    def take_record(self, argument):
        self.given.append((argument.name, f"records.{self.operation.record.name}"))
        self.passed.append(f"{argument.name}.cdata")

    def take_response(self, argument):
        kind = f"records.{self.operation.response_record.name}"
        self.room(argument, f"{kind}()", f"{argument.name}.cdata", argument.name, kind)

    def take_db(self, argument):
        if argument.dropped:
            self.passed.append("_NULL")
        else:
            self.room(argument, '_new("db_handle **")', argument.name, f"_database({argument.name})", "Database")

    def take_text_out(self, argument):
        size = self.operation.response_size - argument.field.offset + 1
        self.room(argument, f'_new("char[]", {size})', argument.name, f"_text_of({argument.name})", "str")

    def take_u8_out(self, argument):
        ctype, size = WORDS[argument.type]
        index = argument.skip // size
        self.room(argument, f'_new("{ctype}[]", {index + 1})', argument.name, f"int({argument.name}[{index}])", "int")

    take_u16_out = take_u32_out = take_u8_out

    def take_block_out(self, argument):
        size = argument.size
        if not size:
            size = next(each.name for each in self.operation.args.values() if each.of is argument)
        elif argument.skip:
            size += argument.skip
        part = f"[{argument.skip}:]" if argument.skip else "[:]"
        self.room(argument, f'_new("uint8_t[]", {size})', argument.name, f"_buffer({argument.name}){part}", "bytes")

    def take_block_inout(self, argument):
        optional = argument.optional
        self.given.append((argument.name, "Bytes | None" if optional else "Bytes"))
        size = argument.size or None
        place = f"{argument.name}_place"
        self.before.append(f'{place} = _copied({argument.name}, {size}, "{argument.name}")')
        self.passed.append(place)
        self.outputs.append((argument.name, f"_buffer({place})[:]", "bytes"))

    def take_pblock_out(self, argument):
        self.room(argument, '_new("void **")', argument.name, f"_memory({argument.name})", "Memory")

    def room(self, argument, made, passed, delivered, kind):
        self.before.append(f"{argument.name} = {made}")
        self.passed.append(passed)
        self.outputs.append((argument.name, delivered, kind))

    def lines(self):
        operation = self.operation
        kinds = [kind for _, _, kind in self.outputs]
        returned = "None" if not kinds else kinds[0] if len(kinds) == 1 else f"tuple[{', '.join(kinds)}]"
        head = call_of(f"def {operation.name}", [f"{name}: {kind}" for name, kind in self.given], "")
        lines = ["", "", f"{head} -> {returned}:", *docstring(self.about(), "    ")]
        lines += [f"    {line}" for line in self.before]
        lines.append("    done = " + call_of(f"_lib.exact_{operation.name}", self.passed, "    "))
        values = [expression for _, expression, _ in self.outputs]
        if not values:
            return [*lines, "    if done:", f'        raise _failure(done, "{operation.name}", None)']
        value = values[0] if len(values) == 1 else f"({', '.join(values)})"
        row = f"    delivered: {returned} = {value}"
        assert len(row) <= WIDTH + 4, row
        return [*lines, row, "    if done:", f'        raise _failure(done, "{operation.name}", delivered)',
                "    return delivered"]

    def about(self):
        operation, command = self.operation, self.operation.command
        code = f"{command.name} ({command.code})" if command else "the command that the caller states"
        lines = [operation.brief, "", f"Sends {code} on {operation.channel.name}, {size_text(operation.record)}; "
                 f"{operation.impact.replace('_', '-')}."]
        if operation.notes:
            lines += ["", operation.notes]
        described = {name for name, _ in self.given}
        arguments = [argument for argument in operation.args.values() if argument.name in described]
        if arguments:
            lines += ["", "Args:", *((f"    {argument.name}: {self.described(argument)}.", "        ")
                                     for argument in arguments)]
        if self.outputs:
            lines += ["", "Returns:", *((f"    {name}: {self.delivered(operation.args[name])}.", "        ")
                                        for name, _, _ in self.outputs)]
        status = operation.odd.get("status") or "the service answered with another status word than 0"
        too_long = result_text(operation)
        if too_long and "BSP_ERR_PARAM" in too_long:
            status += "; or a block is too long to be sent"
        lines += ["", "Raises:", (f"    StatusError: {status}.", "        "),
                  (f"    IpcError: the exchange failed; C returns {ERRORS[operation.error_policy]}.", "        ")]
        return lines

    def described(self, argument):
        text = argument.brief
        if argument.type == "text":
            text += "" if argument.required else "; None leaves the field empty"
        elif argument.type in ("block", "block-inout") and argument.optional:
            text += "; None sends nothing of it"
        if argument.field and argument.field.unit:
            text += f", in {argument.field.unit}"
        return text

    def delivered(self, argument):
        text = argument.brief
        if argument.type in OUTWARD and argument.size:
            text += f" ({argument.size} bytes)"
        return text
