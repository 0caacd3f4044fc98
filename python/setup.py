"""What setuptools does not do by itself: the modules and the C that follow from the catalogue are made, and the classes
for asyncio that follow from the others.

In the source tree the catalogue's generator and make_async.py make them, in the folder of the build. A source
distribution brings them along, because it has no catalogue. The extension is compiled against the headers and libraries
that pkg-config knows.
"""

import pathlib
import shutil
import subprocess
import sys

from cffi.pkgconfig import flags_from_pkgconfig
from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext
from setuptools.command.build_py import build_py
from setuptools.command.sdist import sdist

HERE = pathlib.Path(__file__).resolve().parent
BROUGHT = HERE / "generated"
sys.path.insert(0, str(HERE))

from build_native import write_source  # noqa: E402


def generated(command):
    """Returns the folder with what follows from the catalogue."""
    if BROUGHT.is_dir():
        return BROUGHT
    made = pathlib.Path(command.get_finalized_command("build").build_base).resolve() / "generated"
    subprocess.run([sys.executable, "-B", HERE.parent / "catalog/generate.py", "--python", made], check=True)
    package = made / "bsp_pon"
    subprocess.run([sys.executable, "-B", HERE / "make_async.py", HERE / "src/bsp_pon", package, package / "_async.py"],
                   check=True)
    return made


class BuildPy(build_py):
    def run(self):
        super().run()
        for module in (generated(self) / "bsp_pon").glob("*.py"):
            shutil.copy(module, pathlib.Path(self.build_lib) / "bsp_pon")


class BuildExt(build_ext):
    def run(self):
        (extension,) = self.extensions
        source = pathlib.Path(self.build_temp) / "_native.c"
        source.parent.mkdir(parents=True, exist_ok=True)
        write_source(generated(self), source)
        extension.sources = [str(source)]
        for name, values in flags_from_pkgconfig(["bsp_pon"]).items():
            setattr(extension, name, [*getattr(extension, name), *values])
        super().run()


class SourceDistribution(sdist):
    def make_release_tree(self, base_dir, files):
        super().make_release_tree(base_dir, files)
        shutil.copytree(generated(self), pathlib.Path(base_dir) / "generated")


setup(
    cmdclass={"build_py": BuildPy, "build_ext": BuildExt, "sdist": SourceDistribution},
    ext_modules=[Extension("bsp_pon._native", [], py_limited_api=True, extra_compile_args=[
        "-w", "-Werror=incompatible-pointer-types", "-Werror=int-conversion"])],
    options={"bdist_wheel": {"py_limited_api": "cp311"}},
)
