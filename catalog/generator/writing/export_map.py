"""This module writes the list of the library's exported functions: for the linker, and for the packages of programs that
need them.
"""

from ..reading.families import FIRST_RELEASE
from .text import GENERATED

# All functions have this version. It changes together with the number behind the library's name.
VERSION = "BSP_PON_0"


def exports(catalogue):
    names = [f"        {name};" for name in sorted(catalogue.taken)]
    return "\n".join([f"# {GENERATED}.", f"{VERSION} {{", "    global:", *names, "    local:", "        *;", "};", ""])


def symbols(catalogue):
    """Returns what a Debian package says of its library: from which release on it has each function."""
    since = {VERSION: FIRST_RELEASE} | {name: catalogue.taken[name].since for name in sorted(catalogue.taken)}
    return "\n".join([
        f"# {GENERATED}.",
        "libbsp_pon.so.0 libbsp-pon0 #MINVER#",
        "* Build-Depends-Package: libbsp-pon-dev",
        *[f" {name}@{VERSION} {release}" for name, release in since.items()], ""])
