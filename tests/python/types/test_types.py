"""Everything is typed, strictly, also for whoever uses it."""

import os
import pathlib
import subprocess
import sys

import pytest

EXAMPLES = sorted((pathlib.Path(__file__).resolve().parents[3] / "python/examples").glob("*.py"))

WRONG = """
from bsp_pon import Olt, aio, raw

olt: Olt = Olt()
port: str = olt.onus(1)[0].pon_port
olt.bind("1", "02:00:5e:10:00:01")
raw.bsp_pon_no_bind_onu_all("1")
olt.call(raw.bsp_pon_no_bind_onu_spec_id, 1)
olt.onu(1, 5).set_vlan(1, mode="trnk")
olt.onu(1, 5).get_vlan(1)["pvidd"]
pvid: str = olt.onu(1, 5).get_vlan(1)["pvid"]


async def awaits(olt: aio.Olt) -> None:
    await olt.bind("1", "02:00:5e:10:00:01")
    olt.onus(1)[0]
    found: int = await olt.info()
    fine: int = (await olt.onu(1, 5).get_vlan(1))["pvid"] + (await olt.bandwidth(1))["free"]
    fine += fine_too(olt.onu(1, 5).port)


def fine_too(port: int) -> int:
    return Olt().onu(port, 5).get_vlan(1)["pvid"] + len(Olt().fdb.macs(port, uni=1))
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
    assert lines == [5, 6, 7, 8, 9, 10, 11, 15, 16, 17], done.stdout
