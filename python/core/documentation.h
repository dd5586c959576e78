// What help() shows of the functions for one text. The first line is the signature.
#ifndef ORVEX_PYTHON_DOCUMENTATION_H
#define ORVEX_PYTHON_DOCUMENTATION_H

namespace documentation {

inline constexpr const char *ip =
    R"(ip($module, text, /, *, prefix=False, prefix_required=False, all_bytes=False, mask=False, default=False, integer=False, host_zero=False, multicast=False, any=False, no_martian=False, unicast=False, family=None)
--

Reads an IPv4 or IPv6 address, and what the options allow after it.

Returns an ipaddress.IPv4Address or IPv6Address; with a prefix length an IPv4Interface or
IPv6Interface; with a mask, which need not be contiguous, an AddressMask; for "any-unicast" and
"any-multicast" an AnyAddress. Missing IPv4 bytes are 0: "10.1" is 10.1.0.0.

prefix           a prefix length may follow, 0 to 32 or 0 to 128: "10.0.0.0/8"
prefix_required  a prefix length or a mask must be given
all_bytes        IPv4: all four bytes must be given
mask             as prefix, and a mask may follow: "10.0.0.0/255.0.0.0"
default          "default" and "all" mean 0.0.0.0/0, or ::/0 of the family "inet6"
integer          IPv4: one decimal number is the whole address
host_zero        bits after the prefix or outside the mask must be 0
multicast        the address must be in 224.0.0.0/4 or ff00::/8
any              IPv4: "any-unicast" and "any-multicast" are accepted
no_martian       IPv4: not 0.0.0.0, 127/8, 192.0.0/24 or 224/3
unicast          the address must be unicast
family           "inet", "inet6", a family code, or None for either

Raises Refused: code -1 for a text that cannot be read, -2 for one that is not allowed here.)";

inline constexpr const char *interface =
    R"(interface($module, text, /, *, mgmt=False, channels=False, no_slot=False, need_fpc_pic_port=False, no_unit=False, all=False, wildcard=False, default_unit=False, need_channel=False, no_unit_max=False, rlsq=False, at_unit_32767=False, ranges=False, wide_fpc=False, expansion_slot=False, port_first=False, without=())
--

Reads the name of an interface of the router that use_profile() describes. Returns an Interface.

mgmt               one device number: no PIC, port or channel
channels           ":" channel numbers may follow the port
no_slot            no FPC or device number
need_fpc_pic_port  FPC, PIC and port must be given
no_unit            a unit is refused
all                the name "all" is accepted
wildcard           "?" and "*" are accepted as numbers
default_unit       a missing unit is 0
need_channel       a channel number or a direction is required
no_unit_max        the type's highest unit is not applied
rlsq               one device number: no PIC or port
at_unit_32767      type "at": unit 32767 is accepted
ranges             "[0-3]" and "[0,2]" are accepted as numbers
wide_fpc           the first slot number goes up to 255
expansion_slot     the form type-slot-port, with no_slot
port_first         the form type-port, with no_slot
without            names of flags to clear, also those that the interface type has

Raises Refused: code -1 for what is no interface name, -2 for a name that this router cannot have.)";

inline constexpr const char *is_alias =
    R"(is_alias($module, text, /)
--

Returns True when an operator means an interface alias by a word, and not an interface name, an
IPv6 address or a reserved word. Raises Refused, with code 0, for any other word.)";

inline constexpr const char *alias =
    R"(alias($module, text, /, *, map=None, alternate=False)
--

Returns the interface name of an alias, from the alias map of the router.

map        the path of another map
alternate  read the alternate map, /var/etc/if_alias_map+

Raises Refused, with code 0, for an alias that is not in the map, and OSError when there is none.)";

inline constexpr const char *mac =
    R"(mac($module, text, /, *, prefix=False, unicast=False, multicast=False)
--

Reads a MAC address of 48 bits: six groups of one or two hexadecimal digits with "." or ":" between
them, or twelve digits. Returns a MacAddress.

