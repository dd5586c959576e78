// Text to number as the 32-bit target's strtol, strtoul and strtoq convert, on every host: leading
// white space and one sign, saturation at the ends of the type, negated unsigned values wrapped.
// errno is left alone.
#ifndef ORVEX_TEXT_TARGET_NUMBERS_H
#define ORVEX_TEXT_TARGET_NUMBERS_H

#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>
#include <utility>

#include "text/characters.h"

namespace orvex {

enum class Base : unsigned { from_prefix = 0, decimal = 10, hexadecimal = 16 };

template <typename Value>
struct Conversion {
    Value value;        // 0 when nothing was converted, saturated when out of range
    const char *end;    // where the conversion stopped; the text's start when nothing was converted
    bool out_of_range;  // the digits left the type's range
};

template <typename Magnitude>
struct DigitRun {
    Magnitude value;
    const char *end;  // the start when there is no digit
    bool overflow;
};

// Reads all digits of a base, also after an overflow.
template <typename Magnitude>
constexpr DigitRun<Magnitude> read_digits(const char *at, unsigned radix)
{
    DigitRun<Magnitude> run{0, at, false};
    for (unsigned digit{}; (digit = hex_value(*run.end)) < radix; ++run.end) {
        run.overflow |= __builtin_mul_overflow(run.value, Magnitude{radix}, &run.value);
        run.overflow |= __builtin_add_overflow(run.value, Magnitude{digit}, &run.value);
    }
    return run;
}

template <typename Magnitude>
constexpr DigitRun<Magnitude> read_magnitude(const char *at, Base base)
{
    if (base == Base::decimal || (base == Base::from_prefix && *at != '0'))
        return read_digits<Magnitude>(at, 10);
    // The prefix counts only when a digit follows; "0x" alone is a zero and an "x".
    if (at[0] == '0' && (at[1] == 'x' || at[1] == 'X') && is_hex_digit(at[2]))
        return read_digits<Magnitude>(at + 2, hex_radix);
    return read_digits<Magnitude>(at, base == Base::hexadecimal ? hex_radix : 8);
}

// Any text: white space, signs, prefixes and values out of range included.
template <typename Value>
[[gnu::cold, gnu::noinline]] constexpr Conversion<Value> convert_any(const char *text, Base base)
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

// Reads digits and moves `at` past them; so many that they do not fit 64 bits wrap around.
template <unsigned radix>
constexpr uint64_t read_wrapping_digits(const char *&at)
{
    uint64_t value = 0;
    for (unsigned digit{}; (digit = radix == 10 ? decimal_value(*at) : hex_value(*at)) < radix;
         ++at)
        value = value * radix + digit;
    return value;
}

// The digits that fit 64 bits whatever they are.
constexpr ptrdiff_t most_decimal_digits = 19;
constexpr ptrdiff_t most_hex_digits = 16;

// Converts decimal digits and those after "0x", of a signed type also after a "-", and moves `at`
// past them; false, with nothing changed, for any other text or value.
template <typename Value>
constexpr bool convert_plain(const char *&at, Base base, Value &value)
{
    const bool negative = std::is_signed_v<Value> && *at == '-';
    const char *first = at + (negative ? 1 : 0);
    const char *end = first;
    const bool is_decimal = base == Base::decimal || (base == Base::from_prefix && *first != '0');
    if (!is_decimal) {
        if (first[0] != '0' || first[1] != 'x') return false;
        end = first += 2;
    }
    const uint64_t number =
        is_decimal ? read_wrapping_digits<10>(end) : read_wrapping_digits<hex_radix>(end);
    const auto longest = is_decimal ? most_decimal_digits : most_hex_digits;
    if (end == first || end - first > longest || !std::in_range<Value>(number)) return false;
    value = static_cast<Value>(negative ? 0 - number : number);
    at = end;
    return true;
}

// Converts any text.
template <typename Value>
constexpr Conversion<Value> convert(const char *text, Base base)
{
    Conversion<Value> plain{{}, text, false};
    if (convert_plain(plain.end, base, plain.value)) [[likely]]
        return plain;
    // Copied, so that only this path needs the result in memory.
    const auto any = convert_any<Value>(text, base);
    return {any.value, any.end, any.out_of_range};
}

}  // namespace orvex

#endif
