"""Values to text."""
from __future__ import annotations

from ipaddress import IPv4Address, IPv4Interface, IPv6Address, IPv6Interface

from . import _core
from ._types import AddressMask, Esi, IsoAddress, MacAddress, SystemId, _length

__all__ = ["format_delimited", "format_esi", "format_ip", "format_iso", "format_mac", "format_sysid"]


def format_ip(address: IPv4Address | IPv6Address | AddressMask, *, full: bool = False) -> str:
    """Writes an address, an interface with its prefix length, or an address with its mask.

    full  in the fixed width that sorts: "010.000.000.001/024"
    """
    if isinstance(address, AddressMask):
        return _core.format_ip(address.address.packed, -1, address.mask.packed, full)
    length = -1
    if isinstance(address, (IPv4Interface, IPv6Interface)):
        length = address.network.prefixlen
    return _core.format_ip(address.packed, length, None, full)


def format_mac(address: MacAddress | bytes, *, prefix_length: int | None = None) -> str:
    """Writes a MAC address of 6 bytes, "00:1b:2c:3d:4e:5f", with a prefix length of 0 to 48 bits."""
    if isinstance(address, MacAddress):
        return str(address)
    return _core.format_mac(address, _length(prefix_length))


def format_delimited(address: bytes, *, delimiter: str = ".", hex: bool = False) -> str:
    """Writes bytes with a character between them: decimal, or two hexadecimal digits each."""
    return _core.format_delimited(address, delimiter, hex)


def format_iso(address: IsoAddress | bytes, *, prefix_length: int | None = None) -> str:
    """Writes an ISO address of at most 20 bytes, "49.0001", with a prefix length in bits."""
    if isinstance(address, IsoAddress):
        return str(address)
    return _core.format_iso(address, _length(prefix_length))


def format_sysid(sysid: SystemId | bytes) -> str:
    """Writes an ISO system identifier of 6 bytes, "1921.6800.1001"."""
    return _core.format_sysid(bytes(sysid))


def format_esi(esi: Esi | bytes) -> str:
    """Writes an Ethernet segment identifier of 10 bytes, "00:11:22:33:44:55:66:77:88:99"."""
    return _core.format_esi(bytes(esi))
