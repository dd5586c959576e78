#include <gtest/gtest.h>
#include <orvex/parse.h>

#include "support/guarded.h"

namespace {

std::string canonical(const std::string &text)
{
    orvex_test::Guarded buffer(std::max(size_t{47}, text.size() + 1));
    memcpy(buffer.data(), text.c_str(), text.size() + 1);
    const int result = format_rfc5952(buffer.data());
    const std::string after = buffer.text();
    if (result != 1) return after == text ? "0" : "changed";
    EXPECT_TRUE(buffer.rest_is(after.size(), '\0'));
    return after;
}

}  // namespace

TEST(FormatRfc5952, WritesTheCanonicalText)
{
    for (const auto &[text, expected] : std::vector<orvex_test::Row>{
             {"2001:DB8:0:0:0:0:0:1", "2001:db8::1"},
             {"1:0:0:2:0:0:0:3", "1:0:0:2::3"},
             {"1:0:2:0:0:3:0:0", "1:0:2::3:0:0"},
             {"::FFFF:1.2.3.4", "::ffff:1.2.3.4"},
             {"::ffff:102:304", "::ffff:102:304"},
             {"1:2:3:4:5:6:0.0.0.0", "1:2:3:4:5:6:0.0.0.0"},
             {"1:2:3:4:5:0:0.0.0.1", "1:2:3:4:5::0.0.0.1"},
             {"0:0:0:0:0:6:0.0.0.0", "::6:0.0.0.0"},
             {"1111:2222:3333:4444:5555:6666:255.255.255.255", "1111:2222:3333:4444:5555:6666:255.255.255.255"},
         })
        EXPECT_EQ(canonical(text), expected) << text;
    for (const char *text : {"2001:db8::1/64", " ::1", "1.2.3.4", ""}) EXPECT_EQ(canonical(text), "0") << text;
    EXPECT_EQ(format_rfc5952(nullptr), 0);
}
