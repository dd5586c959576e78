"""Columns of texts to NumPy arrays, with a function of the same name and options for each family.

A column is a sequence of str or bytes, a NumPy array of dtype "S", "U" or object, or a pandas
Series. Each function returns a Column: NumPy arrays with a row for each text, and `accepted`,
which tells the rows that are values. The rows of other texts are zero, and messages() has the
reason for each, as the function for one text gives it. What is neither str nor bytes is not
accepted either, and changes nothing for the other texts.

threads  how many threads read the column, 0 for as many as there are processors. The results do
         not depend on it. The interpreter lock is released while they read.
"""
from __future__ import annotations

import os
from collections.abc import Iterable
from dataclasses import dataclass, field
from typing import Any, TypeVar, Union

import numpy as np
from numpy.typing import NDArray

from . import _core
from ._types import Refused

Texts = Union[Iterable[Union[str, bytes]], "NDArray[Any]"]

Bytes = NDArray[np.uint8]
Bools = NDArray[np.bool_]
Int32s = NDArray[np.int32]


@dataclass(frozen=True, eq=False)
class Column:
    """A column that has been read."""

    family: str
    texts: tuple[Any, ...] | NDArray[Any] = field(repr=False)
    options: dict[str, Any] = field(repr=False)
    accepted: Bools = field(repr=False)

    def __len__(self) -> int:
        return len(self.accepted)

    def messages(self) -> dict[int, str]:
        """The messages of the refused texts, by row. They are read again for it."""
        return {row: str(error) for row, error in self.errors().items()}

    def errors(self) -> dict[int, Refused | TypeError]:
        """What the function for one text raises for each of the refused texts, by row."""
        read = getattr(_core, self.family)
        errors: dict[int, Refused | TypeError] = {}
        for row in np.flatnonzero(~self.accepted).tolist():
            try:
                read(self.texts[row], **self.options)
            except (Refused, TypeError) as error:
                errors[row] = error
        return errors

    def check(self) -> None:
        """Raises the error of the first refused text, which also names its row."""
        refused = np.flatnonzero(~self.accepted)
        if len(refused) == 0:
            return
        row = int(refused[0])
        text = self.texts[row]
        try:
            getattr(_core, self.family)(text, **self.options)
        except Refused as error:
            raise Refused(f"row {row}: {error}", error.code, error.errno, text) from None
        except TypeError as error:
            raise TypeError(f"row {row}: {error}") from None


@dataclass(frozen=True, eq=False, repr=False)
class IpColumn(Column):
    """version is 4 or 6; address has 16 bytes, of which IPv4 uses the first 4; prefix_length is 32
    or 128 where has_prefix is False. mask and mask_kind are there with the options mask and any:
    mask_kind is 0 for no mask, 1 for a mask, 2 for "any-unicast" and 3 for "any-multicast"."""

    version: Bytes
    address: Bytes
    prefix_length: Bytes
    has_prefix: Bools
    mask: Bytes | None = None
    mask_kind: Bytes | None = None


@dataclass(frozen=True, eq=False, repr=False)
class InterfaceColumn(Column):
    """type is the index of the type in types. A number is -1 when it is not given, -2 for "?", -3
    for "*" and -4 for a range; channel_count of the six channels are given; direction is 1 for rx
    and 2 for tx."""

    type: NDArray[np.int16]
    types: tuple[str, ...]
    fpc: Int32s
    pic: Int32s
    port: Int32s
    channels: Int32s
    channel_count: NDArray[np.int8]
    direction: Bytes
    unit: Int32s


@dataclass(frozen=True, eq=False, repr=False)
class AliasColumn(Column):
    """interface holds the interface names, of dtype "S"."""

    interface: NDArray[np.bytes_]


@dataclass(frozen=True, eq=False, repr=False)
class MacColumn(Column):
    """address has 6 bytes; prefix_length is 0 where has_prefix is False."""

    address: Bytes
    prefix_length: Bytes
    has_prefix: Bools


@dataclass(frozen=True, eq=False, repr=False)
class DelimitedColumn(Column):
    """address has as many bytes as the option count says."""

    address: Bytes


@dataclass(frozen=True, eq=False, repr=False)
class IsoColumn(Column):
    """count of the 20 bytes of address are given; prefix_length is 0 where has_prefix is False."""

    address: Bytes
    count: Bytes
    prefix_length: Bytes
    has_prefix: Bools


@dataclass(frozen=True, eq=False, repr=False)
class SysidColumn(Column):
    """sysid has 6 bytes."""

    sysid: Bytes


@dataclass(frozen=True, eq=False, repr=False)
class RdColumn(Column):
    """type is 0, 1 or 2; rd has 8 bytes, with the type."""

    type: Bytes
    rd: Bytes


@dataclass(frozen=True, eq=False, repr=False)
class EsiColumn(Column):
    """esi has 10 bytes."""

    esi: Bytes


@dataclass(frozen=True, eq=False, repr=False)
class AtmvpnColumn(Column):
    """rd has 8 bytes and address 23; prefix_length is 0 where has_prefix is False."""

    rd: Bytes
    type: Bytes
    address: Bytes
    prefix_length: Bytes
    has_prefix: Bools


@dataclass(frozen=True, eq=False, repr=False)
class NumberColumn(Column):
    """value holds the numbers: of 32 bits, of quad 64 bits, of duration unsigned seconds."""

    value: NDArray[Any]


@dataclass(frozen=True, eq=False, repr=False)
class TextColumn(Column):
    """text holds the texts, of dtype "S"."""

    text: NDArray[np.bytes_]


AnyColumn = TypeVar("AnyColumn", bound=Column)


