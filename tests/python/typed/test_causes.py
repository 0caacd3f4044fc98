"""Causes and what follows from them, as a script sees it: a street with six homes."""

import pytest
from bsp_pon import StatusError

STREET = """
seed = 3
[service.home]
maximum = 10000
load_up = 50000
load_down = 1000
[[olt]]
ports = 1
class = "PX10"
[[olt.port]]
number = 1
[[olt.port.branch]]
name = "street"
length = 2000
split = 4
[[olt.port.branch]]
name = "corner"
from = "street"
length = 300
split = 4
[[olt.port.onu]]
name = "near"
count = 3
service = "home"
branch = "street"
[[olt.port.onu]]
name = "far"
count = 3
service = "home"
branch = "corner"
[[event]]
at = "2h"
do = "fault status 4001 count=1"
"""
pytestmark = pytest.mark.ponsim(scenario=STREET)


def online(olt):
    return sum(onu.state == "online" for onu in olt.onus(1))


def raised(olt, name):
    """Returns how often an alarm was raised, summed over all ONUs."""
    return sum(alarm.count for alarm in olt.alarms(1) if alarm.name == name)


def growth(olt, counter):
    """Returns by how much a counter of the port grows in ten minutes."""
    before = olt.chip.pon_stats(1)[counter]
    olt.step("10 min")
    return olt.chip.pon_stats(1)[counter] - before


def test_a_fibre_is_bent_until_the_homes_behind_it_are_gone(olt):
    assert online(olt) == 6
    errors = growth(olt, "in_fcs_errors")
    for _ in range(60):
        if raised(olt, "receive_degraded"):
            break
        olt.control("bend 1 corner 0.5")
    assert (raised(olt, "los"), online(olt)) == (0, 6)
    olt.control("bend 1 corner 1.5")
    assert online(olt) == 6 and growth(olt, "in_fcs_errors") > 100 * (errors + 1)
    olt.control("bend 1 corner 6")
    olt.step("1 s")
    assert (raised(olt, "los"), online(olt)) == (3, 3)
    olt.control("mend 1 corner")
    assert online(olt) == 3, "they have still to register"
    olt.step("5 s")
    assert online(olt) == 6


def test_a_fibre_is_cut_at_two_places(olt):
    olt.control("cut 1 corner")
    assert online(olt) == 6, "nobody has noticed yet"
    olt.step("1 s")
    assert online(olt) == 3
    olt.control("cut 1 street")
    olt.step("1 s")
    assert online(olt) == 0
    olt.control("mend 1 street")
    olt.step("5 s")
    assert online(olt) == 3, "the corner is still cut"


def test_a_load_is_limited_by_its_sla(olt):
    octets_of_a_megabit = 1e6 / 8 * 600
    assert growth(olt, "in_octets") / octets_of_a_megabit == pytest.approx(6 * 10, abs=0.6)
    for home in ("near-1", "near-2", "near-3", "far-1", "far-2", "far-3"):
        olt.control(f"load 1 {home} up 2000")
    assert growth(olt, "in_octets") / octets_of_a_megabit == pytest.approx(6 * 2, abs=0.2)


def test_an_onu_blinds_its_port(olt):
    olt.control("rogue 1 far-2 on")
    olt.step("1 s")
    assert (online(olt), raised(olt, "rogue")) == (0, 1)
    olt.control("cut 1 far-2")
    olt.step("5 s")
    assert online(olt) == 5


def test_a_fault_that_the_scenario_orders(olt):
    olt.step("7199 s")
    assert len(olt.onus(1)) == 6
    olt.step("1 s")
    with pytest.raises(StatusError) as refused:
        olt.onus(1)
    assert refused.value.number == 4001
    assert len(olt.onus(1)) == 6
