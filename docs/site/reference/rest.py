"""This module writes the page of the REST interface, from the description that ponfront serves of it."""

import json

from .text import code, escaped, link, plain, table

CALLS = "/olts/{olt}/calls/"
METHODS = ("get", "post", "put", "delete")
ERRORS = 400 # and above are statuses of errors


def write_rest(said, catalogue, put):
    document = json.loads(said)
    root = document["servers"][0]["url"]
    plain_paths = {path: item for path, item in document["paths"].items() if not path.startswith(CALLS)}
    lines = ["# REST", "", "The paths of [ponfront](../manual/ponfront.8.md), as its `/openapi.json` describes them. "
             "See also [how the interface works, and what its answers hold](../rest.md).", ""]
    requests = [(method, path, item[method]) for path, item in plain_paths.items() for method in METHODS if method in item]
    rows = [[method.upper(), code(root + path), plain(request["summary"]), request.get("x-role", "anybody")]
            for method, path, request in requests]
    lines += ["## All of them", "", *table(["method", "path", "what it does", "role"], rows)]
    for method, path, request in requests:
        lines += request_section(method.upper(), root + path, request)
    put("rest", lines + calls_section(document["paths"], root, catalogue))


def request_section(method, path, request):
    lines = [f"## {escaped(f'{method} {path}')}", "", plain(request["summary"]) + ".", ""]
    rows = [[code(one["name"]), one["in"], type_of(one["schema"]), plain(one.get("description", ""))]
            for one in request.get("parameters", [])]
    rows += [[code(name), "body", type_of(member), plain(member.get("description", ""))]
             for name, member in body_of(request).items()]
    lines += table(["parameter", "in", "type", "what it is"], rows)
    answers = sorted(request["responses"].items())
    good = [f"{status}: {plain(answer['description'])}" for status, answer in answers if int(status) < ERRORS]
    bad = [status for status, _ in answers if int(status) >= ERRORS]
    return [*lines, f"Answers {'; '.join(good)}. [Errors](../rest.md#errors): {', '.join(bad)}.", ""]


def body_of(request):
    content = request.get("requestBody", {}).get("content", {})
    return content.get("application/json", {}).get("schema", {}).get("properties", {})


def type_of(schema):
    kind = schema.get("type", "any")
    return " or ".join(kind) if isinstance(kind, list) else kind


def calls_section(paths, root, catalogue):
    """Writes of each operation of the catalogue what its request needs."""
    families = {operation.name: family.group for family in catalogue.families for operation in family.operations}
    rows = []
    for path, item in paths.items():
        if not path.startswith(CALLS):
            continue
        name, request = path.removeprefix(CALLS), item["post"]
        arguments = body_of(request)["arguments"]
        needed = arguments.get("required", [])
        rows.append([link(name, f"operations/{families[name]}"), request["x-role"],
                     ", ".join(code(one) + ("" if one in needed else " (may be left out)") for one in arguments["properties"])])
    if len(rows) != len(families):
        raise ValueError(f"the description of REST has {len(rows)} operations, the catalogue has {len(families)}")
    return ["## Calls of operations", "", f"Each operation is called by `POST {root}{CALLS}NAME`, with its arguments as members of "
            "`arguments`. [What else the request may have, and what comes back](../rest.md#calls).", "",
            *table(["operation", "role", "arguments"], sorted(rows))]
