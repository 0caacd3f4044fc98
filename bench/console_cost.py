#!/usr/bin/python3
"""What the web console costs: the first look at five OLTs with 10,240 ONUs, a change on the screen, and 200 browsers.

console_cost.py PONSIM PONFRONT    needs chromium-driver

A change is timed by one clock, that of the machine: from when the collector had read the table, which is the time of
the event, until the browser has painted another state. Time does not pass in the simulated OLTs, so nothing changes but
what is ordered here.

Exit status 1 where a goal is missed.
"""

import http.client
import json
import os
import pathlib
import re
import socket
import statistics
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "tests" / "console"))
from browser import Browser  # noqa: E402
from service import PASSWORD, Process, patiently  # noqa: E402

OLTS, PORTS, ONUS_OF_PORT = 5, 16, 128
BROWSERS = 200
ROUNDS = 7
QUIET = 30  # seconds of nothing, of which the processor's time is taken
GOAL_PAINT, GOAL_SIZE, GOAL_CHANGE, GOAL_SHARE = 1000, 300, 200, 5.0  # ms, KiB, ms, % of one core

# Runs before the page does: notes when a frame was painted in which the page first was as it should be.
WATCH = """
window.painted_when = (is_so) => new Promise((resolve) => {
    const look = () => {
        if (!is_so()) return false;
        observer.disconnect();
        requestAnimationFrame(() => setTimeout(() => resolve([performance.now(), Date.now()])));
        return true;
    };
    const observer = new MutationObserver(look);
    observer.observe(document, {subtree: true, childList: true, characterData: true, attributes: true});
    look();
});
"""
OVERVIEW = f"""
window.overview = painted_when(() => document.querySelectorAll('.olt').length === {OLTS}
    && document.querySelectorAll('a.tile').length === {OLTS * PORTS}
    && document.querySelectorAll('.wrong, .nothing').length > 0);
"""


class Campus:
    """The simulated OLTs, and the daemon that serves their console."""

    def __init__(self, ponsim: str, ponfront: str, folder: pathlib.Path) -> None:
        self.ponsim, self.folder = ponsim, folder
        (folder / "olts.toml").write_text(
            f'start = "registered"\n[service.bound]\nbound = true\n[[olt]]\nname = "olt"\ncount = {OLTS}\n[[olt.port]]\n'
            f'numbers = "1-{PORTS}"\n[[olt.port.onu]]\nname = "onu"\nservice = "bound"\ncount = {ONUS_OF_PORT}\n',
            encoding="utf-8",
        )
        words = [ponsim, "--scenario", f"{folder}/olts.toml", "--socket-dir", f"{folder}/ipc", "--state", "none"]
        self.olts = Process([*words, "--speed", "0"], folder / "ponsim.log", "serving")
        self.names = [f"olt-{number}" for number in range(1, OLTS + 1)]
        olts = "".join(f'[[olt]]\nname = "{name}"\nsocket_dir = "{folder}/ipc/{name}"\n' for name in self.names)
        (folder / "front.toml").write_text(
            f'{olts}[http]\nlisten = "127.0.0.1:0"\nusers = "{folder}/users"\n'
            f'[history]\nfile = "{folder}/history.db"\n[audit]\nfile = "{folder}/audit"\n',
            encoding="utf-8",
        )
        add = [ponfront, "--config", f"{folder}/front.toml", "user"]
        subprocess.run([*add, "add", "read"], input=f"{PASSWORD}\n", text=True, check=True, capture_output=True)
        named = subprocess.run([*add, "token", "read"], text=True, check=True, capture_output=True)
        self.token = named.stdout.split()[-1]
        self.front = Process([ponfront, "--config", f"{folder}/front.toml"], folder / "front.log", "listening")
        log = (folder / "front.log").read_text(encoding="utf-8")
        self.port = int(re.search(r"listening on .* port (\d+)", log)[1])
        patiently(lambda: all(self.is_read(name) for name in self.names))

    def get(self, path: str, headers: dict[str, str]) -> bytes:
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=30)
        connection.request("GET", path, headers={"Authorization": f"Bearer {self.token}", **headers})
        body = connection.getresponse().read()
        connection.close()
        return body

    def is_read(self, olt: str) -> bool:
        tables = json.loads(self.get(f"/api/v1/olts/{olt}", {})).get("tables", [])
        return bool(tables) and all(table["generation"] > 0 for table in tables)

    def control(self, olt: str, *words: str) -> None:
        command = [self.ponsim, "--socket-dir", f"{self.folder}/ipc/{olt}", "ctl", *words]
        subprocess.run(command, check=True, capture_output=True)

    def processor_time(self) -> float:
        stat = pathlib.Path(f"/proc/{self.front.running.pid}/stat").read_text(encoding="ascii").rpartition(")")[2].split()
        return (int(stat[11]) + int(stat[12])) / os.sysconf("SC_CLK_TCK")

    def end(self) -> None:
        self.front.end()
        self.olts.end()


def share_of(campus: Campus) -> float:
    """Returns how much of one core the daemon takes while nothing changes, in percent."""
    before, start = campus.processor_time(), time.monotonic()
    time.sleep(QUIET)
    return 100 * (campus.processor_time() - before) / (time.monotonic() - start)


