"""This module reads operations, except their arguments."""

from .arguments import check_arguments, read_argument
from .commands import CALLS, CLASSES
from .entry import Entry, add

ERROR_POLICIES = ["report", "pass", "silent"]
REQUESTS = {"built": "built", "as-is": "as_is", "copied": "copied", "stamped": "stamped"}
BUFFERS = {"own": "own", "in-place": "in_place", "caller": "caller"}
FACETS = ["request", "status", "null", "answer"]


def read_operation(catalogue, operation):
    """Reads the operation once: it may be met by itself first, or by an operation that goes through it."""
    if hasattr(operation, "args"):
        return
    operation.args = {}
    operation.brief, operation.notes = operation.text("brief"), operation.text("notes", "")
    operation.odd = read_oddities(operation)
    operation.command = operation.lookup("command", catalogue.commands) if operation.get("command") else None
    operation.via = operation.lookup("via", catalogue.taken) if operation.get("via") else None
    if operation.via:
        inherit(catalogue, operation)
    else:
        for key in ("call", "error_policy"):
            if not operation.get(key):
                operation.fail(f"'{key}' is missing")
        read_channel(catalogue, operation)
        operation.call = CALLS[operation.choice("call", CALLS)]
        operation.error_policy = operation.choice("error_policy", ERROR_POLICIES)
        read_answer(catalogue, operation)
    operation.request = REQUESTS[operation.choice("request", REQUESTS, "built")]
    operation.constants = read_constants(operation)
    if operation.request in ("copied", "stamped") and not operation.command:
        operation.fail("a record can only be given the operation's own command code where it has one")
    if operation.command and operation.command.call not in (None, operation.call):
        operation.fail(f"{operation.command.name} is for {operation.command.get('call')} calls only")
    for table in operation.items("args"):
        argument = Entry(
            operation.file, f"operation {operation.name}: argument", table, ["name", "type", "brief"],
            ["to", "from", "at", "of", "size", "required", "optional", "ignored", "key", "bound", "dropped", "fields", "skip",
             "logged"])
        read_argument(operation, argument)
        argument.index = len(operation.args)
        add(operation.args, argument)
    check_arguments(operation)


def read_constants(operation):
    """Reads the words that are the same in every request, as field and value."""
    constants = operation.get("constants", {})
    if not isinstance(constants, dict):
        operation.fail("'constants' gives fields their values")
    for name, value in constants.items():
        if name not in operation.record.fields or operation.record.fields[name].type != "u32":
            operation.fail(f"'constants' names {name!r}, which is not a word of {operation.record.name}")
        if isinstance(value, bool) or not isinstance(value, int) or not 0 <= value <= 0xFFFFFFFF:
            operation.fail(f"'constants' gives {name} the value {value!r}, which is not a number")
    return [(operation.record.fields[name], value) for name, value in constants.items()]


def read_oddities(operation):
    """Reads what a hand-written test covers because this language cannot describe it, as facet and words."""
    odd = operation.get("odd", {})
    if not isinstance(odd, dict) or not all(isinstance(text, str) and text for text in odd.values()):
        operation.fail("'odd' says in words how a facet differs")
    for facet in odd:
        if facet not in FACETS:
            operation.fail(f"'odd' knows {', '.join(FACETS)}, not {facet!r}")
    return odd


def read_channel(catalogue, operation):
    if operation.command:
        for key in ("channel", "class"):
            if operation.get(key):
                operation.fail(f"'{key}' is stated by its command already")
        operation.channel, operation.impact = operation.command.channel, operation.command.impact
    else:
        operation.channel = operation.lookup("channel", catalogue.channels)
        operation.impact = CLASSES[operation.choice("class", CLASSES)]
    operation.record = operation.lookup("record", catalogue.records) if operation.get("record") else operation.channel.record


def inherit(catalogue, operation):
    """Reads a thin wrapper, which calls another operation with a fixed command code."""
    callee = operation.via
    if callee.kind != "operation" or callee.get("via"):
        operation.fail("'via' names an operation that does not go through another itself")
    read_operation(catalogue, callee)
    for key in ("channel", "class", "record", "call", "error_policy", "answer"):
        if operation.get(key):
            operation.fail(f"'{key}' is that of {callee.name}, which it goes through")
    if not operation.command or operation.command.channel is not callee.channel:
        operation.fail(f"needs a command of {callee.channel.name}, on which {callee.name} sends")
    for name in ("channel", "record", "call", "error_policy", "answer", "preset", "response_size", "response_record"):
        setattr(operation, name, getattr(callee, name))
    operation.impact = operation.command.impact


def read_answer(catalogue, operation):
    operation.answer, operation.preset, operation.response_size, operation.response_record = "none", 0, 0, None
    is_get = operation.call in ("get", "dgram_get")
    if bool(operation.get("answer")) != is_get:
        operation.fail("get calls have an 'answer', set calls have none")
    if is_get:
        answer = Entry(operation.file, f"operation {operation.name}: answer", operation.get("answer"),
                       ["buffer", "preset"], ["record", "size"])
        operation.answer = BUFFERS[answer.choice("buffer", BUFFERS)]
        operation.preset = answer.number("preset")
        operation.response_size = operation.preset or operation.record.size
        if answer.get("size") is not None:
            read_answer_size(operation, answer)
        operation.response_record = answer.lookup("record", catalogue.records) if answer.get("record") else operation.record
        if operation.answer == "in_place" and operation.preset != operation.record.size:
            answer.fail("an answer in place has the record's length as its preset")


def read_answer_size(operation, answer):
    """Reads the size of a buffer of the library that offers less than its size."""
    if operation.answer != "own":
        answer.fail("only a buffer of the library's own has a 'size'")
    if answer.number("size") <= operation.response_size:
        answer.fail(f"a 'size' says that the buffer has more than the {operation.response_size} bytes that it offers")
    operation.response_size = answer.number("size")
