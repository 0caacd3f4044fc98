#!/usr/bin/python3
"""Holds ponctl to what it promises of OLTs of a fleet, behind a real bridge and a real broker.

command_test.py PONSIM PONBRIDGE PONCTL
"""

import csv
import io
import json
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
from broker import PATIENCE  # noqa: E402
from rig import Rig  # noqa: E402

DESCRIBE = "BSP_CMD_ONU_DESCRIPTION_SET"

# Commands of all kinds: rows, records, blocks, texts, several calls that make one result, and records of no operation.
READINGS = (
    "onu list",
    "onu list 1 -o csv",
    "onu show 1/2",
    "onu show 1/2 -o json",
    "onu capability 1/2",
    "optics show 1",
    "optics show 1 -o hex",
    "port show 1",
    "alarm list",
    "config show",
    "profile list -o json",
    "call bsp_pon_get_w_onu_spec_id pon_port=1 onu_id=2 -o json",
    "call bsp_pon_onu_optical_diagnose_get pon_port=1 onu_id=2 -o json",
    "call bsp_profile_exec_get_json action=1 -o json",
    "raw BSP_MSG_PON get cmd=BSP_CMD_VIEW_ONU_INFO_WEB pon_port=1 -o json",
)


class CommandTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls) -> None:
        cls.folder = tempfile.TemporaryDirectory(prefix="rig")
        cls.rig = Rig(PROGRAMS, pathlib.Path(cls.folder.name) / "r", olts=4, onus=4, bridges=1)
        cls.addClassCleanup(cls.folder.cleanup)
        cls.addClassCleanup(cls.rig.end)
        cls.rig.start()
        cls.names = [olt.name for olt in cls.rig.olts]

    def run_well(self, *words: str, **more) -> str:
        done = self.rig.ponctl(*words, **more)
        self.assertEqual((done.returncode, done.stderr if done.returncode else ""), (0, ""), words)
        return done.stdout

    def locally(self, words: list[str], olt) -> tuple[int, str, str]:
        environment = {**os.environ, "BOARD_IPC_DIR": str(olt.folder)}
        done = subprocess.run([PROGRAMS["ponctl"], *words], env=environment, capture_output=True, text=True, check=False)
        return done.returncode, done.stdout, done.stderr

    def test_one_olt_shows_what_a_local_one_shows(self) -> None:
        olt = self.rig.olts[0]
        shown = 0
        for line in READINGS:
            with self.subTest(line):
                words = line.split()
                here = self.locally(words, olt)
                there = self.rig.ponctl("--olt", olt.name, *words)
                self.assertEqual((there.returncode, there.stdout, there.stderr), here)
                shown += here[0] == 0
        self.assertGreater(shown, len(READINGS) // 2, "most of these commands are to succeed")

    def test_many_olts_are_told_apart_in_json(self) -> None:
        told = json.loads(self.run_well("--olt", "all", "-o", "json", "onu", "list"))
        self.assertEqual(sorted(one["olt"] for one in told), sorted(self.names))
        for one in told:
            olt = next(olt for olt in self.rig.olts if olt.name == one["olt"])
            self.assertEqual((one["state"], one["exit"]), ("done", 0))
            self.assertEqual(one["result"], json.loads(self.locally(["onu", "list", "-o", "json"], olt)[1]))

    def test_rows_of_many_olts_have_their_names_in_csv(self) -> None:
        rows = list(csv.DictReader(io.StringIO(self.run_well("--olt", "all", "-o", "csv", "onu", "list"))))
        self.assertEqual(sorted({row["olt"] for row in rows}), sorted(self.names))
        self.assertEqual(len(rows), 4 * len(self.names))

    def test_equal_results_stand_together(self) -> None:
        shown = self.rig.ponctl("--olt", "all", "fdb", "show")
        self.assertEqual(shown.returncode, 0, shown.stderr)
        self.assertEqual(sum(name in shown.stdout for name in self.names), len(self.names), shown.stdout)
        self.assertIn("4 OLTs: 4 done", shown.stderr)

    def test_selector_chooses_by_label(self) -> None:
        told = json.loads(self.run_well("--olt", "site=north or site=south", "-o", "json", "onu", "list"))
        self.assertEqual({one["olt"].split("-")[0] for one in told}, {"north", "south"})

    def test_what_is_not_there_is_said_before_anything_is_done(self) -> None:
        for olt, said in (
            ("site=nowhere", "no OLT"),
            ("nowhere-7", "the fleet has no OLT 'nowhere-7'"),
            ("nowhere-7,north-1", "nowhere-7"),
            ("site=", "the selector is wrong"),
        ):
            with self.subTest(olt):
                done = self.rig.ponctl("--olt", olt, "onu", "list")
                self.assertEqual(done.returncode, 2, done.stderr)
                self.assertIn(said, done.stderr)
                self.assertEqual(done.stdout, "")

    def test_what_affects_service_needs_consent(self) -> None:
        done = self.rig.ponctl("--olt", "all", "onu", "reboot", "1/1", stdin=subprocess.DEVNULL)
        self.assertNotEqual(done.returncode, 0)
        self.assertIn("--yes: missing", done.stdout + done.stderr)

    def test_dry_run_sends_nothing(self) -> None:
        before = [olt.writes(DESCRIBE) for olt in self.rig.olts]
        shown = self.run_well("--olt", "all", "--dry-run", "onu", "describe", "1/1", "not this")
        self.assertIn(DESCRIBE, shown)
        self.assertEqual([olt.writes(DESCRIBE) for olt in self.rig.olts], before)

    def test_change_goes_out_in_waves_and_once(self) -> None:
        before = [olt.writes(DESCRIBE) for olt in self.rig.olts]
        done = self.rig.ponctl("--olt", "all", "--waves", "1,50%,rest", "onu", "describe", "1/2", "waved")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual([olt.writes(DESCRIBE) for olt in self.rig.olts], [count + 1 for count in before])
        for olt in self.rig.olts:
            self.assertIn("waved", self.rig.directly(olt, "onu", "show", "1/2"))
        self.assertTrue(self.run_well("fleet", "runs").strip(), "what changes something leaves a run")

    def test_failures_end_a_run_that_can_be_resumed(self) -> None:
        refusing = self.rig.olts[1]
        self.rig.control(refusing, "fault", "status", "4003", f"command={DESCRIBE}", "count=1")
        done = self.rig.ponctl("--olt", ",".join(self.names), "--waves", "1,1,rest", "onu", "describe", "1/3", "resumed")
        self.assertEqual(done.returncode, 1, done.stderr)
        self.assertIn("the run ends early", done.stderr)
        run = next(word for word in done.stderr.split("`")[1].split() if "-" in word)
        done = self.rig.ponctl("fleet", "resume", run)
        self.assertIn("resumed", self.rig.directly(self.rig.olts[-1], "onu", "show", "1/3"), done.stderr)

    def test_interrupt_lets_what_runs_end(self) -> None:
        words = [PROGRAMS["ponctl"], "--olt", "all", "--concurrency", "1", "-o", "json", "onu", "list"]
        running = subprocess.Popen(
            words, env=self.rig.environment("operator"), stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True
        )
        running.send_signal(signal.SIGINT)
        out, errors = running.communicate(timeout=PATIENCE)
        # It came before the command was at work, or while it was.
        self.assertIn(running.returncode, (130, -signal.SIGINT), errors)
        if out:
            self.assertIsInstance(json.loads(out), list)

    def test_list_says_what_each_olt_is(self) -> None:
        told = {one["olt"]: one for one in json.loads(self.run_well("-o", "json", "fleet", "list"))}
        self.assertEqual(sorted(told), sorted(self.names))
        keys = "olt state bridge labels model firmware ports online offline waiting version catalogue at".split()
        for olt in self.rig.olts:
            self.assertEqual(list(told[olt.name]), keys)
            self.assertEqual(told[olt.name]["state"], "online")
            self.assertEqual(told[olt.name]["labels"], {"site": olt.site})
            self.assertEqual(told[olt.name]["online"], 4)
        self.assertIn("site=north", self.run_well("fleet", "list", "site=north"))
        self.assertEqual(self.run_well("--olt", "site=north", "fleet", "list"), self.run_well("fleet", "list", "site=north"))
        self.assertNotIn("south", self.run_well("fleet", "list", "site=north"))

    def test_who_may_only_read_changes_nothing(self) -> None:
        olt = self.rig.olts[0]
        before = olt.writes(DESCRIBE)
        done = self.rig.ponctl("--olt", olt.name, "onu", "describe", "1/1", "mine", client="monitor")
        self.assertNotEqual(done.returncode, 0)
        self.assertTrue(done.stderr)
        self.assertEqual(olt.writes(DESCRIBE), before)

    def test_without_a_broker_over_ssh(self) -> None:
        olt = self.rig.olts[0]
        folder = pathlib.Path(self.folder.name) / "bin"
        folder.mkdir()
        # Stands in for ssh: it goes to no other machine, and runs the last words there as a shell does.
        played = folder / "ssh"
        played.write_text(
            f'#!/bin/sh\nwhile [ "$1" != -- ]; do shift; done\nshift 2\nexport BOARD_IPC_DIR={olt.folder}\n'
            f'export XDG_STATE_HOME={folder}/state\nPATH={pathlib.Path(PROGRAMS["ponctl"]).parent}:$PATH\nexec sh -c "$*"\n',
            encoding="utf-8",
        )
        played.chmod(0o755)
        environment = {**self.rig.environment("operator"), "PATH": f"{folder}:{os.environ['PATH']}"}

        def over_ssh(*words: str) -> subprocess.CompletedProcess:
            command = [PROGRAMS["ponctl"], "--olt", "ssh://olt-1", *words]
            return subprocess.run(command, env=environment, capture_output=True, text=True, check=False, timeout=60)

        for line in ("onu list", "onu show 1/2 -o json"):
            words = line.split()
            done = over_ssh(*words)
            self.assertEqual((done.returncode, done.stdout, done.stderr), self.locally(words, olt))
        before = olt.writes(DESCRIBE)
        self.assertEqual(over_ssh("onu", "describe", "1/4", "by ssh").returncode, 0)
        self.assertEqual(olt.writes(DESCRIBE), before + 1)
        self.assertIn("by ssh", self.rig.directly(olt, "onu", "show", "1/4"))


if __name__ == "__main__":
    PROGRAMS = dict(zip(("ponsim", "ponbridge", "ponctl"), sys.argv[1:4]))
    unittest.main(argv=sys.argv[:1], verbosity=1)
