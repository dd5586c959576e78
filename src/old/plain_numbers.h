// Numbers and dotted quads of a few digits, as nearly all are typed. A reader that answers false or
// null leaves the text to the general one, which reads these to the same.
#ifndef ORVEX_OLD_PLAIN_NUMBERS_H
#define ORVEX_OLD_PLAIN_NUMBERS_H

#include <cstdint>

#include "old/target_numbers.h"

namespace orvex {
inline namespace old {

// What the general reader makes of a number that starts with a zero: "08".
enum class LeadingZeros { decimal, octal };

// Reads one to nine digits and moves `at` behind them.
[[gnu::always_inline]] inline bool read_plain_decimal(const char *&at, uint32_t &value)
{
    value = digit_of<10>(*at);
    if (value > 9) return false;
    uint32_t digit = 0;
    for (int more = 8; (digit = digit_of<10>(*++at)) <= 9; --more) {
        if (more == 0) return false;
        value = value * 10 + digit;
    }
    return true;
}

// Reads one to three digits of a value up to 255 into the low end of `quad`.
template <LeadingZeros zeros>
[[gnu::always_inline]] inline bool read_plain_octet(const char *&at, uint32_t &quad)
{
    const uint32_t first = digit_of<10>(at[0]);
    if (first > 9) return false;
    const uint32_t second = digit_of<10>(at[1]);
    if (second > 9) [[unlikely]] {
        quad = quad << 8 | first;
        at += 1;
        return true;
    }
    if (zeros == LeadingZeros::octal && first == 0) return false;
    const uint32_t third = digit_of<10>(at[2]);
    if (third > 9) [[unlikely]] {
        quad = quad << 8 | (first * 10 + second);
        at += 2;
        return true;
    }
    const uint32_t octet = first * 100 + second * 10 + third;
    quad = quad << 8 | octet;
    at += 3;
    return octet <= 255;
}

// Reads the rest of four plain octets joined by "." behind the first one.
template <LeadingZeros zeros>
[[gnu::always_inline]] inline bool read_plain_rest(const char *&at, uint32_t &quad)
{
    if (*at++ != '.' || !read_plain_octet<zeros>(at, quad)) return false;
    if (*at++ != '.' || !read_plain_octet<zeros>(at, quad)) return false;
    return *at++ == '.' && read_plain_octet<zeros>(at, quad);
}

struct PlainQuad {
    const char *end;  // null when the text does not start with one
    uint32_t value;
};

template <LeadingZeros zeros>
[[gnu::always_inline]] inline PlainQuad read_plain_quad(const char *at)
{
    uint32_t quad = 0;
    if (!read_plain_octet<zeros>(at, quad) || !read_plain_rest<zeros>(at, quad))
        return {nullptr, 0};
    return {at, quad};
}

}  // namespace old
}  // namespace orvex

#endif
