"""The methods that are made of the catalogue do what their names say, and none is missing."""

import ast
import inspect
import operator
import pathlib
import re
import typing

import pytest
from bsp_pon import Olt, Onu, StatusError, aio, answers, onu_ids, parts, raw
from bsp_pon import _async as made
from bsp_pon._queries import QUERIES, SETTINGS
from bsp_pon._tables import LAYOUTS

PACKAGE = pathlib.Path(inspect.getfile(Olt)).parent
PAGE = pathlib.Path(__file__).resolve().parents[3] / "docs/python.md"
BY_HAND = {"image_write"}


def used_in(file):
    """Returns the operations that a module calls, by itself or by the name of a question."""
    tree = ast.parse(file.read_text(encoding="utf-8"))
    names = {node.attr for node in ast.walk(tree) if isinstance(node, ast.Attribute)
             and isinstance(node.value, ast.Name) and node.value.id == "raw"}
    asked = {node.value for node in ast.walk(tree) if isinstance(node, ast.Constant) and isinstance(node.value, str)}
    return names | {QUERIES[name].operation for name in asked & QUERIES.keys()}


def test_each_operation_has_a_method_or_is_told_to_have_none():
    modules = [file for file in (*PACKAGE.glob("*.py"), *PACKAGE.glob("parts/*.py"))
               if file.name not in ("raw.py", "_queries.py", "_async.py")]
    used = set().union(*map(used_in, modules)) & set(raw.OPERATIONS)
    used |= {sender for _, _, sender in SETTINGS.values()} | set(dir(onu_ids))
    _, _, table = PAGE.read_text(encoding="utf-8").partition("| operations without a method |")
    listed = set(re.findall(r"`((?:bsp|plat)_\w+)`", table.partition("\n\n")[0]))
    assert set(raw.OPERATIONS) - used == listed
    assert len(used & set(raw.OPERATIONS)) > 190


@pytest.mark.parametrize("name", SETTINGS.keys() - BY_HAND)
def test_a_setting_has_a_method_that_takes_its_fields(name):
    layout = LAYOUTS[SETTINGS[name][0]]
    counters = {field.counter for field in layout.fields}
    method = getattr(Onu, f"set_{name}")
    of_uni = {"uni"} - {field.name for field in layout.fields}
    taken = set(inspect.signature(method).parameters) - {"self"} - of_uni
    assert taken == {field.name for field in layout.fields} - counters
    for field in taken:
        assert f"\n    {field}: " in inspect.getdoc(method)
    given = []
    onu = Onu(None, 1, 5)
    onu._send = lambda setting, uni, fields: given.append((setting, uni, fields))
    values = {field: f"value of {field}" for field in taken - {"index"}}
    places = {parameter: at for at, parameter in enumerate((*of_uni, "index"), 1)
              if parameter in inspect.signature(method).parameters}
    getattr(onu, f"set_{name}")(*places.values(), **values)
    index = {"index": places["index"]} if "index" in places else {}
    assert given == [(name, places.get("uni"), {**values, **index})]


@pytest.fixture(scope="module")
def onus():
    """The objects of ONUs of all kinds, which are monitored and have more than they have at first."""
    from pytest_ponsim import Simulator

    with Simulator(ports=1, arrivals=16, silent=0) as simulator:
        olt = simulator.olt()
        for onu in olt.waiting(1):
            olt.bind(1, onu.mac)
            olt.onu(1, olt.find(onu.mac).onu_id).monitor(True)
        olt.step("20 min")
        made = [olt.onu(1, onu_id) for onu_id in olt.used_ids(1)]
        for onu in made:
            onu.olt = olt
        yield made


def questions():
    hints = {name: typing.get_type_hints(getattr(Onu, name))["return"] for name in dir(Onu) if name.startswith("get_")}
    return [(name, hint) for name, hint in hints.items() if typing.is_typeddict(hint)]


def fits(value, hint):
    if typing.get_origin(hint) is list:
        return isinstance(value, list) and all(fits(each, typing.get_args(hint)[0]) for each in value)
    return isinstance(value, hint)


@pytest.mark.parametrize("name, kind", questions(), ids=str)
def test_an_answer_has_the_keys_and_types_of_its_class(name, kind, onus):
    answered = 0
    for onu in onus:
        of_uni = "uni" in inspect.signature(getattr(onu, name)).parameters
        try:
            answer = getattr(onu, name)(*[1] * of_uni)
        except StatusError as error:
            assert error.name == "PON_ERR_NOT_ABLE"
            continue
        answered += 1
        hints = typing.get_type_hints(kind)
        assert set(answer) == set(hints)
        assert all(fits(answer[key], hint) for key, hint in hints.items()), answer
    assert answered > 0 and kind is getattr(answers, kind.__name__)


def parts_questions():
    found = []
    for name, kind in [("", Olt), *((name, getattr(parts, kind)) for name, kind in (
            ("chip", "Chip"), ("modules", "Modules"), ("p2p", "P2p"), ("loop_detection", "LoopDetection")))]:
        for method, function in inspect.getmembers(kind, inspect.isfunction):
            module, _, of = function.__annotations__.get("return", "").partition(".")
            if module == "answers" and method != "binding":
                found.append((f"{name}.{method}".lstrip("."), getattr(answers, of)))
    return found


@pytest.mark.parametrize("name, kind", parts_questions(), ids=str)
def test_an_answer_of_the_olt_has_the_keys_and_types_of_its_class(name, kind, onus):
    ask = operator.attrgetter(name)(onus[0].olt)
    needed = [each for each in inspect.signature(ask).parameters.values() if each.default is each.empty]
    answer = ask(*[1] * len(needed))
    hints = typing.get_type_hints(kind)
    assert set(answer) == set(hints)
    assert all(fits(answer[key], hint) for key, hint in hints.items()), answer


PAIRS = [(Olt, aio.Olt), (Onu, aio.Onu), *((getattr(parts, name), getattr(made, name)) for name in parts.__all__
                                          if inspect.isclass(getattr(parts, name)) and hasattr(made, name)
                                          and name != "Configuration")]


@pytest.mark.parametrize("one, other", PAIRS, ids=lambda each: each.__name__)
def test_asyncio_has_the_same_methods(one, other):
    def methods(kind):
        return {name: method for name, method in inspect.getmembers(kind, inspect.isfunction)
                if not name.startswith("_") and name != "close"}

    assert methods(one).keys() == methods(other).keys()
    for name, method in methods(other).items():
        synchronous = methods(one)[name]
        if name not in ("wait", "onu"):
            assert str(inspect.signature(method)) == str(inspect.signature(synchronous))
        assert inspect.getdoc(method)
        assert inspect.iscoroutinefunction(method) == (name not in ("onu", "settings", "fields_of", "questions"))


def test_every_public_method_is_described():
    for kind, _ in PAIRS:
        for name, method in inspect.getmembers(kind, inspect.isfunction):
            if not name.startswith("_"):
                assert method.__doc__, name
                taken = inspect.signature(method).parameters
                described = re.findall(r"\n    (\w+): ", inspect.getdoc(method).partition("Args:")[2])
                assert set(described) <= set(taken), name
