"""Measures orvex_parse beside the standard library, netaddr and regular expressions: ratios of one run.

    bench/python.py PARSE_LOOP_LIBRARY [ROWS]
"""
import ctypes
import ipaddress
import random
import re
import sys
import time
from collections.abc import Callable
from functools import partial
from typing import Any

import netaddr

import orvex_parse
from orvex_parse import columns

REPETITIONS = 5
ROWS = int(sys.argv[2]) if len(sys.argv) > 2 else 1_000_000
SAMPLE = ROWS // 50  # texts that a slow peer reads


class Row:
    """Two calls, measured in turn, and the least time of each for one text, in ns."""

    def __init__(self, name: str, goal: float, peer: Callable[[], Any], peer_texts: int,
                 call: Callable[[], Any], texts: int) -> None:
        self.name, self.goal = name, goal
        self.calls = ((peer, peer_texts), (call, texts))
        self.best = [float("inf"), float("inf")]

    def measure(self) -> None:
        for side, (call, texts) in enumerate(self.calls):
            start = time.perf_counter_ns()
            call()
            self.best[side] = min(self.best[side], (time.perf_counter_ns() - start) / texts)

    def show(self) -> None:
        ratio = self.best[0] / self.best[1]
        verdict = "" if ratio >= self.goal else "  missed"
        print(f"{self.name:<52}{self.best[0]:>12.1f}{self.best[1]:>10.1f}{ratio:>9.2f}"
              f"{self.goal:>8.2f}{verdict}")


def repeated(call: Callable[[], Any], count: int = 20_000) -> Callable[[], None]:
    def loop() -> None:
        for _ in range(count):
            call()
    return loop


def each(read: Callable[[str], Any], texts: list[str]) -> Callable[[], Any]:
    return lambda: [read(text) for text in texts]


# ---- What a careful programmer writes without the library ----

INTERFACE = re.compile(r"([a-z]+)-(\d+)/(\d+)/(\d+)(?::(\d+))?(?:\.(\d+))?")
ESI = re.compile(":".join(["([0-9a-fA-F]{1,2})"] * 10))
DISTINGUISHER = re.compile(r"(?:(\d+)|(\d+)\.(\d+)\.(\d+)\.(\d+)):(\d+)")


def match_interface(text: str) -> Any:
    match = INTERFACE.fullmatch(text)
    if match is None:
        return None
    kind, *numbers = match.groups()
    fpc, pic, port, channel, unit = (-1 if number is None else int(number) for number in numbers)
    if fpc > 11 or pic > 3 or port > 47 or channel > 3 or unit > 16384:
        return None
    return kind, fpc, pic, port, channel, unit


def match_esi(text: str) -> Any:
    match = ESI.fullmatch(text)
    if match is None:
        return None
    esi = bytes([int(group, 16) for group in match.groups()])
    return None if esi in (bytes(10), b"\xff" * 10) else esi


def match_distinguisher(text: str) -> Any:
    match = DISTINGUISHER.fullmatch(text)
    if match is None:
        return None
    number = int(match[6])
    if match[1] is not None:
        administrator = int(match[1])
        if not 1 <= administrator <= 65535 or number > 0xFFFFFFFF:
            return None
        return b"\0\0" + administrator.to_bytes(2, "big") + number.to_bytes(4, "big")
    groups = [int(group) for group in match.groups()[1:5]]
    if max(groups) > 255 or number > 65535:
        return None
    return b"\0\1" + bytes(groups) + number.to_bytes(2, "big")


