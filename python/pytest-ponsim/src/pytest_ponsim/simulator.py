"""Simulated OLTs in the process of the test, or as a child of it."""

from __future__ import annotations

import os
import shutil
import tempfile
from types import TracebackType

from bsp_pon import IpcError, Olt

from ._native import ffi, lib
from .duration import milliseconds

_SAID = 1 << 16
_LONGEST_TEMPORARY = 40  # of a folder in which the names of sockets still fit


class SimulatorError(Exception):
    """The simulator does not start, or refuses what it is told."""


class SimulatedOlt(Olt):
    """An OLT of a simulator. Its time stands still until it is stepped, also while something is waited for."""

    def __init__(self, simulator: Simulator, name: str | None, timeout: float | None = None) -> None:
        super().__init__(simulator.directory(name), timeout)
        self.simulator = simulator
        self.name = name

    def step(self, duration: str | float) -> None:
        """Lets model time pass, as olt.step("5 s"), with all that happens by then."""
        self.simulator.step(duration, self.name)

    def now(self) -> float:
        """Returns how much model time has passed, in seconds."""
        return self.simulator.now(self.name)

    def control(self, line: str) -> str:
        """Lets something happen, by a line of `ponsim ctl`, as "power 1 kitchen off". Returns what it says."""
        return self.simulator.control(line, self.name)

    def fault(self, kind: str, *, command: str | None = None, count: int | None = None) -> None:
        """Makes exchanges go wrong: olt.fault("status 4001", count=1), olt.fault("lost", command="BSP_CMD_ONU_BIND").
        """
        words = ["fault", kind]
        if command is not None:
            words.append(f"command={command}")
        if count is not None:
            words.append(f"count={count}")
        self.control(" ".join(words))

    def clear_faults(self) -> None:
        """Ends all faults."""
        self.control("fault clear")

    def pause(self, seconds: float) -> None:
        """Lets model time pass between two looks at the OLT."""
        self.step(seconds)


