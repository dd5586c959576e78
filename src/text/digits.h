// Digit tables for formatters, and the writers that use them. A writer's comment says which bytes
// after its text it may touch: what follows in the text overwrites them.
#ifndef ORVEX_TEXT_DIGITS_H
#define ORVEX_TEXT_DIGITS_H

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>

namespace orvex {

// The texts of an octet, without and with leading zeros.
struct OctetText {
    std::array<char, 3> plain;   // "7", "42", "255"
    uint8_t length;              // of the plain text
    std::array<char, 4> padded;  // "007", "042", "255", and a terminator
};

inline constexpr std::array<OctetText, 256> octet_texts = [] {
    std::array<OctetText, 256> texts{};
    for (unsigned value = 0; value < texts.size(); ++value) {
        OctetText &text = texts[value];
        text.padded = {static_cast<char>('0' + value / 100),
                       static_cast<char>('0' + value / 10 % 10),
                       static_cast<char>('0' + value % 10)};
        for (size_t i = value >= 100 ? 0 : value >= 10 ? 1 : 2; i < text.plain.size(); ++i)
            text.plain[text.length++] = text.padded[i];
    }
    return texts;
}();

// Writes an octet that more text follows: at least a separator, a digit and the terminator. May
// touch three bytes after the octet.
inline char *put_octet(char *at, uint8_t value)
{
    const OctetText &text = octet_texts[value];
    std::memcpy(at, &text, 4);  // the length too: four bytes are quicker than three
    return at + text.length;
}

// Writes an octet and a terminator, and touches nothing else.
inline char *put_last_octet(char *at, uint8_t value)
{
    const OctetText &text = octet_texts[value];
    std::memcpy(at, text.plain.data(), 2);
    at += text.length;
    std::memcpy(at - 1, &text.padded[2], 2);
    return at;
}

// Writes an octet with three digits, and a terminator.
inline char *put_padded_octet(char *at, uint8_t value)
{
    std::memcpy(at, &octet_texts[value].padded, sizeof(OctetText::padded));
    return at + 3;
}

// Writes four octets joined by ".", and a terminator.
inline char *put_dotted_quad(char *at, const uint8_t *bytes)
{
    for (int i = 0; i < 3; ++i) {
        at = put_octet(at, bytes[i]);
        *at++ = '.';
    }
    return put_last_octet(at, bytes[3]);
}

inline constexpr std::array<std::array<char, 2>, 256> hex_byte_texts = [] {
    constexpr std::string_view digits = "0123456789abcdef";
    std::array<std::array<char, 2>, 256> texts{};
    for (size_t value = 0; value < texts.size(); ++value)
        texts[value] = {digits[value / 16], digits[value % 16]};
    return texts;
}();

// Writes a byte as two lower-case hexadecimal digits.
inline char *put_hex_byte(char *at, uint8_t value)
{
    std::memcpy(at, hex_byte_texts[value].data(), 2);
    return at + 2;
}

// How many hexadecimal digits a 16-bit value has without leading zeros.
inline unsigned hex_group_length(uint32_t value)
{
    return (static_cast<unsigned>(std::bit_width(value | 0xf)) + 3) / 4;
}

// Writes a 16-bit value in hexadecimal without leading zeros. More text follows: at least a
// separator, a character and the terminator. May touch three bytes after the group.
inline char *put_hex_group(char *at, uint32_t value)
{
    const unsigned length = hex_group_length(value);
    value <<= 4 * (4 - length);
    put_hex_byte(at, static_cast<uint8_t>(value >> 8));
    put_hex_byte(at + 2, static_cast<uint8_t>(value));
    return at + length;
}

// Writes a 16-bit value as put_hex_group does, and a terminator, and touches nothing else.
inline char *put_last_hex_group(char *at, uint32_t value)
{
    const unsigned length = hex_group_length(value);
    // Two and two, which may overlap: a length that varies is slow to copy.
    put_hex_byte(at + std::max(length, 2U) - 2, static_cast<uint8_t>(value));
    put_hex_byte(at, static_cast<uint8_t>(value << 4 * (4 - length) >> 8));
    at[length] = '\0';
    return at + length;
}

// Room that put_decimal needs for any value, without the terminator: one place a bit is enough.
constexpr size_t decimal_room = std::numeric_limits<uint32_t>::digits;

// As put_decimal, for any value and width.
[[gnu::noinline]] inline char *put_long_decimal(char *at, uint32_t value, size_t width)
{
    std::array<char, decimal_room> digits;
    size_t first = digits.size();
    do {
        digits[--first] = static_cast<char>('0' + value % 10);
        value /= 10;
    } while (value != 0 || digits.size() - first < width);
    const size_t length = digits.size() - first;
    std::memcpy(at, digits.data() + first, length);
    at[length] = '\0';
    return at + length;
}

// Writes a number in decimal with at least `width` digits, at most decimal_room, and a terminator.
inline char *put_decimal(char *at, uint32_t value, size_t width = 1)
{
    if (std::in_range<uint8_t>(value) && width == 1) [[likely]]
        return put_last_octet(at, static_cast<uint8_t>(value));
    return put_long_decimal(at, value, width);
}

}  // namespace orvex

#endif
