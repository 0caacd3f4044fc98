#!/usr/bin/python3
"""Holds ponfront to what it promises of OLTs that it reads through a fleet.

front_test.py PONSIM PONBRIDGE PONCTL PONFRONT
"""

import pathlib
import signal
import subprocess
import sys
import tempfile
import unittest
import urllib.request

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
from broker import ADDRESS, free_port, patiently  # noqa: E402
from rig import Program, Rig  # noqa: E402


class FrontTest(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory(prefix="rig")
        self.addCleanup(folder.cleanup)
        self.rig = Rig(PROGRAMS, pathlib.Path(folder.name) / "r", olts=2, onus=4, bridges=1)
        self.addCleanup(self.rig.end)
        self.rig.start()
        self.port = free_port()
        near, far = self.rig.olts
        text = f'[fleet]\nsettings = "{self.rig.settings_of("operator")}"\n'
        text += f'[[olt]]\nname = "near"\nsocket_dir = "{near.folder}"\n[[olt]]\nname = "far"\nfleet = "{far.name}"\n'
        text += '[periods]\nolt = 1\nports = 1\nonus = 1\nalarms = 1\n'
        text += f'[http]\nlisten = "{ADDRESS}:{self.port}"\n'
        file = self.rig.folder / "front.toml"
        file.write_text(text, encoding="utf-8")
        self.front = Program([PROGRAMS["ponfront"], "--config", str(file)], self.rig.folder / "front.log", "")
        self.front.launch()
        self.addCleanup(self.front.end)

    def metric(self, start: str) -> list[str]:
        assert self.front.running.poll() is None, self.front.log.read_text(encoding="utf-8")
        try:
            with urllib.request.urlopen(f"http://{ADDRESS}:{self.port}/metrics", timeout=10) as answer:
                lines = answer.read().decode().splitlines()
        except OSError:
            return []
        return [line for line in lines if line.startswith(start)]

    def has_ups(self, olt: str, count: int) -> bool:
        return sum(line.endswith(" 1") for line in self.metric(f'pon_onu_up{{olt="{olt}"')) == count

    def test_olt_of_the_fleet_is_read_like_a_local_one(self) -> None:
        for olt in ("near", "far"):
            patiently(lambda olt=olt: self.has_ups(olt, 4))
        far = self.rig.olts[1]
        self.rig.control(far, "power", "1", self.rig.directly(far, "onu", "list", "1", "-o", "csv").splitlines()[1].split(",")[2], "off")
        self.rig.control(far, "step", "60")
        patiently(lambda: self.has_ups("far", 3))
        self.assertTrue(self.has_ups("near", 4))

    def test_bridge_that_is_gone_is_an_olt_that_does_not_answer(self) -> None:
        patiently(lambda: self.has_ups("far", 4))
        bridge = next(iter(self.rig.bridges.values()))
        bridge.end(signal.SIGKILL)
        patiently(lambda: any(line.endswith(" 0") for line in self.metric('pon_olt_up{olt="far"')))
        self.assertTrue(any(line.endswith(" 1") for line in self.metric('pon_olt_up{olt="near"')))
        bridge.launch()
        patiently(lambda: any(line.endswith(" 1") for line in self.metric('pon_olt_up{olt="far"')), patience=60)


if __name__ == "__main__":
    PROGRAMS = dict(zip(("ponsim", "ponbridge", "ponctl", "ponfront"), sys.argv[1:5]))
    unittest.main(argv=sys.argv[:1], verbosity=1)
