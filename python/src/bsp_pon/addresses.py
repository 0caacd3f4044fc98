"""MAC addresses as people write them."""

from __future__ import annotations


def mac_bytes(address: str | bytes) -> bytes:
    """Returns the 6 bytes of a MAC address in transmission order.

    Takes 02:00:5e:10:00:01, 02-00-5e-10-00-01, 0200.5e10.0001, or the bytes themselves.
    """
    if not isinstance(address, (str, bytes)):
        raise TypeError(f"{address!r} is no MAC address, which is a text as 02:00:5e:10:00:01")
    try:
        if isinstance(address, str):
            content = bytes.fromhex("".join(each for each in address if each not in ":-."))
        else:
            content = address
    except ValueError:
        content = b""
    if len(content) != 6:
        raise ValueError(f"{address!r} is no MAC address, as 02:00:5e:10:00:01")
    return content


def mac_text(content: bytes) -> str:
    """Returns a MAC address as result databases have it: 02:00:5e:10:00:01."""
    return content.hex(":")
