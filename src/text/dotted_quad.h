// Octets in decimal, and four of them joined by ".".
#ifndef ORVEX_TEXT_DOTTED_QUAD_H
#define ORVEX_TEXT_DOTTED_QUAD_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "text/characters.h"

namespace orvex {

// Whether an octet of several digits may start with a zero.
enum class LeadingZeros { allowed, refused };

// Reads an octet of one to three digits and moves `at` past it. More digits may follow; where
// leading zeros are refused, those after a zero are such. False without a digit, with nothing
// changed, and above 255.
template <LeadingZeros zeros>
inline bool read_octet(const char *&at, uint32_t &octet)
{
    const uint32_t first = decimal_value(at[0]);
    if (first > 9) return false;
    const uint32_t second = decimal_value(at[1]);
    if (second > 9 || (zeros == LeadingZeros::refused && first == 0)) {
        octet = first;
        at += 1;
        return true;
    }
    const uint32_t third = decimal_value(at[2]);
    if (third > 9) {
        octet = first * 10 + second;
        at += 2;
        return true;
    }
    octet = first * 100 + second * 10 + third;
    at += 3;
    return octet <= UINT8_MAX;
}

// Reads four octets joined by ".", and moves `at` past them; false, with nothing changed, when the
// text does not begin with them.
template <LeadingZeros zeros = LeadingZeros::refused>
inline bool read_dotted_quad(const char *&at, uint32_t &quad)
{
    uint32_t a{};
    uint32_t b{};
    uint32_t c{};
    uint32_t d{};
    const char *cursor = at;
    if (!read_octet<zeros>(cursor, a) || *cursor++ != '.') return false;
    if (!read_octet<zeros>(cursor, b) || *cursor++ != '.') return false;
    if (!read_octet<zeros>(cursor, c) || *cursor++ != '.') return false;
    if (!read_octet<zeros>(cursor, d)) return false;
    quad = a << 24 | b << 16 | c << 8 | d;
    at = cursor;
    return true;
}

// A part of a text that ends where the part does: for readers that would go on past it.
struct TerminatedCopy {
    std::array<char, 130> text;
    static constexpr size_t most = sizeof text - 1;

    explicit TerminatedCopy(std::string_view part)
    {
        std::memcpy(text.data(), part.data(), part.size());
        text[part.size()] = '\0';
    }
};

// Reads a text, of at most TerminatedCopy::most characters, as the host's inet_aton does.
bool read_by_inet_aton(std::string_view text, uint32_t &address);

}  // namespace orvex

#endif
