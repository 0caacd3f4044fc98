"""The page is what it says: each line of its tutorial is run, and what that shows is compared; and so is its script."""

import doctest
import os
import pathlib
import re
import subprocess
import sys
import textwrap

from pytest_ponsim import Simulator

PAGE = pathlib.Path(__file__).resolve().parents[3] / "docs/python.md"


def test_the_tutorial():
    done = doctest.testfile(str(PAGE), module_relative=False, encoding="utf-8",
                            optionflags=doctest.REPORT_NDIFF | doctest.ELLIPSIS)
    assert done.attempted >= 40 and done.failed == 0


def test_the_first_script():
    (block,) = re.findall(r"(?m)^    from bsp_pon import BspError, Olt\n(?:(?:    .*)?\n)+", PAGE.read_text(encoding="utf-8"))
    with Simulator(arrivals=4, silent=0, ports=1) as simulator:
        olt = simulator.olt()
        waiting = olt.waiting(1)
        script = textwrap.dedent(block).replace("02:00:5e:10:00:01", waiting[0].mac)

        def run():
            words = [sys.executable, "-B", "-c", script]
            return subprocess.run(words, env={**os.environ, "BOARD_IPC_DIR": olt.call.directory}, timeout=120,
                                  capture_output=True, text=True, check=False)

        done = run()
        assert (done.returncode, done.stderr) == (0, "")
        assert done.stdout.splitlines() == [f"{onu.mac} {onu.distance} m" for onu in waiting]
        olt.step("1 s")
        bound = olt.find(waiting[0].mac)
        assert bound.text_a == "customer 1207" and olt.onu(1, bound.onu_id).get_vlan(1)["pvid"] == 100
    again = run()
    assert again.returncode == 1 and "not done: " in again.stderr and "nobody serves the module" in again.stderr
