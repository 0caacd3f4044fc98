"""What engineers do with an OLT's parts, each by its method."""

import pytest
from bsp_pon import StatusError

PORT = 2
pytestmark = pytest.mark.ponsim(ports=3, arrivals=8, silent=0)


@pytest.fixture(autouse=True)
def bound(olt):
    for onu_id, onu in enumerate(olt.waiting(PORT), 1):
        olt.bind(PORT, onu.mac, onu_id=onu_id % 128)


def test_addresses_are_learned_counted_found_and_forgotten(olt):
    olt.step("100 s")
    known = olt.fdb.macs()
    assert len(known) == olt.fdb.count() > 0
    one = known[0]
    assert olt.fdb.macs(PORT, llid=one.onu_id + 1, uni=one.uni, mac=one.mac) == [one]
    assert len(olt.fdb.network_macs()) == olt.fdb.network_count() > 0
    olt.fdb.flush(side="PON", port=PORT)
    assert olt.fdb.count(PORT) == 0 and olt.fdb.network_count() > 0
    assert olt.fdb.ageing() == 300
    olt.fdb.configure(600, learning=False)
    olt.step("100 s")
    assert (olt.fdb.ageing(), olt.fdb.count()) == (600, 0)


@pytest.mark.ponsim(ports=2, arrivals=128, silent=0)
def test_more_addresses_than_an_answer_holds_are_all_told(olt):
    olt.step("100 s")
    found = olt.fdb.macs()
    assert len(found) == olt.fdb.count() > 100
    assert len({(row.pon_port, row.onu_id, row.uni, row.vlan, row.mac) for row in found}) == len(found)


def test_forwarding_between_onus(olt):
    olt.p2p.switch(PORT, True)
    olt.p2p.switch(PORT, False, onu_id=3)
    olt.p2p.configure(PORT, rest="forward", rate=50000, vlans=(10, 20))
    olt.p2p.configure(PORT, broadcast=True)
    olt.p2p.set_own_port(PORT, 3)
    assert olt.p2p.port(PORT) == {
        "on": "on", "rest": "forward", "own_port": 3, "rate": 50000, "first_vlan": 10, "last_vlan": 20,
        "broadcast": "on", "multicast": "off", "onu_set": [1, 2, 4, 5, 6, 7, 8]}
    assert [(row.pon_port, row.on, row.own) for row in olt.p2p.ports()] == [
        (1, False, None), (2, True, 3), (3, False, None)]
    assert olt.p2p.own_port(PORT) == 3
    olt.p2p.set_entry(PORT, 4, "drop", from_onu=1, to_onu=2)
    olt.p2p.set_entry(PORT, 5, "forward", ethertype=0x8863, rate=1000)
    entries = [(row.entry, row.action, row.traffic, row.from_onu, row.to_onu, row.rate)
               for row in olt.p2p.entries(PORT)]
    assert entries == [(4, "drop", None, 1, 2, None), (5, "forward", 0x8863, None, None, 1000)]
    olt.p2p.remove_entry(PORT, 4)
    assert [row.entry for row in olt.p2p.entries(PORT)] == [5]


def test_a_loop_shuts_a_port_and_is_recovered(olt):
    mac = olt.onu(PORT, 1).info()["mac"]

    def found():
        return next((row for row in olt.loop_detection.found() if row.mac == mac), None)

    olt.loop_detection.configure(recovery="automatic", recovery_time=60, interval=5)
    olt.loop_detection.switch(True)
    olt.control(f"loop {PORT} {mac} 1 on")
    olt.step("4 s")
    assert found().state == "looped"
    olt.step("1 s")
    assert found().state == "shut" and olt.onu(PORT, 1).uni_config()[0].link == "down"
    olt.step("66 s")
    assert (found().state, found().detected) == ("shut", 2), "the cable is still there"
    olt.control(f"loop {PORT} {mac} 1 off")
    olt.loop_detection.recover()
    assert found().state == "recovered"
    config = olt.loop_detection.config()
    assert (config["state"], config["mode"], config["time"], config["interval"]) == ("on", "automatic", 60, 5)
    assert (config["detected"], config["recovered"], config["shut"]) == (2, 2, 0)


