#include <orvex/parse.h>

#include <cerrno>

#include "text/target_numbers.h"

namespace orvex {
namespace {

[[gnu::cold, gnu::noinline]] int refuse_integer(int error_number)
{
    errno = error_number;
    return -1;
}

template <typename Value>
int parse_whole_integer(const char *str, Value *value)
{
    if (str == nullptr || value == nullptr) return refuse_integer(EINVAL);
    errno = 0;
    const auto number = convert<Value>(str, Base::from_prefix);
    // "", "x", "12x", "12 "
    if (number.end == str || *number.end != '\0') {
        *value = 0;
        return refuse_integer(number.out_of_range ? ERANGE : 0);
    }
    if (number.out_of_range) return refuse_integer(ERANGE);
    *value = number.value;
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
