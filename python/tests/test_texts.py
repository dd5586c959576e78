"""One text: values, canonical texts, messages."""
import copy
import pickle
import subprocess
import sys
from datetime import timedelta
from ipaddress import ip_address, ip_interface

import pytest
from families import FAMILIES, ipv4, ipv6, joined, numbers
from hypothesis import given
from hypothesis import strategies as st

import orvex_parse as op

SAME = object()  # the text itself is canonical


@pytest.mark.parametrize("family, text, options, value, printed", [
    ("ip", "10.1", {}, ip_address("10.1.0.0"), "10.1.0.0"),
    ("ip", b"2001:DB8::1", {}, ip_address("2001:db8::1"), "2001:db8::1"),
    ("ip", "10.1.2.3/8", {"prefix": True}, ip_interface("10.1.2.3/8"), SAME),
    ("ip", "::1/128", {"prefix": True}, ip_interface("::1/128"), SAME),
    ("ip", "all", {"default": True, "family": "inet6"}, ip_interface("::/0"), "::/0"),
    ("ip", "10.0.0.1/255.0.255.0", {"mask": True},
     op.AddressMask(ip_address("10.0.0.1"), ip_address("255.0.255.0")), SAME),
    ("ip", "0.0.0.0/1.0.0.0", {"mask": True, "any": True},
     op.AddressMask(ip_address("0.0.0.0"), ip_address("1.0.0.0")), SAME),
    ("ip", "any-multicast", {"any": True}, op.AnyAddress.MULTICAST, SAME),
    ("interface", "eth-01/2/0:3.100", {},
     op.Interface("eth", 1, 2, 0, (3,), None, 100, None, ""), "eth-1/2/0:3.100"),
    ("interface", "ae-1", {}, op.Interface("ae", 1, None, None, (), None, None, None, ""), "ae1"),
    ("interface", "irb", {"default_unit": True},
     op.Interface("irb", None, None, None, (), None, 0, None, ""), "irb.0"),
    ("interface", "eth-[0-3]/*/[1,5]", {"ranges": True, "wildcard": True},
     op.Interface("eth", "[0-3]", "*", "[1,5]", (), None, None, None, ""), SAME),
    ("interface", "at-0/0/1-rx", {}, op.Interface("at", 0, 0, 1, (), "rx", None, None, ""), SAME),
    ("interface", "r1:mgmt-0", {}, op.Interface("mgmt", 0, None, None, (), None, None, "r1", ""),
     "r1:mgmt0"),
    ("interface", "all", {"all": True}, op.Interface("all", None, None, None, (), None, None, None, ""),
     SAME),
    ("mac", "0:1b:2c:3d:4e:5f/40", {"prefix": True}, op.MacAddress(bytes.fromhex("001b2c3d4e5f"), 40),
     "00:1b:2c:3d:4e:5f/40"),
    ("delimited", "10..3", {"count": 4}, bytes([10, 0, 3, 0]), None),
    ("iso", "49.0001/24", {}, op.IsoAddress(bytes.fromhex("490001"), 24), SAME),
    ("iso", "49.0001.1921.6800.1001.00", {"nsap": True},
     op.IsoAddress(bytes.fromhex("49000119216800100100")), SAME),
    ("sysid", "1921.6800.1", {}, op.SystemId(bytes.fromhex("192168000001")), "1921.6800.0001"),
    ("rd", "1.10:1", {}, op.RouteDistinguisher(bytes.fromhex("00020001000a0001")), "65546L:1"),
    ("rd", "10.1.1.1:7", {}, op.RouteDistinguisher(bytes.fromhex("00010a0101010007")), SAME),
    ("esi", "00:11::99", {}, op.Esi(bytes.fromhex("00110000000000000099")),
     "00:11:00:00:00:00:00:00:00:99"),
    ("duration", "1d2h30m", {}, timedelta(hours=26, minutes=30), None),
    ("duration", "86399999999999", {}, timedelta.max - timedelta(microseconds=999999), None),
    ("integer", "0x1f", {}, 31, "31"),
    ("quad", "-9223372036854775808", {}, -2**63, SAME),
    ("number", "007", {"limit": 8}, 7, "7"),
    ("is_alias", "uplink-to-core", {}, True, None),
    ("canonical", "2001:DB8:0:0:0:0:0:1", {}, "2001:db8::1", "2001:db8::1"),
    ("prefix6", "2001:db8:1::1/48", {}, "2001:db8:1::/48", "2001:db8:1::/48"),
])
def test_values(family, text, options, value, printed):
    found = getattr(op, family)(text, **options)
    assert found == value and type(found) is type(value)
    assert hash(found) == hash(value)
    assert pickle.loads(pickle.dumps(found)) == copy.copy(found) == value
    if printed is not None:
        assert str(found) == (text if printed is SAME else printed)


