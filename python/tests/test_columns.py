"""Columns: equal to the functions for one text, whatever they are made of."""
from datetime import timedelta
from ipaddress import ip_address, ip_network

import numpy as np
import pandas as pd
import pytest
from families import FAMILIES, ipv4, ipv6, joined, numbers, texts_of
from hypothesis import given
from hypothesis import strategies as st

import orvex_parse as op
from orvex_parse import columns


def ip_row(column, row):
    def address(array):
        return ip_address(array[row, :4 if column.version[row] == 4 else 16].tobytes())

    kind = 0 if column.mask_kind is None else column.mask_kind[row]
    if kind:
        return list(op.AnyAddress)[kind - 2] if kind > 1 else op.AddressMask(address(column.address),
                                                                          address(column.mask))
    if column.has_prefix[row]:
        return op.ip(f"{address(column.address)}/{column.prefix_length[row]}", prefix=True)
    return address(column.address)


def interface_row(column, row, value):
    words = {-1: None, -2: "?", -3: "*"}

    def number(array, typed):
        found = int(array[row])
        return typed if found == -4 and str(typed).startswith("[") else words.get(found, found)

    channels = tuple(words.get(int(c), int(c)) for c in column.channels[row, :column.channel_count[row]])
    return op.Interface(column.types[column.type[row]], number(column.fpc, value.fpc),
                        number(column.pic, value.pic), number(column.port, value.port), channels,
                        [None, "rx", "tx"][column.direction[row]], number(column.unit, value.unit),
                        value.chassis, "")


def length(column, row):
    return int(column.prefix_length[row]) if column.has_prefix[row] else None


# The value in a row of a column, as the function for one text gives it.
ROWS = {
    "ip": lambda c, r, v: ip_row(c, r),
    "interface": interface_row,
    "is_alias": lambda c, r, v: True,
    "mac": lambda c, r, v: op.MacAddress(c.address[r].tobytes(), length(c, r)),
    "delimited": lambda c, r, v: c.address[r].tobytes(),
    "iso": lambda c, r, v: op.IsoAddress(c.address[r, :c.count[r]].tobytes(), length(c, r)),
    "sysid": lambda c, r, v: op.SystemId(c.sysid[r].tobytes()),
    "rd": lambda c, r, v: op.RouteDistinguisher(c.rd[r].tobytes()),
    "esi": lambda c, r, v: op.Esi(c.esi[r].tobytes()),
    "atmvpn": lambda c, r, v: op.AtmVpnAddress(op.RouteDistinguisher(c.rd[r].tobytes()),
                                               int(c.type[r]), c.address[r].tobytes(), length(c, r)),
    "duration": lambda c, r, v: timedelta(seconds=int(c.value[r])),
    "canonical": lambda c, r, v: c.text[r].decode(),
    "prefix6": lambda c, r, v: c.text[r].decode(),
}
ROWS.update(dict.fromkeys(["integer", "quad", "number"], lambda c, r, v: int(c.value[r])))


@pytest.mark.parametrize("family", FAMILIES)
@given(data=st.data())
def test_columns_equal_single_calls(family, data):
    options = data.draw(FAMILIES[family][0])
    texts = data.draw(st.lists(st.one_of(
        texts_of(family), texts_of(family).map(lambda text: text.encode(errors="replace")),
        st.sampled_from([None, 7, "a\0b", "\ud800", ""])), max_size=8))
    column = getattr(columns, family)(texts, threads=2, **options)
    messages = column.messages()
    for row, text in enumerate(texts):
        try:
            value = getattr(op, family)(text, **options)
        except (op.Refused, TypeError) as error:
            assert not column.accepted[row] and messages[row] == str(error)
        else:
            assert column.accepted[row] and ROWS[family](column, row, value) == value
    assert len(column) == len(texts) and len(messages) == np.count_nonzero(~column.accepted)


def arrays_of(column):
    return {name: value for name, value in vars(column).items() if isinstance(value, np.ndarray)
            and name != "texts"}


def same(left, right):
    left, right = arrays_of(left), arrays_of(right)
    return left.keys() == right.keys() and all(np.array_equal(left[name], right[name]) for name in left)


TEXTS = ["10.0.0.1", "2001:db8::1/32", "x", "", "192.168.0.0/16", "é", "10.1.2.300"]


@pytest.mark.parametrize("texts", [
    tuple(TEXTS), iter(TEXTS), np.array(TEXTS), np.array(TEXTS).astype(">U20"),
    np.array([text.encode() for text in TEXTS]), np.array(TEXTS, dtype=object), pd.Series(TEXTS),
    pd.Series(TEXTS, index=list("zyxwvut")).astype("category"), np.repeat(np.array(TEXTS), 2)[::2],
    np.array(TEXTS[::-1])[::-1], np.array(list(zip(TEXTS, TEXTS)))[:, 1],
    np.array([(1, text) for text in TEXTS], dtype=[("n", "i1"), ("text", "U20")])["text"],
])
def test_kinds_of_columns(texts):
    column = columns.ip(texts, prefix=True)
    assert same(column, columns.ip(TEXTS, prefix=True))
    assert column.accepted.tolist() == [True, True, False, False, True, False, False]
    assert column.messages()[6] == columns.ip(TEXTS, prefix=True).messages()[6]


