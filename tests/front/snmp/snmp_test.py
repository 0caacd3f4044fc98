"""Asks ponfront by SNMP, through a real snmpd, with the programs that managers use.

    snmp_test.py PONSIM PONFRONT MODULES_OF_TESTS FOLDER_OF_THE_MODULE
"""

import asyncio.coroutines
import concurrent.futures
import json
import os
import pathlib
import re
import signal
import socket
import subprocess
import sys
import tempfile
import time
import urllib.request

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "support"))
from waiting import PATIENCE, free_port, patiently  # noqa: E402

# python3-pysnmp4 was written for an asyncio that had this.
if not hasattr(asyncio.coroutines, "coroutine"):
    asyncio.coroutines.coroutine = asyncio.coroutine = lambda function: function

ROOT = "1.3.6.1.4.1.8072.9999.9999"


class World:
    """A simulated OLT, ponfront, snmpd and snmptrapd, in a folder."""

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
        self.start("ponsim", ponsim, "--socket-dir", f"{folder}/ipc", "--state", "none", "--ports", "4",
                   "--arrivals", "8", "--silent", "0", "--speed", "100")  # fmt: skip
        self.start("snmptrapd", "snmptrapd", "-f", "-n", "-Lf", f"{folder}/traps", "-C", "-c",
                   f"{folder}/snmptrapd.conf", f"udp:127.0.0.1:{self.traps}")  # fmt: skip
        self.start_snmpd()

    def start(self, name: str, *words: str, **environment: str) -> None:
        self.started[name] = subprocess.Popen(  # pylint: disable=consider-using-with
            words, stdout=self.log, stderr=self.log, env=self.environment | environment
        )

    def start_snmpd(self) -> None:
        self.start("snmpd", "snmpd", "-f", "-Le", "-C", "-c", f"{self.folder}/snmpd.conf")

    def start_ponfront(self, configuration: str, **environment: str) -> None:
        self.configure(configuration)
        self.start("ponfront", self.ponfront_file, "--config", f"{self.folder}/front.toml", **environment)

    def configure(self, configuration: str) -> None:
        (self.folder / "front.toml").write_text(
            f'[[olt]]\nname = "north"\nsocket_dir = "{self.folder}/ipc"\n[http]\nlisten = "127.0.0.1:0"\n{configuration}'
        )

    def end(self, name: str, how: signal.Signals = signal.SIGTERM) -> None:
        process = self.started.pop(name)
        process.send_signal(how)
        process.wait(PATIENCE)

    def end_all(self) -> None:
        for name in list(self.started):
            self.end(name, signal.SIGKILL)
        self.log.close()

    def control(self, *words: str) -> None:
        subprocess.run(
            [self.ponsim_file, "--socket-dir", f"{self.folder}/ipc", "ctl", *words], check=True, capture_output=True
        )

    def said(self, file: str = "log") -> str:
        return (self.folder / file).read_text(encoding="utf-8", errors="replace")

    def expect(self, text: str, times: int = 1, file: str = "log") -> None:
        patiently(lambda: self.said(file), lambda said: said.count(text) >= times)

    def asked(self, tool: str, *words: str, community: str = "public", status: int | None = 0) -> str:
        """Runs a tool of net-snmp, and returns what it says. Without a status it may fail."""
        done = subprocess.run(
            [tool, "-v2c", "-c", community, "-t", "3", "-r", "5", *words],
            capture_output=True, text=True, errors="replace", env=self.environment, check=False,
        )  # fmt: skip
        assert status in (done.returncode, None), f"{tool} {words}: {done.stdout[-500:]}{done.stderr}"
        return done.stdout + done.stderr

    def walk(self, top: str = ROOT, status: int | None = 0) -> list[str]:
        return self.asked("snmpbulkwalk", "-m", "", "-On", f"127.0.0.1:{self.port}", top, status=status).splitlines()

    def set(self, name: str, kind: str, value: str, status: int = 0, community: str = "private") -> str:
        return self.asked("snmpset", "-Ir", f"127.0.0.1:{self.port}", name, kind, value, community=community, status=status)


def arcs(line: str) -> list[int]:
    return [int(arc) for arc in line.split(" ")[0].strip(".").split(".")]


SHORT = "[periods]\nolt = 1\nonus = 1\nalarms = 1\nports = 1\nunis = 1\n"


def snmp(world: World, more: str = "", socket_name: str = "agentx") -> str:
    return f'{SHORT}[snmp]\nagentx = "{world.folder}/{socket_name}"\n{more}'


