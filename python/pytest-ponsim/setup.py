"""The extension is compiled against the header and library that pkg-config knows."""

from setuptools import setup

setup(cffi_modules=["build_native.py:installed"], options={"bdist_wheel": {"py_limited_api": "cp311"}})
