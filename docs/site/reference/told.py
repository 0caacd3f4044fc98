"""This module asks ponfront what it serves. The program tells it of an OLT that is not there, too."""

import pathlib
import re
import subprocess
import tempfile
import urllib.request

PATIENCE = 10  # seconds for an answer


def told_by(program, *paths):
    """Returns what the program answers to each of the paths."""
    with tempfile.TemporaryDirectory() as folder:
        configuration = pathlib.Path(folder) / "front.toml"
        configuration.write_text(f'[[olt]]\nname = "none"\nsocket_dir = "{folder}"\n[http]\nlisten = "127.0.0.1:0"\n',
                                 encoding="utf-8")
        with subprocess.Popen([program, "--config", str(configuration), "--onus", "all"], stderr=subprocess.PIPE,
                              text=True) as front:
            try:
                place = place_of(front)
                return [answer_of(place + path) for path in paths]
            finally:
                front.kill()


def place_of(front):
    said = ""
    for line in front.stderr: # it ends when the program does
        said += line
        found = re.search(r"listening on (\S+) port (\d+)", line)
        if found:
            return f"http://{found[1]}:{found[2]}"
    raise RuntimeError(f"ponfront does not listen: {said}")


def answer_of(url):
    with urllib.request.urlopen(url, timeout=PATIENCE) as answer:
        return answer.read().decode()
