"""The stories of the system tests, told by the typed layer."""

import threading

import pytest
from bsp_pon import IpcError, StatusError

PORT = 3
HOME = pytest.mark.ponsim(arrivals=4, silent=0)


def restarted(simulator, state, **options):
    """Returns the OLT of a simulator that is started on what another one has kept."""
    return simulator(state=state, **options).olt()


def row_of(rows, mac):
    return next((row for row in rows if row.mac == mac), None)


def test_an_onu_is_rejected_and_then_admitted_after_all(simulator, tmp_path):
    state = tmp_path / "state"
    first = simulator(arrivals=4, silent=0, state=state)
    olt = first.olt()
    mac = olt.waiting(PORT)[0].mac
    assert olt.blacklist() == []

    olt.reject(PORT, mac=mac, text="stolen")
    assert row_of(olt.onus(PORT), mac) is None
    assert [(entry.pon_port, entry.mac, entry.text) for entry in olt.blacklist(PORT)] == [(PORT, mac, "stolen")]
    with pytest.raises(StatusError) as refused:
        olt.bind(PORT, mac)
    assert refused.value.name

    first.stop()
    olt = restarted(simulator, state, arrivals=4, silent=0)
    assert row_of(olt.blacklist(), mac).text == "stolen"

    olt.allow(PORT, mac)
    assert olt.blacklist() == [] and row_of(olt.onus(PORT), mac).state == "waiting"
    olt.confirm(PORT, mac)
    assert olt.find(mac).state == "online"
    onu_id = olt.find(mac).onu_id
    onu = olt.onu(PORT, onu_id)
    onu.describe("customer 1207")
    assert olt.find(mac).description == "customer 1207"

    olt.clear_alarms(PORT)
    assert olt.alarms(PORT) == []
    onu.reboot()
    assert row_of(olt.alarms(PORT), mac).name == "dying_gasp"
    olt.clear_alarms(PORT, onu_id)
    assert row_of(olt.alarms(PORT), mac) is None
    olt.step("40 s")
    assert (olt.find(mac).state, olt.find(mac).onu_id) == ("online", onu_id)


@HOME
def test_binding_and_releasing(olt):
    first, second = (onu.mac for onu in olt.waiting(PORT)[:2])
    assert olt.bind(PORT, first, onu_id=17, texts=("customer", "room", "note"), mode=2) == 17
    bound = olt.find(first)
    assert (bound.onu_id, bound.state, bound.mode) == (17, "online", 2)
    assert (bound.text_a, bound.text_b, bound.text_c) == ("customer", "room", "note")
    with pytest.raises(StatusError) as taken:
        olt.bind(PORT, second, onu_id=17)
    assert taken.value.number == 4006
    with pytest.raises(StatusError):
        olt.release(PORT, onu_id=18, mac=first)
    olt.release(PORT, onu_id=17, mac=first)
    assert (olt.bind(PORT, first), olt.bind(PORT, second)) == (1, 2)
    olt.release(PORT, mac=second)
    olt.release(PORT, onu_id=1)
    assert all(onu.state == "waiting" for onu in olt.onus(PORT))
    olt.support(PORT, first, False)
    with pytest.raises(StatusError):
        olt.bind(PORT, first)
    olt.support(PORT, first, True)
    olt.bind(PORT, first)
    olt.bind(PORT, "02:ff:ff:ff:ff:01", onu_id=20)
    olt.release_all(PORT, offline_only=True)
    assert [onu.mac for onu in olt.onus(PORT) if onu.onu_id is not None] == [first]
    olt.release_all(PORT)
    assert len(olt.waiting(PORT)) == 4


@HOME
def test_a_contract_that_every_view_tells(olt):
    olt.bind(PORT, olt.waiting(PORT)[0].mac, onu_id=1)
    onu = olt.onu(PORT, 1)
    onu.set_sla(fixed=1000, assured=20000, maximum=100000, priority=5, weight=10)
    onu.set_sla_down(300000)
    assert onu.sla() == {"fixed": 1000, "assured": 20000, "maximum": 100000, "priority": 5, "weight": 10}
    assert [(row.onu_id, row.fixed, row.assured, row.max) for row in olt.slas(PORT)] == [(1, 1000, 20000, 100000)]
    onu.set_sla(maximum=50000)
    assert onu.sla() == {"fixed": 1000, "assured": 20000, "maximum": 50000, "priority": 5, "weight": 10}


