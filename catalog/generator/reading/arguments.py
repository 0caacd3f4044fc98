"""This module reads the arguments of operations."""

SOURCES = {"shmem": "shmem", "text": "text", "file": "file"}
BOUNDS = [10240, 1048576]
# Each argument type has a C declaration, and the field types that it may be written to or read from.
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


def check_arguments(operation):
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
            read_key(operation, argument)


def read_key(operation, argument):
    """Reads what names the result: the operation's command, the request's code as it is after the exchange, or an
    argument that states a command.
    """
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


def read_argument(operation, argument):
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
            allowed |= read_size(operation, argument)
        if outward and argument.type != "text-out" and argument.get("skip") is not None:
            argument.skip = argument.number("skip")
            allowed |= {"skip"}
    elif argument.type in ("length", "length-at"):
        allowed |= {"of"}
    elif argument.type == "db":
        allowed |= read_database(operation, argument)
    elif argument.type == "record":
        allowed |= {"fields"}
        argument.picked = [picked(operation, argument, name) for name in argument.get("fields", [])]
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


def read_size(operation, argument):
    """Reads the number of bytes of a block that always has the same number. A block whose length another argument
    states has no such number.
    """
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


def picked(operation, argument, name):
    if name not in operation.record.fields:
        argument.fail(f"'fields' names {name!r}, which {operation.record.name} does not have")
    return operation.record.fields[name]


def read_database(operation, argument):
    """Reads where a result database comes from. The database of a wrapper comes from where that of the called operation
    comes from. Returns the keys that are allowed.
    """
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
