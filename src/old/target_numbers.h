// Text to number as the 32-bit target's strtol, strtoul and strtoq convert, on every host: leading
// white space and one sign, saturation at the ends of the type, negated unsigned values wrapped.
// errno is left alone.
#ifndef ORVEX_OLD_TARGET_NUMBERS_H
#define ORVEX_OLD_TARGET_NUMBERS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace orvex {
inline namespace old {

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

inline constexpr std::array<uint8_t, 256> digit_values = [] {
    std::array<uint8_t, 256> values{};
    values.fill(16);
    for (uint8_t digit = 0; digit < 10; ++digit) values[size_t{'0'} + digit] = digit;
    for (uint8_t letter = 0; letter < 6; ++letter)
        values[size_t{'a'} + letter] = values[size_t{'A'} + letter] =
            static_cast<uint8_t>(10 + letter);
    return values;
}();

// The value of a digit of any base; at least 16 for any other character.
constexpr unsigned digit_value(char character)
{
    return digit_values[static_cast<unsigned char>(character)];
}

template <typename Magnitude>
struct DigitRun {
    Magnitude value;
    const char *end;  // the start when there is no digit
    bool overflow;
};

template <unsigned radix>
constexpr unsigned digit_of(char character)
{
    if constexpr (radix > 10) return digit_value(character);
    return static_cast<unsigned char>(character) - unsigned{'0'};
}

// Reads all digits of a base, also behind an overflow.
template <typename Magnitude>
constexpr DigitRun<Magnitude> read_digits(const char *at, unsigned radix)
{
    DigitRun<Magnitude> run{0, at, false};
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
        return read_digits<Magnitude>(at, 10);
    // The prefix counts only when a digit follows; "0x" alone is a zero and an "x".
    if (at[0] == '0' && (at[1] == 'x' || at[1] == 'X') && digit_value(at[2]) < 16)
        return read_digits<Magnitude>(at + 2, 16);
    return read_digits<Magnitude>(at, base == Base::hexadecimal ? 16 : 8);
}

// Any text, signs, white space, prefixes and values out of range included.
template <typename Value>
[[gnu::noinline]] constexpr Conversion<Value> convert_general(const char *text, Base base)
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

// Reads digits as long as they fit 64 bits whatever they are and then checks the value's own range;
// false without a digit, out of range, or where more digits follow.
template <unsigned radix, typename Value>
constexpr bool read_few_digits(const char *at, Value &value, const char *&end)
{
    using Limits = std::numeric_limits<Value>;
    constexpr int most = radix == 10 ? Limits::digits10 + 1 : (Limits::digits + 3) / 4;
    static_assert(radix != 10 || most <= 19, "the digits may not fit 64 bits");
    uint64_t number = 0;
    int place = 0;
#pragma GCC unroll 19
    for (; place < most; ++place) {
        const unsigned digit = digit_of<radix>(at[place]);
        if (digit >= radix) break;
        number = number * radix + digit;
    }
    value = static_cast<Value>(number);
    end = at + place;
    const bool complete = place < most || digit_of<radix>(*end) >= radix;
    return place > 0 && complete && number <= static_cast<uint64_t>(Limits::max());
}

// Reads a number of a few digits without white space in front: nearly all that is ever typed. Any
// other text is left to convert_general, which reads these to the same.
template <typename Value>
constexpr bool convert_few_digits(const char *text, Base base, Conversion<Value> &number)
{
    const char *at = text;
    const bool negative = *at == '-';
    if (negative) [[unlikely]]
        ++at;
    const bool decimal = base == Base::decimal || (base == Base::from_prefix && *at != '0');
    number.out_of_range = false;
    if (decimal) {
        if (!read_few_digits<10>(at, number.value, number.end)) return false;
    } else {
        if (at[0] != '0' || at[1] != 'x') return false;
        if (!read_few_digits<16>(at + 2, number.value, number.end)) return false;
    }
    if (negative) number.value = static_cast<Value>(Value{0} - number.value);
    return true;
}

template <typename Value>
constexpr Conversion<Value> convert(const char *text, Base base)
{
    Conversion<Value> number{};
    return convert_few_digits(text, base, number) ? number : convert_general<Value>(text, base);
}

}  // namespace old
}  // namespace orvex

#endif
