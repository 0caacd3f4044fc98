#!/usr/bin/env python3
"""Writes the public header, the export map and the tables from the catalogue's TOML files.

generate.py            writes what has changed
generate.py --check    writes nothing; exit status 1 and a line a file where something is stale
generate.py --root D   works on another checkout (for tests)

Wrong input is refused with the file, the entry and the reason, and nothing is written.
"""

import argparse
import pathlib
import re
import sys
import textwrap
import tomllib

SUBSYSTEMS = ["frame", "admission", "generic", "upgrade", "loopdetect", "debug", "platform", "onu", "config"]
RECORD_SIZES = {"bsp_pon_msg": 944, "bsp_pon_msg_ext": 1044, "bsp_plat_msg": 1148, "bsp_onu_msg": 1888}
CLASSES = {"read": "read", "write": "write", "service-affecting": "service_affecting"}
CALLS = {"set": "set", "get": "get", "dgram-set": "dgram_set", "dgram-get": "dgram_get"}
FAILURES = ["report", "pass", "silent"]
REQUESTS = {"built": "built", "as-is": "as_is", "copied": "copied", "stamped": "stamped"}
BUFFERS = {"own": "own", "in-place": "in_place", "caller": "caller"}
SOURCES = {"shmem": "shmem", "text": "text", "file": "file"}
PAYLOAD_HEADER = 28  # what a request with a payload has beside it
FACETS = ["request", "status", "null", "answer"]
BOUNDS = [10240, 1048576]
IDENTIFIER = re.compile("[A-Za-z_][A-Za-z0-9_]*")
FIELD_SIZES = {"u32": 4, "u8": 1, "mac": 6, "idset": 16, "u16": 2, "s16": 2, "s32": 4, "u64": 8}
ALIGNMENTS = {"u32": 4, "idset": 4, "u16": 2, "s16": 2, "s32": 4, "u64": 4}
COLUMN_TYPES = {"u32": "u32", "u64": "u64", "text": "text", "mac": "mac", "bool": "boolean", "real": "real"}
# Argument types: the C declaration, and the field types that it may be written to or read from.
ARGUMENTS = {
    "u32": ("uint32_t {}", {"u32"}),
    "mac": ("const uint8_t *{}", {"mac"}),
    "text": ("const char *{}", {"text", "bytes"}),
    "block": ("const void *{}", {"bytes"}),
    "oui": ("const uint8_t *{}", {"bytes"}),
    "u8": ("uint8_t {}", {"u32", "u8", "bytes"}),
    "u16": ("uint16_t {}", {"u32", "u8"}),
    "length": ("uint32_t {}", set()),
    "length-at": ("const uint32_t *{}", set()),
    "record": ("{const}{record} *{}", set()),
    "db": ("db_handle **{}", set()),
    "text-out": ("char *{}", {"text", "bytes"}),
    "u8-out": ("uint8_t *{}", {"u8", "bytes"}),
    "u16-out": ("uint16_t *{}", {"u8"}),
    "u32-out": ("uint32_t *{}", {"u32", "bytes"}),
    "block-out": ("void *{}", {"bytes"}),
    "block-inout": ("void *{}", {"bytes"}),
    "response": ("void *{}", set()),
    "pblock-out": ("void **{}", set()),
}


OUTWARD = ("text-out", "u8-out", "u16-out", "u32-out", "block-out")


class CatalogueError(Exception):
    """Wrong input: what() names file, entry and reason."""


class Entry:
    """One TOML table, with its place for messages and a check that every key is known."""

    def __init__(self, file, kind, table, required, optional=()):
        self.file, self.kind, self.table = file, kind, table
        self.name = table.get("name", "?") if isinstance(table, dict) else "?"
        if not isinstance(table, dict):
            self.fail("not a table")
        for key in required:
            if key not in table:
                self.fail(f"'{key}' is missing")
        for key in table:
            if key not in required and key not in optional:
                self.fail(f"'{key}' is not a key of {kind} entries; known are {', '.join([*required, *optional])}")
        if "name" in required and not (isinstance(self.name, str) and IDENTIFIER.fullmatch(self.name)):
            self.fail("'name' must be a C identifier")

    def fail(self, reason):
        raise CatalogueError(f"{self.file}: {self.kind} {self.name}: {reason}")

    def get(self, key, default=None):
        return self.table.get(key, default)

    def text(self, key, default=None):
        value = self.table.get(key, default)
        if not isinstance(value, str) or (key == "brief" and not value.strip()):
            self.fail(f"'{key}' must be a text, not {value!r}")
        return value

    def number(self, key):
        value = self.table.get(key)
        if not isinstance(value, int) or isinstance(value, bool) or not 0 <= value <= 0xFFFFFFFF:
            self.fail(f"'{key}' must be a number from 0 to 4294967295, not {value!r}")
        return value

    def flag(self, key):
        value = self.table.get(key, False)
        if not isinstance(value, bool):
            self.fail(f"'{key}' must be true or false, not {value!r}")
        return value

    def choice(self, key, known, default=None):
        value = self.table.get(key, default)
        if not isinstance(value, str) or value not in known:
            self.fail(f"'{key}' must be one of {', '.join(known)}, not {value!r}")
        return value

    def items(self, key):
        value = self.table.get(key)
        if not isinstance(value, list):
            self.fail(f"'{key}' must be a list, not {value!r}")
        return value

    def lookup(self, key, entries):
        """The entry named by our `key`."""
        value = self.text(key)
        if value not in entries:
            self.fail(f"'{key}' names {value!r}, which does not exist")
        return entries[value]


