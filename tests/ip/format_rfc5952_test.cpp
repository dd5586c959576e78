#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <random>
#include <string>
#include <vector>

#include "support/guarded.h"

namespace {

std::string canonical(const std::string &text)
{
    orvex_test::Guarded buffer(std::max(size_t{47}, text.size() + 1));
    memcpy(buffer.data(), text.c_str(), text.size() + 1);
    const int result = format_rfc5952(buffer.data());
    EXPECT_TRUE(buffer.untouched());
    const std::string after = buffer.text();
    if (result != 1) return after == text ? "0" : "changed";
    EXPECT_EQ(std::count(buffer.data(), buffer.data() + 47, '\0'), static_cast<ptrdiff_t>(47 - after.size()));
    return after;
}

}  // namespace

TEST(FormatRfc5952, WritesTheCanonicalText)
{
    for (const orvex_test::Row &row : std::vector<orvex_test::Row>{
             {"2001:DB8:0:0:0:0:0:1", "2001:db8::1"},
             {"1::", "1::"},
             {"::FFFF:1.2.3.4", "::ffff:1.2.3.4"},
             {"::ffff:102:304", "::ffff:102:304"},
             {"1:2:3:4:5:6:0.0.0.0", "1:2:3:4:5:6:0.0.0.0"},
             {"1::0.0.0.0", "1::0.0.0.0"},
             {"::0.0.0.1", "::0.0.0.1"},
             {"1:2:3:4:5:0:0.0.0.1", "1:2:3:4:5::0.0.0.1"},
             {"1:2:3:4:5:0:0.0.0.0", "1:2:3:4:5::0.0.0.0"},
             {"0:0:0:0:0:6:0.0.0.0", "::6:0.0.0.0"},
             {"1111:2222:3333:4444:5555:6666:255.255.255.255", "1111:2222:3333:4444:5555:6666:255.255.255.255"},
         })
        EXPECT_EQ(canonical(row.text), row.expected) << row.text;
    for (const char *text : {"2001:db8::1/64", " ::1", "1.2.3.4", ""}) EXPECT_EQ(canonical(text), "0") << text;
    EXPECT_EQ(format_rfc5952(nullptr), 0);
}

// glibc's inet_ntop compresses as RFC 5952 does, but for the dotted part of addresses that begin with zeros.
TEST(FormatRfc5952, AgreesWithInetNtop)
{
    std::mt19937 random(1);
    for (int i = 0; i < 20000; ++i) {
        uint8_t address[16] = {0x20};
        for (int group = 1; group < 8; ++group)
            if (random() % 2 != 0)
                address[2 * static_cast<size_t>(group) + random() % 2] = static_cast<uint8_t>(random());
        char expected[INET6_ADDRSTRLEN];
        inet_ntop(AF_INET6, address, expected, sizeof expected);
        char text[47];
        snprintf(text, sizeof text, "%X:%02x:%x:%04x:%x:%X:%x:%x", address[0] << 8 | address[1],
                 address[2] << 8 | address[3], address[4] << 8 | address[5], address[6] << 8 | address[7],
                 address[8] << 8 | address[9], address[10] << 8 | address[11], address[12] << 8 | address[13],
                 address[14] << 8 | address[15]);
        EXPECT_EQ(canonical(text), expected) << text;
    }
}