class Simulator:
    """One ponsim with its OLTs.

    scenario: what is there and what happens, as a text in the language of scenarios, or the path of such a file.
        Without one there is one OLT, which `seed`, `ports`, `arrivals` and `silent` describe; None is ponsim's default.
    state: a file, or a folder for several OLTs, that keeps what the OLT is for the next start.
    record: a file to which all that is exchanged is appended.
    child: in a process of its own, which runs `program`.
    """

    def __init__(self, scenario: str | os.PathLike[str] | None = None, *, seed: int = 0, ports: int = 0,
                 arrivals: int | None = None, silent: int | None = None, state: str | os.PathLike[str] | None = None,
                 record: str | os.PathLike[str] | None = None, child: bool = False, program: str | None = None) -> None:
        for name, number in (("seed", seed), ("ports", ports), ("arrivals", arrivals), ("silent", silent)):
            if number is not None and number < 0:
                raise ValueError(f"{name}: {number} is below 0")
        self.record = None if record is None else os.fspath(record)
        self._folder: str | None = None
        self._names: set[str | None] = set()
        self._program = program if child else None
        self._child = child
        self._texts: list[object] = []
        options = self._options = ffi.new("bsp_simulator_options *")
        is_file = isinstance(scenario, os.PathLike)
        options.scenario_file = self._text(scenario if is_file else None)
        options.scenario = self._text(None if is_file else scenario)
        options.seed, options.ports = seed, ports
        options.arrivals, options.silent = _or_none(arrivals), _or_none(silent)
        options.state, options.record = self._text(state), self._text(record)
        self._folder = _short_folder()
        options.socket_dir = self._text(self._folder)
        self._begin()

    def olt(self, name: str | None = None, timeout: float | None = None) -> SimulatedOlt:
        """Returns the OLT of a name, or the only one."""
        made = SimulatedOlt(self, name, timeout)
        self._names.add(name)
        return made

    def directory(self, name: str | None = None) -> str:
        """Returns the folder of an OLT's sockets."""
        found = lib.bsp_simulator_directory(self._running(), _name(name))
        if not found:
            wrong = f"{name}: there is no OLT of this name" if name else "there are several OLTs; name one"
            raise SimulatorError(wrong)
        return os.fsdecode(ffi.string(found))

    def control(self, line: str, name: str | None = None) -> str:
        """Carries out a line of `ponsim ctl`."""
        self._refuse_suicide(line)
        said = ffi.new("char[]", _SAID)
        failed = lib.bsp_simulator_control(self._running(), _name(name), line.encode(), said, _SAID)
        answer: str = ffi.string(said).decode("utf-8", "replace")
        if failed:
            raise SimulatorError(f"{line}: {answer}")
        return answer

    def step(self, duration: str | float, name: str | None = None) -> None:
        """Lets model time pass, for one OLT or for all of them."""
        if lib.bsp_simulator_step(self._running(), _name(name), milliseconds(duration)):
            raise SimulatorError(f"time does not pass by {duration}")

    def now(self, name: str | None = None) -> float:
        """Returns how much model time has passed, in seconds."""
        passed: int = lib.bsp_simulator_now(self._running(), _name(name))
        if passed < 0:
            raise SimulatorError("the simulator does not say how much time has passed")
        return passed / 1000

    def kill(self, name: str | None = None) -> None:
        """Ends its process at once, in the middle of everything, as a crash of the service. It needs child=True."""
        line = "fault kill before"
        self._refuse_suicide(line)
        reached = self.olt(name)
        try:
            self.control(line, name)
            reached.info()
        except (IpcError, SimulatorError):  # whoever asks first ends it, so that it may not have said that it will
            return
        raise SimulatorError("the simulator does not end")

    def restart(self) -> None:
        """Stops it where it still runs, and starts it again at the same place, where its OLTs find it.

        An OLT is then as its state has it. Without `state` it is a new one.
        """
        running = self._running()
        for name in self._names:
            folder = self.directory(name)
            self._folder = self._folder or (os.path.dirname(folder) if name else folder)
        lib.bsp_simulator_stop(running)
        self._handle = None
        self._options.socket_dir = self._text(self._folder)
        self._begin()

    def stop(self) -> None:
        """Stops it. Its OLTs cannot be reached any more. To stop it again does nothing."""
        if self._handle:
            lib.bsp_simulator_stop(self._handle)
            self._handle = None
            self._remove_folder()

    def __enter__(self) -> Simulator:
        return self

    def __exit__(self, kind: type[BaseException] | None, error: BaseException | None,
                 trace: TracebackType | None) -> None:
        self.stop()

    def _begin(self) -> None:
        error = ffi.new("char[]", 4096)
        if self._child:
            self._handle = lib.bsp_simulator_spawn(self._options, self._text(self._program), error, 4096)
        else:
            self._handle = lib.bsp_simulator_start(self._options, error, 4096)
        if not self._handle:
            self._remove_folder()
            raise SimulatorError(ffi.string(error).decode("utf-8", "replace"))

    def _refuse_suicide(self, line: str) -> None:
        if not self._child and line.split()[:2] == ["fault", "kill"]:
            raise SimulatorError(f"{line}: it would end the process of the test; start the simulator with child=True")

    def _text(self, value: str | os.PathLike[str] | None) -> object:
        """Returns a text for C, which lives as long as this."""
        if value is None:
            return ffi.NULL
        self._texts.append(ffi.new("char[]", os.fsencode(value)))
        return self._texts[-1]

    def _running(self) -> object:
        if not self._handle:
            raise SimulatorError("the simulator is stopped")
        return self._handle

    def _remove_folder(self) -> None:
        if self._folder:
            shutil.rmtree(self._folder, ignore_errors=True)


def _short_folder() -> str | None:
    """Returns a folder for sockets where those of the temporary folder would have names that are too long."""
    if len(tempfile.gettempdir()) <= _LONGEST_TEMPORARY:
        return None
    return tempfile.mkdtemp(prefix="ponsim.", dir="/tmp")


def _or_none(number: int | None) -> int:
    if number is None:
        return 0
    none: int = lib.BSP_SIMULATOR_NONE
    return number or none


def _name(name: str | None) -> object:
    return ffi.NULL if name is None else name.encode()
