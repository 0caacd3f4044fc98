"""What tests share that run programs: to wait for what comes in the end, and ports that nobody uses."""

import socket
import time

PATIENCE = 60  # seconds, for what comes in the end


def free_port(kind: socket.SocketKind = socket.SOCK_STREAM) -> int:
    with socket.socket(type=kind) as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def patiently(ask, wanted=bool, patience: float = PATIENCE):
    """Asks again and again until the answer is wanted, and returns it. Who does not answer yet is asked again."""
    end = time.monotonic() + patience
    while True:
        try:
            answer = ask()
            if wanted(answer):
                return answer
        except OSError as error:
            answer = error
        assert time.monotonic() < end, f"this never came to be wanted: {answer}"
        time.sleep(0.05)
