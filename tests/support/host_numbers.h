// Text to number by the 64-bit host's own functions, held to the ranges of the 32-bit target.
#ifndef ORVEX_TESTS_HOST_NUMBERS_H
#define ORVEX_TESTS_HOST_NUMBERS_H

#include <cerrno>
#include <cstdlib>
#include <limits>
#include <type_traits>

#include "text/target_numbers.h"

namespace orvex_test {

template <typename Value>
orvex::Conversion<Value> convert_by_host(const char *text, orvex::Base base)
{
    using Limits = std::numeric_limits<Value>;
    char *end = nullptr;
    errno = 0;
    if constexpr (std::is_same_v<Value, uint64_t>) {
        const Value value = std::strtoull(text, &end, static_cast<int>(base));
        return {value, end, errno == ERANGE};
    } else {
        constexpr long long most = Limits::max();
        constexpr long long least = Limits::is_signed ? Limits::min() : -most;
        const long long value = std::strtoll(text, &end, static_cast<int>(base));
        if (errno == 0 && value >= least && value <= most) return {static_cast<Value>(value), end, false};
        return {Limits::is_signed && value < 0 ? Limits::min() : Limits::max(), end, true};
    }
}

template <typename Value>
bool converts_as_host(const char *text, orvex::Base base)
{
    const auto ours = orvex::convert<Value>(text, base);
    const auto host = convert_by_host<Value>(text, base);
    return ours.value == host.value && ours.end == host.end && ours.out_of_range == host.out_of_range;
}

inline bool all_convert_as_host(const char *text)
{
    using orvex::Base;
    for (const Base base : {Base::from_prefix, Base::decimal, Base::hexadecimal})
        if (!converts_as_host<int32_t>(text, base) || !converts_as_host<uint32_t>(text, base) ||
            !converts_as_host<int64_t>(text, base) || !converts_as_host<uint64_t>(text, base))
            return false;
    return true;
}

}  // namespace orvex_test

#endif