prefix     a prefix length of 0 to 48 may follow; it is 48 without one
unicast    the group bit must be clear
multicast  the group bit must be set

Raises Refused: code -1 for a text that cannot be read, -2 for one that is not allowed here.)";

inline constexpr const char *delimited =
    R"(delimited($module, text, /, *, count, hex=False)
--

Reads an address of count bytes, 1 to 65536, with "." or ":" between them. Returns bytes.

hex  the bytes are hexadecimal, and all must be given; else they are decimal, and missing ones 0

Raises Refused, with code -1.)";

inline constexpr const char *iso =
    R"(iso($module, text, /, *, nsap=False)
--

Reads an ISO prefix, "49.0001/24", of 0 to 152 bits. Returns an IsoAddress.

nsap  the text is a complete address of 8 to 20 bytes: "49.0001.1921.6800.1001.00"

Raises Refused: code -1 for a text that cannot be read, -2 for a value that is not allowed.)";

inline constexpr const char *sysid =
    R"(sysid($module, text, /)
--

Reads an ISO system identifier, "1921.6800.1001". Returns a SystemId of 6 bytes.

Raises Refused: code -1 for a text that cannot be read, -2 when all bytes are 0.)";

inline constexpr const char *rd =
    R"(rd($module, text, /)
--

Reads a BGP route distinguisher: "65000:1", "10.1.1.1:1" or, of a four-byte AS number,
"4200000000L:1". Returns a RouteDistinguisher of 8 bytes. Raises Refused, with code 1.)";

inline constexpr const char *esi =
    R"(esi($module, text, /, *, mode="any")
--

Reads an Ethernet segment identifier: ten hexadecimal bytes with ":" between them, where "::" may
replace one run of zeros. Returns an Esi of 10 bytes.

mode  "any": all but all zeros and all ones, which are reserved; "user-defined": and the first
      byte must be 0; "reserved-ok": every value

Raises Refused, with code -1.)";

inline constexpr const char *atmvpn =
    R"(atmvpn($module, text, /)
--

Reads an ATM VPN address, "65000:1::5::10.1.2.3/32": a route distinguisher, a type of 1 to 255 and
up to 23 bytes, and a prefix length of 0 to 111 bits. Returns an AtmVpnAddress. Raises Refused, with
code 1.)";

inline constexpr const char *integer =
    R"(integer($module, text, /)
--

Reads a signed integer of 32 bits: decimal, octal (017) or hexadecimal (0x1f).

Raises Refused, with code -1; its errno is ERANGE for a number that is out of range.)";

inline constexpr const char *quad =
    R"(quad($module, text, /)
--

Reads a signed integer of 64 bits: decimal, octal (017) or hexadecimal (0x1f).

Raises Refused, with code -1; its errno is ERANGE for a number that is out of range.)";

inline constexpr const char *number =
    R"(number($module, text, /, *, limit)
--

Reads a decimal number from 0 to limit - 1. An empty text is 0.

Raises Refused, with code 0; its errno is ERANGE for a number beyond 32 bits.)";

inline constexpr const char *duration =
    R"(duration($module, text, /, *, min=0, max=86399999999999)
--

Reads a duration: seconds ("90"), numbers with units ("1d2h30m") or a time ("1:00:00"), and sums of
them. Returns a datetime.timedelta of whole seconds.

min, max  the least and the greatest number of seconds; max is by default that of a timedelta,
          which raises OverflowError for more

Raises Refused, with code 0.)";

inline constexpr const char *canonical =
    R"(canonical($module, text, /)
--

Returns the text of an IPv6 address in the form of RFC 5952. Raises Refused, with code 0, for what is
no IPv6 address.)";

inline constexpr const char *prefix6 =
    R"(prefix6($module, text, /, *, address=False)
--

Returns the text of an IPv6 prefix as listings show it: only the groups within the prefix length.

address  leave the prefix length out

Raises Refused, as ip() does.)";

}  // namespace documentation

#endif