def _read(
    made: type[AnyColumn], family: str, /, texts: Any, threads: int, **options: Any
) -> AnyColumn:
    texts = _column_of(texts)
    arrays = _core.column(family, texts, threads, options)
    return made(family, texts, options, **arrays)


def _column_of(texts: Any) -> Any:
    """A tuple, which keeps its texts alive, or an array of bytes or native str."""
    if isinstance(texts, (str, bytes, bytearray)):
        raise TypeError(f"a column is a sequence of texts, not {type(texts).__name__}")
    if hasattr(texts, "to_numpy"):
        texts = texts.to_numpy()
    if not isinstance(texts, np.ndarray):
        return tuple(texts)
    if texts.ndim != 1:
        raise ValueError(f"a column has one dimension, not {texts.ndim}")
    if texts.dtype.kind == "O":
        return tuple(texts)
    if texts.dtype.kind == "U" and not texts.dtype.isnative:
        return texts.astype(texts.dtype.newbyteorder("="))
    return texts


def ip(
    texts: Texts,
    *,
    threads: int = 1,
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
) -> IpColumn:
    """Reads IPv4 and IPv6 addresses, as orvex_parse.ip does."""
    return _read(IpColumn, "ip", **locals())


def interface(
    texts: Texts,
    *,
    threads: int = 1,
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
) -> InterfaceColumn:
    """Reads interface names, as orvex_parse.interface does."""
    return _read(InterfaceColumn, "interface", **locals())


def is_alias(texts: Texts, *, threads: int = 1) -> Column:
    """Tells the words that mean interface aliases, which are accepted."""
    return _read(Column, "is_alias", **locals())


def alias(
    texts: Texts,
    *,
    threads: int = 1,
    map: str | os.PathLike[str] | None = None,
    alternate: bool = False,
) -> AliasColumn:
    """Looks interface aliases up, as orvex_parse.alias does."""
    return _read(AliasColumn, "alias", **locals())


def mac(
    texts: Texts,
    *,
    threads: int = 1,
    prefix: bool = False,
    unicast: bool = False,
    multicast: bool = False,
) -> MacColumn:
    """Reads MAC addresses, as orvex_parse.mac does."""
    return _read(MacColumn, "mac", **locals())


def delimited(texts: Texts, *, threads: int = 1, count: int, hex: bool = False) -> DelimitedColumn:
    """Reads addresses of count bytes, as orvex_parse.delimited does."""
    return _read(DelimitedColumn, "delimited", **locals())


def iso(texts: Texts, *, threads: int = 1, nsap: bool = False) -> IsoColumn:
    """Reads ISO prefixes or addresses, as orvex_parse.iso does."""
    return _read(IsoColumn, "iso", **locals())


def sysid(texts: Texts, *, threads: int = 1) -> SysidColumn:
    """Reads ISO system identifiers, as orvex_parse.sysid does."""
    return _read(SysidColumn, "sysid", **locals())


def rd(texts: Texts, *, threads: int = 1) -> RdColumn:
    """Reads BGP route distinguishers, as orvex_parse.rd does."""
    return _read(RdColumn, "rd", **locals())


def esi(texts: Texts, *, threads: int = 1, mode: str = "any") -> EsiColumn:
    """Reads Ethernet segment identifiers, as orvex_parse.esi does."""
    return _read(EsiColumn, "esi", **locals())


def atmvpn(texts: Texts, *, threads: int = 1) -> AtmvpnColumn:
    """Reads ATM VPN addresses, as orvex_parse.atmvpn does."""
    return _read(AtmvpnColumn, "atmvpn", **locals())


def integer(texts: Texts, *, threads: int = 1) -> NumberColumn:
    """Reads signed integers of 32 bits, as orvex_parse.integer does."""
    return _read(NumberColumn, "integer", **locals())


def quad(texts: Texts, *, threads: int = 1) -> NumberColumn:
    """Reads signed integers of 64 bits, as orvex_parse.quad does."""
    return _read(NumberColumn, "quad", **locals())


def number(texts: Texts, *, threads: int = 1, limit: int) -> NumberColumn:
    """Reads numbers from 0 to limit - 1, as orvex_parse.number does."""
    return _read(NumberColumn, "number", **locals())


def duration(
    texts: Texts,
    *,
    threads: int = 1,
    min: int = 0,
    max: int = 86399999999999,
) -> NumberColumn:
    """Reads durations, as orvex_parse.duration does, to seconds of up to 64 bits."""
    return _read(NumberColumn, "duration", **locals())


def canonical(texts: Texts, *, threads: int = 1) -> TextColumn:
    """Writes IPv6 addresses in the form of RFC 5952."""
    return _read(TextColumn, "canonical", **locals())


def prefix6(texts: Texts, *, threads: int = 1, address: bool = False) -> TextColumn:
    """Writes IPv6 prefixes as listings show them."""
    return _read(TextColumn, "prefix6", **locals())


def within(
    addresses: Texts | IpColumn, prefixes: Texts | IpColumn, *, threads: int = 1
) -> NDArray[np.int64]:
    """For each address the index of the longest of the prefixes that holds it, or -1.

    Both are texts, or columns that ip() has read; bits after a prefix do not count, and an address
    alone is the prefix of that address. Of equal prefixes the first given counts. IPv4 prefixes
    hold IPv4 addresses only. A refused address is in no prefix; a refused prefix raises its error.
    """
    found = addresses if isinstance(addresses, IpColumn) else ip(addresses, threads=threads)
    given = prefixes if isinstance(prefixes, IpColumn) else ip(prefixes, prefix=True)
    given.check()
    if given.mask_kind is not None and given.mask_kind.any():
        raise ValueError("prefixes have lengths, not masks")
    return _core.within(
        found.version,
        found.address,
        given.version,
        given.address,
        given.prefix_length,
        threads,
    )
