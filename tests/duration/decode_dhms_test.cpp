#include <gtest/gtest.h>
#include <orvex/parse.h>

#include "support/guarded.h"

namespace {

// The seconds, or the message of a refusal.
std::string outcome(const std::string &text, uint64_t min = 0, uint64_t max = UINT64_MAX)
{
    constexpr uint64_t untouched = 77;
    uint64_t seconds = untouched;
    const auto [result, message] = orvex_test::outcome_of([&](char *error, size_t size) {
        return decode_dhms(orvex_test::Exact(text), min, max, &seconds, error, size);
    });
    if (result == 1) return std::to_string(seconds);
    EXPECT_TRUE(result == 0 && seconds == untouched);
    return message;
}

TEST(DecodeDhms, ReadsTokensThatAddUp)
{
    const std::vector<orvex_test::Group> groups = {
        {.expected = "90", .texts = {"90", "1m30s", "1M30S", "1:30", "001:30"}},
        {.expected = "5400", .texts = {" \t1h\v30m\n", "30m1h"}},
        {.expected = "86399", .texts = {"23:59:59"}},
        {.expected = "90000", .texts = {"1d 01:00:00"}},
        {.expected = "3630", .texts = {"1h 30", "01:00:30"}},
        {.expected = "60", .texts = {"1:", "000000000001:0", "1m"}},
        {.expected = "3600", .texts = {"1::", "0:0 60m"}},
        {.expected = "0", .texts = {"::", ":", "0", "0ftn"}},
        {.expected = "1209600", .texts = {"2w", "1Ftn", "10cftn", "1w7d"}},
        {.expected = "2", .texts = {"1uftn 1uftn", "1uftn1s"}},
        {.expected = "18446744073709551615", .texts = {"18446744073709551615", "018446744073709551615s"}},
        {.expected = "18446744073709551600", .texts = {"307445734561825860m"}},
        {.expected = "18446744073709550592", .texts = {"15250284452471520mftn"}},
        {.expected = "18446744073709551614", .texts = {"15250284452471520845uftn"}},
    };
    orvex_test::check_groups(groups, [](const std::string &text) { return outcome(text); });
}

TEST(DecodeDhms, SaysWhatIsWrongFirst)
{
    const std::vector<orvex_test::Group> groups = {
        {.expected = "Overflow",
         .texts = {"15250284452471521mftn", "15250284452471520846uftn", "307445734561825861m", "307445734561825861mf",
                   "18446744073709551616", "184467440737095516150", "18446744073709551616x", "18446744073709551615 1",
                   "18446744073709551615 0:01", "0:90", "60:0", "24:00:00"}},
        {.expected = "Syntax error",
         .texts = {"1:2:3:4", "1:2x", "1h:2", "1h30", "5min", "5 s", "-5s", "+5s", "5\xb2", "5@", "5m f", "5m ftn",
                   "1mf", "1uftn1", "1m-1s"}},
        // A field of a clock that wraps to a larger number goes on, also before what is no clock.
        {.expected = "Overflow", .texts = {"4294967297:0", "5000000000:0", "4294967297:x", "4294967297h:0"}},
        {.expected = "Syntax error", .texts = {"5000000000:x", "5000000000h:0", "1s18446744073709551615s:0"}},
        {.expected = "Empty string", .texts = {"", " \t\r\n"}},
    };
    orvex_test::check_groups(groups, [](const std::string &text) { return outcome(text); });
}

TEST(DecodeDhms, HoldsTheTotalToItsBounds)
{
    EXPECT_EQ(outcome("59", 60, 3600), "Number must be greater than or equal to 60");
    EXPECT_EQ(outcome("1m", 60, 3600), "60");
    EXPECT_EQ(outcome("1h", 60, 3600), "3600");
    EXPECT_EQ(outcome("1h 1", 60, 3600), "Number must be less than or equal to 3600");
}

// Looking for a ":" again at each pair would take minutes.
TEST(DecodeDhms, ReadsLongTextsInOnePass)
{
    std::string pairs;
    for (int i = 0; i < 1000000; ++i) pairs += "1s";
    EXPECT_EQ(outcome(pairs), "1000000");
    EXPECT_EQ(outcome(pairs + ":"), "Syntax error");
}

}  // namespace
