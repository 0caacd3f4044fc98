"""Values of fields and rows: what they mean, and what is refused."""

import pytest
from bsp_pon import AnswerError, Onu, Unknown, records, rows, to_dataframe, to_records
from bsp_pon._layout import Layout
from bsp_pon._tables import LAYOUTS
from bsp_pon.addresses import mac_bytes

SIZES = {name: getattr(records, name).SIZE for name in dir(records) if name.startswith("bsp_")}


@pytest.mark.parametrize("layout", LAYOUTS.values(), ids=lambda layout: layout.name)
def test_what_is_read_can_be_written_again(layout):
    # Bytes that are all 1 are within the range of few fields, so those that are refused are left out, each by name.
    content = bytes(1 + at % 2 for at in range(SIZES[layout.record]))
    values = layout.read(content)
    for field in layout.fields:
        counts = any(other.counter == field.name for other in layout.fields)
        if field.condition or field.decider or field.counter or counts:
            continue
        alone = Layout(layout.name, layout.record, (), False, "", False, None, "", (field,))
        written = bytearray(len(content))
        try:
            alone.write({field.name: values[field.name]}, written)
        except ValueError as error:
            assert str(error).startswith(f"{field.name}: "), error
            continue
        assert alone.read(bytes(written)) == alone.read(content)


@pytest.mark.parametrize("setting, fields, message", [
    ("vlan", {"mode": "nothing"}, "mode: 'nothing' is not one of transparent, tag"),
    ("vlan", {"pvid": "x"}, "pvid: 'x' is not a number from"),
    ("vlan", {"user": [1] * 99}, "user: a list of at most"),
    ("vlan", {"colour": 1}, "colour: not a field of onu_vlan_set; known are mode, count"),
    ("wan", {"index": 1, "mode": "bridge", "address": "10.0.0.1"}, "address: has a meaning only where ip_mode is"),
    ("wan", {"index": 1, "mode": "route", "ip_mode": "static", "address": "10.0.0.256"}, "address: "),
])
def test_what_an_onu_cannot_have_is_refused_before_anything_is_sent(setting, fields, message):
    def call(*_args, **_kwargs):
        raise AssertionError("something was sent")

    with pytest.raises(ValueError) as refused:
        Onu(call, 1, 5).set(setting, uni=1, **fields)
    assert str(refused.value).startswith(message)


def test_settings_are_listed():
    assert {"vlan", "wan", "rate_limit", "mgmt"} <= set(Onu.settings())
    assert "pvid" in Onu.fields_of("vlan")
    with pytest.raises(Unknown, match="known are"):
        Onu.fields_of("nothing")


def test_addresses():
    for text in ("02:00:5e:10:00:01", "02-00-5E-10-00-01", "0200.5e10.0001", b"\2\0\x5e\x10\0\1"):
        assert mac_bytes(text) == b"\2\0\x5e\x10\0\1"
    for text in ("", "02:00:5e:10:00", "zz:00:5e:10:00:01", "02:00:5e:10:00:01:02"):
        with pytest.raises(ValueError, match="is no MAC address"):
            mac_bytes(text)



def test_a_row_is_checked():
    cells = {"pon_port": 1, "bound": 2, "online": 1, "waiting": 0, "min_distance": 10, "max_distance": 20}
    row = rows.BaseInfo.read({**cells, "more": 1})
    assert row.to_record() == cells
    for wrong in ({**cells, "bound": "2"}, {**cells, "bound": True}, {**cells, "bound": None}, {}):
        with pytest.raises(AnswerError, match="base_info: "):
            rows.BaseInfo.read(wrong)


def test_records_and_data_frames(olt):
    olt.bind(3, olt.waiting(3)[0].mac, onu_id=5)
    found = olt.onus(3)
    dictionaries = to_records(found)
    assert [each["mac"] for each in dictionaries] == [onu.mac for onu in found]
    frame = to_dataframe(found)
    assert list(frame.columns) == list(dictionaries[0])
    assert str(frame["onu_id"].dtype) == "Int64" and frame["onu_id"].dropna().tolist() == [5]
    assert to_dataframe([]).empty
