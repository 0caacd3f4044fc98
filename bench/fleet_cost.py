#!/usr/bin/python3
"""What a fleet costs: a call through broker and bridge beside the bare round trip, one command for all OLTs, and what a
broker pays for each connection, inventory, call and event.

fleet_cost.py BUILD

Exit status 1 where a goal is missed.
"""

import json
import os
import pathlib
import resource
import shutil
import socket
import statistics
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "tests" / "fleet"))
from broker import Broker, free_port, patiently  # noqa: E402
from rig import Rig  # noqa: E402

OLTS, ONUS = 1000, 128
ROUNDS = 5
CALLS = 2000
GOAL_ALL = 3.0  # seconds for one read of all OLTs by one command

# A small question and a table, as calls by name.
QUESTIONS = {
    "the mode of authentication": {"operation": "bsp_pon_onu_auth_mode_type_get", "arguments": {"pon_port": 1}},
    "an ONU of the whitelist": {"operation": "bsp_pon_get_w_onu_spec_id", "arguments": {"pon_port": 1, "onu_id": 5}},
}


def processor_time(pid: int) -> float:
    stat = pathlib.Path(f"/proc/{pid}/stat").read_text(encoding="ascii")
    behind_name = stat.rpartition(")")[2].split()
    return (int(behind_name[11]) + int(behind_name[12])) / os.sysconf("SC_CLK_TCK")


def memory(pid: int) -> int:
    for line in pathlib.Path(f"/proc/{pid}/status").read_text(encoding="ascii").splitlines():
        if line.startswith("VmRSS:"):
            return int(line.split()[1])
    raise AssertionError("a process has no memory")


def bench_call(build: pathlib.Path, rig: Rig) -> bool:
    met = True
    for what, call in QUESTIONS.items():
        request = json.dumps({"deadline_ms": 10000, "call": call}, separators=(",", ":"))
        words = [build / "bench" / "fleet_cost", str(rig.broker.port), rig.broker.certificates, rig.olts[0].name, request]
        print(f"{what}:", flush=True)
        met &= subprocess.run(words, check=False).returncode == 0
    return met


