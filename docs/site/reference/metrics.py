"""This module writes the page of metrics, which ponfront itself tells."""

import pathlib
import re
import subprocess
import tempfile
import urllib.request

from .text import code, plain, table

PATIENCE = 10  # seconds for an answer


def write_metrics(program, put):
    rows = [[code(name), kind, plain(brief)] for name, (kind, brief) in families(program).items()]
    put("metrics", ["# Metrics", "", "What `/metrics` of [ponfront](../manual/ponfront.8.md) has, with `--onus all`.", "",
                    *table(["metric", "type", "what it is"], rows)])


def families(program):
    """Returns the type and the description of each metric. The program tells them of an OLT that is not there, too."""
    with tempfile.TemporaryDirectory() as folder:
        configuration = pathlib.Path(folder) / "front.toml"
        configuration.write_text(f'[[olt]]\nname = "none"\nsocket_dir = "{folder}"\n[http]\nlisten = "127.0.0.1:0"\n',
                                 encoding="utf-8")
        with subprocess.Popen([program, "--config", str(configuration), "--onus", "all"], stderr=subprocess.PIPE,
                              text=True) as front:
            try:
                said = text_of(front)
            finally:
                front.kill()
    types = dict(re.findall(r"^# TYPE (\S+) (\S+)$", said, re.MULTILINE))
    return {name: (types[name], brief) for name, brief in re.findall(r"^# HELP (\S+) (.*)$", said, re.MULTILINE)}


def text_of(front):
    said = ""
    for line in front.stderr: # it ends when the program does
        said += line
        found = re.search(r"listening on (\S+) port (\d+)", line)
        if found:
            with urllib.request.urlopen(f"http://{found[1]}:{found[2]}/metrics", timeout=PATIENCE) as answer:
                return answer.read().decode()
    raise RuntimeError(f"ponfront does not listen: {said}")
