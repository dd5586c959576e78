// Digit tables for formatters, and the writers that use them. A writer stores whole table entries:
// its comment says how many bytes it may touch.
#ifndef ORVEX_OLD_DIGITS_H
#define ORVEX_OLD_DIGITS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace orvex {
inline namespace old {

struct OctetTexts {
    std::array<std::array<char, 4>, 256> plain{};   // "7.", "42.", "255."
    std::array<std::array<char, 4>, 256> padded{};  // "007.", "042.", "255."
    std::array<uint8_t, 256> plain_length{};        // digits of the plain text
};

constexpr OctetTexts make_octet_texts()
{
    OctetTexts texts;
    for (unsigned value = 0; value < 256; ++value) {
        const std::array<char, 3> digits = {static_cast<char>('0' + value / 100),
                                            static_cast<char>('0' + value / 10 % 10),
                                            static_cast<char>('0' + value % 10)};
        texts.padded[value] = {digits[0], digits[1], digits[2], '.'};
        const size_t first = value >= 100 ? 0 : value >= 10 ? 1 : 2;
        size_t length = 0;
        for (size_t i = first; i < digits.size(); ++i) texts.plain[value][length++] = digits[i];
        texts.plain[value][length] = '.';
        texts.plain_length[value] = static_cast<uint8_t>(length);
    }
    return texts;
}

inline constexpr OctetTexts octet_texts = make_octet_texts();

// Writes an octet and a "." behind it, four bytes at the most; answers where the "." stands.
inline char *put_octet(char *at, uint8_t value)
{
    std::memcpy(at, octet_texts.plain[value].data(), 4);
    return at + octet_texts.plain_length[value];
}

// As put_octet, always with three digits.
inline char *put_padded_octet(char *at, uint8_t value)
{
    std::memcpy(at, octet_texts.padded[value].data(), 4);
    return at + 3;
}

// Writes four octets joined by "." and a "." behind them, 16 bytes at the most; answers where the
// last "." stands. `put` is one of the two writers above.
template <char *put(char *, uint8_t)>
char *put_dotted_quad(char *at, const uint8_t *bytes)
{
    at = put(at, bytes[0]) + 1;
    at = put(at, bytes[1]) + 1;
    at = put(at, bytes[2]) + 1;
    return put(at, bytes[3]);
}

inline constexpr std::array<std::array<char, 2>, 256> hex_byte_texts = [] {
    constexpr std::array<char, 16> digits = {'0', '1', '2', '3', '4', '5', '6', '7',
                                             '8', '9', 'a', 'b', 'c', 'd', 'e', 'f'};
    std::array<std::array<char, 2>, 256> texts{};
    for (size_t value = 0; value < texts.size(); ++value)
        texts[value] = {digits[value / 16], digits[value % 16]};
    return texts;
}();

// Writes a byte as two lower-case hexadecimal digits; answers the position behind them.
inline char *put_hex_byte(char *at, uint8_t value)
{
    std::memcpy(at, hex_byte_texts[value].data(), 2);
    return at + 2;
}

// Writes a 16-bit value in hexadecimal without leading zeros, four digits at the most; answers the
// position behind them.
inline char *put_hex_group(char *at, unsigned value)
{
    int shift = value > 0xfff ? 12 : value > 0xff ? 8 : value > 0xf ? 4 : 0;
    for (; shift >= 0; shift -= 4) *at++ = hex_byte_texts[value >> shift & 0xf][1];
    return at;
}

// Room that put_decimal needs for any value.
constexpr size_t decimal_room = 10;

// Writes a number in decimal with at least `width` digits, at most decimal_room, and answers the
// position behind them.
inline char *put_decimal(char *at, uint32_t value, size_t width = 1)
{
    std::array<char, decimal_room> digits;
    size_t first = digits.size();
    do {
        digits[--first] = static_cast<char>('0' + value % 10);
        value /= 10;
    } while (value != 0);
    while (digits.size() - first < width) digits[--first] = '0';
    const size_t length = digits.size() - first;
    std::memcpy(at, digits.data() + first, length);
    return at + length;
}

}  // namespace old
}  // namespace orvex

#endif