class Checkout:
    """The files that the generator reads and writes, by their paths from the root."""

    def __init__(self, root):
        self.root = root

    def inputs(self, folder):
        return [str(path.relative_to(self.root)) for path in sorted((self.root / folder).glob("*.toml"))]

    def read(self, name):
        return (self.root / name).read_text(encoding="utf-8")

    def write(self, name, text):
        (self.root / name).parent.mkdir(parents=True, exist_ok=True)
        (self.root / name).write_text(text, encoding="utf-8")


class Catalogue:
    """All entries, read and checked."""

    def __init__(self, checkout):
        self.checkout = checkout
        self.records, self.channels, self.commands, self.statuses = {}, {}, {}, {}
        self.layouts, self.views, self.families, self.types, self.functions = {}, {}, [], {}, {}
        self.taken, self.shown = {}, {}
        self.read_records()
        self.read_channels()
        self.read_statuses()
        families = [file for name in SUBSYSTEMS for file in checkout.inputs(f"catalog/{name}")]
        views = checkout.inputs("catalog/views")
        layouts = checkout.inputs("catalog/layouts")
        loaded = {file: self.load(file) for file in [*families, *views, *layouts]}
        for file, table in loaded.items():
            self.read_commands(file, table)
        for file in families:
            self.read_family(file, loaded[file])
        for operation in self.operations():
            self.read_operation(operation)
        for file in layouts:
            self.read_layouts(file, loaded[file])
        for file in views:
            self.read_views(file, loaded[file])

    def load(self, file):
        try:
            table = tomllib.loads(self.checkout.read(file))
        except FileNotFoundError:
            raise CatalogueError(f"{file}: the file is missing") from None
        except (tomllib.TOMLDecodeError, UnicodeDecodeError) as error:
            raise CatalogueError(f"{file}: not TOML: {error}") from None
        known = {"module", "channel", "record", "status", "family", "command", "operation", "layout", "view",
                 "type", "function"}
        for key in table:
            if key not in known:
                raise CatalogueError(f"{file}: unknown entry '{key}'; known are {', '.join(sorted(known))}")
        return table

    def entries(self, file, table, kind, required, optional=()):
        entries = table.get(kind, [])
        if not isinstance(entries, list):
            raise CatalogueError(f"{file}: {kind} entries start with [[{kind}]]")
        return [Entry(file, kind, entry, required, optional) for entry in entries]

    def add(self, entries, entry):
        if entry.name in entries:
            entry.fail(f"the name is taken by an entry of {entries[entry.name].file}")
        entries[entry.name] = entry

    def read_fields(self, owner, size, kinds):
        """Checked fields of a record or layout, in order of offset."""
        fields = {}
        tables = []
        for table in owner.items("fields"):
            tables += self.repeated(owner, table)
        for table in tables:
            field = Entry(owner.file, f"{owner.kind} {owner.name}: field", table, ["name", "offset", "type", "brief"],
                          ["unit", "scale", "step"])
            kind, _, count = field.text("type").partition(":")
            if kind not in kinds or (kind in FIELD_SIZES) != (count == "") or not (count == "" or count.isdigit()):
                field.fail(f"'type' must be one of {', '.join(kinds)} (text and bytes with :N), not {field.get('type')!r}")
            field.brief, field.unit = field.text("brief"), field.text("unit", "")
            field.step = field.get("step")
            field.type, field.size, field.offset = kind, FIELD_SIZES.get(kind) or int(count), field.number("offset")
            if field.size == 0 or field.offset + field.size > size:
                field.fail(f"bytes {field.offset} to {field.offset + field.size - 1} are not inside the record of {size} bytes")
            alignment = ALIGNMENTS.get(kind, 1)
            if field.offset % alignment:
                field.fail(f"a {kind} at offset {field.offset} is not aligned to {alignment}")
            field.scale = field.get("scale", 1)
            if isinstance(field.scale, bool) or not isinstance(field.scale, (int, float)) or field.scale <= 0:
                field.fail(f"'scale' must be a number above 0, not {field.scale!r}")
            if field.scale != 1 and (kind not in ("u8", "u16", "s16", "u32", "s32", "u64") or not field.get("unit")):
                field.fail("only numbers with a unit have a scale")
            self.add(fields, field)
        ordered = sorted(fields.values(), key=lambda field: field.offset)
        for before, after in zip(ordered, ordered[1:]):
            if before.offset + before.size > after.offset:
                after.fail(f"overlaps field {before.name}, which ends at {before.offset + before.size}")
        for index, field in enumerate(ordered):
            field.reference = f"&{owner.name}_fields[{index}]"
        return {field.name: field for field in ordered}

    def repeated(self, owner, table):
        """A field that comes several times, as often as `times` says, each `every` bytes behind the one before: name_1,
        name_2 and so on."""
        field = Entry(owner.file, f"{owner.kind} {owner.name}: field", table, ["name"],
                      ["offset", "type", "brief", "unit", "scale", "every", "times"])
        if field.get("times") is None and field.get("every") is None:
            return [table]
        times, every, offset = field.number("times"), field.number("every"), field.number("offset")
        if times < 2 or every < 1:
            field.fail("'times' must be 2 at least, and 'every' 1")
        same = {key: value for key, value in table.items() if key not in ("times", "every")}
        return [{**same, "name": f"{field.name}_{index + 1}", "offset": offset + index * every,
                 "step": {"name": field.name, "every": every, "first": index == 0}} for index in range(times)]

    def read_records(self):
        file = "catalog/records.toml"
        for record in self.entries(file, self.load(file), "record", ["name", "size", "brief", "fields"], ["command", "payload"]):
            record.size, record.brief = record.number("size"), record.text("brief")
            record.fields = self.read_fields(record, record.size, ["u32", "u8", "mac", "text", "bytes"])
            record.command = record.lookup("command", record.fields) if record.get("command") else None
            record.payload = record.lookup("payload", record.fields) if record.get("payload") else None
            if record.payload:
                if record.payload.offset + record.payload.size != record.size:
                    record.fail("the payload does not reach the record's end")
            elif record.name not in RECORD_SIZES or record.size != RECORD_SIZES[record.name]:
                record.fail(f"{record.size} bytes is not the size of a record of this name")
            self.add(self.records, record)

    def read_channels(self):
        file = "catalog/channels.toml"
        table = self.load(file)
        self.module = Entry(file, "module", {"name": "module", "number": table.get("module")}, ["name", "number"]).number("number")
        for channel in self.entries(file, table, "channel", ["name", "type", "record", "brief"]):
            channel.type, channel.record = channel.number("type"), channel.lookup("record", self.records)
            channel.brief = channel.text("brief")
            if any(other.type == channel.type for other in self.channels.values()):
                channel.fail(f"type {channel.type} is taken by another channel")
            self.add(self.channels, channel)

    def read_statuses(self):
        file = "catalog/status.toml"
        for status in self.entries(file, self.load(file), "status", ["name", "value", "origin", "brief"]):
            status.value, status.brief = status.number("value"), status.text("brief")
            status.of_library = status.choice("origin", ["library", "service"]) == "library"
            if any(other.value == status.value for other in self.statuses.values()):
                status.fail(f"value {status.value} is taken by another status")
            self.add(self.statuses, status)

    def read_commands(self, file, table):
        for command in self.entries(file, table, "command", ["name", "code", "channel", "class", "brief"], ["call", "twin"]):
            command.code, command.brief = command.number("code"), command.text("brief")
            command.channel = command.lookup("channel", self.channels)
            command.impact = CLASSES[command.choice("class", CLASSES)]
            if not command.name.startswith("BSP_CMD_"):
                command.fail("the name must start with BSP_CMD_")
            command.call = CALLS[command.choice("call", CALLS)] if command.get("call") else None
            twin = command.lookup("twin", self.commands) if command.get("twin") else None
            if twin and (twin.code, twin.channel) != (command.code, command.channel):
                command.fail(f"'twin' names {twin.name}, which has another code or channel")
            for other in self.commands.values():
                if other is not twin and (other.code, other.channel) == (command.code, command.channel) and (
                        not command.call or not other.call or command.call == other.call):
                    command.fail(f"code {command.code} is {other.name} on this channel; two that share a code state the "
                                 "'call' that each is for or, where nothing tells them apart, one its 'twin'")
            self.add(self.commands, command)

    def read_family(self, file, table):
        family = table.get("family")
        if not isinstance(family, str):
            raise CatalogueError(f"{file}: 'family' is missing")
        operations = self.entries(
            file, table, "operation", ["name", "brief", "args"],
            ["channel", "command", "class", "record", "call", "failure", "request", "answer", "via", "odd", "constants",
             "notes"])
        for operation in operations:
            self.add(self.taken, operation)
        types = self.entries(file, table, "type", ["name", "brief", "members"])
        for entry in types:
            self.read_type(entry)
        functions = self.entries(file, table, "function", ["name", "brief", "returns", "args"], ["notes"])
        for function in functions:
            self.add(self.taken, function)
            self.read_function(function)
        self.families.append((family, types, functions, operations))

    def read_type(self, entry):
        """A structure that the library works on but never sends: words only."""
        entry.brief, entry.members = entry.text("brief"), []
        for table in entry.items("members"):
            member = Entry(entry.file, f"type {entry.name}: member", table, ["name", "words", "brief"])
            member.words, member.brief = member.number("words"), member.text("brief")
            entry.members.append(member)
        self.add(self.types, entry)

    def read_function(self, function):
        """A function that makes no request."""
        function.brief, function.notes, function.args = function.text("brief"), function.text("notes", ""), {}
        function.returns = Entry(function.file, f"function {function.name}: returns", function.get("returns"), ["type", "brief"])
        function.returns.brief, function.returns.type = function.returns.text("brief"), function.returns.text("type")
        for table in function.items("args"):
            argument = Entry(function.file, f"function {function.name}: argument", table, ["name", "declaration", "brief"])
            argument.brief, argument.declaration = argument.text("brief"), argument.text("declaration")
            if argument.declaration.count("{}") != 1:
                argument.fail("'declaration' holds {} where the name goes")
            self.add(function.args, argument)

    def read_operation(self, operation):
        """Once, whether first met by itself or by an operation that goes through it."""
        if hasattr(operation, "args"):
            return
        operation.args = {}
        operation.brief, operation.notes = operation.text("brief"), operation.text("notes", "")
        operation.odd = self.read_oddities(operation)
        operation.command = operation.lookup("command", self.commands) if operation.get("command") else None
        operation.via = operation.lookup("via", self.taken) if operation.get("via") else None
        if operation.via:
            self.inherit(operation)
        else:
            for key in ("call", "failure"):
                if not operation.get(key):
                    operation.fail(f"'{key}' is missing")
            self.read_channel(operation)
            operation.call = CALLS[operation.choice("call", CALLS)]
            operation.failure = operation.choice("failure", FAILURES)
            self.read_answer(operation)
        operation.request = REQUESTS[operation.choice("request", REQUESTS, "built")]
        operation.constants = self.read_constants(operation)
        if operation.request in ("copied", "stamped") and not operation.command:
            operation.fail("a record can only be given the operation's own command code where it has one")
        if operation.command and operation.command.call not in (None, operation.call):
            operation.fail(f"{operation.command.name} is for {operation.command.get('call')} calls only")
        for table in operation.items("args"):
            argument = Entry(
                operation.file, f"operation {operation.name}: argument", table, ["name", "type", "brief"],
                ["to", "from", "at", "of", "size", "required", "optional", "ignored", "key", "bound", "dropped", "fields", "skip",
                 "logged"])
            self.read_argument(operation, argument)
            argument.index = len(operation.args)
            self.add(operation.args, argument)
        self.check_arguments(operation)

    def read_constants(self, operation):
        """Words that are the same in every request: field and value."""
        constants = operation.get("constants", {})
        if not isinstance(constants, dict):
            operation.fail("'constants' gives fields their values")
        for name, value in constants.items():
            if name not in operation.record.fields or operation.record.fields[name].type != "u32":
                operation.fail(f"'constants' names {name!r}, which is not a word of {operation.record.name}")
            if isinstance(value, bool) or not isinstance(value, int) or not 0 <= value <= 0xFFFFFFFF:
                operation.fail(f"'constants' gives {name} the value {value!r}, which is not a number")
        return [(operation.record.fields[name], value) for name, value in constants.items()]

    def read_oddities(self, operation):
        """What a hand-written test covers, because this language cannot say it: facet and words."""
        odd = operation.get("odd", {})
        if not isinstance(odd, dict) or not all(isinstance(text, str) and text for text in odd.values()):
            operation.fail("'odd' says in words how a facet differs")
        for facet in odd:
            if facet not in FACETS:
                operation.fail(f"'odd' knows {', '.join(FACETS)}, not {facet!r}")
        return odd

    def read_channel(self, operation):
        if operation.command:
            for key in ("channel", "class"):
                if operation.get(key):
                    operation.fail(f"'{key}' is stated by its command already")
            operation.channel, operation.impact = operation.command.channel, operation.command.impact
        else:
            operation.channel = operation.lookup("channel", self.channels)
            operation.impact = CLASSES[operation.choice("class", CLASSES)]
        operation.record = operation.lookup("record", self.records) if operation.get("record") else operation.channel.record

    def inherit(self, operation):
        """A thin wrapper: a call of another operation with a fixed command code."""
        callee = operation.via
        if callee.kind != "operation" or callee.get("via"):
            operation.fail("'via' names an operation that does not go through another itself")
        self.read_operation(callee)
        for key in ("channel", "class", "record", "call", "failure", "answer"):
            if operation.get(key):
                operation.fail(f"'{key}' is that of {callee.name}, which it goes through")
        if not operation.command or operation.command.channel is not callee.channel:
            operation.fail(f"needs a command of {callee.channel.name}, on which {callee.name} sends")
        for name in ("channel", "record", "call", "failure", "answer", "preset", "response_size", "response_record"):
            setattr(operation, name, getattr(callee, name))
        operation.impact = operation.command.impact

    def check_arguments(self, operation):
        def of_type(kind):
            return [argument for argument in operation.args.values() if argument.type == kind]

        if len([record for record in of_type("record") if not record.picked]) != (operation.request != "built"):
            operation.fail("an operation that sends the caller's record has one argument of type record, others none")
        if len(of_type("response")) != (operation.answer == "caller"):
            operation.fail("an answer into the caller's buffer has one argument of type response, others none")
        for argument in operation.args.values():
            if argument.type in ("length", "length-at"):
                argument.of = argument.lookup("of", operation.args)
                if argument.of.type not in ("block", "block-out", "block-inout"):
                    argument.fail(f"'of' names {argument.of.name}, which is not a block")
            if argument.source == "shmem":
                self.read_key(operation, argument)

    def read_key(self, operation, argument):
        """What names the result: the operation's command, the request's code as it stands after the exchange, or an
        argument that states a command."""
        if operation.via:
            argument.key, argument.bound = operation.via_database.key, operation.via_database.bound
            return
        argument.bound = argument.number("bound")
        if argument.bound not in BOUNDS:
            argument.fail(f"'bound' must be one of {BOUNDS}, not {argument.bound}")
        argument.key = argument.text("key")
        if argument.key == "command" and not operation.command:
            argument.fail("'key' is the operation's command, and it has none")
        if argument.key not in ("command", "request"):
            argument.of, argument.key = argument.lookup("key", operation.args), "argument"
            if argument.of.field is not operation.record.command:
                argument.fail(f"'key' names {argument.of.name}, which is not the command code")

    def read_answer(self, operation):
        operation.answer, operation.preset, operation.response_size, operation.response_record = "none", 0, 0, None
        is_get = operation.call in ("get", "dgram_get")
        if bool(operation.get("answer")) != is_get:
            operation.fail("get calls have an 'answer', set calls have none")
        if is_get:
            answer = Entry(operation.file, f"operation {operation.name}: answer", operation.get("answer"),
                           ["buffer", "preset"], ["record"])
            operation.answer = BUFFERS[answer.choice("buffer", BUFFERS)]
            operation.preset = answer.number("preset")
            operation.response_size = operation.preset or operation.record.size
            operation.response_record = answer.lookup("record", self.records) if answer.get("record") else operation.record
            if operation.answer == "in_place" and operation.preset != operation.record.size:
                answer.fail("an answer in place has the record's length as its preset")

    def read_argument(self, operation, argument):
        argument.brief = argument.text("brief")
        argument.type = argument.choice("type", ARGUMENTS)
        argument.required, argument.optional = argument.flag("required"), argument.flag("optional")
        argument.ignored, argument.field, argument.of, argument.key = argument.flag("ignored"), None, None, None
        argument.source, argument.bound, argument.picked, argument.dropped = None, 0, [], argument.flag("dropped")
        argument.declaration, field_types = ARGUMENTS[argument.type]
        outward = argument.type in OUTWARD
        argument.size, argument.skip, argument.logged = 0, 0, ""
        allowed = {"name", "type", "brief", "required", "optional"}
        if argument.type == "text":
            argument.optional = not argument.required
        if argument.ignored:
            allowed |= {"ignored"}
        elif field_types:
            place = "from" if outward else "to"
            allowed |= {"to", "from"} if argument.type == "block-inout" else {place}
            record = operation.response_record if outward and operation.answer != "none" else operation.record
            argument.field = argument.lookup(place, record.fields)
            if argument.field.type not in field_types:
                argument.fail(f"'{place}' names {argument.field.name}, which is a {argument.field.type}")
            if argument.type == "block-inout" and argument.lookup("from", record.fields) is not argument.field:
                argument.fail("a block goes and comes by the same field")
            if argument.type == "oui":
                argument.type, argument.size = "block", 3
            elif argument.type in ("block", "block-out", "block-inout"):
                allowed |= self.read_size(operation, argument)
            if outward and argument.type != "text-out" and argument.get("skip") is not None:
                argument.skip = argument.number("skip")
                allowed |= {"skip"}
        elif argument.type in ("length", "length-at"):
            allowed |= {"of"}
        elif argument.type == "db":
            allowed |= self.read_database(operation, argument)
        elif argument.type == "record":
            allowed |= {"fields"}
            argument.picked = [self.picked(operation, argument, name) for name in argument.get("fields", [])]
            written = operation.answer == "in_place" or operation.request == "stamped"
            argument.declaration = argument.declaration.replace("{record}", operation.record.name).replace(
                "{const}", "" if written else "const ")
        for key in argument.table:
            if key not in allowed:
                argument.fail(f"'{key}' means nothing for a {argument.type}")
        if argument.required and argument.optional:
            argument.fail("an argument is required or optional, not both")
        if (argument.required or argument.optional) and "*" not in argument.declaration:
            argument.fail("only pointers are required or optional")
        if (outward or argument.type in ("db", "block-inout", "pblock-out")) and operation.answer == "none":
            argument.fail("a set call has no answer to take it from")

    def read_size(self, operation, argument):
        """The bytes of a block that always has the same; one whose length another argument states has none."""
        has_length = any(isinstance(table, dict) and table.get("type") in ("length", "length-at")
                         for table in operation.items("args"))
        if has_length and argument.get("size") is None:
            return set()
        argument.size = argument.number("size")
        if argument.size == 0:
            argument.fail("'size' must be at least one byte")
        if argument.type != "block-out" and argument.size > argument.field.size:
            argument.fail(f"{argument.size} bytes do not fit {argument.field.name}, which has {argument.field.size}")
        return {"size"}

    def picked(self, operation, argument, name):
        if name not in operation.record.fields:
            argument.fail(f"'fields' names {name!r}, which {operation.record.name} does not have")
        return operation.record.fields[name]

    def read_database(self, operation, argument):
        """Where a result database comes from; of a wrapper, where its callee's does. Returns the keys allowed."""
        if operation.via:
            operation.via_database = next((each for each in operation.via.args.values() if each.type == "db"), None)
            if not operation.via_database:
                argument.fail(f"{operation.via.name} has no result database")
            for name in ("source", "field", "dropped", "optional", "logged"):
                setattr(argument, name, getattr(operation.via_database, name))
            return set()
        argument.source = SOURCES[argument.choice("from", SOURCES)]
        if argument.dropped:
            argument.optional = True
        if argument.source == "shmem":
            return {"from", "key", "bound", "dropped"}
        if operation.answer != "none":
            argument.field = argument.lookup("at", operation.response_record.fields)
        if argument.get("logged") is not None:
            argument.logged = argument.text("logged")
            if argument.logged.count("%s") != 1 or argument.logged.count("%") != 1:
                argument.fail("'logged' holds %s where the text goes")
        return {"from", "at", "logged"}

    def read_uses(self, entry):
        """The commands that a layout or view belongs to."""
        entry.commands = []
        for name in entry.items("commands"):
            if not isinstance(name, str) or name not in self.commands:
                entry.fail(f"'commands' names {name!r}, which does not exist")
            entry.commands.append(self.commands[name])

    def read_layouts(self, file, table):
        for layout in self.entries(file, table, "layout", ["name", "record", "commands", "brief"],
                                   ["fields", "like", "answer"]):
            if layout.get("like") is not None:
                if layout.get("fields") is not None:
                    layout.fail("a layout has 'fields' of its own or is 'like' another, not both")
                layout.table = {**layout.table, "fields": layout.lookup("like", self.layouts).get("fields")}
            layout.of_answer = layout.flag("answer")
            layout.brief, layout.record = layout.text("brief"), layout.lookup("record", self.records)
            layout.fields = self.read_fields(layout, layout.record.size, ["u8", "mac", "text", "bytes", *ALIGNMENTS])
            self.read_uses(layout)
            self.add(self.shown, layout)
            self.add(self.layouts, layout)

    def read_views(self, file, table):
        for view in self.entries(file, table, "view", ["name", "commands", "brief", "columns"]):
            view.brief, view.columns = view.text("brief"), {}
            self.read_uses(view)
            self.add(self.shown, view)
            for column in view.items("columns"):
                column = Entry(view.file, f"view {view.name}: column", column, ["name", "type", "title", "brief"], ["unit"])
                column.brief, column.title, column.unit = column.text("brief"), column.text("title"), column.text("unit", "")
                column.type = COLUMN_TYPES[column.choice("type", COLUMN_TYPES)]
                self.add(view.columns, column)
            self.add(self.views, view)

    def operations(self):
        return [operation for _, _, _, operations in self.families for operation in operations]


