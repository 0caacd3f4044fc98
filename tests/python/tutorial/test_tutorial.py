"""The page is what it says: its tutorial is run, and what each line shows is compared; its examples are run, too."""

import asyncio
import doctest
import io
import json
import os
import pathlib
import re
import subprocess
import sys
import textwrap

from pytest_ponsim import Simulator

SCENARIO = '[[olt]]\nports = 1\n[[olt.port]]\nnumber = 1\n[[olt.port.onu]]\nname = "kitchen"\n'
PAGE = pathlib.Path(__file__).resolve().parents[3] / "docs/python.md"


def test_the_tutorial():
    done = doctest.testfile(str(PAGE), module_relative=False, encoding="utf-8",
                            optionflags=doctest.REPORT_NDIFF | doctest.ELLIPSIS)
    assert done.attempted >= 40 and done.failed == 0


def block_with(line):
    """Returns the example of the page that begins with a line."""
    (block,) = re.findall(rf"(?m)^    {re.escape(line)}\n(?:(?:    .*)?\n)+", PAGE.read_text(encoding="utf-8"))
    return textwrap.dedent(block)


def test_the_first_script():
    block = block_with("from bsp_pon import BspError, Olt")
    with Simulator(arrivals=4, silent=0, ports=1) as simulator:
        olt = simulator.olt()
        waiting = olt.waiting(1)
        script = block.replace("02:00:5e:10:00:01", waiting[0].mac)

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


def test_the_examples_for_asyncio():
    with Simulator(arrivals=4, silent=0) as north, Simulator(ports=1) as south:
        olt = north.olt()
        olt.bind(1, olt.waiting(1)[0].mac, onu_id=5)
        body = block_with("from bsp_pon import aio").replace("aio.Olt()", f"aio.Olt({north.directory()!r})")
        for name, simulator in (("north", north), ("south", south)):
            body = body.replace(f'"/run/{name}"', repr(simulator.directory()))
        names = {"a_function_that_makes_many_calls": lambda olt: olt, "asyncio": asyncio}
        exec("async def example():\n" + textwrap.indent(body + "return tables", "    "), names)
        tables = asyncio.run(names["example"]())
        olt.step("1 s")
        assert len(tables) == 16 and tables[0][0].onu_id == 5 and olt.onu(1, 5).get_vlan(1)["pvid"] == 200


def test_the_examples_for_tables():
    with Simulator(ports=1, arrivals=4, silent=0) as simulator:
        olt = simulator.olt()
        olt.bind(1, olt.waiting(1)[0].mac)
        names = {"olt": olt, "json": json, "file": io.StringIO()}
        exec(block_with("from bsp_pon import to_dataframe, to_records"), names)
        assert json.loads(names["file"].getvalue())[0]["olt_rx_power"] == names["light"].olt_rx_power.min()


def test_the_examples_for_pytest(tmp_path):
    (tmp_path / "test_page.py").write_text(f"SCENARIO = {SCENARIO!r}\n" + block_with("import pytest"))
    words = [sys.executable, "-B", "-m", "pytest", "-q", "-p", "no:cacheprovider", "-p", "pytest_ponsim.plugin",
             f"--ponsim-program={os.environ['PONSIM']}", tmp_path]
    done = subprocess.run(words, capture_output=True, text=True, timeout=120, check=False)
    assert "3 passed" in done.stdout, done.stdout
