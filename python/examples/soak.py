#!/usr/bin/python3
"""Sets, reads back and releases again and again, each thread at a port of its own, and counts what was wrong.

soak.py [--rounds N] [--ports N]

It is for a laboratory: it binds ONUs that wait, and releases them. Exit status 1 where an answer was wrong.
"""

from __future__ import annotations

import argparse
import asyncio
import sys

from bsp_pon import BspError, Olt
from bsp_pon.aio import Pool


def round_of(olt: Olt, port: int, number: int) -> int:
    """Binds an ONU, describes it, reads both back and releases it. Returns how many answers were wrong."""
    waiting = olt.waiting(port)
    if not waiting:
        return 0
    mac, text = waiting[number % len(waiting)].mac, f"round {number} of port {port}"
    onu_id = olt.bind(port, mac)
    olt.onu(port, onu_id).describe(text)
    found = [onu for onu in olt.onus(port) if onu.mac == mac]
    olt.release(port, onu_id=onu_id, mac=mac)
    return int([(onu.onu_id, onu.description) for onu in found] != [(onu_id, text)])


def rounds_of(olt: Olt, port: int, rounds: int) -> int:
    return sum(round_of(olt, port, number) for number in range(rounds))


async def soak(olt: Olt, ports: int, rounds: int) -> int:
    async with Pool(ports) as pool:
        return sum(await asyncio.gather(*(pool.run(rounds_of, olt, port, rounds) for port in range(1, ports + 1))))


def main() -> int:
    parser = argparse.ArgumentParser(description="Sets, reads back and releases again and again.")
    parser.add_argument("--rounds", type=int, default=100, metavar="N", help="rounds at each port; default 100")
    parser.add_argument("--ports", type=int, default=4, metavar="N", help="PON ports, from 1 on; default 4")
    options = parser.parse_args()
    try:
        wrong = asyncio.run(soak(Olt(), options.ports, options.rounds))
    except BspError as error:
        print(f"soak.py: {error}", file=sys.stderr)
        return 2
    print(f"{options.rounds} rounds at each of {options.ports} ports, {wrong} wrong answers")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
