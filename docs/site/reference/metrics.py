"""This module writes the page of metrics, which ponfront itself tells."""

import re

from .text import code, plain, table


def write_metrics(said, put):
    rows = [[code(name), kind, plain(brief)] for name, (kind, brief) in families(said).items()]
    put("metrics", ["# Metrics", "", "What `/metrics` of [ponfront](../manual/ponfront.8.md) has, with `--onus all`. "
                    "[How to watch OLTs with them](../monitoring.md).", "", *table(["metric", "type", "what it is"], rows)])


def families(said):
    """Returns the type and the description of each metric."""
    types = dict(re.findall(r"^# TYPE (\S+) (\S+)$", said, re.MULTILINE))
    found = {name: (types[name], brief) for name, brief in re.findall(r"^# HELP (\S+) (.*)$", said, re.MULTILINE)}
    if not found:
        raise ValueError("ponfront tells no metrics")
    return found
