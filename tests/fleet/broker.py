"""A broker of a fleet for as long as a test lasts: mosquitto with what is shipped for it, and certificates of its own."""

import pathlib
import shutil
import signal
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from waiting import PATIENCE, free_port, patiently  # noqa: E402

SHIPPED = pathlib.Path(__file__).resolve().parents[2] / "fleet" / "broker"
ADDRESS = "127.0.0.1"


def authority(folder: pathlib.Path, *words: str) -> None:
    subprocess.run([SHIPPED / "authority", folder, *words], check=True, capture_output=True, text=True)


def permissions(table: pathlib.Path) -> str:
    done = subprocess.run([SHIPPED / "permissions", table], check=True, capture_output=True, text=True)
    return done.stdout


class Broker:
    """`table` is that of permissions; `names` are those who have a certificate."""

    def __init__(self, folder: pathlib.Path, table: str, names: list[str], more: str = "") -> None:
        self.folder = folder
        self.certificates = folder / "certs"
        self.port = free_port()
        self.running: subprocess.Popen | None = None
        folder.mkdir(parents=True, exist_ok=True)
        authority(self.certificates, "init")
        authority(self.certificates, "server", ADDRESS)
        for suffix in ("crt", "key"):
            shutil.copy(self.certificates / f"{ADDRESS}.{suffix}", self.certificates / f"server.{suffix}")
        for name in names:
            authority(self.certificates, "client", name)
        self.permit(table)
        shipped = (SHIPPED / "mosquitto.conf").read_text(encoding="utf-8")
        for old, new in (("listener 8883 ", f"listener {self.port} "), ("/etc/mosquitto/", f"{folder}/")):
            assert old in shipped, f"the shipped configuration has no {old!r}"
            shipped = shipped.replace(old, new)
        # What is below is said by Debian's own configuration elsewhere. Only root can change who it is.
        own = f"persistence_location {folder}/\nuser root\nlog_dest stderr\n{more}"
        (folder / "mosquitto.conf").write_text(shipped + own, encoding="utf-8")
        self.start()

    def permit(self, table: str) -> None:
        (self.folder / "table.toml").write_text(table, encoding="utf-8")
        (self.folder / "pon.acl").write_text(permissions(self.folder / "table.toml"), encoding="utf-8")
        (self.folder / "pon.acl").chmod(0o600)

    def start(self) -> None:
        with open(self.log_file, "w", encoding="utf-8") as log:
            command = [shutil.which("mosquitto", path="/usr/sbin:/usr/bin"), "-c", self.folder / "mosquitto.conf"]
            self.running = subprocess.Popen(command, stdout=log, stderr=log)
        patiently(lambda: self.has_said(" running"))

    @property
    def log_file(self) -> pathlib.Path:
        return self.folder / "mosquitto.log"

    def log(self) -> str:
        return self.log_file.read_text(encoding="utf-8")

    def has_said(self, words: str) -> bool:
        said = self.log()
        assert self.running.poll() is None, f"the broker ended: {said}"
        return words in said

    def reload(self) -> None:
        self.running.send_signal(signal.SIGHUP)

    def end(self, how: signal.Signals = signal.SIGTERM) -> None:
        if self.running.poll() is None:
            self.running.send_signal(how)
        self.running.wait(timeout=PATIENCE)

    def words_of(self, name: str) -> list[str]:
        """Returns with which words a program of mosquitto comes in as somebody."""
        here = self.certificates
        return ["-V", "5", "-h", ADDRESS, "-p", str(self.port), "--cafile", f"{here}/ca.crt",
                "--cert", f"{here}/{name}.crt", "--key", f"{here}/{name}.key", "-q", "1"]

    def publish(self, name: str, topic: str, text: str = "x", *more: str) -> bool:
        """Returns whether somebody may publish that."""
        command = ["mosquitto_pub", *self.words_of(name), "-t", topic, "-m", text, *more]
        done = subprocess.run(command, capture_output=True, text=True, check=False, timeout=PATIENCE)
        said = done.stdout + done.stderr
        if "Not authorized" in said:
            return False
        assert done.returncode == 0 and not said, f"{topic}: {said}"
        return True