def main() -> None:
    pick = random.Random(1)
    ipv4 = [str(ipaddress.IPv4Address(pick.getrandbits(32))) for _ in range(ROWS // 2)]
    ipv6 = [str(ipaddress.IPv6Address(pick.getrandbits(128))) for _ in range(ROWS - ROWS // 2)]
    addresses = ipv4 + ipv6
    pick.shuffle(addresses)
    # Objects in the order in which the column has them, as from a file.
    addresses = "\n".join(addresses).split("\n")
    prefixes = [str(ipaddress.ip_network((pick.getrandbits(32), pick.randint(8, 28)), strict=False))
                for _ in range(1000)]
    networks = [netaddr.IPNetwork(prefix) for prefix in prefixes]
    names = [f"eth-{pick.randrange(12)}/{pick.randrange(4)}/{pick.randrange(48)}.{pick.randrange(16384)}"
             for _ in range(ROWS)]
    esis = [pick.randbytes(10).hex(":") for _ in range(ROWS)]
    distinguishers = [f"{pick.randint(1, 65535)}:{pick.getrandbits(32)}" if row % 2 else
                      f"{ipv4[row // 2]}:{pick.getrandbits(16)}" for row in range(ROWS)]

    loop = ctypes.CDLL(sys.argv[1]).parse_loop
    loop.argtypes = [ctypes.c_char_p, ctypes.c_size_t]
    joined = "\0".join(addresses).encode()
    assert loop(joined, ROWS) == ROWS == columns.ip(addresses).accepted.sum()
    accepted = columns.interface(names).accepted[:SAMPLE].tolist()
    assert accepted == [match_interface(name) is not None for name in names[:SAMPLE]]

    ip = orvex_parse.ip
    one = 20_000
    rows = [
        Row("one IPv4 address: ipaddress.ip_address", 3, repeated(lambda: ipaddress.ip_address("10.1.2.3")), one,
            repeated(lambda: ip("10.1.2.3")), one),
        Row("one IPv6 address: ipaddress.ip_address", 3, repeated(lambda: ipaddress.ip_address("2001:db8::1:2")),
            one, repeated(lambda: ip("2001:db8::1:2")), one),
        Row("one IPv4 prefix: ipaddress.ip_interface", 2, repeated(lambda: ipaddress.ip_interface("10.1.2.3/24")),
            one, repeated(lambda: ip("10.1.2.3/24", prefix=True)), one),
        Row("one IPv4 prefix: netaddr.IPNetwork", 5, repeated(lambda: netaddr.IPNetwork("10.1.2.3/24")), one,
            repeated(lambda: ip("10.1.2.3/24", prefix=True)), one),
        Row("addresses: ipaddress.ip_address, one by one", 50, each(ipaddress.ip_address, addresses[:SAMPLE]), SAMPLE,
            lambda: columns.ip(addresses), ROWS),
        Row("addresses, two threads: one thread", 1.7, lambda: columns.ip(addresses), ROWS,
            lambda: columns.ip(addresses, threads=2), ROWS),
        Row("addresses: the C function in a C loop", 0.5, lambda: loop(joined, ROWS), ROWS,
            lambda: columns.ip(addresses), ROWS),
        Row("addresses in 1,000 prefixes: all_matching_cidrs", 100,
            each(lambda text: netaddr.all_matching_cidrs(text, networks), ipv4[:20]), 20,
            lambda: columns.within(addresses, prefixes), ROWS),
    ]
    expressions: list[tuple[str, Callable[[str], Any], Callable[..., Any], list[str]]] = [
        ("interface names", match_interface, columns.interface, names),
        ("Ethernet segment identifiers", match_esi, columns.esi, esis),
        ("route distinguishers", match_distinguisher, columns.rd, distinguishers)]
    for what, match, read, texts in expressions:
        rows += [
            Row(f"{what}: a regular expression", 30, each(match, texts[:SAMPLE]), SAMPLE,
                partial(read, texts), ROWS),
            Row(f"{what}, all cores: the same", 30, each(match, texts[:SAMPLE]), SAMPLE,
                partial(read, texts, threads=0), ROWS),
        ]
    for _ in range(REPETITIONS):
        for row in rows:
            row.measure()
    print(f"{'':<52}{'peer, ns':>12}{'here, ns':>10}{'ratio':>9}{'goal':>8}")
    for row in rows:
        row.show()


if __name__ == "__main__":
    main()
