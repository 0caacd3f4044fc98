"""Starts a simulated service with sockets of a service manager, asks it, and lets a request wait for the next one.

Arguments: ponsim, ponctl
"""

import os
import pathlib
import socket
import subprocess
import sys
import tempfile
import unittest

PONSIM, PONCTL = sys.argv[1:3]
FIRST = 3


class Manager:
    """It holds sockets for a service, as systemd does."""

    def __init__(self, folder: pathlib.Path) -> None:
        self.folder = folder
        self.environment = {**os.environ, "BOARD_IPC_DIR": str(folder), "BOARD_IPC_TIMEOUT_MS": "60000"}
        self.sockets = []
        for name, kind in (("6.seq", socket.SOCK_SEQPACKET), ("6.dgram", socket.SOCK_DGRAM)):
            held = socket.socket(socket.AF_UNIX, kind)
            held.bind(str(folder / name))
            self.sockets.append(held)
        self.sockets[0].listen()

    def start(self) -> subprocess.Popen[str]:
        # The shell puts the sockets where they are expected, and then becomes the service, whose number it knows.
        places = " ".join(f"{FIRST + place}<&{held.fileno()}" for place, held in enumerate(self.sockets))
        script = f'LISTEN_PID=$$ LISTEN_FDS={len(self.sockets)} exec "$0" --state none --speed 0 {places}'
        return subprocess.Popen(
            ["bash", "-c", script, PONSIM], env=self.environment, stdout=subprocess.PIPE, text=True,
            pass_fds=[held.fileno() for held in self.sockets])

    def ask(self) -> subprocess.Popen[str]:
        return subprocess.Popen([PONCTL, "onu", "list", "1", "-o", "csv"], env=self.environment, text=True,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def close(self) -> None:
        for held in self.sockets:
            held.close()


class Activation(unittest.TestCase):
    def setUp(self) -> None:
        self.work = tempfile.TemporaryDirectory()
        self.addCleanup(self.work.cleanup)
        self.manager = Manager(pathlib.Path(self.work.name))
        self.addCleanup(self.manager.close)

    def answer_to(self, client: subprocess.Popen[str]) -> list[str]:
        said, complained = client.communicate(timeout=60)
        self.assertEqual((client.returncode, complained), (0, ""))
        return said.splitlines()

    def start(self) -> subprocess.Popen[str]:
        service = self.manager.start()
        self.addCleanup(self.end, service)
        return service

    def end(self, service: subprocess.Popen[str]) -> int:
        service.terminate()
        status = service.wait(60)
        service.stdout.close()
        return status

    def files(self) -> dict[str, int]:
        return {path.name: path.lstat().st_ino for path in self.manager.folder.glob("6.*") if path.suffix != ".lock"}

    def test_serves_on_the_sockets_and_leaves_them(self) -> None:
        before = self.files()
        for _ in range(2):
            service = self.start()
            self.assertIn("serving", service.stdout.readline())
            self.assertGreater(len(self.answer_to(self.manager.ask())), 1)
            self.assertEqual(self.end(service), 0)
            self.assertEqual(self.files(), before)

    def test_a_request_waits_for_the_service(self) -> None:
        client = self.manager.ask()
        service = self.start()
        self.assertGreater(len(self.answer_to(client)), 1)
        self.assertEqual(self.end(service), 0)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
