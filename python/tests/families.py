"""The families for the tests: the options of each, texts that it accepts, and texts near those."""
from ipaddress import IPv4Address, IPv6Address

from hypothesis import strategies as st

IP_FLAGS = ["prefix", "prefix_required", "all_bytes", "mask", "default", "integer", "host_zero",
            "multicast", "any", "no_martian", "unicast"]
IF_FLAGS = ["mgmt", "channels", "no_slot", "need_fpc_pic_port", "no_unit", "all", "wildcard",
            "default_unit", "need_channel", "no_unit_max", "rlsq", "at_unit_32767", "ranges",
            "wide_fpc", "expansion_slot", "port_first"]


def flags(*names):
    return st.lists(st.sampled_from(names), max_size=3).map(lambda set_: dict.fromkeys(set_, True))


def numbers(most):
    return st.integers(0, most).map(str)


def joined(separator, *parts):
    return st.tuples(*parts).map(separator.join)


def hex_groups(count, most):
    group = st.integers(0, most).map(lambda number: f"{number:x}")
    return st.lists(group, min_size=count, max_size=count).map(":".join)


ipv4 = st.integers(0, 2**32 - 1).map(lambda number: str(IPv4Address(number)))
ipv6 = st.integers(0, 2**128 - 1).map(lambda number: str(IPv6Address(number)))
distinguishers = st.one_of(joined(":", numbers(70000), numbers(2**32)),
                           joined(":", ipv4, numbers(70000)),
                           joined("L:", numbers(2**32), numbers(70000)))
interfaces = st.one_of(
    st.sampled_from(["all", "irb", "vlan.3", "lo0", "ae1.5", "mgmt1", "eth-*/?/1", "eth-[0-3]/0/1",
                     "eth-1/[0,2]/1", "eth-1/0/1-rx", "lcc0:eth-0/0/0"]),
    joined("", st.sampled_from(["eth-", "at-", "ser-", "pe-", "eth", "xx-"]), numbers(13),
           joined("/", st.just(""), numbers(4), numbers(50)), st.sampled_from(["", ":1", ":1:2", ":"]),
           st.sampled_from(["", ".0", ".16385", ".x"])))

# For each family its options and its texts.
FAMILIES = {
    "ip": (st.tuples(flags(*IP_FLAGS), st.sampled_from([{}, {"family": "inet"}, {"family": 121}]))
           .map(lambda both: {**both[0], **both[1]}),
           st.one_of(ipv4, ipv6, joined("/", ipv4, numbers(33)), joined("/", ipv6, numbers(129)),
                     joined("/", ipv4, ipv4), joined("/", ipv6, ipv6),
                     st.sampled_from(["10.1", "any-unicast", "any-multicast", "default", "all",
                                      "0.0.0.0/1.0.0.0", "3232235777"]))),
    "interface": (flags(*IF_FLAGS), interfaces),
    "is_alias": (st.just({}), st.one_of(st.sampled_from(["uplink-to-core", "xstp-disabled"]), interfaces)),
    "mac": (flags("prefix", "unicast", "multicast"),
            st.one_of(hex_groups(6, 255), joined("/", hex_groups(6, 255), numbers(49)))),
    "delimited": (st.tuples(st.integers(1, 12), st.booleans())
                  .map(lambda both: {"count": both[0], "hex": both[1]}),
                  st.integers(1, 12).flatmap(lambda count: hex_groups(count, 255))),
    "iso": (flags("nsap"), st.one_of(
        joined("/", st.binary(min_size=1, max_size=20).map(bytes.hex), numbers(153)),
        st.binary(min_size=8, max_size=20).map(bytes.hex))),
    "sysid": (st.just({}), joined(".", *[st.integers(0, 65535).map(lambda n: f"{n:x}")] * 3)),
    "rd": (st.just({}), distinguishers),
    "esi": (st.sampled_from(["any", "user-defined", "reserved-ok"]).map(lambda mode: {"mode": mode}),
            st.one_of(hex_groups(10, 255), joined("::", hex_groups(3, 255), hex_groups(4, 255)))),
    "atmvpn": (st.just({}), joined("", joined("::", distinguishers, numbers(256),
                                              joined(":", ipv4, numbers(256))),
                                   st.sampled_from(["", "/40", "/0", "/111", "/112"]))),
    "integer": (st.just({}), st.integers(-2**32, 2**32).map(str)),
    "quad": (st.just({}), st.integers(-2**64, 2**64).map(hex)),
    "number": (st.integers(-1, 2**31 - 1).map(lambda limit: {"limit": limit}), numbers(2**33)),
    "duration": (st.sampled_from([{}, {"min": 60, "max": 86400}]),
                 st.one_of(numbers(2**65), joined("", numbers(40), st.sampled_from(["d", "h", "uftn", " "]),
                                                  numbers(70)), joined(":", numbers(25), numbers(61)))),
    "canonical": (st.just({}), ipv6),
    "prefix6": (flags("address"), joined("/", ipv6, numbers(129))),
}


def texts_of(family):
    """Texts that are mostly accepted, the same with a character too much, and any others."""
    near = FAMILIES[family][1]
    damaged = st.tuples(near, st.text("0 :/.-x[é", max_size=2), st.integers(0, 20)).map(
        lambda parts: parts[0][:parts[2]] + parts[1] + parts[0][parts[2]:])
    return st.one_of(near, near, damaged, st.text(max_size=20))
