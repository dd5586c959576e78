#include "interface/parse_field_number.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <string_view>

#include "text/target_numbers.h"

namespace orvex {
namespace {

// ---- Ranges ----

// What the readers of a range share.
struct Range {
    const NameParse &parse;
    Field field;
    std::string_view text;  // without its "]", for messages
};

// A longer range is cut in messages.
constexpr size_t longest_quoted_range = 1023;

const char *refuse_number_of(const Range &range)
{
    const auto &[parse, field, text] = range;
    return no_part(refuse(parse.error, rule_broken, "missing or invalid %s number %.*s in %s",
                          field.label, precision(text), text.data(), parse.name));
}

const char *refuse_value_of(const Range &range, int32_t value)
{
    const auto &[parse, field, text] = range;
    return no_part(refuse(parse.error, rule_broken,
                          "%s value %d is outside range %d..%d for '%.*s' in '%s'", field.label,
                          value, field.min, wrapping_add(field.bound, -1), precision(text),
                          text.data(), parse.name));
}

// Reads a number of a range and moves `at` past it; none without digits, and for "-0".
std::optional<int32_t> read_range_number(const char *&at)
{
    const Number number = read_number(at);
    if (number.end == at || (*at == '-' && number.value == 0)) return {};
    at = number.end;
    return number.value;
}

// "3]" after "[1-"
const char *read_range_end(const Range &range, const char *at, int32_t low)
{
    const auto &[parse, field, text] = range;
    const auto high = read_range_number(at);
    if (!high) return refuse_number_of(range);
    if (!is_within(*high, low, field.bound)) {
        return no_part(refuse(parse.error, rule_broken,
                              "%s value %d is outside range %d..%d for '%.*s' in '%s", field.label,
                              *high, low, wrapping_add(field.bound, -1), precision(text),
                              text.data(), parse.name));
    }
    if (*at == ']') return at + 1;
    return no_part(refuse(parse.error, rule_broken, "%s range %.*s has invalid extra trailer in %s",
                          field.label, precision(text), text.data(), parse.name));
}

// ",2,3]" after "[1"; a comma may be missing, and one may come before the "]".
const char *read_range_list(const Range &range, const char *at)
{
    const auto &[parse, field, text] = range;
    for (;;) {
        if (*at == ',') ++at;
        const auto value = read_range_number(at);
        if (!value) break;
        if (!is_within(*value, field.min, field.bound)) return refuse_value_of(range, *value);
    }
    if (*at == ']') return at + 1;
    return no_part(refuse(parse.error, rule_broken, "%s range %.*s is invalid in %s", field.label,
                          precision(text), text.data(), parse.name));
}

// "[0-3]" or "[0,2,5]"; the numbers are checked, but not kept.
const char *parse_field_range(const NameParse &parse, const char *open, Field field)
{
    const char *const close = std::strchr(open, ']');
    if (close == nullptr)
        return no_part(refuse(parse.error, rule_broken, "missing ending brace ] for %s in %s",
                              field.label, parse.name));
    const size_t quoted = std::min(static_cast<size_t>(close - open), longest_quoted_range);
    const Range range{parse, field, {open, quoted}};
    const char *at = open + 1;
    const auto first = read_range_number(at);
    if (!first) return refuse_number_of(range);
    if (!is_within(*first, field.min, field.bound)) return refuse_value_of(range, *first);
    if (*at == '-') return read_range_end(range, at + 1, *first);
    if (*at == ',') return read_range_list(range, at);
    // [1]
    return no_part(refuse(parse.error, rule_broken,
                          "%s has invalid range format %.*s in %s , use [n-m] or [n,m] format",
                          field.label, precision(range.text), open, parse.name));
}

}  // namespace

// ---- Numbers ----

Number read_number(const char *at)
{
    const auto number = convert<uint32_t>(at, Base::decimal);
    return {number.end, static_cast<int32_t>(number.value)};
}

const char *parse_wildcard_or_range(int32_t &value, const NameParse &parse, const char *at,
                                    Field field)
{
    if (is_wildcard(parse, *at)) {
        value = *at == '?' ? IF_FIELD_WILD_ONE : IF_FIELD_WILD_ANY;
        return at + 1;
    }
    if (!parse.has(PARSE_IF_RANGES)) return refuse_number(parse, at, field);
    value = IF_FIELD_RANGE;
    return parse_field_range(parse, at, field);
}

const char *refuse_number(const NameParse &parse, const char *at, Field field)
{
    const bool is_empty = *at == '\0';
    return no_part(refuse(parse.error, rule_broken, "missing or invalid %s number %s%s%sin '%s'",
                          field.label, is_empty ? "" : "'", at, is_empty ? "" : "' ", parse.name));
}

const char *refuse_value(const NameParse &parse, const char *at, Field field)
{
    return no_part(refuse(parse.error, rule_broken,
                          "%s value outside range %d..%d for '%s' in '%s'", field.label, field.min,
                          wrapping_add(field.bound, -1), at, parse.name));
}

const char *refuse_dash(const NameParse &parse, const char *at)
{
    return no_part(refuse(parse.error, rule_broken, "invalid input '%s' for '%s'", at, parse.name));
}

}  // namespace orvex
