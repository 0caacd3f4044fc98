"""This module writes the page of the MIB, as smidump reads it from the module that is installed."""

import os
import subprocess
import xml.etree.ElementTree as xml

from .text import code, plain, table

ACCESS = {"noaccess": "index", "readonly": "read", "readwrite": "read, set", "notifyonly": "in notifications"}


def write_mib(module, modules, put):
    """The second argument is the folder of the modules that the first one imports."""
    said = subprocess.run(["smidump", "-c", "/dev/null", "-f", "xml", str(module)], check=True, capture_output=True,
                          env={**os.environ, "SMIPATH": str(modules)}).stdout
    tree = xml.fromstring(said)
    named = tree.find("module")
    lines = [f"# {named.get('name')}", "", *paragraphs(named), "Numbers in the first column are behind that of the heading. See "
             "also [how managers reach it, and the tables of standards beside it](../snmp.md).", ""]
    for kind in tree.iter("table"):
        lines += table_section(kind)
    lines += ["## Objects of notifications", "", *table(["", "object", "type", "what it is"], [
        [number(one), code(one.get("name")), syntax(one), brief(one)] for one in tree.iter("scalar")])]
    lines += notifications_section(tree)
    lines += ["## Types", "", *table(["type", "of", "what it is"], [
        [code(one.get("name")), one.get("basetype") + values(one), brief(one)] for one in tree.iter("typedef") if one.get("name")])]
    put("mib", lines)


def table_section(kind):
    row = kind.find("row")
    indices = ", ".join(code(index.get("name")) for index in row.find("linkage").iter("index"))
    rows = [[number(column), code(column.get("name")), syntax(column), column.findtext("units", ""),
             ACCESS[column.findtext("access")], brief(column)] for column in row.iter("column")]
    return [f"## {kind.get('name')}", "", f"{brief(row)} {code(row.get('oid'))}, indexed by {indices}.", "",
            *table(["", "column", "type", "unit", "access", "what it is"], rows)]


def oid_of(tree, name):
    return next(node.get("oid") for node in tree.iter("node") if node.get("name") == name)


def number(one):
    return one.get("oid").rpartition(".")[2]


def brief(one):
    return plain(" ".join(one.findtext("description").split()))


def paragraphs(one):
    """Returns each paragraph of a description, with an empty line behind it."""
    found = [" ".join(part.split()) for part in one.findtext("description").replace(" \n", "\n").split("\n\n")]
    return [line for part in found for line in (plain(part), "")]


def syntax(one):
    """Returns the type, with the numbers that it may be."""
    kind = one.find("syntax")[0]
    return (kind.get("name") or kind.get("basetype")) + values(kind)


def values(kind):
    named = ", ".join(f"{value.get('number')} {value.get('name')}" for value in kind.iter("namednumber"))
    return f": {plain(named)}" if named else ""


def notifications_section(tree):
    every = {one: [each.get("name") for each in one.iter("object")] for one in tree.iter("notification")}
    common = [name for name in next(iter(every.values())) if all(name in names for names in every.values())]
    rows = [[number(one), code(one.get("name")), brief(one), ", ".join(code(name) for name in names if name not in common)]
            for one, names in every.items()]
    return ["## Notifications", "", f"Behind {code(oid_of(tree, 'bspPonNotifications'))}. Each has "
            f"{', '.join(code(name) for name in common)}.", "", *table(["", "notification", "what it tells", "and also"], rows)]
