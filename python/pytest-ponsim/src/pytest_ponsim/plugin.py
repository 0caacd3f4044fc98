"""The fixtures, and what is told of a test that fails.

simulator: starts simulators for the test, as simulator(scenario=...), and stops them at its end.
olt: an OLT of a simulator of its own. A marker says which one: @pytest.mark.ponsim(scenario=..., ports=...).

Each test process has its own simulators, so tests can run side by side. What a test exchanged with its OLTs is
recorded; of a test that fails, the report has the recording as `ponctl trace` shows it, and where the file is.
"""

from __future__ import annotations

import shutil
import subprocess
from collections.abc import Callable, Generator, Iterator
from pathlib import Path
from typing import Any, Protocol

import pytest

from .simulator import SimulatedOlt, Simulator

_RECORDINGS = pytest.StashKey[list[Path]]()
_LINES = 60  # of a recording, in a report


class StartSimulator(Protocol):
    def __call__(self, scenario: Any = None, **options: Any) -> Simulator: ...


def pytest_addoption(parser: pytest.Parser) -> None:
    group = parser.getgroup("ponsim")
    group.addoption("--ponsim-child", action="store_true", help="run simulators as processes of their own")
    group.addoption("--ponsim-program", metavar="FILE", help="the ponsim that such a process runs; else that in PATH")
    group.addoption("--ponctl-program", metavar="FILE", default="ponctl", help="the ponctl that shows recordings")


def pytest_configure(config: pytest.Config) -> None:
    config.addinivalue_line("markers", "ponsim(scenario=None, **options): what the fixture olt simulates")


@pytest.fixture
def simulator(request: pytest.FixtureRequest, tmp_path_factory: pytest.TempPathFactory) -> Iterator[StartSimulator]:
    """Starts simulators: simulator(scenario=TEXT_OR_PATH, ports=..., arrivals=..., state=...)."""
    started: list[Simulator] = []
    folder = tmp_path_factory.mktemp("ponsim")
    recordings = request.node.stash.setdefault(_RECORDINGS, [])

    def start(scenario: Any = None, **options: Any) -> Simulator:
        record = folder / f"recording-{len(started) + 1}"
        if request.config.getoption("--ponsim-child"):
            options.setdefault("child", True)
        options.setdefault("program", request.config.getoption("--ponsim-program"))
        options.setdefault("record", record)
        begun = Simulator(scenario, **options)
        started.append(begun)
        recordings.append(Path(options["record"]))
        return begun

    yield start
    for each in reversed(started):
        each.stop()


@pytest.fixture
def olt(request: pytest.FixtureRequest, simulator: Callable[..., Simulator]) -> SimulatedOlt:
    """An OLT whose time stands still until the test steps it: olt.step("5 s")."""
    marker = request.node.get_closest_marker("ponsim")
    return simulator(*marker.args, **marker.kwargs).olt() if marker else simulator().olt()


@pytest.hookimpl(hookwrapper=True)  # type: ignore[misc]  # pluggy declares no types
def pytest_runtest_makereport(item: pytest.Item) -> Generator[None, Any, None]:
    outcome = yield
    report = outcome.get_result()
    if report.failed:
        for recording in item.stash.get(_RECORDINGS, []):
            # Of several OLTs each has a file, with its name behind a dot.
            for file in sorted(recording.parent.glob(recording.name + "*")):
                text = shown(file, item.config.getoption("--ponctl-program"))
                report.sections.append((f"recording of ponsim: {file}", text))


def shown(recording: Path, program: str) -> str:
    """Returns the end of a recording, as ponctl shows it."""
    if shutil.which(program) is None:
        return f"show it with: ponctl trace {recording}"
    done = subprocess.run([program, "trace", str(recording)], capture_output=True, text=True, timeout=30, check=False)
    lines = (done.stdout + done.stderr).splitlines()
    if len(lines) > _LINES:
        left_out = f"({len(lines) - _LINES} lines before; all are shown with: ponctl trace {recording})"
        lines = [left_out, *lines[-_LINES:]]
    return "\n".join(lines)