class Spoken:
    """A program that answers lines, as `ponctl serve --stdio` does here or at the other end of ssh."""

    def __init__(self, command: list[str], environment: dict[str, str]) -> None:
        self.running = subprocess.Popen(command, env=environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        assert b"hello" in self.running.stdout.readline(), f"{command} does not serve"

    def time_calls(self, call: dict) -> list[float]:
        """Returns the microseconds of each of several calls, one after the other."""
        line = json.dumps({"correlation": "1", "class": "read", "request": {"call": call}}).encode() + b"\n"
        times = []
        for _ in range(CALLS):
            start = time.monotonic()
            self.running.stdin.write(line)
            self.running.stdin.flush()
            answer = self.running.stdout.readline()
            times.append((time.monotonic() - start) * 1e6)
            assert b'"outcome"' in answer, answer
        return times

    def end(self) -> None:
        self.running.stdin.close()
        self.running.wait(timeout=60)
        self.running.stdout.close()


def bench_lines(rig: Rig, what: str, command: list[str]) -> None:
    environment = {**os.environ, "BOARD_IPC_DIR": str(rig.olts[0].folder)}
    spoken = Spoken(command, environment)
    try:
        times = sorted(spoken.time_calls(next(iter(QUESTIONS.values()))))
    finally:
        spoken.end()
    print(f"{what:36} p50 {times[CALLS // 2]:8.1f} us, p90 {times[CALLS * 9 // 10]:8.1f} us", flush=True)


def bench_ssh(rig: Rig) -> None:
    """The same calls without a broker: to a child process, and by ssh where its server is installed."""
    serve = [rig.programs["ponctl"], "serve", "--stdio", "--allow", "read", "--state", str(rig.folder / "served")]
    bench_lines(rig, "by ponctl serve --stdio", serve)
    server = shutil.which("sshd", path="/usr/sbin")
    if not server:
        print("by ssh: there is no sshd")
        return
    folder, port = rig.folder / "ssh", free_port()
    folder.mkdir(mode=0o700)
    for name in ("host", "own"):
        subprocess.run(["ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", folder / name], check=True)
    command = " ".join(["env", f"BOARD_IPC_DIR={rig.olts[0].folder}", *serve])
    key = (folder / "own.pub").read_text(encoding="ascii")
    (folder / "authorized").write_text(f'command="{command}",restrict {key}', encoding="ascii")
    options = [f"HostKey={folder}/host", f"AuthorizedKeysFile={folder}/authorized", "ListenAddress=127.0.0.1", f"Port={port}",
               "UsePAM=no", "StrictModes=no", "PidFile=none"]
    words = [word for option in options for word in ("-o", option)]
    pathlib.Path("/run/sshd").mkdir(exist_ok=True)
    running = subprocess.Popen([server, "-D", "-e", "-f", "/dev/null", *words], stderr=subprocess.DEVNULL)
    try:
        patiently(lambda: socket.create_connection(("127.0.0.1", port)).close() is None)
        words = ["-i", folder / "own", "-p", str(port), "-o", "StrictHostKeyChecking=no", "-o", "UserKnownHostsFile=/dev/null"]
        bench_lines(rig, "by ssh", ["ssh", "-q", "-T", "-o", "BatchMode=yes", *words, "127.0.0.1", "whatever"])
    finally:
        running.terminate()
        running.wait(timeout=60)


def bench_all(rig: Rig, what: str, goal: float | None, words: list[str]) -> bool:
    """Times one command at all OLTs, and says what each process took for it."""
    processes = {"broker": rig.broker.running.pid}
    processes |= {f"bridge {name}": bridge.running.pid for name, bridge in rig.bridges.items()}
    before = {name: processor_time(pid) for name, pid in processes.items()}
    own = resource.getrusage(resource.RUSAGE_CHILDREN)
    times = []
    for number in range(ROUNDS):
        start = time.monotonic()
        done = rig.ponctl("--olt", "all", "-o", "json", "--yes", *[word.format(number) for word in words])
        times.append(time.monotonic() - start)
        assert done.returncode == 0, done.stderr[-2000:]
        answered = sum(one["state"] == "done" for one in json.loads(done.stdout))
        assert answered == len(rig.olts), f"{answered} of {len(rig.olts)} OLTs have answered"
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    middle = statistics.median(times)
    met = goal is None or middle <= goal
    aim = "" if goal is None else f", at most {goal:.0f} s{'' if met else '   MISSED'}"
    print(f"{what} of {len(rig.olts)} OLTs by one command: {middle:.2f} s, at best {min(times):.2f} s{aim}")
    taken = {"ponctl": (used.ru_utime + used.ru_stime - own.ru_utime - own.ru_stime, None)}
    taken |= {name: (processor_time(pid) - before[name], memory(pid)) for name, pid in processes.items()}
    for name, (seconds, kib) in taken.items():
        served = len(rig.olts) / (len(rig.bridges) if name.startswith("bridge") else 1)
        each = seconds / ROUNDS / served
        print(f"  {name}: {each * 1e6:.0f} us of a processor for each OLT{'' if kib is None else f'; {kib / 1024:.1f} MiB'}", flush=True)
    return met


def bench_broker(build: pathlib.Path, folder: pathlib.Path) -> None:
    table = '[[client]]\nname = "bench"\nclass = "read"\nolts = ["all"]\n[[bridge]]\nname = "bare"\nolts = ["all"]\n'
    broker = Broker(folder, table, ["bench", "bare"])
    try:
        words = [build / "bench" / "fleet_broker_cost", str(broker.port), broker.certificates, str(broker.running.pid)]
        subprocess.run(words, check=True)
    finally:
        broker.end()


def main(build: pathlib.Path) -> int:
    programs = {"ponsim": build / "sim/ponsim", "ponbridge": build / "fleet/ponbridge", "ponctl": build / "ponctl/ponctl"}
    with tempfile.TemporaryDirectory(prefix="fleet") as name:
        folder = pathlib.Path(name)
        bench_broker(build, folder / "b")
        shutil.rmtree(folder / "b")
        rig = Rig({name: str(program) for name, program in programs.items()}, folder, OLTS, ONUS)
        try:
            start = time.monotonic()
            rig.start()
            print(f"{OLTS} OLTs with {OLTS * ONUS} ONUs answer after {time.monotonic() - start:.1f} s", flush=True)
            met = bench_call(build, rig)
            bench_ssh(rig)
            met &= bench_all(rig, "a read", GOAL_ALL, ["auth", "show", "1"])
            bench_all(rig, "a change", None, ["onu", "describe", "1", "5", "text {}"])
        finally:
            rig.end()
    return 0 if met else 1


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
