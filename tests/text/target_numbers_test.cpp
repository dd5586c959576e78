#include "text/target_numbers.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <random>
#include <string>

namespace {

using orvex::Base;
using orvex::convert;

// The values that only a 32-bit host's own functions would show.
static_assert(convert<uint32_t>(" -5", Base::decimal).value == 4294967291U);
static_assert(convert<uint32_t>("-4294967295", Base::decimal).value == 1);
static_assert(convert<uint32_t>("-4294967296", Base::decimal).value == 4294967295U);
static_assert(convert<uint32_t>("4294967296", Base::from_prefix).out_of_range);
static_assert(convert<int32_t>("-99999999999", Base::decimal).value == -2147483647 - 1);
static_assert(convert<uint32_t>("0x", Base::hexadecimal).end[0] == 'x');

// Texts that look like numbers, of every length around the limits.
std::string random_text(std::mt19937 &random)
{
    static constexpr const char *pieces[] = {"-", "+", "0x", "0X", "0", " ", "\t",       "g",
                                             "1", "7", "8",  "9",  "a", "F", "42949672", "99999"};
    std::string text;
    for (auto left = random() % 9; left > 0; --left) text += pieces[random() % std::size(pieces)];
    return text;
}

// The 64-bit host's own conversions, held to the 32-bit target's ranges.
template <typename Value>
void expect_as_host(const std::string &text, Base base)
{
    using Limits = std::numeric_limits<Value>;
    const auto ours = convert<Value>(text.c_str(), base);
    char *end = nullptr;
    errno = 0;
    const long long wide = std::strtoll(text.c_str(), &end, static_cast<int>(base));
    const long long least = Limits::is_signed ? Limits::min() : -static_cast<long long>(Limits::max());
    const bool out_of_range = errno == ERANGE || wide < least || wide > static_cast<long long>(Limits::max());
    const Value saturated = Limits::is_signed && wide < 0 ? Limits::min() : Limits::max();
    EXPECT_EQ(ours.value, out_of_range ? saturated : static_cast<Value>(wide));
    EXPECT_EQ(ours.end, end);
    EXPECT_EQ(ours.out_of_range, out_of_range);
}

TEST(TargetNumbers, ConvertAsTheHostHeldTo32Bits)
{
    std::mt19937 random(1);
    for (int i = 0; i < 100000; ++i) {
        const std::string text = random_text(random);
        SCOPED_TRACE(text);
        for (const Base base : {Base::from_prefix, Base::decimal, Base::hexadecimal}) {
            expect_as_host<int32_t>(text, base);
            expect_as_host<uint32_t>(text, base);
            expect_as_host<int64_t>(text, base);
        }
        if (testing::Test::HasFailure()) break;
    }
}

}  // namespace
