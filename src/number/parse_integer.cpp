#include <orvex/parse.h>

#include <cerrno>

#include "old/target_numbers.h"

namespace orvex {
namespace {

int leave(int result, int error_number)
{
    errno = error_number;
    return result;
}

// errno is set last, to what the conversion leaves after a start from 0.
template <typename Value>
[[gnu::noinline]] int parse_any_integer(const char *str, Value *value)
{
    const auto number = convert_general<Value>(str, Base::from_prefix);
    if (number.end == str || *number.end != '\0') {
        *value = 0;
        return leave(-1, number.out_of_range ? ERANGE : 0);
    }
    if (number.out_of_range) return leave(-1, ERANGE);
    *value = number.value;
    return leave(0, 0);
}

template <typename Value>
int parse_whole_integer(const char *str, Value *value)
{
    if (str == nullptr || value == nullptr) return leave(-1, EINVAL);
    Conversion<Value> number{};
    if (!convert_few_digits(str, Base::from_prefix, number) || *number.end != '\0')
        return parse_any_integer(str, value);
    *value = number.value;
    return leave(0, 0);
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
    // A text without digits stops at its first character: the empty text reads as 0.
    if (*number.end != '\0') return 0;
    if (number.value < 0 || number.value >= limit) return 0;
    *value = number.value;
    return 1;
}