def test_light_is_measured(olt):
    modules = olt.modules
    with pytest.raises(StatusError) as none:
        modules.rssi(PORT, 1, measured=True)
    assert none.value.name == "PON_ERR_NO_MEASUREMENT"
    modules.measure(PORT, 1, samples=10, interval=100)
    olt.step("2 s")
    measured = modules.rssi(PORT, 1, measured=True)
    assert measured["samples"] == 10 and measured["least"] <= measured["received_power"] <= measured["greatest"]
    assert measured["received_power"] == pytest.approx(modules.rssi(PORT, 1)["received_power"], abs=1)
    modules.measure(PORT, 1, samples=100, interval=60000)
    assert modules.diagnostics(PORT)["measuring"] == "yes"
    modules.cancel_measurement(PORT)
    assert modules.diagnostics(PORT)["measuring"] == "no"


def test_modules_are_set_and_their_memory_is_read_and_written(olt):
    modules = olt.modules
    info = modules.info(PORT)
    assert modules.read_memory(PORT, 0xA0, 20, 16).decode().strip() == info["vendor"]
    modules.write_memory(PORT, 0xA2, 128, b"hello")
    assert modules.read_memory(PORT, 0xA2, 128, 6) == b"hello\0"
    modules.set_light_loss_level(PORT, -30.5)
    assert (modules.diagnostics(PORT)["lol_mode"], modules.diagnostics(PORT)["lol_level"]) == ("level set", -30.5)
    modules.set_light_loss_level(PORT, None)
    assert modules.diagnostics(PORT)["lol_mode"] == "low alarm threshold"
    # Bit 6 of byte 110 disables the laser, unless it is to stay on in spite of that.
    modules.set_laser_always_on(PORT, True)
    modules.write_memory(PORT, 0xA2, 110, b"\x40")
    assert olt.chip.laser(PORT) == "on in spite of TX disable"
    modules.set_laser_always_on(PORT, False)
    assert olt.chip.laser(PORT) == "off"
    assert {row.quantity for row in modules.quantities(PORT)} >= {"temperature", "bias"}


def test_the_chip_is_set(olt):
    chip = olt.chip
    chip.set_discovery(PORT, interval=500, window=20000)
    chip.set_timeouts(PORT, report=2000, gate=100)
    chip.set_grants(PORT, length=3000, cycle=500, sync_time=70, fec=True)
    mac = chip.pon_mac(PORT)
    assert (mac["discovery_interval"], mac["discovery_window"], mac["report_timeout"], mac["gate_timeout"],
            mac["grant_length"], mac["grant_cycle"]) == (500, 20000, 2000, 100, 3000, 500)
    chip.set_ge_phy(1, "auto-negotiation", "loopback")
    assert chip.ge_mac(1)["link"] == "down" and chip.ge_mac(2)["link"] == "up"
    chip.set_ge_phy(1, "reset")
    assert chip.ge_mac(1)["link"] == "up"
    octets = chip.pon_stats(PORT)["in_octets"]
    olt.step("20 s")
    assert chip.pon_stats(PORT)["in_octets"] > octets and olt.fdb.count(PORT) > 0
    for llid in range(2, 10):
        chip.set_llid(PORT, llid, frames="dropped")
    olt.fdb.flush()
    olt.step("20 s")
    assert olt.fdb.count(PORT) == 0
    olt.onu(PORT, 1).deregister()
    assert [onu.onu_id for onu in olt.onus(PORT) if onu.state != "online"] == [1]
    olt.step("10 s")
    chip.register_again(PORT)
    assert {onu.state for onu in olt.onus(PORT)} == {"offline"}
    olt.step("10 s")
    assert {onu.state for onu in olt.onus(PORT)} == {"online"}
    chip.log_onus(True, PORT)
    chip.log_ctc_oam(True)
    chip.log_fdb(PORT)


