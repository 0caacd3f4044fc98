#!/usr/bin/python3
"""Binds and describes the ONUs of a CSV file, each once.

provision.py FILE [--dry-run]    columns: port, mac, onu_id (may be empty), description, vlan (may be empty)

What is bound already as the file says is left alone, so the script can be run again after a failure. Every row is
checked before anything is sent. Exit status 1 where the OLT refused a row, 2 where the file is wrong.
"""

from __future__ import annotations

import argparse
import csv
import dataclasses
import sys

from bsp_pon import BspError, Olt
from bsp_pon.addresses import mac_bytes, mac_text


@dataclasses.dataclass(frozen=True)
class Order:
    port: int
    mac: str
    onu_id: int | None
    description: str
    vlan: int | None


def read_orders(name: str) -> list[Order]:
    orders = []
    with open(name, newline="", encoding="utf-8") as file:
        for number, row in enumerate(csv.DictReader(file), 2):
            try:
                orders.append(Order(int(row["port"]), mac_text(mac_bytes(row["mac"])), number_or_none(row["onu_id"]),
                                    row["description"], number_or_none(row["vlan"])))
            except (KeyError, ValueError, TypeError) as error:
                raise ValueError(f"{name}:{number}: {error}") from None
    return orders


def number_or_none(text: str) -> int | None:
    return int(text) if text else None


def carry_out(olt: Olt, order: Order, dry_run: bool) -> str:
    """Makes what an order says so. Returns what was done, or is to be done."""
    present = next((onu for onu in olt.onus(order.port) if onu.mac == order.mac), None)
    done = []
    onu_id = present.onu_id if present else None
    if onu_id is None:
        done.append("bind")
        if not dry_run:
            onu_id = olt.bind(order.port, order.mac, onu_id=order.onu_id)
    elif order.onu_id not in (None, onu_id):
        raise BspError(f"is bound to id {onu_id}, not {order.onu_id}")
    if not present or (present.description or "") != order.description:
        done.append("describe")
        if onu_id is not None and not dry_run:
            olt.onu(order.port, onu_id).describe(order.description)
    if order.vlan is not None and onu_id is not None and not dry_run:
        onu = olt.onu(order.port, onu_id)
        if not any(vlan.uni == 1 and vlan.vlan_mode == "tag" and vlan.pvid == order.vlan for vlan in onu.vlans()):
            done.append(f"vlan {order.vlan}")
            onu.set_vlan(uni=1, mode="tag", pvid=order.vlan)
    return ", ".join(done) or "nothing to do"


def main() -> int:
    parser = argparse.ArgumentParser(description="Binds and describes the ONUs of a CSV file.")
    parser.add_argument("file", help="columns: port, mac, onu_id, description, vlan")
    parser.add_argument("--dry-run", action="store_true", help="only say what would be done")
    options = parser.parse_args()
    try:
        orders = read_orders(options.file)
    except (OSError, ValueError) as error:
        print(f"provision.py: {error}", file=sys.stderr)
        return 2
    olt, refused = Olt(), 0
    for order in orders:
        try:
            print(f"{order.port} {order.mac}: {carry_out(olt, order, options.dry_run)}")
        except BspError as error:
            refused += 1
            print(f"{order.port} {order.mac}: {error}", file=sys.stderr)
    return 1 if refused else 0


if __name__ == "__main__":
    sys.exit(main())
