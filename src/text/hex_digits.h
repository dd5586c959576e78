// Hexadecimal digits: a few of them, and bytes written as groups of one or two.
#ifndef ORVEX_TEXT_HEX_DIGITS_H
#define ORVEX_TEXT_HEX_DIGITS_H

#include <cstdint>

#include "text/characters.h"

namespace orvex {

// Reads one to `most` hexadecimal digits and moves `at` past them; false, with nothing changed,
// without one. More digits may follow.
template <int most>
constexpr bool read_hex_digits(const char *&at, uint32_t &value)
{
    const unsigned first = hex_value(*at);
    if (first >= 16) return false;
    value = first;
    ++at;
    for (int place = 1; place < most; ++place, ++at) {
        const unsigned digit = hex_value(*at);
        if (digit >= 16) break;
        value = value << 4 | digit;
    }
    return true;
}

constexpr bool is_group_separator(char character) { return character == '.' || character == ':'; }

// Reads a byte of two digits, or of one where a separator, the text's end or `also_ends` follows,
// and moves `at` past it. When false, `at` is on the character that should be a digit.
constexpr bool read_hex_byte(const char *&at, uint8_t &byte, char also_ends = '\0')
{
    const char *const start = at;
    uint32_t value = 0;
    if (!read_hex_digits<2>(at, value)) return false;
    const bool is_single = at == start + 1;
    if (is_single && !is_group_separator(*at) && *at != '\0' && *at != also_ends) return false;
    byte = static_cast<uint8_t>(value);
    return true;
}

}  // namespace orvex

#endif
