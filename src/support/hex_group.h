// Bytes written as groups of one or two hexadecimal digits.
#ifndef ORVEX_SUPPORT_HEX_GROUP_H
#define ORVEX_SUPPORT_HEX_GROUP_H

#include "support/target_numbers.h"

namespace orvex {

constexpr bool is_group_separator(char character) { return character == '.' || character == ':'; }

struct HexGroup {
    const char *end;  // behind the digits; at the character that is none when not valid
    uint8_t byte;
    bool valid;
};

// Reads a group, with one digit only where a separator, the text's end or `also_ends` follows.
constexpr HexGroup read_hex_group(const char *at, char also_ends = '\0')
{
    const unsigned first = digit_value(at[0]);
    if (first >= 16) return {at, 0, false};
    const unsigned second = digit_value(at[1]);
    if (second < 16) return {at + 2, static_cast<uint8_t>(first * 16 + second), true};
    const bool ends = is_group_separator(at[1]) || at[1] == '\0' || at[1] == also_ends;
    return {at + 1, static_cast<uint8_t>(first), ends};
}

}  // namespace orvex

#endif
