"""This module writes the public header."""

import textwrap

from ..reading.arguments import OUTWARD
from .text import GENERATED

PAYLOAD_HEADER = 28  # bytes of a request beside its payload
RULES = [
    "The client library of the EPON OLT's PON management service.", "", "Rules that hold for every function:", "",
    "- A call sends one request to the service and blocks until the board's IPC library returns. There is no start-up, "
    "no shut-down and no state; every function may be called from any thread at once, with 16 KiB of stack left.",
    "- What is sent stands below the first sentence: the command code, by its name or as the caller states it, the "
    "channel, and the record with its length; then what the command does to the network: read, write or "
    "service-affecting. What goes by another function is sent and logged as by that one.",
    "- The result is a status word: BSP_OK or the service's own word, passed through unchanged, after an exchange that "
    "succeeded; else one of the BSP_ERR_ words or a value of the IPC library.",
    "- A failed exchange is reported, passed or silent. Reported: it is logged, and the result is BSP_ERR_IPC. Passed: it is "
    "logged, and the result is the IPC library's own value, of which ipc_strerror has the text. Silent: that value, "
    "and nothing is logged. It is reported where neither a group nor a function says otherwise.",
    "- Outputs are delivered after every exchange that succeeded, whatever the status word, and are untouched when the "
    "exchange failed or a checked pointer was null. Test the status before you use them.",
    "- A pointer that must not be null is checked: if it is null, the result is BSP_ERR_PARAM, and nothing is sent. No other "
    "pointer is checked; it must be valid, unless its description says what null means. Numbers are not checked.",
    "- Integers are in host order, MAC addresses in transmission order, texts NUL-terminated. A text or block that is "
    "longer than its field runs on into the fields behind it and ends with the record.",
    "- A result database is received as a handle, null where the service left none. It belongs to the caller, who reads "
    "and releases it with the board's data-store library."]
ERROR_POLICIES = {"report": "is reported", "pass": "is passed", "silent": "is silent"}


def header(catalogue):
    lines = ["/* clang-format off */", f"/* {GENERATED}. */", *comment(RULES)]
    lines += [
        "#ifndef BSP_PON_H", "#define BSP_PON_H", "", "#include <stdint.h>", "",
        "#ifdef __cplusplus", 'extern "C" {', "#endif", "",
        "#if defined(__GNUC__)", '#define BSP_PON_API __attribute__((visibility("default")))', "#else",
        "#define BSP_PON_API", "#endif", "",
        "#ifndef BOARD_DB_HANDLE", "#define BOARD_DB_HANDLE",
        "typedef struct db_handle db_handle; /* a result database of the board's data-store library */", "#endif", ""]
    lines += ["/* Status words of the library itself. */"]
    lines += [define(status.name, status.value, status.brief) for status in catalogue.statuses.values() if status.of_library]
    lines += ["", "/* The IPC module of the PON management service, and its channels (IPC message types). */"]
    lines += [define("BSP_IPC_MODULE", catalogue.module, "module of every exchange")]
    lines += [define(channel.name, channel.type, channel.brief) for channel in catalogue.channels.values()]
    lines.append("")
    for record in catalogue.records.values():
        lines += struct_of(record)
    family_of = {}
    for family in catalogue.families:
        for operation in family.operations:
            family_of.setdefault(operation.command, family)
    commands = sorted(catalogue.commands.values(), key=lambda command: (command.channel.type, command.code))
    lines += group("commands", "Commands of the generic operations", "Codes that the caller of a generic operation states.",
                   [command for command in commands if command not in family_of], [])
    for family in catalogue.families:
        lines += family_group(family, [command for command in commands if family_of.get(command) is family])
    lines += ["#ifdef __cplusplus", "}", "#endif", "", "#endif"]
    return "\n".join(lines) + "\n"


def group(name, title, text, commands, contents):
    lines = comment([f"@defgroup bsp_{name} {title}", *([text] if text else []), "@{"])
    lines += [define(command.name, command.code, f"{command.channel.name}: {command.brief}") for command in commands]
    return [*lines, "", *contents, "/** @} */", ""]


def family_group(family, commands):
    """Returns the contents of a family, with the failure policy that most of its operations have."""
    ways = [operation.error_policy for operation in family.operations]
    usual = max(ERROR_POLICIES, key=ways.count)
    text = ""
    if len(set(ways)) > 1:
        text = f"A failed exchange {ERROR_POLICIES[usual]} where a function does not say otherwise."
    elif ways and usual != "report":
        text = f"A failed exchange {ERROR_POLICIES[usual]}."
    contents = []
    for entry in family.types:
        contents += type_of(entry)
    for function in family.functions:
        contents += local_function_of(function)
    for operation in family.operations:
        contents += function_of(operation, usual)
    return group(family.group, family.name, text, commands, contents)


