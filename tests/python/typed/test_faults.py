"""What the typed layer makes of each fault on the wire: an exception or a result, and the right answer afterwards."""

import os
import threading

import pytest
from bsp_pon import AnswerError, BspError, IpcError, StatusError, raw

PORT, ID = 3, 5
LOST, BROKEN = -3, -7


class Home:
    """An OLT with an ONU that is bound, and what it says when all is in order."""

    def __init__(self, olt):
        self.olt = olt
        self.macs = [onu.mac for onu in olt.waiting(PORT)]
        self.bind(ID, 0)
        self.onu = olt.onu(PORT, ID)
        self.sla = self.onu.sla()
        olt.step("60 s")  # lets the OLT learn the addresses of the stations
        assert olt.stations(PORT)

    def bind(self, onu_id, arrival):
        return self.olt.bind(PORT, self.macs[arrival], onu_id=onu_id, texts=("customer",))

    def id_of(self, arrival):
        return self.olt.find(self.macs[arrival]).onu_id

    def expect_order(self):
        assert len(self.olt.onus(PORT)) == 4 and self.id_of(0) == ID
        assert self.onu.sla() == self.sla
        assert self.onu.config()[0].mac == self.macs[0] and self.onu.links()
        self.olt.stations(PORT)  # without an exception: a service that began anew has learned none yet


@pytest.fixture
def home(simulator):
    made = Home(simulator(arrivals=4, silent=0).olt())
    yield made
    made.olt.call.timeout = None


@pytest.fixture
def mortal(simulator, tmp_path):
    """The same with a service that may die, which is a process of its own."""
    return Home(simulator(arrivals=4, silent=0, state=tmp_path / "state", child=True,
                          program=os.environ["PONSIM"]).olt())


def test_a_lost_answer_is_a_failure_but_the_change_is_made(home):
    home.olt.fault("lost", command="BSP_CMD_ONU_BIND", count=1)
    home.olt.call.timeout = 0.05
    with pytest.raises(IpcError) as lost:
        home.bind(6, 1)
    home.olt.call.timeout = None
    assert lost.value.number == LOST and home.id_of(1) == 6
    home.expect_order()


def test_a_lost_answer_to_a_datagram_is_a_failure(home):
    home.olt.fault("lost", command="BSP_CMD_ONU_LINK_STATE_GET", count=1)
    home.olt.call.timeout = 0.05
    with pytest.raises(IpcError):
        home.onu.links()
    home.olt.call.timeout = None
    home.expect_order()


def test_a_late_answer_in_time_is_an_answer(home):
    home.olt.fault("late 20", count=2)
    assert home.bind(6, 1) == 6 and home.onu.links()
    home.expect_order()


def test_an_answer_too_late_is_nobodys(home):
    home.olt.call.timeout = 0.05
    for command, ask in (("BSP_CMD_VIEW_ONU_INFO_WEB", lambda: home.olt.onus(PORT)),
                         ("BSP_CMD_ONU_LINK_STATE_GET", home.onu.links)):
        home.olt.fault("late 60000", command=command, count=1)
        with pytest.raises(IpcError) as late:
            ask()
        assert late.value.number == LOST
    home.olt.call.timeout = None
    home.expect_order()


def test_a_late_answer_holds_up_nobody_else(home):
    home.olt.fault("late 60000", command="BSP_CMD_ONU_BIND")
    failed = []

    def wait():
        try:
            type(home.olt)(home.olt.simulator, None, timeout=1).bind(PORT, home.macs[1], onu_id=6)
        except IpcError as error:
            failed.append(error.number)

    waiting = threading.Thread(target=wait)
    waiting.start()
    for _ in range(3):
        home.expect_order()
    waiting.join()
    assert failed == [LOST]


def test_a_duplicated_answer_is_not_the_next_ones(home):
    home.olt.fault("duplicated 2", command="BSP_CMD_VIEW_ONU_INFO_WEB", count=1)
    assert len(home.olt.onus(PORT)) == 4
    with pytest.raises(IpcError) as broken:
        home.onu.sla()
    assert broken.value.number == BROKEN
    home.expect_order()


def test_another_status_is_an_exception_with_its_number(home):
    home.olt.fault("status 77", command="BSP_CMD_ONU_BIND", count=1)
    with pytest.raises(StatusError) as other:
        home.bind(6, 1)
    assert (other.value.number, other.value.name) == (77, None) and home.id_of(1) == 6
    home.expect_order()


@pytest.mark.parametrize("fault", ["no-result", "big-result", "bad-result cut", "bad-result text", "bad-result type",
                                   "bad-result columns"])
def test_a_result_that_is_no_table_is_not_taken_for_an_empty_one(home, fault):
    home.olt.fault(fault, count=1)
    with pytest.raises(AnswerError):
        home.olt.onus(PORT)
    home.expect_order()


def test_a_short_answer_reads_as_zeros_behind_its_end(home):
    for left in (0, 1, 4, 100):
        home.olt.fault(f"short {left}", count=1)
        assert set(home.onu.sla().values()) == {0}
    home.olt.fault("short 20", count=2)
    assert home.olt.summary() == ""
    with pytest.raises(AnswerError):
        home.onu.config()
    home.expect_order()


def test_an_oversized_answer_is_cut(home):
    home.olt.fault("oversized 8192", count=2)
    assert home.onu.sla() == home.sla
    assert len(home.olt.summary()) < 1024
    home.expect_order()


def test_a_text_without_its_end_ends_with_the_answer(home):
    home.olt.fault("unterminated", count=3)
    assert len(home.olt.summary()) == 1023
    for ask in (home.onu.config, home.onu.links):
        with pytest.raises(AnswerError):
            ask()
    home.expect_order()


def test_a_service_that_dies_before_the_change_leaves_nothing_of_it(mortal):
    mortal.olt.fault("kill before", command="BSP_CMD_ONU_BIND")
    for _ in range(2):  # the second time it is gone
        with pytest.raises(IpcError):
            mortal.bind(6, 1)
    mortal.olt.simulator.restart()
    assert mortal.id_of(1) is None
    mortal.expect_order()
    assert mortal.bind(6, 1) == 6, "the fault went with it"


def test_a_service_that_dies_after_the_change_has_made_it(mortal):
    mortal.olt.fault("kill after", command="BSP_CMD_ONU_BIND")
    with pytest.raises(IpcError):
        mortal.bind(6, 1)
    mortal.olt.simulator.restart()
    assert mortal.id_of(1) == 6
    mortal.expect_order()


def test_all_at_once_do_no_harm(home):
    for fault in ("short 60", "oversized 8192", "duplicated 3", "no-result", "big-result", "bad-result", "unterminated",
                  "late 1", "status 77"):
        home.olt.control(f"fault {fault} percent=15")
    answered = 0
    for _ in range(50):
        for ask in (home.onu.sla, home.olt.summary, home.onu.config, home.onu.links,
                    lambda: home.olt.onus(PORT), lambda: home.olt.stations(PORT)):
            try:
                ask()
                answered += 1
            except BspError:
                pass  # each of them is one of this package, and nothing else is raised
    assert 0 < answered < 300
    home.olt.clear_faults()
    for ask in (home.onu.links, lambda: home.olt.onus(PORT)):  # the last duplicates
        try:
            ask()
        except BspError:
            pass
    home.expect_order()


def test_an_unknown_command_is_answered_as_such(home):
    with pytest.raises(StatusError) as unknown:
        home.olt.call(raw.bsp_pon_cfg, 9999, PORT, None)
    assert unknown.value.name == "PON_ERR_UNKNOWN_COMMAND"