def test_addresses_are_whole_objects():
    for text in "10.0.0.1", "fe80::1":
        address = op.ip(text)
        assert (str(address), address.packed, address.is_private, address + 1) == (
            text, ip_address(text).packed, True, ip_address(text) + 1)
        assert getattr(address, "scope_id", None) is None


@pytest.mark.parametrize("family, text, options, message, code", [
    ("ip", "10.1.2.3/8", {"prefix": True, "host_zero": True},
     "host portion is not zero (10.0.0.0/8)", -2),
    ("interface", "eth-12/0/0", {}, "fpc value outside range 0..11 for '12/0/0' in 'eth-12/0/0'", -2),
    ("integer", "0x80000000", {}, "'0x80000000' is out of range", -1),
    ("number", "8", {"limit": 8}, "'8' is not a number from 0 to 7", 0),
    ("canonical", "::1" + 60 * " ", {}, "'::1" + 60 * " " + "' is not an IPv6 address", 0),
    ("ip", "é\U0001f600", {}, None, -1),
    ("ip", b"\xff10.0.0.1", {}, None, -1),
    ("mac", "a\0b", {}, "the text holds a NUL character", -1),
    ("mac", b"a\0b", {}, "the text holds a NUL character", -1),
    ("mac", "\ud800", {}, "the text holds a surrogate, no character", -1),
])
def test_refused(family, text, options, message, code):
    with pytest.raises(op.Refused) as caught:
        getattr(op, family)(text, **options)
    error = caught.value
    assert (error.code, error.text) == (code, text)
    assert message is None or str(error) == message
    again = pickle.loads(pickle.dumps(error))
    assert (str(again), again.code, again.errno, again.text) == (
        str(error), error.code, error.errno, error.text)


@pytest.mark.parametrize("call, message", [
    (lambda: op.ip(None), "expected str or bytes, not NoneType"),
    (lambda: op.ip(10), "expected str or bytes, not int"),
    (lambda: op.ip(), "takes one text"),
    (lambda: op.ip("10", "11"), "takes one text"),
    (lambda: op.ip("10", prefixes=True), "no option 'prefixes'"),
    (lambda: op.number("1"), "requires limit"),
    (lambda: op.delimited("1"), "requires count"),
    (lambda: op.interface("lo0", without="all"), "list of flags"),
    (lambda: op.alias("x", map="m", alternate=True), "not both"),
    (lambda: op.use_profile({"product": {"id": None}}), "NoneType"),
])
def test_wrong_use(call, message):
    with pytest.raises(TypeError, match=message):
        call()


@pytest.mark.parametrize("call", [
    lambda: op.number("1", limit=2**31), lambda: op.delimited("1", count=0),
    lambda: op.duration("1", max=-1), lambda: op.esi("::", mode="all"),
    lambda: op.ip("::", family="ipv6"), lambda: op.interface("lo0", without=["x"]),
    lambda: op.format_mac(b"12345"), lambda: op.format_mac(b"123456", prefix_length=49),
    lambda: op.format_mac(b"123456", prefix_length=-1), lambda: op.format_delimited(b"1", delimiter="::"),
    lambda: op.format_iso(bytes(21)), lambda: op.format_esi(b""),
])
def test_wrong_values(call):
    with pytest.raises(ValueError):
        call()


