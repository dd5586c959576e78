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
    if (first >= hex_radix) return false;
    value = first;
    ++at;
    for (int place = 1; place < most; ++place, ++at) {
        const unsigned digit = hex_value(*at);
        if (digit >= hex_radix) break;
        value = value << 4 | digit;
    }
    return true;
}

constexpr bool is_group_separator(char character) { return character == '.' || character == ':'; }

// Reads a byte of two digits, or of one where a separator, the text's end or `also_ends` follows,
// and moves `at` past it. When false, `at` is on the character that should be a digit.
constexpr bool read_hex_byte(const char *&at, uint8_t &byte, char also_ends = '\0')
{
    const unsigned first = hex_value(*at);
    if (first >= hex_radix) return false;
    const unsigned second = hex_value(*++at);
    if (second < hex_radix) [[likely]] {
        byte = static_cast<uint8_t>(first << 4 | second);
        ++at;
        return true;
    }
    if (!is_group_separator(*at) && *at != '\0' && *at != also_ends) return false;
    byte = static_cast<uint8_t>(first);
    return true;
}

// Reads `count` bytes, with or without a separator between two, and returns how many there are.
// `at` is then after the last one or, when there are fewer, on the character that should be a
// digit.
constexpr uint32_t read_hex_bytes(const char *&at, uint8_t *bytes, uint32_t count,
                                  char also_ends = '\0')
{
    uint32_t i = 0;
    while (read_hex_byte(at, bytes[i], also_ends)) {
        if (++i == count) return count;
        if (is_group_separator(*at)) [[likely]]
            ++at;
    }
    return i;
}

}  // namespace orvex

#endif
