"""This module writes all of the reference."""

from pages import write, write_below

from .metrics import write_metrics
from .operations import write_operations
from .scenarios import write_scenario_keys
from .tables import write_tables
from .text import code, pages_list, plain

SCENARIO_KEYS = "sim/scenario/keys.cpp"
JSON_KEYS = "tests/ponctl/output/json_keys.txt"
CONTENTS = {"operations/index": "Operations by family", "commands": "Commands", "channels": "Channels", "records": "Records",
            "views/index": "Views", "layouts/index": "Layouts", "statuses": "Status words", "metrics": "Metrics",
            "scenario-keys": "Keys of scenarios", "json": "Keys of JSON"}


def write_reference(source, root, catalogue, ponfront):
    def put(page, lines):
        put_page = write if page == "index" else write_below
        put_page(source / f"reference/{page}.md", "\n".join(lines).rstrip("\n") + "\n")

    write_operations(catalogue, put)
    write_tables(catalogue, put)
    write_metrics(ponfront, put)
    write_scenario_keys((root / SCENARIO_KEYS).read_text(encoding="utf-8"), put)
    write_json(root, put)
    put("index", ["# Reference", "", "These pages are made from the catalogue and from the programs each time the site is "
                  "built. The [manual](../manual/index.md) has the programs' options and the configuration of `ponfront`.", "",
                  *pages_list(CONTENTS.items())])


def write_json(root, put):
    """Writes which keys the output of each command line has: those that a test holds the tool to."""
    lines = ["# Keys of JSON", "", "What `ponctl -o json` prints for each kind of command line. `[]` is any member of a list. "
             "[Keys stay](../compatibility.md#json-of-the-tool).", ""]
    for line in (root / JSON_KEYS).read_text(encoding="utf-8").splitlines():
        command, _, keys = line.partition(": ")
        lines += [f"## {plain(command)}", "", ", ".join(code(key) for key in keys.split()) or "none", ""]
    put("json", lines)
