#include <gtest/gtest.h>
#include <orvex/parse.h>
#include <orvex/stand_in.h>

#include <regex>

#include "support/address_forms.h"

namespace {

using orvex_test::Bytes;
using orvex_test::bytes_of;
using orvex_test::check_forms;

TEST(FormatIpv6addr, FormsInEverySize)
{
    const std::string ipv6 = "2001:db8::1", wide_ipv6 = "2001:0db8:0000:0000:0000:0000:0000:0001";
    const std::string wide_mask = "ffff:ffff:ffff:ffff:0000:0000:0000:0000";
    const Bytes mask = bytes_of("ffff:ffff:ffff:ffff::");
    check_forms(9, {.zero_rest = true},
                {
                    {.address = ipv6, .expected = wide_ipv6},
                    {.address = ipv6, .pfxseen = 1, .pfxlen = 128, .maskseen = 1, .expected = wide_ipv6 + "/0128"},
                    {.address = ipv6, .maskseen = 5, .mask = mask, .expected = wide_ipv6 + "/" + wide_mask},
                });
    // Compressed addresses and masks are written whole or not at all. What else follows an address is cut.
    check_forms(
        0, {.nothing_up_to = ipv6.size()},
        {
            {.address = ipv6, .maskseen = 1, .expected = ipv6},
            {.address = ipv6, .pfxseen = -1, .pfxlen = 64, .maskseen = 1, .mask = mask, .expected = ipv6 + "/64"},
            {.address = ipv6, .pfxseen = 1, .pfxlen = 4294967295U, .expected = ipv6 + "/4294967295"},
        });
    check_forms(0, {.nothing_up_to = ipv6.size(), .at_most = ipv6.size() + 1},
                {{.address = ipv6, .maskseen = 1, .mask = mask, .expected = ipv6 + "/ffff:ffff:ffff:ffff::"}});
    char text[64];
    for (const size_t absurd : {SIZE_MAX, SIZE_MAX / 2 + 1})
        EXPECT_EQ(_format_ipv6addr(bytes_of(ipv6).data(), 0, 0, 0, 0, nullptr, text, absurd), ipv6.size());
}

TEST(FormatIpv6addr, LogsAMissingAddress)
{
    std::string log;
    orvex_platform_set_log_sink(
        [](int, const char *message, void *context) { *static_cast<std::string *>(context) = message; }, &log);
    orvex_test::Guarded buffer(50);
    errno = 0;
    EXPECT_EQ(_format_ipv6addr(nullptr, 0, 0, 0, 0, nullptr, buffer.data(), buffer.size()), 0U);
    EXPECT_TRUE(errno == EINVAL && buffer.text().empty() && buffer.rest_is(1, orvex_test::Guarded::fill));
    EXPECT_TRUE(std::regex_search(log, std::regex("^_format_ipv6addr:\\d+: insist 'address != NULL' failed"))) << log;
    orvex_platform_set_log_sink(nullptr, nullptr);
}

TEST(FormatIpv6addrPartial, ReadsNoByteAfterThePrefix)
{
    const std::string seven = "ffff:ffff:ffff:ffff:ffff:ffff:ffff";
    for (const auto &[pfxlen, expected] : std::vector<std::pair<uint32_t, std::string>>{
             {0, "::/0"}, {1, "8000::/1"}, {32, "ffff:ffff::/32"}, {127, seven + ":fffe/127"}}) {
        // Exactly as many bytes as the length covers, so that a sanitizer sees one read too many.
        const Bytes prefix((pfxlen + 7) / 8, 0xff);
        char text[64];
        format_ipv6addr_partial(prefix.data(), pfxlen, 1, text, sizeof text);
        EXPECT_EQ(text, expected);
    }
    for (const size_t size : {0U, 1U, 8U}) {
        orvex_test::Guarded buffer(size);
        errno = 0;
        EXPECT_EQ(format_ipv6addr_partial(nullptr, 129, 1, buffer.data(), size), 0U);
        EXPECT_EQ(errno, EINVAL);
        EXPECT_TRUE(size == 0 || buffer.text().empty());
    }
}

}  // namespace
