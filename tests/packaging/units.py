"""Checks that systemd understands the units, and that a service has no rights that it does not need."""

import os
import shutil
import subprocess
import sys
import tempfile

# systemd-analyze gives a unit 0.0 when it may do nothing, and 10.0 when it may do everything. The option has tenths.
GREATEST_EXPOSURE = 20

TEMPLATES = os.path.join(os.path.dirname(__file__), "..", "..", "packaging", "systemd")


def run(*words: str) -> tuple[int, str]:
    done = subprocess.run(words, capture_output=True, text=True, check=False, env={**os.environ, "SYSTEMD_PAGER": ""})
    return done.returncode, done.stdout + done.stderr


def stripped_of(unit: str, setting: str) -> str:
    with open(unit, encoding="utf-8") as file:
        return "".join(line for line in file if not line.startswith(setting + "="))


def exposed(unit: str) -> tuple[bool, str]:
    status, said = run("systemd-analyze", "security", "--offline=true", f"--threshold={GREATEST_EXPOSURE}", unit)
    return status != 0, said


def named_copy(template: str) -> str:
    """Gives a template of units a name, so that it is one. Returns the file of the unit."""
    name = template.replace("@.", "@campus.")
    os.rename(template, name)
    return name


def problems(unit: str, program: str) -> list[str]:
    found = []
    too_exposed, said = exposed(unit)
    if too_exposed:
        found.append(said)
    with tempfile.TemporaryDirectory() as folder:
        copy = os.path.join(folder, os.path.basename(unit))
        # Without its filter of system calls the service may do more than it should: the check has to notice that.
        with open(copy, "w", encoding="utf-8") as file:
            file.write(stripped_of(unit, "SystemCallFilter"))
        if not exposed(copy)[0]:
            found.append("the check does not notice that SystemCallFilter is missing")
        # The program stands elsewhere before it is installed.
        with open(unit, encoding="utf-8") as file:
            text = file.read()
        with open(copy, "w", encoding="utf-8") as file:
            file.writelines(
                f"ExecStart={program} {line.split(' ', 1)[1]}" if line.startswith("ExecStart=") else line
                for line in text.splitlines(keepends=True)
            )
        names = [named_copy(copy)]
        # Its sockets are beside the template that the unit was made of.
        sockets = os.path.join(TEMPLATES, os.path.basename(unit).replace(".service", ".socket"))
        if os.path.exists(sockets):
            names.append(named_copy(shutil.copy(sockets, folder)))
        status, said = run("systemd-analyze", "verify", "--man=no", *names)
        if status != 0 or said.strip():
            found.append(said or f"systemd-analyze verify ended with {status}")
    return found


def main() -> int:
    program, *units = sys.argv[1:]
    wrong = [f"{unit}: {problem}" for unit in units for problem in problems(unit, program)]
    print("\n".join(wrong) or f"{len(units)} units may do what they need, and no more")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
