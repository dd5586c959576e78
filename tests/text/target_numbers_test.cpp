#include "text/target_numbers.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "support/host_numbers.h"

namespace {

using orvex::Base;
using orvex::convert;

// The values that only a 32-bit host's own functions would show.
static_assert(convert<uint32_t>(" -5", Base::decimal).value == 4294967291U);
static_assert(convert<uint32_t>("-4294967295", Base::decimal).value == 1);
static_assert(convert<uint32_t>("-4294967296", Base::decimal).value == 4294967295U);
static_assert(convert<uint32_t>("0x10000000000000001", Base::from_prefix).out_of_range);
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

TEST(TargetNumbers, ConvertAsTheHostHeldTo32Bits)
{
    std::mt19937 random(1);
    for (int i = 0; i < 100000; ++i) {
        const std::string text = random_text(random);
        ASSERT_TRUE(orvex_test::all_convert_as_host(text.c_str())) << text;
    }
}

}  // namespace