def translating(olt):
    """Binds ONUs until one can translate VLANs, and returns it."""
    for onu_id, onu in enumerate(olt.waiting(PORT), 1):
        olt.bind(PORT, onu.mac, onu_id=onu_id)
        if next(row for row in olt.ask("view_onu_cap_snmp") if row.mac == onu.mac).vlan_translation:
            return olt.onu(PORT, onu_id)
    raise AssertionError("no ONU can translate VLANs")


@pytest.mark.ponsim(arrivals=16, silent=0)
def test_a_vlan_rule_that_is_read_back_as_block_and_as_table(olt):
    onu = translating(olt)
    had = onu.ask("vlan", uni=1)
    onu.set("vlan", uni=1, mode="translation", pvid=300, user=[10, 20], network=[1010, 1020])
    assert [(row.pvid, row.vlans) for row in onu.vlans() if row.uni == 1] == [(300, "10:1010,20:1020")]
    assert onu.ask("vlan", uni=1) == had
    olt.step("1 s")
    has = onu.ask("vlan", uni=1)
    assert (has["mode"], has["count"], has["pvid"]) == ("translation", 2, 300)
    assert (has["user"], has["network"]) == ([10, 20], [1010, 1020])
    assert has["tpid"] == had["tpid"]

    # What is not named stays. What cannot be is refused before anything is sent.
    onu.set("vlan", uni=1, pvid=301)
    olt.step("1 s")
    assert onu.ask("vlan", uni=1) == {**has, "pvid": 301}
    with pytest.raises(ValueError, match="pvid: 4095 is not a number from"):
        onu.set("vlan", uni=1, pvid=4095)


@pytest.mark.ponsim(arrivals=16, silent=0)
def test_performance_becomes_history(olt):
    for waiting in olt.waiting(PORT):
        olt.bind(PORT, waiting.mac)
    onu = olt.onu(PORT, next(row.onu_id for row in olt.stats() if row.up_load and row.up_load > 0))
    with pytest.raises(StatusError) as unmonitored:
        onu.performance(1)
    assert unmonitored.value.name == "PON_ERR_NOT_MONITORED"
    onu.monitor(True)
    olt.step("100 s")
    counted = [onu.performance(uni.uni)["up_frames"] for uni in onu.unis()]
    assert max(counted) > 0, "no UNI port has traffic"
    busy = counted.index(max(counted)) + 1
    olt.step("700 s")
    late = onu.performance(busy)["up_frames"]
    assert late > max(counted)
    olt.step("200 s")
    assert onu.performance(busy, history=True)["up_frames"] > late > onu.performance(busy)["up_frames"]


@pytest.mark.ponsim(arrivals=16, silent=0)
def test_an_image_is_pushed_committed_and_seen_after_reboot(olt):
    onu = translating(olt)
    before = onu.info()["software"]
    onu.push_image(b"x" * 4000, "9.8.7")
    assert onu.image_state()["received"] == 4000
    onu.commit_image()
    assert onu.info()["software"] == before
    onu.reboot()
    olt.step("40 s")
    assert onu.info()["software"] == "9.8.7"
    assert onu.images()["version"] == [before, "9.8.7"]


@HOME
def test_an_upgrade_in_which_an_onu_loses_power(olt):
    macs = [onu.mac for onu in olt.waiting(PORT)[:2]]
    for onu_id, (mac, name) in enumerate(zip(macs, ("first", "second")), 1):
        olt.bind(PORT, mac, onu_id=onu_id)
        known = row_of(olt.upgrades.state(PORT), mac)
        olt.upgrades.add_type(name, vendor=known.vendor, model=known.model, version="9.9.9", size=6000000)
        olt.upgrades.bind_type(PORT, name, [onu_id])
    old = row_of(olt.upgrades.state(PORT), macs[1]).software
    olt.upgrades.start(PORT)
    olt.step("10 s")
    assert [row_of(olt.upgrades.state(PORT), mac).run for mac in macs] == ["downloading", "downloading"]
    olt.control(f"power {PORT} {macs[1]} off")
    olt.step("600 s")
    first, second = (row_of(olt.upgrades.state(PORT), mac) for mac in macs)
    assert (first.run, first.software) == ("done", "9.9.9")
    assert (second.run, second.reason, second.software) == ("failed", "offline", old)


@HOME
def test_a_laser_ages_until_its_alarm_comes(olt):
    new = olt.modules.diagnostics(PORT)
    assert new["bias"] < new["bias_high_alarm"] and olt.alarms(PORT) == []
    for _ in range(60):
        if olt.alarms(PORT):
            break
        olt.control(f"age {PORT} 8760")
    (alarm,) = olt.alarms(PORT)
    assert alarm.onu_id is None and olt.modules.diagnostics(PORT)["bias"] > new["bias"]
    olt.clear_alarms(PORT)
    assert [(again.name, again.count, again.cause) for again in olt.alarms(PORT)] == [(alarm.name, 1, "age")]


