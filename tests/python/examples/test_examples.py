"""Each example runs against a simulated OLT, in a process of its own."""

import csv
import os
import pathlib
import subprocess
import sys

import pytest

EXAMPLES = pathlib.Path(__file__).resolve().parents[3] / "python/examples"


@pytest.fixture
def run(olt):
    def run_example(name, *arguments):
        environment = {**os.environ, "BOARD_IPC_DIR": olt.call.directory}
        words = [sys.executable, "-B", EXAMPLES / name, *map(str, arguments)]
        return subprocess.run(words, env=environment, timeout=120, capture_output=True, text=True, check=False)

    return run_example


def orders(file, *rows):
    file.write_text("port,mac,onu_id,description,vlan\n" + "".join(",".join(map(str, row)) + "\n" for row in rows))
    return file


@pytest.mark.ponsim(arrivals=4, silent=0)
def test_provision(olt, run, tmp_path):
    first, second = (onu.mac for onu in olt.waiting(1)[:2])
    file = orders(tmp_path / "orders.csv", (1, first, 7, "customer 1", 100), (1, second, "", "customer 2", ""))
    planned = run("provision.py", file, "--dry-run")
    assert (planned.returncode, planned.stdout) == (0, f"1 {first}: bind, describe\n1 {second}: bind, describe\n")
    assert len(olt.waiting(1)) == 4

    done = run("provision.py", file)
    assert (done.returncode, done.stderr) == (0, "")
    assert done.stdout == f"1 {first}: bind, describe, vlan 100\n1 {second}: bind, describe\n"
    assert (olt.find(first).onu_id, olt.find(first).description) == (7, "customer 1")
    olt.step("1 s")
    assert olt.onu(1, 7).ask("vlan", uni=1)["pvid"] == 100

    again = run("provision.py", file)
    assert (again.returncode, again.stdout) == (0, f"1 {first}: nothing to do\n1 {second}: nothing to do\n")
    clash = run("provision.py", orders(tmp_path / "clash.csv", (1, second, 9, "customer 2", "")))
    assert (clash.returncode, "is bound to id" in clash.stderr) == (1, True)


def test_provision_refuses_a_wrong_file(run, tmp_path):
    for row in ((1, "no address", "", "", ""), ("x", "02:00:5e:10:00:01", "", "", "")):
        refused = run("provision.py", orders(tmp_path / "wrong.csv", row))
        assert (refused.returncode, "wrong.csv:2: " in refused.stderr, refused.stdout) == (2, True, "")


@pytest.mark.ponsim(arrivals=4, silent=0, ports=1)
def test_weak_light(olt, run, tmp_path):
    for onu in olt.waiting(1):
        olt.bind(1, onu.mac)
    assert run("weak_light.py").stdout == ""
    bent = olt.onus(1)[2]
    before = next(light.olt_rx_power for light in olt.optics() if light.mac == bent.mac)
    olt.control(f"bend 1 {bent.mac} 3")
    olt.step("1 s")
    after = next(light.olt_rx_power for light in olt.optics() if light.mac == bent.mac)
    assert after < before - 2
    below = (before + after) / 2
    others = [light.olt_rx_power for light in olt.optics() if light.mac != bent.mac]
    expected = 1 + sum(power < below for power in others)
    found = run("weak_light.py", f"--below={below}", "--csv", tmp_path / "weak.csv")
    assert found.returncode == 1 and f"1/{bent.onu_id} {bent.mac} {after:.2f} dBm" in found.stdout
    with open(tmp_path / "weak.csv", newline="", encoding="utf-8") as file:
        assert len(list(csv.DictReader(file))) == expected


@pytest.mark.ponsim(arrivals=4, silent=0, ports=2)
def test_soak(olt, run):
    done = run("soak.py", "--rounds", 5, "--ports", 2)
    assert (done.returncode, done.stdout) == (0, "5 rounds at each of 2 ports, 0 wrong answers\n")
    assert len(olt.waiting()) == 8


def test_without_a_service_they_say_so(tmp_path):
    for name in ("weak_light.py", "soak.py"):
        environment = {**os.environ, "BOARD_IPC_DIR": str(tmp_path)}
        done = subprocess.run([sys.executable, "-B", EXAMPLES / name], env=environment, timeout=60, capture_output=True,
                              text=True, check=False)
        assert done.returncode == 2 and "nobody serves the module" in done.stderr
