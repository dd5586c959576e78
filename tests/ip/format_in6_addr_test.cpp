#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <random>

#include "support/guarded.h"

namespace {

using Format = char *(const void *, int, char *, size_t, int);

// The whole text, after every smaller buffer held its right end.
std::string text_of(Format *format, const uint8_t *address, int length)
{
    char whole[FORMAT_IN6_BUFSIZE];
    const std::string expected = format(address, length, whole, sizeof whole, 1);
    for (size_t size = 0; size <= expected.size() + 2; ++size) {
        for (const int terminate : {0, 1}) {
            orvex_test::Guarded buffer(size);
            const size_t end = size - (terminate == 1 && size > 0 ? 1 : 0);
            const size_t shown = std::min(expected.size(), end);
            const char *const text = format(address, length, buffer.data(), size, terminate);
            EXPECT_TRUE(buffer.untouched());
            EXPECT_EQ(text, buffer.data() + end - shown);
            EXPECT_EQ(std::string(text, shown), expected.substr(expected.size() - shown));
            EXPECT_TRUE(end == size || buffer.data()[end] == '\0');
        }
    }
    return expected;
}

std::string text_of(Format *format, const char *text, int length)
{
    uint8_t address[16];
    EXPECT_EQ(inet_pton(AF_INET6, text, address), 1);
    return text_of(format, address, length);
}

}  // namespace

TEST(FormatIn6Addr, WritesTheGroupsOfThePrefix)
{
    const struct {
        const char *address;
        int length;
        const char *expected;
    } rows[] = {
        {.address = "2001:db8::", .length = 32, .expected = "2001:db8::"},
        {.address = "ffff::1", .length = 0, .expected = "::"},
        {.address = "2001:db8:1:2:3:4:5:0", .length = 112, .expected = "2001:db8:1:2:3:4:5:0"},
        {.address = "2001:db8:1:2:3:4:5:6", .length = 97, .expected = "2001:db8:1:2:3:4::"},
        {.address = "2001:db8:1:2:3:4:5:6", .length = 105, .expected = "2001:db8:1:2:3:4:5:0"},
        {.address = "2001:db8:ffff::", .length = 20, .expected = "2001:d00::"},
        {.address = "::2", .length = 128, .expected = "::0.0.0.2"},
        {.address = "::ffff:1.2.3.4", .length = 128, .expected = "::ffff:1.2.3.4"},
        {.address = "::ffff:0.0.0.0", .length = 128, .expected = "::ffff:0.0.0.0"},
        {.address = "::2", .length = 120, .expected = "::0.0.0.0"},
        {.address = "::ffff:1.2.3.4", .length = 120, .expected = "::ffff:1.2.3.0"},
        {.address = "::ffff:1.2.3.4", .length = 112, .expected = "::ffff:102:0"},
        {.address = "0:1:2:3:4:5:6:7", .length = 128, .expected = "0:1:2:3:4:5:6:7"},
        {.address = "1:0:2:0:3:0:4:0", .length = 128, .expected = "1:0:2:0:3:0:4:0"},
        {.address = "1:0:0:0:2:0:0:3", .length = 128, .expected = "1:0:0:0:2::3"},
        {.address = "fedc:ba98:7654:3210:fedc:ba98:7654:3210",
         .length = 128,
         .expected = "fedc:ba98:7654:3210:fedc:ba98:7654:3210"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(text_of(format_in6_addr, row.address, row.length), row.expected);
        EXPECT_EQ(text_of(format_in6_prefix, row.address, row.length),
                  row.expected + ('/' + std::to_string(row.length)));
    }
}

TEST(FormatIn6Prefix, ReadsBackToTheSamePrefix)
{
    std::mt19937 random(1);
    for (int i = 0; i < 5000; ++i) {
        uint8_t address[16] = {};
        for (int group = 0; group < 8; ++group)
            if (random() % 2 != 0)
                address[2 * static_cast<size_t>(group) + random() % 2] = static_cast<uint8_t>(random());
        const int length = static_cast<int>(random() % 17) * 8;
        char buf[FORMAT_IN6_BUFSIZE];
        const char *const text = format_in6_prefix(address, length, buf, sizeof buf, 1);
        uint32_t af = PARSE_AF_INET6;
        uint8_t back[16];
        uint32_t back_length = 0;
        ASSERT_EQ(parse_ipaddr(&af, text, PARSE_IPADDR_PREFIX_OK, back, 16, nullptr, &back_length, nullptr, nullptr, 0,
                               nullptr, 0),
                  0)
            << text;
        memset(address + length / 8, 0, static_cast<size_t>(16 - length / 8));
        EXPECT_TRUE(memcmp(address, back, 16) == 0 && static_cast<int>(back_length) == length) << text;
    }
}
