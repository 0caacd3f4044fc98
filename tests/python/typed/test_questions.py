"""Each question of the catalogue is asked, and its answer reads."""

import pytest
from bsp_pon import Row, StatusError
from bsp_pon._queries import QUERIES, SETTINGS
from bsp_pon._tables import COMMANDS, LAYOUTS

GIVEN = {"pon_port": 3, "onu_id": 1, "uni_port": 1, "port": 3, "index": 1, "profile_id": 1}


@pytest.fixture(scope="module")
def olt():
    from pytest_ponsim import Simulator

    with Simulator(arrivals=16, silent=0) as simulator:
        served = simulator.olt()
        for onu in served.waiting(3):
            served.bind(3, onu.mac)
        served.step("100 s")
        yield served


@pytest.mark.parametrize("name", QUERIES)
def test_a_question_is_answered(name, olt):
    given = {word: GIVEN.get(word, 0) for word in QUERIES[name].given if word != "out_len"}
    try:
        answered = olt.ask(name, **given)
    except StatusError as error:
        assert error.name is not None and error.name != "PON_ERR_UNKNOWN_COMMAND", error
        return
    if isinstance(answered, list):
        assert all(isinstance(row, Row) for row in answered)
    else:
        layout = LAYOUTS[QUERIES[name].read_by]
        assert answered and set(answered) <= {field.name for field in layout.fields}
        assert all(layout.field(field).offset >= QUERIES[name].offset for field in answered)


def test_most_questions_are_answered_with_values(olt):
    refused = []
    for name, query in QUERIES.items():
        try:
            olt.ask(name, **{word: GIVEN.get(word, 0) for word in query.given if word != "out_len"})
        except StatusError as error:
            refused.append((name, error.name))
    assert len(refused) < len(QUERIES) / 5, refused


def test_what_is_wrong_with_a_question_is_told(olt):
    with pytest.raises(LookupError, match="nothing is no question to the OLT; Olt.questions"):
        olt.ask("nothing")
    with pytest.raises(TypeError, match="takes pon_port, onu_id, not pon_port"):
        olt.ask("onu_sn", pon_port=3)


@pytest.mark.parametrize("name", SETTINGS)
def test_a_setting_has_a_command_and_what_tells_how_it_stands(name):
    layout, command, _ = SETTINGS[name]
    assert command in COMMANDS
    present = LAYOUTS[layout].present
    assert not present or present.removeprefix("BSP_CMD_").lower().removesuffix("_get") in QUERIES
