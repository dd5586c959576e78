// Character classes of names, as the current locale has them. The letters and digits of ASCII are
// the same in every locale, so that it is asked about other bytes only.
#ifndef ORVEX_OLD_NAME_CHARACTERS_H
#define ORVEX_OLD_NAME_CHARACTERS_H

#include <cctype>

namespace orvex {
inline namespace old {

constexpr bool is_ascii(char character) { return static_cast<unsigned char>(character) < 0x80; }

constexpr bool is_ascii_lower(char character) { return character >= 'a' && character <= 'z'; }

constexpr bool is_ascii_letter(char character)
{
    return is_ascii_lower(static_cast<char>(character | 0x20));
}

constexpr bool is_digit(char character) { return character >= '0' && character <= '9'; }

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

}  // namespace old
}  // namespace orvex

#endif
