"""Uses the web console of ponfront as people do, with a real browser.

    console_test.py PONSIM PONCTL PONFRONT SCENARIO PICTURES [NAME...]

PICTURES is the folder that keeps what was seen. Names are those of tests, as
Access.test_a_wrong_password_is_refused.
"""

import os
import pathlib
import sys
import tempfile
import unittest

# The stories, which unittest finds by their names here.
from access import Access  # noqa: F401
from browser import Browser
from looks import Looks  # noqa: F401
from operating import Operating  # noqa: F401
from service import Service
from story import Story
from watching import Watching  # noqa: F401

PLANT = pathlib.Path(__file__).resolve().parents[2] / "examples/busy-campus-plant.toml"


def main() -> bool:
    ponsim, ponctl, ponfront, scenario, pictures, *names = sys.argv[1:]
    programs = {"ponsim": ponsim, "ponctl": ponctl, "ponfront": ponfront}
    Story.pictures = pathlib.Path(pictures)
    os.makedirs(pictures, exist_ok=True)
    with tempfile.TemporaryDirectory(prefix="console") as folder:
        Story.service = Service(programs, pathlib.Path(folder), scenario, plant=str(PLANT))
        try:
            Story.browser = Browser(Story.service.url, Story.pictures)
            try:
                return unittest.main(argv=[sys.argv[0], *names], verbosity=2, exit=False).result.wasSuccessful()
            finally:
                Story.browser.end()
        finally:
            Story.service.end()


if __name__ == "__main__":
    sys.exit(0 if main() else 1)
