#include <gtest/gtest.h>
#include <orvex/parse.h>

#include "support/guarded.h"

namespace {

std::string outcome(const std::string &text, uint64_t min = 0, uint64_t max = UINT64_MAX)
{
    uint64_t seconds = 77;
    int result = 0;
    const std::string message = orvex_test::message_of(
        [&](char *error, size_t size) { return decode_dhms(orvex_test::Exact(text), min, max, &seconds, error, size); },
        result);
    if (result == 1) return std::to_string(seconds);
    EXPECT_TRUE(result == 0 && seconds == 77);
    return message;
}

}  // namespace

TEST(DecodeDhms, ReadsTokensThatAddUp)
{
    const auto read = [](const std::string &text) { return outcome(text); };
    orvex_test::check_groups(
        {{"90", {"90", "1m30s", "1M30S", "1:30", "001:30"}},
         {"5400", {" \t1h\v30m\n", "30m1h"}},
         {"86399", {"23:59:59"}},
         {"90000", {"1d 01:00:00"}},
         {"3630", {"1h 30", "01:00:30"}},
         {"60", {"1:", "000000000001:0"}},
         {"3600", {"1::", "0:0 60m"}},
         {"0", {"::", ":", "0"}},
         {"1209600", {"2w", "1Ftn", "10cftn"}},
         {"1209", {"1mftn"}},
         {"6048", {"5mftn"}},
         {"12", {"10uftn"}},
         {"2", {"1uftn 1uftn", "1uftn1s"}},
         {"18446744073709551615", {"18446744073709551615", "018446744073709551615s"}},
         {"18446744073709551600", {"307445734561825860m"}},
         {"18446744073709550592", {"15250284452471520mftn"}},
         {"18446744073709551614", {"15250284452471520845uftn"}},
         {"Overflow",
          {"15250284452471521mftn", "15250284452471520846uftn", "307445734561825861m", "18446744073709551616",
           "184467440737095516150", "18446744073709551615 1", "18446744073709551615 0:01", "0:90", "60:0", "24:00:00",
           "4294967297:0", "5000000000:0"}},
         {"Syntax error", {"1:2:3:4", "1:2x", "1h:2", "1h30", "5min", "5 s", "-5s", "+5s", "5\xb2", "5m f", "5m ftn"}},
         {"Empty string", {"", " \t\r\n"}}},
        read);
}

TEST(DecodeDhms, HoldsTheTotalToItsBounds)
{
    EXPECT_EQ(outcome("59", 60, 3600), "Number must be greater than or equal to 60");
    EXPECT_EQ(outcome("1m", 60, 3600), "60");
    EXPECT_EQ(outcome("1h", 60, 3600), "3600");
    EXPECT_EQ(outcome("1h 1", 60, 3600), "Number must be less than or equal to 3600");
    EXPECT_EQ(outcome("0", UINT64_MAX), "Number must be greater than or equal to 18446744073709551615");
}
