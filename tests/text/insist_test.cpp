#include <gtest/gtest.h>
#include <orvex/parse.h>
#include <orvex/stand_in.h>

#include <cerrno>
#include <regex>

TEST(Insist, LogsTheConditionAndGoesOn)
{
    std::string log;
    const auto keep = [](int level, const char *text, void *context) {
        *static_cast<std::string *>(context) += std::to_string(level) + text + '\n';
        errno = EIO;
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
    char error[64];
    errno = ERANGE;
    EXPECT_EQ(parse_interface(nullptr, 0, 0, nullptr, error, sizeof error), -1);
    EXPECT_STREQ(error, "it needs a non null string to parse.");
    orvex_platform_set_log_sink(nullptr, nullptr);
    const std::string failed = " failed: Numerical result out of range\n";
    const std::regex expected("0parse_ipaddr:\\d+: insist 'af != NULL'" + failed +
                              "0parse_ipaddr:\\d+: insist 'str != NULL'" + failed +
                              "0format_ipaddr:\\d+: insist 'address != NULL'" + failed +
                              "0parse_interface:711: insist 'str && \\*str'" + failed);
    EXPECT_TRUE(std::regex_match(log, expected)) << log;
}
