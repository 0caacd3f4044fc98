"""Asks ponfront by SNMP, through a real snmpd, with the programs that managers use.

    snmp_test.py PONSIM PONFRONT MODULES_OF_TESTS FOLDER_OF_THE_MODULE
"""

import asyncio.coroutines
import concurrent.futures
import json
import pathlib
import re
import signal
import socket
import subprocess
import sys
import tempfile
import time
import urllib.request

from world import PATIENCE, ROOT, World, arcs, free_port, patiently

# python3-pysnmp4 was written for an asyncio that had this.
if not hasattr(asyncio.coroutines, "coroutine"):
    asyncio.coroutines.coroutine = asyncio.coroutine = lambda function: function

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
    assert f"INTEGER: {len(ports)}" == world.value(".1.3.6.1.2.1.2.1.0"), "interfaces are as many as they are said to be"


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
    return world.first_index("1.9.1.6", 8)


def sets(world: World, up_to: str) -> str:
    return snmp(world, f'sets = "{up_to}"\n[audit]\nfile = "{world.folder}/audit"\n')


def audited(world: World) -> list[dict]:
    return [json.loads(line) for line in world.said("audit").splitlines()]


def check_sets(world: World) -> None:
    assert "notWritable" in world.set("bspOnuName.1.1.5", "s", "x", status=2), "sets are off at first"
    world.reload(sets(world, "write"))
    assert "noAccess" in world.set("bspWaitingAdmit." + waiting(world), "i", "5", status=2), "binding is not allowed"
    refused = audited(world)[-1]
    assert refused["command"] == "BSP_CMD_ONU_BIND" and refused["result"].startswith("refused: "), refused
    world.reload(sets(world, "service_affecting"))
    check_traps(world)
    index = world.first_index("1.4.1.2", 3)
    world.set(f"bspOnuName.{index}", "s", "customer 1207")
    patiently(lambda: world.value(f"bspOnuName.{index}"), lambda said: "customer 1207" in said)
    assert "wrongLength" in world.set(f"bspOnuName.{index}", "s", "x" * 200, status=2)
    assert "wrongValue" in world.set(f"bspOnuAction.{index}", "i", "99", status=2)
    assert "noCreation" in world.set("bspOnuName.1.1.120", "s", "x", status=2)
    assert "notWritable" in world.set(f"bspOnuMac.{index}", "x", "020000000001", status=2)
    assert "noAccess" in world.set(f"bspOnuName.{index}", "s", "x", status=2, community="public")
    uni = world.first_index("1.8.1.2", 4)
    for value, word in [("2", "down"), ("1", "up")]:
        world.set(f"bspUniAdmin.{uni}", "i", value)
        patiently(lambda: world.value(f"bspUniAdmin.{uni}"), lambda said, word=word: f"INTEGER: {word}" in said)
    world.set(f"bspOnuAction.{index}", "i", "3")  # it has to register again
    # Until it has, it cannot be started anew.
    patiently(lambda: world.set(f"bspOnuAction.{index}", "i", "2", status=None), lambda said: "commitFailed" not in said)
    done = [entry["command"] for entry in audited(world) if entry["result"] == "BSP_OK"]
    assert len(done) == 6 and len(set(done)) == 5, done  # two are of one UNI port
    assert "customer" not in world.said("audit") and all("user" in entry for entry in audited(world))


def check_unanswered_set(world: World) -> None:
    """An OLT that does not answer what is set costs its manager some seconds, and nobody else anything."""
    world.start_olt("south", ports=1, onus=2)
    world.reload(sets(world, "service_affecting"))
    north, name = world.first_index("1.4.1.2", 3), "bspWaitingAdmit." + world.first_index("1.9.1.6.2", 8)
    world.control("fault", "lost", "command=BSP_CMD_ONU_BIND", olt="south")
    before = len(audited(world))
    scrapes = 0
    with concurrent.futures.ThreadPoolExecutor() as pool:
        lost = pool.submit(world.set, name, "i", "7", 2)
        walk = pool.submit(world.walk)  # snmpd may let it wait until the set has ended
        while not lost.done():
            scrapes += b'olt="north"' in world.page("/metrics")
        assert scrapes > 1 and len(walk.result()) > 100, "others are answered"
    assert "genError" in lost.result(), lost.result()  # so snmpd calls it that something cannot be undone
    world.expect("whether it was done is not known")
    noted = [(entry["olt"], entry["command"]) for entry in audited(world)[before:]]
    assert noted == [("south", "BSP_CMD_ONU_BIND")], noted
    world.set(f"bspOnuName.{north}", "s", "customer 1208")
    world.control("fault", "clear", olt="south")
    world.end("south")
    del world.olts["south"]
    world.reload(sets(world, "service_affecting"))


def check_renamed(world: World) -> None:
    """The audit log has the name that an OLT has now."""
    index = world.first_index("1.4.1.2", 3)
    world.olts = {"polar": "north"}
    world.reload(sets(world, "service_affecting"))
    patiently(lambda: world.value("bspOltName.1"), lambda said: "polar" in said)
    patiently(lambda: world.value(f"bspOnuState.{index}"), lambda said: "INTEGER" in said)
    world.set(f"bspOnuName.{index}", "s", "customer 1209")
    assert audited(world)[-1]["olt"] == "polar", audited(world)[-1]
    world.olts = {"north": "north"}
    world.reload(snmp(world))


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
    world.reload(snmp(world))


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
    patiently(lambda: world.page("/metrics"), lambda text: b'table="stations"} 1' in text)
    patiently(world.walk, lambda found: len(found) > 100)
    recorded = recording.stat().st_size
    assert recorded > 0
    with concurrent.futures.ThreadPoolExecutor() as pool:
        walks = [pool.submit(world.walk) for _ in range(2)]
        pages = [pool.submit(world.page, path) for path in ["/metrics", "/", "/api/v1/olts", "/api/v1/events"] for _ in range(5)]
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
            for check in [check_walks, check_other_manager, check_sets, check_unanswered_set,
                          check_renamed, check_exporter(shipped), check_coming_and_going, check_restart,
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
