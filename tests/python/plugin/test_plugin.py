"""The plugin, in runs of pytest of their own."""

import os
import pathlib

import pytest
from pytest_ponsim import Simulator, SimulatorError
from pytest_ponsim.duration import milliseconds

ONE_OLT = """
    import pathlib

    def test_binds(olt):
        pathlib.Path("directory").write_text(olt.call.directory)
        olt.bind(1, olt.waiting(1)[0].mac, onu_id=5)
        olt.step("5 s")
        assert olt.now() == 5
        assert olt.onus(1)[0].onu_id == {expected}
"""


@pytest.fixture
def run(pytester):
    def run_tests(text, *arguments, apart=False):
        """Runs tests in this process, which is quick, or apart from it."""
        pytester.makepyfile(text)
        words = ["-p", "pytest_ponsim.plugin", "-p", "no:cacheprovider", f"--ponctl-program={os.environ['PONCTL']}"]
        if apart:
            return pytester.runpytest_subprocess(*words, *arguments, timeout=120)
        return pytester.runpytest_inprocess(*words, *arguments)

    return run_tests


def test_a_test_that_passes_leaves_nothing(run):
    result = run(ONE_OLT.format(expected=5))
    result.assert_outcomes(passed=1)
    assert "recording" not in result.stdout.str()
    assert not pathlib.Path(pathlib.Path("directory").read_text()).exists()


def test_a_test_that_fails_shows_what_it_exchanged(run):
    result = run(ONE_OLT.format(expected=6))
    result.assert_outcomes(failed=1)
    result.stdout.fnmatch_lines(
        ["*recording of ponsim: *recording-1*", "*set*BSP_CMD_ONU_BIND*BSP_OK*", "*step 5.000*"])
    assert not pathlib.Path(pathlib.Path("directory").read_text()).exists()


def test_without_ponctl_the_file_is_named(run):
    result = run(ONE_OLT.format(expected=6), "--ponctl-program=no-such-program")
    result.stdout.fnmatch_lines(["show it with: ponctl trace *recording-1"])


def test_tests_run_side_by_side(run):
    result = run("""
        import pytest

        @pytest.mark.parametrize("onu_id", range(1, 9))
        def test_each_has_an_olt_of_its_own(olt, onu_id):
            assert not [onu for onu in olt.onus(2) if onu.onu_id is not None]
            olt.bind(2, olt.waiting(2)[0].mac, onu_id=onu_id)
            olt.step("1 s")
            assert [onu.onu_id for onu in olt.onus(2) if onu.onu_id is not None] == [onu_id]
            assert onu_id != 8, "this one is to fail"
    """, "-p", "xdist", "-n", "2", apart=True)
    result.assert_outcomes(passed=7, failed=1)
    result.stdout.fnmatch_lines(["*gw?* linux*", "- recording of ponsim: *popen-gw?/*recording-1 -", "*step 1.000*"])


def test_sockets_have_short_names_whatever_the_temporary_folder(run, monkeypatch, tmp_path):
    folder = tmp_path / ("long" * 20)
    folder.mkdir()
    monkeypatch.setenv("TMPDIR", str(folder))
    run(ONE_OLT.format(expected=5), apart=True).assert_outcomes(passed=1)
    assert not pathlib.Path(pathlib.Path("directory").read_text()).exists()


def test_simulators_may_be_processes_of_their_own(run):
    result = run(ONE_OLT.format(expected=5), "--ponsim-child", f"--ponsim-program={os.environ['PONSIM']}")
    result.assert_outcomes(passed=1)


def test_a_marker_says_what_is_simulated(run):
    run("""
        import pytest

        SCENARIO = '[[olt]]\\nports = 1\\n[[olt.port]]\\nnumber = 1\\n[[olt.port.onu]]\\nname = "kitchen"\\n'

        @pytest.mark.ponsim(scenario=SCENARIO)
        def test_scenario(olt):
            assert len(olt.ports()) == 1 and len(olt.onus()) == 1

        def test_several(simulator, tmp_path):
            file = tmp_path / "two.toml"
            file.write_text('[[olt]]\\nname = "north"\\nports = 1\\n[[olt]]\\nname = "south"\\nports = 2\\n')
            two = simulator(file)
            assert [len(two.olt(name).ports()) for name in ("north", "south")] == [1, 2]
            two.step("1 min", "south")
            assert (two.now("north"), two.now("south")) == (0, 60)
    """, "--strict-markers").assert_outcomes(passed=2)


