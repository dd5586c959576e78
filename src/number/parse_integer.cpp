#include <orvex/parse.h>

#include <cerrno>

#include "text/target_numbers.h"

namespace orvex {
namespace {

// Refuses a text, or reads one that is not plain digits.
template <typename Value>
[[gnu::cold, gnu::noinline]] int parse_any_integer(const char *str, Value *value)
{
    if (str == nullptr || value == nullptr) {
        errno = EINVAL;
        return -1;
    }
    const auto number = convert_any<Value>(str, Base::from_prefix);
    errno = number.out_of_range ? ERANGE : 0;
    // "", "x", "12x", "12 "
    const bool is_whole = number.end != str && *number.end == '\0';
    if (!is_whole) *value = 0;
    if (!is_whole || number.out_of_range) return -1;
    *value = number.value;
    return 0;
}

template <typename Value>
int parse_whole_integer(const char *str, Value *value)
{
    const char *end = str;
    if (str == nullptr || value == nullptr || !convert_plain(end, Base::from_prefix, *value) ||
        *end != '\0')
        return parse_any_integer(str, value);
    errno = 0;
    return 0;
}

}  // namespace
}  // namespace orvex

int parse_integer(const char *str, int32_t *value)
{
    return orvex::parse_whole_integer(str, value);
}

int parse_quad(const char *str, int64_t *value) { return orvex::parse_whole_integer(str, value); }

int parse_number(const char *str, int32_t *value, int32_t limit)
{
    *value = 0;
    if (str == nullptr) return 0;
    const auto number = orvex::convert<int32_t>(str, orvex::Base::decimal);
    if (number.out_of_range) errno = ERANGE;
    // "12x"; a text without digits stops at its first character, so that the empty text reads as 0.
    if (*number.end != '\0') return 0;
    if (number.value < 0 || number.value >= limit) return 0;
    *value = number.value;
    return 1;
}
