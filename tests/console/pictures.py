"""Takes the pictures of the console that the documentation has: the overview and an ONU, on a bad day of the campus.

    pictures.py PONSIM PONCTL PONFRONT SCENARIO FOLDER

The light over hours is what the simulated OLT told as these hours passed for it. What the daemon kept of them is moved
back in its history, so that hours of the OLT's time are hours of the browser's.
"""

import base64
import json
import pathlib
import re
import sqlite3
import sys
import tempfile
import time
import urllib.request

from browser import Browser
from service import Process, Service
from waiting import patiently

MINUTES = 15  # between two values of light
VALUES = 24
MOST = 150_000  # bytes of a picture


def pass_by(service: Service) -> None:
    """Lets time pass for the OLT, and so much as though it had passed for the daemon, which keeps a value of light."""
    kept = sqlite3.connect(f"{service.folder}/history.db")
    for table, column in (("light", "at"), ("event", "at"), ("fact", "since")):
        kept.execute(f"UPDATE {table} SET {column} = {column} - {60000 * MINUTES}")
    kept.commit()
    kept.close()
    service.control("step", str(60 * MINUTES))
    settings = (service.folder / "front.toml").read_text(encoding="utf-8")
    # Without users whoever connects may look.
    (service.folder / "past.toml").write_text(re.sub("users = .*", "", settings), encoding="utf-8")
    words = [service.programs["ponfront"], "--config", f"{service.folder}/past.toml"]
    begun = 1000 * time.time()
    front = Process(words, service.folder / "past.log", "listening")
    said = (service.folder / "past.log").read_text(encoding="utf-8")
    port = re.search(r"listening on .* port (\d+)", said)[1]

    def is_kept() -> bool:
        with urllib.request.urlopen(f"http://127.0.0.1:{port}/api/v1/olts/campus/optics/1/3?from={begun:.0f}") as answer:
            return len(json.load(answer)["rows"]) > 0

    patiently(is_kept)
    front.end()


def let_happen(service: Service) -> None:
    """A day on which a drop cable is bent, an office is switched off, a fibre is cut, and somebody is plugged in."""
    service.operate("onu", "describe", "1", "3", "Bakery, ground floor")
    service.front.end()
    for value in range(VALUES):
        if value == VALUES - 7:
            service.control("bend", "1", "a-3", "9")
        if value == VALUES - 4:
            service.control("power", "1", "a-7", "off")
        if value == VALUES - 1:
            service.control("cut", "2", "west")
            service.control("arrive", "1")
        pass_by(service)
    service.front = service.started_front()


def take(browser: Browser, file: pathlib.Path, height: int) -> None:
    browser.look(1280, height)
    patiently(lambda: browser.run("return !document.querySelector('.loading, .starting')"))
    shot = browser.driver.execute_cdp_cmd("Page.captureScreenshot", {"format": "webp", "quality": 80})
    content = base64.b64decode(shot["data"])
    assert len(content) < MOST, f"{file} has {len(content)} bytes"
    file.write_bytes(content)
    print(f"{file}: {len(content)} bytes")


def main(ponsim: str, ponctl: str, ponfront: str, scenario: str, folder: str) -> None:
    pathlib.Path(folder).mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(prefix="pictures") as work:
        programs = {"ponsim": ponsim, "ponctl": ponctl, "ponfront": ponfront}
        service = Service(programs, pathlib.Path(work), scenario)
        try:
            let_happen(service)
            service.add_user("anna", "service-affecting")
            browser = Browser(service.url, pathlib.Path(folder))
            try:
                browser.log_in("anna")
                browser.sees("What is wrong", "30 ONUs of port 2")
                take(browser, pathlib.Path(folder) / "console-overview.webp", 430)
                browser.go("/olts/campus/onus/1/3")
                browser.sees("Bakery", "below the limit", "translation")
                take(browser, pathlib.Path(folder) / "console-onu.webp", 880)
            finally:
                browser.end()
        finally:
            service.end()


if __name__ == "__main__":
    main(*sys.argv[1:])
