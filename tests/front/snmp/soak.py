"""Lets ten managers walk and ten scrapers read 10,240 ONUs through ponfront, while OLTs are killed and come back, and looks
whether anything that ponfront holds grows.

    soak.py PONSIM PONFRONT MINUTES
"""

import dataclasses
import os
import pathlib
import re
import signal
import socket
import statistics
import subprocess
import sys
import tempfile
import threading
import time
import urllib.request

from world import PATIENCE, ROOT, free_port, patiently

OLTS, PORTS, ONUS = 5, 16, 128
ALL = OLTS * PORTS * ONUS
READERS = 10  # of each kind
STATE_OF_ONUS = f"{ROOT}.1.4.1.4"
COLUMNS = [STATE_OF_ONUS, f"{ROOT}.1.4.1.2", f"{ROOT}.1.6.1.2", f"{ROOT}.1.7.1.2", "1.3.6.1.2.1.31.1.1.1.6"]
MOST_GROWTH = 1.2  # of memory: how many answers are made at the same time differs


@dataclasses.dataclass
class Held:
    """What a process holds."""

    memory: int  # MiB
    files: int
    threads: int


def held_by(process: int) -> Held:
    status = pathlib.Path(f"/proc/{process}/status").read_text(encoding="ascii", errors="replace")

    def number(key: str) -> int:
        return int(re.search(rf"^{key}:\s+(\d+)", status, re.MULTILINE)[1])

    return Held(number("VmRSS") // 1024, len(os.listdir(f"/proc/{process}/fd")), number("Threads"))


class Soak:
    """OLTs, snmpd, ponfront, and those who read."""

    def __init__(self, folder: pathlib.Path, ponsim: str, ponfront: str) -> None:
        self.folder, self.ponsim = folder, ponsim
        self.port, self.page = free_port(socket.SOCK_DGRAM), ""
        self.running: dict[str, subprocess.Popen] = {}
        self.ending = threading.Event()
        self.walks = self.scrapes = 0
        self.wrong: list[str] = []  # what readers were told
        self.environment = {**os.environ, "SNMP_PERSISTENT_DIR": f"{folder}/kept", "MIBS": ""}
        (folder / "kept" / "cert_indexes").mkdir(parents=True)
        (folder / "full.toml").write_text(
            f'start = "registered"\n[service.bound]\nbound = true\n[[olt]]\nname = "olt"\n[[olt.port]]\nnumbers = "1-{PORTS}"\n'
            f'[[olt.port.onu]]\nname = "onu"\nservice = "bound"\ncount = {ONUS}\n'
        )
        (folder / "snmpd.conf").write_text(
            f"master agentx\nagentXSocket unix:{folder}/agentx\nagentaddress udp:127.0.0.1:{self.port}\n"
            "dontLogTCPWrappersConnects yes\nrocommunity public 127.0.0.1\n"
        )
        olts = "".join(f'[[olt]]\nname = "olt-{olt}"\nsocket_dir = "{folder}/olt-{olt}"\n' for olt in range(1, OLTS + 1))
        (folder / "front.toml").write_text(
            f'{olts}[periods]\noptics = 60\n[http]\nlisten = "127.0.0.1:0"\n[history]\nfile = "{folder}/history.db"\n'
            f'[snmp]\nagentx = "{folder}/agentx"\n'
        )
        self.start("snmpd", "snmpd", "-f", "-Le", "-C", "-c", f"{folder}/snmpd.conf")
        for olt in range(1, OLTS + 1):
            self.start_olt(olt)
        self.start("ponfront", ponfront, "--config", f"{folder}/front.toml")

    def start(self, name: str, *words: str) -> None:
        with open(self.folder / f"{name}.log", "a", encoding="utf-8") as log:
            self.running[name] = subprocess.Popen(  # pylint: disable=consider-using-with
                words, stdout=log, stderr=log, env=self.environment
            )

    def start_olt(self, olt: int) -> None:
        self.start(f"olt-{olt}", self.ponsim, "--scenario", f"{self.folder}/full.toml", "--socket-dir",
                   f"{self.folder}/olt-{olt}", "--state", "none")  # fmt: skip

    def end(self, name: str, how: signal.Signals) -> int:
        process = self.running.pop(name)
        process.send_signal(how)
        return process.wait(PATIENCE)

    def metrics(self) -> str:
        with urllib.request.urlopen(f"http://127.0.0.1:{self.page}/metrics", timeout=PATIENCE) as answer:
            return answer.read().decode()

    def walk(self, column: str) -> list[str]:
        done = subprocess.run(
            ["snmpbulkwalk", "-v2c", "-c", "public", "-m", "", "-On", "-Cr50", "-t", "10", f"127.0.0.1:{self.port}", column],
            capture_output=True, text=True, errors="replace", env=self.environment, check=False,
        )  # fmt: skip
        return done.stdout.splitlines() if done.returncode == 0 else [done.stderr.strip()]

    def wait_for_all(self) -> None:
        log = self.folder / "ponfront.log"
        said = patiently(lambda: log.read_text(encoding="utf-8"), lambda text: "listening on" in text)
        self.page = re.findall(r"listening on .* port (\d+)", said)[-1]
        patiently(self.metrics, lambda text: text.count("\npon_onu_up{") == ALL)
        patiently(lambda: self.walk(STATE_OF_ONUS), lambda lines: len(lines) == ALL)

    def keep_walking(self, number: int) -> None:
        while not self.ending.is_set():
            column = COLUMNS[(number + self.walks) % len(COLUMNS)]
            lines = self.walk(column)
            # What was known of an OLT that is away stays.
            if len(lines) < (ALL if column == STATE_OF_ONUS else 2):
                self.wrong.append(f"a walk of {column} had {len(lines)} lines, the last of which was {lines[-1:]}")
            self.walks += 1

    def keep_scraping(self) -> None:
        while not self.ending.wait(1):
            try:
                text = self.metrics()
                if not text.count("\npon_olt_up{") == OLTS:
                    self.wrong.append("a page of metrics did not have all OLTs")
            except OSError as error:
                self.wrong.append(f"metrics: {error}")
            self.scrapes += 1

    def lose_and_find(self, olt: int) -> None:
        self.end(f"olt-{olt}", signal.SIGKILL)
        patiently(self.metrics, lambda text: f'pon_olt_up{{olt="olt-{olt}"}} 0' in text)
        self.start_olt(olt)
        patiently(self.metrics, lambda text: f'pon_olt_up{{olt="olt-{olt}"}} 1' in text)

    def run(self, minutes: float) -> list[Held]:
        self.wait_for_all()
        readers = [threading.Thread(target=self.keep_walking, args=(number,)) for number in range(READERS)]
        readers += [threading.Thread(target=self.keep_scraping) for _ in range(READERS)]
        for reader in readers:
            reader.start()
        begun, held = time.monotonic(), []
        try:
            print(f"{ALL} ONUs of {OLTS} OLTs\n minutes  walks  scrapes  OLTs lost  MiB  files  threads", flush=True)
            while time.monotonic() - begun < 60 * minutes or len(held) < 2 * OLTS:
                self.lose_and_find(len(held) % OLTS + 1)
                held.append(held_by(self.running["ponfront"].pid))
                now = held[-1]
                print(f"{(time.monotonic() - begun) / 60:8.1f} {self.walks:6} {self.scrapes:8} {len(held):10} "
                      f"{now.memory:4} {now.files:6} {now.threads:8}", flush=True)  # fmt: skip
        finally:
            self.ending.set()
            for reader in readers:
                reader.join()
        return held


def compare(held: list[Held]) -> list[str]:
    """Returns what grew from the first half, after all OLTs were lost once, to the second half."""
    middle = max(len(held) // 2, OLTS)
    before, after = held[OLTS - 1 : middle], held[middle:]
    grown = []
    memory = [statistics.median(one.memory for one in half) for half in (before, after)]
    if memory[1] > MOST_GROWTH * memory[0]:
        grown.append(f"memory grew from {memory[0]} to {memory[1]} MiB")
    for what in ("files", "threads"):
        most = [max(getattr(one, what) for one in half) for half in (before, after)]
        if most[1] > most[0] + READERS:  # connections of scrapers come and go
            grown.append(f"{what} grew from {most[0]} to {most[1]}")
    return grown


def main() -> int:
    ponsim, ponfront, minutes = sys.argv[1:]
    with tempfile.TemporaryDirectory(dir="/tmp") as name:
        soak = Soak(pathlib.Path(name), ponsim, ponfront)
        try:
            wrong = compare(soak.run(float(minutes)))
            if status := soak.end("ponfront", signal.SIGTERM):
                wrong.append(f"ponfront ended with {status}")
        except AssertionError as error:
            wrong = [str(error)[-1000:]]
        finally:
            for process in list(soak.running):
                soak.end(process, signal.SIGKILL)
        wrong += soak.wrong
    for line in wrong[:20]:
        print(f"soak: {line}")
    if not wrong:
        print(f"{soak.walks} walks and {soak.scrapes} scrapes: nothing grew, and each was answered")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