def test_batches_do_all_or_nothing(olt):
    with pytest.raises(StatusError) as missing:
        olt.release_some(PORT, [3, 99])
    assert missing.value.name == "PON_ERR_NOT_BOUND" and len(olt.used_ids(PORT)) == 8
    olt.release_some(PORT, [3, 4])
    assert olt.used_ids(PORT) == [1, 2, 5, 6, 7, 8]
    olt.reject_some(PORT, [5, 6])
    assert olt.blacklist_ids(PORT) == [1, 2]
    rejected = olt.blacklist(PORT)[0].mac
    olt.reject(PORT, onu_id=7)
    olt.allow(PORT, olt.blacklist(PORT)[2].mac)
    olt.onu(PORT, 8).release()
    assert olt.used_ids(PORT) == [1, 2]
    assert olt.blacklisted(PORT, rejected).id == 1
    olt.allow_some(PORT, [1, 2])
    assert olt.blacklist(PORT) == [] and olt.blacklisted(PORT, rejected) is None
    olt.sort_ids(PORT, olt.used_ids(PORT))
    bound = [onu.mac for onu in olt.onus(PORT) if onu.onu_id is not None]
    assert bound == sorted(bound)
    olt.step("10 s")
    olt.reboot(PORT, [2])
    assert [olt.onu(PORT, onu_id).binding()["state"] for onu_id in (1, 2)] == ["online", "offline"]


def test_who_is_let_in(olt):
    mac = olt.onu(PORT, 1).info()["mac"]
    assert olt.binding(PORT, mac)["state"] == "online" and olt.onu(PORT, 1).binding()["distance"] > 0
    farthest = max(onu.distance for onu in olt.onus(PORT))
    olt.set_range(PORT, 0, farthest - 1)
    olt.step("1 s")
    assert [onu.state for onu in olt.onus(PORT) if onu.state != "online"] == ["offline"]
    (summary,) = olt.port_summary(PORT)
    assert (summary.bound, summary.online, summary.max_distance) == (8, 7, farthest - 1)
    olt.set_auth_mode(PORT, "loid")
    olt.step("5 s")
    state = olt.auth_state(PORT)
    assert (state["mode"], state["unauthenticated"]) == ("loid", 7)
    olt.add_loid(PORT, "home-1", "secret")
    assert [(row.pon_port, row.mode, row.records, row.unauthenticated) for row in olt.auth()] == [
        (1, 0, 0, 0), (2, 1, 1, 7), (3, 0, 0, 0)]
    olt.confirm(PORT, mac)
    assert olt.find(mac).state == "online"
    olt.set_oui("11:22:33")
    olt.apply_onu_configs()


def test_texts_that_tell_a_terminal_anything_are_refused(olt):
    mac = olt.waiting(1)[0].mac
    for text in ("\033[2J", "\x7f", "\x9b2J", "\u202ecod", "\u2066", "\udcff"):
        with pytest.raises(StatusError) as refused:
            olt.bind(1, mac, onu_id=17, texts=(text,))
        assert refused.value.name == "PON_ERR_BAD_RECORD" and olt.find(mac).state == "waiting"
    olt.bind(1, mac, onu_id=17, texts=("Träger",))
    assert olt.find(mac).text_a == "Träger"
    olt.release_all(1)
    assert olt.find(mac).state == "waiting" and len(olt.used_ids(PORT)) == 8


@pytest.mark.ponsim(ports=2, arrivals=32, silent=0)
def test_a_gateway_is_configured(olt):
    gateway = next(olt.onu(row.pon_port, row.onu_id) for row in olt.capabilities()
                   if olt.onu(row.pon_port, row.onu_id).wlans())
    gateway.set_wan(2, mode="route", service="management", ip_mode="static", vlan=30, address="192.0.2.5",
                    mask="255.255.255.0", gateway="192.0.2.1", name="manage")
    gateway.set_wan(2, vlan=31)
    (wan,) = gateway.wans(2)
    assert (wan.name, wan.mode, wan.vlan, wan.ip_mode) == ("manage", "route", 31, "static")
    gateway.set_wlan(1, name="home", security="WPA2", enabled=True)
    assert [(row.name, row.security) for row in gateway.wlans() if row.index == 1] == [("home", "WPA2")]
    gateway.set_acl(1, action="deny", direction="upstream", protocol="TCP", first_port=25, last_port=25)
    assert [(row.action, row.protocol) for row in gateway.acl_rules()] == [("deny", 6)]
    gateway.set_dhcp(enabled=True, lease_time=7200)
    assert gateway.dhcp_server()[0].lease_time == 7200
    for table in (olt.wans, olt.wlans):
        assert gateway.onu_id in {row.onu_id for row in table(gateway.port)}
    assert olt.sip_users(gateway.port) is not None and olt.catv_ports(gateway.port) is not None


