"""A service that is stopped, or dies, in the middle of the stories, and is started again."""

import os
import threading

import pytest
from bsp_pon import IpcError, Olt, StatusError

PORT, CLIENTS, KILLS, CALLS = 3, 4, 3, 60


@pytest.fixture
def begin(simulator, tmp_path):
    def begin_simulator(**options):
        return simulator(state=tmp_path / "state", child=True, program=os.environ["PONSIM"], silent=0, **options)

    return begin_simulator


class Client:
    """It is alone on its port and binds and releases there, so that each of its calls has one right answer."""

    def __init__(self, olt, port):
        self.olt, self.port = olt, port
        self.bound, self.unknown, self.wrong, self.acknowledged = {}, set(), [], 0
        self.more = threading.Condition()

    def work(self, stop):
        turn = 0
        while not stop.is_set():
            onu_id = turn % 50
            bind = not self.bound.get(onu_id, False)
            known = self.call(bind, onu_id)
            # Nobody can know whether a failed call took effect. Binding once more makes the state certain.
            while not known and not stop.wait(0.01):
                bind = True
                known = self.call(bind, onu_id)
            if known:
                self.bound[onu_id] = bind
            else:
                self.unknown.add(onu_id)
            turn += 1

    def call(self, bind, onu_id):
        """Returns whether a call was acknowledged."""
        try:
            if bind:
                self.olt.bind(self.port, f"06:00:00:00:{self.port:02x}:{onu_id:02x}", onu_id=onu_id)
            else:
                self.olt.release(self.port, onu_id=onu_id)
        except IpcError:
            return False
        except Exception as error:
            self.wrong.append(error)
        with self.more:
            self.acknowledged += 1
            self.more.notify_all()
        return True

    def wait_for_progress(self):
        with self.more:
            enough = self.acknowledged + CALLS
            assert self.more.wait_for(lambda: self.acknowledged >= enough, timeout=120)


def test_every_acknowledged_binding_survives_and_nobody_hangs(begin):
    simulator = begin(arrivals=0)
    clients = [Client(Olt(simulator.directory()), port) for port in range(1, CLIENTS + 1)]
    simulator.olt()
    stop = threading.Event()
    threads = [threading.Thread(target=client.work, args=(stop,)) for client in clients]
    for thread in threads:
        thread.start()
    try:
        for _ in range(KILLS):
            for client in clients:
                client.wait_for_progress()
            simulator.kill()
            simulator.restart()
        for client in clients:
            client.wait_for_progress()
    finally:
        stop.set()
        for thread in threads:
            thread.join()
    for client in clients:
        assert client.wrong == []
        found = {onu.onu_id for onu in client.olt.onus(client.port)}
        for onu_id, is_bound in client.bound.items():
            assert onu_id in client.unknown or (onu_id in found) == is_bound


def test_an_sla_is_kept_and_every_view_tells_it(begin):
    simulator = begin(arrivals=4)
    olt = simulator.olt()
    olt.bind(PORT, olt.waiting(PORT)[0].mac, onu_id=1)
    onu = olt.onu(PORT, 1)
    onu.set_sla(fixed=1000, assured=20000, maximum=100000, priority=5, weight=10)
    onu.set_sla_down(300000)
    simulator.kill()
    simulator.restart()
    assert onu.sla() == olt.ask("debug_sla", pon_port=PORT, onu_id=1) == {
        "fixed": 1000, "assured": 20000, "maximum": 100000, "priority": 5, "weight": 10}
    assert onu.sla_down() == olt.slas_down(PORT)[0].max == 300000
    (row,) = olt.slas(PORT)
    assert (row.onu_id, row.fixed, row.assured, row.max) == (1, 1000, 20000, 100000)
    of_port = olt.bandwidths()[PORT - 1]
    assert (of_port.fixed, of_port.assured) == (1000, 20000)
    assert olt.bandwidth(PORT)["free"] == olt.bandwidth(PORT)["capacity"] - 21000
    onu.clear_sla()
    onu.set_sla_down(0)
    assert (onu.sla()["maximum"], onu.sla_down(), olt.slas(PORT)[0].max) == (1000000, 1000000, None)


