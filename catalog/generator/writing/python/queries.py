"""This module writes which operation asks for what, and how its answer reads: by a view, or by a layout."""

from .text import opening

NUMBERS = ("u32", "u16", "u8")
OUTPUTS = {"db": "rows", "block-out": "bytes", "response": "record", "u8-out": "number", "u16-out": "number",
           "u32-out": "number"}


SENDERS = {"BSP_MSG_ONU_CFG": "bsp_pon_onu_ctc_config", "BSP_MSG_ONU_INFO": "bsp_pon_onu_ctc_debug"}


def queries(catalogue):
    lines = [*opening("Which operation asks for what, and how its answer reads."), "from ._query import Query", "",
             "# By the name of the command, without what all commands have.", "QUERIES: dict[str, Query] = {"]
    for operation, view, layout in asked(catalogue):
        lines.append(f"    {short(operation.command.name)!r}: {query_of(operation, view, layout)},")
    lines += ["}", "", "# The layout of each setting of a remote ONU, its command and the operation that sends it.",
              "SETTINGS: dict[str, tuple[str, str, str]] = {"]
    for name, layout, command in settings(catalogue):
        lines.append(f"    {name!r}: ({layout.name!r}, {command.name!r}, {SENDERS[command.channel.name]!r}),")
    return "\n".join([*lines, "}"]) + "\n"


def asked(catalogue):
    """Returns the operations that ask, one for each command. Beside each stands the view, or else the layout, that its
    answer is read by.
    """
    views = {command: view for view in catalogue.views.values() for command in view.commands}
    answers = {command: layout for layout in catalogue.layouts.values() if layout.of_answer
               for command in layout.commands}
    found = {}
    for operation in catalogue.operations():
        command = operation.command
        if command is None or command in found or operation.answer == "none":
            continue
        view, layout = views.get(command), answers.get(command)
        if query_of(operation, view, layout):
            is_table = any(argument.type == "db" and not argument.dropped for argument in operation.args.values())
            found[command] = (operation, view if is_table else None, None if is_table else layout)
    return list(found.values())


def settings(catalogue):
    """Returns the name, the layout and the command of each setting of a remote ONU."""
    return [(short(command.name).removeprefix("onu_"), layout, command) for layout in catalogue.layouts.values()
            if not layout.of_answer and not layout.kept and layout.record.name == "bsp_onu_msg"
            for command in layout.commands
            if command.channel.name in SENDERS and command.impact != "read" and command.call in (None, "set")]


def short(name):
    return name.removeprefix("BSP_CMD_").lower().removesuffix("_get").removesuffix("_set")


def query_of(operation, view, layout):
    """Returns a query, or None where the operation takes or delivers more than one writes so."""
    given, outputs = [], []
    for argument in operation.args.values():
        if argument.type in NUMBERS:
            given.append(argument.name)
        elif argument.type in ("length", "length-at") and argument.of.type == "block-out":
            given.append("out_len")
        elif argument.type in OUTPUTS and not argument.dropped:
            outputs.append(argument)
        elif argument.type == "record" and operation.answer == "in_place":
            outputs.append(argument)
        else:
            return None
    if len(outputs) != 1:
        return None
    output = outputs[0]
    kind = "in place" if output.type == "record" else OUTPUTS[output.type]
    read_by = view if kind == "rows" else layout
    if read_by is None:
        return None
    offset = output.field.offset if output.field else 0
    size = {"u8-out": 1, "u16-out": 2, "u32-out": 4}.get(output.type, 0)
    if output.type == "u16-out":
        size = 1  # of the answer's byte, the number has a zero before it
    record = operation.record.name if kind == "in place" else ""
    return f"Query({operation.name!r}, {tuple(given)!r}, {kind!r}, {read_by.name!r}, {offset}, {size}, {record!r})"