def test_faults_are_ordered_and_end(run):
    run("""
        import pytest
        from bsp_pon import IpcError, StatusError

        def test_faults(olt):
            olt.fault("status 4001", count=1)
            with pytest.raises(StatusError):
                olt.onus()
            olt.fault("lost", command="BSP_CMD_ONU_BIND")
            olt.call.timeout = 0.05
            with pytest.raises(IpcError):
                olt.bind(1, olt.waiting(1)[0].mac, onu_id=5)
            olt.clear_faults()
            olt.call.timeout = None
            assert olt.bind(1, olt.waiting(1)[1].mac, onu_id=6) == 6
    """).assert_outcomes(passed=1)


def test_a_service_is_restarted_at_the_same_place(run):
    run("""
        import pytest
        from bsp_pon import IpcError
        from pytest_ponsim import SimulatorError

        def test_stopped(simulator, tmp_path):
            service = simulator(scenario="[[olt]]\\nports = 1\\n", state=tmp_path / "state")
            olt = service.olt()
            olt.bind(1, "02:00:5e:10:00:01", onu_id=5)
            directory = service.directory()
            service.restart()
            assert olt.used_ids(1) == [5] and service.directory() == directory

        def test_several(simulator, tmp_path):
            service = simulator('[[olt]]\\nname = "north"\\nports = 1\\n[[olt]]\\nname = "south"\\nports = 2\\n')
            south = service.olt("south")
            service.restart()
            assert len(south.ports()) == 2 and len(service.olt("north").ports()) == 1

        def test_killed(simulator, tmp_path):
            service = simulator(state=tmp_path / "state", child=True)
            olt = service.olt()
            olt.bind(1, "02:00:5e:10:00:01", onu_id=5)
            service.kill()
            with pytest.raises(IpcError):
                olt.used_ids(1)
            service.restart()
            assert olt.used_ids(1) == [5]

        def test_not_in_this_process(simulator):
            service = simulator()
            for kill in (service.kill, lambda: service.olt().fault("kill after")):
                with pytest.raises(SimulatorError, match="child=True"):
                    kill()
            assert service.olt().ports()
            service.stop()
            with pytest.raises(SimulatorError, match="is stopped"):
                service.restart()
    """, f"--ponsim-program={os.environ['PONSIM']}").assert_outcomes(passed=4)


def test_what_was_exchanged_is_shown_of_each_failure(run):
    """Of several OLTs, and of a fixture that fails before the test."""
    result = run("""
        import pytest

        @pytest.fixture
        def customer(olt):
            olt.bind(1, olt.waiting(1)[0].mac, onu_id=200)

        def test_never_runs(customer):
            pass

        def test_two(simulator):
            two = simulator('[[olt]]\\nname = "north"\\nports = 1\\n[[olt]]\\nname = "south"\\nports = 2\\n')
            assert two.olt("north").ports() == two.olt("south").ports()
    """)
    result.assert_outcomes(failed=1, errors=1)
    result.stdout.fnmatch_lines(["- recording of ponsim: *recording-1 -", "*set*BSP_CMD_ONU_BIND*PON_ERR_BAD_ONU_ID*"])
    for name in ("north", "south"):
        result.stdout.fnmatch_lines([f"- recording of ponsim: *recording-1.{name} -", "TIME*", "*_VIEW_PORT_INFO*"])


def test_mistakes_are_told():
    with pytest.raises(SimulatorError, match="scenario:1: "):
        Simulator("nonsense")
    with Simulator() as simulator:
        with pytest.raises(SimulatorError, match="^cut the rope: "):
            simulator.control("cut the rope")
        with pytest.raises(SimulatorError, match="no OLT of this name"):
            simulator.olt("north")
    with pytest.raises(ValueError, match="arrivals: -1 is below 0"):
        Simulator(arrivals=-1)
    with pytest.raises(SimulatorError, match="stopped"):
        simulator.now()
    simulator.stop()


def test_durations():
    assert [milliseconds(each) for each in ("5 s", "15min", "250 ms", "1.5 h", "1 d", 2, 0.25)] == [
        5000, 900000, 250, 5400000, 86400000, 2000, 250]
    for wrong in ("", "5", "s", "-5 s", "5 years", -1):
        with pytest.raises(ValueError):
            milliseconds(wrong)
