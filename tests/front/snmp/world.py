"""A world for tests of SNMP: simulated OLTs, ponfront, snmpd and snmptrapd, in a folder."""

import os
import pathlib
import re
import signal
import socket
import subprocess
import sys
import urllib.request

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "support"))
from waiting import PATIENCE, free_port, patiently  # noqa: E402

ROOT = "1.3.6.1.4.1.8072.9999.9999"


class World:
    """A simulated OLT, ponfront, snmpd and snmptrapd, in a folder. There may be another OLT later."""

    def __init__(self, folder: pathlib.Path, ponsim: str, ponfront: str, modules: str) -> None:
        self.folder, self.ponsim_file, self.ponfront_file = folder, ponsim, ponfront
        self.port, self.traps = free_port(socket.SOCK_DGRAM), free_port(socket.SOCK_DGRAM)
        self.log = open(folder / "log", "a+", encoding="utf-8")  # pylint: disable=consider-using-with
        self.started: dict[str, subprocess.Popen] = {}
        self.environment = {**os.environ, "SNMP_PERSISTENT_DIR": f"{folder}/kept", "MIBS": "BSP-PON-MIB", "MIBDIRS": modules}
        self.environment.pop("BOARD_IPC_DIR", None)
        for made in ["cert_indexes", "mib_indexes"]:
            (folder / "kept" / made).mkdir(parents=True, exist_ok=True)
        (folder / "snmpd.conf").write_text(
            f"master agentx\nagentXSocket unix:{folder}/agentx\nagentaddress udp:127.0.0.1:{self.port}\n"
            "dontLogTCPWrappersConnects yes\nrocommunity public 127.0.0.1\nrwcommunity private 127.0.0.1\n"
            f"trap2sink 127.0.0.1:{self.traps} trapped\ninformsink 127.0.0.1:{self.traps} informed\n"
        )
        (folder / "snmptrapd.conf").write_text(
            "authCommunity log trapped\nauthCommunity log informed\nformat2 %B %T %P %v\\n\n"
        )
        self.olts: dict[str, str] = {}  # their folders, by name
        self.start_olt("north", ports=4, onus=8)
        self.start("snmptrapd", "snmptrapd", "-f", "-n", "-Lf", f"{folder}/traps", "-C", "-c",
                   f"{folder}/snmptrapd.conf", f"udp:127.0.0.1:{self.traps}")  # fmt: skip
        self.start_snmpd()

    def start(self, name: str, *words: str, **environment: str) -> None:
        self.started[name] = subprocess.Popen(  # pylint: disable=consider-using-with
            words, stdout=self.log, stderr=self.log, env=self.environment | environment
        )

    def start_olt(self, name: str, ports: int, onus: int) -> None:
        self.olts[name] = name
        self.start(name, self.ponsim_file, "--socket-dir", f"{self.folder}/{name}", "--state", "none", "--ports", str(ports),
                   "--arrivals", str(onus), "--silent", "0", "--speed", "100")  # fmt: skip

    def start_snmpd(self) -> None:
        self.start("snmpd", "snmpd", "-f", "-Le", "-C", "-c", f"{self.folder}/snmpd.conf")

    def start_ponfront(self, configuration: str, **environment: str) -> None:
        self.configure(configuration)
        self.start("ponfront", self.ponfront_file, "--config", f"{self.folder}/front.toml", **environment)

    def configure(self, configuration: str) -> None:
        olts = "".join(f'[[olt]]\nname = "{name}"\nsocket_dir = "{self.folder}/{olt}"\n' for name, olt in self.olts.items())
        (self.folder / "front.toml").write_text(f'{olts}[http]\nlisten = "127.0.0.1:0"\n{configuration}')

    def reload(self, configuration: str) -> None:
        """Goes on by another configuration, and waits until that is so."""
        before = self.said().count("goes on by the configuration")
        self.configure(configuration)
        self.started["ponfront"].send_signal(signal.SIGHUP)
        self.expect("goes on by the configuration", before + 1)
        patiently(self.walk, lambda found: len(found) > 100)

    def end(self, name: str, how: signal.Signals = signal.SIGTERM) -> None:
        process = self.started.pop(name)
        process.send_signal(how)
        process.wait(PATIENCE)

    def end_all(self) -> None:
        for name in list(self.started):
            self.end(name, signal.SIGKILL)
        self.log.close()

    def control(self, *words: str, olt: str = "north") -> None:
        subprocess.run(
            [self.ponsim_file, "--socket-dir", f"{self.folder}/{olt}", "ctl", *words], check=True, capture_output=True
        )

    def said(self, file: str = "log") -> str:
        return (self.folder / file).read_text(encoding="utf-8", errors="replace")

    def expect(self, text: str, times: int = 1, file: str = "log") -> None:
        patiently(lambda: self.said(file), lambda said: said.count(text) >= times)

    def page(self, path: str) -> bytes:
        """Returns what ponfront serves to browsers there."""
        port = re.findall(r"listening on .* port (\d+)", self.said())[-1]
        with urllib.request.urlopen(f"http://127.0.0.1:{port}{path}", timeout=PATIENCE) as answer:
            return answer.read()

    def asked(self, tool: str, *words: str, community: str = "public", status: int | None = 0) -> str:
        """Runs a tool of net-snmp, and returns what it says. Without a status it may fail."""
        # A set is not sent twice, and is waited for longer than it may take.
        patience = ["-t", "20", "-r", "0"] if tool == "snmpset" else ["-t", "3", "-r", "5"]
        done = subprocess.run(
            [tool, "-v2c", "-c", community, *patience, *words],
            capture_output=True, text=True, errors="replace", env=self.environment, check=False,
        )  # fmt: skip
        assert status in (done.returncode, None), f"{tool} {words}: {done.stdout[-500:]}{done.stderr}"
        return done.stdout + done.stderr

    def walk(self, top: str = ROOT, status: int | None = 0) -> list[str]:
        return self.asked("snmpbulkwalk", "-m", "", "-On", f"127.0.0.1:{self.port}", top, status=status).splitlines()

    def set(self, name: str, kind: str, value: str, status: int | None = 0, community: str = "private") -> str:
        return self.asked("snmpset", "-Ir", f"127.0.0.1:{self.port}", name, kind, value, community=community, status=status)

    def first_index(self, column: str, arcs_of_index: int) -> str:
        """Returns the index of the first instance of a column, which may yet have to come."""
        lines = patiently(lambda: self.walk(f"{ROOT}.{column}"), lambda found: " = " in found[0] and " = No " not in found[0])
        return ".".join(str(arc) for arc in arcs(lines[0])[-arcs_of_index:])

    def value(self, name: str) -> str:
        return self.asked("snmpget", "-Ov", f"127.0.0.1:{self.port}", name).strip()


def arcs(line: str) -> list[int]:
    return [int(arc) for arc in line.split(" ")[0].strip(".").split(".")]
