"""Types what the pages of docs/ show as typed, a page after the other, and compares what comes with what they show.

    typed_test.py DOCS PROGRAM...

A block of the language `console` has lines that start with `$ `, which go on in lines that start with `> `, and below
each what it prints. All of a page's blocks are typed into one shell, in a new folder, with the folders of the programs in its PATH. With WRITE_TYPED=1 in its
environment the pages are given what comes now; read what is different before you commit it.
"""

import os
import pathlib
import subprocess
import sys
import tempfile
import time

PATIENCE = 30  # seconds, until a program that stays in the background says that it serves
END = "-- end of what came --"


class Shell:
    """This class is a shell that is typed into. What it started ends with it."""

    def __init__(self, folder, path):
        self.folder, self.background = folder, 0
        environment = {"HOME": folder, "PATH": f"{path}:/usr/bin:/bin", "BOARD_IPC_DIR": f"{folder}/ipc", "LC_ALL": "C.UTF-8"}
        self.process = subprocess.Popen(
            ["setsid", "--wait", "timeout", "300", "bash"], cwd=folder, env=environment, text=True, stdin=subprocess.PIPE,
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT)

    def type(self, line):
        """Returns the lines that come. Whoever stays in the background is waited for, and what it says is not returned."""
        if line.endswith("&"):
            self.background += 1
            log = pathlib.Path(self.folder) / f"background-{self.background}"
            log.touch()
            said = self.lines_of(f"{line[:-1]} </dev/null >{log} 2>&1 &")
            self.wait_for(log, line)
            return said
        return self.lines_of(line)

    def lines_of(self, line):
        self.process.stdin.write(f"{line}\necho '{END}'\n")
        self.process.stdin.flush()
        lines = []
        for said in self.process.stdout:
            if said.rstrip("\n") == END:
                return lines
            lines.append(said.rstrip())
        raise RuntimeError(f"the shell ended with: {line}\n" + "\n".join(lines))

    @staticmethod
    def wait_for(log, line):
        end = time.monotonic() + PATIENCE
        while not any(word in log.read_text(encoding="utf-8") for word in ("serving on", "listening on")):
            if time.monotonic() > end:
                raise RuntimeError(f"does not serve: {line}\n{log.read_text(encoding='utf-8')}")
            time.sleep(0.05)

    def end(self):
        self.process.stdin.write("kill $(jobs -p) 2>/dev/null; wait 2>/dev/null\n")
        self.process.stdin.close()
        self.process.stdout.read()
        self.process.wait()


def typed(page, shell):
    """Returns the lines of the page with what comes below each line that is typed."""
    lines, command, is_typed = [], [], False
    for line in page.read_text(encoding="utf-8").splitlines():
        if is_typed and (line.startswith("$ ") or line.startswith("> ") and command):
            if line.startswith("$ "):
                lines += shell.type("\n".join(command)) if command else []
                command = []
            command.append(line[2:])
            lines.append(line)
            continue
        if line.startswith("```"):
            lines += shell.type("\n".join(command)) if command else []
            command, is_typed = [], line == "```console"
        if not is_typed or line == "```console":
            lines.append(line)
    return lines


def is_as_shown(page, path):
    with tempfile.TemporaryDirectory(prefix="typed-", dir="/tmp") as folder:
        shell = Shell(folder, path)
        try:
            found = typed(page, shell)
        finally:
            shell.end()
    shown = page.read_text(encoding="utf-8").splitlines()
    if found == shown:
        return True
    if os.environ.get("WRITE_TYPED"):
        page.write_text("\n".join(found) + "\n", encoding="utf-8")
        return True
    at = next((index for index, (one, other) in enumerate(zip(shown, found)) if one != other), min(len(shown), len(found)))
    print(f"{page}:{at + 1}: shown and found differ here:", *(f"- {line}" for line in shown[at:at + 5]),
          *(f"+ {line}" for line in found[at:at + 5]), sep="\n", file=sys.stderr)
    return False


def main():
    docs, *programs = sys.argv[1:]
    path = ":".join(str(pathlib.Path(program).resolve().parent) for program in programs)
    pages = [page for page in sorted(pathlib.Path(docs).rglob("*.md")) if "```console" in page.read_text(encoding="utf-8")]
    if "tutorial.md" not in [page.name for page in pages]:
        print("the tutorial shows nothing that is typed", file=sys.stderr)
        return 1
    return 0 if all([is_as_shown(page, path) for page in pages]) else 1


if __name__ == "__main__":
    sys.exit(main())
