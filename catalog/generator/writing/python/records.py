"""This module writes the records as Python classes."""

from .text import call_of, docstring, opening

KINDS = {"u32": ("Word", "int", "0"), "u8": ("Byte", "int", "0"), "mac": ("Block", "bytes", 'b""'),
         "bytes": ("Block", "bytes", 'b""'), "text": ("Text", "str", '""')}


def records(catalogue):
    lines = [*opening("The records that travel between the library and the service, as classes with their fields."),
             "from ._record import Block, Byte, Record, Text, Word"]
    for record in catalogue.records.values():
        lines += class_of(record)
    return "\n".join(lines) + "\n"


def class_of(record):
    fields = [(field, *KINDS[field.type]) for field in record.fields.values()]
    about = [record.brief + f" {record.size} bytes. What is not given is zero.", ""]
    about += [(f"{field.name}: {field.brief}{size_of(field)}", "    ") for field, *_ in fields]
    given = [f"{field.name}: {kind} = {nothing}" for field, _, kind, nothing in fields]
    lines = ["", "", f"class {record.name}(Record):", *docstring(about, "    "), "", "    __slots__ = ()",
             f'    C_NAME = "{record.name}"', f"    SIZE = {record.size}", ""]
    lines += [f'    {field.name} = {descriptor}("{field.name}", {field.size})' for field, descriptor, *_ in fields]
    lines += ["", "    " + call_of("def __init__", ["self", "*", *given], "    ") + " -> None:",
              "        super().__init__()"]
    for field, _, _, nothing in fields:
        lines += [f"        if {field.name}:", f"            self.{field.name} = {field.name}"]
    return lines


def size_of(field):
    if field.type == "text":
        return f", at most {field.size - 1} bytes"
    return f", {field.size} bytes" if field.type in ("bytes", "mac") else ""
