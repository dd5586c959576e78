// Character classes. Those of names are the current locale's; the letters and digits of ASCII are
// the same in every locale, so that it is asked about other bytes only.
#ifndef ORVEX_TEXT_CHARACTERS_H
#define ORVEX_TEXT_CHARACTERS_H

#include <array>
#include <cctype>
#include <cstddef>
#include <cstdint>

namespace orvex {

// The value of a decimal digit; above 9 for any other character.
constexpr unsigned decimal_value(char character)
{
    return static_cast<unsigned char>(character) - unsigned{'0'};
}

constexpr unsigned hex_radix = 16;
inline constexpr std::array<uint8_t, 256> hex_values = [] {
    std::array<uint8_t, 256> values{};
    values.fill(hex_radix);
    for (uint8_t digit = 0; digit < 10; ++digit) values[size_t{'0'} + digit] = digit;
    for (uint8_t value = 10; value < hex_radix; ++value)
        values[size_t{'a'} - 10 + value] = values[size_t{'A'} - 10 + value] = value;
    return values;
}();

// The value of a hexadecimal digit; hex_radix for any other character.
constexpr unsigned hex_value(char character)
{
    return hex_values[static_cast<unsigned char>(character)];
}

constexpr bool is_digit(char character) { return decimal_value(character) <= 9; }

constexpr bool is_hex_digit(char character) { return hex_value(character) < hex_radix; }

constexpr bool is_space(char character)
{
    return character == ' ' || (character >= '\t' && character <= '\r');
}

constexpr bool is_ascii(char character) { return static_cast<unsigned char>(character) < 0x80; }

constexpr bool is_ascii_lower(char character) { return character >= 'a' && character <= 'z'; }

constexpr bool is_ascii_letter(char character)
{
    return is_ascii_lower(static_cast<char>(character | 0x20));
}

inline bool is_letter(char character)
{
    if (is_ascii(character)) return is_ascii_letter(character);
    return std::isalpha(static_cast<unsigned char>(character)) != 0;
}

inline bool is_lower_letter(char character)
{
    if (is_ascii(character)) return is_ascii_lower(character);
    return std::islower(static_cast<unsigned char>(character)) != 0;
}

inline bool is_letter_or_digit(char character)
{
    if (is_ascii(character)) return is_ascii_letter(character) || is_digit(character);
    return std::isalnum(static_cast<unsigned char>(character)) != 0;
}

}  // namespace orvex

#endif
