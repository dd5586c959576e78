#include <gtest/gtest.h>
#include <orvex/parse.h>
#include <orvex/stand_in.h>

#include <cerrno>
#include <string>
#include <utility>
#include <vector>

namespace {

std::vector<std::string> logged;

void keep(int level, const char *message, void *context)
{
    EXPECT_EQ(level, 0);
    static_cast<std::vector<std::string> *>(context)->push_back(message);
}

// "source:line: insist 'condition' failed: reason", with a line of the source.
void expect_insist(const std::string &source, const std::string &condition)
{
    ASSERT_EQ(logged.size(), 1U);
    const std::string line = std::exchange(logged, {}).front();
    EXPECT_GT(std::stoi(line.substr(line.find(':') + 1)), 20);
    EXPECT_EQ(line.substr(0, line.find(':')) + line.substr(line.find(": ")),
              source + ": insist '" + condition + "' failed: Numerical result out of range");
    errno = ERANGE;
}

TEST(Insist, LogsTheConditionAndGoesOn)
{
    orvex_platform_set_log_sink(keep, &logged);
    uint32_t af = PARSE_AF_INET;
    char text[8] = "before";
    errno = ERANGE;
    EXPECT_EQ(parse_ipaddr(nullptr, "::1", 0, nullptr, 0, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 0), 0);
    EXPECT_EQ(errno, ERANGE);
    expect_insist("parse_ipaddr", "af != NULL");
    EXPECT_EQ(parse_ipaddr(&af, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 0), -1);
    expect_insist("parse_ipaddr", "str != NULL");
    EXPECT_EQ(format_ipaddr(PARSE_AF_INET, nullptr, 0, 0, 0, 0, nullptr, text, sizeof text), 0U);
    EXPECT_STREQ(text, "");
    expect_insist("format_ipaddr", "address != NULL");
    orvex_platform_set_log_sink(nullptr, nullptr);
}

}  // namespace