def check_walks(world: World) -> None:
    """Tables are there, in order, and those of a manager of other making say the same."""
    lines = patiently(world.walk, lambda found: any(" = STRING: \"north\"" in line for line in found) and len(found) > 100)
    names = [arcs(line) for line in lines if line.startswith(".1.")]
    assert names == sorted(names) and len(set(map(tuple, names))) == len(names), "a walk is in order"
    table = world.asked("snmptable", "-Ci", f"127.0.0.1:{world.port}", "BSP-PON-MIB::bspPortTable")
    assert len(re.findall(r"^ +1\.[1-4] ", table, re.MULTILINE)) == 4, table
    ports = world.walk("1.3.6.1.2.1.31.1.1.1.1")  # the names of interfaces
    assert [arcs(line)[-1] for line in ports[:4]] == [1001, 1002, 1003, 1004], ports


def check_other_manager(world: World) -> None:
    # pylint: disable=import-outside-toplevel
    from pysnmp import hlapi

    engine = hlapi.SnmpEngine()
    target = hlapi.UdpTransportTarget(("127.0.0.1", world.port), timeout=8)
    found = list(
        hlapi.bulkCmd(
            engine, hlapi.CommunityData("public"), target, hlapi.ContextData(), 0, 20,
            hlapi.ObjectType(hlapi.ObjectIdentity(f"{ROOT}.1.2")), lexicographicMode=False,
        )  # fmt: skip
    )
    values = [bind for error, status, _, binds in found if not error and not status for bind in binds]
    assert len(values) == len(world.walk(f"{ROOT}.1.2")), found[-1:]


def check_traps(world: World) -> None:
    """What happens is told as a trap and as an inform."""
    world.set("bspWaitingAdmit." + waiting(world), "i", "5")
    world.expect("bspOnuOnline", times=2, file="traps")
    said = world.said("traps")
    assert "TRAP2" in said and "INFORM" in said, said


def waiting(world: World) -> str:
    """Returns the index of an ONU that waits."""
    lines = patiently(lambda: world.walk(f"{ROOT}.1.9.1.6"), lambda found: any("INTEGER" in line for line in found))
    return ".".join(str(arc) for arc in arcs(lines[0])[-8:])


def check_sets(world: World) -> None:
    assert "notWritable" in world.set("bspOnuName.1.1.5", "s", "x", status=2), "sets are off at first"
    reload(world, snmp(world, f'sets = "write"\n[audit]\nfile = "{world.folder}/audit"\n'))
    assert "noAccess" in world.set("bspWaitingAdmit." + waiting(world), "i", "5", status=2), "binding is not allowed"
    reload(world, snmp(world, f'sets = "service_affecting"\n[audit]\nfile = "{world.folder}/audit"\n'))
    check_traps(world)
    onu = patiently(lambda: world.walk(f"{ROOT}.1.4.1.2"), lambda found: any("Hex-STRING" in line for line in found))
    index = ".".join(str(arc) for arc in arcs(onu[0])[-3:])
    world.set(f"bspOnuName.{index}", "s", "customer 1207")
    patiently(lambda: world.asked("snmpget", f"127.0.0.1:{world.port}", f"bspOnuName.{index}"),
              lambda said: "customer 1207" in said)  # fmt: skip
    assert "wrongLength" in world.set(f"bspOnuName.{index}", "s", "x" * 200, status=2)
    assert "wrongValue" in world.set(f"bspOnuAction.{index}", "i", "99", status=2)
    assert "noCreation" in world.set("bspOnuName.1.1.120", "s", "x", status=2)
    assert "notWritable" in world.set(f"bspOnuMac.{index}", "x", "020000000001", status=2)
    assert "noAccess" in world.set(f"bspOnuName.{index}", "s", "x", status=2, community="public")
    world.set(f"bspOnuAction.{index}", "i", "2")  # it is started anew
    noted = [json.loads(line) for line in world.said("audit").splitlines()]
    assert [entry["result"] for entry in noted] == ["BSP_OK"] * 3, noted
    assert "customer" not in world.said("audit") and all("user" in entry for entry in noted)



def reload(world: World, configuration: str) -> None:
    before = world.said().count("goes on by the configuration")
    world.configure(configuration)
    world.started["ponfront"].send_signal(signal.SIGHUP)
    world.expect("goes on by the configuration", before + 1)
    patiently(world.walk, lambda found: len(found) > 100)


def check_restart(world: World) -> None:
    """What happens while snmpd is away is told when it is back."""
    gone = world.said().count("is gone: ")
    told = world.said("traps").count("bspOnuOffline")
    world.end("snmpd")
    world.expect("is gone: ", gone + 1)
    world.control("cut", "1", "feeder")
    world.expect("offline")
    world.start_snmpd()
    world.expect("bspOnuOffline", told + 2, file="traps")
    patiently(world.walk, lambda found: len(found) > 100)
    world.control("mend", "1", "feeder")