@pytest.mark.parametrize("family, texts", [
    ("ip", ["10.0.0.1", "::1", "x", None]), ("mac", ["0:1:2:3:4:5"]),
    # Later threads meet the types in another order.
    ("interface", ["pe-1/0/0"] * 9 + ["ae1", "eth-1/2/3:1.7", "xx-0", "at-0/0/0-tx"]),
])
def test_threads_change_nothing(family, texts):
    texts = texts * 2000 + texts[::-1] * 2000
    one = getattr(columns, family)(texts)
    for threads in 0, 2, 3, 7, 1000:
        many = getattr(columns, family)(texts, threads=threads)
        assert same(one, many) and getattr(one, "types", 0) == getattr(many, "types", 0)


@pytest.mark.parametrize("texts, error, message", [
    ("10.0.0.1", TypeError, "not str"), (b"10.0.0.1", TypeError, "not bytes"),
    (7, TypeError, "not iterable"), (np.array([1, 2]), TypeError, "int64"),
    (np.array([["10"]]), ValueError, "not 2"), (np.array("10"), ValueError, "not 0"),
])
def test_no_columns(texts, error, message):
    with pytest.raises(error, match=message):
        columns.ip(texts)
    with pytest.raises(ValueError, match="threads"):
        columns.ip([], threads=-1)


def test_mixed_columns_lose_nothing():
    texts = ["10.0.0.1", None, 7, float("nan"), ["10"], "10.0.0.2", b"10.0.0.3", bytearray(b"10")]
    column = columns.ip(texts)
    assert column.address[column.accepted, :4].tolist() == [[10, 0, 0, n] for n in (1, 2, 3)]
    assert {row: message.split()[-1] for row, message in column.messages().items()} == {
        1: "NoneType", 2: "int", 3: "float", 4: "list", 7: "bytearray"}
    with pytest.raises(TypeError, match="row 1: expected str or bytes, not NoneType"):
        column.check()
    with pytest.raises(op.Refused, match="row 1: ") as caught:
        columns.mac(["0:1:2:3:4:5", "x"]).check()
    assert caught.value.text == "x"


def test_large_texts():
    texts = ["1" * 2**26, "10.0.0.1"]
    assert columns.ip(texts).accepted.tolist() == [False, True]
    assert columns.ip(np.array(["1" * 2**24, "10.0.0.1"])).accepted.tolist() == [False, True]


def test_aliases(tmp_path):
    path = tmp_path / "map"
    path.write_text("eth-0/0/1 uplink-to-core x\n")
    column = columns.alias(["uplink-to-core", "other"] * 5000, map=path, threads=2)
    assert column.interface[:2].tolist() == [b"eth-0/0/1", b""]
    assert column.accepted.tolist() == [True, False] * 5000
    with pytest.raises(FileNotFoundError):
        columns.alias(["x"], map=tmp_path / "none")


prefixes = st.one_of(joined("/", ipv4, numbers(32)), joined("/", ipv6, numbers(128)),
                     st.sampled_from(["10.0.0.0/8", "10.0.0.0/9", "10.1.2.3/8", "0.0.0.0/0", "::/0",
                                      "10.128.0.0/9", "255.255.255.255/32", "ffff::/16", "10.0.0.1"]))


@given(st.lists(prefixes, max_size=12), st.lists(st.one_of(
    ipv4, ipv6, st.sampled_from(["10.0.0.1", "10.200.0.0", "255.255.255.255", "x", "ffff::1"])),
    max_size=6), st.data())
def test_within(given_prefixes, addresses, data):
    # Addresses at both ends of prefixes too, where a range could be off by one.
    for prefix in given_prefixes:
        network = ip_network(prefix, strict=False)
        addresses.append(str(network[data.draw(st.sampled_from([0, -1]))]))
    expected = []
    for text in addresses:
        holding = [] if text == "x" else [
            (network.prefixlen, -index) for index, network in enumerate(
                ip_network(prefix, strict=False) for prefix in given_prefixes)
            if ip_address(text) in network]
        expected.append(-max(holding)[1] if holding else -1)
    assert columns.within(addresses, given_prefixes).tolist() == expected
    many = columns.within(columns.ip(addresses * 1000), columns.ip(given_prefixes, prefix=True), threads=3)
    assert many.tolist() == expected * 1000


def test_within_refuses():
    with pytest.raises(op.Refused, match="row 1: "):
        columns.within(["10.0.0.1"], ["10.0.0.0/8", "10.0.0.0/33"])
    with pytest.raises(ValueError, match="masks"):
        columns.within(["10.0.0.1"], columns.ip(["10.0.0.0/255.0.0.0"], mask=True))
