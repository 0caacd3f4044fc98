"""A simulated OLT, and the daemon that serves its console, for as long as a test lasts."""

import pathlib
import re
import signal
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from waiting import PATIENCE, patiently  # noqa: E402

PASSWORD = "correct horse"
ROLES = ("read", "write", "service-affecting")


class Process:
    """A program that says in its log when it is ready."""

    def __init__(self, words: list[str], log: pathlib.Path, ready: str) -> None:
        self.log = log
        with open(log, "w", encoding="utf-8") as stream:
            self.running = subprocess.Popen(words, stdout=stream, stderr=stream)
        patiently(lambda: self.has_said(ready))

    def has_said(self, words: str) -> bool:
        said = self.log.read_text(encoding="utf-8")
        assert self.running.poll() is None or words in said, f"it ended: {said}"
        return words in said

    def end(self, how: signal.Signals = signal.SIGTERM) -> None:
        if self.running.poll() is None:
            self.running.send_signal(how)
        self.running.wait(timeout=PATIENCE)


class Service:
    def __init__(
        self, programs: dict[str, str], folder: pathlib.Path, scenario: str, name: str = "campus", plant: str = ""
    ) -> None:
        self.programs = programs
        self.name = name
        self.plant = f'plant = "{plant}"\n' if plant else ""
        self.folder = folder
        self.scenario = scenario
        self.port = 0
        self.write_configuration()
        for role in ROLES:
            self.add_user(role, role)
        self.olt = self.started_olt()
        self.front = self.started_front()

    def add_user(self, name: str, role: str) -> None:
        words = [self.programs["ponfront"], "--config", f"{self.folder}/front.toml", "user", "add", name, "--role", role]
        subprocess.run(words, input=f"{PASSWORD}\n", text=True, check=True, capture_output=True)

    def started_olt(self) -> Process:
        words = [self.programs["ponsim"], "--socket-dir", f"{self.folder}/ipc", "--state", f"{self.folder}/olt.db"]
        if not (self.folder / "olt.db").exists():
            words += ["--scenario", self.scenario]
        return Process(words, self.folder / "ponsim.log", "serving")

    def write_configuration(self) -> None:
        (self.folder / "front.toml").write_text(
            f'[[olt]]\nname = "{self.name}"\nsocket_dir = "{self.folder}/ipc"\n{self.plant}'
            "[periods]\nonus = 1\nstations = 1\nports = 1\nalarms = 1\nstats = 1\ncounters = 1\noptics = 1\nunis = 1\nupgrades = 1\n"
            f'capabilities = 1\n[history]\nfile = "{self.folder}/history.db"\n'
            f'[http]\nlisten = "127.0.0.1:{self.port}"\nusers = "{self.folder}/users"\n[audit]\nfile = "{self.folder}/audit"\n',
            encoding="utf-8",
        )

    def started_front(self) -> Process:
        """Starts the daemon, at the port that it had before."""
        self.write_configuration()
        words = [self.programs["ponfront"], "--config", f"{self.folder}/front.toml"]
        front = Process(words, self.folder / "front.log", "listening")
        found = re.search(r"listening on .* port (\d+)", front.log.read_text(encoding="utf-8"))
        self.port = int(found[1])
        return front

    @property
    def url(self) -> str:
        return f"http://127.0.0.1:{self.port}"

    def control(self, *words: str) -> None:
        """Lets something happen to the OLT."""
        self.tool("ponsim", "--socket-dir", f"{self.folder}/ipc", "ctl", *words)

    def operate(self, *words: str) -> str:
        return self.tool("ponctl", "--socket-dir", f"{self.folder}/ipc", *words)

    def tool(self, program: str, *words: str) -> str:
        done = subprocess.run([self.programs[program], *words], check=False, capture_output=True, text=True)
        assert done.returncode == 0, f"{words}: {done.stdout}{done.stderr}"
        return done.stdout

    def end(self) -> None:
        self.front.end()
        self.olt.end()
