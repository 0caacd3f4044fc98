"""The public header."""

import textwrap

from ..reading.arguments import OUTWARD
from .text import GENERATED

PAYLOAD_HEADER = 28  # what a request with a payload has beside it
HEADER_RULES = [
    "The client library of the EPON OLT's PON management service.", "", "Rules that hold for every function:", "",
    "- A call sends one request to the service and blocks until the board's IPC library returns. There is no start-up, "
    "no shut-down and no state; every function may be called from any thread at once, with 16 KiB of stack left.",
    "- The result is a status word: BSP_OK, the service's own word passed through unchanged, or one of the BSP_ERR_ "
    "words. Where a function passes on the IPC library's own value, ipc_strerror has its text.",
    "- Outputs are delivered after every exchange that succeeded, whatever the status word, and are untouched when the "
    "exchange failed or a checked pointer was null. Test the status before you use them.",
    "- A pointer is checked for null only where its description says so; others must be valid. Numbers are not checked.",
    "- Integers are in host order, MAC addresses in transmission order, texts NUL-terminated. A text or block that is "
    "longer than its field runs on into the fields behind it and ends with the record.",
    "- Result databases (db_handle) belong to the caller, who reads and releases them with the board's data-store "
    "library."]


def header(catalogue):
    lines = ["/* clang-format off */", f"/* {GENERATED}. */", *comment(HEADER_RULES)]
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
    lines += ["", "/* Command codes. */"]
    for command in sorted(catalogue.commands.values(), key=lambda command: (command.channel.type, command.code)):
        lines.append(define(command.name, command.code, f"{command.channel.name}: {command.brief}"))
    lines.append("")
    for record in catalogue.records.values():
        lines += struct_of(record)
    for family, types, functions, operations in catalogue.families:
        lines += [f"/* --- {family} --- */", ""]
        for entry in types:
            lines += type_of(entry)
        for function in functions:
            lines += local_function_of(function)
        for operation in operations:
            lines += function_of(operation)
    lines += ["#ifdef __cplusplus", "}", "#endif", "", "#endif"]
    return "\n".join(lines) + "\n"


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
    lines.append("")
    lines += [(f"@param {argument.name} {argument.brief}", "       ") for argument in function.args.values()]
    lines.append((f"@return {function.returns.brief}.", "        "))
    result = function.returns.type
    return [*comment(lines), *prototype(function, result if result.endswith("*") else result + " "), ""]


def function_of(operation):
    record, channel = operation.record, operation.channel
    code = f"{operation.command.name} ({operation.command.code})" if operation.command else (
        "The caller's action" if record.payload else "The caller's command")
    through = f", sent and logged as by {operation.via.name}" if operation.via else ""
    lines = [
        operation.brief, "",
        f"{code} on {channel.name}, {size_text(record)}; {operation.impact.replace('_', '-')}{through}.",
    ]
    if operation.notes:
        lines.append(operation.notes)
    lines.append("")
    lines += [(f"@param {argument.name} {argument_text(argument)}", "       ") for argument in operation.args.values()]
    lines.append(("@return " + result_text(operation), "        "))
    return comment(lines) + prototype(operation) + [""]


def size_text(record):
    if record.payload:
        return f"a {record.name} of {PAYLOAD_HEADER} bytes and the payload"
    return f"a {record.name} of {record.size} bytes"


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
    elif argument.type == "db":
        text += "; receives a handle that the caller owns (null where the service left none)"
    return text


def result_text(operation):
    parts = [operation.odd.get("status", "the service's status word")]
    required = [argument.name for argument in operation.args.values() if argument.required]
    if required:
        parts.append(f"BSP_ERR_PARAM where {' or '.join(f'`{name}`' for name in required)} is null, nothing sent")
    lengths = [argument for argument in operation.args.values() if argument.type == "length"]
    if operation.record.payload and lengths:
        parts.append(f"BSP_ERR_PARAM where `{lengths[0].name}` is more than {operation.record.size - PAYLOAD_HEADER}, nothing sent")
    parts.append({
        "report": "BSP_ERR_IPC after a failed exchange, which is logged",
        "pass": "the IPC library's own value after a failed exchange, which is logged",
        "silent": "the IPC library's own value after a failed exchange, which is not logged"}[operation.failure])
    return "; ".join(parts) + "."


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
    """A doc comment of wrapped paragraphs; a paragraph may be (text, hanging indent)."""
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
