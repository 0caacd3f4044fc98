"""This module makes of the theme's files what a browser can use without a server.

Debian's package of the theme has its script as a module, which browsers do not load from files; a style sheet that asks the
server for another one; and dark colours only for readers who choose them by the button, not for those whose system is dark.
"""

import importlib.util
import pathlib
import re
import subprocess

NORMALIZE = pathlib.Path("/usr/share/javascript/normalize.css/normalize.css")
IMPORT = re.compile(r"@import url\([^)]*/normalize\.css\);")
DARK = re.compile(r'body\[data-theme="dark"\] (\{[^}]*\})')


def write_look(folder):
    """Writes files that stand before those of the same name of the theme."""
    theme = pathlib.Path(importlib.util.find_spec("furo").origin).parent / "theme/furo/static"
    (folder / "styles").mkdir(parents=True)
    style = (theme / "styles/furo.css").read_text(encoding="utf-8")
    (folder / "styles/furo.css").write_text(whole(style, NORMALIZE.read_text(encoding="utf-8")), encoding="utf-8")
    subprocess.run(["esbuild", "--bundle", "--format=iife", "--log-level=warning", f"--outfile={folder / 'scripts/furo.js'}",
                    str(theme / "scripts/furo.js")], check=True)


def whole(style, normalize):
    """Returns the style sheet with the other one in its place, and with dark colours where the system asks for them."""
    dark = DARK.search(style)
    if not dark or not IMPORT.search(style):
        raise ValueError("the style sheet of the theme is not as this module expects it")
    asked = f'@media screen and (prefers-color-scheme: dark) {{ body:not([data-theme="light"]) {dark[1]} }}'
    return IMPORT.sub(lambda _: normalize, style, count=1) + asked + "\n"