def open_browsers(campus: Campus) -> list[socket.socket]:
    """Asks for what a page asks for when it is opened, and leaves the streams open."""
    page = campus.get("/", {}).decode()
    paths = ["/", *re.findall(r'"(/assets/[^"]+)"', page), "/api/v1/session", "/api/v1/olts"]
    paths += [f"/api/v1/olts/{name}/{table}" for name in campus.names for table in ("ports", "alarms")]
    streams = []
    for _ in range(BROWSERS):
        connection = http.client.HTTPConnection("127.0.0.1", campus.port, timeout=30)
        headers = {"Authorization": f"Bearer {campus.token}", "Accept-Encoding": "gzip, deflate, br"}
        for path in paths:
            connection.request("GET", path, headers=headers)
            assert connection.getresponse().read(), path
        connection.close()
        stream = socket.create_connection(("127.0.0.1", campus.port), timeout=30)
        stream.sendall(
            f"GET /api/v1/events/stream HTTP/1.1\r\nHost: localhost\r\nAuthorization: Bearer {campus.token}\r\n\r\n".encode()
        )
        said = b""
        while f'"{campus.names[-1]}"'.encode() not in said:
            said += stream.recv(65536)
        stream.setblocking(False)
        streams.append(stream)
    return streams


def heard(streams: list[socket.socket]) -> bytes:
    """Returns what one of the browsers was told meanwhile. All are emptied, and must be open."""
    said = [b""]
    for stream in streams:
        try:
            while part := stream.recv(65536):
                said.append(part)
            raise AssertionError("a stream has ended")
        except BlockingIOError:
            continue
    return max(said, key=len)


def first_look(browser: Browser) -> tuple[float, float]:
    """Returns after how many milliseconds the overview was painted, and how many KiB came by then. Nothing is cached."""
    driver = browser.driver
    driver.get("about:blank")
    driver.execute_cdp_cmd("Network.clearBrowserCache", {})
    driver.get_log("performance")
    driver.get(f"{browser.url}/")
    painted = driver.execute_async_script("const done = arguments[0]; overview.then(done);")[0]
    messages = [json.loads(entry["message"])["message"] for entry in driver.get_log("performance")]
    ended = [one["params"]["encodedDataLength"] for one in messages if one["method"] == "Network.loadingFinished"]
    return painted, sum(ended) / 1024


def change_on(browser: Browser, campus: Campus, place: str, shows: str, onu: int) -> float:
    """Returns how long after it was read a browser has painted that an ONU of the first OLT is offline."""
    driver = browser.driver
    browser.go("/events")
    browser.go(place.replace("ID", str(onu)))
    patiently(lambda: driver.execute_script(f"return ({shows.replace('STATE', 'online')})()", onu))
    driver.execute_script(f"window.changed = painted_when({shows.replace('STATE', 'offline').replace('arguments[0]', str(onu))})")
    campus.control("olt-1", "power", "1", f"onu-{onu}", "off")
    campus.control("olt-1", "step", "30s")
    painted = driver.execute_async_script("const done = arguments[0]; changed.then(done);")[1]
    events = json.loads(campus.get(f"/api/v1/events?olt=olt-1&kind=onu_offline&onu_id={onu}&limit=1", {}))["events"]
    return painted - events[0]["at"]


SCREENS = {
    "its own page": ("/olts/olt-1/onus/1/ID", "() => document.querySelector('main .badge')?.textContent.includes('STATE')"),
}


def line(what: str, value: str, goal: str, met: bool) -> bool:
    print(f"{what:58}{value:>10}   {goal}{'' if met else '   MISSED'}", flush=True)
    return met


def main(ponsim: str, ponfront: str) -> int:
    good = True
    with tempfile.TemporaryDirectory(prefix="console") as name:
        campus = Campus(ponsim, ponfront, pathlib.Path(name))
        try:
            alone = share_of(campus)
            streams = open_browsers(campus)
            heard(streams)
            share = share_of(campus)
            told = heard(streams)
            assert b"event: tables" not in told, f"something changed: {told[:500]!r}"
            for stream in streams:
                stream.close()
            line(f"{OLTS * PORTS * ONUS_OF_PORT:,} ONUs are collected, nobody looks", f"{alone:.1f} %", "", True)
            good &= line(f"{BROWSERS} browsers, nothing changes", f"{share:.1f} %", f"of a core, at most {GOAL_SHARE:.0f}", share <= GOAL_SHARE)
            browser = Browser(f"http://127.0.0.1:{campus.port}", pathlib.Path(name))
            try:
                browser.driver.set_script_timeout(60)
                browser.log_in("read")
                browser.one("nav a", "Overview")
                script = {"source": WATCH + OVERVIEW}
                browser.driver.execute_cdp_cmd("Page.addScriptToEvaluateOnNewDocument", script)
                looks = [first_look(browser) for _ in range(ROUNDS)]
                paint, size = statistics.median(look[0] for look in looks), max(look[1] for look in looks)
                good &= line("first look at the overview, cold cache", f"{paint:.0f} ms", f"at most {GOAL_PAINT}", paint <= GOAL_PAINT)
                good &= line("the same, over the wire", f"{size:.0f} KiB", f"at most {GOAL_SIZE}", size <= GOAL_SIZE)
                onu = 0
                for screen, (place, shows) in SCREENS.items():
                    times = []
                    for _ in range(ROUNDS):
                        onu += 1
                        times.append(change_on(browser, campus, place, shows, onu))
                    slowest = statistics.median(times)
                    good &= line(f"from the collector to the screen: {screen}", f"{slowest:.0f} ms", f"at most {GOAL_CHANGE}", slowest <= GOAL_CHANGE)
            finally:
                browser.end()
        finally:
            campus.end()
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
