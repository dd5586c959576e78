#include <gtest/gtest.h>
#include <orvex/parse.h>

#include "support/address_forms.h"

namespace {

using orvex_test::bytes_of;
using orvex_test::check_forms;
using orvex_test::Guarded;

TEST(FormatIpaddr, FormsInEverySize)
{
    const orvex_test::Bytes mask = bytes_of("255.19.90.0");
    const uint32_t words[] = {IPADDR_ANY_UNICAST, IPADDR_ANY_MULTICAST};
    const auto *const keywords = reinterpret_cast<const uint8_t *>(words);
    const orvex_test::Bytes unicast(keywords, keywords + 4), multicast(keywords + 4, keywords + 8);
    check_forms(0, {},
                {
                    {.address = "10.0.0.1", .pfxlen = 24, .mask = unicast, .expected = "10.0.0.1"},
                    {.address = "10.0.0.1", .pfxseen = 1, .pfxlen = 300, .expected = "10.0.0.1/44"},
                    {.address = "10.0.0.1", .pfxseen = 1, .maskseen = 1, .mask = mask, .expected = "10.0.0.1/0"},
                    {.address = "9.99.100.250", .maskseen = 1, .mask = mask, .expected = "9.99.100.250/255.19.90.0"},
                    {.address = "1.2.3.4", .maskseen = 1, .mask = {0, 0, 0, 0}, .expected = "1.2.3.4/0.0.0.0"},
                    {.address = "255.1.1.255",
                     .maskseen = 1,
                     .mask = {255, 255, 255, 255},
                     .expected = "255.1.1.255/255.255.255.255"},
                });
    check_forms(
        9, {.zero_rest = true},
        {
            {.address = "9.99.100.250", .pfxseen = 1, .pfxlen = 24, .expected = "009.099.100.250/024"},
            {.address = "9.99.100.250", .maskseen = 1, .mask = mask, .expected = "009.099.100.250/255.019.090.000"},
        });
    // Keywords are written whole or not at all.
    check_forms(0, {.nothing_up_to = SIZE_MAX},
                {{.address = "1.1.1.1", .maskseen = 1, .mask = unicast, .expected = "any-unicast"}});
    check_forms(1, {.nothing_up_to = SIZE_MAX, .zero_rest = true},
                {{.address = "10.0.0.1", .pfxseen = 1, .maskseen = 1, .mask = multicast, .expected = "any-multicast"}});
}

TEST(FormatIpaddr, RefusesOtherFamiliesAndNullPointers)
{
    const orvex_test::Bytes address(16);
    for (const int family : {0, 1, 10, 73, -2}) {
        Guarded buffer(20);
        errno = 0;
        EXPECT_EQ(format_ipaddr(family, address.data(), 1, 0, 0, 0, nullptr, buffer.data(), 20), 0U);
        EXPECT_EQ(errno, EINVAL);
        EXPECT_TRUE(buffer.untouched());
    }
    for (const int family : {PARSE_AF_INET, PARSE_AF_INET6}) {
        errno = 0;
        EXPECT_EQ(format_ipaddr(family, address.data(), 0, 0, 0, 0, nullptr, nullptr, 20), 0U);
        EXPECT_EQ(errno, ENOSPC);
        char text[20];
        EXPECT_EQ(format_ipaddr(family, nullptr, 0, 0, 0, 0, nullptr, text, sizeof text), 0U);
        EXPECT_EQ(errno, EINVAL);
    }
}

}  // namespace
