// Text to number as the 32-bit target's strtol, strtoul and strtoq convert, on every host: leading
// white space and one sign, saturation at the ends of the type, negated unsigned values wrapped.
// errno is left alone.
#ifndef ORVEX_SUPPORT_TARGET_NUMBERS_H
#define ORVEX_SUPPORT_TARGET_NUMBERS_H

#include <cstdint>
#include <limits>
#include <type_traits>

namespace orvex
{

enum class Base : unsigned { from_prefix = 0, decimal = 10, hexadecimal = 16 };

template <typename Value>
struct Conversion {
    Value value;        // 0 when nothing was converted, saturated when out of range
    const char *end;    // where the conversion stopped; the text's start when nothing was converted
    bool out_of_range;  // the digits left the type's range
};

constexpr bool is_space(char character)
{
    return character == ' ' || (character >= '\t' && character <= '\r');
}

// The value of a digit of any base; at least 16 for any other character.
constexpr unsigned digit_value(char character)
{
    const unsigned decimal = static_cast<unsigned char>(character) - unsigned{'0'};
    if (decimal <= 9) return decimal;
    const unsigned letter = (static_cast<unsigned char>(character) | 0x20U) - unsigned{'a'};
    return letter < 6 ? letter + 10 : 16;
}

template <typename Magnitude>
struct DigitRun {
    Magnitude value;
    const char *end;  // the start when there is no digit
    bool overflow;
};

// Reads all digits of a base, also behind an overflow.
template <unsigned radix, typename Magnitude>
constexpr DigitRun<Magnitude> read_digits(const char *at)
{
    // As many digits as fit whatever they are need no overflow check.
    constexpr int safe_digits = std::numeric_limits<Magnitude>::digits / (radix == 8    ? 3
                                                                          : radix == 16 ? 4
                                                                                        : 1);
    constexpr int unchecked = radix == 10 ? std::numeric_limits<Magnitude>::digits10 : safe_digits;
    DigitRun<Magnitude> run{0, at, false};
    for (const char *const limit = at + 0; run.end - limit < unchecked; ++run.end) {
        const unsigned digit = digit_value(*run.end);
        if (digit >= radix) return run;
        run.value = static_cast<Magnitude>(run.value * radix + digit);
    }
    for (unsigned digit = 0; (digit = digit_value(*run.end)) < radix; ++run.end) {
        run.overflow |= __builtin_mul_overflow(run.value, Magnitude{radix}, &run.value);
        run.overflow |= __builtin_add_overflow(run.value, Magnitude{digit}, &run.value);
    }
    return run;
}

template <typename Magnitude>
constexpr DigitRun<Magnitude> read_magnitude(const char *at, Base base)
{
    if (base == Base::decimal || (base == Base::from_prefix && *at != '0'))
        return read_digits<10, Magnitude>(at);
    // The prefix counts only when a digit follows; "0x" alone is a zero and an "x".
    if (at[0] == '0' && (at[1] == 'x' || at[1] == 'X') && digit_value(at[2]) < 16)
        return read_digits<16, Magnitude>(at + 2);
    return base == Base::hexadecimal ? read_digits<16, Magnitude>(at)
                                     : read_digits<8, Magnitude>(at);
}

template <typename Value>
constexpr Conversion<Value> convert(const char *text, Base base)
{
    using Magnitude = std::make_unsigned_t<Value>;
    using Limits = std::numeric_limits<Value>;

    const char *at = text;
    while (is_space(*at)) ++at;
    const bool negative = *at == '-';
    if (negative || *at == '+') ++at;

    const DigitRun<Magnitude> run = read_magnitude<Magnitude>(at, base);
    if (run.end == at) return {0, text, false};

    const Magnitude most = static_cast<Magnitude>(Limits::max()) +
                           static_cast<Magnitude>(Limits::is_signed && negative);
    if (run.overflow || run.value > most)
        return {Limits::is_signed && negative ? Limits::min() : Limits::max(), run.end, true};
    return {static_cast<Value>(negative ? Magnitude{0} - run.value : run.value), run.end, false};
}

}  // namespace orvex

#endif
