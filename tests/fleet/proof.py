#!/usr/bin/python3
"""Rolls a change out over a fleet while OLTs refuse or are gone, the broker and a bridge are killed, the command itself is
killed and resumed, and requests come twice. In the end each OLT has to be as the report says, as whoever looks at
the OLT itself sees; no change was made twice, and none that was acknowledged is lost.

proof.py PONSIM PONBRIDGE PONCTL [--olts 1000] [--onus 128]
"""

import argparse
import collections
import concurrent.futures
import json
import pathlib
import signal
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
from broker import PATIENCE, patiently  # noqa: E402
from rig import Olt, Rig  # noqa: E402

DESCRIBE = "BSP_CMD_ONU_DESCRIPTION_SET"
ROLLED_OUT, TWICE = 2, 3  # the ONUs that the command describes, and that requests that come twice describe
TEXT = "rolled out"
MOST_ATTEMPTS = 8  # of resuming


def writes(olt: Olt, onu: int) -> list[str]:
    """Returns what came of each request to describe this ONU, as the OLT's own audit has it."""
    if not olt.audit.exists():
        return []
    entries = [json.loads(line) for line in olt.audit.read_text(encoding="utf-8").splitlines()]
    return [one["result"] for one in entries if one.get("command") == DESCRIBE and one["fields"]["onu_id"] == str(onu)]