def test_long_texts():
    for family in FAMILIES:
        text = "1" * 2 ** (26 if family in ("ip", "interface") else 20)
        options = {"number": {"limit": 9}, "delimited": {"count": 4}}.get(family, {})
        with pytest.raises(op.Refused):
            getattr(op, family)(text, **options)


def test_texts_need_no_numpy():
    code = "import sys, orvex_parse; orvex_parse.ip('::'); sys.exit('numpy' in sys.modules)"
    assert subprocess.run([sys.executable, "-c", code]).returncode == 0


def test_alias_map(tmp_path):
    path = tmp_path / "map"
    path.write_text("eth-0/0/1 uplink-to-core x\n")
    assert op.alias("uplink-to-core", map=path) == "eth-0/0/1"
    with pytest.raises(op.Refused, match="'other' is not in the alias map"):
        op.alias("other", map=path)
    with pytest.raises(FileNotFoundError, match="none"):
        op.alias("uplink-to-core", map=tmp_path / "none")


def test_formatters():
    assert op.format_ip(op.ip("10.0.0.1/24", prefix=True), full=True) == "010.000.000.001/024"
    assert op.format_ip(op.ip("::1")) == "::1"
    assert op.format_mac(bytes(6), prefix_length=8) == "00:00:00:00:00:00/8"
    assert op.format_delimited(bytes([10, 1]), delimiter=":", hex=True) == "0a:01"
    assert op.format_iso(b"\x49") == "49"
    assert op.format_sysid(bytes(6)) == "0000.0000.0000"


# Options under which every printed value is accepted again.
WIDE = {
    "ip": {"prefix": True, "mask": True, "any": True, "default": True},
    "interface": {"wildcard": True, "all": True},
    "mac": {"prefix": True},
    "esi": {"mode": "reserved-ok"},
}


@pytest.mark.parametrize("family", ["ip", "interface", "mac", "sysid", "rd", "esi", "atmvpn"])
@given(data=st.data())
def test_printed_reads_back(family, data):
    read, options = getattr(op, family), WIDE.get(family, {})
    try:
        value = read(data.draw(FAMILIES[family][1]), **options)
    except op.Refused:
        return
    assert read(str(value), **options) == value
    assert str(read(str(value), **options)) == str(value)


@given(st.binary(min_size=1, max_size=19), st.integers(0, 152))
def test_iso_reads_back(address, length):
    length = min(length, 8 * len(address))
    number = int.from_bytes(address, "big") >> 8 * len(address) - length << 8 * len(address) - length
    value = op.IsoAddress(number.to_bytes(len(address), "big"), length)
    assert op.iso(f"{value.packed.hex()}/{length}") == value
    assert length == 0 or op.iso(str(value)) == value


@given(st.binary(min_size=1, max_size=30), st.sampled_from(".:"), st.booleans())
def test_delimited_reads_back(address, delimiter, hex):
    text = op.format_delimited(address, delimiter=delimiter, hex=hex)
    assert op.delimited(text, count=len(address), hex=hex) == address


@given(st.one_of(ipv4, ipv6, joined("/", ipv4, numbers(32)), joined("/", ipv6, numbers(128))))
def test_addresses_equal_those_of_the_standard_library(text):
    value = op.ip(text, prefix=True)
    expected = ip_interface(text) if "/" in text else ip_address(text)
    assert value == expected and type(value) is type(expected)
    if "/" in text:
        for made, other in (value, expected), (value.network, expected.network):
            assert [str(vars(made)[name]) for name in vars(other) if name != "hosts"] == [
                str(attribute) for name, attribute in vars(other).items() if name != "hosts"]
        assert value.hostmask == expected.hostmask
        assert next(iter(value.network.hosts()), 0) == next(iter(expected.network.hosts()), 0)
