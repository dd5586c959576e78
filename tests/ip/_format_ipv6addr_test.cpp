#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <array>
#include <cerrno>
#include <string>
#include <vector>

#include "support/guarded.h"

namespace {

using orvex_test::check_every_size;
using orvex_test::Guarded;

using Bytes = std::array<uint8_t, 16>;

Bytes bytes_of(const char *text)
{
    Bytes bytes{};
    EXPECT_EQ(inet_pton(AF_INET6, text, bytes.data()), 1) << text;
    return bytes;
}

TEST(FormatIpv6addr, FixedWidthInEverySize)
{
    const struct {
        const char *address;
        int pfxseen = 0;
        uint32_t pfxlen = 0;
        int maskseen = 0;
        const char *expected;
    } rows[] = {
        {.address = "2001:db8::1", .expected = "2001:0db8:0000:0000:0000:0000:0000:0001"},
        {.address = "2001:db8::1",
         .pfxseen = 1,
         .pfxlen = 128,
         .maskseen = 1,
         .expected = "2001:0db8:0000:0000:0000:0000:0000:0001/0128"},
        {.address = "2001:db8::1",
         .pfxseen = 1,
         .pfxlen = 4294967295U,
         .expected = "2001:0db8:0000:0000:0000:0000:0000:0001/4294967295"},
        {.address = "fedc:ba98:7654:3210:f:e:d:c",
         .maskseen = 5,
         .expected = "fedc:ba98:7654:3210:000f:000e:000d:000c/ffff:ffff:0000:0000:0000:0000:0000:0000"},
    };
    const Bytes mask = bytes_of("ffff:ffff::");
    for (const auto &row : rows) {
        const Bytes address = bytes_of(row.address);
        const auto format = [&](char *buf, size_t buflen) {
            return _format_ipv6addr(address.data(), 2, row.pfxseen, row.pfxlen, row.maskseen, mask.data(), buf, buflen);
        };
        check_every_size(row.expected, format, {.zero_rest = true});
    }
}

// A compressed address that does not fit leaves nothing, what follows it is cut, and a compressed mask that does not
// fit leaves the address and the "/".
TEST(FormatIpv6addr, CompressedInEverySize)
{
    const std::string alone = "2001:db8::1";
    const Bytes address = bytes_of(alone.c_str());
    const Bytes mask = bytes_of("ffff:ffff:ffff:ffff::");
    const struct {
        const char *suffix;
        int pfxseen = 0;
        uint32_t pfxlen = 0;
        const uint8_t *mask = nullptr;
        size_t at_most = SIZE_MAX;
    } rows[] = {
        {.suffix = ""},
        {.suffix = "/64", .pfxseen = -1, .pfxlen = 64, .mask = mask.data()},
        {.suffix = "/4294967295", .pfxseen = 1, .pfxlen = 4294967295U},
        {.suffix = "/ffff:ffff:ffff:ffff::", .pfxlen = 64, .mask = mask.data(), .at_most = alone.size() + 1},
    };
    for (const auto &row : rows) {
        const auto format = [&](char *buf, size_t buflen) {
            return _format_ipv6addr(address.data(), 0, row.pfxseen, row.pfxlen, 1, row.mask, buf, buflen);
        };
        check_every_size(alone + row.suffix, format, {.nothing_up_to = alone.size(), .at_most = row.at_most});
    }
    char text[64];
    for (const size_t absurd : {SIZE_MAX, SIZE_MAX / 2 + 1})
        EXPECT_EQ(_format_ipv6addr(address.data(), 0, 0, 0, 0, nullptr, text, absurd), alone.size());
}

TEST(FormatIpv6addrPartial, ReadsNoByteAfterThePrefix)
{
    const struct {
        uint32_t pfxlen;
        const char *expected;
    } rows[] = {
        {.pfxlen = 0, .expected = "::/0"},
        {.pfxlen = 1, .expected = "8000::/1"},
        {.pfxlen = 32, .expected = "ffff:ffff::/32"},
        {.pfxlen = 127, .expected = "ffff:ffff:ffff:ffff:ffff:ffff:ffff:fffe/127"},
    };
    for (const auto &row : rows) {
        // Exactly as many bytes as the length covers, so that a sanitizer sees one read too many.
        const std::vector<uint8_t> prefix((row.pfxlen + 7) / 8, 0xff);
        std::array<char, 64> text;
        format_ipv6addr_partial(prefix.data(), row.pfxlen, 1, text.data(), text.size());
        EXPECT_STREQ(text.data(), row.expected);
    }
    for (const size_t size : {0U, 1U, 8U}) {
        Guarded buffer(size);
        errno = 0;
        EXPECT_EQ(format_ipv6addr_partial(nullptr, 129, 1, buffer.data(), size), 0U);
        EXPECT_EQ(errno, EINVAL);
        EXPECT_TRUE(buffer.untouched(size == 0) && (size == 0 || buffer.text().empty()));
    }
}

}  // namespace
