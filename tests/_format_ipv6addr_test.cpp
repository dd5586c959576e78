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
using orvex_test::Overflow;
using orvex_test::Rest;

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
        {"::", 0, 0, 0, "0000:0000:0000:0000:0000:0000:0000:0000"},
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
        check_every_size(row.expected, format, Overflow::cut, Rest::zero);
    }
}

// A compressed address that does not fit leaves nothing, what follows it is cut, and a compressed
// mask that does not fit leaves the address and the "/".
TEST(FormatIpv6addr, CompressedInEverySize)
{
    const Bytes mask = bytes_of("ffff:ffff:ffff:ffff::");
    const std::string alone = "2001:db8::1";
    const struct {
        int pfxseen;
        uint32_t pfxlen;
        const uint8_t *mask;
        std::string suffix;
        size_t kept;  // characters of the suffix that a cut text keeps at most
    } rows[] = {
        {0, 0, nullptr, "", 0},
        {1, 64, mask.data(), "/64", 3},
        {1, 4294967295U, nullptr, "/4294967295", 11},
        {0, 0, mask.data(), "/ffff:ffff:ffff:ffff::", 1},
    };
    const Bytes address = bytes_of(alone.c_str());
    for (const auto &row : rows) {
        const std::string whole = alone + row.suffix;
        for (size_t size = 0; size <= whole.size() + 3; ++size) {
            SCOPED_TRACE(whole + " in " + std::to_string(size));
            Guarded buffer(size);
            errno = 77;
            const bool fits = size > whole.size();
            EXPECT_EQ(_format_ipv6addr(address.data(), 0, row.pfxseen, row.pfxlen, 1, row.mask, buffer.data(), size),
                      fits ? whole.size() : 0);
            EXPECT_EQ(errno, fits ? 77 : ENOSPC);
            EXPECT_TRUE(buffer.untouched());
            const std::string cut = (alone + row.suffix.substr(0, row.kept)).substr(0, size == 0 ? 0 : size - 1);
            if (size == 0) continue;
            EXPECT_TRUE(buffer.text() == (fits ? whole : size > alone.size() ? cut : "")) << buffer.text();
        }
    }
    char text[64];
    for (const size_t absurd : {SIZE_MAX, SIZE_MAX / 2 + 1})
        EXPECT_EQ(_format_ipv6addr(address.data(), 0, 0, 0, 0, nullptr, text, absurd), alone.size());
}

TEST(FormatIpv6addrPartial, ReadsNoByteBehindThePrefix)
{
    const struct {
        uint32_t pfxlen;
        const char *expected;
    } rows[] = {{0, "::/0"},
                {1, "8000::/1"},
                {8, "ff00::/8"},
                {20, "ffff:f000::/20"},
                {32, "ffff:ffff::/32"},
                {127, "ffff:ffff:ffff:ffff:ffff:ffff:ffff:fffe/127"},
                {128, "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff/128"}};
    for (const auto &row : rows) {
        // Exactly as many bytes as the length covers, so that a sanitizer sees one read too many.
        const std::vector<uint8_t> prefix((row.pfxlen + 7) / 8, 0xff);
        const auto format = [&](uint8_t pfxseen, char *buf, size_t buflen) {
            return format_ipv6addr_partial(prefix.data(), row.pfxlen, pfxseen, buf, buflen);
        };
        std::array<char, 64> text;
        EXPECT_EQ(format(1, text.data(), text.size()), std::string(row.expected).size());
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
