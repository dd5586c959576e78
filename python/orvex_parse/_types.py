"""The values that texts stand for. str() gives each one's canonical text."""
from __future__ import annotations

import enum
from dataclasses import dataclass, field
from ipaddress import IPv4Address, IPv6Address
from typing import Optional, Union

from . import _core

# A number of an interface name, "?" or "*", or a range such as "[0-3]".
IfNumber = Union[int, str]


class Refused(ValueError):
    """A text is refused. The message is that of the router's user interface.

    code is the result of the C function, errno the error number that it set or 0, text the text as
    it was given.
    """

    code: int
    errno: int
    text: str | bytes

    def __init__(self, message: str, code: int, errno: int, text: str | bytes) -> None:
        super().__init__(message)
        self.code = code
        self.errno = errno
        self.text = text

    def __reduce__(self) -> tuple[type[Refused], tuple[str, int, int, str | bytes]]:
        return type(self), (self.args[0], self.code, self.errno, self.text)


class AnyAddress(enum.Enum):
    """What "any-unicast" and "any-multicast" mean."""

    UNICAST = "any-unicast"
    MULTICAST = "any-multicast"

    def __str__(self) -> str:
        return str(self.value)


@dataclass(frozen=True)
class AddressMask:
    """An address and a mask, whose bits need not be contiguous."""

    address: IPv4Address | IPv6Address
    mask: IPv4Address | IPv6Address

    @property
    def prefix_length(self) -> int | None:
        """The prefix length that the mask means, or None when its bits are not contiguous."""
        host = int(self.mask) ^ ((1 << self.mask.max_prefixlen) - 1)
        return self.mask.max_prefixlen - host.bit_length() if host & (host + 1) == 0 else None

    def __str__(self) -> str:
        return _core.format_ip(self.address.packed, -1, self.mask.packed, False)


@dataclass(frozen=True)
class Interface:
    """An interface name's parts; None for those that are not given.

    A number is an int, "?" or "*", or a range as it was typed. fpc is the FPC's number in the whole
    system, or the device number of a type that has one. direction is "rx" or "tx". On a router in a
    container a name's parts are not read, and type is empty.
    """

    type: str
    fpc: Optional[IfNumber]
    pic: Optional[IfNumber]
    port: Optional[IfNumber]
    channels: tuple[IfNumber, ...]
    direction: Optional[str]
    unit: Optional[IfNumber]
    chassis: Optional[str]
    _text: str = field(compare=False, repr=False)

    def __str__(self) -> str:
        return self._text


@dataclass(frozen=True)
class MacAddress:
    """A MAC address: 6 bytes, and a prefix length of 0 to 48 bits or None."""

    packed: bytes
    prefix_length: Optional[int] = None

    @property
    def is_multicast(self) -> bool:
        """Whether the group bit is set."""
        return bool(self.packed[0] & 1)

    def __bytes__(self) -> bytes:
        return self.packed

    def __str__(self) -> str:
        return _core.format_mac(self.packed, _length(self.prefix_length))


@dataclass(frozen=True)
class IsoAddress:
    """An ISO address of 8 to 20 bytes, or a prefix with its length of 0 to 152 bits."""

    packed: bytes
    prefix_length: Optional[int] = None

    def __bytes__(self) -> bytes:
        return self.packed

    def __str__(self) -> str:
        return _core.format_iso(self.packed, _length(self.prefix_length))


@dataclass(frozen=True)
class SystemId:
    """An ISO system identifier: 6 bytes."""

    packed: bytes

    def __bytes__(self) -> bytes:
        return self.packed

    def __str__(self) -> str:
        return _core.format_sysid(self.packed)


@dataclass(frozen=True)
class RouteDistinguisher:
    """A BGP route distinguisher: 8 bytes, the first two of them its type, 0 to 2 (RFC 4364)."""

    packed: bytes

    @property
    def type(self) -> int:
        """0: a two-byte AS number, 1: an IPv4 address, 2: a four-byte AS number."""
        return int.from_bytes(self.packed[:2], "big")

    def __bytes__(self) -> bytes:
        return self.packed

    def __str__(self) -> str:
        split = 4 if self.type == 0 else 6
        administrator = int.from_bytes(self.packed[2:split], "big")
        number = int.from_bytes(self.packed[split:], "big")
        if self.type == 1:
            return f"{IPv4Address(administrator)}:{number}"
        return f"{administrator}{'L' if self.type == 2 else ''}:{number}"


@dataclass(frozen=True)
class Esi:
    """An Ethernet segment identifier: 10 bytes (RFC 7432)."""

    packed: bytes

    def __bytes__(self) -> bytes:
        return self.packed

    def __str__(self) -> str:
        return _core.format_esi(self.packed)


@dataclass(frozen=True)
class AtmVpnAddress:
    """An ATM VPN address: its type is 1 to 255, its address 23 bytes.

    prefix_length counts the bits of the address, 0 to 111, or is None.
    """

    rd: RouteDistinguisher
    type: int
    address: bytes
    prefix_length: Optional[int] = None

    def __str__(self) -> str:
        text = f"{self.rd}::{self.type}::" + ":".join(map(str, self.address))
        return text if self.prefix_length is None else f"{text}/{self.prefix_length}"


def _length(prefix_length: int | None) -> int:
    if prefix_length is None:
        return -1
    if prefix_length < 0:
        raise ValueError("a prefix length is not negative")
    return prefix_length
