"""Values of fields and rows: what they mean, and what is refused."""

import pickle

import pytest
from bsp_pon import AnswerError, IpcError, Olt, Onu, StatusError, Unknown, records, rows, to_dataframe, to_records
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


@pytest.mark.parametrize("call, kind, message", [
    (lambda olt: olt.bind(1, "02:00:5e:10:00"), ValueError, "'02:00:5e:10:00' is no MAC address, as 02:00:5e:10:00:01"),
    (lambda olt: olt.bind(1, 5), TypeError, "5 is no MAC address"),
    (lambda olt: olt.bind(99, olt.waiting(1)[0].mac), StatusError, "the OLT has no such PON port"),
    (lambda olt: olt.bind("1", olt.waiting(1)[0].mac), TypeError, "pon_port: a number is needed, not '1'"),
    (lambda olt: olt.bind(1, olt.waiting(1)[0].mac, onu_id=-1), OverflowError, "onu_id: -1 is not a number from 0 to"),
    (lambda olt: olt.bind(1, olt.waiting(1)[0].mac, texts="customer"), ValueError, "texts: up to 3 texts are needed"),
    (lambda olt: olt.bind(1, olt.waiting(1)[0].mac, texts=("", "x" * 64)), ValueError, "texts: at most 63 bytes"),
    (lambda olt: olt.onus("all"), TypeError, "pon_port: a number is needed, not 'all'"),
    (lambda olt: olt.chip.pon_stats("1"), TypeError, "port: a number is needed, not '1'"),
    (lambda olt: olt.onu(1, 77).info(), StatusError, "no ONU is bound to this id"),
    (lambda olt: olt.onu(1, 5).describe("x" * 128), ValueError, "text: at most 127 bytes of UTF-8 are kept, not 128"),
    (lambda olt: olt.onu(1, 5).describe(5), TypeError, "text: a text is needed, not 5"),
    (lambda olt: olt.onu(1, 5).push_image(b"", "1"), ValueError, "image: there is nothing to send"),
    (lambda olt: olt.onu(1, 5).set_sla(), TypeError, "nothing to set; the parts of an SLA are fixed, assured, maximum"),
    (lambda olt: olt.onu(1, 5).set("vlan", pvid=5), TypeError, "vlan is a setting of a UNI port: uni is needed"),
    (lambda olt: olt.onu(1, 5).set("vlan", uni=[1], pvid=5), TypeError, "vlan: uni is the number of a UNI port"),
    (lambda olt: olt.reboot(1, [200]), ValueError, "onu_set: 200 is not a number from 0 to 127"),
    (lambda olt: olt.set_range(1, 500, 100), ValueError, "nearest: 500 is not a number from 0 to 100 m"),
    (lambda olt: olt.add_loid(1, "x" * 25), ValueError, "loid: at most 24 bytes"),
    (lambda olt: olt.p2p.set_entry(1, 32, "drop"), ValueError, "number: 32 is not a number from 0 to 31"),
    (lambda olt: olt.p2p.configure(1, rest="x"), ValueError, "rest: 'x' is not one of drop, forward"),
    (lambda olt: olt.loop_detection.configure(interval="5"), TypeError, "interval: a number is needed, not '5'"),
    (lambda olt: olt.fdb.flush(side="pon"), ValueError, "side: 'pon' is not one of both, PON, network"),
    (lambda olt: olt.modules.set_light_loss_level(1, -99), ValueError, "level: -99 is not a number from -40 to 0 dBm"),
    (lambda olt: olt.profiles.store_line(""), ValueError, "name: a profile needs one"),
    (lambda olt: olt.config.load("x"), TypeError, "a Configuration is needed, not 'x'"),
    (lambda olt: olt.find("02:00:00:00:00:09"), Unknown, "there is no ONU 02:00:00:00:00:09"),
    (lambda olt: olt.release(1), TypeError, "an onu_id or a mac is needed; release_all releases all"),
    (lambda olt: olt.reject(1), TypeError, "either an onu_id or a mac is needed"),
    (lambda olt: olt.set_auth_mode(1, "x"), ValueError, "mode: 'x' is not one of mac, loid, loid-password, hybrid"),
    (lambda olt: olt.set_oui("xyz"), ValueError, "'xyz' is no OUI, as 11:22:33"),
    (lambda olt: olt.chip.set_llid(1, 2, frames="x"), ValueError, "frames: 'x' is not one of learned, "),
    (lambda olt: olt.chip.set_ge_phy(1, "x"), ValueError, "control: 'x' is not a list of some of reset, loopback"),
    (lambda olt: olt.loop_detection.configure(recovery="x"), ValueError, "recovery: 'x' is not one of auto"),
    (lambda olt: olt.p2p.set_entry(1, 3, "remove"), ValueError, "action: 'remove' is not one of forward, drop;"),
    (lambda olt: olt.profiles.list("lines"), ValueError, "'lines' is no kind of profile; known are line, sla, alarm"),
    (lambda olt: olt.ask("sn"), Unknown, "sn is no question to the OLT; like it are view_onu_sn, onu_sn"),
    (lambda olt: olt.wait_online(1, 9, timeout=2), TimeoutError, "ONU 1/9 is not online after 2 s"),
    (lambda olt: Olt("/nowhere").info(), IpcError, "nobody serves the module; looked in /nowhere, and"),
    (lambda olt: Olt(timeout=-1), ValueError, "timeout: -1 is not a number of seconds above 0"),
    (lambda olt: Olt(timeout="2"), TypeError, "timeout: a number of seconds is needed, not '2'"),
])
def test_what_is_wrong_is_told(call, kind, message, olt):
    with pytest.raises(kind, match=message) as refused:
        call(olt)
    assert type(refused.value) is kind


def test_objects_say_what_they_are():
    olt = Olt("/run/north")
    assert (repr(olt), repr(olt.onu(1, 5))) == ("Olt('/run/north')", "Onu(1/5)")


def test_exceptions_can_be_sent_to_another_process():
    for error in (StatusError(4005, "bsp_x"), IpcError(-3, "late", "bsp_x")):
        again = pickle.loads(pickle.dumps(error))
        assert (type(again), str(again), again.number) == (type(error), str(error), error.number)


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
    assert frame.attrs["units"] == {"distance": "m"}
    empty = to_dataframe([], rows.OnuInfo)
    assert to_dataframe([]).empty and empty.empty and list(empty.columns) == list(frame.columns)
    assert empty.dtypes.equals(frame.dtypes)