def check_changes(world: World) -> None:
    """A changed configuration counts at once: another root, no SNMP, another socket. A walk fails that is under way then."""
    world.configure(snmp(world, 'root = "1.3.6.1.4.1.8072.9999.7"\n'))
    world.started["ponfront"].send_signal(signal.SIGHUP)
    patiently(lambda: world.walk("1.3.6.1.4.1.8072.9999.7", None), lambda found: len(found) > 100)
    assert len(world.walk()) <= 1, "nothing is left at the root of before"
    world.configure(snmp(world, "enabled = false\n"))
    world.started["ponfront"].send_signal(signal.SIGHUP)
    patiently(lambda: world.walk("1.3.6.1.4.1.8072.9999.7", None), lambda found: len(found) <= 1)
    world.configure(snmp(world, socket_name="nowhere"))
    world.started["ponfront"].send_signal(signal.SIGHUP)
    world.expect("nowhere cannot be reached: No such file or directory")
    reload(world, snmp(world))


def check_cost(world: World) -> None:
    """Walks, a scrape and browsers beside each other cost the OLT nothing."""
    tables = ["olt", "ports", "onus", "alarms", "loops", "stats", "counters", "unis", "upgrades", "optics", "modules"]
    tables += ["capabilities", "uplinks", "mpcp", "stations"]
    long = "[periods]\n" + "".join(f'{table} = "1h"\n' for table in tables)
    world.end("ponfront")
    recording = world.folder / "recording"
    listening = world.said().count("listening on")
    world.start_ponfront(f'{long}[snmp]\nagentx = "{world.folder}/agentx"\n', BOARD_IPC_TRACE=str(recording))
    world.expect("listening on", listening + 1)
    page = "http://127.0.0.1:" + re.findall(r"listening on .* port (\d+)", world.said())[-1]

    def get(path: str) -> bytes:
        with urllib.request.urlopen(page + path, timeout=PATIENCE) as answer:
            return answer.read()

    patiently(lambda: get("/metrics"), lambda text: b'table="stations"} 1' in text)
    recorded = recording.stat().st_size
    assert recorded > 0
    with concurrent.futures.ThreadPoolExecutor() as pool:
        walks = [pool.submit(world.walk) for _ in range(2)]
        pages = [pool.submit(get, path) for path in ["/metrics", "/", "/api/v1/olts", "/api/v1/events"] for _ in range(5)]
        assert all(len(walk.result()) > 100 for walk in walks) and all(page.result() for page in pages)
    assert recording.stat().st_size == recorded, "there were more exchanges"


def check_exporter(shipped: str):
    """The exporter of Prometheus reads it by the module that is shipped."""

    def check_by_exporter(world: World) -> None:
        port = free_port(socket.SOCK_STREAM)
        world.start("exporter", "prometheus-snmp-exporter", f"--config.file={shipped}/pollers/snmp_exporter.yml",
                    f"--web.listen-address=127.0.0.1:{port}")  # fmt: skip
        page = f"http://127.0.0.1:{port}/snmp?module=bsp_pon&target=127.0.0.1:{world.port}"

        def scraped() -> str:
            try:
                with urllib.request.urlopen(page, timeout=PATIENCE) as answer:
                    return answer.read().decode()
            except OSError as error:
                return str(error)

        text = patiently(scraped, lambda said: "snmp_scrape_pdus_returned" in said)
        assert re.search(r'^bspOltName\{.*bspOltName="north".*\} 1$', text, re.MULTILINE), text[:3000]
        assert re.search(r'^bspOnuState\{', text, re.MULTILINE), text[:3000]
        world.end("exporter")

    return check_by_exporter


def check_coming_and_going(world: World) -> None:
    """Walks go on, in order, while ONUs come and go."""
    with concurrent.futures.ThreadPoolExecutor() as pool:
        walks = [pool.submit(lambda: [world.walk() for _ in range(4)]) for _ in range(3)]
        for _ in range(4):
            for word in ["cut", "mend"]:
                world.control(word, "2", "feeder")
        for walk in walks:
            for lines in walk.result():
                names = [arcs(line) for line in lines if line.startswith(".1.")]
                assert names == sorted(names) and len(names) > 100


def main() -> int:
    ponsim, ponfront, modules, shipped = sys.argv[1:]
    with tempfile.TemporaryDirectory(dir="/tmp") as name:
        world = World(pathlib.Path(name), ponsim, ponfront, f"{modules}:{shipped}")
        try:
            world.start_ponfront(snmp(world))
            world.expect("SNMP is answered")
            for check in [check_walks, check_other_manager, check_sets, check_exporter(shipped), check_coming_and_going, check_restart,
                          check_changes, check_cost]:  # fmt: skip
                begun = time.monotonic()
                check(world)
                print(f"{check.__name__}: {time.monotonic() - begun:.1f} s")
            world.end("ponfront")
        except (AssertionError, subprocess.SubprocessError):
            print(world.said()[-6000:], world.said("traps")[-2000:] if (world.folder / "traps").exists() else "")
            raise
        finally:
            world.end_all()
    return 0


if __name__ == "__main__":
    sys.exit(main())