def test_uni_ports_are_configured(olt):
    onu = olt.onu(PORT, 1)
    limited = onu.get_rate_limit(1)
    onu.set_admin_state(1, on=False)
    onu.set_autoneg_adv(1, ability=["100BASE-TX", "100BASE-TX-FD"])
    onu.set_rate_limit(1, up_on=True, up_cir=5000, up_cbs=2000, up_ebs=0)
    onu.set_pause(1, on="on")
    onu.set_loop_detect(1, on=False)
    onu.set_mc_vlan(1, operation="add", vlan=[100, 200])
    onu.set_mc_switch(mode="controllable multicast")
    olt.step("1 s")
    onu.set_mc_group(action="add", control_type="MAC address and VLAN", uni=[1], vlan=[100],
                     group=["01:00:5e:01:02:03"])
    olt.step("1 s")
    assert onu.get_admin_state(1) == {"on": "off"} and onu.links()[0].admin is False
    assert onu.get_autoneg_adv(1)["ability"] == ["100BASE-TX", "100BASE-TX-FD"]
    assert onu.get_rate_limit(1) == {**limited, "up_on": "on", "up_cir": 5000, "up_cbs": 2000, "up_ebs": 0}
    assert (onu.get_pause(1)["on"], onu.get_loop_detect(1)["on"]) == ("on", "off")
    assert {100, 200} <= set(onu.get_mc_vlan(1)["vlan"]) and onu.get_mc_group()["group"] == ["01:00:5e:01:02:03"]
    unis = [row for row in olt.unis() if (row.pon_port, row.onu_id, row.uni) == (PORT, 1, 1)]
    assert [row.admin for row in unis] == [False]
    with pytest.raises(TypeError, match="nothing to set; its fields are mode, pvid"):
        onu.set_vlan(1)


def test_unis_have_profiles(olt):
    olt.profiles.store_uni(3, up=(1000, 2000, 0), down=(500, 900), vlan_mode="translation", pvid=5,
                           vlans=[(10, 1010), (20, 1020)])
    (profile,) = olt.profiles.unis()
    assert (profile.id, profile.up_cir, profile.down_pir, profile.pvid) == (3, 1000, 900, 5)
    assert olt.profiles.unis(3) == [profile]
    olt.profiles.delete_uni(3)
    assert olt.profiles.unis() == []


def test_profiles_of_each_kind(olt):
    olt.profiles.store_sla("fast", maximum=100000, weight=5)
    olt.profiles.store_sla("fast", fixed=1000)
    olt.profiles.store_alarm("cold", temperature_low=-10.5, temperature_high=80, launch_power_low=-3,
                             launch_power_high=3, received_power_low=-27.5, received_power_high=-8)
    fast = olt.profiles.get("sla", "fast")
    assert (fast["fixed"], fast["maximum"], fast["weight"]) == (1000, 100000, 5)
    assert olt.profiles.get("alarm", "cold")["received_power_low"] == -27.5
    assert [row.name for row in olt.profiles.list("alarm")] == ["cold"]


def test_upgrade_types_are_loaded_by_the_service(olt):
    with pytest.raises(StatusError) as missing:
        olt.upgrades.load_types("/nowhere/types")
    assert missing.value.name == "PON_ERR_NO_FILE"
    olt.upgrades.add_type("x", vendor="SIMA", model="S100", version="9", size=1)
    olt.upgrades.bind_type(PORT, "x")
    assert [row.name for row in olt.upgrades.types()] == ["x"]
    olt.upgrades.delete_type("x")
    assert olt.upgrades.types() == []
