"""The packages are built offline as users build them, against an installed library, and what was built is used."""

import os
import pathlib
import shutil
import subprocess
import sys
import venv

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[3]
BUILD = pathlib.Path(os.environ["BUILD"])

SCRIPT = """
import bsp_pon, pytest_ponsim
with pytest_ponsim.Simulator(ports=1) as simulator:
    print(len(simulator.olt().ports()), bsp_pon.__file__)
"""


def run(*words, **options):
    done = subprocess.run([*map(str, words)], capture_output=True, text=True, timeout=300, check=False, **options)
    assert done.returncode == 0, done.stdout + done.stderr
    return done.stdout


@pytest.fixture(scope="module")
def environment(tmp_path_factory):
    """The library, its headers and the simulator, installed; and where a compiler and the loader find them."""
    prefix = tmp_path_factory.mktemp("installed")
    run("cmake", "--install", BUILD, "--prefix", prefix)
    found = next(prefix.rglob("ponsim.pc")).parent
    # Without a PYTHONPATH, so that only what was built is found.
    return {**{name: value for name, value in os.environ.items() if name != "PYTHONPATH"}, "CFLAGS": "-O0",
            "PKG_CONFIG_PATH": str(found), "LD_LIBRARY_PATH": str(found.parent), "PIP_NO_INDEX": "1"}


def test_wheels_are_built_from_source_distributions_and_work(environment, tmp_path):
    sources = tmp_path / "checkout"
    for folder in ("python", "catalog"):
        left_out = shutil.ignore_patterns("__pycache__", "*.egg-info", "build")
        shutil.copytree(ROOT / folder, sources / folder, ignore=left_out)
    wheels = tmp_path / "wheels"
    for package in ("python", "python/pytest-ponsim"):
        # The wheel is built of the source distribution, and that of the sources.
        run(sys.executable, "-m", "build", "--no-isolation", "--outdir", wheels, sources / package, env=environment)
    names = sorted(file.name.split("-1.0.0")[0] for file in wheels.iterdir())
    assert names == ["bsp_pon", "bsp_pon", "pytest-ponsim", "pytest_ponsim"]

    venv.create(tmp_path / "used", system_site_packages=True, with_pip=False)
    site = next((tmp_path / "used").glob("lib/python3*/site-packages"))
    for wheel in wheels.glob("*.whl"):
        shutil.unpack_archive(wheel, site, "zip")
    python = tmp_path / "used/bin/python"
    ports, where = run(python, "-c", SCRIPT, env=environment).split()
    assert ports == "1" and where.startswith(str(site))
    assert (site / "bsp_pon/py.typed").is_file() and (site / "pytest_ponsim/py.typed").is_file()
    # pytest finds the plugin by itself.
    (tmp_path / "test_it.py").write_text("def test_it(olt):\n    assert olt.ports()\n")
    assert "1 passed" in run(python, "-m", "pytest", "-p", "no:cacheprovider", tmp_path / "test_it.py", env=environment)


@pytest.mark.parametrize("was, becomes", [
    ("", ""),
    ("bsp_pon_no_bind_onu_all(uint32_t pon_port)", "bsp_pon_no_bind_onu_all(uint8_t pon_port)"),
    ("bsp_pon_no_bind_onu_all(uint32_t pon_port)", "bsp_pon_release_everything(uint32_t pon_port)"),
    ("uint32_t arg_value; /* 40", "uint8_t arg_value[4]; /* 40"),
    ("    uint8_t reserved44[1];", "    uint8_t reserved44[3];"),
])
def test_a_header_that_is_different_does_not_compile(was, becomes, tmp_path):
    header = (ROOT / "include/bsp_pon.h").read_text(encoding="utf-8")
    assert was == becomes or header.count(was) == 1
    (tmp_path / "bsp_pon.h").write_text(header.replace(was, becomes), encoding="utf-8")
    python = run(sys.executable, "-c", "import sysconfig; print(sysconfig.get_path('include'))").strip()

    folders = (tmp_path, ROOT / "board/include", ROOT / "board/host/include", python)
    words = ["cc", "-fsyntax-only", "-w", "-Werror=incompatible-pointer-types", "-Werror=int-conversion",
             *(f"-I{folder}" for folder in folders), BUILD / "python/native.c"]
    done = subprocess.run(words, capture_output=True, timeout=120, check=False)
    assert (done.returncode == 0) == (was == becomes)