def struct_of(record):
    lines = comment([f"{record.brief} {record.size} bytes."]) + [f"struct {record.name} {{"]
    at = 0
    for field in [*record.fields.values(), None]:
        offset = field.offset if field else record.size
        if offset > at:
            lines.append(f"    uint8_t reserved{at}[{offset - at}]; /* zero */")
        if field:
            ctype = {"u32": "uint32_t", "text": "char"}.get(field.type, "uint8_t")
            count = "" if field.type in ("u32", "u8") else f"[{field.size}]"
            lines.append(f"    {ctype} {field.name}{count}; /* {field.offset}: {field.brief} */")
            at = offset + field.size
    return lines + ["};", f"typedef struct {record.name} {record.name};", ""]


def type_of(entry):
    lines = [f"struct {entry.name} {{"]
    lines += [f"    uint32_t {member.name}[{member.words}]; /* {member.brief} */" for member in entry.members]
    return [*comment([entry.brief]), *lines, "};", f"typedef struct {entry.name} {entry.name};", ""]


def local_function_of(function):
    lines = [function.brief, "", "Makes no request."]
    if function.notes:
        lines.append(function.notes)
    lines += [(f"@param {argument.name} {argument.brief}", "       ") for argument in function.args.values()]
    lines.append((f"@return {function.returns.brief}.", "        "))
    result = function.returns.type
    return [*comment(lines), *prototype(function, result if result.endswith("*") else result + " "), ""]


def function_of(operation, usual):
    """Returns the declaration of an operation, in a family whose operations usually fail in one way."""
    command = operation.command
    code = f"{command.name} ({command.code})" if command else (
        "The caller's action" if operation.record.payload else "The caller's command")
    sent = f"{code} on {operation.channel.name}, {size_text(operation.record)}; {operation.impact.replace('_', '-')}"
    if operation.via:
        sent += f", by {operation.via.name}"
    sent += "."
    if operation.error_policy != usual:
        sent += f" A failed exchange {ERROR_POLICIES[operation.error_policy]}."
    lines = [operation.brief, "", sent]
    if operation.notes:
        lines.append(operation.notes)
    lines += [(f"@param {argument.name} {argument_text(argument)}", "       ") for argument in operation.args.values()]
    result = result_text(operation)
    if result:
        lines.append((f"@return {result}.", "        "))
    return comment(lines) + prototype(operation) + [""]


def size_text(record):
    if record.payload:
        return f"{record.name} of {PAYLOAD_HEADER} bytes and the payload"
    return f"{record.name} of {record.size} bytes"


def argument_text(argument):
    text = argument.brief
    if argument.required:
        text += "; must not be null"
    elif argument.type == "text":
        text += "; null leaves the field empty"
    if argument.dropped:
        text += "; never written, may be null"
    elif argument.type in OUTWARD and argument.optional:
        text += "; null for none"
    elif argument.type == "block" and argument.optional:
        text += "; may be null: nothing is sent of it"
    elif argument.type == "block-inout" and argument.optional:
        text += "; may be null: nothing is sent of it, nor delivered"
    return text


def result_text(operation):
    """Returns the description of the result, where the rules of all functions do not describe it."""
    odd = operation.odd.get("status")
    lengths = [argument for argument in operation.args.values() if argument.type == "length"]
    if operation.record.payload and lengths:
        usual = "the service's status word"
        longest = operation.record.size - PAYLOAD_HEADER
        return f"{odd or usual}; BSP_ERR_PARAM where `{lengths[0].name}` is more than {longest}, nothing sent"
    return odd


def prototype(operation, result="uint32_t "):
    arguments = [argument.declaration.replace("{}", argument.name) for argument in operation.args.values()] or ["void"]
    head = f"BSP_PON_API {result}{operation.name}("
    rows = [head + arguments[0]]
    for argument in arguments[1:]:
        if len(rows[-1]) + len(argument) + 4 <= 120:
            rows[-1] += f", {argument}"
        else:
            rows[-1] += ","
            rows.append(" " * len(head) + argument)
    return [*rows[:-1], rows[-1] + ");"]


def comment(lines):
    """Returns a doc comment of wrapped paragraphs. A paragraph may be (text, hanging indent)."""
    out = ["/**"]
    for line in lines:
        text, hanging = line if isinstance(line, tuple) else (line, "")
        if text == "":
            out.append(" *")
            continue
        wrapped = textwrap.wrap(
            text, 116, subsequent_indent=hanging or ("  " if text.startswith("- ") else ""),
            break_long_words=False, break_on_hyphens=False)
        out += [f" * {row}" for row in wrapped]
    return out + [" */"]


def define(name, value, brief):
    return f"#define {name} {value}u /* {brief} */"
