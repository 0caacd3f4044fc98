"""This module writes a page of each family of operations."""

from generator.writing.header import argument_text, prototype, result_text

from .text import code, impact, link, pages_list, plain, table

CALLS = {"set": "set", "get": "get", "dgram_set": "set, as a datagram", "dgram_get": "get, as a datagram"}
POLICIES = {"report": "reported: logged, `BSP_ERR_IPC`", "pass": "passed: logged, the value of the IPC library",
            "silent": "silent: the value of the IPC library"}
SIZED = ("block", "block-out", "block-inout")


def write_operations(catalogue, put):
    every = []
    for family in catalogue.families:
        lines = [f"# {family.name}", ""]
        for function in family.functions:
            lines += function_section(function)
        for operation in family.operations:
            lines += operation_section(operation, catalogue)
            every.append([link(operation.name, family.group), plain(operation.brief), impact(operation)])
        put(f"operations/{family.group}", lines)
    lines = ["# Operations by family", "", f"{len(every)} functions, each of which sends a request. The header says what "
             "holds for all of them; `ponctl call NAME --help` shows the same as these pages.", ""]
    put("operations/index", [*lines, *pages_list((family.group, family.name) for family in catalogue.families),
                             "## All of them", "", *table(["operation", "what it does", "class"], sorted(every))])


def declared(entry, result="uint32_t "):
    """Returns the lines of the declaration as a program sees it, without what the header says to compilers."""
    mark = "BSP_PON_API "
    return [line.removeprefix(mark) if line.startswith(mark) else line[len(mark):] for line in prototype(entry, result)]


def function_section(function):
    result = function.returns.type
    rows = [[code(argument.name), plain(argument.brief)] for argument in function.args.values()]
    return [f"## {function.name}", "", plain(function.brief), "", "```c",
            *declared(function, result if result.endswith("*") else result + " "), "```", "",
            "It makes no request.", "", *table(["argument", "what it is"], rows),
            f"It returns {plain(function.returns.brief)}.", ""]


def operation_section(operation, catalogue):
    lines = [f"## {operation.name}", "", plain(operation.brief), "", "```c", *declared(operation), "```", ""]
    if operation.notes:
        lines += [plain(operation.notes), ""]
    rows = [[code(argument.name), size_of(argument), place_of(argument), plain(argument_text(argument))]
            for argument in operation.args.values()]
    lines += table(["argument", "bytes", "field", "what it is"], rows)
    facts = [["class", impact(operation)], ["channel", link(operation.channel.name, "../channels")],
             ["command", command_of(operation)], ["record", f"{link(operation.record.name, '../records')}, "
                                                  f"{operation.record.size} bytes"],
             ["call", CALLS[operation.call]], ["a failed exchange is", plain(POLICIES[operation.error_policy])]]
    if operation.answer != "none":
        facts.append(["answer", f"{link(operation.response_record.name, '../records')}, {operation.response_size} bytes"])
    if operation.via:
        facts.append(["goes through", code(operation.via.name)])
    if result_text(operation):
        facts.append(["result", plain(result_text(operation))])
    facts += [[f"its {facet}", plain(text)] for facet, text in operation.odd.items() if facet != "status"]
    facts += shown_by(operation, catalogue)
    return [*lines, *table(["", ""], facts)]


def shown_by(operation, catalogue):
    """Returns which views and layouts the command of an operation has."""
    facts = []
    for kind, entries in (("view", catalogue.views), ("layout", catalogue.layouts)):
        found = [link(entry.name, f"../{kind}s/{page_of(entry)}") for entry in entries.values()
                 if operation.command in entry.commands]
        if found:
            facts.append([kind, ", ".join(found)])
    return facts


def page_of(entry):
    """Returns the name of the page of a view or layout, which is that of its file."""
    return entry.file.rsplit("/", 1)[1].removesuffix(".toml")


def command_of(operation):
    if not operation.command:
        return "as the caller states it"
    return f"{link(operation.command.name, '../commands')} ({operation.command.code})"


def size_of(argument):
    """Returns how many bytes an argument may have, where it is not a plain number."""
    if argument.type in SIZED and argument.size:
        return str(argument.size)
    if argument.field and argument.type in ("mac", "text", "text-out", *SIZED):
        return f"up to {argument.field.size}"
    return ""


def place_of(argument):
    return code(argument.field.name) if argument.field else ""
