"""This module says what fields and columns are."""

from .text import code, plain

TYPES = {"mac": "MAC address", "text": "text of {} bytes", "bytes": "{} bytes", "list": "list of {} small numbers",
         "ports": "set of {} ports", "ipv4": "IPv4 address", "idset": "set of ONU ids", "oui": "OUI of 3 bytes",
         "date": "date of 3 bytes"}


def type_of(field):
    count = field.size * 8 if field.type == "ports" else field.size
    return TYPES.get(field.type, field.type).format(count)


def meaning_of(field):
    """Returns what a field holds: its description, its range, and what its values mean."""
    parts = [plain(field.brief)]
    if field.range:
        parts.append(f"from {field.range[0]} to {field.range[1]}")
    for names, word in ((field.values, "values"), (field.flags, "bits")):
        if names:
            parts.append(f"{word}: " + ", ".join(f"{number} {plain(name)}" for name, number in names.items()))
    if field.condition:
        parts.append(f"where {plain(field.condition)} is {' or '.join(plain(name) for name in field.where)}")
    if field.hexadecimal:
        parts.append("in hexadecimal")
    if field.secret:
        parts.append("secret")
    return "; ".join(parts)


def unit_of(field):
    """Returns the unit, with how many of it a value of 1 is."""
    return plain(f"{field.scale:g} {field.unit}" if field.scale != 1 else field.unit)


def columns_of(view):
    names = {"u32": "number", "u64": "number", "real": "real number", "mac": "MAC address", "boolean": "yes or no"}
    return [[code(column.name), names.get(column.type, column.type), plain(column.unit), plain(column.title),
             "yes" if column.nullable else "", plain(column.brief)] for column in view.columns.values()]


def rows_of(fields):
    """Returns a row a field. One that is repeated has one row for all its places."""
    return [[f"{code(field.base + '_1')} to {code(f'_{field.times}')}" if field.times > 1 else code(field.name),
             f"{field.offset}, every {field.every}" if field.times > 1 else str(field.offset),
             type_of(field), unit_of(field), meaning_of(field)]
            for field in fields.values() if field.index == 0]