def test_an_upgrade_goes_on_and_what_failed_is_done_at_the_second_attempt(begin):
    simulator = begin(arrivals=4)
    olt = simulator.olt()
    macs = [onu.mac for onu in olt.waiting(PORT)[:2]]
    for onu_id, mac in enumerate(macs, 1):
        olt.bind(PORT, mac, onu_id=onu_id)
        known = next(row for row in olt.upgrades.state(PORT) if row.mac == mac)
        olt.upgrades.add_type(f"type{onu_id}", vendor=known.vendor, model=known.model, version="9.9.9", size=6000000)
        olt.upgrades.bind_type(PORT, f"type{onu_id}", [onu_id])
    olt.upgrades.start(PORT)
    olt.step("10 s")
    olt.control(f"power {PORT} {macs[1]} off")
    simulator.kill()
    simulator.restart()
    olt.step("10 min")
    runs = {row.mac: row for row in olt.upgrades.state(PORT)}
    assert (runs[macs[0]].run, runs[macs[0]].software) == ("done", "9.9.9")
    assert (runs[macs[1]].run, runs[macs[1]].reason) == ("failed", "offline")
    olt.control(f"power {PORT} {macs[1]} on")
    assert olt.wait_online(PORT, 2).mac == macs[1]
    olt.upgrades.start(PORT, 2)
    olt.step("10 min")
    assert olt.onu(PORT, 2).info()["software"] == "9.9.9"


def test_an_image_a_vlan_and_counters_are_kept(begin):
    simulator = begin(arrivals=16)
    olt = simulator.olt()
    for waiting in olt.waiting(PORT):
        olt.bind(PORT, waiting.mac)
    able = [row.onu_id for row in olt.capabilities() if row.vlan_translation]
    busy = {row.onu_id for row in olt.stats() if row.up_load and row.up_load > 0}
    onu = olt.onu(PORT, next(onu_id for onu_id in able if onu_id in busy))
    onu.set_vlan(1, mode="translation", pvid=300, user=[10, 20], network=[1010, 1020])
    onu.monitor(True)
    before = onu.info()["software"]
    onu.push_image(b"x" * 4000, "9.8.7")
    onu.commit_image()
    olt.step("17 min")
    vlan, history = onu.get_vlan(1), onu.performance(1, history=True)
    simulator.kill()
    simulator.restart()
    assert onu.get_vlan(1) == vlan and vlan["network"] == [1010, 1020]
    assert onu.performance(1, history=True) == history
    onu.reboot()
    olt.step("40 s")
    assert (onu.info()["software"], onu.images()["version"]) == ("9.8.7", [before, "9.8.7"])
    assert onu.images()["active"] == ["no", "yes"]
    (update,) = onu.upgrade_status()
    assert update.mac == onu.info()["mac"]


def test_an_onu_that_is_off_is_asked_at_the_olt_alone(begin):
    olt = begin(arrivals=4).olt()
    mac = olt.waiting(PORT)[0].mac
    olt.bind(PORT, mac, onu_id=1)
    olt.control(f"power {PORT} {mac} off")
    onu = olt.onu(PORT, 1)
    for call in (lambda: onu.set_vlan(1, pvid=7), onu.get_mc_switch):
        with pytest.raises(StatusError) as off:
            call()
        assert off.value.name == "PON_ERR_OFFLINE"
    assert onu.get_mc_switch_local()["mode"] in ("snooping", "controllable multicast")


def test_no_answer_is_lost_or_anothers_while_things_happen(begin):
    """Threads are busy with a port of their own each, while fibres are cut and mended."""
    olt = begin(arrivals=4).olt()
    rounds, ports, wrong, offline = 40, range(1, 5), [], []
    for port in ports:
        for onu_id, onu in enumerate(olt.waiting(port)):
            olt.bind(port, onu.mac, onu_id=onu_id)
    over = threading.Event()

    def happen():
        turn = 0
        while not over.is_set():
            olt.control(f"cut {1 + turn % 4} feeder")
            olt.step("1 s")
            olt.control(f"mend {1 + turn % 4} feeder")
            olt.step("10 s")
            turn += 1

    def work(port):
        own = Olt(olt.call.directory)
        for turn in range(rounds):
            onu, text = own.onu(port, turn % 4), f"port {port}, turn {turn}"
            try:
                onu.describe(text)
                own.profiles.store_line(f"client {port}", upstream=turn)
                found = onu.binding()["description"], own.profiles.get("line", f"client {port}")["upstream"]
                rows = {row.onu_id: row.description for row in own.onus(port)}
                if found != (text, turn) or rows[turn % 4] != text or len(rows) != 4:
                    wrong.append((found, rows))
                onu.get_mc_switch()
            except StatusError as error:
                (offline if error.name == "PON_ERR_OFFLINE" else wrong).append(error)

    fate = threading.Thread(target=happen)
    threads = [threading.Thread(target=work, args=(port,)) for port in ports]
    fate.start()
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    over.set()
    fate.join()
    assert wrong == []
    assert len(olt.onus()) == 64 and len(olt.profiles.list("line")) == 4
