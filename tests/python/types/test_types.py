"""Everything is typed, strictly, also for whoever uses it."""

import os
import pathlib
import subprocess
import sys

import pytest

EXAMPLES = sorted((pathlib.Path(__file__).resolve().parents[3] / "python/examples").glob("*.py"))

WRONG = """
from bsp_pon import Olt, raw

olt: Olt = Olt()
port: str = olt.onus(1)[0].pon_port
olt.bind("1", "02:00:5e:10:00:01")
raw.bsp_pon_no_bind_onu_all("1")
olt.call(raw.bsp_pon_no_bind_onu_spec_id, 1)
"""


@pytest.fixture(scope="module")
def mypy():
    cache = pathlib.Path(os.environ["SITE"]).parent / "mypy"  # which it holds against what files have in them

    def check(*words):
        # Links are of the build folder, where mypy looks for packages.
        words = [sys.executable, "-m", "mypy", "--strict", f"--cache-dir={cache}", *map(str, words)]
        return subprocess.run(words, cwd=os.environ["SITE"], capture_output=True, text=True, timeout=300, check=False)

    return check


def test_the_packages_are(mypy):
    done = mypy("-p", "bsp_pon", "-p", "pytest_ponsim")
    assert done.returncode == 0, done.stdout


def test_the_examples_are(mypy):
    done = mypy(*EXAMPLES)
    assert EXAMPLES and done.returncode == 0, done.stdout


def test_mistakes_of_users_are_found(mypy, tmp_path):
    (tmp_path / "wrong.py").write_text(WRONG)
    done = mypy(tmp_path / "wrong.py")
    lines = [int(line.split(":")[1]) for line in done.stdout.splitlines() if ": error: " in line]
    assert lines == [5, 6, 7, 8], done.stdout
