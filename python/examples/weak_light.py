#!/usr/bin/python3
"""Lists the ONUs whose light is weak, for a nightly job.

weak_light.py [--below DBM] [--margin DB] [--csv FILE]

Weak is what the OLT receives with less power than --below, -27 dBm by default. With --margin, an ONU is also listed
that is so much weaker than the median of its port, which tells a bad connector from a long fibre. Exit status 1 where
there is one, so that the job can send a mail.
"""

from __future__ import annotations

import argparse
import csv
import statistics
import sys
from collections import defaultdict

from bsp_pon import BspError, Olt, rows, to_records


def weak(light: list[rows.OnuOpticsTable], below: float, margin: float | None) -> list[rows.OnuOpticsTable]:
    """Returns the ONUs with weak light, the weakest first. Those that are offline are for the alarms to tell."""
    of_port: dict[int, list[float]] = defaultdict(list)
    for onu in light:
        if onu.olt_rx_power is not None:
            of_port[onu.pon_port].append(onu.olt_rx_power)
    medians = {port: statistics.median(powers) for port, powers in of_port.items()}
    found = []
    for onu in light:
        power = onu.olt_rx_power
        if power is not None and (power < below or margin is not None and power < medians[onu.pon_port] - margin):
            found.append(onu)
    return sorted(found, key=lambda onu: onu.olt_rx_power or 0)


def main() -> int:
    parser = argparse.ArgumentParser(description="Lists the ONUs whose light is weak.")
    parser.add_argument("--below", type=float, default=-27.0, metavar="DBM", help="weak is less than this; default -27")
    parser.add_argument("--margin", type=float, metavar="DB", help="weak is also so much less than its port's median")
    parser.add_argument("--csv", metavar="FILE", help="write the rows of these ONUs to a file, too")
    options = parser.parse_args()
    try:
        found = weak(Olt().optics(), options.below, options.margin)
    except BspError as error:
        print(f"weak_light.py: {error}", file=sys.stderr)
        return 2
    for onu in found:
        print(f"{onu.pon_port}/{onu.onu_id} {onu.mac} {onu.olt_rx_power:.2f} dBm")
    if options.csv and found:
        with open(options.csv, "w", newline="", encoding="utf-8") as file:
            writer = csv.DictWriter(file, [column.name for column in rows.OnuOpticsTable.COLUMNS])
            writer.writeheader()
            writer.writerows(to_records(found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
