"""A full OLT: its tables, its configuration on another service, and what many queries leave behind."""

import gc
import os
import pathlib
import subprocess

import pytest
from bsp_pon import AnswerError, StatusError, raw, rows
from bsp_pon.parts import Configuration, differences

PORTS, ONUS = 16, 128
FULL = {"seed": 9, "arrivals": ONUS, "silent": 0}


def bind_all(olt, ports=PORTS, onus=ONUS):
    for port in range(1, ports + 1):
        waiting = olt.waiting(port)
        assert len(waiting) == onus
        for onu_id, onu in enumerate(waiting):
            olt.bind(port, onu.mac, onu_id=onu_id, texts=("customer",), mode=onu_id)


def views(olt):
    return [olt.unis(), olt.loop_detection.config(), olt.onus(), olt.blacklist(), olt.loop_detection.found()]


def test_a_full_olt_is_read_in_bulk_and_becomes_the_same_on_another_service(simulator):
    olt = simulator(**FULL).olt()
    with pytest.raises(AnswerError, match="too large"):  # the small bound of this carrier is not for so many
        olt.call(raw.bsp_pon_exec_get_json, raw.BSP_CMD_VIEW_ONU_INFO_WEB, 0, 0).rows_of(rows.OnuInfo)
    bind_all(olt)
    every = [(port, onu_id) for port in range(1, PORTS + 1) for onu_id in range(ONUS)]
    light = olt.optics()
    assert [(row.pon_port, row.onu_id) for row in light] == every
    assert [row.rx_power for row in olt.optics(16)] == [row.rx_power for row in light[15 * ONUS:]]

    for onu_id in range(ONUS):
        olt.onu(1, onu_id).monitor(True)
    olt.reject(2, mac="00:1b:21:00:00:01", text="stolen")
    olt.loop_detection.configure(recovery_time=77)
    for onu_id in range(8):
        olt.onu(3, onu_id).set_vlan(1, mode="tag", pvid=100 + onu_id)
    olt.step("15 min")
    counted = olt.stats()
    assert [(row.pon_port, row.onu_id) for row in counted] == every
    assert counted[0].counted is not None and counted[ONUS].counted is None
    assert olt.info().bound == PORTS * ONUS and olt.ports()[15].bound == ONUS
    assert "total: 2048 bound" in olt.summary()

    saved = olt.config.read()
    other = simulator(**FULL).olt()
    assert views(other) != views(olt)
    other.config.load(saved)
    assert views(other) == views(olt) and other.config.read() == saved
    assert [other.onu(3, onu_id).get_vlan(1)["pvid"] for onu_id in range(8)] == [*range(100, 108)]


@pytest.fixture
def small(simulator):
    olt = simulator(seed=9, ports=2, arrivals=4, silent=0).olt()
    bind_all(olt, ports=2, onus=4)
    return olt


def test_another_olt_refuses_a_configuration(small, simulator):
    before = small.config.read()
    with pytest.raises(StatusError) as refused:
        small.config.load(simulator(seed=2, ports=2).olt().config.read())
    assert refused.value.number == 4096 and small.config.read() == before


def test_a_configuration_is_saved_compared_and_put_back(small, tmp_path):
    file = tmp_path / "olt.conf"
    small.config.read().save(file)
    assert file.stat().st_mode & 0o777 == 0o600
    before = Configuration.from_file(file)
    assert before == small.config.read() and differences(before, before) == []

    small.onu(1, 2).describe("first floor")
    small.add_loid(1, "home-1", "secret")
    small.onu(2, 1).set_vlan(1, mode="tag", pvid=7)
    small.profiles.store_line("gold", id=3, vlan=100, downstream=5000)
    small.p2p.switch(1, True)
    small.chip.set_discovery(1, interval=500, window=20000)
    small.step("1 s")
    found = {(each.table, each.key, each.name): (each.before, each.after)
             for each in differences(before, small.config.read())}
    mac = small.onu(2, 1).info()["mac"]
    assert found["binding", "1/2", "description"] == (None, "first floor")
    assert found["auth", "1 loid home-1", "password"] == (None, "secret")
    assert found["onu_setting", f"2/{mac} command BSP_CMD_ONU_VLAN_GET uni 1", "pvid"] == (None, 7)
    assert found["profile", "line id 3", "downstream"] == (None, 5000)
    assert found["block", "BSP_CMD_P2P_STATE_SET pon_port 1 idx 0", "on"] == (None, "on")
    assert found["block", "BSP_CMD_MPCP_SET pon_port 1 idx 1", "discovery_interval"] == (None, 500)
    secret = next(each for each in small.config.read().settings() if each.name == "password")
    assert str(secret) == "auth 1 loid home-1 password = (secret)"

    small.config.load(before)
    assert differences(before, small.config.read()) == [] and small.loids(1) == []


def test_settings_are_those_that_ponctl_shows(small):
    small.onu(1, 2).describe("first floor")
    small.onu(2, 1).set_vlan(1, mode="tag", pvid=7)
    small.profiles.store_alarm("cold", temperature_low=-10.5, temperature_high=80, launch_power_low=-3,
                               launch_power_high=3, received_power_low=-27.5, received_power_high=-8)
    small.p2p.set_entry(1, 3, "drop", from_onu=1)
    small.set_auth_mode(1, "hybrid")
    environment = {**os.environ, "BOARD_IPC_DIR": small.call.directory}
    done = subprocess.run([os.environ["PONCTL"], "config", "show"], env=environment, capture_output=True, text=True,
                          timeout=60, check=True)
    shown = {line.partition(" = ")[0] for line in done.stdout.splitlines()}
    mine = {f"{each.table} {each.key} {each.name}".replace("  ", " ") for each in small.config.read().settings()
            if not isinstance(each.value, list)}  # ponctl numbers the values of a list
    assert mine and mine <= shown
    assert {name for name in shown - mine if not name.rpartition("_")[2].isdigit()} == set()


@pytest.mark.parametrize("text, message", [
    ("", "too short"), ("x", "line 1: the text is cut off here"), ("{}\n{}\n", "line 1: this is not the configuration"),
    ("x\n{}\n", "line 1: this is no line"),
    ('{"ponsim_configuration":1,"tables":{}}\n{"table":"x","row":[]}\n{"rows":1}\n', "line 2: this is no row"),
    ('{"ponsim_configuration":1,"tables":{}}\n{"rows":1}\n', "line 2: the text has another number of rows"),
    ('{"ponsim_configuration":1,"tables":{"t":{"key":["k"]}}}\n{"table":"t","row":[1.5]}\n{"rows":1}\n',
     "line 2: a value is neither"),
])
def test_what_is_no_configuration_is_refused_with_its_line(text, message):
    with pytest.raises(ValueError, match=message):
        Configuration(text)


def test_thousands_of_queries_leave_nothing_behind(small):
    def left():
        gc.collect()
        maps = pathlib.Path("/proc/self/maps").read_text(encoding="utf-8")
        folder = pathlib.Path(small.call.directory)
        return len(os.listdir("/proc/self/fd")), maps.count("memfd"), len(list(folder.rglob("*")))

    small.onus(1)
    small.onus(1)  # after this the service has released what the first one needed
    before = left()
    for _ in range(2000):
        small.onus(1)
    assert left() == before
    for fault in ("no-result", "bad-result cut", "bad-result type", "bad-result columns", "status 4001"):
        small.fault(fault, count=100)
        for _ in range(100):
            with pytest.raises((AnswerError, StatusError)):
                small.onus(1)
    assert left() == before, "what a failed query was answered with is released, too"
