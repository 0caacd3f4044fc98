#!/usr/bin/python3
"""A fleet on one machine: simulated OLTs in a few processes, bridges, and a broker with certificates, in a private folder.

rig.py PONSIM PONBRIDGE PONCTL [--olts 1000] [--onus 128] [--bridges 2]    runs it by hand until it is interrupted
"""

import argparse
import dataclasses
import json
import os
import pathlib
import signal
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
from broker import ADDRESS, PATIENCE, Broker, patiently  # noqa: E402

SITES = ("north", "east", "south", "west")
# What a process of OLTs costs grows with their number, and a few of them start beside each other.
MOST_IN_A_PROCESS = 250
# Who comes to the broker beside the bridges: a person, somebody who only looks, whoever asks twice, and a benchmark.
CLIENTS = {"operator": "service-affecting", "monitor": "read", "twice": "service-affecting", "bench": "read"}


@dataclasses.dataclass
class Olt:
    name: str
    site: str
    bridge: str
    folder: pathlib.Path  # of its sockets
    audit: pathlib.Path  # of the simulated service
    bound: bool = True  # otherwise its ONUs wait, and settings of them are refused
    simulator: str = ""

    def writes(self, command: str) -> int:
        """Returns how often the service was asked for this change."""
        if not self.audit.exists():
            return 0
        lines = self.audit.read_text(encoding="utf-8").splitlines()
        return sum(json.loads(line).get("command") == command for line in lines)


class Program:
    """A program of the rig, which can be killed and started again."""

    def __init__(self, words: list[str], log: pathlib.Path, ready: str) -> None:
        self.words, self.log, self.ready = words, log, ready
        self.running: subprocess.Popen | None = None

    def launch(self) -> None:
        with open(self.log, "w", encoding="utf-8") as stream:
            self.running = subprocess.Popen(self.words, stdout=stream, stderr=stream)

    def await_ready(self) -> None:
        patiently(self.is_ready, patience=2 * PATIENCE)

    def is_ready(self) -> bool:
        said = self.log.read_text(encoding="utf-8")
        assert self.running.poll() is None, f"{self.words[0]} ended: {said}"
        return self.ready in said

    def end(self, how: signal.Signals = signal.SIGTERM) -> None:
        if self.running is None:
            return
        if self.running.poll() is None:
            self.running.send_signal(how)
        self.running.wait(timeout=PATIENCE)


