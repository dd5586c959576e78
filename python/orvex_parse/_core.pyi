from collections.abc import Iterable
from datetime import timedelta
from ipaddress import IPv4Address, IPv4Interface, IPv6Address, IPv6Interface
from os import PathLike
from typing import Any, Literal, overload

import numpy as np
from numpy.typing import NDArray

from ._types import (
    AddressMask,
    AnyAddress,
    AtmVpnAddress,
    Esi,
    Interface,
    IsoAddress,
    MacAddress,
    RouteDistinguisher,
    SystemId,
)

__version__: str

@overload
def ip(
    __text: str | bytes,
    *,
    prefix: bool = False,
    prefix_required: Literal[False] = False,
    all_bytes: bool = False,
    mask: Literal[False] = False,
    default: bool = False,
    integer: bool = False,
    host_zero: bool = False,
    multicast: bool = False,
    any: Literal[False] = False,
    no_martian: bool = False,
    unicast: bool = False,
    family: str | int | None = None,
) -> IPv4Address | IPv6Address: ...
@overload
def ip(
    __text: str | bytes,
    *,
    prefix: bool = False,
    prefix_required: Literal[True],
    all_bytes: bool = False,
    mask: Literal[False] = False,
    default: bool = False,
    integer: bool = False,
    host_zero: bool = False,
    multicast: bool = False,
    any: Literal[False] = False,
    no_martian: bool = False,
    unicast: bool = False,
    family: str | int | None = None,
) -> IPv4Interface | IPv6Interface: ...
@overload
def ip(
    __text: str | bytes,
    *,
    prefix: bool = False,
    prefix_required: bool = False,
    all_bytes: bool = False,
    mask: bool = False,
    default: bool = False,
    integer: bool = False,
    host_zero: bool = False,
    multicast: bool = False,
    any: bool = False,
    no_martian: bool = False,
    unicast: bool = False,
    family: str | int | None = None,
) -> IPv4Address | IPv6Address | AddressMask | AnyAddress: ...
def interface(
    text: str | bytes,
    /,
    *,
    mgmt: bool = False,
    channels: bool = False,
    no_slot: bool = False,
    need_fpc_pic_port: bool = False,
    no_unit: bool = False,
    all: bool = False,
    wildcard: bool = False,
    default_unit: bool = False,
    need_channel: bool = False,
    no_unit_max: bool = False,
    rlsq: bool = False,
    at_unit_32767: bool = False,
    ranges: bool = False,
    wide_fpc: bool = False,
    expansion_slot: bool = False,
    port_first: bool = False,
    without: Iterable[str] = (),
) -> Interface: ...
def is_alias(text: str | bytes, /) -> Literal[True]: ...
def alias(
    text: str | bytes, /, *, map: str | PathLike[str] | None = None, alternate: bool = False
) -> str: ...
def mac(
    text: str | bytes,
    /,
    *,
    prefix: bool = False,
    unicast: bool = False,
    multicast: bool = False,
) -> MacAddress: ...
def delimited(text: str | bytes, /, *, count: int, hex: bool = False) -> bytes: ...
def iso(text: str | bytes, /, *, nsap: bool = False) -> IsoAddress: ...
def sysid(text: str | bytes, /) -> SystemId: ...
def rd(text: str | bytes, /) -> RouteDistinguisher: ...
def esi(
    text: str | bytes, /, *, mode: Literal["any", "user-defined", "reserved-ok"] = "any"
) -> Esi: ...
def atmvpn(text: str | bytes, /) -> AtmVpnAddress: ...
def integer(text: str | bytes, /) -> int: ...
def quad(text: str | bytes, /) -> int: ...
def number(text: str | bytes, /, *, limit: int) -> int: ...
def duration(text: str | bytes, /, *, min: int = 0, max: int = 86399999999999) -> timedelta: ...
def canonical(text: str | bytes, /) -> str: ...
def prefix6(text: str | bytes, /, *, address: bool = False) -> str: ...

def column(family: str, texts: object, threads: int, options: dict[str, Any]) -> dict[str, Any]: ...
def within(
    version: NDArray[np.uint8],
    address: NDArray[np.uint8],
    prefix_version: NDArray[np.uint8],
    prefix_address: NDArray[np.uint8],
    prefix_length: NDArray[np.uint8],
    threads: int,
) -> NDArray[np.int64]: ...
def format_ip(address: bytes, prefix_length: int, mask: bytes | None, full: bool) -> str: ...
def format_mac(address: bytes, prefix_length: int) -> str: ...
def format_delimited(address: bytes, delimiter: str, hex: bool) -> str: ...
def format_iso(address: bytes, prefix_length: int) -> str: ...
def format_sysid(sysid: bytes) -> str: ...
def format_esi(esi: bytes) -> str: ...
def router_is_known() -> bool: ...
def install_router(path: str) -> None: ...
