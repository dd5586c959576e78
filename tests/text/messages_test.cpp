#include <gtest/gtest.h>
#include <orvex/parse.h>
#include <orvex/stand_in.h>

#include <regex>

#include "support/guarded.h"
#include "text/error_text.h"

namespace {

using orvex::keep_errno;

TEST(ErrorText, WritesAsPrintfInEverySize)
{
    orvex_test::check_cut_sizes(
        "text|c|-2147483648|7|4294967295|0|18446744073709551615|%|",
        [](char *buf, size_t size) {
            return orvex::refuse({buf, size}, keep_errno, -2, "%s|%c|%d|%d|%u|%lu|%ju|%%|%s", "text", 'c',
                                 -2147483647 - 1, 7, 4294967295U, 0UL, UINTMAX_MAX, "");
        },
        [](size_t) { return -2; });
    EXPECT_EQ(orvex::refuse({nullptr, 8}, ERANGE, -1, "%s", "silent"), -1);
    EXPECT_EQ(errno, ERANGE);
}

// Pieces are cut as one text, and no "%" in them converts anything.
TEST(ErrorText, WritesPiecesInEverySize)
{
    const std::string_view quoted = std::string_view("10.0.0.0/33 and more").substr(0, 11);
    orvex_test::check_cut_sizes(
        "100%s of '10.0.0.0/33'",
        [quoted](char *buf, size_t size) {
            return orvex::refuse_with_pieces({buf, size}, keep_errno, -1, {"100%s", "", " of '", quoted, "'"});
        },
        [](size_t) { return -1; });
    EXPECT_EQ(orvex::refuse_with_pieces({nullptr, 8}, EINVAL, -2, {"silent"}), -2);
    EXPECT_EQ(errno, EINVAL);
}

TEST(Insist, LogsTheConditionAndGoesOn)
{
    std::string log;
    const auto keep = [](int level, const char *text, void *context) {
        *static_cast<std::string *>(context) += std::to_string(level) + text + '\n';
    };
    orvex_platform_set_log_sink(keep, &log);
    uint32_t af = PARSE_AF_INET;
    char text[8] = "before";
    errno = ERANGE;
    EXPECT_EQ(parse_ipaddr(nullptr, "::1", 0, nullptr, 0, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 0), 0);
    EXPECT_EQ(errno, ERANGE);
    EXPECT_EQ(parse_ipaddr(&af, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 0), -1);
    errno = ERANGE;
    EXPECT_EQ(format_ipaddr(PARSE_AF_INET, nullptr, 0, 0, 0, 0, nullptr, text, sizeof text), 0U);
    EXPECT_STREQ(text, "");
    orvex_platform_set_log_sink(nullptr, nullptr);
    const std::string failed = " failed: Numerical result out of range\n";
    const std::regex expected("0parse_ipaddr:\\d+: insist 'af != NULL'" + failed +
                              "0parse_ipaddr:\\d+: insist 'str != NULL'" + failed +
                              "0format_ipaddr:\\d+: insist 'address != NULL'" + failed);
    EXPECT_TRUE(std::regex_match(log, expected)) << log;
}

}  // namespace
