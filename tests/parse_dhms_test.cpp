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
    for (const orvex_test::Row &row : std::vector<orvex_test::Row>{{"90", "90"},
                                                                   {"1m30s", "90"},
                                                                   {"1M30S", "90"},
                                                                   {"1:30", "90"},
                                                                   {" \t1h\v30m\n", "5400"},
                                                                   {"30m1h", "5400"},
                                                                   {"1d1d", "172800"},
                                                                   {"1d 01:00:00", "90000"},
                                                                   {"1h 30", "3630"},
                                                                   {"23:59:59", "86399"},
                                                                   {":30", "30"},
                                                                   {"1:", "60"},
                                                                   {"1::", "3600"},
                                                                   {"::", "0"},
                                                                   {"000000000001:0", "60"},
                                                                   {"2w", "1209600"},
                                                                   {"1Ftn", "1209600"},
                                                                   {"1cftn", "120960"},
                                                                   {"1mftn", "1209"},
                                                                   {"5mftn", "6048"},
                                                                   {"10uftn", "12"},
                                                                   {"10000uftn", "12096"},
                                                                   {"1uftn 1uftn", "2"},
                                                                   {"1mftn1m", "1269"},
                                                                   {"18446744073709551615", "18446744073709551615"},
                                                                   {"018446744073709551615s", "18446744073709551615"},
                                                                   {"307445734561825860m", "18446744073709551600"},
                                                                   {"15250284452471520mftn", "18446744073709550592"},
                                                                   {"15250284452471521mftn", "Overflow"},
                                                                   {"15250284452471520845uftn", "18446744073709551614"},
                                                                   {"15250284452471520846uftn", "Overflow"},
                                                                   {"307445734561825861m", "Overflow"},
                                                                   {"18446744073709551616", "Overflow"},
                                                                   {"184467440737095516150", "Overflow"},
                                                                   {"18446744073709551615 1", "Overflow"},
                                                                   {"18446744073709551615 0:01", "Overflow"},
                                                                   {"0:90", "Overflow"},
                                                                   {"60:0", "Overflow"},
                                                                   {"24:00:00", "Overflow"},
                                                                   {"4294967297:0", "Overflow"},
                                                                   {"5000000000:0", "Overflow"},
                                                                   {"1:2:3:4", "Syntax error"},
                                                                   {"1:2x", "Syntax error"},
                                                                   {"1h:2", "Syntax error"},
                                                                   {"1h30", "Syntax error"},
                                                                   {"5min", "Syntax error"},
                                                                   {"5 s", "Syntax error"},
                                                                   {"-5s", "Syntax error"},
                                                                   {"+5s", "Syntax error"},
                                                                   {"5\xb2", "Syntax error"},
                                                                   {"5m f", "Syntax error"},
                                                                   {"5m ftn", "Syntax error"},
                                                                   {"", "Empty string"},
                                                                   {" \t\r\n", "Empty string"}})
        EXPECT_EQ(outcome(row.text), row.expected) << row.text;
}

TEST(DecodeDhms, HoldsTheTotalToItsBounds)
{
    EXPECT_EQ(outcome("59", 60, 3600), "Number must be greater than or equal to 60");
    EXPECT_EQ(outcome("1m", 60, 3600), "60");
    EXPECT_EQ(outcome("1h", 60, 3600), "3600");
    EXPECT_EQ(outcome("1h 1", 60, 3600), "Number must be less than or equal to 3600");
    EXPECT_EQ(outcome("0", UINT64_MAX), "Number must be greater than or equal to 18446744073709551615");
}
