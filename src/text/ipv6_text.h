// IPv6 addresses as text: the forms of RFC 4291 section 2.2.
#ifndef ORVEX_TEXT_IPV6_TEXT_H
#define ORVEX_TEXT_IPV6_TEXT_H

#include <climits>
#include <cstddef>
#include <cstdint>

#include "text/bytes.h"

namespace orvex {

// The longest text that the writers below write, "ffff:…:ffff:255.255.255.255"; its terminator
// does not count.
constexpr size_t longest_ipv6_text = 45;

// Reads groups of one to four digits, one "::" for at least one group, and four decimal octets
// without leading zeros in place of the last two groups. Stores 16 bytes and moves `at` past the
// address; false, with nothing changed, when the text does not begin with one or has a second "::".
// What follows must be checked: "1:2:3:4:5:6:7:8:9" is read up to the 9.
bool read_ipv6(const char *&at, uint8_t *bytes);

// The writers below write a terminator after their text, return its position, and touch nothing
// after it.

// Writes groups without leading zeros, "::" for the longest run of two or more zero groups (the
// first of equal ones), and IPv4-compatible and IPv4-mapped addresses with a dotted part, but for
// "::" and "::x".
char *put_ipv6(char *at, const uint8_t *bytes);

// As put_ipv6, but the last two groups are a dotted part exactly when `dotted`: the form of RFC
// 5952 section 4.
char *put_canonical_ipv6(char *at, const uint8_t *bytes, bool dotted);

constexpr unsigned ipv6_group_count = 8;

// The zero groups that "::" replaces.
struct ZeroRun {
    static constexpr unsigned none = UINT_MAX;
    unsigned first = none;
    unsigned end = none;  // the group after the last
};

// A bit for each group that is zero, bit 0 for the first group.
inline unsigned zero_groups(const uint8_t *bytes)
{
    unsigned zeros = 0;
    for (size_t group = 0; group < ipv6_group_count; ++group)
        zeros |= static_cast<unsigned>(load_native<uint16_t>(bytes + 2 * group) == 0) << group;
    return zeros;
}

// Writes eight groups, with "::" for a run.
char *put_ipv6_groups(char *at, const uint8_t *bytes, ZeroRun run);

// As put_ipv6_groups, with a dotted part in place of the last two groups. A run may end in it.
char *put_ipv6_with_quad(char *at, const uint8_t *bytes, ZeroRun run);

}  // namespace orvex

#endif
