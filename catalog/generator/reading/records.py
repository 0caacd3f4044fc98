"""This module reads records with their fields, and the channels that carry them."""

import copy

from .entry import Entry, add, entries

RECORD_SIZES = {"bsp_pon_msg": 944, "bsp_pon_msg_ext": 1044, "bsp_plat_msg": 1148, "bsp_onu_msg": 1888}
FIELD_SIZES = {"u32": 4, "u8": 1, "mac": 6, "idset": 16, "u16": 2, "s16": 2, "s32": 4, "u64": 8,
               "ipv4": 4, "oui": 3, "date": 3}
ALIGNMENTS = {"u32": 4, "idset": 4, "u16": 2, "s16": 2, "s32": 4, "u64": 4}
NUMBERS = {"u8": (0, 0xFF), "u16": (0, 0xFFFF), "s16": (-0x8000, 0x7FFF), "u32": (0, 0xFFFFFFFF),
           "s32": (-0x80000000, 0x7FFFFFFF), "u64": (0, 0xFFFFFFFFFFFFFFFF)}
NOTATIONS = ("hexadecimal", "mac", "ipv4")


def read_records(catalogue, file):
    for record in entries(file, catalogue.load(file), "record", ["name", "size", "brief", "fields"], ["command", "payload"]):
        record.size, record.brief = record.number("size"), record.text("brief")
        record.fields = read_fields(record, record.size, ["u32", "u8", "mac", "text", "bytes"])
        record.command = record.lookup("command", record.fields) if record.get("command") else None
        record.payload = record.lookup("payload", record.fields) if record.get("payload") else None
        if record.payload:
            if record.payload.offset + record.payload.size != record.size:
                record.fail("the payload does not reach the record's end")
        elif record.name not in RECORD_SIZES or record.size != RECORD_SIZES[record.name]:
            record.fail(f"{record.size} bytes is not the size of a record of this name")
        add(catalogue.records, record)


def read_channels(catalogue, file):
    table = catalogue.load(file)
    catalogue.module = Entry(file, "module", {"name": "module", "number": table.get("module")}, ["name", "number"]).number("number")
    for channel in entries(file, table, "channel", ["name", "type", "record", "brief"]):
        channel.type, channel.record = channel.number("type"), channel.lookup("record", catalogue.records)
        channel.brief = channel.text("brief")
        if any(other.type == channel.type for other in catalogue.channels.values()):
            channel.fail(f"type {channel.type} is taken by another channel")
        add(catalogue.channels, channel)


def read_fields(owner, size, kinds, *repeating):
    """Returns the checked fields of a record or layout, in order of offset. With the keys of `repeating`, a field may
    be repeated.
    """
    fields = {}
    for table in owner.items("fields"):
        field = Entry(owner.file, f"{owner.kind} {owner.name}: field", table, ["name", "offset", "type", "brief"],
                      ["unit", "scale", "values", "flags", "range", "hexadecimal", "where", "counted", "part", "secret", "decided",
                       *repeating])
        for place in places(field):
            check_field(place, size, kinds)
            add(fields, place)
    ordered = sorted(fields.values(), key=lambda field: field.offset)
    for before, after in zip(ordered, ordered[1:]):
        if before.offset + before.size > after.offset:
            after.fail(f"overlaps field {before.name}, which ends at {before.offset + before.size}")
    for field in ordered:
        check_condition(field, fields)
        check_decided(field, fields)
        check_part(field, fields)
        field.counter = field.text("counted", "")
        if field.counter and (field.times == 1 or field.counter not in fields):
            field.fail("'counted' names the field that says how many of a repeated one count")
    return {field.name: field for field in ordered}


def check_condition(field, fields):
    """Reads where a field has a meaning: which values of another one, which comes before it or not, let it have one."""
    where = field.get("where", {})
    if not isinstance(where, dict) or len(where) > 1:
        field.fail(f"'where' must be one field with a list of its values, not {where!r}")
    field.condition, field.where = next(iter(where.items()), ("", []))
    if not field.condition:
        return
    known = fields[field.condition].values if field.condition in fields else {}
    if not isinstance(field.where, list) or not field.where or any(name not in known for name in field.where):
        field.fail(f"'where' must list names of values of another field, not {field.where!r} of {field.condition!r}")


def beside(field, name, fields):
    """Returns the field of this name or, of repeated fields, the one at the same place. Returns None without one."""
    return fields.get(name) or fields.get(f"{name}_{field.index + 1}")


def check_part(field, fields):
    """Reads of which of several parts a field is, and which other field says how many of them there are."""
    part = field.get("part", {})
    field.whole, field.part = next(iter(part.items()), ("", 0)) if isinstance(part, dict) else ("", part)
    is_one = isinstance(part, dict) and len(part) == 1 and is_whole(field.part) and field.part > 0
    if part and not (is_one and beside(field, field.whole, fields)):
        field.fail(f"'part' must be one field with the number of a part, from 1 on, not {part!r}")