# --- The public header -------------------------------------------------------------------------------------------------

GENERATED = "generated from the catalogue by catalog/generate.py; change the catalogue, not this file"
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


def size_text(record):
    if record.payload:
        return f"a {record.name} of {PAYLOAD_HEADER} bytes and the payload"
    return f"a {record.name} of {record.size} bytes"


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


def define(name, value, brief):
    return f"#define {name} {value}u /* {brief} */"


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


def exports(catalogue):
    names = sorted(catalogue.taken)
    return "\n".join([f"# {GENERATED}.", "{", "    global:", *[f"        {name};" for name in names], "    local:", "        *;", "};"]) + "\n"


# --- The tables --------------------------------------------------------------------------------------------------------


def quoted(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def flag(value):
    return "true" if value else "false"


def field_rows(owner):
    rows = [f"constexpr Field {owner.name}_fields[] = {{"]
    for field in owner.fields.values():
        rows.append(f"    {{{quoted(field.name)}, FieldType::{field.type}, {field.offset}, {field.size}, "
                    f"{quoted(field.unit)}, {field.scale}, {quoted(field.brief)}}},")
    return rows + ["};", ""]


def argument_row(operation, argument):
    field = argument.field.reference if argument.field else "nullptr"
    picked = f"{operation.name}_{argument.name}_fields" if argument.picked else "{}"
    return (f"    {{{quoted(argument.name)}, ArgumentType::{argument.type.replace('-', '_')}, {flag(argument.required)}, "
            f"{flag(argument.optional)}, {flag(argument.dropped)}, {field}, {argument.size}, {argument.skip}, "
            f"{argument.of.index if argument.of else -1}, Source::{argument.source or 'none'}, Key::{argument.key or 'none'}, "
            f"{argument.bound}, {quoted(argument.logged)}, {picked}, "
            f"{quoted(argument.brief)}}},")


def tables(catalogue):
    records = list(catalogue.records.values())
    channels = list(catalogue.channels.values())
    commands = sorted(catalogue.commands.values(), key=lambda command: (command.channel.type, command.code))
    record_at = {record.name: f"&all_records[{index}]" for index, record in enumerate(records)}
    channel_at = {channel.name: f"&all_channels[{index}]" for index, channel in enumerate(channels)}
    command_at = {command.name: f"&all_commands[{index}]" for index, command in enumerate(commands)}
    lines = [f"// {GENERATED}.", "// clang-format off", '#include "../catalogue.h"', "", "namespace catalogue", "{",
             "namespace", "{", ""]
    for record in records:
        lines += field_rows(record)
    lines.append("constexpr Record all_records[] = {")
    for record in records:
        command = record.command.reference if record.command else "nullptr"
        payload = record.payload.reference if record.payload else "nullptr"
        lines.append(f"    {{{quoted(record.name)}, {record.size}, {command}, {payload}, {record.name}_fields, {quoted(record.brief)}}},")
    lines += ["};", "", "constexpr Channel all_channels[] = {"]
    for channel in channels:
        lines.append(f"    {{{quoted(channel.name)}, {channel.type}, {record_at[channel.record.name]}, {quoted(channel.brief)}}},")
    lines += ["};", "", "constexpr Command all_commands[] = {"]
    for command in commands:
        lines.append(f"    {{{quoted(command.name)}, {command.code}, {channel_at[command.channel.name]}, "
                     f"Class::{command.impact}, {f'Call::{command.call}' if command.call else 'std::nullopt'}, "
                     f"{quoted(command.brief)}}},")
    lines += ["};", "", "constexpr Status all_statuses[] = {"]
    for status in catalogue.statuses.values():
        lines.append(f"    {{{quoted(status.name)}, {status.value}, {flag(status.of_library)}, {quoted(status.brief)}}},")
    lines += ["};", ""]

    def uses(entry):
        references = ", ".join(command_at[command.name] for command in entry.commands)
        return [f"constexpr const Command *{entry.name}_commands[] = {{{references}}};", ""]

    for layout in catalogue.layouts.values():
        lines += uses(layout) + field_rows(layout)
    lines.append("constexpr Layout all_layouts[] = {")
    for layout in catalogue.layouts.values():
        lines.append(f"    {{{quoted(layout.name)}, {record_at[layout.record.name]}, {layout.name}_commands, "
                     f"{layout.name}_fields, {flag(layout.of_answer)}, {quoted(layout.brief)}}},")
    lines += ["};", ""]
    for view in catalogue.views.values():
        lines += uses(view) + [f"constexpr Column {view.name}_columns[] = {{"]
        for column in view.columns.values():
            lines.append(f"    {{{quoted(column.name)}, {quoted(column.title)}, ColumnType::{column.type}, "
                         f"{quoted(column.unit)}, {quoted(column.brief)}}},")
        lines += ["};", ""]
    lines.append("constexpr View all_views[] = {")
    for view in catalogue.views.values():
        lines.append(f"    {{{quoted(view.name)}, {view.name}_commands, {view.name}_columns, {quoted(view.brief)}}},")
    lines += ["};", ""]
    for operation in catalogue.operations():
        for argument in operation.args.values():
            if argument.picked:
                references = ", ".join(field.reference for field in argument.picked)
                lines += [f"constexpr const Field *{operation.name}_{argument.name}_fields[] = {{{references}}};"]
        if operation.constants:
            constants = ", ".join(f"{{{field.reference}, {value}}}" for field, value in operation.constants)
            lines += [f"constexpr Constant {operation.name}_constants[] = {{{constants}}};"]
        if operation.odd:
            oddities = ", ".join(f"{{Facet::{facet}, {quoted(text)}}}" for facet, text in operation.odd.items())
            lines += [f"constexpr Oddity {operation.name}_odd[] = {{{oddities}}};"]
        if operation.args:
            lines.append(f"constexpr Argument {operation.name}_arguments[] = {{")
            lines += [argument_row(operation, argument) for argument in operation.args.values()]
            lines += ["};", ""]
    lines.append("constexpr Operation all_operations[] = {")
    for family, _, _, operations in catalogue.families:
        for operation in operations:
            arguments = f"{operation.name}_arguments" if operation.args else "{}"
            response = record_at[operation.response_record.name] if operation.response_record else "nullptr"
            odd = f"{operation.name}_odd" if operation.odd else "{}"
            constants = f"{operation.name}_constants" if operation.constants else "{}"
            command = command_at[operation.command.name] if operation.command else "nullptr"
            lines += [
                f"    {{{quoted(operation.name)}, {quoted(family)}, {quoted(operation.brief)}, {quoted(operation.notes)},",
                f"     {channel_at[operation.channel.name]}, {record_at[operation.record.name]}, {command}, "
                f"Class::{operation.impact}, Call::{operation.call}, Failure::{operation.failure},",
                f"     Request::{operation.request}, Answer::{operation.answer}, {response}, {operation.response_size}, "
                f"{operation.preset}, {quoted(operation.via.name if operation.via else operation.name)}, {constants}, "
                f"{odd}, {arguments}}},"]
    lines += ["};", "", "constexpr Function all_functions[] = {"]
    for family, _, functions, _ in catalogue.families:
        for function in functions:
            call = " ".join(row.strip() for row in prototype(function, f"{function.returns.type} "))
            lines.append(f"    {{{quoted(function.name)}, {quoted(family)}, {quoted(function.brief)}, {quoted(function.notes)}, "
                         f"{quoted(call.removeprefix('BSP_PON_API ').replace('* ', '*'))}}},")
    lines += ["};", "", "} // namespace", "", f"const uint32_t module = {catalogue.module};", ""]
    for name in ["Record", "Channel", "Command", "Status", "Layout", "View", "Operation", "Function"]:
        plural = {"Status": "statuses"}.get(name, name.lower() + "s")
        lines += [f"std::span<const {name}> {plural}()", "{", f"    return all_{plural};", "}", ""]
    return "\n".join([*lines, "} // namespace catalogue"]) + "\n"


def thunks(catalogue):
    lines = [f"// {GENERATED}.", "// clang-format off", '#include "../invoke.h"', "", '#include "bsp_pon.h"', "",
             "namespace catalogue", "{", "namespace", "{", "", "using Thunk = uint32_t (*)(const Value *);", "",
             "// In the order of operations().", "constexpr Thunk thunks[] = {"]
    for operation in catalogue.operations():
        values = []
        for index, argument in enumerate(operation.args.values()):
            if "*" in argument.declaration:
                values.append(f"static_cast<{argument.declaration.replace('{}', '').strip()}>(v[{index}].pointer)")
            else:
                number = f"v[{index}].number"
                narrow = {"u8": "uint8_t", "u16": "uint16_t"}.get(argument.type)
                values.append(f"static_cast<{narrow}>({number})" if narrow else number)
        lines.append(f"    []([[maybe_unused]] const Value *v) {{ return {operation.name}({', '.join(values)}); }},")
    return "\n".join([*lines, "};", "", "} // namespace", "",
                      "uint32_t invoke(const Operation &operation, std::span<const Value> values)", "{",
                      "    return thunks[&operation - operations().data()](values.data());", "}", "",
                      "} // namespace catalogue"]) + "\n"


def service_words(catalogue):
    """The simulated service's own status words, and where its layouts keep their fields."""
    lines = [f"// {GENERATED}.", "// clang-format off", "#pragma once", "", "#include <cstdint>", "",
             "// Status words of the simulated PON service."]
    for status in catalogue.statuses.values():
        if not status.of_library:
            lines.append(f"inline constexpr uint32_t {status.name} = {status.value}; // {status.brief}")
    lines += ["", "// Offsets of the fields that the service gives to opaque parts of a record."]
    for layout in catalogue.layouts.values():
        lines += ["", f"namespace layout::{layout.name}", "{"]
        for field in layout.fields.values():
            if field.step and not field.step["first"]:
                continue
            name = field.step["name"] if field.step else field.name
            lines.append(f"inline constexpr uint32_t {name} = {field.offset}; // {field.type}: {field.brief}")
            if field.step:
                lines.append(f"inline constexpr uint32_t {name}_every = {field.step['every']}; // from one {name} to the next")
        lines += [f"}} // namespace layout::{layout.name}"]
    return "\n".join(lines) + "\n"


def record_length(catalogue):
    """For the board's stand-ins, in C: what a caller who states no bound has room for."""
    lines = [f"/* {GENERATED}. */", "/* clang-format off */", "#ifndef RECORD_LENGTH_H", "#define RECORD_LENGTH_H", "",
             "#include <stdint.h>", "",
             "/* The length of the records of a channel; 0 where the channel is not known. */",
             "static inline uint32_t record_length(uint32_t module, uint32_t msg_type)", "{",
             f"    if (module != {catalogue.module}) return 0;", "    switch (msg_type) {"]
    by_size = {}
    for channel in catalogue.channels.values():
        by_size.setdefault(channel.record.size, []).append(channel.type)
    for size, types in by_size.items():
        lines += [f"    case {channel_type}:" for channel_type in types] + [f"        return {size};"]
    return "\n".join([*lines, "    default:", "        return 0;", "    }", "}", "", "#endif"]) + "\n"


OUTPUTS = {
    "include/bsp_pon.h": header,
    "catalog/generated/service_words.h": service_words,
    "catalog/generated/record_length.h": record_length,
    "catalog/generated/libbsp_pon.map": exports,
    "catalog/generated/tables.cpp": tables,
    "catalog/generated/thunks.cpp": thunks,
}


def generate(checkout, check):
    """Writes what is stale, or only says what is, with `check`. Returns the exit status."""
    try:
        catalogue = Catalogue(checkout)
        outputs = {name: write(catalogue) for name, write in OUTPUTS.items()}
    except CatalogueError as error:
        print(f"generate.py: {error}", file=sys.stderr)
        return 2
    stale = [name for name, text in outputs.items() if not is_current(checkout, name, text)]
    for name in stale:
        if check:
            print(f"generate.py: {name} is stale; run catalog/generate.py", file=sys.stderr)
        else:
            checkout.write(name, outputs[name])
            print(f"generate.py: wrote {name}")
    return 1 if check and stale else 0


def is_current(checkout, name, text):
    try:
        return checkout.read(name) == text
    except FileNotFoundError:
        return False


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--check", action="store_true", help="only say what is stale")
    parser.add_argument("--root", type=pathlib.Path, default=pathlib.Path(__file__).resolve().parent.parent)
    options = parser.parse_args()
    return generate(Checkout(options.root), options.check)


if __name__ == "__main__":
    sys.exit(main())
