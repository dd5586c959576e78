#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <array>
#include <cerrno>
#include <string>

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
        int pfxseen;
        uint32_t pfxlen;
        int maskseen;
        const char *expected;
    } rows[] = {
        {"2001:db8::1", 1, 128, 1, "2001:0db8:0000:0000:0000:0000:0000:0001/0128"},
        {"2001:db8::1", 1, 4294967295U, 1, "2001:0db8:0000:0000:0000:0000:0000:0001/4294967295"},
        {"fedc:ba98:7654:3210:f:e:d:c", 0, 0, 5,
         "fedc:ba98:7654:3210:000f:000e:000d:000c/ffff:ffff:0000:0000:0000:0000:0000:0000"},
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
    const auto check = [&](const std::string &suffix, int pfxseen, uint32_t pfxlen, const uint8_t *mask_bytes,
                           size_t at_most) {
        const auto format = [&](char *buf, size_t buflen) {
            return _format_ipv6addr(address.data(), 0, pfxseen, pfxlen, 1, mask_bytes, buf, buflen);
        };
        check_every_size(alone + suffix, format, {alone.size(), at_most});
    };
    check("", 0, 0, nullptr, SIZE_MAX);
    check("/4294967295", 1, 4294967295U, nullptr, SIZE_MAX);
    check("/ffff:ffff:ffff:ffff::", 0, 0, mask.data(), alone.size() + 1);
    char text[64];
    for (const size_t absurd : {SIZE_MAX, SIZE_MAX / 2 + 1})
        EXPECT_EQ(_format_ipv6addr(address.data(), 0, 0, 0, 0, nullptr, text, absurd), alone.size());
}

TEST(FormatIpv6addrPartial, ReadsNoByteBehindThePrefix)
{
    const struct {
        uint32_t pfxlen;
        const char *expected;
    } rows[] = {
        {0, "::/0"}, {1, "8000::/1"}, {32, "ffff:ffff::/32"}, {127, "ffff:ffff:ffff:ffff:ffff:ffff:ffff:fffe/127"}};
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
