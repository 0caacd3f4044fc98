"""Upgrades of ONUs: which software goes to which kind of them, and runs."""

from __future__ import annotations

from collections.abc import Iterable

from .. import raw, rows
from .._caller import Caller
from .._field import Value
from .._write import block, pon_record

_START = 20  # of the block, in the record
_SIZE = 400


class Upgrades:
    """The upgrade types of an OLT, and what is upgraded."""

    def __init__(self, call: Caller) -> None:
        self._call = call

    def types(self) -> list[rows.UpgradeTypes]:
        """Returns the upgrade types."""
        return self._call(raw.bsp_pon_get_onu_upgrade_type).rows_of(rows.UpgradeTypes)

    def add_type(self, name: str, *, vendor: str, model: str, version: str, size: int, file: str = "") -> None:
        """Adds an upgrade type: which version goes to the ONUs of this vendor and model. `size` is in bytes, and `file`
        is the name of the image, which is shown only.
        """
        self._call(raw.bsp_pon_set_onu_upgrade_type_add, _block(
            "upgrade_type", name=name, vendor=vendor, model=model, version=version, size=size, file=file))

    def delete_type(self, name: str) -> None:
        """Deletes an upgrade type. Ports and ONUs that it is bound to have none then."""
        self._call(raw.bsp_pon_set_onu_upgrade_type_del, _block("upgrade_type_name", name=name))

    def load_types(self, file: str) -> None:
        """Has the service load upgrade types from a file below its folder of upgrade files, by its absolute path there.

        A line is a type: name, vendor, model, version and size in bytes. Where one is wrong nothing is changed, and the
        service's log says what is wrong.
        """
        self._call(raw.bsp_pon_load_onu_upgrade_type_file, _block("upgrade_type_file", file=file))

    def bind_type(self, port: int, name: str, onu_ids: Iterable[int] | None = None) -> None:
        """Binds an upgrade type to ONUs of a port, or to all that have none of their own. An empty name binds none."""
        if onu_ids is None:
            self._call(raw.bsp_pon_onu_upgrade_type_bind_ponport, _block("upgrade_bind_port", pon_port=port, name=name))
        else:
            self._call(raw.bsp_pon_onu_upgrade_type_bind_some, _block(
                "upgrade_bind_onus", pon_port=port, name=name, onu_set=list(onu_ids)))

    def start(self, port: int, onu_id: int | None = None) -> None:
        """Starts the upgrade of an ONU, or of all of a port."""
        if onu_id is None:
            self._call(raw.bsp_pon_onu_upgrade_ponport, _block("upgrade_port", pon_port=port))
        else:
            self._call(raw.bsp_pon_onu_upgrade_one, _block("upgrade_onu", pon_port=port, onu_id=onu_id))

    def state(self, port: int) -> list[rows.UpgradeBaseInfo]:
        """Returns what is known of the ONUs of a port for upgrades, and how far those have come."""
        found = self._call(raw.bsp_pon_get_upgrade_base_info_web, pon_record(pon_port=port))
        return found.rows_of(rows.UpgradeBaseInfo)


def _block(layout: str, **values: Value) -> bytes:
    return block(layout, values, _START, _SIZE)
