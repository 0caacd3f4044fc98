"""Every operation, called through Python and through C with the same arguments, sends and delivers the same."""

import inspect
import operator

import pytest
from arguments import OPERATIONS, Arguments, catalogue, pattern
from bsp_pon import StatusError, onu_ids, raw
from recording import Sent, ffi, library, script

NAME = operator.attrgetter("name")
FUNCTIONS = [function for family in catalogue.families for function in family.functions]


def test_all_functions_of_the_header_are_there():
    assert (len(OPERATIONS), len(FUNCTIONS)) == (234, 3)
    names = {each.name for each in [*OPERATIONS, *FUNCTIONS]}
    assert set(raw.OPERATIONS) == names == {name for name in dir(library) if name.startswith(("bsp_", "ont_", "plat_"))}
    assert all(callable(getattr(raw, name)) for name in names)


def answer_of(operation):
    """Returns the bytes of an answer. A word that says how long something is says no more than there is."""
    content = bytearray(pattern(operation.response_size or 8))
    if operation.record.name == "bsp_profile_msg":
        content[8:12] = (8).to_bytes(4, "little")
    return bytes(content)


def called(operation):
    """Calls the operation both ways. Returns the arguments, what each sent, and what Python returned."""
    arguments = Arguments(operation)
    script(0, answer_of(operation))
    assert getattr(library, operation.name)(*arguments.c) == 0
    by_c = Sent()
    script(0, answer_of(operation))
    delivered = getattr(raw, operation.name)(*arguments.python)
    return arguments, by_c, Sent(), delivered


@pytest.mark.parametrize("operation", OPERATIONS, ids=NAME)
def test_an_operation_is_the_same_call(operation):
    arguments, by_c, by_python, delivered = called(operation)
    assert by_python.request == by_c.request
    assert by_python.where == by_c.where
    values = [] if delivered is None else list(delivered) if isinstance(delivered, tuple) else [delivered]
    assert len(values) == len(arguments.outputs)
    for value, compared in zip(values, arguments.outputs):
        from_python, from_c = compared(value)
        assert from_python == from_c
    if hasattr(arguments, "record"):
        from_python, from_c = arguments.record
        assert bytes(from_python) == ffi.buffer(from_c)[:]


def deaf(operation):
    """Whether the operation does not tell its caller the service's status word."""
    return "dropped" in operation.odd.get("status", "") or "whatever the service" in operation.odd.get("status", "")


@pytest.mark.parametrize("operation", [each for each in OPERATIONS if not deaf(each)], ids=NAME)
def test_a_status_word_is_an_exception(operation):
    script(4005, answer_of(operation))
    with pytest.raises(StatusError) as caught:
        getattr(raw, operation.name)(*Arguments(operation).python)
    assert (caught.value.number, caught.value.operation) == (4005, operation.name)


@pytest.mark.parametrize("operation", OPERATIONS, ids=NAME)
def test_an_operation_is_described(operation):
    function = getattr(raw, operation.name)
    signature = inspect.signature(function)
    assert signature.return_annotation is not inspect.Signature.empty
    for name, parameter in signature.parameters.items():
        assert parameter.annotation is not inspect.Parameter.empty
        assert f"\n        {name}: " in function.__doc__
    size = 28 if operation.record.payload else operation.record.size
    for part in (f"{size} bytes", "StatusError", "IpcError"):
        assert part in " ".join(function.__doc__.split())


WITH_BLOCKS = [each for each in OPERATIONS if any(a.type == "block" and a.size for a in each.args.values())]


@pytest.mark.parametrize("operation", WITH_BLOCKS, ids=NAME)
def test_a_block_of_another_size_is_refused(operation):
    arguments = Arguments(operation).python
    at = next(index for index, given in enumerate(arguments) if isinstance(given, bytes))
    arguments[at] += b"x"
    with pytest.raises(ValueError, match="bytes are needed"):
        getattr(raw, operation.name)(*arguments)


def test_a_number_that_is_too_large_is_refused():
    for number in (-1, 1 << 32):
        with pytest.raises(OverflowError):
            raw.bsp_pon_no_bind_onu_all(number)


def test_a_text_with_a_zero_byte_is_refused():
    with pytest.raises(ValueError, match="text: a text ends at a zero byte"):
        raw.bsp_pon_onu_description(1, 2, "a\0b")


def test_texts_and_blocks_may_be_none():
    script(0, b"")
    raw.bsp_pon_bind_onu_spec_id(1, 2, b"\2\0\0\0\0\1", None, None, 0, None)
    by_python = Sent()
    script(0, b"")
    library.bsp_pon_bind_onu_spec_id(1, 2, b"\2\0\0\0\0\1", ffi.NULL, ffi.NULL, 0, ffi.NULL)
    assert by_python.request == Sent().request


def c_set(members):
    place = ffi.new("onu_id_set *")
    for member in members:
        place.words[member // 32] |= 1 << member % 32
    return place


@pytest.mark.parametrize("members", [[], [0], [1, 2, 3, 7], [31, 64], list(range(120, 128)), list(range(128))], ids=str)
def test_sets_of_onu_ids_are_told_as_in_c(members):
    ids, place = onu_ids.onu_id_set(members), c_set(members)
    assert bytes(ids) == ffi.buffer(place)[:]
    assert list(onu_ids.onu_id_set.from_bytes(bytes(ids))) == members
    assert raw.ont_id_res_exists_ont(ids) == library.ont_id_res_exists_ont(place)
    for last in (127, 128):
        text = ffi.new("char[]", 402)
        library.ont_id_res_str(place, last, text)
        assert raw.ont_id_res_str(ids, last) == ffi.string(text).decode()
    text = ffi.new("char[]", 402)
    library.ont_id_res_str_expand(place, 0, text)
    assert raw.ont_id_res_str_expand(ids, 0) == ffi.string(text).decode()