class Rig:
    """`refusing` of the OLTs have ONUs that are not bound. `dark` of them are served by a process of their own, which
    can be ended."""

    def __init__(
        self, programs: dict[str, str], folder: pathlib.Path, olts: int, onus: int, bridges: int = 2, refusing: int = 0, dark: int = 0
    ) -> None:
        self.programs, self.folder, self.onus = programs, folder, onus
        self.threads = 8  # of each bridge: so many OLTs are asked at once
        folder.mkdir(parents=True, exist_ok=True)
        self.bridge_names = [f"hut-{number}" for number in range(1, bridges + 1)]
        self.olts = [self.olt(number, olts) for number in range(olts)]
        # They are spread over the fleet, and no OLT is both.
        for number in range(refusing):
            self.olts[number * olts // refusing].bound = False
        for number in range(dark):
            self.olts[number * olts // dark + 1].simulator = "dark"
        self.simulators = {name: self.simulator(name) for name in sorted({olt.simulator for olt in self.olts})}
        self.bridges = {name: self.bridge(name) for name in self.bridge_names}
        self.broker: Broker | None = None

    def olt(self, number: int, all_olts: int) -> Olt:
        each = -(-all_olts // len(SITES))
        site, place = SITES[number // each], number % each + 1
        name = f"{site}-{place}"
        bridge = self.bridge_names[number * len(self.bridge_names) // all_olts]
        simulator = f"sim-{number // MOST_IN_A_PROCESS + 1}"
        return Olt(name, site, bridge, self.folder / "ipc" / name, self.folder / f"audit.{name}", simulator=simulator)

    def simulator(self, name: str) -> Program:
        olts = [olt for olt in self.olts if olt.simulator == name]
        # With a single OLT there are no folders of several: the second one has no name that somebody asks for.
        text = 'start = "registered"\n[service.home]\nbound = true\n[service.nobody]\nbound = false\n'
        for olt in olts + ([Olt(f"{name}-spare", "", "", self.folder, self.folder)] if len(olts) == 1 else []):
            text += (
                f'[[olt]]\nname = "{olt.name}"\nports = 1\n[[olt.port]]\nnumber = 1\n[[olt.port.onu]]\nname = "onu"\n'
                f'service = "{"home" if olt.bound else "nobody"}"\ncount = {self.onus}\n'
            )
        scenario = self.folder / f"{name}.toml"
        scenario.write_text(text, encoding="utf-8")
        words = [self.programs["ponsim"], "--scenario", str(scenario), "--socket-dir", str(self.folder / "ipc")]
        words += ["--state", "none", "--speed", "0", "--audit", str(self.folder / "audit")]
        return Program(words, self.folder / f"{name}.log", "serving on")

    def bridge(self, name: str) -> Program:
        certificates = self.folder / "broker" / "certs"
        text = (
            f'name = "{name}"\nstate = "{self.folder}/state-{name}"\naudit = "{self.audit_of(name)}"\nthreads = {self.threads}\nevents = false\n'
            f'[broker]\nhost = "{ADDRESS}"\nport = PORT\nca = "{certificates}/ca.crt"\n'
            f'certificate = "{certificates}/{name}.crt"\nkey = "{certificates}/{name}.key"\n'
        )
        for olt in self.olts:
            if olt.bridge == name:
                text += f'[[olt]]\nname = "{olt.name}"\nsocket_dir = "{olt.folder}"\nlabels = {{ site = "{olt.site}" }}\n'
        (self.folder / f"{name}.toml").write_text(text, encoding="utf-8")
        words = [self.programs["ponbridge"], "--config", str(self.folder / f"{name}.toml")]
        return Program(words, self.folder / f"{name}.log", "connected with the broker")

    def audit_of(self, bridge: str) -> pathlib.Path:
        return self.folder / f"{bridge}.audit"

    def table(self) -> str:
        clients = "".join(f'[[client]]\nname = "{name}"\nclass = "{impact}"\nolts = ["all"]\n' for name, impact in CLIENTS.items())
        # The last one answers for no OLT of the rig: a benchmark compares bridges with it.
        olts = {name: [olt.name for olt in self.olts if olt.bridge == name] for name in self.bridge_names} | {"bare": ["bare"]}
        return clients + "".join(f'[[bridge]]\nname = "{name}"\nolts = {json.dumps(names)}\n' for name, names in olts.items())

    def start(self) -> None:
        for simulator in self.simulators.values():
            simulator.launch()
        names = [*CLIENTS, *self.bridge_names, "bare"]
        self.broker = Broker(self.folder / "broker", self.table(), names)
        certificates = self.broker.certificates
        for name in CLIENTS:
            self.settings_of(name).write_text(
                f'client = "{name}"\n[broker]\nhost = "{ADDRESS}"\nport = {self.broker.port}\nca = "{certificates}/ca.crt"\n'
                f'certificate = "{certificates}/{name}.crt"\nkey = "{certificates}/{name}.key"\n',
                encoding="utf-8",
            )
        for name in self.bridge_names:
            file = self.folder / f"{name}.toml"
            file.write_text(file.read_text(encoding="utf-8").replace("PORT", str(self.broker.port)), encoding="utf-8")
        for simulator in self.simulators.values():
            simulator.await_ready()
        for bridge in self.bridges.values():
            bridge.launch()
        for bridge in self.bridges.values():
            bridge.await_ready()
        self.await_answers({olt.name for olt in self.olts})

    def settings_of(self, client: str) -> pathlib.Path:
        return self.folder / f"fleet-{client}.toml"

    def await_answers(self, names: set[str]) -> None:
        """Waits until the inventories say that these OLTs answer."""
        command = ["mosquitto_sub", *self.broker.words_of("monitor"), "-t", "pon/olt/+/inventory"]
        with subprocess.Popen(["timeout", str(2 * PATIENCE), *command], stdout=subprocess.PIPE, text=True) as reader:
            missing = set(names)
            for line in reader.stdout:
                inventory = json.loads(line)
                if inventory["answers"]:
                    missing.discard(inventory["olt"])
                if not missing:
                    break
            reader.terminate()
        assert not missing, f"{len(missing)} OLTs do not answer, as {sorted(missing)[:5]}"

    def environment(self, client: str) -> dict[str, str]:
        return {**os.environ, "PONCTL_FLEET": str(self.settings_of(client)), "HOME": str(self.folder), "XDG_STATE_HOME": str(self.folder / "state")}

    def ponctl(self, *words: str, client: str = "operator", **more) -> subprocess.CompletedProcess:
        command = [self.programs["ponctl"], *words]
        return subprocess.run(command, env=self.environment(client), capture_output=True, text=True, check=False, timeout=600, **more)

    def control(self, olt: Olt, *words: str) -> str:
        command = [self.programs["ponsim"], "--socket-dir", str(olt.folder), "ctl", *words]
        return subprocess.run(command, check=True, capture_output=True, text=True).stdout

    def directly(self, olt: Olt, *words: str) -> str:
        """Asks the simulated OLT itself, past the fleet."""
        environment = {**os.environ, "BOARD_IPC_DIR": str(olt.folder)}
        return subprocess.run([self.programs["ponctl"], *words], env=environment, capture_output=True, text=True, check=True).stdout

    def end(self) -> None:
        for bridge in self.bridges.values():
            bridge.end()
        if self.broker:
            self.broker.end()
        for simulator in self.simulators.values():
            simulator.end()


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    for program in ("ponsim", "ponbridge", "ponctl"):
        parser.add_argument(program)
    for option, default in (("--olts", 1000), ("--onus", 128), ("--bridges", 2)):
        parser.add_argument(option, type=int, default=default)
    asked = parser.parse_args()
    programs = {name: getattr(asked, name) for name in ("ponsim", "ponbridge", "ponctl")}
    with tempfile.TemporaryDirectory(prefix="rig") as folder:
        rig = Rig(programs, pathlib.Path(folder), asked.olts, asked.onus, asked.bridges)
        try:
            rig.start()
            print(f"{asked.olts} OLTs: export PONCTL_FLEET={rig.settings_of('operator')}", flush=True)
            signal.pause()
        except KeyboardInterrupt:
            pass
        finally:
            rig.end()
    return 0


if __name__ == "__main__":
    sys.exit(main())