def test_a_fibre_is_cut_and_mended(simulator):
    olt = simulator("""
[[olt]]
ports = 1
[[olt.port]]
number = 1
[[olt.port.onu]]
name = "home"
count = 3
""").olt()
    for onu in olt.waiting(1):
        olt.bind(1, onu.mac)
    olt.control("cut 1 feeder")
    olt.step("1 s")
    assert {onu.state for onu in olt.onus(1)} == {"offline"}
    assert {alarm.name for alarm in olt.alarms(1, active=True)} >= {"los"}
    olt.control("mend 1 feeder")
    olt.step("10 s")
    assert {onu.state for onu in olt.onus(1)} == {"online"}


@HOME
def test_waiting_takes_model_time(olt):
    mac = olt.waiting(PORT)[0].mac
    olt.bind(PORT, mac, onu_id=1)
    olt.onu(PORT, 1).reboot()
    assert olt.find(mac).state == "offline"
    assert olt.wait_online(PORT, 1).mac == mac
    assert 0 < olt.now() < 60
    olt.control(f"power {PORT} {mac} off")
    olt.step("1 s")
    with pytest.raises(TimeoutError):
        olt.wait_online(PORT, 1, timeout=5)


@HOME
def test_profiles_keep_what_is_not_named(olt):
    assert olt.profiles.list("line") == []
    olt.profiles.store("line", "gold", id=7, vlan=100, upstream=50000, downstream=200000)
    olt.profiles.store("line", "gold", downstream=300000)
    (gold,) = olt.profiles.list("line")
    assert (gold.name, gold.vlan, gold.upstream, gold.downstream) == ("gold", 100, 50000, 300000)
    assert olt.profiles.get("line", "gold")["downstream"] == 300000
    olt.profiles.delete("line", "gold")
    with pytest.raises(StatusError) as missing:
        olt.profiles.get("line", "gold")
    assert missing.value.name == "PON_ERR_NO_PROFILE"


@HOME
def test_authentication(olt):
    assert olt.auth_mode(PORT) == "mac"
    olt.set_auth_mode(PORT, "loid-password")
    assert olt.auth_mode(PORT) == "loid-password"
    olt.add_loid(PORT, "home-1", "secret")
    assert [(row.loid, row.has_password) for row in olt.loids(PORT)] == [("home-1", True)]
    olt.delete_loid(PORT, "home-1")
    assert olt.loids(PORT) == []


@HOME
def test_an_onu_drops_off_in_the_middle_of_queries(olt):
    mac = olt.waiting(PORT)[0].mac
    olt.bind(PORT, mac, onu_id=1)
    onu = olt.onu(PORT, 1)
    identity = onu.info()
    stop, answered, refused, wrong = threading.Event(), threading.Semaphore(0), threading.Semaphore(0), []

    def ask():
        while not stop.is_set():
            try:
                if onu.info() == identity:
                    answered.release()
                else:
                    wrong.append("another answer")
            except StatusError as error:
                (refused.release() if error.name == "PON_ERR_OFFLINE" else wrong.append(error))

    def wait_for_more(count):
        while count.acquire(blocking=False):
            pass
        assert count.acquire(timeout=30)

    asking = threading.Thread(target=ask)
    asking.start()
    for _ in range(3):
        wait_for_more(answered)
        olt.control(f"power {PORT} {mac} off")
        wait_for_more(refused)
        olt.control(f"power {PORT} {mac} on")
        olt.step("40 s")
    stop.set()
    asking.join()
    assert wrong == []


@HOME
def test_faults_are_exceptions(olt):
    olt.fault("status 4001", count=1)
    with pytest.raises(StatusError) as status:
        olt.onus(PORT)
    assert (status.value.number, status.value.name) == (4001, "PON_ERR_UNKNOWN_COMMAND")
    olt.fault("lost", count=1)
    olt.call.timeout = 0.05
    with pytest.raises(IpcError) as lost:
        olt.onus(PORT)
    assert (lost.value.number, lost.value.text) == (-3, "no answer within the time-out")
    olt.call.timeout = None
    assert len(olt.onus(PORT)) == 4


def test_a_stopped_simulator_is_an_ipc_failure(simulator, capfd):
    begun = simulator()
    olt = begun.olt()
    begun.stop()
    with pytest.raises(IpcError) as gone:
        olt.onus()
    assert gone.value.number == -1
    assert capfd.readouterr() == ("", "")
