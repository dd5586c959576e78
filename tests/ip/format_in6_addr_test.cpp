#include <gtest/gtest.h>
#include <orvex/parse.h>

#include "support/address_forms.h"

namespace {

// The whole text that a formatter writes, after every smaller buffer held its right end.
std::string text_from_right(char *format(const void *, int, char *, size_t, int), const uint8_t *address, int length)
{
    char whole[FORMAT_IN6_BUFSIZE];
    const std::string expected = format(address, length, whole, sizeof whole, 1);
    for (size_t size = 0; size <= expected.size() + 2; ++size) {
        for (const int terminate : {0, 1}) {
            orvex_test::Guarded buffer(size);
            const size_t end = size - (terminate == 1 && size > 0 ? 1 : 0);
            const size_t shown = std::min(expected.size(), end);
            const char *const text = format(address, length, buffer.data(), size, terminate);
            EXPECT_EQ(text, buffer.data() + end - shown);
            EXPECT_EQ(std::string(text, shown), expected.substr(expected.size() - shown));
            EXPECT_TRUE(end == size || buffer.data()[end] == '\0');
        }
    }
    return expected;
}

}  // namespace

TEST(FormatIn6Addr, WritesTheGroupsOfThePrefix)
{
    const char *const longest = "fedc:ba98:7654:3210:fedc:ba98:7654:3210";
    const struct {
        const char *address;
        int length;
        const char *expected;
    } rows[] = {
        {.address = "ffff::1", .length = 0, .expected = "::"},
        {.address = "2001:db8:1:2:3:4:5:6", .length = 97, .expected = "2001:db8:1:2:3:4::"},
        {.address = "2001:db8:1:2:3:4:5:6", .length = 105, .expected = "2001:db8:1:2:3:4:5:0"},
        {.address = "2001:db8:ffff::", .length = 20, .expected = "2001:d00::"},
        {.address = "::2", .length = 128, .expected = "::0.0.0.2"},
        {.address = "::ffff:1.2.3.4", .length = 128, .expected = "::ffff:1.2.3.4"},
        {.address = "::2", .length = 120, .expected = "::0.0.0.0"},
        {.address = "::ffff:1.2.3.4", .length = 112, .expected = "::ffff:102:0"},
        {.address = "::ffff:1.2.3.4", .length = 113, .expected = "::ffff:1.2.3.0"},
        {.address = "0:1:2:3:4:5:6:7", .length = 128, .expected = "0:1:2:3:4:5:6:7"},
        {.address = "1:0:0:0:2:0:0:3", .length = 128, .expected = "1:0:0:0:2::3"},
        {.address = longest, .length = 128, .expected = longest},
    };
    for (const auto &row : rows) {
        const orvex_test::Bytes address = orvex_test::bytes_of(row.address);
        EXPECT_EQ(text_from_right(format_in6_addr, address.data(), row.length), row.expected);
        EXPECT_EQ(text_from_right(format_in6_prefix, address.data(), row.length),
                  row.expected + ('/' + std::to_string(row.length)));
    }
}