def check_decided(field, fields):
    """Reads in which notation the bytes of a field are, as the values of another field decide."""
    decided = field.get("decided", {})
    if not isinstance(decided, dict):
        field.fail(f"'decided' must be a table, not {decided!r}")
    field.decider, field.forms = decided.get("by", ""), {}
    if not decided:
        return
    decider = beside(field, field.decider, fields)
    if decider is None or not decider.values or field.type != "bytes" or field.size != FIELD_SIZES["mac"]:
        field.fail("'decided' says 'by' which field with 'values' the meaning of 6 bytes is decided")
    for notation, values in decided.items():
        if notation == "by":
            continue
        if notation not in NOTATIONS or not isinstance(values, list) or any(name not in decider.values for name in values):
            field.fail(f"'decided' must list values of {field.decider!r} for {', '.join(NOTATIONS)}, not {notation} = {values!r}")
        field.forms.update({name: notation for name in values})


def places(field):
    """Returns the field itself. A field that is repeated `times` times, each `every` bytes behind the one before, gives
    several fields: name_1, name_2 and so on.
    """
    field.base, field.index, field.times, field.every = field.name, 0, 1, 0
    if field.get("times") is None and field.get("every") is None:
        return [field]
    field.times, field.every, offset = field.number("times"), field.number("every"), field.number("offset")
    if field.times < 2 or field.every < 1:
        field.fail("'times' must be 2 at least, and 'every' 1")
    found = []
    for index in range(field.times):
        place = copy.copy(field)
        place.name, place.index = f"{field.name}_{index + 1}", index
        place.table = {**field.table, "offset": offset + index * field.every}
        found.append(place)
    return found


def check_field(field, size, kinds):
    kind, _, count = field.text("type").partition(":")
    if kind not in kinds or (kind in FIELD_SIZES) != (count == "") or not (count == "" or count.isdigit()):
        field.fail(f"'type' must be one of {', '.join(kinds)} (text, bytes, list and ports with :N), not {field.get('type')!r}")
    field.brief, field.unit = field.text("brief"), field.text("unit", "")
    field.type, field.size, field.offset = kind, FIELD_SIZES.get(kind) or int(count), field.number("offset")
    if field.size == 0 or field.offset + field.size > size:
        field.fail(f"bytes {field.offset} to {field.offset + field.size - 1} are not inside the record of {size} bytes")
    alignment = ALIGNMENTS.get(kind, 1)
    if field.offset % alignment:
        field.fail(f"a {kind} at offset {field.offset} is not aligned to {alignment}")
    field.scale = field.get("scale", 1)
    if isinstance(field.scale, bool) or not isinstance(field.scale, (int, float)) or field.scale <= 0:
        field.fail(f"'scale' must be a number above 0, not {field.scale!r}")
    if field.scale != 1 and (kind not in NUMBERS or not field.get("unit")):
        field.fail("only numbers with a unit have a scale")
    field.secret = field.flag("secret")
    if field.secret and kind not in ("text", "bytes"):
        field.fail("only texts and bytes are 'secret'")
    check_meaning(field)


def check_meaning(field):
    """Reads what the numbers of a field mean: the names of its values or flags, its range, its notation."""
    kind = field.type
    field.values = read_names(field, "values", *NUMBERS.get(kind, (0, 0)))
    field.flags = read_names(field, "flags", 0, 8 * field.size - 1)
    field.hexadecimal = field.flag("hexadecimal")
    field.range = field.get("range")
    if kind not in NUMBERS and (field.values or field.flags or field.range or field.hexadecimal):
        field.fail("only numbers have 'values', 'flags', a 'range' or are 'hexadecimal'")
    if bool(field.values) + bool(field.flags) + field.hexadecimal + bool(field.unit) > 1:
        field.fail("a number has either a unit, 'values' or 'flags', or is 'hexadecimal'")
    if field.range is None:
        return
    if not (isinstance(field.range, list) and len(field.range) == 2 and all(map(is_whole, field.range))
            and field.range[0] < field.range[1]):
        field.fail(f"'range' must be two whole numbers in ascending order, not {field.range!r}")
    if field.values or field.flags:
        field.fail("what 'values' or 'flags' name needs no 'range'")
    least, greatest = (round(bound / field.scale) for bound in field.range)
    if least < NUMBERS[kind][0] or greatest > NUMBERS[kind][1]:
        field.fail(f"'range' {field.range!r} is more than a {kind} holds")


def is_whole(number):
    return isinstance(number, int) and not isinstance(number, bool)


def read_names(field, key, least, greatest):
    """Returns the names of values, or of flags by the number of their bit, in the order in which they are written."""
    names = field.get(key, {})
    if not isinstance(names, dict) or not all(is_whole(number) and least <= number <= greatest for number in names.values()):
        field.fail(f"'{key}' must be a table of names with numbers from {least} to {greatest}, not {names!r}")
    if len(set(names.values())) != len(names):
        field.fail(f"'{key}' gives a number two names")
    for name in names:
        if not name.strip() or name[0].isdigit() and name.isdigit() or any(c in name for c in ",=\"\\"):
            field.fail(f"{name!r} of '{key}' is no name")
    return names
