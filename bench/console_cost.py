#!/usr/bin/python3
"""What the web console costs: the first look at five OLTs with 10,240 ONUs, a change on the screen, and 200 browsers.

console_cost.py PONSIM PONFRONT    needs chromium-driver

A change is timed by one clock, that of the machine: from when the collector had read the table of ONUs, which REST
tells, until the browser has painted another state. Time does not pass in the simulated OLTs, so nothing changes but
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
            f'start = "registered"\n[service.bound]\nbound = true\n[[olt]]\nname = "olt"\ncount = {OLTS}\n'
            f'[[olt.port]]\nnumbers = "1-{PORTS}"\n[[olt.port.onu]]\nname = "onu"\nservice = "bound"\n'
            f"count = {ONUS_OF_PORT}\n",
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

    def tables(self, olt: str) -> dict[str, dict]:
        return {table["name"]: table for table in json.loads(self.get(f"/api/v1/olts/{olt}", {}))["tables"]}

    def is_read(self, olt: str) -> bool:
        online = json.loads(self.get(f"/api/v1/olts/{olt}", {}))["online"]
        return online == PORTS * ONUS_OF_PORT and all(table["generation"] > 0 for table in self.tables(olt).values())

    def control(self, olt: str, *words: str) -> None:
        command = [self.ponsim, "--socket-dir", f"{self.folder}/ipc/{olt}", "ctl", *words]
        subprocess.run(command, check=True, capture_output=True)

    def processor_time(self) -> float:
        stat = pathlib.Path(f"/proc/{self.front.running.pid}/stat").read_text(encoding="ascii")
        behind_name = stat.rpartition(")")[2].split()
        return (int(behind_name[11]) + int(behind_name[12])) / os.sysconf("SC_CLK_TCK")

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
        head = f"GET /api/v1/events/stream HTTP/1.1\r\nHost: localhost\r\nAuthorization: Bearer {campus.token}"
        stream.sendall(f"{head}\r\n\r\n".encode())
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
    """Returns after how many milliseconds the overview was painted, and how many KiB had come. Nothing is cached."""
    driver = browser.driver
    driver.get("about:blank")
    driver.execute_cdp_cmd("Network.clearBrowserCache", {})
    driver.get_log("performance")
    driver.get(f"{browser.url}/")
    painted = driver.execute_async_script("const done = arguments[0]; overview.then(done);")[0]
    messages = [json.loads(entry["message"])["message"] for entry in driver.get_log("performance")]
    ended = [one["params"]["encodedDataLength"] for one in messages if one["method"] == "Network.loadingFinished"]
    return painted, sum(ended) / 1024


# Where a change is looked for: the screen, and whether it shows that an ONU of port 1 is in a state.
SCREENS = {
    "its own page": (
        "/olts/olt-1/onus/1/{onu}",
        "document.querySelector('.title .badge')?.textContent.includes('{state}')",
    ),
    "a table of 2,048": (
        "/olts/olt-1/onus",
        "[...document.querySelectorAll('[role=row]')].some((row) => row.querySelector('a')?.textContent === '1/{onu}'"
        " && row.querySelector('.badge').textContent.includes('{state}'))",
    ),
    "the overview": (
        "/",
        f"document.querySelector('a.tile .share')?.textContent"
        f" === ({ONUS_OF_PORT + 1} - {{onu}} - ('{{state}}' === 'offline')) + '/{ONUS_OF_PORT}'",
    ),
}


def change_on(browser: Browser, campus: Campus, screen: str, onu: int) -> float:
    """Returns how long after it was read a browser has painted that an ONU of port 1 of the first OLT is offline."""
    place, shows = SCREENS[screen]
    driver = browser.driver
    browser.go("/events")
    browser.go(place.format(onu=onu))
    patiently(lambda: driver.execute_script(f"return {shows.format(onu=onu, state='online')}"))
    driver.execute_script(f"window.changed = painted_when(() => {shows.format(onu=onu, state='offline')})")
    before = campus.tables("olt-1")["onus"]["version"]
    campus.control("olt-1", "power", "1", f"onu-{onu}", "off")
    campus.control("olt-1", "step", "10")
    painted = driver.execute_async_script("changed.then(arguments[0])")[1]
    table = campus.tables("olt-1")["onus"]
    assert table["version"] == before + 1, "another change came between"
    return painted - table["read"]


def say(what: str, value: float, unit: str, most: float) -> bool:
    """Prints a figure and its goal. Returns whether it is met."""
    print(f"{what:52}{value:8.1f} {unit:4}  at most {most:.0f}{'' if value <= most else '   MISSED'}", flush=True)
    return value <= most


def bench_browsers(campus: Campus) -> bool:
    alone = share_of(campus)
    streams = open_browsers(campus)
    heard(streams)
    share = share_of(campus)
    told = heard(streams)
    assert b"event: tables" not in told, f"something changed: {told[:500]!r}"
    for stream in streams:
        stream.close()
    print(f"{f'collecting {OLTS * PORTS * ONUS_OF_PORT:,} ONUs, and no browser':52}{alone:8.1f} %     of one core")
    return say(f"the same with {BROWSERS} browsers, nothing changes", share, "%", GOAL_SHARE)


def bench_page(campus: Campus, browser: Browser) -> bool:
    browser.driver.set_script_timeout(60)
    browser.log_in("read")
    browser.one("nav a", "Overview")
    browser.driver.execute_cdp_cmd("Page.addScriptToEvaluateOnNewDocument", {"source": WATCH + OVERVIEW})
    looks = [first_look(browser) for _ in range(ROUNDS)]
    paint = statistics.median(look[0] for look in looks)
    met = say("first look at the overview, nothing cached", paint, "ms", GOAL_PAINT)
    met &= say("the same, over the wire", max(look[1] for look in looks), "KiB", GOAL_SIZE)
    onu = 0
    for screen in SCREENS:
        times = []
        for _ in range(ROUNDS):
            onu += 1
            times.append(change_on(browser, campus, screen, onu))
        met &= say(f"from the collector to the screen: {screen}", statistics.median(times), "ms", GOAL_CHANGE)
    return met


def main(ponsim: str, ponfront: str) -> int:
    with tempfile.TemporaryDirectory(prefix="console") as name:
        campus = Campus(ponsim, ponfront, pathlib.Path(name))
        try:
            met = bench_browsers(campus)
            browser = Browser(f"http://127.0.0.1:{campus.port}", pathlib.Path(name))
            try:
                met &= bench_page(campus, browser)
            finally:
                browser.end()
        finally:
            campus.end()
    return 0 if met else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
