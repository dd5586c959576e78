// Bytes written as groups of one or two hexadecimal digits.
#ifndef ORVEX_OLD_HEX_GROUP_H
#define ORVEX_OLD_HEX_GROUP_H

#include "old/target_numbers.h"

namespace orvex {
inline namespace old {

constexpr bool is_group_separator(char character) { return character == '.' || character == ':'; }

// Reads a group, with one digit only where a separator, the text's end or `also_ends` follows.
// Moves `at` behind it; when false, to the character that should be a digit.
constexpr bool read_hex_group(const char *&at, uint8_t &byte, char also_ends = '\0')
{
    const unsigned first = digit_value(*at);
    if (first >= 16) return false;
    const unsigned second = digit_value(*++at);
    if (second < 16) [[likely]] {
        byte = static_cast<uint8_t>(first << 4 | second);
        ++at;
        return true;
    }
    if (!is_group_separator(*at) && *at != '\0' && *at != also_ends) return false;
    byte = static_cast<uint8_t>(first);
    return true;
}

}  // namespace old
}  // namespace orvex

#endif
