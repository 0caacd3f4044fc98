"""This module writes all of the reference."""

from pages import write, write_below

from .metrics import write_metrics
from .mib import write_mib
from .operations import write_operations
from .rest import write_rest
from .scenarios import write_scenario_keys
from .tables import write_tables
from .text import code, table
from .told import told_by

SCENARIO_KEYS = "sim/scenario/keys.cpp"
JSON_KEYS = "tests/ponctl/output/json_keys.txt"
MIB = "front/snmp/BSP-PON-MIB.txt"
MODULES = "tests/front/snmp/mibs" # those that the MIB imports
# What the site has, by where a reader meets it: the pages with their titles, and what each is good for.
CONTENTS = {
    "The library": {
        "operations/index.md": ("Operations by family", "what each function takes, sends and returns"),
        "statuses.md": ("Status words", "what an operation may return"),
        "views/index.md": ("Views", "columns of the tables that an OLT answers with"),
        "layouts/index.md": ("Layouts", "what settings and answers of ONUs and of the OLT hold"),
    },
    "What goes over the wire": {
        "channels.md": ("Channels", "to whom a request goes"),
        "commands.md": ("Commands", "what a request asks for"),
        "records.md": ("Records", "where each field stands"),
    },
    "The command line": {
        "../manual/index.md": ("The manual", "all programs, their options and files"),
        "json.md": ("Keys of JSON", "what `ponctl -o json` prints"),
    },
    "The daemon": {
        "../manual/ponfront.toml.5.md": ("Configuration of ponfront", "its keys and their defaults"),
        "rest.md": ("REST", "paths, parameters and roles"),
        "mib.md": ("BSP-PON-MIB", "tables, columns and notifications of SNMP"),
        "metrics.md": ("Metrics", "what Prometheus reads"),
    },
    "The simulator": {
        "scenario-keys.md": ("Keys of scenarios", "what a scenario may say"),
        "../manual/ponsim.8.md#model-time-and-control": ("Words of ponsim ctl", "what can happen to a simulated OLT"),
        "../manual/ponsim.8.md#alarms": ("Alarms", "numbers, names, severities, and what raises them"),
    },
}


def write_reference(source, root, catalogue, ponfront):
    def put(page, lines):
        put_page = write if page == "index" else write_below
        put_page(source / f"reference/{page}.md", "\n".join(lines).rstrip("\n") + "\n")

    write_operations(catalogue, put)
    write_tables(catalogue, put)
    metrics, rest = told_by(ponfront, "/metrics", "/openapi.json")
    write_metrics(metrics, put)
    write_rest(rest, catalogue, put)
    write_mib(root / MIB, root / MODULES, put)
    write_scenario_keys((root / SCENARIO_KEYS).read_text(encoding="utf-8"), put)
    write_json(root, put)
    put("index", contents())


def contents():
    lines = ["# Reference", "", "These pages are made from the catalogue and from the programs each time the site is built.", ""]
    for title, pages in CONTENTS.items():
        lines += [f"## {title}", "", *(f"- [{name}]({page}): {what}" for page, (name, what) in pages.items()), ""]
    return lines


def write_json(root, put):
    """Writes which keys the output of each command line has: those that a test holds the tool to."""
    rows = []
    for line in (root / JSON_KEYS).read_text(encoding="utf-8").splitlines():
        command, _, keys = line.partition(": ")
        rows.append([code(command), ", ".join(code(key) for key in keys.split()) or "none"])
    put("json", ["# Keys of JSON", "", "What `ponctl -o json` prints for each kind of command line. `[]` is any member of a list. "
                 "[Keys stay](../compatibility.md#json-of-the-tool).", "", *table(["command line", "keys"], rows)])