class Proof:
    def __init__(self, rig: Rig) -> None:
        self.rig = rig
        self.dark = {olt.name for olt in rig.olts if olt.simulator == "dark"}
        self.refusing = {olt.name for olt in rig.olts if not olt.bound}
        self.wrong: list[str] = []

    def expect(self, is_so: bool, what: str) -> None:
        if not is_so:
            self.wrong.append(what)

    def run(self) -> None:
        self.rig.start()
        self.say(f"{len(self.rig.olts)} OLTs with {len(self.rig.olts) * self.rig.onus} ONUs answer")
        self.rig.simulators["dark"].end(signal.SIGKILL)
        self.read_all()
        self.slow_down()
        report = self.roll_out()
        twice = self.answered_twice()
        self.compare(report, twice)
        self.show_processes()

    def say(self, what: str) -> None:
        print(what, flush=True)

    def read_all(self) -> None:
        start = time.monotonic()
        done = self.rig.ponctl("--olt", "all", "-o", "json", "auth", "show", "1")
        states = {one["olt"]: one["state"] for one in json.loads(done.stdout)}
        seconds = time.monotonic() - start
        self.say(f"all are read in {seconds:.2f} s: {dict(collections.Counter(states.values()))}")
        for olt in self.rig.olts:
            expected = "unreachable" if olt.name in self.dark else "done"
            self.expect(states.get(olt.name) == expected, f"{olt.name} was read: {states.get(olt.name)}")

    def slow_down(self) -> None:
        """Each change takes a while, so that there is something to be killed in the middle of."""
        alive = [olt for olt in self.rig.olts if olt.name not in self.dark]
        with concurrent.futures.ThreadPoolExecutor(4) as pool:
            list(pool.map(lambda olt: self.rig.control(olt, "fault", "late", "200", f"command={DESCRIBE}"), alive))

    def roll_out(self) -> list[dict]:
        """Returns the last report."""
        words = ["--olt", "all", "--waves", "1,5%,25%,rest", "--max-failures", "50%", "--concurrency", self.concurrency(), "--timeout", "2000", "--yes"]
        command = [self.rig.programs["ponctl"], *words, "-o", "json", "onu", "describe", "1", str(ROLLED_OUT), TEXT]
        log = self.rig.folder / "rollout.log"
        with open(log, "w", encoding="utf-8") as stream:
            running = subprocess.Popen(command, env=self.rig.environment("operator"), stdout=stream, stderr=stream)
        with concurrent.futures.ThreadPoolExecutor(1) as pool:
            asking = pool.submit(self.ask_twice)
            self.when_done(0.2, running)
            self.rig.broker.end(signal.SIGKILL)
            self.rig.broker.start()
            self.say("the broker was killed, and is back")
            self.when_done(0.4, running)
            self.rig.bridges["hut-1"].end(signal.SIGKILL)
            self.rig.bridges["hut-1"].launch()
            self.say("a bridge was killed, and is back")
            self.when_done(0.6, running)
            running.kill()
            running.wait(timeout=PATIENCE)
            self.say("the command was killed")
            report = self.resume()
            asking.result()
        return report

    def concurrency(self) -> str:
        return str(max(2, min(50, len(self.rig.olts) // 10)))

    def when_done(self, share: float, running: subprocess.Popen) -> None:
        """Waits until that share of the OLTs was changed, or the command has ended."""
        def is_so() -> bool:
            changed = sum(olt.audit.exists() and bool(writes(olt, ROLLED_OUT)) for olt in self.rig.olts)
            return changed >= share * len(self.rig.olts) or running.poll() is not None

        patiently(is_so, patience=5 * PATIENCE)
        self.say(f"{sum(bool(writes(olt, ROLLED_OUT)) for olt in self.rig.olts)} OLTs are changed"
                 f"{'' if running.poll() is None else ', and the command has ended'}")

    def resume(self) -> list[dict]:
        """Goes on with the run until only those are left who cannot be reached at all."""
        runs = self.rig.ponctl("fleet", "runs").stdout.split()
        assert len(runs) == 1, f"there are the runs {runs}"
        for attempt in range(1, MOST_ATTEMPTS + 1):
            done = patiently(lambda: self.rig.ponctl("fleet", "resume", runs[0]), lambda end: "is in use" not in end.stderr)
            assert done.stdout.startswith("["), f"the run was not resumed: {done.stdout[-500:]}{done.stderr[-2000:]}"
            report = json.loads(done.stdout)
            states = collections.Counter(one["state"] for one in report)
            self.say(f"resumed, {attempt}: {dict(states)}")
            # What a killed bridge had begun stays unknown where nothing says how the setting stands.
            killed = {olt.name for olt in self.rig.olts if olt.bridge == "hut-1"}
            unknown = {one["olt"] for one in report if one["state"] == "unknown"}
            open_ones = {one["olt"] for one in report if one["state"] == "unreachable"} | (unknown - killed)
            if len(report) == len(self.rig.olts) and open_ones <= self.dark:
                self.expect(len(unknown) <= self.rig.threads, f"a bridge had begun at most {self.rig.threads}: {sorted(unknown)}")
                return report
        raise AssertionError(f"after {MOST_ATTEMPTS} attempts these are open: {sorted(open_ones - self.dark)[:5]}: {done.stderr[-2000:]}")

    def ask_twice(self) -> None:
        """Sends each request two times, with the same id, to every tenth OLT."""
        with open(self.rig.folder / "twice.log", "w", encoding="utf-8") as stream:
            command = ["timeout", "600", "mosquitto_sub", *self.rig.broker.words_of("twice"), "-t", "pon/client/twice/#", "-v"]
            self.listening = subprocess.Popen(command, stdout=stream, stderr=stream)
        for olt in self.rig.olts[::10]:
            asked = {"operation": "bsp_pon_onu_description", "arguments": {"pon_port": 1, "onu_id": TWICE, "text": olt.name}}
            text = json.dumps({"id": f"twice-{olt.name}", "call": asked})
            words = ["-t", f"pon/olt/{olt.name}/call/write/twice", "-m", text, "--repeat", "2"]
            words += ["-D", "publish", "response-topic", f"pon/client/twice/{olt.name}"]
            # While the broker is away it fails, which is as good.
            command = ["mosquitto_pub", *self.rig.broker.words_of("twice"), *words]
            subprocess.run(command, capture_output=True, check=False, timeout=PATIENCE)

    def answered_twice(self) -> set[str]:
        """Returns the OLTs that have acknowledged a change that came twice."""
        self.listening.terminate()
        self.listening.wait(timeout=PATIENCE)
        lines = (self.rig.folder / "twice.log").read_text(encoding="utf-8").splitlines()
        answers = [line.removeprefix("pon/client/twice/").split(" ", 1) for line in lines if line.startswith("pon/client/twice/")]
        said = {name for name, text in answers if json.loads(text).get("outcome", {}).get("status_name") == "BSP_OK"}
        self.say(f"{len(answers)} answers to requests that came twice, {len(said)} OLTs have acknowledged them")
        return said

    def compare(self, report: list[dict], twice: set[str]) -> None:
        """Looks at each OLT itself."""
        states = {one["olt"]: one["state"] for one in report}
        self.rig.simulators["dark"].launch()
        self.rig.simulators["dark"].await_ready()
        with concurrent.futures.ThreadPoolExecutor(2) as pool:
            described = dict(zip((olt.name for olt in self.rig.olts), pool.map(self.described, self.rig.olts)))
        noted = self.noted()
        for olt in self.rig.olts:
            made, texts, state = writes(olt, ROLLED_OUT), described[olt.name], states.get(olt.name)
            if olt.name in self.dark:
                self.expect((state, made) == ("unreachable", []), f"{olt.name} was gone: {state}, {made}")
            elif olt.name in self.refusing:
                self.expect((state, len(made), texts.get(ROLLED_OUT)) == ("failed", 1, None), f"{olt.name} refuses: {state}, {made}, {texts}")
            elif state == "unknown":
                is_so = (made, texts.get(ROLLED_OUT)) in (([], ""), (["BSP_OK"], TEXT))
                self.expect(is_so, f"{olt.name} is unknown: {made}, {texts}")
            else:
                said = next((one for one in report if one["olt"] == olt.name), None)
                self.expect((state, made, texts.get(ROLLED_OUT)) == ("done", ["BSP_OK"], TEXT), f"{olt.name}: {said}, {made}, {texts}")
            if state == "done":
                self.expect(olt.name in noted, f"{olt.name} is done, and no audit log of a bridge has it")
            self.expect(len(writes(olt, TWICE)) <= 1, f"{olt.name} was changed more than once: {writes(olt, TWICE)}")
            if olt.name in twice:
                self.expect(texts.get(TWICE) == olt.name, f"{olt.name} acknowledged, and has {texts}")

    def noted(self) -> set[str]:
        """Returns the OLTs at which a bridge has noted the change."""
        lines = [line for name in self.rig.bridges for line in self.rig.audit_of(name).read_text(encoding="utf-8").splitlines()]
        entries = [json.loads(line) for line in lines if DESCRIBE in line]
        return {one["olt"] for one in entries if one["result"] == "BSP_OK" and one["fields"]["onu_id"] == str(ROLLED_OUT)}

    def described(self, olt: Olt) -> dict[int, str]:
        rows = json.loads(self.rig.directly(olt, "-o", "json", "onu", "list", "1"))
        return {row["onu_id"]: row["description"] for row in rows if row["onu_id"] in (ROLLED_OUT, TWICE)}

    def show_processes(self) -> None:
        running = {"broker": self.rig.broker.running} | {name: bridge.running for name, bridge in self.rig.bridges.items()}
        running |= {name: simulator.running for name, simulator in self.rig.simulators.items()}
        for name, process in running.items():
            status = pathlib.Path(f"/proc/{process.pid}/status").read_text(encoding="ascii")
            values = dict(line.split(":", 1) for line in status.splitlines() if ":" in line)
            files = len(list(pathlib.Path(f"/proc/{process.pid}/fd").iterdir()))
            self.say(f"  {name}: {int(values['VmRSS'].split()[0]) / 1024:.1f} MiB, {values['Threads'].strip()} threads, {files} files")


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    for program in ("ponsim", "ponbridge", "ponctl"):
        parser.add_argument(program)
    parser.add_argument("--olts", type=int, default=1000)
    parser.add_argument("--onus", type=int, default=128)
    asked = parser.parse_args()
    programs = {name: getattr(asked, name) for name in ("ponsim", "ponbridge", "ponctl")}
    few = max(1, asked.olts // 100)
    with tempfile.TemporaryDirectory(prefix="proof") as folder:
        rig = Rig(programs, pathlib.Path(folder), asked.olts, asked.onus, refusing=few, dark=few)
        proof = Proof(rig)
        try:
            proof.run()
        finally:
            rig.end()
    for what in proof.wrong:
        print(what)
    print(f"{len(proof.wrong)} things are wrong" if proof.wrong else "every OLT is as the report says")
    return 1 if proof.wrong else 0


if __name__ == "__main__":
    sys.exit(main())
