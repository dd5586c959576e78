// The numbers of an interface name, and the wildcards and ranges that may take their place.
#ifndef ORVEX_INTERFACE_PARSE_FIELD_NUMBER_H
#define ORVEX_INTERFACE_PARSE_FIELD_NUMBER_H

#include <cstdint>

#include "interface/name_parse.h"
#include "text/characters.h"

namespace orvex {

// What messages call a number, and its range. With a minimum and a bound of 0 it has any value.
struct Field {
    const char *label;
    int32_t min;
    int32_t bound;  // exclusive
};

// Adds as the 32-bit target does, where a bound may wrap around.
constexpr int32_t wrapping_add(int32_t value, int32_t more)
{
    return static_cast<int32_t>(static_cast<uint32_t>(value) + static_cast<uint32_t>(more));
}

constexpr bool is_within(int32_t value, int32_t min, int32_t bound)
{
    return value >= min && value < bound;
}

constexpr bool is_wildcard_value(int32_t value)
{
    return value == IF_FIELD_WILD_ONE || value == IF_FIELD_WILD_ANY;
}

inline bool is_wildcard(const NameParse &parse, char character)
{
    return parse.has(PARSE_IF_WILDCARD) && (character == '?' || character == '*');
}

// Where the number after a separator, whatever it is, should be. A wildcard needs no separator.
inline const char *after_separator(const NameParse &parse, const char *at)
{
    return *at == '\0' || is_wildcard(parse, *at) ? at : at + 1;
}

// Where the first number should be.
inline const char *first_number(const NameParse &parse, const char *at)
{
    return parse.has(PARSE_IF_AFTER_SEP) ? after_separator(parse, at) : at;
}

struct Number {
    const char *end;  // where it starts when there is no digit
    int32_t value;
};

// Reads a number as the target's strtoul does, and takes its 32 bits as a signed number.
Number read_number(const char *at);

// Whether a number may be left out, which reads as 0.
enum class Digits { required, optional };

// What parse_field_number does rarely.
const char *parse_wildcard_or_range(int32_t &value, const NameParse &parse, const char *at,
                                    Field field);
const char *refuse_number(const NameParse &parse, const char *at, Field field);
const char *refuse_value(const NameParse &parse, const char *at, Field field);
const char *refuse_dash(const NameParse &parse, const char *at);

// Reads a number, a wildcard or a range. A refused number leaves `value` as it was; a range is
// stored before its numbers are checked.
template <Digits digits = Digits::required>
inline const char *parse_field_number(int32_t &value, const NameParse &parse, const char *at,
                                      Field field)
{
    Number number{at + 1, static_cast<int32_t>(decimal_value(*at))};
    // Most numbers of names have one digit.
    if (!is_digit(at[0]) || is_digit(at[1])) {
        number = read_number(at);
        if (number.end == at && (*at == '[' || is_wildcard(parse, *at)))
            return parse_wildcard_or_range(value, parse, at, field);
        // -0
        if (digits == Digits::required && (number.end == at || (*at == '-' && number.value == 0)))
            return refuse_number(parse, at, field);
    }
    if (!is_within(number.value, field.min, field.bound) && (field.min != 0 || field.bound != 0))
        return refuse_value(parse, at, field);
    // 0-5: after one digit only "-rx" and "-tx" may follow
    if (digits == Digits::required && at[1] == '-' && (at[2] == '\0' || at[3] != 'x'))
        return refuse_dash(parse, at);
    value = number.value;
    return number.end;
}

}  // namespace orvex

#endif
