// IPv6 addresses as text: the forms of RFC 4291 section 2.2.
#ifndef ORVEX_TEXT_IPV6_TEXT_H
#define ORVEX_TEXT_IPV6_TEXT_H

#include <cstddef>
#include <cstdint>

namespace orvex {

// The longest text that the writers below write, "ffff:…:ffff:255.255.255.255"; its terminator
// does not count.
constexpr size_t longest_ipv6_text = 45;

// Reads groups of one to four digits, one "::" for at least one group, and four decimal octets
// without leading zeros in place of the last two groups. Stores 16 bytes and moves `at` past the
// address; false, with nothing changed, when the text does not begin with one. What follows must
// be checked: "1::2::3" is read up to the second "::".
bool read_ipv6(const char *&at, uint8_t *bytes);

// Writes groups without leading zeros, "::" for the longest run of two or more zero groups (the
// first of equal ones), and IPv4-compatible and IPv4-mapped addresses with a dotted part, but for
// "::" and "::x". Returns the position after the text; no byte after that one is touched.
char *put_ipv6(char *at, const uint8_t *bytes);

// As put_ipv6, with the last two groups as a dotted part just when `dotted`: RFC 5952 section 4.
char *put_canonical_ipv6(char *at, const uint8_t *bytes, bool dotted);

}  // namespace orvex

#endif
