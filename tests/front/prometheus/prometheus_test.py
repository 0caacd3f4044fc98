"""Checks the metrics, the alerts and the dashboard of ponfront with a real Prometheus.

    prometheus_test.py PONSIM PONFRONT SCENARIO ALERTS DASHBOARD
"""

import json
import os
import pathlib
import re
import signal
import subprocess
import sys
import tempfile
import urllib.parse
import urllib.request

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "support"))
from waiting import free_port, patiently  # noqa: E402


def fetched(url: str, accept: str = "text/plain") -> str:
    request = urllib.request.Request(url, headers={"Accept": accept})
    with urllib.request.urlopen(request, timeout=10) as answer:
        return answer.read().decode()


def promtool(*words: str, given: str | None = None) -> None:
    done = subprocess.run(["promtool", *words], input=given, capture_output=True, text=True, check=False)
    # promtool gives advice on standard error and ends well, also for metrics that it does not like.
    assert done.returncode == 0 and not done.stderr.strip(), f"promtool {words}: {done.stdout}{done.stderr}"


class Running:
    """Processes that end with the test."""

    def __init__(self) -> None:
        self.started: list[subprocess.Popen] = []

    def start(self, *words: str, log) -> None:
        self.started.append(subprocess.Popen(words, stdout=log, stderr=log))

    def end(self) -> None:
        for process in self.started:
            process.send_signal(signal.SIGKILL)
            process.wait()


def expressions(alerts: str, dashboard: str) -> list[str]:
    """Returns every expression that is shipped, with the dashboard's variables filled in."""
    found = [panel_target["expr"] for panel in json.loads(dashboard)["panels"] for panel_target in panel["targets"]]
    found = [expression.replace("$olt", ".*") for expression in found]
    rules = re.findall(r"expr: (?:\|\n((?: {10}.*\n)+)|(.*)\n)", alerts)
    assert len(rules) == alerts.count("alert:"), "an alert has an expression of another form"
    return found + [block or line for block, line in rules]


def check_live(
    running: Running, folder: pathlib.Path, simulated: tuple[str, str], ponfront: str, alerts: str, dashboard: str
) -> None:
    ponsim, scenario = simulated
    front, server = free_port(), free_port()
    (folder / "front.toml").write_text(
        f'[[olt]]\nname = "north"\nsocket_dir = "{folder}/ipc"\n[periods]\nonus = 1\nports = 1\nalarms = 1\n'
        f'counters = 1\noptics = 1\n[http]\nlisten = "127.0.0.1:{front}"\n'
    )
    (folder / "prometheus.yml").write_text(
        "global: { scrape_interval: 1s, evaluation_interval: 1s }\n"
        "rule_files: [alerts.yml]\n"
        f'scrape_configs: [{{ job_name: pon, static_configs: [{{ targets: ["127.0.0.1:{front}"] }}] }}]\n'
    )
    with open(folder / "log", "w", encoding="utf-8") as log:
        running.start(ponsim, "--socket-dir", f"{folder}/ipc", "--state", "none", "--scenario", scenario, log=log)
        running.start(ponfront, "--config", str(folder / "front.toml"), log=log)
        running.start(
            "prometheus",
            f"--config.file={folder}/prometheus.yml",
            f"--storage.tsdb.path={folder}/data",
            f"--web.listen-address=127.0.0.1:{server}",
            log=log,
        )
    metrics = patiently(
        lambda: fetched(f"http://127.0.0.1:{front}/metrics"),
        lambda text: 'table="capabilities"' in text and "pon_onu_bias_amperes{" in text,
    )
    promtool("check", "metrics", given=metrics)

    def ask(path: str, **query: str) -> dict:
        try:
            return json.loads(fetched(f"http://127.0.0.1:{server}/api/v1/{path}?{urllib.parse.urlencode(query)}"))
        except urllib.error.HTTPError as error:
            return json.loads(error.read())

    up = patiently(lambda: ask("query", query="pon_olt_up"), lambda said: said["data"]["result"])
    assert up["data"]["result"][0]["value"][1] == "1", up
    target = ask("targets")["data"]["activeTargets"][0]
    assert target["health"] == "up", target
    # With a cut fibre there are alarms.
    subprocess.run([ponsim, "--socket-dir", f"{folder}/ipc", "ctl", "cut", "1", "house-a"], check=True, capture_output=True)
    wanted = {"pon_alarms", "pon_olt_receive_power_dbm", "pon_onu_receive_power_dbm"}
    known = patiently(lambda: set(ask("label/__name__/values")["data"]), lambda names: wanted <= names)
    for expression in expressions(alerts, dashboard):
        said = ask("query", query=expression)
        assert said["status"] == "success", f"{expression}: {said}"
        missing = set(re.findall(r"\bpon_[a-z_]+\b", expression)) - known
        assert not missing, f"{expression}: there is no {missing}"
    loaded = patiently(lambda: ask("rules"), lambda said: said["data"]["groups"])["data"]["groups"][0]["rules"]
    assert len(loaded) == alerts.count("alert:") and all(rule["health"] != "err" for rule in loaded), loaded


def main() -> int:
    ponsim, ponfront, scenario, alerts_file, dashboard_file = sys.argv[1:]
    alerts = pathlib.Path(alerts_file).read_text(encoding="utf-8")
    dashboard = pathlib.Path(dashboard_file).read_text(encoding="utf-8")
    tests = pathlib.Path(__file__).with_name("alerts_test.yml")
    running = Running()
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        (folder / "alerts.yml").write_text(alerts, encoding="utf-8")
        (folder / "alerts_test.yml").write_text(tests.read_text(encoding="utf-8"), encoding="utf-8")
        try:
            promtool("check", "rules", str(folder / "alerts.yml"))
            promtool("test", "rules", str(folder / "alerts_test.yml"))
            check_live(running, folder, (ponsim, scenario), ponfront, alerts, dashboard)
        except AssertionError:
            if (folder / "log").exists():
                print((folder / "log").read_text(encoding="utf-8")[-4000:])
            raise
        finally:
            running.end()
    print("Prometheus takes the metrics, the alerts and the dashboard's expressions")
    return 0


if __name__ == "__main__":
    os.environ.pop("BOARD_IPC_DIR", None)
    sys.exit(main())
